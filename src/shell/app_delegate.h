// The application: owns all state and one object of each group of commands, and joins them. It is the only
// object that outlives a command. Runs on the main thread; a run of the engine that is going on when it ends
// goes on by itself.
//
// Each group knows only what its constructor is given. To find where a command lives, follow the accessor.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/job_engine.h"
#include "shell/clipboard/clipboard_group.h"
#include "shell/desktop.h"
#include "shell/file_commands.h"
#include "shell/file_selection.h"
#include "shell/help_commands.h"
#include "shell/input_file_list.h"
#include "shell/job_controller.h"
#include "shell/log_commands.h"
#include "shell/menu_validation.h"
#include "shell/operation_editor.h"
#include "shell/operation_table.h"
#include "shell/output_folder.h"
#include "shell/preferences_window.h"
#include "shell/preview_keys.h"
#include "shell/preview_panel.h"
#include "shell/previous_jobs_window.h"
#include "shell/right_side.h"
#include "shell/save_job_window.h"
#include "shell/session_windows.h"
#include "shell/status_line.h"
#include "shell/window.h"
#include "storage/db_interface.h"

namespace quillet {

// The windows that are not sheets.
struct MainWindows {
  explicit MainWindows(UserInterface& interface);

  Window main;
  Window clipboardData;
  Window previousJobs;
  Window preferences;
};

class AppDelegate {
 public:
  // mainThread is closed by the destructor and serves this application alone.
  AppDelegate(const Desktop& desktop, std::shared_ptr<const Folders> folders,
              std::shared_ptr<UserDefaults> defaults, std::shared_ptr<MainThread> mainThread);
  ~AppDelegate();
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  void applicationDidFinishLaunching();
  void applicationWillTerminate();               // stores the session; a run is neither stopped nor awaited
  bool windowShouldClose(const Window& window);  // always true; the preferences store their texts
  // Whether the menu item of this command is on.
  bool validateMenuItem(std::string_view action) const;
  // Files from outside. Only the first call's paths are ever added: this is meant.
  void openFiles(const std::vector<std::string>& paths);

  // Files that a later start of the program hands over: as dropped at the end of the list. The main window
  // comes forward, also without any.
  void filesFromLaterStart(const std::vector<std::string>& paths);

  // What the engine and the main thread share.
  const JobSurroundings& shared() const { return shared_; }
  // All windows, controls and commands, by name.
  UserInterface& interface() { return interface_; }
  MainWindows& windows() { return windows_; }
  DBInterface& database() { return database_; }

  FileSelection& fileSelection() { return fileSelection_; }
  InputFileList& inputFileList() { return inputFileList_; }
  OperationTable& operationTable() { return operationTable_; }
  PreviewPanel& previewPanel() { return previewPanel_; }
  PreviewKeys& previewKeys() { return previewKeys_; }
  RightSide& rightSide() { return rightSide_; }
  FileCommands& fileCommands() { return fileCommands_; }
  StatusLine& statusLine() { return statusLine_; }
  OutputFolder& outputFolder() { return outputFolder_; }
  LogCommands& logCommands() { return logCommands_; }
  JobController& jobController() { return jobController_; }
  ClipboardGroup& clipboard() { return clipboard_; }
  PreviousJobsWindow& previousJobsWindow() { return previousJobsWindow_; }
  OperationEditor& operationEditor() { return operationEditor_; }

 private:
  void restoreSelection();
  void storeSelection();
  void computePreview();  // of the selected file

  void addCommands();

  Alerts& alerts_;
  WindowServer& windowServer_;
  JobSurroundings shared_;
  DBInterface database_;
  UserInterface interface_;
  MainWindows windows_;
  FileSelection fileSelection_;
  InputFileList inputFileList_;
  OperationTable operationTable_;
  PreviewPanel previewPanel_;
  PreviewKeys previewKeys_;
  StatusLine statusLine_;
  OutputFolder outputFolder_;
  LogCommands logCommands_;
  JobController jobController_;
  RightSide rightSide_;
  FileCommands fileCommands_;
  ClipboardGroup clipboard_;
  PreferencesWindow preferencesWindow_;
  HelpCommands helpCommands_;
  MenuValidation menuValidation_;
  SessionWindows sessionWindows_;
  PreviousJobsWindow previousJobsWindow_;
  SaveJobWindow saveJobWindow_;
  OperationEditor operationEditor_;
  std::optional<std::vector<std::string>> filesToOpen_;
};

}  // namespace quillet
