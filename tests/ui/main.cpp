// The tests of the windows, on a screen that nobody sees.
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication qt(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
