// The panel of the operation that writes dates, times and numbers in one form.
#pragma once

#include "shell/file_selection.h"
#include "shell/panels/column_panels.h"
#include "shell/panels/operation_panel.h"

namespace quillet {

class ReformatColumnPanel final : public OperationPanel {
 public:
  ReformatColumnPanel(UserInterface& interface, const FileSelection& selection);
  void prepareForAdding(std::int64_t code) override;
  Opens fill(const OperationRecord& record) override;
  // IntArg3 and IntArg4 are written as far as the form needs them.
  void write(OperationRecord& record) const override;

  // Shows what belongs to the form.
  void reformatColumnOperationWindowReformatAsChanged();

 private:
  void fillFormats(const OperationRecord& record);
  void writeFormats(OperationRecord& record) const;

  ColumnChoice columns_;
  PopUpButton reformatAs_;
  Label withFormatLabel_;
  PopUpButton date_;
  PopUpButton time_;
  Box dateTimeView_;
  PopUpButton dateOfDateTime_;
  PopUpButton timeOfDateTime_;
  Box numberView_;
  TextField digitsToTheRight_;
  CheckBox useInvalidString_;
  TextField invalidString_;
};

}  // namespace quillet
