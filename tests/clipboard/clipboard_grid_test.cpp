#include "clipboard/clipboard_grid.h"

#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <string>
#include <string_view>

#include "clipboard/plain_grid.h"

namespace quillet {
namespace {

using testing::gridOf;
using testing::PlainGrid;
using testing::PlainRow;
using testing::readGrid;
using testing::rowOf;

// Row i has i % 3 + 1 cells, the first one with its number.
PlainGrid numbered(std::size_t rowCount) {
  PlainGrid plain;
  for (std::size_t i = 0; i < rowCount; ++i) {
    plain.emplace_back(i % 3 + 1);
    for (const char digit : std::to_string(i)) plain.back()[0] += static_cast<char16_t>(digit);
  }
  return plain;
}

TEST(ClipboardGrid, CountsItsRowsAndTheCellsOfItsLongestRow) {
  const struct {
    std::string_view drawing;
    std::size_t rowCount;
    std::size_t maxRowLength;
  } cases[] = {{"none", 0, 0}, {"", 1, 0}, {"//", 3, 0}, {"a", 1, 1}, {"a/b c ./d e", 3, 3}, {"/. ./", 3, 2}};
  for (const auto& [drawing, rowCount, maxRowLength] : cases) {
    EXPECT_EQ(readGrid(drawing).rowCount(), rowCount) << drawing;
    EXPECT_EQ(readGrid(drawing).maxRowLength(), maxRowLength) << drawing;
  }
}

TEST(ClipboardGrid, TellsWhichCellsAreThere) {
  const ClipboardGrid grid = readGrid("a b/./");
  constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
  const struct {
    std::int64_t row;
    std::int64_t column;
    bool there;
  } cases[] = {{0, 0, true},         {0, 1, true},        {0, 2, false},  {1, 0, true},
               {1, 1, false},        {2, 0, false},       {3, 0, false},  {-1, 0, false},
               {0, -1, false},       {-1, -1, false},     {5, 99, false}, {0, 4'294'967'296, false},
               {kLargest, 0, false}, {0, kLargest, false}};
  for (const auto& [row, column, there] : cases)
    EXPECT_EQ(grid.hasCell(row, column), there) << row << " " << column;
  EXPECT_FALSE(ClipboardGrid().hasCell(0, 0));
}

TEST(ClipboardGrid, HasItsRowsInOrder) {
  const PlainGrid plain = numbered(1'000);
  const ClipboardGrid grid = gridOf(plain);
  EXPECT_TRUE(testing::matches(grid, plain));
  std::size_t index = 0;
  grid.forEachRow([&](const ClipboardRow& row) { EXPECT_EQ(row, grid.row(index++)); });
  EXPECT_EQ(index, plain.size());
}

TEST(ClipboardGrid, EqualsAGridOfTheSameRows) {
  const std::string_view drawings[] = {"none", "", "/", "a", "a/", "/a", "a .", "a/b", "a b", "b/a", "ab"};
  for (const auto one : drawings)
    for (const auto other : drawings)
      EXPECT_EQ(readGrid(one) == readGrid(other), one == other) << one << other;
}

TEST(ClipboardGrid, EqualsTheSameRowsInOtherChunks) {
  testing::RandomSource random(2);
  const PlainGrid plain = numbered(2'000);
  EXPECT_EQ(testing::randomlyChunked(random, plain), gridOf(plain));
}

TEST(ClipboardGrid, SharesItsRowsWithItsCopies) {
  const ClipboardGrid grid = gridOf(numbered(600));
  const ClipboardGrid copy = grid;  // NOLINT(performance-unnecessary-copy-initialization)
  for (std::size_t i = 0; i < grid.rowCount(); ++i) EXPECT_EQ(&copy.row(i), &grid.row(i));
}

TEST(GridBuilder, StartsAnewAfterEachGrid) {
  GridBuilder rows;
  EXPECT_EQ(rows.take(), ClipboardGrid());
  rows.append(rowOf({u"a", u"b"}));
  rows.append(ClipboardRow());
  EXPECT_EQ(rows.rowCount(), 2U);
  EXPECT_EQ(rows.take(), readGrid("a b/"));
  EXPECT_EQ(rows.rowCount(), 0U);
  rows.append(rowOf({u"c"}));
  const ClipboardGrid grid = rows.take();
  EXPECT_EQ(grid, readGrid("c"));
  EXPECT_EQ(grid.maxRowLength(), 1U);
}

TEST(GridBuilder, AppendsARowManyTimes) {
  const std::u16string_view cells[] = {u"a", u"", u"b"};
  const ClipboardRow repeated(cells);
  for (const std::size_t before : {0, 1, 200, 256})
    for (const std::size_t count : {0, 1, 55, 56, 255, 256, 257, 1'000}) {
      GridBuilder rows;
      for (std::size_t i = 0; i < before; ++i) rows.append(ClipboardRow());
      rows.append(repeated, count);
      rows.append(ClipboardRow());
      const ClipboardGrid grid = rows.take();
      ASSERT_EQ(grid.rowCount(), before + count + 1);
      EXPECT_EQ(grid.maxRowLength(), count ? 3u : 0u);
      for (std::size_t i = 0; i < grid.rowCount(); ++i)
        ASSERT_TRUE(grid.row(i) == (i >= before && i < before + count ? repeated : ClipboardRow())) << i;
    }
}

TEST(GridBuilder, AppendsTheRowsOfAGridThatAreThere) {
  const ClipboardGrid grid = readGrid("a/b b/c");
  const struct {
    std::size_t first;
    std::size_t end;
    std::string_view expected;
  } cases[] = {{0, 3, "a/b b/c"}, {0, 99, "a/b b/c"}, {1, 2, "b b"}, {2, 9, "c"},
               {3, 9, "none"},    {1, 1, "none"},     {2, 1, "none"}};
  for (const auto& [first, end, expected] : cases) {
    GridBuilder rows;
    rows.append(grid, first, end);
    EXPECT_EQ(testing::drawn(rows.take()), expected) << first << " to " << end;
  }
  GridBuilder rows;
  rows.append(ClipboardGrid(), 0, 1);
  EXPECT_EQ(rows.take(), ClipboardGrid());
}

std::size_t rowsSharedBy(const ClipboardGrid& grid, const ClipboardGrid& other) {
  std::set<const ClipboardRow*> rows;
  grid.forEachRow([&](const ClipboardRow& row) { rows.insert(&row); });
  std::size_t shared = 0;
  other.forEachRow([&](const ClipboardRow& row) { shared += rows.count(&row); });
  return shared;
}

TEST(GridBuilder, SharesAllButTheChunksAtTheEndsOfAPart) {
  const ClipboardGrid grid = gridOf(numbered(2'048));
  GridBuilder rows;
  rows.append(rowOf({u"new"}));
  rows.append(grid, 3, 2'000);
  const ClipboardGrid part = rows.take();
  EXPECT_EQ(part.rowCount(), 1'998U);
  EXPECT_GE(rowsSharedBy(part, grid), 1'998U - 2 * 256);
}

TEST(GridBuilder, DoesNotCrumbleAGridThatIsChangedAgainAndAgain) {
  // Each round takes a row off and adds one at both ends, which leaves a small chunk there.
  PlainGrid plain = numbered(1'500);
  ClipboardGrid grid = gridOf(plain);
  for (std::size_t round = 0; round < 400; ++round) {
    const PlainRow cells(round % 4, u"n");
    GridBuilder rows;
    rows.append(rowOf(cells));
    rows.append(grid, 0, 700);
    rows.append(grid, 701, grid.rowCount());
    rows.append(rowOf(cells));
    grid = rows.take();
    plain.erase(plain.begin() + 700);
    plain.insert(plain.begin(), cells);
    plain.push_back(cells);
  }
  EXPECT_TRUE(testing::matches(grid, plain));
  std::size_t runs = 1;  // of rows that lie side by side in memory
  for (std::size_t i = 1; i < grid.rowCount(); ++i) runs += &grid.row(i) != &grid.row(i - 1) + 1;
  EXPECT_LE(runs, 2 * grid.rowCount() / 128 + 2);
}

TEST(GridBuilder, PutsPartsOfGridsTogetherAsListsAre) {
  testing::RandomSource random(3);
  for (std::uint64_t round = testing::rounds(100); round > 0 && !HasFailure(); --round) {
    PlainGrid expected;
    GridBuilder rows;
    for (std::size_t part = random.below(6); part > 0; --part) {
      const PlainGrid plain = testing::randomPlainGrid(random, testing::randomLimits(random));
      const std::size_t first = random.below(plain.size() + 2);
      const std::size_t end = random.below(plain.size() + 3);
      rows.append(testing::randomlyChunked(random, plain), first, end);
      for (std::size_t i = first; i < std::min(end, plain.size()); ++i) expected.push_back(plain[i]);
      EXPECT_EQ(rows.rowCount(), expected.size());
    }
    EXPECT_TRUE(testing::matches(rows.take(), expected));
  }
}

void keepFirstCellAndAddOne(const ClipboardRow& row, RowBuilder& builder) {
  builder.append(row, 0, 1);
  builder.append(u"+");
}

TEST(ClipboardGrid, HasAllRowsRebuilt) {
  EXPECT_EQ(testing::drawn(withRowsRebuilt(readGrid("a b//c"), keepFirstCellAndAddOne)), "a +/+/c +");
  EXPECT_EQ(withRowsRebuilt(ClipboardGrid(), keepFirstCellAndAddOne), ClipboardGrid());
}

TEST(ClipboardGrid, HasTheLongerRowsRebuiltAndSharesTheOthers) {
  PlainGrid plain = numbered(1'000);
  plain[600] = {u"a", u"b", u"c", u"d"};
  const ClipboardGrid grid = gridOf(plain);
  const ClipboardGrid rebuilt = withLongerRowsRebuilt(grid, 3, keepFirstCellAndAddOne);
  plain[600] = {u"a", u"+"};
  EXPECT_TRUE(testing::matches(rebuilt, plain));
  EXPECT_EQ(rebuilt.row(599).cell(0).data(), grid.row(599).cell(0).data());
  EXPECT_GE(rowsSharedBy(rebuilt, grid), 1'000U - 256);
}

}  // namespace
}  // namespace quillet
