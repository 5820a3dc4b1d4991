// The panels of all operations of a file job, by the code that they edit.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "shell/panels/column_panels.h"
#include "shell/panels/file_panels.h"
#include "shell/panels/join_columns_panel.h"
#include "shell/panels/line_panels.h"
#include "shell/panels/rearrange_columns_panel.h"
#include "shell/panels/reformat_column_panel.h"

namespace quillet {

// Main thread only. interface and selection outlive the panels.
class OperationPanels {
 public:
  OperationPanels(UserInterface& interface, const FileSelection& selection);

  void addCommandsTo(Commands& commands);

  OperationPanel* panelForCode(std::int64_t code);  // null for a code without a panel
  OperationPanel* panelOf(const Control& control);  // null for a control of no panel

  RearrangeColumnsPanel& rearrangeColumns() { return rearrangeColumns_; }
  JoinColumnsPanel& joinColumns() { return joinColumns_; }

 private:
  struct Entry {
    std::int64_t code;
    OperationPanel* panel;
  };

  InitialOperationPanel initial_;
  FinalOperationPanel final_;
  ReplaceCharacterPanel replaceCharacter_;
  SkipLinePanel skipLine_;
  TrimLinePanel trimLine_;
  ReplaceLinePanel replaceLine_;
  JoinLinesPanel joinLines_;
  TrimColumnPanel trimColumn_;
  ReplaceColumnPanel replaceColumn_;
  ReformatColumnPanel reformatColumn_;
  SetNumberOfColumnsPanel setNumberOfColumns_;
  RearrangeColumnsPanel rearrangeColumns_;
  JoinColumnsPanel joinColumns_;
  const std::array<Entry, 14> byCode_;
};

}  // namespace quillet
