#include "ui/table_view.h"

#include <QApplication>
#include <QDataStream>
#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

TableView::TableView(QWidget* parent) : QTableView(parent) {
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setAlternatingRowColors(false);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setCornerButtonEnabled(false);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->hide();
  horizontalHeader()->setObjectName(QStringLiteral("columnHeader"));  // for what is drawn beside its columns
  horizontalHeader()->setSectionsMovable(false);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
    if (!showsWidth_) emit columnResized(column, width);
  });
  horizontalHeader()->setHighlightSections(false);
  verticalHeader()->setHighlightSections(false);
  // The application says how wide a column becomes by a double click on its divider.
  disconnect(horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, this, nullptr);
  applyRowHeight();
}

void TableView::setEmptyText(const QString& text) {
  emptyText_ = text;
  viewport()->update();
}

void TableView::setRowHeight(int height, HeightOfFont needed) {
  rowHeight_ = height;
  neededHeight_ = std::move(needed);
  applyRowHeight();
}

void TableView::applyRowHeight() {
  const int needed = neededHeight_ ? neededHeight_(font()) : fontMetrics().height();
  const int height = std::max(rowHeight_, needed + 2);
  // First the least, then what all get, then the least again: it would else resize row by row, each of which
  // moves all behind it.
  verticalHeader()->setMinimumSectionSize(0);
  verticalHeader()->setDefaultSectionSize(height);
  verticalHeader()->setMinimumSectionSize(height);
}

void TableView::showColumnWidth(int column, int width) {
  if (columnWidth(column) == width) return;
  const QScopedValueRollback<bool> showing(showsWidth_, true);
  setColumnWidth(column, width);
}

// The header is told as a whole: each column alone would move all behind it.
void TableView::showColumnWidths(const quillet::Table& table, int firstColumn) {
  if (table.columnsVersion() == shownColumns_ || !model()) return;
  shownColumns_ = table.columnsVersion();
  QHeaderView* header = horizontalHeader();
  const QSignalBlocker silence(header);
  // Also where a parent of the view has them off for the moment, which must not stay.
  const bool updates = !header->testAttribute(Qt::WA_ForceUpdatesDisabled);
  header->setUpdatesEnabled(false);
  const int available = static_cast<int>(table.columnCount()) - firstColumn;
  const int count = std::min(model()->columnCount(), available);
  for (int column = 0; column < count; ++column)
    if (const int width = table.column(static_cast<std::size_t>(column + firstColumn)).width; width > 0)
      header->resizeSection(column, width);
  header->setUpdatesEnabled(updates);
  updateGeometries();
  header->viewport()->update();
  viewport()->update();
}

void TableView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) applyRowHeight();
}

void TableView::setDrops(Drops drops) {
  drops_ = std::move(drops);
  setDragEnabled(!drops_.mimeType.isEmpty());
  setAcceptDrops(true);
  viewport()->setAcceptDrops(true);
}

quillet::IndexSet TableView::selectedRowIndexes() const {
  quillet::IndexSet rows;
  if (!selectionModel()) return rows;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    rows.addRange(range.top(), range.bottom());
  return rows;
}

void TableView::selectRows(int first, int last) {
  const QItemSelection rows(model()->index(first, 0), model()->index(last, model()->columnCount() - 1));
  selectionModel()->setCurrentIndex(model()->index(first, 0), QItemSelectionModel::NoUpdate);
  selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
}

void TableView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (dropRow_ >= 0) paintDropLine();
  if (emptyText_.isEmpty() || (model() && model()->rowCount() > 0)) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect(), static_cast<int>(Qt::AlignCenter | Qt::TextWordWrap), emptyText_);
}

// Return is the table's own command, not an activation of a cell.
void TableView::keyPressEvent(QKeyEvent* event) {
  if (keyFilter_ && keyFilter_(*event)) return;
  const bool isMove = event->modifiers() == Qt::AltModifier && !drops_.mimeType.isEmpty();
  if (isMove && event->key() == Qt::Key_Up) return emit moveAsked(-1);
  if (isMove && event->key() == Qt::Key_Down) return emit moveAsked(1);
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return event->ignore();
  QTableView::keyPressEvent(event);
}

void TableView::mouseDoubleClickEvent(QMouseEvent* event) {
  QTableView::mouseDoubleClickEvent(event);
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index.isValid()) emit activatedRow(index.row());
}

void TableView::startDrag(Qt::DropActions) {
  const quillet::IndexSet rows = selectedRowIndexes();
  if (rows.isEmpty()) return;
  auto* drag = new QDrag(this);
  drag->setMimeData(mimeDataOfRows(drops_.mimeType, rows));
  drag->exec(Qt::CopyAction);
}

void TableView::dragEnterEvent(QDragEnterEvent* event) {
  if (drops_.accepts && drops_.accepts(*event->mimeData()))
    event->acceptProposedAction();
  else
    event->ignore();
}

void TableView::dragMoveEvent(QDragMoveEvent* event) {
  const bool accepts = drops_.accepts && drops_.accepts(*event->mimeData());
  dropRow_ = accepts ? dropRowAt(event->position().toPoint()) : -1;
  if (accepts)
    event->acceptProposedAction();
  else
    event->ignore();
  viewport()->update();
}

void TableView::dragLeaveEvent(QDragLeaveEvent*) {
  dropRow_ = -1;
  viewport()->update();
}

void TableView::dropEvent(QDropEvent* event) {
  const int row = dropRowAt(event->position().toPoint());
  dropRow_ = -1;
  viewport()->update();
  if (!drops_.accepts || !drops_.accepts(*event->mimeData())) return event->ignore();
  event->acceptProposedAction();
  drops_.drop(*event->mimeData(), row);
}

// The gap between two rows that is nearest.
int TableView::dropRowAt(const QPoint& point) const {
  const int row = rowAt(point.y());
  if (row < 0) return model() ? model()->rowCount() : 0;
  return point.y() > rowViewportPosition(row) + rowHeight(row) / 2 ? row + 1 : row;
}

void TableView::paintDropLine() {
  const int count = model()->rowCount();
  int y = 0;
  if (count)
    y = dropRow_ < count ? rowViewportPosition(dropRow_)
                         : rowViewportPosition(count - 1) + rowHeight(count - 1);
  QPainter painter(viewport());
  painter.setPen(QPen(palette().color(QPalette::Link), 2));
  painter.drawLine(0, y, viewport()->width(), y);
}

QMimeData* mimeDataOfRows(const QString& mimeType, const quillet::IndexSet& rows) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream << QCoreApplication::applicationPid() << static_cast<qint64>(rows.ranges().size());
  for (const auto& range : rows.ranges())
    stream << static_cast<qint64>(range.first) << static_cast<qint64>(range.last);
  auto* data = new QMimeData;
  data->setData(mimeType, bytes);
  return data;
}

std::optional<quillet::IndexSet> rowsOfMimeData(const QMimeData& data, const QString& mimeType) {
  const QByteArray bytes = data.data(mimeType);
  QDataStream stream(bytes);
  qint64 process = 0;
  qint64 count = 0;
  stream >> process >> count;
  if (stream.status() != QDataStream::Ok || process != QCoreApplication::applicationPid())
    return std::nullopt;
  quillet::IndexSet rows;
  for (qint64 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
    qint64 first = 0;
    qint64 last = 0;
    stream >> first >> last;
    rows.addRange(first, last);
  }
  return rows;
}
