// Joins the controls of the application to the widgets of the same names: one way of doing it for each kind
// of control, none for a single window. What the control holds is shown; what the user does goes to the
// control.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

#include "shell/controls.h"

namespace quillet::ui {

// The controls of the window to widgets below the form. Returns the names of controls for which the form has
// no widget of the right kind; the application leaves none. What is changed by the application or selected by
// the user is told after it is shown.
std::vector<QString> bindControls(Window& window, QWidget& form, std::function<void()> changed = {});

// Of several pages in one place, the one that is shown: the last that its control does not hide.
void showPageInFront(QWidget& page);

}  // namespace quillet::ui
