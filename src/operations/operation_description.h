// How a record is shown: a title, the name of an icon, and one line of detail.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "operations/operation_record.h"

namespace quillet {

// The three strings, empty for an unassigned code. The other two records are those of the same list, or null;
// the final one is taken for symmetry and never read.
std::array<std::u16string, 3> descriptionForOperation(const OperationRecord& operation,
                                                      const OperationRecord* initialOperation,
                                                      const OperationRecord* finalOperation);

// The title of the operations of this code, "" for an unassigned one.
std::u16string labelOfOperation(std::int64_t code);

}  // namespace quillet
