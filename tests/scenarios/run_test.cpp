// A job from Run to its output files, its log and its status line.
#include <filesystem>
#include <fnmatch.h>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

class Run : public Scenario {
 protected:
  // Launches with an output folder and one file.
  void launchWith(const std::string& name, const std::string& bytes, const json& operations) {
    launch();
    useOutputFolder();
    add({write(name, bytes)});
    setOperations(0, operations);
  }
};

const json kNoFile =
    sheet("Add at least one input file.",
          "You can either press the + button at the bottom of the Input Files list on the left, or "
          "drag and drop text files from the Finder into the Input Files list.");

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> result;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    result.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return result;
}

// What stops a run before it starts.

TEST_F(Run, WithoutFilesAsksForOne) {
  launch();
  json result = run();
  EXPECT_EQ(result["alerts"], json{kNoFile});
  EXPECT_EQ(result["outputFiles"], json::array());
  EXPECT_EQ(result["quit"], false);
}

TEST_F(Run, OperationsThatMayStandOnlyOnceStopIt) {
  launch();
  useOutputFolder();
  add({write("a.txt", "1\n"), write("b.txt", "2\n")});
  const auto twice = [](int code) { return std::vector<json>(2, {{"Code", code}}); };
  std::vector<json> all;
  for (int code : {352, 251, 353, 361, 351})
    for (const auto& operation : twice(code)) all.push_back(operation);
  setOperations(0, csvOperations("a.txt", all));
  setOperations(1, csvOperations("b.txt", twice(251)));
  EXPECT_EQ(run()["alerts"],
            json{sheet("Invalid Operations",
                       "a.txt: Only one Set Initial Number of Columns operation is allowed.\n"
                       "a.txt: Only one Set Final Number of Columns operation is allowed.\n"
                       "a.txt: Only one Join Columns operation is allowed.\n"
                       "a.txt: Only one Join Lines operation is allowed.\n"
                       "a.txt: Only one Rearrange Columns operation is allowed.\n"
                       "b.txt: Only one Join Lines operation is allowed.")});
  EXPECT_FALSE(std::filesystem::exists(path("out/a.txt")));
}

// Its name is what the message would begin with.
TEST_F(Run, AnEntryWithoutANameOrAListIsNotChecked) {
  launch();
  useOutputFolder();
  const json joinedTwice = csvOperations("o.txt", std::vector<json>(2, {{"Code", 251}}));
  for (const json& entry : {json{{"FilePath", write("a.txt", "1\n")}, {"Operations", joinedTwice}},
                            json{{"FilePath", path("a.txt")}, {"FileName", "a.txt"}}}) {
    done("setInputFiles", {{"entries", {entry}}});
    const json result = run();
    EXPECT_FALSE(result.contains("alerts")) << result;
    EXPECT_NE(result["log"], nullptr) << "it has run";
  }
}

TEST_F(Run, WithoutAnOutputFolderItAsksAndStartsOnTheSecondPress) {
  launch();
  add({write("a.txt", "1\n")});
  std::filesystem::create_directory(path("out"));
  EXPECT_EQ(done("runButtonPressed", {{"panel", {"out"}}})["outputFiles"], json::array());
  EXPECT_EQ(defaultOf("OutputFolderBookmark"), "file://" + path("out"));
  EXPECT_EQ(run()["outputFiles"], json{path("out/a.txt")});
}

TEST_F(Run, ABadOutputFolderIsToldAndAskedForAgain) {
  write("file", "");
  std::filesystem::create_directory(path("out"));
  const struct {
    json bookmark;
    std::string message;
  } cases[] = {
      {3, "Invalid bookmark URL to folder [Output folder bookmark URL was invalid]"},
      {"relative", "Invalid bookmark URL to folder [Output folder bookmark URL was invalid]"},
      {"http://x/y", "Invalid bookmark URL to folder [Output folder bookmark URL was invalid]"},
      {"file://" + path("gone"), "Output folder does not exist \"" + path("gone") + "\" []"},
      {"file://" + path("file"), "Output URL is not a folder \"" + path("file") + "\" []"},
  };
  launch();
  add({write("a.txt", "1\n")});
  for (const auto& [bookmark, message] : cases) {
    setDefault("OutputFolderBookmark", bookmark);
    json result = done("runButtonPressed", {{"panel", {"out"}}});
    EXPECT_EQ(result["alerts"], json{sheet("Error", message)});
    EXPECT_EQ(result["outputFiles"], json::array());
    EXPECT_EQ(defaultOf("OutputFolderBookmark"), "file://" + path("out"));
  }
}

