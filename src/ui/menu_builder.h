// Fills menus from their tables.
#pragma once

#include <QAction>
#include <QMenu>
#include <QString>
#include <QWidget>
#include <span>
#include <string>

#include "ui/menu_tables.h"
#include "ui/menus.h"

namespace quillet::ui {

QString translated(const char* text);

// Of the menus of one window, which owns them. Items are asked whether they are on when their menu opens, and
// again when they are chosen.
class MenuBuilder {
 public:
  // Items of a menu bar have shortcuts; those of other menus show none, as each stands once only.
  enum class Shortcuts { No, Yes };

  MenuBuilder(QWidget& window, const MenuActions& actions, Shortcuts shortcuts)
      : window_(window), actions_(actions), shortcuts_(shortcuts) {}

  // A new menu, the current one from now on. Without a title for a context menu.
  QMenu* menu(const char* title);
  QMenu* current() const { return menu_; }

  void add(std::span<const MenuItem> items);
  QAction* addCommand(const MenuItem& item);
  QAction* addAction(const QString& text, const char* shortcut, const char* widgetName = nullptr);
  void addOperations();
  void separator() { menu_->addSeparator(); }

 private:
  void setCommand(QAction& action, const char* command);

  QWidget& window_;
  MenuActions actions_;
  Shortcuts shortcuts_;
  QMenu* menu_ = nullptr;
};

}  // namespace quillet::ui
