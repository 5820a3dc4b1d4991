// What each panel shows of a record, what it makes and writes, and which of its controls are on and shown.
#include <algorithm>
#include <cstdint>
#include <set>

#include "scenarios/drive_session.h"
#include "support/random_source.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

// The code, and where the panel's controls begin with another name than the window, that.
struct PanelName {
  int code;
  std::string window;
  std::string controls;
};

const PanelName kPanels[] = {
    {101, "initialOperationsWindow", "initialOperationsWindow"},
    {150, "replaceCharacterOperationWindow", "replaceCharacterOperationWindow"},
    {201, "skipLineOperationWindow", "skipLineOperationWindow"},
    {202, "trimLineOperationWindow", "trimLineOperationWindow"},
    {203, "replaceLineOperationWindow", "replaceLineOperationWindow"},
    {251, "joinLinesOperationWindow", "joinLinesOperationWindow"},
    {301, "trimColumnOperationWindow", "trimColumnOperationWindow"},
    {302, "replaceColumnOperationWindow", "replaceColumnOperationWindow"},
    {303, "reformatColumnOperationWindow", "reformatColumnOperationWindow"},
    {351, "setNumberOfColumnsOperationWindow", "setNumberOfColumnsOperationsWindow"},
    {352, "rearrangeColumnsOperationWindow", "rearrangeColumnsOperationWindow"},
    {353, "joinColumnsOperationWindow", "joinColumnsOperationWindow"},
    {361, "setNumberOfColumnsOperationWindow", "setNumberOfColumnsOperationsWindow"},
    {901, "finalOperationsWindow", "finalOperationsWindow"},
};

const PanelName& panelOf(int code) {
  return *std::find_if(std::begin(kPanels), std::end(kPanels),
                       [code](const PanelName& panel) { return panel.code == code; });
}

// The controls with the panel's name before each.
json named(int code, const json& controls) {
  json result = json::object();
  for (const auto& [end, value] : controls.items()) result[panelOf(code).controls + end] = value;
  return result;
}

bool isEnd(int code) {
  return code == 101 || code == 901;
}

class OperationPanelsTest : public Scenario {
 protected:
  // Over a file that is in no folder, so that no pass finds other columns.
  void launchWithEntry(const json& operations, const json& columns = {}) {
    launch();
    json entry = {{"FilePath", path("none.csv")}, {"Operations", operations}};
    if (!columns.is_null()) entry["ExpectedColumnsInLine"] = columns;
    done("setInputFiles", {{"entries", {entry}}});
    select({0});
  }

  // One selected file of five columns, "v" to "z".
  void launchWithFile() {
    launch();
    add({write("a.csv", "v,w,x,y,z\n")});
    setOperations(0, csvOperations("a.csv"));
    select({0});
  }
  json operations() { return entries()[0]["Operations"]; }
  // Puts the record into the list, at its place, and selects it.
  void store(const json& record) {
    const int code = record["Code"];
    json list = csvOperations("a.csv");
    row_ = code == 901 ? 1 : isEnd(code) ? 0 : 1;
    if (isEnd(code))
      list[row_] = record;
    else
      list.insert(list.begin() + 1, record);
    setOperations(0, list);
    select({0});
    done("selectOperations", {{"rows", {row_}}});
  }
  json stored() { return operations()[row_]; }
  json add(int code, const json& controls) {
    setOperations(0, csvOperations("a.csv"));
    select({0});
    return done("addOperation", {{"code", code}, {"values", named(code, controls)}})["opened"];
  }
  using Scenario::add;
  json edit(int code, const json& controls = json::object()) {
    return done("editOperation", {{"values", named(code, controls)}})["opened"];
  }
  json open(const std::string& handler) { return done("menu", {{"action", handler}})["opened"]; }
  json controls(int code) { return done("controls", {{"window", panelOf(code).window}})["controls"]; }
  json control(int code, const std::string& end) { return controls(code)[panelOf(code).controls + end]; }
  void set(int code, const std::string& end, const json& value) {
    done("setControl", {{"name", panelOf(code).controls + end}, {"value", value}});
  }
  void press(const std::string& name) { done("press", {{"name", name}}); }

 private:
  int row_ = 0;
};

TEST_F(OperationPanelsTest, AtFirstTextsAreEmptyBoxesOffAndTagsTheLowest) {
  struct First {
    int code;
    json controls;
  };
  const json trim = {{"TextField", ""},
                     {"TrimWhatPopUpButton", 0},
                     {"TrimFromPopUpButton", 0},
                     {"CaseSensitiveButton", false}};
  const json replace = {
      {"TypePopUpButton", 0}, {"WhatTextField", ""}, {"WithTextField", ""}, {"CaseSensitiveButton", false}};
  const auto withColumns = [](json controls) {
    controls["ColumnsTableView"] = json::array();
    return controls;
  };
  const First firsts[] = {
      {150, {{"TypePopUpButton", 0}, {"WhatTextField", ""}, {"WithTextField", ""}}},
      {201, {{"SkipIfPopUpButton", 0}, {"TextField", ""}, {"CaseSensitiveButton", false}}},
      {202, trim},
      {203, replace},
      {251, {{"NumberToJoinTextField", "0"}, {"SeparatorTextField", ""}}},
      {301, withColumns(trim)},
      {302, withColumns(replace)},
      {303, withColumns({{"ReformatAsPopUpButton", 1},
                         {"DatePopUpButton", 1},
                         {"TimePopUpButton", 1},
                         {"FormatDateTimeDatePopUpButton", 1},
                         {"FormatDateTimeTimePopUpButton", 1},
                         {"DigitsToTheRightField", "2"},
                         {"UseInvalidStringButton", false},
                         {"InvalidString", ""}})},
      {351, {{"RequiredNumberOfColumnsTextField", "5"}, {"TextForAddedColumnsTextField", ""}}},
      {352, withColumns(json::object())},
      {353, withColumns({{"SeparatorTextField", ""}})},
  };
  launchWithFile();
  for (const First& first : firsts)
    EXPECT_EQ(done("addOperation", {{"code", first.code}})["opened"], named(first.code, first.controls));
  json initial = controls(101);
  for (const char* box :
       {"SplitContentsIntoLinesCheckbox", "SplitLinesIntoColumnsCheckbox", "RemoveQuotesCheckbox"})
    EXPECT_EQ(initial["initialOperationsWindow" + std::string(box)]["value"], false) << box;
  EXPECT_EQ(control(101, "LineSeparatorComboBox")["value"], "");
  EXPECT_EQ(control(101, "DecodeAsPopUpButton")["value"], 1);
  EXPECT_EQ(control(901, "WriteModePopUpButton")["value"], 1);
  EXPECT_EQ(control(901, "FileNameTextField")["value"], "");
}

TEST_F(OperationPanelsTest, MenusOfferTheirValuesUnderTheirTags) {
  struct Menu {
    int code;
    std::string control;
    json items;
  };
  const json trim =
      R"([[0, "String"], [1, "Characters"], [2, "Whitespace"], [3, "Regular Expression"]])"_json;
  const json from = R"([[0, "From Both Sides"], [1, "From Start"], [2, "From End"]])"_json;
  const json replace = R"([[0, "String"], [1, "Regular Expression"]])"_json;
  const json encodings = R"([[1, "UTF-8"], [2, "Windows CP1252"], [3, "Mac Roman"], [4, "ASCII"]])"_json;
  const Menu menus[] = {
      {101, "DecodeAsPopUpButton", encodings},
      {150, "TypePopUpButton",
       R"([[0, "Characters"], [1, "ASCII Control Character"], [2, "Uncommon Character"]])"_json},
      {201, "SkipIfPopUpButton",
       R"([[0, "If Blank"], [1, "If Contains"], [2, "Line Numbers"], [3, "If Starts With"],
           [4, "If Ends With"], [5, "If Matches Regular Expression"]])"_json},
      {202, "TrimWhatPopUpButton", trim},
      {202, "TrimFromPopUpButton", from},
      {203, "TypePopUpButton", replace},
      {301, "TrimWhatPopUpButton", trim},
      {301, "TrimFromPopUpButton", from},
      {302, "TypePopUpButton", replace},
      {303, "ReformatAsPopUpButton",
       R"([[1, "Date"], [2, "Time"], [3, "Date Time"], [4, "Integer"], [5, "Number"]])"_json},
      {901, "EncodeAsPopUpButton", encodings},
      {901, "WriteModePopUpButton", R"([[1, "Create New"], [2, "Overwrite"], [3, "Append"]])"_json},
  };
  launch();
  for (const Menu& menu : menus)
    EXPECT_EQ(control(menu.code, menu.control)["titles"], menu.items) << menu.code << menu.control;
}

