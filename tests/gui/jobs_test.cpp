// Saved jobs: saving, finding, renaming, bringing back, deleting.
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextDocumentFragment>

#include "gui/user.h"
#include "support/raw_database.h"

namespace quillet::testing {
namespace {

constexpr const char* kJobs = "previousJobsWindowJobsTableView";
constexpr const char* kJobFiles = "previousJobsWindowFilesTableView";
constexpr const char* kName = "previousJobsPopoverDetailsTitleTextField";
constexpr const char* kSearch = "previousJobsWindowSearchField";
constexpr const char* kSearchType = "previousJobsWindowSearchTypeButton";
constexpr int kNameColumn = 1;

class Jobs : public UserTest {
 protected:
  Texts names() { return column(kJobs, kNameColumn); }
  void save(const char* name) {
    press(Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(isShown("saveJobWindow"));
    fill("saveJobWindowJobNameComboBox", QString::fromUtf8(name));
    press(Qt::Key_Return);
    ASSERT_FALSE(isShown("saveJobWindow"));
  }
  void addSkipLine() {
    chooseMenu("window", "Operation", "Skip Line…");
    press(Qt::Key_Return);
  }
  // Two files, and jobs of these names, the last one first in the list.
  void saveJobs(const std::vector<const char*>& names) {
    launchWithFiles({"1\n", "2\n"});
    clickRow("filesTableView", 0);
    addSkipLine();
    for (const char* name : names) save(name);
    press(Qt::Key_3, Qt::ControlModifier);
    ASSERT_TRUE(isShown("previousJobsWindow"));
  }
  QLineEdit* editor() { return widget<QTableView>(kJobs).viewport()->findChild<QLineEdit*>(); }
  int rowOf(const char* name) {
    const Texts all = names();
    return static_cast<int>(std::find(all.begin(), all.end(), name) - all.begin());
  }
};

TEST_F(Jobs, AreSavedInASheet) {
  launchWithFiles({"1\n"});
  press(Qt::Key_S, Qt::ControlModifier);
  ASSERT_TRUE(isShown("saveJobWindow"));
  EXPECT_EQ(form("saveJobWindow").windowModality(), Qt::WindowModal);
  EXPECT_EQ(form("saveJobWindow").parentWidget(), &form("window"));
  EXPECT_EQ(text("saveJobWindowInfoLabel"), "Any job with the same name will be overwritten.");
  click("saveJobWindowSaveButton");
  EXPECT_EQ(text("saveJobWindowInfoLabel"), "Job name is required.");
  EXPECT_TRUE(isShown("saveJobWindow"));
  fill("saveJobWindowJobNameComboBox", QStringLiteral("Weekly"));
  click("saveJobWindowSaveButton");
  EXPECT_FALSE(isShown("saveJobWindow"));
  EXPECT_EQ(names(), Texts{"Weekly"});
  click("saveJobButton");
  EXPECT_EQ(text("saveJobWindowJobNameComboBox"), "Weekly") << "the last name";
  press(Qt::Key_Escape);
  EXPECT_FALSE(isShown("saveJobWindow"));
}

TEST_F(Jobs, ComeBackAtTheNextStart) {
  saveJobs({"one"});
  terminate();
  launch();
  press(Qt::Key_3, Qt::ControlModifier);
  EXPECT_EQ(names(), Texts{"one"});
}

TEST_F(Jobs, AreSearchedByName) {
  saveJobs({"apples", "pears"});
  EXPECT_EQ(names().size(), 2u);
  fill(kSearch, QStringLiteral("app"));
  EXPECT_EQ(names().size(), 2u) << "it is searched on Return, or when the field is left";
  press(Qt::Key_Return);
  EXPECT_EQ(names(), Texts{"apples"});
  fill(kSearch, QString());
  focus(kJobs);
  EXPECT_EQ(names().size(), 2u);
}

TEST_F(Jobs, AreSearchedByDateAndByFile) {
  saveJobs({"apples", "pears"});
  choose(kSearchType, "Saved Since");
  EXPECT_EQ(widget<QLineEdit>(kSearch).placeholderText(), QStringLiteral("Format: 2018-05-30"));
  fill(kSearch, QStringLiteral("2999-01-01"));
  press(Qt::Key_Return);
  EXPECT_EQ(names(), Texts());
  fill(kSearch, QStringLiteral("2018-05-30"));
  press(Qt::Key_Return);
  EXPECT_EQ(names().size(), 2u);
  chooseWithTheMouse(kSearchType, "Files in Job");
  EXPECT_TRUE(widget(kSearch).hasFocus());
  fill(kSearch, QStringLiteral("pear"));
  press(Qt::Key_Return);
  EXPECT_EQ(names(), Texts{"pears"}) << "it looks in the names of the jobs, which is meant";
  EXPECT_EQ(widget<QLineEdit>(kSearch).placeholderText(), QStringLiteral("Files in job"));
}

TEST_F(Jobs, TheSelectedOneShowsItsFilesAndTheirOperations) {
  saveJobs({"one"});
  EXPECT_FALSE(widget(kName).isEnabled());
  EXPECT_FALSE(widget("previousJobsWindowDeleteJobsButton").isEnabled());
  clickRow(kJobs, 0);
  EXPECT_EQ(text(kName), "one");
  EXPECT_TRUE(widget("previousJobsWindowDeleteJobsButton").isEnabled());
  EXPECT_EQ(column(kJobFiles), (Texts{"a.csv", "b.csv"}));
  clickRow(kJobFiles, 0);
  EXPECT_EQ(column("previousJobFileWindowOperationsTableView"), (Texts{"Initial", "Skip Line", "Final"}));
  clickRow(kJobFiles, 1);
  EXPECT_EQ(column("previousJobFileWindowOperationsTableView"), (Texts{"Initial", "Final"}));
}

TEST_F(Jobs, AreRenamedInTheFieldByReturn) {
  saveJobs({"one"});
  clickRow(kJobs, 0);
  fill(kName, QStringLiteral("uno"));
  press(Qt::Key_Return);
  EXPECT_EQ(names(), Texts{"uno"});
  terminate();
  launch();
  press(Qt::Key_3, Qt::ControlModifier);
  EXPECT_EQ(names(), Texts{"uno"});
}

TEST_F(Jobs, AreRenamedInTheirPlaceByF2) {
  saveJobs({"one", "two"});
  clickRow(kJobs, rowOf("one"));
  press(Qt::Key_F2);
  ASSERT_NE(editor(), nullptr);
  EXPECT_TRUE(editor()->hasFocus());
  EXPECT_EQ(editor()->selectedText(), QStringLiteral("one"));
  type(QStringLiteral("uno"));
  press(Qt::Key_Return);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_LT(rowOf("uno"), 2);
  EXPECT_LT(rowOf("two"), 2);
  EXPECT_EQ(text(kName), "uno");
  terminate();
  launch();
  press(Qt::Key_3, Qt::ControlModifier);
  EXPECT_LT(rowOf("uno"), 2);
}

TEST_F(Jobs, AreRenamedInTheirPlaceByADoubleClickAndTheMenus) {
  saveJobs({"one"});
  doubleClickRow(kJobs, 0, kNameColumn);
  ASSERT_NE(editor(), nullptr);
  type(QStringLiteral("uno"));
  press(Qt::Key_Return);
  EXPECT_EQ(names(), Texts{"uno"});
  chooseMenu("previousJobsWindow", "Job", "Rename");
  ASSERT_NE(editor(), nullptr);
  type(QStringLiteral("eins"));
  press(Qt::Key_Return);
  EXPECT_EQ(names(), Texts{"eins"});
  auto& view = widget<TableView>(kJobs);
  chooseFromContextMenu(*view.viewport(), placeOf(view, 0), "Rename");
  ASSERT_NE(editor(), nullptr);
  type(QStringLiteral("un"));
  press(Qt::Key_Return);
  EXPECT_EQ(names(), Texts{"un"});
}

TEST_F(Jobs, AFieldIsEditedFromTheMenu) {
  launch();
  chooseMenu("window", "Window", "Previous Jobs");
  click("previousJobsWindowSearchField");
  type(QStringLiteral("ab"));
  chooseMenu("previousJobsWindow", "Edit", "Select All");
  EXPECT_TRUE(isMenuItemOn("previousJobsWindow", "Edit", "Delete"));
  chooseMenu("previousJobsWindow", "Edit", "Delete");
  EXPECT_EQ(text("previousJobsWindowSearchField"), "");
  chooseMenu("previousJobsWindow", "Edit", "Undo");
  EXPECT_EQ(text("previousJobsWindowSearchField"), "ab");
  focus("previousJobsWindowJobsTableView");
  EXPECT_FALSE(isMenuItemOn("previousJobsWindow", "Edit", "Delete"));
}

TEST_F(Jobs, EscapeLeavesTheName) {
  saveJobs({"one"});
  clickRow(kJobs, 0);
  press(Qt::Key_F2);
  type(QStringLiteral("uno"));
  press(Qt::Key_Escape);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(names(), Texts{"one"});
}

TEST_F(Jobs, TheDateIsNotEdited) {
  saveJobs({"one"});
  doubleClickRow(kJobs, 0, 0);
  EXPECT_EQ(editor(), nullptr);
}

TEST_F(Jobs, KeysOfTheTableBelongToTheEditorWhileANameIsEdited) {
  saveJobs({"one"});
  clickRow(kJobs, 0);
  press(Qt::Key_F2);
  press(Qt::Key_Home);
  press(Qt::Key_Delete);
  EXPECT_FALSE(hasAlert()) << "no job is deleted";
  press(Qt::Key_Return);
  EXPECT_EQ(names(), Texts{"ne"});
}

TEST_F(Jobs, SeveralAreNotRenamed) {
  saveJobs({"one", "two"});
  clickRow(kJobs, 0);
  clickRow(kJobs, 1, Qt::ControlModifier);
  press(Qt::Key_F2);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_FALSE(widget(kName).isEnabled());
}

TEST_F(Jobs, BringTheirOperationsOntoTheSelectedFiles) {
  saveJobs({"one"});
  clickRow(kJobs, 0);
  clickRow(kJobFiles, 0);
  EXPECT_EQ(text("previousJobsWindowRestoreOperationsButton"), "Restore Operations");
  press(Qt::Key_1, Qt::ControlModifier);
  clickRow("filesTableView", 1);
  EXPECT_EQ(titles(), (Texts{"Initial", "Final"}));
  click("previousJobsWindowRestoreOperationsButton");
  EXPECT_EQ(titles(), (Texts{"Initial", "Skip Line", "Final"}));
}

TEST_F(Jobs, WithoutASelectedFileBringingBackTellsSo) {
  saveJobs({"one"});
  clickRow(kJobs, 0);
  clickRow(kJobFiles, 0);
  press(Qt::Key_1, Qt::ControlModifier);
  auto& files = widget<TableView>("filesTableView");
  click(*files.viewport(), {40, files.viewport()->height() - 10});
  clickRow(kJobFiles, 0);
  press(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(alert().text().toStdString(),
            "Select an input file in the main window to restore operations to.");
  EXPECT_EQ(alert().parentWidget(), &form("previousJobsWindow"));
}

TEST_F(Jobs, ADoubleClickOnAFileTellsItsPath) {
  saveJobs({"one"});
  clickRow(kJobs, 0);
  doubleClickRow(kJobFiles, 0);
  EXPECT_EQ(alert().text().toStdString(), "Input File Path");
  EXPECT_EQ(alert().informativeText().toStdString(), home_.path("a.csv"));
  answer("OK");
}

// A name may look like a page.
TEST_F(Jobs, APathIsToldAsItIs) {
  const std::string path = home_.write("a<b>bold<br>.csv", "1\n");
  launch({path});
  save("one");
  press(Qt::Key_3, Qt::ControlModifier);
  clickRow(kJobs, 0);
  doubleClickRow(kJobFiles, 0);
  EXPECT_EQ(alert().informativeText().toStdString(), path);
  for (const QLabel* label : alert().findChildren<QLabel*>())
    EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
  answer("OK");
  const QString tip = QString::fromStdString(data("operationsTableView", 1, 0, Qt::ToolTipRole));
  EXPECT_NE(QTextDocumentFragment::fromHtml(tip).toPlainText().indexOf(QLatin1String("a<b>bold<br>.csv")), -1)
      << tip.toStdString();
}

// A new name empties the list of files, and leaves the job selected.
TEST_F(Jobs, ASelectedOneShowsItsFilesAgainByAClick) {
  saveJobs({"one"});
  auto& files = widget<TableView>(kJobFiles);
  const QString asksForJob = files.emptyText();
  clickRow(kJobs, 0);
  ASSERT_EQ(column(kJobFiles), (Texts{"a.csv", "b.csv"}));
  for (const bool byKey : {false, true}) {
    press(Qt::Key_3, Qt::ControlModifier);
    ASSERT_EQ(column(kJobFiles), Texts());
    EXPECT_EQ(selection(kJobs), std::vector{0});
    EXPECT_EQ(files.emptyText(), QString()) << "one is selected";
    if (byKey) {
      focus(kJobs);
      press(Qt::Key_Space);
    } else {
      clickRow(kJobs, 0);
    }
    EXPECT_EQ(column(kJobFiles), (Texts{"a.csv", "b.csv"})) << byKey;
  }
  clickRow(kJobs, 0, Qt::ControlModifier);
  EXPECT_EQ(files.emptyText(), asksForJob);
}

TEST_F(Jobs, TheSearchTellsThatFilesAreLookedForInNames) {
  saveJobs({"one"});
  EXPECT_EQ(widget(kSearchType).toolTip(), QString());
  chooseWithTheMouse(kSearchType, "Files in Job");
  EXPECT_EQ(widget(kSearchType).toolTip(), QStringLiteral("Looks in job names"));
  EXPECT_EQ(widget<QComboBox>(kSearchType).itemData(2, Qt::ToolTipRole).toString(),
            QStringLiteral("Looks in job names"));
}

// While it is open its bar has the keys.
TEST_F(Jobs, AFieldIsEditedFromTheMenuOpenedByItsMnemonic) {
  saveJobs({"one"});
  click(kSearch);
  type(QStringLiteral("ab"));
  chooseByKeys(Qt::Key_E, "Select All");
  EXPECT_EQ(widget<QLineEdit>(kSearch).selectedText(), QStringLiteral("ab"));
  chooseByKeys(Qt::Key_E, "Cut");
  EXPECT_EQ(text(kSearch), "");
  chooseByKeys(Qt::Key_E, "Undo");
  EXPECT_EQ(text(kSearch), "ab");
}

// Jobs of an older way of keeping them have settings instead of operations.
TEST_F(Jobs, ADoubleClickOnAFileOfAnOldJobShowsItsSettings) {
  launchWithFiles({"1\n"});
  save("old");
  RawDatabase(home_.path("Documents/quillet.db")).rows("update jobs set flags = 0");
  press(Qt::Key_3, Qt::ControlModifier);
  clickRow(kJobs, 0);
  doubleClickRow(kJobFiles, 0);
  ASSERT_TRUE(isShown("previousJobFileWindow"));
  EXPECT_EQ(form("previousJobFileWindow").parentWidget(), &form("previousJobsWindow"));
  EXPECT_EQ(text("previousJobFileWindowFilePathLabel"), home_.path("a.csv"));
  EXPECT_NE(text("previousJobFileWindowDetailsLabel"), "");
  press(Qt::Key_Return);
  EXPECT_FALSE(isShown("previousJobFileWindow")) << "Close is its only button";
  doubleClickRow(kJobFiles, 0);
  press(Qt::Key_Escape);
  EXPECT_FALSE(isShown("previousJobFileWindow"));
  EXPECT_FALSE(widget("previousJobsWindowRestoreOperationsButton").isEnabled());
}

TEST_F(Jobs, AreDeletedAfterAQuestion) {
  saveJobs({"one", "two", "three"});
  clickRow(kJobs, 0);
  const std::string first = names()[0];
  click("previousJobsWindowDeleteJobsButton");
  EXPECT_EQ(alert().text().toStdString(), "Delete the selected jobs?");
  EXPECT_EQ(alert().windowModality(), Qt::WindowModal);
  answer("Cancel");
  EXPECT_EQ(names().size(), 3u);
  focus(kJobs);
  press(Qt::Key_Delete);
  EXPECT_TRUE(hasAlert());
  press(Qt::Key_Escape);
  EXPECT_EQ(names().size(), 3u) << "Escape is Cancel";
  press(Qt::Key_Delete);
  answer("Delete");
  EXPECT_EQ(names().size(), 2u);
  EXPECT_EQ(rowOf(first.c_str()), 2) << "it is gone";
  clickRow(kJobs, 0);
  clickRow(kJobs, 1, Qt::ShiftModifier);
  chooseMenu("previousJobsWindow", "Job", "Delete Selected Jobs…");
  answer("Delete");
  EXPECT_EQ(names(), Texts());
}

TEST_F(Jobs, OfTheClipboardArePerformed) {
  launch();
  QApplication::clipboard()->setText(QStringLiteral("a,b"));
  press(Qt::Key_2, Qt::ControlModifier);
  press(Qt::Key_F5);
  press(Qt::Key_K, Qt::ControlModifier);
  fill("clipboardDataSplitWindowColumnSeparatorComboBox", QStringLiteral(","));
  press(Qt::Key_Return);
  click("clipboardDataWindowSaveToolbarItem");
  EXPECT_EQ(form("saveJobWindow").parentWidget(), &form("clipboardDataWindow"));
  fill("saveJobWindowJobNameComboBox", QStringLiteral("cut"));
  press(Qt::Key_Return);
  QApplication::clipboard()->setText(QStringLiteral("c,d,e"));
  press(Qt::Key_F5);
  press(Qt::Key_3, Qt::ControlModifier);
  clickRow(kJobs, 0);
  EXPECT_EQ(text("previousJobsWindowRestoreOperationsButton"), "Perform Operations");
  EXPECT_TRUE(isMenuItemOn("previousJobsWindow", "Job", "Perform Operations"));
  click("previousJobsWindowRestoreOperationsButton");
  EXPECT_EQ(widget<QTableView>("clipboardDataTableView").model()->columnCount(), 3);
}

TEST_F(Jobs, ANameThatIsLeftWithoutReturnRenamesNothing) {
  saveJobs({"one", "two"});
  clickRow(kJobs, rowOf("one"));
  fill(kName, QStringLiteral("uno"));
  press(Qt::Key_Tab);
  EXPECT_EQ(names(), (Texts{"two", "one"}));
  fill(kName, QStringLiteral("uno"));
  clickRow(kJobs, rowOf("two"));
  EXPECT_EQ(names(), (Texts{"two", "one"}));
  EXPECT_EQ(text(kName), "two");
}

TEST_F(Jobs, AreSearchedWhenTheFieldIsLeft) {
  saveJobs({"apples", "pears"});
  fill(kSearch, QStringLiteral("pear"));
  EXPECT_EQ(names().size(), 2u) << "not with each key";
  press(Qt::Key_Tab);
  EXPECT_EQ(names(), Texts{"pears"});
}

TEST_F(Jobs, SeveralShowNoFilesAndCanBeDeleted) {
  saveJobs({"one", "two"});
  clickRow(kJobs, 0);
  EXPECT_EQ(column(kJobFiles).size(), 2u);
  EXPECT_TRUE(widget("previousJobsWindowDeleteJobsButton").isEnabled());
  clickRow(kJobs, 1, Qt::ControlModifier);
  EXPECT_EQ(column(kJobFiles), Texts());
  EXPECT_EQ(column("previousJobFileWindowOperationsTableView"), Texts());
  EXPECT_EQ(text("previousJobsWindowRestoreOperationsButton"), "Restore Operations");
  EXPECT_TRUE(widget("previousJobsWindowDeleteJobsButton").isEnabled());
  clickRow(kJobs, 1, Qt::ControlModifier);
  clickRow(kJobs, 0, Qt::ControlModifier);
  EXPECT_FALSE(widget("previousJobsWindowDeleteJobsButton").isEnabled());
}

}  // namespace
}  // namespace quillet::testing
