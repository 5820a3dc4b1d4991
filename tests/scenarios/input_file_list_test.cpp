// Files come into the list, are selected, and survive a restart.
#include <chrono>
#include <filesystem>
#include <tuple>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

class InputFileList : public Scenario {
 protected:
  json names() {
    json result = json::array();
    for (const auto& entry : entries()) result.push_back(entry["FileName"]);
    return result;
  }
  // Puts files of one line into the list, without selecting any. Their names are "0" and so on.
  void listFiles(int count) {
    json paths = json::array();
    for (int i = 0; i < count; ++i)
      paths.push_back(write(std::to_string(i), "line of " + std::to_string(i) + "\n"));
    done("addInputFiles", {{"paths", paths}, {"row", 0}});
  }
  json selectedFiles() { return mainWindow()["selectedFiles"]; }
};

json numbered(const std::vector<int>& numbers) {
  json result = json::array();
  for (const int number : numbers) result.push_back(std::to_string(number));
  return result;
}

json defaultEntry(const std::string& path, const std::string& name, int type, int flags,
                  const std::string& separator) {
  return {{"FilePath", path},
          {"FileName", name},
          {"FileEncoding", 4},
          {"FileType", type},
          {"Operations",
           {{{"Code", 101}, {"IntArg1", flags}, {"IntArg2", 4}, {"Arg1", "\n"}, {"Arg2", separator}},
            {{"Code", 901},
             {"IntArg1", flags & 32 ? 1 : 0},
             {"IntArg2", 4},
             {"IntArg3", 2},
             {"Arg1", "\n"},
             {"Arg2", separator},
             {"Arg4", name}}}}};
}

TEST_F(InputFileList, AFileGetsOperationsByItsType) {
  write("a.txt", "x\ty\n");
  write("b.csv", "x,y\n");
  write("c.txt", "x|y\n");
  launch();
  done("addInputFiles", {{"paths", {"a.txt", "b.csv", "c.txt"}}, {"row", 0}});
  EXPECT_EQ(entries(), (json{defaultEntry(path("a.txt"), "a.txt", 1, 17, "\t"),
                             defaultEntry(path("b.csv"), "b.csv", 2, 49, ","),
                             defaultEntry(path("c.txt"), "c.txt", 3, 17, "|")}));
  EXPECT_EQ(log(), (json{{0, "Scanning \"a.txt\""}, {0, "Scanning \"b.csv\""}, {0, "Scanning \"c.txt\""}}));
}

TEST_F(InputFileList, SplittingCanBeSwitchedOffForNewFiles) {
  setDefault("DontAutoSplit", true);
  write("a.txt", "x\ty\n");
  write("b.csv", "x,y\n");
  launch();
  done("addInputFiles", {{"paths", {"a.txt", "b.csv"}}, {"row", 0}});
  EXPECT_EQ(entries()[0]["Operations"][0]["IntArg1"], 0);
  EXPECT_EQ(entries()[1]["Operations"][0]["IntArg1"], 32);
}

TEST_F(InputFileList, AFileThatCannotBeReadBecomesAnEntryAllTheSame) {
  launch();
  done("addInputFiles", {{"paths", {"missing.txt"}}, {"row", 0}});
  EXPECT_EQ(entries(), (json{defaultEntry(path("missing.txt"), "missing.txt", 1, 17, "\t")}));
  EXPECT_EQ(log()[1], (json{2, "Error 2: Could not open \"" + path("missing.txt") + "\" for scan"}));
}

TEST_F(InputFileList, APathThatIsListedIsPassedOverInSilence) {
  launch();
  add({write("a.txt", "1\n"), write("b.txt", "2\n")});
  select({1});
  const json before = log();
  done("addInputFiles", {{"paths", {"a.txt", "a.txt"}}, {"row", 0}, {"selectFiles", true}});
  EXPECT_EQ(entries().size(), 2u);
  EXPECT_EQ(log(), before);
  EXPECT_EQ(mainWindow()["selectedFiles"], json{1}) << "the selection stays";
}

