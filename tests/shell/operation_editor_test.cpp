// What cannot be seen from outside: the order in which a command does its steps, and calls with arguments
// that no control gives.
#include "shell/operation_editor.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "shell/recording_desktop.h"
#include "support/temporary_folder.h"

namespace quillet {
namespace {

using Events = std::vector<std::string>;

InputFile fileWith(const std::string& path, const OperationList& between) {
  InputFile file;
  file.filePath = path;
  file.operations = OperationList{{{"Code", 101}}};
  file.operations->insert(file.operations->end(), between.begin(), between.end());
  file.operations->push_back({{"Code", 901}});
  return file;
}

class OperationEditorTest : public ::testing::Test {
 protected:
  OperationEditorTest() {
    editor_.addCommandsTo(interface_.commands());
    std::vector<InputFiles::Entry> entries;
    for (const char* path : {"/a", "/b"})
      entries.push_back(std::make_shared<InputFile>(fileWith(path, {{{"Code", 201}}, {{"Code", 251}}})));
    files_.setAll(entries);
    selection_.select(0);
    preview_.setPreviewType(static_cast<std::int64_t>(PreviewType::OutputText));
    table_.table().setObserver([this] { events_.push_back("table reloads"); });
    interface_.control("statusLabel")->setObserver([this] { events_.push_back("status"); });
    interface_.control("previewTextView")->setObserver([this] { events_.push_back("preview area"); });
  }
  void selectOperation(std::int64_t row) {
    table_.table().userSelects(IndexSet{row});
    events_.clear();
  }
  Events pressDone(std::int64_t code) {
    events_.clear();
    editor_.panels().panelForCode(code)->doneButton().press();
    // Setting the label's colour is no event of its own.
    events_.erase(std::unique(events_.begin(), events_.end()), events_.end());
    return events_;
  }
  std::size_t operationCount(std::size_t file) const { return files_.at(file)->operations->size(); }

  testing::RecordingDesktop desktop_;
  Events& events_ = desktop_.events;
  UserInterface interface_;
  Window window_{interface_, "window", u""};
  InputFiles files_;
  PreviewStores stores_;
  testing::TemporaryFolder folder_;
  UserDefaults defaults_{folder_.path("defaults.json")};
  FileSelection selection_{window_, files_};
  OperationTable table_{window_, selection_};
  PreviewPanel preview_{window_, stores_, selection_, defaults_};
  StatusLine statusLine_{window_, "statusLabel", "clearStatusLabelButton", "clearStatusLabelButtonClicked"};
  OperationEditor editor_{interface_,
                          {files_, selection_, table_, preview_, statusLine_, desktop_, desktop_},
                          [this] { events_.push_back("preview"); }};
};

TEST_F(OperationEditorTest, AddingMakesThePreviewThenShowsTheResultThenClosesThePanel) {
  editor_.showPanelForAdding(201);
  EXPECT_EQ(pressDone(201), (Events{"preview", "table reloads", "status", "sheet ends", "preview area"}));
}

TEST_F(OperationEditorTest, AddingToSeveralFilesMakesAPreviewForEach) {
  IndexSet rows;
  rows.addRange(0, 1);
  selection_.select(rows);
  int previews = 0;
  editor_.showPanelForAdding(201);
  events_.clear();
  editor_.panels().panelForCode(201)->doneButton().press();
  for (const std::string& event : events_) previews += event == "preview";
  EXPECT_EQ(previews, 2);
}

TEST_F(OperationEditorTest, EditingDoesItsStepsInTheSameOrder) {
  selectOperation(1);
  editor_.showOperationWindow();
  EXPECT_EQ(pressDone(201), (Events{"preview", "table reloads", "status", "sheet ends", "preview area"}));
}

TEST_F(OperationEditorTest, WhatDoesNotFitOnlyClosesThePanel) {
  selectOperation(1);
  editor_.showOperationWindow();
  selectOperation(9);
  EXPECT_EQ(pressDone(201), Events{"sheet ends"});
}

TEST_F(OperationEditorTest, DeletingTellsAfterThePreview) {
  selectOperation(1);
  editor_.deleteOperationButtonClicked();
  events_.erase(std::unique(events_.begin(), events_.end()), events_.end());
  EXPECT_EQ(events_, (Events{"table reloads", "preview", "preview area", "status"}));
}

TEST_F(OperationEditorTest, AMoveOnlyReloadsTheTable) {
  selectOperation(1);
  const IndexSet rows{1};
  editor_.acceptDrop(rows, 3);
  EXPECT_EQ(events_, Events{"table reloads"});
  selectOperation(0);
  editor_.acceptDrop(rows, 3);
  EXPECT_EQ(events_,
            (Events{"sheet of window Cannot Move Operation|The initial operation and final operation cannot "
                    "me moved.",
                    "table reloads"}));
}

TEST_F(OperationEditorTest, ACodeWithoutAPanelGetsARecordWithTheCodeAlone) {
  for (const std::int64_t code : {101, 304, 901, 999}) {
    editor_.addOperation(code, 0);
    const OperationList& list = *files_.at(0)->operations;
    EXPECT_EQ(list[list.size() - 2], (OperationRecord{{"Code", code}})) << code;
  }
}

TEST_F(OperationEditorTest, NothingIsAddedBeyondTheList) {
  editor_.addOperation(201, 2);
  EXPECT_EQ(events_, Events{});
  EXPECT_EQ(operationCount(0), 4u);
  EXPECT_EQ(operationCount(1), 4u);
}

TEST_F(OperationEditorTest, AnEditReplacesTheListAndLeavesTheOldOneToWhoReadsIt) {
  const InputFiles::Entry before = files_.at(0);
  const OperationList copy = *before->operations;
  selectOperation(1);
  editor_.showOperationWindow();
  pressDone(201);
  EXPECT_EQ(*before->operations, copy);
  EXPECT_NE(*files_.at(0)->operations, copy);
}

TEST_F(OperationEditorTest, OnlyTheEndsAreWrittenByAnEditOfSeveralFiles) {
  for (const std::int64_t code : {150, 201, 353, 304}) {
    OperationRecord record{{"Code", code}, {"Arg1", u"x"}};
    editor_.updateOperationDictionary(record);
    EXPECT_EQ(record, (OperationRecord{{"Code", code}, {"Arg1", u"x"}})) << code;
  }
  OperationRecord initial{{"Code", 101}};
  editor_.updateOperationDictionary(initial);
  EXPECT_TRUE(initial.has("IntArg2"));
}

TEST_F(OperationEditorTest, WithoutAButtonNothingIsDoneNorCancelled) {
  editor_.showPanelForAdding(201);
  editor_.operationsWindowDoneButtonClicked(nullptr);
  editor_.operationsWindowCancelButtonClicked(nullptr);
  EXPECT_TRUE(editor_.panels().panelForCode(201)->window().isShown());
  EXPECT_EQ(operationCount(0), 4u);
}

TEST_F(OperationEditorTest, TheEndsHaveNoPanelForAdding) {
  for (const std::int64_t code : {101, 901, 304}) editor_.showPanelForAdding(code);
  EXPECT_FALSE(editor_.panels().panelForCode(101)->window().isShown());
  EXPECT_FALSE(editor_.panels().panelForCode(901)->window().isShown());
}

}  // namespace
}  // namespace quillet
