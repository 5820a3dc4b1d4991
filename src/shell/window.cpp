#include "shell/window.h"

#include <algorithm>
#include <utility>

#include "shell/controls.h"

namespace quillet {

Window* UserInterface::window(std::string_view name) const {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [name](const Window* window) { return window->name() == name; });
  return found == windows_.end() ? nullptr : *found;
}

Control* UserInterface::control(std::string_view name) const {
  for (const Window* window : windows_)
    if (Control* control = window->control(name)) return control;
  return nullptr;
}

Window::Window(UserInterface& interface, std::string name, std::u16string title)
    : interface_(interface), name_(std::move(name)), title_(std::move(title)) {
  interface.windows_.push_back(this);
}

void Window::setTitle(std::u16string title) {
  title_ = std::move(title);
  changed();
}

Control* Window::control(std::string_view name) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [name](const Control* control) { return control->name() == name; });
  return found == controls_.end() ? nullptr : *found;
}

void Window::show(std::optional<WindowName> sheetParent) {
  isShown_ = true;
  sheetParent_ = sheetParent;
  changed();
}

void Window::hide() {
  isShown_ = false;
  sheetParent_.reset();
  changed();
}

void Window::setSheetButtons(Button& done, Button& cancel) {
  doneButton_ = &done;
  cancelButton_ = &cancel;
}

void Window::changed() const {
  if (observer_) observer_();
}

}  // namespace quillet