TEST_F(OperationPanelsTest, FormatsShowTodayAtATimeInTheEvening) {
  launch();
  const json dates = control(303, "DatePopUpButton")["titles"];
  const json datesOfDateTime = control(303, "FormatDateTimeDatePopUpButton")["titles"];
  const json times = R"([[1, "8:13 PM"], [2, "8:13:01 PM"], [3, "8:13:01 PM UTC"], [4, "20:13"],
                         [5, "20:13:01"], [6, "20:13 +0000"], [7, "20:13:01 +0000"]])"_json;
  EXPECT_EQ(control(303, "TimePopUpButton")["titles"], times);
  EXPECT_EQ(control(303, "FormatDateTimeTimePopUpButton")["titles"], times);

  ASSERT_EQ(dates.size(), 5u);
  const std::string day = dates[3][1];
  const auto seconds = call("dateFromString", {{"text", day}})["seconds"].get<double>();
  EXPECT_LT(std::abs(seconds - static_cast<double>(std::time(nullptr))), 2 * 86400) << day;
  EXPECT_EQ(dates[4], (json{5, day + " +0000"}));
  for (int tag = 1; tag <= 3; ++tag) {
    EXPECT_EQ(dates[tag - 1][0], tag);
    EXPECT_EQ(call("dateFromString", {{"text", dates[tag - 1][1]}})["seconds"], seconds) << dates[tag - 1];
  }
  json withoutTheLast = dates;
  withoutTheLast.erase(4);
  EXPECT_EQ(datesOfDateTime, withoutTheLast) << "the time brings the zone";
}

// The record in a list, what the panel shows of it, what is set, and the record that this leaves.
struct Editing {
  json record;
  json opened;
  json set;
  json edited;
};

