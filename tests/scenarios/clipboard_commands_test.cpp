// The commands of the clipboard data window: what is on when, and which record each of them makes.
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "scenarios/clipboard_scenario.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

class ClipboardCommandsTest : public ClipboardScenario {
 protected:
  bool isOn(const std::string& action, const std::string& keyWindow) {
    return done("menuEnabled", {{"action", action}, {"keyWindow", keyWindow}})["enabled"];
  }
  json answer(const std::string& action, const json& prompt) { return choose(action, {{"prompt", prompt}}); }
};

// What is on.

// What an item waits for: D a line in the grid, S a selection, R or C a whole line or column of it, twice the
// letter two of them.
const struct {
  const char* action;
  const char* needs;
} kItems[] = {
    {"clipboardDataWindowRefreshNowButtonPressed", ""},
    {"clipboardDataWindowSplitButtonPressed", ""},
    {"clipboardDataWindowJoinButtonPressed", ""},
    {"clipboardDataWindowTrimButtonPressed", "S"},
    {"clipboardDataWindowReplaceButtonPressed", "S"},
    {"clipboardDataWindowFillButtonPressed", "S"},
    {"clipboardDataWindowShiftTruncateLeftMenuItemClicked", "D"},
    {"clipboardDataWindowShiftTruncateRightMenuItemClicked", "D"},
    {"clipboardDataWindowShiftTruncateTopMenuItemClicked", "D"},
    {"clipboardDataWindowShiftTruncateBottomMenuItemClicked", "D"},
    {"clipboardDataWindowDeleteSelectedLineMenuItemClicked", "R"},
    {"clipboardDataWindowDeleteSelectedColumnMenuItemClicked", "C"},
    {"clipboardDataWindowShiftFillFromLeftMenuItemClicked", ""},
    {"clipboardDataWindowShiftFillFromRightMenuItemClicked", ""},
    {"clipboardDataWindowShiftFillFromTopMenuItemClicked", ""},
    {"clipboardDataWindowShiftFillFromBottomMenuItemClicked", ""},
    {"clipboardDataWindowMoveLeftMenuItemClicked", "C"},
    {"clipboardDataWindowMoveRightMenuItemClicked", "C"},
    {"clipboardDataWindowMoveUpMenuItemClicked", "R"},
    {"clipboardDataWindowMoveDownMenuItemClicked", "R"},
    {"flipHorizontalMenuItemClicked", "D"},
    {"flipVerticalMenuItemClicked", "D"},
    {"flipDiagonalMenuItemClicked", "D"},
    {"clipboardDataWindowMergeLeftMenuItemClicked", "CC"},
    {"clipboardDataWindowMergeRightMenuItemClicked", "CC"},
    {"clipboardDataWindowMergeUpMenuItemClicked", "RR"},
    {"clipboardDataWindowMergeDownMenuItemClicked", "RR"},
    {"clipboardDataWindowJoinRowsMenuItemClicked", "D"},
    {"clipboardDataWindowJoinColumnsMenuItemClicked", "D"},
    {"rowsTableViewReturnKeyPressed", ""},
};

TEST_F(ClipboardCommandsTest, ItemsFollowTheGridAndItsSelectionWhileTheWindowIsKey) {
  const auto nothing = [] {};
  const struct {
    const char* state;
    std::function<void()> select;
    std::vector<std::string> holds;
  } states[] = {
      {"no selection", nothing, {"D"}},
      {"a cell", [this] { selectCell(1, 1); }, {"D", "S"}},
      {"a line", [this] { selectLine(1); }, {"D", "S", "R"}},
      {"two lines", [this] { selectLine(0), selectLine(2); }, {"D", "S", "R", "RR"}},
      {"a column", [this] { selectColumn(2); }, {"D", "S", "C"}},
      {"two columns", [this] { selectColumn(0), selectColumn(1); }, {"D", "S", "C", "CC"}},
  };
  launch();
  const auto expectItems = [this](const char* state, const std::vector<std::string>& holds) {
    for (const char* key : {"clipboardDataWindow", "window", "previousJobsWindow", "none"})
      for (const auto& [action, needs] : kItems) {
        const bool isMet = *needs == '\0' || std::find(holds.begin(), holds.end(), needs) != holds.end();
        EXPECT_EQ(isOn(action, key), isMet || key != std::string("clipboardDataWindow"))
            << action << " with key " << key << " and " << state;
      }
  };
  expectItems("no grid", {});
  for (const auto& [state, select, holds] : states) {
    begin("a|b|c/d|e|f/g|h|i");
    select();
    expectItems(state, holds);
  }
}

