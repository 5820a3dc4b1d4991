#include "clipboard/cell_statistics.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "clipboard/field_value.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using Rows = std::vector<std::vector<std::u16string>>;
using testing::RandomSource;
using testing::rounds;

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr std::int64_t kFarRow = std::numeric_limits<std::int64_t>::max();
constexpr std::uint64_t kFarColumn = std::numeric_limits<std::uint64_t>::max();

ClipboardGrid gridOf(const Rows& rows) {
  GridBuilder grid;
  for (const auto& row : rows) {
    RowBuilder cells;
    for (const std::u16string& cell : row) cells.append(cell);
    grid.append(cells.take());
  }
  return grid.take();
}

CellStatistics ofRow(const Rows& rows, std::int64_t row) {
  CellStatistics statistics;
  computeRow(gridOf(rows), row, statistics);
  return statistics;
}

CellStatistics ofColumn(const Rows& rows, std::uint64_t column) {
  CellStatistics statistics;
  computeColumn(gridOf(rows), column, statistics);
  return statistics;
}

void expectEqual(const CellStatistics& actual, const CellStatistics& expected, const std::string& what) {
  EXPECT_EQ(actual.cellCount, expected.cellCount) << what;
  EXPECT_EQ(actual.total, expected.total) << what;
  EXPECT_EQ(actual.average, expected.average) << what;
  EXPECT_EQ(actual.minimum, expected.minimum) << what;
  EXPECT_EQ(actual.maximum, expected.maximum) << what;
}

constexpr CellStatistics kOfNoCells{0, 0, 0, kLargest, -kLargest};

// The first row is ragged, the third has no cells.
const Rows& sampleRows() {
  static const Rows rows = {{u"1", u"2", u"x"}, {u"$ 10", u"(4)"}, {}, {u"-3", u"1,234", u"0.5", u""}};
  return rows;
}

TEST(CellStatistics, SumUpOneRow) {
  const struct {
    std::int64_t row;
    CellStatistics statistics;
  } cases[] = {
      {0, {3, 3, 1, 0, 2}}, {1, {2, 6, 3, -4, 10}}, {2, kOfNoCells},       {3, {4, -1.5, -0.375, -3, 1}},
      {4, kOfNoCells},      {-1, kOfNoCells},       {kFarRow, kOfNoCells},
  };
  for (const auto& [row, statistics] : cases)
    expectEqual(ofRow(sampleRows(), row), statistics, "row " + std::to_string(row));
}

TEST(CellStatistics, SumUpOneColumnOverTheRowsThatHaveIt) {
  const struct {
    std::uint64_t column;
    CellStatistics statistics;
  } cases[] = {
      {0, {3, 8, 8.0 / 3, -3, 10}},
      {1, {3, -1, -1.0 / 3, -4, 2}},
      {2, {2, 0.5, 0.25, 0, 0.5}},
      {3, {1, 0, 0, 0, 0}},
      {4, kOfNoCells},
      {kFarColumn, kOfNoCells},
  };
  for (const auto& [column, statistics] : cases)
    expectEqual(ofColumn(sampleRows(), column), statistics, "column " + std::to_string(column));
}

TEST(CellStatistics, OfAnEmptyGridAreThoseOfNoCells) {
  expectEqual(ofRow({}, 0), kOfNoCells, "row");
  expectEqual(ofColumn({}, 0), kOfNoCells, "column");
}

TEST(CellStatistics, TheExtremesAreThoseOfTheCellsAlone) {
  expectEqual(ofRow({{u"5", u"7"}}, 0), {2, 12, 6, 5, 7}, "above zero");
  expectEqual(ofRow({{u"-5", u"(7)"}}, 0), {2, -12, -6, -7, -5}, "below zero");
}

TEST(CellStatistics, AreAddedToWhatIsThere) {
  CellStatistics statistics{1, 10, 100, 1000, 10000};
  const ClipboardGrid grid = gridOf(sampleRows());
  computeRow(grid, 0, statistics);
  expectEqual(statistics, {4, 13, 101, 1000, 10002}, "a row");
  computeColumn(grid, 0, statistics);
  expectEqual(statistics, {7, 21, 101 + 8.0 / 3, 997, 10012}, "and a column");
  computeColumn(grid, 9, statistics);
  expectEqual(statistics, {7, 21, 101 + 8.0 / 3, kLargest, -kLargest}, "and no cells");
}

// Word by word.
CellStatistics plainStatistics(const std::vector<std::u16string>& cells) {
  CellStatistics result = kOfNoCells;
  for (const std::u16string& cell : cells) {
    const double value = doubleValueFromFieldValue(cell);
    ++result.cellCount;
    if (value > result.maximum) result.maximum = value;
    if (value < result.minimum) result.minimum = value;
    result.total += value;
  }
  if (result.cellCount) result.average = result.total / static_cast<double>(result.cellCount);
  return result;
}

TEST(CellStatistics, FollowThePlainRule) {
  const std::u16string_view parts[] = {u"1", u"2", u"9", u"0", u".", u"-", u"(", u")", u"$", u" ", u"x"};
  RandomSource random(5701);
  for (auto round = rounds(500); round > 0; --round) {
    Rows rows(random.below(6));
    for (auto& row : rows)
      for (std::size_t cells = random.below(6); cells > 0; --cells) row.push_back(random.text(parts, 5));
    for (std::size_t index = 0; index < 7; ++index) {
      std::vector<std::u16string> column;
      for (const auto& row : rows)
        if (index < row.size()) column.push_back(row[index]);
      expectEqual(ofColumn(rows, index), plainStatistics(column), "column " + std::to_string(index));
      expectEqual(ofRow(rows, static_cast<std::int64_t>(index)),
                  plainStatistics(index < rows.size() ? rows[index] : std::vector<std::u16string>()),
                  "row " + std::to_string(index));
    }
  }
}

}  // namespace
}  // namespace quillet
