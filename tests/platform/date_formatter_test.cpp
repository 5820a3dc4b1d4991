#include "platform/date_formatter.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace quillet {
namespace {

constexpr Instant kSecond = 1000;
constexpr Instant kHour = 3600 * kSecond;
constexpr Instant kDay = 24 * kHour;
constexpr Instant k2000 = 946684800000;           // 2000-01-01 00:00 UTC
constexpr Instant k2018August16 = 1534377600000;  // 2018-08-16 00:00 UTC

DateFormatter withFormat(std::u16string_view pattern, DateEnvironment environment = {"en_US", "UTC"}) {
  DateFormatter formatter(std::move(environment));
  formatter.setDateFormat(pattern);
  return formatter;
}

DateFormatter withStyles(DateStyle dateStyle, DateStyle timeStyle, const char* locale,
                         const char* timeZone = "UTC") {
  DateFormatter formatter({locale, timeZone});
  formatter.setDateStyle(dateStyle);
  formatter.setTimeStyle(timeStyle);
  return formatter;
}

// Sets environment variables of the locale for one test.
class LocaleVariables {
 public:
  LocaleVariables() {
    for (const char* name : kNames) {
      const char* value = std::getenv(name);
      saved_.emplace_back(name, value ? std::optional<std::string>(value) : std::nullopt);
      unsetenv(name);
    }
  }
  ~LocaleVariables() {
    for (const auto& [name, value] : saved_) {
      if (value) {
        setenv(name.c_str(), value->c_str(), 1);
      } else {
        unsetenv(name.c_str());
      }
    }
  }
  void set(const char* name, const char* value) { setenv(name, value, 1); }