TEST_F(ClipboardCommandsTest, WhatIsOffPerformsNothing) {
  launch();
  showClipboardDataWindow();
  begin("a|b");
  selectLine(0);
  for (const char* action :
       {"clipboardDataWindowMergeUpMenuItemClicked", "clipboardDataWindowMoveLeftMenuItemClicked"}) {
    EXPECT_EQ(answer(action, "-")["performed"], false) << action;
    EXPECT_EQ(lastOperation()["Code"], 102) << action;
  }
}

// The records.

TEST_F(ClipboardCommandsTest, EachMakesItsRecordFromTheSelection) {
  enum class Select { Lines, Columns };
  const struct {
    const char* action;
    Select select;
    json record;
  } commands[] = {
      {"clipboardDataWindowShiftTruncateLeftMenuItemClicked", Select::Lines, {{"Code", 402}}},
      {"clipboardDataWindowShiftTruncateRightMenuItemClicked", Select::Lines, {{"Code", 403}}},
      {"clipboardDataWindowShiftTruncateTopMenuItemClicked", Select::Columns, {{"Code", 404}}},
      {"clipboardDataWindowShiftTruncateBottomMenuItemClicked", Select::Columns, {{"Code", 405}}},
      {"clipboardDataWindowDeleteSelectedLineMenuItemClicked",
       Select::Lines,
       {{"Code", 406}, {"Arg1", "1, 3 - 4"}}},
      {"clipboardDataWindowDeleteSelectedColumnMenuItemClicked",
       Select::Columns,
       {{"Code", 407}, {"Arg1", "2 - 3"}}},
      {"clipboardDataWindowShiftFillFromLeftMenuItemClicked",
       Select::Lines,
       {{"Code", 408}, {"IntArg1", 0}, {"Arg1", ""}}},
      {"clipboardDataWindowShiftFillFromRightMenuItemClicked",
       Select::Lines,
       {{"Code", 409}, {"IntArg1", 0}, {"Arg1", ""}}},
      {"clipboardDataWindowShiftFillFromTopMenuItemClicked",
       Select::Columns,
       {{"Code", 410}, {"IntArg1", 0}, {"Arg1", ""}}},
      {"clipboardDataWindowShiftFillFromBottomMenuItemClicked",
       Select::Columns,
       {{"Code", 411}, {"IntArg1", 0}, {"Arg1", ""}}},
      {"clipboardDataWindowMoveLeftMenuItemClicked", Select::Columns, {{"Code", 412}, {"Arg1", "2 - 3"}}},
      {"clipboardDataWindowMoveRightMenuItemClicked", Select::Columns, {{"Code", 413}, {"Arg1", "2 - 3"}}},
      {"clipboardDataWindowMoveUpMenuItemClicked", Select::Lines, {{"Code", 414}, {"Arg1", "1, 3 - 4"}}},
      {"clipboardDataWindowMoveDownMenuItemClicked", Select::Lines, {{"Code", 415}, {"Arg1", "1, 3 - 4"}}},
      {"flipHorizontalMenuItemClicked", Select::Lines, {{"Code", 416}}},
      {"flipVerticalMenuItemClicked", Select::Lines, {{"Code", 417}}},
      {"flipDiagonalMenuItemClicked", Select::Columns, {{"Code", 418}}},
      {"clipboardDataWindowMergeLeftMenuItemClicked",
       Select::Columns,
       {{"Code", 419}, {"Arg1", "2\\n"}, {"Arg2", "2 - 3"}}},
      {"clipboardDataWindowMergeRightMenuItemClicked",
       Select::Columns,
       {{"Code", 420}, {"Arg1", "2\\n"}, {"Arg2", "2 - 3"}}},
      {"clipboardDataWindowMergeUpMenuItemClicked",
       Select::Lines,
       {{"Code", 421}, {"Arg1", "2\\n"}, {"Arg2", "1, 3 - 4"}}},
      {"clipboardDataWindowMergeDownMenuItemClicked",
       Select::Lines,
       {{"Code", 422}, {"Arg1", "2\\n"}, {"Arg2", "1, 3 - 4"}}},
      {"clipboardDataWindowJoinRowsMenuItemClicked",
       Select::Lines,
       {{"Code", 423}, {"Arg1", "2\\n"}, {"Arg2", ""}}},
      {"clipboardDataWindowJoinColumnsMenuItemClicked",
       Select::Columns,
       {{"Code", 424}, {"Arg1", "2\\n"}, {"Arg2", ""}}},
  };
  launch();
  showClipboardDataWindow();
  for (const auto& [action, select, record] : commands) {
    begin("a|b|c|d/d|e|f/g|h|i/j|k|l/m");
    if (select == Select::Lines)
      for (const int row : {2, 0, 3}) selectLine(row);
    else
      for (const int column : {2, 1}) selectColumn(column);
    EXPECT_EQ(answer(action, "2\\n")["performed"], true) << action;
    const json all = operations();
    ASSERT_EQ(all.size(), 2u) << action;
    EXPECT_EQ(all[1], record) << action;
  }
}

