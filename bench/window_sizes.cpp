// window_sizes [PART]: what the user waits for in the windows with large data, in milliseconds with the
// painting, at a size and at a tenth of it. PART is a part of a heading. What changes the data itself is
// marked with *.
#include <QHeaderView>
#include <QKeyEvent>
#include <QMainWindow>
#include <QScrollBar>
#include <QSplitter>
#include <functional>
#include <map>

#include "bench/windows_at_work.h"
#include "operations/operation_codes.h"
#include "ui/binder.h"
#include "ui/grid_view.h"
#include "ui/large_text_view.h"
#include "ui/table_view.h"
#include "ui/text_conversion.h"

namespace quillet::bench {
namespace {

// Names in the order of their first use, each with a time for each size.
class Measures {
 public:
  template <typename Action>
  void add(const std::string& name, Action action, int times = 1) {
    const double time = milliseconds([&] {
      for (int i = 0; i < times; ++i) {
        action();
        if (times > 1) settle();
      }
    });
    put(name, time / times);
  }
  void put(const std::string& name, double value) {
    if (!values_.contains(name)) names_.push_back(name);
    values_[name].push_back(value);
  }
  void print(const std::string& heading) const {
    std::printf("\n%s\n%-34s %12s %12s %8s\n", heading.c_str(), "", "at a tenth", "at size", "ratio");
    for (const std::string& name : names_) {
      const std::vector<double>& values = values_.at(name);
      std::printf("%-34s %12.2f %12.2f %8.1f\n", name.c_str(), values.front(), values.back(),
                  values.back() / std::max(values.front(), 0.001));
    }
    std::fflush(stdout);
  }

 private:
  std::vector<std::string> names_;
  std::map<std::string, std::vector<double>> values_;
};

void press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = {}) {
  QKeyEvent down(QEvent::KeyPress, key, modifiers);
  QApplication::sendEvent(widget, &down);
}

void click(QWidget* widget, const QPoint& point) {
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    QMouseEvent event(type, point, widget->mapToGlobal(point), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {});
    QApplication::sendEvent(widget, &event);
  }
}

void scrollTo(QScrollBar* bar, double part) {
  bar->setValue(static_cast<int>(bar->maximum() * part));
}

// Every third line is two cells short.
QString gridText(int rows, int columns) {
  QString text;
  text.reserve(static_cast<qsizetype>(rows) * columns * 8);
  for (int row = 0; row < rows; ++row) {
    const int count = row % 3 == 2 ? std::max(columns - 2, 1) : columns;
    for (int column = 0; column < count; ++column) {
      if (column) text += QLatin1Char(',');
      text += QString::number((row * 7 + column) % 1'000'003);
    }
    text += QLatin1Char('\n');
  }
  return text;
}

void measureTable(Measures& measures, QWidget* window, TableView& view) {
  measures.add(
      "paint of a frame", [&] { view.viewport()->repaint(); }, 20);
  measures.add("scroll to the middle", [&] { scrollTo(view.verticalScrollBar(), 0.5); });
  measures.add("scroll to the end", [&] { scrollTo(view.verticalScrollBar(), 1); });
  measures.add("scroll to the middle, sideways", [&] { scrollTo(view.horizontalScrollBar(), 0.5); });
  measures.add("scroll to the end, sideways", [&] { scrollTo(view.horizontalScrollBar(), 1); });
  measures.add("page up", [&] { view.verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepSub); });
  measures.add("resize of the window", [&] { window->resize(window->width() + 37, window->height() + 11); });
}

