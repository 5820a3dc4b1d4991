#include "platform/plain_date_pattern.h"

#include <gtest/gtest.h>
#include <string>

namespace quillet {
namespace {

using Answer = PlainDatePattern::Answer;

constexpr Instant kDay = 86400000;
constexpr Instant k1985March7 = 5544 * kDay;  // 00:00 UTC
constexpr Instant k2000 = 10957 * kDay;

struct Row {
  std::u16string_view pattern, text;
  Answer answer;
  Instant instant = 0;
};

const Row kRows[] = {
    {u"yyyy-M-d", u"1985-03-07", Answer::Read, k1985March7},
    {u"yyyy-M-d", u"1985-3-7  ", Answer::Read, k1985March7},
    {u"yyyy-M-d", u"1985-mar-7", Answer::Read, k1985March7},
    {u"M/d/yy", u"3/7/1985", Answer::Read, k1985March7},
    {u"M/d/yy", u"3/7/85", Answer::Read, k1985March7},
    {u"MMM d, y", u"Mar 7, 1985", Answer::Read, k1985March7},
    {u"MMM d, y", u"MARCH   7,  1985", Answer::Read, k1985March7},
    {u"d-MMM-yyyy", u"7-Mar-1985", Answer::Read, k1985March7},
    {u"yyyy-M-d Z", u"1985-03-07 -0200", Answer::Read, k1985March7 + kDay / 12},
    {u"h:m a", u"12:30 pm", Answer::Read, k2000 + kDay / 2 + 1800000},
    {u"MMMM d, y 'at' h:mm a", u"March 7, 1985 at 12:00 AM", Answer::Read, k1985March7},
    {u"yyyy 'o''clock' d", u"1985 o'clock 1", Answer::Read, 5479 * kDay},
    {u"yyyy-M-d", u"3/7/1985", Answer::Failed},
    {u"yyyy-M-d", u"1985-03", Answer::Failed},
    {u"yyyy-M-d", u"1985-03-07x", Answer::Failed},
    {u"yyyy-M-d", u"1985-02-29", Answer::Failed},
    {u"yyyy-M-d", u"1985-13-01", Answer::Failed},
    {u"yyyy-M-d", u"unknown", Answer::Failed},
    {u"yyyy-M-d", u"1985-Foo-7", Answer::Failed},
    {u"yyyy-M-d Z", u"1985-03-07", Answer::Failed},
    {u"MMM d, y", u"Mar 7 1985", Answer::Failed},
    {u"MMM d, y", u"Mar 7,1985", Answer::AskIcu},  // might be one grouped number
    {u"MMM d, y", u"Sept 7, 1985", Answer::Failed},
    {u"dd.MM.yy", u"7.3.1985", Answer::Failed},  // two letters for the day want two digits
    {u"H:mm", u"8:5", Answer::Failed},
    {u"H:m", u"24:00", Answer::Failed},
    {u"h:m a", u"13:00 PM", Answer::Failed},
    {u"h:mm:ss a z", u"8:13:01 PM", Answer::Failed},
    {u"yyyy-M-d", u"85-03-07", Answer::AskIcu},  // the year 85
    {u"yyyy-M-d", u"2200-03-07", Answer::AskIcu},
    {u"M/d/yy", u"1/1/50", Answer::AskIcu},  // the zone tells the century
    {u"M/d/yy", u"1/1/49", Answer::AskIcu},
    {u"yyyy-M-d", u"1985-03-07E5", Answer::AskIcu},
    {u"yyyy-M-d", u"1985--3-07", Answer::AskIcu},  // negative numbers
    {u"yyyy-M-d", u" 1985-03-07", Answer::AskIcu},
    {u"yyyy-M-d", u"000001985-03-07", Answer::AskIcu},
    {u"yyyy-M-d", u"NaN-03-07", Answer::AskIcu},
    {u"yyyy-M-d Z", u"1985-03-07 GMT", Answer::AskIcu},
    {u"h:m a", u"8:13 P", Answer::AskIcu},
    {u"h:m a", u"0:30 AM", Answer::AskIcu},
    {u"h:mm:ss a z", u"8:13:01 PM EDT", Answer::AskIcu},
    {u"yyyyMMdd", u"19850307", Answer::AskIcu},
    {u"EEEE", u"Monday", Answer::AskIcu},
    {u"", u"1", Answer::AskIcu},
};

TEST(PlainDatePattern, AnswersWhatItKnowsForCertain) {
  const DateEnvironment environment{"en_US", "UTC"};
  const ZoneOffsets offsets("UTC");
  const auto symbols = DateSymbols::of(environment);
  for (const Row& row : kRows) {
    SCOPED_TRACE(::testing::PrintToString(std::u16string(row.pattern)) + " " +
                 ::testing::PrintToString(std::u16string(row.text)));
    Instant instant = 0;
    EXPECT_EQ(PlainDatePattern(row.pattern, symbols).read(row.text, offsets, instant), row.answer);
    EXPECT_EQ(instant, row.instant);
    // And it is right: the general formatter agrees.
    DateFormatter formatter(environment);
    formatter.setDateFormat(row.pattern);
    if (row.answer == Answer::Read) {
      EXPECT_EQ(formatter.dateFromString(row.text), row.instant);
    } else if (row.answer == Answer::Failed) {
      EXPECT_EQ(formatter.dateFromString(row.text), std::nullopt);
    }
  }
}

TEST(PlainDatePattern, PrintsPlainPatterns) {
  const ZoneOffsets offsets("America/New_York");
  const auto symbols = DateSymbols::of({"en_US", "America/New_York"});
  const auto printed = [&](std::u16string_view pattern, Instant instant) -> std::optional<std::u16string> {
    std::u16string out;
    if (!PlainDatePattern(pattern, symbols).append(instant, offsets, out)) return std::nullopt;
    return out;
  };
  EXPECT_EQ(printed(u"yyyy-MM-dd Z", k1985March7), u"1985-03-06 -0500");
  EXPECT_EQ(printed(u"MMM d, y, h:mm a", k1985March7), u"Mar 6, 1985, 7:00 PM");
  EXPECT_EQ(printed(u"M/d/yyHH:mm:ss", k1985March7 - 500), u"3/6/8518:59:59");
  EXPECT_EQ(printed(u"h 'o''clock'", k1985March7 + kDay / 24 * 5), u"12 o'clock");
  EXPECT_EQ(printed(u"yyyy", -80000 * kDay), std::nullopt);
  EXPECT_EQ(printed(u"yyyy", 1e300), std::nullopt);
  EXPECT_EQ(printed(u"h:mm z", k1985March7), std::nullopt);
}

TEST(PlainDatePattern, LeavesOtherCalendarsAndDigitsToIcu) {
  const ZoneOffsets offsets("UTC");
  Instant instant = 0;
  std::u16string out;
  for (const char* locale : {"th_TH", "fa_IR"}) {
    const PlainDatePattern pattern(u"yyyy-M-d", DateSymbols::of({locale, "UTC"}));
    EXPECT_EQ(pattern.read(u"1985-03-07", offsets, instant), Answer::AskIcu) << locale;
    EXPECT_FALSE(pattern.append(k1985March7, offsets, out)) << locale;
  }
  const PlainDatePattern arabic(u"yyyy-M-d", DateSymbols::of({"ar_EG", "UTC"}));
  EXPECT_EQ(arabic.read(u"1985-03-07", offsets, instant), Answer::Read);
  EXPECT_FALSE(arabic.append(k1985March7, offsets, out));
}

}  // namespace
}  // namespace quillet
