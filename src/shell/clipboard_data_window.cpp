#include "shell/clipboard_data_window.h"

#include "operations/operation_description.h"
#include "platform/localization.h"

namespace quillet {

namespace {

Table::Source noRows() {
  return {[] { return std::size_t{0}; }, [](std::size_t) { return Table::Row(); }};
}

Table::Source performedOperations(const ClipboardWorkbench& clipboard) {
  return {[&clipboard] { return clipboard.clipboardDataOperationsArray().size(); },
          [&clipboard](std::size_t row) {
            const auto texts =
                descriptionForOperation(clipboard.clipboardDataOperationsArray()[row], nullptr, nullptr);
            return Table::Row(texts.begin(), texts.end());
          }};
}

}  // namespace

ClipboardDataWindow::ClipboardDataWindow(Window& window, WindowServer& server,
                                         const ClipboardWorkbench& clipboard)
    : window_(window),
      server_(server),
      clipboard_(clipboard),
      helpBox_(window, "clipboardDataWindowHelpBox"),
      textView_(window, "clipboardDataWindowTextView"),
      grid_(window, "clipboardDataTableView", noRows()),
      operationsTable_(window, "clipboardDataWindowOperationsTableView", performedOperations(clipboard_)),
      statusLine_(window, "clipboardDataWindowStatusLabel", "clipboardDataWindowClearStatusLabelButton",
                  "clipboardDataWindowClearStatusLabelButtonClicked"),
      focusLabel_(window, "clipboardDataWindowFocusLabel"),
      performItem_(window, "clipboardDataWindowPerformToolbarItem", localized(u"Perform"), {}),
      joinItem_(window, "clipboardDataWindowJoinToolbarItem", localized(u"Join…"),
                "clipboardDataWindowJoinButtonPressed") {
  performItem_.setEnabled(false);
  joinItem_.setEnabled(false);
  reset();
}

void ClipboardDataWindow::addCommandsTo(Commands& commands) {
  commands.add("clipboardDataWindowMenuItemClicked", [this] { clipboardDataWindowMenuItemClicked(); });
  statusLine_.addCommandsTo(commands);
}

void ClipboardDataWindow::clipboardDataWindowMenuItemClicked() {
  if (!window_.isShown()) reset();
  server_.makeKeyAndOrderFront(window_);
}

void ClipboardDataWindow::reset() {
  helpBox_.setHidden(false);
  textView_.setHidden(true);
  grid_.setHidden(true);
  statusLine_.clear();
}

void ClipboardDataWindow::updateClipboardDataWindowStatusLabel(std::int64_t code) {
  statusLine_.show(localizedFormat(u"%@ operation performed.", {labelOfOperation(code)}), 0);
}

}  // namespace quillet
