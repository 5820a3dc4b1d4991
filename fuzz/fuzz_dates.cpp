// Dates and times from any text: read as the plain ladders read them, and what is printed is read again.
//
// Input: locale and time zone, form of the output, seconds; the rest is the text.
#include <cmath>
#include <memory>

#include "fuzz_input.h"
#include "platform/date_ladders.h"
#include "support/date_reference.h"

namespace quillet::fuzz {
namespace {

using testing::ReferenceLadders;

constexpr std::size_t kMostTextUnits = 64;

struct Place {
  const char* locale;
  const char* timeZone;
};
constexpr Place kPlaces[] = {{"en_US", "America/New_York"}, {"en_GB", "Europe/London"},
                             {"de_DE", "Europe/Berlin"},    {"fr_FR", "UTC"},
                             {"ja_JP", "Asia/Tokyo"},       {"ar_EG", "Africa/Cairo"}};

// Readers are dear to make, and are what a job keeps too.
struct Readers {
  explicit Readers(const Place& place)
      : environment{place.locale, place.timeZone},
        reader(environment),
        reference(environment),
        minutes(environment) {
    minutes.setDateFormat(u"yyyy-MM-dd HH:mm");
  }
  bool hasMidnight(const std::u16string& day) const {
    return minutes.dateFromString(day + u" 00:00").has_value();
  }

  DateEnvironment environment;
  DateReader reader;
  ReferenceLadders reference;
  DateFormatter minutes;
};

Readers& readersOf(std::size_t place) {
  static std::unique_ptr<Readers> made[std::size(kPlaces)];
  if (!made[place]) made[place] = std::make_unique<Readers>(kPlaces[place]);
  return *made[place];
}

void requireSameReading(Readers& readers, std::u16string_view text) {
  require(readers.reader.dateFromString(text) == readers.reference.date(text).instant,
          "a date is read by the ladder");
  require(readers.reader.timeFromString(text) == readers.reference.time(text).instant,
          "a time is read by the ladder");
  require(readers.reader.dateTimeFromString(text) == readers.reference.dateTime(text).instant,
          "a date time is read by the ladder");
}

// Seconds from 1900 to 2199, from eight bytes.
Instant instantFrom(FuzzInput& input) {
  constexpr std::uint64_t kSpan = 9'467'020'800;  // 300 years
  constexpr std::int64_t kStart = -2'208'988'800;
  std::uint64_t number = 0;
  for (int i = 0; i < 8; ++i) number = number << 8 | input.below(256);
  return static_cast<Instant>(static_cast<std::int64_t>(number % kSpan) + kStart) * 1000;
}

std::u16string printed(DatePrinter printer, Instant instant) {
  std::u16string text;
  printer.append(instant, text);
  return text;
}

void requirePrintingAndReading(Readers& readers, std::int64_t dateFormat, std::int64_t timeFormat,
                               Instant instant) {
  const DateEnvironment& environment = readers.environment;
  const std::u16string text = printed(DatePrinter::forDateTime(dateFormat, timeFormat, environment), instant);
  require(text == testing::referencePrinter(environment, dateFormat, timeFormat).stringFromDate(instant),
          "a date time is printed as its pattern says");
  requireSameReading(readers, text);

  // The standard form names a day to every reader. A day that begins with summer time at midnight is refused,
  // as it has no 00:00.
  constexpr std::int64_t kStandardDate = 4;
  const std::u16string day = printed(DatePrinter::forDate(kStandardDate, environment), instant);
  const auto read = readers.reader.dateFromString(day);
  require(read || !readers.hasMidnight(day), "a printed day is read");
  require(!read || printed(DatePrinter::forDate(kStandardDate, environment), *read) == day, "and as itself");
}

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  using namespace quillet::fuzz;
  FuzzInput input(data, size);
  Readers& readers = readersOf(input.below(std::size(kPlaces)));
  const auto form = static_cast<std::int64_t>(input.below(35));
  const Instant instant = instantFrom(input);
  requirePrintingAndReading(readers, form % 5 + 1, form / 5 + 1, instant);
  requireSameReading(readers, input.restText().substr(0, kMostTextUnits));
  return 0;
}
