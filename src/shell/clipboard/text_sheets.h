// The two sheets between the clipboard's text and the grid.
#pragma once

#include "shell/clipboard/clipboard_sheet.h"

namespace quillet {

// Opens with its boxes for lines and columns as they were left, which is meant: a record does not tell them.
class SplitSheet final : public RememberingSheet {
 public:
  SplitSheet(UserInterface& interface, const Neighbours& neighbours);

 private:
  void fill(const OperationRecord& record) override;
  OperationRecord makeRecord() const override;
  // There may be a grid now: Perform and Join are on, also when the split has failed, which is meant.
  void doneButtonPressed() override;

  CheckBox splitClipboardIntoLines_;
  ComboBox lineSeparator_;
  CheckBox splitLinesIntoColumns_;
  ComboBox columnSeparator_;
  CheckBox removeQuotes_;
};

class JoinSheet final : public RememberingSheet {
 public:
  JoinSheet(UserInterface& interface, const Neighbours& neighbours);

 private:
  void fill(const OperationRecord& record) override;
  OperationRecord makeRecord() const override;

  ComboBox lineSeparator_;
  ComboBox columnSeparator_;
  CheckBox addQuotes_;
};

}  // namespace quillet
