// What tables ask for while they are shown: what is in sight, and nothing again that has not changed.
#include <QHeaderView>
#include <QMainWindow>
#include <QScrollBar>
#include <gtest/gtest.h>
#include <memory>

#include "shell/controls.h"
#include "shell/window.h"
#include "support/qt_application.h"
#include "ui/binder.h"
#include "ui/table_view.h"

namespace quillet::ui {
namespace {

class TableSizes : public ::testing::Test {
 protected:
  TableSizes() : window_(interface_, "window", u"") {
    testing::qtApplication();
    form_.resize(600, 400);
  }
  ~TableSizes() override {
    if (table_) table_->setObserver({});
  }
  // Asks are counted.
  TableView& show(const char* name, std::vector<Table::Column> columns = {}) {
    table_ = std::make_unique<Table>(window_, name,
                                     Table::Source{[this] { return rows_; },
                                                   [this](std::size_t row) {
                                                     ++asked_;
                                                     return Table::Row{std::u16string(1 + row % 9, u'x')};
                                                   }},
                                     std::move(columns));
    auto* view = new TableView;
    view->setObjectName(QLatin1String(name));
    form_.setCentralWidget(view);
    EXPECT_TRUE(bindControls(window_, form_).empty());
    form_.show();
    QApplication::processEvents();
    return *view;
  }
  void setRows(std::size_t rows) {
    rows_ = rows;
    table_->reloadData();
    QApplication::processEvents();
  }

  UserInterface interface_;
  Window window_;
  std::size_t rows_ = 100'000;
  int asked_ = 0;
  int columnsAsked_ = 0;
  std::unique_ptr<Table> table_;
  QMainWindow form_;  // goes first, as it shows the table
};

TEST_F(TableSizes, OnlyRowsInSightAreAskedFor) {
  TableView& view = show("jobsTable");
  const int inSight = view.viewport()->height() / view.rowHeight(0) + 2;
  for (const double part : {0.0, 0.5, 1.0}) {
    view.verticalScrollBar()->setValue(static_cast<int>(view.verticalScrollBar()->maximum() * part));
    asked_ = 0;
    view.viewport()->repaint();
    EXPECT_GT(asked_, 0);
    EXPECT_LE(asked_, inSight);
  }
}

TEST_F(TableSizes, RowsThatComeAndGoLeaveTheViewWhereItIs) {
  TableView& view = show("jobsTable");
  table_->selectRows(IndexSet{5'000});
  view.verticalScrollBar()->setValue(70'000);
  setRows(100'001);
  EXPECT_EQ(view.model()->rowCount(), 100'001);
  EXPECT_EQ(view.verticalScrollBar()->value(), 70'000);
  EXPECT_EQ(view.currentIndex().row(), 5'000);
  setRows(90'000);
  EXPECT_EQ(view.model()->rowCount(), 90'000);
  EXPECT_EQ(view.verticalScrollBar()->value(), 70'000);
  EXPECT_EQ(view.currentIndex().row(), 5'000);
  EXPECT_EQ(view.selectedRowIndexes(), IndexSet{5'000});
}

TEST_F(TableSizes, ASelectedRowThatIsGoneIsToldOnce) {
  TableView& view = show("jobsTable");
  table_->selectRows(IndexSet{5, 99'999});
  int told = 0;
  table_->setSelectionChanged([&told] { ++told; });
  setRows(10);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(table_->selectedRows(), IndexSet{5});
  EXPECT_EQ(view.selectedRowIndexes(), IndexSet{5});
  EXPECT_EQ(view.model()->rowCount(), 10);
}

TEST_F(TableSizes, ColumnsAreMeasuredOnlyWhenTheyAreSet) {
  rows_ = 10;
  TableView& view = show("previewTable", {{"Cil0", {}, 65}});
  const auto rule = [this](std::size_t column) {
    ++columnsAsked_;
    return Table::Column{column ? "Cil" : "Cil0", u"", column == 7 ? 200 : 80};
  };
  table_->setColumns(16'385, rule);
  QApplication::processEvents();
  EXPECT_EQ(view.model()->columnCount(), 16'384);
  EXPECT_EQ(view.columnWidth(6), 200);
  EXPECT_EQ(view.columnWidth(16'383), 80);
  columnsAsked_ = 0;
  table_->reloadData();
  EXPECT_EQ(columnsAsked_, 0);
  table_->selectRows(IndexSet{3});
  EXPECT_EQ(columnsAsked_, 0);
  table_->setColumns(16'385, rule);
  EXPECT_GE(columnsAsked_, 16'384);
}

TEST_F(TableSizes, AWidthOfTheUserStaysAndIsTold) {
  rows_ = 10;
  TableView& view = show("previewTable", {{"Cil0", {}, 65}, {"Cil1", u"1", 80}, {"Cil2", u"2", 80}});
  int resized = 0;
  QObject::connect(&view, &TableView::columnResized, &view, [&resized] { ++resized; });
  view.setColumnWidth(0, 123);
  EXPECT_EQ(resized, 1);
  EXPECT_EQ(table_->column(1).width, 123);
  table_->reloadData();
  EXPECT_EQ(view.columnWidth(0), 123);
  table_->setColumns({{"Cil0", {}, 65}, {"Cil1", u"1", 80}, {"Cil2", u"2", 80}});
  EXPECT_EQ(view.columnWidth(0), 123) << "also when the application makes the columns anew";
  EXPECT_EQ(resized, 1) << "only what the user does";
}

}  // namespace
}  // namespace quillet::ui
