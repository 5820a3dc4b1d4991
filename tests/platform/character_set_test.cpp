#include "platform/character_set.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <unicode/uchar.h>

namespace quillet {
namespace {

using Range = std::optional<TextRange>;
constexpr SearchOptions kAtStart = AnchoredSearch;
constexpr SearchOptions kAtEnd = AnchoredSearch | BackwardsSearch;

std::u32string members(const CharacterSet& set) {
  std::u32string result;
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    if (set.contains(codePoint)) result.push_back(codePoint);
  }
  return result;
}

template <typename Predicate>
std::u32string membersBy(Predicate predicate) {
  std::u32string result;
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    if (predicate(codePoint)) result.push_back(codePoint);
  }
  return result;
}

const std::u32string kWhitespaceMembers =
    U"\u0009\u0020\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A\u200B"
    U"\u202F\u205F\u3000";

TEST(CharacterSet, WhitespaceHas19Members) {
  EXPECT_EQ(kWhitespaceMembers.size(), 19u);
  EXPECT_EQ(members(CharacterSet::whitespace()), kWhitespaceMembers);
  EXPECT_EQ(membersBy(isWhitespace), kWhitespaceMembers);
}

TEST(CharacterSet, WhitespaceAndNewlineHas26Members) {
  std::u32string expected = kWhitespaceMembers + U"\u000A\u000B\u000C\u000D\u0085\u2028\u2029";
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(expected.size(), 26u);
  EXPECT_EQ(members(CharacterSet::whitespaceAndNewline()), expected);
  EXPECT_EQ(membersBy(isWhitespaceOrNewline), expected);
}

TEST(CharacterSet, SymbolsAreTheGeneralCategoryS) {
  const auto isSymbol = [](char32_t codePoint) {
    return (U_GET_GC_MASK(static_cast<UChar32>(codePoint)) & U_GC_S_MASK) != 0;
  };
  const std::u32string symbols = members(CharacterSet::symbol());
  EXPECT_EQ(symbols, membersBy(isSymbol));
  EXPECT_EQ(symbols.substr(0, 9), U"$+<=>^`|~");
  EXPECT_TRUE(CharacterSet::symbol().contains(0x2212));
}

TEST(CharacterSet, ControlsAreThe65OfCategoryCc) {
  EXPECT_EQ(membersBy(isControl), membersBy([](char32_t codePoint) {
              return u_charType(static_cast<UChar32>(codePoint)) == U_CONTROL_CHAR;
            }));
}

TEST(CharacterSet, WithCharactersTakesCodePoints) {
  const std::u16string text = std::u16string(u"b\u00E9ab\U0001F600\u3042") + char16_t{0xD83D};
  EXPECT_EQ(members(CharacterSet::withCharactersInString(text)), U"ab\u00E9\u3042\U0001F600");
  EXPECT_TRUE(CharacterSet::withCharactersInString(u"").isEmpty());
  EXPECT_TRUE(CharacterSet::withCharactersInString(std::u16string{0xDE00, 0xD83D}).isEmpty());
  EXPECT_FALSE(CharacterSet::withCharactersInString(u"a").isEmpty());
}

Range find(std::u16string_view text, std::u16string_view characters, SearchOptions options) {
  return rangeOfCharacterFromSet(text, CharacterSet::withCharactersInString(characters), options,
                                 {0, text.size()});
}

TEST(CharacterSet, FindsTheFirstOrTheLastMember) {
  EXPECT_EQ(find(u"abcb", u"b", 0), (TextRange{1, 1}));
  EXPECT_EQ(find(u"abcb", u"b", BackwardsSearch), (TextRange{3, 1}));
  EXPECT_EQ(find(u"abcb", u"x", 0), std::nullopt);
  EXPECT_EQ(find(u"abcb", u"", BackwardsSearch), std::nullopt);
  EXPECT_EQ(find(u"", u"a", 0), std::nullopt);
  EXPECT_EQ(find(u"a\U0001F600b", u"\U0001F600", 0), (TextRange{1, 2}));
  EXPECT_EQ(find(u"a\U0001F600b", u"\U0001F600", BackwardsSearch), (TextRange{1, 2}));
}

