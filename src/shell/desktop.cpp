#include "shell/desktop.h"

#include "platform/localization.h"

namespace quillet {

void Alerts::showErrorAlert(std::u16string_view message) {
  showAlert(localized(u"Error"), message);
}

void Alerts::showErrorAlertInWindow(std::u16string_view message, WindowName window) {
  showAlertInWindow(localized(u"Error"), message, window);
}

}  // namespace quillet
