// The folder that outputs go to. The settings keep it as a bookmark, which is the only record of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/user_defaults.h"
#include "shell/controls.h"
#include "shell/desktop.h"

namespace quillet {

// Main thread only. All references outlive it.
class OutputFolder {
 public:
  OutputFolder(Window& window, UserDefaults& defaults, Alerts& alerts, Panels& panels);

  void addCommandsTo(Commands& commands);

  // Asks the user for the folder and stores it. A failure is a modal alert and leaves the stored one in
  // place.
  void selectOutputFolder();

  struct Resolved {
    std::optional<std::string> path;  // an existing folder
    std::u16string problem;           // the message for the user when there is no path
  };
  // Nothing when no folder was chosen yet.
  std::optional<Resolved> resolve() const;

 private:
  void store(const std::vector<std::string>& paths);

  UserDefaults& defaults_;
  Alerts& alerts_;
  Panels& panels_;
  Button selectButton_;
};

}  // namespace quillet
