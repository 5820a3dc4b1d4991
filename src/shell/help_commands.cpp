#include "shell/help_commands.h"

#include "platform/localization.h"
#include "shell/controls.h"
#include "shell/web_pages.h"

namespace quillet {

void HelpCommands::addCommandsTo(Commands& commands) {
  commands.add("tutorialsMenuItemClicked", [this] { tutorialsMenuItemClicked(); });
  commands.add("supportMenuItemClicked", [this] { supportMenuItemClicked(); });
  commands.addWithSender("helpButtonPressed", [this](Control* sender) { helpButtonPressed(sender); });
}

void HelpCommands::tutorialsMenuItemClicked() {
  openPage(kTutorialsPage);
}

void HelpCommands::supportMenuItemClicked() {
  openPage(kSupportPage);
}

void HelpCommands::openPage(const char* address) {
  if (!workspace_.open(address)) alerts_.showAlert(localized(u"Could not open URL"), {});
}

// The tool tip is localized where the button is made.
void HelpCommands::helpButtonPressed(Control* sender) {
  const auto* button = dynamic_cast<const Button*>(sender);
  const bool hasHelp = button && !button->toolTip().empty();
  alerts_.showAlert(hasHelp ? button->toolTip() : localized(u"No help available."), {});
}

}  // namespace quillet
