#include <QApplication>
#include <gtest/gtest.h>

#include "ui/theme.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // No file manager is asked: what is revealed is opened, which the tests see. One test has a bus of its own.
  if (qEnvironmentVariableIsEmpty("QUILLET_TEST_BUS"))
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  quillet::ui::applyTheme(application, quillet::ui::Scheme::Light);
  return RUN_ALL_TESTS();
}
