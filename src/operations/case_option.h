// How the trim, replace and skip operations look at case: with regard to it only where their flag says so.
#pragma once

#include "operations/operation_codes.h"
#include "operations/operation_record.h"
#include "platform/regular_expression.h"
#include "platform/text_search.h"

namespace quillet {

inline CaseSensitivity caseSensitivityOf(const OperationRecord& record) {
  return hasFlags(record.integer("IntArg1", 0), CaseSensitiveFlag) ? CaseSensitivity::Sensitive
                                                                   : CaseSensitivity::Insensitive;
}

constexpr SearchOptions caseOption(CaseSensitivity sensitivity) {
  return sensitivity == CaseSensitivity::Sensitive ? SearchOptions{0} : SearchOptions{CaseInsensitiveSearch};
}

}  // namespace quillet
