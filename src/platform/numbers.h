// Reading numbers from the start of a text, and printing them; always by the C locale's rules.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillet {

// Leading white space, one sign, white space, digits 0-9; stops at the first other character. No digits give
// 0, what is too large or too small is clamped.
std::int64_t integerValue(std::u16string_view text);
std::int32_t intValue(std::u16string_view text);

// White space, sign, white space, digits, ".", digits, exponent. No hexadecimal, infinity or nan; 0 when
// nothing can be read; too large gives infinity.
double doubleValue(std::u16string_view text);
float floatValue(std::u16string_view text);  // rounded to 32 bits

// Appends a plain decimal number.
void appendInteger(std::int64_t value, std::u16string& out);

// More digits than any number needs; a count beyond it would only exhaust the memory.
inline constexpr std::int64_t kMostFixedDigits = 16'384;

// Appends the value with this many digits behind ".", the exact value rounded half to even; digits below 0
// count as 0, more than kMostFixedDigits as that. "inf", "-inf" and "nan" as C prints them.
void appendFixed(double value, std::int64_t digits, std::u16string& out);

}  // namespace quillet