void measureGrid(Measures& measures, int rows, int columns) {
  WindowsAtWork at;
  ClipboardGroup& group = at.application().clipboard();
  QApplication::clipboard()->setText(gridText(rows, columns));
  at.perform("clipboardDataWindowMenuItemClicked");
  settle();
  measures.add("* Refresh", [&] { at.perform("clipboardDataWindowRefreshNowButtonPressed"); });
  measures.add("* Split with the first show", [&] {
    group.performClipboardDataOperation({{"Code", std::int64_t{102}}, {"Arg1", u"\n"}, {"Arg2", u","}});
  });
  QWidget* window = at.quillet().windows().widget("clipboardDataWindow");
  auto* grid = at.find<GridView>("clipboardDataWindow", "clipboardDataTableView");
  grid->setFocus();
  settle();
  click(grid->viewport(), {20, 20});
  settle();
  measures.add("first arrow key", [&] { press(grid, Qt::Key_Down); });
  measures.add(
      "arrow key of 50 down", [&] { press(grid, Qt::Key_Down); }, 50);
  measures.add(
      "arrow key of 50 right", [&] { press(grid, Qt::Key_Right); }, 50);
  measures.add(
      "click",
      [&] {
        click(grid->viewport(), {30, 100});
      },
      5);
  measures.add(
      "header click",
      [&] {
        click(grid->horizontalHeader()->viewport(), {30, 5});
      },
      5);
  measures.add(
      "line number click",
      [&] {
        click(grid->verticalHeader()->viewport(), {30, 60});
      },
      5);
  measures.add("Select All", [&] { at.perform("rowsTableViewSelectAllMenuItemClicked"); });
  measures.add(
      "arrow key with all selected", [&] { press(grid, Qt::Key_Down); }, 10);
  measureTable(measures, window, *grid);
  auto* split = at.find<QSplitter>("clipboardDataWindow", "clipboardDataWindowSplitView");
  measures.add(
      "move of the splitter",
      [&] {
        QList<int> sizes = split->sizes();
        split->setSizes({sizes[0] - 10, sizes[1] + 10});
      },
      5);
  measures.add(
      "width of a column", [&] { grid->setColumnWidth(1, grid->columnWidth(1) + 5); }, 5);
  measures.add("text and back to the grid", [&] {
    group.window().updateClipboardDataWindowTextColumns(false);
    settle();
    group.window().updateClipboardDataWindowTextColumns(true);
  });
  measures.add("* Add Line to the Top",
               [&] { at.perform("clipboardDataWindowShiftFillFromTopMenuItemClicked"); });
  measures.add("* undo", [&] { group.undo(); });
  measures.add("* redo", [&] { group.redo(); });
  measures.add("* Add Column to the Left",
               [&] { at.perform("clipboardDataWindowShiftFillFromLeftMenuItemClicked"); });
  measures.add("* undo of it", [&] { group.undo(); });
  measures.add("* flip horizontal", [&] {
    group.performClipboardDataOperation({{"Code", std::int64_t{OpClipboardFlipHorizontal}}});
  });
  measures.add("* undo of a flip", [&] { group.undo(); });
}

void write(const std::string& path, const QString& text) {
  std::ofstream(path, std::ios::binary) << text.toStdString();
}

void measurePreview(Measures& measures, int columns) {
  WindowsAtWork at;
  write(at.home().path("wide.csv"), gridText(40, columns));
  write(at.home().path("narrow.csv"), gridText(40, 3));
  at.application().fileCommands().dropAtEnd({at.home().path("wide.csv"), at.home().path("narrow.csv")});
  settle();
  QWidget* window = at.quillet().windows().widget("window");
  auto* files = at.find<TableView>("window", "filesTableView");
  auto* view = at.find<TableView>("window", "previewTableView");
  measures.add("* to the wide file", [&] { files->selectRow(0); });
  measures.add("* to the narrow file", [&] { files->selectRow(1); });
  measures.add("* to the wide file again", [&] { files->selectRow(0); });
  view->setFocus();
  settle();
  measures.add(
      "arrow key of 8 down", [&] { press(view, Qt::Key_Down); }, 8);
  measures.add(
      "click",
      [&] {
        click(view->viewport(), {30, 60});
      },
      3);
  click(view->viewport(), {30, view->rowViewportPosition(9) + 5});
  settle();
  measures.add(
      "* arrow key beyond the tenth line", [&] { press(view, Qt::Key_Down); }, 5);
  measures.add("* Output as Table", [&] { at.application().previewPanel().setPreviewType(2); });
  measures.add("* Input as Table", [&] { at.application().previewPanel().setPreviewType(1); });
  measureTable(measures, window, *view);
}

