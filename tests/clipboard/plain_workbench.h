// The clipboard workbench as plain lists, each rule step by step: the reference for the real one, whatever is
// done to it in whatever order.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clipboard/plain_cell_changes.h"
#include "clipboard/plain_grid.h"
#include "clipboard/plain_selection.h"
#include "clipboard/plain_text.h"
#include "operations/line_numbers.h"
#include "operations/operation_description.h"
#include "operations/operation_record.h"
#include "platform/localization.h"
#include "platform/numbers.h"

namespace quillet::testing {

struct PlainAlert {
  std::u16string title;
  std::u16string message;  // "" for an alert that is told by one text
  bool operator==(const PlainAlert&) const = default;
};

class PlainWorkbench {
 public:
  // ---- the system's clipboard
  std::optional<std::u16string> pasteboard;
  bool pasteboardFails = false;

  // ---- the data
  std::optional<std::u16string> string;
  PlainGrid grid;
  OperationList operations;
  PlainSelection selection;

  // ---- what is shown; the table has the counts that it was reloaded or rebuilt with last
  std::int64_t tableRowCount = 0;
  std::int64_t tableColumnCount = 0;  // of the data columns
  std::u16string title;
  std::u16string text;
  std::u16string status;
  int statusType = 0;
  bool showsGrid = false;
  bool toolbarItemsEnabled = false;
  std::vector<PlainAlert> alerts;  // all since they were taken

  // ---- undo
  enum class Action { None, Undo, Redo };
  Action action = Action::None;
  OperationRecord actionRecord;
  std::u16string actionName() const { return labelOfOperation(actionRecord.code()); }

  // Whether a comparison of all is quick. Operations on cells can make them longer each time.
  bool isSmall() const {
    std::size_t cells = 0;
    std::size_t units = string ? string->size() : 0;
    for (const PlainRow& row : grid) {
      cells += row.size() + 1;
      for (const std::u16string& cell : row) units += cell.size();
    }
    return cells <= 4'000 && units <= 40'000;
  }

  GridTableSize tableSize() const { return {tableRowCount, tableColumnCount}; }

  void refresh() {
    if (takeText()) {
      operations.clear();
      grid = {{*string}};
      selection = {};
      showsGrid = false;
      toolbarItemsEnabled = false;
      setStatus(u"Refreshed from macOS Clipboard.", 0);
    }
    resizeColumns();
    reload();
    updateTitle();
    text = string.value_or(u"");
  }

  void perform(const OperationRecord& record) {
    action = Action::None;
    performWithUndo(record);
  }

  bool undo() {
    if (action != Action::Undo) return false;
    const std::int64_t code = actionRecord.code();
    grid = oldGrid_;
    reload();
    setPerformedStatus(999);
    for (const std::int64_t rebuilding : {402, 403, 406, 407, 408, 409, 418, 419, 420, 423, 424})
      if (code == rebuilding) resizeColumns();
    if (code == 902) showsGrid = true;
    if (code == 102) showsGrid = false;
    action = Action::Redo;
    return true;
  }

  bool redo() {
    if (action != Action::Redo) return false;
    performWithUndo(OperationRecord(actionRecord));
    return true;
  }

  // The text form of the selection.
  std::u16string selectionText() const {
    std::u16string cells;
    for (const auto& [row, column] : selection.cells) {
      if (!cells.empty()) cells += u"+";
      cells += u"(" + number(row + 1) + u", " + number(column + 1) + u")";
    }
    std::u16string result;
    appendSection(u"Lines: ", runs(selection.rows), result);
    appendSection(u"Columns: ", runs(selection.columns), result);
    appendSection(u"Cells: ", cells, result);
    return result;
  }

  // "1, 3 - 5" of indexes from 0.
  static std::u16string runs(const Indexes& indexes) {
    std::u16string result;
    for (auto index = indexes.begin(); index != indexes.end();) {
      const std::int64_t first = *index;
      std::int64_t last = first;
      for (++index; index != indexes.end() && *index == last + 1; ++index) ++last;
      if (!result.empty()) result += u", ";
      result += number(first + 1);
      if (last > first) result += u" - " + number(last + 1);
    }
    return result;
  }

 private:
  static constexpr std::size_t kMostCharacters = 100'000'000;
  static constexpr std::size_t kMostLines = 1'048'576;
  static constexpr std::size_t kMostColumns = 16'384;

  static std::u16string number(std::int64_t value) {
    std::u16string result;
    appendInteger(value, result);
    return result;
  }
  static void appendSection(std::u16string_view key, const std::u16string& content, std::u16string& result) {
    if (content.empty()) return;
    if (!result.empty()) result += u"; ";
    result.append(key).append(content);
  }

  // An index list of a record. Lists that reach far beyond the grid are cut, so that they can be written out.
  static Indexes listed(const OperationRecord& record, const char* key) {
    constexpr std::int64_t kFarAway = 100'000;
    IndexSet set;
    if (!record.text(key).empty()) parseLineNumbersString(record.text(key), set, nullptr, true);
    Indexes indexes;
    for (const IndexSet::Range& range : set.ranges())
      for (std::int64_t i = range.first; i <= std::min(range.last, std::max(range.first, kFarAway)); ++i)
        indexes.insert(i);
    return indexes;
  }

