// The sheets of the clipboard data window: what they show on opening, which record Done makes, and what is
// remembered of it.
#include <map>
#include <string>

#include "scenarios/clipboard_scenario.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

struct Sheet {
  std::string window;
  std::string action;
  std::string key;  // of its last record
};

const Sheet kSplit = {"clipboardDataSplitWindow", "clipboardDataWindowSplitButtonPressed",
                      "ClipboardDataSplitKey"};
const Sheet kJoin = {"clipboardDataJoinWindow", "clipboardDataWindowJoinButtonPressed",
                     "ClipboardDataJoinKey"};
const Sheet kTrim = {"clipboardDataTrimWindow", "clipboardDataWindowTrimButtonPressed",
                     "ClipboardDataTrimKey"};
const Sheet kReplace = {"clipboardDataReplaceWindow", "clipboardDataWindowReplaceButtonPressed",
                        "ClipboardDataReplaceKey"};
const Sheet kFill = {"clipboardDataFillWindow", "clipboardDataWindowFillButtonPressed",
                     "ClipboardDataFillKey"};
const Sheet* const kRemembering[] = {&kSplit, &kJoin, &kTrim, &kReplace, &kFill};

constexpr const char* kLastKey = "ClipboardDataLastKey";

// The controls with the sheet's name before each.
json named(const Sheet& sheet, const json& controls) {
  json result = json::object();
  for (const auto& [end, value] : controls.items()) result[sheet.window + end] = value;
  return result;
}

class ClipboardSheetsTest : public ClipboardScenario {
 protected:
  // Opens the sheet, sets the controls and presses Done; gives what it showed at first.
  json use(const Sheet& sheet, const json& controls = json::object()) {
    return choose(sheet.action, {{"values", named(sheet, controls)}})["opened"];
  }
  // What the sheet shows on opening.
  json opened(const Sheet& sheet) { return choose(sheet.action, {{"cancel", true}})["opened"]; }
  bool isOpen(const std::string& window) { return done("controls", {{"window", window}})["open"]; }
  json remembered(const Sheet& sheet) {
    const json all = defaultOf(kLastKey);
    return all.is_object() && all.contains(sheet.key) ? all[sheet.key] : json();
  }
  void remember(const Sheet& sheet, const json& record) { setDefault(kLastKey, {{sheet.key, record}}); }

  // A grid of three by three with the first line, or two cells, selected.
  void splitAndSelectLine() {
    begin("a|b|c/d|e|f/g|h|i");
    selectLine(0);
  }
  void splitAndSelectCells() {
    begin("a|b|c/d|e|f/g|h|i");
    selectCell(0, 1);
    selectCell(2, 0);
  }
};

// Opening.

const std::map<const Sheet*, json> kFirst = {
    {&kSplit,
     {{"SplitClipboardIntoLinesCheckbox", false},
      {"LineSeparatorComboBox", ""},
      {"SplitLinesIntoColumnsCheckbox", false},
      {"ColumnSeparatorComboBox", ""},
      {"RemoveQuotesCheckbox", false}}},
    {&kJoin, {{"LineSeparatorComboBox", ""}, {"ColumnSeparatorComboBox", ""}, {"AddQuotesCheckbox", false}}},
    {&kTrim,
     {{"TextField", ""},
      {"TrimWhatPopUpButton", 0},
      {"TrimFromPopUpButton", 0},
      {"CaseSensitiveButton", false}}},
    {&kReplace,
     {{"WhatTextField", ""}, {"WithTextField", ""}, {"TypePopUpButton", 0}, {"CaseSensitiveButton", false}}},
    {&kFill, {{"TypePopUpButton", 0}, {"WithTextField", ""}}},
};

TEST_F(ClipboardSheetsTest, AtFirstTextsAreEmptyBoxesOffAndTagsTheLowest) {
  launch();
  for (const auto& [sheet, first] : kFirst) EXPECT_EQ(opened(*sheet), named(*sheet, first)) << sheet->window;
}

