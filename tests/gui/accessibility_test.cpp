// What a screen reader is told.
#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <map>

#include "gui/every_window.h"
#include "ui/accessible_events.h"
#include "ui/grid_view.h"
#include "ui/table_view.h"
#include "ui/text_conversion.h"

namespace quillet::testing {
namespace {

struct Told {
  QObject* object;
  QAccessible::Event type;
  int child;
};
std::vector<Told> events;

class Accessibility : public EveryWindowTest {
 protected:
  void SetUp() override {
    events.clear();
    ui::setReaderListener([](const QAccessibleEvent& event) {
      events.push_back({event.object(), event.type(), event.child()});
    });
  }
  void TearDown() override { ui::setReaderListener({}); }

  static QAccessibleInterface* interfaceOf(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget);
  }
  // A reader begins with the label where there is one: what Qt calls the name of a pop-up is its chosen item.
  static std::string nameOf(QWidget* widget) {
    const auto labels = interfaceOf(widget)->relations(QAccessible::Label);
    QAccessibleInterface* told = labels.isEmpty() ? interfaceOf(widget) : labels.front().first;
    if (labels.isEmpty() && qobject_cast<QComboBox*>(widget)) return "";
    return told->text(QAccessible::Name).toStdString();
  }
  std::string nameOfCell(const char* window, const char* table, int row, int column) {
    QAccessibleInterface* cell =
        interfaceOf(find<QWidget>(window, table))->tableInterface()->cellAt(row, column);
    return cell ? cell->text(QAccessible::Name).toStdString() : "no cell";
  }
};

bool takesFocus(const QWidget& widget) {
  return widget.focusPolicy() != Qt::NoFocus && !widget.focusProxy() && !widget.isWindow();
}

// Parts of a widget that Qt makes for itself.
bool isInner(const QWidget& widget) {
  return qobject_cast<const QScrollBar*>(&widget) || widget.objectName().startsWith(QLatin1String("qt_")) ||
         widget.inherits("QComboBoxPrivateContainer") || widget.inherits("QComboBoxListView") ||
         widget.inherits("QMenu") || qobject_cast<const QHeaderView*>(&widget);
}

TEST_F(Accessibility, EveryWidgetThatTakesTheFocusHasAName) {
  launchWithFile();
  int count = 0;
  const auto check = [&](const std::string& window, QWidget& form) {
    EXPECT_NE(form.windowTitle(), QString()) << window;
    for (QWidget* widget : form.findChildren<QWidget*>()) {
      if (widget->window() != &form || !takesFocus(*widget) || isInner(*widget)) continue;
      ++count;
      EXPECT_NE(nameOf(widget), "") << window << " " << widget->objectName().toStdString() << " "
                                    << widget->metaObject()->className();
    }
  };
  forEveryMainWindow(check);
  forEverySheet(check);
  EXPECT_EQ(visitedSheets().size(), 21u);
  EXPECT_GT(count, 130);
}

// Else nobody could tell the fields of a sheet from each other.
TEST_F(Accessibility, NoTwoWidgetsOfOneKindInASheetHaveTheSameName) {
  launchWithFile();
  forEverySheet([&](const std::string& window, QWidget& form) {
    std::map<std::string, std::string> names;
    for (QWidget* widget : form.findChildren<QWidget*>()) {
      if (!takesFocus(*widget) || isInner(*widget) || !widget->isVisible()) continue;
      // A check box is called as the field that it turns on.
      const std::string name = std::to_string(interfaceOf(widget)->role()) + nameOf(widget);
      const auto [other, isFree] = names.emplace(name, widget->objectName().toStdString());
      EXPECT_TRUE(isFree) << window << ": " << widget->objectName().toStdString() << " and " << other->second
                          << " are " << other->first;
    }
  });
}

TEST_F(Accessibility, TablesHaveTheirNames) {
  launchWithFile();
  struct Case {
    const char* window;
    const char* table;
    const char* name;
  };
  const Case cases[] = {
      {"window", "filesTableView", "Input files"},
      {"window", "operationsTableView", "Operations"},
      {"window", "previewTableView", "Input preview"},
      {"window", "previewOutputTableView", "Output preview"},
      {"clipboardDataWindow", "clipboardDataTableView", "Clipboard grid"},
      {"clipboardDataWindow", "clipboardDataWindowOperationsTableView", "Performed operations"},
      {"previousJobsWindow", "previousJobsWindowJobsTableView", "Saved jobs"},
      {"previousJobsWindow", "previousJobsWindowFilesTableView", "Job files"},
      {"previousJobsWindow", "previousJobFileWindowOperationsTableView", "Operations"},
      {"trimColumnOperationWindow", "trimColumnOperationWindowColumnsTableView", "Columns"},
      {"replaceColumnOperationWindow", "replaceColumnOperationWindowColumnsTableView", "Columns"},
      {"reformatColumnOperationWindow", "reformatColumnOperationWindowColumnsTableView", "Columns"},
      {"rearrangeColumnsOperationWindow", "rearrangeColumnsOperationWindowColumnsTableView", "Columns"},
      {"joinColumnsOperationWindow", "joinColumnsOperationWindowColumnsTableView", "Columns"}};
  std::size_t tables = 0;
  for (const Window* window : application().interface().windows())
    tables += static_cast<std::size_t>(form(window->name())->findChildren<TableView*>().size());
  EXPECT_EQ(tables, std::size(cases));
  for (const Case& one : cases) {
    auto* table = find<TableView>(one.window, one.table);
    ASSERT_TRUE(table) << one.table;
    EXPECT_EQ(interfaceOf(table)->text(QAccessible::Name), QLatin1String(one.name)) << one.table;
    EXPECT_EQ(interfaceOf(table)->role(), QAccessible::Table) << one.table;
  }
}

TEST_F(Accessibility, ButtonsWithoutATextHaveANameAndAToolTip) {
  launchWithFile();
  int count = 0;
  const auto check = [&](const std::string& window, QWidget& form) {
    for (QAbstractButton* button : form.findChildren<QAbstractButton*>()) {
      if (!button->text().isEmpty() || button->objectName().isEmpty() || isInner(*button)) continue;
      ++count;
      EXPECT_NE(nameOf(button), "") << window << " " << button->objectName().toStdString();
      EXPECT_NE(button->toolTip(), QString()) << window << " " << button->objectName().toStdString();
    }
  };
  forEveryMainWindow(check);
  forEverySheet(check);
  EXPECT_GT(count, 20);
}

TEST_F(Accessibility, TheHelpButtonOfASheetIsNamedHelpAndTellsTheHelp) {
  launchWithFile();
  int count = 0;
  forEverySheet([&](const std::string& window, QWidget& form) {
    const auto* help = application().interface().control(window + "HelpButton");
    if (!help) return;
    ++count;
    auto* button = form.findChild<QWidget*>(QString::fromStdString(help->name()));
    const QString text = ui::qString(static_cast<const Button*>(help)->toolTip());
    EXPECT_EQ(nameOf(button), "Help") << window;
    EXPECT_EQ(button->toolTip(), text) << window;
    EXPECT_EQ(interfaceOf(&form)->text(QAccessible::Description), text) << window;
    EXPECT_FALSE(text.isEmpty()) << window;
  });
  EXPECT_EQ(count, 17) << "all but those for a name of a job, a file and a cell";
}

TEST_F(Accessibility, ARowOfOperationsReadsItsTitleAndItsDetail) {
  launchWithFile();
  const QModelIndex first = find<TableView>("window", "operationsTableView")->model()->index(0, 0);
  const std::string detail = first.data(Qt::ToolTipRole).toString().toStdString();
  EXPECT_NE(detail, "");
  EXPECT_EQ(nameOfCell("window", "operationsTableView", 0, 0), "Initial, " + detail);
}

TEST_F(Accessibility, ABadgeReadsTheKindOfItsJob) {
  launchWithFile();
  const auto save = [this](const char16_t* name) {
    perform("saveJobMenuItemClicked");
    static_cast<TextField*>(application().interface().control("saveJobWindowJobNameComboBox"))
        ->userTypes(name);
    application().interface().window("saveJobWindow")->doneButton()->press();
    QApplication::processEvents();
  };
  perform("quilletWindowMenuItemClicked");
  save(u"files");
  openGrid();
  save(u"cells");
  perform("previousJobsWindowMenuItemActionClicked");
  std::vector<std::string> names;
  for (int row = 0;
       row < find<TableView>("previousJobsWindow", "previousJobsWindowJobsTableView")->model()->rowCount();
       ++row)
    names.push_back(nameOfCell("previousJobsWindow", "previousJobsWindowJobsTableView", row, 1));
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"cells, clipboard job", "files, file job"}));
}

