#include "platform/date_ladders.h"

#include <gtest/gtest.h>
#include <string>

#include "support/date_reference.h"

namespace quillet {
namespace {

using testing::ReferenceLadders;
using testing::Winner;

constexpr Instant kHour = 3600000;
constexpr Instant k2018August16 = 1534377600000;  // 2018-08-16 00:00 UTC

std::string shown(std::u16string_view text) {
  return ::testing::PrintToString(std::u16string(text));
}

enum class Ladder { Date, Time, DateTime };

// Attempts count from 1; 0 is none.
struct Row {
  Ladder ladder;
  std::u16string_view text;
  int en_US, de_DE, fr_FR, ja_JP;
};

const Row kRows[] = {
    {Ladder::Date, u"2018-08-16", 5, 5, 5, 5},
    {Ladder::Date, u"2018-8-16", 5, 5, 5, 5},
    {Ladder::Date, u"18-8-16", 5, 5, 5, 5},
    {Ladder::Date, u"2018-08-16 -0400", 1, 1, 1, 1},
    {Ladder::Date, u"2018-08-16 Z", 1, 1, 1, 1},
    {Ladder::Date, u"2018-08-16 +02:00", 1, 1, 1, 1},
    {Ladder::Date, u"8/16/2018", 3, 6, 6, 6},
    {Ladder::Date, u"8/16/18", 3, 6, 6, 6},
    {Ladder::Date, u"16/08/2018", 0, 0, 3, 0},
    {Ladder::Date, u"16.08.18", 0, 2, 0, 0},
    {Ladder::Date, u"16.8.2018", 0, 2, 0, 0},
    {Ladder::Date, u"Aug 16, 2018", 2, 0, 0, 0},
    {Ladder::Date, u"AUGUST  16, 2018", 2, 0, 0, 0},
    {Ladder::Date, u"16. Aug. 2018", 0, 4, 0, 0},
    {Ladder::Date, u"16. August 2018", 0, 4, 0, 0},
    {Ladder::Date, u"16 ao\u00fbt 2018", 0, 0, 2, 0},
    {Ladder::Date, u"2018/8/16", 0, 0, 0, 2},
    {Ladder::Date, u"2018\u5e748\u670816\u65e5", 0, 0, 0, 4},
    {Ladder::Date, u"16-Aug-2018", 7, 7, 0, 0},
    {Ladder::Date, u"16-AUGUST-2018", 7, 7, 0, 0},
    {Ladder::Date, u"16-Aug-18", 5, 5, 0, 0},  // the year 16
    {Ladder::Date, u"2018-08-16T10:00", 0, 0, 0, 0},
    {Ladder::Date, u"20180816", 0, 0, 0, 0},
    {Ladder::Date, u"2018-8", 0, 0, 0, 0},
    {Ladder::Date, u"8/16", 0, 0, 0, 0},
    {Ladder::Date, u"16-8-2018", 0, 0, 0, 0},
    {Ladder::Date, u"8-16-2018", 0, 0, 0, 0},
    {Ladder::Date, u"2018-02-29", 0, 0, 0, 0},
    {Ladder::Date, u"2018-08-16 EDT", 0, 0, 0, 0},
    {Ladder::Date, u"Thu, Aug 16, 2018", 0, 0, 0, 0},
    {Ladder::Date, u"", 0, 0, 0, 0},
    {Ladder::Date, u"unknown", 0, 0, 0, 0},
    {Ladder::Time, u"8:13 PM", 1, -1, -1, 0},  // -1: not stated, as the reference reads it
    {Ladder::Time, u"20:13", 2, 2, 2, 2},
    {Ladder::Time, u"8:13:01 pm", 3, -1, -1, 0},
    {Ladder::Time, u"20:13:01", 4, 4, 4, 4},
    {Ladder::Time, u"8:13 PM -0400", 5, -1, -1, 0},
    {Ladder::Time, u"20:13 GMT", 6, 6, 6, 6},
    {Ladder::Time, u"20:13:01 +0200", 8, 8, 8, 8},
    {Ladder::Time, u"8:13:01 PM EDT", 11, 0, 0, 0},
    {Ladder::Time, u"20:13:01 MESZ", 0, 11, 0, 0},
    {Ladder::Time, u"8 PM", 0, 0, 0, 0},
    {Ladder::Time, u"8.13 PM", 0, 0, 0, 0},
    {Ladder::Time, u"8:13 p.m.", 0, -1, -1, 0},
    {Ladder::Time, u"20:13:01.5", 0, 0, 0, 0},
    {Ladder::DateTime, u"8/16/18, 8:13 PM", 1, 0, 0, 0},
    {Ladder::DateTime, u"Aug 16, 2018, 8:13 PM", 4, 0, 0, 0},
    {Ladder::DateTime, u"August 16, 2018 at 8:13 PM", 7, 0, 0, 0},
    {Ladder::DateTime, u"Aug 16, 2018 at 8:13 PM", 7, 0, 0, 0},
    {Ladder::DateTime, u"8/16/2018 20:13", 11, 11, 11, 11},
    {Ladder::DateTime, u"2018-08-16 20:13:01 +0200", 17, 17, 17, 17},
    {Ladder::DateTime, u"16-Aug-2018 8:13 PM", 10, -1, 0, 0},
    {Ladder::DateTime, u"16-Aug-2018  8:13 PM", 10, -1, 0, 0},  // two blanks
    {Ladder::DateTime, u"8/16/18, 20:13", 0, 0, 0, 0},
    {Ladder::DateTime, u"Aug 16, 2018 8:13 PM", 0, 0, 0, 0},
    {Ladder::DateTime, u"2018-08-16T20:13:01", 0, 0, 0, 0},
    {Ladder::DateTime, u"2018-08-16", 0, 0, 0, 0},  // a date alone has one part
    {Ladder::DateTime, u"2018-08-16 ", 0, 0, 0, 0},
    {Ladder::DateTime, u" 20:13", 0, 0, 0, 0},
    {Ladder::DateTime, u"16.08.18, 20:13", 0, 1, 0, 0},
    {Ladder::DateTime, u"16.08.2018 20:13", 0, 11, 0, 0},
    {Ladder::DateTime, u"16. August 2018 um 20:13", 0, 7, 0, 0},
    {Ladder::DateTime, u"16/08/2018 20:13", 0, 0, 1, 0},
    {Ladder::DateTime, u"16 ao\u00fbt 2018 \u00e0 20:13", 0, 0, 7, 0},
    {Ladder::DateTime, u"2018/08/16 20:13", 0, 0, 0, 1},
};

Winner referenceWinner(const ReferenceLadders& ladders, Ladder ladder, std::u16string_view text) {
  switch (ladder) {
    case Ladder::Date:
      return ladders.date(text);
    case Ladder::Time:
      return ladders.time(text);
    case Ladder::DateTime:
      return ladders.dateTime(text);
  }
  return {};
}

std::optional<Instant> readBy(DateReader& reader, Ladder ladder, std::u16string_view text) {
  switch (ladder) {
    case Ladder::Date:
      return reader.dateFromString(text);
    case Ladder::Time:
      return reader.timeFromString(text);
    case Ladder::DateTime:
      return reader.dateTimeFromString(text);
  }
  return {};
}

TEST(DateReader, TheFirstAttemptThatReadsWins) {
  constexpr std::pair<const char*, int Row::*> kLocales[] = {
      {"en_US", &Row::en_US}, {"de_DE", &Row::de_DE}, {"fr_FR", &Row::fr_FR}, {"ja_JP", &Row::ja_JP}};
  for (const auto& [locale, expected] : kLocales) {
    const char* const zone = std::string_view(locale) == "de_DE" ? "Europe/Berlin" : "America/New_York";
    const ReferenceLadders ladders({locale, zone});
    DateReader reader({locale, zone});
    for (const Row& row : kRows) {
      SCOPED_TRACE(std::string(locale) + " " + shown(row.text));
      const Winner winner = referenceWinner(ladders, row.ladder, row.text);
      if (row.*expected >= 0) {
        EXPECT_EQ(winner.attempt, row.*expected);
      }
      EXPECT_EQ(readBy(reader, row.ladder, row.text), winner.instant);
      EXPECT_EQ(readBy(reader, row.ladder, row.text), winner.instant) << "the second time";
    }
  }
}

TEST(DateReader, ReadsInTheZoneOfTheReader) {
  DateReader reader({"en_US", "America/New_York"});
  EXPECT_EQ(reader.dateFromString(u"2018-08-16"), k2018August16 + 4 * kHour);
  EXPECT_EQ(reader.dateFromString(u"2018-08-16 -0700"), k2018August16 + 7 * kHour);
  EXPECT_EQ(reader.dateFromString(u"8/16/18"), k2018August16 + 4 * kHour);
  EXPECT_EQ(reader.dateTimeFromString(u"8/16/18 3:00"), k2018August16 + 7 * kHour);
  EXPECT_EQ(reader.dateTimeFromString(u"8/16/18 3:00 Z"), k2018August16 + 3 * kHour);
  EXPECT_EQ(reader.dateTimeFromString(u"2018-03-11 02:30"), std::nullopt) << "skipped by the zone";
  EXPECT_EQ(reader.dateTimeFromStringWithStandardDate(u"2018-8-16 4:00 PM"), k2018August16 + 20 * kHour);
  EXPECT_EQ(reader.dateTimeFromStringWithStandardDate(u"8/16/2018 4:00 PM"), std::nullopt);
}

struct Printing {
  std::int64_t dateFormat, timeFormat;  // 0: the printer is not asked for this part
  std::u16string_view text;
};

// Of 2018-08-16 20:13:01 in New York.
const Printing kPrintings[] = {
    {1, 0, u"8/16/18"},
    {2, 0, u"Aug 16, 2018"},
    {3, 0, u"August 16, 2018"},
    {4, 0, u"2018-08-16"},
    {5, 0, u"2018-08-16 -0400"},
    {6, 0, u"2018-08-16 -0400"},
    {-1, 0, u"2018-08-16 -0400"},
    {0, 1, u"8:13 PM"},
    {0, 2, u"8:13:01 PM"},
    {0, 3, u"8:13:01 PM EDT"},
    {0, 4, u"20:13"},
    {0, 5, u"20:13:01"},
    {0, 6, u"20:13 -0400"},
    {0, 7, u"20:13:01 -0400"},
    {0, 8, u"20:13:01 -0400"},
    {1, 1, u"8/16/18, 8:13 PM"},
    {2, 2, u"Aug 16, 2018, 8:13:01 PM"},
    {3, 3, u"August 16, 2018 at 8:13:01 PM EDT"},
    {1, 4, u"8/16/1820:13"},  // appended without a separator
    {3, 5, u"August 16, 201820:13:01"},
    {4, 4, u"2018-08-1620:13"},
    {5, 6, u"2018-08-16 -040020:13 -0400"},
    {4, 1, u"8:13 PM"},  // a style replaces the format
    {5, 3, u"8:13:01 PM EDT"},
};

TEST(DatePrinter, PrintsEveryFormat) {
  const DateEnvironment environment{"en_US", "America/New_York"};
  const Instant instant = k2018August16 + 24 * kHour + 13 * 60000 + 1000;
  for (const Printing& row : kPrintings) {
    auto printer = row.timeFormat == 0 ? DatePrinter::forDate(row.dateFormat, environment)
                   : row.dateFormat == 0
                       ? DatePrinter::forTime(row.timeFormat, environment)
                       : DatePrinter::forDateTime(row.dateFormat, row.timeFormat, environment);
    std::u16string out = u">";
    printer.append(instant, out);
    EXPECT_EQ(out, u">" + std::u16string(row.text)) << row.dateFormat << " " << row.timeFormat;
  }
}

TEST(DatePrinter, FormatZeroIsTheLastOfTheList) {
  const DateEnvironment environment{"en_US", "UTC"};
  std::u16string out;
  DatePrinter::forDate(0, environment).append(k2018August16, out);
  out += u"|";
  DatePrinter::forTime(0, environment).append(k2018August16, out);
  out += u"|";
  DatePrinter::forDateTime(4, 0, environment).append(k2018August16, out);
  EXPECT_EQ(out, u"2018-08-16 +0000|00:00:00 +0000|2018-08-1600:00:00 +0000");
}

}  // namespace
}  // namespace quillet
