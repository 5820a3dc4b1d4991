#include "shell/clipboard/last_panels.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/temporary_folder.h"

namespace quillet {
namespace {

using nlohmann::json;

constexpr const char* kLastKey = "ClipboardDataLastKey";

class LastPanelsTest : public ::testing::Test {
 protected:
  std::string path() const { return folder_.path("defaults.json"); }

  testing::TemporaryFolder folder_;
  UserDefaults defaults_{path()};
};

TEST_F(LastPanelsTest, AtFirstThereIsNone) {
  EXPECT_EQ(lastDictionary(defaults_, "ClipboardDataSplitKey"), OperationRecord());
}

TEST_F(LastPanelsTest, EachPanelHasItsOwnAndTheLastOneCounts) {
  const OperationRecord split = {{"Code", 102}, {"IntArg1", 32}, {"Arg1", u"\n"}, {"Arg2", u""}};
  const OperationRecord fill = {{"Code", 314}, {"Arg1", u"é\U0001F600"}};
  const OperationRecord later = {{"Code", 314}, {"Arg2", u"Lines: 1"}};
  storeLastDictionaryToDefaults(defaults_, split, "ClipboardDataSplitKey");
  storeLastDictionaryToDefaults(defaults_, fill, "ClipboardDataFillKey");
  EXPECT_EQ(lastDictionary(defaults_, "ClipboardDataSplitKey"), split);
  EXPECT_EQ(lastDictionary(defaults_, "ClipboardDataFillKey"), fill);
  storeLastDictionaryToDefaults(defaults_, later, "ClipboardDataFillKey");
  EXPECT_EQ(lastDictionary(defaults_, "ClipboardDataFillKey"), later) << "nothing of the earlier one is left";
  EXPECT_EQ(lastDictionary(defaults_, "ClipboardDataSplitKey"), split);
  EXPECT_EQ(lastDictionary(UserDefaults(path()), "ClipboardDataSplitKey"), split) << "in the next run";
}

TEST_F(LastPanelsTest, OtherKindsReadAsNothing) {
  for (const char* text : {"3", "true", "\"text\"", "[]", "[{\"a\": 1}]", "{}", "{\"a\": null}", "{\"a\": 3}",
                           "{\"a\": \"text\"}", "{\"a\": [1]}", "{\"a\": {\"Code\": [1]}}",
                           "{\"a\": {\"Code\": {}, \"Arg1\": null}}"}) {
    defaults_.setValue(kLastKey, json::parse(text));
    EXPECT_EQ(lastDictionary(defaults_, "a"), OperationRecord()) << text;
  }
}

TEST_F(LastPanelsTest, WhatCanBeReadOfARecordIs) {
  defaults_.setValue(kLastKey,
                     json::parse(R"({"a": {"Arg1": [], "Arg2": "x", "IntArg1": 2.5, "IntArg2": "7"}})"));
  EXPECT_EQ(lastDictionary(defaults_, "a"),
            (OperationRecord{{"Arg2", u"x"}, {"IntArg1", 2}, {"IntArg2", u"7"}}));
}

TEST_F(LastPanelsTest, AStoreKeepsWhatItDoesNotKnowAndReplacesWhatCannotHoldIt) {
  const struct {
    const char* before;
    const char* after;
  } cases[] = {
      {"3", R"({"a": {"Code": 314}})"},
      {"[1]", R"({"a": {"Code": 314}})"},
      {"\"text\"", R"({"a": {"Code": 314}})"},
      {R"({"a": 3, "b": [1], "c": null})", R"({"a": {"Code": 314}, "b": [1], "c": null})"},
  };
  for (const auto& [before, after] : cases) {
    defaults_.setValue(kLastKey, json::parse(before));
    storeLastDictionaryToDefaults(defaults_, {{"Code", 314}}, "a");
    EXPECT_EQ(defaults_.value(kLastKey), json::parse(after)) << before;
  }
}

}  // namespace
}  // namespace quillet
