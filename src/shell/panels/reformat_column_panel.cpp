#include "shell/panels/reformat_column_panel.h"

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "shell/menu_items.h"

namespace quillet {

ReformatColumnPanel::ReformatColumnPanel(UserInterface& interface, const FileSelection& selection)
    : OperationPanel(
          interface, "reformatColumnOperationWindow", OpReformatColumn,
          localizable(u"Reads dates, times and numbers in many forms and writes one. A cell that cannot be "
                      u"read stays or takes the text given; the log names its line.")),
      columns_(window(), named(""), selection),
      reformatAs_(window(), named("ReformatAsPopUpButton"), reformatAsItems(),
                  "reformatColumnOperationWindowReformatAsChanged"),
      withFormatLabel_(window(), named("WithFormatLabel")),
      date_(window(), named("DatePopUpButton"), dateFormatItems(DateSamples::Alone)),
      time_(window(), named("TimePopUpButton"), timeFormatItems()),
      dateTimeView_(window(), named("FormatDateTimeView")),
      dateOfDateTime_(window(), named("FormatDateTimeDatePopUpButton"),
                      dateFormatItems(DateSamples::OfDateTime)),
      timeOfDateTime_(window(), named("FormatDateTimeTimePopUpButton"), timeFormatItems()),
      numberView_(window(), named("NumberView")),
      digitsToTheRight_(window(), named("DigitsToTheRightField")),
      useInvalidString_(window(), named("UseInvalidStringButton"),
                        localized(u"Use if it cannot be reformatted")),
      invalidString_(window(), named("InvalidString")) {
  withFormatLabel_.setText(localized(u"With format"));
  digitsToTheRight_.setText(u"2");
  dateTimeView_.add(dateOfDateTime_);
  dateTimeView_.add(timeOfDateTime_);
  numberView_.add(digitsToTheRight_);
  columns_.addToBox({&reformatAs_, &withFormatLabel_, &date_, &time_, &dateOfDateTime_, &timeOfDateTime_,
                     &digitsToTheRight_, &useInvalidString_, &invalidString_});
  reformatColumnOperationWindowReformatAsChanged();
}

void ReformatColumnPanel::reformatColumnOperationWindowReformatAsChanged() {
  const auto form = static_cast<ReformatAs>(reformatAs_.selectedTag());
  withFormatLabel_.setHidden(form == ReformatAs::Integer);
  date_.setHidden(form != ReformatAs::Date);
  time_.setHidden(form != ReformatAs::Time);
  dateTimeView_.setHidden(form != ReformatAs::DateTime);
  numberView_.setHidden(form != ReformatAs::Number);
}

void ReformatColumnPanel::prepareForAdding(std::int64_t) {
  columns_.prepareForAdding();
}

OperationPanel::Opens ReformatColumnPanel::fill(const OperationRecord& record) {
  reformatAs_.selectItemWithTag(record.integer("IntArg2", static_cast<std::int64_t>(ReformatAs::Date)));
  reformatColumnOperationWindowReformatAsChanged();
  fillFormats(record);
  digitsToTheRight_.setText(record.text("Arg5"));
  useInvalidString_.setOn(hasFlag(record, UseInvalidStringFlag));
  invalidString_.setText(record.text("Arg2"));
  columns_.fill(record);
  return Opens::Yes;
}

void ReformatColumnPanel::fillFormats(const OperationRecord& record) {
  const std::int64_t first = record.integer("IntArg3", 1);
  switch (static_cast<ReformatAs>(record.integer("IntArg2", static_cast<std::int64_t>(ReformatAs::Date)))) {
    case ReformatAs::Date:
      return date_.selectItemWithTag(first);
    case ReformatAs::Time:
      return time_.selectItemWithTag(first);
    case ReformatAs::DateTime:
      dateOfDateTime_.selectItemWithTag(first);
      return timeOfDateTime_.selectItemWithTag(record.integer("IntArg4", 1));
    case ReformatAs::Integer:
    case ReformatAs::Number:
      return;
  }
}

void ReformatColumnPanel::write(OperationRecord& record) const {
  setFlag(record, UseInvalidStringFlag, useInvalidString_.isOn());
  record.set("IntArg2", reformatAs_.selectedTag());
  writeFormats(record);
  record.set("Arg5", integerValue(digitsToTheRight_.text()));
  columns_.write(record);
  record.set("Arg2", invalidString_.text());
}

void ReformatColumnPanel::writeFormats(OperationRecord& record) const {
  switch (static_cast<ReformatAs>(reformatAs_.selectedTag())) {
    case ReformatAs::Date:
      return record.set("IntArg3", date_.selectedTag());
    case ReformatAs::Time:
      return record.set("IntArg3", time_.selectedTag());
    case ReformatAs::DateTime:
      record.set("IntArg3", dateOfDateTime_.selectedTag());
      return record.set("IntArg4", timeOfDateTime_.selectedTag());
    case ReformatAs::Integer:
    case ReformatAs::Number:
      return;
  }
}

}  // namespace quillet
