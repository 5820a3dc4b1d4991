// The sheet in which a job gets its name and is saved: the list of input files over the main window, the
// performed operations over the clipboard data window.
#pragma once

#include <functional>
#include <string_view>

#include "engine/input_files.h"
#include "platform/user_defaults.h"
#include "shell/clipboard_workbench.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "storage/db_interface.h"

namespace quillet {

// Main thread only.
class SaveJobWindow {
 public:
  // All outlive the window.
  struct Neighbours {
    DBInterface& database;
    const InputFiles& inputFiles;
    const ClipboardWorkbench& clipboard;
    UserDefaults& defaults;
    WindowServer& windows;
  };

  // jobSaved is called after each save that has succeeded, with the sheet closed.
  SaveJobWindow(UserInterface& interface, Window& mainWindow, const Neighbours& neighbours,
                std::function<void()> jobSaved);

  void addCommandsTo(Commands& commands);

  void saveJobMenuItemClicked();  // over the main window if it is key, else over the clipboard data window
  void saveJobWindowSaveButtonClicked();  // a failure is told in the sheet, which stays open
  void saveJobWindowCancelButtonClicked();

 private:
  bool save(std::u16string_view name);
  void tell(std::u16string_view key, TextColour colour);

  Neighbours neighbours_;
  std::function<void()> jobSaved_;
  Button saveJobButton_;  // in the main window
  Window window_;
  TextField nameField_;
  Label infoLabel_;
  Button cancelButton_;
  Button saveButton_;
};

}  // namespace quillet
