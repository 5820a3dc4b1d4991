#include "shell/preview_cells.h"

#include <gtest/gtest.h>
#include <limits>

namespace quillet {
namespace {

constexpr auto kInput = PreviewStores::Side::Input;
constexpr auto kOutput = PreviewStores::Side::Output;

class PreviewCells : public ::testing::Test {
 protected:
  PreviewCells() {
    stores_.addRow(kInput, {u"a", u"b", u"c"});
    stores_.addRow(kInput, {u"a"});
    stores_.addRow(kInput, {});
    stores_.addRow(kOutput, {u"a", u""});
  }
  bool isEmpty(std::int64_t tag) const { return previewTableCellViewIsEmpty(stores_, tag); }

  PreviewStores stores_;
};

TEST_F(PreviewCells, HaveTagsOfRowAndColumn) {
  EXPECT_EQ(previewCellTag(kInput, 0, 0), 0);
  EXPECT_EQ(previewCellTag(kInput, 0, 3), 3);
  EXPECT_EQ(previewCellTag(kInput, 9, 2), 9 * 65'536 + 2);
  EXPECT_EQ(previewCellTag(kOutput, 0, 1), 65'536'001);
  EXPECT_EQ(previewCellTag(kOutput, 9, 2), 65'536'000 + 9 * 65'536 + 2);
}

TEST_F(PreviewCells, AreEmptyWhereTheLineHasNone) {
  struct Case {
    std::int64_t tag;
    bool empty;
  };
  const Case cases[] = {
      {-1, false},
      {-2, true},
      {std::numeric_limits<std::int64_t>::min(), true},
      {0, false},  // the line number
      {1, false},
      {3, false},
      {4, true},
      {65'535, true},
      {65'536, false},
      {65'537, false},
      {65'538, true},
      {2 * 65'536, false},  // the number of a line without cells
      {2 * 65'536 + 1, true},
      {3 * 65'536, true},  // no such row
      {3 * 65'536 + 1, true},
      {65'535'999, true},   // the last tag of the input
      {65'536'000, false},  // the first one of the output
      {65'536'002, false},  // an empty cell is there
      {65'536'003, true},
      {65'536'000 + 65'536, true},
      {std::numeric_limits<std::int64_t>::max(), true},
  };
  for (const auto& one : cases) EXPECT_EQ(isEmpty(one.tag), one.empty) << one.tag;
}

TEST_F(PreviewCells, AreAskedOfTheStoresAsTheyAre) {
  EXPECT_FALSE(isEmpty(1));
  stores_.clearInputRows();
  EXPECT_TRUE(isEmpty(1));
  EXPECT_FALSE(isEmpty(65'536'001));
}

}  // namespace
}  // namespace quillet
