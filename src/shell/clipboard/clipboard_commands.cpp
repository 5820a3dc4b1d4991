#include "shell/clipboard/clipboard_commands.h"

namespace quillet {

ClipboardCommands::ClipboardCommands(ClipboardData& data, UserDefaults& defaults, const Desktop& desktop)
    : data_(data), defaults_(defaults), alerts_(desktop.alerts), prompts_(desktop.prompts) {}

void ClipboardCommands::addCommandsTo(Commands& commands) {
  commands.add("clipboardDataWindowRefreshNowButtonPressed", [this] { data_.refreshDataFromClipboard(); });
}

}  // namespace quillet
