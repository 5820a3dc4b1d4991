// Help: pages of the project, and the text of a help button.
#pragma once

#include "shell/commands.h"
#include "shell/desktop.h"

namespace quillet {

// Main thread only. All references outlive it.
class HelpCommands {
 public:
  HelpCommands(Alerts& alerts, Workspace& workspace) : alerts_(alerts), workspace_(workspace) {}

  void addCommandsTo(Commands& commands);

  // In the user's browser; a failure is a modal alert.
  void tutorialsMenuItemClicked();
  void supportMenuItemClicked();
  // An alert with the tool tip of the button that was pressed.
  void helpButtonPressed(Control* sender);

 private:
  void openPage(const char* address);

  Alerts& alerts_;
  Workspace& workspace_;
};

}  // namespace quillet
