// The preview: its four kinds, the keys of its tables, and its columns.
#include <QAction>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include "gui/user.h"
#include "ui/theme.h"

namespace quillet::testing {
namespace {

constexpr const char* kInput = "previewTableView";
constexpr const char* kOutput = "previewOutputTableView";
constexpr const char* kText = "previewTextView";

class Preview : public UserTest {
 protected:
  std::string lines(int count) {
    std::string result;
    for (int line = 1; line <= count; ++line) result += "line " + std::to_string(line) + ",x\n";
    return result;
  }
  int firstLine() { return widget<QTableView>(kInput).model()->headerData(0, Qt::Vertical).toInt(); }
  // Of the middle of a cell's left edge as it is painted.
  QColor edgeOf(int row, int column) {
    auto& view = widget<QTableView>(kInput);
    const QRect cell = view.visualRect(view.model()->index(row, column));
    return view.viewport()->grab().toImage().pixelColor(cell.left(), cell.center().y());
  }
};

TEST_F(Preview, FourKindsAreChosenByKeys) {
  launchWithFiles({"a,b\nc\n"});
  struct Kind {
    Qt::Key key;
    const char* name;
    const char* view;
  };
  for (const Kind& kind :
       {Kind{Qt::Key_1, "Input as Text", kText}, Kind{Qt::Key_2, "Input as Table", kInput},
        Kind{Qt::Key_3, "Output as Table", kOutput}, Kind{Qt::Key_4, "Output as Text", kText}}) {
    press(kind.key, Qt::AltModifier);
    EXPECT_EQ(text("previewTypePopUpButton"), kind.name);
    for (const char* view : {kInput, kOutput, kText})
      EXPECT_EQ(widget(view).isVisible(), std::string(view) == kind.view) << kind.name << " " << view;
    EXPECT_TRUE(menuItem("window", "Preview", kind.name).isChecked());
  }
  EXPECT_EQ(text(kText).substr(0, 8), "\"a\",\"b\"\n");
  press(Qt::Key_1, Qt::AltModifier);
  EXPECT_EQ(text(kText).substr(0, 3), "a,b");
}

TEST_F(Preview, FourKindsAreChosenInThePopUpAndTheMenu) {
  launchWithFiles({"a,b\nc\n"});
  chooseWithTheMouse("previewTypePopUpButton", "Output as Table");
  EXPECT_TRUE(widget(kOutput).isVisible());
  choose("previewTypePopUpButton", "Input as Text");
  EXPECT_TRUE(widget(kText).isVisible());
  chooseMenu("window", "Preview", "Input as Table");
  EXPECT_TRUE(widget(kInput).isVisible());
  EXPECT_EQ(text("previewTypePopUpButton"), "Input as Table");
}

// A preview has no more than its ten lines; those of a run that is going on can be looked through.
TEST_F(Preview, TheEndsAreReachedByKeys) {
  launchWithFiles({lines(40)});
  ASSERT_EQ(widget<QTableView>(kInput).model()->rowCount(), 10);
  clickRow(kInput, 4);
  press(Qt::Key_Down);
  EXPECT_EQ(selection(kInput), std::vector{5});
  press(Qt::Key_Up);
  EXPECT_EQ(selection(kInput), std::vector{4});
  press(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(selection(kInput), std::vector{9});
  press(Qt::Key_Down);
  EXPECT_EQ(selection(kInput), std::vector{9});
  EXPECT_EQ(firstLine(), 1);
  press(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(selection(kInput), std::vector{0});
  press(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(selection(kInput), std::vector{9});
  press(Qt::Key_Up);
  press(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(selection(kInput), std::vector{0});
}

TEST_F(Preview, ReturnDoesNothingInItsTables) {
  launchWithFiles({"a\n"});
  clickRow("operationsTableView", 0);
  clickRow(kInput, 0);
  press(Qt::Key_Return);
  EXPECT_FALSE(isShown("initialOperationsWindow"));
}

TEST_F(Preview, ADoubleClickOnADividerFitsTheColumn) {
  launchWithFiles({"a,b\n" + std::string(60, 'm') + ",b\n"});
  auto& view = widget<QTableView>(kInput);
  EXPECT_EQ(view.columnWidth(0), 240) << "a text is shown as far as that";
  doubleClickDivider(kInput, 0);
  EXPECT_EQ(view.columnWidth(0),
            QFontMetrics(view.font()).horizontalAdvance(QString(60, QLatin1Char('m'))) + 6);
  doubleClickDivider(kInput, 1);
  EXPECT_EQ(view.columnWidth(1), 40) << "the least";
}

TEST_F(Preview, AWidthThatIsGivenStaysUntilAnotherFileIsSelected) {
  launchWithFiles({"a,b\nc,d\n", "e,f\n"});
  clickRow("filesTableView", 0);
  auto& view = widget<QTableView>(kInput);
  dragDivider(kInput, 0, 50);
  EXPECT_EQ(view.columnWidth(0), 130);
  clickRow(kInput, 1);
  press(Qt::Key_3, Qt::AltModifier);
  press(Qt::Key_2, Qt::AltModifier);
  EXPECT_EQ(view.columnWidth(0), 130);
  clickRow("filesTableView", 1);
  EXPECT_EQ(view.columnWidth(0), 80);
}

TEST_F(Preview, ACellThatALineDoesNotHaveIsFramed) {
  launchWithFiles({"a,b\nc\n"});
  const QColor frame = ui::coloursOf(widget(kInput).palette()).missing;
  EXPECT_EQ(edgeOf(1, 1), frame);
  EXPECT_NE(edgeOf(0, 1), frame);
  EXPECT_NE(edgeOf(1, 0), frame);
}

// Another file, or another way to the output, is looked at from its beginning.
TEST_F(Preview, BeginsAtItsFirstRowAndColumn) {
  std::string wide;
  for (int column = 1; column <= 60; ++column) wide += "column " + std::to_string(column) + ",";
  std::string all;
  for (int line = 0; line < 12; ++line) all += wide + "\n";
  launchWithFiles({all, all});
  clickRow("filesTableView", 0);
  for (const auto& [table, key] : {std::pair{kInput, Qt::Key_2}, std::pair{kOutput, Qt::Key_3}}) {
    press(key, Qt::AltModifier);
    auto& view = widget<QTableView>(table);
    view.resize(300, 90);
    const auto scroll = [&view] {
      view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum());
      view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    };
    scroll();
    ASSERT_GT(view.horizontalScrollBar()->value(), 0);
    ASSERT_GT(view.verticalScrollBar()->value(), 0);
    clickRow("filesTableView", 1);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0) << table;
    EXPECT_EQ(view.verticalScrollBar()->value(), 0) << table;
    clickRow("filesTableView", 0);
  }
}

// However low the pane is; here by the keys that bring the next page of a run.
TEST_F(Preview, TheRowThatKeysWalkOnStaysInSight) {
  launchWithFiles({lines(40)});
  auto& view = widget<QTableView>(kInput);
  view.resize(view.width(), 90);
  clickRow(kInput, 0);
  press(Qt::Key_Down, Qt::ControlModifier);
  ASSERT_EQ(selection(kInput), std::vector{9});
  application().previewPanel().updatePreviewPanel();
  const QRect row = view.visualRect(view.model()->index(9, 0));
  EXPECT_TRUE(view.viewport()->rect().contains(row.center())) << row.top();
}

TEST_F(Preview, F6GoesRoundThePanes) {
  launchWithFiles({"a\n"});
  focus("filesTableView");
  for (const char* next : {"operationsTableView", kInput, "filesTableView"}) {
    press(Qt::Key_F6);
    EXPECT_TRUE(widget(next).hasFocus()) << next;
  }
  press(Qt::Key_F6, Qt::ShiftModifier);
  EXPECT_TRUE(widget(kInput).hasFocus());
}

}  // namespace
}  // namespace quillet::testing
