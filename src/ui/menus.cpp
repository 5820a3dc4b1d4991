#include "ui/menus.h"

#include <QAction>
#include <QActionGroup>
#include <QMenuBar>

#include "platform/localization.h"
#include "ui/edit_menu.h"
#include "ui/menu_builder.h"
#include "ui/menu_tables.h"
#include "ui/text_conversion.h"

namespace quillet::ui {

namespace {

void connectTo(QAction* action, const std::function<void()>& run) {
  QObject::connect(action, &QAction::triggered, action, [run] { run(); });
}

void addFileMenu(MenuBuilder& builder, QMenuBar& bar, MenuOf menuOf, const MenuActions& actions) {
  bar.addMenu(builder.menu("&File"));
  if (menuOf == MenuOf::Main) builder.add(kFileMain);
  if (menuOf != MenuOf::Jobs) builder.add(kSaveJob);
  connectTo(builder.addAction(translated("Close"), "Ctrl+W"), actions.close);
  connectTo(builder.addAction(translated("Quit"), "Ctrl+Q"), actions.quit);
}

void addOperationMenu(MenuBuilder& builder, QMenuBar& bar, const MenuActions& actions) {
  bar.addMenu(builder.menu("&Operation"));
  builder.addOperations();
  builder.separator();
  builder.add(kEditOperation);
  const auto addMove = [&](const char* text, const char* shortcut, int rows) {
    QAction* action = builder.addAction(translated(text), shortcut, "operationsTableView");
    connectTo(action, [actions, rows] { actions.moveSelectedOperations(rows); });
    QObject::connect(builder.current(), &QMenu::aboutToShow, action,
                     [action, actions] { action->setEnabled(actions.hasSelectedOperations()); });
  };
  addMove(localizable("Move Up"), "Alt+Up", -1);
  addMove(localizable("Move Down"), "Alt+Down", 1);
}

void addPreviewMenu(MenuBuilder& builder, QMenuBar& bar, const MenuActions& actions) {
  constexpr const char* kTypes[] = {localizable("Input as Text"), localizable("Input as Table"),
                                    localizable("Output as Table"), localizable("Output as Text")};
  QMenu* menu = builder.menu("&Preview");
  bar.addMenu(menu);
  auto* group = new QActionGroup(menu);
  for (int tag = 0; tag < 4; ++tag) {
    QAction* action =
        builder.addAction(translated(kTypes[tag]), QByteArray("Alt+").append(char('1' + tag)).constData());
    action->setCheckable(true);
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, action, [actions, tag] { actions.choosePreview(tag); });
    QObject::connect(menu, &QMenu::aboutToShow, action,
                     [action, actions, tag] { action->setChecked(actions.previewType() == tag); });
  }
}

void addJobMenu(MenuBuilder& builder, QMenuBar& bar, MenuOf menuOf, const MenuActions& actions) {
  QMenu* menu = builder.menu("&Job");
  bar.addMenu(menu);
  if (menuOf == MenuOf::Main) return builder.add(kJobMain);
  QAction* restore = builder.addCommand(kRestore[0]);
  QObject::connect(menu, &QMenu::aboutToShow, restore,
                   [restore, actions] { restore->setText(actions.restoreTitle()); });
  connectTo(builder.addAction(translated("Rename"), "F2", "previousJobsWindowJobsTableView"),
            actions.renameJob);
  builder.add(kDeleteJobs);
}

void addGridMenus(MenuBuilder& builder, QMenuBar& bar, const MenuActions& actions) {
  QMenu* menu = builder.menu("&Grid");
  bar.addMenu(menu);
  builder.add(kGrid);
  builder.add(kCells);
  builder.add(kFlips);
  builder.separator();
  QAction* pane = builder.addAction(translated("Performed Operations"), nullptr);
  pane->setCheckable(true);
  QObject::connect(pane, &QAction::triggered, pane,
                   [actions](bool shown) { actions.showPerformedOperations(shown); });
  QObject::connect(menu, &QMenu::aboutToShow, pane,
                   [pane, actions] { pane->setChecked(actions.performedOperationsShown()); });
  bar.addMenu(builder.menu("&Lines"));
  builder.add(kLines);
  bar.addMenu(builder.menu("&Columns"));
  builder.add(kColumns);
}

}  // namespace

