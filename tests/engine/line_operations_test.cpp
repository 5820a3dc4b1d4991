#include "engine/line_operations.h"

#include <gtest/gtest.h>

#include "engine/job_fixture.h"

namespace quillet {
namespace {

using testing::record;

constexpr std::int64_t kCase = 1;

struct SkipCase {
  const char* why;
  std::int64_t type, flags;
  std::u16string text, line;
  bool skips;
};

TEST(LineSkipper, SkipsByTheLinesText) {
  const SkipCase kCases[] = {
      {"blank", 0, 0, u"", u"", true},
      {"a blank is a character", 0, 0, u"", u" ", false},
      {"a blank line whatever the text", 0, 0, u"x", u"", true},
      {"contains", 1, kCase, u"b", u"abc", true},
      {"contains not", 1, kCase, u"x", u"abc", false},
      {"case counts", 1, kCase, u"B", u"abc", false},
      {"case does not count", 1, 0, u"B", u"abc", true},
      {"equivalence", 1, kCase, u"\u00E9", u"e\u0301", true},
      {"a mark hides its base", 1, kCase, u"e", u"e\u0301", false},
      {"nothing is never found", 1, 0, u"", u"abc", false},
      {"nor in nothing", 1, 0, u"", u"", false},
      {"starts", 3, kCase, u"ab", u"abc", true},
      {"starts not", 3, kCase, u"bc", u"abc", false},
      {"starts without case", 3, 0, u"AB", u"abc", true},
      {"starts with case", 3, kCase, u"AB", u"abc", false},
      {"nothing at the start", 3, 0, u"", u"abc", false},
      {"ends", 4, kCase, u"bc", u"abc", true},
      {"ends not", 4, kCase, u"ab", u"abc", false},
      {"ends without case", 4, 0, u"BC", u"abc", true},
      {"nothing at the end", 4, 0, u"", u"abc", false},
      {"matches somewhere", 5, kCase, u"b.", u"abc", true},
      {"matches not", 5, kCase, u"b$", u"abc", false},
      {"matches without case", 5, 0, u"B", u"abc", true},
      {"does not compile", 5, 0, u"[", u"[", false},
      {"an empty expression", 5, 0, u"", u"", false},
      {"an empty match counts", 5, 0, u"x*", u"abc", true},
      {"an unknown type", 6, 0, u"", u"", false},
      {"another", -1, 0, u"", u"", false},
  };
  for (const auto& [why, type, flags, text, line, skips] : kCases) {
    LineSkipper skipper(record(OpSkipLine, {{"IntArg1", flags}, {"IntArg2", type}, {"Arg1", text}}));
    EXPECT_EQ(skipper.skips(line, 0), skips) << why;
  }
  EXPECT_TRUE(LineSkipper(record(OpSkipLine)).skips(u"", 0));  // the type's default
}

// The numbers of the skipped lines among the first 30.
std::string skippedNumbers(std::u16string_view list) {
  LineSkipper skipper(record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", std::u16string(list)}}));
  std::string numbers;
  for (std::int64_t index = 0; index < 30; ++index)
    if (skipper.skips(u"x", index)) numbers += (numbers.empty() ? "" : " ") + std::to_string(index + 1);
  return numbers;
}

TEST(LineSkipper, SkipsByLineNumbers) {
  EXPECT_EQ(skippedNumbers(u"2, 5 - 8, 27 -"), "2 5 6 7 8 27 28 29 30");
  EXPECT_EQ(skippedNumbers(u"1"), "1");
  EXPECT_EQ(skippedNumbers(u"29 -"), "29 30");
  EXPECT_EQ(skippedNumbers(u"0"), "");
  EXPECT_EQ(skippedNumbers(u"+5"), "");
  EXPECT_EQ(skippedNumbers(u""), "");
  EXPECT_EQ(skippedNumbers(u"- 3"), "1 2 3");         // from 0, which is no line
  EXPECT_EQ(skippedNumbers(u"28 -, 29 -"), "29 30");  // the last open range counts
  EXPECT_EQ(skippedNumbers(u"abc"), "");
}

std::optional<std::u16string> applied(const OperationList& records, std::u16string_view line,
                                      std::int64_t index = 0) {
  LineOperations operations(records);
  TextArena arena;
  const auto result = operations.apply(line, index, arena);
  if (!result) return std::nullopt;
  return std::u16string(*result);
}

const OperationRecord kTrim = record(OpTrimLine, {{"IntArg2", 2}});
const OperationRecord kSkipBlank = record(OpSkipLine);

TEST(LineOperations, ActInListOrder) {
  EXPECT_EQ(applied({kTrim, kSkipBlank}, u"  "), std::nullopt);
  EXPECT_EQ(applied({kSkipBlank, kTrim}, u"  "), u"");
  const auto replace = [](std::u16string what, std::u16string with) {
    return record(OpReplaceLine, {{"IntArg1", 1}, {"Arg1", what}, {"Arg2", with}});
  };
  EXPECT_EQ(applied({replace(u"a", u"b"), replace(u"b", u"c")}, u"ab"), u"cc");
  EXPECT_EQ(applied({replace(u"b", u"c"), replace(u"a", u"b")}, u"ab"), u"bc");
  EXPECT_EQ(applied({replace(u"ab", u"")}, u"ab"), u"");  // goes on as an empty line
}

TEST(LineOperations, PassOverOtherCodes) {
  EXPECT_EQ(applied({record(OpReplaceCharacter, {{"Arg1", u"a"}, {"Arg2", u"b"}}), record(OpJoinLines),
                     record(OpTrimColumn, {{"Arg1", u"1"}, {"IntArg2", 2}}), record(0)},
                    u" a "),
            u" a ");
  EXPECT_EQ(applied({}, u"a"), u"a");
}

TEST(LineOperations, ReadTheirFields) {
  EXPECT_EQ(
      applied({record(OpTrimLine, {{"IntArg1", 1}, {"IntArg2", 0}, {"IntArg3", 2}, {"Arg1", u"A"}})}, u"AaA"),
      u"Aa");
  EXPECT_EQ(applied({record(OpTrimLine, {{"Arg1", u"A"}})}, u"aXA"), u"X");
  EXPECT_EQ(applied({record(OpTrimLine, {{"IntArg2", 1}, {"IntArg3", 1}, {"Arg1", u"a"}})}, u"AaB"), u"B");
  EXPECT_EQ(applied({record(OpReplaceLine, {{"IntArg2", 1}, {"Arg1", u"(A)"}, {"Arg2", u"<$1>"}})}, u"xa"),
            u"x<a>");
  EXPECT_EQ(applied({record(OpReplaceLine)}, u"xa"), u"xa");
  EXPECT_EQ(applied({record(OpTrimLine)}, u"xa"), u"xa");
}

TEST(LineOperations, CountLinesFromTheirIndex) {
  const OperationList list = {record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", u"7"}})};
  EXPECT_EQ(applied(list, u"x", 6), std::nullopt);
  EXPECT_EQ(applied(list, u"x", 7), u"x");
}

}  // namespace
}  // namespace quillet
