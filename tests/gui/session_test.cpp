// What is seen at the launch, and what of it is kept at the end: which windows, which of them is key.
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QStackedWidget>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "gui/user.h"

namespace quillet::testing {
namespace {

constexpr const char* kMain = "window";
constexpr const char* kClipboard = "clipboardDataWindow";
constexpr const char* kJobs = "previousJobsWindow";

class Session : public UserTest {
 protected:
  std::string active() {
    settle();
    const QWidget* window = QApplication::activeWindow();
    return window ? window->objectName().toStdString() : std::string();
  }
  Texts shown() {
    Texts result;
    for (const char* window : {kMain, kClipboard, kJobs})
      if (isShown(window)) result.emplace_back(window);
    return result;
  }
  void startAgain() {
    terminate();
    launch();
    settle();
  }
  // Of the clipboard window.
  std::string pageInFront() {
    return widget<QStackedWidget>("clipboardDataWindowStack").currentWidget()->objectName().toStdString();
  }
};

TEST_F(Session, TheFirstLaunchShowsTheMainWindowAloneWithItsHelp) {
  launch();
  EXPECT_EQ(shown(), Texts{kMain});
  EXPECT_EQ(active(), kMain);
  EXPECT_FALSE(hasAlert());
  EXPECT_TRUE(widget("rightSideHelpBox").isVisible());
  EXPECT_FALSE(widget("rightSideMainBox").isVisible());
  EXPECT_FALSE(widget("jobProgressIndicator").isVisible());
  EXPECT_FALSE(widget("clearStatusLabelButton").isVisible());
  EXPECT_EQ(text("statusLabel"), "");
}

TEST_F(Session, TheWindowThatHadTheKeysHasThemAgain) {
  QApplication::clipboard()->setText(QStringLiteral("x"));
  launch();
  for (const auto key : {Qt::Key_1, Qt::Key_2, Qt::Key_3}) press(key, Qt::ControlModifier);
  const Texts all{kMain, kClipboard, kJobs};
  const std::vector<std::pair<Qt::Key, const char*>> windows = {
      {Qt::Key_2, kClipboard}, {Qt::Key_1, kMain}, {Qt::Key_3, kJobs}};
  for (const auto& [key, window] : windows) {
    press(key, Qt::ControlModifier);
    ASSERT_EQ(active(), window);
    startAgain();
    EXPECT_EQ(active(), window);
    EXPECT_EQ(shown(), all);
  }
}

TEST_F(Session, TheMainWindowComesUpWhereNoneHadTheKeys) {
  launch();
  press(Qt::Key_3, Qt::ControlModifier);
  press(Qt::Key_W, Qt::ControlModifier);
  form(kMain).close();
  ASSERT_EQ(shown(), Texts{});
  startAgain();
  EXPECT_EQ(shown(), Texts{kMain});
  EXPECT_EQ(active(), kMain);
}

TEST_F(Session, AClosedMainWindowStaysClosedWhereAnotherHadTheKeys) {
  launch();
  press(Qt::Key_3, Qt::ControlModifier);
  form(kMain).close();
  startAgain();
  EXPECT_EQ(shown(), Texts{kJobs});
  EXPECT_EQ(active(), kJobs);
}

TEST_F(Session, WhatIsNoneOfTheThreeLeavesTheKeysWithTheLastOne) {
  struct Case {
    const char* what;
    std::function<void()> open;
  };
  for (const Case& one : {Case{"a sheet", [this] { chooseMenu(kMain, "Operation", "Skip Line…"); }},
                          Case{"the preferences", [this] { press(Qt::Key_Comma, Qt::ControlModifier); }}}) {
    launch();
    press(Qt::Key_3, Qt::ControlModifier);
    startAgain();
    ASSERT_EQ(active(), kJobs);
    press(Qt::Key_1, Qt::ControlModifier);
    one.open();
    ASSERT_NE(active(), kMain) << one.what;
    startAgain();
    EXPECT_EQ(active(), kJobs) << one.what;
    terminate();
  }
}

TEST_F(Session, TheClipboardIsReadAtTheLaunchWhereItsWindowComesBack) {
  launch();
  press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(pageInFront(), "clipboardDataWindowHelpBox");
  EXPECT_EQ(form(kClipboard).windowTitle(), QStringLiteral("Clipboard Data"));
  QApplication::clipboard()->setText(QStringLiteral("copied"));
  startAgain();
  EXPECT_EQ(pageInFront(), "clipboardDataWindowTextView");
  EXPECT_EQ(text("clipboardDataWindowTextView"), "copied");
  EXPECT_EQ(form(kClipboard).windowTitle(),
            QStringLiteral("Clipboard Data - 1 line, 1 column (6 characters total)"));
  EXPECT_FALSE(widget("clipboardDataWindowPerformToolbarItem").isEnabled());
  EXPECT_FALSE(widget("clipboardDataWindowJoinToolbarItem").isEnabled());
  EXPECT_TRUE(widget("clipboardDataWindowClearStatusLabelButton").isVisible());
}

TEST_F(Session, TheClipboardIsNotReadWhereItsWindowStaysClosed) {
  QApplication::clipboard()->setText(QStringLiteral("copied"));
  launch();
  startAgain();
  press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(pageInFront(), "clipboardDataWindowHelpBox");
  EXPECT_EQ(text("clipboardDataWindowTextView"), "");
}

TEST_F(Session, AClipboardWindowThatIsOpenedAgainShowsItsHelpAndKeepsItsGrid) {
  QApplication::clipboard()->setText(QStringLiteral("a,b"));
  launch();
  press(Qt::Key_2, Qt::ControlModifier);
  press(Qt::Key_F5);
  click("clipboardDataWindowSplitToolbarItem");
  fill("clipboardDataSplitWindowColumnSeparatorComboBox", QStringLiteral(","));
  press(Qt::Key_Return);
  ASSERT_EQ(pageInFront(), "clipboardDataTableView");
  const QString title = form(kClipboard).windowTitle();
  EXPECT_EQ(title, QStringLiteral("Clipboard Data - 1 line, 2 columns (3 characters total)"));
  press(Qt::Key_1, Qt::ControlModifier);
  press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(pageInFront(), "clipboardDataTableView") << "it was open";
  press(Qt::Key_W, Qt::ControlModifier);
  press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(pageInFront(), "clipboardDataWindowHelpBox");
  EXPECT_EQ(text("clipboardDataWindowStatusLabel"), "");
  EXPECT_FALSE(widget("clipboardDataWindowClearStatusLabelButton").isVisible());
  EXPECT_EQ(form(kClipboard).windowTitle(), title);
  EXPECT_TRUE(widget("clipboardDataWindowPerformToolbarItem").isEnabled());
}

TEST_F(Session, AFileThatIsGoneLeavesNothingSelectedWhereItWasTheLast) {
  const Texts paths = launchWithFiles({"a\n", "b\n"});
  clickRow("filesTableView", 1);
  terminate();
  std::filesystem::remove(home_.path("b.csv"));
  launch();
  settle();
  EXPECT_EQ(column("filesTableView"), Texts{"a.csv"});
  EXPECT_EQ(selection("filesTableView"), std::vector<int>{});
  EXPECT_TRUE(widget("rightSideHelpBox").isVisible());
  EXPECT_FALSE(hasAlert());
}

TEST_F(Session, OfSeveralSelectedFilesNoneIsSelectedAgain) {
  launchWithFiles({"a\n", "b\n"});
  press(Qt::Key_A, Qt::ControlModifier);
  startAgain();
  EXPECT_EQ(column("filesTableView").size(), 2u);
  EXPECT_EQ(selection("filesTableView"), std::vector<int>{});
  EXPECT_TRUE(widget("rightSideHelpBox").isVisible());
}

}  // namespace
}  // namespace quillet::testing
