#include "platform/character_set.h"

#include <algorithm>
#include <iterator>
#include <unicode/uchar.h>

#include "platform/unicode_text.h"

namespace quillet {
namespace {

constexpr char16_t kWhitespace[] = {0x0009, 0x0020, 0x00A0, 0x1680, 0x2000, 0x2001, 0x2002,
                                    0x2003, 0x2004, 0x2005, 0x2006, 0x2007, 0x2008, 0x2009,
                                    0x200A, 0x200B, 0x202F, 0x205F, 0x3000};
constexpr char16_t kLineEnds[] = {0x000A, 0x000B, 0x000C, 0x000D, 0x0085, 0x2028, 0x2029};

UBool U_CALLCONV addSymbols(const void* context, UChar32 start, UChar32 limit, UCharCategory category) {
  auto& symbols = *static_cast<std::u16string*>(const_cast<void*>(context));
  if (U_MASK(category) & U_GC_S_MASK) {
    for (UChar32 codePoint = start; codePoint < limit; ++codePoint)
      appendCodePoint(static_cast<char32_t>(codePoint), symbols);
  }
  return true;
}

// The code point that ends right in front of end (above 0); a lone surrogate is itself.
char32_t codePointBefore(std::u16string_view text, std::size_t end) {
  if (end >= 2 && isLowSurrogate(text[end - 1]) && isHighSurrogate(text[end - 2]))
    return codePointOfPair(text[end - 2], text[end - 1]);
  return text[end - 1];
}

}  // namespace

bool isWhitespace(char32_t codePoint) {
  switch (codePoint) {
    case 0x0009:
    case 0x0020:
    case 0x00A0:
    case 0x1680:
    case 0x202F:
    case 0x205F:
    case 0x3000:
      return true;
    default:
      return codePoint >= 0x2000 && codePoint <= 0x200B;
  }
}

bool isWhitespaceOrNewline(char32_t codePoint) {
  switch (codePoint) {
    case 0x000A:
    case 0x000B:
    case 0x000C:
    case 0x000D:
    case 0x0085:
    case 0x2028:
    case 0x2029:
      return true;
    default:
      return isWhitespace(codePoint);
  }
}

const CharacterSet& CharacterSet::whitespace() {
  static const CharacterSet set = withCharactersInString({kWhitespace, std::size(kWhitespace)});
  return set;
}

const CharacterSet& CharacterSet::whitespaceAndNewline() {
  static const CharacterSet set = withCharactersInString(std::u16string(kWhitespace, std::size(kWhitespace)) +
                                                         std::u16string(kLineEnds, std::size(kLineEnds)));
  return set;
}

const CharacterSet& CharacterSet::symbol() {
  static const CharacterSet set = [] {
    std::u16string symbols;
    u_enumCharTypes(addSymbols, &symbols);
    return withCharactersInString(symbols);
  }();
  return set;
}

CharacterSet CharacterSet::withCharactersInString(std::u16string_view text) {
  CharacterSet set;
  for (std::size_t index = 0; index < text.size();) {
    const char32_t codePoint = codePointAt(text, index);
    index += unitsOfCodePoint(codePoint);
    if (codePoint > 0xFFFF || !isSurrogate(static_cast<char16_t>(codePoint)))
      set.members_.push_back(codePoint);
  }
  std::sort(set.members_.begin(), set.members_.end());
  set.members_.erase(std::unique(set.members_.begin(), set.members_.end()), set.members_.end());
  for (const char32_t member : set.members_) {
    if (member < 0x100) set.low_[member / 64] |= std::uint64_t{1} << (member % 64);
  }
  return set;
}

bool CharacterSet::contains(char32_t codePoint) const {
  if (codePoint < 0x100) return (low_[codePoint / 64] >> (codePoint % 64) & 1) != 0;
  return std::binary_search(members_.begin(), members_.end(), codePoint);
}

std::optional<TextRange> rangeOfCharacterFromSet(std::u16string_view text, const CharacterSet& set,
                                                 SearchOptions options, TextRange range) {
  // Only what lies in the range is looked at, so a pair that the range cuts is two lone surrogates.
  const std::u16string_view part = text.substr(range.location, range.length);
  const bool isAnchored = (options & AnchoredSearch) != 0;
  if (options & BackwardsSearch) {
    for (std::size_t end = part.size(); end > 0;) {
      const char32_t codePoint = codePointBefore(part, end);
      end -= unitsOfCodePoint(codePoint);
      if (set.contains(codePoint)) return TextRange{range.location + end, unitsOfCodePoint(codePoint)};
      if (isAnchored) break;
    }
    return std::nullopt;
  }
  for (std::size_t start = 0; start < part.size();) {
    const char32_t codePoint = codePointAt(part, start);
    if (set.contains(codePoint)) return TextRange{range.location + start, unitsOfCodePoint(codePoint)};
    if (isAnchored) break;
    start += unitsOfCodePoint(codePoint);
  }
  return std::nullopt;
}

std::u16string_view trimmed(std::u16string_view text, const CharacterSet& set) {
  while (!text.empty()) {
    const char32_t first = codePointAt(text, 0);
    if (!set.contains(first)) break;
    text.remove_prefix(unitsOfCodePoint(first));
  }
  while (!text.empty()) {
    const char32_t last = codePointBefore(text, text.size());
    if (!set.contains(last)) break;
    text.remove_suffix(unitsOfCodePoint(last));
  }
  return text;
}

}  // namespace quillet
