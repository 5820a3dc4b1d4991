#include "shell/column_width.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

int tenPixelsAUnit(std::u16string_view text) {
  return 10 * static_cast<int>(text.size());
}

class ColumnWidth : public ::testing::Test {
 protected:
  int width(std::size_t column, std::size_t first, std::size_t count) const {
    return tableViewSizeToFitWidthOfColumn(table_, column, first, count, tenPixelsAUnit);
  }

  UserInterface interface_;
  Window window_{interface_, "window", u""};
  std::vector<Table::Row> rows_ = {{u"1", u"abcd"}, {u"2", u"abcdefgh", u"x"}, {u"3"}};
  Table table_{
      window_, "table", {[this] { return rows_.size(); }, [this](std::size_t row) { return rows_[row]; }}};
};

TEST_F(ColumnWidth, IsThatOfTheWidestCellInSightAndSixMore) {
  EXPECT_EQ(width(1, 0, 3), 86);
  EXPECT_EQ(width(1, 0, 1), 46) << "the wide cell is out of sight";
  EXPECT_EQ(width(1, 1, 9), 86);
}

TEST_F(ColumnWidth, IsAtLeastForty) {
  EXPECT_EQ(width(0, 0, 3), 40);
  EXPECT_EQ(width(2, 0, 3), 40) << "most rows have no such cell";
  EXPECT_EQ(width(1, 2, 1), 40);
  EXPECT_EQ(width(7, 0, 3), 40);
  EXPECT_EQ(width(1, 9, 9), 40);
  rows_ = {{u"", u"abc"}};
  EXPECT_EQ(width(1, 0, 1), 40);
  rows_ = {{u"", std::u16string(35, u'x')}};
  EXPECT_EQ(width(1, 0, 1), 356);
}

}  // namespace
}  // namespace quillet
