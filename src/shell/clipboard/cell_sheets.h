// The sheets that change the texts of cells: of the selected ones, or of the one that has the focus.
#pragma once

#include "shell/clipboard/clipboard_sheet.h"
#include "shell/panels/text_controls.h"

namespace quillet {

class TrimCellsSheet final : public RememberingSheet {
 public:
  TrimCellsSheet(UserInterface& interface, const Neighbours& neighbours);

 private:
  void fill(const OperationRecord& record) override;
  OperationRecord makeRecord() const override;

  TrimControls trim_;
};

class ReplaceCellsSheet final : public RememberingSheet {
 public:
  ReplaceCellsSheet(UserInterface& interface, const Neighbours& neighbours);

 private:
  void fill(const OperationRecord& record) override;
  OperationRecord makeRecord() const override;

  ReplaceControls replace_;
};

class FillCellsSheet final : public RememberingSheet {
 public:
  FillCellsSheet(UserInterface& interface, const Neighbours& neighbours);

 private:
  void fill(const OperationRecord& record) override;
  OperationRecord makeRecord() const override;

  PopUpButton type_;
  TextField with_;
  Label help_;
};

// For the focused cell. Without one the sheet is empty, and Done is refused. It remembers nothing.
class CellDetailsSheet final : public ClipboardSheet {
 public:
  CellDetailsSheet(UserInterface& interface, const Neighbours& neighbours);

 private:
  void prepareForOpening() override;
  OperationRecord makeRecord() const override;

  TextField text_;
};

}  // namespace quillet
