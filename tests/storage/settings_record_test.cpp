#include "storage/settings_record.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

using Value = SettingsRecord::Value;

TEST(SettingsRecord, ReadsEveryKindAsEveryOther) {
  const struct {
    Value value;
    std::int64_t integer;
    bool boolean;
    const char* text;
  } cases[] = {
      {std::int64_t{-7}, -7, true, "-7"},
      {std::int64_t{0}, 0, false, "0"},
      {true, 1, true, "1"},
      {false, 0, false, "0"},
      {std::string("12 jobs"), 12, true, "12 jobs"},
      {std::string(" -3"), -3, true, " -3"},
      {std::string("0"), 0, false, "0"},
      {std::string(), 0, false, ""},
      {std::string("\xff"), 0, false, "\xff"},
      {std::string("9223372036854775808"), INT64_MAX, true, "9223372036854775808"},
  };
  for (const auto& row : cases) {
    SettingsRecord record;
    record.set("key", row.value);
    EXPECT_EQ(record.integer("key", 5), row.integer) << row.text;
    EXPECT_EQ(record.boolean("key"), row.boolean) << row.text;
    EXPECT_EQ(record.text("key"), row.text);
  }
}

TEST(SettingsRecord, AnAbsentKeyReadsAsNothing) {
  const SettingsRecord record;
  EXPECT_FALSE(record.has("key"));
  EXPECT_EQ(record.integer("key", 5), 5);
  EXPECT_FALSE(record.boolean("key"));
  EXPECT_EQ(record.text("key"), "");
}

TEST(SettingsRecord, IsEmptyWithoutValuesAndColumns) {
  SettingsRecord record;
  EXPECT_TRUE(record.isEmpty());
  record.setColumns({});
  EXPECT_FALSE(record.isEmpty());
  ASSERT_TRUE(record.columns());
  EXPECT_TRUE(record.columns()->empty());

  SettingsRecord other;
  other.set("key", false);
  EXPECT_FALSE(other.isEmpty());
  EXPECT_FALSE(other.columns());
}

TEST(SettingsRecord, ALaterValueReplacesAnEarlierOne) {
  SettingsRecord record;
  record.set("key", std::int64_t{1});
  record.set("key", std::string("two"));
  EXPECT_EQ(record.text("key"), "two");
  EXPECT_EQ(record.values().size(), 1u);
}

}  // namespace
}  // namespace quillet
