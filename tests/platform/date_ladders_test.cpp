#include "platform/date_ladders.h"

#include <gtest/gtest.h>
#include <string>

#include "support/date_reference.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using testing::RandomSource;
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

constexpr const char* kLocales[] = {"en_US", "de_DE",       "fr_FR", "ja_JP", "th_TH", "ar_EG",
                                    "fa_IR", "en_US_POSIX", "en_GB", "es_ES", "ko_KR", "root"};
constexpr const char* kZones[] = {"UTC",          "America/New_York",    "America/Sao_Paulo",
                                  "Asia/Kolkata", "Australia/Lord_Howe", "Europe/Berlin",
                                  "Pacific/Apia", "Africa/Casablanca"};

// Texts of dates and times in one environment, most of them right, many nearly so.
class TextSource {
 public:
  TextSource(const DateEnvironment& environment, RandomSource& random) : random_(random) {
    for (auto pattern : {u"yyyy-M-d", u"yyyy-MM-dd", u"M/d/yyyy", u"M/d/yy", u"d-MMM-yyyy", u"dd-MMM-yy",
                         u"MMM d, y", u"MMMM d, yyyy", u"dd.MM.yy", u"d. MMMM y", u"d MMM y", u"yyyy-M-d Z",
                         u"y/M/d", u"d/M/y", u"yyyy-MMM-dd", u"d. MMM y", u"yyyyMMdd"})
      dates_.push_back(withFormat(environment, pattern));
    for (int format = 1; format <= 3; ++format)
      dates_.push_back(testing::referencePrinter(environment, format, 0));
    for (auto pattern : {u"h:m a", u"H:m", u"hh:mm:ss a", u"HH:mm:ss", u"h:mm a Z", u"H:mm Z", u"h:m:s a Z",
                         u"H:m:s Z", u"HH:mm z", u"H.mm"})
      times_.push_back(withFormat(environment, pattern));
    for (int format = 1; format <= 3; ++format)
      times_.push_back(testing::referencePrinter(environment, 0, format));
    for (int date = 1; date <= 3; ++date)
      for (int time = 1; time <= 3; ++time)
        both_.push_back(testing::referencePrinter(environment, date, time));
  }

  Instant instant() {
    constexpr Instant kDay = 24 * kHour;
    // Years 1890 to 2210 at all times of the day, sometimes far away, often where the clock changes.
    Instant instant = (static_cast<double>(random_.below(116880)) - 29220) * kDay;
    if (random_.oneIn(30)) instant = (static_cast<double>(random_.below(800000)) - 400000) * kDay;
    if (random_.oneIn(3)) instant = (static_cast<double>(random_.below(40 * 365)) + 35 * 365) * kDay;
    if (random_.oneIn(3)) {
      constexpr Instant kChanges[] = {1520751600000,  1541311200000, 1521941400000, 1540688400000,
                                      1325239200000,  1552206600000, 1541300400000, 1518919200000,
                                      -1694368800000, 1526770800000};
      instant = random_.pick(kChanges) + (static_cast<double>(random_.below(12)) - 6) * kHour;
    }
    if (!random_.oneIn(4)) instant += static_cast<double>(random_.below(24 * 3600)) * 1000;
    return instant;
  }

  std::u16string date() { return mutated(random_.pick(dates_).stringFromDate(instant())); }
  std::u16string time() { return mutated(random_.pick(times_).stringFromDate(instant())); }

  std::u16string dateTime() {
    if (random_.oneIn(2)) return mutated(random_.pick(both_).stringFromDate(instant()));
    return date() + std::u16string(random_.pick(kGlue)) + time();
  }

 private:
  static constexpr std::u16string_view kGlue[] = {u" ", u" ", u" ", u"  ", u"T", u", ", u" at "};

  static DateFormatter withFormat(const DateEnvironment& environment, std::u16string_view pattern) {
    DateFormatter formatter(environment);
    formatter.setDateFormat(pattern);
    return formatter;
  }

