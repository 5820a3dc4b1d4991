#include "shell/preview_keys.h"

#include <gtest/gtest.h>
#include <limits>

#include "shell/table_keys.h"
#include "support/random_source.h"
#include "support/temporary_folder.h"

namespace quillet {
namespace {

constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();

struct State {
  std::int64_t start = 1;
  std::int64_t selected = -1;
  bool standard = false;
  bool operator==(const State&) const = default;
};

void PrintTo(const State& state, std::ostream* out) {
  *out << "start " << state.start << ", selected " << state.selected << (state.standard ? ", standard" : "");
}

struct Press {
  char16_t key;
  bool option = false;
  bool command = false;
};

constexpr Press kUp = {kUpArrowKey};
constexpr Press kDown = {kDownArrowKey};
constexpr Press kOptionUp = {kUpArrowKey, true, false};
constexpr Press kOptionDown = {kDownArrowKey, true, false};
constexpr Press kCommandUp = {kUpArrowKey, false, true};
constexpr Press kCommandDown = {kDownArrowKey, false, true};

class PreviewKeysTest : public ::testing::Test {
 protected:
  // rowCount: of the store; the table shows up to ten of them.
  State press(const Press& press, std::int64_t start, std::int64_t lines, std::size_t rowCount,
              std::int64_t selected) {
    stores_.reset();
    for (std::size_t row = 0; row < rowCount; ++row)
      stores_.addRow(PreviewStores::Side::Input, {std::u16string(1, static_cast<char16_t>(u'a' + row))});
    state_.linesInCurrentFile = lines;
    panel_.setStartPreviewFromLine(start);
    panel_.updatePreviewPanel();
    table().selectRows(IndexSet{selected});
    const bool handled = keys_.keyDown(table(), {press.key, press.option, press.command});
    return {panel_.startPreviewFromLine(), table().selectedRow(), !handled};
  }
  Table& table() { return panel_.inputTable().table(); }

