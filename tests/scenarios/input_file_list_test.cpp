// Files come into the list, are selected, and survive a restart.
#include <filesystem>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

class InputFileList : public Scenario {};

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
  json names = json::array();
  for (const auto& entry : entries()) names.push_back(entry["FileName"]);
  EXPECT_EQ(names, (json{"a.txt", "c.txt", "d.txt", "b.txt"}));
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

}  // namespace
}  // namespace quillet::testing
