#include "shell/panels/file_panels.h"

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "shell/menu_items.h"
#include "shell/panels/text_controls.h"
#include "text/encodings.h"

namespace quillet {

InitialOperationPanel::InitialOperationPanel(UserInterface& interface)
    : OperationPanel(
          interface, "initialOperationsWindow", OpInitial,
          localizable(
              u"How the file is read. Separators may hold \\n, \\r and \\t. Remove Quotes takes double "
              u"quotes off and keeps separators between them; without it a quote is plain text.")),
      decodeAs_(window(), named("DecodeAsPopUpButton"), encodingItems()),
      splitContentsIntoLines_(window(), named("SplitContentsIntoLinesCheckbox"),
                              localized(u"Split contents into lines by")),
      lineSeparator_(window(), named("LineSeparatorComboBox"), lineSeparatorItems()),
      splitLinesIntoColumns_(window(), named("SplitLinesIntoColumnsCheckbox"),
                             localized(u"Split lines into columns by")),
      columnSeparator_(window(), named("ColumnSeparatorComboBox"), columnSeparatorItems()),
      removeQuotes_(window(), named("RemoveQuotesCheckbox"), localized(u"Remove quotes")) {}

OperationPanel::Opens InitialOperationPanel::fill(const OperationRecord& record) {
  splitContentsIntoLines_.setOn(hasFlag(record, SplitIntoLines));
  splitLinesIntoColumns_.setOn(hasFlag(record, SplitIntoColumns));
  removeQuotes_.setOn(hasFlag(record, RemoveQuotes));
  decodeAs_.selectItemWithTag(tagForEncodingCode(record.integer("IntArg2", 0)));
  fillSeparators(record, lineSeparator_, columnSeparator_);
  return Opens::Yes;
}

void InitialOperationPanel::write(OperationRecord& record) const {
  setFlag(record, SplitIntoLines, splitContentsIntoLines_.isOn());
  setFlag(record, SplitIntoColumns, splitLinesIntoColumns_.isOn());
  setFlag(record, RemoveQuotes, removeQuotes_.isOn());
  record.set("IntArg2", encodingCodeForTag(decodeAs_.selectedTag()));
  writeSeparators(record, lineSeparator_, columnSeparator_);
}

FinalOperationPanel::FinalOperationPanel(UserInterface& interface)
    : OperationPanel(
          interface, "finalOperationsWindow", OpFinal,
          localizable(
              u"How the result is written. Only what Initial split is joined. Add Quotes quotes every "
              u"cell. Create New and Overwrite both replace a file of that name; Append adds to it.")),
      encodeAs_(window(), named("EncodeAsPopUpButton"), encodingItems()),
      lineSeparator_(window(), named("LineSeparatorComboBox"), lineSeparatorItems()),
      columnSeparator_(window(), named("ColumnSeparatorComboBox"), columnSeparatorItems()),
      addQuotes_(window(), named("AddQuotesCheckbox"), localized(u"Add quotes")),
      addLineSeparator_(window(), named("AddLineSeparatorCheckbox"),
                        localized(u"Begin with a line separator")),
      fileName_(window(), named("FileNameTextField")),
      writeMode_(window(), named("WriteModePopUpButton"), writeModeItems()) {}

OperationPanel::Opens FinalOperationPanel::fill(const OperationRecord& record) {
  addQuotes_.setOn(hasFlag(record, AddQuotes));
  addLineSeparator_.setOn(hasFlag(record, AddLineSeparator));
  encodeAs_.selectItemWithTag(tagForEncodingCode(record.integer("IntArg2", 0)));
  fillSeparators(record, lineSeparator_, columnSeparator_);
  fileName_.setText(record.text("Arg4"));
  writeMode_.selectItemWithTag(record.integer("IntArg3", static_cast<std::int64_t>(WriteMode::Overwrite)));
  return Opens::Yes;
}

void FinalOperationPanel::write(OperationRecord& record) const {
  setFlag(record, AddQuotes, addQuotes_.isOn());
  setFlag(record, AddLineSeparator, addLineSeparator_.isOn());
  record.set("IntArg2", encodingCodeForTag(encodeAs_.selectedTag()));
  record.set("IntArg3", writeMode_.selectedTag());
  writeSeparators(record, lineSeparator_, columnSeparator_);
  record.set("Arg4", fileName_.text());
}

}  // namespace quillet
