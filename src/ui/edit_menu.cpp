#include "ui/edit_menu.h"

#include <QApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QPointer>
#include <cstring>

#include "platform/localization.h"
#include "ui/text_conversion.h"

namespace quillet::ui {

namespace {

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

void addFocusItems(MenuBuilder& builder, QMenu& menu, const KeysBehindMenu& keys,
                   const MenuActions& actions) {
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

void addUndoItems(MenuBuilder& builder, QMenu& menu, MenuOf menuOf, const KeysBehindMenu& keys,
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

}  // namespace

void addEditMenu(MenuBuilder& builder, QMenuBar& bar, MenuOf menuOf, const MenuActions& actions) {
  QMenu* menu = builder.menu("&Edit");
  bar.addMenu(menu);
  const auto* keys = new KeysBehindMenu(*menu);
  addUndoItems(builder, *menu, menuOf, *keys, actions);
  builder.separator();
  addFocusItems(builder, *menu, *keys, actions);
  builder.separator();
  builder.addCommand({localizable("Preferences…"), "Ctrl+,", "preferencesMenuItemClicked"});
}

}  // namespace quillet::ui
