// The table of operations of what is selected in the list of input files.
#pragma once

#include <cstddef>
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

  // The operations of the one selected file, or those for several files.
  OperationList operations() const;
  std::optional<OperationRecord> operation(std::size_t row) const;  // of these

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
  bool isForSeveralFiles() const { return selection_.rows().count() >= 2; }

  const FileSelection& selection_;
  OperationList multiFileOperationsArray_;
  Button addButton_;  // its menu is the one of all operations
  Button editButton_;
  Button deleteButton_;
  Table table_;
};

}  // namespace quillet
