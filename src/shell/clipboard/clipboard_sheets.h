// The sheets of the clipboard data window, and the commands that open them. All but the details of a cell
// open with what they were used with last.
#pragma once

#include "shell/clipboard/cell_sheets.h"
#include "shell/clipboard/text_sheets.h"

namespace quillet {

// Main thread only.
class ClipboardSheets {
 public:
  ClipboardSheets(UserInterface& interface, const ClipboardSheet::Neighbours& neighbours);

  void addCommandsTo(Commands& commands);

  void showCellDetailsWindow() { cellDetails_.open(); }

 private:
  SplitSheet split_;
  JoinSheet join_;
  TrimCellsSheet trim_;
  ReplaceCellsSheet replace_;
  FillCellsSheet fill_;
  CellDetailsSheet cellDetails_;
};

}  // namespace quillet
