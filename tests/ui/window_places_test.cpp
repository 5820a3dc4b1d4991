#include "ui/window_places.h"

#include <QApplication>
#include <QMainWindow>
#include <QSplitter>
#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace quillet::ui {

namespace {

using quillet::testing::TemporaryFolder;

// A window with two panes side by side, as wide as asked.
class DividedWindow : public QMainWindow {
 public:
  explicit DividedWindow(const char* nameOfRight = "right") {
    splitter_ = new QSplitter;
    splitter_->setObjectName(QStringLiteral("split"));
    splitter_->setChildrenCollapsible(false);
    splitter_->addWidget(new QWidget);
    right_ = new QWidget;
    right_->setObjectName(QLatin1String(nameOfRight));
    splitter_->addWidget(right_);
    setCentralWidget(splitter_);
    resize(700, 400);
    splitter_->setSizes({350, 350});
  }
  QSplitter& splitter() { return *splitter_; }
  QWidget& right() { return *right_; }

 private:
  QSplitter* splitter_;
  QWidget* right_;
};

class WindowPlacesTest : public ::testing::Test {
 protected:
  void store(const QWidget& window) {
    WindowPlaces places(file());
    places.store(QStringLiteral("window"), window);
    EXPECT_TRUE(places.sync());
  }
  void restore(QWidget& window) { WindowPlaces(file()).restore(QStringLiteral("window"), window); }
  QString file() const { return QString::fromStdString(folder_.path("windows.ini")); }

  TemporaryFolder folder_;
};

TEST_F(WindowPlacesTest, AWindowIsMadeNoLargerThanItsScreen) {
  QMainWindow window;
  window.resize(1280, 700);
  fitOnScreen(window, {1024, 768});
  EXPECT_EQ(window.size(), QSize(1024, 700));
  window.resize(1280, 800);
  fitOnScreen(window, {1366, 768});
  EXPECT_EQ(window.width(), 1280);
  EXPECT_LT(window.height(), 768) << "its title is in sight";
  EXPECT_GT(window.height(), 700);
  window.setMinimumSize(960, 600);
  fitOnScreen(window, {640, 480});
  EXPECT_EQ(window.size(), QSize(960, 600)) << "but never too small for what it holds";
}

TEST_F(WindowPlacesTest, SizesOfWindowAndPanesComeBack) {
  {
    DividedWindow window;
    window.show();
    window.resize(600, 500);
    QApplication::processEvents();
    window.splitter().setSizes({120, 475});
    store(window);
  }
  DividedWindow window;
  restore(window);
  window.show();
  QApplication::processEvents();
  EXPECT_EQ(window.size(), QSize(600, 500));
  EXPECT_EQ(window.splitter().sizes()[0], 120);
}

TEST_F(WindowPlacesTest, AMaximisedWindowIsMaximisedAgain) {
  {
    DividedWindow window;
    window.showMaximized();
    store(window);
  }
  DividedWindow window;
  restore(window);
  EXPECT_TRUE(window.isMaximized());
}

TEST_F(WindowPlacesTest, AWindowThatWasNotShownKeepsItsPlace) {
  {
    DividedWindow window;
    window.show();
    window.resize(600, 500);
    store(window);
  }
  store(DividedWindow());
  DividedWindow window;
  restore(window);
  EXPECT_EQ(window.size(), QSize(600, 500));
}

TEST_F(WindowPlacesTest, WithoutAFileNothingChanges) {
  DividedWindow window;
  restore(window);
  EXPECT_EQ(window.size(), QSize(700, 400));
  EXPECT_FALSE(window.right().isHidden());
}

TEST_F(WindowPlacesTest, WhatCannotBeReadChangesNothing) {
  folder_.write("windows.ini", "[window]\ngeometry=5\nsplit=@ByteArray(\\x1\\x2)\n\xff\xfe[\n");
  DividedWindow window;
  restore(window);
  EXPECT_EQ(window.size(), QSize(700, 400));
  EXPECT_EQ(window.splitter().count(), 2);
}

TEST_F(WindowPlacesTest, ThePaneThatTheUserHidesStaysHiddenUntilShown) {
  for (const bool shown : {false, true}) {
    {
      DividedWindow window("clipboardDataWindowOperationsPane");
      window.right().setVisible(shown);
      window.show();
      store(window);
    }
    DividedWindow window("clipboardDataWindowOperationsPane");
    restore(window);
    EXPECT_EQ(window.right().isHidden(), !shown);
  }
}

TEST_F(WindowPlacesTest, APlaceThatCannotBeWrittenIsTold) {
  DividedWindow window;
  window.show();
  WindowPlaces places(QString::fromStdString(folder_.write("file", "") + "/windows.ini"));
  places.store(QStringLiteral("window"), window);
  EXPECT_FALSE(places.sync());
}

}  // namespace

}  // namespace quillet::ui
