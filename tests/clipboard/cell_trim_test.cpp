#include "clipboard/cell_trim.h"

#include <gtest/gtest.h>
#include <vector>

#include "clipboard/plain_cell_changes.h"
#include "operations/operation_codes.h"
#include "platform/case_mapping.h"
#include "platform/character_set.h"
#include "platform/regular_expression.h"
#include "platform/text_search.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using testing::plainlyTrimmed;
using testing::RandomSource;

constexpr std::int64_t kString = 0, kCharacters = 1, kWhitespace = 2, kExpression = 3;
constexpr std::int64_t kBoth = 0, kStart = 1, kEnd = 2;
constexpr std::int64_t kInsensitive = 0, kSensitive = 1;

std::u16string trimmedBy(const OperationRecord& operation, std::u16string_view text) {
  TextArena arena;
  const std::vector<char16_t> exact(text.begin(), text.end());  // so that a read beyond it is seen
  return std::u16string(CellTrimmer(operation).trimmed({exact.data(), exact.size()}, arena));
}

OperationRecord record(std::int64_t type, std::int64_t where, std::int64_t caseFlag, std::u16string what) {
  return {{"Code", std::int64_t{OpClipboardTrim}},
          {"IntArg1", caseFlag},
          {"IntArg2", type},
          {"IntArg3", where},
          {"Arg2", std::move(what)}};
}

struct Case {
  const char* why;
  std::int64_t type, where, caseFlag;
  std::u16string what, text, result;
};

const std::u16string kEmoji = u"\U0001F600";

TEST(CellTrimmer, TrimsACell) {
  const Case kCases[] = {
      {"one occurrence only", kString, kStart, kSensitive, u"ab", u"ababc", u"abc"},
      {"at the end", kString, kEnd, kSensitive, u"ab", u"cabab", u"cab"},
      {"not elsewhere", kString, kStart, kSensitive, u"ab", u"cab", u"cab"},
      {"", kString, kEnd, kSensitive, u"ab", u"abc", u"abc"},
      {"at both ends only the end goes", kString, kBoth, kSensitive, u"ab", u"abXab", u"abX"},
      {"at the start only", kString, kBoth, kSensitive, u"ab", u"abX", u"X"},
      {"at the end only", kString, kBoth, kSensitive, u"ab", u"Xab", u"X"},
      {"the end half sees the whole cell", kString, kBoth, kSensitive, u"aa", u"aaa", u"a"},
      {"the same text is start and end", kString, kBoth, kSensitive, u"ab", u"ab", u""},
      {"case counts", kString, kBoth, kSensitive, u"AB", u"abXab", u"abXab"},
      {"case does not count", kString, kStart, kInsensitive, u"AB", u"aBX", u"X"},
      {"nor at the end", kString, kEnd, kInsensitive, u"AB", u"XaB", u"X"},
      {"the found length can differ", kString, kStart, kInsensitive, u"SS", u"ßX", u"X"},
      {"equivalence", kString, kEnd, kSensitive, u"\u00E9", u"Xe\u0301", u"X"},
      {"an empty text to trim", kString, kBoth, kSensitive, u"", u"abc", u"abc"},
      {"an empty cell", kString, kBoth, kSensitive, u"ab", u"", u""},

      {"a run", kCharacters, kStart, kInsensitive, u"ab", u"ABabc", u"c"},
      {"with regard to case", kCharacters, kStart, kSensitive, u"ab", u"abABc", u"ABc"},
      {"a run at the end", kCharacters, kEnd, kSensitive, u"ab", u"Xbaba", u"X"},
      {"at both ends only the end goes", kCharacters, kBoth, kSensitive, u"x", u"xaxx", u"xa"},
      {"at the start only", kCharacters, kBoth, kSensitive, u"x", u"xab", u"ab"},
      {"at the end only", kCharacters, kBoth, kSensitive, u"x", u"abxx", u"ab"},
      {"nothing but them", kCharacters, kBoth, kSensitive, u"ab", u"abba", u""},
      {"none there", kCharacters, kBoth, kSensitive, u"ab", u"XaY", u"XaY"},
      {"no characters", kCharacters, kBoth, kSensitive, u"", u" a ", u" a "},
      {"an empty cell", kCharacters, kBoth, kSensitive, u"ab", u"", u""},
      {"the set is widened by both cases", kCharacters, kStart, kInsensitive, u"ß", u"SßX", u"X"},
      {"and not without that", kCharacters, kStart, kSensitive, u"ß", u"SX", u"SX"},
      {"code points, not sequences", kCharacters, kStart, kSensitive, u"e", u"e\u0301X", u"\u0301X"},
      {"two pairs: one goes", kCharacters, kStart, kSensitive, kEmoji, kEmoji + kEmoji + u"X", kEmoji + u"X"},
      {"also at the end", kCharacters, kEnd, kSensitive, kEmoji, u"X" + kEmoji + kEmoji, u"X" + kEmoji},
      {"and at both", kCharacters, kBoth, kSensitive, kEmoji, kEmoji + u"X" + kEmoji, kEmoji + u"X"},

      {"white space at both ends", kWhitespace, kBoth, kSensitive, u"ignored", u"  abc  ", u"  abc"},
      {"at the start only", kWhitespace, kBoth, kSensitive, u"", u" \t\u00A0abc", u"abc"},
      {"at the end only", kWhitespace, kBoth, kSensitive, u"", u"abc \u3000", u"abc"},
      {"from the start", kWhitespace, kStart, kSensitive, u"", u"  abc  ", u"abc  "},
      {"from the end", kWhitespace, kEnd, kSensitive, u"", u"  abc  ", u"  abc"},
      {"nothing but white space", kWhitespace, kBoth, kSensitive, u"", u" \t ", u""},
      {"line ends are not in it", kWhitespace, kBoth, kSensitive, u"", u"\n abc \r", u"\n abc \r"},

      {"matches anywhere", kExpression, kBoth, kSensitive, u"[ab]", u"aXbYa", u"XY"},
      {"from the start", kExpression, kStart, kSensitive, u"[ab]", u"XbYa", u"XY"},
      {"from the end", kExpression, kEnd, kSensitive, u"[ab]", u"aXbY", u"XY"},
      {"from nowhere", kExpression, 9, kSensitive, u"[ab]", u"XbYa", u"XY"},
      {"all of it", kExpression, kBoth, kSensitive, u".*", u"abc", u""},
      {"in one pass", kExpression, kBoth, kSensitive, u"ab", u"aabb", u"ab"},
      {"case counts", kExpression, kBoth, kSensitive, u"a", u"aA", u"A"},
      {"case does not count", kExpression, kBoth, kInsensitive, u"a", u"aA", u""},
      {"what does not compile", kExpression, kBoth, kSensitive, u"[", u"[X", u"[X"},
      {"an empty expression", kExpression, kBoth, kSensitive, u"", u"X", u"X"},
      {"an empty cell", kExpression, kBoth, kSensitive, u"x*", u"", u""},

      {"an unknown place", kString, 3, kSensitive, u"a", u"aXa", u"aXa"},
      {"", kCharacters, -1, kSensitive, u"a", u"aXa", u"aXa"},
      {"", kWhitespace, 3, kSensitive, u"", u" X ", u" X "},
      {"an unknown type", 4, kBoth, kSensitive, u"a", u"aXa", u"aXa"},
      {"", -1, kBoth, kSensitive, u" ", u" X ", u" X "},
  };
  for (const auto& [why, type, where, caseFlag, what, text, result] : kCases)
    EXPECT_EQ(toUtf8(trimmedBy(record(type, where, caseFlag, what), text)), toUtf8(result))
        << why << ": type " << type << " where " << where << " " << toUtf8(what) << " of " << toUtf8(text);
}

