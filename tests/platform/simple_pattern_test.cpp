#include "platform/simple_pattern.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <unicode/uregex.h>
#include <vector>

#include "support/random_source.h"

namespace quillet {
namespace {

using testing::RandomSource;

using Ranges = std::vector<std::pair<std::size_t, std::size_t>>;  // of every group of every match

std::string shown(std::u16string_view text) {
  return ::testing::PrintToString(std::u16string(text));
}

// What ICU finds, or nothing if it refuses the pattern.
std::optional<Ranges> rangesOfIcu(const std::u16string& pattern, CaseSensitivity caseSensitivity,
                                  const std::u16string& text, int& groupCount) {
  UErrorCode error = U_ZERO_ERROR;
  const std::unique_ptr<URegularExpression, decltype(&uregex_close)> expression(
      uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()),
                  caseSensitivity == CaseSensitivity::Insensitive ? UREGEX_CASE_INSENSITIVE : 0, nullptr,
                  &error),
      uregex_close);
  if (U_FAILURE(error)) return std::nullopt;
  groupCount = uregex_groupCount(expression.get(), &error);
  uregex_setText(expression.get(), text.data(), static_cast<std::int32_t>(text.size()), &error);
  Ranges ranges;
  while (uregex_findNext(expression.get(), &error))
    for (int group = 0; group <= groupCount; ++group)
      ranges.emplace_back(uregex_start(expression.get(), group, &error),
                          uregex_end(expression.get(), group, &error));
  return ranges;
}

Ranges rangesOfSimplePattern(SimplePattern& pattern, std::u16string_view text) {
  Ranges ranges;
  for (std::size_t start = 0; start <= text.size() && pattern.find(text, start);) {
    for (int group = 0; group <= pattern.groupCount(); ++group)
      ranges.emplace_back(pattern.groupStart(group), pattern.groupEnd(group));
    start = pattern.groupEnd(0) + (pattern.groupEnd(0) == pattern.groupStart(0) ? 1 : 0);
  }
  return ranges;
}

// The text with every match replaced by "<", group 0, "|", the last group, ">".
std::u16string replacedByRanges(const Ranges& ranges, int groupCount, std::u16string_view text) {
  std::u16string out;
  std::size_t copied = 0;
  for (std::size_t i = 0; i < ranges.size(); i += groupCount + 1) {
    const auto [start, end] = ranges[i];
    const auto [lastStart, lastEnd] = ranges[i + groupCount];
    out += text.substr(copied, start - copied);
    out += u"<";
    out += text.substr(start, end - start);
    out += u"|";
    out += text.substr(lastStart, lastEnd - lastStart);
    out += u">";
    copied = end;
  }
  return out + std::u16string(text.substr(copied));
}

struct Served {
  std::size_t patterns = 0, texts = 0, matches = 0;
};

void compareWithIcu(const std::u16string& pattern, CaseSensitivity caseSensitivity,
                    const std::vector<std::u16string>& texts, Served& served) {
  auto simple = SimplePattern::recognised(pattern, caseSensitivity);
  if (!simple) return;
  ++served.patterns;
  auto expression = RegularExpression::compiled(pattern, caseSensitivity);
  for (const auto& text : texts) {
    SCOPED_TRACE(shown(pattern) + " on " + shown(text) +
                 (caseSensitivity == CaseSensitivity::Sensitive ? "" : " ignoring case"));
    int groupCount = 0;
    const auto expected = rangesOfIcu(pattern, caseSensitivity, text, groupCount);
    ASSERT_TRUE(expected) << "ICU refuses this pattern";
    ASSERT_TRUE(expression);
    ASSERT_EQ(simple->groupCount(), groupCount);
    if (simple->serves(text)) {
      ++served.texts;
      served.matches += !expected->empty();
      ASSERT_EQ(rangesOfSimplePattern(*simple, text), *expected);
    }
    const std::u16string templateText = std::u16string(u"<$0|$") + u"0123456789"[groupCount % 10] + u">";
    std::u16string out;
    const std::size_t matches = expression->appendReplacingMatches(text, templateText, out);
    ASSERT_EQ(matches, expected->size() / (groupCount + 1));
    ASSERT_EQ(expression->hasMatch(text), matches > 0);
    if (matches > 0 && groupCount < 10) {
      ASSERT_EQ(out, replacedByRanges(*expected, groupCount, text));
    }
  }
}

const std::vector<std::u16string_view> kTextParts = {
    u"a",      u"b",  u"A",          u"B",      u"z",      u"0",      u"1",      u"9",      u" ",      u"-",
    u"(",      u")",  u".",          u",",      u"_",      u"\n",     u"\r",     u"\t",     u"a",      u"b",
    u"1",      u"ab", u"12",         u"\u0085", u"\u2028", u"\u00e9", u"\u212a", u"\u017f", u"k",      u"s",
    u"\u00df", u"\v", u"\U0001F600", u"^",      u"]",      u"[",      u"\\",     u"'",      u"\u0130", u"i"};

