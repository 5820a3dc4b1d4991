#include "shell/panels/line_panels.h"

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "shell/menu_items.h"

namespace quillet {

ReplaceCharacterPanel::ReplaceCharacterPanel(UserInterface& interface)
    : OperationPanel(
          interface, "replaceCharacterOperationWindow", OpReplaceCharacter,
          localizable(
              u"Acts as the file is read, before all else. Characters may hold \\a \\b \\f \\n \\r \\t "
              u"\\v; a backslash cannot be named. Uncommon: above U+FFFF. Separators and quotes stay.")),
      type_(window(), named("TypePopUpButton"), characterClassItems()),
      what_(window(), named("WhatTextField")),
      with_(window(), named("WithTextField")) {}

OperationPanel::Opens ReplaceCharacterPanel::fill(const OperationRecord& record) {
  type_.selectItemWithTag(record.integer("IntArg2", 0));
  what_.setText(record.text("Arg1"));
  with_.setText(record.text("Arg2"));
  return Opens::Yes;
}

// Nothing reads the flags of this operation. An edit leaves a 0 there, adding leaves nothing: this is meant.
void ReplaceCharacterPanel::write(OperationRecord& record) const {
  record.set("IntArg1", 0);
  writeControls(record);
}

OperationRecord ReplaceCharacterPanel::makeRecord(std::int64_t code) const {
  OperationRecord record{{"Code", code}};
  writeControls(record);
  return record;
}

void ReplaceCharacterPanel::writeControls(OperationRecord& record) const {
  record.set("IntArg2", type_.selectedTag());
  record.set("Arg1", what_.text());
  record.set("Arg2", with_.text());
}

SkipLinePanel::SkipLinePanel(UserInterface& interface)
    : OperationPanel(
          interface, "skipLineOperationWindow", OpSkipLine,
          localizable(u"Leaves lines out. Line Numbers: a list such as 1, 2, 5 - 8, or 20 - for all from 20 "
                      u"on. If Blank: no character at all. A line written empty ends the file's output: skip "
                      u"such lines.")),
      skipIf_(window(), named("SkipIfPopUpButton"), lineSkipTypeItems(), "skipLineOperationTypeValueChanged"),
      text_(window(), named("TextField")),
      caseSensitive_(window(), named("CaseSensitiveButton"), localized(u"Case-sensitive")) {}

OperationPanel::Opens SkipLinePanel::fill(const OperationRecord& record) {
  skipIf_.selectItemWithTag(record.integer("IntArg2", 0));
  text_.setText(record.text("Arg1"));
  caseSensitive_.setOn(hasFlag(record, CaseSensitiveFlag));
  skipLineOperationTypeValueChanged();
  return Opens::Yes;
}

void SkipLinePanel::write(OperationRecord& record) const {
  setFlag(record, CaseSensitiveFlag, caseSensitive_.isOn());
  record.set("IntArg2", skipIf_.selectedTag());
  record.set("Arg1", text_.text());
}

// The controls stay on for every type; only some types read them.
void SkipLinePanel::skipLineOperationTypeValueChanged() {
  const bool isLineNumbers = skipIf_.selectedTag() == static_cast<std::int64_t>(LineSkipType::LineNumbers);
  text_.setPlaceholder(isLineNumbers ? localized(u"1, 2, 5 - 8") : std::u16string());
}

TrimLinePanel::TrimLinePanel(UserInterface& interface)
    : OperationPanel(
          interface, "trimLineOperationWindow", OpTrimLine,
          localizable(
              u"Takes text off the ends of a line: a String once, Characters and Whitespace as far as "
              u"they go. A Regular Expression removes its matches anywhere.")),
      trim_(window(), named(""), "trimLineOperationTypeValueChanged") {}

OperationPanel::Opens TrimLinePanel::fill(const OperationRecord& record) {
  trim_.fill(record, "Arg1");
  return Opens::Yes;
}

void TrimLinePanel::write(OperationRecord& record) const {
  trim_.write(record, "Arg1");
}

ReplaceLinePanel::ReplaceLinePanel(UserInterface& interface)
    : OperationPanel(
          interface, "replaceLineOperationWindow", OpReplaceLine,
          localizable(u"Replaces all occurrences. With a regular expression $1 in With stands for its first "
                      u"group; an invalid one changes nothing.")),
      replace_(window(), named("")) {}

OperationPanel::Opens ReplaceLinePanel::fill(const OperationRecord& record) {
  replace_.fill(record, "Arg1", "Arg2");
  return Opens::Yes;
}

void ReplaceLinePanel::write(OperationRecord& record) const {
  replace_.write(record, "Arg1", "Arg2");
}

JoinLinesPanel::JoinLinesPanel(UserInterface& interface)
    : OperationPanel(
          interface, "joinLinesOperationWindow", OpJoinLines,
          localizable(u"Joins runs of that many output lines. The separator is taken as typed. 0 and 1 join "
                      u"nothing.")),
      numberToJoin_(window(), named("NumberToJoinTextField")),
      separator_(window(), named("SeparatorTextField")) {}

void JoinLinesPanel::prepareForAdding(std::int64_t) {
  numberToJoin_.setText(u"0");
}

OperationPanel::Opens JoinLinesPanel::fill(const OperationRecord& record) {
  std::u16string number;
  appendInteger(record.integer("IntArg1", 0), number);
  numberToJoin_.setText(number);
  separator_.setText(record.text("Arg1"));
  return Opens::Yes;
}

void JoinLinesPanel::write(OperationRecord& record) const {
  record.set("IntArg1", integerValue(numberToJoin_.text()));
  record.set("Arg1", separator_.text());
}

}  // namespace quillet
