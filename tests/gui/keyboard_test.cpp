// Everything is reached and used without a mouse.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <map>
#include <set>

#include "gui/every_window.h"
#include "ui/grid_view.h"
#include "ui/table_view.h"

namespace quillet::testing {
namespace {

class Keyboard : public EveryWindowTest {
 protected:
  static std::string nameOfFocus() {
    const QWidget* focused = QApplication::focusWidget();
    return focused ? focused->objectName().toStdString() : "none";
  }

  // The widgets that Tab, or Shift+Tab, meets from the one that has the focus until it comes back to it.
  static std::vector<std::string> round(int key) {
    std::vector<std::string> names;
    QWidget* first = QApplication::focusWidget();
    for (QWidget* focused = first; focused && names.size() < 60;) {
      names.push_back(focused->objectName().toStdString());
      QTest::keyClick(focused, static_cast<Qt::Key>(key),
                      key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
      focused = QApplication::focusWidget();
      if (focused == first) break;
    }
    return names;
  }

  static std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += name + " ";
    return text;
  }

  static void expectTabOrder(QWidget& form, const std::vector<std::string>& names) {
    auto* first = form.findChild<QWidget*>(QString::fromStdString(names.front()));
    ASSERT_TRUE(first) << names.front();
    first->setFocus();
    ASSERT_TRUE(first->hasFocus()) << names.front();
    EXPECT_EQ(joined(round(Qt::Key_Tab)), joined(names));
    std::vector<std::string> backwards(names.rbegin(), names.rend());
    backwards.insert(backwards.begin(), backwards.back());
    backwards.pop_back();
    first->setFocus();
    EXPECT_EQ(joined(round(Qt::Key_Backtab)), joined(backwards));
  }