TEST_F(InputFileList, ABlockIsInsertedAtTheRowAndSelected) {
  launch();
  add({write("a.txt", "1\n"), write("b.txt", "2\n")});
  done("addInputFiles",
       {{"paths", {write("c.txt", "3\n"), write("d.txt", "4\n")}}, {"row", 1}, {"selectFiles", true}});
  EXPECT_EQ(names(), (json{"a.txt", "c.txt", "d.txt", "b.txt"}));
  EXPECT_EQ(mainWindow()["selectedFiles"], (json{1, 2}));
}

TEST_F(InputFileList, AFileInsertedAtTheSelectedRowIsShown) {
  launch();
  add({write("a.txt", "1\n")});
  done("addInputFiles", {{"paths", {write("b.txt", "2\n")}}, {"row", 0}, {"selectFiles", true}});
  json window = mainWindow();
  EXPECT_EQ(window["path"], path("b.txt"));
  EXPECT_EQ(window["inputCells"], R"([["1", "2"]])"_json);
}

TEST_F(InputFileList, RowsBeyondTheTableAreNotSelected) {
  launch();
  add({write("a.txt", "1\n")});
  select({0, 7});
  EXPECT_EQ(mainWindow()["selectedFiles"], json{0});
  select({});
  EXPECT_EQ(mainWindow()["selectedFiles"], json::array());
}

TEST_F(InputFileList, TheRightSideFollowsTheSelection) {
  launch();
  EXPECT_EQ(mainWindow()["helpBox"], true);
  add({write("a.txt", "1\t2\n"), write("b.csv", "3,4,5\n")});
  select({1});
  json one = mainWindow();
  EXPECT_EQ(one["helpBox"], false);
  EXPECT_EQ(one["path"], path("b.csv"));
  EXPECT_EQ(one["operationRows"].size(), 2u);
  EXPECT_EQ(one["operationRows"][0][0], "Initial");
  EXPECT_EQ(one["inputCells"], R"([["1", "3", "4", "5"]])"_json);

  select({0, 1});
  json several = mainWindow();
  EXPECT_EQ(several["helpBox"], false);
  EXPECT_EQ(several["path"], "(Multiple)");
  EXPECT_EQ(several["operationRows"][1][2],
            "Join columns with \"\\t\"; Join lines with \"\\n\"; Encode as UTF-8; Write to \"a.txt\"")
      << "the first file's two ends speak for all";
  EXPECT_EQ(several["inputColumns"], json{"Cil0"});
  EXPECT_EQ(several["inputCells"], json::array());
  EXPECT_EQ(several["outputCells"], one["outputCells"]) << "the output keeps the rows that it had";

  select({});
  json none = mainWindow();
  EXPECT_EQ(none["helpBox"], true);
  EXPECT_EQ(none["operationRows"], json::array());
}

TEST_F(InputFileList, SetListsArePutInPlaceAsTheyAre) {
  launch();
  const json entry = {{"FilePath", path("a.txt")},
                      {"FileName", "a.txt"},
                      {"FileEncoding", 12},
                      {"FileType", 9},
                      {"Operations", {{{"Code", "202"}, {"IntArg1", "1"}, {"Other", "é"}}}},
                      {"ExpectedColumnsInLine", {{{"ColumnIndex", 3}, {"ColumnDescriptor", "x"}}}}};
  done("setInputFiles", {{"entries", {entry}}});
  EXPECT_EQ(entries(), json{entry});
  EXPECT_EQ(log(), json::array());
  done("addInputFiles", {{"paths", {"a.txt"}}, {"row", 0}});
  EXPECT_EQ(entries().size(), 1u) << "its path is known";
  done("setOperations", {{"index", 0}, {"operations", json::array()}});
  EXPECT_EQ(entries()[0]["Operations"], json::array());
}

