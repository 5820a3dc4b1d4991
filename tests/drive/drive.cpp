#include "drive/drive.h"

#include "drive/command_table.h"

namespace quillet::drive {

std::optional<std::string> RootFolders::documentsFolder() const {
  std::string folder = root_ + "/Documents";
  if (documents_ == Documents::None || !makeFolders(folder)) return std::nullopt;
  return folder;
}

Drive::Drive(std::string root, Documents documents)
    : root_(std::move(root)), folders_(std::make_shared<RootFolders>(root_, documents)) {
  folders_->documentsFolder();
  makeFolders(folders_->temporaryParentFolder());
}

Drive::~Drive() = default;

UserDefaults& Drive::defaults() {
  if (!defaults_) defaults_ = std::make_shared<UserDefaults>(folders_->defaultsFile());
  return *defaults_;
}

AppDelegate& Drive::application() {
  if (application_) return *application_;
  // Read anew: the file may have been changed from outside since a command asked for the settings.
  defaults_ = std::make_shared<UserDefaults>(folders_->defaultsFile());
  mainThread_ = std::make_shared<MainThread>();
  application_ = std::make_unique<AppDelegate>(desktop_.desktop(), folders_, defaults_, mainThread_);
  runCounts_.push_back(application_->jobController().runsGoingOn());
  return *application_;
}

AppDelegate& Drive::launchedApplication() {
  if (!launched_) throw CommandError("the application is not launched");
  return *application_;
}

void Drive::launch() {
  if (launched_) throw CommandError("the application is launched already");
  application().applicationDidFinishLaunching();
  launched_ = true;
}

void Drive::terminate() {
  launchedApplication().applicationWillTerminate();
  desktop_.forgetWindows();
  application_.reset();
  mainThread_.reset();
  defaults_.reset();
  launched_ = false;
  desktop_.forgetTerminationRequest();
}

void Drive::doWaitingWork() {
  if (mainThread_) mainThread_->runPending();
}

void Drive::waitForRuns() {
  const auto runs = launchedApplication().jobController().runsGoingOn();
  mainThread_->runUntil([&] { return *runs == 0 || desktop_.terminationRequested(); });
  doWaitingWork();
}

bool Drive::isRunGoingOn() const {
  for (const auto& count : runCounts_)
    if (*count > 0) return true;
  return false;
}

json Drive::result(const std::string& line) {
  try {
    return carryOut(*this, line);
  } catch (const std::exception& error) {  // of a wrong command, or of a mistake in here
    return {{"ok", false}, {"error", error.what()}};
  }
}

}  // namespace quillet::drive
