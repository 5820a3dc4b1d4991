#include "shell/clipboard/clipboard_table.h"

#include <gtest/gtest.h>

#include "platform/unicode_text.h"
#include "shell/column_width.h"
#include "shell/recording_desktop.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using Widths = std::vector<int>;

// A display that hands on to the table alone.
class TableDisplay final : public ClipboardDisplay {
 public:
  void updateClipboardDataWindowTextColumns(bool) override {}
  void resizeClipboardTableViewColumns() override { table->resizeClipboardTableViewColumns(false); }
  std::size_t dataColumnCount() const override { return table->dataColumnCount(); }
  void reloadTable() override { table->reload(); }
  void setTitle(std::u16string) override {}
  void setText(std::u16string_view) override {}
  void setStatus(std::u16string, int) override {}
  void setToolbarItemsEnabled(bool) override {}
  void showAlert(std::u16string_view, std::u16string_view) override {}
  void showErrorAlert(std::u16string_view) override {}

  ClipboardTable* table = nullptr;
};

class ClipboardTableTest : public ::testing::Test {
 protected:
  ClipboardTableTest() {
    display_.table = &table_;
    table_.addCommandsTo(interface_.commands());
  }

  void split(std::u16string text) {
    desktop_.pasteboard = std::move(text);
    data_.refreshDataFromClipboard();
    data_.performClipboardDataOperation({{"Code", std::int64_t{102}}, {"Arg1", u"/"}, {"Arg2", u"|"}});
  }
  void splitIntoColumns(std::size_t count) { split(std::u16string(count - 1, u'|')); }
  void perform(std::int64_t code) { data_.performClipboardDataOperation({{"Code", code}}); }

  Table& table() { return table_.table(); }
  Widths widths() {
    Widths result;
    for (std::size_t column = 0; column < table().columnCount(); ++column)
      result.push_back(table().column(column).width);
    return result;
  }
  std::string selection() const {
    return toUtf8(data_.selection().selected2DIndexSet().stringPlus1FromAllIndexes());
  }
  std::u16string focusText() {
    return dynamic_cast<Label&>(*window_.control("clipboardDataWindowFocusLabel")).text();
  }

  testing::RecordingDesktop desktop_;
  UserInterface interface_;
  Window window_{interface_, "clipboardDataWindow", u""};
  TableDisplay display_;
  ClipboardData data_{desktop_, display_};
  int cellDetailsShown_ = 0;
  ClipboardTable table_{window_, data_, [this] { ++cellDetailsShown_; }};
};

// Columns.

TEST_F(ClipboardTableTest, BeginsWithTheColumnOfTheRowNumbers) {
  ASSERT_EQ(table().columnCount(), 1u);
  EXPECT_EQ(table().column(0), (Table::Column{"ClipboardRowNumber", u"", 65}));
  EXPECT_EQ(table_.dataColumnCount(), 0u);
  EXPECT_EQ(table().rowCount(), 0u);
}

TEST_F(ClipboardTableTest, UpToFiveColumnsShareTheSpaceAndMoreHaveAFixedWidth) {
  const struct {
    int tableWidth;
    std::size_t columns;
    Widths widths;
  } cases[] = {
      {565, 1, {65, 500}},
      {565, 2, {65, 250, 250}},
      {565, 3, {65, 166, 166, 166}},
      {565, 4, {65, 125, 125, 125, 125}},
      {565, 5, {65, 100, 100, 100, 100, 100}},
      {569, 5, {65, 100, 100, 100, 100, 100}},
      {570, 5, {65, 101, 101, 101, 101, 101}},
      {1200, 6, {65, 100, 100, 100, 100, 100, 100}},
      {1200, 7, {65, 100, 100, 100, 100, 100, 100, 100}},
      {65, 2, {65, 0, 0}},
      {20, 1, {65, 0}},
  };
  for (const auto& one : cases) {
    table().userResizesTable(one.tableWidth);
    splitIntoColumns(one.columns);
    EXPECT_EQ(widths(), one.widths) << one.tableWidth << " for " << one.columns;
  }
}

