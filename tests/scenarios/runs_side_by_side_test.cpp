// Edits, previews, further runs and the end of the program, all while runs are going on. The thread
// sanitizer's build of the tool is to stay silent.
//
// A run that waits for a named pipe is going on for sure, and for as long as the test likes. What comes out
// of a pipe is taken by the sample for the preview, as it cannot be rewound: such a file's output is empty.
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

class RunsSideBySide : public Scenario {
 protected:
  // A file that a run waits for until it is released.
  std::string makePipe(const std::string& name) {
    EXPECT_EQ(mkfifo(path(name).c_str(), 0600), 0);
    return path(name);
  }
  // Starts a run whose first file is a pipe, and returns when it waits for what comes out of that.
  void startRunThatWaitsFor(const std::string& pipe) {
    pipe_ = open(path(pipe).c_str(), O_RDWR);  // waits for nobody, and is there before the run looks
    EXPECT_GE(pipe_, 0);
    startRun();
    const std::string processing = "Processing \"" + path(pipe) + "\"";
    while (done("log")["entries"].dump().find(json(processing).dump()) == std::string::npos)
      std::this_thread::yield();
  }
  void release() {
    EXPECT_EQ(::write(pipe_, "a\n", 2), 2);
    close(pipe_);
  }

  json entry(const std::string& name, const json& operations) {
    return {{"FilePath", path(name)}, {"FileName", name}, {"Operations", operations}};
  }

  void startRun() { done("runButtonPressed", {{"wait", false}}); }

 private:
  int pipe_ = -1;
};

TEST_F(RunsSideBySide, EverythingGoesOnDuringARun) {
  makePipe("slow.txt");
  write("quick.csv", "1,2\n");
  launch();
  useOutputFolder();
  done("setInputFiles", {{"entries",
                          {entry("slow.txt", csvOperations("slow-out.txt")),
                           entry("quick.csv", csvOperations("quick-out.csv"))}}});
  startRunThatWaitsFor("slow.txt");
  select({1});
  EXPECT_EQ(mainWindow()["inputCells"], R"([["1", "1", "2"]])"_json);
  add({write("more.csv", "x\n")});
  setOperations(1, csvOperations("quick-edited.csv"));
  EXPECT_EQ(done("preview")["previewInputRows"], R"([["x"]])"_json);
  EXPECT_EQ(mainWindow()["status"]["text"], "");
  release();
  json result = done("waitForRuns");
  EXPECT_EQ(result["outputFiles"], (json{path("out/slow-out.txt"), path("out/quick-edited.csv")}))
      << "the list is read live, but its length was taken at the start";
  EXPECT_EQ(mainWindow()["status"]["text"], "Job completed.");
}

TEST_F(RunsSideBySide, ASecondRunGoesBesideTheFirst) {
  makePipe("slow.txt");
  launch();
  useOutputFolder();
  done("setInputFiles", {{"entries", {entry("slow.txt", csvOperations("slow-out.txt"))}}});
  startRunThatWaitsFor("slow.txt");
  done("setInputFiles", {{"entries", {entry("quick.csv", csvOperations("quick-out.csv"))}}});
  write("quick.csv", "1,2\n");
  startRun();
  while (!std::filesystem::exists(path("out/quick-out.csv"))) std::this_thread::yield();
  EXPECT_FALSE(std::filesystem::exists(path("out/slow-out.txt"))) << "the first run still waits";
  release();
  done("waitForRuns");
  EXPECT_TRUE(std::filesystem::exists(path("out/slow-out.txt")));
  EXPECT_EQ(output("quick-out.csv"), "1,2");
}

TEST_F(RunsSideBySide, ManyRunsEditsAndPreviewsAtOnce) {
  std::string lines;
  for (int i = 0; i < 20'000; ++i) lines += std::to_string(i) + ",\" text \",8/16/18\n";
  launch();
  useOutputFolder();
  std::vector<std::string> paths;
  for (const char* name : {"a.csv", "b.csv", "c.csv"}) paths.push_back(write(name, lines));
  add(paths);
  for (int round = 0; round < 3; ++round) {
    startRun();
    for (int row = 0; row < 3; ++row) {
      setOperations(row,
                    csvOperations("o" + std::to_string(row) + ".csv",
                                  {{{"Code", 301}, {"IntArg2", 2}, {"Arg1", "2"}, {"Arg2", ""}},
                                   {{"Code", 303}, {"IntArg2", 1}, {"IntArg3", round + 1}, {"Arg1", "3"}}}));
      select({row});
      mainWindow();
      entries();
      log();
    }
    setDefault("DecodeErrorReplacement", std::to_string(round));
    select({0, 1});
    mainWindow();
    add({write("more" + std::to_string(round) + ".csv", "x\n")});
  }
  json result = done("waitForRuns");
  EXPECT_EQ(result["quit"], false);
  EXPECT_EQ(run()["outputFiles"].size(), 6u);
  EXPECT_EQ(output("o0.csv").substr(0, 21), "0,text,August 16, 201");
  EXPECT_TRUE(std::filesystem::is_empty(path("tmp")));
}

TEST_F(RunsSideBySide, TheStatusLineTellsAStop) {
  makePipe("slow.txt");
  write("quick.csv", "1,2\n");
  launch();
  useOutputFolder();
  done("setInputFiles", {{"entries",
                          {entry("slow.txt", csvOperations("slow-out.txt")),
                           entry("quick.csv", csvOperations("quick-out.csv"))}}});
  startRunThatWaitsFor("slow.txt");
  done("setFlags", {{"runningJob", true}});
  startRun();
  EXPECT_EQ(done("setFlags", {{"runningJob", false}})["stopJob"], true);
  release();
  json result = done("waitForRuns");
  EXPECT_EQ(result["outputFiles"], json{path("out/slow-out.txt")}) << "a stop takes effect between files";
  EXPECT_NE(result["log"].get<std::string>().find("\nJob stopped by user\n"), std::string::npos);
}

TEST_F(RunsSideBySide, TerminatingNeitherWaitsNorCrashes) {
  makePipe("slow.txt");
  launch();
  useOutputFolder();
  done("setInputFiles", {{"entries", {entry("slow.txt", csvOperations("slow-out.txt"))}}});
  startRunThatWaitsFor("slow.txt");
  write("quick.csv", "1\n");
  done("setInputFiles", {{"entries", {entry("quick.csv", csvOperations("o.csv"))}}});
  terminate();
  launch();
  EXPECT_EQ(entries().size(), 1u) << "the next application has what was stored";
  release();
  // The run goes to its end by itself.
  while (read("Documents/Log/LastLog.txt").find("Job ended") == std::string::npos) std::this_thread::yield();
  EXPECT_TRUE(std::filesystem::exists(path("out/slow-out.txt")));
  EXPECT_EQ(mainWindow()["status"]["text"], "") << "and did not reach the next application";
}

TEST_F(RunsSideBySide, TheEndOfInputDoesNotWaitForARun) {
  makePipe("slow.txt");
  launch();
  useOutputFolder();
  done("setInputFiles", {{"entries", {entry("slow.txt", csvOperations("slow-out.txt"))}}});
  startRunThatWaitsFor("slow.txt");
  EXPECT_EQ(session().end(), 0);
}

}  // namespace
}  // namespace quillet::testing
