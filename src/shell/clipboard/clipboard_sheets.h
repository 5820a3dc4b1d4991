// The sheets of the clipboard data window: Split, Join, Trim, Replace, Fill and the details of a cell. All
// but the last open with what they were used with last.
#pragma once

#include "clipboard/clipboard_data.h"
#include "platform/user_defaults.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "shell/window.h"

namespace quillet {

// Main thread only. All references outlive them.
class ClipboardSheets {
 public:
  ClipboardSheets(UserInterface& interface, ClipboardData& data, UserDefaults& defaults,
                  const Desktop& desktop);

  void addCommandsTo(Commands& commands);

  // For the focused cell; without one the sheet is empty, and Done will be refused.
  void showCellDetailsWindow();

 private:
  ClipboardData& data_;
  UserDefaults& defaults_;
  WindowServer& windows_;
};

}  // namespace quillet