TEST_F(ClipboardTableTest, AColumnHasItsNumberFromOneAsItsTitle) {
  table().userResizesTable(565);
  splitIntoColumns(2);
  EXPECT_EQ(table().column(1), (Table::Column{"ClipboardCol0", u"1", 250, true}));
  EXPECT_EQ(table().column(2), (Table::Column{"ClipboardCol1", u"2", 250, true}));
}

TEST_F(ClipboardTableTest, AGridWithoutCellsHasNoDataColumns) {
  splitIntoColumns(3);
  perform(902);
  table_.resizeClipboardTableViewColumns(false);
  EXPECT_EQ(widths(), Widths{65});
}

TEST_F(ClipboardTableTest, AGridOfManyColumnsIsRebuiltAtOnce) {
  split(u"a");
  data_.performClipboardDataOperation({{"Code", std::int64_t{401}},
                                       {"IntArg1", std::int64_t{0}},
                                       {"IntArg2", std::int64_t{1'048'575}},
                                       {"Arg1", u"x"}});
  for (int i = 0; i < 1000; ++i) table_.resizeClipboardTableViewColumns(false);
  EXPECT_EQ(table_.dataColumnCount(), 1'048'576u);
  EXPECT_EQ(table().column(1'048'576), (Table::Column{"ClipboardCol1048575", u"1048576", 100, true}));
  EXPECT_TRUE(table().cell(0, 1'048'576) == u"x");
}

TEST_F(ClipboardTableTest, AWidthThatTheUserGaveLastsUntilTheNextRebuild) {
  table().userResizesTable(565);
  splitIntoColumns(2);
  table().userResizesColumn(2, 70);
  table().userResizesColumn(3, 80);
  EXPECT_EQ(widths(), (Widths{65, 250, 70}));
  perform(416);
  EXPECT_EQ(widths(), (Widths{65, 250, 70})) << "the columns stay";
  perform(409);
  EXPECT_EQ(widths(), (Widths{65, 166, 166, 166}));
}

TEST_F(ClipboardTableTest, KeptWidthsAreThoseOfTheColumnsThatWereThere) {
  table().userResizesTable(565);
  splitIntoColumns(2);
  table().userResizesColumn(1, 70);
  data_.performClipboardDataOperation({{"Code", std::int64_t{401}},
                                       {"IntArg1", std::int64_t{0}},
                                       {"IntArg2", std::int64_t{3}},
                                       {"Arg1", u"x"}});
  table_.resizeClipboardTableViewColumns(true);
  EXPECT_EQ(widths(), (Widths{65, 70, 250, 125, 125}));
  table_.resizeClipboardTableViewColumns(true);
  EXPECT_EQ(widths(), (Widths{65, 70, 250, 125, 125}));
  perform(402);
  EXPECT_EQ(widths(), (Widths{65, 166, 166, 166})) << "nothing asks for it";
}

// The columns as a list that is rebuilt step by step.
struct PlainColumns {
  void rebuild(std::size_t count, int tableWidth, bool keepWidths) {
    const std::vector<Table::Column> old(columns.begin() + 1, columns.end());
    columns.resize(1);
    const int width = count > 5 ? 100 : std::max(tableWidth - columns[0].width, 0) / static_cast<int>(count);
    for (std::size_t k = 0; k < count; ++k) {
      const std::string number = std::to_string(k + 1);
      columns.push_back({"ClipboardCol" + std::to_string(k), std::u16string(number.begin(), number.end()),
                         keepWidths && k < old.size() ? old[k].width : width, true});
    }
  }

  std::vector<Table::Column> columns = {{"ClipboardRowNumber", u"", 65}};
};

