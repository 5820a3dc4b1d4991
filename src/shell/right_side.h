// The right side of the main window: a help box while no file is selected, else its operations and the
// preview.
#pragma once

#include <functional>

#include "engine/preview_stores.h"
#include "shell/file_selection.h"
#include "shell/operation_table.h"
#include "shell/preview_panel.h"

namespace quillet {

enum class RightSideBox { Help, Main };

// Main thread only. All references outlive it.
class RightSide {
 public:
  // computePreview makes a new preview of the selected file.
  RightSide(const FileSelection& selection, PreviewStores& stores, PreviewPanel& preview,
            OperationTable& operations, std::function<void()> computePreview)
      : selection_(selection),
        stores_(stores),
        preview_(preview),
        operations_(operations),
        computePreview_(std::move(computePreview)) {}

  void updateRightSide();  // after a change of the selection
  void showHelpBox() { shownBox_ = RightSideBox::Help; }

  RightSideBox shownBox() const { return shownBox_; }

 private:
  void showSingleFile();
  void showSeveralFiles();

  const FileSelection& selection_;
  PreviewStores& stores_;
  PreviewPanel& preview_;
  OperationTable& operations_;
  std::function<void()> computePreview_;
  RightSideBox shownBox_ = RightSideBox::Help;
};

}  // namespace quillet
