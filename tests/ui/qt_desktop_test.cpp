// What comes before a window: one after the other, and nothing is lost.
#include "ui/qt_desktop.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <gtest/gtest.h>

#include "shell/window.h"

namespace quillet::ui {

namespace {

class QtDesktopTest : public ::testing::Test {
 protected:
  QtDesktopTest() {
    desktop_.addWindow(main_, widget_);
    widget_.show();
  }
  // The titles of those that are shown, in the order of their making.
  std::vector<std::string> shown() {
    QApplication::processEvents();
    std::vector<std::string> titles;
    for (const QMessageBox* box : widget_.findChildren<QMessageBox*>())
      if (box->isVisible()) titles.push_back(box->text().toStdString());
    return titles;
  }
  void press(int button) {
    for (QMessageBox* box : widget_.findChildren<QMessageBox*>())
      if (box->isVisible()) return box->buttons().at(button)->click();
    FAIL() << "nothing is shown";
  }

  UserInterface interface_;
  Window main_{interface_, "window", u"Quillet"};
  QMainWindow widget_;
  QtDesktop desktop_{[] {}};
};

using Titles = std::vector<std::string>;

TEST_F(QtDesktopTest, AlertsOfAWindowComeOneAfterTheOther) {
  for (const char16_t* title : {u"one", u"two", u"three"})
    desktop_.showAlertInWindow(title, {}, WindowName::Main);
  for (const char* title : {"one", "two", "three"}) {
    EXPECT_EQ(shown(), Titles{title});
    press(0);
  }
  EXPECT_EQ(shown(), Titles());
}

// The box is about to close by then, and is not waited for.
TEST_F(QtDesktopTest, AnAnswerCanBringTheNextAlert) {
  desktop_.askInWindow(u"question", {}, {u"Yes", u"No"}, WindowName::Main,
                       [this](std::size_t) { desktop_.showAlertInWindow(u"answer", {}, WindowName::Main); });
  EXPECT_EQ(shown(), Titles{"question"});
  press(0);
  EXPECT_EQ(shown(), Titles{"answer"});
  desktop_.showAlertInWindow(u"later", {}, WindowName::Main);
  press(0);
  EXPECT_EQ(shown(), Titles{"later"});
  press(0);
  EXPECT_EQ(shown(), Titles());
}

}  // namespace

}  // namespace quillet::ui
