// One row of the clipboard grid: a list of cells, each a text. A row is never changed; copies share it, so a
// snapshot of a grid costs no texts. Columns count from 0, lengths in UTF-16 units. Main thread only: the
// count of owners is a plain number.
//
// The cells lie in one block, their ends in front of their units. Blank cells at the end are only counted, so
// that a row which was padded to the width of a wide grid costs nothing. Where most of the others are blank,
// too, only those that are not are stored, with their columns: a wide grid may have a text at each end of its
// rows, and nothing between.
//
//   cells  "ab" "" "c" "" ""     cellCount 5, storedCells 3, ends 2 2 3, units "abc"
//   cells  8 blanks, "d", ""     cellCount 10, storedCells 1, ends 1, columns 8, units "d"
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillet {

class ClipboardRow {
 public:
  ClipboardRow() = default;  // no cells
  // Throws std::length_error beyond 4,294,967,295 cells or units.
  explicit ClipboardRow(std::span<const std::u16string_view> cells);

  ClipboardRow(const ClipboardRow& other) noexcept : block_(other.block_) {
    if (block_) ++block_->owners;
  }
  ClipboardRow(ClipboardRow&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  ClipboardRow& operator=(ClipboardRow other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }
  ~ClipboardRow() {
    if (block_ && --block_->owners == 0) release();
  }

  std::size_t cellCount() const { return block_ ? block_->cellCount : 0; }
  // Holds as long as a copy of the row; "" beyond the cells.
  std::u16string_view cell(std::size_t column) const {
    if (column >= cellCount()) return {};
    const std::size_t position = block_->sparse ? positionOf(column) : column;
    if (position >= block_->storedCells) return {};
    return textAt(position);
  }
  // All cells one after the other; holds as long as a cell does.
  std::u16string_view text() const {
    return block_ ? std::u16string_view(unitsOf(block_), lengthInUnits()) : std::u16string_view();
  }
  // Of all cells together.
  std::size_t lengthInUnits() const {
    return block_ && block_->storedCells ? endsOf(block_)[block_->storedCells - 1] : 0;
  }

  // A walk over the texts that costs nothing for most blank cells. The stored cells have ascending columns;
  // all that are not stored are blank, and some that are.
  struct StoredCell {
    std::size_t column = 0;
    std::u16string_view text;
  };
  std::size_t storedCellCount() const { return block_ ? block_->storedCells : 0; }
  StoredCell storedCell(std::size_t position) const {  // position from 0, of those stored
    return {block_->sparse ? columnsOf(block_)[position] : position, textAt(position)};
  }
  // The stored cells of the columns [first, end): visit(column, text), in ascending order.
  template <typename Visit>
  void forEachStoredCell(std::size_t first, std::size_t end, Visit visit) const {
    for (std::size_t i = firstPositionFrom(first); i < storedCellCount(); ++i) {
      const auto [column, text] = storedCell(i);
      if (column >= end) break;
      visit(column, text);
    }
  }
  // The column after the last cell that is not blank.
  std::size_t endOfTexts() const {
    return storedCellCount() ? storedCell(storedCellCount() - 1).column + 1 : 0;
  }

  bool operator==(const ClipboardRow& other) const;

 private:
  friend class RowBuilder;
  friend class RowWriter;

  // Followed by the ends, the columns when it is sparse, and the units. Which of the two forms a row has
  // depends on its cells alone.
  struct Block {
    std::uint32_t owners;
    std::uint32_t cellCount;
    std::uint32_t storedCells;
    bool sparse;
  };

  static std::uint32_t* endsOf(Block* block) { return reinterpret_cast<std::uint32_t*>(block + 1); }
  static std::uint32_t* columnsOf(Block* block) { return endsOf(block) + block->storedCells; }
  static char16_t* unitsOf(Block* block) {
    return reinterpret_cast<char16_t*>(columnsOf(block) + (block->sparse ? block->storedCells : 0));
  }
  std::u16string_view textAt(std::size_t position) const {
    const std::uint32_t* ends = endsOf(block_);
    const std::size_t start = position ? ends[position - 1] : 0;
    return {unitsOf(block_) + start, ends[position] - start};
  }
  std::size_t positionOf(std::size_t column) const;  // storedCells for one that is not stored
  std::size_t firstPositionFrom(std::size_t column) const;
  void release() noexcept;

  Block* block_ = nullptr;
};

// What a row needs room for.
struct RowSize {
  std::size_t cellCount = 0;
  std::size_t endOfTexts = 0;     // the column after the last cell that is not blank
  std::size_t filledCells = 0;    // those that are not blank
  std::size_t lengthInUnits = 0;  // of all cells together

  // For the next cell that is not blank; the columns ascend.
  void addFilledCell(std::size_t column, std::size_t cellLengthInUnits) {
    endOfTexts = column + 1;
    ++filledCells;
    lengthInUnits += cellLengthInUnits;
  }
};

// Writes a row of a size known beforehand, without any memory of its own.
class RowWriter {
 public:
  // Throws std::length_error as a row does.
  explicit RowWriter(const RowSize& size);

  // One of the cells that are not blank; the columns ascend, and all that the size counted must come.
  void write(std::size_t column, std::u16string_view text);
  ClipboardRow take() { return std::move(row_); }

 private:
  friend class RowBuilder;

  void storeEnd(std::size_t column, std::uint32_t end);

  ClipboardRow row_;
  std::uint32_t storedCells_ = 0;
  std::uint32_t units_ = 0;
};

// Collects the cells of a row. Keeps its memory from one row to the next.
class RowBuilder {
 public:
  void append(std::u16string_view cell);
  void appendBlanks(std::size_t count) { cellCount_ += count; }
  // Blank cells until there are as many cells as that; none when there are.
  void padTo(std::size_t cellCount) { cellCount_ = cellCount > cellCount_ ? cellCount : cellCount_; }
  void append(const ClipboardRow& row) { append(row, 0, row.cellCount()); }
  // The cells [first, end) of the row; those that it does not have are left out.
  void append(const ClipboardRow& row, std::size_t first, std::size_t end);

  std::size_t cellCount() const { return cellCount_; }

  // The row; the builder starts anew. Throws std::length_error as a row does.
  ClipboardRow take();

 private:
  struct FilledCell {
    std::size_t column;
    std::size_t end;  // in units_
  };

  std::vector<FilledCell> filled_;
  std::u16string units_;
  std::size_t cellCount_ = 0;
};

}  // namespace quillet
