#include "clipboard/clipboard_row.h"

#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <stdexcept>

#include "clipboard/plain_grid.h"

namespace quillet {
namespace {

using testing::PlainRow;
using testing::plainRow;
using testing::RandomSource;
using testing::rowOf;

// So many cells, blank but for those at the columns.
PlainRow blankBut(std::size_t cellCount, const std::vector<std::size_t>& columns) {
  PlainRow cells(cellCount);
  for (const std::size_t column : columns) cells[column] = u"x";
  return cells;
}

TEST(ClipboardRow, HasTheCellsThatItWasMadeOf) {
  const PlainRow rows[] = {
      {},
      {u""},
      {u"", u"", u""},
      {u"a"},
      {u"ab", u"", u"c", u"", u""},
      {u"", u"a"},
      blankBut(9, {8}),
      blankBut(9, {0}),
      blankBut(16'384, {0, 7, 16'383}),
      blankBut(16'384, {9'000}),
  };
  for (const PlainRow& cells : rows) {
    const ClipboardRow row = rowOf(cells);
    EXPECT_EQ(row.cellCount(), cells.size());
    EXPECT_EQ(plainRow(row), cells);
    EXPECT_EQ(row.cell(cells.size()), u"");
    EXPECT_EQ(row.cell(std::numeric_limits<std::size_t>::max()), u"");
  }
}

TEST(ClipboardRow, CountsTheUnitsOfAllCells) {
  EXPECT_EQ(ClipboardRow().lengthInUnits(), 0U);
  EXPECT_EQ(rowOf({u"", u""}).lengthInUnits(), 0U);
  EXPECT_EQ(rowOf({u"ab", u"", u"\xD83D\xDE00", u""}).lengthInUnits(), 4U);
  EXPECT_EQ(rowOf(blankBut(500, {1, 400})).lengthInUnits(), 2U);
}

