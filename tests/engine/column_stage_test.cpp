#include "engine/column_stage.h"

#include <gtest/gtest.h>

#include "engine/job_fixture.h"
#include "text/text_writer.h"

namespace quillet {
namespace {

using testing::finalRecord;
using testing::initialRecord;
using testing::record;

struct Stage {
  OperationList list;
  std::vector<std::u16string> warnings;

  // The output text of one line.
  std::u16string text(std::u16string_view line, std::int64_t inputLineIndex = 0) {
    const FileSettings settings = settingsFromOperations(list);
    DateReader reader;
    const ColumnReformatter::Warn warn = [&](std::u16string_view message) { warnings.emplace_back(message); };
    ColumnStage stage(settings, middleRecords(list), reader, warn);
    leavesLines = stage.leavesLinesAsTheyAre();
    TextArena arena;
    const OutputCells cells = stage.apply(line, inputLineIndex, arena);
    TextBuffer buffer;
    appendJoined(cells.cells, cells.separator, cells.quotedCount, buffer);
    return std::u16string(buffer.view());
  }
  bool leavesLines = false;
};

// What becomes of a line with comma in, "|" out.
std::u16string columns(OperationList middle, std::u16string_view line, bool addQuotes = false) {
  Stage stage;
  stage.list = std::move(middle);
  stage.list.insert(stage.list.begin(), initialRecord());
  stage.list.push_back(finalRecord({{"Arg2", u"|"}, {"IntArg1", addQuotes ? 1 : 0}}));
  return stage.text(line);
}

OperationRecord numbered(std::int64_t code, std::int64_t count, std::u16string text = u"") {
  return record(code, {{"IntArg1", count}, {"Arg1", text}});
}
OperationRecord rearrange(std::u16string order) {
  return record(OpRearrangeColumns, {{"Arg1", order}});
}
OperationRecord join(std::u16string groups, std::u16string separator = u"-") {
  return record(OpJoinColumns, {{"Arg1", groups}, {"Arg2", separator}});
}
OperationRecord trim(std::u16string list, std::u16string text) {
  return record(OpTrimColumn, {{"IntArg2", 1}, {"Arg1", list}, {"Arg2", text}});
}
OperationRecord replace(std::u16string list, std::u16string what, std::u16string with,
                        std::int64_t type = 0) {
  return record(OpReplaceColumn, {{"IntArg2", type}, {"Arg1", list}, {"Arg2", what}, {"Arg3", with}});
}

TEST(ColumnStage, SplitsAndJoins) {
  EXPECT_EQ(columns({}, u"a,\"b,c\",d"), u"a|b,c|d");
  EXPECT_EQ(columns({}, u""), u"");
  EXPECT_EQ(columns({}, u",,"), u"||");
}

TEST(ColumnStage, DoesNothingWithoutAColumnSeparator) {
  const OperationList middle = {numbered(OpSetInitialNumberOfColumns, 3, u"x"), trim(u"1", u"a"),
                                rearrange(u"2, 1"), join(u"1 + 2"),
                                numbered(OpSetFinalNumberOfColumns, 5, u"y")};
  for (const auto& initial : {initialRecord({{"IntArg1", 1 + 32}}), initialRecord({{"Arg2", u""}})}) {
    Stage stage{{initial}, {}};
    stage.list.insert(stage.list.end(), middle.begin(), middle.end());
    stage.list.push_back(finalRecord({{"IntArg1", 1}}));
    EXPECT_EQ(stage.text(u"a,\"b\""), u"a,\"b\"");
    EXPECT_TRUE(stage.leavesLines);
  }
}

TEST(ColumnStage, SelectsColumnsByTheirNumbers) {
  EXPECT_EQ(columns({trim(u"1, 3", u"ab")}, u"ax,ay,az"), u"x|ay|z");
  EXPECT_EQ(columns({trim(u"2 - 3", u"ab")}, u"ax,ay,az"), u"ax|y|z");
  EXPECT_EQ(columns({trim(u"", u"ab")}, u"ax,ay"), u"ax|ay");     // nothing, not everything
  EXPECT_EQ(columns({trim(u"2 -", u"ab")}, u"ax,ay"), u"ax|ay");  // an open range selects nothing
  EXPECT_EQ(columns({trim(u"1, 9", u"ab")}, u"ax,ay"), u"x|ay");  // the others do not come into being
  EXPECT_EQ(columns({trim(u"2 - 9", u"ab")}, u"ax,ay"), u"ax|y");
  EXPECT_EQ(columns({trim(u"0", u"ab")}, u"ax,ay"), u"x|ay");
}

TEST(ColumnStage, TrimsAndReplacesCells) {
  EXPECT_EQ(columns({record(OpTrimColumn, {{"Arg1", u"1"}, {"Arg2", u"A"}})}, u"aXa,aXa"), u"X|aXa");
  EXPECT_EQ(columns({record(OpTrimColumn, {{"IntArg1", 1}, {"Arg1", u"1"}, {"Arg2", u"A"}})}, u"aXA"), u"aX");
  EXPECT_EQ(columns({record(OpTrimColumn, {{"IntArg2", 2}, {"IntArg3", 1}, {"Arg1", u"2"}})}, u" a , b "),
            u" a |b ");
  EXPECT_EQ(columns({record(OpTrimColumn, {{"IntArg2", 3}, {"Arg1", u"1"}, {"Arg2", u"\\d"}})}, u"1a2,1"),
            u"a|1");
  EXPECT_EQ(columns({replace(u"2", u"a", u"xy")}, u"a,aa"), u"a|xyxy");
  EXPECT_EQ(columns({replace(u"2", u"", u"xy")}, u"a,aa"), u"a|aa");
  EXPECT_EQ(columns({replace(u"1", u"(a)(b)", u"$2$1", 1)}, u"abab"), u"baba");
  EXPECT_EQ(columns({replace(u"1", u"(", u"x", 1)}, u"a("), u"a(");
  EXPECT_EQ(columns({replace(u"1", u"a", u"x", 2)}, u"a"), u"a");
  EXPECT_EQ(columns({replace(u"1", u"a", u",")}, u"bab,c"), u"b,b|c");  // is not split again
}

TEST(ColumnStage, ActsInListOrder) {
  const auto initial = numbered(OpSetInitialNumberOfColumns, 3, u"ab");
  EXPECT_EQ(columns({initial, trim(u"3", u"a")}, u"1,2"), u"1|2|b");
  EXPECT_EQ(columns({trim(u"3", u"a"), initial}, u"1,2"), u"1|2|ab");
  EXPECT_EQ(columns({replace(u"1", u"a", u"b"), replace(u"1", u"b", u"c")}, u"ab"), u"cc");
}

TEST(ColumnStage, SetsTheInitialNumberOfColumns) {
  EXPECT_EQ(columns({numbered(OpSetInitialNumberOfColumns, 2, u"x")}, u"1,2,3"), u"1|2");
  EXPECT_EQ(columns({numbered(OpSetInitialNumberOfColumns, 5, u"x")}, u"1,2,3"), u"1|2|3|x|x");
  EXPECT_EQ(columns({numbered(OpSetInitialNumberOfColumns, 3, u"x")}, u"1,2,3"), u"1|2|3");
  EXPECT_EQ(columns({record(OpSetInitialNumberOfColumns)}, u"1,2"), u"");
  EXPECT_EQ(columns({numbered(OpSetInitialNumberOfColumns, -2, u"x")}, u"1,2"), u"");
}

TEST(ColumnStage, RearrangesColumns) {
  EXPECT_EQ(columns({rearrange(u"2, 1")}, u"a,b,c"), u"b|a|c");
  EXPECT_EQ(columns({rearrange(u"1, 1")}, u"a,b,c"), u"a|a|c");
  EXPECT_EQ(columns({rearrange(u"3, 9, 1")}, u"a,b,c"), u"c|b|a");
  EXPECT_EQ(columns({rearrange(u"1,2,3,1")}, u"a,b,c"), u"a|b|c|a");
  EXPECT_EQ(columns({rearrange(u"1,2,3,9,1")}, u"a,b,c"), u"a|b|c");  // a store too far behind the end
  EXPECT_EQ(columns({rearrange(u"1,2,3,9,1,2")}, u"a,b,c"), u"a|b|c");
  EXPECT_EQ(columns({rearrange(u"1,2,3,3,2,1")}, u"a,b,c"), u"a|b|c|c|b|a");
  EXPECT_EQ(columns({rearrange(u"")}, u"a,b,c"), u"a|b|c");
  EXPECT_EQ(columns({rearrange(u"x, -1, 0, 2")}, u"a,b,c,d"), u"a|b|c|b");
  EXPECT_EQ(columns({rearrange(u"2, 1"), rearrange(u"3, 3")}, u"a,b,c"), u"b|a|c");  // the first alone
  EXPECT_EQ(columns({rearrange(u"2, 1"), trim(u"1", u"a")}, u"a1,b"), u"b|1");       // behind all others
}

TEST(ColumnStage, JoinsColumns) {
  EXPECT_EQ(columns({join(u"1, 2 + 3, 4")}, u"a,b,c,d"), u"a|b-c|d");
  EXPECT_EQ(columns({join(u"9")}, u"a,b,c"), u"");
  EXPECT_EQ(columns({join(u"9, 1")}, u"a,b,c"), u"|a");
  EXPECT_EQ(columns({join(u"3 + 1 + 3")}, u"a,b,c"), u"c-a-c");
  EXPECT_EQ(columns({join(u"1 + 9 + 2")}, u"a,b"), u"a-b");
  EXPECT_EQ(columns({join(u"1 + x")}, u"a,b"), u"a");
  EXPECT_EQ(columns({join(u"-9223372036854775808 + 2 + 9223372036854775807")}, u"a,b"), u"b");
  EXPECT_EQ(columns({join(u"1 + 2", u"")}, u"a,b"), u"ab");
  EXPECT_EQ(columns({join(u"1 + 2")}, u","), u"-");
  EXPECT_EQ(columns({rearrange(u"2, 1"), join(u"1")}, u"a,b"), u"a");               // wins over a new order
  EXPECT_EQ(columns({join(u""), rearrange(u"2, 1")}, u"a,b"), u"b|a");              // counts as absent
  EXPECT_EQ(columns({join(u""), join(u"1"), rearrange(u"2, 1")}, u"a,b"), u"b|a");  // and is the first
}

TEST(ColumnStage, QuotesEveryCell) {
  EXPECT_EQ(columns({}, u"a,,b", true), u"\"a\"|\"\"|\"b\"");
  EXPECT_EQ(columns({}, u"\"a\"\"b\"", true), u"\"a\"\"b\"");
  EXPECT_EQ(columns({join(u"1 + 2", u"\"")}, u"a,b", true), u"\"a\"\"b\"");
}

TEST(ColumnStage, SetsTheFinalNumberOfColumnsBehindTheQuotes) {
  const auto final = [](std::int64_t count) { return numbered(OpSetFinalNumberOfColumns, count, u"x"); };
  EXPECT_EQ(columns({final(4)}, u"a,b", true), u"\"a\"|\"b\"|x|x");
  EXPECT_EQ(columns({final(1)}, u"a,b", true), u"\"a\"");
  EXPECT_EQ(columns({final(1), final(3)}, u"a,b", true), u"\"a\"|x|x");  // each counts
  EXPECT_EQ(columns({final(0)}, u"a,b", true), u"");
  EXPECT_EQ(columns({final(-1)}, u"a,b"), u"");
  EXPECT_EQ(columns({final(3), rearrange(u"2, 1")}, u"a,b"), u"b|a|x");
}

TEST(ColumnStage, ReformatsCellsAndWarnsWithTheLineNumber) {
  Stage stage{
      {initialRecord(), record(OpReformatColumn, {{"Arg1", u"1 - 3"}, {"IntArg3", 4}}), finalRecord()}, {}};
  EXPECT_EQ(stage.text(u"8/16/2018,later, ,2018-1-2", 41), u"2018-08-16\tlater\t \t2018-1-2");
  EXPECT_EQ(stage.warnings,
            std::vector<std::u16string>{u"Could not convert \"later\" into a date on line 42"});
}

TEST(ColumnStage, KnowsWhenItLeavesLinesAsTheyAre) {
  const auto leaves = [](OperationList list) {
    Stage stage{std::move(list), {}};
    stage.text(u"a");
    return stage.leavesLines;
  };
  const auto same = finalRecord({{"Arg2", u","}});
  const auto plain = initialRecord({{"IntArg1", 17}});
  EXPECT_TRUE(leaves({plain, same}));
  EXPECT_TRUE(leaves({plain, record(OpTrimLine), same}));
  EXPECT_FALSE(leaves({initialRecord(), same}));  // quotes go
  EXPECT_FALSE(leaves({plain, finalRecord()}));
  EXPECT_FALSE(leaves({plain, finalRecord({{"Arg2", u","}, {"IntArg1", 1}})}));
  EXPECT_FALSE(leaves({plain, trim(u"1", u"a"), same}));
  EXPECT_FALSE(leaves({plain, join(u"1"), same}));
  EXPECT_FALSE(leaves({plain, rearrange(u"2, 1"), same}));
  EXPECT_FALSE(leaves({plain, numbered(OpSetFinalNumberOfColumns, 1), same}));
  EXPECT_FALSE(leaves({plain, numbered(OpSetInitialNumberOfColumns, 1), same}));
}

TEST(ResizeCells, CutsOrFillsWithinReason) {
  const auto resized = [](std::int64_t count) {
    Cells cells = {u"a", u"b"};
    resizeCells(cells, count, u"x");
    return cells;
  };
  EXPECT_EQ(resized(1), (Cells{u"a"}));
  EXPECT_EQ(resized(2), (Cells{u"a", u"b"}));
  EXPECT_EQ(resized(4), (Cells{u"a", u"b", u"x", u"x"}));
  EXPECT_EQ(resized(0), Cells{});
  EXPECT_EQ(resized(INT64_MIN), Cells{});
  EXPECT_EQ(resized(INT64_MAX).size(), static_cast<std::size_t>(kMostColumns));
}

}  // namespace
}  // namespace quillet
