#include "shell/file_selection.h"

#include <algorithm>

namespace quillet {

IndexSet FileSelection::withinTable(const IndexSet& rows) const {
  const auto last = static_cast<std::int64_t>(files_.count()) - 1;
  IndexSet result;
  for (const auto& range : rows.ranges()) result.addRange(range.first, std::min(range.last, last));
  return result;
}

void FileSelection::select(const IndexSet& rows) {
  rows_ = withinTable(rows);
  if (changed_) changed_();
}

void FileSelection::dropRowsBeyondTable() {
  rows_ = withinTable(rows_);
}

std::optional<std::size_t> FileSelection::singleRow() const {
  if (rows_.count() != 1) return std::nullopt;
  return static_cast<std::size_t>(rows_.firstIndex());
}

InputFiles::Entry FileSelection::singleFile() const {
  const auto row = singleRow();
  return row ? files_.at(*row) : nullptr;
}

InputFiles::Entry FileSelection::firstFile() const {
  return rows_.isEmpty() ? nullptr : files_.at(static_cast<std::size_t>(rows_.firstIndex()));
}

}  // namespace quillet
