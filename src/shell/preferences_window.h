// The preferences: a window over five of the user's settings. Check boxes act at once; texts are stored when
// the editing of either ends, and when the window closes.
#pragma once

#include <string>

#include "platform/user_defaults.h"
#include "shell/controls.h"
#include "shell/desktop.h"

namespace quillet {

// Main thread only. All references outlive it.
class PreferencesWindow {
 public:
  PreferencesWindow(Window& window, WindowServer& server, UserDefaults& defaults);

  void addCommandsTo(Commands& commands);

  // Fills the controls from the settings and makes the window key.
  void preferencesMenuItemClicked();
  // Stores both texts as they are, an empty one too.
  void preferencesWindowSaveTextFieldsToDefaults();
  // Stores the opposite of what is stored, whatever the control shows.
  void toggleDefaultForKey(const std::string& key);

 private:
  void fillControls();

  Window& window_;
  WindowServer& server_;
  UserDefaults& defaults_;
  TextField decodeErrorReplacement_;
  TextField encodeErrorReplacement_;
  CheckBox autoSplit_;
  CheckBox openLastLogFileAfterComplete_;
  CheckBox openOutputFolderAfterComplete_;
};

}  // namespace quillet
