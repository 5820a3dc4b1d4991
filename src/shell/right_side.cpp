#include "shell/right_side.h"

#include <utility>

namespace quillet {

RightSide::RightSide(Window& window, const FileSelection& selection, PreviewStores& stores,
                     PreviewPanel& preview, OperationTable& operations, std::function<void()> computePreview)
    : selection_(selection),
      stores_(stores),
      preview_(preview),
      operations_(operations),
      computePreview_(std::move(computePreview)),
      helpBox_(window, "rightSideHelpBox"),
      mainBox_(window, "rightSideMainBox") {
  helpBox_.setHidden(true);
  mainBox_.setHidden(true);
}

void RightSide::updateRightSide() {
  const std::int64_t count = selection_.rows().count();
  if (count == 1) {
    showSingleFile();
  } else if (count > 1) {
    showSeveralFiles();
  } else {
    operations_.reloadTable();
  }
  helpBox_.setHidden(count != 0);
  mainBox_.setHidden(count == 0);
}

void RightSide::showSingleFile() {
  preview_.updateFilesTableView();
  operations_.reloadTable();
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
  operations_.reloadTable();
}

}  // namespace quillet