TEST(CharacterSet, AnchoredLooksAtOneEndOnly) {
  EXPECT_EQ(find(u"abc", u"a", kAtStart), (TextRange{0, 1}));
  EXPECT_EQ(find(u"abc", u"b", kAtStart), std::nullopt);
  EXPECT_EQ(find(u"abc", u"c", kAtEnd), (TextRange{2, 1}));
  EXPECT_EQ(find(u"abc", u"b", kAtEnd), std::nullopt);
  // A pair that stands at the end is found whole.
  EXPECT_EQ(find(u"\U0001F600b", u"\U0001F600", kAtStart), (TextRange{0, 2}));
  EXPECT_EQ(find(u"b\U0001F600", u"\U0001F600", kAtEnd), (TextRange{1, 2}));
}

TEST(CharacterSet, NeitherCaseNorMarksMatter) {
  EXPECT_EQ(find(u"A", u"a", CaseInsensitiveSearch), std::nullopt);
  EXPECT_EQ(find(u"e\u0301", u"e", 0), (TextRange{0, 1}));
  EXPECT_EQ(find(u"\u00E9", u"e", 0), std::nullopt);
}

TEST(CharacterSet, SearchStaysInItsRange) {
  const CharacterSet set = CharacterSet::withCharactersInString(u"a\U0001F600");
  const auto search = [&](std::u16string_view text, SearchOptions options, TextRange range) {
    return rangeOfCharacterFromSet(text, set, options, range);
  };
  EXPECT_EQ(search(u"abba", 0, {1, 3}), (TextRange{3, 1}));
  EXPECT_EQ(search(u"abba", BackwardsSearch, {0, 3}), (TextRange{0, 1}));
  EXPECT_EQ(search(u"abba", 0, {1, 2}), std::nullopt);
  EXPECT_EQ(search(u"abba", 0, {4, 0}), std::nullopt);
  EXPECT_EQ(search(u"ba", kAtStart, {1, 1}), (TextRange{1, 1}));
  EXPECT_EQ(search(u"x\U0001F600x", 0, {1, 2}), (TextRange{1, 2}));
  EXPECT_EQ(search(u"x\U0001F600x", kAtEnd, {0, 3}), (TextRange{1, 2}));
  // Half a pair is no member.
  EXPECT_EQ(search(u"x\U0001F600x", 0, {1, 1}), std::nullopt);
  EXPECT_EQ(search(u"x\U0001F600x", kAtStart, {2, 2}), std::nullopt);
  EXPECT_EQ(search(u"x\U0001F600x", BackwardsSearch, {2, 2}), std::nullopt);
}

TEST(CharacterSet, TrimmingRemovesMembersFromBothEnds) {
  EXPECT_EQ(trimmed(u" \t a b\u00A0\u3000", CharacterSet::whitespace()), u"a b");
  EXPECT_EQ(trimmed(u" \t ", CharacterSet::whitespace()), u"");
  EXPECT_EQ(trimmed(u"", CharacterSet::whitespace()), u"");
  EXPECT_EQ(trimmed(u" \n", CharacterSet::whitespace()), u"\n");
  EXPECT_EQ(trimmed(u"\r\n x\u2028", CharacterSet::whitespaceAndNewline()), u"x");
  EXPECT_EQ(trimmed(u"\U0001F600a\U0001F600\U0001F600", CharacterSet::withCharactersInString(u"\U0001F600")),
            u"a");
  EXPECT_EQ(trimmed(u"aba", CharacterSet::withCharactersInString(u"")), u"aba");
}

TEST(CharacterSet, SymbolsAreTrimmedFromAmounts) {
  EXPECT_EQ(trimmed(u"$ 12", CharacterSet::symbol()), u" 12");
  EXPECT_EQ(trimmed(u"+5", CharacterSet::symbol()), u"5");
  EXPECT_EQ(trimmed(u"12 \u20AC", CharacterSet::symbol()), u"12 ");
  EXPECT_EQ(trimmed(u"-$5", CharacterSet::symbol()), u"-$5");
  EXPECT_EQ(trimmed(u"\u22125", CharacterSet::symbol()), u"5");
  EXPECT_EQ(trimmed(u"%#&5", CharacterSet::symbol()), u"%#&5");
}

}  // namespace
}  // namespace quillet