  testing::TemporaryFolder home_;
  UserDefaults defaults_{home_.path("defaults.json")};
  UserInterface interface_;
  Window window_{interface_, "window", u""};
  InputFiles files_;
  FileSelection selection_{window_, files_};
  PreviewStores stores_;
  JobState state_;
  PreviewPanel panel_{window_, stores_, selection_, defaults_};
  PreviewKeys keys_{panel_, state_};
};

TEST_F(PreviewKeysTest, MoveTheRowsByTheirRules) {
  struct Case {
    const char* what;
    Press press;
    std::int64_t start, lines;
    std::size_t rowCount;
    std::int64_t selected;
    State expected;
  };
  const Case cases[] = {
      {"up, not in row 0", kUp, 5, 40, 40, 3, {5, 3, true}},
      {"up, nothing selected", kUp, 5, 40, 40, -1, {5, -1, true}},
      {"up", kUp, 5, 40, 40, 0, {4, 0, false}},
      {"up at line 2", kUp, 2, 40, 40, 0, {1, 0, false}},
      {"up at line 1", kUp, 1, 40, 40, 0, {1, 0, false}},
      {"up with fewer lines by now", kUp, 5, 3, 40, 0, {5, 0, false}},
      {"up with just enough lines", kUp, 5, 4, 40, 0, {4, 0, false}},
      {"down, not in the last row", kDown, 5, 40, 40, 8, {5, 8, true}},
      {"down, nothing selected", kDown, 5, 40, 40, -1, {5, -1, true}},
      {"down in an empty table", kDown, 1, 40, 0, -1, {1, -1, true}},
      {"down", kDown, 5, 40, 40, 9, {6, 9, false}},
      {"down, the last that moves", kDown, 30, 40, 40, 9, {31, 9, false}},
      {"down at the end", kDown, 31, 40, 40, 9, {31, 9, false}},
      {"down after a preview", kDown, 1, 10, 10, 9, {1, 9, false}},
      {"down in a short table", kDown, 1, 40, 4, 3, {2, 3, false}},
      {"down at line 0", kDown, 0, 10, 10, 9, {1, 9, false}},
      {"down before line 0", kDown, -1, 40, 40, 9, {-1, 9, false}},
      {"option-up", kOptionUp, 25, 40, 40, 3, {15, 3, false}},
      {"option-up near the top", kOptionUp, 8, 40, 40, 5, {1, 2, false}},
      {"option-up, above the top", kOptionUp, 8, 40, 40, 1, {1, 0, false}},
      {"option-up at line 1", kOptionUp, 1, 10, 10, 7, {1, 0, false}},
      {"option-up at line 11", kOptionUp, 11, 40, 40, 4, {1, 4, false}},
      {"option-up, nothing selected", kOptionUp, 25, 40, 40, -1, {15, 0, false}},
      {"option-up with fewer lines by now", kOptionUp, 25, 14, 40, 3, {25, 0, false}},
      {"option-up with just enough lines", kOptionUp, 25, 15, 40, 3, {15, 3, false}},
      {"option-up without lines", kOptionUp, 1, 0, 5, 3, {1, 0, false}},
      {"option-up in an empty table", kOptionUp, 25, 14, 0, -1, {25, -1, false}},
      {"option-down", kOptionDown, 5, 40, 40, 3, {15, 3, false}},
      {"option-down, nothing selected", kOptionDown, 5, 40, 40, -1, {15, 9, false}},
      {"option-down, the last that moves", kOptionDown, 30, 40, 40, 3, {40, 3, false}},
      {"option-down at the end", kOptionDown, 31, 40, 40, 3, {31, 9, false}},
      {"option-down after a preview", kOptionDown, 1, 10, 10, 3, {1, 9, false}},
      {"option-down in an empty table", kOptionDown, 1, 40, 0, -1, {11, -1, false}},
      {"option-down from line -9", kOptionDown, -9, 1, 10, 3, {1, 3, false}},
      {"option-down from before that", kOptionDown, -10, 40, 10, 3, {-10, 9, false}},
      {"command-up", kCommandUp, 25, 40, 40, 3, {1, 0, false}},
      {"command-up in an empty table", kCommandUp, 25, 40, 0, -1, {1, -1, false}},
      {"command-down", kCommandDown, 1, 40, 40, 3, {31, 9, false}},
      {"command-down after a preview", kCommandDown, 1, 10, 10, 3, {1, 9, false}},
      {"command-down with few lines", kCommandDown, 1, 4, 4, 0, {1, 3, false}},
      {"command-down in an empty table", kCommandDown, 1, 40, 0, -1, {31, -1, false}},
      {"option before command", {kUpArrowKey, true, true}, 25, 40, 40, 3, {15, 3, false}},
      {"option before command", {kDownArrowKey, true, true}, 5, 40, 40, 3, {15, 3, false}},
      {"return is swallowed", {kReturnKey}, 5, 40, 40, 3, {5, 3, false}},
      {"return with modifiers too", {kReturnKey, true, true}, 5, 40, 40, 3, {5, 3, false}},
      {"any other key", {u'x'}, 5, 40, 40, 3, {5, 3, true}},
      {"any other key with modifiers", {kSpaceKey, true, true}, 5, 40, 40, 0, {5, 0, true}},
      {"left", {0xF702, false, true}, 5, 40, 40, 0, {5, 0, true}},
  };
  for (const auto& one : cases)
    EXPECT_EQ(press(one.press, one.start, one.lines, one.rowCount, one.selected), one.expected) << one.what;
}

TEST_F(PreviewKeysTest, ShowTheRowsThatTheyMoveTo) {
  press(kDown, 5, 40, 20, 9);
  const auto cells = panel_.inputTable().shownCells();
  EXPECT_EQ(cells.front(), (PreviewStores::Row{u"6", u"f"}));
  EXPECT_EQ(cells.back(), (PreviewStores::Row{u"15", u"o"}));
}

TEST_F(PreviewKeysTest, TablesMoveTogetherButSelectAlone) {
  for (int i = 0; i < 12; ++i) stores_.addRow(PreviewStores::Side::Output, {u"x"});
  state_.linesInCurrentFile = 40;
  panel_.updatePreviewPanel();
  Table& output = panel_.outputTable().table();
  EXPECT_TRUE(keys_.keyDown(output, {kDownArrowKey, true, false}));
  EXPECT_EQ(panel_.startPreviewFromLine(), 11);
  EXPECT_EQ(output.selectedRow(), 9);
  EXPECT_EQ(panel_.outputTable().shownCells()[1], (PreviewStores::Row{u"12", u"x"}));
  EXPECT_EQ(panel_.outputTable().shownCells()[2], (PreviewStores::Row{u"13", u""}))
      << "the store has 12 rows";
  EXPECT_EQ(table().selectedRow(), -1);
}

// The rules once more, in numbers that cannot overflow.
__extension__ typedef __int128 Wide;

struct Reference {
  Wide start, lines, rowCount, selected;
  bool standard = false;