TEST_F(InputFileList, TheSessionSurvivesARestart) {
  launch();
  add({write("a b.txt", "1\n"), write("b.txt", "2\n")});
  setOperations(1, csvOperations("x.csv"));
  select({1});
  terminate();
  EXPECT_EQ(defaultOf("LastOpenedFiles")[0], "file://" + root() + "/a%20b.txt");
  EXPECT_EQ(defaultOf("LastSelectedFileIndex"), 1);
  restart();
  launch();
  EXPECT_EQ(entries().size(), 2u);
  EXPECT_EQ(entries()[0]["FilePath"], path("a b.txt"));
  EXPECT_EQ(entries()[1]["Operations"], csvOperations("x.csv"));
  EXPECT_EQ(mainWindow()["selectedFiles"], json{1});
  EXPECT_EQ(mainWindow()["inputCells"], R"([["1", "2"]])"_json) << "selecting it made its preview";
}

TEST_F(InputFileList, AnEmptyListIsStoredToo) {
  launch();
  terminate();
  EXPECT_EQ(defaultOf("LastOpenedFiles"), json::array());
  EXPECT_EQ(defaultOf("LastOperations"), json::object());
  EXPECT_EQ(defaultOf("LastSelectedFileIndex"), nullptr);
}

TEST_F(InputFileList, WhatCannotBeRestoredBecomesALineOfTheLog) {
  std::filesystem::create_directory(path("folder"));
  write("a.txt", "1\n");
  setDefault("LastOpenedFiles", {3, "a.txt", "file://" + path("missing"), "file://" + path("folder"),
                                 "file://" + path("a.txt")});
  setDefault("LastSelectedFileIndex", 1);
  launch();
  EXPECT_EQ(log(), (json{{1, "Could not create bookmark URL from defaults"},
                         {0, "(Last message repeated 1 times)"},
                         {1, "File does not exist \"" + path("missing") + "\""},
                         {1, "File is actually a directory \"" + path("folder") + "\""},
                         {0, "Scanning \"a.txt\""}}))
      << "the second of two equal lines is folded";
  EXPECT_EQ(entries().size(), 1u);
  EXPECT_EQ(entries()[0]["Operations"][0]["IntArg1"], 17)
      << "without stored operations it gets the default ones";
  EXPECT_EQ(mainWindow()["selectedFiles"], json::array()) << "the stored row is past the list";
  EXPECT_EQ(mainWindow()["helpBox"], true);
}

TEST_F(InputFileList, FilesFromOutsideAreAddedOnceAndForgetTheStoredSelection) {
  write("a.txt", "1\n");
  write("b.txt", "2\n");
  setDefault("LastOpenedFiles", {"file://" + path("b.txt")});
  setDefault("LastSelectedFileIndex", 0);
  done("openFiles", {{"paths", {"a.txt"}}});
  EXPECT_EQ(defaultOf("LastSelectedFileIndex"), nullptr);
  launch();
  EXPECT_EQ(entries().size(), 2u);
  done("openFiles", {{"paths", {write("c.txt", "3\n")}}});
  EXPECT_EQ(entries().size(), 2u) << "a second delivery passes the first list again";
}

TEST_F(InputFileList, TheTableShowsTheLastComponentOfThePath) {
  launch();
  done("setInputFiles",
       {{"entries", {{{"FilePath", "/folder/a b.txt"}, {"FileName", "other"}}, {{"FileName", "pathless"}}}}});
  EXPECT_EQ(done("controls", {{"window", "window"}})["controls"]["filesTableView"]["titles"],
            (json{{"a b.txt"}, {""}}));
}