void addMenus(QMainWindow& window, MenuOf menuOf, const MenuActions& actions) {
  MenuBuilder builder(window, actions, MenuBuilder::Shortcuts::Yes);
  QMenuBar& bar = *window.menuBar();
  addFileMenu(builder, bar, menuOf, actions);
  addEditMenu(builder, bar, menuOf, actions);
  if (menuOf == MenuOf::Main) {
    addOperationMenu(builder, bar, actions);
    addPreviewMenu(builder, bar, actions);
  }
  if (menuOf == MenuOf::Clipboard)
    addGridMenus(builder, bar, actions);
  else
    addJobMenu(builder, bar, menuOf, actions);
  bar.addMenu(builder.menu("&Window"));
  builder.add(kWindows);
  bar.addMenu(builder.menu("&Help"));
  builder.add(kHelp);
  connectTo(builder.addAction(translated("About Quillet"), nullptr), actions.about);
  connectTo(builder.addAction(translated("User Guide"), nullptr), actions.guide);
}

namespace {

template <std::size_t count>
QMenu* newMenu(QWidget* parent, const MenuActions& actions, const MenuItem (&items)[count]) {
  MenuBuilder builder(*parent, actions, MenuBuilder::Shortcuts::No);
  builder.menu(nullptr);
  builder.add(items);
  return builder.current();
}

}  // namespace

QMenu* newAddOperationMenu(QWidget* parent, const MenuActions& actions) {
  MenuBuilder builder(*parent, actions, MenuBuilder::Shortcuts::No);
  builder.menu(nullptr);
  builder.addOperations();
  return builder.current();
}

QMenu* newLinesMenu(QWidget* parent, const MenuActions& actions) {
  return newMenu(parent, actions, kLines);
}

QMenu* newColumnsMenu(QWidget* parent, const MenuActions& actions) {
  return newMenu(parent, actions, kColumns);
}

QMenu* newPerformMenu(QWidget* parent, const MenuActions& actions) {
  QMenu* menu = newMenu(parent, actions, kCells);
  const auto addSubmenu = [&](const char* title, QMenu* submenu) {
    submenu->setTitle(translated(title));
    menu->addMenu(submenu);
  };
  addSubmenu("Lines", newLinesMenu(parent, actions));
  addSubmenu("Columns", newColumnsMenu(parent, actions));
  addSubmenu("Flip", newMenu(parent, actions, kFlips));
  return menu;
}

QMenu* newFilesMenu(QWidget* parent, const MenuActions& actions) {
  return newMenu(parent, actions, {kFileMain[0], kFileMain[1], kFileMain[2]});
}

QMenu* newOperationsMenu(QWidget* parent, const MenuActions& actions) {
  MenuBuilder builder(*parent, actions, MenuBuilder::Shortcuts::No);
  builder.menu(nullptr);
  builder.add(kEditOperation);
  builder.separator();
  builder.addOperations();
  return builder.current();
}

QMenu* newJobsMenu(QWidget* parent, const MenuActions& actions) {
  MenuBuilder builder(*parent, actions, MenuBuilder::Shortcuts::No);
  QMenu* menu = builder.menu(nullptr);
  QAction* restore = builder.addCommand(kRestore[0]);
  QObject::connect(menu, &QMenu::aboutToShow, restore,
                   [restore, actions] { restore->setText(actions.restoreTitle()); });
  connectTo(builder.addAction(translated("Rename"), nullptr), actions.renameJob);
  builder.add(kDeleteJobs);
  return menu;
}

void updateMenus(const QMenuBar& bar) {
  for (const QAction* action : bar.actions())
    if (QMenu* menu = action->menu()) emit menu->aboutToShow();
}

std::vector<std::string> commandsOfMenus() {
  std::vector<std::string> commands;
  const auto add = [&](std::span<const MenuItem> items) {
    for (const MenuItem& item : items)
      if (item.command) commands.emplace_back(item.command);
  };
  for (const auto items : {std::span<const MenuItem>(kFileMain), std::span<const MenuItem>(kSaveJob),
                           std::span<const MenuItem>(kEditOperation), std::span<const MenuItem>(kJobMain),
                           std::span<const MenuItem>(kDeleteJobs), std::span<const MenuItem>(kGrid),
                           std::span<const MenuItem>(kCells), std::span<const MenuItem>(kFlips),
                           std::span<const MenuItem>(kLines), std::span<const MenuItem>(kColumns),
                           std::span<const MenuItem>(kWindows), std::span<const MenuItem>(kHelp),
                           std::span<const MenuItem>(kRestore)})
    add(items);
  for (const AddedOperation& operation : kAddedOperations)
    if (operation.command) commands.emplace_back(operation.command);
  commands.emplace_back("preferencesMenuItemClicked");
  return commands;
}

}  // namespace quillet::ui
