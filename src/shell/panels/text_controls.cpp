#include "shell/panels/text_controls.h"

#include "operations/escapes.h"
#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "shell/menu_items.h"
#include "shell/panels/operation_panel.h"

namespace quillet {

TrimControls::TrimControls(Window& window, const std::string& prefix, const std::string& typeHandler)
    : what_(window, prefix + "TrimWhatPopUpButton", trimTypeItems(), typeHandler),
      from_(window, prefix + "TrimFromPopUpButton", trimFromWhereItems()),
      text_(window, prefix + "TextField"),
      caseSensitive_(window, prefix + "CaseSensitiveButton", localized(u"Case-sensitive")) {}

void TrimControls::fill(const OperationRecord& record, std::string_view textKey) {
  text_.setText(record.text(textKey));
  what_.selectItemWithTag(record.integer("IntArg2", 0));
  from_.selectItemWithTag(record.integer("IntArg3", 0));
  caseSensitive_.setOn(hasFlag(record, CaseSensitiveFlag));
}

void TrimControls::write(OperationRecord& record, std::string_view textKey) const {
  setFlag(record, CaseSensitiveFlag, caseSensitive_.isOn());
  record.set("IntArg2", what_.selectedTag());
  record.set("IntArg3", from_.selectedTag());
  record.set(textKey, text_.text());
}

ReplaceControls::ReplaceControls(Window& window, const std::string& prefix)
    : type_(window, prefix + "TypePopUpButton", replaceTypeItems()),
      what_(window, prefix + "WhatTextField"),
      with_(window, prefix + "WithTextField"),
      caseSensitive_(window, prefix + "CaseSensitiveButton", localized(u"Case-sensitive")) {}

void ReplaceControls::fill(const OperationRecord& record, std::string_view whatKey,
                           std::string_view withKey) {
  type_.selectItemWithTag(record.integer("IntArg2", 0));
  what_.setText(record.text(whatKey));
  with_.setText(record.text(withKey));
  caseSensitive_.setOn(hasFlag(record, CaseSensitiveFlag));
}

void ReplaceControls::write(OperationRecord& record, std::string_view whatKey,
                            std::string_view withKey) const {
  setFlag(record, CaseSensitiveFlag, caseSensitive_.isOn());
  record.set("IntArg2", type_.selectedTag());
  record.set(whatKey, what_.text());
  record.set(withKey, with_.text());
}

void fillSeparators(const OperationRecord& record, ComboBox& lineSeparator, ComboBox& columnSeparator) {
  lineSeparator.setText(replaceWithBackslashedCharacters(record.text("Arg1")));
  columnSeparator.setText(replaceWithBackslashedCharacters(record.text("Arg2")));
}

void writeSeparators(OperationRecord& record, const ComboBox& lineSeparator,
                     const ComboBox& columnSeparator) {
  record.set("Arg1", replaceBackslashedCharacters(lineSeparator.text()));
  record.set("Arg2", replaceBackslashedCharacters(columnSeparator.text()));
}

}  // namespace quillet