TEST_F(InputFileList, SetEntriesKeepAbsentKeysAbsent) {
  launch();
  const json list = {json::object(),
                     {{"FilePath", path("a.txt")}},
                     {{"FileName", "b.txt"}, {"FileType", 2}},
                     {{"FilePath", path("c.txt")}, {"Operations", json::array()}},
                     {{"FileEncoding", 12}, {"ExpectedColumnsInLine", json::array()}}};
  done("setInputFiles", {{"entries", list}});
  EXPECT_EQ(entries(), list);
  for (int row = 0; row < 5; ++row) select({row});
  select({0, 1, 2, 3, 4});
  EXPECT_EQ(mainWindow()["operationRows"], json::array()) << "the first one has no operations";
  done("dropFiles", {{"rows", {0, 4}}, {"row", 2}});
  EXPECT_EQ(entries(), (json{list[1], list[0], list[4], list[2], list[3]}));
  select({0, 1});
  done("removeSelectedInputFiles");
  EXPECT_EQ(entries(), (json{list[4], list[2], list[3]}));
  done("addInputFiles", {{"paths", {"c.txt", "a.txt"}}, {"row", 0}});
  EXPECT_EQ(entries().size(), 4u) << "a removed path is no longer known";
  terminate();
  restart();
  EXPECT_EQ(defaultOf("LastOpenedFiles"), (json{"file://" + path("a.txt"), "file://" + path("c.txt")}))
      << "what has no path is not stored";
}

TEST_F(InputFileList, MovedFilesAreSelectedWhereTheyWereDropped) {
  struct Case {
    std::vector<int> rows;
    int row;
    std::vector<int> names, selected;
  };
  const Case cases[] = {
      {{3}, 0, {3, 0, 1, 2, 4}, {0}},       {{2, 4}, 1, {0, 2, 4, 1, 3}, {1, 2}},
      {{0}, 3, {1, 2, 0, 3, 4}, {3}},        // one row left from above: the next file is selected
      {{0, 1}, 3, {2, 0, 1, 3, 4}, {3, 4}},  // two did
      {{0, 1}, 4, {2, 3, 0, 1, 4}, {4}},     // what would be beyond the table is left out
      {{0}, 5, {1, 2, 3, 4, 0}, {}},         // and here all of it
      {{4}, 5, {0, 1, 2, 3, 4}, {}},        {{1}, 1, {0, 1, 2, 3, 4}, {1}},
      {{0, 4}, 2, {1, 0, 4, 2, 3}, {2, 3}}, {{0, 1, 2, 3, 4}, 2, {0, 1, 2, 3, 4}, {2, 3, 4}},
      {{}, 2, {0, 1, 2, 3, 4}, {}},         {{3, 9}, 1, {0, 3, 1, 2, 4}, {1}},  // there is no row 9
      {{-1, 3}, 1, {0, 3, 1, 2, 4}, {1}},   {{2}, -7, {2, 0, 1, 3, 4}, {0}},
      {{2}, 99, {0, 1, 3, 4, 2}, {}},
  };
  launch();
  listFiles(5);
  const json list = entries();
  for (const auto& one : cases) {
    done("setInputFiles", {{"entries", list}});
    select({1});
    done("dropFiles", {{"rows", one.rows}, {"row", one.row}});
    EXPECT_EQ(names(), numbered(one.names)) << json(one.rows) << " to " << one.row;
    const json window = mainWindow();
    EXPECT_EQ(window["selectedFiles"], json(one.selected)) << json(one.rows) << " to " << one.row;
    EXPECT_EQ(window["helpBox"], one.selected.empty());
  }
}

TEST_F(InputFileList, AMovedFileKeepsItsOperationsAndTheSelectedOneIsShown) {
  launch();
  listFiles(3);
  setOperations(2, csvOperations("mine"));
  select({0});
  const json moved = entries()[2];
  done("dropFiles", {{"rows", {2}}, {"row", 0}});
  EXPECT_EQ(entries()[0]["Operations"], moved["Operations"]);
  const json window = mainWindow();
  EXPECT_EQ(window["path"], path("2")) << "another file stands in the selected row";
  EXPECT_EQ(window["inputCells"], R"([["1", "line of 2"]])"_json);
}

