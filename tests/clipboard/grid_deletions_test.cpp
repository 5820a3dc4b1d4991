#include "clipboard/grid_deletions.h"

#include <gtest/gtest.h>

#include "clipboard/plain_grid.h"

namespace quillet {
namespace {

using testing::drawn;
using testing::Indexes;
using testing::PlainGrid;
using testing::PlainRow;
using testing::readGrid;
using testing::setOf;

struct Case {
  std::string_view before;
  Indexes indexes;
  std::string_view after;
};

TEST(GridDeletions, LeaveOutTheRows) {
  const Case cases[] = {
      {"a/b b/c/d/e", {1, 3}, "a/c/e"},
      {"a/b b/c", {0}, "b b/c"},
      {"a/b b/c", {1}, "a/c"},
      {"a/b", {0, 1}, "none"},
      {"a/b", {1, 2, 99}, "a"},
      {"a/b", {99}, "a/b"},
      {"a/b", {}, "a/b"},
      {"none", {0}, "none"},
      {"/a/", {1}, "/"},
  };
  for (const auto& [before, rows, after] : cases)
    EXPECT_EQ(drawn(withoutRows(readGrid(before), setOf(rows))), after)
        << before << " without " << ::testing::PrintToString(rows);
}

TEST(GridDeletions, LeaveOutTheCellsOfTheColumns) {
  const Case cases[] = {
      {"a b c d/e f g h", {1, 3}, "a c/e g"},
      {"a b c/d/e f", {0}, "b c//f"},
      {"a b c/d/e f", {2}, "a b/d/e f"},
      {"a b/c", {0, 1}, "/"},
      {"a b/c", {1, 2, 99}, "a/c"},
      {"a b/c", {99}, "a b/c"},
      {"a b/c", {}, "a b/c"},
      {"none", {0}, "none"},
      {"//", {0}, "//"},
      {"a . ./b . .", {0}, ". ./. ."},
      {". . . d", {0, 1, 2}, "d"},
  };
  for (const auto& [before, columns, after] : cases)
    EXPECT_EQ(drawn(withoutColumns(readGrid(before), setOf(columns))), after)
        << before << " without " << ::testing::PrintToString(columns);
}

TEST(GridDeletions, ShareTheRowsThatStay) {
  PlainGrid plain(2'000, PlainRow{u"a", u"b"});
  plain[1'000].resize(5, u"c");
  const ClipboardGrid grid = testing::gridOf(plain);
  const ClipboardGrid rows = withoutRows(grid, IndexSet{700});
  EXPECT_EQ(&rows.row(0), &grid.row(0));
  EXPECT_EQ(&rows.row(1'998), &grid.row(1'999));
  EXPECT_EQ(rows.row(700).cell(0).data(), grid.row(701).cell(0).data());
  const ClipboardGrid columns = withoutColumns(grid, IndexSet{3});
  EXPECT_EQ(columns.row(1'000).cellCount(), 4U);
  EXPECT_EQ(&columns.row(0), &grid.row(0));
  EXPECT_EQ(columns.row(999).cell(0).data(), grid.row(999).cell(0).data());
}

PlainRow withoutCells(const PlainRow& row, const Indexes& columns) {
  PlainRow left;
  for (std::size_t i = 0; i < row.size(); ++i)
    if (!columns.contains(static_cast<std::int64_t>(i))) left.push_back(row[i]);
  return left;
}

TEST(GridDeletions, DoAsPlainListsDo) {
  testing::withRandomGrids(11, [](auto& random, const PlainGrid& plain, const ClipboardGrid& grid) {
    const Indexes rows = testing::randomIndexes(random, plain.size());
    const Indexes columns = testing::randomIndexes(random, testing::maxRowLength(plain));
    PlainGrid rowsLeft;
    PlainGrid columnsLeft;
    for (std::size_t i = 0; i < plain.size(); ++i) {
      if (!rows.contains(static_cast<std::int64_t>(i))) rowsLeft.push_back(plain[i]);
      columnsLeft.push_back(withoutCells(plain[i], columns));
    }
    EXPECT_TRUE(testing::matches(withoutRows(grid, setOf(rows)), rowsLeft))
        << drawn(grid) << " without rows " << ::testing::PrintToString(rows);
    EXPECT_TRUE(testing::matches(withoutColumns(grid, setOf(columns)), columnsLeft))
        << drawn(grid) << " without columns " << ::testing::PrintToString(columns);
  });
}

}  // namespace
}  // namespace quillet
