// The application object that widgets need, without a screen.
#pragma once

#include <QApplication>
#include <cstdlib>

namespace quillet::testing {

// Made by the first call. Left standing at the end: Qt wants it gone before main() ends or never.
inline QApplication& qtApplication() {
  static QApplication* const qt = [] {
    static int count = 1;
    static char name[] = "quillet_ui_tests";
    static char* arguments[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    return new QApplication(count, arguments);
  }();
  return *qt;
}

}  // namespace quillet::testing
