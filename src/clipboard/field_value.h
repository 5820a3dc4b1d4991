// The number in a cell, for the sums of lines and columns.
#pragma once

#include <string_view>

namespace quillet {

// Reads money-like text: symbols around the number are passed over, and one in brackets is negative. 0 when
// there is no number. No thousands separator is understood, which is meant.
double doubleValueFromFieldValue(std::u16string_view text);

}  // namespace quillet
