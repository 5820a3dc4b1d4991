#include "shell/clipboard/clipboard_table.h"

#include <algorithm>
#include <utility>

#include "platform/localization.h"
#include "platform/numbers.h"

namespace quillet {

namespace {

constexpr int kRowNumberWidth = 65;
constexpr int kColumnWidth = 100;
constexpr std::size_t kMostEvenColumns = 5;

std::u16string numberText(std::size_t value) {
  std::u16string text;
  appendInteger(static_cast<std::int64_t>(value), text);
  return text;
}

Table::Column rowNumberColumn() {
  return {"ClipboardRowNumber", {}, kRowNumberWidth};
}

Table::Column dataColumn(std::size_t column, int width) {
  return {"ClipboardCol" + std::to_string(column), numberText(column + 1), width, true};
}

// Of those that are not kept, in a table with so much space for them.
int widthOfDataColumns(std::size_t count, int space) {
  if (count == 0 || count > kMostEvenColumns) return kColumnWidth;
  return std::max(space, 0) / static_cast<int>(count);
}

// Of the data columns.
std::vector<int> widthsOf(const Table& table) {
  std::vector<int> widths;
  for (std::size_t column = 1; column < table.columnCount(); ++column)
    widths.push_back(table.column(column).width);
  return widths;
}

}  // namespace

ClipboardTable::ClipboardTable(Window& window, ClipboardData& data,
                               std::function<void()> showCellDetailsWindow)
    : data_(data),
      showCellDetailsWindow_(std::move(showCellDetailsWindow)),
      table_(window, "clipboardDataTableView",
             {[this] { return data_.clipboardDataArray().rowCount(); },
              [this](std::size_t row) { return shownRow(row); },
              [this](std::size_t row, std::size_t column) { return shownCell(row, column); }},
             {rowNumberColumn()}),
      focusLabel_(window, "clipboardDataWindowFocusLabel") {}

void ClipboardTable::addCommandsTo(Commands& commands) {
  commands.add("rowsTableViewSelectAllMenuItemClicked", [this] { rowsTableViewSelectAllMenuItemClicked(); });
  commands.add("rowsTableViewReturnKeyPressed", [this] { keyDown(GridKey::Return, false, false); });
}

std::u16string ClipboardTable::shownCell(std::size_t row, std::size_t column) const {
  if (column == 0) return numberText(row + 1);
  return std::u16string(data_.clipboardDataArray().row(row).cell(column - 1));
}

// As many texts as the table has columns: a row may have fewer cells, or more when the grid has been widened
// since the columns were rebuilt.
Table::Row ClipboardTable::shownRow(std::size_t row) const {
  Table::Row texts;
  for (std::size_t column = 0; column < table_.columnCount(); ++column)
    texts.push_back(shownCell(row, column));
  return texts;
}

// By a rule: a grid can have millions of columns. The one of the row numbers stays as it is.
void ClipboardTable::resizeClipboardTableViewColumns(bool keepWidths) {
  const std::size_t count = data_.clipboardDataArray().maxRowLength();
  Table::Column rowNumbers = table_.column(0);
  const int width = widthOfDataColumns(count, table_.width() - rowNumbers.width);
  const std::vector<int> kept = keepWidths ? widthsOf(table_) : std::vector<int>();
  table_.setColumns(count + 1, [rowNumbers = std::move(rowNumbers), kept, width](std::size_t tableColumn) {
    if (tableColumn == 0) return rowNumbers;
    const std::size_t column = tableColumn - 1;
    return dataColumn(column, column < kept.size() ? kept[column] : width);
  });
}

// So a grid of 5 columns gets even widths when it is rebuilt, but not here, which is meant.
void ClipboardTable::windowDidResize(int tableWidth) {
  table_.userResizesTable(tableWidth);
  if (table_.columnCount() < kMostEvenColumns + 1) resizeClipboardTableViewColumns(false);
}

GridTableSize ClipboardTable::size() const {
  return {static_cast<std::int64_t>(table_.rowCount()), static_cast<std::int64_t>(dataColumnCount())};
}

void ClipboardTable::reload() {
  table_.reloadData();
  tellFocus();
}

void ClipboardTable::keyDown(GridKey key, bool shift, bool alternate) {
  go(data_.selection().keyDown(key, shift, alternate, size()));
}

// What lies beyond the table is hit as little as what lies before it.
void ClipboardTable::mouseDown(std::int64_t row, std::int64_t tableColumn, std::int64_t clickCount,
                               const ClickModifiers& modifiers) {
  const auto hit = [](std::int64_t index, std::size_t count) {
    return index >= 0 && index < static_cast<std::int64_t>(count) ? index : -1;
  };
  go(data_.selection().mouseDown(hit(row, table_.rowCount()), hit(tableColumn, table_.columnCount()),
                                 clickCount, modifiers));
}

void ClipboardTable::didClickTableColumn(std::int64_t tableColumn, const ClickModifiers& modifiers) {
  data_.selection().didClickTableColumn(tableColumn, modifiers, size());
  reload();
}

void ClipboardTable::rowsTableViewSelectAllMenuItemClicked() {
  data_.selection().rowsTableViewSelectAllMenuItemClicked(size());
  reload();
}

void ClipboardTable::go(ClipboardSelection::Next next) {
  if (next != ClipboardSelection::Next::Nothing) reload();
  tellFocus();
  if (next == ClipboardSelection::Next::ShowCellDetails) showCellDetailsWindow_();
}

// The grid does not draw its focus, so it is told in words.
void ClipboardTable::tellFocus() {
  const ClipboardSelection& selection = data_.selection();
  const bool hasFocus = selection.focusedRowIndex() >= 0 && selection.focusedColumnIndex() >= 0;
  focusLabel_.setText(hasFocus
                          ? localizedFormat(u"Line %ld, column %ld", {selection.focusedRowIndex() + 1,
                                                                      selection.focusedColumnIndex() + 1})
                          : std::u16string());
}

}  // namespace quillet
