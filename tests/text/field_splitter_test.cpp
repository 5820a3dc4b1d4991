#include "text/field_splitter.h"

#include <gtest/gtest.h>

#include "platform/composed_sequences.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using testing::RandomSource;
using Fields = std::vector<std::u16string>;

// Their count is the same.
Fields split(std::u16string_view line, std::u16string_view separator, std::u16string_view quote) {
  // A buffer of the exact size, so that the sanitizer sees a read beyond the line.
  const std::vector<char16_t> exact(line.begin(), line.end());
  Fields fields;
  findFieldsInLine({exact.data(), exact.size()}, fields, separator, quote);
  EXPECT_EQ(FieldSplitter(separator, quote).fieldCount({exact.data(), exact.size()}), fields.size());
  return fields;
}

// The rule: sequence by sequence.
Fields splitByRule(std::u16string_view line, std::u16string_view separator, std::u16string_view quote) {
  std::vector<std::u16string_view> sequences;
  forEachComposedSequence(line, [&](std::u16string_view sequence) { sequences.push_back(sequence); });
  Fields fields;
  std::u16string field;
  bool inQuotes = false;
  for (std::size_t i = 0; i < sequences.size(); ++i) {
    if (sequences[i] == quote) {
      if (inQuotes && i + 1 < sequences.size() && sequences[i + 1] == quote) {
        field += sequences[i++];
      } else {
        inQuotes = !inQuotes;
      }
    } else if (sequences[i] == separator && !inQuotes) {
      fields.push_back(field);
      field.clear();
    } else {
      field += sequences[i];
    }
  }
  fields.push_back(field);
  return fields;
}

struct Case {
  std::u16string line, separator, quote;
  Fields fields;
};

TEST(FieldSplitter, CutsALineIntoFields) {
  const Case kCases[] = {
      {u"a,\"b,c\",d", u",", u"\"", {u"a", u"b,c", u"d"}},
      {u"a,\"b\"\"c\"", u",", u"\"", {u"a", u"b\"c"}},
      {u"a\"b,c\"d", u",", u"\"", {u"ab,cd"}},
      {u"", u",", u"\"", {u""}},
      {u"", u",", u"", {u""}},
      {u"a,\"b,c", u",", u"\"", {u"a", u"b,c"}},
      {u"a||b", u"||", u"", {u"a||b"}},
      {u"a,b,", u",", u"", {u"a", u"b", u""}},
      {u",", u",", u"\"", {u"", u""}},
      {u"a,b", u"", u"", {u"a,b"}},
      {u"\"a\",\"b\"", u",", u"", {u"\"a\"", u"\"b\""}},
      {u"\"\"", u",", u"\"", {u""}},
      {u"\"\"\"\"", u",", u"\"", {u"\""}},
      {u"\"\"\"", u",", u"\"", {u"\""}},
      {u"a\"\"b", u",", u"\"", {u"ab"}},
      {u"\"a\"x\"b\"", u",", u"\"", {u"axb"}},
      {u"a,\u0301b,c", u",", u"", {u"a,\u0301b", u"c"}},  // a mark makes another character of it
      {u"\"\u0301a,b", u",", u"\"", {u"\"\u0301a", u"b"}},
      {u"aéb", u"é", u"", {u"a", u"b"}},
      {u"ae\u0301b", u"é", u"", {u"ae\u0301b"}},  // comparison is unit by unit
      {u"ae\u0301b", u"e\u0301", u"", {u"a", u"b"}},
      {u"a😀b", u"😀", u"", {u"a", u"b"}},
      {u"«a;b«;c", u";", u"«", {u"a;b", u"c"}},
      {u"a;b", u";", u";", {u"ab"}},  // the quote is looked at first
      {u"a\r\nb", u"\n", u"", {u"a\r", u"b"}},
  };
  for (const auto& [line, separator, quote, fields] : kCases) {
    EXPECT_EQ(split(line, separator, quote), fields) << toUtf8(line);
    EXPECT_EQ(splitByRule(line, separator, quote), fields) << toUtf8(line);
  }
}

TEST(FieldSplitter, AddsToWhatIsThere) {
  Fields fields = {u"first"};
  findFieldsInLine(u"a,b", fields, u",", {});
  EXPECT_EQ(fields, (Fields{u"first", u"a", u"b"}));
}

TEST(FieldSplitter, AgreesWithTheRuleOnAllSmallTexts) {
  const char16_t kAlphabet[] = {u'a', u'"', u',', u'\u0301'};
  for (std::size_t length = 0; length <= 7; ++length) {
    std::size_t texts = 1;
    for (std::size_t i = 0; i < length; ++i) texts *= std::size(kAlphabet);
    for (std::size_t number = 0; number < texts; ++number) {
      std::u16string line;
      for (std::size_t i = 0, rest = number; i < length; ++i, rest /= std::size(kAlphabet))
        line += kAlphabet[rest % std::size(kAlphabet)];
      const std::u16string_view quote = number % 3 ? u"\"" : u"";
      ASSERT_EQ(split(line, u",", quote), splitByRule(line, u",", quote)) << toUtf8(line);
    }
  }
}

TEST(FieldSplitter, AgreesWithTheRuleOnRandomTexts) {
  RandomSource random;
  const std::u16string kParts[] = {
      u"a",           u"\"", u"\"\"", u",",  u"\t",   u"é",      u"e\u0301",
      u"\u0301",      u"😀",  u"日",   u"\n", u"\r\n", u"\u200D", u"long cell of text ",
      u"👩‍👧", u";",  u"क्ष"};
  const std::u16string kSeparators[] = {u",", u",", u"\t", u"é",    u"e\u0301",
                                        u"😀", u"",  u",,", u"\r\n", u"\""};
  const std::u16string kQuotes[] = {u"", u"\"", u"\"", u"😀", u"é", u"\"\""};
  for (std::uint64_t round = testing::rounds(20'000); round > 0; --round) {
    const std::u16string line = random.text(kParts, random.oneIn(10) ? 200 : 20);
    const auto& separator = random.pick(kSeparators);
    const auto& quote = random.pick(kQuotes);
    ASSERT_EQ(split(line, separator, quote), splitByRule(line, separator, quote))
        << toUtf8(line) << " by " << toUtf8(separator) << " quote " << toUtf8(quote);
  }
}

}  // namespace
}  // namespace quillet
