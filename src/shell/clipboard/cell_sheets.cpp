#include "shell/clipboard/cell_sheets.h"

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "shell/menu_items.h"

namespace quillet {

TrimCellsSheet::TrimCellsSheet(UserInterface& interface, const Neighbours& neighbours)
    : RememberingSheet(
          interface, neighbours, "clipboardDataTrimWindow", OpClipboardTrim, "ClipboardDataTrimKey",
          localizable(u"As Trim Line, in the selected cells; but From Both Sides takes only the end off a "
                      u"cell that matches at both.")),
      trim_(sheet(), named(""), {}) {}

void TrimCellsSheet::fill(const OperationRecord& record) {
  trim_.fill(record, "Arg2");
}

OperationRecord TrimCellsSheet::makeRecord() const {
  OperationRecord record{{"Code", OpClipboardTrim}, {"Arg1", selectedCells()}};
  trim_.write(record, "Arg2");
  return record;
}

ReplaceCellsSheet::ReplaceCellsSheet(UserInterface& interface, const Neighbours& neighbours)
    : RememberingSheet(interface, neighbours, "clipboardDataReplaceWindow", OpClipboardReplace,
                       "ClipboardDataReplaceKey", localizable(u"As Replace Line, in the selected cells.")),
      replace_(sheet(), named("")) {}

void ReplaceCellsSheet::fill(const OperationRecord& record) {
  replace_.fill(record, "Arg2", "Arg3");
}

OperationRecord ReplaceCellsSheet::makeRecord() const {
  OperationRecord record{{"Code", OpClipboardReplace}, {"Arg1", selectedCells()}};
  replace_.write(record, "Arg2", "Arg3");
  return record;
}

FillCellsSheet::FillCellsSheet(UserInterface& interface, const Neighbours& neighbours)
    : RememberingSheet(interface, neighbours, "clipboardDataFillWindow", OpClipboardFill,
                       "ClipboardDataFillKey",
                       localizable(u"Fills the selected cells that exist, along each line, then down.")),
      type_(sheet(), named("TypePopUpButton"), fillTypeItems()),
      with_(sheet(), named("WithTextField")),
      help_(sheet(), named("HelpLabel")) {
  help_.setText(localized(u"Sequence: start and step, such as 10,5"));
}

void FillCellsSheet::fill(const OperationRecord& record) {
  type_.selectItemWithTag(record.integer("IntArg1", 0));
  with_.setText(record.text("Arg1"));
}

// The cells stand in Arg2 here, which is meant.
OperationRecord FillCellsSheet::makeRecord() const {
  return {{"Code", OpClipboardFill},
          {"IntArg1", type_.selectedTag()},
          {"Arg1", with_.text()},
          {"Arg2", selectedCells()}};
}

CellDetailsSheet::CellDetailsSheet(UserInterface& interface, const Neighbours& neighbours)
    : ClipboardSheet(interface, neighbours, "cellDetailsWindow", OpClipboardEditCell, "Clicked", {}),
      text_(sheet(), named("TextField")) {}

void CellDetailsSheet::prepareForOpening() {
  const ClipboardGrid& grid = neighbours().data.clipboardDataArray();
  const std::int64_t row = neighbours().data.selection().focusedRowIndex();
  const std::int64_t column = neighbours().data.selection().focusedColumnIndex();
  std::u16string text;
  if (grid.hasCell(row, column))
    text = grid.row(static_cast<std::size_t>(row)).cell(static_cast<std::size_t>(column));
  text_.setText(std::move(text));
}

OperationRecord CellDetailsSheet::makeRecord() const {
  const ClipboardSelection& selection = neighbours().data.selection();
  return {{"Code", OpClipboardEditCell},
          {"IntArg1", selection.focusedRowIndex()},
          {"IntArg2", selection.focusedColumnIndex()},
          {"Arg1", text_.text()}};
}

}  // namespace quillet
