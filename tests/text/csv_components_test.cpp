#include "text/csv_components.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

using Fields = std::vector<std::u16string>;

Fields split(std::u16string_view text) {
  Fields fields;
  findComponentsOfCSVString(text, fields);
  return fields;
}

TEST(CsvComponents, Splits) {
  const std::pair<std::u16string_view, Fields> cases[] = {
      {u"", {u""}},
      {u"a", {u"a"}},
      {u"a,b", {u"a", u"b"}},
      {u",", {u"", u""}},
      {u"a,,b,", {u"a", u"", u"b", u""}},
      {u"a,\"b,c\",d", {u"a", u"b,c", u"d"}},
      {u"a,\"b\"\"c\"", {u"a", u"b\"c"}},
      {u"a\"b,c\"d", {u"ab,cd"}},  // quotes work in the middle of a field
      {u"\"a", {u"a"}},            // left open
      {u"\"a,b", {u"a,b"}},
      {u"\"\"", {u""}},
      {u"\"\",a", {u"", u"a"}},
      {u"\"\"xyz,a", {u"", u"a"}},  // an empty quoted field drops all up to the comma
      {u"x\"\"y\"z,a", {u"x", u"a"}},
      {u"\"\"a\"b,c\"", {u"", u"c"}},  // a quote in what is dropped does nothing
      {u"\"\"\"a,b", {u"\"a,b"}},      // three quotes: the first opens, two are one
      {u"\"\"\"a\"\"\"", {u"\"a"}},    // at the end the first closes, two drop what follows
      {u"\"a\"\"\"x,b", {u"a", u"b"}},
      {u"\"\"\"\"", {u""}},  // four: open, close, and two outside
      {u"\"a\",\"b\"", {u"a", u"b"}},
      {u"\"\"\"\",b", {u"", u"b"}},
      {u"a\nb,c", {u"a\nb", u"c"}},
      {u"e\u0301,\U0001F44D", {u"e\u0301", u"\U0001F44D"}},
      {u"a,\u0301b", {u"a", u"\u0301b"}},  // units, not composed characters
  };
  for (const auto& [text, fields] : cases)
    EXPECT_EQ(split(text), fields) << "row " << &text - &cases[0].first;
}

TEST(CsvComponents, AddsToWhatIsThere) {
  Fields fields = {u"before"};
  findComponentsOfCSVString(u"a,b", fields);
  EXPECT_EQ(fields, (Fields{u"before", u"a", u"b"}));
}

}  // namespace
}  // namespace quillet
