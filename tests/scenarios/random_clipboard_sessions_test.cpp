// What a user may do with the clipboard data window in any order, through its menu items and sheets, its
// table, and jobs that are saved and performed again, beside the plain rules.
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "clipboard/plain_workbench.h"
#include "clipboard/random_records.h"
#include "operations/escapes.h"
#include "platform/unicode_text.h"
#include "scenarios/clipboard_scenario.h"

namespace quillet::testing {
namespace {

using std::string;

json jsonOf(const OperationRecord& record) {
  json result = json::object();
  for (const auto& [key, value] : record.items()) {
    if (const auto* number = std::get_if<std::int64_t>(&value))
      result[key] = *number;
    else
      result[key] = toUtf8(std::get<std::u16string>(value));
  }
  return result;
}

json jsonOf(const PlainGrid& grid) {
  json rows = json::array();
  for (const PlainRow& row : grid) {
    json& cells = rows.emplace_back(json::array());
    for (const std::u16string& cell : row) cells.push_back(toUtf8(cell));
  }
  return rows;
}

// As the database gives it back: with every key.
OperationRecord withAllKeys(const OperationRecord& record) {
  OperationRecord result{{"Code", record.code()}};
  for (int i = 1; i <= 5; ++i) {
    const string number = std::to_string(i);
    result.set("IntArg" + number, record.integer("IntArg" + number, 0));
    result.set("Arg" + number, record.text("Arg" + number));
  }
  return result;
}

// What an item of the menu waits for.
enum class Needs { Nothing, Grid, Selection, Line, Column, TwoLines, TwoColumns };

struct Item {
  const char* handler;
  std::int64_t code;
  Needs needs;
};

constexpr Item kSheets[] = {
    {"clipboardDataWindowSplitButtonPressed", 102, Needs::Nothing},
    {"clipboardDataWindowSplitButtonPressed", 102, Needs::Nothing},
    {"clipboardDataWindowJoinButtonPressed", 902, Needs::Nothing},
    {"clipboardDataWindowTrimButtonPressed", 311, Needs::Selection},
    {"clipboardDataWindowReplaceButtonPressed", 312, Needs::Selection},
    {"clipboardDataWindowFillButtonPressed", 314, Needs::Selection},
};

constexpr Item kPlain[] = {
    {"clipboardDataWindowShiftTruncateLeftMenuItemClicked", 402, Needs::Grid},
    {"clipboardDataWindowShiftTruncateRightMenuItemClicked", 403, Needs::Grid},
    {"clipboardDataWindowShiftTruncateTopMenuItemClicked", 404, Needs::Grid},
    {"clipboardDataWindowShiftTruncateBottomMenuItemClicked", 405, Needs::Grid},
    {"clipboardDataWindowDeleteSelectedLineMenuItemClicked", 406, Needs::Line},
    {"clipboardDataWindowDeleteSelectedColumnMenuItemClicked", 407, Needs::Column},
    {"clipboardDataWindowShiftFillFromLeftMenuItemClicked", 408, Needs::Nothing},
    {"clipboardDataWindowShiftFillFromRightMenuItemClicked", 409, Needs::Nothing},
    {"clipboardDataWindowShiftFillFromTopMenuItemClicked", 410, Needs::Nothing},
    {"clipboardDataWindowShiftFillFromBottomMenuItemClicked", 411, Needs::Nothing},
    {"clipboardDataWindowMoveLeftMenuItemClicked", 412, Needs::Column},
    {"clipboardDataWindowMoveRightMenuItemClicked", 413, Needs::Column},
    {"clipboardDataWindowMoveUpMenuItemClicked", 414, Needs::Line},
    {"clipboardDataWindowMoveDownMenuItemClicked", 415, Needs::Line},
    {"flipHorizontalMenuItemClicked", 416, Needs::Grid},
    {"flipVerticalMenuItemClicked", 417, Needs::Grid},
    {"flipDiagonalMenuItemClicked", 418, Needs::Grid},
};

constexpr Item kPrompted[] = {
    {"clipboardDataWindowMergeLeftMenuItemClicked", 419, Needs::TwoColumns},
    {"clipboardDataWindowMergeRightMenuItemClicked", 420, Needs::TwoColumns},
    {"clipboardDataWindowMergeUpMenuItemClicked", 421, Needs::TwoLines},
    {"clipboardDataWindowMergeDownMenuItemClicked", 422, Needs::TwoLines},
    {"clipboardDataWindowJoinRowsMenuItemClicked", 423, Needs::Grid},
    {"clipboardDataWindowJoinColumnsMenuItemClicked", 424, Needs::Grid},
};

class RandomClipboardSessions : public ClipboardScenario {
 protected:
  RandomClipboardSessions() : random_(5302), records_(random_) {}