TEST_F(ClipboardSheetsTest, MenusOfferTheirValuesUnderTheirTags) {
  const struct {
    const Sheet& sheet;
    const char* control;
    json items;
  } menus[] = {
      {kTrim, "TrimWhatPopUpButton",
       R"([[0, "String"], [1, "Characters"], [2, "Whitespace"], [3, "Regular Expression"]])"_json},
      {kTrim, "TrimFromPopUpButton", R"([[0, "From Both Sides"], [1, "From Start"], [2, "From End"]])"_json},
      {kReplace, "TypePopUpButton", R"([[0, "String"], [1, "Regular Expression"]])"_json},
      {kFill, "TypePopUpButton", R"([[0, "String"], [1, "Sequence"]])"_json},
  };
  launch();
  for (const auto& [sheet, control, items] : menus) {
    const json controls = done("controls", {{"window", sheet.window}})["controls"];
    EXPECT_EQ(controls[sheet.window + control]["titles"], items) << sheet.window << control;
  }
}

// What a setting holds, and what a sheet shows of it; the controls that are not named show what is first.
TEST_F(ClipboardSheetsTest, ASheetShowsTheRecordThatItWasUsedWithLast) {
  const struct {
    const Sheet& sheet;
    json record;
    json shown;
  } cases[] = {
      {kSplit,
       R"({"Code": 102, "IntArg1": 32, "Arg1": "\r\n", "Arg2": "\t;\\"})"_json,
       {{"LineSeparatorComboBox", "\\r\\n"},
        {"ColumnSeparatorComboBox", "\\t;\\"},
        {"RemoveQuotesCheckbox", true}}},
      {kSplit, R"({"IntArg1": "32"})"_json, {{"RemoveQuotesCheckbox", true}}},
      {kSplit, R"({"IntArg1": 0})"_json, {{"RemoveQuotesCheckbox", false}}},
      {kSplit, R"({"IntArg1": 49, "Arg1": "x"})"_json, {{"LineSeparatorComboBox", "x"}}},  // exactly 32
      {kSplit, R"({"IntArg1": 33})"_json, {{"RemoveQuotesCheckbox", false}}},
      {kJoin,
       R"({"Code": 902, "IntArg1": 1, "Arg1": "\n", "Arg2": "\t"})"_json,
       {{"LineSeparatorComboBox", "\\n"}, {"ColumnSeparatorComboBox", "\\t"}, {"AddQuotesCheckbox", true}}},
      {kJoin,
       R"({"IntArg1": "1", "Arg2": 7})"_json,
       {{"ColumnSeparatorComboBox", "7"}, {"AddQuotesCheckbox", true}}},
      {kJoin, R"({"IntArg1": 3})"_json, {{"AddQuotesCheckbox", false}}},  // exactly 1
      {kTrim,
       R"({"Code": 311, "IntArg1": 1, "IntArg2": 3, "IntArg3": 2, "Arg1": "Lines: 1", "Arg2": "\\n"})"_json,
       {{"TextField", "\\n"},
        {"TrimWhatPopUpButton", 3},
        {"TrimFromPopUpButton", 2},
        {"CaseSensitiveButton", true}}},
      {kTrim,
       R"({"IntArg1": 7, "IntArg2": "1", "IntArg3": 1.9})"_json,
       {{"TrimWhatPopUpButton", 1}, {"TrimFromPopUpButton", 1}, {"CaseSensitiveButton", true}}},
      {kTrim, R"({"IntArg1": 6})"_json, {{"CaseSensitiveButton", false}}},
      {kReplace,
       R"({"Code": 312, "IntArg1": 1, "IntArg2": 1, "Arg1": "Columns: 2", "Arg2": "a", "Arg3": "\tb"})"_json,
       {{"WhatTextField", "a"},
        {"WithTextField", "\tb"},
        {"TypePopUpButton", 1},
        {"CaseSensitiveButton", true}}},
      {kFill,
       R"({"Code": 314, "IntArg1": 1, "Arg1": "10,5", "Arg2": "Lines: 1"})"_json,
       {{"TypePopUpButton", 1}, {"WithTextField", "10,5"}}},
  };
  for (const auto& [sheet, record, shown] : cases) {
    restart();
    remember(sheet, record);
    launch();
    json expected = kFirst.at(&sheet);
    expected.update(shown);
    EXPECT_EQ(opened(sheet), named(sheet, expected)) << sheet.window << record;
  }
}

