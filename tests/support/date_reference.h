// The ladders of dates as the plain rule tells them: attempt after attempt, each by the general formatter.
// They judge the fast ways of DateReader and DatePrinter.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/date_formatter.h"

namespace quillet::testing {

// Which attempt of a ladder won, from 1, and what it read; attempt 0 for none.
struct Winner {
  int attempt = 0;
  std::optional<Instant> instant;
};

class ReferenceLadders {
 public:
  explicit ReferenceLadders(const DateEnvironment& environment) : standardDate_(environment) {
    const auto pattern = [&](std::u16string_view text) {
      DateFormatter formatter(environment);
      formatter.setDateFormat(text);
      return formatter;
    };
    const auto styles = [&](DateStyle dateStyle, DateStyle timeStyle) {
      DateFormatter formatter(environment);
      formatter.setDateStyle(dateStyle);
      formatter.setTimeStyle(timeStyle);
      return formatter;
    };
    constexpr auto kNone = DateStyle::None;
    dates_.push_back(pattern(u"yyyy-M-d Z"));
    dates_.push_back(styles(DateStyle::Medium, kNone));
    dates_.push_back(styles(DateStyle::Short, kNone));
    dates_.push_back(styles(DateStyle::Long, kNone));
    dates_.push_back(pattern(u"yyyy-M-d"));
    dates_.push_back(pattern(u"M/d/yyyy"));
    dates_.push_back(pattern(u"d-MMM-yyyy"));
    for (const char16_t* time :
         {u"h:m a", u"H:m", u"h:m:s a", u"H:m:s", u"h:m a Z", u"H:m Z", u"h:m:s a Z", u"H:m:s Z"}) {
      times_.push_back(pattern(time));
      standardDateTimes_.push_back(pattern(std::u16string(u"yyyy-M-d ") + time));
    }
    times_.push_back(styles(kNone, DateStyle::Medium));
    times_.push_back(styles(kNone, DateStyle::Short));
    times_.push_back(styles(kNone, DateStyle::Long));
    for (DateStyle date : {DateStyle::Short, DateStyle::Medium, DateStyle::Long})
      for (DateStyle time : {DateStyle::Short, DateStyle::Medium, DateStyle::Long})
        dateTimes_.push_back(styles(date, time));
    standardDate_.setDateFormat(u"yyyy-M-d");
  }

  Winner date(std::u16string_view text) const { return first(dates_, text); }
  Winner time(std::u16string_view text) const { return first(times_, text); }
  Winner standardDateTime(std::u16string_view text) const { return first(standardDateTimes_, text); }

  // Attempts 1 to 9 are the pairs of styles, 10 to 17 the standard forms behind the split.
  Winner dateTime(std::u16string_view text) const {
    if (const Winner winner = first(dateTimes_, text); winner.instant) return winner;
    const std::size_t blank = text.find(u' ');
    if (blank == text.npos) return {};
    const Winner day = date(text.substr(0, blank));
    if (!day.instant) return {};
    Winner winner =
        standardDateTime(standardDate_.stringFromDate(*day.instant) + std::u16string(text.substr(blank)));
    if (winner.instant) winner.attempt += 9;
    return winner;
  }

 private:
  static Winner first(const std::vector<DateFormatter>& attempts, std::u16string_view text) {
    for (std::size_t i = 0; i < attempts.size(); ++i)
      if (const auto instant = attempts[i].dateFromString(text)) return {static_cast<int>(i) + 1, instant};
    return {};
  }

  std::vector<DateFormatter> dates_, times_, dateTimes_, standardDateTimes_;
  DateFormatter standardDate_;
};

// The formatter that prints date format dateFormat (0 for none) with time format timeFormat (0 for none).
inline DateFormatter referencePrinter(const DateEnvironment& environment, std::int64_t dateFormat,
                                      std::int64_t timeFormat) {
  DateFormatter formatter(environment);
  constexpr DateStyle kStyles[] = {DateStyle::None, DateStyle::Short, DateStyle::Medium, DateStyle::Long};
  if (dateFormat >= 1 && dateFormat <= 3) formatter.setDateStyle(kStyles[dateFormat]);
  if (dateFormat == 4) formatter.setDateFormat(u"yyyy-MM-dd");
  if (dateFormat == 5) formatter.setDateFormat(u"yyyy-MM-dd Z");
  if (timeFormat >= 1 && timeFormat <= 3) formatter.setTimeStyle(kStyles[timeFormat]);
  constexpr const char16_t* kPatterns[] = {u"HH:mm", u"HH:mm:ss", u"HH:mm Z", u"HH:mm:ss Z"};
  if (timeFormat >= 4) formatter.setDateFormat(formatter.dateFormat() + kPatterns[timeFormat - 4]);
  return formatter;
}

}  // namespace quillet::testing
