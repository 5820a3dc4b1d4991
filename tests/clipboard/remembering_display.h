// What the workbench shows, for tests without a window.
#pragma once

#include <string>
#include <vector>

#include "clipboard/clipboard_data.h"
#include "clipboard/plain_workbench.h"

namespace quillet::testing {

// Shows nothing, and remembers what it would show.
class RememberingDisplay final : public ClipboardDisplay {
 public:
  explicit RememberingDisplay(const ClipboardData& data) : data_(data) {}

  void updateClipboardDataWindowTextColumns(bool shows) override { showsGrid = shows; }
  void resizeClipboardTableViewColumns() override { columnCount = data_.clipboardDataArray().maxRowLength(); }
  std::size_t dataColumnCount() const override { return columnCount; }
  void reloadTable() override { rowCount = data_.clipboardDataArray().rowCount(); }
  void setTitle(std::u16string newTitle) override { title = std::move(newTitle); }
  void setText(std::u16string_view newText) override { text = newText; }
  void setStatus(std::u16string newText, int type) override {
    status = std::move(newText);
    statusType = type;
  }
  void setToolbarItemsEnabled(bool enabled) override { toolbarItemsEnabled = enabled; }
  void showAlert(std::u16string_view alertTitle, std::u16string_view message) override {
    alerts.push_back({std::u16string(alertTitle), std::u16string(message)});
  }
  void showErrorAlert(std::u16string_view message) override {
    alerts.push_back({std::u16string(message), u""});
  }

  GridTableSize size() const {
    return {static_cast<std::int64_t>(rowCount), static_cast<std::int64_t>(columnCount)};
  }

  bool showsGrid = false;
  bool toolbarItemsEnabled = false;
  std::size_t columnCount = 0;
  std::size_t rowCount = 0;
  std::u16string title, text, status;
  int statusType = 0;
  std::vector<PlainAlert> alerts;

 private:
  const ClipboardData& data_;
};

// A clipboard that holds one text, or none.
class OneText final : public Pasteboard {
 public:
  std::optional<std::u16string> readString() override { return text; }
  bool writeString(std::u16string_view written) override {
    if (!fails) text = written;
    return !fails;
  }

  std::optional<std::u16string> text;
  bool fails = false;
};

}  // namespace quillet::testing
