// Which items of the menus are on. An item is known by its command; a command that is not named here is
// always on.
#pragma once

#include <string_view>

#include "engine/input_files.h"
#include "engine/job_log.h"
#include "engine/job_state.h"
#include "shell/clipboard_workbench.h"
#include "shell/desktop.h"
#include "shell/file_selection.h"

namespace quillet {

// Main thread only.
class MenuValidation {
 public:
  // All outlive the object.
  struct Sources {
    const JobLog& log;
    const JobState& state;
    const InputFiles& files;
    const FileSelection& selection;
    const ClipboardWorkbench& clipboard;
    const WindowServer& windows;
  };

  explicit MenuValidation(const Sources& sources) : sources_(sources) {}

  bool validateMenuItem(std::string_view action) const;

 private:
  Sources sources_;
};

}  // namespace quillet
