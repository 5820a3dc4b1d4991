// Rules that a list of operations must keep to be run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "operations/operation_record.h"

namespace quillet {

// One message for each operation that may stand only once in a list and stands more often.
std::vector<std::u16string> problemsBeforeRun(const OperationList& operations, std::u16string_view fileName);

}  // namespace quillet
