// The panels of the operations on the cells of some columns, and of the two on the number of columns.
#pragma once

#include <string>
#include <vector>

#include "shell/file_selection.h"
#include "shell/panels/operation_panel.h"
#include "shell/panels/text_controls.h"

namespace quillet {

// The table of the selected file's columns, and the box of the controls that are on while a column is
// selected. Done has no such test: without a column Arg1 is empty, and the operation does nothing.
class ColumnChoice {
 public:
  ColumnChoice(Window& window, const std::string& prefix, const FileSelection& selection);

  void addToBox(const std::vector<Control*>& controls);
  // What was selected last stays so, though the box is off: this is meant.
  void prepareForAdding();
  void fill(const OperationRecord& record);
  void write(OperationRecord& record) const;

 private:
  void enableBox();

  Table table_;
  Box box_;
};

class TrimColumnPanel final : public OperationPanel {
 public:
  TrimColumnPanel(UserInterface& interface, const FileSelection& selection);
  void prepareForAdding(std::int64_t code) override;
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

 private:
  ColumnChoice columns_;
  TrimControls trim_;
};

class ReplaceColumnPanel final : public OperationPanel {
 public:
  ReplaceColumnPanel(UserInterface& interface, const FileSelection& selection);
  void prepareForAdding(std::int64_t code) override;
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

 private:
  ColumnChoice columns_;
  ReplaceControls replace_;
};

class SetNumberOfColumnsPanel final : public OperationPanel {
 public:
  SetNumberOfColumnsPanel(UserInterface& interface, const FileSelection& selection);
  // With one file selected the count is that of its columns, else it stays.
  void prepareForAdding(std::int64_t code) override;
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

 private:
  void setCount(std::int64_t count);
  std::int64_t columnCountOfFile() const;

  const FileSelection& selection_;
  TextField requiredNumberOfColumns_;
  TextField textForAddedColumns_;
};

}  // namespace quillet