TEST(ClipboardRow, StoresNeitherTheBlankCellsAtItsEndNorThoseOfANearlyBlankRow) {
  const struct {
    PlainRow cells;
    std::size_t storedCells;
    std::size_t endOfTexts;
  } cases[] = {
      {{}, 0, 0},
      {blankBut(1'000, {}), 0, 0},
      {blankBut(1'000, {0, 2}), 3, 3},
      {blankBut(4, {3}), 4, 4},
      {blankBut(8, {7}), 1, 8},
      {blankBut(1'000, {999}), 1, 1'000},
      {blankBut(1'000, {0, 500, 800}), 3, 801},
  };
  for (const auto& [cells, storedCells, endOfTexts] : cases) {
    const ClipboardRow row = rowOf(cells);
    EXPECT_EQ(row.storedCellCount(), storedCells) << cells.size();
    EXPECT_EQ(row.endOfTexts(), endOfTexts) << cells.size();
  }
}

TEST(ClipboardRow, SharesItsCellsWithItsCopies) {
  std::optional<ClipboardRow> row = rowOf({u"ab", u"c"});
  const char16_t* units = row->cell(0).data();
  ClipboardRow copy = *row;
  ClipboardRow assigned;
  assigned = copy;
  row.reset();
  const ClipboardRow moved = std::move(copy);
  EXPECT_EQ(moved.cell(0).data(), units);
  EXPECT_EQ(assigned.cell(0).data(), units);
  assigned = assigned;  // NOLINT(clang-diagnostic-self-assign-overloaded)
  EXPECT_EQ(assigned.cell(1), u"c");
}

TEST(ClipboardRow, EqualsARowOfTheSameCells) {
  const PlainRow rows[] = {
      {},      {u""},        {u"", u""},        {u"a"},           {u"a", u""},       {u"", u"a"},      {u"b"},
      {u"ab"}, {u"a", u"b"}, {u"", u"a", u"b"}, blankBut(9, {8}), blankBut(10, {8}), blankBut(10, {9})};
  for (std::size_t i = 0; i < std::size(rows); ++i)
    for (std::size_t j = 0; j < std::size(rows); ++j)
      EXPECT_EQ(rowOf(rows[i]) == rowOf(rows[j]), i == j) << i << " and " << j;
}

TEST(RowBuilder, StartsAnewAfterEachRow) {
  RowBuilder builder;
  EXPECT_EQ(builder.take(), ClipboardRow());
  builder.append(u"a");
  builder.appendBlanks(2);
  builder.append(u"b");
  EXPECT_EQ(builder.cellCount(), 4U);
  EXPECT_EQ(builder.take(), rowOf({u"a", u"", u"", u"b"}));
  EXPECT_EQ(builder.cellCount(), 0U);
  builder.append(u"");
  EXPECT_EQ(builder.take(), rowOf({u""}));
  EXPECT_EQ(builder.take(), ClipboardRow());
}

TEST(RowBuilder, PadsToANumberOfCellsAndTakesNoneAway) {
  RowBuilder builder;
  builder.append(u"a");
  builder.padTo(3);
  builder.padTo(2);
  builder.append(u"b");
  builder.padTo(4);
  EXPECT_EQ(builder.take(), rowOf({u"a", u"", u"", u"b"}));
}

TEST(ClipboardRow, VisitsTheStoredCellsOfAPart) {
  const struct {
    PlainRow cells;
    std::size_t first;
    std::size_t end;
    std::vector<std::size_t> columns;
  } cases[] = {
      {{u"a", u"", u"b", u""}, 0, 9, {0, 1, 2}},   {{u"a", u"", u"b", u""}, 1, 2, {1}},
      {{u"a", u"", u"b", u""}, 3, 9, {}},          {{u"a", u"", u"b", u""}, 2, 1, {}},
      {blankBut(200, {3, 150}), 0, 200, {3, 150}}, {blankBut(200, {3, 150}), 4, 150, {}},
      {blankBut(200, {3, 150}), 3, 4, {3}},        {{}, 0, 9, {}},
  };
  for (const auto& one : cases) {
    std::vector<std::size_t> columns;
    const ClipboardRow row = rowOf(one.cells);
    row.forEachStoredCell(one.first, one.end, [&](std::size_t column, std::u16string_view text) {
      columns.push_back(column);
      EXPECT_EQ(text, row.cell(column));
    });
    EXPECT_EQ(columns, one.columns) << one.first << " to " << one.end;
  }
}

TEST(RowBuilder, AppendsTheCellsOfARowThatAreThere) {
  const ClipboardRow row = rowOf({u"a", u"", u"bc", u"", u""});
  const struct {
    std::size_t first;
    std::size_t end;
    PlainRow cells;
  } cases[] = {
      {0, 5, {u"a", u"", u"bc", u"", u""}},
      {0, 99, {u"a", u"", u"bc", u"", u""}},
      {1, 3, {u"", u"bc"}},
      {2, 4, {u"bc", u""}},
      {3, 5, {u"", u""}},
      {4, 99, {u""}},
      {5, 9, {}},
      {2, 2, {}},
      {3, 1, {}},
  };
  for (const auto& [first, end, cells] : cases) {
    RowBuilder builder;
    builder.append(row, first, end);
    EXPECT_EQ(plainRow(builder.take()), cells) << first << " to " << end;
  }
}

TEST(RowBuilder, RefusesARowWithMoreCellsThanItCanCount) {
  const std::size_t most = std::numeric_limits<std::uint32_t>::max();
  RowBuilder builder;
  builder.appendBlanks(most);
  EXPECT_EQ(builder.take().cellCount(), most);
  builder.appendBlanks(most + 1);
  EXPECT_THROW(builder.take(), std::length_error);
}

TEST(RowWriter, WritesARowOfTheSizeThatItWasTold) {
  for (const PlainRow& cells : {PlainRow{}, {u"", u"a", u"", u"bc", u""}, blankBut(200, {3, 199})}) {
    RowSize size{.cellCount = cells.size()};
    for (std::size_t i = 0; i < cells.size(); ++i)
      if (!cells[i].empty()) size.addFilledCell(i, cells[i].size());
    RowWriter writer(size);
    for (std::size_t i = 0; i < cells.size(); ++i)
      if (!cells[i].empty()) writer.write(i, cells[i]);
    EXPECT_EQ(writer.take(), rowOf(cells));
  }
}

PlainRow randomCells(RandomSource& random) {
  PlainRow cells(random.below(random.oneIn(3) ? 60 : 8));
  const std::size_t oneFilledCell = 1 + random.below(12);
  for (std::u16string& cell : cells)
    if (random.oneIn(oneFilledCell)) cell = random.oneIn(2) ? u"a" : u"bcd";
  return cells;
}

TEST(RowBuilder, PutsPartsOfRowsTogetherAsListsAre) {
  RandomSource random(1);
  RowBuilder builder;
  for (std::uint64_t round = testing::rounds(20'000); round > 0 && !HasFailure(); --round) {
    PlainRow expected;
    for (std::size_t part = random.below(4); part > 0; --part) {
      const PlainRow cells = randomCells(random);
      const std::size_t first = random.below(cells.size() + 2);
      const std::size_t end = random.below(cells.size() + 3);
      builder.append(rowOf(cells), first, end);
      for (std::size_t i = first; i < std::min(end, cells.size()); ++i) expected.push_back(cells[i]);
      if (random.oneIn(3)) {
        const PlainRow last = randomCells(random);
        for (const std::u16string& cell : last) builder.append(cell);
        expected.insert(expected.end(), last.begin(), last.end());
      }
    }
    const ClipboardRow row = builder.take();
    EXPECT_EQ(plainRow(row), expected);
    EXPECT_EQ(row, rowOf(expected));
    PlainRow stored(row.cellCount());
    for (std::size_t i = 0; i < row.storedCellCount(); ++i)
      stored[row.storedCell(i).column] = row.storedCell(i).text;
    EXPECT_EQ(stored, expected);
  }
}

}  // namespace
}  // namespace quillet