TEST_F(OperationPanelsTest, AnEditWritesTheKeysOfItsCodeAndLeavesTheOthersAlone) {
  const Editing editings[] = {
      {R"({"Code": 101, "IntArg1": 78, "IntArg2": 12, "Arg1": "\r\n", "Arg2": "\t;", "Arg3": "k", "IntArg3": 9})"_json,
       {{"DecodeAsPopUpButton", 2},
        {"SplitContentsIntoLinesCheckbox", false},
        {"SplitLinesIntoColumnsCheckbox", false},
        {"RemoveQuotesCheckbox", false},
        {"LineSeparatorComboBox", "\\r\\n"},
        {"ColumnSeparatorComboBox", "\\t;"}},
       {{"DecodeAsPopUpButton", 3},
        {"SplitContentsIntoLinesCheckbox", true},
        {"SplitLinesIntoColumnsCheckbox", true},
        {"RemoveQuotesCheckbox", true},
        {"LineSeparatorComboBox", "\\n\\q"},
        {"ColumnSeparatorComboBox", "\\t"}},
       R"({"Code": 101, "IntArg1": 127, "IntArg2": 30, "Arg1": "\n\\q", "Arg2": "\t", "Arg3": "k", "IntArg3": 9})"_json},
      {R"({"Code": 101, "IntArg1": 127, "IntArg2": "1", "Arg1": "", "Arg2": ","})"_json,
       {{"DecodeAsPopUpButton", 4},
        {"SplitContentsIntoLinesCheckbox", true},
        {"SplitLinesIntoColumnsCheckbox", true},
        {"RemoveQuotesCheckbox", true},
        {"LineSeparatorComboBox", ""},
        {"ColumnSeparatorComboBox", ","}},
       {{"DecodeAsPopUpButton", 1},
        {"SplitContentsIntoLinesCheckbox", false},
        {"SplitLinesIntoColumnsCheckbox", false},
        {"RemoveQuotesCheckbox", false}},
       R"({"Code": 101, "IntArg1": 78, "IntArg2": 4, "Arg1": "", "Arg2": ","})"_json},
      {R"({"Code": 150, "IntArg1": 7, "IntArg2": "1", "Arg1": "q", "Arg2": "w", "Arg3": "k", "IntArg5": 5})"_json,
       {{"TypePopUpButton", 1}, {"WhatTextField", "q"}, {"WithTextField", "w"}},
       {{"TypePopUpButton", 2}, {"WhatTextField", "\\t"}, {"WithTextField", ""}},
       R"({"Code": 150, "IntArg1": 0, "IntArg2": 2, "Arg1": "\\t", "Arg2": "", "Arg3": "k", "IntArg5": 5})"_json},
      {R"({"Code": 201, "IntArg1": 6, "IntArg2": 5, "Arg1": "^#", "Arg2": "k", "IntArg3": 9})"_json,
       {{"SkipIfPopUpButton", 5}, {"TextField", "^#"}, {"CaseSensitiveButton", false}},
       {{"SkipIfPopUpButton", 1}, {"TextField", "#"}, {"CaseSensitiveButton", true}},
       R"({"Code": 201, "IntArg1": 7, "IntArg2": 1, "Arg1": "#", "Arg2": "k", "IntArg3": 9})"_json},
      {R"({"Code": 202, "IntArg1": "7", "IntArg2": 3, "IntArg3": 2, "Arg1": "x+", "Arg2": "k", "IntArg4": 9})"_json,
       {{"TrimWhatPopUpButton", 3},
        {"TrimFromPopUpButton", 2},
        {"TextField", "x+"},
        {"CaseSensitiveButton", true}},
       {{"TrimWhatPopUpButton", 1},
        {"TrimFromPopUpButton", 1},
        {"TextField", "\\n"},
        {"CaseSensitiveButton", false}},
       R"({"Code": 202, "IntArg1": 6, "IntArg2": 1, "IntArg3": 1, "Arg1": "\\n", "Arg2": "k", "IntArg4": 9})"_json},
      {R"({"Code": 203, "IntArg1": 3, "IntArg2": 1, "Arg1": "a", "Arg2": "b", "Arg3": "k", "IntArg3": 9})"_json,
       {{"TypePopUpButton", 1},
        {"WhatTextField", "a"},
        {"WithTextField", "b"},
        {"CaseSensitiveButton", true}},
       {{"TypePopUpButton", 0},
        {"WhatTextField", "c"},
        {"WithTextField", "d"},
        {"CaseSensitiveButton", false}},
       R"({"Code": 203, "IntArg1": 2, "IntArg2": 0, "Arg1": "c", "Arg2": "d", "Arg3": "k", "IntArg3": 9})"_json},
      {R"({"Code": 251, "IntArg1": 3, "Arg1": ";", "Arg2": "k", "IntArg2": 9})"_json,
       {{"NumberToJoinTextField", "3"}, {"SeparatorTextField", ";"}},
       {{"NumberToJoinTextField", " 12 lines"}, {"SeparatorTextField", "\\n"}},
       R"({"Code": 251, "IntArg1": 12, "Arg1": "\\n", "Arg2": "k", "IntArg2": 9})"_json},
      {R"({"Code": 301, "IntArg1": 2, "IntArg2": 2, "IntArg3": 1, "Arg1": "2, 4 - 9", "Arg2": "t", "Arg3": "k", "IntArg4": 9})"_json,
       {{"ColumnsTableView", {1, 3, 4}},
        {"TrimWhatPopUpButton", 2},
        {"TrimFromPopUpButton", 1},
        {"TextField", "t"},
        {"CaseSensitiveButton", false}},
       {{"ColumnsTableView", {0, 1, 2}},
        {"TrimWhatPopUpButton", 0},
        {"TrimFromPopUpButton", 0},
        {"TextField", "u"},
        {"CaseSensitiveButton", true}},
       R"({"Code": 301, "IntArg1": 3, "IntArg2": 0, "IntArg3": 0, "Arg1": "1 - 3", "Arg2": "u", "Arg3": "k", "IntArg4": 9})"_json},
      {R"({"Code": 302, "IntArg1": 5, "IntArg2": 1, "Arg1": "5", "Arg2": "a", "Arg3": "b", "Arg4": "k", "IntArg3": 9})"_json,
       {{"ColumnsTableView", {4}},
        {"TypePopUpButton", 1},
        {"WhatTextField", "a"},
        {"WithTextField", "b"},
        {"CaseSensitiveButton", true}},
       {{"ColumnsTableView", json::array()},
        {"TypePopUpButton", 0},
        {"WhatTextField", "c"},
        {"WithTextField", "d"},
        {"CaseSensitiveButton", false}},
       R"({"Code": 302, "IntArg1": 4, "IntArg2": 0, "Arg1": "", "Arg2": "c", "Arg3": "d", "Arg4": "k", "IntArg3": 9})"_json},
      {R"({"Code": 351, "IntArg1": "7", "Arg1": "-", "Arg2": "k", "IntArg2": 9})"_json,
       {{"RequiredNumberOfColumnsTextField", "7"}, {"TextForAddedColumnsTextField", "-"}},
       {{"RequiredNumberOfColumnsTextField", "x"}, {"TextForAddedColumnsTextField", ""}},
       R"({"Code": 351, "IntArg1": 0, "Arg1": "", "Arg2": "k", "IntArg2": 9})"_json},
      {R"({"Code": 361, "IntArg1": 2, "Arg1": "-", "Arg2": "k"})"_json,
       {{"RequiredNumberOfColumnsTextField", "2"}, {"TextForAddedColumnsTextField", "-"}},
       {{"RequiredNumberOfColumnsTextField", "9"}, {"TextForAddedColumnsTextField", "n/a"}},
       R"({"Code": 361, "IntArg1": 9, "Arg1": "n/a", "Arg2": "k"})"_json},
      {R"({"Code": 352, "IntArg1": 3, "Arg1": "5,1 , 9, 0, x, -2, 1", "Arg2": "k"})"_json,
       {{"ColumnsTableView", json::array()}},
       json::object(),
       R"({"Code": 352, "IntArg1": 3, "Arg1": "5, 1, 1", "Arg2": "k"})"_json},
      {R"({"Code": 353, "IntArg1": 3, "Arg1": "4, 2 + 3 + 9, 8, 7 + 9, 1", "Arg2": ";", "Arg3": "k"})"_json,
       {{"ColumnsTableView", json::array()}, {"SeparatorTextField", ";"}},
       {{"SeparatorTextField", "\\t"}},
       R"({"Code": 353, "IntArg1": 3, "Arg1": "4, 2 + 3, , 1", "Arg2": "\\t", "Arg3": "k"})"_json},
      {R"({"Code": 901, "IntArg1": 12, "IntArg2": 30, "IntArg3": 3, "Arg1": "\r", "Arg2": "|", "Arg3": "/folder", "Arg4": "o", "IntArg4": 9})"_json,
       {{"EncodeAsPopUpButton", 3},
        {"AddQuotesCheckbox", false},
        {"AddLineSeparatorCheckbox", false},
        {"LineSeparatorComboBox", "\\r"},
        {"ColumnSeparatorComboBox", "|"},
        {"FileNameTextField", "o"},
        {"WriteModePopUpButton", 3}},
       {{"EncodeAsPopUpButton", 4},
        {"AddQuotesCheckbox", true},
        {"AddLineSeparatorCheckbox", true},
        {"LineSeparatorComboBox", "\\r\\n"},
        {"ColumnSeparatorComboBox", "\\t"},
        {"FileNameTextField", "p\\n"},
        {"WriteModePopUpButton", 1}},
       R"({"Code": 901, "IntArg1": 15, "IntArg2": 1, "IntArg3": 1, "Arg1": "\r\n", "Arg2": "\t", "Arg3": "/folder", "Arg4": "p\\n", "IntArg4": 9})"_json},
  };
  launchWithFile();
  for (const Editing& editing : editings) {
    const int code = editing.record["Code"];
    store(editing.record);
    EXPECT_EQ(edit(code, editing.set), named(code, editing.opened)) << editing.record;
    EXPECT_EQ(stored(), editing.edited) << editing.record;
  }
}

TEST_F(OperationPanelsTest, ARecordWithItsCodeAloneShowsTheDefaults) {
  const json trim = {{"TextField", ""},
                     {"TrimWhatPopUpButton", 0},
                     {"TrimFromPopUpButton", 0},
                     {"CaseSensitiveButton", false}};
  const json replace = {
      {"TypePopUpButton", 0}, {"WhatTextField", ""}, {"WithTextField", ""}, {"CaseSensitiveButton", false}};
  struct Default {
    int code;
    json full;  // shown before, so that what is left would be seen
    json opened;
  };
  const Default defaults[] = {
      {101,
       R"({"IntArg1": 49, "IntArg2": 12, "Arg1": "a", "Arg2": "b"})"_json,
       {{"DecodeAsPopUpButton", 1},
        {"SplitContentsIntoLinesCheckbox", false},
        {"SplitLinesIntoColumnsCheckbox", false},
        {"RemoveQuotesCheckbox", false},
        {"LineSeparatorComboBox", ""},
        {"ColumnSeparatorComboBox", ""}}},
      {150,
       R"({"IntArg2": 2, "Arg1": "a", "Arg2": "b"})"_json,
       {{"TypePopUpButton", 0}, {"WhatTextField", ""}, {"WithTextField", ""}}},
      {201,
       R"({"IntArg1": 1, "IntArg2": 2, "Arg1": "a"})"_json,
       {{"SkipIfPopUpButton", 0}, {"TextField", ""}, {"CaseSensitiveButton", false}}},
      {202, R"({"IntArg1": 1, "IntArg2": 2, "IntArg3": 1, "Arg1": "a"})"_json, trim},
      {203, R"({"IntArg1": 1, "IntArg2": 1, "Arg1": "a", "Arg2": "b"})"_json, replace},
      {251,
       R"({"IntArg1": 4, "Arg1": "a"})"_json,
       {{"NumberToJoinTextField", "0"}, {"SeparatorTextField", ""}}},
      // Without a number the operation itself leaves the file no columns.
      {351,
       R"({"IntArg1": 4, "Arg1": "a"})"_json,
       {{"RequiredNumberOfColumnsTextField", "0"}, {"TextForAddedColumnsTextField", ""}}},
      {361,
       R"({"IntArg1": 4, "Arg1": "a"})"_json,
       {{"RequiredNumberOfColumnsTextField", "5"}, {"TextForAddedColumnsTextField", ""}}},
      {353,
       R"({"Arg1": "1 + 2", "Arg2": "b"})"_json,
       {{"ColumnsTableView", json::array()}, {"SeparatorTextField", ""}}},
      {901,
       R"({"IntArg1": 3, "IntArg2": 12, "IntArg3": 3, "Arg1": "a", "Arg2": "b", "Arg4": "c"})"_json,
       {{"EncodeAsPopUpButton", 1},
        {"AddQuotesCheckbox", false},
        {"AddLineSeparatorCheckbox", false},
        {"LineSeparatorComboBox", ""},
        {"ColumnSeparatorComboBox", ""},
        {"FileNameTextField", ""},
        {"WriteModePopUpButton", 2}}},
  };
  launchWithFile();
  for (const Default& one : defaults) {
    json full = one.full;
    full["Code"] = one.code;
    store(full);
    edit(one.code);
    store({{"Code", one.code}});
    EXPECT_EQ(edit(one.code), named(one.code, one.opened));
  }
}

TEST_F(OperationPanelsTest, AMenuKeepsItsItemForAValueThatItDoesNotHave) {
  launchWithFile();
  store({{"Code", 201}, {"IntArg2", 4}});
  edit(201);
  store({{"Code", 201}, {"IntArg2", 17}});
  EXPECT_EQ(edit(201)["skipLineOperationWindowSkipIfPopUpButton"], 4);
}

// What is set and the record that is added; together the keys of every code.
struct Adding {
  int code;
  json set;
  json record;
};

TEST_F(OperationPanelsTest, AddingMakesARecordOfTheKeysOfItsCode) {
  const Adding addings[] = {
      {150,
       {{"TypePopUpButton", 0}, {"WhatTextField", "\\t"}, {"WithTextField", "_"}},
       R"({"Code": 150, "IntArg2": 0, "Arg1": "\\t", "Arg2": "_"})"_json},
      {201,
       {{"SkipIfPopUpButton", 2}, {"TextField", "1, 2"}, {"CaseSensitiveButton", true}},
       R"({"Code": 201, "IntArg1": 1, "IntArg2": 2, "Arg1": "1, 2"})"_json},
      {201,
       {{"SkipIfPopUpButton", 0}, {"TextField", ""}, {"CaseSensitiveButton", false}},
       R"({"Code": 201, "IntArg1": 0, "IntArg2": 0, "Arg1": ""})"_json},
      {202,
       {{"TrimWhatPopUpButton", 2},
        {"TrimFromPopUpButton", 1},
        {"TextField", " "},
        {"CaseSensitiveButton", true}},
       R"({"Code": 202, "IntArg1": 1, "IntArg2": 2, "IntArg3": 1, "Arg1": " "})"_json},
      {203,
       {{"TypePopUpButton", 1},
        {"WhatTextField", "["},
        {"WithTextField", "$1"},
        {"CaseSensitiveButton", true}},
       R"({"Code": 203, "IntArg1": 1, "IntArg2": 1, "Arg1": "[", "Arg2": "$1"})"_json},
      {251,
       {{"NumberToJoinTextField", "3"}, {"SeparatorTextField", "\\n"}},
       R"({"Code": 251, "IntArg1": 3, "Arg1": "\\n"})"_json},
      {301,
       {{"ColumnsTableView", {0, 1, 4}},
        {"TrimWhatPopUpButton", 1},
        {"TrimFromPopUpButton", 2},
        {"TextField", "ab"},
        {"CaseSensitiveButton", true}},
       R"({"Code": 301, "IntArg1": 1, "IntArg2": 1, "IntArg3": 2, "Arg1": "1 - 2, 5", "Arg2": "ab"})"_json},
      {302,
       {{"ColumnsTableView", {2}},
        {"TypePopUpButton", 1},
        {"WhatTextField", "a"},
        {"WithTextField", "b"},
        {"CaseSensitiveButton", true}},
       R"({"Code": 302, "IntArg1": 1, "IntArg2": 1, "Arg1": "3", "Arg2": "a", "Arg3": "b"})"_json},
      {303,
       {{"ColumnsTableView", {0}},
        {"ReformatAsPopUpButton", 1},
        {"DatePopUpButton", 5},
        {"DigitsToTheRightField", "3"},
        {"UseInvalidStringButton", true},
        {"InvalidString", "?"}},
       R"({"Code": 303, "IntArg1": 1, "IntArg2": 1, "IntArg3": 5, "Arg1": "1", "Arg2": "?", "Arg5": 3})"_json},
      {303,
       {{"ReformatAsPopUpButton", 2}, {"TimePopUpButton", 7}, {"UseInvalidStringButton", false}},
       R"({"Code": 303, "IntArg1": 0, "IntArg2": 2, "IntArg3": 7, "Arg1": "1", "Arg2": "?", "Arg5": 3})"_json},
      {303,
       {{"ReformatAsPopUpButton", 3},
        {"FormatDateTimeDatePopUpButton", 4},
        {"FormatDateTimeTimePopUpButton", 6}},
       R"({"Code": 303, "IntArg1": 0, "IntArg2": 3, "IntArg3": 4, "IntArg4": 6, "Arg1": "1", "Arg2": "?", "Arg5": 3})"_json},
      {303,
       {{"ReformatAsPopUpButton", 4}, {"InvalidString", ""}},
       R"({"Code": 303, "IntArg1": 0, "IntArg2": 4, "Arg1": "1", "Arg2": "", "Arg5": 3})"_json},
      {303,
       {{"ReformatAsPopUpButton", 5}, {"DigitsToTheRightField", ""}},
       R"({"Code": 303, "IntArg1": 0, "IntArg2": 5, "Arg1": "1", "Arg2": "", "Arg5": 0})"_json},
      {351,
       {{"RequiredNumberOfColumnsTextField", "8"}, {"TextForAddedColumnsTextField", "-"}},
       R"({"Code": 351, "IntArg1": 8, "Arg1": "-"})"_json},
      {361,
       {{"RequiredNumberOfColumnsTextField", "1"}, {"TextForAddedColumnsTextField", ""}},
       R"({"Code": 361, "IntArg1": 1, "Arg1": ""})"_json},
      {352, json::object(), R"({"Code": 352, "Arg1": "1, 2, 3, 4, 5"})"_json},
      {353, {{"SeparatorTextField", "+"}}, R"({"Code": 353, "Arg1": "1, 2, 3, 4, 5", "Arg2": "+"})"_json},
  };
  launchWithFile();
  for (const Adding& adding : addings) {
    add(adding.code, adding.set);
    EXPECT_EQ(operations()[1], adding.record) << adding.set;
  }
}

TEST_F(OperationPanelsTest, EveryAddCommandOpensItsPanelForItsCode) {
  const std::pair<std::string, int> commands[] = {
      {"addOperationReplaceCharacterMenuItemClicked", 150},
      {"addLineOperationSkipMenuItemClicked", 201},
      {"addLineOperationTrimMenuItemClicked", 202},
      {"addLineOperationReplaceMenuItemClicked", 203},
      {"addOperationJoinLinesMenuItemClicked", 251},
      {"addColumnOperationTrimMenuItemClicked", 301},
      {"addColumnOperationReplaceMenuItemClicked", 302},
      {"addColumnOperationReformatMenuItemClicked", 303},
      {"addOperationSetInitialNumberOfColumnsMenuItemClicked", 351},
      {"addOperationRearrangeColumnsMenuItemClicked", 352},
      {"addOperationJoinColumnsMenuItemClicked", 353},
      {"addOperationSetFinalNumberOfColumnsMenuItemClicked", 361},
  };
  launchWithFile();
  for (const auto& [command, code] : commands) {
    setOperations(0, csvOperations("a.csv"));
    open(command);
    EXPECT_EQ(done("controls", {{"window", panelOf(code).window}})["open"], true) << command;
    press(panelOf(code).controls + "DoneButton");
    EXPECT_EQ(done("controls", {{"window", panelOf(code).window}})["open"], false) << command;
    EXPECT_EQ(operations()[1]["Code"], code) << command;
  }
}

TEST_F(OperationPanelsTest, EveryPanelHasItsHelpAndItsTwoButtons) {
  launchWithFile();
  for (const PanelName& panel : kPanels) {
    EXPECT_EQ(control(panel.code, "DoneButton")["value"], "Done");
    EXPECT_EQ(control(panel.code, "CancelButton")["value"], "Cancel");
    const json alerts = done("press", {{"name", panel.controls + "HelpButton"}})["alerts"];
    ASSERT_EQ(alerts.size(), 1u) << panel.window;
    EXPECT_NE(alerts[0]["title"].get<std::string>() + alerts[0]["message"].get<std::string>(),
              "No help available.")
        << panel.window;
  }
}

TEST_F(OperationPanelsTest, APanelForAddingShowsWhatItHeldLast) {
  launchWithFile();
  add(201, {{"SkipIfPopUpButton", 3}, {"TextField", "#"}, {"CaseSensitiveButton", true}});
  EXPECT_EQ(add(201, json::object()),
            named(201, {{"SkipIfPopUpButton", 3}, {"TextField", "#"}, {"CaseSensitiveButton", true}}));
  store({{"Code", 201}, {"Arg1", "edited"}});
  edit(201);
  EXPECT_EQ(add(201, json::object())["skipLineOperationWindowTextField"], "edited");
  open("addLineOperationSkipMenuItemClicked");
  set(201, "TextField", "cancelled");
  press("cancel");
  EXPECT_EQ(add(201, json::object())["skipLineOperationWindowTextField"], "cancelled");
}

TEST_F(OperationPanelsTest, JoinLinesAlwaysBeginsWithNone) {
  launchWithFile();
  add(251, {{"NumberToJoinTextField", "7"}, {"SeparatorTextField", "-"}});
  EXPECT_EQ(add(251, json::object()),
            named(251, {{"NumberToJoinTextField", "0"}, {"SeparatorTextField", "-"}}));
  EXPECT_EQ(operations()[1]["IntArg1"], 0);
}

TEST_F(OperationPanelsTest, SkippingByLineNumbersShowsAnExample) {
  launchWithFile();
  open("addLineOperationSkipMenuItemClicked");
  for (int type = 0; type <= 5; ++type) {
    set(201, "SkipIfPopUpButton", type);
    EXPECT_EQ(control(201, "TextField")["placeholder"], type == 2 ? "1, 2, 5 - 8" : "") << type;
    EXPECT_EQ(control(201, "TextField")["enabled"], true) << type;
    EXPECT_EQ(control(201, "CaseSensitiveButton")["enabled"], true) << type;
  }
  press("cancel");
  for (const int type : {2, 1, 2}) {
    store({{"Code", 201}, {"IntArg2", type}});
    edit(201);
    EXPECT_EQ(control(201, "TextField")["placeholder"], type == 2 ? "1, 2, 5 - 8" : "") << type;
  }
}

TEST_F(OperationPanelsTest, ChangesOfATrimTypeDoNothing) {
  launchWithFile();
  for (const char* command : {"trimLineOperationTypeValueChanged", "trimColumnOperationTypeValueChanged"}) {
    const json before = {controls(202), controls(301)};
    done("menu", {{"action", command}});
    EXPECT_EQ((json{controls(202), controls(301)}), before) << command;
  }
}

class ColumnPanelsTest : public OperationPanelsTest {
 protected:
  struct ColumnPanel {
    int code;
    std::string handler;
    std::vector<std::string> inBox;
  };
  const std::vector<ColumnPanel> panels_ = {
      {301,
       "addColumnOperationTrimMenuItemClicked",
       {"TrimWhatPopUpButton", "TrimFromPopUpButton", "TextField", "CaseSensitiveButton"}},
      {302,
       "addColumnOperationReplaceMenuItemClicked",
       {"TypePopUpButton", "WhatTextField", "WithTextField", "CaseSensitiveButton"}},
      {303,
       "addColumnOperationReformatMenuItemClicked",
       {"ReformatAsPopUpButton", "WithFormatLabel", "DatePopUpButton", "TimePopUpButton",
        "FormatDateTimeDatePopUpButton", "FormatDateTimeTimePopUpButton", "DigitsToTheRightField",
        "UseInvalidStringButton", "InvalidString"}}};

  void expectEnabled(const ColumnPanel& panel, bool enabled, const std::string& when) {
    const json all = controls(panel.code);
    for (const std::string& end : panel.inBox)
      EXPECT_EQ(all[panelOf(panel.code).controls + end]["enabled"], enabled) << when << " " << end;
    EXPECT_EQ(all[panelOf(panel.code).controls + "DoneButton"]["enabled"], true) << when;
  }
};

TEST_F(ColumnPanelsTest, TheBoxIsOnWhileAColumnIsSelected) {
  launchWithFile();
  for (const ColumnPanel& panel : panels_) {
    open(panel.handler);
    expectEnabled(panel, false, "adding");
    set(panel.code, "ColumnsTableView", {1});
    expectEnabled(panel, true, "a column");
    set(panel.code, "ColumnsTableView", json::array());
    expectEnabled(panel, false, "none");
    set(panel.code, "ColumnsTableView", {0, 2});
    expectEnabled(panel, true, "two");
    press("done");
    EXPECT_EQ(operations()[1]["Arg1"], "1, 3");
    setOperations(0, csvOperations("a.csv"));

    open(panel.handler);
    EXPECT_EQ(control(panel.code, "ColumnsTableView")["value"], (json{0, 2}))
        << "what was selected last stays so";
    expectEnabled(panel, false, "adding again");
    press("cancel");
  }
}

TEST_F(ColumnPanelsTest, ARecordOpensWithItsColumnsAndTheBoxFollows) {
  launchWithFile();
  for (const ColumnPanel& panel : panels_) {
    for (const json& list : {json("2, 4 - 5"), json(""), json("7")}) {
      store({{"Code", panel.code}, {"Arg1", list}});
      open("showOperationWindow");
      const bool any = list == "2, 4 - 5";
      EXPECT_EQ(control(panel.code, "ColumnsTableView")["value"], any ? (json{1, 3, 4}) : json::array());
      expectEnabled(panel, any, list);
      press("cancel");
    }
  }
}

TEST_F(ColumnPanelsTest, TheColumnsAreThoseOfTheOneSelectedFile) {
  launchWithFile();
  const json five = R"([["1. v"], ["2. w"], ["3. x"], ["4. y"], ["5. z"]])"_json;
  add({write("b.csv", "p,q\n")});
  for (const ColumnPanel& panel : panels_) {
    select({0});
    done("addOperation", {{"code", panel.code}});
    EXPECT_EQ(control(panel.code, "ColumnsTableView")["titles"], five);
    select({1});
    done("addOperation", {{"code", panel.code}});
    EXPECT_EQ(control(panel.code, "ColumnsTableView")["titles"].size(), 2u);
    for (const std::vector<int>& files : {std::vector<int>{0, 1}, {}}) {
      select(files);
      open(panel.handler);
      EXPECT_EQ(control(panel.code, "ColumnsTableView")["titles"], json::array());
      press("cancel");
    }
  }
}

TEST_F(ColumnPanelsTest, ColumnsThatTheFileDoesNotHaveAreNotSelectedAnyMore) {
  launchWithFile();
  add({write("b.csv", "p,q\n")});
  select({0});
  add(301, {{"ColumnsTableView", {1, 4}}});
  select({1});
  done("addOperation", {{"code", 301}});
  EXPECT_EQ(entries()[1]["Operations"][1]["Arg1"], "2");
}

TEST_F(ColumnPanelsTest, APanelCanBeCommittedWithoutAColumn) {
  launchWithFile();
  for (const ColumnPanel& panel : panels_) {
    add(panel.code, {{"ColumnsTableView", json::array()}});
    EXPECT_EQ(operations()[1]["Arg1"], "") << panel.code;
  }
}

class ReformatPanelTest : public OperationPanelsTest {
 protected:
  void expectShown(const std::set<std::string>& shown, const std::string& when) {
    const json all = controls(303);
    for (const char* end :
         {"WithFormatLabel", "DatePopUpButton", "TimePopUpButton", "FormatDateTimeView", "NumberView"})
      EXPECT_EQ(all["reformatColumnOperationWindow" + std::string(end)]["hidden"], !shown.contains(end))
          << when << " " << end;
  }
};

TEST_F(ReformatPanelTest, TheFormShowsWhatBelongsToIt) {
  launchWithFile();
  const std::set<std::string> shown[] = {{"WithFormatLabel", "DatePopUpButton"},
                                         {"WithFormatLabel", "TimePopUpButton"},
                                         {"WithFormatLabel", "FormatDateTimeView"},
                                         {},
                                         {"WithFormatLabel", "NumberView"}};
  expectShown(shown[0], "at first");
  for (const int form : {2, 3, 4, 5, 1}) {
    set(303, "ReformatAsPopUpButton", form);
    expectShown(shown[form - 1], "chosen " + std::to_string(form));
  }
  for (const int form : {5, 4, 3, 2, 1}) {
    store({{"Code", 303}, {"IntArg2", form}});
    edit(303);
    expectShown(shown[form - 1], "opened " + std::to_string(form));
  }
}

// IntArg2 and the formats; which menus show them, the others keep what they held.
TEST_F(ReformatPanelTest, ARecordFillsTheMenusOfItsForm) {
  struct Filling {
    json record;
    json opened;
  };
  const Filling fillings[] = {
      {R"({"IntArg2": 1, "IntArg3": 4, "IntArg4": 5})"_json, {4, 2, 2, 2}},
      {R"({"IntArg2": 1})"_json, {1, 2, 2, 2}},
      {R"({"IntArg3": 3})"_json, {3, 2, 2, 2}},
      {R"({"IntArg2": "2", "IntArg3": "6"})"_json, {2, 6, 2, 2}},
      {R"({"IntArg2": 2})"_json, {2, 1, 2, 2}},
      {R"({"IntArg2": 3, "IntArg3": 4, "IntArg4": 7})"_json, {2, 2, 4, 7}},
      {R"({"IntArg2": 3})"_json, {2, 2, 1, 1}},
      {R"({"IntArg2": 3, "IntArg3": 5})"_json, {2, 2, 2, 1}},
      {R"({"IntArg2": 4, "IntArg3": 4})"_json, {2, 2, 2, 2}},
      {R"({"IntArg2": 5, "IntArg3": 4})"_json, {2, 2, 2, 2}},
  };
  const char* menus[] = {"DatePopUpButton", "TimePopUpButton", "FormatDateTimeDatePopUpButton",
                         "FormatDateTimeTimePopUpButton"};
  launchWithFile();
  for (const Filling& filling : fillings) {
    for (const char* menu : menus) set(303, menu, 2);
    json record = filling.record;
    record["Code"] = 303;
    store(record);
    const json opened = edit(303);
    json tags = json::array();
    for (const char* menu : menus)
      tags.push_back(opened["reformatColumnOperationWindow" + std::string(menu)]);
    EXPECT_EQ(tags, filling.opened) << filling.record;
    EXPECT_EQ(opened["reformatColumnOperationWindowReformatAsPopUpButton"],
              std::stoi(record.contains("IntArg2")
                            ? (record["IntArg2"].is_string() ? record["IntArg2"].get<std::string>()
                                                             : record["IntArg2"].dump())
                            : "1"));
  }
}

TEST_F(ReformatPanelTest, DigitsAreANumberUnderATextKey) {
  launchWithFile();
  for (const json& digits : {json(4), json("4")}) {
    store({{"Code", 303}, {"IntArg2", 5}, {"Arg5", digits}});
    EXPECT_EQ(edit(303)["reformatColumnOperationWindowDigitsToTheRightField"], "4");
    EXPECT_EQ(stored()["Arg5"], 4);
  }
}

TEST_F(ReformatPanelTest, AnEditLeavesFormatsThatItsFormDoesNotNeed) {
  launchWithFile();
  store(
      R"({"Code": 303, "IntArg1": 6, "IntArg2": 3, "IntArg3": 2, "IntArg4": 3, "Arg1": "2", "Arg5": 1, "Arg3": "k"})"_json);
  edit(303, {{"ReformatAsPopUpButton", 5}, {"DigitsToTheRightField", "7"}, {"UseInvalidStringButton", true}});
  EXPECT_EQ(stored(), R"({"Code": 303, "IntArg1": 7, "IntArg2": 5, "IntArg3": 2, "IntArg4": 3, "Arg1": "2",
                          "Arg2": "", "Arg5": 7, "Arg3": "k"})"_json);
  edit(303, {{"ReformatAsPopUpButton", 2}, {"TimePopUpButton", 5}, {"UseInvalidStringButton", false}});
  EXPECT_EQ(stored(), R"({"Code": 303, "IntArg1": 6, "IntArg2": 2, "IntArg3": 5, "IntArg4": 3, "Arg1": "2",
                          "Arg2": "", "Arg5": 7, "Arg3": "k"})"_json);
}

