// The tool's own rules: one result a line, whatever comes in.
#include <filesystem>
#include <sys/stat.h>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

class Protocol : public Scenario {};

TEST_F(Protocol, AMalformedLineIsRefusedAndTheNextOneFollows) {
  const std::string lines[] = {
      "",
      "nonsense",
      "{\"do\":\"launch\"",
      "[]",
      "3",
      "null",
      "{}",
      "{\"do\":3}",
      "{\"do\":\"noSuchCommand\"}",
      "{\"do\":\"call\"}",
      "{\"do\":\"call\",\"name\":\"noSuchOperation\"}",
      "{\"do\":\"call\",\"name\":\"trimLine\",\"line\":\"\xFF\xFE\"}",
      "{\"do\":\"call\",\"name\":\"stringForEncoding\",\"value\":\"\\ud800\"}",
      "{\"do\":\"setDefaults\",\"values\":" + std::string(100'000, '[') + std::string(100'000, ']') + "}",
      std::string(1'000'000, '{'),
  };
  for (const auto& line : lines) {
    json result = session().sendLine(line);
    ASSERT_TRUE(result.is_object()) << line.substr(0, 100);
    EXPECT_EQ(result["ok"], false) << line.substr(0, 100);
    EXPECT_TRUE(result["error"].is_string()) << line.substr(0, 100);
  }
  EXPECT_EQ(call("stringForEncoding", {{"value", 4}})["text"], "UTF-8");
}

TEST_F(Protocol, ArgumentsOfTheWrongTypeAreRefused) {
  launch();
  const json commands[] = {
      {{"do", "call"}, {"name", "stringForEncoding"}},
      {{"do", "call"}, {"name", "stringForEncoding"}, {"value", "4"}},
      {{"do", "call"}, {"name", "stringForEncoding"}, {"value", 4.5}},
      {{"do", "call"}, {"name", "stringForEncoding"}, {"value", 18446744073709551615u}},
      {{"do", "call"}, {"name", "findComponentsOfCSVString"}, {"text", 1}},
      {{"do", "call"}, {"name", "trimLine"}, {"operation", 5}, {"line", "x"}},
      {{"do", "call"}, {"name", "trimLine"}, {"operation", {{"Arg1", json::array()}}}, {"line", "x"}},
      {{"do", "call"}, {"name", "stringPlus1FromIndexSet"}, {"indexes", {"1"}}},
      {{"do", "call"}, {"name", "parseLineNumbersString"}, {"text", "1 - 9999999999"}},
      {{"do", "call"}, {"name", "readLines"}, {"path", "missing.txt"}},
      {{"do", "call"}, {"name", "readLines"}, {"path", "a"}, {"replaceCharacters", {{"x", 5}}}},
      {{"do", "addInputFiles"}, {"paths", "a.txt"}},
      {{"do", "addInputFiles"}, {"paths", {1}}},
      {{"do", "addInputFiles"}, {"paths", json::array()}, {"row", -1}},
      {{"do", "addInputFiles"}, {"paths", json::array()}, {"selectFiles", 1}},
      {{"do", "selectFiles"}, {"rows", 0}},
      {{"do", "setOperations"}, {"index", 0}, {"operations", json::array()}},
      {{"do", "setInputFiles"}, {"entries", {{{"Operations", 3}}}}},
      {{"do", "setDefaults"}, {"values", {1}}},
      {{"do", "getDefaults"}, {"keys", "a"}},
      {{"do", "setFlags"}, {"runningJob", 1}},
      {{"do", "runButtonPressed"}, {"wait", 0}},
      {{"do", "selectOutputFolder"}, {"panel", "out"}},
      {{"do", "launch"}, {"workspaceFails", 1}},
      {{"do", "setPasteboard"}, {"text", 5}},
      {{"do", "performClipboardDataOperation"}},
      {{"do", "performClipboardDataOperation"}, {"operation", {{"Code", json::array()}}}},
      {{"do", "click"}, {"row", "0"}, {"column", 0}},
      {{"do", "click"}, {"row", 0}, {"column", 0}, {"count", true}},
      {{"do", "headerClick"}, {"column", 0}, {"shift", 1}},
      {{"do", "key"}, {"key", 13}},
      {{"do", "launch"}},
  };
  for (const auto& command : commands) EXPECT_NE(refused(command), "") << command;
}

TEST_F(Protocol, ACommandThatIsRefusedLeavesNoSheetBehind) {
  launch();
  add({write("a.txt", "one\n")});
  const json arguments[] = {{{"values", {{"noSuchControl", 1}}}},
                            {{"values", {{"skipLineOperationWindowTextField", 1}}}},
                            {{"values", 1}},
                            {{"cancel", 1}}};
  for (json command : arguments) {
    command.update({{"do", "addOperation"}, {"code", 201}});
    EXPECT_NE(refused(command), "") << command;
    EXPECT_EQ(done("controls", {{"window", "skipLineOperationWindow"}})["open"], false) << command;
    command.update({{"do", "menu"}, {"action", "addLineOperationSkipMenuItemClicked"}});
    EXPECT_NE(refused(command), "") << command;
    EXPECT_EQ(done("controls", {{"window", "skipLineOperationWindow"}})["open"], false) << command;
  }
  EXPECT_EQ(entries()[0]["Operations"].size(), 2u);
}

// The boxes of this sheet stay as they were left, so what a refused command has set would be seen later.
TEST_F(Protocol, ACommandThatIsRefusedLeavesTheControlsOfItsSheet) {
  launch();
  json split = {{"do", "menu"}, {"action", "clipboardDataWindowSplitButtonPressed"}};
  split["values"] = {{"clipboardDataSplitWindowSplitClipboardIntoLinesCheckbox", true},
                     {"clipboardDataSplitWindowSplitLinesIntoColumnsCheckbox", 1}};
  EXPECT_NE(refused(split), "");
  split.erase("values");
  split["cancel"] = true;
  EXPECT_EQ(done("menu", split)["opened"]["clipboardDataSplitWindowSplitClipboardIntoLinesCheckbox"], false);
}

TEST_F(Protocol, BeforeLaunchAndAfterTerminationOnlySettingsAndOpenedFilesWork) {
  EXPECT_NE(refused({{"do", "mainWindow"}}), "");
  EXPECT_NE(refused({{"do", "terminate"}}), "");
  EXPECT_NE(refused({{"do", "clipboardDataWindow"}}), "");
  EXPECT_NE(refused({{"do", "undo"}}), "");
  setDefault("Key", "value");
  done("setPasteboard", {{"text", "before"}});
  EXPECT_EQ(done("pasteboard")["text"], "before");
  launch();
  terminate();
  EXPECT_NE(refused({{"do", "inputFiles"}}), "");
  EXPECT_EQ(done("pasteboard")["text"], "before");
  EXPECT_EQ(defaultOf("Key"), "value");
}

TEST_F(Protocol, SettingsAreWrittenAtOnceAndANullRemovesThem) {
  setDefault("Text", "é");
  setDefault("Number", 3);
  EXPECT_EQ(json::parse(read("defaults.json")), (json{{"Text", "é"}, {"Number", 3}}));
  setDefault("Text", nullptr);
  EXPECT_EQ(defaultOf("Text"), nullptr);
  EXPECT_EQ(json::parse(read("defaults.json")), (json{{"Number", 3}}));
  restart();
  EXPECT_EQ(defaultOf("Number"), 3);
}

TEST_F(Protocol, SettingsAreReadWhenTheApplicationIsMade) {
  EXPECT_EQ(defaultOf("Number"), nullptr);
  write("defaults.json", R"({"Number": 3, "LastOpenedFiles": []})");
  launch();
  EXPECT_EQ(defaultOf("Number"), 3);
  terminate();
  EXPECT_EQ(defaultOf("Number"), 3);
  write("defaults.json", R"({"Number": 4})");
  done("openFiles", {{"paths", json::array()}});  // makes the next one
  write("defaults.json", R"({"Number": 5})");
  launch();
  EXPECT_EQ(defaultOf("Number"), 4);
}

TEST_F(Protocol, BrokenSettingsAreSetAsideWithALineInTheSystemLog) {
  write("defaults.json", "{\"a\":");
  json result = done("getDefaults", {{"keys", {"a"}}});
  EXPECT_EQ(result["values"]["a"], nullptr);
  EXPECT_EQ(result["systemLog"].size(), 1u);
  EXPECT_TRUE(std::filesystem::exists(path("defaults.json.broken-1")));
}

TEST_F(Protocol, FoldersAreMadeInTheHome) {
  call("stringForEncoding", {{"value", 4}});
  EXPECT_TRUE(std::filesystem::is_directory(path("Documents")));
  EXPECT_TRUE(std::filesystem::is_directory(path("tmp")));
}

TEST_F(Protocol, WithoutDocumentsNoneAreMade) {
  restart({"--no-documents"});
  launch();
  EXPECT_FALSE(std::filesystem::exists(path("Documents")));
}

TEST_F(Protocol, RelativePathsAreTakenFromTheHome) {
  write("a.txt", "one\n");
  EXPECT_EQ(call("readLines", {{"path", "a.txt"}, {"lineSeparator", "\n"}})["calls"][0]["line"], "one");
  launch();
  add({"a.txt"});
  EXPECT_EQ(entries()[0]["FilePath"], path("a.txt"));
}

TEST_F(Protocol, TheEndOfInputIsNoTermination) {
  launch();
  add({write("a.txt", "one\n")});
  EXPECT_EQ(session().end(), 0);
  restart();
  EXPECT_EQ(defaultOf("LastOpenedFiles"), nullptr);
}

TEST_F(Protocol, AFolderThatIsMissingIsAWrongCall) {
  DriveSession drive(path("nowhere"));
  EXPECT_EQ(drive.end(), 2);
}

}  // namespace
}  // namespace quillet::testing
