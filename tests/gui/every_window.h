// Every window and sheet of a Quillet with a file and a clipboard grid, opened in turn as a user opens them.
#pragma once

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QPlainTextEdit>
#include <QtTest>
#include <functional>
#include <string>

#include "gui/gui_application.h"
#include "operations/operation_codes.h"

namespace quillet::testing {

class EveryWindowTest : public GuiTest {
 protected:
  using Visit = std::function<void(const std::string& name, QWidget& form)>;

  void perform(const char* command) {
    application().interface().commands().perform(command);
    QApplication::processEvents();
  }

  QWidget* form(const std::string& window) { return quillet().windows().widget(window); }

  // A file with three columns, selected; nothing on the clipboard's side.
  void launchWithFile() { launch({home_.write("a.csv", "name,city,note\nAda,London,x\nBob,Rome\n")}); }

  // The window comes up with a grid of two lines, the second of one cell.
  void openGrid() {
    QApplication::clipboard()->setText(QStringLiteral("a,b,c\nd"));
    perform("clipboardDataWindowMenuItemClicked");
    perform("clipboardDataWindowRefreshNowButtonPressed");
    application().clipboard().performClipboardDataOperation(
        {{"Code", std::int64_t{102}}, {"Arg1", u"\n"}, {"Arg2", u","}});
    QApplication::processEvents();
  }

  // Those that are not sheets, each brought to the front.
  void forEveryMainWindow(const Visit& visit) {
    perform("quilletWindowMenuItemClicked");
    visit("window", activated("window"));
    openGrid();
    visit("clipboardDataWindow", activated("clipboardDataWindow"));
    perform("previousJobsWindowMenuItemActionClicked");
    visit("previousJobsWindow", activated("previousJobsWindow"));
    perform("preferencesMenuItemClicked");
    visit("preferencesWindow", activated("preferencesWindow"));
    form("preferencesWindow")->close();
  }

  void forEverySheet(const Visit& visit) {
    forSheetsOfOperations(visit);
    perform("quilletWindowMenuItemClicked");
    visitOpened(visit, [this] { perform("saveJobMenuItemClicked"); });
    openGrid();
    application().clipboard().table().mouseDown(0, 2, 1, {});
    for (const char* command :
         {"clipboardDataWindowSplitButtonPressed", "clipboardDataWindowJoinButtonPressed",
          "clipboardDataWindowTrimButtonPressed", "clipboardDataWindowReplaceButtonPressed",
          "clipboardDataWindowFillButtonPressed", "rowsTableViewReturnKeyPressed"})
      visitOpened(visit, [&] { perform(command); });
    // It tells of a file of a job that is no list of operations, which none of today's is.
    auto* file = static_cast<QDialog*>(form("previousJobFileWindow"));
    visitOpened(visit, [file] { file->open(); });
    file->hide();
  }

  // The application's own name of the sheets that visitOpened has met.
  const std::vector<std::string>& visitedSheets() const { return visitedSheets_; }

 private:
  QWidget& activated(const std::string& window) {
    QWidget* widget = form(window);
    widget->activateWindow();
    QApplication::processEvents();
    return *widget;
  }

  void forSheetsOfOperations(const Visit& visit) {
    perform("quilletWindowMenuItemClicked");
    for (const std::int64_t row : {std::int64_t{0}, std::int64_t{1}}) {  // Initial and Final
      application().operationTable().table().userSelects(IndexSet{row});
      visitOpened(visit, [this] { perform("showOperationWindow"); });
    }
    for (const std::int64_t code :
         {OpReplaceCharacter, OpSkipLine, OpTrimLine, OpReplaceLine, OpJoinLines, OpTrimColumn,
          OpReplaceColumn, OpReformatColumn, OpSetInitialNumberOfColumns, OpRearrangeColumns, OpJoinColumns})
      visitOpened(visit, [&] { application().operationEditor().showPanelForAdding(code); });
  }

  void visitOpened(const Visit& visit, const std::function<void()>& open) {
    open();
    QApplication::processEvents();
    for (Window* window : application().interface().windows()) {
      QWidget* sheet = form(window->name());
      if (!window->cancelButton() || !sheet->isVisible()) continue;
      sheet->activateWindow();
      QApplication::processEvents();
      visitedSheets_.push_back(window->name());
      visit(window->name(), *sheet);
      window->cancelButton()->press();
      QApplication::processEvents();
    }
  }

  std::vector<std::string> visitedSheets_;
};

}  // namespace quillet::testing
