// The two sides of a window have the same names: every control its widget, every menu item its command.
#include <QAbstractButton>
#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <map>

#include "gui/gui_application.h"
#include "ui/forms.h"
#include "ui/menus.h"

namespace quillet::testing {
namespace {

class Names : public GuiTest {
 protected:
  QMainWindow* mainWindow(const char* name) {
    return qobject_cast<QMainWindow*>(quillet().windows().widget(name));
  }
};

constexpr const char* kMainWindows[] = {"window", "clipboardDataWindow", "previousJobsWindow"};

TEST_F(Names, EveryControlHasItsWidget) {
  std::string missing;
  for (const QString& name : quillet().windows().controlsWithoutWidget()) missing += name.toStdString() + " ";
  EXPECT_EQ(missing, "");
  int count = 0;
  for (const Window* window : application().interface().windows())
    count += static_cast<int>(window->controls().size());
  EXPECT_GT(count, 120);
}

TEST_F(Names, AFormWithoutAWindowDoesNotExist) {
  EXPECT_EQ(ui::newForm("noSuchWindow"), nullptr);
  for (const Window* window : application().interface().windows())
    EXPECT_NE(ui::newForm(window->name()), nullptr) << window->name();
}

// A widget that has the name of a control's kind, but no control behind it, would do nothing.
TEST_F(Names, EveryButtonOfAFormHasItsControlOrItsOwnAction) {
  const std::vector<std::string> own = {
      "rightSideHelpBoxAddButton", "clipboardDataWindowHelpBoxRefreshButton",
      "clipboardDataWindowRefreshToolbarItem", "clipboardDataWindowSplitToolbarItem",
      "clipboardDataWindowSaveToolbarItem"};
  for (const Window* window : application().interface().windows())
    for (const auto* button : quillet().windows().widget(window->name())->findChildren<QAbstractButton*>()) {
      const std::string name = button->objectName().toStdString();
      const bool isQts = name.empty() || name.rfind("qt_", 0) == 0 || name == "ScrollLeftButton" ||
                         name == "ScrollRightButton";
      if (isQts || std::find(own.begin(), own.end(), name) != own.end()) continue;
      EXPECT_NE(application().interface().control(name), nullptr) << name;
    }
}

TEST_F(Names, EveryMenuItemHasItsCommand) {
  const auto commands = ui::commandsOfMenus();
  EXPECT_GT(commands.size(), 50u);
  for (const std::string& command : commands)
    EXPECT_TRUE(application().interface().commands().has(command)) << command;
}

TEST_F(Names, ShortcutsOfAWindowAreUnique) {
  for (const char* name : kMainWindows) {
    std::map<std::string, std::string> owners;
    for (const QAction* action : mainWindow(name)->findChildren<QAction*>()) {
      if (action->shortcut().isEmpty() || action->shortcutContext() != Qt::WindowShortcut) continue;
      const std::string keys = action->shortcut().toString().toStdString();
      const auto [found, added] = owners.emplace(keys, action->text().toStdString());
      EXPECT_TRUE(added) << name << " " << keys << ": " << found->second << ", "
                         << action->text().toStdString();
    }
    EXPECT_GT(owners.size(), 5u) << name;
  }
}

TEST_F(Names, MnemonicsOfAMenuBarAreUnique) {
  for (const char* name : kMainWindows) {
    std::vector<QKeySequence> seen;
    for (const QAction* action : mainWindow(name)->menuBar()->actions()) {
      const QKeySequence mnemonic = QKeySequence::mnemonic(action->text());
      EXPECT_FALSE(mnemonic.isEmpty()) << action->text().toStdString();
      EXPECT_EQ(std::count(seen.begin(), seen.end(), mnemonic), 0)
          << name << " " << action->text().toStdString();
      seen.push_back(mnemonic);
    }
  }
}

}  // namespace
}  // namespace quillet::testing
