#include "ui/grid_view.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <limits>

#include "shell/column_width.h"
#include "ui/accessible_events.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

using quillet::ClickModifiers;
using quillet::GridKey;

namespace quillet::ui {

namespace {

constexpr int kRowNumberWidth = 65;

int intOf(std::size_t value) {
  return static_cast<int>(std::min<std::size_t>(value, std::numeric_limits<int>::max()));
}

class GridDelegate final : public QStyledItemDelegate {
 public:
  GridDelegate(ClipboardGroup& group, QObject* parent) : QStyledItemDelegate(parent), group_(group) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const Colours& colours = coloursOf(option.palette);
    const std::int64_t tag = ClipboardSelection::tagForCell(index.row(), index.column());
    const bool selected = group_.data().selection().isSelected(tag);
    const bool focused = option.widget && option.widget->hasFocus();
    const QColor plain = index.row() % 2 ? colours.alternate : colours.base;
    const QColor strong = focused ? colours.selectedFill : colours.cellUnfocused;
    painter->fillRect(option.rect, selected ? strong : plain);
    if (ClipboardSelection::isEmpty(tag, group_.data().clipboardDataArray())) {
      painter->setPen(selected ? colours.missingSelected : colours.missing);
      painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    const QColor selectedText = focused ? colours.selectedText : colours.cellUnfocusedText;
    painter->setPen(selected ? selectedText : colours.text);
    painter->setFont(option.font);
    const QString text =
        option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, option.rect.width() - 8);
    painter->drawText(option.rect.adjusted(5, 0, -3, 0),
                      static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine), text);
  }

 private:
  ClipboardGroup& group_;
};

}  // namespace

GridModel::GridModel(ClipboardGroup& group, QObject* parent)
    : QAbstractTableModel(parent),
      group_(group),
      rowCount_(gridRowCount()),
      columnCount_(gridColumnCount()) {}

int GridModel::gridRowCount() const {
  return intOf(group_.data().clipboardDataArray().rowCount());
}

int GridModel::gridColumnCount() const {
  return intOf(group_.table().dataColumnCount());
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rowCount_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columnCount_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  const ClipboardGrid& grid = group_.data().clipboardDataArray();
  if (!index.isValid() || static_cast<std::size_t>(index.row()) >= grid.rowCount()) return {};
  if (role == Qt::AccessibleTextRole && !grid.hasCell(index.row(), index.column())) return tr("missing");
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
  // More than fits any screen is not shaped.
  constexpr std::size_t kMostShown = 2'000;
  const ClipboardRow row = grid.row(static_cast<std::size_t>(index.row()));
  return qString(row.cell(static_cast<std::size_t>(index.column())).substr(0, kMostShown));
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role == Qt::DisplayRole) return section + 1;
  if (role == Qt::TextAlignmentRole)
    return static_cast<int>(orientation == Qt::Horizontal ? Qt::AlignCenter
                                                          : Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

void GridModel::refresh() {
  const int rows = gridRowCount();
  const int columns = gridColumnCount();
  if (rows != rowCount_ || columns != columnCount_) {
    beginResetModel();
    rowCount_ = rows;
    columnCount_ = columns;
    endResetModel();
  } else if (rows && columns) {
    emit dataChanged(index(0, 0), index(rows - 1, columns - 1));
  }
}

}  // namespace quillet::ui

namespace {

ClickModifiers clickModifiers(Qt::KeyboardModifiers modifiers) {
  return {modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier),
          modifiers.testFlag(Qt::AltModifier)};
}

std::optional<GridKey> gridKey(int key) {
  switch (key) {
    case Qt::Key_Up:
      return GridKey::Up;
    case Qt::Key_Down:
      return GridKey::Down;
    case Qt::Key_Left:
      return GridKey::Left;
    case Qt::Key_Right:
      return GridKey::Right;
    case Qt::Key_Tab:
      return GridKey::Tab;
    case Qt::Key_Backtab:
      return GridKey::BackTab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return GridKey::Return;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      return GridKey::Delete;
    default:
      return std::nullopt;
  }
}

}  // namespace

