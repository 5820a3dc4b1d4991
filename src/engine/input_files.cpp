#include "engine/input_files.h"

#include <algorithm>
#include <utility>

#include "platform/moved_rows.h"

namespace quillet {

std::size_t InputFiles::count() const {
  const std::lock_guard lock(mutex_);
  return entries_.size();
}

InputFiles::Entry InputFiles::at(std::size_t index) const {
  const std::lock_guard lock(mutex_);
  return index < entries_.size() ? entries_[index] : nullptr;
}

std::vector<InputFiles::Entry> InputFiles::all() const {
  const std::lock_guard lock(mutex_);
  return entries_;
}

void InputFiles::setAll(std::vector<Entry> entries) {
  const std::lock_guard lock(mutex_);
  entries_ = std::move(entries);
}

void InputFiles::insert(std::size_t index, const std::vector<Entry>& entries) {
  const std::lock_guard lock(mutex_);
  const auto at = static_cast<std::ptrdiff_t>(std::min(index, entries_.size()));
  entries_.insert(entries_.begin() + at, entries.begin(), entries.end());
}

std::size_t InputFiles::move(const IndexSet& indexes, std::int64_t row) {
  const std::lock_guard lock(mutex_);
  std::size_t moved = 0;
  for (const auto& range : indexes.ranges()) {
    const std::size_t first = std::min(static_cast<std::size_t>(range.first), entries_.size());
    moved += std::min(static_cast<std::size_t>(range.last) + 1, entries_.size()) - first;
  }
  entries_ = withRowsMoved(std::move(entries_), indexes, row);
  return moved;
}

std::vector<InputFiles::Entry> InputFiles::remove(const IndexSet& indexes) {
  const std::lock_guard lock(mutex_);
  std::vector<Entry> removed, left;
  std::size_t next = 0;
  for (const auto& range : indexes.ranges()) {
    for (; next < entries_.size() && next < static_cast<std::size_t>(range.first); ++next)
      left.push_back(std::move(entries_[next]));
    for (; next < entries_.size() && next <= static_cast<std::size_t>(range.last); ++next)
      removed.push_back(std::move(entries_[next]));
  }
  for (; next < entries_.size(); ++next) left.push_back(std::move(entries_[next]));
  entries_ = std::move(left);
  return removed;
}

void InputFiles::replace(std::size_t index, Entry entry) {
  const std::lock_guard lock(mutex_);
  if (index < entries_.size()) entries_[index] = std::move(entry);
}

bool InputFiles::setOperations(std::size_t index, OperationList operations) {
  const std::lock_guard lock(mutex_);
  if (index >= entries_.size()) return false;
  auto changed = std::make_shared<InputFile>(*entries_[index]);
  changed->operations = std::move(operations);
  entries_[index] = std::move(changed);
  return true;
}

void InputFiles::setExpectedColumnsInLine(std::size_t index, const std::optional<std::string>& filePath,
                                          std::vector<ColumnEntry> columns) {
  const std::lock_guard lock(mutex_);
  if (index >= entries_.size() || entries_[index]->filePath != filePath) return;
  auto changed = std::make_shared<InputFile>(*entries_[index]);
  changed->expectedColumnsInLine = std::move(columns);
  entries_[index] = std::move(changed);
}

}  // namespace quillet
