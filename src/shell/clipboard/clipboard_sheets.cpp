#include "shell/clipboard/clipboard_sheets.h"

namespace quillet {

ClipboardSheets::ClipboardSheets(UserInterface& interface, const ClipboardSheet::Neighbours& neighbours)
    : split_(interface, neighbours),
      join_(interface, neighbours),
      trim_(interface, neighbours),
      replace_(interface, neighbours),
      fill_(interface, neighbours),
      cellDetails_(interface, neighbours) {}

void ClipboardSheets::addCommandsTo(Commands& commands) {
  commands.add("clipboardDataWindowSplitButtonPressed", [this] { split_.open(); });
  commands.add("clipboardDataWindowJoinButtonPressed", [this] { join_.open(); });
  commands.add("clipboardDataWindowTrimButtonPressed", [this] { trim_.open(); });
  commands.add("clipboardDataWindowReplaceButtonPressed", [this] { replace_.open(); });
  commands.add("clipboardDataWindowFillButtonPressed", [this] { fill_.open(); });
  for (ClipboardSheet* sheet :
       std::initializer_list<ClipboardSheet*>{&split_, &join_, &trim_, &replace_, &fill_, &cellDetails_})
    sheet->addCommandsTo(commands);
}

}  // namespace quillet
