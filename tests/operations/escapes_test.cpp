#include "operations/escapes.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(Escapes, TypedTextBecomesRealText) {
  const std::pair<std::u16string_view, std::u16string_view> cases[] = {
      {u"", u""},
      {u"|", u"|"},
      {u"\\n", u"\n"},
      {u"\\r\\n", u"\r\n"},
      {u"\\t", u"\t"},
      {u"a\\tb\\tc", u"a\tb\tc"},
      {u"\\N\\x\\", u"\\N\\x\\"},  // other letters stay as they are
      {u"\\\\n", u"\\\n"},         // there is no escape for the backslash
      {u"\n", u"\n"},
      {u"\\n\u0303", u"\\n\u0303"},  // not n: a mark stands on it
  };
  for (const auto& [typed, real] : cases) EXPECT_EQ(replaceBackslashedCharacters(typed), real);
}

TEST(Escapes, RealTextBecomesTypedText) {
  const std::pair<std::u16string_view, std::u16string_view> cases[] = {
      {u"", u""},
      {u"|", u"|"},
      {u"\n", u"\\n"},
      {u"\r\n", u"\\r\\n"},
      {u"\t", u"\\t"},
      {u"\\", u"\\"},
      {u"a\tb\nc", u"a\\tb\\nc"},
      {u"\v\f", u"\v\f"},
      {u"\n\n", u"\\n\\n"},
  };
  for (const auto& [real, typed] : cases) EXPECT_EQ(replaceWithBackslashedCharacters(real), typed);
}

TEST(Escapes, WhatIsTypedShowsAgain) {
  for (const std::u16string_view typed : {u"\\n", u"\\r\\n", u"\\t", u",", u"|", u"a\\tb"})
    EXPECT_EQ(replaceWithBackslashedCharacters(replaceBackslashedCharacters(typed)), typed);
}

TEST(Escapes, ABackslashBeforeALetterDoesNotSurviveAsTwoCharacters) {
  EXPECT_EQ(replaceBackslashedCharacters(replaceWithBackslashedCharacters(u"\\n")), u"\n");
}

TEST(Escapes, EveryControlCharacterHasItsPicture) {
  for (char16_t unit = 0; unit < 0x300; ++unit) {
    char16_t expected = unit;
    if (unit < 0x20) expected = static_cast<char16_t>(0x2400 + unit);
    if (unit == 0x09) expected = 0x30FB;
    if (unit == 0x0A) expected = 0x0A;
    if (unit == 0x0B) expected = 0x2409;
    if (unit == 0x7F) expected = 0x2421;
    EXPECT_EQ(stringByReplacingControlCharactersFromString({&unit, 1}, u""), std::u16string(1, expected))
        << int(unit);
  }
}

TEST(Escapes, TheLineSeparatorShowsAsALineFeed) {
  struct Case {
    std::u16string_view text;
    std::u16string_view lineSeparator;
    std::u16string_view shown;
  };
  const Case cases[] = {
      {u"a\tb\r\nc", u"\r\n", u"a\u30FBb\nc"},
      {u"a\r\nc", u"\n", u"a\u240D\nc"},
      {u"a\r\nc", u"\r", u"a\n\nc"},
      {u"a\r\nc", u"", u"a\u240D\nc"},
      {u"a||b|c", u"||", u"a\nb|c"},
      {u"\U0001F44D\x01", u"\n", u"\U0001F44D\u2401"},
      {u"", u"\n", u""},
  };
  for (const Case& one : cases)
    EXPECT_EQ(stringByReplacingControlCharactersFromString(one.text, one.lineSeparator), one.shown);
}

}  // namespace
}  // namespace quillet
