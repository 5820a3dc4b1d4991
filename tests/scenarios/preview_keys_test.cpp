// Keys in the tables of the preview. After a preview there is nothing to move to; the lines of a run that is
// going on can be looked through.
#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "scenarios/drive_session.h"
#include "support/random_source.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

class PreviewKeys : public Scenario {
 protected:
  static constexpr int kLines = 30;

  ~PreviewKeys() override {
    if (pipe_ >= 0) release();
  }

  static std::string manyLines() {
    std::string lines;
    for (int line = 1; line <= kLines; ++line) lines += "line " + std::to_string(line) + ",x\n";
    return lines;
  }

  // Starts a run over 30 lines and then over a pipe, and returns when it waits for that: the stores hold the
  // lines, and 10 of the preview and 30 of the run are counted.
  void startRunThatWaits() {
    launch();
    useOutputFolder();
    write("many.csv", manyLines());
    ASSERT_EQ(mkfifo(path("slow").c_str(), 0600), 0);
    done(
        "setInputFiles",
        {{"entries",
          {{{"FilePath", path("many.csv")}, {"FileName", "many.csv"}, {"Operations", csvOperations("o.csv")}},
           {{"FilePath", path("slow")}, {"FileName", "slow"}, {"Operations", csvOperations("p.csv")}}}}});
    select({0});
    pipe_ = open(path("slow").c_str(), O_RDWR);
    ASSERT_GE(pipe_, 0);
    done("runButtonPressed", {{"wait", false}});
    const std::string processing = json("Processing \"" + path("slow") + "\"").dump();
    while (log().dump().find(processing) == std::string::npos) std::this_thread::yield();
  }
  void release() {
    EXPECT_EQ(::write(pipe_, "a\n", 2), 2);
    close(pipe_);
    pipe_ = -1;
    done("waitForRuns");
  }

  json key(const std::string& key, int selectedRow, bool option = false, bool command = false,
           const std::string& table = "input") {
    json result = done("previewKey", {{"table", table},
                                      {"key", key},
                                      {"option", option},
                                      {"command", command},
                                      {"selectedRow", selectedRow}});
    result.erase("ok");
    return result;
  }
  static json state(int start, int selectedRow, bool standard = false) {
    return {{"startPreviewFromLine", start}, {"selectedRow", selectedRow}, {"standard", standard}};
  }

 private:
  int pipe_ = -1;
};

TEST_F(PreviewKeys, StayAtLineOneAfterAPreview) {
  launch();
  add({write("many.csv", manyLines())});
  struct Case {
    const char* key;
    bool option, command;
    int selectedRow;
    json expected;
  };
  const Case cases[] = {
      {"up", false, false, 0, state(1, 0)},          {"up", false, false, 3, state(1, 3, true)},
      {"up", false, false, -1, state(1, -1, true)},  {"up", true, false, 7, state(1, 0)},
      {"up", false, true, 7, state(1, 0)},           {"down", false, false, 9, state(1, 9)},
      {"down", false, false, 8, state(1, 8, true)},  {"down", false, false, 10, state(1, -1, true)},
      {"down", true, false, 3, state(1, 9)},         {"down", false, true, 3, state(1, 9)},
      {"return", false, false, 3, state(1, 3)},      {"return", true, true, 3, state(1, 3)},
      {"space", false, false, 3, state(1, 3, true)}, {"left", true, false, 3, state(1, 3, true)},
  };
  for (const char* table : {"input", "output"})
    for (const auto& one : cases)
      EXPECT_EQ(key(one.key, one.selectedRow, one.option, one.command, table), one.expected)
          << table << " " << one.key << " " << one.selectedRow;
  EXPECT_EQ(mainWindow()["inputCells"][9][0], "10");
}

TEST_F(PreviewKeys, DoNothingWithoutRows) {
  launch();
  add({write("empty.csv", "")});
  EXPECT_EQ(key("up", 0), state(1, -1, true));
  EXPECT_EQ(key("down", 0), state(1, -1, true));
  EXPECT_EQ(key("up", 0, true), state(1, -1));
  EXPECT_EQ(key("down", 0, true), state(1, -1));
  EXPECT_EQ(key("up", 0, false, true), state(1, -1));
  EXPECT_EQ(key("down", 0, false, true), state(1, -1));
}

TEST_F(PreviewKeys, KeepTheSelectedRowThatTheTableHas) {
  launch();
  add({write("many.csv", manyLines())});
  key("return", 4);
  EXPECT_EQ(done("previewKey", {{"table", "input"}, {"key", "return"}})["selectedRow"], 4);
  EXPECT_EQ(done("previewKey", {{"table", "output"}, {"key", "return"}})["selectedRow"], -1);
}

