// The keys, drops and context menus of ApplicationWindows.
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QMimeData>
#include <QShortcut>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "shell/drag_and_drop.h"
#include "shell/table_keys.h"
#include "ui/application_windows.h"
#include "ui/table_view.h"

namespace quillet::ui {

namespace {

QString mimeTypeOf(DropTable table) {
  switch (table) {
    case DropTable::Files:
      return QStringLiteral("application/x-quillet-inputfiles");
    case DropTable::Operations:
      return QStringLiteral("application/x-quillet-operations");
    case DropTable::RearrangeColumns:
      return QStringLiteral("application/x-quillet-rearrangecolumns");
  }
  return {};
}

std::vector<DragType> typesOf(const QMimeData& data) {
  std::vector<DragType> types;
  if (data.hasUrls()) types.push_back(DragType::FileNames);
  if (data.hasText()) types.push_back(DragType::String);
  for (const DropTable table : {DropTable::Files, DropTable::Operations, DropTable::RearrangeColumns})
    if (rowsOfMimeData(data, mimeTypeOf(table))) types.push_back(dragTypeOfRows(table));
  return types;
}

std::vector<std::string> localPaths(const QMimeData& data) {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile()) paths.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
  return paths;
}

// The first character of a key press as the application names it; 0 for a key that it does not know.
char16_t keyOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
      return kUpArrowKey;
    case Qt::Key_Down:
      return kDownArrowKey;
    case Qt::Key_Space:
      return kSpaceKey;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return kReturnKey;
    default:
      return 0;
  }
}

bool isTabStop(const QWidget& widget) {
  return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
}

// The pane itself or what is first in it; nothing where it is out of sight.
QWidget* firstTabStop(QWidget& pane) {
  if (isTabStop(pane)) return &pane;
  const QList<QWidget*> children = pane.findChildren<QWidget*>();
  const auto first =
      std::find_if(children.begin(), children.end(), [](auto* child) { return isTabStop(*child); });
  return first == children.end() ? nullptr : *first;
}

bool hasFocus(const QWidget& pane) {
  return pane.hasFocus() || pane.isAncestorOf(QApplication::focusWidget());
}

// Where Tab would go from the end of the pane: from the only one in sight F6 goes on there.
QWidget* tabStopBeyond(QWidget& pane, int step) {
  const auto next = [step](const QWidget& widget) {
    return step > 0 ? widget.nextInFocusChain() : widget.previousInFocusChain();
  };
  for (QWidget* widget = next(pane); widget != &pane; widget = next(*widget))
    if (!pane.isAncestorOf(widget) && isTabStop(*widget)) return widget;
  return nullptr;
}

}  // namespace

// What tables do with keys before Qt sees them. F6 goes round the panes of a window.
void ApplicationWindows::addKeys() {
  for (const char* name : {"previewTableView", "previewOutputTableView"}) {
    auto* view = find<TableView>("window", name);
    auto* table = dynamic_cast<Table*>(application_.interface().control(name));
    view->setKeyFilter([this, table](const QKeyEvent& event) {
      const char16_t key = keyOf(event);
      return key &&
             application_.previewKeys().keyDown(*table, {key, event.modifiers().testFlag(Qt::AltModifier),
                                                         event.modifiers().testFlag(Qt::ControlModifier)});
    });
  }
  find<TableView>("window", "filesTableView")->setKeyFilter([](const QKeyEvent& event) {
    return swallowsKey("filesTableView", keyOf(event));
  });
  addPaneKeys("window", {"filesTableView", "operationsTableView", "previewStack", "rightSideHelpBox"});
  addPaneKeys("clipboardDataWindow", {"clipboardDataWindowStack", "clipboardDataWindowOperationsTableView"});
  addPaneKeys("previousJobsWindow", {"previousJobsWindowJobsTableView", "previousJobsWindowFilesTableView",
                                     "previousJobFileWindowOperationsTableView"});
}