TEST_F(Run, SelectingTheOutputFolderTellsWhatWentWrong) {
  launch();
  useOutputFolder();
  const json before = defaultOf("OutputFolderBookmark");
  const struct {
    json panel;
    json alerts;
  } cases[] = {
      {nullptr, nullptr},
      {json::array(), {modalAlert("Nothing selected")}},
      {{""}, {modalAlert("Output folder was nil")}},
      {{"gone"}, {modalAlert("Error invalid bookmark to folder", "Output folder bookmark was invalid")}},
  };
  for (const auto& [panel, alerts] : cases) {
    json result = done("selectOutputFolder", {{"panel", panel}});
    EXPECT_EQ(result.value("alerts", json()), alerts) << panel;
    EXPECT_EQ(defaultOf("OutputFolderBookmark"), before) << panel;
  }
}

// The road of a file.

TEST_F(Run, ATabFileIsSplitAndJoined) {
  launch();
  useOutputFolder();
  add({write("a.txt", "a\tb\nc\td\n")});
  json result = run();
  EXPECT_EQ(result["outputFiles"], json{path("out/a.txt")});
  EXPECT_EQ(result["revealed"], (json{{path("out/a.txt")}}));
  EXPECT_EQ(output("a.txt"), "a\tb\nc\td");
}

TEST_F(Run, ACsvFileGoesThroughAllStages) {
  json operations = csvOperations("o.csv", {{{"Code", 150}, {"IntArg2", 0}, {"Arg1", "\\t"}, {"Arg2", " "}},
                                            {{"Code", 201}, {"IntArg2", 0}},
                                            {{"Code", 203}, {"IntArg2", 0}, {"Arg1", "N/A"}, {"Arg2", ""}},
                                            {{"Code", 301}, {"IntArg2", 2}, {"Arg1", "1 - 2"}, {"Arg2", ""}},
                                            {{"Code", 303}, {"IntArg2", 1}, {"IntArg3", 4}, {"Arg1", "3"}},
                                            {{"Code", 353}, {"Arg1", "1 + 2, 3"}, {"Arg2", " "}}});
  operations.back()["IntArg1"] = 1;
  launchWith("a.csv", "Ann,\" Smith \",8/16/18\n\nBob,N/A,x\n", operations);
  json result = run();
  EXPECT_EQ(output("o.csv"), "\"Ann Smith\",\"2018-08-16\"\n\"Bob \",\"x\"");
  EXPECT_EQ(result["outputFiles"], json{path("out/o.csv")});
}

TEST_F(Run, EachFileHasItsOwnOperationsAndAFailureStopsNone) {
  launch();
  useOutputFolder();
  add({write("a.csv", "1,2\n"), path("gone.csv"), write("b.csv", "3,4\n")});
  setOperations(0, csvOperations("x.csv"));
  setOperations(1, csvOperations("y.csv"));
  setOperations(2, csvOperations("z.csv", {{{"Code", 352}, {"Arg1", "2, 1"}}}));
  select({0});
  json result = run();
  EXPECT_EQ(result["outputFiles"], (json{path("out/x.csv"), path("out/z.csv")}));
  EXPECT_EQ(output("x.csv"), "1,2");
  EXPECT_EQ(output("z.csv"), "4,3");
  const std::string text = result["log"];
  EXPECT_NE(text.find("Could not open \"" + path("gone.csv") + "\" for reading [errno 2]\n"),
            std::string::npos)
      << text;
}

TEST_F(Run, WriteModes) {
  const struct {
    int mode;
    std::string output;
  } cases[] = {{1, "new"}, {2, "new"}, {3, "oldnew"}, {9, "new"}};
  launchWith("a.csv", "new\n", csvOperations("o.csv"));
  for (const auto& [mode, expected] : cases) {
    write("out/o.csv", "old");
    json operations = csvOperations("o.csv");
    operations.back()["IntArg3"] = mode;
    setOperations(0, operations);
    run();
    EXPECT_EQ(output("o.csv"), expected) << mode;
  }
}

