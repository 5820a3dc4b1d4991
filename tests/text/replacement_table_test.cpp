#include "text/replacement_table.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using testing::RandomSource;
using Pairs = std::vector<ReplacementTable::Pair>;

Pairs pairsOf(std::int64_t characterClass, std::u16string_view characters,
              std::u16string_view replacement = u"-", std::u16string_view quote = u"",
              std::u16string_view lineSeparator = u"", std::u16string_view columnSeparator = u"") {
  Pairs pairs;
  appendReplacementPairs(characterClass, characters, replacement, quote, lineSeparator, columnSeparator,
                         pairs);
  return pairs;
}

// The keys of the pairs, each behind a "|".
std::u16string keysOf(const Pairs& pairs) {
  std::u16string keys;
  for (const auto& [key, replacement] : pairs) keys += u"|" + std::get<std::u16string>(key);
  return keys;
}

TEST(ReplacementTablePairs, ListCharactersWithEscapes) {
  struct Case {
    std::u16string characters, keys;
  };
  const Case kCases[] = {
      {u"", u""},
      {u"ab", u"|a|b"},
      {u"aa", u"|a|a"},
      {u"\\a\\b\\f\\n\\r\\t\\v", u"|\a|\b|\f|\n|\r|\t|\v"},
      {u"\\x", u""},  // any other character clears the flag and adds nothing
      {u"\\xn", u"|n"},
      {u"\\A\\N", u""},    // the letters are small ones
      {u"\\\\", u""},      // there is no way to name a backslash
      {u"\\\\n", u"|\n"},  // two backslashes act as one
      {u"\\\\\\\\t", u"|\t"},
      {u"\\", u""},
      {u"a\\nb", u"|a|\n|b"},
      {u"\\n\\", u"|\n"},
      {u"e\u0301e", u"|e\u0301|e"},    // by composed sequences
      {u"\\n\u0301", u""},             // which is no letter n
      {u"\\\u0301n", u"|\\\u0301|n"},  // which is no backslash
      {u"\r\n", u"|\r|\n"},
      {u"\U0001F600\U0001F468\u200D\U0001F469", u"|\U0001F600|\U0001F468\u200D\U0001F469"},
  };
  for (const auto& [characters, keys] : kCases)
    EXPECT_EQ(keysOf(pairsOf(0, characters)), keys) << toUtf8(characters);
}

TEST(ReplacementTablePairs, CarryTheReplacementAndStandBehindThoseBefore) {
  Pairs pairs = pairsOf(0, u"ab", u"xy");
  appendReplacementPairs(1, u"ignored", u"", {}, {}, {}, pairs);
  appendReplacementPairs(2, u"", u"?", {}, {}, {}, pairs);
  const Pairs expected = {{u"a", u"xy"}, {u"b", u"xy"}, {std::int64_t{1}, u""}, {std::int64_t{2}, u"?"}};
  EXPECT_EQ(pairs, expected);
}

TEST(ReplacementTablePairs, OfAnUnknownClassAreNone) {
  for (const std::int64_t value : {std::int64_t{-1}, std::int64_t{3}, std::int64_t{150}})
    EXPECT_TRUE(pairsOf(value, u"ab").empty()) << value;
}

TEST(ReplacementTablePairs, LeaveOutTheStructureOfTheFile) {
  EXPECT_EQ(keysOf(pairsOf(0, u",;", u"-", u"\"", u"\n", u",")), u"|;");
  EXPECT_EQ(keysOf(pairsOf(0, u"\"a", u"-", u"\"", u"\n", u",")), u"|a");
  EXPECT_EQ(keysOf(pairsOf(0, u"\\n\\ra", u"-", u"\"", u"\r\n", u",")), u"|a");  // a part of the separator
  EXPECT_EQ(keysOf(pairsOf(0, u"ab", u"-", u"", u"", u"")), u"|a|b");
  EXPECT_EQ(keysOf(pairsOf(0, u"e\u0301x", u"-", u"", u"\u00E9", u"")), u"|x");  // equal by equivalence
  EXPECT_EQ(pairsOf(1, u"", u"-", u"\"", u"\n", u",").size(), 1u);               // classes are never left out
}

struct Replacing {
  const char* what;
  Pairs pairs;
  std::u16string character, result;
};

constexpr std::int64_t kControl = 1;
constexpr std::int64_t kUncommon = 2;