  void select(Wide row) {
    if (row >= 0 && row < rowCount) selected = row;
  }
  void selectLast() {
    if (rowCount >= 1) selected = rowCount - 1;
  }
  void selectFirst() {
    if (rowCount >= 1) selected = 0;
  }

  void up() {
    if (selected != 0) {
      standard = true;
    } else if (start >= 2 && start - 1 <= lines) {
      start -= 1;
    }
  }
  void down() {
    if (selected < 0 || selected != rowCount - 1) {
      standard = true;
    } else if (start >= 0 && start + 10 <= lines) {
      start += 1;
      selectLast();
    }
  }
  void optionUp() {
    const Wide to = start - 10 > 1 ? start - 10 : 1;
    if (to > lines) return selectFirst();
    const Wide line = selected + start - 10 > 1 ? selected + start - 10 : 1;
    const bool hasLine = selected >= 0;
    start = to;
    if (hasLine && line - start >= 0 && line - start < rowCount)
      select(line - start);
    else
      selectFirst();
  }
  void optionDown() {
    if (start < -9 || start + 10 > lines) return selectLast();
    start += 10;
    if (selected < 0 || selected >= rowCount) selectLast();
  }
  void commandUp() {
    start = 1;
    selectFirst();
  }
  void commandDown() {
    start = lines - 9 > 1 ? lines - 9 : 1;
    selectLast();
  }
};

TEST_F(PreviewKeysTest, AgreeWithAPlainReference) {
  const std::int64_t extremes[] = {kLeast,
                                   kLeast + 1,
                                   kLeast + 9,
                                   kLeast + 10,
                                   kLeast + 11,
                                   -11,
                                   -10,
                                   -9,
                                   -8,
                                   -1,
                                   0,
                                   1,
                                   2,
                                   9,
                                   10,
                                   11,
                                   12,
                                   kGreatest - 11,
                                   kGreatest - 10,
                                   kGreatest - 9,
                                   kGreatest - 1,
                                   kGreatest};
  testing::RandomSource random(602);
  const auto number = [&] {
    return random.oneIn(3) ? random.pick(extremes) : static_cast<std::int64_t>(random.below(40)) - 5;
  };
  for (std::uint64_t round = 0; round < testing::rounds(20'000); ++round) {
    const std::size_t stored = random.below(16);
    const auto rows = static_cast<std::int64_t>(std::min<std::size_t>(stored, 10));
    const std::int64_t start = number();
    const std::int64_t lines = number();
    const std::int64_t selected = static_cast<std::int64_t>(random.below(rows + 1)) - 1;
    const bool isUp = random.oneIn(2), option = random.oneIn(3), command = random.oneIn(3);
    Reference expected = {start, lines, rows, selected};
    if (option)
      isUp ? expected.optionUp() : expected.optionDown();
    else if (command)
      isUp ? expected.commandUp() : expected.commandDown();
    else
      isUp ? expected.up() : expected.down();
    const State state =
        press({isUp ? kUpArrowKey : kDownArrowKey, option, command}, start, lines, stored, selected);
    ASSERT_EQ(state, (State{static_cast<std::int64_t>(expected.start),
                            static_cast<std::int64_t>(expected.selected), expected.standard}))
        << (isUp ? "up" : "down") << (option ? " option" : "") << (command ? " command" : "") << ", start "
        << start << ", lines " << lines << ", rows " << stored << ", selected " << selected;
  }
}

// What is reached from line 1 by keys alone stays at or above it.
TEST_F(PreviewKeysTest, NeverGoAboveTheFirstLine) {
  testing::RandomSource random(603);
  std::int64_t start = 1;
  for (int i = 0; i < 2'000; ++i) {
    const std::int64_t lines = static_cast<std::int64_t>(random.below(60));
    const Press one = {random.oneIn(2) ? kUpArrowKey : kDownArrowKey, random.oneIn(3), random.oneIn(3)};
    start = press(one, start, lines, random.below(16), static_cast<std::int64_t>(random.below(11)) - 1).start;
    ASSERT_GE(start, 1);
  }
}

}  // namespace
}  // namespace quillet
