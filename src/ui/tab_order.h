// In which order Tab goes through windows and sheets.
#pragma once

#include <vector>

#include "shell/window.h"

class QWidget;

namespace quillet::ui {

// Tab goes from each to the next. Those that are null are passed over.
void setTabOrder(const std::vector<QWidget*>& widgets);

// Down the sheet, then Done, Cancel and help; the first that is on has the focus. Each time that the sheet
// opens, as Qt orders the buttons by itself when the style changes.
void beginSheetWithTheFirstField(const Window& window, QWidget& sheet);

}  // namespace quillet::ui
