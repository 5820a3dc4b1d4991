// The window of the saved jobs: searches them, shows a job's files and operations, renames and deletes jobs,
// and brings a job's operations back.
//
// Bringing back opens no files: the operations of one file of the job are copied onto the files that are
// selected in the main window, and those of a clipboard job are performed on the grid.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/input_files.h"
#include "engine/job_state.h"
#include "shell/clipboard_workbench.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "shell/file_selection.h"
#include "shell/job_details.h"
#include "shell/previous_job.h"
#include "storage/db_interface.h"

namespace quillet {

enum class ShowDetails { No, Yes };

// Main thread only. What it shows follows the selection and is read from the database each time.
class PreviousJobsWindow {
 public:
  // All outlive the window.
  struct Neighbours {
    DBInterface& database;
    InputFiles& inputFiles;
    const FileSelection& selection;  // in the main window
    ClipboardWorkbench& clipboard;
    const JobState& state;
    Alerts& alerts;
    WindowServer& windows;
    std::function<void()> reloadOperationTable;  // of the main window
    std::function<void()> computePreview;
  };

  PreviousJobsWindow(UserInterface& interface, Window& window, Neighbours neighbours);

  void addCommandsTo(Commands& commands);

  void previousJobsWindowMenuItemActionClicked();
  // Reads the list anew; the files of a job that stays selected are shown again only when it is selected
  // anew.
  void updatePreviousJobsWindowTables();
  void updatePreviousJobsFilesAndDetails();
  // With details, a sheet tells where the selected file is, or what settings it had.
  void updatePreviousJobsWindowOperationsTableView(ShowDetails show);

  // Renames the job of this row, counted from 0. Nothing for a row that there is not, and for the name that
  // it has. An absent name is told as an error.
  void saveJobName(std::optional<std::u16string_view> name, std::int64_t row);
  void deleteJobsButtonClicked();  // asks first
  void previousJobFileWindowRestoreOperationsButtonPressed();
  void previousJobFileWindowCancelButtonPressed();

  const std::vector<PreviousJob>& previousJobsArray() const { return previousJobsArray_; }

 private:
  void addDoubleClicksTo(Commands& commands);
  void observeSelections();

  // The rows of the tables.
  Table::Row jobRow(std::size_t row) const;
  Table::Row fileRow(std::size_t row) const;
  Table::Row operationRow(std::size_t row) const;

  // The one selected job; nothing with none or several.
  std::optional<PreviousJob> selectedJob() const;
  const SettingsRecord* selectedFile() const;  // null for none; of several, the last

  void previousJobsWindowSearchTypePopUpChanged();
  void reloadPreviousJobsArray();
  void reloadJobsTable();
  void showNameOfSelectedJob();
  void emptyFilesTable();
  void readFilesOf(const PreviousJob& job);
  bool readOperationsOf(const PreviousJob& job);  // false when that failed, which was told
  std::optional<std::string> pathOfSelectedFile();
  void showDetailsOf(const PreviousJob& job);

  void previousJobsPopoverDetailsTitleTextFieldAction();
  void deleteSelectedJobs();
  bool deleteJobs(const std::vector<PreviousJob>& jobs);
  std::vector<PreviousJob> selectedJobs() const;
  void performOnClipboard();
  void restoreOntoSelectedFiles();
  void tellInWindow(std::u16string_view title);

  Neighbours neighbours_;
  JobDates dates_;
  std::vector<PreviousJob> previousJobsArray_;
  std::vector<SettingsRecord> previousJobFilesArray_;
  OperationList previousJobFileOperationsArray_;

  Window& window_;
  PopUpButton searchTypeButton_;
  TextField searchField_;
  Table jobsTable_;
  TextField nameField_;  // of the one selected job
  Table filesTable_;
  Table operationsTable_;
  Button deleteButton_;
  Button restoreButton_;
  Window fileWindow_;  // a sheet, for jobs of the first generation
  Label filePathLabel_;
  Label fileDetailsLabel_;
  Button closeFileWindowButton_;
};

}  // namespace quillet
