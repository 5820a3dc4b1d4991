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
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

namespace {

constexpr int kDragScrollInterval = 60;  // milliseconds, for a row

}  // namespace

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

void TableView::scrollToStart() {
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
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

bool TableView::isList() const {
  return verticalHeader()->isHidden();
}

// A list has no columns to go through, so Home and End are its first and last row.
QModelIndex TableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (!isList() || (action != MoveHome && action != MoveEnd))
    return QTableView::moveCursor(action, modifiers);
  return model()->index(action == MoveHome ? 0 : model()->rowCount() - 1,
                        std::max(currentIndex().column(), 0));
}

// Where nothing is selected yet, a key that moves selects: Qt's own way would pass over the current row.
bool TableView::selectsFirst(const QKeyEvent& event) {
  if (!isList() || selectionMode() == NoSelection || state() == EditingState) return false;
  if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier || !selectedRowIndexes().isEmpty())
    return false;
  const int count = model() ? model()->rowCount() : 0;
  const int now = currentIndex().row();
  int row = -1;
  if (event.key() == Qt::Key_Home) row = 0;
  if (event.key() == Qt::Key_End) row = count - 1;
  if (event.key() == Qt::Key_Down) row = std::max(now, 0);
  if (event.key() == Qt::Key_Up) row = now < 0 ? count - 1 : now;
  if (row < 0 || row >= count) return false;
  setCurrentIndex(model()->index(row, std::max(currentIndex().column(), 0)));
  return true;
}

// Return is the table's own command, not an activation of a cell.
void TableView::keyPressEvent(QKeyEvent* event) {
  if (keyFilter_ && keyFilter_(*event)) return;
  if (selectsFirst(*event)) return;
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
  dragPoint_ = event->position().toPoint();
  dropRow_ = accepts ? dropRowAt(dragPoint_) : -1;
  if (!accepts || edgeAt(dragPoint_) == 0)
    dragScroll_.stop();
  else if (!dragScroll_.isActive())
    dragScroll_.start(kDragScrollInterval, this);
  if (accepts)
    event->acceptProposedAction();
  else
    event->ignore();
  viewport()->update();
}

void TableView::dragLeaveEvent(QDragLeaveEvent*) {
  dragScroll_.stop();
  dropRow_ = -1;
  viewport()->update();
}

void TableView::dropEvent(QDropEvent* event) {
  dragScroll_.stop();
  const int row = dropRowAt(event->position().toPoint());
  dropRow_ = -1;
  viewport()->update();
  if (!drops_.accepts || !drops_.accepts(*event->mimeData())) return event->ignore();
  event->acceptProposedAction();
  drops_.drop(*event->mimeData(), row);
}

// -1 for the upper, 1 for the lower edge.
int TableView::edgeAt(const QPoint& point) const {
  if (point.y() < autoScrollMargin()) return -1;
  return point.y() >= viewport()->height() - autoScrollMargin() ? 1 : 0;
}

// The rows go by below what is held at the edge. Not Qt's own way, which waits for the mouse after a row.
void TableView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != dragScroll_.timerId()) return QTableView::timerEvent(event);
  QScrollBar* bar = verticalScrollBar();
  bar->setValue(bar->value() + edgeAt(dragPoint_) * bar->singleStep());
  dropRow_ = dropRowAt(dragPoint_);
  viewport()->update();  // the line is no part of what has been moved
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
