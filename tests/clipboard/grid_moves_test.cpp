#include "clipboard/grid_moves.h"

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

constexpr bool kDown = true;
constexpr bool kUp = false;

using Move = std::optional<MovedGrid> (*)(const ClipboardGrid&, const IndexSet&, bool);

struct Case {
  std::string_view before;
  Indexes indexes;
  bool down;
  std::string_view after;  // "refused" when nothing moves
  Indexes indexesAfter;
};

void expectMove(Move move, const Case& one) {
  const auto moved = move(readGrid(one.before), setOf(one.indexes), one.down);
  const auto message = [&] {
    return ::testing::Message() << one.before << ", " << ::testing::PrintToString(one.indexes)
                                << (one.down ? " down" : " up");
  };
  EXPECT_EQ(moved ? drawn(moved->grid) : "refused", one.after) << message();
  EXPECT_EQ(moved ? moved->indexes : IndexSet(), setOf(one.indexesAfter)) << message();
}

TEST(GridMoves, MoveEachRowInItsOwnGap) {
  const Case cases[] = {
      {"a/b/c/d/e", {1, 3}, kDown, "a/c/b/e/d", {2, 4}},
      {"a/b/c/d/e", {1, 3}, kUp, "b/a/d/c/e", {0, 2}},
      {"a/b/c/d/e", {1, 2}, kDown, "a/d/b/c/e", {2, 3}},
      {"a/b/c/d/e", {1, 2}, kUp, "b/c/a/d/e", {0, 1}},
      {"a/b/c/d/e/f/g", {1, 4}, kDown, "a/c/b/d/f/e/g", {2, 5}},
      {"a/b/c/d/e/f/g", {2, 5, 6}, kUp, "a/c/b/d/f/g/e", {1, 4, 5}},
      {"a/b b/", {1}, kDown, "a//b b", {2}},  // rows keep their lengths
      {"a/b b/", {1}, kUp, "b b/a/", {0}},
  };
  for (const Case& one : cases) expectMove(moveRows, one);
}

TEST(GridMoves, RefuseToMoveAnyRowWhenOneIsAtTheEdge) {
  const Case cases[] = {
      {"a/b/c", {0}, kUp, "refused", {}},       {"a/b/c", {0, 2}, kUp, "refused", {}},
      {"a/b/c", {2}, kDown, "refused", {}},     {"a/b/c", {0, 2}, kDown, "refused", {}},
      {"a/b/c", {0, 99}, kDown, "refused", {}}, {"a/b/c", {99}, kUp, "refused", {}},
      {"a/b/c", {99}, kDown, "refused", {}},    {"a/b/c", {}, kUp, "refused", {}},
      {"a/b/c", {}, kDown, "refused", {}},      {"none", {0}, kUp, "refused", {}},
      {"none", {0}, kDown, "refused", {}},      {"none", {1}, kUp, "refused", {}},
  };
  for (const Case& one : cases) expectMove(moveRows, one);
}

TEST(GridMoves, PassOverRowsBeyondTheGridOnTheWayUp) {
  expectMove(moveRows, {"a/b/c", {1, 3, 99}, kUp, "b/a/c", {0}});
  expectMove(moveRows, {"a/b/c", {1, 2, 3}, kUp, "b/c/a", {0, 1}});
}

TEST(GridMoves, MoveColumnsAndSquareOffTheGrid) {
  const Case cases[] = {
      {"a b c d e/f g h i j", {1, 3}, kDown, "a c b e d/f h g j i", {2, 4}},
      {"a b c d e/f g h i j", {1, 3}, kUp, "b a d c e/g f i h j", {0, 2}},
      {"a b c/d/e f", {1}, kDown, "a c b/d . ./e . f", {2}},
      {"a b c/d/e f", {1}, kUp, "b a c/. d ./f e .", {0}},
      {"a b c/d/e f", {0, 1}, kDown, "c a b/. d ./. e f", {1, 2}},
      {"a b c/d/e f", {1, 2}, kUp, "b c a/. . d/f . e", {0, 1}},
      {"a b c//", {0}, kDown, "b a c/. . ./. . .", {1}},
      {"a b c d/e", {2}, kDown, "a b d c/e . . .", {3}},
      {"a b/c", {1, 5}, kUp, "b a/. c", {0}},
  };
  for (const Case& one : cases) expectMove(moveColumns, one);
}

TEST(GridMoves, RefuseToMoveAnyColumnWhenOneIsAtTheEdge) {
  const Case cases[] = {
      {"a b/c", {0}, kUp, "refused", {}},      {"a b/c", {1}, kDown, "refused", {}},
      {"a b/c", {0, 9}, kDown, "refused", {}}, {"a b/c", {9}, kUp, "refused", {}},
      {"a b/c", {}, kUp, "refused", {}},       {"a b/c", {}, kDown, "refused", {}},
      {"//", {0}, kUp, "refused", {}},         {"//", {0}, kDown, "refused", {}},
      {"none", {1}, kUp, "refused", {}},       {"none", {0}, kDown, "refused", {}},
  };
  for (const Case& one : cases) expectMove(moveColumns, one);
}

TEST(GridMoves, ShareTheRowsThatStay) {
  const ClipboardGrid grid = testing::gridOf(PlainGrid(2'000, PlainRow{u"a", u"b"}));
  const auto moved = moveRows(grid, IndexSet{700}, kDown);
  ASSERT_TRUE(moved);
  EXPECT_EQ(&moved->grid.row(0), &grid.row(0));
  EXPECT_EQ(&moved->grid.row(1'999), &grid.row(1'999));
  EXPECT_EQ(moved->grid.row(700).cell(0).data(), grid.row(701).cell(0).data());
  EXPECT_EQ(moved->grid.row(701).cell(0).data(), grid.row(700).cell(0).data());
}

TEST(GridMoves, StoreNothingForTheBlankCellsOfAWideGrid) {
  PlainGrid plain(100, PlainRow{u"a", u"b"});
  plain[50].resize(16'384);
  const ClipboardGrid grid = testing::gridOf(plain);
  for (const IndexSet& columns : {IndexSet{1}, IndexSet{1, 8'000, 16'382}}) {
    const auto moved = moveColumns(grid, columns, kDown);
    ASSERT_TRUE(moved);
    moved->grid.forEachRow([](const ClipboardRow& row) {
      EXPECT_EQ(row.cellCount(), 16'384U);
      EXPECT_LE(row.storedCellCount(), 3U);
    });
  }
}

TEST(GridMoves, DoAsPlainListsDo) {
  testing::withRandomGrids(12, [](auto& random, const PlainGrid& plain, const ClipboardGrid& grid) {
    const bool down = random.oneIn(2);
    const bool ofColumns = random.oneIn(2);
    PlainGrid expected = ofColumns ? testing::transposed(plain) : plain;
    const Indexes indexes = testing::randomIndexes(random, expected.size());
    const auto indexesAfter = testing::moveIndexes(indexes, expected, down);
    if (ofColumns) expected = testing::transposed(expected);
    const auto moved = (ofColumns ? moveColumns : moveRows)(grid, setOf(indexes), down);
    ASSERT_EQ(moved.has_value(), indexesAfter.has_value())
        << drawn(grid) << ::testing::PrintToString(indexes) << ofColumns << down;
    if (!moved) return;
    EXPECT_EQ(moved->indexes, setOf(*indexesAfter));
    EXPECT_TRUE(testing::matches(moved->grid, expected))
        << drawn(grid) << ::testing::PrintToString(indexes) << ofColumns << down;
  });
}

}  // namespace
}  // namespace quillet
