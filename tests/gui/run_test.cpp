// Running a job: its folder, its files, and what is told afterwards.
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <filesystem>

#include "gui/user.h"
#include "ui/theme.h"

namespace quillet::testing {
namespace {

class Run : public UserTest {
 protected:
  std::string folder() {
    std::filesystem::create_directory(home_.path("out"));
    return home_.path("out");
  }
  void chooseFolder() {
    const std::string path = folder();
    click("selectOutputFolderButton");
    answerPanel(path);
  }
  // Until the run has told its end.
  void waitForTheEnd() {
    ASSERT_TRUE(eventually([this] { return text("statusLabel").rfind("Job ", 0) == 0; }))
        << text("statusLabel");
    settle();
  }
  std::string written(const std::string& name) { return home_.read("out/" + name); }
};

TEST_F(Run, WritesTheFilesToTheFolderThatIsChosen) {
  launchWithFiles({"a,b\n1,2\n"});
  EXPECT_EQ(widget("selectOutputFolderButton").toolTip().toStdString(), "No output folder chosen yet");
  chooseFolder();
  EXPECT_EQ(widget("selectOutputFolderButton").toolTip().toStdString(), home_.path("out"));
  click("runButton");
  waitForTheEnd();
  EXPECT_EQ(text("statusLabel"), "Job completed.");
  EXPECT_EQ(written("a.csv"), "\"a\",\"b\"\n\"1\",\"2\"");
  ASSERT_FALSE(opened().empty());
  EXPECT_EQ(opened().back().toLocalFile().toStdString(), home_.path("out")) << "the output files are shown";
}

TEST_F(Run, ClearsItsStatus) {
  launchWithFiles({"a\n"});
  EXPECT_FALSE(widget("clearStatusLabelButton").isVisible());
  chooseFolder();
  press(Qt::Key_R, Qt::ControlModifier);
  waitForTheEnd();
  click("clearStatusLabelButton");
  EXPECT_EQ(text("statusLabel"), "");
  EXPECT_FALSE(widget("clearStatusLabelButton").isVisible());
}

TEST_F(Run, OfSeveralFilesWritesEach) {
  launchWithFiles({"a,b\n", "c;d\n", "e\n"});
  chooseFolder();
  click("runButton");
  waitForTheEnd();
  EXPECT_EQ(written("a.csv"), "\"a\",\"b\"");
  EXPECT_EQ(written("c.csv"), "\"e\"");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home_.path("out")), {}), 3);
}

TEST_F(Run, GoesThroughTheOperations) {
  launchWithFiles({"# note\na,b\nc,d\n"});
  chooseFromButton("addOperationButton", "Skip Line…");
  choose("skipLineOperationWindowSkipIfPopUpButton", "If Starts With");
  fill("skipLineOperationWindowTextField", QStringLiteral("#"));
  press(Qt::Key_Return);
  doubleClickRow("operationsTableView", 2);
  tick("finalOperationsWindowAddQuotesCheckbox", false);
  fill("finalOperationsWindowColumnSeparatorComboBox", QStringLiteral("\\t"));
  fill("finalOperationsWindowFileNameTextField", QStringLiteral("clean.txt"));
  press(Qt::Key_Return);
  chooseFolder();
  click("runButton");
  waitForTheEnd();
  EXPECT_EQ(written("clean.txt"), "a\tb\nc\td");
}

TEST_F(Run, WithoutAFolderAsksForOneAndStartsAtTheNextPress) {
  launchWithFiles({"a\n"});
  click("runButton");
  EXPECT_EQ(panel().windowModality(), Qt::WindowModal);
  EXPECT_EQ(panel().parentWidget(), &form("window"));
  answerPanel(folder());
  EXPECT_EQ(text("statusLabel"), "");
  click("runButton");
  waitForTheEnd();
  EXPECT_EQ(written("a.csv"), "\"a\"");
}

TEST_F(Run, AFolderThatIsGoneIsToldInASheetOfTheWindow) {
  launchWithFiles({"a\n"});
  chooseFolder();
  std::filesystem::remove(home_.path("out"));
  click("runButton");
  EXPECT_EQ(alert().windowModality(), Qt::WindowModal);
  EXPECT_EQ(alert().parentWidget(), &form("window"));
  EXPECT_EQ(alert().informativeText().toStdString(),
            "Output folder does not exist \"" + home_.path("out") + "\" []");
}

