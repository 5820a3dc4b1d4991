// The forms of the windows and sheets, one .ui file each, by the name of the window.
#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::ui {

// Null for a window without a form. Its widgets have the names of the controls.
std::unique_ptr<QWidget> newForm(std::string_view window);

// The names of all windows that have a form.
std::vector<std::string> namesOfForms();

}  // namespace quillet::ui
