#include "clipboard/cell_changes.h"

#include <algorithm>
#include <map>
#include <vector>

#include "clipboard/cell_trim.h"
#include "clipboard/two_dimensional_mutable_index_set.h"
#include "operations/case_option.h"
#include "operations/operation_codes.h"
#include "operations/text_replace.h"
#include "platform/numbers.h"
#include "platform/regular_expression.h"
#include "platform/text_buffer.h"
#include "platform/text_search.h"

namespace quillet {

namespace {

constexpr std::int64_t kColumnLimit = 1'048'576;  // of an edited cell

// Goes down a grid from one row with selected cells to the next. The selection outlives it.
class SelectedRows {
 public:
  SelectedRows(const TwoDimensionalMutableIndexSet& selection, std::size_t rowCount)
      : rowCount_(static_cast<std::int64_t>(rowCount)),
        columns_(selection.infiniteColumnIndexSet()),
        wholeRows_(selection.infiniteRowIndexSet().ranges()),
        cells_(selection.rowIndexDictionary()),
        wholeRow_(wholeRows_.begin()),
        rowCells_(cells_.begin()) {}

  // Before the first row at the start. False behind the last.
  bool moveToNext() {
    ++row_;
    while (wholeRow_ != wholeRows_.end() && wholeRow_->last < row_) ++wholeRow_;
    while (rowCells_ != cells_.end() && rowCells_->first < row_) ++rowCells_;
    if (columns_.isEmpty()) {
      std::int64_t next = rowCount_;
      if (wholeRow_ != wholeRows_.end()) next = std::min(next, std::max(row_, wholeRow_->first));
      if (rowCells_ != cells_.end()) next = std::min(next, rowCells_->first);
      row_ = next;
    }
    return row_ < rowCount_;
  }

  std::size_t row() const { return static_cast<std::size_t>(row_); }

  // Whether the cell of the present row is selected.
  bool hasColumn(std::size_t index) const {
    const auto column = static_cast<std::int64_t>(index);
    return (wholeRow_ != wholeRows_.end() && wholeRow_->first <= row_) || columns_.contains(column) ||
           (rowCells_ != cells_.end() && rowCells_->first == row_ && rowCells_->second.contains(column));
  }

 private:
  std::int64_t rowCount_;
  const IndexSet& columns_;
  const std::vector<IndexSet::Range>& wholeRows_;
  const std::map<std::int64_t, IndexSet>& cells_;
  std::int64_t row_ = -1;
  std::vector<IndexSet::Range>::const_iterator wholeRow_;      // the first that is not above the row
  std::map<std::int64_t, IndexSet>::const_iterator rowCells_;  // the same
};

// Puts the row with its selected cells changed into the builder. False, and nothing put there, if it is as
// it was.
template <typename Change>
bool changeRow(const ClipboardRow& row, const SelectedRows& selected, Change& change, TextArena& arena,
               RowBuilder& into) {
  bool isChanged = false;
  for (std::size_t column = 0; column < row.cellCount(); ++column) {
    const std::u16string_view cell = row.cell(column);
    arena.reset();
    const std::u16string_view text = selected.hasColumn(column) ? change(cell, arena) : cell;
    if (!isChanged && text == cell) continue;
    for (std::size_t before = 0; !isChanged && before < column; ++before) into.append(row.cell(before));
    isChanged = true;
    into.append(text);
  }
  return isChanged;
}

// change(cell, arena) gives the new text of a selected cell, good until its next call. It is called for the
// cells that exist, row by row from the top and each from the left. What stays as it is, is shared.
template <typename Change>
ClipboardGrid withCellsChanged(const ClipboardGrid& grid, std::u16string_view cellString, Change change) {
  const TwoDimensionalMutableIndexSet selection(cellString);
  GridBuilder rows;
  RowBuilder builder;
  TextArena arena;
  std::size_t done = 0;
  for (SelectedRows selected(selection, grid.rowCount()); selected.moveToNext();) {
    if (!changeRow(grid.row(selected.row()), selected, change, arena, builder)) continue;
    rows.append(grid, done, selected.row());
    rows.append(builder.take());
    done = selected.row() + 1;
  }
  rows.append(grid, done, grid.rowCount());
  return rows.take();
}

// The numbers of a sequence "start,step", as texts.
class Sequence {
 public:
  explicit Sequence(std::u16string_view text) {
    const std::vector<std::u16string_view> parts = componentsSeparatedByString(text, u",");
    next_ = static_cast<std::uint64_t>(integerValue(parts[0]));
    if (parts.size() > 1) step_ = static_cast<std::uint64_t>(integerValue(parts[1]));
  }