const std::vector<std::u16string_view> kPlainTextParts = {u"a", u"b", u"1", u"2", u"-", u"A", u" ", u"k"};

std::vector<std::u16string> randomTexts(RandomSource& random) {
  std::vector<std::u16string> texts = {u"", u"\n", u"\r\n", u"a\r\n", u"ab1\n"};
  for (int i = 0; i < 4; ++i) texts.push_back(random.text(kTextParts, 12));
  for (int i = 0; i < 6; ++i) texts.push_back(random.text(kPlainTextParts, 14));
  return texts;
}

std::u16string randomSimplePattern(RandomSource& random) {
  static const std::vector<std::u16string_view> kAtoms = {u"a",        u"b",
                                                          u"1",        u"-",
                                                          u" ",        u"k",
                                                          u"s",        u"i",
                                                          u"\\.",      u"\\(",
                                                          u"\\)",      u"\\-",
                                                          u"\\[",      u"\\\\",
                                                          u"/",        u"'",
                                                          u"_",        u"[ab]",
                                                          u"[a-z]",    u"[^a-z]",
                                                          u"[0-9]",    u"[^0-9]",
                                                          u"[^0-9.-]", u"[A-Za-z0-9_]",
                                                          u"[ \\-a]",  u"[\\]a]",
                                                          u"[k-s]",    u"[^ab\\[]",
                                                          u"\\d",      u"\\w",
                                                          u"\\s",      u"[\\d.]",
                                                          u"[^\\s]",   u"[^\\w ]",
                                                          u".",        u"[.()*+?|]",
                                                          u"['a']",    u"[-]",
                                                          u"[1-]",     u"[,;/_%@!\"=<>~`]",
                                                          u"[\\d-]",   u"\\'",
                                                          u"\\\"",     u"\\#",
                                                          u"[^\\^]",   u"[a\\-z]",
                                                          u"[~]",      u"\\<",
                                                          u"\\>",      u"\\`",
                                                          u"\\@",      u"\\%",
                                                          u"\\_",      u"[\\<\\>\\'\\`\\&]",
                                                          u"\\&",      u"\\:",
                                                          u"\\{",      u"\\}",
                                                          u"\\~",      u"\\=",
                                                          u"\\!"};
  static const std::vector<std::u16string_view> kQuantifiers = {
      u"", u"", u"", u"+", u"*", u"?", u"{2}", u"{1,2}", u"{0,3}", u"{2,}", u"{1}", u"{0,}", u"{01,12}"};
  std::u16string pattern = random.oneIn(4) ? u"^" : u"";
  int open = 0;
  for (std::size_t left = 1 + random.below(5); left > 0; --left) {
    for (; random.oneIn(4); ++open) pattern += u'(';
    pattern += random.pick(kAtoms);
    pattern += random.pick(kQuantifiers);
    for (; open > 0 && random.oneIn(2); --open) pattern += u')';
  }
  pattern.append(open, u')');
  if (random.oneIn(4)) pattern += u'$';
  return pattern;
}

TEST(SimplePattern, FindsWhatIcuFinds) {
  RandomSource random(71);
  Served served;
  const std::uint64_t count = testing::rounds(1500);
  for (std::uint64_t round = 0; round < count && !HasFatalFailure(); ++round) {
    const auto pattern = randomSimplePattern(random);
    const auto texts = randomTexts(random);
    compareWithIcu(pattern, CaseSensitivity::Sensitive, texts, served);
    compareWithIcu(pattern, CaseSensitivity::Insensitive, texts, served);
  }
  EXPECT_GT(served.patterns, count) << "the test is of little worth";
  EXPECT_GT(served.texts, count * 7);
  EXPECT_GT(served.matches, count * 2);
}