TEST_F(InputFileList, DroppedPathsAreAddedAtTheRowAndSelected) {
  struct Case {
    std::vector<std::string> paths;
    int row;
    std::vector<std::string> names;
    std::vector<int> selected;
  };
  const Case cases[] = {
      {{"x"}, 0, {"x", "0", "1"}, {0}},  {{"x", "y.any"}, 1, {"0", "x", "y.any", "1"}, {1, 2}},
      {{"x"}, 2, {"0", "1", "x"}, {2}},  {{"x"}, 99, {"0", "1", "x"}, {2}},
      {{"x"}, -3, {"x", "0", "1"}, {0}}, {{"0", "x", "x"}, 1, {"0", "x", "1"}, {1}},
      {{"1", "0"}, 0, {"0", "1"}, {1}},  // the selection stays
      {{}, 0, {"0", "1"}, {1}},
  };
  launch();
  listFiles(2);
  const json list = entries();
  setDefault("LastOperations", {{path("x"), {{{"Code", 999}}}}});
  for (const auto& one : cases) {
    done("setInputFiles", {{"entries", list}});
    select({1});
    done("dropPaths", {{"paths", one.paths}, {"row", one.row}});
    EXPECT_EQ(names(), json(one.names));
    EXPECT_EQ(selectedFiles(), json(one.selected));
    for (const auto& entry : entries()) EXPECT_EQ(entry["Operations"].size(), 2u) << "nothing is restored";
  }
}

TEST_F(InputFileList, RemovingSelectsByTheLastRowAndTheirNumber) {
  struct Case {
    std::vector<int> removed;
    std::vector<int> names, selected;
  };
  const Case cases[] = {
      {{2, 3}, {0, 1, 4}, {1}},  {{1}, {0, 2, 3, 4}, {0}},  {{4}, {0, 1, 2, 3}, {3}},
      {{0}, {1, 2, 3, 4}, {0}},  {{0, 1}, {2, 3, 4}, {0}},  {{0, 4}, {1, 2, 3}, {2}},
      {{0, 2, 4}, {1, 3}, {1}},  {{3, 4}, {0, 1, 2}, {2}},  {{1, 2, 3, 4}, {0}, {0}},
      {{0, 1, 2, 3, 4}, {}, {}}, {{}, {0, 1, 2, 3, 4}, {}},
  };
  launch();
  listFiles(5);
  const json list = entries();
  for (const auto& one : cases) {
    done("setInputFiles", {{"entries", list}});
    select(one.removed);
    done("removeSelectedInputFiles");
    EXPECT_EQ(names(), numbered(one.names)) << json(one.removed);
    const json window = mainWindow();
    EXPECT_EQ(window["selectedFiles"], json(one.selected)) << json(one.removed);
    EXPECT_EQ(window["helpBox"], one.selected.empty());
    if (one.selected.size() == 1) {
      const std::string shown = names()[one.selected[0]];
      EXPECT_EQ(window["path"], path(shown));
      EXPECT_EQ(window["inputCells"], json::array({json::array({"1", "line of " + shown})}));
      EXPECT_EQ(window["operationRows"].size(), 2u);
    } else {
      EXPECT_EQ(window["path"], "");
      EXPECT_EQ(window["operationRows"], json::array());
    }
  }
}

TEST_F(InputFileList, ARemovedFileCanBeAddedAgain) {
  launch();
  listFiles(2);
  setOperations(0, csvOperations("mine"));
  select({0});
  done("press", {{"name", "removeInputFilesButton"}});
  done("dropPaths", {{"paths", {"0"}}, {"row", 1}});
  EXPECT_EQ(names(), numbered({1, 0}));
  EXPECT_EQ(entries()[1]["Operations"][1]["IntArg3"], 2);
  EXPECT_NE(entries()[1]["Operations"], csvOperations("mine")) << "with operations of its own";
}

