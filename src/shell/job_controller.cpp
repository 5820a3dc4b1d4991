#include "shell/job_controller.h"

#include <system_error>
#include <thread>
#include <utility>

#include "operations/list_rules.h"
#include "platform/localization.h"
#include "platform/system_log.h"
#include "platform/unicode_text.h"

namespace quillet {

JobController::JobController(Window& window, const JobSurroundings& shared, const Neighbours& neighbours,
                             std::function<void()> updatePreviewPanel)
    : surroundings_(shared),
      neighbours_(neighbours),
      progressIndicator_(window, "jobProgressIndicator"),
      runButton_(window, "runButton", localized(u"Run Job"), "runButtonPressed") {
  surroundings_.updatePreviewPanel = std::move(updatePreviewPanel);
  surroundings_.updateUIAfterPrep = [this] { updateUIAfterPrep(); };
  surroundings_.hideProgressIndicator = [this] { progressIndicator_.setHidden(true); };
  progressIndicator_.setHidden(true);  // and never shown
}

void JobController::addCommandsTo(Commands& commands) {
  commands.add("runButtonPressed", [this] { runButtonPressed(); });
}

void JobController::runButtonPressed() {
  if (surroundings_.state->runningJob) {
    surroundings_.state->stopJob = true;
    return;
  }
  Alerts& alerts = neighbours_.alerts;
  if (surroundings_.files->count() == 0) {
    return alerts.showAlertInWindow(localized(u"Add at least one input file."),
                                    localized(u"You can either press the + button at the bottom of the Input "
                                              u"Files list on the left, or drag and "
                                              u"drop text files from the Finder into the Input Files list."),
                                    WindowName::Main);
  }
  const std::u16string problems = problemsOfAllLists();
  if (!problems.empty())
    return alerts.showAlertInWindow(localized(u"Invalid Operations"), problems, WindowName::Main);
  startPrepFilesThreadInBackground(StartPrep::Run);
}

// One message a line; empty if there is none.
std::u16string JobController::problemsOfAllLists() const {
  std::u16string result;
  for (const auto& file : surroundings_.files->all()) {
    if (!file->fileName || !file->operations) continue;
    for (const auto& problem : problemsBeforeRun(*file->operations, toUtf16(*file->fileName))) {
      if (!result.empty()) result += u'\n';
      result += problem;
    }
  }
  return result;
}

void JobController::startPrepFilesThreadInBackground(StartPrep what) {
  if (surroundings_.files->count() == 0) {
    return neighbours_.alerts.showAlertInWindow(
        localized(u"No input files"), localized(u"Add one or more text files to the Input Files list."),
        WindowName::Main);
  }
  surroundings_.state->stopJob = false;
  if (what == StartPrep::Run) return startRun();
  JobParameters parameters;
  parameters.selectedFileIndexes = neighbours_.selection.rows();
  prepFiles(parameters, surroundings_);
}

void JobController::startRun() {
  const auto folder = neighbours_.outputFolder.resolve();
  // A new choice starts no run: that takes another press.
  if (!folder) return neighbours_.outputFolder.selectOutputFolder();
  if (!folder->path) {
    neighbours_.alerts.showErrorAlertInWindow(folder->problem, WindowName::Main);
    return neighbours_.outputFolder.selectOutputFolder();
  }
  JobParameters parameters;
  parameters.write = true;
  parameters.outputFolder = folder->path;
  parameters.selectedFileIndexes = neighbours_.selection.rows();
  startThread(parameters);
}

void JobController::startThread(const JobParameters& parameters) {
  ++*runsGoingOn_;
  auto run = [parameters, surroundings = surroundings_, runs = runsGoingOn_]() mutable {
    const auto mainThread = surroundings.mainThread;
    prepFiles(parameters, surroundings);
    surroundings = {};
    --*runs;
    mainThread->wakeUp();
  };
  try {
    std::thread(std::move(run)).detach();
    ++runsStarted_;
  } catch (const std::system_error& error) {
    --*runsGoingOn_;
    logToSystem(formatted(u"Could not start a thread for the job: %@", {toUtf16(error.what())}));
  }
}

void JobController::updateUIBeforePrep() {
  runButton_.setTitle(localized(u"Stop"));
  neighbours_.selection.setTableEnabled(false);
}

void JobController::updateUIAfterPrep() {
  const UserDefaults& defaults = *surroundings_.defaults;
  const auto outputPaths = surroundings_.outputFiles->paths();
  if (!defaults.boolForKey("DontOpenOutputFolderAfterComplete") && !outputPaths.empty())
    neighbours_.workspace.reveal(outputPaths);
  if (defaults.boolForKey("OpenLastLogAfterComplete"))
    neighbours_.logCommands.openLastLogFileMenuItemClicked();
  if (startedFromAppIcon_ && defaults.boolForKey("QuitAfterComplete"))
    neighbours_.application.requestTermination();
  neighbours_.selection.setTableEnabled(true);
  runButton_.setTitle(localized(u"Run Job"));
  // The preview clears the flags first, so the status line tells what the preview found and not what the run
  // found. This order is meant; the log file has the outcome of the run.
  startPrepFilesThreadInBackground(StartPrep::Preview);
  const JobLog& log = *surroundings_.log;
  if (surroundings_.state->stopJob)
    neighbours_.statusLine.show(localized(u"Job stopped by user"), 0);
  else if (log.atLeastOneError() || log.atLeastOneWarning())
    neighbours_.statusLine.show(localized(u"Job completed with issues. Check the log file."), 2);
  else
    neighbours_.statusLine.show(localized(u"Job completed."), 0);
}

}  // namespace quillet
