#include "clipboard/field_value.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace quillet {
namespace {

TEST(FieldValue, ReadsMoneyLikeText) {
  const struct {
    std::u16string_view text;
    double value;
  } cases[] = {
      {u"", 0},           {u"12", 12},     {u" 12.5 ", 12.5}, {u"$ 1234.50", 1234.5}, {u"12 €", 12},
      {u"($12.00)", -12}, {u"( 5 )", -5},  {u"$(5)", -5},     {u"(1(2)3", -123},      {u"1,234", 1},
      {u"x", 0},          {u"-3e2", -300}, {u"(-4)", 4},      {u"\u2009+7\n", 7},     {u"\n( $ 8 )\n", -8},
  };
  for (const auto& [text, value] : cases)
    EXPECT_EQ(doubleValueFromFieldValue(text), value) << std::string(text.begin(), text.end());
}

TEST(FieldValue, AZeroInBracketsStaysPositive) {
  EXPECT_FALSE(std::signbit(doubleValueFromFieldValue(u"(0)")));
}

}  // namespace
}  // namespace quillet
