// One row of the clipboard grid: a list of cells, each a text. A row is never changed; copies share it, so a
// snapshot of a grid costs no texts. Columns count from 0, lengths in UTF-16 units. Main thread only: the
// count of owners is a plain number.
//
// The cells lie in one block, their ends in front of their units. Blank cells at the end are only counted, so
// that a row which was padded to the width of a wide grid costs nothing.
//
//   cells  "ab" "" "c" "" ""     cellCount 5, storedCells 3, ends 2 2 3, units "abc"
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
    if (!block_ || column >= block_->storedCells) return {};
    const std::uint32_t* ends = endsOf(block_);
    const std::size_t start = column ? ends[column - 1] : 0;
    return {unitsOf(block_) + start, ends[column] - start};
  }
  // All cells one after the other; holds as long as a cell does.
  std::u16string_view text() const {
    return block_ ? std::u16string_view(unitsOf(block_), lengthInUnits()) : std::u16string_view();
  }
  // Of all cells together.
  std::size_t lengthInUnits() const {
    return block_ && block_->storedCells ? endsOf(block_)[block_->storedCells - 1] : 0;
  }

  bool operator==(const ClipboardRow& other) const;

 private:
  friend class RowBuilder;

  struct Block {
    std::uint32_t owners;
    std::uint32_t cellCount;
    std::uint32_t storedCells;  // the others are blank
  };

  static Block* newBlock(std::size_t cellCount, std::size_t storedCells, std::size_t units);
  static std::uint32_t* endsOf(Block* block) { return reinterpret_cast<std::uint32_t*>(block + 1); }
  static char16_t* unitsOf(Block* block) {
    return reinterpret_cast<char16_t*>(endsOf(block) + block->storedCells);
  }
  void release() noexcept;

  Block* block_ = nullptr;
};

// Collects the cells of a row. Keeps its memory from one row to the next.
class RowBuilder {
 public:
  void append(std::u16string_view cell);
  void appendBlanks(std::size_t count) { cellCount_ += count; }
  void append(const ClipboardRow& row);  // all its cells

  std::size_t cellCount() const { return cellCount_; }

  // The row; the builder starts anew. Throws std::length_error as a row does.
  ClipboardRow take();

 private:
  std::vector<std::uint32_t> ends_;
  std::u16string units_;
  std::size_t cellCount_ = 0;  // those behind the ends are blank
};

}  // namespace quillet