  QAction* action(const char* window, const char* command) {
    for (QAction* one : form(window)->findChildren<QAction*>())
      if (one->property("command").toString() == QLatin1String(command) && !one->shortcut().isEmpty())
        return one;
    return nullptr;
  }
};

// In the order in which the windows are described.
TEST_F(Keyboard, TabGoesThroughEachMainWindowAndBack) {
  launchWithFile();
  application().operationTable().table().userSelects(IndexSet{0});
  static_cast<Label*>(application().interface().control("statusLabel"))->setText(u"Done.");
  application().interface().control("clearStatusLabelButton")->setHidden(false);
  perform("quilletWindowMenuItemClicked");
  form("window")->activateWindow();
  QApplication::processEvents();
  expectTabOrder(*form("window"),
                 {"filesTableView", "addInputFileButton", "removeInputFilesButton", "showInFinderButton",
                  "addOperationButton", "editOperationButton", "deleteOperationButton", "operationsTableView",
                  "previewTypePopUpButton", "previewTableView", "clearStatusLabelButton",
                  "selectOutputFolderButton", "saveJobButton", "runButton"});
  perform("previousJobsWindowMenuItemActionClicked");
  form("previousJobsWindow")->activateWindow();
  QApplication::processEvents();
  for (const char* name : {"previousJobsPopoverDetailsTitleTextField", "previousJobsWindowDeleteJobsButton",
                           "previousJobsWindowRestoreOperationsButton"})
    application().interface().control(name)->setEnabled(true);
  expectTabOrder(*form("previousJobsWindow"),
                 {"previousJobsWindowSearchTypeButton", "previousJobsWindowSearchField",
                  "previousJobsWindowJobsTableView", "previousJobsPopoverDetailsTitleTextField",
                  "previousJobsWindowFilesTableView", "previousJobFileWindowOperationsTableView",
                  "previousJobsWindowDeleteJobsButton", "previousJobsWindowRestoreOperationsButton"});
  perform("preferencesMenuItemClicked");
  form("preferencesWindow")->activateWindow();
  QApplication::processEvents();
  expectTabOrder(
      *form("preferencesWindow"),
      {"preferencesWindowDecodeErrorReplacementTextField", "preferencesWindowEncodeErrorReplacementTextField",
       "preferencesWindowAutoSplitButton", "preferencesWindowOpenLastLogFileAfterCompleteButton",
       "preferencesWindowOpenOutputFolderAfterCompleteButton", ""});
}

TEST_F(Keyboard, WithoutAFileTabGoesThroughTheHelpOfTheMainWindow) {
  launch();
  perform("quilletWindowMenuItemClicked");
  form("window")->activateWindow();
  QApplication::processEvents();
  find<QWidget>("window", "filesTableView")->setFocus();
  const std::string names = joined(round(Qt::Key_Tab));
  EXPECT_EQ(names.rfind("filesTableView addInputFileButton ", 0), 0u) << names;
  EXPECT_NE(names.find(" rightSideHelpBoxAddButton selectOutputFolderButton "), std::string::npos) << names;
}

// Tab moves in the grid, so it is left by F6, and entered from what is before and behind it.
TEST_F(Keyboard, TheGridIsEnteredByTabAndLeftByF6) {
  launchWithFile();
  openGrid();
  form("clipboardDataWindow")->activateWindow();
  QApplication::processEvents();
  auto* grid = find<GridView>("clipboardDataWindow", "clipboardDataTableView");
  for (const char* name : {"clipboardDataWindowPerformToolbarItem", "clipboardDataWindowJoinToolbarItem"})
    application().interface().control(name)->setEnabled(true);
  find<QWidget>("clipboardDataWindow", "clipboardDataWindowRefreshToolbarItem")->setFocus();
  std::vector<std::string> names;
  for (int i = 0; i < 20 && !grid->hasFocus(); ++i) {
    names.push_back(nameOfFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(joined(names),
            "clipboardDataWindowRefreshToolbarItem clipboardDataWindowSplitToolbarItem "
            "clipboardDataWindowPerformToolbarItem clipboardDataWindowJoinToolbarItem "
            "clipboardDataWindowSaveToolbarItem ");
  ASSERT_TRUE(grid->hasFocus());
  QTest::keyClick(grid, Qt::Key_Tab);
  QTest::keyClick(grid, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(grid->hasFocus());
  QTest::keyClick(grid, Qt::Key_F6);
  EXPECT_EQ(nameOfFocus(), "clipboardDataWindowOperationsTableView");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(nameOfFocus(), "clipboardDataWindowClearStatusLabelButton");
}

TEST_F(Keyboard, F6GoesRoundThePanesOfEachMainWindow) {
  launchWithFile();
  struct Case {
    const char* window;
    std::vector<std::string> panes;
  };
  const Case cases[] = {
      {"window", {"filesTableView", "operationsTableView", "previewTableView"}},
      {"clipboardDataWindow", {"clipboardDataTableView", "clipboardDataWindowOperationsTableView"}},
      {"previousJobsWindow",
       {"previousJobsWindowJobsTableView", "previousJobsWindowFilesTableView",
        "previousJobFileWindowOperationsTableView"}}};
  std::map<std::string, std::vector<std::string>> panesOf;
  for (const Case& one : cases) panesOf[one.window] = one.panes;
  forEveryMainWindow([&](const std::string& window, QWidget& widget) {
    const std::vector<std::string>& panes = panesOf[window];
    if (panes.empty()) return;
    widget.findChild<QWidget*>(QString::fromStdString(panes.front()))->setFocus();
    for (std::size_t i = 1; i <= panes.size(); ++i) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
      EXPECT_EQ(nameOfFocus(), panes[i % panes.size()]) << window;
    }
    for (std::size_t i = panes.size(); i-- > 0;) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, Qt::ShiftModifier);
      EXPECT_EQ(nameOfFocus(), panes[i]) << window;
    }
  });
}

// With no file only the list and the help are in sight.
TEST_F(Keyboard, F6GoesToTheHelpAndBackWhileNoFileIsThere) {
  launch();
  perform("quilletWindowMenuItemClicked");
  form("window")->activateWindow();
  QApplication::processEvents();
  find<QWidget>("window", "filesTableView")->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
  EXPECT_EQ(nameOfFocus(), "rightSideHelpBoxAddButton");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
  EXPECT_EQ(nameOfFocus(), "filesTableView");
}

// The data of a sheet in the order of Tab, without the name of the sheet; where all are shown and on.
struct Sheet {
  const char* window;
  std::vector<std::string> data;
};
const std::vector<Sheet>& sheets() {
  static const std::vector<Sheet> all = {
      {"initialOperationsWindow",
       {"DecodeAsPopUpButton", "SplitContentsIntoLinesCheckbox", "LineSeparatorComboBox",
        "SplitLinesIntoColumnsCheckbox", "ColumnSeparatorComboBox", "RemoveQuotesCheckbox"}},
      {"finalOperationsWindow",
       {"EncodeAsPopUpButton", "LineSeparatorComboBox", "ColumnSeparatorComboBox", "AddQuotesCheckbox",
        "AddLineSeparatorCheckbox", "FileNameTextField", "WriteModePopUpButton"}},
      {"replaceCharacterOperationWindow", {"TypePopUpButton", "WhatTextField", "WithTextField"}},
      {"skipLineOperationWindow", {"SkipIfPopUpButton", "TextField", "CaseSensitiveButton"}},
      {"trimLineOperationWindow",
       {"TrimWhatPopUpButton", "TrimFromPopUpButton", "TextField", "CaseSensitiveButton"}},
      {"replaceLineOperationWindow",
       {"TypePopUpButton", "WhatTextField", "WithTextField", "CaseSensitiveButton"}},
      {"joinLinesOperationWindow", {"NumberToJoinTextField", "SeparatorTextField"}},
      {"trimColumnOperationWindow",
       {"ColumnsTableView", "TrimWhatPopUpButton", "TrimFromPopUpButton", "TextField",
        "CaseSensitiveButton"}},
      {"replaceColumnOperationWindow",
       {"ColumnsTableView", "TypePopUpButton", "WhatTextField", "WithTextField", "CaseSensitiveButton"}},
      {"reformatColumnOperationWindow",
       {"ColumnsTableView", "ReformatAsPopUpButton", "DatePopUpButton", "TimePopUpButton",
        "FormatDateTimeDatePopUpButton", "FormatDateTimeTimePopUpButton", "DigitsToTheRightField",
        "UseInvalidStringButton", "InvalidString"}},
      {"setNumberOfColumnsOperationWindow",
       {"RequiredNumberOfColumnsTextField", "TextForAddedColumnsTextField"}},
      {"rearrangeColumnsOperationWindow", {"ColumnsTableView", "MoveUpButton", "MoveDownButton"}},
      {"joinColumnsOperationWindow",
       {"ColumnsTableView", "JoinButton", "UnjoinButton", "SeparatorTextField"}},
      {"clipboardDataSplitWindow",
       {"SplitClipboardIntoLinesCheckbox", "LineSeparatorComboBox", "SplitLinesIntoColumnsCheckbox",
        "ColumnSeparatorComboBox", "RemoveQuotesCheckbox"}},
      {"clipboardDataJoinWindow", {"LineSeparatorComboBox", "ColumnSeparatorComboBox", "AddQuotesCheckbox"}},
      {"clipboardDataTrimWindow",
       {"TrimWhatPopUpButton", "TrimFromPopUpButton", "TextField", "CaseSensitiveButton"}},
      {"clipboardDataReplaceWindow",
       {"TypePopUpButton", "WhatTextField", "WithTextField", "CaseSensitiveButton"}},
      {"clipboardDataFillWindow", {"TypePopUpButton", "WithTextField"}},
      {"cellDetailsWindow", {"TextField"}},
      {"saveJobWindow", {"JobNameComboBox"}},
      {"previousJobFileWindow", {}}};
  return all;
}

// As it stands for the widgets of this sheet: a name may end with it.
QWidget* widgetOf(QWidget& form, const std::string& window, const std::string& part) {
  const QString end = QString::fromStdString(part);
  for (QWidget* widget : form.findChildren<QWidget*>())
    if (widget->objectName().endsWith(end) && widget->focusPolicy() != Qt::NoFocus &&
        widget->objectName().size() - end.size() <= static_cast<qsizetype>(window.size()) + 1)
      return widget;
  return nullptr;
}

const Control* helpButtonOf(const Window& window) {
  for (const Control* control : window.controls())
    if (control->handler() == "helpButtonPressed") return control;
  return nullptr;
}

bool isReached(const QWidget& widget) {
  return widget.isVisible() && widget.isEnabled();
}

TEST_F(Keyboard, TabGoesDownASheetThenToDoneCancelHelp) {
  launchWithFile();
  std::map<std::string, const Sheet*> sheetOf;
  for (const Sheet& sheet : sheets()) sheetOf[sheet.window] = &sheet;
  forEverySheet([&](const std::string& window, QWidget& form) {
    SCOPED_TRACE(window);
    ASSERT_TRUE(sheetOf.contains(window));
    // What the first choice of a pop-up turns off is reached with another.
    const Window* model = application().interface().window(window);
    for (Control* control : model->controls()) control->setEnabled(true);
    std::vector<std::string> names;
    for (const std::string& part : sheetOf[window]->data) {
      QWidget* widget = widgetOf(form, window, part);
      ASSERT_TRUE(widget) << part;
      if (isReached(*widget)) names.push_back(widget->objectName().toStdString());
    }
    EXPECT_TRUE(!names.empty() || window == "previousJobFileWindow");
    names.push_back(model->doneButton()->name());
    if (model->cancelButton() != model->doneButton()) names.push_back(model->cancelButton()->name());
    if (const Control* help = helpButtonOf(*model)) names.push_back(help->name());
    if (names.size() == 1) {
      EXPECT_EQ(nameOfFocus(), names.front());
      return;
    }
    EXPECT_EQ(nameOfFocus(), names.front()) << "the first focus";
    expectTabOrder(form, names);
  });
  EXPECT_EQ(visitedSheets().size(), 21u);
}

TEST_F(Keyboard, TheFocusComesBackWhenASheetCloses) {
  launchWithFile();
  perform("quilletWindowMenuItemClicked");
  form("window")->activateWindow();
  QApplication::processEvents();
  auto* operations = find<TableView>("window", "operationsTableView");
  operations->setFocus();
  application().operationTable().table().userSelects(IndexSet{0});
  QTest::keyClick(operations, Qt::Key_Return);
  QApplication::processEvents();
  QWidget* sheet = form("initialOperationsWindow");
  ASSERT_TRUE(sheet->isVisible()) << "Return edits the operation";
  EXPECT_EQ(QApplication::activeWindow(), sheet);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  QApplication::processEvents();
  EXPECT_FALSE(sheet->isVisible());
  EXPECT_EQ(QApplication::activeWindow(), form("window"));
  EXPECT_EQ(nameOfFocus(), "operationsTableView");
}

// Also from a pop-up, a combo box, a check box, a list, and from the button for help.
TEST_F(Keyboard, ReturnIsDoneAndEscapeIsCancelFromEveryFieldOfASheet) {
  launchWithFile();
  std::size_t fields = 0;
  for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
    for (std::size_t i = 0; i < 9; ++i)
      forEverySheet([&](const std::string& window, QWidget& form) {
        const Window* model = application().interface().window(window);
        std::vector<QWidget*> widgets;
        for (const Sheet& sheet : sheets())
          if (sheet.window == window)
            for (const std::string& part : sheet.data)
              if (QWidget* widget = widgetOf(form, window, part);
                  isReached(*widget) && !qobject_cast<QPushButton*>(widget))
                widgets.push_back(widget);
        if (const Control* help = helpButtonOf(*model))
          widgets.push_back(form.findChild<QWidget*>(QString::fromStdString(help->name())));
        if (i >= widgets.size()) return;
        ++fields;
        std::string pressed;
        auto* done = form.findChild<QPushButton*>(QString::fromStdString(model->doneButton()->name()));
        const auto listening =
            QObject::connect(done, &QPushButton::clicked, &form, [&] { pressed = "Done"; });
        widgets[i]->setFocus();
        ASSERT_TRUE(widgets[i]->hasFocus()) << window << " " << widgets[i]->objectName().toStdString();
        QTest::keyClick(widgets[i], static_cast<Qt::Key>(key));
        QApplication::processEvents();
        QObject::disconnect(listening);
        const std::string where = window + " " + widgets[i]->objectName().toStdString();
        if (key == Qt::Key_Escape)
          EXPECT_FALSE(form.isVisible()) << where;
        else if (!widgets[i]->objectName().endsWith(QLatin1String("cellDetailsWindowTextField")))
          EXPECT_EQ(pressed, "Done") << where;
        else
          EXPECT_FALSE(form.isVisible()) << where;
        for (QWidget* alert : QApplication::topLevelWidgets())
          if (alert->inherits("QMessageBox")) alert->close();
        QApplication::processEvents();
      });
  EXPECT_GT(fields, 200u);
}

TEST_F(Keyboard, SpaceAndReturnPressTheButtonWithTheFocus) {
  launchWithFile();
  perform("quilletWindowMenuItemClicked");
  form("window")->activateWindow();
  QApplication::processEvents();
  for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    for (const char* name : {"saveJobButton", "editOperationButton"}) {
      application().operationTable().table().userSelects(IndexSet{0});
      QApplication::processEvents();
      auto* button = find<QAbstractButton>("window", name);
      button->setFocus();
      ASSERT_TRUE(button->hasFocus());
      QTest::keyClick(button, static_cast<Qt::Key>(key));
      QApplication::processEvents();
      const bool isSave = std::string(name) == "saveJobButton";
      Window* sheet = application().interface().window(isSave ? "saveJobWindow" : "initialOperationsWindow");
      EXPECT_TRUE(sheet->isShown()) << name << " " << key;
      sheet->cancelButton()->press();
      QApplication::processEvents();
    }
  }
}

TEST_F(Keyboard, InASheetReturnPressesTheButtonWithTheFocus) {
  launchWithFile();
  perform("quilletWindowMenuItemClicked");
  application().operationEditor().showPanelForAdding(OpTrimLine);
  QApplication::processEvents();
  auto* sheet = form("trimLineOperationWindow");
  sheet->activateWindow();
  QApplication::processEvents();
  auto* cancel = find<QPushButton>("trimLineOperationWindow", "trimLineOperationWindowCancelButton");
  cancel->setFocus();
  QTest::keyClick(cancel, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_FALSE(sheet->isVisible());
  EXPECT_EQ(find<TableView>("window", "operationsTableView")->model()->rowCount(), 2);
}

// Without a menu being opened.
TEST_F(Keyboard, ShortcutsFollowTheWindowTheSelectionAndTheModel) {
  launch({home_.write("a.csv", "a,b\n")});
  form("window")->activateWindow();
  QApplication::processEvents();
  QAction* remove = action("window", "removeSelectedInputFilesMenuItemClicked");
  QAction* run = action("window", "runButtonPressed");
  ASSERT_TRUE(remove && run);
  EXPECT_TRUE(remove->isEnabled() && run->isEnabled());
  application().fileSelection().select(IndexSet());
  QApplication::processEvents();
  EXPECT_FALSE(remove->isEnabled());
  EXPECT_TRUE(run->isEnabled());
  openGrid();
  form("clipboardDataWindow")->activateWindow();
  QApplication::processEvents();
  EXPECT_FALSE(run->isEnabled()) << "another window is key";
  QAction* trim = action("clipboardDataWindow", "clipboardDataWindowTrimButtonPressed");
  QAction* left = action("clipboardDataWindow", "clipboardDataWindowMoveLeftMenuItemClicked");
  ASSERT_TRUE(trim && left);
  auto& table = application().clipboard().table();
  table.mouseDown(0, 2, 1, {});
  QApplication::processEvents();
  EXPECT_TRUE(trim->isEnabled());
  EXPECT_FALSE(left->isEnabled());
  table.didClickTableColumn(2, {});
  QApplication::processEvents();
  EXPECT_TRUE(left->isEnabled());
  perform("clipboardDataWindowRefreshNowButtonPressed");
  EXPECT_FALSE(left->isEnabled()) << "nothing is selected in what was read anew";
}

// Its menu was open while there was nothing to undo.
TEST_F(Keyboard, UndoWorksByItsKeysAfterItsMenuWasOpen) {
  launchWithFile();
  perform("clipboardDataWindowMenuItemClicked");
  auto* window = static_cast<QMainWindow*>(form("clipboardDataWindow"));
  QMenu* edit = window->menuBar()->actions()[1]->menu();
  QAction* undo = edit->actions().front();
  ASSERT_EQ(undo->shortcut(), QKeySequence(QKeySequence::Undo));
  emit edit->aboutToShow();
  EXPECT_FALSE(undo->isEnabled());
  openGrid();
  EXPECT_TRUE(undo->isEnabled());
  EXPECT_EQ(find<GridView>("clipboardDataWindow", "clipboardDataTableView")->model()->rowCount(), 2);
  window->activateWindow();
  QApplication::processEvents();
  QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier);
  QApplication::processEvents();
  EXPECT_EQ(find<GridView>("clipboardDataWindow", "clipboardDataTableView")->model()->rowCount(), 1)
      << "not cut into lines";
}

TEST_F(Keyboard, TheItemsAreAskedOnceForManyChanges) {
  launchWithFile();
  openGrid();
  int asked = 0;
  const QMenu* menu = static_cast<QMainWindow*>(form("clipboardDataWindow"))->menuBar()->actions()[2]->menu();
  QObject::connect(menu, &QMenu::aboutToShow, menu, [&asked] { ++asked; });
  auto& table = application().clipboard().table();
  for (int i = 0; i < 100; ++i) table.mouseDown(i % 2, 2, 1, {});
  EXPECT_EQ(asked, 0);
  QApplication::processEvents();
  EXPECT_EQ(asked, 1);
  QApplication::processEvents();
  EXPECT_EQ(asked, 1) << "nothing has changed since";
}

TEST_F(Keyboard, TheArrowsOfMoveAreEatenInTheGridWhileTheirItemIsOff) {
  launchWithFile();
  openGrid();
  form("clipboardDataWindow")->activateWindow();
  auto* grid = find<GridView>("clipboardDataWindow", "clipboardDataTableView");
  grid->setFocus();
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                    {grid->columnViewportPosition(1) + 5, grid->rowViewportPosition(1) + 5});
  QApplication::processEvents();
  const auto& selection = application().clipboard().data().selection();
  const auto place = [&] {
    return std::to_string(selection.focusedRowIndex()) + "," + std::to_string(selection.focusedColumnIndex());
  };
  ASSERT_EQ(place(), "1,1");
  for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
    QTest::keyClick(grid, static_cast<Qt::Key>(key), Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(place(), "1,1") << key;
  }
  EXPECT_EQ(application().clipboard().data().clipboardDataOperationsArray().size(), 1u) << "the split";
  QTest::keyClick(grid, Qt::Key_Up);
  EXPECT_EQ(place(), "0,1");
}

