// The panel for the order of columns. Its list stays between uses.
#pragma once

#include <vector>

#include "shell/file_selection.h"
#include "shell/panels/operation_panel.h"

namespace quillet {

class RearrangeColumnsPanel final : public OperationPanel {
 public:
  RearrangeColumnsPanel(UserInterface& interface, const FileSelection& selection);
  // With one file selected its columns in their order, else the list stays.
  void prepareForAdding(std::int64_t code) override;
  // Opens for the one selected file only.
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

  // A drop of rows of the table, before the row.
  void acceptDrop(const IndexSet& rows, std::int64_t row);
  // The selected rows, by one; the selection goes with them.
  void moveSelectedRowsUp();
  void moveSelectedRowsDown();

 private:
  void moveSelectedRows(std::int64_t toRow, std::int64_t firstRowAfterwards);

  const FileSelection& selection_;
  std::vector<ColumnEntry> rearrangeColumnsOperationWindowColumns_;
  Table table_;
  Button moveUpButton_;
  Button moveDownButton_;
};

}  // namespace quillet