class NumberOfColumnsPanelTest : public OperationPanelsTest {};

TEST_F(NumberOfColumnsPanelTest, AddingBeginsWithTheColumnsOfTheOneSelectedFile) {
  const std::string count = "setNumberOfColumnsOperationsWindowRequiredNumberOfColumnsTextField";
  launchWithFile();
  done("setInputFiles",
       {{"entries",
         {entries()[0], {{"FilePath", path("none.csv")}, {"Operations", csvOperations("none.csv")}}}}});
  for (const int code : {351, 361}) {
    select({0});
    EXPECT_EQ(done("addOperation", {{"code", code}})["opened"][count], "5");
    done("addOperation", {{"code", code}, {"values", {{count, "9"}}}});
    select({0, 1});
    EXPECT_EQ(done("addOperation", {{"code", code}})["opened"][count], "9") << "it stays";
    select({1});
    EXPECT_EQ(done("addOperation", {{"code", code}})["opened"][count], "0") << "no columns are known";
  }
}

class RearrangePanelTest : public OperationPanelsTest {
 protected:
  json shown() { return control(352, "ColumnsTableView")["titles"]; }
  static json rows(const std::string& letters) {
    json result = json::array();
    for (const char letter : letters)
      result.push_back({std::string(1, static_cast<char>(letter - 'v' + '1')) + ". " + letter});
    return result;
  }
};

