#include "clipboard/grid_edges.h"

#include <gtest/gtest.h>

#include "clipboard/plain_grid.h"

namespace quillet {
namespace {

using testing::drawn;
using testing::PlainGrid;
using testing::PlainRow;
using testing::readGrid;

using Change = ClipboardGrid (*)(const ClipboardGrid&);

struct Case {
  std::string_view before;
  std::string_view after;
};

void expectChanges(Change change, std::initializer_list<Case> cases) {
  for (const auto& [before, after] : cases) EXPECT_EQ(drawn(change(readGrid(before))), after) << before;
}

TEST(GridEdges, LoseTheFirstCellOfEachRow) {
  expectChanges(
      withoutFirstColumn,
      {{"a b c/d//e f", "b c///f"}, {"a/b", "/"}, {"/", "/"}, {"none", "none"}, {". b/. .", "b/."}});
}

TEST(GridEdges, LoseTheLastCellOfTheRowsOfFullWidthOnly) {
  expectChanges(withoutLastColumn, {{"a b c/d/e f", "a b/d/e f"},
                                    {"a b/c d", "a/c"},
                                    {"a . ./b b", "a ./b b"},
                                    {"a/", "/"},
                                    {"//", "//"},
                                    {"none", "none"}});
}

TEST(GridEdges, LoseTheFirstRow) {
  expectChanges(withoutFirstRow,
                {{"a/b c/d", "b c/d"}, {"a b c/d", "d"}, {"a", "none"}, {"/a", "a"}, {"none", "none"}});
}

TEST(GridEdges, LoseTheLastRow) {
  expectChanges(withoutLastRow,
                {{"a/b c/d", "a/b c"}, {"d/a b c", "d"}, {"a", "none"}, {"a/", "a"}, {"none", "none"}});
}

TEST(GridEdges, GetABlankCellInFrontOfEachRowAndShortRowsStayShort) {
  expectChanges(withBlankColumnFirst, {{"a b c/d", ". a b c/. d"}, {"a//b c", ". a/./. b c"}, {".", ". ."}});
}

TEST(GridEdges, GetABlankColumnBehindTheLongestRow) {
  expectChanges(withBlankColumnLast,
                {{"a b c/d", "a b c ./d . . ."}, {"a//b c", "a . ./. . ./b c ."}, {".", ". ."}});
}

TEST(GridEdges, BecomeOneBlankCellWhenAColumnIsAddedToNoneAndEmptyRowsAreDropped) {
  for (const Change change : {withBlankColumnFirst, withBlankColumnLast})
    expectChanges(change, {{"none", "."}, {"", "."}, {"///", "."}});
}

TEST(GridEdges, GetABlankRowOfTheWidthOfTheGridOrOfOneCell) {
  expectChanges(withBlankRowFirst,
                {{"a/b c", ". ./a/b c"}, {".", "./."}, {"none", "."}, {"", "./"}, {"//", ".///"}});
  expectChanges(withBlankRowLast,
                {{"a/b c", "a/b c/. ."}, {".", "./."}, {"none", "."}, {"", "/."}, {"//", "///."}});
}

TEST(GridEdges, ShareTheRowsThatStay) {
  const ClipboardGrid grid = testing::gridOf(PlainGrid(2'000, {u"a", u"b"}));
  for (const Change change : {withoutFirstRow, withoutLastRow, withBlankRowFirst, withBlankRowLast}) {
    const ClipboardGrid changed = change(grid);
    std::size_t shared = 0;
    for (std::size_t i = 1; i + 1 < grid.rowCount(); ++i)
      for (const std::size_t j : {i - 1, i, i + 1})
        shared += j < changed.rowCount() && &grid.row(i) == &changed.row(j);
    EXPECT_GE(shared, grid.rowCount() - 2 * 256);
  }
}

struct Reference {
  Change change;
  PlainGrid (*plain)(PlainGrid grid);
};

void dropCell(PlainRow& row, std::size_t column) {
  if (column < row.size()) row.erase(row.begin() + static_cast<std::ptrdiff_t>(column));
}

const PlainGrid kOneBlankCell{{u""}};

const Reference kReferences[] = {
    {withoutFirstColumn,
     [](PlainGrid grid) {
       for (PlainRow& row : grid) dropCell(row, 0);
       return grid;
     }},
    {withoutLastColumn,
     [](PlainGrid grid) {
       const std::size_t width = testing::maxRowLength(grid);
       for (PlainRow& row : grid) dropCell(row, width - 1);
       return grid;
     }},
    {withoutFirstRow,
     [](PlainGrid grid) {
       if (!grid.empty()) grid.erase(grid.begin());
       return grid;
     }},
    {withoutLastRow,
     [](PlainGrid grid) {
       if (!grid.empty()) grid.pop_back();
       return grid;
     }},
    {withBlankColumnFirst,
     [](PlainGrid grid) {
       if (!testing::maxRowLength(grid)) return kOneBlankCell;
       for (PlainRow& row : grid) row.insert(row.begin(), u"");
       return grid;
     }},
    {withBlankColumnLast,
     [](PlainGrid grid) {
       const std::size_t width = testing::maxRowLength(grid);
       if (!width) return kOneBlankCell;
       for (PlainRow& row : grid) row.resize(width + 1);
       return grid;
     }},
    {withBlankRowFirst,
     [](PlainGrid grid) {
       grid.insert(grid.begin(), PlainRow(std::max<std::size_t>(testing::maxRowLength(grid), 1)));
       return grid;
     }},
    {withBlankRowLast,
     [](PlainGrid grid) {
       grid.push_back(PlainRow(std::max<std::size_t>(testing::maxRowLength(grid), 1)));
       return grid;
     }},
};

TEST(GridEdges, ChangeAsPlainListsDo) {
  testing::withRandomGrids(10, [](auto& random, const PlainGrid& plain, const ClipboardGrid& grid) {
    const Reference& reference = random.pick(kReferences);
    EXPECT_TRUE(testing::matches(reference.change(grid), reference.plain(plain)))
        << drawn(grid) << " by " << &reference - kReferences;
  });
}

}  // namespace
}  // namespace quillet
