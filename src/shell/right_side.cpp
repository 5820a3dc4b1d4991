#include "shell/right_side.h"

namespace quillet {

void RightSide::updateRightSide() {
  const std::int64_t count = selection_.rows().count();
  if (count == 0) return showHelpBox();
  if (count == 1)
    showSingleFile();
  else
    showSeveralFiles();
  shownBox_ = RightSideBox::Main;
}

void RightSide::showSingleFile() {
  preview_.updateFilesTableView();
  computePreview_();
  preview_.updatePreviewArea();
}

// The rows of the output stay as they were: this is meant.
void RightSide::showSeveralFiles() {
  preview_.updateFilesTableView();
  stores_.clearInputRows();
  preview_.updatePreviewPanel();
  preview_.emptyText();
  operations_.takeMultiFileOperations();
}

}  // namespace quillet