TEST_F(RearrangePanelTest, AddingBeginsWithTheColumnsInTheOrderOfTheFile) {
  launchWithFile();
  open("addOperationRearrangeColumnsMenuItemClicked");
  EXPECT_EQ(shown(), rows("vwxyz"));
  done("dropRearrangeColumns", {{"rows", {0}}, {"row", 5}});
  press("cancel");
  open("addOperationRearrangeColumnsMenuItemClicked");
  EXPECT_EQ(shown(), rows("vwxyz"));
}

TEST_F(RearrangePanelTest, RowsAreDroppedAsOneBlock) {
  struct Move {
    std::vector<int> rows;
    int row;
    std::string order;
  };
  const Move moves[] = {{{0}, 0, "vwxyz"},    {{0}, 1, "vwxyz"},    {{0}, 2, "wvxyz"},
                        {{0}, 5, "wxyzv"},    {{4}, 0, "zvwxy"},    {{1, 3}, 0, "wyvxz"},
                        {{1, 3}, 5, "vxzwy"}, {{0, 4}, 2, "wvzxy"}, {{0, 1, 2, 3, 4}, 3, "vwxyz"}};
  launchWithFile();
  for (const Move& move : moves) {
    open("addOperationRearrangeColumnsMenuItemClicked");
    const json before = operations();
    done("dropRearrangeColumns", {{"rows", move.rows}, {"row", move.row}});
    EXPECT_EQ(shown(), rows(move.order)) << json(move.rows) << " before " << move.row;
    EXPECT_EQ(operations(), before) << "nothing is written before Done";
    press("cancel");
  }
}