// The selection that follows makes a preview, and so does what follows the selection.
TEST_F(InputFileList, RemovingUpdatesTheRightSideAfterTheSelection) {
  launch();
  const json missing = {{"FilePath", path("missing")}, {"Operations", csvOperations("o")}};
  done("setInputFiles", {{"entries", {missing, {{"FilePath", path("1")}}}}});
  select({1});
  done("menu", {{"action", "clearLogMenuItemClicked"}});
  done("menu", {{"action", "removeSelectedInputFilesMenuItemClicked"}});
  done("addInputFiles", {{"paths", {write("z", "1\n")}}, {"row", 9}});
  EXPECT_EQ(log(), (json{{2, "Could not open \"" + path("missing") + "\" for reading [errno 2]"},
                         {0, "(Last message repeated 1 times)"},
                         {0, "Scanning \"z\""}}));
}

TEST_F(InputFileList, ThePanelAddsAtTheEndAndSelects) {
  launch();
  listFiles(2);
  write("x", "1\n");
  write("y", "2\n");
  select({0});
  done("addInputFileMenuItemClicked");
  EXPECT_EQ(names(), numbered({0, 1})) << "cancelled";
  done("addInputFileMenuItemClicked", {{"panel", json::array()}});
  done("addInputFileMenuItemClicked", {{"panel", {"0"}}});
  EXPECT_EQ(names(), numbered({0, 1}));
  EXPECT_EQ(selectedFiles(), json{0});
  done("press", {{"name", "addInputFileButton"}, {"panel", {"x", "1"}}});
  EXPECT_EQ(selectedFiles(), json{2});
  done("menu", {{"action", "addInputFileMenuItemClicked"}, {"panel", {"y"}}});
  EXPECT_EQ(names(), (json{"0", "1", "x", "y"}));
  EXPECT_EQ(selectedFiles(), json{3});
}

TEST_F(InputFileList, TheSelectedFileIsRevealed) {
  launch();
  listFiles(2);
  const auto revealed = [this](const std::vector<int>& rows) {
    select(rows);
    return done("menu", {{"action", "showInFinderButtonPressed"}}).value("revealed", json());
  };
  EXPECT_EQ(revealed({1}), json{{path("1")}});
  EXPECT_EQ(revealed({0, 1}), json());
  EXPECT_EQ(revealed({}), json());
  done("setInputFiles", {{"entries", {{{"FilePath", "not/full"}}, {{"FileName", "x"}}}}});
  select({0});
  EXPECT_EQ(done("press", {{"name", "showInFinderButton"}})["alerts"],
            json{sheet("Error", "Could not create documentsPath URL")});
  select({1});
  EXPECT_FALSE(done("press", {{"name", "showInFinderButton"}}).contains("alerts"));
}

TEST_F(InputFileList, DropsAreValidatedByTheirTypes) {
  const std::string types[] = {"fileNames", "string", "InputFilesDataType", "OperationsDataType",
                               "RearrangeColumnsDataType"};
  const std::pair<const char*, std::vector<int>> cases[] = {
      {"files", {1, 1, 1, 0, 0}}, {"operations", {0, 0, 0, 1, 0}}, {"rearrangeColumns", {0, 0, 0, 0, 1}}};
  launch();
  for (const auto& [table, answers] : cases) {
    const auto operation = [&, name = table](const json& held) {
      return done("validateDrop", {{"table", name}, {"types", held}})["operation"];
    };
    for (std::size_t i = 0; i < answers.size(); ++i) EXPECT_EQ(operation({types[i]}), answers[i]) << types[i];
    EXPECT_EQ(operation(json::array()), 0);
    EXPECT_EQ(operation(types), 1);
  }
}

