#include "clipboard/clipboard_row.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <limits>
#include <new>
#include <stdexcept>

namespace quillet {

namespace {

constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();

// A column and an end take twice the room of an end alone, and are slower to find; so sparse has to pay.
bool isSparse(const RowSize& size) {
  return size.filledCells < size.endOfTexts / 4;
}

}  // namespace

ClipboardRow::ClipboardRow(std::span<const std::u16string_view> cells) {
  RowSize size{.cellCount = cells.size()};
  for (std::size_t i = 0; i < cells.size(); ++i)
    if (!cells[i].empty()) size.addFilledCell(i, cells[i].size());
  RowWriter writer(size);
  for (std::size_t i = 0; i < cells.size(); ++i)
    if (!cells[i].empty()) writer.write(i, cells[i]);
  *this = writer.take();
}

void ClipboardRow::release() noexcept {
  std::free(block_);
}

std::size_t ClipboardRow::firstPositionFrom(std::size_t column) const {
  const std::size_t count = storedCellCount();
  if (!count || !block_->sparse) return std::min(column, count);
  const std::uint32_t* columns = columnsOf(block_);
  return static_cast<std::size_t>(std::lower_bound(columns, columns + count, column) - columns);
}

std::size_t ClipboardRow::positionOf(std::size_t column) const {
  const std::size_t position = firstPositionFrom(column);
  return position < block_->storedCells && columnsOf(block_)[position] == column ? position
                                                                                 : block_->storedCells;
}

bool ClipboardRow::operator==(const ClipboardRow& other) const {
  if (block_ == other.block_) return true;
  if (!block_ || !other.block_) return false;  // a row without cells has no block
  if (block_->cellCount != other.block_->cellCount || block_->storedCells != other.block_->storedCells ||
      block_->sparse != other.block_->sparse || lengthInUnits() != other.lengthInUnits())
    return false;
  const std::uint32_t* numbers = endsOf(block_);
  const std::size_t count = std::size_t{block_->storedCells} * (block_->sparse ? 2 : 1);
  return std::equal(numbers, numbers + count, endsOf(other.block_)) &&
         std::equal(unitsOf(block_), unitsOf(block_) + lengthInUnits(), unitsOf(other.block_));
}

RowWriter::RowWriter(const RowSize& size) {
  if (!size.cellCount) return;
  if (size.cellCount > kMost || size.lengthInUnits > kMost) throw std::length_error("row too large");
  const bool sparse = isSparse(size);
  const std::size_t stored = sparse ? size.filledCells : size.endOfTexts;
  void* memory = std::malloc(sizeof(ClipboardRow::Block) + stored * (sparse ? 2 : 1) * sizeof(std::uint32_t) +
                             size.lengthInUnits * sizeof(char16_t));
  if (!memory) throw std::bad_alloc();
  row_.block_ = new (memory) ClipboardRow::Block{1, static_cast<std::uint32_t>(size.cellCount),
                                                 static_cast<std::uint32_t>(stored), sparse};
}

void RowWriter::write(std::size_t column, std::u16string_view text) {
  assert(row_.block_);
  std::copy(text.begin(), text.end(), ClipboardRow::unitsOf(row_.block_) + units_);
  storeEnd(column, units_ + static_cast<std::uint32_t>(text.size()));
}

void RowWriter::storeEnd(std::size_t column, std::uint32_t end) {
  std::uint32_t* ends = ClipboardRow::endsOf(row_.block_);
  if (row_.block_->sparse)
    ClipboardRow::columnsOf(row_.block_)[storedCells_] = static_cast<std::uint32_t>(column);
  else
    while (storedCells_ < column) ends[storedCells_++] = units_;
  assert(storedCells_ < row_.block_->storedCells);
  ends[storedCells_++] = end;
  units_ = end;
}

void RowBuilder::append(std::u16string_view cell) {
  if (!cell.empty()) {
    units_.append(cell);
    filled_.push_back({cellCount_, units_.size()});
  }
  ++cellCount_;
}

void RowBuilder::append(const ClipboardRow& row, std::size_t first, std::size_t end) {
  end = std::min(end, row.cellCount());
  if (first >= end) return;
  const std::size_t begin = row.firstPositionFrom(first);
  const std::size_t past = row.firstPositionFrom(end);
  if (begin < past) {
    const std::uint32_t* ends = ClipboardRow::endsOf(row.block_);
    std::size_t before = begin ? ends[begin - 1] : 0;
    const std::size_t shift = units_.size() - before;
    units_.append(ClipboardRow::unitsOf(row.block_) + before, ends[past - 1] - before);
    for (std::size_t i = begin; i < past; before = ends[i++])
      if (ends[i] != before)
        filled_.push_back({cellCount_ + row.storedCell(i).column - first, shift + ends[i]});
  }
  cellCount_ += end - first;
}

ClipboardRow RowBuilder::take() {
  RowWriter writer(
      {cellCount_, filled_.empty() ? 0 : filled_.back().column + 1, filled_.size(), units_.size()});
  if (ClipboardRow::Block* block = writer.row_.block_) {  // there are cells
    for (const FilledCell& cell : filled_) writer.storeEnd(cell.column, static_cast<std::uint32_t>(cell.end));
    std::copy(units_.begin(), units_.end(), ClipboardRow::unitsOf(block));
  }
  filled_.clear();
  units_.clear();
  cellCount_ = 0;
  return writer.take();
}

}  // namespace quillet
