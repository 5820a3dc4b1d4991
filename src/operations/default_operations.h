// The two records that a new input file starts with.
#pragma once

#include <string_view>

#include "operations/operation_record.h"

namespace quillet {

OperationList defaultOperations(std::u16string_view fileName, std::int64_t fileType, bool dontAutoSplit);

}  // namespace quillet
