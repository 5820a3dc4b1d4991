#include "clipboard/cell_changes.h"

#include <gtest/gtest.h>
#include <limits>

#include "clipboard/cell_trim.h"
#include "clipboard/plain_cell_changes.h"
#include "clipboard/plain_cells.h"
#include "clipboard/two_dimensional_mutable_index_set.h"
#include "operations/operation_codes.h"
#include "platform/numbers.h"
#include "platform/regular_expression.h"
#include "platform/text_search.h"

namespace quillet {
namespace {

using testing::gridOfPlainCells;
using testing::PlainCells;
using testing::plainCellsOf;
using testing::plainlyChanged;
using testing::plainlyFilled;
using testing::plainlyReplaced;
using testing::RandomSource;
using testing::shownPlainCells;

constexpr std::int64_t kString = 0, kSequence = 1, kExpression = 1;
constexpr std::int64_t kInsensitive = 0, kSensitive = 1;
constexpr auto kMaximum = std::numeric_limits<std::int64_t>::max();

OperationRecord trim(std::int64_t type, std::u16string what, std::u16string cells) {
  return {{"Code", std::int64_t{OpClipboardTrim}},
          {"IntArg2", type},
          {"Arg1", std::move(cells)},
          {"Arg2", std::move(what)}};
}

OperationRecord replace(std::int64_t type, std::int64_t caseFlag, std::u16string what, std::u16string with,
                        std::u16string cells) {
  return {{"Code", std::int64_t{OpClipboardReplace}},
          {"IntArg1", caseFlag},
          {"IntArg2", type},
          {"Arg1", std::move(cells)},
          {"Arg2", std::move(what)},
          {"Arg3", std::move(with)}};
}

OperationRecord fill(std::int64_t type, std::u16string what, std::u16string cells) {
  return {{"Code", std::int64_t{OpClipboardFill}},
          {"IntArg1", type},
          {"Arg1", std::move(what)},
          {"Arg2", std::move(cells)}};
}

OperationRecord edit(std::int64_t row, std::int64_t column, std::u16string text) {
  return {{"Code", std::int64_t{OpClipboardEditCell}},
          {"IntArg1", row},
          {"IntArg2", column},
          {"Arg1", std::move(text)}};
}

std::string shown(const ClipboardGrid& grid) {
  return shownPlainCells(plainCellsOf(grid));
}

// The cells of a column of texts after an operation on all of them.
std::string shownColumn(ClipboardGrid (*changed)(const ClipboardGrid&, const OperationRecord&),
                        const OperationRecord& operation, const std::vector<std::u16string>& cells) {
  return shown(changed(gridOfPlainCells({cells}), operation));
}

// Which cells.

TEST(CellChanges, ReachTheCellsThatAreSelectedAndExist) {
  const PlainCells kBefore = {{u"a", u"b", u"c"}, {u"d"}, {}, {u"e", u"f"}};
  struct Case {
    const char* why;
    std::u16string cells;
    PlainCells after;
  };
  const Case kCases[] = {
      {"nothing", u"", kBefore},
      {"a line", u"Lines: 1", {{u"1", u"2", u"3"}, {u"d"}, {}, {u"e", u"f"}}},
      {"a line of one cell", u"Lines: 2", {{u"a", u"b", u"c"}, {u"1"}, {}, {u"e", u"f"}}},
      {"a line without cells", u"Lines: 3", kBefore},
      {"several lines", u"Lines: 2 - 4", {{u"a", u"b", u"c"}, {u"1"}, {}, {u"2", u"3"}}},
      {"lines apart", u"Lines: 1, 4", {{u"1", u"2", u"3"}, {u"d"}, {}, {u"4", u"5"}}},
      {"a column where it exists", u"Columns: 2", {{u"a", u"1", u"c"}, {u"d"}, {}, {u"e", u"2"}}},
      {"all columns", u"Columns: 1 - 9", {{u"1", u"2", u"3"}, {u"4"}, {}, {u"5", u"6"}}},
      {"columns apart", u"Columns: 1, 3", {{u"1", u"b", u"2"}, {u"3"}, {}, {u"4", u"f"}}},
      {"cells", u"Cells: (1, 2)+(4, 1)", {{u"a", u"1", u"c"}, {u"d"}, {}, {u"2", u"f"}}},
      {"in the order of the grid",
       u"Cells: (4, 1)+(1, 3)+(1, 1)",
       {{u"1", u"b", u"2"}, {u"d"}, {}, {u"3", u"f"}}},
      {"cells behind the end of their row stay away", u"Cells: (2, 2)+(3, 1)+(4, 3)+(1, 4)", kBefore},
      {"lines and columns that are not there", u"Lines: 5, 9 - 12; Columns: 4 - 9; Cells: (5, 1)", kBefore},
      {"a crossing counts once", u"Lines: 1; Columns: 2", {{u"1", u"2", u"3"}, {u"d"}, {}, {u"e", u"4"}}},
      {"three times selected is once, too",
       u"Lines: 1; Columns: 2; Cells: (1, 2)+(2, 1)",
       {{u"1", u"2", u"3"}, {u"4"}, {}, {u"e", u"5"}}},
      {"a line and cells of others",
       u"Lines: 2; Cells: (1, 2)+(4, 2)",
       {{u"a", u"1", u"c"}, {u"2"}, {}, {u"e", u"3"}}},
      {"lines to the largest number",
       u"Lines: 4 - 9223372036854775807",
       {{u"a", u"b", u"c"}, {u"d"}, {}, {u"1", u"2"}}},
      {"what is not understood", u"Cells: 1, 2; (1, 1); Line: 1", kBefore},
  };
  for (const auto& [why, cells, after] : kCases)
    EXPECT_EQ(shown(withCellsFilled(gridOfPlainCells(kBefore), fill(kSequence, u"1", cells))),
              shownPlainCells(after))
        << why;
}

TEST(CellChanges, TakeTheirCellsFromTheArgumentOfTheCode) {
  const ClipboardGrid grid = gridOfPlainCells({{u" a", u" a"}});
  EXPECT_EQ(shown(withCellsTrimmed(grid, trim(2, u"Columns: 2", u"Columns: 1"))), "[a| a]");
  EXPECT_EQ(shown(withCellsReplaced(grid, replace(0, 0, u"a", u"Columns: 2", u"Columns: 1"))),
            "[ Columns: 2| a]");
  EXPECT_EQ(shown(withCellsFilled(grid, fill(kString, u"Columns: 2", u"Columns: 1"))), "[Columns: 2| a]");
}

TEST(CellChanges, LeaveAnEmptyGridEmpty) {
  EXPECT_EQ(withCellsFilled({}, fill(kString, u"x", u"Lines: 1 - 9; Columns: 1; Cells: (1, 1)")).rowCount(),
            0u);
}

TEST(CellChanges, ShareWhatStays) {
  const ClipboardGrid grid = gridOfPlainCells(PlainCells(2000, {u"a", u"b"}));
  const auto isShared = [&](const ClipboardGrid& changed, std::size_t row) {
    return changed.row(row).cell(0).data() == grid.row(row).cell(0).data();
  };
  const ClipboardGrid filled = withCellsFilled(grid, fill(kString, u"x", u"Lines: 1001; Cells: (3, 1)"));
  for (std::size_t row = 0; row < 2000; ++row)
    EXPECT_EQ(isShared(filled, row), row != 1000 && row != 2) << row;
  const ClipboardGrid replaced = withCellsReplaced(grid, replace(kString, 0, u"x", u"y", u"Columns: 1"));
  for (const std::size_t row : {0, 1000, 1999}) EXPECT_TRUE(isShared(replaced, row)) << row;
  const auto edited = withCellEdited(grid, edit(1000, 0, u"x"));
  for (const std::size_t row : {0, 999, 1001, 1999}) EXPECT_TRUE(isShared(*edited, row)) << row;
}

TEST(CellChanges, LeaveTheGridThatTheyAreGiven) {
  const PlainCells kBefore = {{u" a ", u"b"}, {u"c"}};
  const ClipboardGrid grid = gridOfPlainCells(kBefore);
  withCellsTrimmed(grid, trim(2, u"", u"Columns: 1"));
  withCellsReplaced(grid, replace(0, 0, u"a", u"x", u"Columns: 1"));
  withCellsFilled(grid, fill(kString, u"x", u"Columns: 1"));
  withCellEdited(grid, edit(0, 0, u"x"));
  EXPECT_EQ(shown(grid), shownPlainCells(kBefore));
}

// Trim; what becomes of one cell is told beside CellTrimmer.

TEST(WithCellsTrimmed, TrimsTheSelectedCells) {
  const ClipboardGrid grid = gridOfPlainCells({{u"  abc  ", u"  x"}, {u"y  ", u" z "}});
  EXPECT_EQ(shown(withCellsTrimmed(grid, trim(2, u"", u"Columns: 1"))), "[  abc|  x][y| z ]");
  EXPECT_EQ(shown(withCellsTrimmed(grid, trim(2, u"", u"Lines: 1 - 2"))), "[  abc|x][y| z]");
  EXPECT_EQ(shown(withCellsTrimmed(grid, trim(3, u" *[axy] *", u"Columns: 1, 2"))), "[bc  |][| z ]");
  EXPECT_EQ(shown(withCellsTrimmed(grid, trim(3, u"(", u"Columns: 1, 2"))), shown(grid));
}

TEST(WithCellsTrimmed, CanLeaveNothing) {
  const ClipboardGrid grid = gridOfPlainCells({{u"a", u"  ", u"  "}});
  const ClipboardGrid trimmed = withCellsTrimmed(grid, trim(2, u"", u"Lines: 1"));
  EXPECT_EQ(shown(trimmed), "[a||]");
}

// Replace.

TEST(WithCellsReplaced, ReplacesInEachSelectedCell) {
  struct Case {
    const char* why;
    std::int64_t type, caseFlag;
    std::u16string what, with;
    std::vector<std::u16string> before, after;
  };
  const Case kCases[] = {
      {"each occurrence", kString, kSensitive, u"a", u"xy", {u"banana", u"b"}, {u"bxynxynxy", u"b"}},
      {"not what was put in", kString, kSensitive, u"a", u"aa", {u"aba"}, {u"aabaa"}},
      {"not across cells", kString, kSensitive, u"ab", u"x", {u"a", u"b"}, {u"a", u"b"}},
      {"by nothing", kString, kSensitive, u"a", u"", {u"a", u"ab"}, {u"", u"b"}},
      {"case counts", kString, kSensitive, u"A", u"x", {u"aA"}, {u"ax"}},
      {"case does not count", kString, kInsensitive, u"A", u"x", {u"aA"}, {u"xx"}},
      {"another bit is not that of the case", kString, 2, u"A", u"x", {u"aA"}, {u"xx"}},
      {"by equivalence", kString, kSensitive, u"\u00E9", u"e", {u"cafe\u0301"}, {u"cafe"}},
      {"no template", kString, kSensitive, u"a", u"$0\\", {u"a"}, {u"$0\\"}},
      {"no escapes", kString, kSensitive, u"\\t", u"\\n", {u"\t", u"\\t"}, {u"\t", u"\\n"}},
      {"nothing to replace", kString, kSensitive, u"", u"x", {u"ab", u""}, {u"ab", u""}},
      {"matches", kExpression, kSensitive, u"([a-z]+) ([0-9]+)", u"$2-$1", {u"a 1", u"b"}, {u"1-a", u"b"}},
      {"a group that is not there", kExpression, kSensitive, u"a", u"<$1>", {u"a"}, {u"<>"}},
      {"an escape in the template", kExpression, kSensitive, u"a", u"\\$0", {u"a"}, {u"$0"}},
      {"each match", kExpression, kSensitive, u"[0-9]", u"#", {u"1a23"}, {u"#a##"}},
      {"empty matches, also of empty cells",
       kExpression,
       kSensitive,
       u"x*",
       u"-",
       {u"a", u""},
       {u"-a-", u"-"}},
      {"case counts", kExpression, kSensitive, u"A", u"x", {u"aA"}, {u"ax"}},
      {"case does not count", kExpression, kInsensitive, u"A", u"x", {u"aA"}, {u"xx"}},
      {"what does not compile", kExpression, kSensitive, u"(", u"x", {u"a(b"}, {u"a(b"}},
      {"an empty expression", kExpression, kSensitive, u"", u"x", {u"ab", u""}, {u"ab", u""}},
      {"an unknown type", 2, kSensitive, u"a", u"x", {u"a"}, {u"a"}},
      {"another", -1, kSensitive, u"a", u"x", {u"a"}, {u"a"}},
  };
  for (const auto& [why, type, caseFlag, what, with, before, after] : kCases)
    EXPECT_EQ(shownColumn(withCellsReplaced, replace(type, caseFlag, what, with, u"Lines: 1"), before),
              shownPlainCells({after}))
        << why;
}

TEST(WithCellsReplaced, ReadsItsRecordTolerantly) {
  EXPECT_EQ(shownColumn(withCellsReplaced, {{"Arg1", u"Lines: 1"}, {"Arg2", u"A"}}, {u"ab"}), "[b]");
  EXPECT_EQ(shownColumn(withCellsReplaced, {{"Arg1", u"Lines: 1"}, {"Arg2", 1}, {"Arg3", 2}}, {u"1"}), "[2]");
  EXPECT_EQ(shownColumn(withCellsReplaced, {}, {u"a"}), "[a]");
}

// Fill.

TEST(WithCellsFilled, FillsWithAText) {
  const ClipboardGrid grid = gridOfPlainCells({{u"a", u"b"}, {u"c"}, {u"", u""}});
  EXPECT_EQ(shown(withCellsFilled(grid, fill(kString, u"x", u"Columns: 2"))), "[a|x][c][|x]");
  EXPECT_EQ(shown(withCellsFilled(grid, fill(kString, u"", u"Columns: 1"))), "[|b][][|]");
  EXPECT_EQ(shown(withCellsFilled(grid, fill(kString, u"1,2", u"Lines: 2"))), "[a|b][1,2][|]");
  EXPECT_EQ(shown(withCellsFilled(grid, fill(kString, u"\\t", u"Lines: 2"))), "[a|b][\\t][|]");
}

TEST(WithCellsFilled, FillsWithASequence) {
  struct Case {
    const char* why;
    std::u16string sequence;
    std::vector<std::u16string> cells;
  };
  const Case kCases[] = {
      {"start and step", u"10,5", {u"10", u"15", u"20"}},
      {"a start", u"7", {u"7", u"8", u"9"}},
      {"neither", u"", {u"0", u"1", u"2"}},
      {"an empty step is none at all", u"3,", {u"3", u"3", u"3"}},
      {"an empty start", u",5", {u"0", u"5", u"10"}},
      {"a comma", u",", {u"0", u"0", u"0"}},
      {"a step of 0", u"4,0", {u"4", u"4", u"4"}},
      {"downwards", u"1,-1", {u"1", u"0", u"-1"}},
      {"a third piece does not count", u"1,2,9", {u"1", u"3", u"5"}},
      {"no numbers", u"a,b", {u"0", u"0", u"0"}},
      {"no number as the step", u"5,b", {u"5", u"5", u"5"}},
      {"numbers at the front", u"5a,2.9", {u"5", u"7", u"9"}},
      {"blanks", u" 5 , 2 ", {u"5", u"7", u"9"}},
      {"signs", u"+5,+2", {u"5", u"7", u"9"}},
      {"no leading zeros", u"007,03", {u"7", u"10", u"13"}},
      {"another separator is none", u"5;2", {u"5", u"6", u"7"}},
      {"the largest numbers",
       u"9223372036854775806,1",
       {u"9223372036854775806", u"9223372036854775807", u"-9223372036854775808"}},
      {"beyond them",
       u"99999999999999999999,0",
       {u"9223372036854775807", u"9223372036854775807", u"9223372036854775807"}},
  };
  for (const auto& [why, sequence, cells] : kCases)
    EXPECT_EQ(shownColumn(withCellsFilled, fill(kSequence, sequence, u"Lines: 1"), {u"a", u"", u"7"}),
              shownPlainCells({cells}))
        << why;
}

TEST(WithCellsFilled, CountsOverSelectedCellsThatExist) {
  const ClipboardGrid grid = gridOfPlainCells({{u"a", u"b"}, {u"c"}, {}, {u"d", u"e", u"f"}});
  EXPECT_EQ(shown(withCellsFilled(grid, fill(kSequence, u"1", u"Columns: 2"))), "[a|1][c]()[d|2|f]");
  EXPECT_EQ(shown(withCellsFilled(grid, fill(kSequence, u"1", u"Cells: (1, 1)+(2, 2)+(4, 3)"))),
            "[1|b][c]()[d|e|2]");
}

TEST(WithCellsFilled, CountsACellThatStaysAsItWas) {
  const ClipboardGrid grid = gridOfPlainCells({{u"1"}, {u"2"}, {u"x"}});
  EXPECT_EQ(shown(withCellsFilled(grid, fill(kSequence, u"1", u"Columns: 1"))), "[1][2][3]");
}

TEST(WithCellsFilled, LeavesTheCellsForAnyOtherType) {
  for (const std::int64_t type : {-1, 2, 3})
    EXPECT_EQ(shownColumn(withCellsFilled, fill(type, u"x", u"Lines: 1"), {u"a", u"b"}), "[a|b]");
  EXPECT_EQ(shownColumn(withCellsFilled, {{"Arg1", u"x"}, {"Arg2", u"Lines: 1"}}, {u"a"}), "[x]");
}

// Edit.

TEST(WithCellEdited, SetsOneCell) {
  const PlainCells kBefore = {{u"a", u"b"}, {u"c"}, {}};
  struct Case {
    const char* why;
    std::int64_t row, column;
    std::u16string text;
    PlainCells after;
  };
  const Case kCases[] = {
      {"the first", 0, 0, u"x", {{u"x", u"b"}, {u"c"}, {}}},
      {"the last of its row", 0, 1, u"x", {{u"a", u"x"}, {u"c"}, {}}},
      {"to nothing", 0, 1, u"", {{u"a", u""}, {u"c"}, {}}},
      {"the only one", 1, 0, u"a,\"b\"\n", {{u"a", u"b"}, {u"a,\"b\"\n"}, {}}},
      {"behind the end", 1, 1, u"x", {{u"a", u"b"}, {u"c", u"x"}, {}}},
      {"far behind it", 1, 3, u"x", {{u"a", u"b"}, {u"c", u"", u"", u"x"}, {}}},
      {"with nothing", 1, 3, u"", {{u"a", u"b"}, {u"c", u"", u"", u""}, {}}},
      {"in a row without cells", 2, 0, u"x", {{u"a", u"b"}, {u"c"}, {u"x"}}},
      {"behind its end", 2, 2, u"x", {{u"a", u"b"}, {u"c"}, {u"", u"", u"x"}}},
      {"without escapes", 1, 0, u"\\n", {{u"a", u"b"}, {u"\\n"}, {}}},
  };
  for (const auto& [why, row, column, text, after] : kCases) {
    const auto edited = withCellEdited(gridOfPlainCells(kBefore), edit(row, column, text));
    ASSERT_TRUE(edited) << why;
    EXPECT_EQ(shown(*edited), shownPlainCells(after)) << why;
  }
}

TEST(WithCellEdited, RefusesWhatIsOutOfRange) {
  const ClipboardGrid grid = gridOfPlainCells({{u"a", u"b"}, {u"c"}});
  const OperationRecord kRecords[] = {
      edit(-1, 0, u"x"),
      edit(0, -1, u"x"),
      edit(-1, -1, u"x"),
      edit(2, 0, u"x"),
      edit(kMaximum, 0, u"x"),
      edit(-kMaximum, 0, u"x"),
      edit(0, kMaximum, u"x"),
      edit(0, 1'048'576, u"x"),
      {{"IntArg1", 0}, {"Arg1", u"x"}},
      {{"IntArg2", 0}, {"Arg1", u"x"}},
      {},
  };
  for (const OperationRecord& operation : kRecords)
    EXPECT_FALSE(withCellEdited(grid, operation))
        << operation.integer("IntArg1", -1) << ", " << operation.integer("IntArg2", -1);
  EXPECT_FALSE(withCellEdited({}, edit(0, 0, u"x")));
}

TEST(WithCellEdited, ReachesTheLastColumnThatMayBe) {
  const auto edited = withCellEdited(gridOfPlainCells({{u"a"}}), edit(0, 1'048'575, u"x"));
  ASSERT_TRUE(edited);
  EXPECT_EQ(edited->maxRowLength(), 1'048'576u);
  EXPECT_EQ(edited->row(0).cell(0), u"a");
  EXPECT_EQ(edited->row(0).cell(1'048'575), u"x");
}

TEST(WithCellEdited, ReadsItsRecordTolerantly) {
  const auto edited =
      withCellEdited(gridOfPlainCells({{u"a", u"b"}}), {{"IntArg1", u"0"}, {"IntArg2", u"1"}});
  ASSERT_TRUE(edited);
  EXPECT_EQ(shown(*edited), "[a|]");
}

// All against the rules step by step.

std::u16string randomCellString(RandomSource& random, std::size_t rowCount) {
  TwoDimensionalMutableIndexSet selection;
  const auto below = [&](std::size_t n) { return static_cast<std::int64_t>(random.below(n)); };
  const std::size_t some = random.oneIn(4) ? rowCount + 1 : 6;
  const std::size_t columnCount = random.oneIn(2) ? 7 : 60;
  if (random.oneIn(2))
    for (std::int64_t i = below(some); i > 0; --i)
      selection.addInfiniteRowIndexesInRange(below(rowCount + 3), 1 + below(4));
  if (random.oneIn(3))
    for (std::int64_t i = below(3); i > 0; --i)
      selection.addInfiniteColumnIndexesInRange(below(columnCount), 1 + below(2));
  if (random.oneIn(2))
    for (std::int64_t i = below(some); i > 0; --i)
      selection.addRowIndex(below(rowCount + 3), below(columnCount));
  return selection.stringPlus1FromAllIndexes();
}

// Blank cells within a row and at its end, so many that a grid does not store them.
void addBlankCells(RandomSource& random, PlainCells& rows) {
  for (auto& row : rows) {
    if (random.oneIn(2)) continue;
    row.insert(row.begin() + static_cast<std::ptrdiff_t>(random.below(row.size() + 1)), random.below(30),
               u"");
    row.resize(row.size() + random.below(30));
  }
}

TEST(CellChanges, ChangeAsThePlainRules) {
  RandomSource random;
  const std::u16string parts[] = {u"a", u"A", u"b", u" ", u"1", u",", u"(", u"é", u"\U0001F600", u".", u"*"};
  for (std::uint64_t round = 0; round < testing::rounds(600); ++round) {
    const std::size_t rowCount = random.below(random.oneIn(20) ? 1'500 : 30);
    PlainCells rows = testing::randomPlainCells(random, rowCount, 6, parts, 4);
    if (rowCount < 30 && random.oneIn(2)) addBlankCells(random, rows);
    const ClipboardGrid grid = gridOfPlainCells(rows);
    const std::u16string cells = randomCellString(random, rowCount);
    const std::u16string what = random.text(parts, 2);
    const auto type = static_cast<std::int64_t>(random.below(3));
    SCOPED_TRACE((rowCount < 30 ? shownPlainCells(rows) : "many") + " type " + std::to_string(type) + " " +
                 toUtf8(what) + " in " + toUtf8(cells));

    const OperationRecord filling = fill(type, what, cells);
    ASSERT_EQ(plainCellsOf(withCellsFilled(grid, filling)), plainlyFilled(rows, filling));

    const OperationRecord replacing =
        replace(type, static_cast<std::int64_t>(random.below(2)), what, random.text(parts, 2), cells);
    ASSERT_EQ(plainCellsOf(withCellsReplaced(grid, replacing)),
              plainlyChanged(rows, cells,
                             [&](const std::u16string& cell) { return plainlyReplaced(replacing, cell); }));

    const OperationRecord trimming = trim(type, what, cells);
    CellTrimmer trimmer(trimming);
    TextArena arena;
    ASSERT_EQ(plainCellsOf(withCellsTrimmed(grid, trimming)),
              plainlyChanged(rows, cells, [&](const std::u16string& cell) {
                return std::u16string(trimmer.trimmed(cell, arena));
              }));
  }
}

TEST(WithCellEdited, EditsAsThePlainRule) {
  RandomSource random;
  const std::u16string parts[] = {u"a", u"b", u"é"};
  PlainCells rows = testing::randomPlainCells(random, 700, 5, parts, 3);
  ClipboardGrid grid = gridOfPlainCells(rows);
  for (std::uint64_t round = 0; round < testing::rounds(1'000); ++round) {
    const std::size_t row = random.below(rows.size());
    const std::size_t column = random.below(random.oneIn(20) ? 40 : 7);
    const std::u16string text = random.text(parts, 3);
    while (rows[row].size() <= column) rows[row].emplace_back();
    rows[row][column] = text;
    auto edited =
        withCellEdited(grid, edit(static_cast<std::int64_t>(row), static_cast<std::int64_t>(column), text));
    ASSERT_TRUE(edited);
    grid = *std::move(edited);
    if (round % 50 == 0) {
      ASSERT_EQ(plainCellsOf(grid), rows);
    }
  }
  EXPECT_EQ(plainCellsOf(grid), rows);
}

// Condensing.

TEST(StringByCondensingCharacters, LeavesOneBlankBetween) {
  const std::pair<std::u16string, std::u16string> kCases[] = {
      {u"", u""},
      {u"a", u"a"},
      {u"a b", u"a b"},
      {u"  a  b ", u"a b"},
      {u"a\t\r\n b\n", u"a b"},
      {u"\u00A0a\u3000b", u"a b"},
      {u" \t ", u""},
      {u"a\u0301  b", u"a\u0301 b"},
      {u"$1 \\", u"$1 \\"},
  };
  for (const auto& [text, condensed] : kCases)
    EXPECT_EQ(toUtf8(stringByCondensingCharacters(text)), toUtf8(condensed)) << toUtf8(text);
}

// All runs of what "\S" matches, with a blank between.
TEST(StringByCondensingCharacters, JoinsTheRunsOfOtherCharacters) {
  RandomSource random;
  auto other = *RegularExpression::compiled(u"\\S", CaseSensitivity::Insensitive);
  const std::u16string parts[] = {u"a",      u"b",      u" ",      u" ",      u"\t",     u"\n",
                                  u"\u0085", u"\u200B", u"\u2028", u"\u001C", u"\u180E", u"\U0001F600"};
  for (std::uint64_t round = 0; round < testing::rounds(2'000); ++round) {
    std::u16string text, expected;
    bool isInRun = false;
    for (std::size_t i = random.below(12); i > 0; --i) {
      const std::u16string& part = random.pick(parts);
      text += part;
      const bool isOther = other.hasMatch(part);
      if (isOther) expected += (isInRun || expected.empty() ? u"" : u" ") + part;
      isInRun = isOther;
    }
    ASSERT_EQ(toUtf8(stringByCondensingCharacters(text)), toUtf8(expected)) << toUtf8(text);
  }
}

}  // namespace
}  // namespace quillet
