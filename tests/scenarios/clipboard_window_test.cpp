// The clipboard data window: from the clipboard's text to the grid and back, and one level of undo.
#include <set>

#include "scenarios/clipboard_scenario.h"

namespace quillet::testing {
namespace {

class ClipboardWindow : public ClipboardScenario {
 protected:
  ClipboardWindow() { launch(); }

  bool isOpen() { return done("controls", {{"window", "clipboardDataWindow"}})["open"]; }
  void choose() { done("menu", {{"action", "clipboardDataWindowMenuItemClicked"}}); }
};

TEST_F(ClipboardWindow, HoldsNothingBeforeTheFirstRefresh) {
  const json expected = {{"ok", true},
                         {"grid", json::array()},
                         {"string", nullptr},
                         {"selection", ""},
                         {"focus", {-1, -1}},
                         {"title", "Clipboard Data"},
                         {"status", status("")},
                         {"shown", "help"},
                         {"text", ""},
                         {"columns", 0},
                         {"operations", json::array()},
                         {"undoActionName", ""},
                         {"canUndo", false},
                         {"canRedo", false},
                         {"performEnabled", false},
                         {"joinEnabled", false}};
  EXPECT_EQ(window(), expected);
  EXPECT_FALSE(undo());
  EXPECT_FALSE(redo());
  EXPECT_EQ(window(), expected);
}

TEST_F(ClipboardWindow, TheClipboardHoldsATextOrNone) {
  EXPECT_EQ(pasteboard(), nullptr);
  setPasteboard("zwölf");
  EXPECT_EQ(pasteboard(), "zwölf");
  setPasteboard("");
  EXPECT_EQ(pasteboard(), "");
  done("setPasteboard");
  EXPECT_EQ(pasteboard(), nullptr);
  setPasteboard("kept");
  terminate();
  EXPECT_EQ(pasteboard(), "kept") << "it belongs to no application";
}

TEST_F(ClipboardWindow, OpensWithItsHelpAndReadsNothing) {
  setPasteboard("a");
  choose();
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(window()["shown"], "help");
  EXPECT_EQ(window()["string"], nullptr);
  done("refreshDataFromClipboard");
  choose();
  EXPECT_EQ(window()["shown"], "text") << "it was shown";
  done("closeWindow", {{"window", "clipboardDataWindow"}});
  EXPECT_FALSE(isOpen());
  choose();
  const json reopened = window();
  EXPECT_EQ(reopened["shown"], "help");
  EXPECT_EQ(reopened["status"], status(""));
  EXPECT_EQ(reopened["grid"], (json{{"a"}})) << "the grid is left";
}

// The four states, one after the other.
TEST_F(ClipboardWindow, GoesFromTextToGridAndBack) {
  choose();
  refresh("a|b/c");
  json shown = window();
  EXPECT_EQ(shown["shown"], "text");
  EXPECT_EQ(shown["text"], "a|b/c");
  EXPECT_EQ(shown["grid"], (json{{"a|b/c"}}));
  EXPECT_EQ(shown["columns"], 1);
  EXPECT_EQ(shown["status"], status("Refreshed from macOS Clipboard."));
  EXPECT_EQ(shown["title"], "Clipboard Data - 1 line, 1 column (5 characters total)");
  EXPECT_EQ(shown["operations"], json::array());

  split();
  shown = window();
  EXPECT_EQ(shown["shown"], "grid");
  EXPECT_EQ(shown["grid"], (json{{"a", "b"}, {"c"}}));
  EXPECT_EQ(shown["columns"], 2);
  EXPECT_EQ(shown["status"], status("Split operation performed."));
  EXPECT_EQ(shown["title"], "Clipboard Data - 2 lines, 2 columns (5 characters total)");
  EXPECT_EQ(shown["operations"], (json{{{"Code", 102}, {"Arg1", "/"}, {"Arg2", "|"}}}));
  EXPECT_EQ(shown["undoActionName"], "Split");
  EXPECT_EQ(shown["performEnabled"], false) << "only the sheet's Done enables it";

  perform({{"Code", 902}, {"Arg1", "\n"}, {"Arg2", ","}, {"IntArg1", 1}});
  shown = window();
  EXPECT_EQ(shown["shown"], "text");
  EXPECT_EQ(shown["string"], "\"a\",\"b\"\n\"c\"");
  EXPECT_EQ(pasteboard(), "\"a\",\"b\"\n\"c\"");
  EXPECT_EQ(shown["text"], call("stringByReplacingControlCharactersFromString",
                                {{"text", "\"a\",\"b\"\n\"c\""}, {"lineSeparator", nullptr}})["text"]);
  EXPECT_EQ(shown["grid"], json::array());
  EXPECT_EQ(shown["columns"], 2) << "the columns stay";
  EXPECT_EQ(shown["title"], "Clipboard Data");
  EXPECT_EQ(shown["status"], status("Join operation performed."));
}

TEST_F(ClipboardWindow, TheTitleHasSingularWordsForOne) {
  const std::pair<std::string, std::string> cases[] = {
      {"x", "Clipboard Data - 1 line, 1 column (1 character total)"},
      {"", "Clipboard Data - 1 line, 1 column (0 characters total)"},
      {"|", "Clipboard Data - 1 line, 2 columns (1 character total)"},
      {"/", "Clipboard Data - 2 lines, 1 column (1 character total)"},
      {"a/b/", "Clipboard Data - 3 lines, 1 column (4 characters total)"},
      {"😀", "Clipboard Data - 1 line, 1 column (2 characters total)"}};
  for (const auto& [text, title] : cases) {
    begin(text);
    EXPECT_EQ(window()["title"], title);
  }
}

TEST_F(ClipboardWindow, ATrailingSeparatorGivesALastEmptyLine) {
  refresh("a\nb\n");
  perform({{"Code", 102}, {"Arg1", "\n"}});
  EXPECT_EQ(window()["grid"], (json{{"a"}, {"b"}, {""}}));
  performCode(102);
  EXPECT_EQ(window()["grid"], (json{{"a\nb\n"}}));
}

TEST_F(ClipboardWindow, ARefreshWithoutTextChangesNothing) {
  begin("a|b");
  done("click", {{"row", 0}, {"column", 2}});
  const json before = window();
  EXPECT_EQ(refresh(nullptr), (json{{"ok", true}}));
  json after = window();
  EXPECT_EQ(after, before);
}

// Everything that a refresh sets anew, and what it leaves.
TEST_F(ClipboardWindow, ARefreshBeginsAnewButLeavesTheUndo) {
  begin("a|b");
  performCode(416);
  done("click", {{"row", 0}, {"column", 2}});
  refresh("new");
  json shown = window();
  EXPECT_EQ(shown["selection"], "");
  EXPECT_EQ(shown["focus"], (json{-1, -1}));
  EXPECT_EQ(shown["operations"], json::array());
  EXPECT_EQ(shown["undoActionName"], "Flip Horizontal");
  EXPECT_TRUE(undo());
  shown = window();
  EXPECT_EQ(shown["grid"], json::array({{"a", "b"}}));
  EXPECT_EQ(shown["string"], "new");
  EXPECT_EQ(shown["shown"], "text");
}

TEST_F(ClipboardWindow, TooManyLinesLeaveTheGrid) {
  refresh(std::string(1'048'576, '/'));
  const json result = perform({{"Code", 102}, {"Arg1", "/"}});
  EXPECT_EQ(result["alerts"], (json{clipboardSheet("Too many lines",
                                                   "This app is limited to 1048576 lines.\n"
                                                   "1048577 lines were found on the clipboard.")}));
  const json shown = window();
  EXPECT_EQ(shown["status"], status("Too many lines", 2));
  EXPECT_EQ(shown["shown"], "text");
  EXPECT_EQ(shown["grid"].size(), 1u);
  EXPECT_EQ(shown["operations"].size(), 1u);
  EXPECT_EQ(shown["undoActionName"], "Split");
}

TEST_F(ClipboardWindow, TooManyColumnsKeepTheLinesBefore) {
  refresh("a/b|c/" + std::string(16'384, '|') + "/d");
  const json result = split();
  EXPECT_EQ(result["alerts"], (json{clipboardSheet("Too many columns",
                                                   "This app is limited to 16384 columns.\n"
                                                   "16385 columns were found on the clipboard on line 3.")}));
  const json shown = window();
  EXPECT_EQ(shown["status"], status("Too many columns", 2));
  EXPECT_EQ(shown["shown"], "grid");
  EXPECT_EQ(shown["grid"], (json{{"a"}, {"b", "c"}}));
  EXPECT_EQ(shown["columns"], 2);
}

TEST_F(ClipboardWindow, AnEditOutOfRangeFailsAndCanBeUndone) {
  begin("a|b");
  EXPECT_EQ(perform(editCell(1, 0, "x")), (json{{"ok", true}})) << "no alert";
  json shown = window();
  EXPECT_EQ(shown["status"], status("Index out of range", 2));
  EXPECT_EQ(shown["operations"].size(), 2u);
  EXPECT_EQ(shown["undoActionName"], "Edit Cell");
  EXPECT_TRUE(undo());
  EXPECT_EQ(grid(), "a|b");
}

// Undo and redo.

TEST_F(ClipboardWindow, UndoAndRedoAlternateAndARedoIsListed) {
  begin("a/b/c");
  const json deletion = {{"Code", 406}, {"Arg1", "2"}};
  perform(deletion);
  for (int i = 0; i < 2; ++i) {
    json shown = window();
    EXPECT_EQ(shown["grid"], (json{{"a"}, {"c"}}));
    EXPECT_EQ(shown["operations"].size(), 2u + i);
    EXPECT_EQ(shown["operations"].back(), deletion);
    EXPECT_EQ(shown["canUndo"], true);
    EXPECT_EQ(shown["canRedo"], false);
    EXPECT_EQ(shown["undoActionName"], "Delete Selected Lines");
    EXPECT_TRUE(undo());
    shown = window();
    EXPECT_EQ(shown["grid"], (json{{"a"}, {"b"}, {"c"}}));
    EXPECT_EQ(shown["operations"].size(), 2u + i);
    EXPECT_EQ(shown["canUndo"], false);
    EXPECT_EQ(shown["canRedo"], true);
    EXPECT_EQ(shown["undoActionName"], "");
    EXPECT_FALSE(undo()) << "one level";
    EXPECT_TRUE(redo());
    EXPECT_FALSE(redo());
  }
}

TEST_F(ClipboardWindow, UndoLeavesTheSelectionTheFocusTheTitleAndTheText) {
  begin("a|b/c");
  done("click", {{"row", 0}, {"column", 0}});
  done("click", {{"row", 0}, {"column", 1}, {"command", true}});
  done("click", {{"row", 0}, {"column", 1}});
  perform({{"Code", 404}});
  const std::string title = "Clipboard Data - 1 line, 2 columns (5 characters total)";
  EXPECT_EQ(window()["title"], title);
  EXPECT_TRUE(undo());
  const json shown = window();
  EXPECT_EQ(shown["grid"], (json{{"a", "b"}, {"c"}}));
  EXPECT_EQ(shown["title"], title) << "it says what was before the undo";
  EXPECT_EQ(shown["status"], status("Undo Last operation performed."));
  EXPECT_EQ(shown["selection"], "Cells: (1, 1)");
  EXPECT_EQ(shown["focus"], (json{0, 0}));
  EXPECT_TRUE(redo());
  EXPECT_EQ(window()["status"], status("Delete Line from the Top operation performed."));
}

TEST_F(ClipboardWindow, UndoOfASplitShowsTheTextAndOfAJoinTheGrid) {
  begin("a|b");
  EXPECT_TRUE(undo());
  EXPECT_EQ(window()["shown"], "text");
  EXPECT_EQ(window()["grid"], (json{{"a|b"}}));
  EXPECT_TRUE(redo());
  EXPECT_EQ(window()["shown"], "grid");
  perform({{"Code", 902}, {"Arg1", "\n"}, {"Arg2", ";"}});
  EXPECT_TRUE(undo());
  json shown = window();
  EXPECT_EQ(shown["shown"], "grid");
  EXPECT_EQ(shown["grid"], json::array({{"a", "b"}}));
  EXPECT_EQ(shown["string"], "a;b") << "the text and the clipboard keep what was joined";
  EXPECT_EQ(pasteboard(), "a;b");
  EXPECT_EQ(shown["title"], "Clipboard Data");
}

TEST_F(ClipboardWindow, AnOperationAfterAnUndoRemovesTheRedo) {
  begin("a|b");
  performCode(416);
  undo();
  performCode(408);
  EXPECT_FALSE(redo());
  EXPECT_TRUE(undo());
  EXPECT_EQ(grid(), "a|b");
}

// The grid has six columns and the table two, as an edit does not rebuild them. So it can be seen whether an
// operation does, and whether its undo does.
TEST_F(ClipboardWindow, TheColumnsAreRebuiltByTheCodesThatMayChangeThem) {
  const std::set<int> rebuilt = {402, 403, 408, 409, 418, 419, 420, 423, 424};
  std::set<int> rebuiltByUndo = rebuilt;
  rebuiltByUndo.insert({406, 407});
  for (const int code : {311, 312, 314, 401, 402, 403, 404, 405, 406, 407, 408, 409, 410, 411, 412,
                         413, 414, 415, 416, 417, 418, 419, 420, 421, 422, 423, 424, 425, 902, 0}) {
    begin("a|b/c/d");
    perform(editCell(0, 5, "x"));
    ASSERT_EQ(window()["columns"], 2);
    perform({{"Code", code}, {"Arg1", "2"}, {"Arg2", "1, 2"}, {"IntArg1", 0}, {"IntArg2", 0}});
    const json shown = window();
    std::size_t width = 0;
    for (const json& row : shown["grid"]) width = std::max(width, row.size());
    EXPECT_EQ(shown["columns"], rebuilt.contains(code) ? width : 2) << code;
    EXPECT_TRUE(undo());
    EXPECT_EQ(window()["columns"], rebuiltByUndo.contains(code) ? 6 : 2) << code;
  }
}

TEST_F(ClipboardWindow, ADeletionRebuildsTheColumnsWhenItsKindIsSelected) {
  for (const int code : {406, 407})
    for (const bool lines : {true, false}) {
      begin("a|b/c/d");
      perform(editCell(0, 5, "x"));
      if (lines)
        done("click", {{"row", 2}, {"column", 0}});
      else
        done("headerClick", {{"column", 1}});
      perform({{"Code", code}, {"Arg1", "2"}});
      EXPECT_EQ(window()["columns"] == 2, (code == 406) != lines) << code << lines;
    }
}

TEST_F(ClipboardWindow, TheStatusNamesTheOperation) {
  const std::pair<int, std::string> cases[] = {{311, "Trim Column"},     {312, "Replace Cells"},
                                               {314, "Fill Cells"},      {402, "Delete Column from the Left"},
                                               {416, "Flip Horizontal"}, {4711, ""}};
  begin("a|b");
  for (const auto& [code, name] : cases) {
    performCode(code);
    EXPECT_EQ(window()["status"], status(name + " operation performed."));
    EXPECT_EQ(window()["undoActionName"], name);
  }
  done("press", {{"name", "clipboardDataWindowClearStatusLabelButton"}});
  EXPECT_EQ(window()["status"], status(""));
}

TEST_F(ClipboardWindow, ARecordWithoutACodeChangesNothing) {
  begin("a|b/c");
  perform({{"Arg1", "1"}});
  const json shown = window();
  EXPECT_EQ(shown["grid"], (json{{"a", "b"}, {"c"}}));
  EXPECT_EQ(shown["operations"].size(), 2u);
  EXPECT_EQ(shown["canUndo"], true);
}

TEST_F(ClipboardWindow, PerformedOperationsStandInTheirTable) {
  begin("a|b/c");
  performCode(416);
  const json rows = done(
      "controls",
      {{"window", "clipboardDataWindow"}})["controls"]["clipboardDataWindowOperationsTableView"]["titles"];
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0][0], "Split");
  EXPECT_EQ(rows[1][0], "Flip Horizontal");
}

// The session.

TEST_F(ClipboardWindow, ALaunchWithTheWindowOpenReadsTheClipboard) {
  choose();
  terminate();
  setPasteboard("from elsewhere");
  launch();
  EXPECT_TRUE(isOpen());
  json shown = window();
  EXPECT_EQ(shown["string"], "from elsewhere");
  EXPECT_EQ(shown["shown"], "text");
  EXPECT_EQ(shown["status"], status("Refreshed from macOS Clipboard."));
  EXPECT_EQ(shown["title"], "Clipboard Data - 1 line, 1 column (14 characters total)");
  done("closeWindow", {{"window", "clipboardDataWindow"}});
  terminate();
  launch();
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(window()["string"], nullptr);
}

// Jobs.

TEST_F(ClipboardWindow, ASavedJobIsPerformedOnTheTextOfToday) {
  begin("a|b/c|d");
  performCode(416);
  perform(editCell(9, 0, "x"));
  perform({{"Code", 406}, {"Arg1", "1"}});
  undo();
  redo();
  const json recipe = window()["operations"];
  ASSERT_EQ(recipe.size(), 5u) << "with what failed, and the redone one twice";
  EXPECT_EQ(done("saveJob", {{"window", "clipboardDataWindow"}, {"name", "recipe"}})["saved"], true);
  refresh("1|2|3/4|5/6/7");
  done("searchJobs", {{"searchType", 1}, {"searchString", ""}});
  done("selectJobs", {{"rows", {0}}});
  EXPECT_EQ(done("previousJobsWindow")["restoreTitle"], "Perform Operations");
  done("restoreOperations");
  const json shown = window();
  EXPECT_EQ(grid(), "||6/||7");
  EXPECT_EQ(shown["string"], "1|2|3/4|5/6/7");
  ASSERT_EQ(shown["operations"].size(), 5u);
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(shown["operations"][i]["Code"], recipe[i]["Code"]);
  EXPECT_EQ(shown["undoActionName"], "Delete Selected Lines");
  EXPECT_TRUE(undo());
  EXPECT_EQ(grid(), "|5|4/||6/||7") << "of the last step alone";
}

}  // namespace
}  // namespace quillet::testing