void measureFiles(Measures& measures, int count) {
  WindowsAtWork at;
  std::vector<std::string> paths;
  for (int i = 0; i < count; ++i) {
    paths.push_back(at.home().path("file" + std::to_string(i) + ".csv"));
    write(paths.back(), QStringLiteral("a,b\n1,2\n"));
  }
  const std::string one = at.home().path("one.csv");
  write(one, QStringLiteral("a,b\n1,2\n"));
  measures.add("* drop of all", [&] { at.application().fileCommands().dropAtEnd(paths); });
  auto* files = at.find<TableView>("window", "filesTableView");
  files->setFocus();
  measures.add(
      "click",
      [&] {
        click(files->viewport(), {30, 60});
      },
      3);
  measures.add(
      "arrow key of 50", [&] { press(files, Qt::Key_Down); }, 50);
  measures.add("* Select All", [&] { files->selectAll(); });
  measures.add("* one more", [&] { at.application().fileCommands().dropAtEnd({one}); });
  measures.add("* one removed", [&] { at.perform("removeSelectedInputFilesMenuItemClicked"); });
  measureTable(measures, at.quillet().windows().widget("window"), *files);
}

void measureOperations(Measures& measures, int count) {
  WindowsAtWork at;
  write(at.home().path("a.csv"), gridText(40, 3));
  at.application().fileCommands().dropAtEnd({at.home().path("a.csv")});
  settle();
  OperationList list = *at.application().shared().files->at(0)->operations;
  list.insert(list.begin() + 1, static_cast<std::size_t>(count),
              OperationRecord{{"Code", std::int64_t{OpTrimLine}}, {"Arg1", u"x"}});
  at.application().inputFileList().setOperations(0, list);
  auto* table = at.find<TableView>("window", "operationsTableView");
  measures.add("* shown", [&] { at.application().rightSide().updateRightSide(); });
  table->setFocus();
  measures.add(
      "click",
      [&] {
        click(table->viewport(), {30, 60});
      },
      3);
  measures.add(
      "arrow key of 50", [&] { press(table, Qt::Key_Down); }, 50);
  measures.add("Select All", [&] { table->selectAll(); });
  measureTable(measures, at.quillet().windows().widget("window"), *table);
}

void measureJobs(Measures& measures, int count) {
  UserInterface interface;
  Window window(interface, "none", u"");
  std::size_t rows = static_cast<std::size_t>(count);
  Table table(window, "previousJobsWindowJobsTableView",
              {[&] { return rows; },
               [](std::size_t row) {
                 return Table::Row{u"2024-05-05", ui::u16String(QString::number(row)), u"P"};
               }},
              {{"LastSaved", u"Last Saved", 150}, {"JobName", u"Job"}});
  QMainWindow form;
  auto* view = new TableView;
  view->setObjectName(QLatin1String("previousJobsWindowJobsTableView"));
  form.setCentralWidget(view);
  form.resize(600, 500);
  measures.add("* first show", [&] {
    ui::bindControls(window, form);
    form.show();
  });
  view->setFocus();
  measures.add(
      "click",
      [&] {
        click(view->viewport(), {30, 60});
      },
      3);
  measures.add(
      "arrow key of 50", [&] { press(view, Qt::Key_Down); }, 50);
  measures.add("Select All", [&] { view->selectAll(); });
  measures.add("one more", [&] {
    ++rows;
    table.reloadData();
  });
  measures.add("every hundredth one selected", [&] {
    IndexSet selected;
    for (std::size_t row = 0; row < rows; row += 100) selected.addIndex(static_cast<std::int64_t>(row));
    table.selectRows(selected);
  });
  measures.add(
      "paint with them", [&] { view->viewport()->repaint(); }, 5);
  measures.add("one less", [&] {
    --rows;
    table.reloadData();
  });
  table.selectRows({});
  settle();
  measureTable(measures, &form, *view);
  table.setObserver({});
}

