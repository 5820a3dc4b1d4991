#include "operations/text_replace.h"

#include <gtest/gtest.h>

#include "platform/unicode_text.h"

namespace quillet {
namespace {

constexpr auto kSensitive = CaseSensitivity::Sensitive;
constexpr auto kInsensitive = CaseSensitivity::Insensitive;
constexpr std::int64_t kString = 0, kExpression = 1;

struct Case {
  const char* why;
  std::int64_t type;
  CaseSensitivity sensitivity;
  std::u16string what, with, text, result;
};

TEST(TextReplacer, ReplacesAllOccurrences) {
  const Case kCases[] = {
      {"each", kString, kSensitive, u"a", u"x", u"banana", u"bxnxnx"},
      {"by nothing", kString, kSensitive, u"an", u"", u"banana", u"ba"},
      {"not what was put in", kString, kSensitive, u"a", u"aa", u"aba", u"aabaa"},
      {"not overlapping", kString, kSensitive, u"aa", u"x", u"aaa", u"xa"},
      {"case counts", kString, kSensitive, u"A", u"x", u"aA", u"ax"},
      {"case does not count", kString, kInsensitive, u"A", u"x", u"aA", u"xx"},
      {"by full folding", kString, kInsensitive, u"ss", u"x", u"Straße", u"Straxe"},
      {"by equivalence", kString, kSensitive, u"\u00E9", u"e", u"cafe\u0301", u"cafe"},
      {"a mark hides its base", kString, kSensitive, u"e", u"x", u"e\u0301e", u"e\u0301x"},
      {"a line feed behind its return", kString, kSensitive, u"\n", u"|", u"a\r\nb", u"a\r|b"},
      {"a dollar is a dollar", kString, kSensitive, u"a", u"$1\\n", u"a", u"$1\\n"},
      {"all that there is", kString, kSensitive, u"ab", u"", u"ab", u""},
      {"nothing to replace", kString, kSensitive, u"", u"x", u"ab", u"ab"},
      {"an empty text", kString, kSensitive, u"a", u"x", u"", u""},
      {"matches", kExpression, kSensitive, u"[ab]+", u"<$0>", u"abXba", u"<ab>X<ba>"},
      {"groups", kExpression, kSensitive, u"(a)(b)", u"$2$1", u"abXab", u"baXba"},
      {"a group that took no part", kExpression, kSensitive, u"(a)|(b)", u"[$1$2]", u"ab", u"[a][b]"},
      {"a group that is not there", kExpression, kSensitive, u"(a)", u"<$9>", u"a", u"<>"},
      {"a digit behind the group", kExpression, kSensitive, u"(a)", u"$12", u"a", u"a2"},
      {"an escape", kExpression, kSensitive, u"a", u"\\$1\\\\", u"a", u"$1\\"},
      {"case counts", kExpression, kSensitive, u"A", u"x", u"aA", u"ax"},
      {"case does not count", kExpression, kInsensitive, u"A", u"x", u"aA", u"xx"},
      {"empty matches", kExpression, kSensitive, u"x*", u"-", u"axb", u"-a--b-"},
      {"anchors", kExpression, kSensitive, u"^|$", u"|", u"ab", u"|ab|"},
      {"no equivalence", kExpression, kSensitive, u"\u00E9", u"x", u"e\u0301", u"e\u0301"},
      {"what does not compile", kExpression, kSensitive, u"(", u"x", u"a(b", u"a(b"},
      {"an empty expression", kExpression, kSensitive, u"", u"x", u"ab", u"ab"},
      {"an empty text", kExpression, kSensitive, u"^", u"x", u"", u"x"},
      {"an unknown type", 2, kSensitive, u"a", u"x", u"a", u"a"},
      {"another", -1, kSensitive, u"a", u"x", u"a", u"a"},
  };
  for (const auto& [why, type, sensitivity, what, with, text, result] : kCases) {
    TextArena arena;
    TextReplacer replacer(type, sensitivity, what, with);
    EXPECT_EQ(replacer.replaced(text, arena), result)
        << why << ": " << toUtf8(what) << " of " << toUtf8(text);
  }
}

TEST(TextReplacer, LeavesATextWithoutAHitWhereItIs) {
  TextArena arena;
  const std::u16string text = u"abc";
  for (const std::int64_t type : {kString, kExpression})
    EXPECT_EQ(TextReplacer(type, kSensitive, u"x", u"y").replaced(text, arena).data(), text.data());
}

TEST(TextReplacer, ServesManyTexts) {
  TextArena arena;
  TextReplacer replacer(kString, kSensitive, u"a", u"bb");
  const auto first = replacer.replaced(u"a", arena);
  const auto second = replacer.replaced(u"xax", arena);
  EXPECT_EQ(first, u"bb");
  EXPECT_EQ(second, u"xbbx");
}

}  // namespace
}  // namespace quillet