TEST_F(PreviewKeys, AreRefusedWithWrongArguments) {
  launch();
  EXPECT_FALSE(refused({{"do", "previewKey"}, {"table", "files"}, {"key", "up"}}).empty());
  EXPECT_FALSE(refused({{"do", "previewKey"}, {"table", "input"}}).empty());
  EXPECT_FALSE(refused({{"do", "previewCellIsEmpty"}, {"tag", "1"}}).empty());
}

TEST_F(PreviewKeys, MoveOverTheLinesOfARun) {
  startRunThatWaits();
  EXPECT_EQ(mainWindow()["inputCells"][0], R"(["1", "line 1", "x"])"_json);
  EXPECT_EQ(key("down", 9), state(2, 9));
  EXPECT_EQ(mainWindow()["inputCells"][9], R"(["11", "line 11", "x"])"_json);
  EXPECT_EQ(mainWindow()["outputCells"][9], R"(["11", "line 11", "x"])"_json);
  EXPECT_EQ(key("up", 0), state(1, 0));
  EXPECT_EQ(key("down", 4, true), state(11, 4));
  EXPECT_EQ(mainWindow()["inputCells"][4], R"(["15", "line 15", "x"])"_json);
  EXPECT_EQ(key("down", 4, true), state(21, 4));
  EXPECT_EQ(key("up", 4, true), state(11, 4));
  EXPECT_EQ(key("up", 4), state(11, 4, true));
  EXPECT_EQ(key("down", 4, false, true), state(31, 9)) << "40 lines were counted, 30 are there";
  EXPECT_EQ(mainWindow()["inputCells"].size(), 10u);
  EXPECT_EQ(mainWindow()["inputCells"][0], R"(["31", "", ""])"_json);
  EXPECT_EQ(key("down", 9), state(31, 9));
  EXPECT_EQ(key("down", 4, true), state(31, 9));
  EXPECT_EQ(key("up", 4, false, true), state(1, 0));
  EXPECT_EQ(mainWindow()["inputCells"][0], R"(["1", "line 1", "x"])"_json);
  EXPECT_EQ(done("previewCellIsEmpty", {{"tag", 29 * 65'536 + 2}})["empty"], false);
  EXPECT_EQ(done("previewCellIsEmpty", {{"tag", 29 * 65'536 + 3}})["empty"], true);
  EXPECT_EQ(done("previewCellIsEmpty", {{"tag", 30 * 65'536 + 1}})["empty"], true);
}

// The preview goes back to its first line with a move of files, with a selection and with the end of the run.
TEST_F(PreviewKeys, AreForgottenByANewView) {
  startRunThatWaits();
  EXPECT_EQ(key("down", 9, true), state(11, 9));
  done("dropFiles", {{"rows", {0}}, {"row", 0}});
  EXPECT_EQ(key("return", 0)["startPreviewFromLine"], 1);
  EXPECT_EQ(mainWindow()["inputCells"][0][0], "1");
  release();
  EXPECT_EQ(key("down", 9), state(1, 9)) << "the preview after the run counts its own ten lines";
}

// A random walk beside the rules in plain numbers.
TEST_F(PreviewKeys, WalkAsAPlainReferenceDoes) {
  startRunThatWaits();
  const int lines = 40, rows = 10;
  RandomSource random(605);
  int start = 1;
  for (std::uint64_t step = 0; step < rounds(400); ++step) {
    const bool up = random.oneIn(2), option = random.oneIn(3), command = random.oneIn(6);
    const int selected = static_cast<int>(random.below(rows + 1)) - 1;
    int row = selected;
    bool standard = false;
    if (option && up) {
      const int to = std::max(start - 10, 1);
      const int target = selected < 0 ? to : std::max(selected + start - 10, 1);
      row = target - to;
      start = to;
    } else if (option) {
      const bool moves = start + 10 <= lines;
      row = moves && selected >= 0 ? selected : rows - 1;
      if (moves) start += 10;
    } else if (command) {
      start = up ? 1 : lines - 9;
      row = up ? 0 : rows - 1;
    } else if (up) {
      standard = selected != 0;
      if (!standard && start >= 2) --start;
    } else {
      standard = selected != rows - 1;
      if (!standard && start + 10 <= lines) ++start;
    }
    ASSERT_EQ(key(up ? "up" : "down", selected, option, command, random.oneIn(2) ? "input" : "output"),
              state(start, row, standard))
        << "step " << step << (up ? " up" : " down") << option << command << " from row " << selected;
    const json first = mainWindow()["inputCells"][0];
    ASSERT_EQ(first[0], std::to_string(start));
    ASSERT_EQ(first[1], start <= kLines ? "line " + std::to_string(start) : "");
  }
}

}  // namespace
}  // namespace quillet::testing