TEST_F(Run, TheReplacementSettingsAreRead) {
  setDefault("DecodeErrorReplacement", "");
  setDefault("EncodeErrorReplacement", "??");
  json operations = csvOperations("o.csv");
  operations.back()["IntArg2"] = 1;
  launchWith("a.csv",
             "a\xC3\x28"
             "b\xC3\xA9\n",
             operations);
  run();
  EXPECT_EQ(output("o.csv"), "ab??");
}

TEST_F(Run, NothingTemporaryIsLeft) {
  launchWith("a.csv", "1\n", csvOperations("o.csv"));
  run();
  EXPECT_TRUE(std::filesystem::is_empty(path("tmp")));
}

// Log, outcome and status.

TEST_F(Run, TheLogFileHasTheWholeAccount) {
  launchWith("a.csv", "1,2\n\n3,4\n", csvOperations("o.csv", {{{"Code", 201}, {"IntArg2", 0}}}));
  const json result = run();
  EXPECT_EQ(result["log"], read("Documents/Log/LastLog.txt"));
  auto lines = linesOf(result["log"]);
  ASSERT_EQ(lines.size(), 21u) << result["log"];
  EXPECT_EQ(fnmatch("Job started [A-Z][a-z][a-z] *[0-9], 20[0-9][0-9], *[0-9]:[0-9][0-9]:[0-9][0-9] [AP]M",
                    lines[1].c_str(), 0),
            0)
      << lines[1];
  EXPECT_TRUE(lines[20].starts_with("Job ended ")) << lines[20];
  lines.erase(lines.begin() + 20);
  lines.erase(lines.begin() + 1);
  EXPECT_EQ(lines,
            (std::vector<std::string>{
                "Scanning \"a.csv\"", "Processing \"" + path("a.csv") + "\"", "Bytes read: 9",
                "Characters decoded: 9", "Lines read: 3", "Maximum length lines read: 0", "Bytes written: 7",
                "Characters encoded: 7", "Lines written: 2", "Lines skipped: 1", "Total bytes read: 9",
                "Total characters decoded: 9", "Total lines read: 3", "Total maximum length lines read: 0",
                "Total bytes written: 7", "Total characters encoded: 7", "Total lines written: 2",
                "Total lines skipped: 1", "Job completed"}));
}

TEST_F(Run, ASecondJobsLogFileHoldsTheLinesOfBoth) {
  launchWith("a.csv", "1\n", csvOperations("o.csv"));
  const auto first = linesOf(run()["log"]);
  const auto second = linesOf(run()["log"]);
  EXPECT_EQ(second.size(), 2 * first.size() - 1) << "only the scan is told once";
}

TEST_F(Run, AfterErrorsTheLogTellsTheOutcomeAndTheStatusLineThatOfThePreview) {
  launch();
  useOutputFolder();
  add({write("a.csv", "1\n"), path("gone.csv")});
  select({0});
  const std::string text = run()["log"];
  EXPECT_NE(text.find("\nJob completed with issues\n"), std::string::npos) << text;
  json window = mainWindow();
  EXPECT_EQ(window["status"], (json{{"text", "Job completed."}, {"type", 0}}));
  EXPECT_EQ(window["statusColour"], "secondaryLabel");
  EXPECT_EQ(window["statusClearShown"], true);
}

TEST_F(Run, ThePreviewBeforeItHasNoPartInTheOutcome) {
  launch();
  useOutputFolder();
  add({path("late.txt")});
  EXPECT_EQ(log().back()[0], 2) << "the preview could not read it";
  write("late.txt", "1\n");
  EXPECT_NE(run()["log"].get<std::string>().find("\nJob completed\n"), std::string::npos);
}

TEST_F(Run, APreviewThatFailsTurnsTheStatusRed) {
  launch();
  useOutputFolder();
  add({path("gone.csv")});
  run();
  json window = mainWindow();
  EXPECT_EQ(window["status"],
            (json{{"text", "Job completed with issues. Check the log file."}, {"type", 2}}));
  EXPECT_EQ(window["statusColour"], "red");
}

