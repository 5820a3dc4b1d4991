#include "clipboard/grid_flips.h"

#include <vector>

namespace quillet {

ClipboardGrid flippedHorizontally(const ClipboardGrid& grid) {
  const std::size_t width = grid.maxRowLength();
  return withRowsRebuilt(grid, [width](const ClipboardRow& row, RowBuilder& builder) {
    for (std::size_t i = row.storedCellCount(); i > 0; --i) {
      const auto [column, text] = row.storedCell(i - 1);
      builder.padTo(width - 1 - column);
      builder.append(text);
    }
    builder.padTo(width);
  });
}

ClipboardGrid flippedVertically(const ClipboardGrid& grid) {
  GridBuilder rows;
  for (std::size_t i = grid.rowCount(); i > 0; --i) rows.append(grid.row(i - 1));
  return rows.take();
}

namespace {

// Calls visit(rowIndex, column, text) for each cell that is not blank, row by row.
template <typename Visit>
void forEachFilledCell(const ClipboardGrid& grid, Visit visit) {
  std::size_t rowIndex = 0;
  grid.forEachRow([&](const ClipboardRow& row) {
    for (std::size_t i = 0; i < row.storedCellCount(); ++i) {
      const auto [column, text] = row.storedCell(i);
      if (!text.empty()) visit(rowIndex, column, text);
    }
    ++rowIndex;
  });
}

std::vector<RowSize> columnSizes(const ClipboardGrid& grid) {
  std::vector<RowSize> sizes(grid.maxRowLength(), RowSize{.cellCount = grid.rowCount()});
  forEachFilledCell(grid, [&](std::size_t row, std::size_t column, std::u16string_view text) {
    sizes[column].addFilledCell(row, text.size());
  });
  return sizes;
}

}  // namespace

// All columns are written side by side, in one walk over the rows: rows of many cells and many rows take the
// same time, and no text is held twice.
ClipboardGrid flippedDiagonally(const ClipboardGrid& grid) {
  requireRoomFor(grid.maxRowLength());
  std::vector<RowWriter> writers;
  writers.reserve(grid.maxRowLength());
  for (const RowSize& size : columnSizes(grid)) writers.emplace_back(size);
  forEachFilledCell(grid, [&](std::size_t row, std::size_t column, std::u16string_view text) {
    writers[column].write(row, text);
  });
  GridBuilder rows;
  for (RowWriter& writer : writers) rows.append(writer.take());
  return rows.take();
}

}  // namespace quillet
