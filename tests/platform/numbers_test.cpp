#include "platform/numbers.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>

#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct IntegerCase {
  std::u16string text;
  std::int64_t value;
};

const IntegerCase kIntegers[] = {
    {u"", 0},         {u"0", 0},
    {u"5", 5},        {u"+5", 5},
    {u"-5", -5},      {u"++5", 0},
    {u"--5", 0},      {u"+-5", 0},
    {u"- 5", -5},  // white space behind the sign is passed over; this is meant
    {u"+ \t5", 5},    {u" \t\r\n\u0085\u2028\u3000\u00A0\u200B12", 12},
    {u"\uFEFF12", 0}, {u"12abc", 12},
    {u"1 2", 1},      {u"3.9", 3},
    {u"0x1F", 0},     {u"1e3", 1},
    {u"abc", 0},      {u"-", 0},
    {u" ", 0},        {u"007", 7},
    {u"1,234", 1},    {u"\uFF11\uFF12", 0},  // fullwidth digits
    {u"\u0661", 0},                          // an Arabic digit
    {u"1\u0662", 1},  {u"\u22125", 0},       // the minus sign is no sign
};

TEST(Numbers, IntegersAreReadFromTheStart) {
  for (const IntegerCase& row : kIntegers) {
    EXPECT_EQ(integerValue(row.text), row.value) << toUtf8(row.text);
    EXPECT_EQ(intValue(row.text), row.value) << toUtf8(row.text);
  }
}

