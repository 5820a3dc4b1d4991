// The clipboard grid with many lines and columns: keys and clicks cost what is in sight.
#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QtTest>

#include "gui/gui_application.h"
#include "ui/grid_view.h"

namespace quillet::testing {
namespace {

class CountingDelegate final : public QStyledItemDelegate {
 public:
  void paint(QPainter*, const QStyleOptionViewItem&, const QModelIndex&) const override { ++painted; }
  mutable int painted = 0;
};

class GridSize : public GuiTest {
 protected:
  GridView& split(const QString& text) {
    QApplication::clipboard()->setText(text);
    application().clipboard().refreshDataFromClipboard();
    application().clipboard().performClipboardDataOperation(
        {{"Code", std::int64_t{102}}, {"Arg1", u"\n"}, {"Arg2", u","}});
    QApplication::processEvents();
    return *find<GridView>("clipboardDataWindow", "clipboardDataTableView");
  }
  GridView& show(const QString& text) {
    launch();
    application().interface().commands().perform("clipboardDataWindowMenuItemClicked");
    GridView& grid = split(text);
    grid.setItemDelegate(&delegate_);
    grid.setFocus();
    QApplication::processEvents();
    return grid;
  }
  int cellsInSight(const GridView& grid) {
    const QSize size = grid.viewport()->size();
    return (size.width() / grid.columnWidth(0) + 2) * (size.height() / grid.rowHeight(0) + 2);
  }

  CountingDelegate delegate_;
};

TEST_F(GridSize, AKeyMovesTheFocusWithoutShowingAnythingAnew) {
  GridView& grid = show(QStringLiteral("a,b,c\n").repeated(100'000));
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {5, 5});
  QApplication::processEvents();
  QSignalSpy changed(grid.model(), &QAbstractItemModel::dataChanged);
  QSignalSpy resized(grid.horizontalHeader(), &QHeaderView::sectionResized);
  for (int i = 0; i < 5; ++i) QTest::keyClick(&grid, Qt::Key_Down);
  EXPECT_EQ(application().clipboard().data().selection().focusedRowIndex(), 5);
  EXPECT_EQ(changed.size(), 0);
  EXPECT_EQ(resized.size(), 0);
}

TEST_F(GridSize, AKeyBringsTheFocusIntoSight) {
  GridView& grid = show(QStringLiteral("a,b,c\n").repeated(1'000));
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {5, 5});
  for (int i = 0; i < 300; ++i) QTest::keyClick(&grid, Qt::Key_Down);
  EXPECT_EQ(application().clipboard().data().selection().focusedRowIndex(), 300);
  EXPECT_GE(grid.rowAt(grid.viewport()->height() - 1), 300);
  EXPECT_LE(grid.rowAt(0), 300);
}

TEST_F(GridSize, OnlyCellsInSightArePainted) {
  GridView& grid = show((QStringLiteral("x,").repeated(2'000) + QLatin1Char('\n')).repeated(500));
  ASSERT_EQ(grid.model()->columnCount(), 2'001);
  for (const double part : {0.0, 0.5, 1.0}) {
    for (QScrollBar* bar : {grid.verticalScrollBar(), grid.horizontalScrollBar()})
      bar->setValue(static_cast<int>(bar->maximum() * part));
    delegate_.painted = 0;
    grid.viewport()->repaint();
    EXPECT_GT(delegate_.painted, 0);
    EXPECT_LE(delegate_.painted, cellsInSight(grid));
  }
}

TEST_F(GridSize, ClicksResizeNoColumn) {
  GridView& grid = show(QStringLiteral("x,").repeated(2'000));
  QSignalSpy resized(&grid, &TableView::columnResized);
  const std::uint64_t columns = application().clipboard().table().table().columnsVersion();
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {5, 5});
  QTest::mouseClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, {30, 5});
  application().interface().commands().perform("rowsTableViewSelectAllMenuItemClicked");
  EXPECT_EQ(application().clipboard().table().table().columnsVersion(), columns);
  EXPECT_EQ(resized.size(), 0);
}

TEST_F(GridSize, LinesThatComeAndGoLeaveTheViewWhereItIs) {
  GridView& grid = show(QStringLiteral("a,b,c\n").repeated(9'999));
  grid.verticalScrollBar()->setValue(7'000);
  application().interface().commands().perform("clipboardDataWindowShiftFillFromTopMenuItemClicked");
  QApplication::processEvents();
  EXPECT_EQ(grid.model()->rowCount(), 10'001);
  EXPECT_EQ(grid.verticalScrollBar()->value(), 7'000);
  application().clipboard().undo();
  QApplication::processEvents();
  EXPECT_EQ(grid.model()->rowCount(), 10'000);
  EXPECT_EQ(grid.verticalScrollBar()->value(), 7'000);
}

// Five are evened by a rebuild only, so the width that was guessed would stay.
TEST_F(GridSize, ColumnsMadeBeforeTheFirstShowAreEvenedForTheRealWidth) {
  launch();
  GridView& grid = split(QStringLiteral("a,b,c,d,e\n"));
  ASSERT_FALSE(grid.isVisible());
  application().clipboard().window().updateClipboardDataWindowTextColumns(true);
  quillet().windows().widget("clipboardDataWindow")->show();
  QApplication::processEvents();
  ASSERT_TRUE(grid.isVisible());
  const int width = grid.columnWidth(0);
  for (int column = 1; column < 5; ++column) EXPECT_EQ(grid.columnWidth(column), width);
  EXPECT_LE(5 * width, grid.viewport()->width());
  EXPECT_GT(5 * width, grid.viewport()->width() - grid.verticalScrollBar()->sizeHint().width() - 5);
}

// A page that was never in front has a width that means nothing.
TEST_F(GridSize, ColumnsMadeBehindTheHelpAreEvenedForTheRealWidth) {
  GridView& grid = show(QStringLiteral("a,b,c,d,e\n"));
  const int width = grid.columnWidth(0);
  EXPECT_LE(5 * width, grid.viewport()->width());
  EXPECT_GT(5 * width, grid.viewport()->width() - grid.verticalScrollBar()->sizeHint().width() - 5);
}

TEST_F(GridSize, AMoveOfTheSplitterEvensUpToFourColumns) {
  GridView& grid = show(QStringLiteral("a,b,c\n"));
  auto* split = find<QSplitter>("clipboardDataWindow", "clipboardDataWindowSplitView");
  const int before = grid.columnWidth(0);
  const QList<int> sizes = split->sizes();
  split->setSizes({sizes[0] - 60, sizes[1] + 60});
  QApplication::processEvents();
  EXPECT_EQ(grid.columnWidth(0), before - 20);
  EXPECT_EQ(grid.columnWidth(2), before - 20);
}

TEST_F(GridSize, AWidthOfTheUserStaysOverAnotherShow) {
  GridView& grid = show(QStringLiteral("a,b,c,d,e,f\n"));
  grid.setColumnWidth(2, 234);
  QWidget* window = quillet().windows().widget("clipboardDataWindow");
  window->hide();
  window->show();
  QApplication::processEvents();
  EXPECT_EQ(grid.columnWidth(2), 234);
}

}  // namespace
}  // namespace quillet::testing
