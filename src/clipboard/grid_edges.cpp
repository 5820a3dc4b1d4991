#include "clipboard/grid_edges.h"

namespace quillet {

namespace {

ClipboardRow blankRow(std::size_t cellCount) {
  RowBuilder builder;
  builder.appendBlanks(cellCount);
  return builder.take();
}

ClipboardRow blankRowFor(const ClipboardGrid& grid) {
  return blankRow(std::max<std::size_t>(grid.maxRowLength(), 1));
}

ClipboardGrid oneBlankCell() {
  GridBuilder rows;
  rows.append(blankRow(1));
  return rows.take();
}

}  // namespace

ClipboardGrid withoutFirstColumn(const ClipboardGrid& grid) {
  return withLongerRowsRebuilt(
      grid, 0, [](const ClipboardRow& row, RowBuilder& builder) { builder.append(row, 1, row.cellCount()); });
}

ClipboardGrid withoutLastColumn(const ClipboardGrid& grid) {
  if (!grid.maxRowLength()) return grid;
  const std::size_t last = grid.maxRowLength() - 1;
  return withLongerRowsRebuilt(
      grid, last, [last](const ClipboardRow& row, RowBuilder& builder) { builder.append(row, 0, last); });
}

ClipboardGrid withoutFirstRow(const ClipboardGrid& grid) {
  GridBuilder rows;
  rows.append(grid, 1, grid.rowCount());
  return rows.take();
}

ClipboardGrid withoutLastRow(const ClipboardGrid& grid) {
  if (!grid.rowCount()) return grid;
  GridBuilder rows;
  rows.append(grid, 0, grid.rowCount() - 1);
  return rows.take();
}

ClipboardGrid withBlankColumnFirst(const ClipboardGrid& grid) {
  if (!grid.maxRowLength()) return oneBlankCell();
  return withRowsRebuilt(grid, [](const ClipboardRow& row, RowBuilder& builder) {
    builder.appendBlanks(1);
    builder.append(row);
  });
}

ClipboardGrid withBlankColumnLast(const ClipboardGrid& grid) {
  if (!grid.maxRowLength()) return oneBlankCell();
  const std::size_t cellCount = grid.maxRowLength() + 1;
  return withRowsRebuilt(grid, [cellCount](const ClipboardRow& row, RowBuilder& builder) {
    builder.append(row);
    builder.padTo(cellCount);
  });
}

ClipboardGrid withBlankRowFirst(const ClipboardGrid& grid) {
  GridBuilder rows;
  rows.append(blankRowFor(grid));
  rows.append(grid, 0, grid.rowCount());
  return rows.take();
}

ClipboardGrid withBlankRowLast(const ClipboardGrid& grid) {
  GridBuilder rows;
  rows.append(grid, 0, grid.rowCount());
  rows.append(blankRowFor(grid));
  return rows.take();
}

}  // namespace quillet
