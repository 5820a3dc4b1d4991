#include "platform/regular_expression.h"

#include <gtest/gtest.h>
#include <string>

namespace quillet {
namespace {

constexpr auto kSensitive = CaseSensitivity::Sensitive;
constexpr auto kInsensitive = CaseSensitivity::Insensitive;

std::optional<std::u16string> replaced(std::u16string_view pattern, std::u16string_view text,
                                       std::u16string_view templateText,
                                       CaseSensitivity caseSensitivity = kSensitive) {
  auto expression = RegularExpression::compiled(pattern, caseSensitivity);
  if (!expression) return std::nullopt;
  std::u16string out;
  if (expression->appendReplacingMatches(text, templateText, out) == 0) {
    EXPECT_EQ(out, u"") << "nothing is appended without a match";
    EXPECT_FALSE(expression->hasMatch(text));
    return std::u16string(text);
  }
  EXPECT_TRUE(expression->hasMatch(text));
  return out;
}

TEST(RegularExpression, APatternThatDoesNotCompileGivesNone) {
  for (std::u16string_view pattern : {u"", u"[", u"(a", u"a{,3}", u"*", u"a)", u"\\"}) {
    EXPECT_FALSE(RegularExpression::compiled(pattern, kSensitive));
    EXPECT_FALSE(RegularExpression::compiled(pattern, kInsensitive));
  }
}

struct Case {
  std::u16string_view pattern, text, templateText, result;
};

const Case kMatching[] = {
    {u"x*", u"axb", u"-", u"-a--b-"},  // empty matches count
    {u"x*", u"", u"-", u"-"},
    {u"$", u"abc\n", u"!", u"abc!\n!"},  // also in front of a final line end
    {u"$", u"abc\r\n", u"!", u"abc!\r\n!"},
    {u"$", u"a\nb", u"!", u"a\nb!"},
    {u"^", u"a\nb", u"!", u"!a\nb"},  // the ends of the whole text, not of its lines
    {u"^b", u"a\nb", u"!", u"a\nb"},
    {u".", u"a\n\r\u0085\u2028\u2029b", u"!", u"!\n\r\u0085\u2028\u2029!"},
    {u"\\d", u"1\u0663", u"!", u"!!"},  // digits of any script
    {u"\\w", u"a\u00e9-", u"!", u"!!-"},
    {u"\u00e9", u"e\u0301", u"!", u"e\u0301"},  // no canonical equivalence
    {u".", u"\U0001F600", u"!", u"!"},          // a pair is one character
    {u"[^0-9]", u"1\U0001F600a", u"!", u"1!!"},
    {u"a|ab", u"ab", u"!", u"!b"},
    {u"(a+)(b)?", u"aab", u"$2$1", u"baa"},
};

TEST(RegularExpression, MatchesAsTheEngineOfUnicode) {
  for (const Case& c : kMatching) {
    SCOPED_TRACE(std::u16string(c.pattern).size());
    EXPECT_EQ(replaced(c.pattern, c.text, c.templateText), c.result);
  }
}

TEST(RegularExpression, CaseIsIgnoredByFullFolding) {
  EXPECT_EQ(replaced(u"ss", u"Stra\u00dfe", u"!", kInsensitive), u"Stra!e");
  EXPECT_EQ(replaced(u"ss", u"Stra\u00dfe", u"!", kSensitive), u"Stra\u00dfe");
  EXPECT_EQ(replaced(u"k", u"kK\u212a", u"!", kInsensitive), u"!!!");
  EXPECT_EQ(replaced(u"[a-z]+", u"aB1", u"!", kInsensitive), u"!1");
  EXPECT_EQ(replaced(u"[a-z]+", u"aB1", u"!", kSensitive), u"!B1");
}

const Case kTemplates[] = {
    {u"(a)(x)?", u"a", u"<$0>", u"<a>"},
    {u"a", u"a", u"<$0$1>", u"<a>"},  // without groups one digit is read
    {u"a", u"a", u"<$00>", u"<a0>"},
    {u"(a)(x)?", u"a", u"<$2>", u"<>"},  // took no part
    {u"(a)", u"a", u"<$9>", u"<>"},      // does not exist
    {u"(a)", u"a", u"$12", u"a2"},       // one digit is read with one group
    {u"(a)(b)(c)(d)(e)(f)(g)(h)(i)", u"abcdefghi", u"$12", u"a2"},
    {u"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)", u"abcdefghij", u"<$11>", u"<>"},  // two digits with ten groups
    {u"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)", u"abcdefghij", u"$10$01$1x", u"jaax"},
    {u"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)", u"abcdefghij", u"$101", u"j1"},
    {u"(a)", u"a", u"$", u"$"},
    {u"(a)", u"a", u"[$x]$$1", u"[$x]$a"},
    {u"(a)", u"a", u"${1}", u"${1}"},
    {u"(a)", u"a", u"\\n\\u0041\\\\\\$1", u"nu0041\\$1"},
    {u"(a)", u"a", u"x\\", u"x"},                // a trailing backslash is dropped
    {u"(..)", u"$1\\n", u"<$1>", u"<$1><\\n>"},  // inserted text is not scanned again
    {u"(a)", u"a", u"$\uff11", u"$\uff11"},      // only 0 to 9 are digits
    {u"(a)(?<name>b)", u"ab", u"${name}", u"${name}"},
    {u"b", u"abcb", u"", u"ac"},
};

TEST(RegularExpression, TemplateInsertsGroups) {
  for (const Case& c : kTemplates) {
    SCOPED_TRACE(::testing::PrintToString(std::u16string(c.templateText)));
    EXPECT_EQ(replaced(c.pattern, c.text, c.templateText), c.result);
  }
}

TEST(RegularExpression, OneObjectServesManyTextsAndTemplates) {
  auto expression = RegularExpression::compiled(u"(b+)", kSensitive);
  ASSERT_TRUE(expression);
  std::u16string out;
  EXPECT_EQ(expression->appendReplacingMatches(u"abbc", u"<$1>", out), 1u);
  EXPECT_EQ(expression->appendReplacingMatches(u"xyz", u"<$1>", out), 0u);
  EXPECT_EQ(expression->appendReplacingMatches(u"bab", u"$1$1", out), 2u);
  EXPECT_FALSE(expression->hasMatch(u""));
  EXPECT_FALSE(expression->hasMatch({}));
  EXPECT_EQ(out, u"a<bb>cbbabb");
}

TEST(RegularExpression, MatchesBeforeAnEndlessOneStand) {
  const std::u16string text = u"abb " + std::u16string(60, u'a') + u"c abb";
  EXPECT_EQ(replaced(u"(?:a+)+b", text, u"!"), u"!" + text.substr(2));
}

TEST(RegularExpression, MatchesBeforeOneOutOfMemoryStand) {
  const std::u16string tail(400000, u'a');
  EXPECT_TRUE(replaced(u"c(a|b)*", u"ca-c" + tail, u"!") == u"!-c" + tail);
  EXPECT_TRUE(replaced(u"c(a|b)*", u"c" + tail.substr(0, 16383), u"!") == u"!");
}

}  // namespace
}  // namespace quillet
