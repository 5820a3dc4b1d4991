#include "engine/input_files.h"

#include <algorithm>

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
