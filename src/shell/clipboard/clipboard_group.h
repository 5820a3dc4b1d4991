// The clipboard data window with all that belongs to it, and what the rest of the application asks of it.
#pragma once

#include "clipboard/clipboard_data.h"
#include "platform/user_defaults.h"
#include "shell/clipboard/clipboard_commands.h"
#include "shell/clipboard/clipboard_data_window.h"
#include "shell/clipboard/clipboard_sheets.h"
#include "shell/clipboard_workbench.h"
#include "shell/desktop.h"
#include "shell/window.h"

namespace quillet {

// Main thread only. All references outlive it.
class ClipboardGroup final : public ClipboardWorkbench {
 public:
  ClipboardGroup(UserInterface& interface, Window& window, const Desktop& desktop, UserDefaults& defaults);

  void addCommandsTo(Commands& commands);

  // ClipboardWorkbench.
  void refreshDataFromClipboard() override { data_.refreshDataFromClipboard(); }
  void performClipboardDataOperation(const OperationRecord& operation) override {
    data_.performClipboardDataOperation(operation);
  }
  const OperationList& clipboardDataOperationsArray() const override {
    return data_.clipboardDataOperationsArray();
  }
  Content content() const override;

  // Of the window's Edit menu. False where there is nothing to undo or redo.
  bool undo() { return data_.undoManager().undo(); }
  bool redo() { return data_.undoManager().redo(); }

  ClipboardData& data() { return data_; }
  ClipboardDataWindow& window() { return window_; }
  ClipboardTable& table() { return window_.table(); }

 private:
  ClipboardDataWindow window_;  // before the data, which takes it as its display
  ClipboardData data_;
  ClipboardSheets sheets_;
  ClipboardCommands commands_;
};

}  // namespace quillet
