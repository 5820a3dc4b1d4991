#include "engine/preview_stores.h"

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
  std::size_t remaining = kTextUnits - head.size();  // a count of sequences, though the head is counted in units
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

PreviewStores::Content PreviewStores::content() const {
  const std::lock_guard lock(mutex_);
  return content_;
}

}  // namespace quillet