TEST(CellTrimmer, ReadsItsRecordTolerantly) {
  EXPECT_EQ(trimmedBy({{"Arg2", u"A"}}, u"aX"), u"X");  // a string, from both sides, whatever the case
  EXPECT_EQ(trimmedBy({{"IntArg2", u"2"}, {"IntArg3", u"1"}}, u" X "), u"X ");
  EXPECT_EQ(trimmedBy({{"IntArg1", 2}, {"Arg2", u"A"}}, u"aX"), u"X");  // not the bit of the case
  EXPECT_EQ(trimmedBy({{"IntArg1", 3}, {"Arg2", u"A"}}, u"aX"), u"aX");
  EXPECT_EQ(trimmedBy({{"Arg2", 12}}, u"12X"), u"X");
  EXPECT_EQ(trimmedBy({{"Arg1", u"a"}}, u"aX"), u"aX");  // these are the cells
  EXPECT_EQ(trimmedBy({}, u"aX"), u"aX");
}

TEST(CellTrimmer, ServesManyCells) {
  TextArena arena;
  CellTrimmer trimmer(record(kExpression, kBoth, kSensitive, u"b+"));
  const auto first = trimmer.trimmed(u"abbc", arena);
  const auto second = trimmer.trimmed(u"b", arena);
  EXPECT_EQ(trimmer.trimmed(u"xyz", arena), u"xyz");
  EXPECT_EQ(first, u"ac");
  EXPECT_EQ(second, u"");
}

TEST(CellTrimmer, TrimsAsThePlainRule) {
  RandomSource random;
  const std::u16string parts[] = {u" ", u"\t", u"\u3000", u"\n", u"a",  u"b", u"A",
                                  u"B", u"ab", kEmoji,    u"é",  u"É",  u"s", u"ß",
                                  u"e", u"[",  u"\u0301", u".",  u"\"", u"|", u"x"};
  for (std::uint64_t round = 0; round < testing::rounds(20'000); ++round) {
    const std::u16string what = random.text(parts, 3);
    std::u16string text = random.text(parts, 6);
    if (random.oneIn(3)) text = what + text;
    if (random.oneIn(3)) text += what;
    const auto type = static_cast<std::int64_t>(random.below(6)) - 1;
    const auto where = static_cast<std::int64_t>(random.below(5)) - 1;
    const auto caseFlag = static_cast<std::int64_t>(random.below(4));
    ASSERT_EQ(toUtf8(trimmedBy(record(type, where, caseFlag, what), text)),
              toUtf8(plainlyTrimmed(type, where, caseFlag, what, text)))
        << "type " << type << " where " << where << " case " << caseFlag << " " << toUtf8(what) << " of "
        << toUtf8(text);
  }
}

}  // namespace
}  // namespace quillet