// The file has a quote, the line separator CR LF and a tab between columns.
TEST(ReplacementTable, ReplacesACharacter) {
  const Replacing kCases[] = {
      {"an empty table", {}, u"a", u"a"},
      {"another character", {{u"b", u"x"}}, u"a", u"a"},
      {"a key", {{u"a", u"x"}}, u"a", u"x"},
      {"a removed character", {{u"a", u""}}, u"a", u""},
      {"a longer text", {{u"a", u"xyz"}}, u"a", u"xyz"},
      {"each pair sees the result of those before", {{u"a", u"b"}, {u"b", u"c"}}, u"a", u"c"},
      {"in their order", {{u"b", u"c"}, {u"a", u"b"}}, u"a", u"b"},
      {"a key of the whole text only", {{u"a", u"bb"}, {u"b", u"c"}}, u"a", u"bb"},
      {"a key of a text that a pair made", {{u"a", u"bb"}, {u"bb", u"c"}}, u"a", u"c"},
      {"there and back", {{u"a", u"b"}, {u"b", u"a"}}, u"a", u"a"},
      {"a character above U+FFFF", {{u"\U0001F600", u":)"}}, u"\U0001F600", u":)"},
      {"no equivalence", {{u"\u00E9", u"x"}}, u"e\u0301", u"e\u0301"},
      {"a control character", {{kControl, u"-"}}, u"\u0001", u"-"},
      {"the first", {{kControl, u"-"}}, std::u16string(1, u'\0'), u"-"},
      {"the last of the low ones", {{kControl, u"-"}}, u"\u001F", u"-"},
      {"a blank is none", {{kControl, u"-"}}, u" ", u" "},
      {"nor ~", {{kControl, u"-"}}, u"~", u"~"},
      {"delete is one", {{kControl, u"-"}}, u"\u007F", u"-"},
      {"and the high ones", {{kControl, u"-"}}, u"\u0080", u"-"},
      {"up to here", {{kControl, u"-"}}, u"\u009F", u"-"},
      {"not the next", {{kControl, u"-"}}, u"\u00A0", u"\u00A0"},
      {"the tab is the column separator", {{kControl, u"-"}}, u"\t", u"\t"},
      {"the line feed is in the line separator", {{kControl, u"-"}}, u"\n", u"\n"},
      {"the quote by a made-up class pair", {{u"x", u"\""}, {kControl, u"-"}}, u"x", u"\""},
      {"an uncommon character", {{kUncommon, u"?"}}, u"\U0001F600", u"?"},
      {"the first of them", {{kUncommon, u"?"}}, u"\U00010000", u"?"},
      {"not the last common one", {{kUncommon, u"?"}}, u"\uFFFD", u"\uFFFD"},
      {"the class is that of the original", {{u"\u0001", u"a"}, {kControl, u"-"}}, u"\u0001", u"-"},
      {"not that of the result", {{u"a", u"\u0001"}, {kControl, u"-"}}, u"a", u"\u0001"},
      {"protected is what stands there now", {{u"\u0001", u"\t"}, {kControl, u"-"}}, u"\u0001", u"\t"},
      {"a class applies to an empty text", {{u"\u0001", u""}, {kControl, u"-"}}, u"\u0001", u"-"},
      {"a class twice", {{kControl, u"-"}, {kControl, u"+"}}, u"\u0001", u"+"},
      {"a key behind a class", {{kControl, u"-"}, {u"-", u"+"}}, u"\u0001", u"+"},
      {"an unknown class", {{std::int64_t{3}, u"-"}, {std::int64_t{0}, u"-"}}, u"\u0001", u"\u0001"},
  };
  for (const auto& [what, pairs, character, result] : kCases)
    EXPECT_EQ(ReplacementTable(pairs, u"\"", u"\r\n", u"\t").replaced(character), result) << what;
}

TEST(ReplacementTable, ProtectsNothingWithoutStructure) {
  const ReplacementTable table({{kControl, u"-"}}, u"", u"", u"");
  EXPECT_EQ(table.replaced(u"\t"), u"-");
  EXPECT_EQ(table.replaced(u"\n"), u"-");
  EXPECT_TRUE(ReplacementTable().isEmpty());
  EXPECT_FALSE(table.isEmpty());
}

// What is not affected is never looked up, so a wrong answer here would lose a replacement.
TEST(ReplacementTable, KnowsWhichCharactersItCanChange) {
  RandomSource random;
  const std::u16string characters[] = {u"a",      u"\t",     u"\u0001",     u"\u0085",
                                       u"\u00E9", u"\u20AC", u"\U0001F600", u"z"};
  for (std::uint64_t round = 0; round < testing::rounds(500); ++round) {
    Pairs pairs;
    for (std::size_t i = random.below(4); i > 0; --i) {
      if (random.oneIn(3))
        pairs.emplace_back(static_cast<std::int64_t>(random.below(4)), random.pick(characters));
      else
        pairs.emplace_back(random.pick(characters), random.pick(characters));
    }
    const ReplacementTable table(pairs, u"\"", u"\n", u"\t");
    for (const auto& character : characters) {
      if (table.replaced(character) == character) continue;
      EXPECT_TRUE(table.affects(codePointAt(character, 0))) << toUtf8(character);
    }
  }
  const ReplacementTable table({{u"a", u"b"}, {u"\u20AC", u"e"}}, {}, {}, {});
  EXPECT_TRUE(table.affects(u'a'));
  EXPECT_TRUE(table.affects(0x20AC));
  EXPECT_FALSE(table.affects(u'b'));
  EXPECT_FALSE(table.affects(0x20AD));
  EXPECT_FALSE(table.affects(0x1F600));
}

}  // namespace
}  // namespace quillet
