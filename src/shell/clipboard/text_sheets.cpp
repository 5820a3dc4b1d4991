#include "shell/clipboard/text_sheets.h"

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "shell/menu_items.h"
#include "shell/panels/operation_panel.h"
#include "shell/panels/text_controls.h"

namespace quillet {

SplitSheet::SplitSheet(UserInterface& interface, const Neighbours& neighbours)
    : RememberingSheet(
          interface, neighbours, "clipboardDataSplitWindow", OpClipboardSplit, "ClipboardDataSplitKey",
          localizable(u"Cuts the clipboard's text anew: changes since the last Join are dropped. Line "
                      u"separators cut inside quotes too.")),
      splitClipboardIntoLines_(sheet(), named("SplitClipboardIntoLinesCheckbox"),
                               localized(u"Split into lines by")),
      lineSeparator_(sheet(), named("LineSeparatorComboBox"), lineSeparatorItems()),
      splitLinesIntoColumns_(sheet(), named("SplitLinesIntoColumnsCheckbox"),
                             localized(u"Split lines into columns by")),
      columnSeparator_(sheet(), named("ColumnSeparatorComboBox"), columnSeparatorItems()),
      removeQuotes_(sheet(), named("RemoveQuotesCheckbox"), localized(u"Remove quotes")) {}

void SplitSheet::fill(const OperationRecord& record) {
  fillSeparators(record, lineSeparator_, columnSeparator_);
  removeQuotes_.setOn(record.integer("IntArg1", 0) == RemoveQuotes);
}

// A split that is off is told by an empty separator; the flags hold the quotes alone, which is meant.
OperationRecord SplitSheet::makeRecord() const {
  OperationRecord record{{"Code", OpClipboardSplit}};
  setFlag(record, RemoveQuotes, removeQuotes_.isOn());
  writeSeparators(record, lineSeparator_, columnSeparator_);
  if (!splitClipboardIntoLines_.isOn()) record.set("Arg1", u"");
  if (!splitLinesIntoColumns_.isOn()) record.set("Arg2", u"");
  return record;
}

void SplitSheet::doneButtonPressed() {
  ClipboardSheet::doneButtonPressed();
  neighbours().display.setToolbarItemsEnabled(true);
}

JoinSheet::JoinSheet(UserInterface& interface, const Neighbours& neighbours)
    : RememberingSheet(interface, neighbours, "clipboardDataJoinWindow", OpClipboardJoin,
                       "ClipboardDataJoinKey",
                       localizable(u"Puts the grid on the clipboard as text. Add Quotes quotes every cell.")),
      lineSeparator_(sheet(), named("LineSeparatorComboBox"), lineSeparatorItems()),
      columnSeparator_(sheet(), named("ColumnSeparatorComboBox"), columnSeparatorItems()),
      addQuotes_(sheet(), named("AddQuotesCheckbox"), localized(u"Add quotes")) {}

void JoinSheet::fill(const OperationRecord& record) {
  fillSeparators(record, lineSeparator_, columnSeparator_);
  addQuotes_.setOn(record.integer("IntArg1", 0) == AddQuotes);
}

OperationRecord JoinSheet::makeRecord() const {
  OperationRecord record{{"Code", OpClipboardJoin}};
  setFlag(record, AddQuotes, addQuotes_.isOn());
  writeSeparators(record, lineSeparator_, columnSeparator_);
  return record;
}

}  // namespace quillet
