#include "shell/operation_json.h"

#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

namespace quillet {
namespace {

using nlohmann::json;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();

TEST(OperationJson, ARecordComesBackAsItWas) {
  const OperationRecord records[] = {
      {},
      {{"Code", std::int64_t{101}}, {"Arg1", u"\n"}, {"Arg2", u""}},
      {{"Code", u"202"}, {"IntArg1", kLargest}, {"IntArg2", kSmallest}},
      {{"Arg1", u"é\U0001F600\u0001"}, {"Unknown", std::int64_t{-1}}},
  };
  for (const auto& record : records) {
    const json printed = json::parse(jsonFromOperation(record).dump());
    EXPECT_EQ(operationFromJson(printed), record) << printed;
  }
}

TEST(OperationJson, ValuesOfOtherKindsAreReadAsIntegers) {
  const struct {
    const char* value;
    std::int64_t integer;
  } cases[] = {{"true", 1},
               {"false", 0},
               {"2.9", 2},
               {"-2.9", -2},
               {"1e300", kLargest},
               {"-1e300", kSmallest},
               {"9223372036854775808", kLargest},
               {"18446744073709551615", kLargest}};
  for (const auto& [value, integer] : cases) {
    const auto record = operationFromJson({{"IntArg1", json::parse(value)}});
    ASSERT_TRUE(record) << value;
    EXPECT_EQ(record->integer("IntArg1", 7), integer) << value;
  }
}

TEST(OperationJson, ANullIsAnAbsentKey) {
  const auto record = operationFromJson({{"Arg1", nullptr}});
  ASSERT_TRUE(record);
  EXPECT_FALSE(record->has("Arg1"));
}

TEST(OperationJson, OtherValuesMakeNoRecord) {
  for (const char* text : {"[]", "3", "\"text\"", "null", "{\"Arg1\":[]}", "{\"Arg1\":{}}"})
    EXPECT_FALSE(operationFromJson(json::parse(text))) << text;
}

TEST(OperationJson, TheReadablePartLeavesOtherValuesOut) {
  const struct {
    const char* text;
    OperationRecord record;
  } cases[] = {
      {R"({"Code": 102, "Arg1": "x"})", {{"Code", 102}, {"Arg1", u"x"}}},
      {R"({"Code": true, "Arg1": [], "Arg2": {"a": 1}, "Arg3": null, "IntArg1": 2.5})",
       {{"Code", 1}, {"IntArg1", 2}}},
      {"{}", {}},
      {"[]", {}},
      {"3", {}},
      {"\"text\"", {}},
      {"null", {}},
  };
  for (const auto& [text, record] : cases)
    EXPECT_EQ(readablePartOfOperation(json::parse(text)), record) << text;
}

TEST(OperationJson, OneBadRecordMakesNoList) {
  EXPECT_TRUE(operationsFromJson(json::parse("[]")));
  EXPECT_EQ(operationsFromJson(json::parse("[{\"Code\":101},{\"Code\":901}]"))->size(), 2u);
  for (const char* text : {"{}", "null", "[{\"Code\":101},3]"})
    EXPECT_FALSE(operationsFromJson(json::parse(text))) << text;
}

}  // namespace
}  // namespace quillet
