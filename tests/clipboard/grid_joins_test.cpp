#include "clipboard/grid_joins.h"

#include <gtest/gtest.h>
#include <limits>

#include "clipboard/plain_grid.h"

namespace quillet {
namespace {

using testing::drawn;
using testing::PlainGrid;
using testing::readGrid;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();

struct Case {
  std::string_view before;
  std::int64_t groupSize;
  std::string_view after;
};

TEST(GridJoins, PutTheRowsOfAGroupEndToEnd) {
  const Case cases[] = {
      {"a b/c//d e f/g", 2, "a b c/d e f/g"},
      {"a b/c//d e f/g", 3, "a b c/d e f g"},
      {"a/b/c/d", 2, "a b/c d"},
      {"a b/c//d", 4, "a b c d"},
      {"a b/c//d", 5, "a b c d"},
      {"a b/c//d", kLargest, "a b c d"},
      {"a ./. b", 2, "a . . b"},
      {"a/b", 1, "a/b"},
      {"a/b", 0, "a/b"},
      {"a/b", -2, "a/b"},
      {"a/b", kSmallest, "a/b"},
      {"///", 2, "/"},
      {"none", 2, "none"},
      {"a b", 2, "a b"},
  };
  for (const auto& [before, groupSize, after] : cases)
    EXPECT_EQ(drawn(joinConsecutiveRows(readGrid(before), groupSize)), after)
        << before << " by " << groupSize;
}

TEST(GridJoins, StackTheColumnsOfAGroup) {
  const Case cases[] = {
      {"a b c d/e f g h", 2, "a c/e g/b d/f h"},
      {"a b c/d e f", 2, "a c/d f/b ./e ."},  // the last group is padded at the bottom
      {"a b c d e/f g h i j", 3, "a d/f i/b e/g j/c ./h ."},
      {"a b c/d", 3, "a/d/b/./c/."},
      {"a b c/d", 99, "a/d/b/./c/."},
      {"a b c/d", kLargest, "a/d/b/./c/."},
      {"a b c d//e", 2, "a c/. ./e ./b d/. ./. ."},
      {"a//b", 2, "a/./b"},  // squared off all the same
      {"a b/c", 1, "a b/c"},
      {"a b/c", 0, "a b/c"},
      {"a b/c", kSmallest, "a b/c"},
      {"//", 2, "none"},  // transposed, a grid without a cell has no rows
      {"//", 1, "//"},
      {"none", 2, "none"},
  };
  for (const auto& [before, groupSize, after] : cases)
    EXPECT_EQ(drawn(joinConsecutiveColumns(readGrid(before), groupSize)), after)
        << before << " by " << groupSize;
}

// So many blank cells that looking at each of them would take minutes.
ClipboardGrid wideGrid(std::size_t rowCount, std::size_t width) {
  GridBuilder rows;
  for (std::size_t i = 0; i < rowCount; ++i) {
    RowBuilder row;
    row.append(u"a");
    row.padTo(width - 1);
    row.append(u"b");
    rows.append(row.take());
  }
  return rows.take();
}

TEST(GridJoins, StackTheColumnsOfAWideGridByItsTexts) {
  constexpr std::size_t kRows = 2'000;
  constexpr std::size_t kWidth = 1'000'000;
  const ClipboardGrid joined = joinConsecutiveColumns(wideGrid(kRows, kWidth), 2);
  ASSERT_EQ(joined.rowCount(), 2 * kRows);
  for (const std::size_t row : {std::size_t{0}, kRows - 1}) {
    EXPECT_EQ(joined.row(row).cellCount(), kWidth / 2);
    EXPECT_TRUE(joined.row(row).text() == u"a" && joined.row(row).cell(0) == u"a");
    EXPECT_TRUE(joined.row(row + kRows).text() == u"b" &&
                joined.row(row + kRows).cell(kWidth / 2 - 1) == u"b");
  }
}

// All but two of the many lines are one and the same blank line.
TEST(JoinConsecutiveColumns, StacksMillionsOfColumns) {
  constexpr std::size_t kWidth = 1'048'576, kRows = 40;
  RowBuilder builder;
  builder.append(u"a");
  builder.padTo(kWidth - 3);
  builder.append(u"b");
  builder.padTo(kWidth);
  GridBuilder rows;
  rows.append(ClipboardRow(), 7);
  rows.append(builder.take());
  rows.append(ClipboardRow(), kRows - 8);
  const ClipboardGrid joined = joinConsecutiveColumns(rows.take(), kWidth);
  ASSERT_EQ(joined.rowCount(), kRows * kWidth);
  EXPECT_EQ(joined.maxRowLength(), 1u);
  std::size_t index = 0;
  std::vector<std::size_t> filled;
  joined.forEachRow([&](const ClipboardRow& row) {
    if (row.cellCount() != 1 || !row.text().empty()) filled.push_back(index);
    ++index;
  });
  const std::size_t ofB = (kWidth - 3) * kRows + 7;
  EXPECT_EQ(filled, (std::vector<std::size_t>{7, ofB}));
  EXPECT_EQ(joined.row(7).cell(0), u"a");
  EXPECT_EQ(joined.row(ofB).cell(0), u"b");
}

TEST(GridJoins, DoAsPlainListsDo) {
  testing::withRandomGrids(15, [](auto& random, const PlainGrid& plain, const ClipboardGrid& grid) {
    const auto groupSize = static_cast<std::int64_t>(2 + random.below(random.oneIn(4) ? 200 : 5));
    EXPECT_TRUE(testing::matches(joinConsecutiveRows(grid, groupSize), testing::joinRows(plain, groupSize)))
        << drawn(grid) << " by " << groupSize;
    const PlainGrid columns = testing::joinRows(testing::transposed(plain), groupSize);
    EXPECT_TRUE(testing::matches(joinConsecutiveColumns(grid, groupSize), testing::transposed(columns)))
        << drawn(grid) << " by " << groupSize;
  });
}

}  // namespace
}  // namespace quillet