GridView::GridView(QWidget* parent) : TableView(parent) {
  setSelectionMode(NoSelection);
  setFont(quillet::ui::fixedWidthFont());
  viewport()->setBackgroundRole(QPalette::Window);  // beyond the cells
  setRowHeight(17);
  setCornerButtonEnabled(true);
  verticalHeader()->show();
  verticalHeader()->setFixedWidth(quillet::ui::kRowNumberWidth);
  horizontalHeader()->setSectionsClickable(true);
  verticalHeader()->setSectionsClickable(true);
  horizontalHeader()->setMinimumSectionSize(20);
}

void GridView::setGroup(quillet::ClipboardGroup& group) {
  group_ = &group;
  model_ = new quillet::ui::GridModel(group, this);
  setModel(model_);
  setItemDelegate(new quillet::ui::GridDelegate(group, this));
  listenToHeaders();
  if (parentWidget()) parentWidget()->installEventFilter(this);
  refresh();
}

void GridView::listenToHeaders() {
  connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
    group_->table().didClickTableColumn(column + 1, clickModifiers(QGuiApplication::keyboardModifiers()));
  });
  connect(horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, this,
          [this](int column) { fitColumnToText(column); });
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
    if (!applyingWidths_)
      group_->table().table().userResizesColumn(static_cast<std::size_t>(column) + 1, width);
  });
  connect(verticalHeader(), &QHeaderView::sectionPressed, this, [this](int row) { rowNumberDown(row, 1); });
  connect(verticalHeader(), &QHeaderView::sectionDoubleClicked, this,
          [this](int row) { rowNumberDown(row, 2); });
  // The corner is the header of the row numbers.
  if (auto* corner = findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly)) {
    corner->disconnect(this);
    connect(corner, &QAbstractButton::clicked, this, [this] {
      group_->table().didClickTableColumn(0, clickModifiers(QGuiApplication::keyboardModifiers()));
    });
  }
  for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, [this, header](const QPoint& point) {
      emit contextMenuRequestedAt(header->viewport()->mapToGlobal(point),
                                  header == verticalHeader() ? RowNumbers : Headers);
    });
  }
}

void GridView::refresh() {
  if (!model_) return;
  model_->refresh();
  applyColumnWidths();
  showFocus();
  viewport()->update();
}

// A width of 0 leaves it to the view, which shares its space.
void GridView::applyColumnWidths() {
  applyingWidths_ = true;
  const quillet::Table& table = group_->table().table();
  const int count = model_->columnCount();
  for (int column = 0; column < count; ++column) {
    const int width = table.column(static_cast<std::size_t>(column) + 1).width;
    const int shown = width > 0 ? width : std::max(viewport()->width() / std::max(count, 1), 20);
    if (columnWidth(column) != shown) setColumnWidth(column, shown);
  }
  applyingWidths_ = false;
}

// Keys move the focus out of sight of the eye, so it is brought into the view.
void GridView::showFocus() {
  const quillet::ClipboardSelection& selection = group_->data().selection();
  const QModelIndex index = model_->index(static_cast<int>(selection.focusedRowIndex()),
                                          static_cast<int>(selection.focusedColumnIndex()));
  if (!index.isValid() || index == currentIndex()) return;
  setCurrentIndex(index);
  tellFocusedCell();
}

// Not Qt's own way, which would tell the cell once more.
void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QAbstractItemView::currentChanged(current, previous);  // NOLINT(bugprone-parent-virtual-call)
}

// The number of a cell among the parts of the table for a screen reader counts the headers too.
void GridView::tellFocusedCell() {
  if (!hasFocus() || !currentIndex().isValid()) return;
  const int columns = model_->columnCount() + 1;
  QAccessibleEvent event(this, QAccessible::Focus);
  event.setChild((currentIndex().row() + 1) * columns + currentIndex().column() + 1);
  quillet::ui::tellReaders(event);
}

