// What is seen beyond what the controls tell: widths, and fields and labels that go together.
#include <QHeaderView>
#include <QLabel>
#include <QtTest>

#include "gui/gui_application.h"
#include "ui/table_view.h"

namespace quillet::testing {
namespace {

class Look : public GuiTest {
 protected:
  TableView* preview() { return find<TableView>("window", "previewTableView"); }
  const Table& previewTable() {
    return *dynamic_cast<Table*>(application().interface().control("previewTableView"));
  }
};

TEST_F(Look, APreviewColumnIsAsWideAsItsTexts) {
  launch({home_.write("a.csv", "a,a text that needs a good deal more than eighty pixels\nb,c\n")});
  EXPECT_EQ(preview()->columnWidth(0), 80);
  EXPECT_EQ(preview()->columnWidth(1), 240) << "within reason";
  EXPECT_EQ(previewTable().column(2).width, 80) << "nobody has resized it";
}

TEST_F(Look, APreviewColumnStaysAsWideAsTheUserMadeIt) {
  launch({home_.write("a.csv", "a,a text that needs a good deal more than eighty pixels\nb,c\n")});
  preview()->setColumnWidth(1, 100);
  EXPECT_EQ(previewTable().column(2).width, 100);
  application().interface().commands().perform("addLineOperationSkipMenuItemClicked");
  application().interface().window("skipLineOperationWindow")->doneButton()->press();
  QApplication::processEvents();
  EXPECT_EQ(preview()->columnWidth(1), 100);
}

TEST_F(Look, ARowHoldsItsLinesInALargeFont) {
  launch({home_.write("a.csv", "a,b\n")});
  application().interface().commands().perform("addLineOperationSkipMenuItemClicked");
  application().interface().window("skipLineOperationWindow")->doneButton()->press();
  QApplication::processEvents();
  auto* operations = find<TableView>("window", "operationsTableView");
  EXPECT_EQ(operations->rowHeight(0), 42);
  QFont large = operations->font();
  large.setPixelSize(40);
  operations->setFont(large);
  EXPECT_GE(operations->rowHeight(0), QFontMetrics(large).height() + 12) << "and a detail of 12 pixels";
  auto* files = find<TableView>("window", "filesTableView");
  EXPECT_EQ(files->rowHeight(0), 26);
  files->setFont(large);
  EXPECT_GE(files->rowHeight(0), QFontMetrics(large).height());
}

TEST_F(Look, BesideTheHeadersOfAPreviewIsTheColourOfTheWindow) {
  launch({home_.write("a.csv", "a,b\n")});
  const QImage picture = preview()->horizontalHeader()->grab().toImage();
  EXPECT_EQ(picture.pixelColor(picture.width() - 5, picture.height() / 2).name(),
            preview()->palette().color(QPalette::Window).name());
}

TEST_F(Look, ALabelIsDimmedWithItsField) {
  launch({home_.write("a.csv", "a,b\n")});
  application().interface().commands().perform("addColumnOperationTrimMenuItemClicked");
  auto* label = find<QLabel>("trimColumnOperationWindow", "trimColumnOperationWindowTextFieldTitleLabel");
  ASSERT_NE(label, nullptr);
  EXPECT_FALSE(label->isEnabled()) << "no column is selected";
  find<TableView>("trimColumnOperationWindow", "trimColumnOperationWindowColumnsTableView")->selectRow(0);
  EXPECT_TRUE(label->isEnabled());
}

}  // namespace
}  // namespace quillet::testing