// Of what is no record, or no value of one, a sheet reads nothing.
TEST_F(ClipboardSheetsTest, SettingsOfOtherKindsReadAsNothing) {
  const json notPanels[] = {3, "text", true, json::array({1, 2}), json::object()};
  const json notRecords[] = {
      nullptr,
      3,
      "text",
      json::array(),
      json::object(),
      R"({"IntArg1": [32], "IntArg2": {"a": 1}, "IntArg3": null, "Arg1": [], "Arg2": {},
                                 "Arg3": [[1]]})"_json,
      R"({"IntArg1": "x", "IntArg2": "", "IntArg3": "-"})"_json};
  launch();
  for (const auto& [sheet, first] : kFirst) {
    for (const json& panels : notPanels) {
      setDefault(kLastKey, panels);
      EXPECT_EQ(opened(*sheet), named(*sheet, first)) << sheet->window << panels;
    }
    for (const json& record : notRecords) {
      remember(*sheet, record);
      EXPECT_EQ(opened(*sheet), named(*sheet, first)) << sheet->window << record;
    }
  }
}

TEST_F(ClipboardSheetsTest, AnUnreadableValueDoesNotHideTheOthers) {
  launch();
  remember(kSplit, R"({"IntArg1": 32, "Arg1": [1], "Arg2": ","})"_json);
  json expected = kFirst.at(&kSplit);
  expected.update({{"ColumnSeparatorComboBox", ","}, {"RemoveQuotesCheckbox", true}});
  EXPECT_EQ(opened(kSplit), named(kSplit, expected));
}

TEST_F(ClipboardSheetsTest, ATagThatNoItemHasLeavesTheMenuAsItStands) {
  launch();
  remember(kTrim, R"({"IntArg2": 77, "IntArg3": -1})"_json);
  EXPECT_EQ(opened(kTrim), named(kTrim, kFirst.at(&kTrim)));
}

TEST_F(ClipboardSheetsTest, WhatIsTypedAndCancelledIsForgotten) {
  launch();
  remember(kFill, R"({"IntArg1": 1, "Arg1": "5"})"_json);
  choose(kFill.action);
  done("setControl", {{"name", "clipboardDataFillWindowWithTextField"}, {"value", "x"}});
  done("setControl", {{"name", "clipboardDataFillWindowTypePopUpButton"}, {"value", 0}});
  done("press", {{"name", "cancel"}});
  EXPECT_EQ(opened(kFill), named(kFill, {{"TypePopUpButton", 1}, {"WithTextField", "5"}}));
}

// The two boxes are not of the record: they stay as they stand, and are off in the next run.
TEST_F(ClipboardSheetsTest, TheBoxesOfSplitStayAsTheyStand) {
  const auto boxes = [this] {
    const json shown = opened(kSplit);
    return json{shown["clipboardDataSplitWindowSplitClipboardIntoLinesCheckbox"],
                shown["clipboardDataSplitWindowSplitLinesIntoColumnsCheckbox"]};
  };
  launch();
  use(kSplit, {{"SplitLinesIntoColumnsCheckbox", true}});
  EXPECT_EQ(boxes(), (json{false, true}));
  choose(kSplit.action, {});
  done("setControl", {{"name", "clipboardDataSplitWindowSplitClipboardIntoLinesCheckbox"}, {"value", true}});
  done("press", {{"name", "cancel"}});
  EXPECT_EQ(boxes(), (json{true, true})) << "Cancel does not set them back";
  setDefault(kLastKey, nullptr);
  EXPECT_EQ(boxes(), (json{true, true}));
  terminate();
  launch();
  EXPECT_EQ(boxes(), (json{false, false}));
}

