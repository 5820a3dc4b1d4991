// Conversions between raw text and what can be typed or shown.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

// \n, \r and \t become the control characters; there is no escape for the backslash, which is meant.
std::u16string replaceBackslashedCharacters(std::u16string_view text);
std::u16string replaceWithBackslashedCharacters(std::u16string_view text);

// Control characters become visible, one unit for one unit: the symbols of U+2400, a middle dot for a tab.
// The line separator becomes a line feed, which stays.
std::u16string stringByReplacingControlCharactersFromString(std::u16string_view text,
                                                            std::u16string_view lineSeparator);

}  // namespace quillet