// With another key window these items are on, so a list may be empty.
TEST_F(ClipboardCommandsTest, WithoutASelectionTheListIsEmpty) {
  const struct {
    const char* action;
    json record;
  } commands[] = {
      {"clipboardDataWindowMoveUpMenuItemClicked", {{"Code", 414}, {"Arg1", ""}}},
      {"clipboardDataWindowMoveRightMenuItemClicked", {{"Code", 413}, {"Arg1", ""}}},
      {"clipboardDataWindowMergeUpMenuItemClicked", {{"Code", 421}, {"Arg1", "x"}, {"Arg2", ""}}},
      {"clipboardDataWindowMergeLeftMenuItemClicked", {{"Code", 419}, {"Arg1", "x"}, {"Arg2", ""}}},
  };
  launch();
  begin("a|b/c");
  const json grid = window()["grid"];
  for (const auto& [action, record] : commands) {
    answer(action, "x");
    EXPECT_EQ(lastOperation(), record) << action;
    EXPECT_EQ(window()["grid"], grid) << action;
  }
}

TEST_F(ClipboardCommandsTest, RefreshTakesTheTextOfTheClipboard) {
  launch();
  done("setPasteboard", {{"text", "a\nb"}});
  choose("clipboardDataWindowRefreshNowButtonPressed");
  EXPECT_EQ(window()["string"], "a\nb");
}

// The three settings are read by the commands that add a blank, and written by nothing.
TEST_F(ClipboardCommandsTest, ABlankIsDescribedByTheFillSettings) {
  const struct {
    json defaults;
    json type;
    json text;
  } cases[] = {
      {json::object(), 0, ""},
      {{{"FillString", "s"}, {"FillSequence", "q"}}, 0, "s"},
      {{{"FillType", 0}, {"FillString", "s"}, {"FillSequence", "q"}}, 0, "s"},
      {{{"FillType", 1}, {"FillString", "s"}, {"FillSequence", "q"}}, 1, "q"},
      {{{"FillType", 1}, {"FillString", "s"}}, 1, ""},
      {{{"FillType", 2}, {"FillString", "s"}, {"FillSequence", "q"}}, 2, "s"},
      {{{"FillType", "1"}, {"FillSequence", 12}}, 1, "12"},
      {{{"FillType", json::array({1})}, {"FillString", json::object()}}, 0, ""},
  };
  launch();
  for (const auto& [defaults, type, text] : cases) {
    done("setDefaults",
         {{"values", {{"FillType", nullptr}, {"FillString", nullptr}, {"FillSequence", nullptr}}}});
    done("setDefaults", {{"values", defaults}});
    begin("a|b");
    choose("clipboardDataWindowShiftFillFromTopMenuItemClicked");
    EXPECT_EQ(lastOperation(), (json{{"Code", 410}, {"IntArg1", type}, {"Arg1", text}})) << defaults;
    EXPECT_EQ(window()["grid"], R"([["", ""], ["a", "b"]])"_json) << "what is added is blank";
    for (const auto& [key, value] : defaults.items()) EXPECT_EQ(defaultOf(key), value);
  }
}

// Flips.

const char* const kFlips[] = {"flipHorizontalMenuItemClicked", "flipVerticalMenuItemClicked",
                              "flipDiagonalMenuItemClicked"};

std::string lines(int count) {
  std::string text = "1";
  for (int number = 2; number <= count; ++number) text += "/" + std::to_string(number);
  return text;
}

TEST_F(ClipboardCommandsTest, AFlipIsRefusedFromAHundredAndOneLinesOn) {
  launch();
  for (const char* flip : kFlips) {
    begin(lines(101));
    EXPECT_EQ(choose(flip)["alerts"], json{clipboardSheet("Error", "Transform is limited to 100 columns")})
        << flip;
    EXPECT_EQ(operations().size(), 1u) << flip;

    begin(lines(100));
    EXPECT_FALSE(choose(flip).contains("alerts")) << flip;
    EXPECT_EQ(operations().size(), 2u) << flip;
  }
  EXPECT_EQ(window()["columns"], 100);
}

TEST_F(ClipboardCommandsTest, AFlipOfManyColumnsIsNotRefused) {
  launch();
  std::string line = "a";
  for (int column = 1; column < 150; ++column) line += "|a";
  for (const char* flip : kFlips) {
    begin(line);
    EXPECT_FALSE(choose(flip).contains("alerts")) << flip;
    EXPECT_EQ(operations().size(), 2u) << flip;
  }
}

TEST_F(ClipboardCommandsTest, AFlipWithoutAGridDoesNothing) {
  launch();
  for (const char* flip : kFlips) {
    const json result = choose(flip);
    EXPECT_EQ(result["performed"], true);
    EXPECT_FALSE(result.contains("alerts")) << flip;
    EXPECT_EQ(operations(), json::array()) << flip;
  }
}

