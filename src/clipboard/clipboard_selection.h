// The focus and the selection of the clipboard grid, and what keys and clicks make of them. Keys move the
// focus only and clicks change the selection only, but for the plain click, which does both.
//
// Rows and grid columns count from 0. A table column counts the row number column as 0, so table column t is
// grid column t - 1; -1 is a point that hits no row or column. Main thread only.
#pragma once

#include <cstdint>

#include "clipboard/clipboard_grid.h"
#include "clipboard/two_dimensional_mutable_index_set.h"

namespace quillet {

// What the table of the grid has at the moment.
struct GridTableSize {
  std::int64_t rowCount = 0;
  std::int64_t columnCount = 0;  // without the row number column
};

struct ClickModifiers {
  bool shift = false;
  bool command = false;
  bool alternate = false;
};

enum class GridKey { Up, Down, Left, Right, Tab, BackTab, Return, Delete };

class ClipboardSelection {
 public:
  // What the caller has to do after an event.
  enum class Next { Nothing, Reload, ShowCellDetails };

  void resetClipboardDataFocusAndSelection();

  TwoDimensionalMutableIndexSet& selected2DIndexSet() { return selected2DIndexSet_; }
  const TwoDimensionalMutableIndexSet& selected2DIndexSet() const { return selected2DIndexSet_; }
  std::int64_t focusedRowIndex() const { return focusedRowIndex_; }        // -1 for none
  std::int64_t focusedColumnIndex() const { return focusedColumnIndex_; }  // -1 for none

  // False, and the focus stays, for a cell outside the table.
  bool moveFocusToRow(std::int64_t row, std::int64_t column, const GridTableSize& table);
  // A key moves the focus to where it may go, or not at all; nothing has to be drawn then.
  Next keyDown(GridKey key, bool shift, bool alternate, const GridTableSize& table);

  // One event of the mouse with its click count: a double click is a click of 1, then one of 2, and on a row
  // number it toggles twice. After a double click on a cell the selection has changed, too. A row or column
  // of -1 does nothing.
  Next mouseDown(std::int64_t row, std::int64_t tableColumn, std::int64_t clickCount,
                 const ClickModifiers& modifiers);
  void didClickTableColumn(std::int64_t tableColumn, const ClickModifiers& modifiers,
                           const GridTableSize& table);
  void rowsTableViewSelectAllMenuItemClicked(const GridTableSize& table);

  // For drawing. The tag of a cell is row * 256 + column modulo 256, so a column from 256 on shows the state
  // of the one 256 lower, which is meant; -1 is the tag of a row number.
  static std::int64_t tagForCell(std::int64_t row, std::int64_t column) { return row * 256 + column % 256; }
  bool isSelected(std::int64_t tag) const;
  static bool isEmpty(std::int64_t tag, const ClipboardGrid& grid);  // the cell is missing; never for -1
  static bool isFocused(std::int64_t) { return false; }              // the focus is not drawn, which is meant
  // Of whole rows and columns. Both end at the number of rows, which is meant.
  bool isSelectedRow(std::int64_t row, const GridTableSize& table) const;
  bool isSelectedColumn(std::int64_t column, const GridTableSize& table) const;

 private:
  Next plainClick(std::int64_t row, std::int64_t tableColumn, bool doubleClick);
  Next commandClick(std::int64_t row, std::int64_t tableColumn);
  Next shiftClick(std::int64_t row, std::int64_t tableColumn);
  void clickDataColumn(std::int64_t column, const ClickModifiers& modifiers);

  TwoDimensionalMutableIndexSet selected2DIndexSet_;
  std::int64_t focusedRowIndex_ = -1;
  std::int64_t focusedColumnIndex_ = -1;
};

}  // namespace quillet
