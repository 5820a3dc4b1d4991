#include "clipboard/cell_changes.h"

#include <algorithm>
#include <limits>
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

  // The first selected column of the present row from that one on; one past any row when there is none.
  std::size_t nextColumn(std::size_t from) const {
    if (wholeRow_ != wholeRows_.end() && wholeRow_->first <= row_) return from;
    const bool hasCells = rowCells_ != cells_.end() && rowCells_->first == row_;
    const std::size_t column = firstIndexFrom(columns_, from);
    return hasCells ? std::min(column, firstIndexFrom(rowCells_->second, from)) : column;
  }

 private:
  static std::size_t firstIndexFrom(const IndexSet& indexes, std::size_t from) {
    const auto index = static_cast<std::int64_t>(from);
    const auto& ranges = indexes.ranges();
    const auto range = std::partition_point(ranges.begin(), ranges.end(),
                                            [index](const IndexSet::Range& one) { return one.last < index; });
    if (range == ranges.end()) return std::numeric_limits<std::size_t>::max();
    return static_cast<std::size_t>(std::max(range->first, index));
  }

  std::int64_t rowCount_;
  const IndexSet& columns_;
  const std::vector<IndexSet::Range>& wholeRows_;
  const std::map<std::int64_t, IndexSet>& cells_;
  std::int64_t row_ = -1;
  std::vector<IndexSet::Range>::const_iterator wholeRow_;      // the first that is not above the row
  std::map<std::int64_t, IndexSet>::const_iterator rowCells_;  // the same
};

// Whether a change leaves blank cells blank. Then those that a wide row only counts need not be looked at.
enum class Blanks { Change, Stay };

// visit(column, cell) for the selected cells of the present row, from the left.
template <typename Visit>
void forEachSelectedCell(const ClipboardRow& row, const SelectedRows& selected, Blanks blanks, Visit visit) {
  if (blanks == Blanks::Change) {
    for (std::size_t column = selected.nextColumn(0); column < row.cellCount();
         column = selected.nextColumn(column + 1))
      visit(column, row.cell(column));
    return;
  }
  for (std::size_t position = 0; position < row.storedCellCount(); ++position) {
    const auto [column, cell] = row.storedCell(position);
    if (selected.nextColumn(column) == column) visit(column, cell);
  }
}

// Puts the row with its selected cells changed into the builder. False, and nothing put there, if it is as
// it was.
template <typename Change>
bool changeRow(const ClipboardRow& row, const SelectedRows& selected, Blanks blanks, Change& change,
               TextArena& arena, RowBuilder& into) {
  std::size_t done = 0;  // columns
  forEachSelectedCell(row, selected, blanks, [&](std::size_t column, std::u16string_view cell) {
    arena.reset();
    const std::u16string_view text = change(cell, arena);
    if (text == cell) return;
    into.append(row, done, column);
    into.append(text);
    done = column + 1;
  });
  if (done == 0) return false;
  into.append(row, done, row.cellCount());
  return true;
}

// change(cell, arena) gives the new text of a selected cell, good until its next call. It is called for the
// cells that exist, row by row from the top and each from the left; for blank ones perhaps not, where they
// stay. What stays as it is, is shared.
template <typename Change>
ClipboardGrid withCellsChanged(const ClipboardGrid& grid, std::u16string_view cellString, Blanks blanks,
                               Change change) {
  const TwoDimensionalMutableIndexSet selection(cellString);
  GridBuilder rows;
  RowBuilder builder;
  TextArena arena;
  std::size_t done = 0;
  for (SelectedRows selected(selection, grid.rowCount()); selected.moveToNext();) {
    if (!changeRow(grid.row(selected.row()), selected, blanks, change, arena, builder)) continue;
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
  return withCellsChanged(
      grid, operation.text("Arg1"), Blanks::Stay,
      [&](std::u16string_view cell, TextArena& arena) { return trimmer.trimmed(cell, arena); });
}

ClipboardGrid withCellsReplaced(const ClipboardGrid& grid, const OperationRecord& operation) {
  TextReplacer replacer(operation.integer("IntArg2", 0), caseSensitivityOf(operation), operation.text("Arg2"),
                        operation.text("Arg3"));
  // A regular expression may match nothing at all.
  TextArena arena;
  const Blanks blanks = replacer.replaced({}, arena).empty() ? Blanks::Stay : Blanks::Change;
  return withCellsChanged(
      grid, operation.text("Arg1"), blanks,
      [&](std::u16string_view cell, TextArena& into) { return replacer.replaced(cell, into); });
}

ClipboardGrid withCellsFilled(const ClipboardGrid& grid, const OperationRecord& operation) {
  const std::u16string text = operation.text("Arg1");
  const std::u16string cells = operation.text("Arg2");
  switch (static_cast<FillType>(operation.integer("IntArg1", 0))) {
    case FillType::String:
      return withCellsChanged(grid, cells, text.empty() ? Blanks::Stay : Blanks::Change,
                              [&](std::u16string_view, TextArena&) -> std::u16string_view { return text; });
    case FillType::Sequence:
      return withCellsChanged(grid, cells, Blanks::Change,
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
