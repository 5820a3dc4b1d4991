// The grid of the clipboard data window: a list of rows that may differ in length. A cell past the end of its
// row does not exist. Rows and columns count from 0.
//
// A grid is a value. Its rows lie in chunks that copies share, so a copy costs a pointer a chunk, and what
// changes a few rows makes a few chunks. Main thread only.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "clipboard/clipboard_row.h"

namespace quillet {

class ClipboardGrid {
 public:
  ClipboardGrid() = default;  // no rows

  std::size_t rowCount() const { return rowCount_; }
  // The largest number of cells in a row; 0 without rows.
  std::size_t maxRowLength() const { return width_; }

  const ClipboardRow& row(std::size_t index) const;  // of those that are there
  // Whether the row and its cell are there; any numbers.
  bool hasCell(std::int64_t row, std::int64_t column) const;

  template <typename Visit>
  void forEachRow(Visit visit) const {
    for (const auto& chunk : chunks_)
      for (const ClipboardRow& row : chunk->rows) visit(row);
  }

  bool operator==(const ClipboardGrid& other) const;  // row by row

 private:
  friend class GridBuilder;

  struct Chunk {
    std::vector<ClipboardRow> rows;  // at least one
    std::size_t width = 0;
  };

  std::size_t chunkWithRow(std::size_t index) const;

  std::vector<std::shared_ptr<const Chunk>> chunks_;
  std::vector<std::size_t> firstRows_;  // of each chunk, the index of its first row
  std::size_t rowCount_ = 0;
  std::size_t width_ = 0;
};

// Collects rows. Appending a part of another grid shares the chunks that lie in it whole.
class GridBuilder {
 public:
  void append(ClipboardRow row);
  // The same row so many times; of many it costs little.
  void append(const ClipboardRow& row, std::size_t count);
  // The rows [first, end) of the grid; those that it does not have are left out.
  void append(const ClipboardGrid& grid, std::size_t first, std::size_t end);

  // All rows of the grid. Those with more cells than that are replaced by what rebuild(row, RowBuilder&) puts
  // together; chunks without such a row are shared.
  template <typename Rebuild>
  void appendWithLongerRowsRebuilt(const ClipboardGrid& grid, std::size_t cellCount, Rebuild rebuild);

  std::size_t rowCount() const { return grid_.rowCount_ + open_.size(); }

  // The grid; the builder starts anew.
  ClipboardGrid take();

 private:
  using Chunk = ClipboardGrid::Chunk;

  void appendWhole(const std::shared_ptr<const Chunk>& chunk);
  void add(std::shared_ptr<const Chunk> chunk);
  void close();  // makes a chunk of the open rows

  ClipboardGrid grid_;
  std::vector<ClipboardRow> open_;
};

template <typename Rebuild>
void GridBuilder::appendWithLongerRowsRebuilt(const ClipboardGrid& grid, std::size_t cellCount,
                                              Rebuild rebuild) {
  RowBuilder builder;
  for (const auto& chunk : grid.chunks_) {
    if (chunk->width <= cellCount) {
      appendWhole(chunk);
      continue;
    }
    for (const ClipboardRow& row : chunk->rows) {
      if (row.cellCount() <= cellCount) {
        append(row);
      } else {
        rebuild(row, builder);
        append(builder.take());
      }
    }
  }
}

// Throws std::length_error for more rows, or columns, than what is made for each of them could be held in
// memory. Only a grid that was widened by hand and then turned gets there; asking the system for the memory
// would not help, as it may promise any amount and end the application later.
void requireRoomFor(std::size_t count);

// The grid with each row replaced by what rebuild(row, RowBuilder&) has put together.
template <typename Rebuild>
ClipboardGrid withRowsRebuilt(const ClipboardGrid& grid, Rebuild rebuild) {
  GridBuilder rows;
  RowBuilder builder;
  grid.forEachRow([&](const ClipboardRow& row) {
    rebuild(row, builder);
    rows.append(builder.take());
  });
  return rows.take();
}

// The same for the rows with more cells than that; the others are shared.
template <typename Rebuild>
ClipboardGrid withLongerRowsRebuilt(const ClipboardGrid& grid, std::size_t cellCount, Rebuild rebuild) {
  GridBuilder rows;
  rows.appendWithLongerRowsRebuilt(grid, cellCount, rebuild);
  return rows.take();
}

}  // namespace quillet
