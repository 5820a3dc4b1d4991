#include "ui/menu_builder.h"

#include <QCoreApplication>
#include <QKeySequence>

#include "operations/operation_description.h"
#include "ui/text_conversion.h"

namespace quillet::ui {

QString translated(const char* text) {
  return QCoreApplication::translate("Menu", text);
}

QMenu* MenuBuilder::menu(const char* title) {
  menu_ = new QMenu(title ? translated(title) : QString(), &window_);
  QObject::connect(menu_, &QMenu::aboutToShow, menu_, [menu = menu_, actions = actions_] {
    for (QAction* action : menu->actions())
      if (const QString command = action->property("command").toString(); !command.isEmpty())
        action->setEnabled(actions.isEnabled(command.toStdString()));
  });
  return menu_;
}

void MenuBuilder::add(std::span<const MenuItem> items) {
  for (const MenuItem& item : items) {
    if (item.text)
      addCommand(item);
    else
      menu_->addSeparator();
  }
}

QAction* MenuBuilder::addCommand(const MenuItem& item) {
  QAction* action = addAction(translated(item.text), item.shortcut, item.widget);
  setCommand(*action, item.command);
  return action;
}

QAction* MenuBuilder::addAction(const QString& text, const char* shortcut, const char* widgetName) {
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

void MenuBuilder::addOperations() {
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

void MenuBuilder::setCommand(QAction& action, const char* command) {
  action.setProperty("command", QLatin1String(command));
  const std::string name = command;
  QObject::connect(&action, &QAction::triggered, &action, [name, actions = actions_] {
    if (actions.isEnabled(name)) actions.perform(name);
  });
}

}  // namespace quillet::ui
