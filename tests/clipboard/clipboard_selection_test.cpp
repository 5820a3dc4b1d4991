#include "clipboard/clipboard_selection.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "clipboard/plain_selection.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {

void PrintTo(ClipboardSelection::Next next, std::ostream* out) {
  constexpr const char* kNames[] = {"Nothing", "Reload", "ShowCellDetails"};
  *out << kNames[static_cast<int>(next)];
}

namespace {

using Next = ClipboardSelection::Next;
using Focus = std::pair<std::int64_t, std::int64_t>;
using testing::PlainSelection;
using testing::RandomSource;
using testing::rounds;

constexpr ClickModifiers kNone{};
constexpr ClickModifiers kShift{.shift = true};
constexpr ClickModifiers kCommand{.command = true};
constexpr ClickModifiers kAlternate{.alternate = true};
constexpr Focus kNowhere{-1, -1};

std::string selected(const ClipboardSelection& selection) {
  return toUtf8(selection.selected2DIndexSet().stringPlus1FromAllIndexes());
}

Focus focusOf(const ClipboardSelection& selection) {
  return {selection.focusedRowIndex(), selection.focusedColumnIndex()};
}

// A selection that was clicked together in a table of 30 rows and 25 columns. Rows count from 0 and columns
// are those of the table.
class ClipboardSelectionTest : public ::testing::Test {
 protected:
  Next click(std::int64_t row, std::int64_t tableColumn, const ClickModifiers& modifiers = kNone) {
    return selection.mouseDown(row, tableColumn, 1, modifiers);
  }
  Next doubleClick(std::int64_t row, std::int64_t tableColumn, const ClickModifiers& modifiers = kNone) {
    return selection.mouseDown(row, tableColumn, 2, modifiers);
  }
  Next key(GridKey key, bool shift = false, bool alternate = false) {
    return selection.keyDown(key, shift, alternate, table);
  }
  void header(std::int64_t tableColumn, const ClickModifiers& modifiers = kNone) {
    selection.didClickTableColumn(tableColumn, modifiers, table);
  }
  void select(std::u16string_view cellString) {
    selection.selected2DIndexSet() = TwoDimensionalMutableIndexSet(cellString);
  }
  // On a cell, on a row without a column, or nowhere.
  void focusOn(const Focus& focus) {
    selection.resetClipboardDataFocusAndSelection();
    if (focus == kNowhere) return;
    click(focus.first, std::max<std::int64_t>(focus.second, 0) + 1);
    if (focus.second < 0) click(focus.first, 0);
  }