  void act();
  void refreshTo(const json& text);
  void compare();

  RandomSource random_;

 private:
  bool isOn(Needs needs) const;
  json choosing(const Item& item, json arguments);
  void expectAlerts(const json& result);
  void performed(const OperationRecord& record) { plain_.perform(record); }

  void useSheet(const Item& item);
  void splitBySheet(const Item& item);
  void joinBySheet(const Item& item);
  void changeCellsBySheet(const Item& item);
  void choosePlain(const Item& item);
  bool flipIsRefused(std::int64_t code);
  void answerPrompt(const Item& item);
  void click();
  void clickHeader();
  void pressKey();
  json detailsOfCell(std::u16string& text);
  void editedCell(const json& opened, const std::u16string& text);
  void performAgain();

  PlainWorkbench plain_;
  RandomRecords records_;
  bool hasShown_ = false;  // anything over the help
};

bool RandomClipboardSessions::isOn(Needs needs) const {
  const PlainSelection& selection = plain_.selection;
  switch (needs) {
    case Needs::Nothing:
      return true;
    case Needs::Grid:
      return !plain_.grid.empty();
    case Needs::Selection:
      return !selection.rows.empty() || !selection.columns.empty() || !selection.cellRows.empty();
    case Needs::Line:
      return !selection.rows.empty();
    case Needs::Column:
      return !selection.columns.empty();
    case Needs::TwoLines:
      return selection.rows.size() > 1;
    case Needs::TwoColumns:
      return selection.columns.size() > 1;
  }
  return false;
}

json RandomClipboardSessions::choosing(const Item& item, json arguments) {
  SCOPED_TRACE(item.handler);
  const json result = choose(item.handler, std::move(arguments));
  EXPECT_EQ(result["performed"], isOn(item.needs));
  return result;
}

void RandomClipboardSessions::expectAlerts(const json& result) {
  json expected;
  for (const auto& [title, message] : std::exchange(plain_.alerts, {}))
    expected.push_back(message.empty() ? clipboardSheet("Error", toUtf8(title))
                                       : clipboardSheet(toUtf8(title), toUtf8(message)));
  EXPECT_EQ(result.value("alerts", json()), expected);
}

void RandomClipboardSessions::refreshTo(const json& text) {
  plain_.pasteboard.reset();
  if (!text.is_null()) plain_.pasteboard = toUtf16(text.get<string>());
  const json result = refresh(text);
  plain_.refresh();
  hasShown_ = hasShown_ || !text.is_null();
  expectAlerts(result);
}

// The sheets.

void RandomClipboardSessions::useSheet(const Item& item) {
  if (item.code == 102) return splitBySheet(item);
  if (item.code == 902) return joinBySheet(item);
  changeCellsBySheet(item);
}

void RandomClipboardSessions::splitBySheet(const Item& item) {
  const bool lines = !random_.oneIn(5), columns = !random_.oneIn(5), quotes = random_.oneIn(2);
  const string lineSeparator = random_.oneIn(6) ? "b" : "\\n",
               columnSeparator = random_.oneIn(6) ? "\\t" : ",";
  const string sheet = "clipboardDataSplitWindow";
  const json result = choosing(item, {{"values",
                                       {{sheet + "SplitClipboardIntoLinesCheckbox", lines},
                                        {sheet + "SplitLinesIntoColumnsCheckbox", columns},
                                        {sheet + "RemoveQuotesCheckbox", quotes},
                                        {sheet + "LineSeparatorComboBox", lineSeparator},
                                        {sheet + "ColumnSeparatorComboBox", columnSeparator}}}});
  const auto separator = [](bool isOn, const string& typed) {
    return isOn ? replaceBackslashedCharacters(toUtf16(typed)) : std::u16string();
  };
  performed({{"Code", 102},
             {"IntArg1", quotes ? 32 : 0},
             {"Arg1", separator(lines, lineSeparator)},
             {"Arg2", separator(columns, columnSeparator)}});
  plain_.toolbarItemsEnabled = true;
  hasShown_ = hasShown_ || plain_.string.has_value();
  expectAlerts(result);
}

void RandomClipboardSessions::joinBySheet(const Item& item) {
  const bool quotes = random_.oneIn(2);
  const string lineSeparator = random_.oneIn(6) ? ";" : "\\n", columnSeparator = random_.oneIn(6) ? "" : ",";
  const string sheet = "clipboardDataJoinWindow";
  choosing(item, {{"values",
                   {{sheet + "LineSeparatorComboBox", lineSeparator},
                    {sheet + "ColumnSeparatorComboBox", columnSeparator},
                    {sheet + "AddQuotesCheckbox", quotes}}}});
  performed({{"Code", 902},
             {"IntArg1", quotes ? 1 : 0},
             {"Arg1", replaceBackslashedCharacters(toUtf16(lineSeparator))},
             {"Arg2", toUtf16(columnSeparator)}});
  hasShown_ = true;
}

// Which control of its sheet each argument of the record is typed into.
void RandomClipboardSessions::changeCellsBySheet(const Item& item) {
  OperationRecord record;
  do record = records_.ofCells(plain_);
  while (record.code() != item.code);
  const auto limited = [&](const char* key, std::int64_t count) {
    const std::int64_t value = record.integer(key, 0) % count;
    record.set(key, value);
    return value;
  };
  json values;
  if (item.code == 311) {
    const string sheet = "clipboardDataTrimWindow";
    values = {{sheet + "TextField", toUtf8(record.text("Arg2"))},
              {sheet + "TrimWhatPopUpButton", limited("IntArg2", 4)},
              {sheet + "TrimFromPopUpButton", limited("IntArg3", 3)},
              {sheet + "CaseSensitiveButton", limited("IntArg1", 2) == 1}};
  } else if (item.code == 312) {
    const string sheet = "clipboardDataReplaceWindow";
    values = {{sheet + "WhatTextField", toUtf8(record.text("Arg2"))},
              {sheet + "WithTextField", toUtf8(record.text("Arg3"))},
              {sheet + "TypePopUpButton", limited("IntArg2", 2)},
              {sheet + "CaseSensitiveButton", limited("IntArg1", 2) == 1}};
  } else {
    const string sheet = "clipboardDataFillWindow";
    values = {{sheet + "TypePopUpButton", limited("IntArg1", 2)},
              {sheet + "WithTextField", toUtf8(record.text("Arg1"))}};
  }
  record.set(item.code == 314 ? "Arg2" : "Arg1", plain_.selectionText());
  const bool cancels = random_.oneIn(8);
  json arguments = {{"values", values}};
  if (cancels) arguments["cancel"] = true;
  choosing(item, arguments);
  if (isOn(item.needs) && !cancels) performed(record);
}

// The items of the menu.

bool RandomClipboardSessions::flipIsRefused(std::int64_t code) {
  if (plain_.grid.size() > 100) {
    plain_.alerts.push_back({u"Transform is limited to 100 columns", u""});
    return true;
  }
  if (code == 416 && maxRowLength(plain_.grid) == 0) {
    plain_.alerts.push_back({u"All rows are empty", u""});
    return true;
  }
  return false;
}

void RandomClipboardSessions::choosePlain(const Item& item) {
  const json result = choosing(item, json::object());
  const bool isOfColumns = item.code == 407 || item.code == 412 || item.code == 413;
  const bool isFill = item.code >= 408 && item.code <= 411;
  const bool isFlip = item.code >= 416;
  OperationRecord record{{"Code", item.code}};
  if (isFill) record = {{"Code", item.code}, {"IntArg1", 0}, {"Arg1", u""}};
  if (item.needs == Needs::Line || isOfColumns)
    record.set("Arg1", PlainWorkbench::runs(isOfColumns ? plain_.selection.columns : plain_.selection.rows));
  if (isOn(item.needs) && !(isFlip && flipIsRefused(item.code))) performed(record);
  expectAlerts(result);
}

void RandomClipboardSessions::answerPrompt(const Item& item) {
  static const string kTexts[] = {"-", "", " + ", "2", "3", "1", "9"};
  const string text = random_.pick(kTexts);
  const bool cancels = random_.oneIn(10);
  const json result = choosing(item, {{"prompt", cancels ? json() : json(text)}});
  const bool joins = item.code >= 423;
  const bool isRefused = joins && integerValue(toUtf16(text)) < 2;
  if (isOn(item.needs) && !cancels) {
    const bool ofColumns = item.code == 419 || item.code == 420;
    std::u16string list;
    if (!joins) list = PlainWorkbench::runs(ofColumns ? plain_.selection.columns : plain_.selection.rows);
    if (isRefused)
      plain_.alerts.push_back(
          {item.code == 423 ? u"You must join at least 2 rows" : u"You must join at least 2 columns", u""});
    else
      performed({{"Code", item.code}, {"Arg1", toUtf16(text)}, {"Arg2", list}});
  }
  expectAlerts(result);
}

// The table.

json RandomClipboardSessions::detailsOfCell(std::u16string& text) {
  text = records_.edit(0, 0).text("Arg1");
  return {{"cellDetailsWindowTextField", toUtf8(text)}};
}

void RandomClipboardSessions::editedCell(const json& opened, const std::u16string& text) {
  const auto [row, column] = plain_.selection.focus;
  std::u16string shown;
  const auto has = [](std::int64_t index, std::size_t count) {
    return index >= 0 && index < static_cast<std::int64_t>(count);
  };
  if (has(row, plain_.grid.size()) && has(column, at(plain_.grid, row).size()))
    shown = at(plain_.grid, row)[static_cast<std::size_t>(column)];
  EXPECT_EQ(opened, (json{{"cellDetailsWindowTextField", toUtf8(shown)}}));
  performed({{"Code", 401}, {"IntArg1", row}, {"IntArg2", column}, {"Arg1", text}});
}

void RandomClipboardSessions::click() {
  // What lies beyond the table is not hit.
  const auto row = static_cast<std::int64_t>(random_.below(plain_.grid.size() + 2));
  const auto column = static_cast<std::int64_t>(
      random_.oneIn(3) ? 0 : random_.below(static_cast<std::size_t>(plain_.tableColumnCount) + 3));
  const std::int64_t count = random_.oneIn(6) ? 2 : 1;
  const ClickModifiers held{random_.oneIn(5), random_.oneIn(3), random_.oneIn(8)};
  std::u16string text;
  const json values = detailsOfCell(text);
  const json opened = done("click", {{"row", row},
                                     {"column", column},
                                     {"count", count},
                                     {"shift", held.shift},
                                     {"command", held.command},
                                     {"alternate", held.alternate},
                                     {"values", values}})["opened"];
  const bool isHit = row < plain_.tableRowCount && column <= plain_.tableColumnCount;
  if (isHit) plain_.selection.mouse(row, column, count, held);
  if (isHit && count == 2 && column > 0)
    editedCell(opened, text);
  else
    EXPECT_EQ(opened, nullptr);
}

void RandomClipboardSessions::clickHeader() {
  const std::size_t column = random_.below(static_cast<std::size_t>(plain_.tableColumnCount) + 1);
  const ClickModifiers held{random_.oneIn(3), random_.oneIn(3), false};
  done("headerClick", {{"column", column}, {"shift", held.shift}, {"command", held.command}});
  plain_.selection.header(static_cast<std::int64_t>(column), held, plain_.tableSize());
}

void RandomClipboardSessions::pressKey() {
  static const std::pair<const char*, GridKey> kKeys[] = {
      {"up", GridKey::Up},         {"down", GridKey::Down},    {"left", GridKey::Left},
      {"right", GridKey::Right},   {"tab", GridKey::Tab},      {"backtab", GridKey::BackTab},
      {"return", GridKey::Return}, {"delete", GridKey::Delete}};
  const auto& [name, key] = random_.pick(kKeys);
  const bool alternate = random_.oneIn(4);
  std::u16string text;
  const json values = detailsOfCell(text);
  const json opened = done("key", {{"key", name}, {"alternate", alternate}, {"values", values}})["opened"];
  plain_.selection.key(key, alternate, plain_.tableSize());
  if (key == GridKey::Return)
    editedCell(opened, text);
  else
    EXPECT_EQ(opened, nullptr);
}

// The same operations on another text, as a job that was saved.
void RandomClipboardSessions::performAgain() {
  const OperationList saved = plain_.operations;
  EXPECT_EQ(done("saveJob", {{"window", "clipboardDataWindow"}, {"name", "recipe"}})["saved"], true);
  if (random_.oneIn(2)) refreshTo(toUtf8(records_.clipboardText()));
  done("searchJobs", {{"searchType", 1}, {"searchString", ""}});
  done("selectJobs", {{"rows", {0}}});
  const json result = done("restoreOperations");
  for (const OperationRecord& record : saved) {
    performed(withAllKeys(record));
    hasShown_ = hasShown_ || record.code() == 902 || (record.code() == 102 && plain_.string);
  }
  expectAlerts(result);
  showClipboardDataWindow();
}

void RandomClipboardSessions::act() {
  if (!plain_.isSmall()) return refreshTo(toUtf8(records_.clipboardText()));
  switch (random_.below(16)) {
    case 0:
      return refreshTo(random_.oneIn(8) ? json() : json(toUtf8(records_.clipboardText())));
    case 1:
      if (plain_.action == PlainWorkbench::Action::Undo)
        hasShown_ = hasShown_ || plain_.actionRecord.code() == 102;
      EXPECT_EQ(undo(), plain_.undo());
      return;
    case 2:
      EXPECT_EQ(redo(), plain_.redo());
      return expectAlerts(json::object());
    case 3:
    case 4:
    case 5:
      return useSheet(random_.pick(kSheets));
    case 6:
    case 7:
    case 8:
      return choosePlain(random_.pick(kPlain));
    case 9:
      return answerPrompt(random_.pick(kPrompted));
    case 10:
    case 11:
      return click();
    case 12:
      return clickHeader();
    case 13:
      return pressKey();
    case 14:
      done("selectAll");
      return plain_.selection.selectAll(plain_.tableSize());
    default:
      if (random_.oneIn(4) && plain_.operations.size() < 12) performAgain();
  }
}

void RandomClipboardSessions::compare() {
  const json shown = window();
  json operations = json::array();
  for (const OperationRecord& record : plain_.operations) operations.push_back(jsonOf(record));
  const auto textOf = [](const std::optional<std::u16string>& text) {
    return text ? json(toUtf8(*text)) : json();
  };
  const bool canUndo = plain_.action == PlainWorkbench::Action::Undo;
  EXPECT_EQ(shown["grid"], jsonOf(plain_.grid));
  EXPECT_EQ(shown["string"], textOf(plain_.string));
  EXPECT_EQ(pasteboard(), textOf(plain_.pasteboard));
  EXPECT_EQ(shown["selection"], toUtf8(plain_.selectionText()));
  EXPECT_EQ(shown["focus"], (json{plain_.selection.focus.first, plain_.selection.focus.second}));
  EXPECT_EQ(shown["title"], toUtf8(plain_.title));
  EXPECT_EQ(shown["status"], status(toUtf8(plain_.status), plain_.statusType));
  EXPECT_EQ(shown["shown"], !hasShown_ ? "help" : plain_.showsGrid ? "grid" : "text");
  EXPECT_EQ(shown["text"], toUtf8(stringByReplacingControlCharactersFromString(plain_.text, {})));
  EXPECT_EQ(shown["columns"], plain_.tableColumnCount);
  EXPECT_EQ(shown["operations"], operations);
  EXPECT_EQ(shown["undoActionName"], canUndo ? toUtf8(plain_.actionName()) : "");
  EXPECT_EQ(shown["canUndo"], canUndo);
  EXPECT_EQ(shown["canRedo"], plain_.action == PlainWorkbench::Action::Redo);
  EXPECT_EQ(shown["performEnabled"], plain_.toolbarItemsEnabled);
  EXPECT_EQ(shown["joinEnabled"], plain_.toolbarItemsEnabled);
}

TEST_F(RandomClipboardSessions, KeepToThePlainRules) {
  launch();
  showClipboardDataWindow();
  refreshTo("a,b,c\nd,\"e,f\"\n\n g ,h");
  for (std::uint64_t step = 0; step < rounds(400); ++step) {
    act();
    compare();
    ASSERT_FALSE(HasFailure()) << "step " << step;
  }
}

}  // namespace
}  // namespace quillet::testing