void GridView::keyPressEvent(QKeyEvent* event) {
  const auto key = gridKey(event->key());
  const bool command = event->modifiers().testFlag(Qt::ControlModifier);
  if (!group_ || !key) return TableView::keyPressEvent(event);
  // These are shortcuts of the menu; while their item is off they do nothing.
  if (command && *key != GridKey::Tab && *key != GridKey::BackTab) return;
  group_->table().keyDown(*key, event->modifiers().testFlag(Qt::ShiftModifier),
                          event->modifiers().testFlag(Qt::AltModifier));
  refresh();
}

void GridView::mouseDown(const QPoint& position, int clickCount, Qt::KeyboardModifiers modifiers) {
  const int row = rowAt(position.y());
  const int column = columnAt(position.x());
  group_->table().mouseDown(row, column < 0 ? -1 : column + 1, clickCount, clickModifiers(modifiers));
  refresh();
}

void GridView::rowNumberDown(int row, int clickCount) {
  setFocus();
  group_->table().mouseDown(row, 0, clickCount, clickModifiers(QGuiApplication::keyboardModifiers()));
  refresh();
}

void GridView::mousePressEvent(QMouseEvent* event) {
  if (!group_) return;
  const QPoint position = event->position().toPoint();
  if (event->button() == Qt::LeftButton) return mouseDown(position, 1, event->modifiers());
  if (event->button() != Qt::RightButton) return;
  const int row = rowAt(position.y());
  const int column = columnAt(position.x());
  const bool hit = row >= 0 && column >= 0;
  if (hit && !group_->data().selection().selected2DIndexSet().containsRowIndex(row, column))
    mouseDown(position, 1, Qt::NoModifier);
}

void GridView::mouseMoveEvent(QMouseEvent*) {}

void GridView::mouseReleaseEvent(QMouseEvent*) {}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (group_ && event->button() == Qt::LeftButton)
    mouseDown(event->position().toPoint(), 2, event->modifiers());
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
  emit contextMenuRequestedAt(event->globalPos(), Cells);
}

// The colour of the selection depends on the focus.
void GridView::focusInEvent(QFocusEvent* event) {
  TableView::focusInEvent(event);
  viewport()->update();
  tellFocusedCell();
}

void GridView::focusOutEvent(QFocusEvent* event) {
  TableView::focusOutEvent(event);
  viewport()->update();
}

void GridView::resizeEvent(QResizeEvent* event) {
  TableView::resizeEvent(event);
  if (group_ && event->size().width() != event->oldSize().width()) tellWidth(width());
}

// A grid that is not shown yet has its columns made for the place that it will get.
bool GridView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && !isVisible())
    tellWidth(static_cast<QResizeEvent*>(event)->size().width());
  return TableView::eventFilter(watched, event);
}

void GridView::tellWidth(int width) {
  constexpr int kFrame = 2;
  const int bar = verticalScrollBar()->sizeHint().width();
  group_->table().windowDidResize(std::max(width - kFrame - bar, 0));
  applyColumnWidths();
}

// Tab moves in the grid.
bool GridView::focusNextPrevChild(bool) {
  return false;
}

void GridView::fitColumnToText(int column) {
  const QFontMetrics metrics(font());
  const auto first = static_cast<std::size_t>(std::max(rowAt(0), 0));
  const auto inSight = static_cast<std::size_t>(viewport()->height() / std::max(rowHeight(0), 1) + 1);
  const int width = quillet::tableViewSizeToFitWidthOfColumn(
      group_->table().table(), static_cast<std::size_t>(column) + 1, first, inSight,
      [&](std::u16string_view text) { return metrics.horizontalAdvance(quillet::ui::qString(text)); });
  setColumnWidth(column, width);
}
