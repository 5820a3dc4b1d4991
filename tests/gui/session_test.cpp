// The main ways through the windows, clicked and typed.
#include <QAbstractItemModel>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include "gui/gui_application.h"
#include "ui/grid_view.h"
#include "ui/large_text_view.h"
#include "ui/table_view.h"

namespace quillet::testing {
namespace {

class Session : public GuiTest {
 protected:
  void perform(const char* command) {
    application().interface().commands().perform(command);
    QApplication::processEvents();
  }
  QString text(const QAbstractItemModel* model, int row, int column) {
    return model->index(row, column).data().toString();
  }
  void click(QAbstractButton* button) {
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton);
    QApplication::processEvents();
  }
};

TEST_F(Session, AFileIsShownWithItsOperationsAndItsPreview) {
  launch({home_.write("a.csv", "name,city\nAda,London\n")});
  auto* files = find<TableView>("window", "filesTableView");
  ASSERT_EQ(files->model()->rowCount(), 1);
  EXPECT_EQ(text(files->model(), 0, 0), QStringLiteral("a.csv"));
  EXPECT_EQ(files->selectedRowIndexes(), IndexSet{0});
  auto* operations = find<TableView>("window", "operationsTableView");
  ASSERT_EQ(operations->model()->rowCount(), 2);
  EXPECT_EQ(text(operations->model(), 0, 0), QStringLiteral("Initial"));
  auto* preview = find<TableView>("window", "previewTableView");
  EXPECT_TRUE(preview->isVisible());
  ASSERT_EQ(preview->model()->columnCount(), 2);
  EXPECT_EQ(text(preview->model(), 1, 1), QStringLiteral("London"));
}

TEST_F(Session, AnOperationIsAddedByItsPanelAndSeenInThePreview) {
  launch({home_.write("a.csv", "# note\nAda,London\n")});
  perform("addLineOperationSkipMenuItemClicked");
  auto* sheet = qobject_cast<QDialog*>(quillet().windows().widget("skipLineOperationWindow"));
  ASSERT_TRUE(sheet->isVisible());
  EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
  auto* popUp = find<QComboBox>("skipLineOperationWindow", "skipLineOperationWindowSkipIfPopUpButton");
  popUp->setCurrentIndex(3);
  emit popUp->activated(3);
  auto* field = find<QLineEdit>("skipLineOperationWindow", "skipLineOperationWindowTextField");
  field->setFocus();
  QTest::keyClicks(field, QStringLiteral("#"));
  QTest::keyClick(field, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_FALSE(sheet->isVisible());
  auto* operations = find<TableView>("window", "operationsTableView");
  ASSERT_EQ(operations->model()->rowCount(), 3);
  EXPECT_EQ(text(operations->model(), 1, 0), QStringLiteral("Skip Line"));
  auto* output = find<TableView>("window", "previewOutputTableView");
  ASSERT_EQ(output->model()->rowCount(), 1);
  EXPECT_EQ(text(output->model(), 0, 0), QStringLiteral("\"Ada\"")) << "Final quotes every cell";
}

TEST_F(Session, EscapeCancelsASheet) {
  launch({home_.write("a.csv", "a\n")});
  perform("addLineOperationTrimMenuItemClicked");
  QWidget* sheet = quillet().windows().widget("trimLineOperationWindow");
  ASSERT_TRUE(sheet->isVisible());
  QTest::keyClick(sheet, Qt::Key_Escape);
  QApplication::processEvents();
  EXPECT_FALSE(sheet->isVisible());
  EXPECT_FALSE(application().interface().window("trimLineOperationWindow")->isShown());
  EXPECT_EQ(find<TableView>("window", "operationsTableView")->model()->rowCount(), 2);
}

TEST_F(Session, FilesComeBackAtTheNextStart) {
  launch({home_.write("a.csv", "a\n"), home_.write("b.csv", "b\n")});
  terminate();
  launch();
  EXPECT_EQ(find<TableView>("window", "filesTableView")->model()->rowCount(), 2);
}

TEST_F(Session, TheClipboardGoesFromRefreshToJoinWithUndo) {
  launch();
  QApplication::clipboard()->setText(QStringLiteral("a,b\nc"));
  perform("clipboardDataWindowMenuItemClicked");
  click(find<QPushButton>("clipboardDataWindow", "clipboardDataWindowHelpBoxRefreshButton"));
  auto* view = find<LargeTextView>("clipboardDataWindow", "clipboardDataWindowTextView");
  EXPECT_TRUE(view->isVisible());
  EXPECT_EQ(view->text(), QStringLiteral("a,b\nc"));
  application().clipboard().performClipboardDataOperation(
      {{"Code", std::int64_t{102}}, {"Arg1", u"\n"}, {"Arg2", u","}});
  QApplication::processEvents();
  auto* grid = find<GridView>("clipboardDataWindow", "clipboardDataTableView");
  ASSERT_TRUE(grid->isVisible());
  ASSERT_EQ(grid->model()->rowCount(), 2);
  EXPECT_EQ(grid->model()->columnCount(), 2);
  const QPoint second(grid->columnViewportPosition(1) + 5, grid->rowViewportPosition(0) + 5);
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, second);
  EXPECT_EQ(application().clipboard().data().selection().selected2DIndexSet().stringPlus1FromAllIndexes(),
            u"Cells: (1, 2)");
  EXPECT_EQ(find<QLabel>("clipboardDataWindow", "clipboardDataWindowFocusLabel")->text(),
            QStringLiteral("Line 1, column 2"));
  perform("flipVerticalMenuItemClicked");
  EXPECT_EQ(text(grid->model(), 0, 0), QStringLiteral("c"));
  application().clipboard().undo();
  QApplication::processEvents();
  EXPECT_EQ(text(grid->model(), 0, 0), QStringLiteral("a"));
  application().clipboard().performClipboardDataOperation(
      {{"Code", std::int64_t{902}}, {"Arg1", u"|"}, {"Arg2", u";"}});
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("a;b|c"));
}

TEST_F(Session, ALongTextIsPaintedAtOnce) {
  launch();
  QString longText = QString(2'000'000, QLatin1Char('x')) + QLatin1Char('\n');
  for (int i = 0; i < 200'000; ++i) longText += QStringLiteral("line\n");
  QApplication::clipboard()->setText(longText);
  perform("clipboardDataWindowMenuItemClicked");
  perform("clipboardDataWindowRefreshNowButtonPressed");
  auto* view = find<LargeTextView>("clipboardDataWindow", "clipboardDataWindowTextView");
  EXPECT_EQ(view->text().size(), longText.size());
  EXPECT_FALSE(view->grab().isNull());
}

}  // namespace
}  // namespace quillet::testing
