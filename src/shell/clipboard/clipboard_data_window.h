// What the clipboard data window shows: the help, the text or the grid in one place, its title, its status
// line, the list of performed operations, and the two items of its toolbar that wait for a grid.
#pragma once

#include "clipboard/clipboard_data.h"
#include "clipboard/clipboard_display.h"
#include "shell/clipboard/clipboard_table.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "shell/status_line.h"

namespace quillet {

// Main thread only. All references outlive it.
class ClipboardDataWindow final : public ClipboardDisplay {
 public:
  ClipboardDataWindow(Window& window, const Desktop& desktop, ClipboardData& data,
                      std::function<void()> showCellDetailsWindow);

  void addCommandsTo(Commands& commands);

  // Makes the window key. One that was not shown starts anew with its help; the clipboard is not read, which
  // is meant.
  void clipboardDataWindowMenuItemClicked();

  // ClipboardDisplay.
  void updateClipboardDataWindowTextColumns(bool showsGrid) override;
  void resizeClipboardTableViewColumns() override { table_.resizeClipboardTableViewColumns(false); }
  std::size_t dataColumnCount() const override { return table_.dataColumnCount(); }
  void reloadTable() override;
  void setTitle(std::u16string title) override { window_.setTitle(std::move(title)); }
  void setText(std::u16string_view text) override;
  void setStatus(std::u16string text, int type) override { statusLine_.show(std::move(text), type); }
  void setToolbarItemsEnabled(bool enabled) override;
  void showAlert(std::u16string_view title, std::u16string_view message) override;
  void showErrorAlert(std::u16string_view message) override;

  StatusLine& statusLine() { return statusLine_; }
  Box& helpBox() { return helpBox_; }
  TextView& textView() { return textView_; }
  ClipboardTable& table() { return table_; }
  Table& operationsTable() { return operationsTable_; }  // title, name of an icon and detail a row
  Button& performItem() { return performItem_; }         // its menu is the one of the grid's operations
  Button& joinItem() { return joinItem_; }

 private:
  void reset();

  Window& window_;
  WindowServer& server_;
  Alerts& alerts_;
  Box helpBox_;  // never hidden again: the text or the grid covers it, which is meant
  TextView textView_;
  ClipboardTable table_;
  Table operationsTable_;
  StatusLine statusLine_;
  Button performItem_;
  Button joinItem_;
};

}  // namespace quillet