  ClipboardSelection selection;
  GridTableSize table{30, 25};
};

TEST_F(ClipboardSelectionTest, BeginsWithNothingAndAResetGoesBackToIt) {
  EXPECT_TRUE(selection.selected2DIndexSet().isEmpty());
  EXPECT_EQ(focusOf(selection), kNowhere);
  click(2, 4);
  click(2, 4, kCommand);  // leaves an empty entry
  selection.resetClipboardDataFocusAndSelection();
  EXPECT_TRUE(selection.selected2DIndexSet().isEmpty());
  EXPECT_EQ(focusOf(selection), kNowhere);
}

// --- Keys. ---

TEST_F(ClipboardSelectionTest, TheFocusMovesToCellsOfTheTableOnly) {
  const struct {
    std::int64_t row, column;
    bool moves;
  } cases[] = {{0, 0, true},   {29, 24, true},  {30, 0, false},  {0, 25, false},  {-1, 0, false},
               {0, -1, false}, {-1, -1, false}, {29, 25, false}, {30, 24, false}, {1000, 1000, false}};
  for (const auto& [row, column, moves] : cases) {
    focusOn({3, 4});
    EXPECT_EQ(selection.moveFocusToRow(row, column, table), moves) << row << ", " << column;
    EXPECT_EQ(focusOf(selection), moves ? Focus(row, column) : Focus(3, 4)) << row << ", " << column;
    EXPECT_EQ(selected(selection), "Cells: (4, 5)");
  }
  focusOn(kNowhere);
  EXPECT_FALSE(selection.moveFocusToRow(0, 0, {0, 0}));
  EXPECT_FALSE(selection.moveFocusToRow(0, 0, {1, 0}));
  EXPECT_FALSE(selection.moveFocusToRow(0, 0, {0, 1}));
  EXPECT_TRUE(selection.moveFocusToRow(0, 0, {1, 1}));
}

TEST_F(ClipboardSelectionTest, KeysMoveTheFocus) {
  const struct {
    const char* what;
    GridKey key;
    bool alternate;
    Focus from, to;
  } cases[] = {
      {"up", GridKey::Up, false, {12, 13}, {11, 13}},
      {"down", GridKey::Down, false, {12, 13}, {13, 13}},
      {"left", GridKey::Left, false, {12, 13}, {12, 12}},
      {"right", GridKey::Right, false, {12, 13}, {12, 14}},
      {"up at the first row", GridKey::Up, false, {0, 13}, {0, 13}},
      {"down at the last row", GridKey::Down, false, {29, 13}, {29, 13}},
      {"left at the first column", GridKey::Left, false, {12, 0}, {12, 0}},
      {"right at the last column", GridKey::Right, false, {12, 24}, {12, 24}},
      {"ten up", GridKey::Up, true, {12, 13}, {2, 13}},
      {"ten up, not below 0", GridKey::Up, true, {9, 13}, {0, 13}},
      {"ten down", GridKey::Down, true, {12, 13}, {22, 13}},
      {"ten down, to the last row", GridKey::Down, true, {19, 13}, {29, 13}},
      {"ten down, not past the last row", GridKey::Down, true, {20, 13}, {29, 13}},
      {"ten left", GridKey::Left, true, {12, 13}, {12, 3}},
      {"ten left, not below 0", GridKey::Left, true, {12, 9}, {12, 0}},
      {"ten right", GridKey::Right, true, {12, 13}, {12, 23}},
      {"ten right, not past the last column", GridKey::Right, true, {12, 15}, {12, 24}},
      {"tab", GridKey::Tab, false, {12, 13}, {12, 14}},
      {"tab takes no notice of alternate", GridKey::Tab, true, {12, 13}, {12, 14}},
      {"tab at the last column", GridKey::Tab, false, {12, 24}, {12, 24}},
      {"back tab", GridKey::BackTab, false, {12, 13}, {12, 12}},
      {"back tab takes no notice of alternate", GridKey::BackTab, true, {12, 13}, {12, 12}},
      {"back tab at the first column", GridKey::BackTab, false, {12, 0}, {12, 0}},
      {"delete", GridKey::Delete, false, {12, 13}, {12, 13}},
      {"delete with alternate", GridKey::Delete, true, {12, 13}, {12, 13}},
      // After a click on a row number the column is -1, and the rule for the focus decides.
      {"up without a column", GridKey::Up, false, {12, -1}, {12, -1}},
      {"down without a column", GridKey::Down, false, {12, -1}, {12, -1}},
      {"ten up without a column", GridKey::Up, true, {12, -1}, {12, -1}},
      {"ten down without a column", GridKey::Down, true, {12, -1}, {12, -1}},
      {"left without a column", GridKey::Left, false, {12, -1}, {12, -1}},
      {"back tab without a column", GridKey::BackTab, true, {12, -1}, {12, -1}},
      {"right without a column", GridKey::Right, false, {12, -1}, {12, 0}},
      {"tab without a column", GridKey::Tab, false, {12, -1}, {12, 0}},
      {"ten left without a column", GridKey::Left, true, {12, -1}, {12, 0}},
      {"ten right without a column", GridKey::Right, true, {12, -1}, {12, 9}},
  };
  for (const auto& [what, gridKey, alternate, from, to] : cases) {
    for (const bool shift : {false, true}) {  // which changes nothing
      focusOn(from);
      ASSERT_EQ(focusOf(selection), from) << what;
      const std::string before = selected(selection);
      EXPECT_EQ(key(gridKey, shift, alternate), Next::Nothing) << what;
      EXPECT_EQ(focusOf(selection), to) << what;
      EXPECT_EQ(selected(selection), before) << what;
    }
  }
}

TEST_F(ClipboardSelectionTest, WithoutAFocusNoKeyMoves) {
  select(u"Lines: 2");
  for (const GridKey one : {GridKey::Up, GridKey::Down, GridKey::Left, GridKey::Right, GridKey::Tab,
                            GridKey::BackTab, GridKey::Delete}) {
    for (const bool alternate : {false, true}) {
      EXPECT_EQ(key(one, false, alternate), Next::Nothing);
      EXPECT_EQ(focusOf(selection), kNowhere);
    }
  }
  EXPECT_EQ(selected(selection), "Lines: 2");
}

TEST_F(ClipboardSelectionTest, ReturnShowsTheDetailsOfTheCellWhateverIsHeld) {
  EXPECT_EQ(key(GridKey::Return), Next::ShowCellDetails) << "who shows them sees that there is no focus";
  focusOn({2, 3});
  for (const bool shift : {false, true})
    for (const bool alternate : {false, true})
      EXPECT_EQ(key(GridKey::Return, shift, alternate), Next::ShowCellDetails);
  EXPECT_EQ(focusOf(selection), Focus(2, 3));
  EXPECT_EQ(selected(selection), "Cells: (3, 4)");
}

TEST_F(ClipboardSelectionTest, TheHighlightStaysWhereTheClickWas) {
  click(2, 4);
  key(GridKey::Down);
  EXPECT_EQ(focusOf(selection), Focus(3, 3));
  EXPECT_EQ(selected(selection), "Cells: (3, 4)");
  EXPECT_EQ(key(GridKey::Return), Next::ShowCellDetails);
}

TEST_F(ClipboardSelectionTest, AFocusThatWasLeftBehindTheTableComesBackByTenOnly) {
  focusOn({29, 24});
  table = {8, 5};
  for (const GridKey one : {GridKey::Up, GridKey::Down, GridKey::Left, GridKey::Right}) {
    key(one);
    EXPECT_EQ(focusOf(selection), Focus(29, 24));
  }
  key(GridKey::Down, false, true);
  EXPECT_EQ(focusOf(selection), Focus(29, 24)) << "the column is outside, too";
  table = {8, 25};
  key(GridKey::Down, false, true);
  EXPECT_EQ(focusOf(selection), Focus(7, 24));
}

TEST_F(ClipboardSelectionTest, KeysStandAnyFocus) {
  click(std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max());
  const Focus far = focusOf(selection);
  for (const GridKey one :
       {GridKey::Up, GridKey::Down, GridKey::Left, GridKey::Right, GridKey::Tab, GridKey::BackTab}) {
    for (const bool alternate : {false, true}) {
      key(one, false, alternate);
      EXPECT_EQ(focusOf(selection), far);
    }
  }
}

// --- Clicks. ---

TEST_F(ClipboardSelectionTest, ClicksChangeTheSelection) {
  const struct {
    const char* what;
    std::u16string_view before;
    std::int64_t row, tableColumn;
    ClickModifiers modifiers;
    Next next;
    const char* after;
  } cases[] = {
      // Plain.
      {"a cell", u"", 2, 4, kNone, Next::Reload, "Cells: (3, 4)"},
      {"a cell instead of all else", u"Lines: 3; Columns: 4; Cells: (3, 4)+(9, 9)", 1, 1, kNone, Next::Reload,
       "Cells: (2, 1)"},
      {"the selected cell", u"Cells: (3, 4)", 2, 4, kNone, Next::Reload, "Cells: (3, 4)"},
      {"a row number", u"", 2, 0, kNone, Next::Reload, "Lines: 3"},
      {"a row number instead of all else", u"Lines: 1; Columns: 4; Cells: (3, 4)", 2, 0, kNone, Next::Reload,
       "Lines: 3"},
      {"the number of the only row", u"Lines: 3", 2, 0, kNone, Next::Reload, ""},
      {"the number of the only row, beside cells and columns", u"Lines: 3; Columns: 4; Cells: (1, 1)", 2, 0,
       kNone, Next::Reload, ""},
      {"the number of the first of two rows", u"Lines: 3 - 4", 2, 0, kNone, Next::Reload, "Lines: 3"},
      {"the number of the last of two rows", u"Lines: 1, 3", 2, 0, kNone, Next::Reload, "Lines: 3"},
      // Command.
      {"command on a cell", u"", 2, 4, kCommand, Next::Reload, "Cells: (3, 4)"},
      {"command on another cell", u"Cells: (1, 1)", 2, 4, kCommand, Next::Reload, "Cells: (1, 1)+(3, 4)"},
      {"command on a selected cell", u"Cells: (1, 1)+(3, 4)", 2, 4, kCommand, Next::Reload, "Cells: (1, 1)"},
      {"command on a cell of a selected row", u"Lines: 3; Columns: 9; Cells: (1, 1)", 2, 4, kCommand,
       Next::Reload, "Cells: (1, 1)+(3, 4)"},
      {"command on a row number", u"", 2, 0, kCommand, Next::Reload, "Lines: 3"},
      {"command on another row number", u"Lines: 1", 2, 0, kCommand, Next::Reload, "Lines: 1, 3"},
      {"command on the number of a selected row", u"Lines: 1, 3", 2, 0, kCommand, Next::Reload, "Lines: 1"},
      {"command on the number of the only row", u"Lines: 3", 2, 0, kCommand, Next::Reload, ""},
      {"command on a row number clears cells and columns", u"Lines: 1; Columns: 2; Cells: (3, 4)", 2, 0,
       kCommand, Next::Reload, "Lines: 1, 3"},
      // Shift.
      {"shift on a row number", u"", 2, 0, kShift, Next::Reload, "Lines: 3"},
      {"shift below the rows", u"Lines: 2, 5", 7, 0, kShift, Next::Reload, "Lines: 2 - 8"},
      {"shift above the rows", u"Lines: 2, 5", 0, 0, kShift, Next::Reload, "Lines: 1 - 5"},
      {"shift between the rows", u"Lines: 2, 9", 4, 0, kShift, Next::Reload, "Lines: 2 - 9"},
      {"shift on the last row", u"Lines: 2, 5", 4, 0, kShift, Next::Reload, "Lines: 2 - 5"},
      {"shift on the first row keeps the gaps", u"Lines: 2, 5", 1, 0, kShift, Next::Reload, "Lines: 2, 5"},
      {"shift clears cells and columns", u"Lines: 2; Columns: 2; Cells: (3, 4)", 3, 0, kShift, Next::Reload,
       "Lines: 2 - 4"},
      {"shift on the first row clears them too", u"Lines: 2, 5; Columns: 2; Cells: (3, 4)", 1, 0, kShift,
       Next::Reload, "Lines: 2, 5"},
      {"shift without rows clears them too", u"Columns: 2; Cells: (3, 4)", 1, 0, kShift, Next::Reload,
       "Lines: 2"},
      {"shift on a cell", u"Lines: 2; Columns: 2; Cells: (3, 4)", 3, 4, kShift, Next::Nothing,
       "Lines: 2; Columns: 2; Cells: (3, 4)"},
      // What is held, in its order.
      {"shift goes before command",
       u"Lines: 2",
       3,
       0,
       {.shift = true, .command = true},
       Next::Reload,
       "Lines: 2 - 4"},
      {"shift with command on a cell",
       u"Lines: 2",
       3,
       1,
       {.shift = true, .command = true},
       Next::Nothing,
       "Lines: 2"},
      {"command goes before alternate",
       u"Lines: 2",
       3,
       0,
       {.command = true, .alternate = true},
       Next::Reload,
       "Lines: 2, 4"},
      {"shift and alternate",
       u"Lines: 2",
       3,
       0,
       {.shift = true, .alternate = true},
       Next::Nothing,
       "Lines: 2"},
      {"shift and alternate go before command",
       u"Lines: 2",
       3,
       0,
       {true, true, true},
       Next::Nothing,
       "Lines: 2"},
      {"alternate on a row number", u"Lines: 2", 3, 0, kAlternate, Next::Nothing, "Lines: 2"},
      {"alternate on a cell", u"Lines: 2", 3, 4, kAlternate, Next::Nothing, "Lines: 2"},
      // Beside the rows and columns.
      {"below the rows", u"Lines: 2", -1, 4, kNone, Next::Nothing, "Lines: 2"},
      {"below the row numbers", u"Lines: 2", -1, 0, kNone, Next::Nothing, "Lines: 2"},
      {"below the row numbers with shift", u"Lines: 2", -1, 0, kShift, Next::Nothing, "Lines: 2"},
      {"below the row numbers with command", u"Columns: 2", -1, 0, kCommand, Next::Nothing, "Columns: 2"},
      {"right of the columns", u"Lines: 2", 3, -1, kNone, Next::Nothing, "Lines: 2"},
      {"right of the columns with command", u"Lines: 2", 3, -1, kCommand, Next::Nothing, "Lines: 2"},
      {"right of the columns with shift", u"Lines: 2", 3, -1, kShift, Next::Nothing, "Lines: 2"},
      {"beside both", u"Lines: 2", -1, -1, kNone, Next::Nothing, "Lines: 2"},
  };
  for (const auto& [what, before, row, tableColumn, modifiers, next, after] : cases) {
    select(before);
    EXPECT_EQ(click(row, tableColumn, modifiers), next) << what;
    EXPECT_EQ(selected(selection), after) << what;
  }
}

TEST_F(ClipboardSelectionTest, OnlyAPlainClickMovesTheFocus) {
  click(2, 4);
  EXPECT_EQ(focusOf(selection), Focus(2, 3));
  for (const ClickModifiers& modifiers : {kShift, kCommand, kAlternate, ClickModifiers{true, true, true}})
    for (const std::int64_t tableColumn : {0, 1}) {
      click(5, tableColumn, modifiers);
      EXPECT_EQ(focusOf(selection), Focus(2, 3));
    }
  click(-1, 4);
  click(5, -1);
  EXPECT_EQ(focusOf(selection), Focus(2, 3));
  click(7, 0);
  EXPECT_EQ(focusOf(selection), Focus(2, -1)) << "a row number clears the column and leaves the row";
  key(GridKey::Down);
  EXPECT_EQ(focusOf(selection), Focus(2, -1));
}

TEST_F(ClipboardSelectionTest, ASecondClickOnTheSameLineNumberClearsTheSelection) {
  click(4, 0);
  EXPECT_EQ(selected(selection), "Lines: 5");
  click(4, 0);
  EXPECT_TRUE(selection.selected2DIndexSet().isEmpty());
  click(4, 0);
  EXPECT_EQ(selected(selection), "Lines: 5");
}

TEST_F(ClipboardSelectionTest, ADoubleClickOnACellShowsItsDetailsWhateverIsHeld) {
  for (const ClickModifiers& modifiers :
       {kNone, kShift, kCommand, kAlternate, ClickModifiers{.shift = true, .alternate = true}}) {
    select(u"Lines: 2; Cells: (3, 4)");
    EXPECT_EQ(doubleClick(5, 1, modifiers), Next::ShowCellDetails);
    EXPECT_EQ(selected(selection), "Cells: (6, 1)");
    EXPECT_EQ(focusOf(selection), Focus(5, 0));
    selection.resetClipboardDataFocusAndSelection();
  }
  EXPECT_EQ(selection.mouseDown(1, 2, 3, kNone), Next::ShowCellDetails) << "a third click counts as a double";
  EXPECT_EQ(focusOf(selection), Focus(1, 1));
}

TEST_F(ClipboardSelectionTest, ADoubleClickOnARowNumberTogglesTwice) {
  EXPECT_EQ(click(4, 0), Next::Reload);
  EXPECT_EQ(doubleClick(4, 0), Next::Reload);
  EXPECT_EQ(selected(selection), "");
  doubleClick(4, 0, kShift);
  EXPECT_EQ(selected(selection), "Lines: 5");
  EXPECT_EQ(focusOf(selection), kNowhere);
}

TEST_F(ClipboardSelectionTest, ADoubleClickBesideTheCellsDoesNothing) {
  select(u"Lines: 2");
  EXPECT_EQ(doubleClick(-1, 3), Next::Nothing);
  EXPECT_EQ(doubleClick(3, -1), Next::Nothing);
  EXPECT_EQ(selected(selection), "Lines: 2");
  EXPECT_EQ(focusOf(selection), kNowhere);
}

TEST_F(ClipboardSelectionTest, CommandClicksOfAnotherKindClearWhatWasThere) {
  click(1, 2, kCommand);
  click(3, 4, kCommand);
  EXPECT_EQ(selected(selection), "Cells: (2, 2)+(4, 4)");
  click(5, 0, kCommand);
  EXPECT_EQ(selected(selection), "Lines: 6");
  header(2, kCommand);
  EXPECT_EQ(selected(selection), "Columns: 2");
  header(4, kCommand);
  EXPECT_EQ(selected(selection), "Columns: 2, 4");
  click(1, 2, kCommand);
  EXPECT_EQ(selected(selection), "Cells: (2, 2)");
}

TEST_F(ClipboardSelectionTest, IsNotEmptyAfterTheLastCellWasClickedAwayUntilThePlainClick) {
  click(1, 2, kCommand);
  click(1, 2, kCommand);
  EXPECT_EQ(selected(selection), "");
  EXPECT_FALSE(selection.selected2DIndexSet().isEmpty());
  click(4, 0);
  click(4, 0);
  EXPECT_TRUE(selection.selected2DIndexSet().isEmpty());
}

// --- Headers. ---

TEST_F(ClipboardSelectionTest, HeaderClicksSelectColumnsOrAllRows) {
  const struct {
    const char* what;
    std::u16string_view before;
    std::int64_t tableColumn;
    ClickModifiers modifiers;
    const char* after;
  } cases[] = {
      // Of the row numbers.
      {"all rows", u"", 0, kNone, "Lines: 1 - 30"},
      {"all rows, cells stay", u"Lines: 40; Columns: 2; Cells: (3, 4)", 0, kNone,
       "Lines: 1 - 30; Cells: (3, 4)"},
      {"all rows, with shift", u"Columns: 2", 0, kShift, "Lines: 1 - 30"},
      {"all rows, with command", u"Lines: 1 - 30", 0, kCommand, "Lines: 1 - 30"},
      // Plain.
      {"a column", u"", 3, kNone, "Columns: 3"},
      {"a column instead of all else", u"Lines: 2; Columns: 4; Cells: (3, 4)", 3, kNone, "Columns: 3"},
      {"the only column", u"Columns: 3", 3, kNone, ""},
      {"the only column, beside rows and cells", u"Lines: 2; Columns: 3; Cells: (3, 4)", 3, kNone, ""},
      {"the first of two columns", u"Columns: 3 - 4", 3, kNone, "Columns: 3"},
      {"the last of two columns", u"Columns: 1, 3", 3, kNone, "Columns: 3"},
      {"with alternate", u"Columns: 1", 3, kAlternate, "Columns: 3"},
      // Command.
      {"one more", u"Columns: 1", 3, kCommand, "Columns: 1, 3"},
      {"one less", u"Columns: 1, 3", 3, kCommand, "Columns: 1"},
      {"rows and cells go", u"Lines: 2; Columns: 1; Cells: (3, 3)", 3, kCommand, "Columns: 1, 3"},
      {"command goes before shift", u"Columns: 1", 3, {.shift = true, .command = true}, "Columns: 1, 3"},
      // Shift.
      {"shift without columns", u"", 3, kShift, "Columns: 3"},
      {"shift right of the columns", u"Columns: 2, 5", 8, kShift, "Columns: 2 - 8"},
      {"shift left of the columns", u"Columns: 2, 5", 1, kShift, "Columns: 1 - 5"},
      {"shift between the columns", u"Columns: 2, 9", 5, kShift, "Columns: 2 - 9"},
      {"shift on the first column keeps the gaps", u"Columns: 2, 5", 2, kShift, "Columns: 2, 5"},
      {"shift clears rows and cells", u"Lines: 1; Columns: 2, 5; Cells: (3, 3)", 2, kShift, "Columns: 2, 5"},
      {"the last column", u"", 25, kNone, "Columns: 25"},
  };
  for (const auto& [what, before, tableColumn, modifiers, after] : cases) {
    focusOn({3, 4});
    select(before);
    header(tableColumn, modifiers);
    EXPECT_EQ(selected(selection), after) << what;
    EXPECT_EQ(focusOf(selection), kNowhere) << what;
  }
}

TEST_F(ClipboardSelectionTest, ASecondClickOnTheSameHeaderClearsTheSelection) {
  header(3);
  EXPECT_EQ(selected(selection), "Columns: 3");
  header(3);
  EXPECT_TRUE(selection.selected2DIndexSet().isEmpty());
}

TEST_F(ClipboardSelectionTest, AHeaderThatIsNotThereDoesNothing) {
  for (const std::int64_t tableColumn : {-1, 26}) {
    focusOn({3, 4});
    header(tableColumn);
    EXPECT_EQ(selected(selection), "Cells: (4, 5)");
    EXPECT_EQ(focusOf(selection), Focus(3, 4));
  }
}

TEST_F(ClipboardSelectionTest, TheHeaderOfTheRowNumbersOfAnEmptyGridOnlyClearsTheFocus) {
  for (const GridTableSize& size : {GridTableSize{0, 0}, GridTableSize{0, 3}, GridTableSize{3, 0}}) {
    focusOn({3, 4});
    select(u"Lines: 2; Columns: 3");
    table = size;
    header(0);
    EXPECT_EQ(selected(selection), "Lines: 2; Columns: 3");
    EXPECT_EQ(focusOf(selection), kNowhere);
  }
  table = {1, 1};
  header(0);
  EXPECT_EQ(selected(selection), "Lines: 1");
}

TEST_F(ClipboardSelectionTest, SelectAllSelectsAllRows) {
  focusOn({3, 4});
  select(u"Lines: 2, 50; Columns: 3; Cells: (3, 4)");
  selection.rowsTableViewSelectAllMenuItemClicked(table);
  EXPECT_EQ(selected(selection), "Lines: 1 - 30; Cells: (3, 4)");
  EXPECT_EQ(focusOf(selection), Focus(3, 4)) << "the focus stays";
  selection.rowsTableViewSelectAllMenuItemClicked({0, 0});
  EXPECT_EQ(selected(selection), "Cells: (3, 4)");
  selection.rowsTableViewSelectAllMenuItemClicked({2, 0});
  EXPECT_EQ(selected(selection), "Lines: 1 - 2; Cells: (3, 4)");
}

// --- Drawing. ---

TEST_F(ClipboardSelectionTest, ATagIsTheRowAndTheColumnModulo256) {
  EXPECT_EQ(ClipboardSelection::tagForCell(0, 0), 0);
  EXPECT_EQ(ClipboardSelection::tagForCell(0, 255), 255);
  EXPECT_EQ(ClipboardSelection::tagForCell(2, 3), 515);
  EXPECT_EQ(ClipboardSelection::tagForCell(2, 256), 512);
  EXPECT_EQ(ClipboardSelection::tagForCell(2, 600), 2 * 256 + 88);
}

TEST_F(ClipboardSelectionTest, ACellShowsTheSelectionOfItsTag) {
  const auto shows = [this](std::int64_t row, std::int64_t column) {
    return selection.isSelected(ClipboardSelection::tagForCell(row, column));
  };
  select(u"Lines: 2; Columns: 3, 301; Cells: (5, 6)+(5, 400)");
  EXPECT_TRUE(shows(1, 0));
  EXPECT_TRUE(shows(1, 999));
  EXPECT_TRUE(shows(7, 2));
  EXPECT_TRUE(shows(4, 5));
  EXPECT_FALSE(shows(4, 6));
  EXPECT_FALSE(shows(5, 5));
  EXPECT_TRUE(shows(7, 258)) << "as the column 256 lower";
  EXPECT_TRUE(shows(4, 261));
  EXPECT_FALSE(shows(7, 300)) << "as the column 256 lower, although selected";
  EXPECT_FALSE(shows(4, 399));
  select(u"Lines: 1; Columns: 256");
  EXPECT_FALSE(selection.isSelected(-1)) << "a row number";
}

TEST_F(ClipboardSelectionTest, ACellIsEmptyPastTheEndOfItsRowOrOfTheGrid) {
  GridBuilder builder;
  for (const std::size_t length : {2u, 0u, 300u}) {
    RowBuilder row;
    row.appendBlanks(length);
    builder.append(row.take());
  }
  const ClipboardGrid grid = builder.take();
  const auto isEmpty = [&grid](std::int64_t row, std::int64_t column) {
    return ClipboardSelection::isEmpty(ClipboardSelection::tagForCell(row, column), grid);
  };
  EXPECT_FALSE(isEmpty(0, 0));
  EXPECT_FALSE(isEmpty(0, 1));
  EXPECT_TRUE(isEmpty(0, 2));
  EXPECT_TRUE(isEmpty(1, 0));
  EXPECT_FALSE(isEmpty(2, 255));
  EXPECT_TRUE(isEmpty(3, 0));
  EXPECT_FALSE(isEmpty(0, 256)) << "as the column 256 lower";
  EXPECT_FALSE(isEmpty(2, 300)) << "as the column 256 lower";
  EXPECT_FALSE(ClipboardSelection::isEmpty(-1, grid));
  EXPECT_FALSE(ClipboardSelection::isEmpty(-1, ClipboardGrid()));
  EXPECT_TRUE(ClipboardSelection::isEmpty(0, ClipboardGrid()));
}

TEST_F(ClipboardSelectionTest, TheFocusIsNotDrawn) {
  focusOn({2, 3});
  EXPECT_FALSE(ClipboardSelection::isFocused(ClipboardSelection::tagForCell(2, 3)));
  EXPECT_FALSE(ClipboardSelection::isFocused(-1));
}

TEST_F(ClipboardSelectionTest, RowsAndColumnsAreSelectedAsFarAsThereAreRows) {
  select(u"Lines: 3, 31; Columns: 3, 31; Cells: (5, 5)");
  for (const bool ofRows : {true, false}) {
    const auto isSelected = [&](std::int64_t index) {
      return ofRows ? selection.isSelectedRow(index, table) : selection.isSelectedColumn(index, table);
    };
    EXPECT_TRUE(isSelected(2));
    EXPECT_FALSE(isSelected(4)) << "a cell";
    EXPECT_FALSE(isSelected(30)) << "past the rows";
    EXPECT_FALSE(isSelected(-1));
  }
}

// --- Against a plain model. ---

bool sameIndexes(const IndexSet& indexes, const std::set<std::int64_t>& plain) {
  std::vector<std::int64_t> all;
  for (const auto& range : indexes.ranges())
    for (auto index = range.first; index <= range.last; ++index) all.push_back(index);
  return std::equal(all.begin(), all.end(), plain.begin(), plain.end());
}

bool sameCells(const TwoDimensionalMutableIndexSet& set, const PlainSelection& plain) {
  std::set<std::pair<std::int64_t, std::int64_t>> cells;
  std::set<std::int64_t> rows;
  for (const auto& [row, columns] : set.rowIndexDictionary()) {
    rows.insert(row);
    for (const auto& range : columns.ranges())
      for (auto column = range.first; column <= range.last; ++column) cells.insert({row, column});
  }
  return cells == plain.cells && rows == plain.cellRows;
}

void doOneEvent(RandomSource& random, const GridTableSize& table, ClipboardSelection& selection,
                PlainSelection& plain) {
  constexpr GridKey kKeys[] = {GridKey::Up,  GridKey::Down,    GridKey::Left,   GridKey::Right,
                               GridKey::Tab, GridKey::BackTab, GridKey::Return, GridKey::Delete};
  const auto row = static_cast<std::int64_t>(random.below(static_cast<std::size_t>(table.rowCount) + 1)) - 1;
  const auto column =
      static_cast<std::int64_t>(random.below(static_cast<std::size_t>(table.columnCount) + 2)) - 1;
  const ClickModifiers held{random.oneIn(3), random.oneIn(3), random.oneIn(4)};
  const std::size_t kind = random.below(20);
  if (kind < 8) {
    const GridKey key = random.pick(kKeys);
    selection.keyDown(key, held.shift, held.alternate, table);
    plain.key(key, held.alternate, table);
  } else if (kind < 15) {
    const std::int64_t tableColumn = random.oneIn(3) ? 0 : column;
    const std::int64_t count = random.oneIn(5) ? 2 : 1;
    selection.mouseDown(row, tableColumn, count, held);
    plain.mouse(row, tableColumn, count, held);
  } else if (kind < 19) {
    const std::int64_t tableColumn = std::max<std::int64_t>(column, 0);
    selection.didClickTableColumn(tableColumn, held, table);
    plain.header(tableColumn, held, table);
  } else {
    selection.rowsTableViewSelectAllMenuItemClicked(table);
    plain.selectAll(table);
  }
}

TEST_F(ClipboardSelectionTest, FollowsThePlainRulesInAnyOrderOfEvents) {
  RandomSource random(5601);
  for (auto round = rounds(1'000); round > 0; --round) {
    selection.resetClipboardDataFocusAndSelection();
    PlainSelection plain;
    table = {static_cast<std::int64_t>(random.below(26)), static_cast<std::int64_t>(random.below(26))};
    for (int step = 0; step < 40; ++step) {
      if (random.oneIn(20)) table.rowCount = static_cast<std::int64_t>(random.below(26));
      doOneEvent(random, table, selection, plain);
      const TwoDimensionalMutableIndexSet& set = selection.selected2DIndexSet();
      ASSERT_EQ(focusOf(selection), plain.focus) << "round " << round << " step " << step;
      ASSERT_TRUE(sameIndexes(set.infiniteRowIndexSet(), plain.rows)) << selected(selection);
      ASSERT_TRUE(sameIndexes(set.infiniteColumnIndexSet(), plain.columns)) << selected(selection);
      ASSERT_TRUE(sameCells(set, plain)) << selected(selection);
    }
  }
}

}  // namespace
}  // namespace quillet
