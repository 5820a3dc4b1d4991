#include "engine/column_reformat.h"

#include <gtest/gtest.h>

#include "engine/job_fixture.h"
#include "support/environment.h"

namespace quillet {
namespace {

using testing::record;

class ColumnReformat : public ::testing::Test {
 protected:
  ColumnReformat() {
    environment_.set("LC_ALL", "en_US.UTF-8");
    environment_.set("TZ", "America/New_York");
  }

  // The new text; nothing when the cell keeps its own.
  std::optional<std::u16string> reformatted(testing::Items items, std::u16string_view cell) {
    DateReader reader;
    const ColumnReformatter::Warn warn = [&](std::u16string_view message) {
      warnings_.emplace_back(message);
    };
    ColumnReformatter reformatter(record(OpReformatColumn, items), reader, warn);
    TextArena arena;
    const auto result = reformatter.reformatted(cell, 6, arena);
    if (!result) return std::nullopt;
    return std::u16string(*result);
  }
  std::u16string lastWarning() {
    if (warnings_.size() != 1) return u"not one warning";
    std::u16string warning = warnings_[0];
    warnings_.clear();
    return warning;
  }

  testing::Environment environment_;
  std::vector<std::u16string> warnings_;
};

TEST_F(ColumnReformat, PrintsDatesInEachFormat) {
  const std::pair<std::int64_t, std::u16string> kFormats[] = {
      {1, u"8/16/18"},          {2, u"Aug 16, 2018"},     {3, u"August 16, 2018"},
      {4, u"2018-08-16"},       {5, u"2018-08-16 -0400"}, {6, u"2018-08-16 -0400"},
      {0, u"2018-08-16 -0400"}, {-1, u"2018-08-16 -0400"}};
  for (const auto& [format, text] : kFormats)
    EXPECT_EQ(reformatted({{"IntArg2", 1}, {"IntArg3", format}}, u" 16-Aug-2018 "), text) << format;
  EXPECT_EQ(reformatted({}, u"2018-08-16"), u"8/16/18");  // date and format 1 are the defaults
  EXPECT_TRUE(warnings_.empty());
}

TEST_F(ColumnReformat, PrintsTimesInEachFormat) {
  const std::pair<std::int64_t, std::u16string> kFormats[] = {
      {1, u"8:13 PM"},  {2, u"8:13:01 PM"},  {3, u"8:13:01 PM EST"}, {4, u"20:13"},
      {5, u"20:13:01"}, {6, u"20:13 -0500"}, {7, u"20:13:01 -0500"}, {8, u"20:13:01 -0500"}};
  for (const auto& [format, text] : kFormats)
    EXPECT_EQ(reformatted({{"IntArg2", 2}, {"IntArg3", format}}, u"20:13:01"), text) << format;
}

TEST_F(ColumnReformat, PrintsDatesWithTimes) {
  const auto both = [&](std::int64_t date, std::int64_t time) {
    return reformatted({{"IntArg2", 3}, {"IntArg3", date}, {"IntArg4", time}}, u"2018-08-16 20:13:01")
        .value_or(u"-");
  };
  EXPECT_EQ(both(1, 1), u"8/16/18, 8:13 PM");
  EXPECT_EQ(both(4, 4), u"2018-08-1620:13");  // they touch: this is meant
  EXPECT_EQ(both(1, 4), u"8/16/1820:13");
  EXPECT_EQ(both(4, 1), u"8:13 PM");  // a style replaces the format
  EXPECT_EQ(both(5, 7), u"2018-08-16 -040020:13:01 -0400");
}

TEST_F(ColumnReformat, WarnsOfWhatItCannotRead) {
  EXPECT_EQ(reformatted({{"IntArg2", 1}}, u" nine "), std::nullopt);
  EXPECT_EQ(lastWarning(), u"Could not convert \"nine\" into a date on line 7");
  EXPECT_EQ(reformatted({{"IntArg2", 2}}, u"nine"), std::nullopt);
  EXPECT_EQ(lastWarning(), u"Could not convert \"nine\" into a time on line 7");
  EXPECT_EQ(reformatted({{"IntArg2", 3}}, u"2018-08-16"), std::nullopt);
  EXPECT_EQ(lastWarning(), u"Could not convert \"2018-08-16\" into a date time on line 7");
}

TEST_F(ColumnReformat, PutsTheInvalidStringInTheirPlace) {
  for (const std::int64_t as : {1, 2, 3}) {
    EXPECT_EQ(reformatted({{"IntArg1", 1}, {"IntArg2", as}, {"Arg2", u"bad"}}, u"nine"), u"bad");
    EXPECT_EQ(reformatted({{"IntArg1", 1}, {"IntArg2", as}}, u"nine"), u"");
    EXPECT_EQ(reformatted({{"IntArg1", 2}, {"IntArg2", as}, {"Arg2", u"bad"}}, u"nine"), std::nullopt);
    warnings_.clear();
    EXPECT_EQ(reformatted({{"IntArg1", 1}, {"IntArg2", as}, {"Arg2", u"bad"}}, u" \t\n"), std::nullopt);
    EXPECT_EQ(reformatted({{"IntArg1", 1}, {"IntArg2", as}, {"Arg2", u"bad"}}, u""), std::nullopt);
    EXPECT_TRUE(warnings_.empty());
  }
}

TEST_F(ColumnReformat, ReadsIntegers) {
  const std::pair<std::u16string, std::u16string> kCases[] = {
      {u"12abc", u"12"},
      {u"3.9", u"3"},
      {u"", u"0"},
      {u"abc", u"0"},
      {u"  -5", u"-5"},
      {u"007", u"7"},
      {u"99999999999999999999", u"9223372036854775807"}};
  for (const auto& [cell, text] : kCases) EXPECT_EQ(reformatted({{"IntArg2", 4}}, cell), text);
}

TEST_F(ColumnReformat, ReadsNumbersOf32Bits) {
  struct Case {
    std::u16string cell;
    OperationRecord::Value digits;
    std::u16string text;
  };
  const Case kCases[] = {{u"3.14159", 2, u"3.14"},
                         {u"3.7", 0, u"4"},
                         {u"abc", 2, u"0.00"},
                         {u"", 1, u"0.0"},
                         {u"1234567.891", 2, u"1234567.88"},
                         {u"0.1", 10, u"0.1000000015"},
                         {u"1,5", 1, u"1.0"},
                         {u"2.5", -3, u"2"},
                         {u"2.25", u"1", u"2.2"},
                         {u"1e3", 1, u"1000.0"}};
  for (const auto& [cell, digits, text] : kCases)
    EXPECT_EQ(reformatted({{"IntArg2", 5}, {"Arg5", digits}}, cell), text);
  EXPECT_EQ(reformatted({{"IntArg2", 5}}, u"2.5"), u"2");
  EXPECT_TRUE(warnings_.empty());
}

// More digits than a line has room for would only exhaust the memory.
TEST_F(ColumnReformat, BoundsTheDigits) {
  for (const std::int64_t digits : {std::int64_t{16'384}, std::int64_t{1'000'000'000}, INT64_MAX}) {
    const auto text = reformatted({{"IntArg2", 5}, {"Arg5", digits}}, u"1");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->size(), 2u + 16'384) << digits;
  }
}

TEST_F(ColumnReformat, LeavesCellsOfAnUnknownKind) {
  for (const std::int64_t as : {-1, 0, 6, 99})
    EXPECT_EQ(reformatted({{"IntArg2", as}}, u"2018-08-16"), std::nullopt);
}

}  // namespace
}  // namespace quillet
