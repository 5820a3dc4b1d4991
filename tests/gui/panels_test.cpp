// The panels of the operations, filled by clicks and keys.
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "gui/user.h"

namespace quillet::testing {
namespace {

constexpr const char* kOperations = "operationsTableView";

class Panels : public UserTest {
 protected:
  // A file of three columns, and the panel of one operation open.
  void open(const char* item) {
    launchWithFiles({"name,city,since\nAda,London,1815\n"});
    chooseFromButton("addOperationButton", item);
  }
  // Of the operation between Initial and Final.
  std::string shown() { return data(kOperations, 1, 0) + ": " + detail(1); }
  std::string output(int row = 0) { return data("previewOutputTableView", row, 0); }
  Texts outputRow(int row) {
    Texts texts;
    const int count = widget<QTableView>("previewOutputTableView").model()->columnCount();
    for (int column = 0; column < count; ++column)
      texts.push_back(data("previewOutputTableView", row, column));
    return texts;
  }
};

struct AddedPanel {
  const char* item;
  const char* sheet;
  const char* prefix = nullptr;  // of its controls, where it is not the sheet's name
};

constexpr AddedPanel kPanels[] = {
    {"Replace Character…", "replaceCharacterOperationWindow"},
    {"Skip Line…", "skipLineOperationWindow"},
    {"Trim Line…", "trimLineOperationWindow"},
    {"Replace Line…", "replaceLineOperationWindow"},
    {"Join Lines…", "joinLinesOperationWindow"},
    {"Set Initial Number of Columns…", "setNumberOfColumnsOperationWindow",
     "setNumberOfColumnsOperationsWindow"},
    {"Trim Column…", "trimColumnOperationWindow"},
    {"Replace Column…", "replaceColumnOperationWindow"},
    {"Reformat Column…", "reformatColumnOperationWindow"},
    {"Rearrange Columns…", "rearrangeColumnsOperationWindow"},
    {"Join Columns…", "joinColumnsOperationWindow"},
    {"Set Final Number of Columns…", "setNumberOfColumnsOperationWindow",
     "setNumberOfColumnsOperationsWindow"},
};

class EachPanel : public Panels, public ::testing::WithParamInterface<AddedPanel> {
 protected:
  std::string button(const char* name) {
    return std::string(GetParam().prefix ? GetParam().prefix : GetParam().sheet) + name;
  }
  const char* sheet() { return GetParam().sheet; }
  std::string title() {
    const std::string item = GetParam().item;
    return item.substr(0, item.size() - std::string("…").size());
  }
};

TEST_P(EachPanel, IsASheetOfTheWindowWithTheTitleOfItsOperation) {
  open(GetParam().item);
  ASSERT_TRUE(isShown(sheet()));
  EXPECT_EQ(form(sheet()).windowTitle().toStdString(), title());
  EXPECT_EQ(form(sheet()).windowModality(), Qt::WindowModal);
  EXPECT_EQ(form(sheet()).parentWidget(), &form("window"));
}

TEST_P(EachPanel, ReturnIsDone) {
  open(GetParam().item);
  press(Qt::Key_Return);
  EXPECT_FALSE(isShown(sheet()));
  EXPECT_EQ(titles(), (Texts{"Initial", title(), "Final"}));
  EXPECT_EQ(text("statusLabel"), title() + " operation added for 1 input file(s).");
}

TEST_P(EachPanel, EscapeItsButtonAndClosingCancel) {
  open(GetParam().item);
  press(Qt::Key_Escape);
  EXPECT_FALSE(isShown(sheet()));
  chooseMenu("window", "Operation", GetParam().item);
  click(button("CancelButton").c_str());
  EXPECT_FALSE(isShown(sheet()));
  chooseMenu("window", "Operation", GetParam().item);
  EXPECT_TRUE(isShown(sheet()));
  form(sheet()).close();  // as by the title bar
  settle();
  EXPECT_FALSE(isShown(sheet()));
  EXPECT_FALSE(application().interface().window(sheet())->isShown());
  EXPECT_EQ(titles(), (Texts{"Initial", "Final"}));
  EXPECT_EQ(application().windows().main.isShown(), true);
}

TEST_P(EachPanel, ItsHelpButtonTellsWhatItsToolTipTells) {
  open(GetParam().item);
  auto& help = widget<QAbstractButton>(button("HelpButton").c_str());
  EXPECT_FALSE(help.toolTip().isEmpty());
  click(help);
  EXPECT_EQ(alert().text().toStdString(), help.toolTip().toStdString());
  EXPECT_EQ(form(sheet()).accessibleDescription(), help.toolTip());
  answer("OK");
  EXPECT_FALSE(hasAlert());
  EXPECT_TRUE(isShown(sheet()));
}

INSTANTIATE_TEST_SUITE_P(Operations, EachPanel, ::testing::ValuesIn(kPanels), [](const auto& tested) {
  std::string name;
  for (const char letter : std::string(tested.param.item))
    if (std::isalpha(static_cast<unsigned char>(letter))) name += letter;
  return name;
});

TEST_F(Panels, InitialIsEditedByReturn) {
  launchWithFiles({"a;b\nc;d\n"});
  clickRow(kOperations, 0);
  press(Qt::Key_Return);
  ASSERT_TRUE(isShown("initialOperationsWindow"));
  choose("initialOperationsWindowDecodeAsPopUpButton", "Windows CP1252");
  fill("initialOperationsWindowLineSeparatorComboBox", QStringLiteral("\\n"));
  tick("initialOperationsWindowSplitLinesIntoColumnsCheckbox");
  fill("initialOperationsWindowColumnSeparatorComboBox", QStringLiteral(";"));
  tick("initialOperationsWindowRemoveQuotesCheckbox", false);
  press(Qt::Key_Return);
  EXPECT_FALSE(isShown("initialOperationsWindow"));
  EXPECT_EQ(text("statusLabel"), "Initial operation updated for 1 input file(s).");
  EXPECT_EQ(data("previewTableView", 1, 1), "d");
  click("editOperationButton");
  EXPECT_EQ(text("initialOperationsWindowDecodeAsPopUpButton"), "Windows CP1252");
  EXPECT_EQ(text("initialOperationsWindowColumnSeparatorComboBox"), ";");
  EXPECT_FALSE(isOn("initialOperationsWindowRemoveQuotesCheckbox"));
}

TEST_F(Panels, ASeparatorIsChosenFromTheList) {
  launchWithFiles({"a|b\n"});
  doubleClickRow(kOperations, 0);
  ASSERT_TRUE(isShown("initialOperationsWindow"));
  tick("initialOperationsWindowSplitLinesIntoColumnsCheckbox");
  chooseWithTheMouse("initialOperationsWindowColumnSeparatorComboBox", "|");
  EXPECT_EQ(text("initialOperationsWindowColumnSeparatorComboBox"), "|");
  click("initialOperationsWindowDoneButton");
  EXPECT_EQ(data("previewTableView", 0, 1), "b");
}

// Beside what would be typed, as \n and a blank say little by themselves.
TEST_F(Panels, SeparatorsOfTheListHaveTheirNotes) {
  launchWithFiles({"a|b\n"});
  doubleClickRow(kOperations, 0);
  auto& box = widget<QComboBox>("initialOperationsWindowLineSeparatorComboBox");
  box.showPopup();
  settle();
  QAbstractItemView& list = *box.view();
  const QRect row = list.visualRect(box.model()->index(0, 0));
  const int note = box.fontMetrics().horizontalAdvance(QStringLiteral("Line feed (Linux, macOS)"));
  ASSERT_GT(row.width(), note);
  const QImage picture = list.viewport()->grab().toImage();
  const auto inkedColumns = [&](const QRect& part) {
    int count = 0;
    for (int x = part.left(); x <= part.right(); ++x)
      for (int y = part.top(); y <= part.bottom(); ++y)
        if (picture.pixelColor(x, y) != picture.pixelColor(row.right(), row.top())) {
          ++count;
          break;
        }
    return count;
  };
  EXPECT_GT(inkedColumns(row.adjusted(30, 0, 0, 0)), note / 2);
  EXPECT_EQ(inkedColumns(QRect(row.right() - 3, row.top(), 3, row.height())), 0) << "it is not cut off";
  box.hidePopup();
}

TEST_F(Panels, FinalIsEditedByADoubleClick) {
  launchWithFiles({"a,b\nc,d\n"});
  doubleClickRow(kOperations, 1);
  ASSERT_TRUE(isShown("finalOperationsWindow"));
  choose("finalOperationsWindowEncodeAsPopUpButton", "Mac Roman");
  fill("finalOperationsWindowLineSeparatorComboBox", QStringLiteral("\\r\\n"));
  fill("finalOperationsWindowColumnSeparatorComboBox", QStringLiteral("\\t"));
  tick("finalOperationsWindowAddQuotesCheckbox", false);
  tick("finalOperationsWindowAddLineSeparatorCheckbox");
  fill("finalOperationsWindowFileNameTextField", QStringLiteral("out.txt"));
  chooseWithTheMouse("finalOperationsWindowWriteModePopUpButton", "Append");
  press(Qt::Key_Return);
  EXPECT_FALSE(isShown("finalOperationsWindow"));
  press(Qt::Key_4, Qt::AltModifier);
  // The text of the preview begins with two separators, which is meant.
  EXPECT_EQ(text("previewTextView"), "␍\n␍\na・b␍\nc・d");
  doubleClickRow(kOperations, 1);
  EXPECT_EQ(text("finalOperationsWindowEncodeAsPopUpButton"), "Mac Roman");
  EXPECT_EQ(text("finalOperationsWindowFileNameTextField"), "out.txt");
  EXPECT_EQ(text("finalOperationsWindowWriteModePopUpButton"), "Append");
}

TEST_F(Panels, ReplaceCharacter) {
  open("Replace Character…");
  choose("replaceCharacterOperationWindowTypePopUpButton", "Characters");
  fill("replaceCharacterOperationWindowWhatTextField", QStringLiteral("a"));
  fill("replaceCharacterOperationWindowWithTextField", QStringLiteral("E"));
  press(Qt::Key_Return);
  EXPECT_EQ(data(kOperations, 1, 0), "Replace Character");
  EXPECT_NE(detail(1), "");
  EXPECT_EQ(output(0), "\"nEme\"");
}

TEST_F(Panels, SkipLine) {
  open("Skip Line…");
  choose("skipLineOperationWindowSkipIfPopUpButton", "If Contains");
  fill("skipLineOperationWindowTextField", QStringLiteral("NAME"));
  tick("skipLineOperationWindowCaseSensitiveButton");
  press(Qt::Key_Return);
  EXPECT_EQ(output(0), "\"name\"") << "the case differs";
  clickRow(kOperations, 1);
  press(Qt::Key_Return);
  EXPECT_TRUE(isOn("skipLineOperationWindowCaseSensitiveButton"));
  tick("skipLineOperationWindowCaseSensitiveButton", false);
  press(Qt::Key_Return);
  EXPECT_EQ(output(0), "\"Ada\"");
  EXPECT_EQ(text("statusLabel"), "Skip Line operation updated for 1 input file(s).");
}

TEST_F(Panels, SkipLineTellsTheFormOfLineNumbers) {
  open("Skip Line…");
  auto& field = widget<QLineEdit>("skipLineOperationWindowTextField");
  EXPECT_EQ(field.placeholderText(), QString());
  chooseWithTheMouse("skipLineOperationWindowSkipIfPopUpButton", "Line Numbers");
  EXPECT_EQ(field.placeholderText(), QStringLiteral("1, 2, 5 - 8"));
  fill("skipLineOperationWindowTextField", QStringLiteral("1"));
  press(Qt::Key_Return);
  EXPECT_EQ(output(0), "\"Ada\"");
}

TEST_F(Panels, TrimLine) {
  open("Trim Line…");
  choose("trimLineOperationWindowTrimWhatPopUpButton", "Characters");
  choose("trimLineOperationWindowTrimFromPopUpButton", "From Start");
  fill("trimLineOperationWindowTextField", QStringLiteral("An"));
  tick("trimLineOperationWindowCaseSensitiveButton");
  press(Qt::Key_Return);
  EXPECT_EQ(output(0), "\"ame\"");
  EXPECT_EQ(output(1), "\"da\"");
}

TEST_F(Panels, ReplaceLine) {
  open("Replace Line…");
  choose("replaceLineOperationWindowTypePopUpButton", "Regular Expression");
  fill("replaceLineOperationWindowWhatTextField", QStringLiteral("^(.)(.)"));
  fill("replaceLineOperationWindowWithTextField", QStringLiteral("$2$1"));
  tick("replaceLineOperationWindowCaseSensitiveButton");
  press(Qt::Key_Return);
  EXPECT_EQ(output(1), "\"dAa\"");
}

TEST_F(Panels, JoinLines) {
  open("Join Lines…");
  EXPECT_EQ(text("joinLinesOperationWindowNumberToJoinTextField"), "0");
  fill("joinLinesOperationWindowNumberToJoinTextField", QStringLiteral("2"));
  fill("joinLinesOperationWindowSeparatorTextField", QStringLiteral(" & "));
  press(Qt::Key_Return);
  EXPECT_EQ(data(kOperations, 1, 0), "Join Lines");
  press(Qt::Key_4, Qt::AltModifier);
  EXPECT_EQ(text("previewTextView"), "\"name\",\"city\",\"since\" & \"Ada\",\"London\",\"1815\"");
}

TEST_F(Panels, TrimColumn) {
  open("Trim Column…");
  const char* what = "trimColumnOperationWindowTrimWhatPopUpButton";
  EXPECT_FALSE(widget(what).isEnabled()) << "no column is selected";
  clickRow("trimColumnOperationWindowColumnsTableView", 1);
  ASSERT_TRUE(widget(what).isEnabled());
  choose(what, "String");
  choose("trimColumnOperationWindowTrimFromPopUpButton", "From End");
  fill("trimColumnOperationWindowTextField", QStringLiteral("on"));
  press(Qt::Key_Return);
  EXPECT_EQ(outputRow(1), (Texts{"\"Ada\"", "\"Lond\"", "\"1815\""}));
}

TEST_F(Panels, ReplaceColumnInTheColumnsThatAreSelected) {
  open("Replace Column…");
  clickRow("replaceColumnOperationWindowColumnsTableView", 0);
  clickRow("replaceColumnOperationWindowColumnsTableView", 2, Qt::ControlModifier);
  choose("replaceColumnOperationWindowTypePopUpButton", "Regular Expression");
  fill("replaceColumnOperationWindowWhatTextField", QStringLiteral("^."));
  fill("replaceColumnOperationWindowWithTextField", QStringLiteral("-"));
  press(Qt::Key_Return);
  EXPECT_EQ(outputRow(1), (Texts{"\"-da\"", "\"London\"", "\"-815\""}));
  clickRow(kOperations, 1);
  press(Qt::Key_Return);
  EXPECT_EQ(selection("replaceColumnOperationWindowColumnsTableView"), (std::vector{0, 2}));
}

TEST_F(Panels, ReformatColumnShowsTheFormatsOfItsKind) {
  open("Reformat Column…");
  clickRow("reformatColumnOperationWindowColumnsTableView", 2);
  struct Kind {
    const char* item;
    const char* shown;
  };
  const char* const formats[] = {
      "reformatColumnOperationWindowDatePopUpButton", "reformatColumnOperationWindowTimePopUpButton",
      "reformatColumnOperationWindowFormatDateTimeView", "reformatColumnOperationWindowNumberView"};
  for (const Kind& kind : {Kind{"Time", formats[1]}, Kind{"Date Time", formats[2]}, Kind{"Integer", nullptr},
                           Kind{"Number", formats[3]}, Kind{"Date", formats[0]}}) {
    choose("reformatColumnOperationWindowReformatAsPopUpButton", kind.item);
    for (const char* format : formats)
      EXPECT_EQ(widget(format).isVisible(), kind.shown == format) << kind.item << " " << format;
    EXPECT_EQ(widget("reformatColumnOperationWindowWithFormatLabel").isVisible(), kind.shown != nullptr);
  }
}

TEST_F(Panels, ReformatColumnWritesNumbers) {
  open("Reformat Column…");
  clickRow("reformatColumnOperationWindowColumnsTableView", 2);
  choose("reformatColumnOperationWindowReformatAsPopUpButton", "Number");
  EXPECT_EQ(text("reformatColumnOperationWindowDigitsToTheRightField"), "2");
  fill("reformatColumnOperationWindowDigitsToTheRightField", QStringLiteral("1"));
  press(Qt::Key_Return);
  EXPECT_EQ(outputRow(1)[2], "\"1815.0\"");
}

TEST_F(Panels, ReformatColumnWritesAnotherTextForWhatIsNoDate) {
  open("Reformat Column…");
  clickRow("reformatColumnOperationWindowColumnsTableView", 1);
  choose("reformatColumnOperationWindowReformatAsPopUpButton", "Date");
  tick("reformatColumnOperationWindowUseInvalidStringButton");
  fill("reformatColumnOperationWindowInvalidString", QStringLiteral("?"));
  press(Qt::Key_Return);
  EXPECT_EQ(outputRow(1), (Texts{"\"Ada\"", "\"?\"", "\"1815\""}));
}

TEST_F(Panels, SetNumberOfColumns) {
  open("Set Initial Number of Columns…");
  const char* number = "setNumberOfColumnsOperationsWindowRequiredNumberOfColumnsTextField";
  EXPECT_EQ(text(number), "3");
  fill(number, QStringLiteral("4"));
  fill("setNumberOfColumnsOperationsWindowTextForAddedColumnsTextField", QStringLiteral("new"));
  press(Qt::Key_Return);
  EXPECT_EQ(outputRow(1), (Texts{"\"Ada\"", "\"London\"", "\"1815\"", "\"new\""}));
}

TEST_F(Panels, RearrangeColumnsByADragTheKeysAndTheButtons) {
  open("Rearrange Columns…");
  const char* columns = "rearrangeColumnsOperationWindowColumnsTableView";
  clickRow(columns, 2);
  dragRow(columns, 2, 0);
  EXPECT_EQ(column(columns), (Texts{"3. since", "1. name", "2. city"}));
  clickRow(columns, 2);
  press(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(column(columns), (Texts{"3. since", "2. city", "1. name"}));
  EXPECT_EQ(selection(columns), std::vector{1});
  click("rearrangeColumnsOperationWindowMoveUpButton");
  EXPECT_EQ(column(columns), (Texts{"2. city", "3. since", "1. name"}));
  click("rearrangeColumnsOperationWindowMoveDownButton");
  click("rearrangeColumnsOperationWindowMoveDownButton");
  EXPECT_EQ(column(columns), (Texts{"3. since", "1. name", "2. city"}));
  focus(columns);
  press(Qt::Key_Return);
  EXPECT_FALSE(isShown("rearrangeColumnsOperationWindow"));
  EXPECT_EQ(shown(), "Rearrange Columns: 3, 1, 2");
  EXPECT_EQ(outputRow(1), (Texts{"\"1815\"", "\"Ada\"", "\"London\""}));
}

TEST_F(Panels, JoinColumns) {
  open("Join Columns…");
  const char* columns = "joinColumnsOperationWindowColumnsTableView";
  EXPECT_FALSE(widget("joinColumnsOperationWindowJoinButton").isEnabled());
  clickRow(columns, 0);
  clickRow(columns, 1, Qt::ControlModifier);
  EXPECT_FALSE(widget("joinColumnsOperationWindowUnjoinButton").isEnabled());
  click("joinColumnsOperationWindowJoinButton");
  EXPECT_EQ(column(columns), (Texts{"1. name, 2. city", "3. since"}));
  clickRow(columns, 0);
  EXPECT_TRUE(widget("joinColumnsOperationWindowUnjoinButton").isEnabled());
  click("joinColumnsOperationWindowUnjoinButton");
  EXPECT_EQ(column(columns), (Texts{"1. name, 2. city", "3. since"})) << "it changes nothing, which is meant";
  fill("joinColumnsOperationWindowSeparatorTextField", QStringLiteral("/"));
  press(Qt::Key_Return);
  EXPECT_EQ(outputRow(1), (Texts{"\"Ada/London\"", "\"1815\""}));
}

TEST_F(Panels, ACancelledEditChangesNothing) {
  open("Skip Line…");
  fill("skipLineOperationWindowTextField", QStringLiteral("x"));
  press(Qt::Key_Return);
  const std::string before = detail(1);
  doubleClickRow(kOperations, 1);
  fill("skipLineOperationWindowTextField", QStringLiteral("other"));
  press(Qt::Key_Escape);
  EXPECT_EQ(detail(1), before);
  doubleClickRow(kOperations, 1);
  EXPECT_EQ(text("skipLineOperationWindowTextField"), "x");
}

TEST_F(Panels, TabGoesDownThenToDoneCancelAndHelp) {
  open("Replace Character…");
  focus("replaceCharacterOperationWindowTypePopUpButton");
  for (const char* next :
       {"replaceCharacterOperationWindowWhatTextField", "replaceCharacterOperationWindowWithTextField",
        "replaceCharacterOperationWindowDoneButton", "replaceCharacterOperationWindowCancelButton",
        "replaceCharacterOperationWindowHelpButton"}) {
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), next);
  }
}

// --- The table of the operations.

class OperationRows : public Panels {
 protected:
  void addThree() {
    launchWithFiles({"a,b\n"});
    for (const char* item : {"Skip Line…", "Trim Line…", "Replace Line…"}) {
      chooseMenu("window", "Operation", item);
      press(Qt::Key_Return);
    }
  }
};

TEST_F(OperationRows, AreDeletedByTheKeyAndByTheButton) {
  addThree();
  clickRow(kOperations, 2);
  press(Qt::Key_Delete);
  EXPECT_EQ(titles(), (Texts{"Initial", "Skip Line", "Replace Line", "Final"}));
  EXPECT_EQ(text("statusLabel"), "1 operation(s) deleted for 1 input file(s).");
  clickRow(kOperations, 1);
  clickRow(kOperations, 2, Qt::ShiftModifier);
  click("deleteOperationButton");
  EXPECT_EQ(titles(), (Texts{"Initial", "Final"}));
}

TEST_F(OperationRows, TheEndsAreNotDeleted) {
  addThree();
  clickRow(kOperations, 0);
  press(Qt::Key_Delete);
  EXPECT_EQ(alert().text().toStdString(), "Cannot Delete Operation");
  EXPECT_EQ(alert().windowModality(), Qt::WindowModal);
  answer("OK");
  EXPECT_EQ(titles().size(), 5u);
}

TEST_F(OperationRows, AreDraggedWithTheMouse) {
  addThree();
  clickRow(kOperations, 3);
  dragRow(kOperations, 3, 1);
  EXPECT_EQ(titles(), (Texts{"Initial", "Replace Line", "Skip Line", "Trim Line", "Final"}));
}

TEST_F(OperationRows, TheEndsStayWhereTheyAre) {
  addThree();
  clickRow(kOperations, 0);
  dragRow(kOperations, 0, 3);
  EXPECT_EQ(alert().text().toStdString(), "Cannot Move Operation");
  answer("OK");
  EXPECT_EQ(titles().front(), "Initial");
}

TEST_F(OperationRows, GoUpAndDownWithTheAltKey) {
  addThree();
  clickRow(kOperations, 3);
  press(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(titles(), (Texts{"Initial", "Skip Line", "Replace Line", "Trim Line", "Final"}));
  clickRow(kOperations, 1);
  press(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(titles(), (Texts{"Initial", "Replace Line", "Skip Line", "Trim Line", "Final"}));
}

// Pressed again and again, one operation goes on.
TEST_F(OperationRows, GoUpAndDownFromTheMenuWhereverTheFocusIs) {
  launchWithFiles({"a\n", "b\n"});
  clickRow("filesTableView", 1);
  for (const char* item : {"Skip Line…", "Trim Line…"}) {
    chooseFromButton("addOperationButton", item);
    press(Qt::Key_Return);
  }
  clickRow(kOperations, 2);
  EXPECT_EQ(menuItem("window", "Operation", "Move Up").shortcut(), QKeySequence(Qt::ALT | Qt::Key_Up));
  EXPECT_EQ(menuItem("window", "Operation", "Move Down").shortcut(), QKeySequence(Qt::ALT | Qt::Key_Down));
  focus("filesTableView");
  chooseMenu("window", "Operation", "Move Up");
  EXPECT_EQ(titles(), (Texts{"Initial", "Trim Line", "Skip Line", "Final"}));
  EXPECT_EQ(column("filesTableView"), (Texts{"a.csv", "b.csv"}));
  widget<TableView>(kOperations).clearSelection();
  EXPECT_FALSE(isMenuItemOn("window", "Operation", "Move Up"));
}

TEST_F(OperationRows, OneGoesOnWithEachKey) {
  addThree();
  clickRow(kOperations, 3);
  press(Qt::Key_Up, Qt::AltModifier);
  press(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(titles(), (Texts{"Initial", "Replace Line", "Skip Line", "Trim Line", "Final"}));
  EXPECT_EQ(selection(kOperations), std::vector{1});
  press(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(titles().front(), "Initial") << "it stays between the ends";
  for (int i = 0; i < 4; ++i) press(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(titles(), (Texts{"Initial", "Skip Line", "Trim Line", "Replace Line", "Final"}));
}

TEST_F(OperationRows, AnEndIsNotMovedByTheKeys) {
  addThree();
  clickRow(kOperations, 0);
  press(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(alert().text().toStdString(), "Cannot Move Operation");
  answer("OK");
  EXPECT_EQ(titles().front(), "Initial");
}

TEST_F(OperationRows, TheContextMenuEditsAndAdds) {
  addThree();
  auto& view = widget<TableView>(kOperations);
  chooseFromContextMenu(*view.viewport(), placeOf(view, 2), "Edit Operation…");
  EXPECT_TRUE(isShown("trimLineOperationWindow"));
  press(Qt::Key_Escape);
  chooseFromContextMenu(*view.viewport(), placeOf(view, 2), "Join Lines…");
  EXPECT_TRUE(isShown("joinLinesOperationWindow"));
}

}  // namespace
}  // namespace quillet::testing