TEST_F(ClipboardTableTest, TheRuleMakesTheColumnsThatAListHas) {
  testing::RandomSource random;
  PlainColumns plain;
  std::size_t count = 0;
  for (std::uint64_t i = 0; i < testing::rounds(500); ++i) {
    if (random.oneIn(4)) {
      const std::size_t column = random.below(plain.columns.size() + 1);
      const int width = static_cast<int>(random.below(300));
      table().userResizesColumn(column, width);
      if (column < plain.columns.size()) plain.columns[column].width = width;
    } else if (count == 0 || random.oneIn(2)) {
      count = 1 + random.below(9);
      splitIntoColumns(count);
      plain.rebuild(1, table().width(), false);  // by the refresh before it
      plain.rebuild(count, table().width(), false);
    } else if (random.oneIn(2)) {
      table().userResizesTable(static_cast<int>(random.below(1000)));
    } else {
      const bool keepWidths = random.oneIn(2);
      table_.resizeClipboardTableViewColumns(keepWidths);
      plain.rebuild(count, table().width(), keepWidths);
    }
    ASSERT_EQ(table().columnCount(), plain.columns.size());
    for (std::size_t column = 0; column < plain.columns.size(); ++column)
      ASSERT_EQ(table().column(column), plain.columns[column]) << column;
  }
}

TEST_F(ClipboardTableTest, TheColumnOfTheRowNumbersIsNotRebuilt) {
  table().userResizesTable(600);
  splitIntoColumns(2);
  table().userResizesColumn(0, 100);
  perform(408);
  EXPECT_EQ(widths(), (Widths{100, 166, 166, 166}));
}

TEST_F(ClipboardTableTest, AResizedWindowEvensFewerThanFiveColumns) {
  for (const std::size_t columns : {1u, 4u, 5u, 6u}) {
    table().userResizesTable(565);
    splitIntoColumns(columns);
    const Widths before = widths();
    table_.windowDidResize(1065);
    EXPECT_EQ(table().width(), 1065);
    Widths even{65};
    even.resize(columns + 1, 1000 / static_cast<int>(columns));
    EXPECT_EQ(widths(), columns < 5 ? even : before) << columns;
  }
}

// Cells.

TEST_F(ClipboardTableTest, ShowsNumbersAndCellsAndNothingForMissingOnes) {
  split(u"a|b/c");
  ASSERT_EQ(table().rowCount(), 2u);
  EXPECT_EQ(table().row(0), (Table::Row{u"1", u"a", u"b"}));
  EXPECT_EQ(table().row(1), (Table::Row{u"2", u"c", u""}));
  for (std::size_t row = 0; row < 2; ++row)
    for (std::size_t column = 0; column < 3; ++column)
      EXPECT_EQ(table().cell(row, column), table().row(row)[column]);
  EXPECT_EQ(table().cell(1, 9), u"");
}

TEST_F(ClipboardTableTest, ShowsNoMoreCellsThanItHasColumns) {
  split(u"a|b/c");
  data_.performClipboardDataOperation({{"Code", std::int64_t{401}},
                                       {"IntArg1", std::int64_t{1}},
                                       {"IntArg2", std::int64_t{3}},
                                       {"Arg1", u"x"}});
  EXPECT_EQ(table().row(1), (Table::Row{u"2", u"c", u""})) << "an edit does not rebuild the columns";
}