TEST_F(Keyboard, MnemonicsOfEachMenuAreUnique) {
  launchWithFile();
  for (const char* window : {"window", "clipboardDataWindow", "previousJobsWindow"}) {
    for (const QMenu* menu : form(window)->findChildren<QMenu*>()) {
      std::set<QString> taken;
      for (const QAction* one : menu->actions()) {
        const QString key = QKeySequence::mnemonic(one->text()).toString();
        if (!key.isEmpty()) {
          EXPECT_TRUE(taken.insert(key).second) << window << " " << one->text().toStdString();
        }
      }
    }
  }
}

// A key means one thing where it can be pressed: in the window, or in one of its tables.
TEST_F(Keyboard, ShortcutsAreUniqueInTheWindowAndInEachTable) {
  launchWithFile();
  for (const char* window : {"window", "clipboardDataWindow", "previousJobsWindow"}) {
    std::map<std::pair<const QObject*, QString>, QString> owners;
    for (const QAction* one : form(window)->findChildren<QAction*>()) {
      if (one->shortcutContext() == Qt::WidgetShortcut) continue;  // shown only
      const bool ofWindow = one->shortcutContext() == Qt::WindowShortcut;
      for (const QKeySequence& keys : one->shortcuts()) {
        const auto place = std::make_pair(ofWindow ? nullptr : one->parent(), keys.toString());
        EXPECT_TRUE(owners.emplace(place, one->text()).second)
            << window << " " << keys.toString().toStdString() << " " << one->text().toStdString();
        EXPECT_FALSE(!ofWindow && owners.contains({nullptr, keys.toString()}))
            << window << " " << keys.toString().toStdString();
      }
    }
    EXPECT_GT(owners.size(), 5u);
  }
}

}  // namespace
}  // namespace quillet::testing
