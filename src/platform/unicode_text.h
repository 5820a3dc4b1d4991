// Conversions between UTF-16, in which all text of the program is kept, and UTF-8, in which paths, messages
// to the system and JSON are.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

// Ill-formed UTF-8 becomes U+FFFD, one for each maximal ill-formed part.
std::u16string toUtf16(std::string_view utf8);

// A lone surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);
void appendUtf8(std::u16string_view text, std::string& out);

constexpr bool isHighSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}
constexpr bool isLowSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}
constexpr bool isSurrogate(char16_t unit) {
  return (unit & 0xF800) == 0xD800;
}

constexpr char32_t codePointOfPair(char16_t high, char16_t low) {
  return 0x10000 + ((char32_t{high} - 0xD800) << 10) + (char32_t{low} - 0xDC00);
}

// The code point that starts at index (in UTF-16 units, below text.size()); a lone surrogate is itself.
constexpr char32_t codePointAt(std::u16string_view text, std::size_t index) {
  const char16_t unit = text[index];
  if (isHighSurrogate(unit) && index + 1 < text.size() && isLowSurrogate(text[index + 1]))
    return codePointOfPair(unit, text[index + 1]);
  return unit;
}

constexpr std::size_t unitsOfCodePoint(char32_t codePoint) {
  return codePoint > 0xFFFF ? 2 : 1;
}

void appendCodePoint(char32_t codePoint, std::u16string& out);

}  // namespace quillet
