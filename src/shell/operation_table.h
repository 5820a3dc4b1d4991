// The table of operations of what is selected in the list of input files.
#pragma once

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

  void reloadTable() { table_.reloadData(); }
  // The delete button is on while an operation is selected.
  void updateUIAfterOperationTableViewSelectionDidChange();

  // Title, name of an icon and detail a row.
  Table& table() { return table_; }
  const Button& deleteButton() const { return deleteButton_; }

 private:
  std::size_t rowCount() const;
  Table::Row row(std::size_t row) const;

  const FileSelection& selection_;
  OperationList multiFileOperations_;
  Button addButton_;  // its menu is the one of all operations
  Button editButton_;
  Button deleteButton_;
  Table table_;
};

}  // namespace quillet
