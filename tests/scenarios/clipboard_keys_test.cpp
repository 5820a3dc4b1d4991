// Keys move the focus of the grid, clicks make its selection.
#include "scenarios/clipboard_scenario.h"

namespace quillet::testing {
namespace {

// A click of the test's own table: a cell, a line number (column 0), or the header of a column.
struct Step {
  std::string what;  // "click", "headerClick", "key" or "selectAll"
  json arguments = json::object();
};

Step click(int row, int column, const json& more = json::object()) {
  json arguments = {{"row", row}, {"column", column}};
  arguments.update(more);
  return {"click", arguments};
}
Step header(int column, const json& more = json::object()) {
  json arguments = {{"column", column}};
  arguments.update(more);
  return {"headerClick", arguments};
}
Step pressed(const std::string& key, const json& more = json::object()) {
  json arguments = {{"key", key}};
  arguments.update(more);
  return {"key", arguments};
}

const json kShift = {{"shift", true}};
const json kCommand = {{"command", true}};
const json kAlternate = {{"alternate", true}};
const json kShiftAlternate = {{"shift", true}, {"alternate", true}};
const json kShiftCommand = {{"shift", true}, {"command", true}};
const json kAlternateCommand = {{"command", true}, {"alternate", true}};
const json kDouble = {{"count", 2}};

class ClipboardKeys : public ClipboardScenario {
 protected:
  ClipboardKeys() { launch(); }

