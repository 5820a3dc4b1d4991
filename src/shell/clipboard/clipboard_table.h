// The table of the clipboard grid: its columns, and what the user does to it. Column 0 shows the row numbers;
// column t shows column t - 1 of the grid. The table's own selection is not used: what is selected, and what
// has the focus, is ClipboardSelection's, and a view draws it from there.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "clipboard/clipboard_data.h"
#include "shell/controls.h"

namespace quillet {

// Main thread only. All references outlive it.
class ClipboardTable {
 public:
  // showCellDetailsWindow opens the sheet for the focused cell.
  ClipboardTable(Window& window, ClipboardData& data, std::function<void()> showCellDetailsWindow);

  void addCommandsTo(Commands& commands);

  // Rebuilds the data columns from the width of the grid. Up to 5 columns share the space evenly, more get a
  // fixed width each; with keepWidths a column that was there keeps its own, which nothing asks for.
  void resizeClipboardTableViewColumns(bool keepWidths);
  // What shows the window has given the table a new width, in logical pixels.
  void windowDidResize(int tableWidth);
  std::size_t dataColumnCount() const { return table_.columnCount() - 1; }
  GridTableSize size() const;

  void reload();

  // A key without a meaning here is left to the view.
  void keyDown(GridKey key, bool shift, bool alternate);
  // row and tableColumn: -1 where the point hits none. One call an event: a double click is one with the
  // count 1, then one with 2.
  void mouseDown(std::int64_t row, std::int64_t tableColumn, std::int64_t clickCount,
                 const ClickModifiers& modifiers);
  // Nothing for a column that the table does not have.
  void didClickTableColumn(std::int64_t tableColumn, const ClickModifiers& modifiers);
  void rowsTableViewSelectAllMenuItemClicked();
  // Of the items that the table itself answers while it has the focus: it deletes nothing.
  static bool rowsTableViewValidateMenuItem(std::string_view action) { return action != "delete"; }

  Table& table() { return table_; }
  const Table& table() const { return table_; }

 private:
  void go(ClipboardSelection::Next next);
  void tellFocus();
  std::u16string shownCell(std::size_t row, std::size_t column) const;
  Table::Row shownRow(std::size_t row) const;

  ClipboardData& data_;
  std::function<void()> showCellDetailsWindow_;
  Table table_;
  Label focusLabel_;
};

}  // namespace quillet
