#include "platform/case_mapping.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include "platform/unicode_text.h"

namespace quillet {
namespace {

struct Row {
  std::u16string text;
  std::u16string lower;
  std::u16string upper;
};

const Row kRows[] = {
    {u"", u"", u""},
    {u"aZ@[`{09", u"az@[`{09", u"AZ@[`{09"},
    {u"\u00DF", u"\u00DF", u"SS"},
    {u"\uFB01x", u"\uFB01x", u"FIX"},
    {u"\u0149", u"\u0149", u"\u02BCN"},
    {u"\u0130", u"i\u0307", u"\u0130"},
    {u"iI\u0131", u"ii\u0131", u"III"},
    {u"\u00B5", u"\u00B5", u"\u039C"},
    {u"\u039F\u03A3", u"\u03BF\u03C2", u"\u039F\u03A3"},  // a final sigma
    {u"\u03A3\u039F", u"\u03C3\u03BF", u"\u03A3\u039F"},
    {u"\u01C5", u"\u01C6", u"\u01C4"},
    {u"\U00010400\U00010428", u"\U00010428\U00010428", u"\U00010400\U00010400"},
    {u"\u6F22\U0001F600", u"\u6F22\U0001F600", u"\u6F22\U0001F600"},
};

TEST(CaseMapping, MappingsAreFullAndWithoutLocale) {
  for (const Row& row : kRows) {
    EXPECT_EQ(lowercaseString(row.text), row.lower) << toUtf8(row.text);
    EXPECT_EQ(uppercaseString(row.text), row.upper) << toUtf8(row.text);
  }
}

TEST(CaseMapping, EnvironmentDoesNotMatter) {
  const icu::Locale before = icu::Locale::getDefault();
  UErrorCode error = U_ZERO_ERROR;
  icu::Locale::setDefault(icu::Locale("tr_TR"), error);
  EXPECT_EQ(uppercaseString(u"i\u00E9"), u"I\u00C9");
  EXPECT_EQ(lowercaseString(u"I\u00C9"), u"i\u00E9");
  icu::Locale::setDefault(before, error);
}

TEST(CaseMapping, TextsGrowAsFarAsNeeded) {
  // U+0390 has three code points in upper case.
  std::u16string expected;
  for (int i = 0; i < 1000; ++i) expected += u"\u0399\u0308\u0301";
  EXPECT_EQ(uppercaseString(std::u16string(1000, u'\u0390')), expected);
}

TEST(CaseMapping, OneCharacterOutsideOfAsciiChangesNothingForTheOthers) {
  for (std::size_t length = 0; length < 70; ++length) {
    const std::u16string ascii(length, u'q');
    EXPECT_EQ(uppercaseString(ascii + u"\u00E9"), std::u16string(length, u'Q') + u"\u00C9");
    EXPECT_EQ(uppercaseString(ascii), std::u16string(length, u'Q'));
  }
}

}  // namespace
}  // namespace quillet
