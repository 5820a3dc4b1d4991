#include "platform/date_formatter.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/uloc.h>
#include <utility>

#include "platform/character_set.h"

namespace quillet {

namespace {

// Two-digit years are those of the hundred years from 1950-01-01 UTC on.
constexpr UDate kTwoDigitYearStart = -631152000000.0;
constexpr std::int32_t kYearOfWhatIsMissing = 2000;

struct CloseFormat {
  void operator()(UDateFormat* format) const { udat_close(format); }
};
struct CloseCalendar {
  void operator()(UCalendar* calendar) const { ucal_close(calendar); }
};
using FormatPointer = std::unique_ptr<UDateFormat, CloseFormat>;
using CalendarPointer = std::unique_ptr<UCalendar, CloseCalendar>;

// A name as in LANG: language, territory, code page behind ".", variant behind "@".
std::string localeNameFromEnvironmentValue(std::string value) {
  std::string variant;
  if (const auto at = value.find('@'); at != std::string::npos) {
    variant = value.substr(at + 1);
    variant.resize(std::min(variant.find('.'), variant.size()));
    value.resize(at);
  }
  value.resize(std::min(value.find('.'), value.size()));
  if (value == "C" || value == "POSIX") return "en_US_POSIX";
  if (!variant.empty()) value += (value.find('_') == std::string::npos ? "__" : "_") + variant;
  char name[ULOC_FULLNAME_CAPACITY];
  UErrorCode error = U_ZERO_ERROR;
  uloc_canonicalize(value.c_str(), name, sizeof name, &error);
  return U_SUCCESS(error) && error != U_STRING_NOT_TERMINATED_WARNING ? name : "en_US_POSIX";
}

UDateFormatStyle styleOfIcu(DateStyle style) {
  switch (style) {
    case DateStyle::None:
      return UDAT_NONE;
    case DateStyle::Short:
      return UDAT_SHORT;
    case DateStyle::Medium:
      return UDAT_MEDIUM;
    case DateStyle::Long:
      return UDAT_LONG;
  }
  return UDAT_NONE;
}

template <typename Function>
std::u16string textOfIcu(Function&& function) {
  std::u16string text(128, u'\0');
  for (;;) {
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t length = function(text.data(), static_cast<std::int32_t>(text.size()), &error);
    if (U_FAILURE(error) && error != U_BUFFER_OVERFLOW_ERROR) return {};
    const bool fits = static_cast<std::size_t>(length) <= text.size();
    text.resize(length);
    if (fits) return text;
  }
}

// The special blanks of newer locale data become plain ones, so that typed text fits the styles.
void replaceSpecialBlanksInPattern(UDateFormat* format) {
  std::u16string pattern = textOfIcu([&](char16_t* text, std::int32_t capacity, UErrorCode* error) {
    return udat_toPattern(format, false, text, capacity, error);
  });
  bool changed = false;
  for (char16_t& unit : pattern) {
    if (unit != u'\u202F' && unit != u'\u00A0' && unit != u'\u2009') continue;
    unit = u' ';
    changed = true;
  }
  if (changed) udat_applyPattern(format, false, pattern.data(), static_cast<std::int32_t>(pattern.size()));
}

// The end of the text may be white space only.
bool isBlankFrom(std::u16string_view text, std::size_t start) {
  for (char16_t unit : text.substr(start))
    if (!isWhitespace(unit)) return false;
  return true;
}

}  // namespace

std::string currentLocaleName() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (value && *value) return localeNameFromEnvironmentValue(value);
  }
  return "en_US_POSIX";
}

DateEnvironment DateEnvironment::current() {
  return {currentLocaleName(), {}};
}

struct DateFormatter::State {
  DateEnvironment environment;
  std::optional<std::u16string> pattern;
  DateStyle dateStyle = DateStyle::None;
  DateStyle timeStyle = DateStyle::None;
  FormatPointer openedFormat;  // as the settings ask; none until it is needed

  bool isEmpty() const {
    return pattern ? pattern->empty() : dateStyle == DateStyle::None && timeStyle == DateStyle::None;
  }

  UDateFormat* format() {
    if (!openedFormat && !isEmpty()) open();
    return openedFormat.get();
  }

  void open() {
    UErrorCode error = U_ZERO_ERROR;
    const std::u16string zone(environment.timeZone.begin(), environment.timeZone.end());
    const std::u16string_view source = pattern ? std::u16string_view(*pattern) : std::u16string_view();
    FormatPointer opened(udat_open(pattern ? UDAT_PATTERN : styleOfIcu(timeStyle),
                                   pattern ? UDAT_PATTERN : styleOfIcu(dateStyle), environment.locale.c_str(),
                                   zone.empty() ? nullptr : zone.data(),
                                   static_cast<std::int32_t>(zone.size()), source.data(),
                                   static_cast<std::int32_t>(source.size()), &error));
    if (U_FAILURE(error)) return;
    udat_setLenient(opened.get(), false);
    udat_set2DigitYearStart(opened.get(), kTwoDigitYearStart, &error);
    if (!pattern) replaceSpecialBlanksInPattern(opened.get());
    openedFormat = std::move(opened);
  }
};

DateFormatter::DateFormatter(DateEnvironment environment) : state_(std::make_unique<State>()) {
  state_->environment = std::move(environment);
}
DateFormatter::DateFormatter(DateFormatter&&) noexcept = default;
DateFormatter& DateFormatter::operator=(DateFormatter&&) noexcept = default;
DateFormatter::~DateFormatter() = default;

void DateFormatter::setDateFormat(std::u16string_view pattern) {
  state_->pattern = pattern;
  state_->openedFormat.reset();
}

void DateFormatter::setDateStyle(DateStyle style) {
  state_->pattern.reset();
  state_->dateStyle = style;
  state_->openedFormat.reset();
}

void DateFormatter::setTimeStyle(DateStyle style) {
  state_->pattern.reset();
  state_->timeStyle = style;
  state_->openedFormat.reset();
}

std::u16string DateFormatter::dateFormat() const {
  if (state_->pattern) return *state_->pattern;
  const UDateFormat* format = state_->format();
  if (!format) return {};
  return textOfIcu([&](char16_t* text, std::int32_t capacity, UErrorCode* error) {
    return udat_toPattern(format, false, text, capacity, error);
  });
}

std::optional<Instant> DateFormatter::dateFromString(std::u16string_view text) const {
  UDateFormat* format = state_->format();
  if (!format || text.empty()) return std::nullopt;
  UErrorCode error = U_ZERO_ERROR;
  const CalendarPointer calendar(ucal_clone(udat_getCalendar(format), &error));
  if (U_FAILURE(error)) return std::nullopt;
  ucal_clear(calendar.get());
  ucal_set(calendar.get(), UCAL_YEAR, kYearOfWhatIsMissing);
  std::int32_t position = 0;
  udat_parseCalendar(format, calendar.get(), text.data(), static_cast<std::int32_t>(text.size()), &position,
                     &error);
  if (U_FAILURE(error) || !isBlankFrom(text, static_cast<std::size_t>(position))) return std::nullopt;
  // Only now a day 30 of February and a time that the zone skips are found out.
  const UDate instant = ucal_getMillis(calendar.get(), &error);
  if (U_FAILURE(error)) return std::nullopt;
  return instant;
}

std::u16string DateFormatter::stringFromDate(Instant instant) const {
  const UDateFormat* format = state_->format();
  if (!format) return {};
  return textOfIcu([&](char16_t* text, std::int32_t capacity, UErrorCode* error) {
    return udat_format(format, instant, text, capacity, nullptr, error);
  });
}

}  // namespace quillet
