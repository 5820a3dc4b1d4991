// Windows that come and go, and the session that the next start begins with.
#include <QSplitter>

#include "gui/user.h"

namespace quillet::testing {
namespace {

class Windows : public UserTest {};

TEST_F(Windows, AreReachedByTheirNumbers) {
  launch();
  press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_TRUE(form("clipboardDataWindow").isActiveWindow());
  press(Qt::Key_3, Qt::ControlModifier);
  EXPECT_TRUE(form("previousJobsWindow").isActiveWindow());
  press(Qt::Key_1, Qt::ControlModifier);
  EXPECT_TRUE(form("window").isActiveWindow());
}

TEST_F(Windows, CloseByTheKeyAndComeBack) {
  launchWithFiles({"a\n"});
  press(Qt::Key_2, Qt::ControlModifier);
  press(Qt::Key_W, Qt::ControlModifier);
  EXPECT_FALSE(isShown("clipboardDataWindow"));
  EXPECT_TRUE(isShown("window"));
  press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_TRUE(isShown("clipboardDataWindow"));
  chooseMenu("clipboardDataWindow", "File", "Close");
  EXPECT_FALSE(isShown("clipboardDataWindow"));
}

TEST_F(Windows, ComeBackWithTheSelectionOfTheLastSession) {
  const Texts paths = launchWithFiles({"a\n", "b\n", "c\n"});
  clickRow("filesTableView", 1);
  press(Qt::Key_3, Qt::ControlModifier);
  terminate();
  launch();
  settle();
  EXPECT_TRUE(isShown("window"));
  EXPECT_TRUE(isShown("previousJobsWindow"));
  EXPECT_FALSE(isShown("clipboardDataWindow"));
  EXPECT_EQ(column("filesTableView"), (Texts{"a.csv", "b.csv", "c.csv"}));
  EXPECT_EQ(selection("filesTableView"), std::vector{1});
  EXPECT_EQ(text("previewPanelInputFilePathLabel"), paths[1]);
}

TEST_F(Windows, QuitStoresTheSession) {
  launchWithFiles({"a\n", "b\n"});
  clickRow("filesTableView", 0);
  chooseFromButton("addOperationButton", "Trim Line…");
  press(Qt::Key_Return);
  press(Qt::Key_Q, Qt::ControlModifier);
  terminate();
  launch();
  settle();
  EXPECT_EQ(column("filesTableView").size(), 2u);
  EXPECT_EQ(titles(), (Texts{"Initial", "Trim Line", "Final"}));
}

TEST_F(Windows, KeepTheirSizeAndTheirPanes) {
  launchWithFiles({"a\n"});
  form("window").resize(1000, 640);
  settle();
  auto& split = widget<QSplitter>("mainSplitView");
  split.setSizes({300, 700});
  settle();
  const QList<int> sizes = split.sizes();
  terminate();
  launch();
  settle();
  EXPECT_EQ(form("window").size(), QSize(1000, 640));
  EXPECT_EQ(widget<QSplitter>("mainSplitView").sizes(), sizes);
}

// The window answers while the box is open: only a sheet of it.
TEST_F(Windows, AboutTellsTheVersionInASheet) {
  launch();
  QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
  chooseMenu("window", "Help", "About Quillet");
  EXPECT_EQ(alert().text(), QStringLiteral("Quillet 1.2.3"));
  EXPECT_EQ(alert().windowModality(), Qt::WindowModal);
  press(Qt::Key_Escape);
}

TEST_F(Windows, HelpOpensItsPage) {
  launch();
  press(Qt::Key_F1);
  ASSERT_EQ(opened().size(), 1);
  chooseMenu("window", "Help", "Support");
  EXPECT_EQ(opened().size(), 2);
}

}  // namespace
}  // namespace quillet::testing
