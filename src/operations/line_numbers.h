// The text form of line and column lists, "1, 2, 5 - 8": numbers from 1 and ranges of them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/index_set.h"

namespace quillet {

// Adds what the text names to the set. A number is its leading digits, 0 without one; a range needs an end
// above its start. subtract1 lowers every number of 1 or more. A range without an end writes its start to
// skipBeyondNumber, if not null. There are no errors: what cannot be understood selects nothing, or index 0.
void parseLineNumbersString(std::u16string_view text, IndexSet& into, std::int64_t* skipBeyondNumber,
                            bool subtract1);

std::u16string stringPlus1FromIndexSet(const IndexSet& set);
std::u16string expandedStringPlus1FromIndexSet(const IndexSet& set);  // every index by itself

}  // namespace quillet
