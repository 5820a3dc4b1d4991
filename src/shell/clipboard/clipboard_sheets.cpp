#include "shell/clipboard/clipboard_sheets.h"

namespace quillet {

ClipboardSheets::ClipboardSheets(UserInterface&, ClipboardData& data, UserDefaults& defaults,
                                 const Desktop& desktop)
    : data_(data), defaults_(defaults), windows_(desktop.windows) {}

void ClipboardSheets::addCommandsTo(Commands&) {}

void ClipboardSheets::showCellDetailsWindow() {}

}  // namespace quillet
