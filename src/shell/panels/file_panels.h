// The panels of the two ends of a list: how a file is read, and how the result is written. Both only edit;
// there is no adding of an end.
#pragma once

#include "shell/panels/operation_panel.h"

namespace quillet {

class InitialOperationPanel final : public OperationPanel {
 public:
  explicit InitialOperationPanel(UserInterface& interface);
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

 private:
  PopUpButton decodeAs_;
  CheckBox splitContentsIntoLines_;
  ComboBox lineSeparator_;
  CheckBox splitLinesIntoColumns_;
  ComboBox columnSeparator_;
  CheckBox removeQuotes_;
};

class FinalOperationPanel final : public OperationPanel {
 public:
  explicit FinalOperationPanel(UserInterface& interface);
  Opens fill(const OperationRecord& record) override;
  // The folder, Arg3, is written by nothing.
  void write(OperationRecord& record) const override;

 private:
  PopUpButton encodeAs_;
  ComboBox lineSeparator_;
  ComboBox columnSeparator_;
  CheckBox addQuotes_;
  CheckBox addLineSeparator_;
  TextField fileName_;
  PopUpButton writeMode_;
};

}  // namespace quillet
