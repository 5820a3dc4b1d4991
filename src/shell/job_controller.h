// Starts the engine: a preview on the main thread, a run on a thread of its own, any number of them side by
// side.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "engine/job_engine.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "shell/file_selection.h"
#include "shell/log_commands.h"
#include "shell/output_folder.h"
#include "shell/status_line.h"

namespace quillet {

// How many runs are going on. Safe from any thread.
using RunCount = std::atomic<int>;

enum class StartPrep { Preview, Run };

// Main thread only. A run holds shared state alone, so the controller may be gone before the run has ended;
// the hand-over to the main thread must be closed before that.
class JobController {
 public:
  // All outlive the controller.
  struct Neighbours {
    FileSelection& selection;
    OutputFolder& outputFolder;
    StatusLine& statusLine;
    LogCommands& logCommands;
    Alerts& alerts;
    Workspace& workspace;
    ApplicationControl& application;
  };

  // shared without its callbacks; updatePreviewPanel is called at the end of each preview.
  JobController(Window& window, const JobSurroundings& shared, const Neighbours& neighbours,
                std::function<void()> updatePreviewPanel);

  void addCommandsTo(Commands& commands);

  void runButtonPressed();
  void startPrepFilesThreadInBackground(StartPrep what);
  void updateUIBeforePrep();  // called by nothing: the button keeps its title during a run, which is meant
  void updateUIAfterPrep();

  // Files came from outside: what QuitAfterComplete needs.
  void setStartedFromAppIcon() { startedFromAppIcon_ = true; }

  const std::shared_ptr<RunCount>& runsGoingOn() const { return runsGoingOn_; }
  std::uint64_t runsStarted() const { return runsStarted_; }

 private:
  std::u16string problemsOfAllLists() const;
  void startRun();
  void startThread(const JobParameters& parameters);

  JobSurroundings surroundings_;
  Neighbours neighbours_;
  std::shared_ptr<RunCount> runsGoingOn_ = std::make_shared<RunCount>(0);
  std::uint64_t runsStarted_ = 0;
  bool startedFromAppIcon_ = false;
  ProgressIndicator progressIndicator_;
  Button runButton_;
};

}  // namespace quillet