  // Every row is full but the last, which has one cell.
  void beginWith(int rows, int columns) {
    std::string text;
    for (int row = 0; row + 1 < rows; ++row) text += std::string(columns - 1, '|') + "/";
    begin(text);
  }
  json take(const Step& step) { return done(step.what, step.arguments); }
  json take(const std::vector<Step>& steps) {
    json last;
    for (const Step& step : steps) last = take(step);
    return last;
  }
  json focus() { return window()["focus"]; }
  json selection() { return window()["selection"]; }
  bool trimIsOn() {
    return done("menuEnabled", {{"action", "clipboardDataWindowTrimButtonPressed"},
                                {"keyWindow", "clipboardDataWindow"}})["enabled"];
  }
};

TEST_F(ClipboardKeys, EveryKeyWithEveryModifier) {
  struct Case {
    std::string key;
    json none, alternate;
  };
  // From line 13, column 9 of 30 lines and 25 columns, both counted from 0.
  const Case cases[] = {
      {"up", {12, 9}, {3, 9}},       {"down", {14, 9}, {23, 9}},   {"left", {13, 8}, {13, 0}},
      {"right", {13, 10}, {13, 19}}, {"tab", {13, 10}, {13, 10}},  {"backtab", {13, 8}, {13, 8}},
      {"return", {13, 9}, {13, 9}},  {"delete", {13, 9}, {13, 9}},
  };
  beginWith(30, 25);
  for (const auto& one : cases) {
    const std::pair<json, json> modified[] = {{json::object(), one.none},
                                              {kShift, one.none},
                                              {kAlternate, one.alternate},
                                              {kShiftAlternate, one.alternate}};
    for (const auto& [modifiers, expected] : modified) {
      take(click(13, 10));
      const json result = take(pressed(one.key, modifiers));
      EXPECT_EQ(focus(), expected) << one.key << modifiers;
      EXPECT_EQ(selection(), "Cells: (14, 10)") << "keys leave the selection";
      EXPECT_EQ(result["opened"].is_null(), one.key != "return") << one.key << modifiers;
    }
  }
}

TEST_F(ClipboardKeys, TheFocusStaysInTheTable) {
  struct Case {
    int row, column;  // of the grid
    std::string key;
    json modifiers;
    json focus;
  };
  const Case cases[] = {
      {0, 3, "up", {}, {0, 3}},
      {0, 3, "up", kAlternate, {0, 3}},
      {4, 3, "up", kAlternate, {0, 3}},
      {10, 3, "up", kAlternate, {0, 3}},
      {11, 3, "up", kAlternate, {1, 3}},
      {14, 3, "down", {}, {14, 3}},
      {14, 3, "down", kAlternate, {14, 3}},
      {5, 3, "down", kAlternate, {14, 3}},
      {4, 3, "down", kAlternate, {14, 3}},
      {3, 3, "down", kAlternate, {13, 3}},
      {3, 0, "left", {}, {3, 0}},
      {3, 0, "backtab", {}, {3, 0}},
      {3, 4, "left", kAlternate, {3, 0}},
      {3, 11, "left", kAlternate, {3, 1}},
      {3, 11, "right", {}, {3, 11}},
      {3, 11, "tab", {}, {3, 11}},
      {3, 3, "right", kAlternate, {3, 11}},
      {3, 1, "right", kAlternate, {3, 11}},
      {3, 0, "right", kAlternate, {3, 10}},
      {13, 11, "down", {}, {14, 11}},  // past the end of a short row
  };
  beginWith(15, 12);
  for (const auto& one : cases) {
    take({click(one.row, one.column + 1),
          pressed(one.key, one.modifiers.is_null() ? json::object() : one.modifiers)});
    EXPECT_EQ(focus(), one.focus) << one.row << " " << one.column << " " << one.key << one.modifiers;
  }
}

TEST_F(ClipboardKeys, WithoutAFocusNoArrowMoves) {
  beginWith(15, 12);
  for (const char* key : {"up", "down", "left", "right", "tab", "backtab", "delete"})
    for (const json& modifiers : {json::object(), kShift, kAlternate}) {
      take(pressed(key, modifiers));
      EXPECT_EQ(focus(), (json{-1, -1})) << key << modifiers;
    }
  done("refreshDataFromClipboard");
  EXPECT_EQ(focus(), (json{-1, -1}));
}

// A click on a line number leaves the row of the focus, so the arrows that make a column of it move.
TEST_F(ClipboardKeys, AfterALineNumberTheRuleOfTheFocusDecides) {
  const std::tuple<std::string, json, json> cases[] = {
      {"up", json::object(), {3, -1}},   {"down", json::object(), {3, -1}},
      {"up", kAlternate, {3, -1}},       {"down", kAlternate, {3, -1}},
      {"left", json::object(), {3, -1}}, {"backtab", json::object(), {3, -1}},
      {"right", json::object(), {3, 0}}, {"tab", json::object(), {3, 0}},
      {"left", kAlternate, {3, 0}},      {"right", kAlternate, {3, 9}},
  };
  beginWith(15, 12);
  for (const auto& [key, modifiers, expected] : cases) {
    take({click(3, 5), click(7, 0)});
    EXPECT_EQ(focus(), (json{3, -1}));
    take(pressed(key, modifiers));
    EXPECT_EQ(focus(), expected) << key << modifiers;
  }
}

TEST_F(ClipboardKeys, ReturnEditsTheFocusedCellAndNotTheSelectedOne) {
  begin("a|b/c|d/e|f");
  take({click(0, 2), pressed("down")});
  const json opened = take(pressed("return"))["opened"];
  EXPECT_EQ(opened["cellDetailsWindowTextField"], "d");
  EXPECT_EQ(grid(), "a|b/c|d/e|f") << "without values it is cancelled";
  EXPECT_EQ(done("controls", {{"window", "cellDetailsWindow"}})["open"], false);
  take(pressed("return", {{"values", {{"cellDetailsWindowTextField", "x"}}}}));
  EXPECT_EQ(grid(), "a|b/c|x/e|f");
  EXPECT_EQ(window()["operations"].back(), editCell(1, 1, "x"));
  EXPECT_EQ(selection(), "Cells: (1, 2)");
  take(pressed("return", {{"values", {{"cellDetailsWindowTextField", "y"}}}, {"cancel", true}}));
  EXPECT_EQ(grid(), "a|b/c|x/e|f");
}

TEST_F(ClipboardKeys, ReturnWithoutAFocusOpensTheSheetAndDoneIsRefused) {
  begin("a|b");
  EXPECT_EQ(take(pressed("return"))["opened"]["cellDetailsWindowTextField"], "");
  take(pressed("return", {{"values", {{"cellDetailsWindowTextField", "x"}}}}));
  EXPECT_EQ(grid(), "a|b");
  EXPECT_EQ(window()["status"], status("Index out of range", 2));
}

TEST_F(ClipboardKeys, ADoubleClickEditsTheCell) {
  begin("a|b/c|d");
  EXPECT_EQ(take(click(1, 2))["opened"], nullptr);
  EXPECT_EQ(take(click(1, 2, kDouble))["opened"]["cellDetailsWindowTextField"], "d");
  EXPECT_EQ(take(click(0, 1, {{"count", 3}}))["opened"]["cellDetailsWindowTextField"], "a");
  EXPECT_EQ(selection(), "Cells: (1, 1)");
  for (const json& modifiers : {kShift, kCommand, kAlternate, kShiftAlternate}) {
    json more = kDouble;
    more.update(modifiers);
    more["values"] = {{"cellDetailsWindowTextField", "x"}};
    EXPECT_FALSE(take(click(1, 1, more))["opened"].is_null()) << modifiers;
    EXPECT_EQ(selection(), "Cells: (2, 1)") << "a double click is plain, whatever is held";
    EXPECT_EQ(focus(), (json{1, 0}));
  }
  EXPECT_EQ(grid(), "a|b/x|d");
}

TEST_F(ClipboardKeys, TheSheetOfADoubleClickStaysOpenWithoutValues) {
  const json isOpen = {{"window", "cellDetailsWindow"}};
  begin("a|b/c|d");
  take(click(1, 2, kDouble));
  EXPECT_EQ(done("controls", isOpen)["open"], true);
  done("setControl", {{"name", "cellDetailsWindowTextField"}, {"value", "x"}});
  done("press", {{"name", "done"}});
  EXPECT_EQ(done("controls", isOpen)["open"], false);
  EXPECT_EQ(grid(), "a|b/c|x");
  take(click(1, 2, kDouble));
  EXPECT_EQ(take(click(0, 1, kDouble))["opened"]["cellDetailsWindowTextField"], "a") << "opened anew";
  done("press", {{"name", "cancel"}});
  EXPECT_EQ(done("controls", isOpen)["open"], false);
  for (const json& values : {json::object(), json{{"cellDetailsWindowTextField", "y"}}}) {
    take(click(0, 1, {{"count", 2}, {"values", values}, {"cancel", true}}));
    EXPECT_EQ(done("controls", isOpen)["open"], false);
  }
  take(click(0, 1, {{"count", 2}, {"cancel", true}}));
  EXPECT_EQ(done("controls", isOpen)["open"], false);
  EXPECT_EQ(operations().size(), 2u);
}

// After the steps the selection and the focus. Lines count from 0 in the steps and from 1 in the text.
struct Clicks {
  std::vector<Step> steps;
  std::string selection;
  json focus = {-1, -1};
};

std::vector<Clicks> plainClicks() {
  return {
      {{click(2, 4)}, "Cells: (3, 4)", {2, 3}},
      {{click(2, 4), click(2, 4)}, "Cells: (3, 4)", {2, 3}},
      {{click(2, 4), click(0, 1)}, "Cells: (1, 1)", {0, 0}},
      {{click(2, 0)}, "Lines: 3", {-1, -1}},
      {{click(2, 0), click(2, 0)}, "", {-1, -1}},
      {{click(2, 0), click(2, 0), click(2, 0)}, "Lines: 3", {-1, -1}},
      {{click(2, 0), click(3, 0)}, "Lines: 4", {-1, -1}},
      {{click(2, 0), click(3, 0, kCommand), click(3, 0)}, "Lines: 4", {-1, -1}},
      {{click(2, 4), click(5, 0)}, "Lines: 6", {2, -1}},
      {{click(2, 0), click(2, 0, kDouble)}, "", {-1, -1}},
      {{click(2, 0, kDouble)}, "Lines: 3", {-1, -1}},
      {{header(2), click(2, 4)}, "Cells: (3, 4)", {2, 3}},
      {{header(2), click(2, 0)}, "Lines: 3", {-1, -1}},
      {{click(2, 0), click(1, 1)}, "Cells: (2, 1)", {1, 0}},
      {{click(1, 1), click(3, 3, kCommand), click(0, 2)}, "Cells: (1, 2)", {0, 1}},
  };
}

std::vector<Clicks> commandClicks() {
  return {
      {{click(2, 0, kCommand)}, "Lines: 3"},
      {{click(2, 0, kCommand), click(4, 0, kCommand)}, "Lines: 3, 5"},
      {{click(2, 0, kCommand), click(4, 0, kCommand), click(2, 0, kCommand)}, "Lines: 5"},
      {{click(2, 0, kAlternateCommand)}, "Lines: 3"},
      {{header(1), click(2, 0, kCommand)}, "Lines: 3"},
      {{click(1, 1), click(2, 0, kCommand)}, "Lines: 3", {1, 0}},
      {{click(1, 1, kCommand)}, "Cells: (2, 1)"},
      {{click(1, 1, kCommand), click(0, 2, kCommand)}, "Cells: (1, 2)+(2, 1)"},
      {{click(1, 1, kCommand), click(0, 2, kCommand), click(1, 1, kCommand)}, "Cells: (1, 2)"},
      {{click(2, 0), click(1, 1, kCommand)}, "Cells: (2, 1)"},
      {{header(1), click(1, 1, kCommand)}, "Cells: (2, 1)"},
      {{click(3, 3), click(1, 1, kCommand)}, "Cells: (2, 1)+(4, 3)", {3, 2}},
  };
}

std::vector<Clicks> shiftClicks() {
  return {
      {{click(2, 0, kShift)}, "Lines: 3"},
      {{click(2, 0, kShift), click(4, 0, kShift)}, "Lines: 3 - 5"},
      {{click(4, 0, kShift), click(2, 0, kShift)}, "Lines: 3 - 5"},
      {{click(1, 0), click(4, 0, kCommand), click(7, 0, kShift)}, "Lines: 2 - 8"},
      {{click(1, 0), click(4, 0, kCommand), click(0, 0, kShift)}, "Lines: 1 - 5"},
      {{click(1, 0), click(4, 0, kCommand), click(3, 0, kShift)}, "Lines: 2 - 5"},
      {{click(1, 0), click(4, 0, kCommand), click(1, 0, kShift)}, "Lines: 2, 5"},
      {{click(1, 0), click(4, 0, kCommand), click(4, 0, kShift)}, "Lines: 2 - 5"},
      {{click(2, 0, kShiftCommand)}, "Lines: 3"},
      {{click(1, 0), click(3, 0, kShiftCommand)}, "Lines: 2 - 4"},
      {{header(2), click(1, 0, kShift)}, "Lines: 2"},
      {{click(1, 1), click(1, 0, kShift)}, "Lines: 2", {1, 0}},
      // On a cell it does nothing.
      {{click(1, 1), click(3, 3, kShift)}, "Cells: (2, 1)", {1, 0}},
      {{click(1, 0), click(3, 3, kShift)}, "Lines: 2"},
      // So do these everywhere.
      {{click(1, 1), click(3, 3, kAlternate)}, "Cells: (2, 1)", {1, 0}},
      {{click(1, 1), click(3, 0, kAlternate)}, "Cells: (2, 1)", {1, 0}},
      {{click(1, 1), click(3, 3, kShiftAlternate)}, "Cells: (2, 1)", {1, 0}},
      {{click(1, 1), click(3, 0, kShiftAlternate)}, "Cells: (2, 1)", {1, 0}},
  };
}

std::vector<Clicks> headerClicks() {
  return {
      {{header(0)}, "Lines: 1 - 9"},
      {{header(1), header(0)}, "Lines: 1 - 9"},
      {{click(1, 0), header(0), header(0)}, "Lines: 1 - 9"},
      {{click(1, 1), header(0)}, "Lines: 1 - 9; Cells: (2, 1)"},
      {{header(0, kCommand)}, "Lines: 1 - 9"},
      {{header(3)}, "Columns: 3"},
      {{header(3), header(3)}, ""},
      {{header(3), header(3), header(3)}, "Columns: 3"},
      {{header(3), header(5)}, "Columns: 5"},
      {{header(3), header(5, kCommand), header(5)}, "Columns: 5"},
      {{click(1, 1), header(3)}, "Columns: 3"},
      {{click(1, 0), header(3)}, "Columns: 3"},
      {{header(3, kAlternate)}, "Columns: 3"},
      {{header(3, kCommand)}, "Columns: 3"},
      {{header(3, kCommand), header(5, kCommand)}, "Columns: 3, 5"},
      {{header(3, kCommand), header(5, kCommand), header(3, kCommand)}, "Columns: 5"},
      {{click(1, 1), header(3, kCommand)}, "Columns: 3"},
      {{click(1, 0), header(3, kCommand)}, "Columns: 3"},
      {{header(3), header(5, kShiftCommand)}, "Columns: 3, 5"},
      {{header(3, kShift)}, "Columns: 3"},
      {{header(3), header(5, kShift)}, "Columns: 3 - 5"},
      {{header(5), header(3, kShift)}, "Columns: 3 - 5"},
      {{header(2), header(5, kCommand), header(7, kShift)}, "Columns: 2 - 7"},
      {{header(2), header(5, kCommand), header(1, kShift)}, "Columns: 1 - 5"},
      {{header(2), header(5, kCommand), header(4, kShift)}, "Columns: 2 - 5"},
      {{header(2), header(5, kCommand), header(2, kShift)}, "Columns: 2, 5"},
      {{click(1, 1), header(2, kShift)}, "Columns: 2"},
      {{click(1, 0), header(2, kShift)}, "Columns: 2"},
  };
}

std::vector<Clicks> allSelected() {
  return {
      {{{"selectAll"}}, "Lines: 1 - 9"},
      {{header(2), {"selectAll"}}, "Lines: 1 - 9"},
      {{click(2, 0), {"selectAll"}}, "Lines: 1 - 9"},
      {{click(1, 1), {"selectAll"}}, "Lines: 1 - 9; Cells: (2, 1)", {1, 0}},
      {{click(1, 1), {"selectAll"}, click(2, 0, kCommand)}, "Lines: 1 - 2, 4 - 9", {1, 0}},
  };
}

// What hits no row or no column.
std::vector<Clicks> clicksOnNothing() {
  std::vector<Clicks> cases;
  for (const auto& [row, column] : {std::pair{-1, 1}, {-1, 0}, {9, 1}, {9, 0}, {1, -1}, {1, 8}})
    for (const json& more : {json::object(), kShift, kCommand, kAlternate, kShiftAlternate, kDouble})
      cases.push_back({{click(2, 4), click(row, column, more)}, "Cells: (3, 4)", {2, 3}});
  cases.push_back({{click(2, 4), header(8)}, "Cells: (3, 4)", {2, 3}});
  cases.push_back({{click(2, 4), header(-1)}, "Cells: (3, 4)", {2, 3}});
  return cases;
}

TEST_F(ClipboardKeys, ClicksMakeTheSelection) {
  for (const auto& table :
       {plainClicks(), commandClicks(), shiftClicks(), headerClicks(), allSelected(), clicksOnNothing()})
    for (const Clicks& one : table) {
      beginWith(9, 7);
      take(one.steps);
      json trace = json::array();
      for (const Step& step : one.steps) trace.push_back({step.what, step.arguments});
      EXPECT_EQ(selection(), one.selection) << trace;
      EXPECT_EQ(focus(), one.focus) << trace;
    }
}

TEST_F(ClipboardKeys, AHeaderClickClearsTheFocus) {
  beginWith(3, 3);
  for (const Step& step : {header(0), header(1), header(1, kShift), header(2, kCommand)}) {
    take({click(1, 1), step});
    EXPECT_EQ(focus(), (json{-1, -1})) << step.arguments;
  }
}

TEST_F(ClipboardKeys, TheHeaderOfAnEmptyGridClearsTheFocusOnly) {
  begin("a|b");
  take(click(0, 1));
  perform({{"Code", 902}});
  ASSERT_EQ(window()["grid"], json::array());
  take(header(0));
  EXPECT_EQ(selection(), "Cells: (1, 1)");
  EXPECT_EQ(focus(), (json{-1, -1}));
}

TEST_F(ClipboardKeys, ASelectionWhoseLastCellWasTakenAwayIsNotEmpty) {
  begin("a|b");
  EXPECT_FALSE(trimIsOn());
  take({click(0, 1, kCommand), click(0, 1, kCommand)});
  EXPECT_TRUE(trimIsOn());
  take({click(0, 0), click(0, 0)});
  EXPECT_FALSE(trimIsOn());
}

TEST_F(ClipboardKeys, SplitKeepsTheSelectionAndRefreshDoesNot) {
  begin("a|b/c|d");
  take({click(1, 2), {"selectAll"}});
  split();
  EXPECT_EQ(selection(), "Lines: 1 - 2; Cells: (2, 2)");
  EXPECT_EQ(focus(), (json{1, 1}));
  done("refreshDataFromClipboard");
  EXPECT_EQ(selection(), "");
  EXPECT_EQ(focus(), (json{-1, -1}));
}

TEST_F(ClipboardKeys, WhatTheToolDoesNotKnowIsRefused) {
  begin("a");
  EXPECT_NE(refused({{"do", "key"}, {"key", "home"}}), "");
  EXPECT_NE(refused({{"do", "key"}}), "");
  EXPECT_NE(refused({{"do", "click"}, {"row", 0}}), "");
  EXPECT_NE(refused({{"do", "click"}, {"column", 0}}), "");
  EXPECT_NE(refused({{"do", "headerClick"}}), "");
  EXPECT_NE(refused({{"do", "key"}, {"key", "return"}, {"values", {{"noSuchControl", 1}}}}), "");
  EXPECT_EQ(done("controls", {{"window", "cellDetailsWindow"}})["open"], false) << "no sheet is left behind";
}

}  // namespace
}  // namespace quillet::testing
