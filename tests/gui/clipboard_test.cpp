// The clipboard data window, from Refresh to Join, with its mouse and its keys.
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTableView>
#include <QToolButton>

#include "gui/user.h"
#include "ui/grid_view.h"
#include "ui/large_text_view.h"
#include "ui/theme.h"

namespace quillet::testing {
namespace {

constexpr const char* kGrid = "clipboardDataTableView";
constexpr const char* kWindow = "clipboardDataWindow";
constexpr const char* kFocus = "clipboardDataWindowFocusLabel";

using Cells = std::vector<Texts>;

class Clipboard : public UserTest {
 protected:
  void refresh(const char* text) {
    QApplication::clipboard()->setText(QString::fromUtf8(text));
    press(Qt::Key_2, Qt::ControlModifier);
    press(Qt::Key_F5);
  }
  // Opens the window with this grid, cut at line ends and commas.
  void open(const char* text) {
    launch();
    refresh(text);
    click("clipboardDataWindowSplitToolbarItem");
    fill("clipboardDataSplitWindowLineSeparatorComboBox", QStringLiteral("\\n"));
    fill("clipboardDataSplitWindowColumnSeparatorComboBox", QStringLiteral(","));
    press(Qt::Key_Return);
  }
  GridView& grid() { return widget<GridView>(kGrid); }
  Cells cells() {
    const QAbstractItemModel& model = *grid().model();
    Cells result;
    for (int row = 0; row < model.rowCount(); ++row) {
      Texts texts;
      for (int column = 0; column < model.columnCount(); ++column)
        texts.push_back(model.index(row, column).data().toString().toStdString());
      result.push_back(texts);
    }
    return result;
  }
  void clickCell(int row, int column, Qt::KeyboardModifiers modifiers = {}) {
    clickRow(kGrid, row, modifiers, column);
  }
  void clickNumber(int row, Qt::KeyboardModifiers modifiers = {}) {
    const QHeaderView& header = *grid().verticalHeader();
    click(*header.viewport(), {20, header.sectionViewportPosition(row) + header.sectionSize(row) / 2},
          modifiers);
  }
  void clickHeader(int column, Qt::KeyboardModifiers modifiers = {}) {
    const QHeaderView& header = *grid().horizontalHeader();
    click(*header.viewport(),
          {header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2},
          modifiers);
  }
  void clickCorner() { click(*grid().findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly)); }
  // As it is painted: the cells whose background is that of a selected one.
  std::vector<std::pair<int, int>> selected() {
    const ui::Colours& colours = ui::coloursOf(grid().palette());
    const QImage image = grid().viewport()->grab().toImage();
    std::vector<std::pair<int, int>> result;
    for (int row = 0; row < grid().model()->rowCount(); ++row)
      for (int column = 0; column < grid().model()->columnCount(); ++column) {
        const QRect cell = grid().visualRect(grid().model()->index(row, column));
        const QColor colour = image.pixelColor(cell.right() - 2, cell.center().y());
        if (colour == colours.selectedFill || colour == colours.cellUnfocused)
          result.emplace_back(row, column);
      }
    return result;
  }
  using Places = std::vector<std::pair<int, int>>;
  std::string status() { return text("clipboardDataWindowStatusLabel"); }
};

TEST_F(Clipboard, TheHeadersArePaintedWhenTheGridComesInThePlaceOfTheText) {
  open("a,b\nc,d");
  const QColor header = ui::coloursOf(grid().palette()).header;
  const QImage image = grid().grab().toImage();
  for (QHeaderView* shown : {grid().horizontalHeader(), grid().verticalHeader()})
    EXPECT_EQ(image.pixelColor(shown->pos() + QPoint(2, 2)), header);
}

TEST_F(Clipboard, ItsWindowOpensWithHelpAndARefreshButton) {
  launch();
  QApplication::clipboard()->setText(QStringLiteral("a,b"));
  press(Qt::Key_2, Qt::ControlModifier);
  ASSERT_TRUE(isShown(kWindow));
  EXPECT_TRUE(widget("clipboardDataWindowHelpBox").isVisible());
  EXPECT_FALSE(widget("clipboardDataWindowPerformToolbarItem").isEnabled());
  EXPECT_FALSE(widget("clipboardDataWindowJoinToolbarItem").isEnabled());
  click("clipboardDataWindowHelpBoxRefreshButton");
  EXPECT_TRUE(widget("clipboardDataWindowTextView").isVisible());
  EXPECT_EQ(text("clipboardDataWindowTextView"), "a,b");
}

TEST_F(Clipboard, ALongTextIsPaintedAtOnce) {
  launch();
  QString longText = QString(2'000'000, QLatin1Char('x')) + QLatin1Char('\n');
  for (int i = 0; i < 200'000; ++i) longText += QStringLiteral("line\n");
  QApplication::clipboard()->setText(longText);
  press(Qt::Key_2, Qt::ControlModifier);
  press(Qt::Key_F5);
  auto& view = widget<LargeTextView>("clipboardDataWindowTextView");
  EXPECT_EQ(view.text().size(), longText.size());
  EXPECT_FALSE(view.grab().isNull());
}

TEST_F(Clipboard, IsSplitBySheetAndItsSeparatorsTickTheirBoxes) {
  launch();
  refresh("a;b\nc;d");
  press(Qt::Key_K, Qt::ControlModifier);
  ASSERT_TRUE(isShown("clipboardDataSplitWindow"));
  EXPECT_FALSE(isOn("clipboardDataSplitWindowSplitClipboardIntoLinesCheckbox"));
  EXPECT_FALSE(isOn("clipboardDataSplitWindowSplitLinesIntoColumnsCheckbox"));
  fill("clipboardDataSplitWindowLineSeparatorComboBox", QStringLiteral("\\n"));
  EXPECT_TRUE(isOn("clipboardDataSplitWindowSplitClipboardIntoLinesCheckbox"));
  EXPECT_FALSE(isOn("clipboardDataSplitWindowSplitLinesIntoColumnsCheckbox"));
  chooseWithTheMouse("clipboardDataSplitWindowColumnSeparatorComboBox", ";");
  EXPECT_TRUE(isOn("clipboardDataSplitWindowSplitLinesIntoColumnsCheckbox"));
  click("clipboardDataSplitWindowDoneButton");
  EXPECT_EQ(cells(), (Cells{{"a", "b"}, {"c", "d"}}));
  EXPECT_TRUE(widget("clipboardDataWindowPerformToolbarItem").isEnabled());
  EXPECT_TRUE(widget("clipboardDataWindowJoinToolbarItem").isEnabled());
}

TEST_F(Clipboard, ABoxThatWasTickedCanBeLeftOff) {
  launch();
  refresh("a,b\nc,d");
  press(Qt::Key_K, Qt::ControlModifier);
  fill("clipboardDataSplitWindowLineSeparatorComboBox", QStringLiteral("\\n"));
  fill("clipboardDataSplitWindowColumnSeparatorComboBox", QStringLiteral(","));
  tick("clipboardDataSplitWindowSplitLinesIntoColumnsCheckbox", false);
  press(Qt::Key_Return);
  EXPECT_EQ(cells(), (Cells{{"a,b"}, {"c,d"}}));
}

TEST_F(Clipboard, IsJoinedToTheClipboardAgain) {
  open("a,b\nc,d");
  click("clipboardDataWindowJoinToolbarItem");
  fill("clipboardDataJoinWindowLineSeparatorComboBox", QStringLiteral("|"));
  fill("clipboardDataJoinWindowColumnSeparatorComboBox", QStringLiteral(";"));
  tick("clipboardDataJoinWindowAddQuotesCheckbox");
  press(Qt::Key_Return);
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "\"a\";\"b\"|\"c\";\"d\"");
}

TEST_F(Clipboard, AClickSelectsACellAndFocusesIt) {
  open("a,b\nc,d");
  EXPECT_EQ(text(kFocus), "");
  clickCell(1, 0);
  EXPECT_EQ(selected(), (Places{{1, 0}}));
  EXPECT_EQ(text(kFocus), "Line 2, column 1");
  clickCell(0, 1, Qt::ControlModifier);
  EXPECT_EQ(selected(), (Places{{0, 1}, {1, 0}}));
  EXPECT_EQ(text(kFocus), "Line 2, column 1");
  clickCell(1, 0, Qt::ControlModifier);
  EXPECT_EQ(selected(), (Places{{0, 1}}));
}

TEST_F(Clipboard, LineNumbersSelectLines) {
  open("a,b\nc,d\ne,f");
  clickNumber(0);
  EXPECT_EQ(selected(), (Places{{0, 0}, {0, 1}}));
  clickNumber(2, Qt::ShiftModifier);
  EXPECT_EQ(selected().size(), 6u);
  clickNumber(1, Qt::ControlModifier);
  EXPECT_EQ(selected(), (Places{{0, 0}, {0, 1}, {2, 0}, {2, 1}}));
  clickNumber(1);
  clickNumber(1);
  EXPECT_EQ(selected(), Places()) << "the only one is deselected";
}

TEST_F(Clipboard, HeadersSelectColumnsAndTheCornerAll) {
  open("a,b,c\nd,e,f");
  clickHeader(1);
  EXPECT_EQ(selected(), (Places{{0, 1}, {1, 1}}));
  clickHeader(2, Qt::ControlModifier);
  EXPECT_EQ(selected(), (Places{{0, 1}, {0, 2}, {1, 1}, {1, 2}}));
  clickHeader(0, Qt::ShiftModifier);
  EXPECT_EQ(selected().size(), 6u);
  clickHeader(0);
  EXPECT_EQ(selected(), (Places{{0, 0}, {1, 0}}));
  clickCorner();
  EXPECT_EQ(selected().size(), 6u);
}

TEST_F(Clipboard, ControlAAndTheMenuSelectAll) {
  open("a,b\nc,d");
  clickCell(0, 0);
  chooseMenu(kWindow, "Edit", "Select All");
  EXPECT_EQ(selected().size(), 4u);
  clickCell(0, 0);
  press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(selected().size(), 4u);
}

TEST_F(Clipboard, TheMenuOpenedByItsMnemonicSelectsAll) {
  open("a,b\nc,d");
  clickCell(0, 0);
  chooseByKeys(Qt::Key_E, "Select All");
  EXPECT_EQ(selected().size(), 4u);
  EXPECT_TRUE(grid().hasFocus());
}

TEST_F(Clipboard, KeysMoveTheFocusAndNotTheSelection) {
  open("a,b,c\nd,e,f\ng,h,i");
  clickCell(0, 0);
  struct Step {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* focus;
  };
  for (const Step& step :
       {Step{Qt::Key_Down, {}, "Line 2, column 1"}, Step{Qt::Key_Right, {}, "Line 2, column 2"},
        Step{Qt::Key_Tab, {}, "Line 2, column 3"}, Step{Qt::Key_Tab, {}, "Line 2, column 3"},
        Step{Qt::Key_Backtab, Qt::ShiftModifier, "Line 2, column 2"},
        Step{Qt::Key_Left, {}, "Line 2, column 1"}, Step{Qt::Key_Left, {}, "Line 2, column 1"},
        Step{Qt::Key_Down, Qt::AltModifier, "Line 3, column 1"},
        Step{Qt::Key_Up, Qt::ShiftModifier, "Line 2, column 1"},
        Step{Qt::Key_Up, Qt::AltModifier, "Line 1, column 1"}, Step{Qt::Key_Up, {}, "Line 1, column 1"}}) {
    press(step.key, step.modifiers);
    EXPECT_EQ(text(kFocus), step.focus) << step.key;
    EXPECT_TRUE(grid().hasFocus());
  }
  EXPECT_EQ(selected(), (Places{{0, 0}}));
}

// Only the focus brings the grid to where it is.
TEST_F(Clipboard, SelectingAllLeavesWhatIsInSight) {
  std::string lines;
  for (int line = 0; line < 500; ++line) lines += "a,b\n";
  open(lines.c_str());
  clickCell(1, 0);
  const int end = grid().verticalScrollBar()->maximum();
  ASSERT_GT(end, 0);
  for (const bool byKey : {false, true}) {
    if (byKey)
      press(Qt::Key_End, Qt::ControlModifier);
    else
      grid().verticalScrollBar()->setValue(end);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid().verticalScrollBar()->value(), end) << byKey;
  }
  press(Qt::Key_Down);
  EXPECT_LT(grid().verticalScrollBar()->value(), end);
}

