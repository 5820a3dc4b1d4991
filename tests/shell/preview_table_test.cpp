#include <gtest/gtest.h>

#include "shell/preview_panel.h"

namespace quillet {
namespace {

using Rows = PreviewStores::Rows;

class PreviewTableTest : public ::testing::Test {
 protected:
  void addRow(PreviewStores::Row row) { stores_.addRow(PreviewStores::Side::Output, std::move(row)); }

  UserInterface interface_;
  Window window_{interface_, "window", u""};
  PreviewStores stores_;
  PreviewTable table_{window_, "previewOutputTableView", stores_, PreviewStores::Side::Output, "Col"};
};

TEST_F(PreviewTableTest, ShowsAtMostTenRows) {
  for (int i = 0; i < 25; ++i) addRow({u"x"});
  table_.fitAndReload(1);
  EXPECT_EQ(table_.shownCells().size(), 10u);
}

TEST_F(PreviewTableTest, HasAColumnForTheLongestRowOfAll) {
  for (int i = 0; i < 10; ++i) addRow({u"x"});
  addRow({u"1", u"2", u"3"});
  table_.fitAndReload(1);
  EXPECT_EQ(table_.columnIdentifiers(), (std::vector<std::string>{"Col0", "Col1", "Col2", "Col3"}));
  EXPECT_EQ(table_.shownCells()[0], (PreviewStores::Row{u"1", u"x", u"", u""}));
}

TEST_F(PreviewTableTest, CanBeginAtALaterLine) {
  for (int i = 1; i <= 12; ++i) addRow({std::u16string(1, static_cast<char16_t>(u'a' + i - 1))});
  table_.fitAndReload(4);
  const Rows cells = table_.shownCells();
  ASSERT_EQ(cells.size(), 10u);
  EXPECT_EQ(cells.front(), (PreviewStores::Row{u"4", u"d"}));
  EXPECT_EQ(cells[8], (PreviewStores::Row{u"12", u"l"}));
  EXPECT_EQ(cells[9], (PreviewStores::Row{u"13", u""})) << "a row that the store does not have";
}

TEST_F(PreviewTableTest, KeepsWhatItShowsUntilItIsReloaded) {
  addRow({u"x"});
  table_.fitAndReload(1);
  stores_.reset();
  EXPECT_EQ(table_.shownCells(), (Rows{{u"1", u"x"}}));
  table_.fitAndReload(1);
  EXPECT_EQ(table_.shownCells(), Rows{});
  EXPECT_EQ(table_.columnIdentifiers(), std::vector<std::string>{"Col0"});
}

}  // namespace
}  // namespace quillet
