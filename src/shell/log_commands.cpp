#include "shell/log_commands.h"

#include "platform/folders.h"
#include "platform/localization.h"

namespace quillet {

void LogCommands::addCommandsTo(Commands& commands) {
  commands.add("clearLogMenuItemClicked", [this] { clearLogMenuItemClicked(); });
  commands.add("openLastLogFileMenuItemClicked", [this] { openLastLogFileMenuItemClicked(); });
}

void LogCommands::openLastLogFileMenuItemClicked() {
  const auto path = log_.path();
  if (!path) return;
  if (!fileExists(*path)) return alerts_.showAlert(localized(u"Last log file does not exist yet"), {});
  if (isFolder(*path)) return alerts_.showAlert(localized(u"Last log file should not be a folder"), {});
  workspace_.open(*path);
}

}  // namespace quillet