TEST_F(Accessibility, MissingCellsReadMissing) {
  launchWithFile();
  EXPECT_EQ(nameOfCell("window", "previewTableView", 1, 2), "x");
  EXPECT_EQ(nameOfCell("window", "previewTableView", 2, 1), "Rome");
  EXPECT_EQ(nameOfCell("window", "previewTableView", 2, 2), "missing");
  openGrid();
  EXPECT_EQ(nameOfCell("clipboardDataWindow", "clipboardDataTableView", 0, 1), "b");
  EXPECT_EQ(nameOfCell("clipboardDataWindow", "clipboardDataTableView", 1, 0), "d");
  EXPECT_EQ(nameOfCell("clipboardDataWindow", "clipboardDataTableView", 1, 1), "missing");
}

std::size_t count(const QObject* object, QAccessible::Event type) {
  return static_cast<std::size_t>(std::count_if(events.begin(), events.end(), [&](const Told& one) {
    return one.object == object && one.type == type;
  }));
}

TEST_F(Accessibility, AStatusLabelSendsAnAlertWhenItsTextChanges) {
  launchWithFile();
  auto* label = find<QLabel>("window", "statusLabel");
  auto* control = static_cast<Label*>(application().interface().control("statusLabel"));
  control->setText(u"Something happened.");
  EXPECT_EQ(count(label, QAccessible::Alert), 1u);
  control->setText(u"Something happened.");
  control->setColour(TextColour::Red);
  EXPECT_EQ(count(label, QAccessible::Alert), 1u) << "the text is the same";
  control->setText(u"");
  EXPECT_EQ(count(label, QAccessible::Alert), 1u) << "nothing is there to be read";
  control->setText(u"Again.");
  EXPECT_EQ(count(label, QAccessible::Alert), 2u);
  openGrid();
  EXPECT_GT(count(find<QLabel>("clipboardDataWindow", "clipboardDataWindowStatusLabel"), QAccessible::Alert),
            0u);
  EXPECT_EQ(count(find<QLabel>("window", "previewPanelInputFilePathLabel"), QAccessible::Alert), 0u);
}

