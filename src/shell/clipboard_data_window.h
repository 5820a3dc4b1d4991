// The clipboard data window as far as it is no grid: what it shows in the place of the grid, its status line,
// the list of performed operations, and the two items of its toolbar that wait for a grid.
#pragma once

#include <cstdint>

#include "shell/clipboard_workbench.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "shell/status_line.h"

namespace quillet {

// Main thread only. All references outlive it.
class ClipboardDataWindow {
 public:
  ClipboardDataWindow(Window& window, WindowServer& server, const ClipboardWorkbench& clipboard);

  void addCommandsTo(Commands& commands);

  // Makes the window key. One that was not shown starts anew with its help; the clipboard is not read, which
  // is meant.
  void clipboardDataWindowMenuItemClicked();
  // "<name of the operation> operation performed."
  void updateClipboardDataWindowStatusLabel(std::int64_t code);

  StatusLine& statusLine() { return statusLine_; }
  Box& helpBox() { return helpBox_; }
  TextView& textView() { return textView_; }
  Table& grid() { return grid_; }
  Table& operationsTable() { return operationsTable_; }  // title, name of an icon and detail a row
  Button& performItem() { return performItem_; }         // its menu is the one of the grid's operations
  Button& joinItem() { return joinItem_; }

 private:
  void reset();

  Window& window_;
  WindowServer& server_;
  const ClipboardWorkbench& clipboard_;
  Box helpBox_;
  TextView textView_;
  Table grid_;
  Table operationsTable_;
  StatusLine statusLine_;
  Label focusLabel_;
  Button performItem_;
  Button joinItem_;
};

}  // namespace quillet
