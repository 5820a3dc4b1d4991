// The table of input files, and which of its rows are selected.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "engine/input_files.h"
#include "platform/index_set.h"
#include "shell/controls.h"

namespace quillet {

// Main thread only.
class FileSelection {
 public:
  FileSelection(Window& window, const InputFiles& files);  // both outlive the selection

  // Called after each selecting.
  void setChanged(std::function<void()> changed) { table_.setSelectionChanged(std::move(changed)); }

  // Rows beyond the table are left out. This always tells, even of the same rows: other files may stand in
  // them.
  void select(const IndexSet& rows) { table_.userSelects(rows); }
  void select(std::size_t row);

  // After the list has changed. Rows that it no longer has are not selected any more, which tells nothing.
  void reloadTable() { table_.reloadData(Table::Tell::No); }
  void setTableEnabled(bool enabled) { table_.setEnabled(enabled); }

  std::int64_t selectedRow() const { return table_.selectedRow(); }  // -1 for none
  const IndexSet& rows() const { return table_.selectedRows(); }     // from 0

  // The one selected row; nothing with none or several.
  std::optional<std::size_t> singleRow() const;
  InputFiles::Entry singleFile() const;  // null with none or several
  InputFiles::Entry firstFile() const;   // of the selected; null with none

 private:
  const InputFiles& files_;
  Table table_;
};

}  // namespace quillet
