#include "ui/menus.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCoreApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <cstring>
#include <span>

#include "operations/operation_codes.h"
#include "operations/operation_description.h"
#include "platform/localization.h"
#include "ui/text_conversion.h"

namespace quillet::ui {

namespace {

// An item without a text is a separator. Shortcuts of a table work while it has the focus; the widget is then
// named.
struct Item {
  const char* text = nullptr;
  const char* shortcut = nullptr;
  const char* command = nullptr;
  const char* widget = nullptr;
};

constexpr Item kLine{};

constexpr Item kFileMain[] = {
    {localizable("Add Input Files…"), "Ctrl+O", "addInputFileMenuItemClicked"},
    {localizable("Remove Selected Files"), "Del", "removeSelectedInputFilesMenuItemClicked",
     "filesTableView"},
    {localizable("Show in File Manager"), "Ctrl+Shift+F", "showInFinderButtonPressed"},
    kLine,
    {localizable("Select Output Folder…"), "Ctrl+Shift+O", "selectOutputFolderMenuItemClicked"},
    {localizable("Show Output Folder"), nullptr, "showOutputFolderMenuItemClicked"},
    kLine,
};
constexpr Item kSaveJob[] = {{localizable("Save Job…"), "Ctrl+S", "saveJobMenuItemClicked"}, kLine};

constexpr Item kEditOperation[] = {
    {localizable("Edit Operation…"), "Return", "showOperationWindow", "operationsTableView"},
    {localizable("Delete Operation"), "Del", "deleteOperationButtonClicked", "operationsTableView"},
};

constexpr Item kJobMain[] = {
    {localizable("Run Job"), "Ctrl+R", "runButtonPressed"},
    {localizable("Open Last Log"), "Ctrl+L", "openLastLogFileMenuItemClicked"},
    {localizable("Clear Log"), nullptr, "clearLogMenuItemClicked"},
};
constexpr Item kDeleteJobs[] = {{localizable("Delete Selected Jobs…"), "Del", "deleteJobsButtonClicked",
                                 "previousJobsWindowJobsTableView"}};

constexpr Item kGrid[] = {
    {localizable("Refresh from Clipboard"), "F5", "clipboardDataWindowRefreshNowButtonPressed"},
    {localizable("Split…"), "Ctrl+K", "clipboardDataWindowSplitButtonPressed"},
    {localizable("Join…"), "Ctrl+J", "clipboardDataWindowJoinButtonPressed"},
    kLine,
};
constexpr Item kCells[] = {
    {localizable("Trim…"), "Ctrl+T", "clipboardDataWindowTrimButtonPressed"},
    {localizable("Replace…"), "Ctrl+H", "clipboardDataWindowReplaceButtonPressed"},
    {localizable("Fill…"), "Ctrl+I", "clipboardDataWindowFillButtonPressed"},
    {localizable("Edit Cell…"), "Return", "rowsTableViewReturnKeyPressed", "clipboardDataTableView"},
    kLine,
};
constexpr Item kFlips[] = {
    {localizable("Flip Horizontal"), nullptr, "flipHorizontalMenuItemClicked"},
    {localizable("Flip Vertical"), nullptr, "flipVerticalMenuItemClicked"},
    {localizable("Flip Diagonal"), nullptr, "flipDiagonalMenuItemClicked"},
};
constexpr Item kLines[] = {
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
constexpr Item kColumns[] = {
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
constexpr Item kWindows[] = {
    {localizable("Quillet"), "Ctrl+1", "quilletWindowMenuItemClicked"},
    {localizable("Clipboard Data"), "Ctrl+2", "clipboardDataWindowMenuItemClicked"},
    {localizable("Previous Jobs"), "Ctrl+3", "previousJobsWindowMenuItemActionClicked"},
};
constexpr Item kHelp[] = {
    {localizable("Tutorials"), "F1", "tutorialsMenuItemClicked"},
    {localizable("Support"), nullptr, "supportMenuItemClicked"},
};
constexpr Item kRestore[] = {{localizable("Restore Operations"), "Ctrl+Return",
                              "previousJobFileWindowRestoreOperationsButtonPressed"}};

// In the order of the menu; a code of 0 is a separator.
struct AddedOperation {
  std::int64_t code;
  const char* command;
};
constexpr AddedOperation kAddedOperations[] = {
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

QString translated(const char* text) {
  return QCoreApplication::translate("Menu", text);
}

class Builder {
 public:
  // Items of a menu bar have shortcuts; those of other menus show none, as each stands once only.
  enum class Shortcuts { No, Yes };

  Builder(QWidget& window, const MenuActions& actions, Shortcuts shortcuts)
      : window_(window), actions_(actions), shortcuts_(shortcuts) {}

  QMenu* menu(const char* title) {
    menu_ = new QMenu(title ? translated(title) : QString(), &window_);
    QObject::connect(menu_, &QMenu::aboutToShow, menu_, [menu = menu_, actions = actions_] {
      for (QAction* action : menu->actions())
        if (const QString command = action->property("command").toString(); !command.isEmpty())
          action->setEnabled(actions.isEnabled(command.toStdString()));
    });
    return menu_;
  }

  void add(std::span<const Item> items) {
    for (const Item& item : items) {
      if (item.text)
        addCommand(item);
      else
        menu_->addSeparator();
    }
  }

  QAction* addCommand(const Item& item) {
    QAction* action = addAction(translated(item.text), item.shortcut, item.widget);
    setCommand(*action, item.command);
    return action;
  }

  QAction* addAction(const QString& text, const char* shortcut, const char* widgetName = nullptr) {
    auto* action = new QAction(text, &window_);
    menu_->addAction(action);
    if (!shortcut || shortcuts_ == Shortcuts::No) return action;
    // The names of keys in the tables are no language's.
    action->setShortcut(QKeySequence::fromString(QLatin1String(shortcut), QKeySequence::PortableText));
    // A shortcut of a table is the table's own.
    if (auto* widget = widgetName ? window_.findChild<QWidget*>(QLatin1String(widgetName)) : nullptr) {
      action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
      widget->addAction(action);
      action->setParent(widget);
    }
    return action;
  }

  void addOperations() {
    for (const AddedOperation& operation : kAddedOperations) {
      if (!operation.command) {
        menu_->addSeparator();
        continue;
      }
      QAction* action =
          addAction(withoutMnemonics(labelOfOperation(operation.code)) + QStringLiteral("…"), nullptr);
      setCommand(*action, operation.command);
    }
  }

  void separator() { menu_->addSeparator(); }
  QMenu* current() const { return menu_; }

 private:
  void setCommand(QAction& action, const char* command) {
    action.setProperty("command", QLatin1String(command));
    const std::string name = command;
    QObject::connect(&action, &QAction::triggered, &action, [name, actions = actions_] {
      if (actions.isEnabled(name)) actions.perform(name);
    });
  }

  QWidget& window_;
  MenuActions actions_;
  Shortcuts shortcuts_;
  QMenu* menu_ = nullptr;
};

// What the widget with the focus can do by itself.
struct EditItem {
  const char* text;
  QKeySequence::StandardKey shortcut;
  const char* slot;
};
constexpr EditItem kEditItems[] = {
    {localizable("Cut"), QKeySequence::Cut, "cut"},
    {localizable("Copy"), QKeySequence::Copy, "copy"},
    {localizable("Paste"), QKeySequence::Paste, "paste"},
    {localizable("Delete"), QKeySequence::Delete, "del"},
    {localizable("Select All"), QKeySequence::SelectAll, "selectAll"},
};

bool hasSlot(const QObject* object, const char* slot) {
  const QByteArray signature = QByteArray(slot) + "()";
  return object && object->metaObject()->indexOfMethod(signature.constData()) >= 0;
}

// A field deletes too, though by no slot.
QLineEdit* fieldToDeleteIn(QWidget* widget, const char* slot) {
  return std::strcmp(slot, "del") == 0 ? qobject_cast<QLineEdit*>(widget) : nullptr;
}

bool canPerform(QWidget* widget, const char* slot) {
  return hasSlot(widget, slot) || fieldToDeleteIn(widget, slot);
}

void perform(QWidget* widget, const char* slot) {
  if (QLineEdit* field = fieldToDeleteIn(widget, slot))
    field->del();
  else if (hasSlot(widget, slot))
    QMetaObject::invokeMethod(widget, slot);
}

// The grid has no texts of its own to cut; all of it is selected by the application.
bool isGrid(const QWidget* widget) {
  return widget && widget->objectName() == QLatin1String("clipboardDataTableView");
}

// Where the keys of the menu's window go, also while its menu bar has them.
class KeysBehindMenu final : public QObject {
 public:
  explicit KeysBehindMenu(QMenu& menu) : QObject(&menu) {
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
      if (now && !qobject_cast<QMenuBar*>(now) && !qobject_cast<QMenu*>(now)) last_ = now;
    });
  }

  QWidget* widget() const {
    QWidget* focused = QApplication::focusWidget();
    if (!qobject_cast<QMenuBar*>(focused) && !qobject_cast<QMenu*>(focused)) return focused;
    return last_ && last_->window() == focused->window() && last_->isVisible() ? last_ : nullptr;
  }

 private:
  QPointer<QWidget> last_;
};

void addFocusItems(Builder& builder, QMenu& menu, const KeysBehindMenu& keys, const MenuActions& actions) {
  for (const EditItem& item : kEditItems) {
    QAction* action = builder.addAction(translated(item.text), nullptr);
    // Shown only: the widget with the focus has the key itself.
    action->setShortcut(item.shortcut);
    action->setShortcutContext(Qt::WidgetShortcut);
    const bool isSelectAll = std::strcmp(item.slot, "selectAll") == 0;
    QObject::connect(action, &QAction::triggered, action, [&keys, slot = item.slot, isSelectAll, actions] {
      QWidget* focused = keys.widget();
      if (isGrid(focused) && isSelectAll) return actions.perform("rowsTableViewSelectAllMenuItemClicked");
      perform(focused, slot);
    });
    QObject::connect(&menu, &QMenu::aboutToShow, action, [&keys, action, slot = item.slot, isSelectAll] {
      QWidget* focused = keys.widget();
      action->setEnabled(isGrid(focused) ? isSelectAll : canPerform(focused, slot));
    });
  }
}

void addUndoItems(Builder& builder, QMenu& menu, MenuOf menuOf, const KeysBehindMenu& keys,
                  const MenuActions& actions) {
  const bool ofGrid = menuOf == MenuOf::Clipboard;
  const auto add = [&](const char* word, const char16_t* wordWithName, QKeySequence::StandardKey key,
                       const std::function<QString()>& name, const std::function<void()>& run,
                       const char* slot) {
    QAction* action = builder.addAction(translated(word), nullptr);
    action->setShortcuts(key);
    action->setShortcutContext(ofGrid ? Qt::WindowShortcut : Qt::WidgetShortcut);
    QObject::connect(action, &QAction::triggered, action, [&keys, ofGrid, run, slot] {
      if (ofGrid)
        run();
      else
        perform(keys.widget(), slot);
    });
    QObject::connect(
        &menu, &QMenu::aboutToShow, action, [&keys, action, ofGrid, name, word, wordWithName, slot] {
          const QString what = ofGrid ? name() : QString();
          action->setText(what.isEmpty()
                              ? translated(word)
                              : withoutMnemonics(localizedFormat(wordWithName, {u16String(what)})));
          action->setEnabled(ofGrid ? !what.isEmpty() : canPerform(keys.widget(), slot));
        });
  };
  add(localizable("Undo"), localizable(u"Undo %@"), QKeySequence::Undo, actions.undoName, actions.undo,
      "undo");
  add(localizable("Redo"), localizable(u"Redo %@"), QKeySequence::Redo, actions.redoName, actions.redo,
      "redo");
}

void connectTo(QAction* action, const std::function<void()>& run) {
  QObject::connect(action, &QAction::triggered, action, [run] { run(); });
}

void addFileMenu(Builder& builder, QMenuBar& bar, MenuOf menuOf, const MenuActions& actions) {
  bar.addMenu(builder.menu("&File"));
  if (menuOf == MenuOf::Main) builder.add(kFileMain);
  if (menuOf != MenuOf::Jobs) builder.add(kSaveJob);
  connectTo(builder.addAction(translated("Close"), "Ctrl+W"), actions.close);
  connectTo(builder.addAction(translated("Quit"), "Ctrl+Q"), actions.quit);
}

void addEditMenu(Builder& builder, QMenuBar& bar, MenuOf menuOf, const MenuActions& actions) {
  QMenu* menu = builder.menu("&Edit");
  bar.addMenu(menu);
  const auto* keys = new KeysBehindMenu(*menu);
  addUndoItems(builder, *menu, menuOf, *keys, actions);
  builder.separator();
  addFocusItems(builder, *menu, *keys, actions);
  builder.separator();
  builder.addCommand({localizable("Preferences…"), "Ctrl+,", "preferencesMenuItemClicked"});
}

void addOperationMenu(Builder& builder, QMenuBar& bar, const MenuActions& actions) {
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

void addPreviewMenu(Builder& builder, QMenuBar& bar, const MenuActions& actions) {
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

void addJobMenu(Builder& builder, QMenuBar& bar, MenuOf menuOf, const MenuActions& actions) {
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

void addGridMenus(Builder& builder, QMenuBar& bar, const MenuActions& actions) {
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
  Builder builder(window, actions, Builder::Shortcuts::Yes);
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
QMenu* newMenu(QWidget* parent, const MenuActions& actions, const Item (&items)[count]) {
  Builder builder(*parent, actions, Builder::Shortcuts::No);
  builder.menu(nullptr);
  builder.add(items);
  return builder.current();
}

}  // namespace

QMenu* newAddOperationMenu(QWidget* parent, const MenuActions& actions) {
  Builder builder(*parent, actions, Builder::Shortcuts::No);
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
  Builder builder(*parent, actions, Builder::Shortcuts::No);
  builder.menu(nullptr);
  builder.add(kEditOperation);
  builder.separator();
  builder.addOperations();
  return builder.current();
}

QMenu* newJobsMenu(QWidget* parent, const MenuActions& actions) {
  Builder builder(*parent, actions, Builder::Shortcuts::No);
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
  const auto add = [&](std::span<const Item> items) {
    for (const Item& item : items)
      if (item.command) commands.emplace_back(item.command);
  };
  for (const auto items :
       {std::span<const Item>(kFileMain), std::span<const Item>(kSaveJob),
        std::span<const Item>(kEditOperation), std::span<const Item>(kJobMain),
        std::span<const Item>(kDeleteJobs), std::span<const Item>(kGrid), std::span<const Item>(kCells),
        std::span<const Item>(kFlips), std::span<const Item>(kLines), std::span<const Item>(kColumns),
        std::span<const Item>(kWindows), std::span<const Item>(kHelp), std::span<const Item>(kRestore)})
    add(items);
  for (const AddedOperation& operation : kAddedOperations)
    if (operation.command) commands.emplace_back(operation.command);
  commands.emplace_back("preferencesMenuItemClicked");
  return commands;
}

}  // namespace quillet::ui
