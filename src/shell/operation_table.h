// The table of operations of what is selected in the list of input files.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "operations/operation_record.h"
#include "shell/controls.h"
#include "shell/file_selection.h"

namespace quillet {

// Main thread only. selection outlives the table.
class OperationTable {
 public:
  OperationTable(Window& window, const FileSelection& selection);

  // With several files selected, the first one's initial and final operation speak for all; taken when the
  // selection changes.
  void takeMultiFileOperations();

  // Of the one selected file, or of those for several files.
  std::optional<OperationRecord> operation(std::size_t row) const;

  // Of those for several files; nothing beyond them, or unless there are both ends.
  std::optional<OperationRecord> multiFileOperation(std::size_t row) const;
  void setMultiFileOperation(std::size_t row, OperationRecord record);  // of a row that there is

  void reloadTable() { table_.reloadData(); }
  // The delete button is on while an operation is selected.
  void updateUIAfterOperationTableViewSelectionDidChange();

  // Title, name of an icon and detail a row.
  Table& table() { return table_; }
  const Button& deleteButton() const { return deleteButton_; }

 private:
  std::size_t rowCount() const;
  Table::Row row(std::size_t row) const;
  // The list that the table shows, null for none. Lists may be long, so it is not copied; one for several
  // files is good until the next one is taken.
  std::shared_ptr<const OperationList> shownList() const;

  const FileSelection& selection_;
  OperationList multiFileOperationsArray_;
  Button addButton_;  // its menu is the one of all operations
  Button editButton_;
  Button deleteButton_;
  Table table_;
};

}  // namespace quillet
