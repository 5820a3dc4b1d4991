#include "clipboard/grid_merges.h"

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

using Merging = MergedGrid (*)(const ClipboardGrid&, std::u16string_view, const IndexSet&, bool);

struct Case {
  std::string_view before;
  std::u16string_view mergeString;
  Indexes indexes;
  bool down;
  std::string_view after;
  Indexes indexesAfter;
};

void expectMerge(Merging merge, const Case& one) {
  const MergedGrid merged = merge(readGrid(one.before), one.mergeString, setOf(one.indexes), one.down);
  const auto message = [&] {
    return ::testing::Message() << one.before << ", " << ::testing::PrintToString(one.indexes)
                                << (one.down ? " down" : " up");
  };
  EXPECT_EQ(drawn(merged.grid), one.after) << message();
  EXPECT_EQ(merged.indexes, setOf(one.indexesAfter)) << message();
}

TEST(GridMerges, FoldRowsFromTopToBottomIntoTheFirstOrLast) {
  const Case cases[] = {
      {"0/1/2/3/4/5", u"-", {1, 3}, kUp, "0/1-3/2/4/5", {1}},
      {"0/1/2/3/4/5", u"-", {1, 3}, kDown, "0/2/1-3/4/5", {2}},
      {"a/b/c", u"-", {0, 1}, kUp, "a-b/c", {0}},
      {"a/b/c", u"-", {0, 1}, kDown, "a-b/c", {0}},
      {"a/x/b/c", u"-", {0, 2}, kUp, "a-b/x/c", {0}},
      {"a/x/b/c", u"-", {0, 2}, kDown, "x/a-b/c", {1}},
      {"a/b/c/d", u"", {0, 1, 3}, kUp, "abd/c", {0}},
      {"a/b/c/d", u"", {0, 1, 3}, kDown, "c/abd", {1}},
      {"a b/c d", u"+", {0, 1}, kDown, "a+c b+d", {0}},
      {"a/b", u"-", {1}, kUp, "a/b", {1}},
  };
  for (const Case& one : cases) expectMerge(mergeRows, one);
}

TEST(GridMerges, AddNothingForACellThatARowLacksAndPadTheMergedRow) {
  const Case cases[] = {
      {"a b/c/x x x", u"-", {0, 1}, kUp, "a-c b ./x x x", {0}},
      {"a b/c/x x x", u"-", {0, 1}, kDown, "a-c b- ./x x x", {0}},  // the padded last row has the second cell
      {"c/a b/x x x", u"-", {0, 1}, kUp, "c-a -b ./x x x", {0}},
      {"c/a b/x x x", u"-", {0, 1}, kDown, "c-a b ./x x x", {0}},
      {"a/. ./b/x x", u"-", {0, 1, 2}, kUp, "a--b -/x x", {0}},
      {"/a/", u"-", {0, 1, 2}, kUp, "-a", {0}},
      {"/a/", u"-", {0, 1, 2}, kDown, "a-", {0}},
      {"/a/x x", u"-", {0}, kUp, ". ./a/x x", {0}},  // one row is merged with nothing, and padded
  };
  for (const Case& one : cases) expectMerge(mergeRows, one);
}

TEST(GridMerges, PassOverIndexesBeyondTheGrid) {
  const Case ofRows[] = {
      {"a/b/c", u"-", {1, 2, 99}, kDown, "a/b-c", {1}},
      {"a/b b", u"-", {0, 99}, kDown, "a ./b b", {0}},
      {"a/b/c", u"-", {3, 99}, kUp, "a/b/c", {3, 99}},
      {"a/b/c", u"-", {}, kDown, "a/b/c", {}},
      {"a b/c", u"-", {}, kUp, "a b/c", {}},
  };
  for (const Case& one : ofRows) expectMerge(mergeRows, one);
  const Case ofColumns[] = {
      {"a b c/d e f", u"-", {1, 2, 99}, kDown, "a b-c/d e-f", {1}},
      {"a b/c", u"-", {2, 99}, kUp, "a b/c", {2, 99}},  // and stays ragged
      {"a b/c", u"-", {}, kDown, "a b/c", {}},
  };
  for (const Case& one : ofColumns) expectMerge(mergeColumns, one);
}

TEST(GridMerges, LoseAllRowsWhenNoneHasACell) {
  for (const Merging merge : {mergeRows, mergeColumns})
    for (const bool down : {kDown, kUp})
      for (const Indexes& indexes : {Indexes{0, 1}, Indexes{9}, Indexes{}}) {
        expectMerge(merge, {"//", u"-", indexes, down, "none", indexes});
        expectMerge(merge, {"none", u"-", indexes, down, "none", indexes});
      }
}

