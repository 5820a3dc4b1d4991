#include "clipboard/grid_flips.h"

#include <gtest/gtest.h>

#include "clipboard/plain_grid.h"

namespace quillet {
namespace {

using testing::drawn;
using testing::PlainGrid;
using testing::PlainRow;
using testing::readGrid;

struct Case {
  std::string_view before;
  std::string_view after;
};

TEST(GridFlips, SwapLeftAndRightWithThePaddingInFront) {
  const Case cases[] = {
      {"a b c/d/e f", "c b a/. . d/. f e"},
      {"a b/. ./", "b a/. ./. ."},
      {"a . ./b", ". . a/. . b"},
      {"a", "a"},
      {"//", "//"},
      {"none", "none"},
  };
  for (const auto& [before, after] : cases) EXPECT_EQ(drawn(flippedHorizontally(readGrid(before))), after);
}

TEST(GridFlips, ReverseTheRowsWhichKeepTheirLengths) {
  const Case cases[] = {{"a b c/d//e f", "e f//d/a b c"}, {"a", "a"}, {"none", "none"}, {"/a", "a/"}};
  for (const auto& [before, after] : cases) EXPECT_EQ(drawn(flippedVertically(readGrid(before))), after);
}

TEST(GridFlips, ShareTheRowsWhenTheyAreReversed) {
  const ClipboardGrid grid = readGrid("a b/c");
  const ClipboardGrid flipped = flippedVertically(grid);
  EXPECT_EQ(flipped.row(1).cell(0).data(), grid.row(0).cell(0).data());
  EXPECT_EQ(flipped.row(0).cell(0).data(), grid.row(1).cell(0).data());
}

TEST(GridFlips, MakeARowOfEachColumn) {
  const Case cases[] = {
      {"a b c/d/e f", "a d e/b . f/c . ."},
      {"a/b/c", "a b c"},
      {"a b c", "a/b/c"},
      {"a . ./b", "a b/. ./. ."},
      {"//", "none"},
      {"none", "none"},
      {"/a/", ". a ."},
      {".", "."},
  };
  for (const auto& [before, after] : cases) EXPECT_EQ(drawn(flippedDiagonally(readGrid(before))), after);
}

TEST(GridFlips, GiveAHundredColumnsOfAHundredRows) {
  const ClipboardGrid flipped = flippedDiagonally(testing::gridOf(PlainGrid(100, PlainRow{u"a"})));
  EXPECT_EQ(flipped.rowCount(), 1U);
  EXPECT_EQ(flipped.maxRowLength(), 100U);
}

TEST(GridFlips, StoreNothingForTheBlankCellsOfAWideGrid) {
  PlainGrid plain(100, PlainRow{u"a", u"b"});
  plain[99].resize(16'384, u"c");
  const ClipboardGrid grid = testing::gridOf(plain);
  const ClipboardGrid left = flippedHorizontally(grid);
  for (std::size_t i = 0; i < 99; ++i) {
    EXPECT_EQ(left.row(i).cellCount(), 16'384U);
    EXPECT_EQ(left.row(i).storedCellCount(), 2U);
  }
  const ClipboardGrid down = flippedDiagonally(grid);
  for (std::size_t i = 2; i < 16'384; ++i) EXPECT_EQ(down.row(i).storedCellCount(), 1U);
}

PlainGrid reversed(const PlainGrid& plain) {
  return {plain.rbegin(), plain.rend()};
}

TEST(GridFlips, DoAsPlainListsDo) {
  testing::withRandomGrids(13, [](auto&, const PlainGrid& plain, const ClipboardGrid& grid) {
    EXPECT_TRUE(testing::matches(flippedVertically(grid), reversed(plain))) << drawn(grid);
    EXPECT_TRUE(testing::matches(flippedDiagonally(grid), testing::transposed(plain))) << drawn(grid);
    PlainGrid padded = plain;
    for (PlainRow& row : padded) {
      row.resize(testing::maxRowLength(plain));
      row = PlainRow(row.rbegin(), row.rend());
    }
    EXPECT_TRUE(testing::matches(flippedHorizontally(grid), padded)) << drawn(grid);
  });
}

}  // namespace
}  // namespace quillet
