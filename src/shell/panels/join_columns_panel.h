// The panel for columns that become one. Its list stays between uses.
#pragma once

#include <vector>

#include "shell/file_selection.h"
#include "shell/panels/operation_panel.h"

namespace quillet {

class JoinColumnsPanel final : public OperationPanel {
 public:
  JoinColumnsPanel(UserInterface& interface, const FileSelection& selection);
  // With one file selected its columns, as its first rearranging leaves them; else the list stays.
  void prepareForAdding(std::int64_t code) override;
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

  // The columns one by one, as a new preview of the selected file leaves the list.
  void refillJoinColumns(const std::vector<ColumnEntry>& columns);

  void joinColumnsOperationWindowJoinButtonClicked();
  void updateJoinColumnsOperationWindow();  // turns the two buttons on or off

 private:
  using Group = std::vector<ColumnEntry>;  // one column of the output

  void fillGroups(std::u16string_view list, const std::vector<ColumnEntry>& columns);
  void reload();

  const FileSelection& selection_;
  std::vector<Group> joinColumnsOperationWindowColumns_;
  Table table_;
  Button joinButton_;
  Button unjoinButton_;
  TextField separator_;
};

}  // namespace quillet
