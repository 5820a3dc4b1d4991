// The folder that outputs go to. The settings keep it as a bookmark, which is the only record of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/job_log.h"
#include "platform/user_defaults.h"
#include "shell/controls.h"
#include "shell/desktop.h"

namespace quillet {

// Main thread only. All references outlive it.
class OutputFolder {
 public:
  OutputFolder(Window& window, UserDefaults& defaults, JobLog& log, const Desktop& desktop);

  void addCommandsTo(Commands& commands);

  // Asks the user for the folder and stores it. A failure is a modal alert and leaves the stored one in
  // place.
  void selectOutputFolder();
  // In the file viewer. Nothing at all when no folder was chosen yet; a failure is a warning in the log,
  // where a run would show an alert.
  void showOutputFolderMenuItemClicked();

  struct Resolved {
    std::optional<std::string> path;  // an existing folder
    std::u16string problem;           // the message for the user when there is no path
  };
  // Nothing when no folder was chosen yet.
  std::optional<Resolved> resolve() const;

 private:
  void store(const std::vector<std::string>& paths);
  void updateToolTip();

  UserDefaults& defaults_;
  JobLog& log_;
  Alerts& alerts_;
  Panels& panels_;
  Workspace& workspace_;
  Button selectButton_;  // its tool tip is the folder
};

}  // namespace quillet
