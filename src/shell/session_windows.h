// Which windows come back from one launch to the next. The settings keep those that were shown, as a set of
// bits, and the one that had the keys.
#pragma once

#include <cstdint>

#include "platform/user_defaults.h"
#include "shell/clipboard_workbench.h"
#include "shell/desktop.h"
#include "shell/window.h"

namespace quillet {

// Main thread only. All references outlive it.
class SessionWindows {
 public:
  // In the order in which the key window is looked for.
  struct Windows {
    Window& main;
    Window& clipboardData;
    Window& previousJobs;
  };

  SessionWindows(const Windows& windows, WindowServer& server, ClipboardWorkbench& clipboard,
                 UserDefaults& defaults)
      : windows_(windows), server_(server), clipboard_(clipboard), defaults_(defaults) {}

  // Shows those that were shown at the last end; afterwards one of them is key, the main window if no other.
  // The clipboard is read only if its window comes back.
  void restore();
  // Stores which are shown. Without one that is key the stored key window stays.
  void store();

 private:
  // True when it has become key, which it does if it was.
  bool bringBack(Window& window, bool wasKey);
  std::int64_t shownWindows() const;

  Windows windows_;
  WindowServer& server_;
  ClipboardWorkbench& clipboard_;
  UserDefaults& defaults_;
};

}  // namespace quillet