  // ---- Refresh

  bool takeText() {
    if (!pasteboard) return false;
    if (pasteboard->size() > kMostCharacters) {
      alerts.push_back(
          {u"Too many characters", formatted(u"This app is limited to %ld characters.\n"
                                             u"%ld characters were found on the clipboard.",
                                             {integer(kMostCharacters), integer(pasteboard->size())})});
      return false;
    }
    string = pasteboard;
    return true;
  }

  // ---- the frame

  void performWithUndo(const OperationRecord& record) {
    operations.push_back(record);
    oldGrid_ = grid;
    error_.reset();
    const std::int64_t code = record.code();
    const bool rowsWereSelected = !selection.rows.empty();
    const bool columnsWereSelected = !selection.columns.empty();
    if (code == 102)
      split(record);
    else if (code == 401)
      editCell(record);
    else
      grid = result(record);
    if (code == 402 || code == 403 || code == 408 || code == 409 || code == 418 || code == 419 ||
        code == 420 || code == 423 || code == 424 || (code == 406 && rowsWereSelected) ||
        (code == 407 && columnsWereSelected))
      resizeColumns();
    reload();
    updateTitle();
    if (error_)
      setStatus(*error_, 2);
    else
      setPerformedStatus(code);
    action = Action::Undo;
    actionRecord = record;
  }

  PlainGrid result(const OperationRecord& record) {
    const std::int64_t code = record.code();
    if (code == 902) return join(record);
    if (code == 311 || code == 312 || code == 314) return cellsChanged(record);
    if (code == 406 || code == 407) return deletion(record);
    if (code >= 412 && code <= 415) return move(record);
    if (code >= 419 && code <= 422) return merge(record);
    const bool changesShape = code >= 402 && code <= 424;
    if (!changesShape) return grid;
    selection.rows.clear();
    selection.columns.clear();
    if (code <= 405) return withoutEdge(code);
    if (code <= 411) return withBlanks(code);
    if (code <= 418) return flipped(code);
    return joined(record);
  }

  // ---- Split, Join, Edit Cell

  void split(const OperationRecord& record) {
    if (!string) return;
    const std::u16string lineSeparator = record.text("Arg1");
    const std::u16string columnSeparator = record.text("Arg2");
    const bool removeQuotes = (record.integer("IntArg1", 0) & 32) != 0;
    const std::size_t lineCount =
        lineSeparator.empty() ? 1 : componentsSeparatedByString(*string, lineSeparator).size();
    if (lineCount > kMostLines) {
      error_ = u"Too many lines";
      alerts.push_back({*error_, formatted(u"This app is limited to %ld lines.\n"
                                           u"%ld lines were found on the clipboard.",
                                           {integer(kMostLines), integer(lineCount)})});
      return;
    }
    grid.clear();
    for (PlainRow& row : plainSplit(*string, lineSeparator, columnSeparator, removeQuotes)) {
      if (row.size() > kMostColumns) {
        error_ = u"Too many columns";
        alerts.push_back(
            {*error_, formatted(u"This app is limited to %ld columns.\n"
                                u"%ld columns were found on the clipboard on line %ld.",
                                {integer(kMostColumns), integer(row.size()), integer(grid.size() + 1)})});
        break;
      }
      grid.push_back(std::move(row));
    }
    resizeColumns();
    showsGrid = true;
  }

  PlainGrid join(const OperationRecord& record) {
    string =
        plainJoin(grid, record.text("Arg1"), record.text("Arg2"), (record.integer("IntArg1", 0) & 1) != 0);
    showsGrid = false;
    text = *string;
    if (pasteboardFails) {
      error_ = u"Could not write to pasteboard";
      alerts.push_back({*error_, u""});
    } else {
      pasteboard = string;
    }
    return {};
  }

  void editCell(const OperationRecord& record) {
    const std::int64_t row = record.integer("IntArg1", -1);
    const std::int64_t column = record.integer("IntArg2", -1);
    if (row < 0 || column < 0 || row >= integer(grid.size()) || column >= 1'048'576) {
      error_ = u"Index out of range";
      return;
    }
    PlainRow& cells = at(grid, row);
    while (integer(cells.size()) < column + 1) cells.emplace_back();
    cells[static_cast<std::size_t>(column)] = record.text("Arg1");
  }

  // ---- the values of cells

  PlainGrid cellsChanged(const OperationRecord& record) const {
    if (record.code() == 314) return plainlyFilled(grid, record);
    return plainlyChanged(grid, record.text("Arg1"), [&](const std::u16string& cell) {
      return record.code() == 312 ? plainlyReplaced(record, cell)
                                  : plainlyTrimmed(record.integer("IntArg2", 0), record.integer("IntArg3", 0),
                                                   record.integer("IntArg1", 0), record.text("Arg2"), cell);
    });
  }

