#include <gtest/gtest.h>

#include "shell/preview_panel.h"

namespace quillet {
namespace {

using Rows = PreviewStores::Rows;

class PreviewTableTest : public ::testing::Test {
 protected:
  void addRow(PreviewStores::Row row) { stores_.addRow(PreviewStores::Side::Output, std::move(row)); }
  std::vector<Table::Column> columns() const {
    std::vector<Table::Column> result;
    for (std::size_t column = 0; column < table_.table().columnCount(); ++column)
      result.push_back(table_.table().column(column));
    return result;
  }

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

TEST_F(PreviewTableTest, ColumnsHaveTitlesAndWidths) {
  addRow({u"1", u"2"});
  table_.fitAndReload(1);
  const std::vector<Table::Column> expected = {
      {"Col0", u"", 65, true}, {"Col1", u"1", 80, true}, {"Col2", u"2", 80, true}};
  EXPECT_EQ(columns(), expected);
  stores_.reset();
  table_.fitAndReload(1);
  EXPECT_EQ(columns(), (std::vector<Table::Column>{{"Col0", u"", 65, true}})) << "the line numbers alone";
}

TEST_F(PreviewTableTest, EachFitScrollsToTheStartAndAReloadDoesNot) {
  const std::uint64_t before = table_.table().scrollsToStart();
  table_.fitAndReload(1);
  table_.fitAndReload(4);
  EXPECT_EQ(table_.table().scrollsToStart(), before + 2);
  table_.table().reloadData();
  EXPECT_EQ(table_.table().scrollsToStart(), before + 2);
}

TEST_F(PreviewTableTest, ColumnsComeAndGo) {
  for (const std::size_t cells : {3u, 1u, 1u, 5u, 0u, 2u}) {
    stores_.reset();
    addRow(PreviewStores::Row(cells));
    table_.fitAndReload(1);
    const auto identifiers = table_.columnIdentifiers();
    ASSERT_EQ(identifiers.size(), cells + 1);
    EXPECT_EQ(identifiers.back(), "Col" + std::to_string(cells));
  }
}

TEST_F(PreviewTableTest, AWidthThatTheUserGaveLastsUntilTheNextFit) {
  addRow({u"1", u"2"});
  table_.fitAndReload(1);
  table_.table().userResizesColumn(0, 200);
  table_.table().userResizesColumn(1, 300);
  table_.table().userResizesColumn(9, 300);
  EXPECT_EQ(table_.table().column(1).width, 300);
  int told = 0;
  table_.table().setObserver([&told] { ++told; });
  table_.fitAndReload(1);
  EXPECT_EQ(table_.table().column(0).width, 65);
  EXPECT_EQ(table_.table().column(1).width, 80);
  EXPECT_EQ(told, 2) << "of the columns and of the rows";
}

TEST_F(PreviewTableTest, TheSelectedRowIsRemembered) {
  struct Case {
    std::vector<std::int64_t> selected;
    std::size_t rowsThen;
    std::int64_t expected;
  };
  const Case cases[] = {
      {{4}, 12, 4}, {{4}, 5, 4}, {{4}, 4, -1}, {{0}, 0, -1}, {{}, 12, -1}, {{1, 3}, 12, 3},
  };
  for (const auto& one : cases) {
    stores_.reset();
    for (int i = 0; i < 10; ++i) addRow({u"x"});
    table_.fitAndReload(1);
    IndexSet rows;
    for (const auto row : one.selected) rows.addIndex(row);
    table_.table().selectRows(rows);
    stores_.reset();
    for (std::size_t i = 0; i < one.rowsThen; ++i) addRow({u"y"});
    table_.fitAndReload(1);
    EXPECT_EQ(table_.table().selectedRow(), one.expected) << ::testing::PrintToString(one.selected);
    EXPECT_LE(table_.table().selectedRows().count(), 1);
  }
}

TEST_F(PreviewTableTest, HasNoLinesBeforeTheFirst) {
  for (int i = 0; i < 12; ++i) addRow({std::u16string(1, static_cast<char16_t>(u'a' + i))});
  table_.fitAndReload(-1);
  EXPECT_EQ(table_.shownCells()[1], (PreviewStores::Row{u"0", u""}));
  EXPECT_EQ(table_.shownCells()[2], (PreviewStores::Row{u"1", u"a"}));
  EXPECT_EQ(table_.shownCells()[9], (PreviewStores::Row{u"8", u"h"}));
  table_.fitAndReload(-1'000);
  EXPECT_EQ(table_.shownCells()[9], (PreviewStores::Row{u"-991", u""}));
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
