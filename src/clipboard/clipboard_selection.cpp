#include "clipboard/clipboard_selection.h"

#include <algorithm>

namespace quillet {

namespace {

constexpr std::int64_t kAlternateStep = 10;
constexpr std::int64_t kTagColumns = 256;

bool isTheOnlyIndex(const IndexSet& indexes, std::int64_t index) {
  return indexes.firstIndex() == index && indexes.lastIndex() == index;
}

void toggleIndex(IndexSet& indexes, std::int64_t index) {
  if (indexes.contains(index))
    indexes.removeIndex(index);
  else
    indexes.addIndex(index);
}

// Shift: the range grows towards the index, never shrinks at the far end, and loses its gaps. At the first
// index itself nothing changes.
void growTowards(IndexSet& indexes, std::int64_t index) {
  if (indexes.isEmpty()) return indexes.addIndex(index);
  const std::int64_t first = indexes.firstIndex();
  const std::int64_t last = indexes.lastIndex();
  if (index == first) return;
  indexes.clear();
  indexes.addRange(std::min(first, index), std::max(last, index));
}

std::int64_t stepBack(std::int64_t index, bool alternate) {
  return alternate ? std::max<std::int64_t>(index - kAlternateStep, 0) : index - 1;
}

// The focus may have been left behind the end.
std::int64_t stepOn(std::int64_t index, bool alternate, std::int64_t count) {
  index = std::min(index, count);
  return alternate ? std::min(index + kAlternateStep, count - 1) : index + 1;
}

}  // namespace

void ClipboardSelection::resetClipboardDataFocusAndSelection() {
  *this = {};
}

// --- Keys. ---

bool ClipboardSelection::moveFocusToRow(std::int64_t row, std::int64_t column, const GridTableSize& table) {
  if (row < 0 || column < 0 || row >= table.rowCount || column >= table.columnCount) return false;
  focusedRowIndex_ = row;
  focusedColumnIndex_ = column;
  return true;
}

// Shift is as no modifier: nothing is extended, which is meant.
ClipboardSelection::Next ClipboardSelection::keyDown(GridKey key, bool /*shift*/, bool alternate,
                                                     const GridTableSize& table) {
  std::int64_t row = focusedRowIndex_;
  std::int64_t column = focusedColumnIndex_;
  switch (key) {
    case GridKey::Up:
      row = stepBack(row, alternate);
      break;
    case GridKey::Down:
      row = stepOn(row, alternate, table.rowCount);
      break;
    case GridKey::Left:
      column = stepBack(column, alternate);
      break;
    case GridKey::Right:
      column = stepOn(column, alternate, table.columnCount);
      break;
    case GridKey::Tab:
      column = stepOn(column, false, table.columnCount);
      break;
    case GridKey::BackTab:
      column = stepBack(column, false);
      break;
    case GridKey::Return:
      return Next::ShowCellDetails;
    case GridKey::Delete:
      return Next::Nothing;
  }
  moveFocusToRow(row, column, table);
  return Next::Nothing;  // the focus is not drawn
}

// --- Clicks. ---

ClipboardSelection::Next ClipboardSelection::mouseDown(std::int64_t row, std::int64_t tableColumn,
                                                       std::int64_t clickCount,
                                                       const ClickModifiers& modifiers) {
  if (row < 0 || tableColumn < 0) return Next::Nothing;
  if (clickCount >= 2) return plainClick(row, tableColumn, true);  // whatever is held
  if (modifiers.shift) return modifiers.alternate ? Next::Nothing : shiftClick(row, tableColumn);
  if (modifiers.command) return commandClick(row, tableColumn);
  if (modifiers.alternate) return Next::Nothing;
  return plainClick(row, tableColumn, false);
}

// A plain click on the number of the only selected row deselects it.
ClipboardSelection::Next ClipboardSelection::plainClick(std::int64_t row, std::int64_t tableColumn,
                                                        bool doubleClick) {
  const bool wasTheOnlyRow = isTheOnlyIndex(selected2DIndexSet_.infiniteRowIndexSet(), row);
  selected2DIndexSet_.removeAllIndexes();
  if (tableColumn == 0) {
    if (!wasTheOnlyRow) selected2DIndexSet_.addInfiniteRowIndex(row);
    focusedColumnIndex_ = -1;  // and the row of the focus stays, which is meant
    return Next::Reload;
  }
  selected2DIndexSet_.addRowIndex(row, tableColumn - 1);
  focusedRowIndex_ = row;
  focusedColumnIndex_ = tableColumn - 1;
  return doubleClick ? Next::ShowCellDetails : Next::Reload;
}

ClipboardSelection::Next ClipboardSelection::commandClick(std::int64_t row, std::int64_t tableColumn) {
  if (tableColumn == 0) {
    selected2DIndexSet_.removeAllInfiniteColumnIndexes();
    selected2DIndexSet_.removeNonInfiniteIndexes();
    toggleIndex(selected2DIndexSet_.infiniteRowIndexSet(), row);
    return Next::Reload;
  }
  const std::int64_t column = tableColumn - 1;
  selected2DIndexSet_.removeAllInfiniteIndexes();
  if (selected2DIndexSet_.containsRowIndex(row, column))
    selected2DIndexSet_.removeRowIndex(row, column);
  else
    selected2DIndexSet_.addRowIndex(row, column);
  return Next::Reload;
}

ClipboardSelection::Next ClipboardSelection::shiftClick(std::int64_t row, std::int64_t tableColumn) {
  if (tableColumn != 0) return Next::Nothing;
  selected2DIndexSet_.removeAllInfiniteColumnIndexes();
  selected2DIndexSet_.removeNonInfiniteIndexes();
  growTowards(selected2DIndexSet_.infiniteRowIndexSet(), row);
  return Next::Reload;
}

void ClipboardSelection::didClickTableColumn(std::int64_t tableColumn, const ClickModifiers& modifiers,
                                             const GridTableSize& table) {
  if (tableColumn < 0 || tableColumn > table.columnCount) return;  // there is no such header
  focusedRowIndex_ = -1;
  focusedColumnIndex_ = -1;
  if (tableColumn == 0) {
    if (table.rowCount > 0 && table.columnCount > 0) rowsTableViewSelectAllMenuItemClicked(table);
    return;
  }
  clickDataColumn(tableColumn - 1, modifiers);
}

void ClipboardSelection::clickDataColumn(std::int64_t column, const ClickModifiers& modifiers) {
  IndexSet& columns = selected2DIndexSet_.infiniteColumnIndexSet();
  selected2DIndexSet_.removeAllInfiniteRowIndexes();
  selected2DIndexSet_.removeNonInfiniteIndexes();
  if (modifiers.command) {
    toggleIndex(columns, column);
  } else if (modifiers.shift) {
    growTowards(columns, column);
  } else {
    const bool wasTheOnlyColumn = isTheOnlyIndex(columns, column);
    columns.clear();
    if (!wasTheOnlyColumn) columns.addIndex(column);
  }
}

// All means all rows; single cells stay, which is meant.
void ClipboardSelection::rowsTableViewSelectAllMenuItemClicked(const GridTableSize& table) {
  selected2DIndexSet_.removeAllInfiniteIndexes();
  selected2DIndexSet_.addInfiniteRowIndexesInRange(0, table.rowCount);
}

// --- Drawing. ---

bool ClipboardSelection::isSelected(std::int64_t tag) const {
  return tag >= 0 && selected2DIndexSet_.containsRowIndex(tag / kTagColumns, tag % kTagColumns);
}

bool ClipboardSelection::isEmpty(std::int64_t tag, const ClipboardGrid& grid) {
  return tag >= 0 && !grid.hasCell(tag / kTagColumns, tag % kTagColumns);
}

bool ClipboardSelection::isSelectedRow(std::int64_t row, const GridTableSize& table) const {
  return row < table.rowCount && selected2DIndexSet_.containsInfiniteRowIndex(row);
}

bool ClipboardSelection::isSelectedColumn(std::int64_t column, const GridTableSize& table) const {
  return column < table.rowCount && selected2DIndexSet_.containsInfiniteColumnIndex(column);
}

}  // namespace quillet
