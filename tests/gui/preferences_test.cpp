// The preferences, and what they do.
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <filesystem>

#include "gui/user.h"

namespace quillet::testing {
namespace {

constexpr const char* kWindow = "preferencesWindow";
constexpr const char* kDecode = "preferencesWindowDecodeErrorReplacementTextField";
constexpr const char* kEncode = "preferencesWindowEncodeErrorReplacementTextField";

class Preferences : public UserTest {
 protected:
  void open() {
    press(Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_TRUE(isShown(kWindow));
  }
  void clickClose() {
    click(*form(kWindow).findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Close));
    ASSERT_FALSE(isShown(kWindow));
  }
};

TEST_F(Preferences, AreNotModalAndBeginWithTheDefaults) {
  launch();
  open();
  EXPECT_EQ(form(kWindow).windowModality(), Qt::NonModal);
  EXPECT_EQ(form(kWindow).width(), 480);
  EXPECT_EQ(text(kDecode), "?");
  EXPECT_EQ(text(kEncode), "?");
  EXPECT_TRUE(isOn("preferencesWindowAutoSplitButton"));
  EXPECT_FALSE(isOn("preferencesWindowOpenLastLogFileAfterCompleteButton"));
  EXPECT_TRUE(isOn("preferencesWindowOpenOutputFolderAfterCompleteButton"));
}

// They have no menus.
TEST_F(Preferences, HaveTheKeysThatConcernEveryWindow) {
  launch();
  open();
  press(Qt::Key_W, Qt::ControlModifier);
  EXPECT_FALSE(isShown(kWindow));
  struct Key {
    Qt::Key key;
    const char* window;
  };
  for (const Key& key : {Key{Qt::Key_2, "clipboardDataWindow"}, Key{Qt::Key_3, "previousJobsWindow"}}) {
    open();
    press(key.key, Qt::ControlModifier);
    EXPECT_TRUE(isShown(key.window));
  }
  open();
  press(Qt::Key_1, Qt::ControlModifier);
  EXPECT_TRUE(form("window").isActiveWindow());
}

TEST_F(Preferences, StoreTheirTextsWhenTheyClose) {
  launch();
  open();
  fill(kDecode, QStringLiteral("!"));
  clickClose();
  open();
  fill(kEncode, QStringLiteral("#"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(isShown(kWindow)) << "by Escape";
  terminate();
  launch();
  open();
  EXPECT_EQ(text(kDecode), "!");
  EXPECT_EQ(text(kEncode), "#");
  fill(kDecode, QString());
  form(kWindow).close();  // as by the title bar
  settle();
  terminate();
  launch();
  open();
  EXPECT_EQ(text(kDecode), "") << "an empty one too";
}

TEST_F(Preferences, ReplaceWhatDoesNotDecode) {
  launchWithFiles({"a\n", "\xC3\xA9\xFF,b\n"});
  clickRow("filesTableView", 1);
  EXPECT_EQ(data("previewTableView", 0, 0), "é????");
  open();
  fill(kDecode, QStringLiteral("!"));
  clickClose();
  doubleClickRow("operationsTableView", 0);
  choose("initialOperationsWindowDecodeAsPopUpButton", "UTF-8");
  press(Qt::Key_Return);
  // Those behind the bad byte are taken with it, which is meant.
  EXPECT_EQ(data("previewTableView", 0, 0), "é!!!!");
}

TEST_F(Preferences, DoNotSplitNewFilesWhereThatIsOff) {
  launch();
  open();
  tick("preferencesWindowAutoSplitButton", false);
  clickClose();
  drop("filesTableView", files({home_.write("a.csv", "a,b\nc,d\n")}), {40, 100});
  clickRow("operationsTableView", 0);
  press(Qt::Key_Return);
  EXPECT_FALSE(isOn("initialOperationsWindowSplitContentsIntoLinesCheckbox"));
  EXPECT_FALSE(isOn("initialOperationsWindowSplitLinesIntoColumnsCheckbox"));
}

TEST_F(Preferences, OpenTheLogAndNotTheFilesAfterAJob) {
  std::filesystem::create_directory(home_.path("out"));
  launchWithFiles({"a\n"});
  open();
  tick("preferencesWindowOpenLastLogFileAfterCompleteButton");
  tick("preferencesWindowOpenOutputFolderAfterCompleteButton", false);
  press(Qt::Key_Escape);
  click("selectOutputFolderButton");
  answerPanel(home_.path("out"));
  click("runButton");
  ASSERT_TRUE(eventually([this] { return text("statusLabel") == "Job completed."; }));
  ASSERT_EQ(opened().size(), 1);
  EXPECT_EQ(std::filesystem::path(opened()[0].toLocalFile().toStdString()).filename(), "LastLog.txt");
}

}  // namespace
}  // namespace quillet::testing
