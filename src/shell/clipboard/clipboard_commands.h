// The commands of the clipboard data window that need no sheet of their own: each builds a record and hands
// it to the gate, some after a prompt for a text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clipboard/clipboard_data.h"
#include "platform/user_defaults.h"
#include "shell/commands.h"
#include "shell/desktop.h"

namespace quillet {

// Main thread only. All references outlive it.
class ClipboardCommands {
 public:
  ClipboardCommands(ClipboardData& data, UserDefaults& defaults, const Desktop& desktop);

  void addCommandsTo(Commands& commands);

 private:
  ClipboardData& data_;
  UserDefaults& defaults_;
  Alerts& alerts_;
  Prompts& prompts_;
};

}  // namespace quillet
