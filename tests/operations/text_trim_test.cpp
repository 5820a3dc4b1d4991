#include "operations/text_trim.h"

#include <gtest/gtest.h>
#include <set>

#include "operations/case_option.h"
#include "operations/operation_codes.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using testing::RandomSource;

constexpr std::int64_t kString = 0, kCharacters = 1, kWhitespace = 2, kExpression = 3;
constexpr std::int64_t kBoth = 0, kStart = 1, kEnd = 2;
constexpr auto kSensitive = CaseSensitivity::Sensitive;
constexpr auto kInsensitive = CaseSensitivity::Insensitive;

std::u16string trim(std::int64_t type, std::int64_t where, CaseSensitivity sensitivity,
                    std::u16string_view what, std::u16string_view text) {
  TextArena arena;
  const std::vector<char16_t> exact(text.begin(), text.end());  // so that a read beyond it is seen
  return std::u16string(
      TextTrimmer(type, where, sensitivity, what).trimmed({exact.data(), exact.size()}, arena));
}

struct Case {
  const char* why;
  std::int64_t type, where;
  CaseSensitivity sensitivity;
  std::u16string what, text, result;
};

const std::u16string kEmoji = u"\U0001F600";

TEST(TextTrimmer, TakesTextFromTheEnds) {
  const Case kCases[] = {
      {"one occurrence only", kString, kStart, kSensitive, u"ab", u"ababX", u"abX"},
      {"at the end", kString, kEnd, kSensitive, u"ab", u"Xabab", u"Xab"},
      {"from both ends", kString, kBoth, kSensitive, u"ab", u"abXab", u"X"},
      {"the start is not the end", kString, kStart, kSensitive, u"ab", u"Xab", u"Xab"},
      {"the end is not the start", kString, kEnd, kSensitive, u"ab", u"abX", u"abX"},
      {"the end half sees the shortened text", kString, kBoth, kSensitive, u"ab", u"ab", u""},
      {"what is left over stays", kString, kBoth, kSensitive, u"aa", u"aaa", u"a"},
      {"case counts", kString, kBoth, kSensitive, u"AB", u"abXab", u"abXab"},
      {"case does not count", kString, kBoth, kInsensitive, u"AB", u"abXaB", u"X"},
      {"the found length can differ", kString, kStart, kInsensitive, u"SS", u"ßX", u"X"},
      {"equivalence", kString, kEnd, kSensitive, u"\u00E9", u"Xe\u0301", u"X"},
      {"a mark hides its base", kString, kStart, kSensitive, u"e", u"e\u0301X", u"e\u0301X"},
      {"an empty text to trim", kString, kBoth, kSensitive, u"", u"abc", u"abc"},
      {"an empty text", kString, kBoth, kSensitive, u"ab", u"", u""},

      {"a run of characters", kCharacters, kStart, kSensitive, u"ab", u"ababX", u"X"},
      {"a run at the end", kCharacters, kEnd, kSensitive, u"ab", u"Xbaba", u"X"},
      {"runs at both ends", kCharacters, kBoth, kSensitive, u"ab", u"aXbYba", u"XbY"},
      {"all of it", kCharacters, kBoth, kSensitive, u"ab", u"abba", u""},
      {"one unit from the start", kCharacters, kStart, kSensitive, u"a", u"a", u""},
      {"one unit from the end", kCharacters, kEnd, kSensitive, u"a", u"a", u""},
      {"two from the end", kCharacters, kEnd, kSensitive, u"a", u"aa", u""},
      {"none there", kCharacters, kBoth, kSensitive, u"ab", u"XaY", u"XaY"},
      {"no characters", kCharacters, kBoth, kSensitive, u"", u" a ", u" a "},
      {"case counts", kCharacters, kStart, kSensitive, u"a", u"aAB", u"AB"},
      {"case does not count", kCharacters, kStart, kInsensitive, u"a", u"AaB", u"B"},
      {"the set is widened by both cases", kCharacters, kBoth, kInsensitive, u"ß", u"SßXsSS", u"Xs"},
      {"and by what the lower case is made of", kCharacters, kStart, kInsensitive, u"\u0130",
       u"i\u0307\u0130X", u"X"},
      {"not without that", kCharacters, kStart, kSensitive, u"ß", u"SX", u"SX"},
      {"code points, not sequences", kCharacters, kStart, kSensitive, u"e", u"e\u0301X", u"\u0301X"},
      {"no equivalence", kCharacters, kStart, kSensitive, u"\u00E9", u"e\u0301X", u"e\u0301X"},
      {"a pair", kCharacters, kStart, kSensitive, kEmoji, kEmoji + u"X", u"X"},
      {"ends the walk after it has been reached", kCharacters, kStart, kSensitive, kEmoji + u"a",
       u"a" + kEmoji + u"a" + u"X", u"aX"},
      {"two pairs: one goes", kCharacters, kStart, kSensitive, kEmoji, kEmoji + kEmoji + u"X", kEmoji + u"X"},
      {"a pair at the end", kCharacters, kEnd, kSensitive, kEmoji, u"X" + kEmoji, u"X"},
      {"two pairs at the end", kCharacters, kEnd, kSensitive, kEmoji, u"X" + kEmoji + kEmoji, u"X" + kEmoji},
      {"looked at from its second unit it is no pair", kCharacters, kEnd, kSensitive, kEmoji + u"a",
       u"X" + kEmoji + u"a", u"X" + kEmoji},
      {"the unit before a pair at the end", kCharacters, kEnd, kSensitive, kEmoji + u"a", u"Xa" + kEmoji,
       u"X"},
      {"a pair behind one unit", kCharacters, kEnd, kSensitive, kEmoji + u"a", u"a" + kEmoji, u""},
      {"half a pair is no member", kCharacters, kStart, kSensitive, u"\xD83D", u"\xD83DX", u"\xD83DX"},
      {"a control character", kCharacters, kBoth, kSensitive, u"\t\n", u"\n\tX\n", u"X"},

      {"white space", kWhitespace, kBoth, kSensitive, u"ignored", u" \t\u00A0X Y\u3000 ", u"X Y"},
      {"at the start", kWhitespace, kStart, kSensitive, u"", u"  X  ", u"X  "},
      {"at the end", kWhitespace, kEnd, kSensitive, u"", u"  X  ", u"  X"},
      {"all of it", kWhitespace, kBoth, kSensitive, u"", u" \t ", u""},
      {"line ends are not in it", kWhitespace, kBoth, kSensitive, u"", u"\n X \r", u"\n X \r"},
      {"nor is the separator of lines", kWhitespace, kBoth, kSensitive, u"", u"\u2028X\u0085",
       u"\u2028X\u0085"},
      {"but a space without width", kWhitespace, kBoth, kSensitive, u"", u"\u200BX\u200B", u"X"},

      {"matches anywhere", kExpression, kBoth, kSensitive, u"[ab]", u"aXbYa", u"XY"},
      {"wherever it is to be trimmed", kExpression, kStart, kSensitive, u"[ab]", u"XbYa", u"XY"},
      {"even nowhere", kExpression, 9, kSensitive, u"[ab]", u"XbYa", u"XY"},
      {"case counts", kExpression, kBoth, kSensitive, u"a", u"aA", u"A"},
      {"case does not count", kExpression, kBoth, kInsensitive, u"a", u"aA", u""},
      {"no template", kExpression, kBoth, kSensitive, u"(a)", u"aXa", u"X"},
      {"what does not compile", kExpression, kBoth, kSensitive, u"[", u"[X", u"[X"},
      {"an empty expression", kExpression, kBoth, kSensitive, u"", u"X", u"X"},
      {"empty matches take nothing", kExpression, kBoth, kSensitive, u"x*", u"axb", u"ab"},

      {"an unknown place", kString, 3, kSensitive, u"a", u"aXa", u"aXa"},
      {"", kCharacters, -1, kSensitive, u"a", u"aXa", u"aXa"},
      {"", kWhitespace, 3, kSensitive, u"", u" X ", u" X "},
      {"an unknown type", 4, kBoth, kSensitive, u"a", u"aXa", u"aXa"},
      {"", -1, kBoth, kSensitive, u" ", u" X ", u" X "},
  };
  for (const auto& [why, type, where, sensitivity, what, text, result] : kCases)
    EXPECT_EQ(trim(type, where, sensitivity, what, text), result)
        << why << ": type " << type << " where " << where << " " << toUtf8(what) << " of " << toUtf8(text);
}