TEST_F(ClipboardSheetsTest, ASheetFirstShowsItsWindow) {
  launch();
  for (const Sheet* sheet : kRemembering) {
    done("closeWindow", {{"window", "clipboardDataWindow"}});
    EXPECT_FALSE(isOpen("clipboardDataWindow"));
    choose(sheet->action);
    EXPECT_TRUE(isOpen("clipboardDataWindow")) << sheet->window;
    EXPECT_TRUE(isOpen(sheet->window)) << sheet->window;
    done("press", {{"name", "cancel"}});
    EXPECT_FALSE(isOpen(sheet->window)) << sheet->window;
  }
}

TEST_F(ClipboardSheetsTest, TheWindowThatASheetShowsIsAsItWasLeft) {
  launch();
  showClipboardDataWindow();
  begin("a|b");
  done("closeWindow", {{"window", "clipboardDataWindow"}});
  use(kFill, {{"WithTextField", "x"}});
  EXPECT_EQ(window()["shown"], "grid");
}

// Done.

TEST_F(ClipboardSheetsTest, SplitMakesARecordOfItsSeparatorsAndTheQuotes) {
  const struct {
    json controls;
    json record;
  } cases[] = {
      {{{"SplitClipboardIntoLinesCheckbox", true},
        {"LineSeparatorComboBox", "\\r\\n"},
        {"SplitLinesIntoColumnsCheckbox", true},
        {"ColumnSeparatorComboBox", "\\t|\\q"},
        {"RemoveQuotesCheckbox", true}},
       R"({"Code": 102, "IntArg1": 32, "Arg1": "\r\n", "Arg2": "\t|\\q"})"_json},
      {{{"RemoveQuotesCheckbox", false}},
       R"({"Code": 102, "IntArg1": 0, "Arg1": "\r\n", "Arg2": "\t|\\q"})"_json},
      {{{"SplitClipboardIntoLinesCheckbox", false}},
       R"({"Code": 102, "IntArg1": 0, "Arg1": "", "Arg2": "\t|\\q"})"_json},
      {{{"ColumnSeparatorComboBox", ","},
        {"SplitLinesIntoColumnsCheckbox", false},
        {"RemoveQuotesCheckbox", true}},
       R"({"Code": 102, "IntArg1": 32, "Arg1": "", "Arg2": ""})"_json},
      {{{"SplitClipboardIntoLinesCheckbox", true}, {"LineSeparatorComboBox", "\n"}},
       R"({"Code": 102, "IntArg1": 32, "Arg1": "\n", "Arg2": ""})"_json},
  };
  launch();
  refresh("a");
  for (const auto& [changed, record] : cases) {
    // A separator that was off is not in the record, so it is not shown again.
    json controls = {{"LineSeparatorComboBox", "\\r\\n"}, {"ColumnSeparatorComboBox", "\\t|\\q"}};
    controls.update(changed);
    use(kSplit, controls);
    EXPECT_EQ(lastOperation(), record) << controls;
    EXPECT_EQ(remembered(kSplit), record) << controls;
    EXPECT_FALSE(isOpen(kSplit.window));
  }
}

TEST_F(ClipboardSheetsTest, SplitAndJoinLeadFromTextToGridAndBack) {
  launch();
  refresh("a,\"b,c\"\nd\n");
  use(kSplit, {{"SplitClipboardIntoLinesCheckbox", true},
               {"LineSeparatorComboBox", "\\n"},
               {"SplitLinesIntoColumnsCheckbox", true},
               {"ColumnSeparatorComboBox", ","},
               {"RemoveQuotesCheckbox", true}});
  EXPECT_EQ(window()["grid"], R"([["a", "b,c"], ["d"], [""]])"_json);
  EXPECT_EQ(window()["shown"], "grid");
  use(kJoin, {{"LineSeparatorComboBox", "\\r\\n"}, {"ColumnSeparatorComboBox", "\\t"}});
  EXPECT_EQ(done("pasteboard")["text"], "a\tb,c\r\nd\r\n");
  EXPECT_EQ(window()["shown"], "text");
}

