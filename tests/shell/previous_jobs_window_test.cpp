// What the whole application does not show: the focus, answers that come later, and a grid that changes the
// selection while it works. The rest is in the scenarios.
#include "shell/previous_jobs_window.h"

#include <gtest/gtest.h>

#include "shell/recording_desktop.h"
#include "support/temporary_folder.h"

namespace quillet {
namespace {

class Grid final : public ClipboardWorkbench {
 public:
  void refreshDataFromClipboard() override {}
  void performClipboardDataOperation(const OperationRecord& operation) override {
    performed.push_back(operation);
    whenPerforming();
  }
  const OperationList& clipboardDataOperationsArray() const override { return performed; }
  Content content() const override { return {}; }

  OperationList performed;
  std::function<void()> whenPerforming = [] {};
};

class PreviousJobsWindowTest : public ::testing::Test {
 protected:
  PreviousJobsWindowTest() {
    browser_.addCommandsTo(interface_.commands());
    database_.setupDatabase();
  }

  void saveClipboardJob(const char16_t* name) {
    const OperationList operations = {{{"Code", 416}}, {{"Code", 417}}, {{"Code", 418}}};
    EXPECT_EQ(database_.saveJobNamed(name, nullptr, &operations), DBInterface::kSuccess);
    browser_.updatePreviousJobsWindowTables();
  }
  template <typename Kind>
  Kind& control(const char* name) {
    return dynamic_cast<Kind&>(*interface_.control(name));
  }
  void selectJobs(std::int64_t first, std::int64_t last) {
    IndexSet rows;
    rows.addRange(first, last);
    control<Table>("previousJobsWindowJobsTableView").userSelects(rows);
  }

  testing::TemporaryFolder folder_;
  DBInterface database_{"quillet.db", folder_.path()};
  InputFiles inputFiles_;
  JobState state_;
  testing::RecordingDesktop desktop_;
  Grid grid_;
  UserInterface interface_;
  Window mainWindow_{interface_, "window", u""};
  Window window_{interface_, "previousJobsWindow", u""};
  FileSelection selection_{mainWindow_, inputFiles_};
  PreviousJobsWindow browser_{
      interface_,
      window_,
      {database_, inputFiles_, selection_, grid_, state_, desktop_, desktop_, [] {}, [] {}}};
};

TEST_F(PreviousJobsWindowTest, AChangeOfTheSearchTypePutsTheFocusInTheField) {
  control<PopUpButton>("previousJobsWindowSearchTypeButton").userSelects(2);
  EXPECT_EQ(desktop_.events, std::vector<std::string>{"focus previousJobsWindowSearchField"});
}

TEST_F(PreviousJobsWindowTest, AllStepsOfAJobArePerformedWhateverIsSelectedMeanwhile) {
  saveClipboardJob(u"three");
  selectJobs(0, 0);
  grid_.whenPerforming = [this] { selectJobs(1, 0); };
  control<Button>("previousJobsWindowRestoreOperationsButton").press();
  ASSERT_EQ(grid_.performed.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_EQ(grid_.performed[i].code(), 416 + static_cast<std::int64_t>(i));
}

TEST_F(PreviousJobsWindowTest, ALateAnswerDeletesWhatIsSelectedThen) {
  saveClipboardJob(u"one");
  saveClipboardJob(u"two");
  saveClipboardJob(u"three");
  selectJobs(0, 0);
  control<Button>("previousJobsWindowDeleteJobsButton").press();
  ASSERT_TRUE(desktop_.question);
  EXPECT_TRUE((desktop_.question->buttons == std::vector<std::u16string>{u"Delete", u"Cancel"}));
  EXPECT_EQ(browser_.previousJobsArray().size(), 3u);
  selectJobs(0, 1);
  desktop_.question->answered(1);
  EXPECT_EQ(browser_.previousJobsArray().size(), 3u);
  desktop_.question->answered(0);
  EXPECT_EQ(browser_.previousJobsArray().size(), 1u);
}

TEST_F(PreviousJobsWindowTest, TablesCanBeAskedWhileAnAlertStands) {
  saveClipboardJob(u"one");
  selectJobs(0, 0);
  const auto& jobs = control<Table>("previousJobsWindowJobsTableView");
  const auto& operations = control<Table>("previousJobFileWindowOperationsTableView");
  EXPECT_FALSE(jobs.row(0).empty());
  EXPECT_TRUE(jobs.row(1).empty());
  EXPECT_FALSE(operations.row(2).empty());
  EXPECT_TRUE(operations.row(3).empty());
  EXPECT_TRUE(control<Table>("previousJobsWindowFilesTableView").row(0).empty());
}

TEST_F(PreviousJobsWindowTest, TheNameFieldIsOnForOneSelectedJob) {
  saveClipboardJob(u"one");
  saveClipboardJob(u"two");
  const auto& field = control<TextField>("previousJobsPopoverDetailsTitleTextField");
  EXPECT_FALSE(field.isEnabled());
  selectJobs(0, 0);
  EXPECT_TRUE(field.isEnabled());
  selectJobs(0, 1);
  EXPECT_FALSE(field.isEnabled());
}

}  // namespace
}  // namespace quillet
