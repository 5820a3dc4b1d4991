// The menu of what goes to the widget with the focus.
#pragma once

#include "ui/menu_builder.h"

namespace quillet::ui {

// The grid has no undo of its own, so in its window Undo and Redo are those of the last operation.
void addEditMenu(MenuBuilder& builder, QMenuBar& bar, MenuOf menuOf, const MenuActions& actions);

}  // namespace quillet::ui