// Keys that only scroll do not take the focus along.
TEST_F(Clipboard, ThePageKeysGoOnFromTheFocus) {
  std::string lines;
  for (int line = 0; line < 500; ++line) lines += "a,b\n";
  open(lines.c_str());
  clickCell(1, 0);
  press(Qt::Key_End, Qt::ControlModifier);
  EXPECT_GT(grid().verticalScrollBar()->value(), 0);
  press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(grid().currentIndex().row(), 1);
  press(Qt::Key_End, Qt::ControlModifier);
  press(Qt::Key_F6);
  press(Qt::Key_F6);
  ASSERT_TRUE(grid().hasFocus());
  EXPECT_EQ(grid().currentIndex().row(), 1);
}

TEST_F(Clipboard, PerformedStepsAreNotSelected) {
  open("a,b");
  focus("clipboardDataWindowOperationsTableView");
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End}) press(key);
  EXPECT_EQ(selection("clipboardDataWindowOperationsTableView"), std::vector<int>());
}

TEST_F(Clipboard, BehindASheetNoKeyOfTheWindowIsHeard) {
  open("a\nb");
  chooseMenu(kWindow, "Grid", "Flip Vertical");
  QAction& undo = menuItem(kWindow, "Edit", "Undo Flip Vertical");
  QAction& close = menuItem(kWindow, "File", "Close");
  chooseMenu(kWindow, "Grid", "Split…");
  undo.trigger();
  close.trigger();
  EXPECT_EQ(cells(), (Cells{{"b"}, {"a"}}));
  EXPECT_TRUE(isShown(kWindow));
  press(Qt::Key_Escape);
  undo.trigger();
  EXPECT_EQ(cells(), (Cells{{"a"}, {"b"}}));
}

