// The window of the saved jobs: renaming and deleting jobs, and bringing their operations back.
#include <utility>

#include "platform/localization.h"
#include "platform/unicode_text.h"
#include "shell/previous_jobs_window.h"

namespace quillet {

// With none or several selected the field belongs to no job.
void PreviousJobsWindow::previousJobsPopoverDetailsTitleTextFieldAction() {
  if (!selectedJob()) return;
  const std::u16string name = nameField_.text();
  saveJobName(name, jobsTable_.selectedRow());
  reloadJobsTable();
}

// Neither an empty name nor that of another job is refused: this is meant.
void PreviousJobsWindow::saveJobName(std::optional<std::u16string_view> name, std::int64_t row) {
  if (row < 0 || row >= std::ssize(previousJobsArray_)) return;
  PreviousJob& job = previousJobsArray_[static_cast<std::size_t>(row)];
  if (name && *name == toUtf16(job.name)) return;
  DBInterface& database = neighbours_.database;
  if (database.updatePreviousJobs(job.identifier, name, job.isNewJob()) != DBInterface::kSuccess)
    return neighbours_.alerts.showErrorAlert(database.lastErrorMessage());
  job.name = toUtf8(*name);
  reloadJobsTable();
  emptyFilesTable();
}

void PreviousJobsWindow::deleteJobsButtonClicked() {
  constexpr std::size_t kDelete = 0;
  neighbours_.alerts.askInWindow(localized(u"Delete the selected jobs?"), {},
                                 {localized(u"Delete"), localized(u"Cancel")}, WindowName::PreviousJobs,
                                 [this](std::size_t button) {
                                   if (button == kDelete) deleteSelectedJobs();
                                 });
}

// After a failure the tables stay as they are, with the jobs that are gone already: this is meant.
void PreviousJobsWindow::deleteSelectedJobs() {
  if (!deleteJobs(selectedJobs()))
    return neighbours_.alerts.showAlert(localized(u"Could not delete the selected jobs"), {});
  updatePreviousJobsWindowTables();
  updatePreviousJobsFilesAndDetails();
}

std::vector<PreviousJob> PreviousJobsWindow::selectedJobs() const {
  std::vector<PreviousJob> result;
  for (std::size_t row = 0; row < previousJobsArray_.size(); ++row)
    if (jobsTable_.selectedRows().contains(static_cast<std::int64_t>(row)))
      result.push_back(previousJobsArray_[row]);
  return result;
}

// One transaction a job; the first failure ends it.
bool PreviousJobsWindow::deleteJobs(const std::vector<PreviousJob>& jobs) {
  for (const PreviousJob& job : jobs)
    if (neighbours_.database.deleteJobSettings({job.identifier}, job.isNewJob()) != DBInterface::kSuccess)
      return false;
  return true;
}

void PreviousJobsWindow::previousJobFileWindowRestoreOperationsButtonPressed() {
  const auto job = selectedJob();
  if (job && job->isClipboardJob()) return performOnClipboard();
  restoreOntoSelectedFiles();
}

// Each step counts as a new operation of the grid. Over a copy: what a step shows may change the selection.
void PreviousJobsWindow::performOnClipboard() {
  const OperationList operations = previousJobFileOperationsArray_;
  for (const OperationRecord& operation : operations)
    neighbours_.clipboard.performClipboardDataOperation(operation);
}

void PreviousJobsWindow::restoreOntoSelectedFiles() {
  const IndexSet& rows = neighbours_.selection.rows();
  if (neighbours_.inputFiles.count() == 0)
    return tellInWindow(localized(u"No input files to restore file settings to."));
  if (rows.isEmpty())
    return tellInWindow(localized(u"Select an input file in the main window to restore operations to."));
  if (previousJobFileOperationsArray_.empty()) return;
  for (const auto& range : rows.ranges())
    for (std::int64_t row = range.first; row <= range.last; ++row)
      neighbours_.inputFiles.setOperations(static_cast<std::size_t>(row), previousJobFileOperationsArray_);
  neighbours_.reloadOperationTable();
  neighbours_.windows.endSheet(fileWindow_);
  neighbours_.computePreview();
}

void PreviousJobsWindow::tellInWindow(std::u16string_view title) {
  neighbours_.alerts.showAlertInWindow(title, {}, WindowName::PreviousJobs);
}

void PreviousJobsWindow::previousJobFileWindowCancelButtonPressed() {
  neighbours_.windows.endSheet(fileWindow_);
}

}  // namespace quillet