TEST_F(InputFileList, SomeTablesSwallowKeysAndPaste) {
  const std::tuple<const char*, bool, bool, bool> cases[] = {
      {"files", true, false, true},  {"operations", false, false, false},
      {"jobs", false, false, false}, {"jobFiles", false, false, false},
      {"log", false, true, false},   {"rearrangeColumns", false, false, false},
      {"input", false, true, false}, {"output", false, true, false},
  };
  launch();
  listFiles(1);
  const json before = mainWindow();
  for (const auto& [table, space, returnKey, paste] : cases) {
    EXPECT_EQ(done("tableKey", {{"table", table}, {"key", "space"}})["handled"], space) << table;
    EXPECT_EQ(done("tableKey", {{"table", table}, {"key", "return"}})["handled"], returnKey) << table;
    EXPECT_EQ(done("paste", {{"table", table}})["handled"], paste) << table;
  }
  EXPECT_EQ(names(), numbered({0}));
  EXPECT_EQ(mainWindow(), before);
}

TEST_F(InputFileList, WrongArgumentsAreRefused) {
  launch();
  const json commands[] = {
      {{"do", "paste"}, {"table", "none"}},
      {{"do", "tableKey"}, {"table", "files"}, {"key", "none"}},
      {{"do", "tableKey"}, {"table", "none"}, {"key", "space"}},
      {{"do", "validateDrop"}, {"table", "jobs"}, {"types", json::array()}},
      {{"do", "validateDrop"}, {"table", "files"}, {"types", {"none"}}},
      {{"do", "validateDrop"}, {"table", "files"}, {"types", "string"}},
      {{"do", "dropFiles"}, {"rows", {0}}},
      {{"do", "dropFiles"}, {"rows", 0}, {"row", 0}},
      {{"do", "dropPaths"}, {"row", 0}},
  };
  for (const auto& command : commands) EXPECT_FALSE(refused(command).empty());
}

TEST_F(InputFileList, StoredOperationsAreTakenForTheFilesOfTheLastSession) {
  launch();
  listFiles(4);
  terminate();
  restart();
  json stored = defaultOf("LastOperations");
  stored[path("0")] = json::array();
  stored[path("1")] = {{{"Code", "202"}}};
  stored[path("2")] = "nonsense";
  stored.erase(path("3"));
  setDefault("LastOperations", stored);
  launch();
  const json list = entries();
  EXPECT_EQ(list[0]["Operations"], json::array()) << "an empty list is a list";
  EXPECT_EQ(list[1]["Operations"], (json{{{"Code", "202"}}}));
  EXPECT_EQ(list[2]["Operations"], defaultEntry(path("2"), "2", 1, 17, "\t")["Operations"]);
  EXPECT_EQ(list[3]["Operations"], defaultEntry(path("3"), "3", 1, 17, "\t")["Operations"]);
  EXPECT_EQ(selectedFiles(), json::array());
}

TEST_F(InputFileList, ALongListStaysQuick) {
  constexpr int kCount = 10'000;
  launch();
  json paths = json::array();
  for (int i = 0; i < kCount; ++i) paths.push_back(write("m" + std::to_string(i), "x\n"));
  const auto begin = std::chrono::steady_clock::now();
  done("addInputFiles", {{"paths", paths}, {"row", 0}, {"selectFiles", true}});
  std::vector<int> odd;
  for (int row = kCount - 1; row > 0; row -= 2) odd.push_back(row);
  select(odd);
  EXPECT_EQ(selectedFiles().size(), odd.size());
  done("dropFiles", {{"rows", odd}, {"row", 0}});
  EXPECT_EQ(entries()[0]["FileName"], "m1");
  EXPECT_EQ(entries()[kCount - 1]["FileName"], "m9998");
  terminate();
  restart();
  launch();
  EXPECT_EQ(mainWindow()["helpBox"], true);
  EXPECT_EQ(entries().size(), paths.size());
  select(odd);
  done("removeSelectedInputFiles");
  EXPECT_EQ(mainWindow()["selectedFiles"], json{4'999}) << "9999 less 5000";
  for (const int row : odd)
    done("addInputFiles", {{"paths", {"n" + std::to_string(row)}}, {"row", kCount}, {"selectFiles", true}});
  EXPECT_EQ(selectedFiles(), json{kCount - 1});
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::minutes(2))
      << "anything quadratic would take far longer";
}

}  // namespace
}  // namespace quillet::testing
