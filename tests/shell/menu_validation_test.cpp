#include "shell/menu_validation.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>

#include "shell/recording_desktop.h"
#include "shell/scripted_workbench.h"
#include "support/no_folders.h"

namespace quillet {
namespace {

using Content = ClipboardWorkbench::Content;

class MenuValidationTest : public ::testing::Test {
 protected:
  void setFiles(std::size_t count) {
    std::vector<InputFiles::Entry> entries;
    for (std::size_t i = 0; i < count; ++i) entries.push_back(std::make_shared<InputFile>());
    files_.setAll(std::move(entries));
    selection_.reloadTable();
  }

  UserInterface interface_;
  Window main_{interface_, "window", u""};
  Window clipboardData_{interface_, "clipboardDataWindow", u""};
  Window previousJobs_{interface_, "previousJobsWindow", u""};
  Window preferences_{interface_, "preferencesWindow", u""};
  Window sheet_{interface_, "saveJobWindow", u""};
  const Window* const keyWindows_[6] = {&main_,        &clipboardData_, &previousJobs_,
                                        &preferences_, &sheet_,         nullptr};
  JobLog log_{std::make_shared<testing::NoFolders>()};
  JobState state_;
  InputFiles files_;
  FileSelection selection_{main_, files_};
  testing::ScriptedWorkbench workbench_;
  testing::RecordingDesktop desktop_;
  MenuValidation menus_{{log_, state_, files_, selection_, workbench_, desktop_}};
};

std::string nameOfKey(const Window* key) {
  return key ? key->name() : "none";
}

TEST_F(MenuValidationTest, ItemsOfTheJob) {
  // Each letter must hold: l the log has entries, s a file is selected, f there are files, r no job runs, m
  // the main window is key.
  const struct {
    std::string_view action;
    std::string_view needs;
  } rows[] = {{"clearLogMenuItemClicked", "lr"},
              {"removeSelectedInputFilesMenuItemClicked", "srm"},
              {"addInputFileMenuItemClicked", "rm"},
              {"runButtonPressed", "frm"},
              {"saveJobMenuItemClicked", "frm"}};
  for (int bits = 0; bits < 16; ++bits) {
    const bool logged = bits & 1, hasFiles = bits & 2, selected = bits & 4, running = bits & 8;
    if (selected && !hasFiles) continue;
    log_.clear();
    if (logged) log_.addToImportLog(LogInformation, u"line " + toUtf16(std::to_string(bits)));
    setFiles(hasFiles ? 2 : 0);
    selection_.select(IndexSet());
    if (selected) selection_.select(std::size_t{1});
    state_.runningJob = running;
    for (const Window* key : keyWindows_) {
      desktop_.key = key;
      std::set<char> holds;
      if (logged) holds.insert('l');
      if (selected) holds.insert('s');
      if (hasFiles) holds.insert('f');
      if (!running) holds.insert('r');
      if (key == &main_) holds.insert('m');
      for (const auto& [action, needs] : rows) {
        bool expected = true;
        for (const char need : needs) expected = expected && holds.contains(need);
        if (action == "saveJobMenuItemClicked" && key == &clipboardData_) expected = true;
        EXPECT_EQ(menus_.validateMenuItem(action), expected)
            << action << ", state " << bits << ", key " << nameOfKey(key);
      }
    }
  }
}

// What the grid must have: D rows, S a selection, R and C whole rows and columns, twice the letter more than
// one.
const struct {
  std::string_view action;
  std::string_view needs;
} kGridItems[] = {
    {"clipboardDataWindowTrimButtonPressed", "S"},
    {"clipboardDataWindowReplaceButtonPressed", "S"},
    {"clipboardDataWindowFillButtonPressed", "S"},
    {"clipboardDataWindowMoveUpMenuItemClicked", "R"},
    {"clipboardDataWindowMoveDownMenuItemClicked", "R"},
    {"clipboardDataWindowDeleteSelectedLineMenuItemClicked", "R"},
    {"clipboardDataWindowMoveLeftMenuItemClicked", "C"},
    {"clipboardDataWindowMoveRightMenuItemClicked", "C"},
    {"clipboardDataWindowDeleteSelectedColumnMenuItemClicked", "C"},
    {"clipboardDataWindowMergeUpMenuItemClicked", "RR"},
    {"clipboardDataWindowMergeDownMenuItemClicked", "RR"},
    {"clipboardDataWindowMergeLeftMenuItemClicked", "CC"},
    {"clipboardDataWindowMergeRightMenuItemClicked", "CC"},
    {"clipboardDataWindowJoinColumnsMenuItemClicked", "D"},
    {"clipboardDataWindowJoinRowsMenuItemClicked", "D"},
    {"clipboardDataWindowShiftTruncateTopMenuItemClicked", "D"},
    {"clipboardDataWindowShiftTruncateLeftMenuItemClicked", "D"},
    {"clipboardDataWindowShiftTruncateRightMenuItemClicked", "D"},
    {"clipboardDataWindowShiftTruncateBottomMenuItemClicked", "D"},
    {"flipVerticalMenuItemClicked", "D"},
    {"flipHorizontalMenuItemClicked", "D"},
    {"flipDiagonalMenuItemClicked", "D"},
    {"clipboardDataWindowShiftFillFromTopMenuItemClicked", ""},
    {"clipboardDataWindowShiftFillFromBottomMenuItemClicked", ""},
    {"clipboardDataWindowShiftFillFromLeftMenuItemClicked", ""},
    {"clipboardDataWindowShiftFillFromRightMenuItemClicked", ""},
    {"clipboardDataWindowRefreshNowButtonPressed", ""},
    {"clipboardDataWindowSplitButtonPressed", ""},
    {"clipboardDataWindowJoinButtonPressed", ""},
    {"rowsTableViewReturnKeyPressed", ""},
    {"quilletWindowMenuItemClicked", ""},
    {"clipboardDataWindowMenuItemClicked", ""},
    {"preferencesMenuItemClicked", ""},
    {"selectOutputFolderMenuItemClicked", ""},
    {"deleteOperationButtonClicked", ""},
    {"someOtherAction", ""},
    {"", ""},
};

bool gridHas(const Content& content, std::string_view needs) {
  if (needs == "D") return content.hasRows;
  if (needs == "S") return content.hasSelection;
  if (needs == "R") return content.selectedRowCount >= 1;
  if (needs == "RR") return content.selectedRowCount >= 2;
  if (needs == "C") return content.selectedColumnCount >= 1;
  if (needs == "CC") return content.selectedColumnCount >= 2;
  return true;
}

TEST_F(MenuValidationTest, ItemsOfTheGrid) {
  for (const bool hasRows : {false, true})
    for (const bool hasSelection : {false, true})
      for (const std::int64_t rows : {0, 1, 2, 5})
        for (const std::int64_t columns : {0, 1, 2, 5}) {
          const Content content{hasRows, hasSelection, rows, columns};
          workbench_.setContent(content);
          for (const Window* key : keyWindows_) {
            desktop_.key = key;
            for (const auto& [action, needs] : kGridItems)
              EXPECT_EQ(menus_.validateMenuItem(action), key != &clipboardData_ || gridHas(content, needs))
                  << action << " with key " << nameOfKey(key) << ", " << hasRows << hasSelection << rows
                  << columns;
          }
        }
}

TEST_F(MenuValidationTest, OneSelectedCellCountsAsALineAndAColumn) {
  workbench_.setContent(
      {.hasRows = true, .hasSelection = true, .selectedRowCount = 1, .selectedColumnCount = 1});
  desktop_.key = &clipboardData_;
  EXPECT_TRUE(menus_.validateMenuItem("clipboardDataWindowMoveUpMenuItemClicked"));
  EXPECT_TRUE(menus_.validateMenuItem("clipboardDataWindowMoveLeftMenuItemClicked"));
  EXPECT_FALSE(menus_.validateMenuItem("clipboardDataWindowMergeUpMenuItemClicked"));
  EXPECT_FALSE(menus_.validateMenuItem("clipboardDataWindowMergeLeftMenuItemClicked"));
}

}  // namespace
}  // namespace quillet