void ApplicationWindows::addPaneKeys(std::string_view window, const QStringList& panes) {
  QWidget* form = widget(window);
  const auto go = [this, form, panes](int step) {
    if (isBlocked(*form)) return;
    std::vector<QWidget*> inSight;
    for (const QString& name : panes)
      if (auto* pane = form->findChild<QWidget*>(name); firstTabStop(*pane)) inSight.push_back(pane);
    if (inSight.empty()) return;
    const auto count = static_cast<int>(inSight.size());
    int now = step > 0 ? -1 : count;
    for (int i = 0; i < count; ++i)
      if (hasFocus(*inSight[static_cast<std::size_t>(i)])) now = i;
    QWidget* pane = inSight[static_cast<std::size_t>((now + step + count) % count)];
    QWidget* next = hasFocus(*pane) ? tabStopBeyond(*pane, step) : firstTabStop(*pane);
    if (next) next->setFocus(Qt::ShortcutFocusReason);
  };
  connect(new QShortcut(QKeySequence(Qt::Key_F6), form), &QShortcut::activated, form, [go] { go(1); });
  connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F6), form), &QShortcut::activated, form,
          [go] { go(-1); });
}

void ApplicationWindows::addContextMenus() {
  const auto add = [this](const char* window, const char* table, QMenu* menu) {
    auto* view = find<TableView>(window, table);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QWidget::customContextMenuRequested, menu,
            [view, menu](const QPoint& point) { menu->popup(view->viewport()->mapToGlobal(point)); });
  };
  const MenuActions ofMain = menuActions(application_.windows().main);
  add("window", "filesTableView", newFilesMenu(widget("window"), ofMain));
  add("window", "operationsTableView", newOperationsMenu(widget("window"), ofMain));
  add("previousJobsWindow", "previousJobsWindowJobsTableView",
      newJobsMenu(widget("previousJobsWindow"), menuActions(application_.windows().previousJobs)));
}

void ApplicationWindows::addDrops() {
  const auto add = [&](const char* window, const char* name, DropTable table,
                       std::function<void(const QMimeData&, int)> drop) {
    auto* view = find<TableView>(window, name);
    view->setDrops(
        {mimeTypeOf(table),
         [table](const QMimeData& data) { return validateDrop(table, typesOf(data)) == DropOperation::Copy; },
         std::move(drop)});
    connect(view, &TableView::moveAsked, this,
            [this, view](int direction) { moveSelectedRows(*view, direction); });
  };
  add("window", "filesTableView", DropTable::Files, [this](const QMimeData& data, int row) {
    application_.fileCommands().acceptDrop(
        {rowsOfMimeData(data, mimeTypeOf(DropTable::Files)), localPaths(data)}, row);
  });
  add("window", "operationsTableView", DropTable::Operations, [this](const QMimeData& data, int row) {
    if (const auto rows = rowsOfMimeData(data, mimeTypeOf(DropTable::Operations)))
      application_.operationEditor().acceptDrop(*rows, row);
  });
  add("rearrangeColumnsOperationWindow", "rearrangeColumnsOperationWindowColumnsTableView",
      DropTable::RearrangeColumns, [this](const QMimeData& data, int row) {
        if (const auto rows = rowsOfMimeData(data, mimeTypeOf(DropTable::RearrangeColumns)))
          application_.operationEditor().panels().rearrangeColumns().acceptDrop(*rows, row);
      });
}

// As a drop of the selected rows one gap further. The moved rows are selected afterwards, so that the next
// key moves them on. An operation stays between the two ends.
void ApplicationWindows::moveSelectedRows(TableView& view, int rows) {
  const IndexSet selected = view.selectedRowIndexes();
  if (selected.isEmpty()) return;
  RearrangeColumnsPanel& columns = application_.operationEditor().panels().rearrangeColumns();
  if (view.objectName() == QLatin1String("rearrangeColumnsOperationWindowColumnsTableView"))
    return rows < 0 ? columns.moveSelectedRowsUp() : columns.moveSelectedRowsDown();
  const bool isOperations = view.objectName() == QLatin1String("operationsTableView");
  const int ends = isOperations ? 1 : 0;
  const std::int64_t row = rows < 0 ? selected.firstIndex() - 1 : selected.lastIndex() + 2;
  const std::int64_t first = selected.firstIndex();
  const std::int64_t last = view.model()->rowCount() - 1;
  const bool hasEnd = first < ends || selected.lastIndex() > last - ends;
  // An end that is selected is refused in words.
  if (!hasEnd && (row < ends || row > last + 1 - ends)) return;
  if (row < 0 || row > last + 1) return;
  if (isOperations)
    application_.operationEditor().acceptDrop(selected, row);
  else
    application_.fileCommands().acceptDrop({selected, {}}, row);
  if (hasEnd && isOperations) return;
  const std::int64_t moved = rows < 0 ? row : row - selected.count();
  view.selectRows(static_cast<int>(moved), static_cast<int>(moved + selected.count() - 1));
}

}  // namespace quillet::ui
