#include "clipboard/grid_deletions.h"

#include "clipboard/index_spans.h"

namespace quillet {

ClipboardGrid withoutRows(const ClipboardGrid& grid, const IndexSet& rows) {
  const auto gone = spansBelow(rows, grid.rowCount());
  GridBuilder left;
  for (const IndexSpan& span : gapsBetween(gone, 0, grid.rowCount())) left.append(grid, span.first, span.end);
  return left.take();
}

ClipboardGrid withoutColumns(const ClipboardGrid& grid, const IndexSet& columns) {
  const auto gone = spansBelow(columns, grid.maxRowLength());
  if (gone.empty()) return grid;
  const auto left = gapsBetween(gone, 0, grid.maxRowLength());
  // A row that ends before the first of the columns stays what it is.
  return withLongerRowsRebuilt(grid, gone.front().first, [&](const ClipboardRow& row, RowBuilder& builder) {
    for (const IndexSpan& span : left) {
      if (span.first >= row.cellCount()) break;
      builder.append(row, span.first, span.end);
    }
  });
}

}  // namespace quillet