  // ---- the shape of the grid

  PlainGrid withoutEdge(std::int64_t code) const {
    PlainGrid changed = grid;
    if (code == 402)
      for (PlainRow& row : changed)
        if (!row.empty()) row.erase(row.begin());
    if (code == 403)
      for (PlainRow& row : changed)
        if (!row.empty() && row.size() == maxRowLength(grid)) row.pop_back();
    if (code == 404 && !changed.empty()) changed.erase(changed.begin());
    if (code == 405 && !changed.empty()) changed.pop_back();
    return changed;
  }

  PlainGrid deletion(const OperationRecord& record) {
    const Indexes gone = listed(record, "Arg1");
    const bool ofRows = record.code() == 406;
    (ofRows ? selection.rows : selection.columns).clear();
    PlainGrid left;
    if (record.text("Arg1").empty()) return left;
    for (std::int64_t i = 0; i < integer(grid.size()); ++i) {
      if (ofRows && gone.contains(i)) continue;
      PlainRow& row = left.emplace_back();
      for (std::int64_t j = 0; j < integer(at(grid, i).size()); ++j)
        if (ofRows || !gone.contains(j)) row.push_back(at(grid, i)[static_cast<std::size_t>(j)]);
    }
    return left;
  }

  PlainGrid withBlanks(std::int64_t code) const {
    const std::size_t width = maxRowLength(grid);
    PlainGrid changed = grid;
    if (code == 410) changed.insert(changed.begin(), PlainRow(std::max<std::size_t>(width, 1)));
    if (code == 411) changed.emplace_back(std::max<std::size_t>(width, 1));
    if (code == 410 || code == 411) return changed;
    if (width == 0) return {{u""}};
    for (PlainRow& row : changed) {
      if (code == 408) row.insert(row.begin(), u"");
      if (code == 409) row.resize(width + 1);
    }
    return changed;
  }

  PlainGrid flipped(std::int64_t code) const {
    if (code == 418) return transposed(grid);
    PlainGrid changed = grid;
    if (code == 417) std::reverse(changed.begin(), changed.end());
    if (code == 416) {
      for (PlainRow& row : changed) {
        row.resize(maxRowLength(grid));
        std::reverse(row.begin(), row.end());
      }
    }
    return changed;
  }

  PlainGrid move(const OperationRecord& record) {
    const std::int64_t code = record.code();
    const bool ofRows = code == 414 || code == 415;
    const bool down = code == 413 || code == 415;
    PlainGrid moved = ofRows ? grid : transposed(grid);
    const auto indexes = moveIndexes(listed(record, "Arg1"), moved, down);
    if (!indexes) return grid;
    (ofRows ? selection.rows : selection.columns) = *indexes;
    return ofRows ? moved : transposed(moved);
  }

  PlainGrid merge(const OperationRecord& record) {
    const std::int64_t code = record.code();
    const bool ofRows = code == 421 || code == 422;
    const bool down = code == 420 || code == 422;
    const PlainGrid source = ofRows ? grid : transposed(grid);
    const Indexes all = listed(record, "Arg2");
    Indexes selected = inside(all, source.size());
    (ofRows ? selection.rows : selection.columns) = all;
    if (maxRowLength(grid) == 0) return {};
    if (selected.empty()) return grid;
    const PlainGrid merged = mergeRows(source, record.text("Arg1"), selected, down);
    (ofRows ? selection.rows : selection.columns) = selected;
    return ofRows ? merged : transposed(merged);
  }

  PlainGrid joined(const OperationRecord& record) const {
    const std::int64_t groupSize = integerValue(record.text("Arg1"));
    if (groupSize < 2) return grid;
    if (record.code() == 423) return joinRows(grid, groupSize);
    return transposed(joinRows(transposed(grid), groupSize));
  }

  // ---- what is shown

  static std::int64_t integer(std::size_t value) { return static_cast<std::int64_t>(value); }
  void resizeColumns() { tableColumnCount = integer(maxRowLength(grid)); }
  void reload() { tableRowCount = integer(grid.size()); }

  void setStatus(std::u16string newText, int type) {
    status = std::move(newText);
    statusType = type;
  }
  void setPerformedStatus(std::int64_t code) {
    setStatus(labelOfOperation(code) + u" operation performed.", 0);
  }

  void updateTitle() {
    title = u"Clipboard Data";
    if (tableRowCount == 0) return;
    const std::int64_t length = integer(string ? string->size() : 0);
    title += u" - " + counted(tableRowCount, u"line", u"lines") + u", " +
             counted(tableColumnCount, u"column", u"columns") + u" (" +
             counted(length, u"character total", u"characters total") + u")";
  }
  static std::u16string counted(std::int64_t count, const char16_t* one, const char16_t* many) {
    return number(count) + u" " + (count == 1 ? one : many);
  }

  PlainGrid oldGrid_;
  std::optional<std::u16string> error_;
};

}  // namespace quillet::testing