TEST_F(Clipboard, TheStepPerformedLastIsInSight) {
  open("a,b");
  auto& performed = widget<QTableView>("clipboardDataWindowOperationsTableView");
  for (int step = 0; step < 40; ++step) chooseMenu(kWindow, "Lines", "Add Line to the Top");
  ASSERT_GT(performed.verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(performed.verticalScrollBar()->value(), performed.verticalScrollBar()->maximum());
}

TEST_F(Clipboard, ReturnEditsTheFocusedCell) {
  open("a,b");
  clickCell(0, 0);
  press(Qt::Key_Right);
  press(Qt::Key_Return);
  ASSERT_TRUE(isShown("cellDetailsWindow"));
  EXPECT_EQ(text("cellDetailsWindowTextField"), "b");
  press(Qt::Key_A, Qt::ControlModifier);
  type(QStringLiteral("one"));
  press(Qt::Key_Return, Qt::ShiftModifier);
  type(QStringLiteral("two"));
  press(Qt::Key_Return);
  EXPECT_FALSE(isShown("cellDetailsWindow"));
  EXPECT_EQ(cells(), (Cells{{"a", "one\ntwo"}}));
}

TEST_F(Clipboard, TabLeavesTheTextOfACell) {
  open("a,b");
  doubleClickRow(kGrid, 0, 0);
  ASSERT_TRUE(isShown("cellDetailsWindow"));
  EXPECT_EQ(text("cellDetailsWindowTextField"), "a");
  EXPECT_TRUE(widget("cellDetailsWindowTextField").hasFocus());
  press(Qt::Key_Tab);
  EXPECT_FALSE(widget("cellDetailsWindowTextField").hasFocus());
  EXPECT_EQ(text("cellDetailsWindowTextField"), "a");
  press(Qt::Key_Escape);
  EXPECT_FALSE(isShown("cellDetailsWindow"));
  EXPECT_EQ(cells(), (Cells{{"a", "b"}}));
}

TEST_F(Clipboard, TheDeleteKeyDeletesNothing) {
  open("a,b\nc,d");
  clickCell(0, 0);
  press(Qt::Key_Delete);
  press(Qt::Key_Backspace);
  EXPECT_EQ(cells(), (Cells{{"a", "b"}, {"c", "d"}}));
  EXPECT_FALSE(isMenuItemOn(kWindow, "Edit", "Delete"));
}

TEST_F(Clipboard, ARightClickOutsideTheSelectionSelectsFirst) {
  open("a,b\nc,d\ne,f");
  clickCell(0, 0);
  clickCell(0, 1, Qt::ControlModifier);
  const QPoint inside = placeOf(grid(), 0, 1);
  chooseFromContextMenu(*grid().viewport(), inside, "Replace…");
  EXPECT_TRUE(isShown("clipboardDataReplaceWindow"));
  press(Qt::Key_Escape);
  EXPECT_EQ(selected(), (Places{{0, 0}, {0, 1}})) << "it was inside";
  chooseFromContextMenu(*grid().viewport(), placeOf(grid(), 2, 0), "Lines/Add Line to the Top");
  EXPECT_EQ(cells().size(), 4u);
  EXPECT_EQ(selected(), (Places{{2, 0}}));
}

TEST_F(Clipboard, PerformTrimsReplacesAndFills) {
  open("xa,xb\nxc,xd");
  clickHeader(0);
  chooseFromButton("clipboardDataWindowPerformToolbarItem", "Trim…");
  ASSERT_TRUE(isShown("clipboardDataTrimWindow"));
  choose("clipboardDataTrimWindowTrimWhatPopUpButton", "String");
  choose("clipboardDataTrimWindowTrimFromPopUpButton", "From Start");
  fill("clipboardDataTrimWindowTextField", QStringLiteral("x"));
  press(Qt::Key_Return);
  EXPECT_EQ(cells(), (Cells{{"a", "xb"}, {"c", "xd"}}));
  EXPECT_EQ(status(), "Trim Column operation performed.");
  clickNumber(0);
  press(Qt::Key_H, Qt::ControlModifier);
  choose("clipboardDataReplaceWindowTypePopUpButton", "Regular Expression");
  fill("clipboardDataReplaceWindowWhatTextField", QStringLiteral("[ab]"));
  fill("clipboardDataReplaceWindowWithTextField", QStringLiteral("_"));
  press(Qt::Key_Return);
  EXPECT_EQ(cells(), (Cells{{"_", "x_"}, {"c", "xd"}}));
  clickHeader(1);
  press(Qt::Key_I, Qt::ControlModifier);
  choose("clipboardDataFillWindowTypePopUpButton", "Sequence");
  fill("clipboardDataFillWindowWithTextField", QStringLiteral("10,5"));
  press(Qt::Key_Return);
  EXPECT_EQ(cells(), (Cells{{"_", "10"}, {"c", "15"}}));
  EXPECT_EQ(column("clipboardDataWindowOperationsTableView"),
            (Texts{"Split", "Trim Column", "Replace Cells", "Fill Cells"}));
  click("clipboardDataWindowClearStatusLabelButton");
  EXPECT_EQ(status(), "");
}

TEST_F(Clipboard, PerformMovesMergesAndFlips) {
  open("a,b\nc,d\ne,f");
  clickNumber(1);
  press(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(cells(), (Cells{{"c", "d"}, {"a", "b"}, {"e", "f"}}));
  chooseFromButton("clipboardDataWindowPerformToolbarItem", "Flip/Flip Vertical");
  EXPECT_EQ(cells(), (Cells{{"e", "f"}, {"a", "b"}, {"c", "d"}}));
  clickNumber(0);
  clickNumber(1, Qt::ControlModifier);
  chooseMenu(kWindow, "Lines", "Merge Up…");
  type(QStringLiteral("+"));
  press(Qt::Key_Return);
  EXPECT_EQ(cells(), (Cells{{"e+a", "f+b"}, {"c", "d"}}));
  clickHeader(1);
  press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(cells(), (Cells{{"e+a"}, {"c"}}));
}

TEST_F(Clipboard, HeadersAndLineNumbersHaveMenus) {
  open("a,b\nc,d");
  const QHeaderView& columns = *grid().horizontalHeader();
  chooseFromContextMenu(*columns.viewport(), {20, 8}, "Add Column to the Left");
  EXPECT_EQ(cells(), (Cells{{"", "a", "b"}, {"", "c", "d"}}));
  const QHeaderView& lines = *grid().verticalHeader();
  chooseFromContextMenu(*lines.viewport(), {20, 8}, "Delete Line from the Top");
  EXPECT_EQ(cells(), (Cells{{"", "c", "d"}}));
}

TEST_F(Clipboard, ARightClickOnAHeaderOutsideTheSelectionSelectsFirst) {
  open("a,b\nc,d\ne,f");
  const QHeaderView& lines = *grid().verticalHeader();
  const QHeaderView& columns = *grid().horizontalHeader();
  const auto rightClickNumber = [&](int row, const char* item) {
    chooseFromContextMenu(*lines.viewport(), {20, lines.sectionViewportPosition(row) + 8}, item);
  };
  clickNumber(0);
  rightClickNumber(1, "Delete Selected Lines");
  EXPECT_EQ(cells(), (Cells{{"a", "b"}, {"e", "f"}}));
  clickNumber(0);
  clickNumber(1, Qt::ControlModifier);
  rightClickNumber(1, "Move Line Down");
  EXPECT_EQ(selected().size(), 4u) << "it was inside";
  clickHeader(0);
  chooseFromContextMenu(*columns.viewport(), {columns.sectionViewportPosition(1) + 20, 8},
                        "Delete Selected Columns");
  EXPECT_EQ(cells(), (Cells{{"a"}, {"e"}}));
  clickCell(1, 0);
  rightClickNumber(1, "Add Line to the Top");
  EXPECT_EQ(cells(), (Cells{{""}, {"a"}, {"e"}}));
}

TEST_F(Clipboard, OneStepIsUndoneAndRedoneUnderItsName) {
  open("a,b\nc,d");
  chooseMenu(kWindow, "Grid", "Flip Vertical");
  EXPECT_TRUE(isMenuItemOn(kWindow, "Edit", "Undo Flip Vertical"));
  EXPECT_FALSE(isMenuItemOn(kWindow, "Edit", "Redo"));
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(cells(), (Cells{{"a", "b"}, {"c", "d"}}));
  EXPECT_TRUE(isMenuItemOn(kWindow, "Edit", "Redo Flip Vertical"));
  EXPECT_FALSE(isMenuItemOn(kWindow, "Edit", "Undo"));
  press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(cells(), (Cells{{"c", "d"}, {"a", "b"}}));
  chooseMenu(kWindow, "Edit", "Undo Flip Vertical");
  EXPECT_EQ(cells(), (Cells{{"a", "b"}, {"c", "d"}}));
}

TEST_F(Clipboard, ADoubleClickOnADividerFitsTheColumn) {
  open("mmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmm,b\nc,d");
  doubleClickDivider(kGrid, 0);
  EXPECT_EQ(grid().columnWidth(0),
            QFontMetrics(grid().font()).horizontalAdvance(QString(40, QLatin1Char('m'))) + 6);
  doubleClickDivider(kGrid, 1);
  EXPECT_EQ(grid().columnWidth(1), 40);
}

TEST_F(Clipboard, AWidthThatIsGivenStaysWhileCellsChange) {
  open("a,b\nc,d");
  const int before = grid().columnWidth(0);
  dragDivider(kGrid, 0, -60);
  EXPECT_EQ(grid().columnWidth(0), before - 60);
  EXPECT_EQ(selected(), Places()) << "a divider is no header";
  clickCell(1, 1);
  press(Qt::Key_Left);
  EXPECT_EQ(grid().columnWidth(0), before - 60);
}

TEST_F(Clipboard, ACellThatALineDoesNotHaveIsFramed) {
  open("a,b\nc");
  const QRect cell = grid().visualRect(grid().model()->index(1, 1));
  const QRect other = grid().visualRect(grid().model()->index(0, 1));
  const QImage image = grid().viewport()->grab().toImage();
  const QColor frame = ui::coloursOf(grid().palette()).missing;
  EXPECT_EQ(image.pixelColor(cell.left(), cell.center().y()), frame);
  EXPECT_EQ(image.pixelColor(cell.center().x(), cell.top()), frame);
  EXPECT_NE(image.pixelColor(other.left(), other.center().y()), frame);
}

TEST_F(Clipboard, KeysOfItemsThatAreOffAreEaten) {
  open("a,b\nc,d");
  clickCell(0, 0);
  EXPECT_FALSE(isMenuItemOn(kWindow, "Lines", "Move Line Down"));
  EXPECT_FALSE(isMenuItemOn(kWindow, "Columns", "Move Column Right"));
  press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
  press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(cells(), (Cells{{"a", "b"}, {"c", "d"}}));
  EXPECT_EQ(text(kFocus), "Line 1, column 1");
  EXPECT_EQ(selected(), (Places{{0, 0}}));
}

TEST_F(Clipboard, F6LeavesTheGrid) {
  open("a,b");
  clickCell(0, 0);
  press(Qt::Key_F6);
  EXPECT_TRUE(widget("clipboardDataWindowOperationsTableView").hasFocus());
  press(Qt::Key_F6);
  EXPECT_TRUE(grid().hasFocus());
}

TEST_F(Clipboard, F6PassesOverWhatIsOutOfSight) {
  launch();
  press(Qt::Key_2, Qt::ControlModifier);
  focus("clipboardDataWindowOperationsTableView");
  press(Qt::Key_F6);
  EXPECT_TRUE(widget("clipboardDataWindowHelpBoxRefreshButton").hasFocus());
  refresh("a,b");
  click("clipboardDataWindowSplitToolbarItem");
  press(Qt::Key_Return);
  clickCell(0, 0);
  chooseMenu(kWindow, "Grid", "Performed Operations");
  press(Qt::Key_F6);
  ASSERT_TRUE(QApplication::focusWidget());
  EXPECT_FALSE(grid().hasFocus());
  EXPECT_TRUE(QApplication::focusWidget()->isVisible());
  press(Qt::Key_F6);
  EXPECT_TRUE(grid().hasFocus());
}

// As long as a cell can be.
TEST_F(Clipboard, ThePromptOfAMergeTakesALongText) {
  open("a\nb\nc");
  clickNumber(0);
  clickNumber(1, Qt::ControlModifier);
  chooseMenu(kWindow, "Lines", "Merge Up…");
  auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_TRUE(field);
  EXPECT_EQ(field->font().family(), ui::fixedWidthFont().family());
  const QString longText(100'000, QLatin1Char('-'));
  QApplication::clipboard()->setText(longText);
  press(Qt::Key_V, Qt::ControlModifier);
  press(Qt::Key_Return);
  // A cell shows no more than fits its column.
  const std::u16string_view merged = application().clipboard().data().clipboardDataArray().row(0).cell(0);
  EXPECT_EQ(merged.size(), 100'002u);
}

TEST_F(Clipboard, AWrongCountOfLinesToJoinIsToldInTheWindow) {
  open("a\nb\nc");
  chooseMenu(kWindow, "Lines", "Join Lines…");
  type(QStringLiteral("1"));
  press(Qt::Key_Return);
  EXPECT_EQ(alert().informativeText().toStdString(), "You must join at least 2 rows");
  EXPECT_EQ(alert().parentWidget(), &form(kWindow));
  EXPECT_EQ(alert().windowModality(), Qt::WindowModal);
  answer("OK");
  EXPECT_EQ(cells().size(), 3u);
}

TEST_F(Clipboard, AClickBesideTheColumnsChangesNothing) {
  open("a,b\nc,d");
  clickCell(0, 0);
  dragDivider(kGrid, 1, -100);
  click(*grid().viewport(), {grid().viewport()->width() - 10, 5});
  EXPECT_EQ(selected(), (Places{{0, 0}}));
}

TEST_F(Clipboard, ThePaneOfPerformedOperationsIsShownAndHidden) {
  open("a,b");
  EXPECT_TRUE(widget("clipboardDataWindowOperationsPane").isVisible());
  chooseMenu(kWindow, "Grid", "Performed Operations");
  EXPECT_FALSE(widget("clipboardDataWindowOperationsPane").isVisible());
  chooseMenu(kWindow, "Grid", "Performed Operations");
  EXPECT_TRUE(widget("clipboardDataWindowOperationsPane").isVisible());
}

TEST_F(Clipboard, KeysWithControlAreThoseWithoutIt) {
  open("a,b\nc,d");
  clickCell(0, 0);
  press(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(text(kFocus), "Line 2, column 1");
  press(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(text(kFocus), "Line 2, column 2");
  for (const Qt::KeyboardModifiers modifiers :
       {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::KeyboardModifiers(Qt::ShiftModifier),
        Qt::KeyboardModifiers(Qt::AltModifier)}) {
    press(Qt::Key_Return, modifiers);
    EXPECT_TRUE(isShown("cellDetailsWindow")) << modifiers;
    EXPECT_EQ(text("cellDetailsWindowTextField"), "d");
    press(Qt::Key_Escape);
    EXPECT_TRUE(grid().hasFocus());
  }
}

TEST_F(Clipboard, ARightClickOnAHeaderOrALineNumberOutsideTheSelectionSelectsFirst) {
  open("a,b,c\nd,e,f\ng,h,i\nj,k,l");
  clickCell(0, 0);
  const auto& columns = *grid().horizontalHeader();
  const auto& lines = *grid().verticalHeader();
  const QPoint second(columns.sectionViewportPosition(1) + 8, 8);
  chooseFromContextMenu(*columns.viewport(), second, "Move Column Left");
  EXPECT_EQ(cells(), (Cells{{"b", "a", "c"}, {"e", "d", "f"}, {"h", "g", "i"}, {"k", "j", "l"}}));
  const QPoint third(20, lines.sectionViewportPosition(2) + 8);
  chooseFromContextMenu(*lines.viewport(), third, "Delete Selected Lines");
  EXPECT_EQ(cells(), (Cells{{"b", "a", "c"}, {"e", "d", "f"}, {"k", "j", "l"}}));
  clickNumber(0);
  clickNumber(1, Qt::ControlModifier);
  chooseFromContextMenu(*lines.viewport(), {20, 8}, "Delete Selected Lines");
  EXPECT_EQ(cells(), (Cells{{"k", "j", "l"}})) << "it was inside";
}

TEST_F(Clipboard, ALineOfTooManyColumnsIsToldInASheetAndInRed) {
  const QByteArray commas(16'384, ',');
  open("a,b\n" + commas);
  EXPECT_EQ(alert().windowModality(), Qt::WindowModal);
  EXPECT_EQ(alert().parentWidget(), &form(kWindow));
  EXPECT_EQ(alert().text(), QStringLiteral("Too many columns"));
  EXPECT_EQ(
      alert().informativeText(),
      QStringLiteral("This app is limited to 16384 columns.\n16385 columns were found on the clipboard on "
                     "line 2."));
  press(Qt::Key_Return);
  EXPECT_FALSE(hasAlert()) << "it has the keys, as the sheet is gone";
  EXPECT_EQ(status(), "Too many columns");
  const auto& label = widget("clipboardDataWindowStatusLabel");
  const ui::Colours& colours = ui::coloursOf(label.palette());
  EXPECT_EQ(label.palette().color(QPalette::WindowText), colours.red);
  EXPECT_EQ(cells(), (Cells{{"a", "b"}})) << "the lines before it stay";
  EXPECT_TRUE(widget("clipboardDataWindowPerformToolbarItem").isEnabled());
  EXPECT_TRUE(widget("clipboardDataWindowJoinToolbarItem").isEnabled());
  press(Qt::Key_F5);
  EXPECT_EQ(label.palette().color(QPalette::WindowText), colours.secondary);
  EXPECT_TRUE(widget("clipboardDataWindowClearStatusLabelButton").isVisible());
  click("clipboardDataWindowClearStatusLabelButton");
  EXPECT_EQ(status(), "");
  EXPECT_FALSE(widget("clipboardDataWindowClearStatusLabelButton").isVisible());
}

}  // namespace
}  // namespace quillet::testing
