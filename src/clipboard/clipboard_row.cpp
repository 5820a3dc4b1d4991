#include "clipboard/clipboard_row.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace quillet {

namespace {

constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();

std::size_t storedCellsOf(std::span<const std::u16string_view> cells) {
  std::size_t count = cells.size();
  while (count && cells[count - 1].empty()) --count;
  return count;
}

}  // namespace

ClipboardRow::Block* ClipboardRow::newBlock(std::size_t cellCount, std::size_t storedCells,
                                            std::size_t units) {
  if (cellCount > kMost || units > kMost) throw std::length_error("row too large");
  void* memory = std::malloc(sizeof(Block) + storedCells * sizeof(std::uint32_t) + units * sizeof(char16_t));
  if (!memory) throw std::bad_alloc();
  return new (memory)
      Block{1, static_cast<std::uint32_t>(cellCount), static_cast<std::uint32_t>(storedCells)};
}

void ClipboardRow::release() noexcept {
  std::free(block_);
}

ClipboardRow::ClipboardRow(std::span<const std::u16string_view> cells) {
  if (cells.empty()) return;
  const std::size_t stored = storedCellsOf(cells);
  std::size_t units = 0;
  for (std::size_t i = 0; i < stored; ++i) units += cells[i].size();
  block_ = newBlock(cells.size(), stored, units);
  std::uint32_t* ends = endsOf(block_);
  char16_t* out = unitsOf(block_);
  std::size_t end = 0;
  for (std::size_t i = 0; i < stored; ++i) {
    out = std::copy(cells[i].begin(), cells[i].end(), out);
    end += cells[i].size();
    ends[i] = static_cast<std::uint32_t>(end);
  }
}

bool ClipboardRow::operator==(const ClipboardRow& other) const {
  if (block_ == other.block_) return true;
  if (cellCount() != other.cellCount() || lengthInUnits() != other.lengthInUnits()) return false;
  if (!block_ || !other.block_) return true;
  if (block_->storedCells != other.block_->storedCells) return false;
  const std::uint32_t* ends = endsOf(block_);
  const char16_t* units = unitsOf(block_);
  return std::equal(ends, ends + block_->storedCells, endsOf(other.block_)) &&
         std::equal(units, units + lengthInUnits(), unitsOf(other.block_));
}

void RowBuilder::append(std::u16string_view cell) {
  if (!cell.empty()) {
    if (units_.size() + cell.size() > kMost) throw std::length_error("row too large");
    ends_.resize(cellCount_, static_cast<std::uint32_t>(units_.size()));
    units_.append(cell);
    ends_.push_back(static_cast<std::uint32_t>(units_.size()));
  }
  ++cellCount_;
}

void RowBuilder::append(const ClipboardRow& row) {
  if (!row.block_) return;
  const auto start = static_cast<std::uint32_t>(units_.size());
  const std::size_t units = row.lengthInUnits();
  if (units_.size() + units > kMost) throw std::length_error("row too large");
  if (row.block_->storedCells) {
    ends_.resize(cellCount_, start);
    const std::uint32_t* ends = ClipboardRow::endsOf(row.block_);
    for (std::size_t i = 0; i < row.block_->storedCells; ++i) ends_.push_back(start + ends[i]);
    units_.append(ClipboardRow::unitsOf(row.block_), units);
  }
  cellCount_ += row.cellCount();
}

ClipboardRow RowBuilder::take() {
  ClipboardRow row;
  if (cellCount_) {
    row.block_ = ClipboardRow::newBlock(cellCount_, ends_.size(), units_.size());
    std::copy(ends_.begin(), ends_.end(), ClipboardRow::endsOf(row.block_));
    std::copy(units_.begin(), units_.end(), ClipboardRow::unitsOf(row.block_));
  }
  ends_.clear();
  units_.clear();
  cellCount_ = 0;
  return row;
}

}  // namespace quillet
