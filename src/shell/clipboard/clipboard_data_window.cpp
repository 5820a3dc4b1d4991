#include "shell/clipboard/clipboard_data_window.h"

#include "operations/escapes.h"
#include "operations/operation_description.h"
#include "platform/localization.h"

namespace quillet {

namespace {

Table::Source performedOperations(const ClipboardData& data) {
  return {[&data] { return data.clipboardDataOperationsArray().size(); },
          [&data](std::size_t row) {
            const auto texts =
                descriptionForOperation(data.clipboardDataOperationsArray()[row], nullptr, nullptr);
            return Table::Row(texts.begin(), texts.end());
          }};
}

}  // namespace

ClipboardDataWindow::ClipboardDataWindow(Window& window, const Desktop& desktop, ClipboardData& data,
                                         std::function<void()> showCellDetailsWindow)
    : window_(window),
      server_(desktop.windows),
      alerts_(desktop.alerts),
      helpBox_(window, "clipboardDataWindowHelpBox"),
      textView_(window, "clipboardDataWindowTextView"),
      table_(window, data, std::move(showCellDetailsWindow)),
      operationsTable_(window, "clipboardDataWindowOperationsTableView", performedOperations(data)),
      statusLine_(window, "clipboardDataWindowStatusLabel", "clipboardDataWindowClearStatusLabelButton",
                  "clipboardDataWindowClearStatusLabelButtonClicked"),
      performItem_(window, "clipboardDataWindowPerformToolbarItem", localized(u"Perform"), {}),
      joinItem_(window, "clipboardDataWindowJoinToolbarItem", localized(u"Join…"),
                "clipboardDataWindowJoinButtonPressed") {
  setToolbarItemsEnabled(false);
  reset();
}

void ClipboardDataWindow::addCommandsTo(Commands& commands) {
  commands.add("clipboardDataWindowMenuItemClicked", [this] { clipboardDataWindowMenuItemClicked(); });
  statusLine_.addCommandsTo(commands);
  table_.addCommandsTo(commands);
}

void ClipboardDataWindow::clipboardDataWindowMenuItemClicked() {
  if (!window_.isShown()) reset();
  server_.makeKeyAndOrderFront(window_);
}

void ClipboardDataWindow::reset() {
  helpBox_.setHidden(false);
  textView_.setHidden(true);
  table_.table().setHidden(true);
  statusLine_.clear();
}

void ClipboardDataWindow::updateClipboardDataWindowTextColumns(bool showsGrid) {
  textView_.setHidden(showsGrid);
  table_.table().setHidden(!showsGrid);
}

void ClipboardDataWindow::reloadTable() {
  table_.reload();
  operationsTable_.reloadData();
}

void ClipboardDataWindow::setText(std::u16string_view text) {
  textView_.setText(stringByReplacingControlCharactersFromString(text, {}));
}

void ClipboardDataWindow::setToolbarItemsEnabled(bool enabled) {
  performItem_.setEnabled(enabled);
  joinItem_.setEnabled(enabled);
}

void ClipboardDataWindow::showAlert(std::u16string_view title, std::u16string_view message) {
  alerts_.showAlertInWindow(title, message, WindowName::ClipboardData);
}

void ClipboardDataWindow::showErrorAlert(std::u16string_view message) {
  alerts_.showErrorAlertInWindow(message, WindowName::ClipboardData);
}

}  // namespace quillet