TEST_F(RearrangePanelTest, DoneWritesTheOrder) {
  launchWithFile();
  open("addOperationRearrangeColumnsMenuItemClicked");
  done("dropRearrangeColumns", {{"rows", {3, 4}}, {"row", 1}});
  press("done");
  EXPECT_EQ(operations()[1], (json{{"Code", 352}, {"Arg1", "1, 4, 5, 2, 3"}}));
}

TEST_F(RearrangePanelTest, ButtonsMoveTheSelectedRowsByOne) {
  launchWithFile();
  open("addOperationRearrangeColumnsMenuItemClicked");
  set(352, "ColumnsTableView", {1, 2});
  press("rearrangeColumnsOperationWindowMoveDownButton");
  EXPECT_EQ(shown(), rows("vywxz"));
  EXPECT_EQ(control(352, "ColumnsTableView")["value"], (json{2, 3}));
  press("rearrangeColumnsOperationWindowMoveDownButton");
  press("rearrangeColumnsOperationWindowMoveDownButton");
  EXPECT_EQ(shown(), rows("vyzwx")) << "the end is the end";
  set(352, "ColumnsTableView", {0, 2});
  press("rearrangeColumnsOperationWindowMoveUpButton");
  EXPECT_EQ(shown(), rows("vyzwx")) << "and the start the start";
  set(352, "ColumnsTableView", {4});
  press("rearrangeColumnsOperationWindowMoveUpButton");
  EXPECT_EQ(shown(), rows("vyzxw"));
  set(352, "ColumnsTableView", json::array());
  press("rearrangeColumnsOperationWindowMoveUpButton");
  press("rearrangeColumnsOperationWindowMoveDownButton");
  EXPECT_EQ(shown(), rows("vyzxw"));
}

TEST_F(RearrangePanelTest, WithSeveralFilesTheListIsTheOneFromBefore) {
  launchWithFile();
  add({write("b.csv", "p,q\n")});
  select({0});
  open("addOperationRearrangeColumnsMenuItemClicked");
  done("dropRearrangeColumns", {{"rows", {4}}, {"row", 0}});
  press("cancel");
  select({0, 1});
  done("addOperation", {{"code", 352}});
  EXPECT_EQ(shown(), rows("zvwxy"));
  EXPECT_EQ(operations()[1]["Arg1"], "5, 1, 2, 3, 4");
  EXPECT_EQ(entries()[1]["Operations"][1]["Arg1"], "5, 1, 2, 3, 4");
}

TEST_F(RearrangePanelTest, AnEditDropsColumnsThatTheFileHasNoMore) {
  launchWithFile();
  store({{"Code", 352}, {"Arg1", "3, 9, 1"}});
  edit(352);
  EXPECT_EQ(shown(), rows("xv"));
  EXPECT_EQ(stored()["Arg1"], "3, 1");
}

TEST_F(RearrangePanelTest, ARecordDoesNotOpenWithSeveralFiles) {
  launchWithFile();
  add({write("b.csv", "p,q\n")});
  setOperations(0, {{{"Code", 352}, {"Arg1", "1"}}, {{"Code", 353}, {"Arg1", "1"}, {"Arg2", "-"}}});
  select({0, 1});
  done("selectOperations", {{"rows", {0}}});
  EXPECT_EQ(edit(352), nullptr);
  done("selectOperations", {{"rows", {1}}});
  EXPECT_EQ(edit(353)["joinColumnsOperationWindowSeparatorTextField"], "-") << "that of joined columns does";
  EXPECT_EQ(control(353, "ColumnsTableView")["titles"], json::array());
}

TEST_F(RearrangePanelTest, AColumnWithoutAnIndexPrintsZero) {
  launchWithEntry(csvOperations("none.csv"),
                  {{{"ColumnIndex", 3}, {"ColumnDescriptor", "x"}}, {{"ColumnDescriptor", "y"}}});
  done("addOperation", {{"code", 352}});
  EXPECT_EQ(operations()[1]["Arg1"], "4, 0");
}

