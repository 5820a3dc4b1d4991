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

}  // namespace

ClipboardTable::ClipboardTable(Window& window, ClipboardData& data,
                               std::function<void()> showCellDetailsWindow)
    : data_(data),
      showCellDetailsWindow_(std::move(showCellDetailsWindow)),
      table_(window, "clipboardDataTableView",
             {[this] { return data_.clipboardDataArray().rowCount(); },
              [this](std::size_t row) { return shownRow(row); }},
             {rowNumberColumn()}),
      focusLabel_(window, "clipboardDataWindowFocusLabel") {}

void ClipboardTable::addCommandsTo(Commands& commands) {
  commands.add("rowsTableViewSelectAllMenuItemClicked", [this] { rowsTableViewSelectAllMenuItemClicked(); });
  commands.add("rowsTableViewReturnKeyPressed", [this] { keyDown(GridKey::Return, false, false); });
}

Table::Row ClipboardTable::shownRow(std::size_t row) const {
  Table::Row texts{numberText(row + 1)};
  const ClipboardRow& cells = data_.clipboardDataArray().row(row);
  for (std::size_t column = 0; column < dataColumnCount(); ++column) texts.emplace_back(cells.cell(column));
  return texts;
}

void ClipboardTable::resizeClipboardTableViewColumns(bool keepWidths) {
  const std::size_t count = data_.clipboardDataArray().maxRowLength();
  const int shared = std::max(table_.width() - kRowNumberWidth, 0);
  const int width = count == 0                  ? 0
                    : count <= kMostEvenColumns ? shared / static_cast<int>(count)
                                                : kColumnWidth;
  std::vector<Table::Column> columns{rowNumberColumn()};
  for (std::size_t column = 0; column < count; ++column) {
    const bool keeps = keepWidths && column < dataColumnCount();
    columns.push_back(dataColumn(column, keeps ? table_.columns()[column + 1].width : width));
  }
  table_.setColumns(std::move(columns));
}

// So a grid of 5 columns gets even widths when it is rebuilt, but not here, which is meant.
void ClipboardTable::windowDidResize(int tableWidth) {
  table_.userResizesTable(tableWidth);
  if (table_.columns().size() < kMostEvenColumns + 1) resizeClipboardTableViewColumns(false);
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

void ClipboardTable::mouseDown(std::int64_t row, std::int64_t tableColumn, std::int64_t clickCount,
                               const ClickModifiers& modifiers) {
  go(data_.selection().mouseDown(row, tableColumn, clickCount, modifiers));
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
