// The operations of an index set of two dimensions by their names. Both throw CommandError.
#pragma once

#include <nlohmann/json.hpp>

#include "clipboard/two_dimensional_mutable_index_set.h"

namespace quillet::drive {

using nlohmann::json;

// steps: a list of [operation, argument...]. An argument is any 64-bit integer.
void takeIndexSetSteps(const json& steps, TwoDimensionalMutableIndexSet& set);

// cells: a list of [row, column]. A list of booleans.
json containedCells(const json& cells, const TwoDimensionalMutableIndexSet& set);

}  // namespace quillet::drive