// Lines without cells are what is left of a column that is deleted.
TEST_F(ClipboardCommandsTest, OnlyTheHorizontalFlipIsRefusedForEmptyLines) {
  launch();
  const auto emptyLines = [this](int count) {
    begin(lines(count));
    perform({{"Code", 402}});
    ASSERT_EQ(window()["columns"], 0);
  };
  emptyLines(2);
  EXPECT_EQ(choose("flipHorizontalMenuItemClicked")["alerts"],
            json{clipboardSheet("Error", "All rows are empty")});
  EXPECT_EQ(lastOperation()["Code"], 402);
  for (const char* flip : {"flipVerticalMenuItemClicked", "flipDiagonalMenuItemClicked"}) {
    emptyLines(2);
    EXPECT_FALSE(choose(flip).contains("alerts")) << flip;
    EXPECT_NE(lastOperation()["Code"], 402) << flip;
  }
  emptyLines(101);
  EXPECT_EQ(choose("flipHorizontalMenuItemClicked")["alerts"],
            json{clipboardSheet("Error", "Transform is limited to 100 columns")})
      << "the limit is tested first";
}

// Prompts.

const struct {
  const char* action;
  const char* key;
} kPrompts[] = {
    {"clipboardDataWindowJoinRowsMenuItemClicked", "JoinRows"},
    {"clipboardDataWindowJoinColumnsMenuItemClicked", "JoinColumns"},
    {"clipboardDataWindowMergeLeftMenuItemClicked", "MergeString"},
    {"clipboardDataWindowMergeRightMenuItemClicked", "MergeString"},
    {"clipboardDataWindowMergeUpMenuItemClicked", "MergeString"},
    {"clipboardDataWindowMergeDownMenuItemClicked", "MergeString"},
};

TEST_F(ClipboardCommandsTest, APromptStoresItsTextAndPerforms) {
  launch();
  for (const auto& [action, key] : kPrompts) {
    setDefault(key, nullptr);
    begin("a|b/c|d");
    answer(action, "3 x");
    EXPECT_EQ(defaultOf(key), "3 x") << action;
    EXPECT_EQ(lastOperation()["Arg1"], "3 x") << "as typed: " << action;
  }
}

TEST_F(ClipboardCommandsTest, ACancelledPromptDoesNothing) {
  launch();
  begin("a|b/c|d");
  for (const auto& [action, key] : kPrompts) {
    setDefault(key, "7");
    for (const json& arguments : {json::object(), json{{"prompt", nullptr}}}) {
      EXPECT_FALSE(choose(action, arguments).contains("alerts"));
      EXPECT_EQ(defaultOf(key), "7") << action;
      EXPECT_EQ(operations().size(), 1u) << action;
    }
  }
}

TEST_F(ClipboardCommandsTest, AJoinOfFewerThanTwoIsRefused) {
  const struct {
    const char* action;
    const char* key;
    const char* message;
  } joins[] = {
      {"clipboardDataWindowJoinRowsMenuItemClicked", "JoinRows", "You must join at least 2 rows"},
      {"clipboardDataWindowJoinColumnsMenuItemClicked", "JoinColumns", "You must join at least 2 columns"},
  };
  launch();
  for (const auto& [action, key, message] : joins) {
    begin("a|b/c|d");
    setDefault(key, "7");
    for (const char* text : {"1", "0", "-2", "", "two", "1.9", "1 2", "-99999999999999999999"}) {
      EXPECT_EQ(answer(action, text)["alerts"], json{clipboardSheet("Error", message)}) << text;
      EXPECT_EQ(defaultOf(key), "7") << text;
      EXPECT_EQ(operations().size(), 1u) << text;
    }
    for (const char* text : {"2", " 2", "+3", "2.5", "99999999999999999999"}) {
      begin("a|b/c|d");
      EXPECT_FALSE(answer(action, text).contains("alerts")) << text;
      EXPECT_EQ(defaultOf(key), text);
      EXPECT_EQ(operations().size(), 2u) << text;
    }
  }
}

TEST_F(ClipboardCommandsTest, AMergeTakesAnyText) {
  launch();
  for (const char* text : {"", "0", "-", "é\U0001F600"}) {
    begin("a|b/c|d");
    selectLine(0);
    selectLine(1);
    EXPECT_FALSE(answer("clipboardDataWindowMergeUpMenuItemClicked", text).contains("alerts"));
    EXPECT_EQ(lastOperation(), (json{{"Code", 421}, {"Arg1", text}, {"Arg2", "1 - 2"}}));
    EXPECT_EQ(defaultOf("MergeString"), text) << "an empty text is one, too";
  }
}

}  // namespace
}  // namespace quillet::testing
