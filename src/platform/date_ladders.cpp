#include "platform/date_ladders.h"

#include <span>
#include <unicode/uchar.h>
#include <utility>
#include <vector>

namespace quillet {

namespace {

// One step of a ladder: a pattern, or styles.
struct Setting {
  std::u16string_view pattern;
  DateStyle dateStyle = DateStyle::None;
  DateStyle timeStyle = DateStyle::None;
};

constexpr Setting kDateSettings[] = {
    {u"yyyy-M-d Z"}, {{}, DateStyle::Medium}, {{}, DateStyle::Short}, {{}, DateStyle::Long},
    {u"yyyy-M-d"},   {u"M/d/yyyy"},           {u"d-MMM-yyyy"},
};

constexpr Setting kTimeSettings[] = {
    {u"h:m a"},
    {u"H:m"},
    {u"h:m:s a"},
    {u"H:m:s"},
    {u"h:m a Z"},
    {u"H:m Z"},
    {u"h:m:s a Z"},
    {u"H:m:s Z"},
    {{}, DateStyle::None, DateStyle::Medium},
    {{}, DateStyle::None, DateStyle::Short},
    {{}, DateStyle::None, DateStyle::Long},
};

constexpr Setting kDateTimeSettings[] = {
    {{}, DateStyle::Short, DateStyle::Short},   {{}, DateStyle::Short, DateStyle::Medium},
    {{}, DateStyle::Short, DateStyle::Long},    {{}, DateStyle::Medium, DateStyle::Short},
    {{}, DateStyle::Medium, DateStyle::Medium}, {{}, DateStyle::Medium, DateStyle::Long},
    {{}, DateStyle::Long, DateStyle::Short},    {{}, DateStyle::Long, DateStyle::Medium},
    {{}, DateStyle::Long, DateStyle::Long},
};

constexpr Setting kStandardDateTimeSettings[] = {
    {u"yyyy-M-d h:m a"},   {u"yyyy-M-d H:m"},   {u"yyyy-M-d h:m:s a"},   {u"yyyy-M-d H:m:s"},
    {u"yyyy-M-d h:m a Z"}, {u"yyyy-M-d H:m Z"}, {u"yyyy-M-d h:m:s a Z"}, {u"yyyy-M-d H:m:s Z"},
};

constexpr std::u16string_view kStandardDate = u"yyyy-M-d";

DateFormatter formatterFor(const Setting& setting, const DateEnvironment& environment) {
  DateFormatter formatter(environment);
  if (setting.pattern.empty()) {
    formatter.setDateStyle(setting.dateStyle);
    formatter.setTimeStyle(setting.timeStyle);
  } else {
    formatter.setDateFormat(setting.pattern);
  }
  return formatter;
}

// The attempts of one ladder; each opens its formatter when it is first asked.
class Ladder {
 public:
  explicit Ladder(std::span<const Setting> settings) : settings_(settings), formatters_(settings.size()) {}

  std::optional<Instant> read(std::u16string_view text, const DateEnvironment& environment) {
    for (std::size_t i = 0; i < settings_.size(); ++i) {
      if (!formatters_[i]) formatters_[i] = formatterFor(settings_[i], environment);
      if (const auto instant = formatters_[i]->dateFromString(text)) return instant;
    }
    return std::nullopt;
  }

 private:
  std::span<const Setting> settings_;
  std::vector<std::optional<DateFormatter>> formatters_;
};

}  // namespace

struct DateReader::State {
  DateEnvironment environment;
  Ladder dates{kDateSettings};
  Ladder times{kTimeSettings};
  Ladder dateTimes{kDateTimeSettings};
  Ladder standardDateTimes{kStandardDateTimeSettings};
  std::optional<DateFormatter> standardDate;