// Whatever the recogniser takes for simple has to be it.
TEST(SimplePattern, TakesNoPatternThatIcuUnderstandsOtherwise) {
  static const std::vector<std::u16string_view> kParts = {
      u"a",   u"b",     u"z",   u"1",     u"9",         u" ",      u"[",   u"[",   u"]",     u"]",
      u"[^",  u"-",     u"^",   u"$",     u"(",         u")",      u"(?:", u"{",   u"}",     u",",
      u"{2}", u"{1,2}", u"{0}", u"{2,1}", u"*",         u"+",      u"?",   u"|",   u".",     u"\\",
      u"\\d", u"\\w",   u"\\s", u"\\b",   u"\\Q",       u"\\E",    u"\\n", u"\\t", u"\\x41", u"\\D",
      u"&&",  u"--",    u"&",   u":",     u"[:alpha:]", u"\\p{L}", u"#",   u"'",   u"~",     u"a-z",
      u"0-9", u"(?i)",  u"\\1", u"\t",    u"\n",        u"\u00e9", u"!",   u"=",   u"<",     u"/"};
  RandomSource random(72);
  Served served;
  const std::uint64_t count = testing::rounds(60000);
  for (std::uint64_t round = 0; round < count && !HasFatalFailure(); ++round) {
    const auto pattern = random.text(kParts, 7);
    const auto caseSensitivity = random.oneIn(2) ? CaseSensitivity::Sensitive : CaseSensitivity::Insensitive;
    compareWithIcu(pattern, caseSensitivity,
                   {u"", random.text(kTextParts, 10), random.text(kPlainTextParts, 10)}, served);
  }
  EXPECT_GT(served.patterns, count / 50);
}

// All short patterns over the characters that mean something.
TEST(SimplePattern, TakesNoShortPatternThatIcuUnderstandsOtherwise) {
  const std::u16string_view alphabet = u"a[]^-\\()*?+{}1,$.&:' ";
  const std::vector<std::u16string> texts = {u"", u"a", u"aa1-^", u"]a\n", u"'a'-1", u"&:\\"};
  Served served;
  std::vector<std::u16string> patterns = {u""};
  for (std::size_t i = 0; i < patterns.size() && !HasFatalFailure(); ++i) {
    const std::u16string pattern = patterns[i];
    compareWithIcu(pattern, CaseSensitivity::Sensitive, texts, served);
    if (pattern.size() < (testing::rounds(1) > 1 ? 5u : 3u))
      for (char16_t unit : alphabet) patterns.push_back(pattern + unit);
  }
  EXPECT_GT(served.matches, 100u);
}

TEST(SimplePattern, RecognisesWhatIsPlainOnly) {
  const std::u16string_view plain[] = {u"[^0-9]+",   u"^\\(([0-9]{3})\\) ([0-9]{3})-([0-9]{4})$",
                                       u"abc",       u"^$",
                                       u"a{2,}b?$",  u"(a(b))",
                                       u"\\d+-\\d+", u"^.*$"};
  const std::u16string_view other[] = {
      u"a|b",    u"(a)+", u"(?:a)", u"a+?",     u"a++",   u"\\bfoo", u"\\p{L}",     u"[[:alpha:]]", u"[a&&b]",
      u"[a--b]", u"a^b",  u"a$b",   u"\\Qa\\E", u"(?i)a", u"\u00e9", u"[a-\u00ff]", u"()",          u"a{0}",
      u"",       u"[]a]", u"[a",    u"a)",      u"(a",    u"\\1",    u"[:alpha:]"};
  for (auto pattern : plain)
    EXPECT_TRUE(SimplePattern::recognised(pattern, CaseSensitivity::Sensitive)) << shown(pattern);
  for (auto pattern : other)
    EXPECT_FALSE(SimplePattern::recognised(pattern, CaseSensitivity::Sensitive)) << shown(pattern);
  EXPECT_TRUE(SimplePattern::recognised(u"[^0-9]+", CaseSensitivity::Insensitive));
  EXPECT_TRUE(SimplePattern::recognised(u"[a-f]+", CaseSensitivity::Insensitive));
  EXPECT_FALSE(SimplePattern::recognised(u"[^a-f]+", CaseSensitivity::Insensitive));
}

TEST(SimplePattern, LeavesTextsToIcu) {
  auto digits = SimplePattern::recognised(u"[^0-9]+", CaseSensitivity::Sensitive);
  ASSERT_TRUE(digits);
  EXPECT_TRUE(digits->serves(u"\u00e9\u3042"));
  EXPECT_FALSE(digits->serves(u"\U0001F600"));
  EXPECT_TRUE(digits->serves(std::u16string(1000000, u'x')));
  EXPECT_FALSE(digits->serves(std::u16string(1000001, u'x')));
  auto letters = SimplePattern::recognised(u"[a-z]+", CaseSensitivity::Insensitive);
  ASSERT_TRUE(letters);
  EXPECT_TRUE(letters->serves(u"Kelvin"));
  EXPECT_FALSE(letters->serves(u"\u212aelvin"));
  auto quadratic = SimplePattern::recognised(u"a+b", CaseSensitivity::Sensitive);
  ASSERT_TRUE(quadratic);
  EXPECT_TRUE(quadratic->serves(std::u16string(900, u'a')));
  EXPECT_FALSE(quadratic->serves(std::u16string(1100, u'a')));
}

}  // namespace
}  // namespace quillet