  std::u16string mutated(std::u16string text) {
    static constexpr std::u16string_view kPieces[] = {
        u"-",      u"/",      u".",      u",",  u":",   u" ",     u"  ",    u"\u202f", u"\u00a0", u"\t",
        u"0",      u"1",      u"2",      u"9",  u"12",  u"31",    u"60",    u"00",     u"E",      u"e1",
        u"x",      u"T",      u"Z",      u"N",  u"NaN", u"nan",   u"Mar",   u"may",    u"Sept",   u"a",
        u"P",      u"PM",     u"a.m.",   u"+",  u"+1",  u"-0400", u"+0530", u"GMT",    u"'",      u"(",
        u"\uff11", u"\u0663", u"\u0301", u"\n", u"%",   u"$",     u"\u221e"};
    if (random_.oneIn(8)) {  // another separator
      const auto separators = std::u16string_view(u"-/.,: ");
      const char16_t from = random_.pick(separators);
      const char16_t to = random_.pick(separators);
      for (char16_t& unit : text) unit = unit == from ? to : unit;
    }
    for (std::size_t left = random_.oneIn(2) ? 0 : random_.below(3); left > 0 && !text.empty(); --left) {
      const std::size_t place = random_.below(text.size());
      switch (random_.below(4)) {
        case 0:
          text.erase(place, 1);
          break;
        case 1:
          text.insert(place, random_.pick(kPieces));
          break;
        case 2:
          text[place] = random_.pick(kPieces)[0];
          break;
        default:
          text += random_.pick(kPieces);
      }
    }
    return text;
  }

  RandomSource& random_;
  std::vector<DateFormatter> dates_, times_, both_;
};

TEST(DateReader, TheFastWaysReadWhatTheLadderReads) {
  RandomSource random(81);
  std::size_t texts = 0, read = 0;
  for (const char* locale : kLocales) {
    for (const char* zone : kZones) {
      if (testing::rounds(1) == 1 && random.oneIn(2)) continue;
      const DateEnvironment environment{locale, zone};
      const ReferenceLadders ladders(environment);
      DateReader reader(environment);
      TextSource source(environment, random);
      for (std::uint64_t round = testing::rounds(40); round > 0; --round) {
        const std::pair<Ladder, std::u16string> cases[] = {{Ladder::Date, source.date()},
                                                           {Ladder::Date, source.date()},
                                                           {Ladder::Time, source.time()},
                                                           {Ladder::DateTime, source.dateTime()}};
        for (const auto& [ladder, text] : cases) {
          const Winner winner = referenceWinner(ladders, ladder, text);
          ASSERT_EQ(readBy(reader, ladder, text), winner.instant)
              << locale << " " << zone << " " << shown(text) << " attempt " << winner.attempt;
          ASSERT_EQ(readBy(reader, ladder, text), winner.instant) << shown(text) << " again";
          ++texts;
          read += winner.instant.has_value();
        }
      }
    }
  }
  EXPECT_GT(read, texts / 5) << "the test is of little worth";
  EXPECT_GT(texts - read, texts / 5);
}

TEST(DateReader, AMemoryOfManyTextsStaysRight) {
  const DateEnvironment environment{"de_DE", "Europe/Berlin"};
  const ReferenceLadders ladders(environment);
  DateReader reader(environment);
  std::vector<std::u16string> texts;
  for (char16_t day = u'1'; day <= u'9'; ++day)
    for (std::u16string_view month : {u"M\u00e4rz", u"M\u00e4r.", u"Mrz", u"April"})
      for (char16_t year = u'0'; year <= u'9'; ++year)
        for (std::u16string_view rest : {u"", u" ", u"\u3000", u"x"})
          texts.push_back(std::u16string(1, day) + u". " + std::u16string(month) + u" 200" + year +
                          std::u16string(rest));
  std::vector<std::optional<Instant>> expected;
  for (const auto& text : texts) expected.push_back(ladders.date(text).instant);
  for (int pass = 0; pass < 2; ++pass)
    for (std::size_t i = 0; i < texts.size(); ++i)
      ASSERT_EQ(reader.dateFromString(texts[i]), expected[i]) << shown(texts[i]);
}

TEST(DatePrinter, TheFastWayPrintsWhatTheFormatterPrints) {
  RandomSource random(82);
  for (const char* locale : kLocales) {
    for (const char* zone : kZones) {
      if (testing::rounds(1) == 1 && random.oneIn(2)) continue;
      const DateEnvironment environment{locale, zone};
      TextSource source(environment, random);
      for (std::uint64_t round = testing::rounds(6); round > 0; --round) {
        const std::int64_t dateFormat = random.below(6);
        const std::int64_t timeFormat = dateFormat == 0 ? 1 + random.below(7) : random.below(8);
        const DateFormatter expected = testing::referencePrinter(environment, dateFormat, timeFormat);
        auto printer = timeFormat == 0   ? DatePrinter::forDate(dateFormat, environment)
                       : dateFormat == 0 ? DatePrinter::forTime(timeFormat, environment)
                                         : DatePrinter::forDateTime(dateFormat, timeFormat, environment);
        for (int i = 0; i < 20; ++i) {
          const Instant instant = source.instant();
          std::u16string out = u">";
          printer.append(instant, out);
          ASSERT_EQ(out, u">" + expected.stringFromDate(instant))
              << locale << " " << zone << " " << dateFormat << " " << timeFormat << " " << instant;
        }
      }
    }
  }
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
