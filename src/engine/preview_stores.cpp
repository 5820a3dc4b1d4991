#include "engine/preview_stores.h"

#include <algorithm>

#include "platform/composed_sequences.h"

namespace quillet {

void PreviewStores::reset() {
  const std::lock_guard lock(mutex_);
  content_.inputRows.clear();
  content_.outputRows.clear();
  content_.inputString.clear();
  content_.outputString.clear();
}

void PreviewStores::clearInputRows() {
  const std::lock_guard lock(mutex_);
  content_.inputRows.clear();
}

void PreviewStores::setInputString(std::u16string_view text) {
  const std::lock_guard lock(mutex_);
  content_.inputString = text;
}

void PreviewStores::setInputLineSeparator(std::u16string_view separator) {
  const std::lock_guard lock(mutex_);
  content_.inputLineSeparator = separator;
}

void PreviewStores::addRow(Side side, Row row) {
  const std::lock_guard lock(mutex_);
  (side == Side::Input ? content_.inputRows : content_.outputRows).push_back(std::move(row));
}

void PreviewStores::growFirstRow(Side side, Row row, const std::u16string* moreInput) {
  const std::lock_guard lock(mutex_);
  Rows& rows = side == Side::Input ? content_.inputRows : content_.outputRows;
  if (rows.empty()) {
    rows.push_back(std::move(row));
    return;
  }
  if (rows.front().empty() || !moreInput) return;
  std::u16string head = rows.front().front();
  if (head.size() >= kTextUnits) return;
  std::size_t remaining =
      kTextUnits - head.size();  // a count of sequences, though the head is counted in units
  for (std::size_t at = 0; at < moreInput->size() && remaining > 0; --remaining) {
    const std::size_t end = composedSequenceEnd(*moreInput, at);
    head.append(*moreInput, at, end - at);
    at = end;
  }
  rows.clear();
  rows.push_back({std::move(head)});
}

void PreviewStores::appendOutput(std::u16string_view text) {
  const std::lock_guard lock(mutex_);
  content_.outputString += text;
}

std::size_t PreviewStores::rowCount(Side side) const {
  const std::lock_guard lock(mutex_);
  return rowsOf(side).size();
}

std::size_t PreviewStores::longestRow(Side side) const {
  const std::lock_guard lock(mutex_);
  std::size_t longest = 0;
  for (const auto& row : rowsOf(side)) longest = std::max(longest, row.size());
  return longest;
}

std::optional<std::size_t> PreviewStores::cellCount(Side side, std::size_t row) const {
  const std::lock_guard lock(mutex_);
  const Rows& all = rowsOf(side);
  if (row >= all.size()) return std::nullopt;
  return all[row].size();
}

PreviewStores::Rows PreviewStores::rows(Side side, std::size_t first, std::size_t mostRows) const {
  const std::lock_guard lock(mutex_);
  const Rows& all = rowsOf(side);
  const std::size_t begin = std::min(first, all.size());
  const std::size_t count = std::min(mostRows, all.size() - begin);
  const auto from = all.begin() + static_cast<std::ptrdiff_t>(begin);
  return Rows(from, from + static_cast<std::ptrdiff_t>(count));
}

PreviewStores::Content PreviewStores::content() const {
  const std::lock_guard lock(mutex_);
  return content_;
}

}  // namespace quillet
