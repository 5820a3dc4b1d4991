#include "platform/localization.h"

#include <gtest/gtest.h>
#include <limits>

namespace quillet {
namespace {

constexpr std::int64_t kMinimum = std::numeric_limits<std::int64_t>::min();

TEST(Localization, FillsAFormatLeftToRight) {
  struct Case {
    std::u16string_view format;
    std::initializer_list<FormatValue> values;
    std::u16string_view result;
  };
  const Case cases[] = {
      {u"", {}, u""},
      {u"plain", {u"unused"}, u"plain"},
      {u"%@ with \"%@\"", {u"a", u"b"}, u"a with \"b\""},
      {u"%ld of %ld", {std::int64_t{-3}, kMinimum}, u"-3 of -9223372036854775808"},
      {u"%d", {std::int64_t{42}}, u"42"},
      {u"%d", {std::int64_t{0x1'0000'0001}}, u"1"},  // cut to 32 bits
      {u"%d", {std::int64_t{0xFFFF'FFFF}}, u"-1"},
      {u"%ld", {std::int64_t{0xFFFF'FFFF}}, u"4294967295"},
      {u"%@%@", {u"%@", u"x"}, u"%@x"},  // what was filled in is not read again
      {u"[%@]", {FormatValue{}}, u"[]"},
      {u"%@|%@|%ld", {u"a"}, u"a||"},  // without a value
      {u"100%% %@", {u"a"}, u"100% a"},
      {u"%%@", {u"a"}, u"%@"},
      {u"50%", {}, u"50%"},
      {u"%x %l %s", {u"a"}, u"%x %l %s"},
      {u"%@", {std::int64_t{7}}, u"7"},
  };
  for (const Case& one : cases) EXPECT_EQ(formatted(one.format, one.values), one.result);
}

TEST(Localization, GivesTheKeyWithoutATranslator) {
  EXPECT_EQ(localized(u"Trim Line"), u"Trim Line");
  EXPECT_EQ(localizedFormat(u"%@ deleted", {u"one"}), u"one deleted");
}

TEST(Localization, AsksTheTranslatorForTheKeyAndFillsItsAnswer) {
  setTranslator(
      [](std::u16string_view key) { return key == u"%@ deleted" ? std::u16string(u"gone: %@") : u"?"; });
  EXPECT_EQ(localized(u"Trim Line"), u"?");
  EXPECT_EQ(localizedFormat(u"%@ deleted", {u"one"}), u"gone: one");
  setTranslator(nullptr);
  EXPECT_EQ(localized(u"Trim Line"), u"Trim Line");
}

}  // namespace
}  // namespace quillet
