// The application object that widgets need; main() of the tests of the windows has made it.
#pragma once

#include <QApplication>

namespace quillet::testing {

inline QApplication& qtApplication() {
  return *qApp;
}

}  // namespace quillet::testing