TEST_F(ClipboardSheetsTest, SplitEnablesPerformAndJoinAndJoinLeavesThemAlone) {
  const auto enabled = [this] {
    const json shown = window();
    return json{shown["performEnabled"], shown["joinEnabled"]};
  };
  launch();
  EXPECT_EQ(enabled(), (json{false, false}));
  refresh("a");
  use(kJoin);
  EXPECT_EQ(enabled(), (json{false, false}));
  choose(kSplit.action, {{"cancel", true}});
  EXPECT_EQ(enabled(), (json{false, false}));
  perform({{"Code", 102}});
  EXPECT_EQ(enabled(), (json{false, false})) << "it is the sheet that does it";
  use(kSplit);
  EXPECT_EQ(enabled(), (json{true, true}));
  use(kJoin);
  EXPECT_EQ(enabled(), (json{true, true}));
}

TEST_F(ClipboardSheetsTest, ASplitThatFailsIsRememberedAndEnablesTheItemsToo) {
  launch();
  refresh(std::string(16'384, ','));
  use(kSplit, {{"SplitLinesIntoColumnsCheckbox", true}, {"ColumnSeparatorComboBox", ","}});
  const json shown = window();
  EXPECT_EQ(shown["status"], (json{{"text", "Too many columns"}, {"type", 2}}));
  EXPECT_EQ(shown["performEnabled"], true);
  EXPECT_EQ(shown["joinEnabled"], true);
  EXPECT_EQ(remembered(kSplit)["Arg2"], ",");
  EXPECT_FALSE(isOpen(kSplit.window));
}

TEST_F(ClipboardSheetsTest, JoinMakesARecordOfItsSeparatorsAndTheQuotes) {
  const struct {
    json controls;
    json record;
  } cases[] = {
      {{{"LineSeparatorComboBox", "\\n"}, {"ColumnSeparatorComboBox", "\\t;"}, {"AddQuotesCheckbox", true}},
       R"({"Code": 902, "IntArg1": 1, "Arg1": "\n", "Arg2": "\t;"})"_json},
      {{{"LineSeparatorComboBox", ""}, {"AddQuotesCheckbox", false}},
       R"({"Code": 902, "IntArg1": 0, "Arg1": "", "Arg2": "\t;"})"_json},
  };
  launch();
  for (const auto& [controls, record] : cases) {
    begin("a|b");
    use(kJoin, controls);
    EXPECT_EQ(lastOperation(), record);
    EXPECT_EQ(remembered(kJoin), record);
    EXPECT_FALSE(isOpen(kJoin.window));
  }
}

// All texts of these are taken as typed.
TEST_F(ClipboardSheetsTest, TrimReplaceAndFillMakeRecordsForTheSelection) {
  const struct {
    const Sheet& sheet;
    json controls;
    json record;  // without the cells
    const char* cells;
  } cases[] = {
      {kTrim,
       json::object(),
       {{"Code", 311}, {"IntArg1", 0}, {"IntArg2", 0}, {"IntArg3", 0}, {"Arg2", ""}},
       "Arg1"},
      {kTrim,
       {{"TextField", "\\t "},
        {"TrimWhatPopUpButton", 1},
        {"TrimFromPopUpButton", 2},
        {"CaseSensitiveButton", true}},
       {{"Code", 311}, {"IntArg1", 1}, {"IntArg2", 1}, {"IntArg3", 2}, {"Arg2", "\\t "}},
       "Arg1"},
      {kReplace,
       json::object(),
       {{"Code", 312}, {"IntArg1", 0}, {"IntArg2", 0}, {"Arg2", ""}, {"Arg3", ""}},
       "Arg1"},
      {kReplace,
       {{"WhatTextField", "(\\n"},
        {"WithTextField", "$1"},
        {"TypePopUpButton", 1},
        {"CaseSensitiveButton", true}},
       {{"Code", 312}, {"IntArg1", 1}, {"IntArg2", 1}, {"Arg2", "(\\n"}, {"Arg3", "$1"}},
       "Arg1"},
      {kFill, json::object(), {{"Code", 314}, {"IntArg1", 0}, {"Arg1", ""}}, "Arg2"},
      {kFill,
       {{"TypePopUpButton", 1}, {"WithTextField", "10,\\t"}},
       {{"Code", 314}, {"IntArg1", 1}, {"Arg1", "10,\\t"}},
       "Arg2"},
  };
  launch();
  showClipboardDataWindow();
  for (const auto& [sheet, controls, withoutCells, cells] : cases) {
    json record = withoutCells;
    splitAndSelectLine();
    use(sheet, controls);
    record[cells] = "Lines: 1";
    EXPECT_EQ(lastOperation(), record);
    EXPECT_EQ(remembered(sheet), record);
    EXPECT_FALSE(isOpen(sheet.window));

    splitAndSelectCells();
    use(sheet);  // as it was used last
    record[cells] = "Cells: (1, 2)+(3, 1)";
    EXPECT_EQ(lastOperation(), record) << "with the cells of now";
    EXPECT_EQ(remembered(sheet), record);
  }
}

TEST_F(ClipboardSheetsTest, TheCellsAreThoseSelectedWhenDoneIsPressed) {
  launch();
  splitAndSelectLine();
  choose(kFill.action);
  selectLine(2);
  done("press", {{"name", "done"}});
  EXPECT_EQ(lastOperation()["Arg2"], "Lines: 1, 3");
}

TEST_F(ClipboardSheetsTest, CancelPerformsAndStoresNothing) {
  launch();
  splitAndSelectLine();
  for (const Sheet* sheet : kRemembering) {
    opened(*sheet);
    EXPECT_FALSE(isOpen(sheet->window)) << sheet->window;
    EXPECT_EQ(operations().size(), 1u) << sheet->window;
    EXPECT_EQ(defaultOf(kLastKey), nullptr) << sheet->window;
  }
}

TEST_F(ClipboardSheetsTest, DoneAndCancelAreCommandsOfTheirOwn) {
  launch();
  splitAndSelectLine();
  for (const Sheet* sheet : kRemembering) {
    const std::size_t before = operations().size();
    choose(sheet->action);
    choose(sheet->window + "CancelButtonPressed");
    EXPECT_FALSE(isOpen(sheet->window)) << sheet->window;
    EXPECT_EQ(operations().size(), before) << sheet->window;
    choose(sheet->action);
    choose(sheet->window + "DoneButtonPressed");
    EXPECT_FALSE(isOpen(sheet->window)) << sheet->window;
    EXPECT_EQ(operations().size(), before + 1) << sheet->window;
  }
}

// What is remembered.

TEST_F(ClipboardSheetsTest, EachSheetIsRememberedUnderItsKeyAndKeptForTheNextRun) {
  launch();
  std::map<std::string, json> records;
  for (const Sheet* sheet : kRemembering) {
    splitAndSelectLine();
    use(*sheet);
    records[sheet->key] = lastOperation();
  }
  EXPECT_EQ(defaultOf(kLastKey), json(records));
  splitAndSelectLine();
  use(kFill, {{"WithTextField", "new"}});
  records[kFill.key]["Arg1"] = "new";
  EXPECT_EQ(defaultOf(kLastKey), json(records)) << "the others stay";
  terminate();
  restart();
  launch();
  EXPECT_EQ(opened(kFill), named(kFill, {{"TypePopUpButton", 0}, {"WithTextField", "new"}}));
}

TEST_F(ClipboardSheetsTest, ASettingOfAnotherKindIsReplacedAndStrangersInItStay) {
  const struct {
    json before;
    json others;
  } cases[] = {{3, json::object()},
               {"text", json::object()},
               {json::array({1}), json::object()},
               {{{"Other", {{"a", json::array({1})}}}, {"ClipboardDataTrimKey", "no record"}},
                {{"Other", {{"a", json::array({1})}}}, {"ClipboardDataTrimKey", "no record"}}}};
  launch();
  for (const auto& [before, others] : cases) {
    setDefault(kLastKey, before);
    splitAndSelectLine();
    use(kFill, {{"WithTextField", "x"}});
    json expected = others;
    expected[kFill.key] = lastOperation();
    EXPECT_EQ(defaultOf(kLastKey), expected) << before;
  }
}

// The details of a cell.

const std::string kCellDetails = "cellDetailsWindow";

class CellDetailsTest : public ClipboardScenario {
 protected:
  // Presses Return in the grid, and Done with the text, or Cancel without one.
  json pressReturn(const json& text = nullptr) {
    json arguments = {{"key", "return"}};
    if (!text.is_null()) arguments["values"] = {{"cellDetailsWindowTextField", text}};
    return done("key", arguments)["opened"];
  }
  void focus(int row, int column) { done("click", {{"row", row}, {"column", column + 1}}); }
  static json shows(const std::string& text) { return {{"cellDetailsWindowTextField", text}}; }
};

TEST_F(CellDetailsTest, ShowTheFocusedCellAndEditIt) {
  launch();
  showClipboardDataWindow();
  begin("a|b|c/d");
  focus(0, 1);
  EXPECT_EQ(pressReturn("x\\n\ny"), shows("b"));
  EXPECT_EQ(lastOperation(), R"({"Code": 401, "IntArg1": 0, "IntArg2": 1, "Arg1": "x\\n\ny"})"_json);
  EXPECT_EQ(window()["grid"], R"([["a", "x\\n\ny", "c"], ["d"]])"_json);
  EXPECT_EQ(pressReturn(), shows("x\\n\ny"));
  EXPECT_EQ(operations().size(), 2u) << "cancelled";
  EXPECT_EQ(defaultOf(kLastKey), nullptr) << "nothing is remembered";
}

TEST_F(CellDetailsTest, AMissingCellIsEmptyAndIsMade) {
  launch();
  begin("a|b|c/d");
  focus(0, 2);
  done("key", {{"key", "down"}});
  ASSERT_EQ(window()["focus"], (json{1, 2}));
  EXPECT_EQ(pressReturn("x"), shows(""));
  EXPECT_EQ(window()["grid"], R"([["a", "b", "c"], ["d", "", "x"]])"_json);
}

TEST_F(CellDetailsTest, WithoutAFocusTheSheetIsEmptyAndDoneIsRefused) {
  launch();
  begin("a|b");
  EXPECT_EQ(pressReturn("x"), shows(""));
  EXPECT_EQ(lastOperation(), R"({"Code": 401, "IntArg1": -1, "IntArg2": -1, "Arg1": "x"})"_json);
  EXPECT_EQ(window()["status"], (json{{"text", "Index out of range"}, {"type", 2}}));
  EXPECT_EQ(window()["grid"], R"([["a", "b"]])"_json);
}

TEST_F(CellDetailsTest, AnEarlierTextIsForgotten) {
  launch();
  begin("a|b");
  focus(0, 0);
  pressReturn();
  done("refreshDataFromClipboard");
  EXPECT_EQ(pressReturn(), shows("")) << "there is no focus any more";
}

TEST_F(CellDetailsTest, DoneAndCancelAreCommandsOfTheirOwn) {
  launch();
  begin("a|b");
  focus(0, 0);
  choose("rowsTableViewReturnKeyPressed");
  EXPECT_EQ(done("controls", {{"window", kCellDetails}})["open"], true);
  choose("cellDetailsWindowCancelButtonClicked");
  EXPECT_EQ(done("controls", {{"window", kCellDetails}})["open"], false);
  EXPECT_EQ(operations().size(), 1u);
  choose("rowsTableViewReturnKeyPressed");
  choose("cellDetailsWindowDoneButtonClicked");
  EXPECT_EQ(done("controls", {{"window", kCellDetails}})["open"], false);
  EXPECT_EQ(lastOperation()["Code"], 401);
}

}  // namespace
}  // namespace quillet::testing
