// The right side of the main window: a help box while no file is selected, else its operations and the
// preview.
#pragma once

#include <functional>

#include "engine/preview_stores.h"
#include "shell/controls.h"
#include "shell/file_selection.h"
#include "shell/operation_table.h"
#include "shell/preview_panel.h"

namespace quillet {

// Main thread only. All references outlive it.
class RightSide {
 public:
  // computePreview makes a new preview of the selected file.
  RightSide(Window& window, const FileSelection& selection, PreviewStores& stores, PreviewPanel& preview,
            OperationTable& operations, std::function<void()> computePreview);

  void updateRightSide();  // after a change of the selection
  void showHelpBox() { helpBox_.setHidden(false); }

  bool helpBoxShown() const { return !helpBox_.isHidden(); }

 private:
  void showSingleFile();
  void showSeveralFiles();

  const FileSelection& selection_;
  PreviewStores& stores_;
  PreviewPanel& preview_;
  OperationTable& operations_;
  std::function<void()> computePreview_;
  Box helpBox_;
  Box mainBox_;
};

}  // namespace quillet
