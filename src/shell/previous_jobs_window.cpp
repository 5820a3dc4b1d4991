// How the window of the saved jobs follows the search and the selection. What changes jobs or brings them
// back is in previous_jobs_changes.cpp.
#include "shell/previous_jobs_window.h"

#include <utility>

#include "operations/operation_description.h"
#include "platform/localization.h"
#include "platform/unicode_text.h"
#include "storage/job_codes.h"

namespace quillet {

namespace {

std::u16string placeholderOf(std::int64_t searchType) {
  switch (searchType) {
    case SearchSavedSince:
      return localized(u"Format: 2018-05-30");
    case SearchFilesInJob:
      return localized(u"Files in job");
    default:
      return localized(u"Job name");
  }
}

}  // namespace

PreviousJobsWindow::PreviousJobsWindow(UserInterface& interface, Window& window, Neighbours neighbours)
    : neighbours_(std::move(neighbours)),
      window_(window),
      searchTypeButton_(window, "previousJobsWindowSearchTypeButton",
                        {{SearchByJobName, localized(u"Job Name")},
                         {SearchSavedSince, localized(u"Saved Since")},
                         {SearchFilesInJob, localized(u"Files in Job"), localized(u"Looks in job names")}},
                        "previousJobsWindowSearchTypePopUpChanged"),
      searchField_(window, "previousJobsWindowSearchField",
                   "previousJobsWindowSearchFieldTextShouldEndEditing"),
      jobsTable_(
          window, "previousJobsWindowJobsTableView",
          {[this] { return previousJobsArray_.size(); }, [this](std::size_t row) { return jobRow(row); }},
          {{"LastSaved", localized(u"Last Saved"), 150}, {"JobName", localized(u"Job")}},
          "previousJobsWindowJobsTableViewDoubleClickOnRow"),
      nameField_(window, "previousJobsPopoverDetailsTitleTextField",
                 "previousJobsPopoverDetailsTitleTextFieldAction"),
      filesTable_(window, "previousJobsWindowFilesTableView",
                  {[this] { return previousJobFilesArray_.size(); },
                   [this](std::size_t row) { return fileRow(row); }},
                  {{"FileName", {}}}, "previousJobsWindowFilesTableViewDoubleClickOnRow"),
      operationsTable_(window, "previousJobFileWindowOperationsTableView",
                       {[this] { return previousJobFileOperationsArray_.size(); },
                        [this](std::size_t row) { return operationRow(row); }}),
      deleteButton_(window, "previousJobsWindowDeleteJobsButton", localized(u"Delete…"),
                    "deleteJobsButtonClicked"),
      restoreButton_(window, "previousJobsWindowRestoreOperationsButton", localized(u"Restore Operations"),
                     "previousJobFileWindowRestoreOperationsButtonPressed"),
      fileWindow_(interface, "previousJobFileWindow", localized(u"Input File")),
      filePathLabel_(fileWindow_, "previousJobFileWindowFilePathLabel"),
      fileDetailsLabel_(fileWindow_, "previousJobFileWindowDetailsLabel"),
      closeFileWindowButton_(fileWindow_, "previousJobFileWindowCancelButton", localized(u"Close"),
                             "previousJobFileWindowCancelButtonPressed") {
  searchField_.setPlaceholder(placeholderOf(SearchByJobName));
  deleteButton_.setEnabled(false);
  restoreButton_.setEnabled(false);
  nameField_.setEnabled(false);
  fileWindow_.setSheetButtons(closeFileWindowButton_, closeFileWindowButton_);
  observeSelections();
}

void PreviousJobsWindow::observeSelections() {
  jobsTable_.setSelectionChanged([this] {
    updatePreviousJobsFilesAndDetails();
    updatePreviousJobsWindowOperationsTableView(ShowDetails::No);
  });
  filesTable_.setSelectionChanged([this] { updatePreviousJobsWindowOperationsTableView(ShowDetails::No); });
}

void PreviousJobsWindow::addCommandsTo(Commands& commands) {
  commands.add("previousJobsWindowMenuItemActionClicked",
               [this] { previousJobsWindowMenuItemActionClicked(); });
  commands.add("previousJobsWindowSearchTypePopUpChanged",
               [this] { previousJobsWindowSearchTypePopUpChanged(); });
  commands.add("previousJobsWindowSearchFieldTextShouldEndEditing",
               [this] { updatePreviousJobsWindowTables(); });
  commands.add("previousJobsPopoverDetailsTitleTextFieldAction",
               [this] { previousJobsPopoverDetailsTitleTextFieldAction(); });
  commands.add("deleteJobsButtonClicked", [this] { deleteJobsButtonClicked(); });
  commands.add("previousJobFileWindowRestoreOperationsButtonPressed",
               [this] { previousJobFileWindowRestoreOperationsButtonPressed(); });
  commands.add("previousJobFileWindowCancelButtonPressed",
               [this] { previousJobFileWindowCancelButtonPressed(); });
  addDoubleClicksTo(commands);
}

void PreviousJobsWindow::addDoubleClicksTo(Commands& commands) {
  commands.add("previousJobsWindowJobsTableViewDoubleClickOnRow",
               [this] { jobsTable_.selectRows(IndexSet{jobsTable_.selectedRow()}); });
  commands.add("previousJobsWindowFilesTableViewDoubleClickOnRow",
               [this] { updatePreviousJobsWindowOperationsTableView(ShowDetails::Yes); });
}

// The rows: an alert may stand between a change and its showing, so a table may ask for a row that is gone.

// The third text is the letter of the badge.
Table::Row PreviousJobsWindow::jobRow(std::size_t row) const {
  if (row >= previousJobsArray_.size()) return {};
  const PreviousJob& job = previousJobsArray_[row];
  return {dates_.shown(job.date), toUtf16(job.name), job.isClipboardJob() ? u"C" : u"P"};
}

Table::Row PreviousJobsWindow::fileRow(std::size_t row) const {
  if (row >= previousJobFilesArray_.size()) return {};
  return {toUtf16(previousJobFilesArray_[row].text("FileName"))};
}

// A list without two ends shows nothing.
Table::Row PreviousJobsWindow::operationRow(std::size_t row) const {
  const OperationList& list = previousJobFileOperationsArray_;
  if (row >= list.size()) return {};
  if (list.size() < 2) return Table::Row(3);
  const auto texts = descriptionForOperation(list[row], &list.front(), &list.back());
  return {texts.begin(), texts.end()};
}

std::optional<PreviousJob> PreviousJobsWindow::selectedJob() const {
  const auto row = static_cast<std::size_t>(jobsTable_.selectedRow());
  if (jobsTable_.selectedRows().count() != 1 || row >= previousJobsArray_.size()) return std::nullopt;
  return previousJobsArray_[row];
}

const SettingsRecord* PreviousJobsWindow::selectedFile() const {
  const std::int64_t row = filesTable_.selectedRow();
  if (row < 0 || row >= std::ssize(previousJobFilesArray_)) return nullptr;
  return &previousJobFilesArray_[static_cast<std::size_t>(row)];
}

void PreviousJobsWindow::previousJobsWindowMenuItemActionClicked() {
  updatePreviousJobsWindowTables();
  neighbours_.windows.makeKeyAndOrderFront(window_);
}

void PreviousJobsWindow::previousJobsWindowSearchTypePopUpChanged() {
  searchField_.setPlaceholder(placeholderOf(searchTypeButton_.selectedTag()));
  updatePreviousJobsWindowTables();
  neighbours_.windows.focus(searchField_);
}

void PreviousJobsWindow::updatePreviousJobsWindowTables() {
  reloadPreviousJobsArray();
  reloadJobsTable();
  emptyFilesTable();
}

void PreviousJobsWindow::reloadPreviousJobsArray() {
  DBInterface::FlatRows rows;
  const int status =
      neighbours_.database.getPreviousJobs(rows, searchTypeButton_.selectedTag(), searchField_.text());
  previousJobsArray_ =
      status == DBInterface::kSuccess ? previousJobsFromRows(rows) : std::vector<PreviousJob>();
  if (status != DBInterface::kSuccess)
    neighbours_.alerts.showAlert(localized(u"Error getting previous jobs from database"), {});
}

// Selected rows stay selected, by their place, whichever jobs stand there now.
void PreviousJobsWindow::reloadJobsTable() {
  jobsTable_.reloadData();
  showNameOfSelectedJob();
}

void PreviousJobsWindow::showNameOfSelectedJob() {
  const auto job = selectedJob();
  nameField_.setText(job ? toUtf16(job->name) : std::u16string());
  nameField_.setEnabled(job.has_value());
}

void PreviousJobsWindow::emptyFilesTable() {
  previousJobFilesArray_.clear();
  filesTable_.reloadData();
}

void PreviousJobsWindow::updatePreviousJobsFilesAndDetails() {
  previousJobFilesArray_.clear();
  const std::int64_t count = jobsTable_.selectedRows().count();
  if (const auto job = selectedJob()) readFilesOf(*job);
  // The operations are shown anew by who has changed the selection of jobs.
  filesTable_.reloadData(Table::Tell::No);
  if (count == 1) filePathLabel_.setText({});
  deleteButton_.setEnabled(count >= 1);
  showNameOfSelectedJob();
}

void PreviousJobsWindow::readFilesOf(const PreviousJob& job) {
  DBInterface& database = neighbours_.database;
  database.getInputFileSettings(previousJobFilesArray_, job.identifier);  // a failure shows in the next call
  SettingsRecord settings;                                                // asked for its status alone
  if (database.getJobSettings(settings, job.identifier) != DBInterface::kSuccess)
    neighbours_.alerts.showAlert(localized(u"Could not get job settings from database"), {});
}

void PreviousJobsWindow::updatePreviousJobsWindowOperationsTableView(ShowDetails show) {
  previousJobFileOperationsArray_.clear();
  const auto job = selectedJob();
  restoreButton_.setTitle(job && job->isClipboardJob() ? localized(u"Perform Operations")
                                                       : localized(u"Restore Operations"));
  if (job && readOperationsOf(*job)) {
    restoreButton_.setEnabled(job->isOperationsJob() && !neighbours_.state.runningJob);
    fileDetailsLabel_.setHidden(job->isOperationsJob());
    if (show == ShowDetails::Yes) showDetailsOf(*job);
  }
  operationsTable_.reloadData();
}

bool PreviousJobsWindow::readOperationsOf(const PreviousJob& job) {
  std::optional<std::string> path;
  if (!job.isClipboardJob()) {
    path = pathOfSelectedFile();
    if (!path || !job.isOperationsJob()) return true;
  }
  // A list of its own: selecting a row may have read the operations already.
  OperationList operations;
  if (neighbours_.database.getOperations(operations, job.identifier, path) != DBInterface::kSuccess) {
    neighbours_.alerts.showErrorAlertInWindow(neighbours_.database.lastErrorMessage(),
                                              WindowName::PreviousJobs);
    return false;
  }
  previousJobFileOperationsArray_ = std::move(operations);
  return true;
}

// Of several selected files, the last remains selected.
std::optional<std::string> PreviousJobsWindow::pathOfSelectedFile() {
  const SettingsRecord* file = selectedFile();
  if (!file) return std::nullopt;
  filesTable_.selectRows(IndexSet{filesTable_.selectedRow()});
  if (!file->has("FilePath")) return std::nullopt;
  return file->text("FilePath");
}

void PreviousJobsWindow::showDetailsOf(const PreviousJob& job) {
  if (filesTable_.selectedRows().count() != 1) return updatePreviousJobsFilesAndDetails();
  const SettingsRecord* file = selectedFile();
  const std::u16string path = file ? toUtf16(file->text("FilePath")) : std::u16string();
  fileDetailsLabel_.setText(file ? stringForFileDetails(*file) : std::u16string());
  filePathLabel_.setText(path);
  if (job.isOperationsJob()) {
    neighbours_.alerts.showAlertInWindow(localized(u"Input File Path"), path, WindowName::PreviousJobs);
  } else {
    neighbours_.windows.beginSheet(fileWindow_, WindowName::PreviousJobs);
  }
}

}  // namespace quillet
