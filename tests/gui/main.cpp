#include <QApplication>
#include <gtest/gtest.h>

#include "ui/theme.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  quillet::ui::applyTheme(application, quillet::ui::Scheme::Light);
  return RUN_ALL_TESTS();
}
