// What stands in the menus, in their order.
#pragma once

#include <cstdint>

#include "operations/operation_codes.h"
#include "platform/localization.h"

namespace quillet::ui {

// An item without a text is a separator. Shortcuts of a table work while it has the focus; the widget is then
// named.
struct MenuItem {
  const char* text = nullptr;
  const char* shortcut = nullptr;
  const char* command = nullptr;
  const char* widget = nullptr;
};

inline constexpr MenuItem kLine{};

inline constexpr MenuItem kFileMain[] = {
    {localizable("Add Input Files…"), "Ctrl+O", "addInputFileMenuItemClicked"},
    {localizable("Remove Selected Files"), "Del", "removeSelectedInputFilesMenuItemClicked",
     "filesTableView"},
    {localizable("Show in File Manager"), "Ctrl+Shift+F", "showInFinderButtonPressed"},
    kLine,
    {localizable("Select Output Folder…"), "Ctrl+Shift+O", "selectOutputFolderMenuItemClicked"},
    {localizable("Show Output Folder"), nullptr, "showOutputFolderMenuItemClicked"},
    kLine,
};
inline constexpr MenuItem kSaveJob[] = {{localizable("Save Job…"), "Ctrl+S", "saveJobMenuItemClicked"},
                                        kLine};

inline constexpr MenuItem kEditOperation[] = {
    {localizable("Edit Operation…"), "Return", "showOperationWindow", "operationsTableView"},
    {localizable("Delete Operation"), "Del", "deleteOperationButtonClicked", "operationsTableView"},
};

inline constexpr MenuItem kJobMain[] = {
    {localizable("Run Job"), "Ctrl+R", "runButtonPressed"},
    {localizable("Open Last Log"), "Ctrl+L", "openLastLogFileMenuItemClicked"},
    {localizable("Clear Log"), nullptr, "clearLogMenuItemClicked"},
};
inline constexpr MenuItem kDeleteJobs[] = {{localizable("Delete Selected Jobs…"), "Del",
                                            "deleteJobsButtonClicked", "previousJobsWindowJobsTableView"}};

inline constexpr MenuItem kGrid[] = {
    {localizable("Refresh from Clipboard"), "F5", "clipboardDataWindowRefreshNowButtonPressed"},
    {localizable("Split…"), "Ctrl+K", "clipboardDataWindowSplitButtonPressed"},
    {localizable("Join…"), "Ctrl+J", "clipboardDataWindowJoinButtonPressed"},
    kLine,
};
inline constexpr MenuItem kCells[] = {
    {localizable("Trim…"), "Ctrl+T", "clipboardDataWindowTrimButtonPressed"},
    {localizable("Replace…"), "Ctrl+H", "clipboardDataWindowReplaceButtonPressed"},
    {localizable("Fill…"), "Ctrl+I", "clipboardDataWindowFillButtonPressed"},
    {localizable("Edit Cell…"), "Return", "rowsTableViewReturnKeyPressed", "clipboardDataTableView"},
    kLine,
};
inline constexpr MenuItem kFlips[] = {
    {localizable("Flip Horizontal"), nullptr, "flipHorizontalMenuItemClicked"},
    {localizable("Flip Vertical"), nullptr, "flipVerticalMenuItemClicked"},
    {localizable("Flip Diagonal"), nullptr, "flipDiagonalMenuItemClicked"},
};
inline constexpr MenuItem kLines[] = {
    {localizable("Add Line to the Top"), nullptr, "clipboardDataWindowShiftFillFromTopMenuItemClicked"},
    {localizable("Add Line to the Bottom"), nullptr, "clipboardDataWindowShiftFillFromBottomMenuItemClicked"},
    kLine,
    {localizable("Delete Line from the Top"), nullptr, "clipboardDataWindowShiftTruncateTopMenuItemClicked"},
    {localizable("Delete Line from the Bottom"), nullptr,
     "clipboardDataWindowShiftTruncateBottomMenuItemClicked"},
    {localizable("Delete Selected Lines"), "Ctrl+Del",
     "clipboardDataWindowDeleteSelectedLineMenuItemClicked"},
    kLine,
    {localizable("Move Line Up"), "Ctrl+Shift+Up", "clipboardDataWindowMoveUpMenuItemClicked"},
    {localizable("Move Line Down"), "Ctrl+Shift+Down", "clipboardDataWindowMoveDownMenuItemClicked"},
    kLine,
    {localizable("Merge Up…"), nullptr, "clipboardDataWindowMergeUpMenuItemClicked"},
    {localizable("Merge Down…"), nullptr, "clipboardDataWindowMergeDownMenuItemClicked"},
    {localizable("Join Lines…"), nullptr, "clipboardDataWindowJoinRowsMenuItemClicked"},
};
inline constexpr MenuItem kColumns[] = {
    {localizable("Add Column to the Left"), nullptr, "clipboardDataWindowShiftFillFromLeftMenuItemClicked"},
    {localizable("Add Column to the Right"), nullptr, "clipboardDataWindowShiftFillFromRightMenuItemClicked"},
    kLine,
    {localizable("Delete Column from the Left"), nullptr,
     "clipboardDataWindowShiftTruncateLeftMenuItemClicked"},
    {localizable("Delete Column from the Right"), nullptr,
     "clipboardDataWindowShiftTruncateRightMenuItemClicked"},
    {localizable("Delete Selected Columns"), "Ctrl+Shift+Del",
     "clipboardDataWindowDeleteSelectedColumnMenuItemClicked"},
    kLine,
    {localizable("Move Column Left"), "Ctrl+Shift+Left", "clipboardDataWindowMoveLeftMenuItemClicked"},
    {localizable("Move Column Right"), "Ctrl+Shift+Right", "clipboardDataWindowMoveRightMenuItemClicked"},
    kLine,
    {localizable("Merge Left…"), nullptr, "clipboardDataWindowMergeLeftMenuItemClicked"},
    {localizable("Merge Right…"), nullptr, "clipboardDataWindowMergeRightMenuItemClicked"},
    {localizable("Join Columns…"), nullptr, "clipboardDataWindowJoinColumnsMenuItemClicked"},
};
inline constexpr MenuItem kWindows[] = {
    {localizable("Quillet"), "Ctrl+1", "quilletWindowMenuItemClicked"},
    {localizable("Clipboard Data"), "Ctrl+2", "clipboardDataWindowMenuItemClicked"},
    {localizable("Previous Jobs"), "Ctrl+3", "previousJobsWindowMenuItemActionClicked"},
};
inline constexpr MenuItem kHelp[] = {
    {localizable("Tutorials"), "F1", "tutorialsMenuItemClicked"},
    {localizable("Support"), nullptr, "supportMenuItemClicked"},
};
inline constexpr MenuItem kRestore[] = {{localizable("Restore Operations"), "Ctrl+Return",
                                         "previousJobFileWindowRestoreOperationsButtonPressed"}};

// In the order of the menu; a code of 0 is a separator.
struct AddedOperation {
  std::int64_t code;
  const char* command;
};
inline constexpr AddedOperation kAddedOperations[] = {
    {OpReplaceCharacter, "addOperationReplaceCharacterMenuItemClicked"},
    {0, nullptr},
    {OpSkipLine, "addLineOperationSkipMenuItemClicked"},
    {OpTrimLine, "addLineOperationTrimMenuItemClicked"},
    {OpReplaceLine, "addLineOperationReplaceMenuItemClicked"},
    {OpJoinLines, "addOperationJoinLinesMenuItemClicked"},
    {0, nullptr},
    {OpSetInitialNumberOfColumns, "addOperationSetInitialNumberOfColumnsMenuItemClicked"},
    {OpTrimColumn, "addColumnOperationTrimMenuItemClicked"},
    {OpReplaceColumn, "addColumnOperationReplaceMenuItemClicked"},
    {OpReformatColumn, "addColumnOperationReformatMenuItemClicked"},
    {OpRearrangeColumns, "addOperationRearrangeColumnsMenuItemClicked"},
    {OpJoinColumns, "addOperationJoinColumnsMenuItemClicked"},
    {OpSetFinalNumberOfColumns, "addOperationSetFinalNumberOfColumnsMenuItemClicked"},
};

}  // namespace quillet::ui