TEST_F(ClipboardTableTest, ADividerFitsItsColumnToTheCellsInSight) {
  split(u"a|bbbbbbbb/c|dddddddddddd/e");
  const auto width = [&](std::size_t column, std::size_t first, std::size_t count) {
    return tableViewSizeToFitWidthOfColumn(table(), column, first, count, [](std::u16string_view text) {
      return 10 * static_cast<int>(text.size());
    });
  };
  EXPECT_EQ(width(2, 0, 1), 86);
  EXPECT_EQ(width(2, 0, 3), 126);
  EXPECT_EQ(width(2, 2, 1), 40);
  EXPECT_EQ(width(1, 0, 3), 40);
  EXPECT_EQ(width(0, 0, 3), 40);
  split(std::u16string(10'000, u'/'));
  EXPECT_EQ(width(0, 9'999, 1), 56) << "the column of the row numbers, too";
}

// Keys and clicks.

TEST_F(ClipboardTableTest, AClickOrAHeaderBeyondTheTableHitsNothing) {
  split(u"a|b/c");
  table_.mouseDown(0, 1, 1, {});
  ASSERT_EQ(selection(), "Cells: (1, 1)");
  for (const auto& [row, column] : {std::pair<std::int64_t, std::int64_t>{2, 1}, {-1, 1}, {0, 3}, {0, -1}})
    for (const ClickModifiers& modifiers : {ClickModifiers{}, {true, false, false}, {false, true, false}})
      for (const std::int64_t count : {1, 2}) table_.mouseDown(row, column, count, modifiers);
  EXPECT_EQ(selection(), "Cells: (1, 1)");
  table_.didClickTableColumn(3, {});
  table_.didClickTableColumn(-1, {});
  EXPECT_EQ(selection(), "Cells: (1, 1)");
  EXPECT_EQ(data_.selection().focusedRowIndex(), 0);
  EXPECT_EQ(cellDetailsShown_, 0);
}

TEST_F(ClipboardTableTest, AClickIsFollowedByAReloadAndAKeyIsNot) {
  split(u"a|b/c");
  int told = 0;
  table().setObserver([&told] { ++told; });
  table_.mouseDown(0, 1, 1, {});
  EXPECT_EQ(told, 1);
  table_.keyDown(GridKey::Down, false, false);
  EXPECT_EQ(told, 1);
  table_.didClickTableColumn(1, {});
  EXPECT_EQ(told, 2);
  table_.rowsTableViewSelectAllMenuItemClicked();
  EXPECT_EQ(told, 3);
}

TEST_F(ClipboardTableTest, AShiftClickOnACellTellsNothing) {
  split(u"a|b/c");
  int told = 0;
  table().setObserver([&told] { ++told; });
  table_.mouseDown(0, 1, 1, {.shift = true});
  table_.mouseDown(0, 1, 1, {.alternate = true});
  EXPECT_EQ(told, 0);
}

TEST_F(ClipboardTableTest, ReturnAndADoubleClickShowTheCellDetails) {
  split(u"a|b/c");
  table_.keyDown(GridKey::Return, false, false);
  EXPECT_EQ(cellDetailsShown_, 1) << "also without a focus";
  table_.mouseDown(0, 1, 1, {});
  EXPECT_EQ(cellDetailsShown_, 1);
  table_.mouseDown(0, 1, 2, {});
  EXPECT_EQ(cellDetailsShown_, 2);
  table_.mouseDown(0, 0, 2, {});
  EXPECT_EQ(cellDetailsShown_, 2);
  interface_.commands().perform("rowsTableViewReturnKeyPressed");
  EXPECT_EQ(cellDetailsShown_, 3);
}

TEST_F(ClipboardTableTest, SelectAllIsACommand) {
  split(u"a/b");
  interface_.commands().perform("rowsTableViewSelectAllMenuItemClicked");
  EXPECT_EQ(selection(), "Lines: 1 - 2");
}

TEST_F(ClipboardTableTest, TheTableAnswersForDeleteAlone) {
  EXPECT_FALSE(ClipboardTable::rowsTableViewValidateMenuItem("delete"));
  for (const char* action : {"selectAll", "copy", "rowsTableViewSelectAllMenuItemClicked", ""})
    EXPECT_TRUE(ClipboardTable::rowsTableViewValidateMenuItem(action)) << action;
}

TEST_F(ClipboardTableTest, TheFocusIsToldInWords) {
  split(u"a|b/c");
  EXPECT_EQ(focusText(), u"");
  table_.mouseDown(0, 2, 1, {});
  EXPECT_EQ(focusText(), u"Line 1, column 2");
  table_.keyDown(GridKey::Down, false, false);
  EXPECT_EQ(focusText(), u"Line 2, column 2") << "it may lie past the end of its row";
  table_.mouseDown(0, 0, 1, {});
  EXPECT_EQ(focusText(), u"");
  table_.mouseDown(1, 1, 1, {});
  table_.didClickTableColumn(1, {});
  EXPECT_EQ(focusText(), u"");
  table_.mouseDown(1, 1, 1, {});
  data_.refreshDataFromClipboard();
  EXPECT_EQ(focusText(), u"");
}

}  // namespace
}  // namespace quillet
