// What the user can do with the log of jobs.
#pragma once

#include "engine/job_log.h"
#include "shell/commands.h"
#include "shell/desktop.h"

namespace quillet {

// Main thread only. All references outlive it.
class LogCommands {
 public:
  LogCommands(JobLog& log, Alerts& alerts, Workspace& workspace)
      : log_(log), alerts_(alerts), workspace_(workspace) {}

  void addCommandsTo(Commands& commands);

  void clearLogMenuItemClicked() { log_.clear(); }
  void openLastLogFileMenuItemClicked();  // in the user's application for it

 private:
  JobLog& log_;
  Alerts& alerts_;
  Workspace& workspace_;
};

}  // namespace quillet
