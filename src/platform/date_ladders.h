// Ladders of attempts that read a date, a time, or a date with a time from text of mixed forms in the current
// locale and time zone: the first attempt that reads the whole text wins.
//
// A reader keeps its formatters, so it is dear to make and cheap to use; one object serves one thread. Texts
// of digits and separators are read without ICU where that gives the same instant.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/date_formatter.h"

namespace quillet {

class DateReader {
 public:
  explicit DateReader(DateEnvironment environment = DateEnvironment::current());
  DateReader(DateReader&&) noexcept;
  ~DateReader();

  std::optional<Instant> dateFromString(std::u16string_view text);
  std::optional<Instant> timeFromString(std::u16string_view text);
  std::optional<Instant> dateTimeFromString(std::u16string_view text);
  std::optional<Instant> dateTimeFromStringWithStandardDate(std::u16string_view text);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// Prints instants in one of the output forms: date formats 1 to 5 (any other is 5), time formats 1 to 7 (any
// other is 7), or both. Fast for the patterns of numbers and month names.
class DatePrinter {
 public:
  static DatePrinter forDate(std::int64_t dateFormat,
                             const DateEnvironment& environment = DateEnvironment::current());
  static DatePrinter forTime(std::int64_t timeFormat,
                             const DateEnvironment& environment = DateEnvironment::current());
  static DatePrinter forDateTime(std::int64_t dateFormat, std::int64_t timeFormat,
                                 const DateEnvironment& environment = DateEnvironment::current());
  DatePrinter(DatePrinter&&) noexcept;
  ~DatePrinter();

  void append(Instant instant, std::u16string& out);

 private:
  struct State;
  explicit DatePrinter(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace quillet