TEST(GridMerges, FoldColumnsAndSquareOffTheGrid) {
  const Case cases[] = {
      {"a b c d/e f g h", u"-", {1, 3}, kUp, "a b-d c/e f-h g", {1}},
      {"a b c d/e f g h", u"-", {0, 2}, kDown, "b a-c d/f e-g h", {1}},
      {"a b c d/e f g h", u"-", {0, 1, 2, 3}, kDown, "a-b-c-d/e-f-g-h", {0}},
      {"a b c/d/", u"-", {0, 1}, kUp, "a-b c/d- ./- .", {0}},
      {"a b c/d/", u"-", {1, 2}, kDown, "a b-c/d -/. -", {1}},
      {"a b c/d/", u"", {0, 2}, kDown, "b ac/. d/. .", {1}},
      {"a b c/d/", u"", {1}, kUp, "a b c/d . ./. . .", {1}},
  };
  for (const Case& one : cases) expectMerge(mergeColumns, one);
}

TEST(GridMerges, ShareTheRowsThatStay) {
  const ClipboardGrid grid = testing::gridOf(PlainGrid(2'000, PlainRow{u"a", u"b"}));
  const MergedGrid merged = mergeRows(grid, u"-", IndexSet{700, 701}, kUp);
  EXPECT_EQ(&merged.grid.row(0), &grid.row(0));
  EXPECT_EQ(&merged.grid.row(1'998), &grid.row(1'999));
  EXPECT_EQ(merged.grid.row(701).cell(0).data(), grid.row(702).cell(0).data());
}

TEST(GridMerges, StoreNothingForTheBlankCellsOfAWideGrid) {
  PlainGrid plain(100, PlainRow{u"a", u"b"});
  plain[50].resize(16'384);
  const ClipboardGrid grid = testing::gridOf(plain);
  for (const bool down : {kDown, kUp}) {
    const MergedGrid merged = mergeColumns(grid, u"-", IndexSet{0, 16'383}, down);
    merged.grid.forEachRow([](const ClipboardRow& row) {
      EXPECT_EQ(row.cellCount(), 16'383U);
      EXPECT_EQ(row.storedCellCount(), 2U);
    });
  }
}

// So many blank cells that looking at each of them would take minutes.
TEST(GridMerges, FoldTheColumnsOfAWideGridByItsTexts) {
  constexpr std::int64_t kWidth = 1'000'000;
  GridBuilder rows;
  for (int i = 0; i < 2'000; ++i) {
    RowBuilder row;
    row.append(u"a");
    row.padTo(kWidth - 1);
    row.append(u"b");
    rows.append(row.take());
  }
  IndexSet all;
  all.addRange(0, kWidth - 1);
  const MergedGrid merged = mergeColumns(rows.take(), u"", all, kUp);
  merged.grid.forEachRow([](const ClipboardRow& row) {
    EXPECT_EQ(row.cellCount(), 1U);
    EXPECT_TRUE(row.cell(0) == u"ab");
  });
}

TEST(GridMerges, DoAsPlainListsDo) {
  testing::withRandomGrids(14, [](auto& random, const PlainGrid& plain, const ClipboardGrid& grid) {
    const bool down = random.oneIn(2);
    const bool ofColumns = random.oneIn(2);
    const std::u16string mergeString = random.oneIn(3) ? u"" : u"<>";
    PlainGrid expected = ofColumns ? testing::transposed(plain) : plain;
    const Indexes indexes = testing::randomIndexes(random, expected.size());
    Indexes indexesAfter = testing::inside(indexes, expected.size());
    const bool nothing = indexesAfter.empty();
    if (nothing) {
      expected = testing::maxRowLength(plain) ? plain : PlainGrid{};
      indexesAfter = indexes;
    } else {
      expected = testing::mergeRows(expected, mergeString, indexesAfter, down);
      if (expected.empty()) indexesAfter = indexes;
      if (ofColumns) expected = testing::transposed(expected);
    }
    const MergedGrid merged = (ofColumns ? mergeColumns : mergeRows)(grid, mergeString, setOf(indexes), down);
    EXPECT_EQ(merged.indexes, setOf(indexesAfter));
    EXPECT_TRUE(testing::matches(merged.grid, expected))
        << drawn(grid) << ::testing::PrintToString(indexes) << ofColumns << down;
  });
}

}  // namespace
}  // namespace quillet
