// What the user does with the list of input files: adds, drops, moves, removes and reveals them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/commands.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "shell/drag_and_drop.h"
#include "shell/file_selection.h"
#include "shell/input_file_list.h"
#include "shell/operation_table.h"
#include "shell/preview_panel.h"
#include "shell/right_side.h"

namespace quillet {

// Main thread only.
class FileCommands {
 public:
  // All outlive the commands.
  struct Neighbours {
    InputFileList& list;
    FileSelection& selection;
    PreviewPanel& preview;
    RightSide& rightSide;
    OperationTable& operations;
    Alerts& alerts;
    Panels& panels;
    Workspace& workspace;
  };

  FileCommands(Window& window, const Neighbours& neighbours);

  void addCommandsTo(Commands& commands);

  void addInputFileMenuItemClicked();
  void removeSelectedInputFilesMenuItemClicked();
  void showInFinderButtonPressed();

  // A drop on the table of files before the row, from 0. A row outside of the table is its nearest end.
  void acceptDrop(const DraggedFiles& dragged, std::int64_t row);
  void dropAtEnd(const std::vector<std::string>& paths);

 private:
  void moveRows(const IndexSet& rows, std::int64_t row);
  void selectAfterRemoval(std::int64_t row);

  Neighbours neighbours_;
  Button addButton_;
  Button removeButton_;
  Button revealButton_;
};

}  // namespace quillet