// The panel waits for the end of the alert; and no key of the window goes on behind the two.
TEST_F(Run, AFolderThatIsGoneIsToldBeforeAnotherIsAskedFor) {
  launchWithFiles({"a\n"});
  chooseFolder();
  std::filesystem::remove(home_.path("out"));
  focus("filesTableView");
  press(Qt::Key_R, Qt::ControlModifier);
  ASSERT_TRUE(hasAlert());
  for (const QFileDialog* panel : form("window").findChildren<QFileDialog*>())
    EXPECT_FALSE(panel->isVisible());
  menuItem("window", "File", "Remove Selected Files").trigger();
  EXPECT_EQ(column("filesTableView").size(), 1u);
  answer("OK");
  EXPECT_EQ(panel().parentWidget(), &form("window"));
  answerPanel(folder());
  menuItem("window", "File", "Remove Selected Files").trigger();
  EXPECT_EQ(column("filesTableView").size(), 0u) << "the window has its keys again";
}

// Each of these texts is longer than a line.
TEST_F(Run, AlertsShowTheWholeOfTheirTexts) {
  launchWithFiles({"a\n"});
  for (const char* operation : {"Skip Line…", "Trim Line…", "Reformat Column…"}) {
    chooseMenu("window", "Operation", operation);
    QWidget& sheet = *QApplication::activeModalWidget();
    click(*sheet.findChild<QToolButton*>());
    for (const QLabel* label : alert().findChildren<QLabel*>()) {
      if (label->text().isEmpty()) continue;
      EXPECT_GE(label->height(), label->heightForWidth(label->width())) << label->text().toStdString();
      EXPECT_TRUE(label->wordWrap() || label->width() >= label->sizeHint().width())
          << label->text().toStdString();
    }
    EXPECT_GE(alert().width(), 320);
    answer("OK");
    press(Qt::Key_Escape);
  }
}

TEST_F(Run, WithoutFilesTellsWhatIsMissingInASheetOfTheWindow) {
  launch();
  click("runButton");
  EXPECT_EQ(alert().text().toStdString(), "Add at least one input file.");
  EXPECT_EQ(alert().windowModality(), Qt::WindowModal);
  EXPECT_EQ(alert().parentWidget(), &form("window"));
  press(Qt::Key_Return);
  EXPECT_FALSE(hasAlert());
  EXPECT_FALSE(isMenuItemOn("window", "Job", "Run Job"));
}

TEST_F(Run, ItsLogIsOpened) {
  launchWithFiles({"a\n"});
  press(Qt::Key_L, Qt::ControlModifier);
  EXPECT_EQ(alert().text().toStdString(), "Last log file does not exist yet");
  EXPECT_EQ(alert().windowModality(), Qt::ApplicationModal);
  answer("OK");
  chooseFolder();
  click("runButton");
  waitForTheEnd();
  chooseMenu("window", "Job", "Open Last Log");
  const std::string path = opened().back().toLocalFile().toStdString();
  EXPECT_EQ(std::filesystem::path(path).filename(), "LastLog.txt");
  EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(Run, ShowsItsFolderFromTheMenu) {
  launchWithFiles({"a\n"});
  chooseFolder();
  chooseMenu("window", "File", "Show Output Folder");
  ASSERT_FALSE(opened().empty());
  EXPECT_EQ(opened().back().toLocalFile().toStdString(), home_.path());
}

TEST_F(Run, TheWindowAnswersMeanwhile) {
  std::string large;
  for (int line = 0; line < 200'000; ++line) large += "some,cells,of a line\n";
  launchWithFiles({large});
  chooseFolder();
  click("runButton");
  EXPECT_NE(text("statusLabel"), "Job completed.") << "it goes on";
  press(Qt::Key_3, Qt::AltModifier);
  EXPECT_EQ(text("previewTypePopUpButton"), "Output as Table");
  waitForTheEnd();
}

TEST_F(Run, TheFolderPanelIsASheetThatAsksForOneFolder) {
  launchWithFiles({"a\n"});
  click("selectOutputFolderButton");
  EXPECT_EQ(panel().windowTitle(), QStringLiteral("Select Output Folder"));
  EXPECT_EQ(panel().labelText(QFileDialog::Accept), QStringLiteral("Select Output Folder"));
  EXPECT_EQ(panel().fileMode(), QFileDialog::Directory);
  EXPECT_TRUE(panel().testOption(QFileDialog::ShowDirsOnly));
  EXPECT_FALSE(panel().testOption(QFileDialog::ReadOnly)) << "folders can be made";
  EXPECT_EQ(panel().windowModality(), Qt::WindowModal);
}

// The text is red after a job with warnings only where its preview warns, too, which is meant.
TEST_F(Run, IssuesThatThePreviewFindsAreToldInRed) {
  const Texts paths = launchWithFiles({"a\n"});
  chooseFolder();
  std::filesystem::remove(paths[0]);
  click("runButton");
  waitForTheEnd();
  const auto& label = widget("statusLabel");
  EXPECT_EQ(text("statusLabel"), "Job completed with issues. Check the log file.");
  EXPECT_EQ(label.palette().color(QPalette::WindowText), ui::coloursOf(label.palette()).red);
  EXPECT_TRUE(widget("clearStatusLabelButton").isVisible());
}

}  // namespace
}  // namespace quillet::testing
