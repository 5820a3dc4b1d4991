#include "clipboard/clipboard_engine.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "clipboard/cell_changes.h"
#include "clipboard/grid_deletions.h"
#include "clipboard/grid_edges.h"
#include "clipboard/grid_flips.h"
#include "clipboard/grid_joins.h"
#include "clipboard/grid_merges.h"
#include "clipboard/grid_moves.h"
#include "operations/line_numbers.h"
#include "operations/operation_codes.h"
#include "platform/numbers.h"

namespace quillet {

namespace {

using Compute = ClipboardOutcome (*)(const ClipboardGrid& grid, const OperationRecord& record);

IndexSet indexList(const OperationRecord& record, std::string_view key) {
  IndexSet indexes;
  if (const std::u16string text = record.text(key); !text.empty())
    parseLineNumbersString(text, indexes, nullptr, true);
  return indexes;
}

// An operation that reads nothing of its record.
template <ClipboardGrid (*change)(const ClipboardGrid&)>
ClipboardOutcome changed(const ClipboardGrid& grid, const OperationRecord&) {
  return {change(grid)};
}

// One that reads it by itself.
template <ClipboardGrid (*change)(const ClipboardGrid&, const OperationRecord&)>
ClipboardOutcome changedCells(const ClipboardGrid& grid, const OperationRecord& record) {
  return {change(grid, record)};
}

// Without a list all goes, which is meant; a list that selects nothing leaves all.
template <ClipboardGrid (*without)(const ClipboardGrid&, const IndexSet&)>
ClipboardOutcome deleted(const ClipboardGrid& grid, const OperationRecord& record) {
  if (record.text("Arg1").empty()) return {};
  return {without(grid, indexList(record, "Arg1"))};
}

template <std::optional<MovedGrid> (*move)(const ClipboardGrid&, const IndexSet&, bool), bool down>
ClipboardOutcome moved(const ClipboardGrid& grid, const OperationRecord& record) {
  std::optional<MovedGrid> result = move(grid, indexList(record, "Arg1"), down);
  if (!result) return {grid};
  return {std::move(result->grid), std::move(result->indexes)};
}

template <MergedGrid (*merge)(const ClipboardGrid&, std::u16string_view, const IndexSet&, bool), bool down>
ClipboardOutcome merged(const ClipboardGrid& grid, const OperationRecord& record) {
  MergedGrid result = merge(grid, record.text("Arg1"), indexList(record, "Arg2"), down);
  return {std::move(result.grid), std::move(result.indexes)};
}

template <ClipboardGrid (*join)(const ClipboardGrid&, std::int64_t)>
ClipboardOutcome joined(const ClipboardGrid& grid, const OperationRecord& record) {
  return {join(grid, integerValue(record.text("Arg1")))};
}

using enum SelectionAfter;
using enum ColumnsAfter;

constexpr bool kRebuilt = true;
constexpr bool kNotRebuilt = false;

// In the order of the codes.
constexpr ClipboardOperation kOperations[] = {
    {OpClipboardSplit, nullptr, Unchanged, Stay, kNotRebuilt, ShownAfterUndo::Text},
    {OpClipboardTrim, changedCells<withCellsTrimmed>, Unchanged, Stay, kNotRebuilt},
    {OpClipboardReplace, changedCells<withCellsReplaced>, Unchanged, Stay, kNotRebuilt},
    {OpClipboardFill, changedCells<withCellsFilled>, Unchanged, Stay, kNotRebuilt},
    {OpClipboardEditCell, nullptr, Unchanged, Stay, kNotRebuilt},
    {OpClipboardShiftTruncateLeft, changed<withoutFirstColumn>, WithoutInfinite, Rebuilt, kRebuilt},
    {OpClipboardShiftTruncateRight, changed<withoutLastColumn>, WithoutInfinite, Rebuilt, kRebuilt},
    {OpClipboardShiftTruncateTop, changed<withoutFirstRow>, WithoutInfinite, Stay, kNotRebuilt},
    {OpClipboardShiftTruncateBottom, changed<withoutLastRow>, WithoutInfinite, Stay, kNotRebuilt},
    {OpClipboardDeleteSelectedLines, deleted<withoutRows>, WithoutInfiniteRows, RebuiltIfRowsWereSelected,
     kRebuilt},
    {OpClipboardDeleteSelectedColumns, deleted<withoutColumns>, WithoutInfiniteColumns,
     RebuiltIfColumnsWereSelected, kRebuilt},
    {OpClipboardShiftFillFromLeft, changed<withBlankColumnFirst>, WithoutInfinite, Rebuilt, kRebuilt},
    {OpClipboardShiftFillFromRight, changed<withBlankColumnLast>, WithoutInfinite, Rebuilt, kRebuilt},
    {OpClipboardShiftFillFromTop, changed<withBlankRowFirst>, WithoutInfinite, Stay, kNotRebuilt},
    {OpClipboardShiftFillFromBottom, changed<withBlankRowLast>, WithoutInfinite, Stay, kNotRebuilt},
    {OpClipboardMoveLeft, moved<moveColumns, false>, ColumnsFollow, Stay, kNotRebuilt},
    {OpClipboardMoveRight, moved<moveColumns, true>, ColumnsFollow, Stay, kNotRebuilt},
    {OpClipboardMoveUp, moved<moveRows, false>, RowsFollow, Stay, kNotRebuilt},
    {OpClipboardMoveDown, moved<moveRows, true>, RowsFollow, Stay, kNotRebuilt},
    {OpClipboardFlipHorizontal, changed<flippedHorizontally>, WithoutInfinite, Stay, kNotRebuilt},
    {OpClipboardFlipVertical, changed<flippedVertically>, WithoutInfinite, Stay, kNotRebuilt},
    {OpClipboardFlipDiagonal, changed<flippedDiagonally>, WithoutInfinite, Rebuilt, kRebuilt},
    {OpClipboardMergeLeft, merged<mergeColumns, false>, ColumnsFollow, Rebuilt, kRebuilt},
    {OpClipboardMergeRight, merged<mergeColumns, true>, ColumnsFollow, Rebuilt, kRebuilt},
    {OpClipboardMergeUp, merged<mergeRows, false>, RowsFollow, Stay, kNotRebuilt},
    {OpClipboardMergeDown, merged<mergeRows, true>, RowsFollow, Stay, kNotRebuilt},
    {OpClipboardJoinRows, joined<joinConsecutiveRows>, WithoutInfinite, Rebuilt, kRebuilt},
    {OpClipboardJoinColumns, joined<joinConsecutiveColumns>, WithoutInfinite, Rebuilt, kRebuilt},
    {OpClipboardJoin, nullptr, Unchanged, Stay, kNotRebuilt, ShownAfterUndo::Grid},
};

ClipboardOutcome unchanged(const ClipboardGrid& grid, const OperationRecord&) {
  return {grid};
}

constexpr ClipboardOperation kUnknown = {0, unchanged, Unchanged, Stay, kNotRebuilt};

}  // namespace

const ClipboardOperation& clipboardOperation(std::int64_t code) {
  const auto* found = std::find_if(std::begin(kOperations), std::end(kOperations),
                                   [code](const ClipboardOperation& row) { return row.code == code; });
  return found == std::end(kOperations) ? kUnknown : *found;
}

}  // namespace quillet
