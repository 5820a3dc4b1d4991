// Which rows of the list of input files are selected.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "engine/input_files.h"
#include "platform/index_set.h"

namespace quillet {

// Main thread only.
class FileSelection {
 public:
  explicit FileSelection(const InputFiles& files) : files_(files) {}  // outlives the selection

  // Called after each selecting.
  void setChanged(std::function<void()> changed) { changed_ = std::move(changed); }

  // Rows beyond the table are left out. This always tells, even of the same rows: other files may stand in
  // them.
  void select(const IndexSet& rows);

  // After the table was filled anew: rows that it no longer has are not selected any more. Tells nothing.
  void dropRowsBeyondTable();

  const IndexSet& rows() const { return rows_; }  // from 0

  // The one selected row; nothing with none or several.
  std::optional<std::size_t> singleRow() const;
  InputFiles::Entry singleFile() const;  // null with none or several
  InputFiles::Entry firstFile() const;   // of the selected; null with none

 private:
  IndexSet withinTable(const IndexSet& rows) const;

  const InputFiles& files_;
  IndexSet rows_;
  std::function<void()> changed_;
};

}  // namespace quillet
