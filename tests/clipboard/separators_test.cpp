#include "clipboard/separators.h"

#include <gtest/gtest.h>
#include <limits>

#include "support/temporary_folder.h"

namespace quillet {
namespace {

using nlohmann::json;
using Text = std::optional<std::u16string>;

class Separators : public ::testing::Test {
 protected:
  testing::TemporaryFolder folder;
  UserDefaults defaults{folder.path("defaults.json")};
};

TEST_F(Separators, AreNamedByANumber) {
  defaults.setValue("Other", "::");
  const struct {
    std::int64_t code;
    Text column, line;
  } cases[] = {
      {1, u"\t", u"\n"}, {2, u"|", u"\r\n"},
      {3, u",", u"\r"},  {4, u"::", u"::"},
      {0, {}, {}},       {5, {}, {}},
      {-1, {}, {}},      {std::numeric_limits<std::int64_t>::max(), {}, {}},
  };
  for (const auto& [code, column, line] : cases) {
    EXPECT_EQ(stringForColumnSeparatorCode(code, "Other", defaults), column) << code;
    EXPECT_EQ(stringForLineSeparatorCode(code, "Other", defaults), line) << code;
  }
}

TEST_F(Separators, TheOtherOneIsTheTextOfItsSetting) {
  const struct {
    json value;
    Text text;
  } cases[] = {
      {nullptr, {}}, {"", u""},    {"ab", u"ab"},          {7, u"7"},
      {1.5, u"1.5"}, {true, u"1"}, {json::array({1}), {}}, {json::object(), {}},
  };
  for (const auto& [value, text] : cases) {
    defaults.setValue("Other", value);
    EXPECT_EQ(stringForColumnSeparatorCode(4, "Other", defaults), text) << value;
    EXPECT_EQ(stringForLineSeparatorCode(4, "Other", defaults), text) << value;
  }
}

TEST_F(Separators, AreThoseOfTheOldSettingsOrWithAnOverrideOfTheNew) {
  defaults.setValues({{"OldColumnSeparator", 2},
                      {"NewColumnSeparator", 3},
                      {"OldLineSeparator", 2},
                      {"NewLineSeparator", 3}});
  EXPECT_EQ(stringForColumnSeparator(false, defaults), u"|");
  EXPECT_EQ(stringForColumnSeparator(true, defaults), u",");
  EXPECT_EQ(stringForLineSeparator(false, defaults), u"\r\n");
  EXPECT_EQ(stringForLineSeparator(true, defaults), u"\r");
  defaults.setValues({{"OldColumnSeparator", 4},
                      {"OldColumnOtherSeparator", "old column"},
                      {"NewColumnSeparator", "4"},  // a number stored as a text
                      {"NewColumnOtherSeparator", "new column"},
                      {"OldLineSeparator", 4},
                      {"OldLineOtherSeparator", "old line"},
                      {"NewLineSeparator", 4},
                      {"NewLineOtherSeparator", "new line"}});
  EXPECT_EQ(stringForColumnSeparator(false, defaults), u"old column");
  EXPECT_EQ(stringForColumnSeparator(true, defaults), u"new column");
  EXPECT_EQ(stringForLineSeparator(false, defaults), u"old line");
  EXPECT_EQ(stringForLineSeparator(true, defaults), u"new line");
}

TEST_F(Separators, AreNoneWithoutSettings) {
  for (const bool overridden : {false, true}) {
    EXPECT_EQ(stringForColumnSeparator(overridden, defaults), std::nullopt);
    EXPECT_EQ(stringForLineSeparator(overridden, defaults), std::nullopt);
  }
}

}  // namespace
}  // namespace quillet
