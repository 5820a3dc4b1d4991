// Sets of code points, and searches for a member in a text. Positions are in UTF-16 units, from 0.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/text_search.h"

namespace quillet {

class CharacterSet {
 public:
  static const CharacterSet& whitespace();            // 19 members: tab and the space separators
  static const CharacterSet& whitespaceAndNewline();  // these and the line ends: 26 members
  static const CharacterSet& symbol();                // general category S

  // The code points of text; a pair is one member, a lone surrogate is none.
  static CharacterSet withCharactersInString(std::u16string_view text);

  bool contains(char32_t codePoint) const;
  bool isEmpty() const { return members_.empty(); }

 private:
  std::vector<char32_t> members_;  // ascending
  std::uint64_t low_[4] = {};      // bits of the members below U+0100
};

bool isWhitespace(char32_t codePoint);
bool isWhitespaceOrNewline(char32_t codePoint);
// The 65 code points of category Cc.
constexpr bool isControl(char32_t codePoint) {
  return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

// The first member in the range of the text (the last with BackwardsSearch). With AnchoredSearch only at the
// range's start (end). A surrogate pair is found whole, if it lies in the range. Case is never ignored.
std::optional<TextRange> rangeOfCharacterFromSet(std::u16string_view text, const CharacterSet& set,
                                                 SearchOptions options, TextRange range);

// The text without the members at both ends: any number goes. A view into text.
std::u16string_view trimmed(std::u16string_view text, const CharacterSet& set);

}  // namespace quillet
