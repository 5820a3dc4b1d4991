#include "shell/clipboard/clipboard_group.h"

namespace quillet {

ClipboardGroup::ClipboardGroup(UserInterface& interface, Window& window, const Desktop& desktop,
                               UserDefaults& defaults)
    : window_(window, desktop, data_, [this] { sheets_.showCellDetailsWindow(); }),
      data_(desktop.pasteboard, window_),
      sheets_(interface, {data_, window_, window, defaults, desktop.windows}),
      commands_(data_, defaults, desktop) {}

void ClipboardGroup::addCommandsTo(Commands& commands) {
  window_.addCommandsTo(commands);
  sheets_.addCommandsTo(commands);
  commands_.addCommandsTo(commands);
}

ClipboardWorkbench::Content ClipboardGroup::content() const {
  const TwoDimensionalMutableIndexSet& selection = data_.selection().selected2DIndexSet();
  return {data_.clipboardDataArray().rowCount() != 0, !selection.isEmpty(),
          selection.infiniteRowIndexSet().count(), selection.infiniteColumnIndexSet().count()};
}

}  // namespace quillet
