// Prints and reads dates by a pattern of Unicode date field symbols, or by the locale's styles. Reading is
// strict: the whole text must fit, and what a pattern does not name is that of 2000-01-01 00:00 in the
// current time zone.
//
// An instant is a number of milliseconds since 1970-01-01 00:00 UTC. One object serves one thread.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

using Instant = double;

enum class DateStyle { None, Short, Medium, Long };

// The locale for dates, from LC_ALL, LC_TIME's elders as ICU knows them (LC_MESSAGES, LANG); an empty
// variable counts as unset.
std::string currentLocaleName();

// Where dates are read and printed.
struct DateEnvironment {
  std::string locale;    // as ICU names it: "en_US"
  std::string timeZone;  // as ICU names it: "America/New_York"; empty for the system's or that of TZ

  static DateEnvironment current();
};

class DateFormatter {
 public:
  // Both styles none, no format: prints "" and reads nothing.
  explicit DateFormatter(DateEnvironment environment = DateEnvironment::current());
  DateFormatter(DateFormatter&&) noexcept;
  DateFormatter& operator=(DateFormatter&&) noexcept;
  ~DateFormatter();

  void setDateFormat(std::u16string_view pattern);  // overrides the styles
  void setDateStyle(DateStyle style);               // drops the format
  void setTimeStyle(DateStyle style);               // drops the format
  std::u16string dateFormat() const;                // the pattern in force; a style's expanded one

  std::optional<Instant> dateFromString(std::u16string_view text) const;
  std::u16string stringFromDate(Instant instant) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quillet
