// Every handler of the application is a command under its name, and every control has one that exists.
#include <gtest/gtest.h>

#include "shell/application_fixture.h"

namespace quillet::testing {
namespace {

constexpr const char* kHandlers[] = {
    // The main window.
    "addInputFileMenuItemClicked",
    "removeSelectedInputFilesMenuItemClicked",
    "showInFinderButtonPressed",
    "filesTableViewDoubleClickOnRow",
    "operationsTableViewDoubleClickOnRow",
    "previewTypeMenuItemClicked",
    "clearStatusLabelButtonClicked",
    "runButtonPressed",
    "selectOutputFolderMenuItemClicked",
    "showOutputFolderMenuItemClicked",
    "clearLogMenuItemClicked",
    "openLastLogFileMenuItemClicked",
    "quilletWindowMenuItemClicked",
    // Operations and their panels.
    "addOperationReplaceCharacterMenuItemClicked",
    "addLineOperationSkipMenuItemClicked",
    "addLineOperationTrimMenuItemClicked",
    "addLineOperationReplaceMenuItemClicked",
    "addOperationJoinLinesMenuItemClicked",
    "addColumnOperationTrimMenuItemClicked",
    "addColumnOperationReplaceMenuItemClicked",
    "addColumnOperationReformatMenuItemClicked",
    "addOperationSetInitialNumberOfColumnsMenuItemClicked",
    "addOperationSetFinalNumberOfColumnsMenuItemClicked",
    "addOperationRearrangeColumnsMenuItemClicked",
    "addOperationJoinColumnsMenuItemClicked",
    "showOperationWindow",
    "deleteOperationButtonClicked",
    "operationsWindowDoneButtonClicked",
    "operationsWindowCancelButtonClicked",
    "skipLineOperationTypeValueChanged",
    "trimLineOperationTypeValueChanged",
    "trimColumnOperationTypeValueChanged",
    "reformatColumnOperationWindowReformatAsChanged",
    "joinColumnsOperationWindowJoinButtonClicked",
    "joinColumnsOperationWindowUnjoinButtonClicked",
    // Saved jobs.
    "saveJobMenuItemClicked",
    "saveJobWindowSaveButtonClicked",
    "saveJobWindowCancelButtonClicked",
    "previousJobsWindowMenuItemActionClicked",
    "previousJobsWindowSearchTypePopUpChanged",
    "previousJobsWindowJobsTableViewDoubleClickOnRow",
    "previousJobsWindowFilesTableViewDoubleClickOnRow",
    "previousJobsPopoverDetailsTitleTextFieldAction",
    "deleteJobsButtonClicked",
    "previousJobFileWindowRestoreOperationsButtonPressed",
    "previousJobFileWindowCancelButtonPressed",
    // Preferences, help and the other windows.
    "preferencesMenuItemClicked",
    "preferencesWindowAutoSplitButtonClicked",
    "preferencesWindowOpenLastLogFileAfterCompleteButtonClicked",
    "preferencesWindowOpenOutputFolderAfterCompleteButtonClicked",
    "tutorialsMenuItemClicked",
    "supportMenuItemClicked",
    "helpButtonPressed",
    // The clipboard data window.
    "clipboardDataWindowMenuItemClicked",
    "clipboardDataWindowClearStatusLabelButtonClicked",
    "clipboardDataWindowRefreshNowButtonPressed",
    "clipboardDataWindowSplitButtonPressed",
    "clipboardDataWindowJoinButtonPressed",
    "clipboardDataWindowTrimButtonPressed",
    "clipboardDataWindowReplaceButtonPressed",
    "clipboardDataWindowFillButtonPressed",
    "rowsTableViewReturnKeyPressed",
    "rowsTableViewSelectAllMenuItemClicked",
    "clipboardDataWindowShiftTruncateLeftMenuItemClicked",
    "clipboardDataWindowShiftTruncateRightMenuItemClicked",
    "clipboardDataWindowShiftTruncateTopMenuItemClicked",
    "clipboardDataWindowShiftTruncateBottomMenuItemClicked",
    "clipboardDataWindowDeleteSelectedLineMenuItemClicked",
    "clipboardDataWindowDeleteSelectedColumnMenuItemClicked",
    "clipboardDataWindowShiftFillFromLeftMenuItemClicked",
    "clipboardDataWindowShiftFillFromRightMenuItemClicked",
    "clipboardDataWindowShiftFillFromTopMenuItemClicked",
    "clipboardDataWindowShiftFillFromBottomMenuItemClicked",
    "clipboardDataWindowMoveLeftMenuItemClicked",
    "clipboardDataWindowMoveRightMenuItemClicked",
    "clipboardDataWindowMoveUpMenuItemClicked",
    "clipboardDataWindowMoveDownMenuItemClicked",
    "flipHorizontalMenuItemClicked",
    "flipVerticalMenuItemClicked",
    "flipDiagonalMenuItemClicked",
    "clipboardDataWindowMergeLeftMenuItemClicked",
    "clipboardDataWindowMergeRightMenuItemClicked",
    "clipboardDataWindowMergeUpMenuItemClicked",
    "clipboardDataWindowMergeDownMenuItemClicked",
    "clipboardDataWindowJoinRowsMenuItemClicked",
    "clipboardDataWindowJoinColumnsMenuItemClicked",
    // Its sheets.
    "clipboardDataSplitWindowDoneButtonPressed",
    "clipboardDataSplitWindowCancelButtonPressed",
    "clipboardDataJoinWindowDoneButtonPressed",
    "clipboardDataJoinWindowCancelButtonPressed",
    "clipboardDataTrimWindowDoneButtonPressed",
    "clipboardDataTrimWindowCancelButtonPressed",
    "clipboardDataReplaceWindowDoneButtonPressed",
    "clipboardDataReplaceWindowCancelButtonPressed",
    "clipboardDataFillWindowDoneButtonPressed",
    "clipboardDataFillWindowCancelButtonPressed",
    "cellDetailsWindowDoneButtonClicked",
    "cellDetailsWindowCancelButtonClicked",
};

class Handlers : public ApplicationTest {};

TEST_F(Handlers, AllAreCommands) {
  const Commands& commands = application().interface().commands();
  for (const char* handler : kHandlers) EXPECT_TRUE(commands.has(handler)) << handler;
}

TEST_F(Handlers, OfControlsExist) {
  const Commands& commands = application().interface().commands();
  int count = 0;
  for (const Window* window : application().interface().windows()) {
    for (const Control* control : window->controls()) {
      if (control->handler().empty()) continue;
      EXPECT_TRUE(commands.has(control->handler())) << control->name() << " has " << control->handler();
      ++count;
    }
  }
  EXPECT_GT(count, 50);
}

TEST_F(Handlers, OfSheetsAreThoseOfTheirTwoButtons) {
  for (const Window* window : application().interface().windows()) {
    const bool isSheet = window->name() != "window" && window->name() != "clipboardDataWindow" &&
                         window->name() != "previousJobsWindow" && window->name() != "preferencesWindow";
    EXPECT_EQ(window->doneButton() != nullptr, isSheet) << window->name();
    EXPECT_EQ(window->cancelButton() != nullptr, isSheet) << window->name();
    EXPECT_FALSE(window->title().empty()) << window->name();
  }
}

}  // namespace
}  // namespace quillet::testing
