#include "shell/desktop.h"

#include "platform/localization.h"
#include "shell/window.h"

namespace quillet {

std::string nameOf(WindowName window) {
  switch (window) {
    case WindowName::Main:
      return "window";
    case WindowName::ClipboardData:
      return "clipboardDataWindow";
    case WindowName::PreviousJobs:
      return "previousJobsWindow";
    case WindowName::Preferences:
      return "preferencesWindow";
  }
  return "";
}

void Alerts::showErrorAlert(std::u16string_view message) {
  showAlert(localized(u"Error"), message);
}

void Alerts::showErrorAlertInWindow(std::u16string_view message, WindowName window) {
  showAlertInWindow(localized(u"Error"), message, window);
}

bool WindowServer::isKey(WindowName window) const {
  const Window* key = keyWindow();
  return key && key->name() == nameOf(window);
}

}  // namespace quillet