  std::u16string standardDateOf(Instant instant) {
    if (!standardDate) standardDate = formatterFor({kStandardDate}, environment);
    return standardDate->stringFromDate(instant);
  }
};

DateReader::DateReader(DateEnvironment environment) : state_(std::make_unique<State>()) {
  state_->environment = std::move(environment);
}
DateReader::DateReader(DateReader&&) noexcept = default;
DateReader::~DateReader() = default;

std::optional<Instant> DateReader::dateFromString(std::u16string_view text) {
  return state_->dates.read(text, state_->environment);
}

std::optional<Instant> DateReader::timeFromString(std::u16string_view text) {
  return state_->times.read(text, state_->environment);
}

std::optional<Instant> DateReader::dateTimeFromString(std::u16string_view text) {
  if (const auto instant = state_->dateTimes.read(text, state_->environment)) return instant;
  // The part in front of the first blank as a date of any form, the rest as a time in numbers.
  // (A blank under a combining mark parts nothing, strictly; but a mark stands in no date or time that is
  // read.)
  const std::size_t blank = text.find(u' ');
  if (blank == text.npos) return std::nullopt;
  const auto date = dateFromString(text.substr(0, blank));
  if (!date) return std::nullopt;
  std::u16string standardText = state_->standardDateOf(*date);
  standardText += text.substr(blank);
  return dateTimeFromStringWithStandardDate(standardText);
}

std::optional<Instant> DateReader::dateTimeFromStringWithStandardDate(std::u16string_view text) {
  return state_->standardDateTimes.read(text, state_->environment);
}

namespace {

void configureDateFormatter(DateFormatter& formatter, std::int64_t formatNumber) {
  switch (formatNumber) {
    case 1:
      return formatter.setDateStyle(DateStyle::Short);
    case 2:
      return formatter.setDateStyle(DateStyle::Medium);
    case 3:
      return formatter.setDateStyle(DateStyle::Long);
    case 4:
      return formatter.setDateFormat(u"yyyy-MM-dd");
    default:
      return formatter.setDateFormat(u"yyyy-MM-dd Z");
  }
}

// The appended patterns touch the date's, and a time style replaces an explicit date pattern: both are meant.
void configureTimeFormatter(DateFormatter& formatter, std::int64_t formatNumber) {
  switch (formatNumber) {
    case 1:
      return formatter.setTimeStyle(DateStyle::Short);
    case 2:
      return formatter.setTimeStyle(DateStyle::Medium);
    case 3:
      return formatter.setTimeStyle(DateStyle::Long);
    case 4:
      return formatter.setDateFormat(formatter.dateFormat() + u"HH:mm");
    case 5:
      return formatter.setDateFormat(formatter.dateFormat() + u"HH:mm:ss");
    case 6:
      return formatter.setDateFormat(formatter.dateFormat() + u"HH:mm Z");
    default:
      return formatter.setDateFormat(formatter.dateFormat() + u"HH:mm:ss Z");
  }
}

}  // namespace

struct DatePrinter::State {
  DateFormatter formatter;
};

DatePrinter::DatePrinter(std::unique_ptr<State> state) : state_(std::move(state)) {}
DatePrinter::DatePrinter(DatePrinter&&) noexcept = default;
DatePrinter::~DatePrinter() = default;

DatePrinter DatePrinter::forDate(std::int64_t dateFormat, const DateEnvironment& environment) {
  DateFormatter formatter(environment);
  configureDateFormatter(formatter, dateFormat);
  return DatePrinter(std::make_unique<State>(State{std::move(formatter)}));
}

DatePrinter DatePrinter::forTime(std::int64_t timeFormat, const DateEnvironment& environment) {
  DateFormatter formatter(environment);
  formatter.setDateStyle(DateStyle::None);
  configureTimeFormatter(formatter, timeFormat);
  return DatePrinter(std::make_unique<State>(State{std::move(formatter)}));
}

DatePrinter DatePrinter::forDateTime(std::int64_t dateFormat, std::int64_t timeFormat,
                                     const DateEnvironment& environment) {
  DateFormatter formatter(environment);
  configureDateFormatter(formatter, dateFormat);
  configureTimeFormatter(formatter, timeFormat);
  return DatePrinter(std::make_unique<State>(State{std::move(formatter)}));
}

void DatePrinter::append(Instant instant, std::u16string& out) {
  out += state_->formatter.stringFromDate(instant);
}

}  // namespace quillet