TEST(Numbers, IntegersClamp) {
  constexpr std::int64_t kMaximum = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kMinimum = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(integerValue(u"9223372036854775806"), kMaximum - 1);
  EXPECT_EQ(integerValue(u"9223372036854775807"), kMaximum);
  EXPECT_EQ(integerValue(u"9223372036854775808"), kMaximum);
  EXPECT_EQ(integerValue(u"92233720368547758070"), kMaximum);
  EXPECT_EQ(integerValue(u"999999999999999999999999999999999999"), kMaximum);
  EXPECT_EQ(integerValue(u"-9223372036854775807"), kMinimum + 1);
  EXPECT_EQ(integerValue(u"-9223372036854775808"), kMinimum);
  EXPECT_EQ(integerValue(u"-9223372036854775809"), kMinimum);
  EXPECT_EQ(integerValue(u"-99999999999999999999999x"), kMinimum);
  EXPECT_EQ(intValue(u"2147483646"), 2147483646);
  EXPECT_EQ(intValue(u"2147483647"), 2147483647);
  EXPECT_EQ(intValue(u"2147483648"), 2147483647);
  EXPECT_EQ(intValue(u"4294967296"), 2147483647);
  EXPECT_EQ(intValue(u"-2147483647"), -2147483647);
  EXPECT_EQ(intValue(u"-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(intValue(u"-2147483649"), std::numeric_limits<std::int32_t>::min());
}

struct DoubleCase {
  std::u16string text;
  double value;
};

const DoubleCase kDoubles[] = {
    {u"", 0},
    {u"1.5", 1.5},
    {u".5", 0.5},
    {u"5.", 5},
    {u"-.2", -0.2},
    {u"+2.5", 2.5},
    {u"- 5", -5},
    {u"--5", 0},
    {u" \n\u00A01.5", 1.5},
    {u".", 0},
    {u".e12", 0},
    {u"e12", 0},
    {u"2e3.12", 2000},
    {u"2E3", 2000},
    {u"2e+3", 2000},
    {u"2e-3", 0.002},
    {u"1.2.3", 1.2},
    {u"1,234", 1},
    {u"1,5", 1},
    {u"12.e4", 120000},
    {u"12e", 12},
    {u"12e+", 12},
    {u"12e-x", 12},
    {u"12ex", 12},
    {u"inf", 0},
    {u"-infinity", 0},
    {u"nan", 0},
    {u"0x10", 0},
    {u"0x1p3", 0},
    {u"1p3", 1},
    {u"\uFF11", 0},
    {u"\u22125", 0},
    {u"1e308", 1e308},
    {u"1e309", kInfinity},
    {u"-1e309", -kInfinity},
    {u"1e99999999999999999999999999", kInfinity},
    {u"1e-99999999999999999999999999", 0},
    {u"0e99999999999999999999999999", 0},
    {u"4.9406564584124654e-324", 4.9406564584124654e-324},
    {u"1e-400", 0},
    {u"1.7976931348623157e308", std::numeric_limits<double>::max()},
    {u"1.8e308", kInfinity},
    {u"9007199254740993", 9007199254740992.0},
    {u"0.1", 0.1},
};

TEST(Numbers, DoublesAreReadFromTheStart) {
  for (const DoubleCase& row : kDoubles) EXPECT_EQ(doubleValue(row.text), row.value) << toUtf8(row.text);
  EXPECT_TRUE(std::signbit(doubleValue(u"-0")));
  EXPECT_TRUE(std::signbit(doubleValue(u"-1e-400")));
}

TEST(Numbers, LongMantissasAreReadToTheEnd) {
  const std::u16string zeros(500, u'0');
  EXPECT_EQ(doubleValue(u"1" + zeros), kInfinity);
  EXPECT_EQ(doubleValue(u"-1" + zeros), -kInfinity);
  EXPECT_EQ(doubleValue(u"1" + zeros + u"e-500"), 1);
  EXPECT_EQ(doubleValue(u"0." + zeros + u"1"), 0);
  EXPECT_EQ(doubleValue(u"0." + zeros + u"1e501"), 1);
  EXPECT_EQ(doubleValue(zeros + u"12.5"), 12.5);
}

TEST(Numbers, FloatsAreRoundedTo32Bits) {
  EXPECT_EQ(floatValue(u"1234567.891"), 1234567.891f);
  EXPECT_EQ(floatValue(u"16777217"), 16777216.0f);
  EXPECT_EQ(floatValue(u"-3.4e38"), -3.4e38f);
  EXPECT_EQ(floatValue(u"1e39"), std::numeric_limits<float>::infinity());
  EXPECT_EQ(floatValue(u"-1e39"), -std::numeric_limits<float>::infinity());
  EXPECT_EQ(floatValue(u"1e-50"), 0.0f);
  EXPECT_EQ(floatValue(u"12e"), 12.0f);
}

TEST(Numbers, IntegersPrintPlain) {
  std::u16string text = u"x";
  appendInteger(0, text);
  appendInteger(-12, text);
  appendInteger(std::numeric_limits<std::int64_t>::min(), text);
  appendInteger(std::numeric_limits<std::int64_t>::max(), text);
  EXPECT_EQ(text, u"x0-12-92233720368547758089223372036854775807");
}

std::u16string fixed(double value, std::int64_t digits) {
  std::u16string text;
  appendFixed(value, digits, text);
  return text;
}

TEST(Numbers, FixedPrintsTheExactValueRoundedHalfToEven) {
  EXPECT_EQ(fixed(1234567.891f, 2), u"1234567.88");
  EXPECT_EQ(fixed(2.675f, 2), u"2.67");
  EXPECT_EQ(fixed(0.125f, 2), u"0.12");
  EXPECT_EQ(fixed(0.375f, 2), u"0.38");
  EXPECT_EQ(fixed(-0.0f, 2), u"-0.00");
  EXPECT_EQ(fixed(-0.001, 2), u"-0.00");
  EXPECT_EQ(fixed(2.5, 0), u"2");
  EXPECT_EQ(fixed(3.5, 0), u"4");
  EXPECT_EQ(fixed(3.5, -1), u"4");
  EXPECT_EQ(fixed(1, std::numeric_limits<std::int64_t>::min()), u"1");
  EXPECT_EQ(fixed(0.1, 20), u"0.10000000000000000555");
  EXPECT_EQ(fixed(3.4e38f, 2), u"339999995214436424907732413799364296704.00");
}

TEST(Numbers, FixedPrintsWhatIsNoNumberAsWords) {
  EXPECT_EQ(fixed(kInfinity, 2), u"inf");
  EXPECT_EQ(fixed(-kInfinity, 5000), u"-inf");
  EXPECT_EQ(fixed(std::numeric_limits<double>::quiet_NaN(), 2), u"nan");
  EXPECT_EQ(fixed(-std::numeric_limits<double>::quiet_NaN(), 2), u"nan");
}

TEST(Numbers, FixedPrintsThousandsOfDigits) {
  EXPECT_EQ(fixed(0.5, 5000), u"0.5" + std::u16string(4999, u'0'));
  const std::u16string longest = fixed(-std::numeric_limits<double>::max(), 3000);
  EXPECT_EQ(longest.size(), 1u + 309 + 1 + 3000);
  const std::u16string smallest = fixed(std::numeric_limits<double>::denorm_min(), 1080);
  EXPECT_EQ(smallest.size(), 2u + 1080);
  EXPECT_EQ(smallest.substr(2 + 1070), u"5625000000");
}

TEST(Numbers, FixedPrintsABoundedNumberOfDigits) {
  for (const std::int64_t digits :
       {kMostFixedDigits, kMostFixedDigits + 1, std::numeric_limits<std::int64_t>::max()})
    EXPECT_EQ(fixed(0.5, digits).size(), 2u + kMostFixedDigits) << digits;
}

TEST(Numbers, RandomValuesPrintAsTheCLibraryPrintsThem) {
  testing::RandomSource random;
  for (std::uint64_t round = testing::rounds(5000); round > 0; --round) {
    const double value = std::ldexp(static_cast<double>(random.below(1u << 24)) - (1 << 23),
                                    static_cast<int>(random.below(200)) - 100);
    const int digits = static_cast<int>(random.below(30));
    char expected[512];
    std::snprintf(expected, sizeof expected, "%.*f", digits, value);
    ASSERT_EQ(toUtf8(fixed(value, digits)), expected);
    ASSERT_EQ(doubleValue(toUtf16(expected)), std::strtod(expected, nullptr)) << expected;
  }
}

}  // namespace
}  // namespace quillet
