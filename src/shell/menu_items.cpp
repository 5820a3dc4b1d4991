#include "shell/menu_items.h"

#include <chrono>
#include <string_view>

#include "operations/labels.h"
#include "platform/date_formatter.h"
#include "platform/localization.h"
#include "text/encodings.h"

namespace quillet {

namespace {

using Items = std::vector<PopUpButton::Item>;

// The values from first to last, each with its label.
Items itemsOf(std::int64_t first, std::int64_t last, std::u16string (*label)(std::int64_t value)) {
  Items items;
  for (std::int64_t value = first; value <= last; ++value) items.push_back({value, label(value)});
  return items;
}

// Today at this time. A day that has no such time gives the present moment: it is only a sample.
Instant sampleInstant() {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  const auto now =
      static_cast<Instant>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count());
  DateFormatter formatter;
  formatter.setDateFormat(u"yyyy-MM-dd ");
  const std::u16string today = formatter.stringFromDate(now);
  formatter.setDateFormat(u"yyyy-MM-dd HH:mm:ss");
  return formatter.dateFromString(today + u"20:13:01").value_or(now);
}

Items stylesThenPatterns(void (DateFormatter::*setStyle)(DateStyle),
                         std::initializer_list<std::u16string_view> patterns) {
  const Instant instant = sampleInstant();
  Items items;
  const auto add = [&](const DateFormatter& formatter) {
    items.push_back({static_cast<std::int64_t>(items.size()) + 1, formatter.stringFromDate(instant)});
  };
  for (const DateStyle style : {DateStyle::Short, DateStyle::Medium, DateStyle::Long}) {
    DateFormatter formatter;
    (formatter.*setStyle)(style);
    add(formatter);
  }
  for (const auto pattern : patterns) {
    DateFormatter formatter;
    formatter.setDateFormat(pattern);
    add(formatter);
  }
  return items;
}

}  // namespace

Items characterClassItems() {
  return {{0, localized(u"Characters")},
          {1, localized(u"ASCII Control Character")},
          {2, localized(u"Uncommon Character")}};
}

Items lineSkipTypeItems() {
  return itemsOf(0, 5, stringForLineSkipType);
}

Items trimTypeItems() {
  return itemsOf(0, 3, stringForTrimType);
}

Items trimFromWhereItems() {
  return itemsOf(0, 2, stringForTrimFromWhere);
}

Items replaceTypeItems() {
  return itemsOf(0, 1, stringForReplaceType);
}

Items fillTypeItems() {
  return itemsOf(0, 1, stringForFillType);
}

Items encodingItems() {
  Items items;
  for (std::int64_t tag = 1; tag <= 4; ++tag)
    items.push_back({tag, stringForEncoding(encodingCodeForTag(tag))});
  return items;
}

Items reformatAsItems() {
  return {{1, localized(u"Date")},
          {2, localized(u"Time")},
          {3, localized(u"Date Time")},
          {4, localized(u"Integer")},
          {5, localized(u"Number")}};
}

Items writeModeItems() {
  return itemsOf(1, 3, stringForOutputFileWriteMode);
}

Items dateFormatItems(DateSamples samples) {
  return samples == DateSamples::Alone
             ? stylesThenPatterns(&DateFormatter::setDateStyle, {u"yyyy-MM-dd", u"yyyy-MM-dd Z"})
             : stylesThenPatterns(&DateFormatter::setDateStyle, {u"yyyy-MM-dd"});
}

Items timeFormatItems() {
  return stylesThenPatterns(&DateFormatter::setTimeStyle, {u"H:mm", u"H:mm:ss", u"H:mm Z", u"H:mm:ss Z"});
}

std::vector<ComboBox::Item> lineSeparatorItems() {
  return {{u"\\n", localized(u"Line feed (Linux, macOS)")},
          {u"\\r\\n", localized(u"Windows")},
          {u"\\r", localized(u"Classic Mac OS")}};
}

std::vector<ComboBox::Item> columnSeparatorItems() {
  return {{u"\\t", localized(u"Tab")},
          {u",", localized(u"Comma")},
          {u";", localized(u"Semicolon")},
          {u"|", localized(u"Vertical bar")},
          {u" ", localized(u"Space")}};
}

}  // namespace quillet
