#include "ui/grid_view.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "ui/accessible_events.h"
#include "ui/fitted_width.h"
#include "ui/row_delegates.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

using quillet::ClickModifiers;
using quillet::GridKey;

namespace quillet::ui {

namespace {

constexpr int kRowNumberWidth = 65;

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
    if (!selected) paintColumnLine(*painter, option);
    if (ClipboardSelection::isEmpty(tag, group_.data().clipboardDataArray())) {
      painter->setPen(selected ? colours.missingSelected : colours.missing);
      painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    const QColor selectedText = focused ? colours.selectedText : colours.cellUnfocusedText;
    painter->setPen(selected ? selectedText : colours.text);
    painter->setFont(option.font);
    painter->drawText(option.rect.adjusted(4, 0, -2, 0),
                      static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine),
                      fittingText(option, index, option.rect.width() - 6));
  }

 private:
  ClipboardGroup& group_;
};

}  // namespace

GridModel::GridModel(ClipboardGroup& group, QObject* parent)
    : SizedModel(
          [&group] {
            return Size{intOf(group.data().clipboardDataArray().rowCount()),
                        intOf(group.table().dataColumnCount())};
          },
          parent),
      group_(group) {}

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

bool isArrow(GridKey key) {
  return key == GridKey::Up || key == GridKey::Down || key == GridKey::Left || key == GridKey::Right;
}

}  // namespace

GridView::GridView(QWidget* parent) : TableView(parent) {
  setSelectionMode(NoSelection);
  setFrameShape(NoFrame);
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
  parentWidget()->installEventFilter(this);
  tellWidth();
  refresh();
}

void GridView::listenToHeaders() {
  connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
    group_->table().didClickTableColumn(column + 1, clickModifiers(QGuiApplication::keyboardModifiers()));
  });
  connect(horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, this,
          [this](int column) { fitColumnToText(column); });
  connect(this, &TableView::columnResized, this, [this](int column, int width) {
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
    const Part part = header == verticalHeader() ? RowNumbers : Headers;
    connect(header, &QWidget::customContextMenuRequested, this, [this, header, part](const QPoint& point) {
      selectForMenu(*header, header->logicalIndexAt(point));
      emit contextMenuRequestedAt(header->viewport()->mapToGlobal(point), part);
    });
  }
}

// As a right press in the grid: what is outside the selection becomes it. A number stands for its line and a
// header for its column, of which a single cell may be selected.
void GridView::selectForMenu(const QHeaderView& header, int section) {
  if (section < 0) return;
  const auto& selected = group_->data().selection().selected2DIndexSet();
  const auto& cells = selected.rowIndexDictionary();
  if (&header == verticalHeader()) {
    const auto line = cells.find(section);
    const bool hasCells = line != cells.end() && !line->second.isEmpty();
    if (!hasCells && !selected.containsInfiniteRowIndex(section))
      group_->table().mouseDown(section, 0, 1, {});
    return;
  }
  const bool hasCells = std::any_of(cells.begin(), cells.end(),
                                    [section](const auto& line) { return line.second.contains(section); });
  if (!hasCells && !selected.containsInfiniteColumnIndex(section))
    group_->table().didClickTableColumn(section + 1, {});
}

void GridView::refresh() {
  if (!model_) return;
  model_->refresh();
  showColumnWidths(group_->table().table(), 1);
  showFocus();
}

// Keys move the focus out of sight of the eye, so it is brought into the view; where it has not moved, what
// the user has scrolled to stays.
void GridView::showFocus() {
  const quillet::ClipboardSelection& selection = group_->data().selection();
  const QModelIndex index = model_->index(static_cast<int>(selection.focusedRowIndex()),
                                          static_cast<int>(selection.focusedColumnIndex()));
  const QPoint focus(index.column(), index.row());  // -1, -1 for none
  const bool moved = std::exchange(shownFocus_, focus) != focus;
  if (!index.isValid()) return;
  setAutoScroll(moved);
  setCurrentIndex(index);  // from which keys of Qt's go on
  setAutoScroll(true);
  if (moved) tellFocusedCell();
}

// Not Qt's own way, which would tell the cell once more.
void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QAbstractItemView::currentChanged(current, previous);  // NOLINT(bugprone-parent-virtual-call)
}

// The number of a cell among the parts of the table for a screen reader counts the headers too.
void GridView::tellFocusedCell() {
  if (!hasFocus() || shownFocus_.y() < 0) return;
  const int columns = model_->columnCount() + 1;
  QAccessibleEvent event(this, QAccessible::Focus);
  event.setChild((shownFocus_.y() + 1) * columns + shownFocus_.x() + 1);
  quillet::ui::tellReaders(event);
}

void GridView::keyPressEvent(QKeyEvent* event) {
  if (group_ && event->matches(QKeySequence::SelectAll)) {
    group_->table().rowsTableViewSelectAllMenuItemClicked();
    return refresh();
  }
  const auto key = gridKey(event->key());
  if (!group_ || !key) return TableView::keyPressEvent(event);
  // These are shortcuts of the menu; while their item is off they do nothing.
  if (isArrow(*key) && event->modifiers().testFlags(Qt::ControlModifier | Qt::ShiftModifier)) return;
  group_->table().keyDown(*key, event->modifiers().testFlag(Qt::ShiftModifier),
                          event->modifiers().testFlag(Qt::AltModifier));
  showFocus();
}

void GridView::mouseDown(const QPoint& position, int clickCount, Qt::KeyboardModifiers modifiers) {
  const int row = rowAt(position.y());
  const int column = columnAt(position.x());
  group_->table().mouseDown(row, column < 0 ? -1 : column + 1, clickCount, clickModifiers(modifiers));
}

void GridView::rowNumberDown(int row, int clickCount) {
  setFocus();
  group_->table().mouseDown(row, 0, clickCount, clickModifiers(QGuiApplication::keyboardModifiers()));
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
  if (group_) showFocus();
  tellFocusedCell();
}

void GridView::focusOutEvent(QFocusEvent* event) {
  TableView::focusOutEvent(event);
  viewport()->update();
}

// Before its window is laid out nothing tells the width that the grid will have, so columns made until then
// are made again.
void GridView::showEvent(QShowEvent* event) {
  TableView::showEvent(event);
  if (!group_ || std::exchange(wasShown_, true)) return;
  tellWidth();
  group_->table().resizeClipboardTableViewColumns(false);
}

// The place of the grid, which it has to itself while it is shown: its own width is any until then.
bool GridView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && watched == parentWidget()) tellWidth();
  return TableView::eventFilter(watched, event);
}

void GridView::tellWidth() {
  const int bar = verticalScrollBar()->sizeHint().width();
  group_->table().windowDidResize(std::max(parentWidget()->width() - bar, 0));
}

// Tab moves in the grid.
bool GridView::focusNextPrevChild(bool) {
  return false;
}

void GridView::fitColumnToText(int column) {
  setColumnWidth(
      column, quillet::ui::fittedWidth(*this, group_->table().table(), static_cast<std::size_t>(column) + 1));
}