// The cell that is focused, by its place in the table of Qt: with the headers.
std::string cellsWithFocus(QWidget* table) {
  std::string cells;
  for (const Told& one : events) {
    if (one.object != table || one.type != QAccessible::Focus) continue;
    QAccessibleInterface* cell =
        one.child < 0 ? nullptr : QAccessible::queryAccessibleInterface(table)->child(one.child);
    cells += (cell ? cell->text(QAccessible::Name).toStdString() : "the table") + ";";
  }
  return cells;
}

TEST_F(Accessibility, TheFocusOfTheGridIsToldForItsCell) {
  launchWithFile();
  openGrid();
  auto* grid = find<GridView>("clipboardDataWindow", "clipboardDataTableView");
  form("clipboardDataWindow")->activateWindow();
  QApplication::processEvents();
  grid->setFocus();
  ASSERT_TRUE(grid->hasFocus());
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                    {grid->columnViewportPosition(0) + 5, grid->rowViewportPosition(0) + 5});
  events.clear();
  QTest::keyClick(grid, Qt::Key_Right);
  EXPECT_EQ(cellsWithFocus(grid), "b;");
  events.clear();
  QTest::keyClick(grid, Qt::Key_Down);
  EXPECT_EQ(cellsWithFocus(grid), "missing;");
  events.clear();
  find<QWidget>("clipboardDataWindow", "clipboardDataWindowOperationsTableView")->setFocus();
  grid->setFocus();
  EXPECT_NE(cellsWithFocus(grid).find("missing;"), std::string::npos) << "when the keys come back to it";
}

}  // namespace
}  // namespace quillet::testing
