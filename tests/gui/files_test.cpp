// The list of input files: what brings files in, moves them and takes them out.
#include <QDataStream>
#include <QDropEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>

#include "gui/user.h"

namespace quillet::testing {
namespace {

constexpr const char* kFiles = "filesTableView";
constexpr const char* kRowsType = "application/x-quillet-inputfiles";

class Files : public UserTest {
 protected:
  Texts names() { return column(kFiles); }
};

TEST_F(Files, AreBroughtByADropOnTheEmptyList) {
  launch();
  const std::string path = home_.write("new.csv", "a,b\n");
  EXPECT_TRUE(drop(kFiles, files({path}), {40, 200}));
  EXPECT_EQ(names(), Texts{"new.csv"});
  EXPECT_EQ(selection(kFiles), std::vector{0});
  EXPECT_EQ(text("previewPanelInputFilePathLabel"), path);
  EXPECT_TRUE(widget("rightSideMainBox").isVisible());
}

TEST_F(Files, OneIsShownWithItsOperationsAndItsPreview) {
  launchWithFiles({"name,city\nAda,London\n"});
  EXPECT_EQ(names(), Texts{"a.csv"});
  EXPECT_EQ(selection(kFiles), std::vector{0});
  EXPECT_EQ(titles(), (Texts{"Initial", "Final"}));
  EXPECT_TRUE(widget("previewTableView").isVisible());
  EXPECT_EQ(column("previewTableView", 1), (Texts{"city", "London"}));
}

TEST_F(Files, StandWhereTheyAreDroppedAndAreSelected) {
  launchWithFiles({"1\n", "2\n"});
  EXPECT_TRUE(
      drop(kFiles, files({home_.write("x.csv", "x\n"), home_.write("y.csv", "y\n")}), gapBefore(kFiles, 1)));
  EXPECT_EQ(names(), (Texts{"a.csv", "x.csv", "y.csv", "b.csv"}));
  EXPECT_EQ(selection(kFiles), (std::vector{1, 2}));
}

TEST_F(Files, BelowTheLastGoToTheEnd) {
  launchWithFiles({"1\n", "2\n"});
  EXPECT_TRUE(drop(kFiles, files({home_.write("x.csv", "x\n")}), gapBefore(kFiles, 2)));
  EXPECT_EQ(names(), (Texts{"a.csv", "b.csv", "x.csv"}));
}

TEST_F(Files, StandInTheListOnce) {
  const Texts paths = launchWithFiles({"1\n", "2\n"});
  EXPECT_TRUE(drop(kFiles, files({paths[1], paths[0]}), gapBefore(kFiles, 0)));
  EXPECT_EQ(names(), (Texts{"a.csv", "b.csv"}));
}

TEST_F(Files, PlainTextIsTakenAndBringsNothing) {
  launchWithFiles({"1\n"});
  auto* data = new QMimeData;
  data->setText(QStringLiteral("/tmp/some.csv"));
  EXPECT_TRUE(drop(kFiles, data, gapBefore(kFiles, 1)));
  EXPECT_EQ(names(), Texts{"a.csv"});
}

TEST_F(Files, OtherDataIsRefused) {
  launchWithFiles({"1\n"});
  auto* data = new QMimeData;
  data->setData(QStringLiteral("image/png"), "x");
  EXPECT_FALSE(drop(kFiles, data, gapBefore(kFiles, 1)));
}

TEST_F(Files, AreChosenInThePanelOfThePlusButton) {
  launchWithFiles({"1\n"});
  const std::string path = home_.write("z.csv", "z\n");
  click("addInputFileButton");
  EXPECT_EQ(panel().windowModality(), Qt::WindowModal);
  EXPECT_EQ(panel().parentWidget(), &form("window"));
  EXPECT_EQ(panel().windowTitle(), QStringLiteral("Add Input File"));
  EXPECT_EQ(panel().labelText(QFileDialog::Accept), QStringLiteral("Add"));
  EXPECT_EQ(panel().fileMode(), QFileDialog::ExistingFiles);
  EXPECT_EQ(panel().nameFilters(), QStringList{QStringLiteral("Text files (*.txt *.tab *.csv)")});
  answerPanel(path);
  EXPECT_EQ(names(), (Texts{"a.csv", "z.csv"}));
  EXPECT_EQ(selection(kFiles), std::vector{1});
}

TEST_F(Files, AnEscapedPanelBringsNothing) {
  launchWithFiles({"1\n"});
  press(Qt::Key_O, Qt::ControlModifier);
  ASSERT_TRUE(panel().isVisible());
  press(Qt::Key_Escape);
  EXPECT_EQ(names(), Texts{"a.csv"});
}

TEST_F(Files, AreAddedFromTheHelpBoxWhileNoneIsThere) {
  launch();
  EXPECT_TRUE(widget("rightSideHelpBox").isVisible());
  EXPECT_FALSE(widget("rightSideMainBox").isVisible());
  EXPECT_EQ(text("rightSideHelpBoxAddButton"), "Add Input Files…");
  click("rightSideHelpBoxAddButton");
  answerPanel(home_.write("z.csv", "z\n"));
  EXPECT_EQ(names(), Texts{"z.csv"});
  EXPECT_FALSE(widget("rightSideHelpBox").isVisible());
}

TEST_F(Files, WithoutASelectedOneTheHelpIsShown) {
  launchWithFiles({"1\n", "2\n"});
  clickRow(kFiles, 0);
  EXPECT_FALSE(widget("rightSideHelpBox").isVisible());
  auto& view = widget<TableView>(kFiles);
  click(*view.viewport(), {40, view.viewport()->height() - 10});
  EXPECT_EQ(selection(kFiles), std::vector<int>());
  EXPECT_TRUE(widget("rightSideHelpBox").isVisible());
}

TEST_F(Files, AreDraggedWithTheMouse) {
  launchWithFiles({"1\n", "2\n", "3\n"});
  clickRow(kFiles, 2);
  dragRow(kFiles, 2, 0);
  EXPECT_EQ(names(), (Texts{"c.csv", "a.csv", "b.csv"}));
  EXPECT_EQ(selection(kFiles), std::vector{0});
}

// The list goes on below what is held at its edge, and the gap goes along.
TEST_F(Files, AreDraggedBeyondWhatIsInSight) {
  Texts paths;
  for (int file = 100; file < 160; ++file) paths.push_back(home_.write(std::to_string(file) + ".csv", "1\n"));
  launch(paths);
  auto& view = widget<QTableView>(kFiles);
  ASSERT_GT(view.verticalScrollBar()->maximum(), 0);
  view.scrollToTop();
  const QPoint edge(30, view.viewport()->height() - 3);
  const std::unique_ptr<QMimeData> rows(mimeDataOfRows(kRowsType, IndexSet{0}));
  QDragEnterEvent enter(edge, Qt::CopyAction, rows.get(), Qt::LeftButton, {});
  QApplication::sendEvent(view.viewport(), &enter);
  QDragMoveEvent move(edge, Qt::CopyAction, rows.get(), Qt::LeftButton, {});
  QApplication::sendEvent(view.viewport(), &move);
  EXPECT_TRUE(eventually(
      [&view] { return view.verticalScrollBar()->value() == view.verticalScrollBar()->maximum(); }));
  QDropEvent dropped(edge, Qt::CopyAction, rows.get(), Qt::LeftButton, {});
  QApplication::sendEvent(view.viewport(), &dropped);
  settle();
  EXPECT_EQ(names().back(), "100.csv");
}

// Of several, the block goes to the gap, and selected is what stands at the gap's row, which is meant.
TEST_F(Files, SeveralAreDraggedAsABlock) {
  launchWithFiles({"1\n", "2\n", "3\n", "4\n"});
  clickRow(kFiles, 2);
  clickRow(kFiles, 3, Qt::ShiftModifier);
  dragRow(kFiles, 3, 1);
  EXPECT_EQ(names(), (Texts{"a.csv", "c.csv", "d.csv", "b.csv"}));
  EXPECT_EQ(selection(kFiles), (std::vector{1, 2}));
}

TEST_F(Files, RowsOfAnotherProcessAreRefused) {
  launchWithFiles({"1\n", "2\n"});
  const auto rows = [](qint64 process) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << process << qint64{1} << qint64{1} << qint64{1};
    auto* data = new QMimeData;
    data->setData(QLatin1String(kRowsType), bytes);
    return data;
  };
  EXPECT_FALSE(drop(kFiles, rows(QCoreApplication::applicationPid() + 1), gapBefore(kFiles, 0)));
  EXPECT_EQ(names(), (Texts{"a.csv", "b.csv"}));
  EXPECT_TRUE(drop(kFiles, rows(QCoreApplication::applicationPid()), gapBefore(kFiles, 0)));
  EXPECT_EQ(names(), (Texts{"b.csv", "a.csv"}));
}

TEST_F(Files, RowsOfOtherTablesAreRefused) {
  launchWithFiles({"1\n", "2\n"});
  IndexSet rows{0};
  EXPECT_FALSE(
      drop(kFiles, mimeDataOfRows(QStringLiteral("application/x-quillet-operations"), rows), {30, 10}));
  EXPECT_FALSE(drop("operationsTableView", mimeDataOfRows(QLatin1String(kRowsType), rows), {30, 10}));
}

TEST_F(Files, GoUpAndDownWithTheAltKey) {
  launchWithFiles({"1\n", "2\n", "3\n"});
  clickRow(kFiles, 2);
  press(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(names(), (Texts{"a.csv", "c.csv", "b.csv"}));
  EXPECT_EQ(selection(kFiles), std::vector{1});
  press(Qt::Key_Up, Qt::AltModifier);
  press(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(names(), (Texts{"c.csv", "a.csv", "b.csv"}));
  press(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(names(), (Texts{"a.csv", "c.csv", "b.csv"}));
  press(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(names(), (Texts{"a.csv", "b.csv", "c.csv"}));
  EXPECT_EQ(selection(kFiles), std::vector{2});
  press(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(names(), (Texts{"a.csv", "b.csv", "c.csv"}));
}

TEST_F(Files, AreRemovedByTheDeleteKeyAndTheMinusButton) {
  launchWithFiles({"1\n", "2\n", "3\n"});
  clickRow(kFiles, 1);
  press(Qt::Key_Delete);
  EXPECT_EQ(names(), (Texts{"a.csv", "c.csv"}));
  clickRow(kFiles, 0);
  click("removeInputFilesButton");
  EXPECT_EQ(names(), Texts{"c.csv"});
  clickRow(kFiles, 0);
  chooseMenu("window", "File", "Remove Selected Files");
  EXPECT_EQ(names(), Texts());
  EXPECT_TRUE(widget("rightSideHelpBox").isVisible());
}

TEST_F(Files, TheContextMenuRemovesWhatTheRightClickSelects) {
  launchWithFiles({"1\n", "2\n"});
  clickRow(kFiles, 0);
  auto& view = widget<TableView>(kFiles);
  chooseFromContextMenu(*view.viewport(), placeOf(view, 1), "Remove Selected Files");
  EXPECT_EQ(names(), Texts{"a.csv"});
}

TEST_F(Files, SpaceLeavesTheSelectionAsItIs) {
  launchWithFiles({"1\n", "2\n"});
  clickRow(kFiles, 1);
  press(Qt::Key_Space);
  press(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(selection(kFiles), std::vector{1});
}

TEST_F(Files, ArrowsGoToTheNextFile) {
  const Texts paths = launchWithFiles({"1\n", "2\n"});
  clickRow(kFiles, 0);
  press(Qt::Key_Down);
  EXPECT_EQ(text("previewPanelInputFilePathLabel"), paths[1]);
}

TEST_F(Files, TheEndsOfAListAreReachedByTheirKeys) {
  launchWithFiles({"1\n", "2\n", "3\n", "4\n"});
  struct Walk {
    const char* keys;
    std::vector<int> selected;
  };
  // From row 1; big letters are with Shift: Home, End, Up, Down.
  const Walk walks[] = {{"e", {3}},     {"h", {0}},       {"hd", {1}},         {"eu", {2}},
                        {"H", {0, 1}},  {"E", {1, 2, 3}}, {"HE", {1, 2, 3}},   {"hD", {0, 1}},
                        {"eU", {2, 3}}, {"EU", {1, 2}},   {"hE", {0, 1, 2, 3}}};
  for (const Walk& walk : walks) {
    clickRow(kFiles, 1);
    for (const char letter : std::string(walk.keys)) {
      const bool shift = letter < 'a';
      const char key = shift ? static_cast<char>(letter + 32) : letter;
      press(key == 'h'   ? Qt::Key_Home
            : key == 'e' ? Qt::Key_End
            : key == 'u' ? Qt::Key_Up
                         : Qt::Key_Down,
            shift ? Qt::ShiftModifier : Qt::NoModifier);
    }
    EXPECT_EQ(selection(kFiles), walk.selected) << walk.keys;
  }
}

// One row alone is also reached, and Shift goes on from it.
TEST_F(Files, AKeySelectsWhereNothingIsSelected) {
  launchWithFiles({"1\n", "2\n"});
  struct Walk {
    Qt::Key key;
    int row;
  };
  for (const Walk& walk : {Walk{Qt::Key_Down, 0}, Walk{Qt::Key_Home, 0}, Walk{Qt::Key_End, 1}}) {
    application().operationTable().table().userSelects({});
    clickRow(kFiles, 0);
    press(Qt::Key_F6);
    ASSERT_TRUE(widget("operationsTableView").hasFocus());
    ASSERT_EQ(selection("operationsTableView"), std::vector<int>());
    press(walk.key);
    EXPECT_EQ(selection("operationsTableView"), std::vector{walk.row});
    press(walk.row == 0 ? Qt::Key_Down : Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(selection("operationsTableView"), (std::vector{0, 1}));
  }
}

TEST_F(Files, ADoubleClickShowsTheTextOfTheFile) {
  launchWithFiles({"a,b\nc\n"});
  doubleClickRow(kFiles, 0);
  EXPECT_EQ(text("previewTypePopUpButton"), "Input as Text");
  EXPECT_TRUE(widget("previewTextView").isVisible());
  EXPECT_EQ(text("previewTextView").substr(0, 3), "a,b");
}

TEST_F(Files, OfSeveralTheNoteIsShownAndAnOperationGoesToAll) {
  launchWithFiles({"1\n", "2\n", "3\n"});
  clickRow(kFiles, 0);
  EXPECT_FALSE(widget("severalFilesLabel").isVisible());
  clickRow(kFiles, 2, Qt::ControlModifier);
  EXPECT_TRUE(widget("severalFilesLabel").isVisible());
  EXPECT_EQ(text("severalFilesLabel"),
            "Changes go to all selected files. Final reaches only files with nothing between Initial and "
            "Final.");
  EXPECT_EQ(text("previewPanelInputFilePathLabel"), "(Multiple)");
  chooseFromButton("addOperationButton", "Skip Line…");
  click("skipLineOperationWindowDoneButton");
  EXPECT_EQ(text("statusLabel"), "Skip Line operation added for 2 input file(s).");
  for (const int row : {0, 1, 2}) {
    clickRow(kFiles, row);
    EXPECT_FALSE(widget("severalFilesLabel").isVisible());
    EXPECT_EQ(titles(), row == 1 ? (Texts{"Initial", "Final"}) : (Texts{"Initial", "Skip Line", "Final"}))
        << row;
  }
}

TEST_F(Files, OfALaterStartGoToTheEndAndAreSelected) {
  launchWithFiles({"1\n"});
  form("window").close();
  EXPECT_FALSE(isShown("window"));
  quillet().receive({{home_.write("x.csv", "x\n"), home_.write("y.csv", "y\n")}, {}});
  settle();
  EXPECT_TRUE(isShown("window"));
  EXPECT_EQ(names(), (Texts{"a.csv", "x.csv", "y.csv"}));
  EXPECT_EQ(selection(kFiles), (std::vector{1, 2}));
}

TEST_F(Files, OfALaterStartWaitForTheEndOfASheet) {
  launchWithFiles({"1\n", "2\n"});
  clickRow(kFiles, 0);
  chooseFromButton("addOperationButton", "Skip Line…");
  quillet().receive({{home_.write("x.csv", "x\n")}, {}});
  settle();
  EXPECT_TRUE(form("skipLineOperationWindow").isActiveWindow()) << "keys go on where they went";
  EXPECT_EQ(names(), (Texts{"a.csv", "b.csv"}));
  press(Qt::Key_Return);
  EXPECT_EQ(names(), (Texts{"a.csv", "b.csv", "x.csv"}));
  EXPECT_EQ(selection(kFiles), (std::vector{2}));
  EXPECT_EQ(titles(), (Texts{"Initial", "Final"}));
  clickRow(kFiles, 0);
  EXPECT_EQ(titles(), (Texts{"Initial", "Skip Line", "Final"}));
}

TEST_F(Files, OfALaterStartAreStoredWhenASheetIsOpenAtTheEnd) {
  launchWithFiles({"1\n"});
  clickRow(kFiles, 0);
  chooseFromButton("addOperationButton", "Skip Line…");
  quillet().receive({{home_.write("x.csv", "x\n")}, {}});
  terminate();
  launch();
  EXPECT_EQ(names(), (Texts{"a.csv", "x.csv"}));
}

TEST_F(Files, OneIsRevealedInItsFolder) {
  launchWithFiles({"1\n"});
  clickRow(kFiles, 0);
  click("showInFinderButton");
  ASSERT_EQ(opened().size(), 1);
  EXPECT_EQ(opened()[0].toLocalFile().toStdString(), home_.path());
}

}  // namespace
}  // namespace quillet::testing
