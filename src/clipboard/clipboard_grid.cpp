#include "clipboard/clipboard_grid.h"

#include <stdexcept>
#include <utility>

namespace quillet {

namespace {

// Rows of a chunk: enough that a copy of a large grid is small, few enough that remaking one is nothing.
constexpr std::size_t kMostRows = 256;
// A smaller chunk is not worth sharing; so between two shared ones there is at most one that is not full.
constexpr std::size_t kFewestSharedRows = kMostRows / 2;

constexpr std::size_t kMostThereIsRoomFor = 67'108'864;

}  // namespace

std::size_t ClipboardGrid::chunkWithRow(std::size_t index) const {
  const auto next = std::upper_bound(firstRows_.begin(), firstRows_.end(), index);
  return static_cast<std::size_t>(next - firstRows_.begin()) - 1;
}

const ClipboardRow& ClipboardGrid::row(std::size_t index) const {
  const std::size_t chunk = chunkWithRow(index);
  return chunks_[chunk]->rows[index - firstRows_[chunk]];
}

bool ClipboardGrid::hasCell(std::int64_t row, std::int64_t column) const {
  return row >= 0 && column >= 0 && static_cast<std::size_t>(row) < rowCount_ &&
         static_cast<std::size_t>(column) < this->row(static_cast<std::size_t>(row)).cellCount();
}

bool ClipboardGrid::operator==(const ClipboardGrid& other) const {
  if (rowCount_ != other.rowCount_ || width_ != other.width_) return false;
  std::size_t index = 0;
  bool equal = true;
  forEachRow([&](const ClipboardRow& row) { equal = equal && row == other.row(index++); });
  return equal;
}

void GridBuilder::append(ClipboardRow row) {
  if (open_.empty()) open_.reserve(kMostRows);
  open_.push_back(std::move(row));
  if (open_.size() == kMostRows) close();
}

void GridBuilder::append(const ClipboardRow& row, std::size_t count) {
  for (; count > 0 && !open_.empty(); --count) append(row);
  if (count >= kMostRows) {
    auto chunk = std::make_shared<Chunk>();
    chunk->rows.assign(kMostRows, row);
    chunk->width = row.cellCount();
    for (; count >= kMostRows; count -= kMostRows) add(chunk);
  }
  for (; count > 0; --count) append(row);
}

void GridBuilder::append(const ClipboardGrid& grid, std::size_t first, std::size_t end) {
  end = std::min(end, grid.rowCount_);
  if (first >= end) return;
  for (std::size_t chunk = grid.chunkWithRow(first); first < end; ++chunk) {
    const auto& rows = grid.chunks_[chunk]->rows;
    const std::size_t from = first - grid.firstRows_[chunk];
    const std::size_t to = std::min(rows.size(), end - grid.firstRows_[chunk]);
    if (from == 0 && to == rows.size())
      appendWhole(grid.chunks_[chunk]);
    else
      for (std::size_t i = from; i < to; ++i) append(rows[i]);
    first += to - from;
  }
}

void GridBuilder::appendWhole(const std::shared_ptr<const Chunk>& chunk) {
  if (chunk->rows.size() < kFewestSharedRows) {
    for (const ClipboardRow& row : chunk->rows) append(row);
    return;
  }
  close();
  add(chunk);
}

void GridBuilder::close() {
  if (open_.empty()) return;
  auto chunk = std::make_shared<Chunk>();
  chunk->rows.swap(open_);
  chunk->rows.shrink_to_fit();
  for (const ClipboardRow& row : chunk->rows) chunk->width = std::max(chunk->width, row.cellCount());
  add(std::move(chunk));
}

void GridBuilder::add(std::shared_ptr<const Chunk> chunk) {
  grid_.firstRows_.push_back(grid_.rowCount_);
  grid_.rowCount_ += chunk->rows.size();
  grid_.width_ = std::max(grid_.width_, chunk->width);
  grid_.chunks_.push_back(std::move(chunk));
}

ClipboardGrid GridBuilder::take() {
  close();
  return std::exchange(grid_, {});
}

void requireRoomFor(std::size_t count) {
  if (count > kMostThereIsRoomFor) throw std::length_error("grid too large");
}

}  // namespace quillet