class JoinPanelTest : public OperationPanelsTest {
 protected:
  json shown() {
    const json table = control(353, "ColumnsTableView");
    json texts = json::array();
    for (const json& row : table["titles"]) texts.push_back(row[0]);
    return texts;
  }
  void selectRows(const std::vector<int>& rows) { set(353, "ColumnsTableView", rows); }
  void join(const std::vector<int>& rows) {
    selectRows(rows);
    press("joinColumnsOperationWindowJoinButton");
  }
  bool isEnabled(const std::string& button) { return control(353, button)["enabled"]; }
  void openForAdding() { open("addOperationJoinColumnsMenuItemClicked"); }
};

TEST_F(JoinPanelTest, JoinedRowsStandWhereTheFirstOfThemStood) {
  struct Join {
    std::vector<int> rows;
    json shown;
    std::string stored;
  };
  const Join joins[] = {
      {{1, 3}, {"1. v", "2. w, 4. y", "3. x", "5. z"}, "1, 2 + 4, 3, 5"},
      {{0, 1, 2, 3, 4}, {"1. v, 2. w, 3. x, 4. y, 5. z"}, "1 + 2 + 3 + 4 + 5"},
      {{3, 4}, {"1. v", "2. w", "3. x", "4. y, 5. z"}, "1, 2, 3, 4 + 5"},
  };
  launchWithFile();
  for (const Join& one : joins) {
    setOperations(0, csvOperations("a.csv"));
    openForAdding();
    join(one.rows);
    EXPECT_EQ(shown(), one.shown);
    press("done");
    EXPECT_EQ(operations()[1]["Arg1"], one.stored);
  }
}

TEST_F(JoinPanelTest, JoinedColumnsCanBeJoinedAgain) {
  launchWithFile();
  openForAdding();
  join({1, 2});
  join({0, 1});
  EXPECT_EQ(shown(), (json{"1. v, 2. w, 3. x", "4. y", "5. z"}));
  press("cancel");
  openForAdding();
  EXPECT_EQ(shown().size(), 5u) << "to cancel undoes the joins";
}

TEST_F(JoinPanelTest, TheButtonsFollowTheSelection) {
  launchWithFile();
  openForAdding();
  struct Selection {
    std::vector<int> rows;
    bool join;
    bool unjoin;
  };
  join({1, 3});  // leaves 1, 2 + 4, 3, 5
  const Selection selections[] = {{{}, false, false},    {{0}, false, false},  {{1}, false, true},
                                  {{0, 2}, true, false}, {{0, 1}, true, true}, {{3}, false, false}};
  for (const Selection& selection : selections) {
    selectRows(selection.rows);
    EXPECT_EQ(isEnabled("JoinButton"), selection.join) << json(selection.rows);
    EXPECT_EQ(isEnabled("UnjoinButton"), selection.unjoin) << json(selection.rows);
  }
}

TEST_F(JoinPanelTest, TheButtonsAreFreshAfterAJoinAndOnOpening) {
  launchWithFile();
  openForAdding();
  selectRows({3, 4});
  EXPECT_TRUE(isEnabled("JoinButton"));
  press("joinColumnsOperationWindowJoinButton");
  EXPECT_FALSE(isEnabled("JoinButton")) << "one of the two rows is gone";
  EXPECT_TRUE(isEnabled("UnjoinButton"));
  press("cancel");
  openForAdding();
  EXPECT_FALSE(isEnabled("UnjoinButton"));
}

TEST_F(JoinPanelTest, TheCommandJoinsASingleRowWithItself) {
  launchWithFile();
  openForAdding();
  selectRows({2});
  done("menu", {{"action", "joinColumnsOperationWindowJoinButtonClicked"}});
  EXPECT_EQ(shown(), (json{"1. v", "2. w", "3. x", "4. y", "5. z"}));
  selectRows({});
  done("menu", {{"action", "joinColumnsOperationWindowJoinButtonClicked"}});
  EXPECT_EQ(shown().size(), 5u);
}

TEST_F(JoinPanelTest, UnjoinChangesNothing) {
  launchWithFile();
  openForAdding();
  join({0, 1});
  selectRows({0});
  press("joinColumnsOperationWindowUnjoinButton");
  EXPECT_EQ(shown(), (json{"1. v, 2. w", "3. x", "4. y", "5. z"}));
  EXPECT_TRUE(isEnabled("UnjoinButton"));
}

TEST_F(JoinPanelTest, AddingBeginsWithTheRearrangedColumnsWhereverThatStands) {
  const json rearrange = {{"Code", 352}, {"Arg1", "5, 2, x, 9, 2"}};
  launchWithFile();
  setOperations(0, csvOperations("a.csv", {{{"Code", 251}}, rearrange, {{"Code", 352}, {"Arg1", "1"}}}));
  select({0});
  openForAdding();
  EXPECT_EQ(shown(), (json{"5. z", "2. w", "2. w"})) << "the first one counts";
  press("cancel");
  setOperations(0, csvOperations("a.csv", {{{"Code", 352}}}));
  select({0});
  openForAdding();
  EXPECT_EQ(shown(), json::array()) << "an empty list names no column";
}

TEST_F(JoinPanelTest, AnEditShowsTheStoredGroups) {
  struct Stored {
    std::string list;
    json shown;
    std::string written;
  };
  const Stored lists[] = {{"4, 2 + 3, 1", {"4. y", "2. w, 3. x", "1. v"}, "4, 2 + 3, 1"},
                          {"9, 1", {"1. v"}, "1"},
                          {"2 + 9, 1", {"2. w", "1. v"}, "2, 1"},
                          {"8 + 9, 1", {"", "1. v"}, ", 1"},
                          {"3+1", {"3. x, 1. v"}, "3 + 1"},
                          {"+", {""}, ""},
                          {"9 +\u0301 8, 1", {"1. v"}, "1"},  // a mark hides the sign that it follows
                          {"x", json::array(), ""},
                          {"", json::array(), ""}};
  launchWithFile();
  for (const Stored& one : lists) {
    store({{"Code", 353}, {"Arg1", one.list}, {"Arg2", "-"}});
    open("showOperationWindow");
    EXPECT_EQ(shown(), one.shown) << one.list;
    press("done");
    EXPECT_EQ(stored()["Arg1"], one.written) << one.list;
  }
}

TEST_F(JoinPanelTest, AnEditOfAFileWithoutKnownColumnsShowsNone) {
  launchWithEntry(csvOperations("none.csv", {{{"Code", 353}, {"Arg1", "1 + 2"}, {"Arg2", "-"}}}));
  done("selectOperations", {{"rows", {1}}});
  EXPECT_EQ(edit(353)["joinColumnsOperationWindowSeparatorTextField"], "-");
  EXPECT_EQ(operations()[1]["Arg1"], "");
}

TEST_F(JoinPanelTest, AnEditOfAFileOfNoColumnsKeepsTheGroupsEmpty) {
  launchWithEntry(csvOperations("none.csv", {{{"Code", 353}, {"Arg1", "1 + 2, 3, 4 + 5"}, {"Arg2", "-"}}}),
                  json::array());
  done("selectOperations", {{"rows", {1}}});
  open("showOperationWindow");
  EXPECT_EQ(shown(), (json{"", ""}));
  press("done");
  EXPECT_EQ(operations()[1]["Arg1"], ", ");
}

TEST_F(JoinPanelTest, TheLargestIndexOfAColumnWrapsAround) {
  launchWithEntry(csvOperations("none.csv"), {{{"ColumnIndex", INT64_MAX}, {"ColumnDescriptor", "x"}}});
  openForAdding();
  EXPECT_EQ(shown(), json{"-9223372036854775808. x"});
  press("done");
  EXPECT_EQ(operations()[1]["Arg1"], "-9223372036854775808");
  done("addOperation", {{"code", 352}});
  EXPECT_EQ(operations()[2]["Arg1"], "-9223372036854775808");
}

TEST_F(JoinPanelTest, WithSeveralFilesTheListIsTheOneFromBefore) {
  launchWithFile();
  add({write("b.csv", "p,q\n")});
  select({0});
  openForAdding();
  join({0, 1});
  press("cancel");
  select({0, 1});
  done("addOperation", {{"code", 353}});
  EXPECT_EQ(operations()[1]["Arg1"], "1 + 2, 3, 4, 5");
  EXPECT_EQ(entries()[1]["Operations"][1]["Arg1"], "1 + 2, 3, 4, 5");
}

TEST_F(JoinPanelTest, APreviewOfOneFileRefillsTheList) {
  launchWithFile();
  openForAdding();
  join({0, 1});
  press("cancel");
  add({write("b.csv", "p,q\n")});
  EXPECT_EQ(shown(), (json{"1. p", "2. q"}));
}

// Records as a file or the database may bring them, and what a record becomes when its panel opens and is
// done with nothing changed.
class RandomRecord {
 public:
  explicit RandomRecord(RandomSource& random) : random_(random) {}

