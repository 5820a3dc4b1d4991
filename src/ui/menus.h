// The menus of the three windows, from one table: which item stands where, its shortcut, and the command that
// it performs. Whether a command is on is asked when its menu opens, when what decides it changes, and again
// when it is chosen.
#pragma once

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <functional>
#include <string>
#include <vector>

#include "shell/app_delegate.h"

namespace quillet::ui {

enum class MenuOf { Main, Clipboard, Jobs };

// What the items do that are no command of the application.
struct MenuActions {
  std::function<void(const std::string& command)> perform;
  std::function<bool(const std::string& command)> isEnabled;
  std::function<void()> close;
  std::function<void()> quit;
  std::function<void()> about;
  std::function<void()> guide;
  std::function<void(int rows)> moveSelectedOperations;  // -1 up, 1 down
  std::function<bool()> hasSelectedOperations;
  std::function<void(int tag)> choosePreview;
  std::function<int()> previewType;
  std::function<void()> renameJob;
  std::function<void(bool shown)> showPerformedOperations;
  std::function<bool()> performedOperationsShown;
  std::function<QString()> undoName;  // empty where there is nothing to undo
  std::function<QString()> redoName;
  std::function<void()> undo;
  std::function<void()> redo;
  std::function<QString()> restoreTitle;
};

// Fills the window's menu bar.
void addMenus(QMainWindow& window, MenuOf menuOf, const MenuActions& actions);

// Asks for each item whether it is on, as when its menu opens: a shortcut is to follow without that.
void updateMenus(const QMenuBar& bar);

// The menu of the operations that can be added; of the toolbar's Perform; context menus. Owned by the parent.
QMenu* newAddOperationMenu(QWidget* parent, const MenuActions& actions);
QMenu* newPerformMenu(QWidget* parent, const MenuActions& actions);
QMenu* newLinesMenu(QWidget* parent, const MenuActions& actions);
QMenu* newColumnsMenu(QWidget* parent, const MenuActions& actions);
QMenu* newFilesMenu(QWidget* parent, const MenuActions& actions);
QMenu* newOperationsMenu(QWidget* parent, const MenuActions& actions);
QMenu* newJobsMenu(QWidget* parent, const MenuActions& actions);

// The commands that menus perform, for a test that each is there.
std::vector<std::string> commandsOfMenus();

}  // namespace quillet::ui
