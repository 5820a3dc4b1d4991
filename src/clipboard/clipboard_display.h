// What shows the clipboard grid: the window, as the grid's data sees it. Texts are already localized.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

// Main thread only.
class ClipboardDisplay {
 public:
  virtual ~ClipboardDisplay() = default;

  // True shows the grid and hides the text, false the reverse.
  virtual void updateClipboardDataWindowTextColumns(bool showsGrid) = 0;
  // Rebuilds the data columns of the table from the width of the grid, and gives them new widths.
  virtual void resizeClipboardTableViewColumns() = 0;
  virtual std::size_t dataColumnCount() const = 0;  // of the table, as they were rebuilt last
  virtual void reloadTable() = 0;
  virtual void setTitle(std::u16string title) = 0;
  // The text as it stands; control characters are made visible by the display.
  virtual void setText(std::u16string_view text) = 0;
  virtual void setStatus(std::u16string text, int type) = 0;  // 0 information, 2 red
  virtual void setToolbarItemsEnabled(bool enabled) = 0;      // Perform and Join
  // In the window.
  virtual void showAlert(std::u16string_view title, std::u16string_view message) = 0;
  virtual void showErrorAlert(std::u16string_view message) = 0;
};

}  // namespace quillet