  json record(int code) {
    record_ = {{"Code", code}};
    for (const char* key : {"IntArg5", "Unknown"})
      if (random_.oneIn(3)) record_[key] = integer(0, 99);
    switch (code) {
      case 101:
        return flags(), encoding(), text("Arg1"), text("Arg2"), maybe("Arg4"), record_;
      case 150:
        return flags(), value("IntArg2", 0, 2), text("Arg1"), text("Arg2"), record_;
      case 201:
        return flags(), value("IntArg2", 0, 5), text("Arg1"), record_;
      case 202:
        return flags(), value("IntArg2", 0, 3), value("IntArg3", 0, 2), text("Arg1"), record_;
      case 203:
        return flags(), value("IntArg2", 0, 1), text("Arg1"), text("Arg2"), record_;
      case 251:
        return value("IntArg1", -2, 9), text("Arg1"), record_;
      case 301:
        return flags(), value("IntArg2", 0, 3), value("IntArg3", 0, 2), columns(), text("Arg2"), record_;
      case 302:
        return flags(), value("IntArg2", 0, 1), columns(), text("Arg2"), text("Arg3"), record_;
      case 303:
        return flags(), value("IntArg2", 1, 5), value("IntArg3", 1, 4), value("IntArg4", 1, 7), columns(),
               text("Arg2"), value("Arg5", 0, 9), record_;
      case 352:
        return list("Arg1", false), maybe("Arg2"), record_;
      case 353:
        return list("Arg1", true), text("Arg2"), record_;
      case 901:
        return flags(), encoding(), value("IntArg3", 1, 3), text("Arg1"), text("Arg2"), maybe("Arg3"),
               text("Arg4"), record_;
      default:  // 351 and 361
        return value("IntArg1", 0, 9), text("Arg1"), record_;
    }
  }

 private:
  int integer(int from, int to) {
    return from + static_cast<int>(random_.below(static_cast<std::size_t>(to - from + 1)));
  }
  void value(const char* key, int from, int to) {
    const int number = integer(from, to);
    const std::size_t form = random_.below(4);
    if (form == 0) return;
    record_[key] = form == 1 ? json(std::to_string(number)) : json(number);
  }
  void flags() { value("IntArg1", 0, 127); }
  void encoding() {
    static const int codes[] = {1, 4, 12, 30, 7};
    if (!random_.oneIn(4)) record_["IntArg2"] = random_.pick(codes);
  }
  void text(const char* key) {
    static const char* parts[] = {"a", "\\n", "\n", "\t", "\r", "\\", ",", "é", " ", "1"};
    std::string result;
    for (std::size_t count = random_.below(5); count > 0; --count) result += random_.pick(parts);
    if (!random_.oneIn(4)) record_[key] = result;
  }
  void maybe(const char* key) {
    if (random_.oneIn(2)) text(key);
  }
  void columns() {
    static const char* lists[] = {"", "1", "1 - 2", "2, 4 - 5", "1 - 5", "3 - 9", "6", "1, 3, 5"};
    if (!random_.oneIn(4)) record_["Arg1"] = random_.pick(lists);
  }
  void list(const char* key, bool groups) {
    std::string result;
    for (std::size_t count = random_.below(6); count > 0; --count) {
      if (!result.empty()) result += ", ";
      result += std::to_string(integer(0, 7));
      while (groups && random_.oneIn(3)) result += " + " + std::to_string(integer(0, 7));
    }
    if (!random_.oneIn(5)) record_[key] = result;
  }

  RandomSource& random_;
  json record_;
};

std::int64_t number(const json& record, const char* key, std::int64_t otherwise) {
  if (!record.contains(key)) return otherwise;
  return record[key].is_string() ? std::stoll(record[key].get<std::string>())
                                 : record[key].get<std::int64_t>();
}

std::string textOf(const json& record, const char* key) {
  return record.contains(key) ? record[key].get<std::string>() : "";
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
  for (std::size_t place = 0; (place = text.find(what, place)) != std::string::npos; place += with.size())
    text.replace(place, what.size(), with);
  return text;
}

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts(1);
  for (const char character : text)
    if (character == separator)
      parts.emplace_back();
    else
      parts.back() += character;
  return parts;
}

// The numbers of the five columns in the text.
std::vector<std::string> fittingNumbers(const std::string& text, char separator) {
  std::vector<std::string> result;
  for (const std::string& part : split(text, separator)) {
    const int column = std::atoi(part.c_str());
    if (column >= 1 && column <= 5) result.push_back(std::to_string(column));
  }
  return result;
}

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
  std::string result;
  for (std::size_t i = 0; i < parts.size(); ++i) result += (i ? separator : "") + parts[i];
  return result;
}

std::string groupsAfterwards(const std::string& list) {
  std::vector<std::string> groups;
  for (const std::string& token : split(list, ',')) {
    const std::string group = joined(fittingNumbers(token, '+'), " + ");
    if (!group.empty() || token.find('+') != std::string::npos) groups.push_back(group);
  }
  return joined(groups, ", ");
}

// Ranges that reach beyond the five columns end with them.
std::string columnsAfterwards(const std::string& list) {
  return list == "3 - 9" ? "3 - 5" : list == "6" ? "" : list;
}

json afterwards(json record) {
  const int code = record["Code"];
  const auto keep = [&record](const char* key, std::int64_t otherwise) {
    record[key] = number(record, key, otherwise);
  };
  const auto keepText = [&record](const char* key) { record[key] = textOf(record, key); };
  const auto keepSeparator = [&record](const char* key) {
    record[key] = replaced(textOf(record, key), "\\n", "\n");
  };
  const bool isOfColumns = code >= 301 && code <= 303;
  switch (code) {
    case 101:
    case 901: {
      keep("IntArg1", 0);
      const std::int64_t encoding = number(record, "IntArg2", 4);
      record["IntArg2"] = encoding == 7 ? 4 : encoding;
      keepSeparator("Arg1"), keepSeparator("Arg2");
      if (code == 901) keep("IntArg3", 2), keepText("Arg4");
      return record;
    }
    case 150:
      record["IntArg1"] = 0;
      keep("IntArg2", 0), keepText("Arg1"), keepText("Arg2");
      return record;
    case 201:
    case 202:
    case 203:
    case 301:
    case 302:
      keep("IntArg1", 0), keep("IntArg2", 0);
      if (code == 202 || code == 301) keep("IntArg3", 0);
      keepText("Arg1");
      if (code == 203 || isOfColumns) keepText("Arg2");
      if (code == 302) keepText("Arg3");
      if (isOfColumns) record["Arg1"] = columnsAfterwards(record["Arg1"]);
      return record;
    case 303: {
      keep("IntArg1", 0), keep("IntArg2", 1), keep("Arg5", 0), keepText("Arg1"), keepText("Arg2");
      if (record["IntArg2"] <= 3) keep("IntArg3", 1);
      if (record["IntArg2"] == 3) keep("IntArg4", 1);
      record["Arg1"] = columnsAfterwards(record["Arg1"]);
      return record;
    }
    case 352:
      record["Arg1"] = joined(fittingNumbers(textOf(record, "Arg1"), ','), ", ");
      return record;
    case 353:
      record["Arg1"] = groupsAfterwards(textOf(record, "Arg1"));
      keepText("Arg2");
      return record;
    default:
      keep("IntArg1", code == 251 ? 0 : 5), keepText("Arg1");
      return record;
  }
}

class RandomRecordsTest : public OperationPanelsTest {};

TEST_F(RandomRecordsTest, StayWhatTheyMeanWhenNothingIsChanged) {
  RandomSource random(77);
  RandomRecord records(random);
  launchWithFile();
  json entry = entries()[0];
  entry["FilePath"] = path("none.csv");  // no preview finds other columns
  for (std::uint64_t round = 0; round < rounds(40); ++round)
    for (const PanelName& panel : kPanels) {
      const json record = records.record(panel.code);
      json list = csvOperations("none.csv");
      int row = 1;
      if (panel.code == 101) row = 0;
      if (isEnd(panel.code))
        list[row] = record;
      else
        list.insert(list.begin() + 1, record);
      entry["Operations"] = list;
      done("setInputFiles", {{"entries", {entry}}});
      select({0});
      done("selectOperations", {{"rows", {row}}});
      ASSERT_NE(edit(panel.code), nullptr);
      list[row] = afterwards(record);
      ASSERT_EQ(operations(), list) << record;
    }
}

}  // namespace
}  // namespace quillet::testing