// Wide, of two units, of several units that join, from right to left, and what has no shape.
QString mixedText(qsizetype units) {
  const QString line =
      QString::fromUtf8("plain 汉字かな 😀😀 e\u0301a\u0308 שלום مرحبا \u30FBtab\r\u2028line\u0085next ") +
      QChar(0) + QChar(0xD800) + QStringLiteral(" end");
  QString text;
  text.reserve(units + line.size() + 1);
  while (text.size() < units) {
    text += line;
    text += QLatin1Char(text.size() % 7 ? ' ' : '\n');
  }
  return text;
}

void measureText(Measures& measures, const QString& text) {
  QMainWindow form;
  auto* view = new LargeTextView;
  view->setFont(ui::fixedWidthFont());
  form.setCentralWidget(view);
  form.resize(900, 600);
  form.show();
  settle();
  const double before = residentMegabytes();
  measures.add("* setText", [&] { view->setText(text); });
  measures.put("  megabytes that it takes", residentMegabytes() - before);
  view->setFocus();
  measures.add(
      "paint of a frame", [&] { view->viewport()->repaint(); }, 20);
  measures.add("scroll to the end", [&] { scrollTo(view->verticalScrollBar(), 1); });
  measures.add("scroll to the middle", [&] { scrollTo(view->verticalScrollBar(), 0.5); });
  measures.add("scroll to the middle, sideways", [&] { scrollTo(view->horizontalScrollBar(), 0.5); });
  measures.add("scroll to the end, sideways", [&] { scrollTo(view->horizontalScrollBar(), 1); });
  measures.add("resize of the window", [&] { form.resize(937, 611); });
  measures.add("press of the mouse", [&] { click(view->viewport(), {200, 100}); });
  measures.add(
      "page of 20", [&] { press(view, Qt::Key_PageUp); }, 20);
  measures.add("Select All", [&] { view->selectAll(); });
  measures.add(
      "paint with all selected", [&] { view->viewport()->repaint(); }, 5);
  measures.add("* Copy", [&] { view->copy(); });
}

struct Part {
  const char* heading;
  std::function<void(Measures&, int)> measure;  // with the size or its tenth
  int size;
};

const Part kParts[] = {
    {"Grid, 1,000,000 lines of 10 cells", [](Measures& m, int size) { measureGrid(m, size, 10); }, 1'000'000},
    {"Grid, 1,000 lines of 16,384 cells", [](Measures& m, int size) { measureGrid(m, 1'000, size); }, 16'384},
    {"Grid, 100 lines of 16,384 cells", [](Measures& m, int size) { measureGrid(m, 100, size); }, 16'384},
    {"Preview, 16,384 columns", measurePreview, 16'384},
    {"Files, 10,000", measureFiles, 10'000},
    {"Operations, 1,000", measureOperations, 1'000},
    {"Jobs, 100,000", measureJobs, 100'000},
    {"Text, one line of 100,000,000",
     [](Measures& m, int size) { measureText(m, QString(size, QLatin1Char('x'))); }, 100'000'000},
    {"Text, 10,000,000 lines of 10",
     [](Measures& m, int size) { measureText(m, QStringLiteral("123456789\n").repeated(size / 10)); },
     100'000'000},
    {"Text, mixed, 100,000,000", [](Measures& m, int size) { measureText(m, mixedText(size)); }, 100'000'000},
};

}  // namespace
}  // namespace quillet::bench

int main(int argc, char** argv) {
  quillet::bench::withWindows(argc, argv, [&] {
    for (const auto& part : quillet::bench::kParts) {
      if (argc > 1 && std::string(part.heading).find(argv[1]) == std::string::npos) continue;
      quillet::bench::Measures measures;
      for (const int size : {part.size / 10, part.size}) part.measure(measures, size);
      measures.print(part.heading);
    }
  });
}
