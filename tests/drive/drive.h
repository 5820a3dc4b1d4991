// The tool: one application at a time over a folder that stands for the user's home, and what is needed to
// command it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drive/scripted_desktop.h"
#include "platform/folders.h"
#include "platform/user_defaults.h"
#include "shell/app_delegate.h"

namespace quillet::drive {

enum class Documents { InRoot, None };

// The user's folders, all inside ROOT.
class RootFolders final : public Folders {
 public:
  RootFolders(std::string root, Documents documents) : root_(std::move(root)), documents_(documents) {}
  std::optional<std::string> documentsFolder() const override;
  std::string temporaryParentFolder() const override { return root_ + "/tmp"; }
  std::string defaultsFile() const override { return root_ + "/defaults.json"; }

 private:
  std::string root_;
  Documents documents_;
};

class Drive {
 public:
  Drive(std::string root, Documents documents);
  ~Drive();
  Drive(const Drive&) = delete;
  Drive& operator=(const Drive&) = delete;

  // Carries out one line; the result, without events.
  json result(const std::string& line);

  ScriptedDesktop& desktop() { return desktop_; }
  const std::string& root() const { return root_; }

  // The settings of the application that is there, or of the next one.
  UserDefaults& defaults();
  // The application that is there; made when there is none. It may not be launched yet.
  AppDelegate& application();
  // Throws CommandError before launch and after termination.
  AppDelegate& launchedApplication();
  void launch();  // throws CommandError when it was launched already
  void terminate();

  void doWaitingWork();  // what runs have handed over to the main thread
  void waitForRuns();    // or for a request to terminate
  // A run of this or of an earlier application is going on.
  bool isRunGoingOn() const;

 private:
  const std::string root_;
  const std::shared_ptr<const Folders> folders_;
  ScriptedDesktop desktop_;
  std::shared_ptr<UserDefaults> defaults_;
  std::shared_ptr<MainThread> mainThread_;
  std::unique_ptr<AppDelegate> application_;
  bool launched_ = false;
  std::vector<std::shared_ptr<RunCount>> runCounts_;  // of all applications so far
};

}  // namespace quillet::drive