TEST_F(Run, TheStatusLineStaysUntilItsButtonClearsIt) {
  launch();
  useOutputFolder();
  add({write("a.txt", "1\n")});
  EXPECT_EQ(mainWindow()["statusClearShown"], false);
  for (const json& clear : {json{{"do", "press"}, {"name", "clearStatusLabelButton"}},
                            json{{"do", "menu"}, {"action", "clearStatusLabelButtonClicked"}}}) {
    run();
    select({});
    EXPECT_EQ(mainWindow()["status"], (json{{"text", "Job completed."}, {"type", 0}}));
    EXPECT_EQ(mainWindow()["statusClearShown"], true);
    session().send(clear);
    EXPECT_EQ(mainWindow()["status"], (json{{"text", ""}, {"type", 0}})) << clear;
    EXPECT_EQ(mainWindow()["statusClearShown"], false) << clear;
  }
}

TEST_F(Run, ASetFlagTurnsRunIntoStop) {
  launchWith("a.csv", "1\n", csvOperations("o.csv"));
  EXPECT_EQ(done("setFlags")["runningJob"], false);
  EXPECT_EQ(done("setFlags", {{"runningJob", true}})["runningJob"], true);
  EXPECT_EQ(run()["outputFiles"], json::array());
  EXPECT_EQ(done("setFlags")["stopJob"], true);
  done("setFlags", {{"runningJob", false}});
  EXPECT_EQ(run()["outputFiles"].size(), 1u) << "a start clears the wish to stop";
  EXPECT_EQ(done("setFlags")["stopJob"], false);
}

// What follows a run.

TEST_F(Run, TheOutputIsRevealedUnlessSwitchedOff) {
  setDefault("DontOpenOutputFolderAfterComplete", true);
  launchWith("a.csv", "1\n", csvOperations("o.csv"));
  EXPECT_FALSE(run().contains("revealed"));
}

TEST_F(Run, TheLogIsOpenedWhenAskedFor) {
  setDefault("OpenLastLogAfterComplete", true);
  launchWith("a.csv", "1\n", csvOperations("o.csv"));
  EXPECT_EQ(done("runButtonPressed", {{"workspaceFails", true}})["workspaceOpened"],
            json{path("Documents/Log/LastLog.txt")});
}

TEST_F(Run, ALogThatIsAFolderIsTold) {
  setDefault("OpenLastLogAfterComplete", true);
  std::filesystem::create_directories(path("Documents/Log/LastLog.txt"));
  launchWith("a.csv", "1\n", csvOperations("o.csv"));
  json result = run();
  EXPECT_EQ(result["alerts"], json{modalAlert("Last log file should not be a folder")});
  EXPECT_EQ(result["log"], nullptr);
  EXPECT_EQ(result["outputFiles"].size(), 1u);
}

TEST_F(Run, WithoutDocumentsTheLogStaysInMemory) {
  setDefault("OpenLastLogAfterComplete", true);
  restart({"--no-documents"});
  launchWith("a.csv", "1\n", csvOperations("o.csv"));
  json result = run();
  EXPECT_FALSE(result.contains("alerts"));
  EXPECT_EQ(output("o.csv"), "1");
  const json entries = log();
  EXPECT_NE(std::find(entries.begin(), entries.end(), json({2, "Could not find document directory"})),
            entries.end());
}

TEST_F(Run, QuitsAfterwardsOnlyWithFilesFromOutside) {
  setDefault("QuitAfterComplete", true);
  launchWith("a.csv", "1\n", csvOperations("o.csv"));
  EXPECT_EQ(run()["quit"], false);
  done("openFiles", {{"paths", {write("b.csv", "2\n")}}});
  json result = run();
  EXPECT_EQ(result["quit"], true);
  EXPECT_EQ(result["outputFiles"].size(), 2u);
  EXPECT_NE(refused({{"do", "mainWindow"}}), "") << "the application has terminated";
  EXPECT_EQ(defaultOf("LastOpenedFiles").size(), 2u);
}

}  // namespace
}  // namespace quillet::testing
