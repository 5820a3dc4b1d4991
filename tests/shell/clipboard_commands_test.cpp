// What the whole application does not show of the commands: what their prompts say, answers that come later,
// and a selection of everything at once. The rest is in the scenarios.
#include "shell/clipboard/clipboard_commands.h"

#include <nlohmann/json.hpp>

#include "shell/clipboard_group_fixture.h"

namespace quillet {
namespace {

using ClipboardCommandsTest = testing::ClipboardGroupTest;

const struct {
  const char* action;
  const char* key;
  const char* prompt;
  std::u16string info;
} kPrompts[] = {
    {"clipboardDataWindowJoinRowsMenuItemClicked", "JoinRows", "Number of consecutive lines to join:", u""},
    {"clipboardDataWindowJoinColumnsMenuItemClicked", "JoinColumns",
     "Number of consecutive columns to join:", u""},
    {"clipboardDataWindowMergeLeftMenuItemClicked", "MergeString", "Merge Columns",
     u"Enter any text to insert between columns:"},
    {"clipboardDataWindowMergeRightMenuItemClicked", "MergeString", "Merge Columns",
     u"Enter any text to insert between columns:"},
    {"clipboardDataWindowMergeUpMenuItemClicked", "MergeString", "Merge Lines",
     u"Enter any text to insert between lines:"},
    {"clipboardDataWindowMergeDownMenuItemClicked", "MergeString", "Merge Lines",
     u"Enter any text to insert between lines:"},
};

TEST_F(ClipboardCommandsTest, PromptsAskOnTheWindowWithTheTextOfLastTime) {
  const struct {
    nlohmann::json last;
    std::u16string shown;
  } texts[] = {{nullptr, u""}, {"7 x", u"7 x"}, {12, u"12"}, {nlohmann::json::array({1}), u""}};
  for (const auto& [action, key, prompt, info] : kPrompts)
    for (const auto& [last, shown] : texts) {
      defaults_.setValue(key, last);
      desktop_.events.clear();
      perform(action);
      EXPECT_EQ(desktop_.events, std::vector{std::string("prompt on clipboardDataWindow ") + prompt});
      ASSERT_TRUE(desktop_.prompt) << action;
      EXPECT_EQ(desktop_.prompt->info, info) << action;
      EXPECT_EQ(desktop_.prompt->text, shown) << action << last;
    }
}

TEST_F(ClipboardCommandsTest, NothingHappensBeforeAPromptIsAnswered) {
  split(u"a,b\nc,d");
  for (const auto& prompt : kPrompts) {
    perform(prompt.action);
    EXPECT_EQ(operations().size(), 1u) << prompt.action;
    EXPECT_FALSE(defaults_.has(prompt.key)) << prompt.action;
  }
}

TEST_F(ClipboardCommandsTest, AMergeIsOfWhatWasSelectedWhenItWasChosen) {
  const struct {
    const char* action;
    OperationRecord record;
  } merges[] = {
      {"clipboardDataWindowMergeLeftMenuItemClicked", {{"Code", 419}, {"Arg1", u"-"}, {"Arg2", u"1, 3"}}},
      {"clipboardDataWindowMergeUpMenuItemClicked", {{"Code", 421}, {"Arg1", u"-"}, {"Arg2", u"2 - 3"}}},
  };
  for (const auto& [action, record] : merges) {
    split(u"a,b,c\nd,e,f\ng,h,i");
    selection().addInfiniteRowIndexesInRange(1, 2);
    selection().addInfiniteColumnIndex(0);
    selection().addInfiniteColumnIndex(2);
    perform(action);
    selection().removeAllIndexes();
    desktop_.prompt->confirmed(u"-");
    EXPECT_EQ(operations().back(), record) << action;
  }
}

// The store comes first: what cannot be performed is remembered all the same.
TEST_F(ClipboardCommandsTest, ATextIsStoredBeforeItIsPerformed) {
  split(u"a,b\nc,d");
  bool storedByThen = false;
  control<Label>("clipboardDataWindowStatusLabel").setObserver([&] {
    storedByThen = defaults_.stringForKey("JoinRows") == u"2";
  });
  perform("clipboardDataWindowJoinRowsMenuItemClicked");
  desktop_.prompt->confirmed(u"2");
  EXPECT_TRUE(storedByThen);
}

TEST_F(ClipboardCommandsTest, ARefusalIsToldOnTheWindow) {
  split(u"a,b\nc,d");
  const struct {
    const char* action;
    const char* told;
  } joins[] = {{"clipboardDataWindowJoinRowsMenuItemClicked",
                "sheet of clipboardDataWindow Error|You must join at least 2 rows"},
               {"clipboardDataWindowJoinColumnsMenuItemClicked",
                "sheet of clipboardDataWindow Error|You must join at least 2 columns"}};
  for (const auto& [action, told] : joins) {
    perform(action);
    desktop_.events.clear();
    desktop_.prompt->confirmed(u"1");
    EXPECT_EQ(desktop_.events, std::vector<std::string>{told});
    EXPECT_EQ(operations().size(), 1u);
  }
}

// Lines, columns and cells are selected at once: each list has its own part, and single cells are in none.
TEST_F(ClipboardCommandsTest, AListIsOfWholeLinesOrOfWholeColumnsAlone) {
  const struct {
    const char* action;
    std::u16string list;
  } commands[] = {
      {"clipboardDataWindowDeleteSelectedLineMenuItemClicked", u"2"},
      {"clipboardDataWindowDeleteSelectedColumnMenuItemClicked", u"1, 3"},
      {"clipboardDataWindowMoveLeftMenuItemClicked", u"1, 3"},
      {"clipboardDataWindowMoveRightMenuItemClicked", u"1, 3"},
      {"clipboardDataWindowMoveUpMenuItemClicked", u"2"},
      {"clipboardDataWindowMoveDownMenuItemClicked", u"2"},
  };
  for (const auto& [action, list] : commands) {
    split(u"a,b,c,d\ne,f,g,h\ni,j,k,l\nm,n,o,p");
    selection().addInfiniteRowIndex(1);
    selection().addInfiniteColumnIndex(0);
    selection().addInfiniteColumnIndex(2);
    selection().addRowIndex(3, 3);
    perform(action);
    EXPECT_EQ(operations().back().text("Arg1"), list) << action;
  }
}

}  // namespace
}  // namespace quillet