TEST(TextTrimmer, ServesManyTexts) {
  TextArena arena;
  TextTrimmer trimmer(kExpression, kBoth, kSensitive, u"b+");
  const auto first = trimmer.trimmed(u"abbc", arena);
  const auto second = trimmer.trimmed(u"b", arena);
  EXPECT_EQ(trimmer.trimmed(u"xyz", arena), u"xyz");
  EXPECT_EQ(first, u"ac");
  EXPECT_EQ(second, u"");
}

TEST(CaseOption, ComesFromTheLowestBit) {
  EXPECT_EQ(caseSensitivityOf({}), kInsensitive);
  EXPECT_EQ(caseSensitivityOf({{"IntArg1", 1}}), kSensitive);
  EXPECT_EQ(caseSensitivityOf({{"IntArg1", 2}}), kInsensitive);
  EXPECT_EQ(caseSensitivityOf({{"IntArg1", 3}}), kSensitive);
  EXPECT_EQ(caseSensitivityOf({{"IntArg1", u"1"}}), kSensitive);
}

TEST(LongestRangeOfCharacters, IsTheInnermostCharacterReached) {
  const auto set = CharacterSet::withCharactersInString(u"ab" + kEmoji);
  struct RangeCase {
    std::u16string text;
    bool fromEnd;
    std::optional<TextRange> range;
  };
  const RangeCase kCases[] = {
      {u"", false, std::nullopt},
      {u"", true, std::nullopt},
      {u"Xa", false, std::nullopt},
      {u"aX", true, std::nullopt},
      {u"abX", false, TextRange{1, 1}},
      {u"ab", false, TextRange{1, 1}},
      {u"Xab", true, TextRange{1, 1}},
      {u"ab", true, TextRange{0, 1}},
      {u"a", true, TextRange{0, 1}},
      {u"a" + kEmoji + u"b", false, TextRange{1, 2}},
      {kEmoji + u"b", false, TextRange{0, 2}},
      {kEmoji, true, TextRange{0, 2}},
      {u"a" + kEmoji, true, TextRange{0, 1}},
      {u"Xa" + kEmoji, true, TextRange{1, 1}},
      {kEmoji + u"a", true, TextRange{2, 1}},
  };
  for (const auto& [text, fromEnd, range] : kCases) {
    const SearchOptions options = AnchoredSearch | (fromEnd ? BackwardsSearch : 0u);
    EXPECT_EQ(longestRangeOfCharactersInSet(set, text, options, fromEnd), range)
        << toUtf8(text) << " " << fromEnd;
  }
}

// The fast way for white space against the walk with the set of white space.
TEST(TextTrimmer, TrimsWhiteSpaceAsTheWalkDoes) {
  RandomSource random;
  const std::u16string parts[] = {u" ",  u"\t", u"\u00A0", u"\u3000", u"\u200B",
                                  u"\n", u"X",  kEmoji,    u"\u0301", u"é"};
  for (std::uint64_t round = 0; round < testing::rounds(5'000); ++round) {
    const auto text = random.text(parts, 8);
    std::u16string expected = text;
    const auto& set = CharacterSet::whitespace();
    if (const auto found = longestRangeOfCharactersInSet(set, expected, AnchoredSearch, false))
      expected.erase(0, found->end());
    if (const auto found =
            longestRangeOfCharactersInSet(set, expected, AnchoredSearch | BackwardsSearch, true))
      expected.resize(found->location);
    ASSERT_EQ(trim(kWhitespace, kBoth, kSensitive, u"", text), expected) << toUtf8(text);
  }
}

}  // namespace
}  // namespace quillet