  // Good until the next call. Beyond the largest number the smallest follows.
  std::u16string_view takeNext() {
    text_.clear();
    appendInteger(static_cast<std::int64_t>(next_), text_);
    next_ += step_;
    return text_;
  }

 private:
  std::uint64_t next_ = 0;  // without a sign, as it may overflow
  std::uint64_t step_ = 1;
  std::u16string text_;
};

}  // namespace

ClipboardGrid withCellsTrimmed(const ClipboardGrid& grid, const OperationRecord& operation) {
  CellTrimmer trimmer(operation);
  return withCellsChanged(grid, operation.text("Arg1"), [&](std::u16string_view cell, TextArena& arena) {
    return trimmer.trimmed(cell, arena);
  });
}

ClipboardGrid withCellsReplaced(const ClipboardGrid& grid, const OperationRecord& operation) {
  TextReplacer replacer(operation.integer("IntArg2", 0), caseSensitivityOf(operation), operation.text("Arg2"),
                        operation.text("Arg3"));
  return withCellsChanged(grid, operation.text("Arg1"), [&](std::u16string_view cell, TextArena& arena) {
    return replacer.replaced(cell, arena);
  });
}

ClipboardGrid withCellsFilled(const ClipboardGrid& grid, const OperationRecord& operation) {
  const std::u16string text = operation.text("Arg1");
  const std::u16string cells = operation.text("Arg2");
  switch (static_cast<FillType>(operation.integer("IntArg1", 0))) {
    case FillType::String:
      return withCellsChanged(grid, cells,
                              [&](std::u16string_view, TextArena&) -> std::u16string_view { return text; });
    case FillType::Sequence:
      return withCellsChanged(grid, cells,
                              [sequence = Sequence(text)](std::u16string_view, TextArena&) mutable {
                                return sequence.takeNext();
                              });
  }
  return grid;
}

std::optional<ClipboardGrid> withCellEdited(const ClipboardGrid& grid, const OperationRecord& operation) {
  const std::int64_t row = operation.integer("IntArg1", -1);
  const std::int64_t column = operation.integer("IntArg2", -1);
  if (row < 0 || column < 0 || row >= static_cast<std::int64_t>(grid.rowCount()) || column >= kColumnLimit)
    return std::nullopt;
  const auto rowIndex = static_cast<std::size_t>(row);
  const auto columnIndex = static_cast<std::size_t>(column);
  const std::u16string text = operation.text("Arg1");
  const ClipboardRow& before = grid.row(rowIndex);
  RowBuilder cells;
  cells.append(before, 0, columnIndex);
  cells.padTo(columnIndex);
  cells.append(text);
  cells.append(before, columnIndex + 1, before.cellCount());

  GridBuilder rows;
  rows.append(grid, 0, rowIndex);
  rows.append(cells.take());
  rows.append(grid, rowIndex + 1, grid.rowCount());
  return rows.take();
}

std::u16string stringByCondensingCharacters(std::u16string_view text) {
  auto whiteSpace = RegularExpression::compiled(u"\\s+", CaseSensitivity::Insensitive);
  std::u16string result;
  if (!whiteSpace || whiteSpace->appendReplacingMatches(text, u" ", result) == 0) return std::u16string(text);
  if (result.starts_with(u' ')) result.erase(0, 1);
  if (result.ends_with(u' ')) result.pop_back();
  return result;
}

}  // namespace quillet