 private:
  static constexpr const char* kNames[] = {"LC_ALL", "LC_MESSAGES", "LC_TIME", "LANG"};
  std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

TEST(DateFormatter, LocaleIsThatOfTheEnvironment) {
  LocaleVariables variables;
  EXPECT_EQ(currentLocaleName(), "en_US_POSIX");
  variables.set("LANG", "de_DE.UTF-8");
  EXPECT_EQ(currentLocaleName(), "de_DE");
  variables.set("LC_TIME", "ja_JP.UTF-8");
  EXPECT_EQ(currentLocaleName(), "de_DE") << "LC_TIME is not asked";
  variables.set("LC_MESSAGES", "fr_FR");
  EXPECT_EQ(currentLocaleName(), "fr_FR");
  variables.set("LC_ALL", "");
  EXPECT_EQ(currentLocaleName(), "fr_FR") << "empty is unset";
  variables.set("LC_ALL", "th_TH.UTF-8");
  EXPECT_EQ(currentLocaleName(), "th_TH");
  for (const char* name : {"C", "POSIX", "C.UTF-8"}) {
    variables.set("LC_ALL", name);
    EXPECT_EQ(currentLocaleName(), "en_US_POSIX") << name;
  }
  variables.set("LC_ALL", "en_GB.ISO-8859-15@euro");
  EXPECT_EQ(currentLocaleName(), "en_GB_EURO");
  variables.set("LC_ALL", "en_US");
  EXPECT_EQ(DateEnvironment::current().locale, "en_US");
  EXPECT_EQ(DateEnvironment::current().timeZone, "");
}

TEST(DateFormatter, WithoutStylesAndFormatItPrintsNothing) {
  const DateFormatter formatter({"en_US", "UTC"});
  EXPECT_EQ(formatter.dateFormat(), u"");
  EXPECT_EQ(formatter.stringFromDate(k2000), u"");
  EXPECT_EQ(formatter.dateFromString(u"1/1/00"), std::nullopt);
  EXPECT_EQ(formatter.dateFromString(u""), std::nullopt);
}

TEST(DateFormatter, AStyleReplacesTheFormatAndTheStylesAreRememberedApart) {
  DateFormatter formatter({"en_US", "UTC"});
  formatter.setDateFormat(u"yyyy-MM-dd");
  EXPECT_EQ(formatter.stringFromDate(k2018August16), u"2018-08-16");
  formatter.setTimeStyle(DateStyle::Short);
  EXPECT_EQ(formatter.stringFromDate(k2018August16), u"12:00 AM") << "the time only";
  formatter.setDateStyle(DateStyle::Short);
  EXPECT_EQ(formatter.stringFromDate(k2018August16), u"8/16/18, 12:00 AM");
  formatter.setDateFormat(u"yyyy");
  EXPECT_EQ(formatter.dateFormat(), u"yyyy");
  formatter.setDateStyle(DateStyle::None);
  EXPECT_EQ(formatter.dateFormat(), u"h:mm a");
}

TEST(DateFormatter, StylesHavePlainBlanks) {
  struct Row {
    const char* locale;
    std::u16string_view dates[3];
    std::u16string_view times[3];
    std::u16string_view joined[3];  // each date style with the short time style
  };
  const Row kRows[] = {
      {"en_US",
       {u"M/d/yy", u"MMM d, y", u"MMMM d, y"},
       {u"h:mm a", u"h:mm:ss a", u"h:mm:ss a z"},
       {u"M/d/yy, h:mm a", u"MMM d, y, h:mm a", u"MMMM d, y 'at' h:mm a"}},
      {"de_DE",
       {u"dd.MM.yy", u"dd.MM.y", u"d. MMMM y"},
       {u"HH:mm", u"HH:mm:ss", u"HH:mm:ss z"},
       {u"dd.MM.yy, HH:mm", u"dd.MM.y, HH:mm", u"d. MMMM y 'um' HH:mm"}},
      {"fr_FR",
       {u"dd/MM/y", u"d MMM y", u"d MMMM y"},
       {u"HH:mm", u"HH:mm:ss", u"HH:mm:ss z"},
       {u"dd/MM/y HH:mm", u"d MMM y, HH:mm", u"d MMMM y '\u00e0' HH:mm"}},
      {"ja_JP",
       {u"y/MM/dd", u"y/MM/dd", u"y\u5e74M\u6708d\u65e5"},
       {u"H:mm", u"H:mm:ss", u"H:mm:ss z"},
       {u"y/MM/dd H:mm", u"y/MM/dd H:mm", u"y\u5e74M\u6708d\u65e5 H:mm"}},
  };
  constexpr DateStyle kStyles[] = {DateStyle::Short, DateStyle::Medium, DateStyle::Long};
  for (const Row& row : kRows) {
    for (int i = 0; i < 3; ++i) {
      SCOPED_TRACE(row.locale);
      EXPECT_EQ(withStyles(kStyles[i], DateStyle::None, row.locale).dateFormat(), row.dates[i]);
      EXPECT_EQ(withStyles(DateStyle::None, kStyles[i], row.locale).dateFormat(), row.times[i]);
      EXPECT_EQ(withStyles(kStyles[i], DateStyle::Short, row.locale).dateFormat(), row.joined[i]);
    }
  }
}

struct Reading {
  std::u16string_view pattern, text;
  std::optional<Instant> instant;
};

const Reading kReadings[] = {
    {u"yyyy-M-d", u"2018-08-16", k2018August16},
    {u"yyyy-M-d", u"2018-8-16", k2018August16},
    {u"yyyy-M-d", u"2018-Aug-16", k2018August16},  // a numeric month takes names too
    {u"yyyy-M-d", u"2018-AUGUST-16", k2018August16},
    {u"yyyy-M-d", u"2018-08-16 \u3000", k2018August16},  // white space may be left over
    {u"yyyy-M-d", u"2018-08-16\n", std::nullopt},        // a line end may not
    {u"yyyy-M-d", u"2018-08-16xyz", std::nullopt},
    {u"yyyy-M-d", u"2018/08/16", std::nullopt},
    {u"yyyy-M-d", u"2018-13-45", std::nullopt},
    {u"yyyy-M-d", u"2018-02-29", std::nullopt},
    {u"yyyy-M-d", u"2020-02-29", 1582934400000.0},
    {u"yyyy-M-d", u"2018-02-30", std::nullopt},
    {u"yyyy-M-d", u"2018-8", std::nullopt},
    {u"yyyy-M-d", u"", std::nullopt},
    {u"yyyy-M-d", u"\uff12\uff10\uff11\uff18-08-16", k2018August16},  // digits of full width
    {u"M/d/yy", u"1/1/00", k2000},
    {u"M/d/yy", u"1/1/49", 2493072000000.0},  // 2049
    {u"M/d/yy", u"1/1/50", -631152000000.0},  // 1950
    {u"M/d/yy", u"8/16/2018", k2018August16},
    {u"dd/MM/y", u"16/08/18", k2018August16},
    {u"MMM d, y", u"Aug 16, 2018", k2018August16},
    {u"MMM d, y", u"august  16,\u202f2018", k2018August16},
    {u"MMM d, y", u"Aug 16 2018", std::nullopt},
    {u"MMM d, y", u"Aug 16,2018", std::nullopt},
    {u"MMM d, y", u"Aug. 16, 2018", std::nullopt},
    {u"MMM d, y", u"Sept 16, 2018", std::nullopt},
    {u"MMM d, y", u"Augu 16, 2018", std::nullopt},
    {u"h:m a", u"8:13 PM", k2000 + 20 * kHour + 13 * 60 * kSecond},  // on 2000-01-01
    {u"h:m a", u"8:13 P", k2000 + 20 * kHour + 13 * 60 * kSecond},
    {u"h:m a", u"0:30 AM", k2000 + 30 * 60 * kSecond},
    {u"h:m a", u"8:13PM", std::nullopt},
    {u"h:m a", u"13:00 PM", std::nullopt},
    {u"H:m", u"24:00", std::nullopt},
    {u"H:m", u"23:60", std::nullopt},
    {u"H:m", u"23:59", k2000 + kDay - 60 * kSecond},
};

TEST(DateFormatter, ReadingIsStrict) {
  for (const Reading& row : kReadings) {
    EXPECT_EQ(withFormat(row.pattern).dateFromString(row.text), row.instant)
        << ::testing::PrintToString(std::u16string(row.pattern)) << " "
        << ::testing::PrintToString(std::u16string(row.text));
  }
}

TEST(DateFormatter, AYearOfTwoDigitsIsTakenAsItIsByFourLetters) {
  const auto formatter = withFormat(u"M/d/yyyy");
  const auto instant = formatter.dateFromString(u"8/16/18");
  ASSERT_TRUE(instant);
  EXPECT_EQ(withFormat(u"yyyy-MM-dd").stringFromDate(*instant), u"0018-08-16");
}

TEST(DateFormatter, ReadsOffsets) {
  const std::pair<std::u16string_view, std::optional<double>> kOffsets[] = {
      {u"-0400", -4},
      {u"+02:00", 2},
      {u"+05", 5},
      {u"+5", 5},
      {u"Z", 0},
      {u"GMT", 0},
      {u"UTC", 0},
      {u"GMT+2", 2},
      {u"EDT", std::nullopt},
      {u"-4:00", std::nullopt},
      {u"+2460", std::nullopt},
      {u"Europe/Berlin", std::nullopt},
  };
  const auto formatter = withFormat(u"H:m Z", {"en_US", "America/New_York"});
  for (const auto& [offset, hours] : kOffsets) {
    std::optional<Instant> expected;
    if (hours) expected = k2000 + (20 - *hours) * kHour;
    EXPECT_EQ(formatter.dateFromString(u"20:00 " + std::u16string(offset)), expected)
        << ::testing::PrintToString(std::u16string(offset));
    EXPECT_EQ(formatter.dateFromString(u"20:00" + std::u16string(offset)), std::nullopt)
        << "a blank is needed";
  }
}

TEST(DateFormatter, AnOffsetOfOneTextIsForgottenForTheNext) {
  const auto formatter = withFormat(u"H:m Z", {"en_US", "America/New_York"});
  EXPECT_EQ(formatter.dateFromString(u"20:00 +0200"), k2000 + 18 * kHour);
  EXPECT_EQ(formatter.stringFromDate(k2000), u"19:0 -0500");
  EXPECT_EQ(formatter.dateFromString(u"20:00 -0500"), k2000 + 25 * kHour);
}

TEST(DateFormatter, ReadsZoneNamesOfTheLocale) {
  const auto english = withStyles(DateStyle::None, DateStyle::Long, "en_US", "America/New_York");
  EXPECT_EQ(english.dateFromString(u"8:13:01 PM EDT"), k2000 + 24 * kHour + 13 * 60 * kSecond + kSecond);
  // A bare time lies in January.
  EXPECT_EQ(english.stringFromDate(*english.dateFromString(u"8:13:01 PM EDT")), u"7:13:01 PM EST");
  const auto german = withStyles(DateStyle::None, DateStyle::Long, "de_DE", "Europe/Berlin");
  EXPECT_TRUE(german.dateFromString(u"20:13:01 MESZ"));
  EXPECT_TRUE(german.dateFromString(u"20:13:01 GMT+2"));
}

TEST(DateFormatter, AWallTimeThatTheZoneSkipsIsNotRead) {
  EXPECT_FALSE(
      withFormat(u"yyyy-M-d H:m", {"en_US", "America/New_York"}).dateFromString(u"2018-03-11 02:30"));
  EXPECT_TRUE(withFormat(u"yyyy-M-d H:m", {"en_US", "America/New_York"}).dateFromString(u"2018-03-11 03:30"));
  EXPECT_FALSE(withFormat(u"yyyy-M-d", {"pt_BR", "America/Sao_Paulo"}).dateFromString(u"2018-11-04"));
  EXPECT_TRUE(withFormat(u"yyyy-M-d", {"pt_BR", "America/Sao_Paulo"}).dateFromString(u"2018-11-05"));
}

TEST(DateFormatter, PrintsInTheZone) {
  EXPECT_EQ(withFormat(u"yyyy-MM-dd Z", {"en_US", "America/New_York"}).stringFromDate(k2018August16),
            u"2018-08-15 -0400");
  EXPECT_EQ(withFormat(u"HH:mm:ss Z", {"en_US", "Europe/Berlin"}).stringFromDate(k2018August16),
            u"02:00:00 +0200");
  EXPECT_EQ(withFormat(u"Z").stringFromDate(k2018August16), u"+0000");
  EXPECT_EQ(withFormat(u"HH:mm Z", {"en_US", "No/Such_Zone"}).stringFromDate(k2000), u"00:00 +0000");
}

TEST(DateFormatter, PrintsYearsAndDigitsOfTheLocale) {
  EXPECT_EQ(withFormat(u"yyyy-MM-dd", {"th_TH", "UTC"}).stringFromDate(k2018August16), u"2561-08-16");
  EXPECT_EQ(withFormat(u"yyyy", {"ar_EG", "UTC"}).stringFromDate(k2018August16), u"\u0662\u0660\u0661\u0668");
}

TEST(DateFormatter, PrintsALongPattern) {
  const std::u16string pattern = u"'" + std::u16string(500, u'x') + u"'";
  EXPECT_EQ(withFormat(pattern).stringFromDate(k2000), std::u16string(500, u'x'));
}

}  // namespace
}  // namespace quillet
