#include "platform/unicode_text.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include "support/random_source.h"

namespace quillet {
namespace {

using namespace std::string_literals;

struct RoundTrip {
  std::u16string text;
  std::string utf8;
};

const RoundTrip kRoundTrips[] = {
    {u""s, ""s},
    {u"a\0b"s, "a\0b"s},
    {u"\u007F\u0080\u07FF\u0800"s, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80"s},
    {u"\uD7FF\uE000\uFEFF\uFFFF"s, "\xED\x9F\xBF\xEE\x80\x80\xEF\xBB\xBF\xEF\xBF\xBF"s},
    {u"\U00010000\U0001F600\U0010FFFF"s, "\xF0\x90\x80\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF"s},
};

TEST(UnicodeText, WellFormedTextGoesRoundTrip) {
  for (const RoundTrip& row : kRoundTrips) {
    EXPECT_EQ(toUtf8(row.text), row.utf8);
    EXPECT_EQ(toUtf16(row.utf8), row.text) << row.utf8;
  }
}

struct IllFormed {
  std::string utf8;
  std::u16string text;
};

const IllFormed kIllFormed[] = {
    {"\x80", u"\uFFFD"},                                // a trail byte alone
    {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // overlong
    {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},            // overlong
    {"\xF0\x8F\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // overlong
    {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
    {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above U+10FFFF
    {"\xF5\xFE\xFF", u"\uFFFD\uFFFD\uFFFD"},
    {"\xC3", u"\uFFFD"},      // cut short
    {"\xE2\x82", u"\uFFFD"},  // cut short: one maximal part
    {"\xF0\x9F\x98", u"\uFFFD"},
    {"\xE2\x82z", u"\uFFFDz"},
    {"\xF0\x9F\xC3\xA9", u"\uFFFD\u00E9"},
};

TEST(UnicodeText, IllFormedUtf8BecomesOneReplacementForEachMaximalPart) {
  for (const IllFormed& row : kIllFormed) EXPECT_EQ(toUtf16(row.utf8), row.text) << row.utf8;
}

TEST(UnicodeText, LoneSurrogateBecomesReplacement) {
  const char16_t high = 0xD83D;
  const char16_t low = 0xDE00;
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(toUtf8(std::u16string{high}), replacement);
  EXPECT_EQ(toUtf8(std::u16string{low}), replacement);
  EXPECT_EQ(toUtf8(std::u16string{low, high, u'a'}), replacement + replacement + "a");
  EXPECT_EQ(toUtf8(std::u16string{high, high, low}), replacement + "\xF0\x9F\x98\x80");
}

TEST(UnicodeText, AppendKeepsWhatIsThere) {
  std::string bytes = "a";
  appendUtf8(u"\u00E9", bytes);
  EXPECT_EQ(bytes, "a\xC3\xA9");
  std::u16string text = u"a";
  appendCodePoint(0xE9, text);
  appendCodePoint(0x1F600, text);
  appendCodePoint(0xFFFF, text);
  EXPECT_EQ(text, u"a\u00E9\U0001F600\uFFFF");
}

TEST(UnicodeText, CodePointAtJoinsPairsOnly) {
  const std::u16string text = {0xD83D, 0xDE00, 0xDE00, 0xD83D};
  EXPECT_EQ(codePointAt(text, 0), char32_t{0x1F600});
  EXPECT_EQ(codePointAt(text, 1), char32_t{0xDE00});
  EXPECT_EQ(codePointAt(text, 3), char32_t{0xD83D});
  EXPECT_EQ(unitsOfCodePoint(0xFFFF), 1u);
  EXPECT_EQ(unitsOfCodePoint(0x10000), 2u);
}

TEST(UnicodeText, RandomBytesDecodeAsIcuDoes) {
  testing::RandomSource random;
  const unsigned char bytes[] = {'a',  0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC1, 0xC2,
                                 0xDF, 0xE0, 0xE2, 0xED, 0xEF, 0xF0, 0xF3, 0xF4, 0xF5, 0xFF};
  for (std::uint64_t round = testing::rounds(20000); round > 0; --round) {
    std::string utf8;
    for (std::size_t i = random.below(8); i > 0; --i) utf8.push_back(static_cast<char>(random.pick(bytes)));
    const icu::UnicodeString expected = icu::UnicodeString::fromUTF8(utf8);
    ASSERT_EQ(toUtf16(utf8),
              std::u16string(expected.getBuffer(), static_cast<std::size_t>(expected.length())));
  }
}

}  // namespace
}  // namespace quillet
