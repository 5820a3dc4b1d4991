#include "shell/file_commands.h"

#include <algorithm>

#include "platform/folders.h"
#include "platform/localization.h"

namespace quillet {

FileCommands::FileCommands(Window& window, const Neighbours& neighbours)
    : neighbours_(neighbours),
      addButton_(window, "addInputFileButton", {}, "addInputFileMenuItemClicked"),
      removeButton_(window, "removeInputFilesButton", {}, "removeSelectedInputFilesMenuItemClicked"),
      revealButton_(window, "showInFinderButton", {}, "showInFinderButtonPressed") {
  addButton_.setToolTip(localized(u"Add Input Files…"));
  removeButton_.setToolTip(localized(u"Remove Selected Files"));
  revealButton_.setToolTip(localized(u"Show in File Manager"));
}

void FileCommands::addCommandsTo(Commands& commands) {
  commands.add("addInputFileMenuItemClicked", [this] { addInputFileMenuItemClicked(); });
  commands.add("removeSelectedInputFilesMenuItemClicked",
               [this] { removeSelectedInputFilesMenuItemClicked(); });
  commands.add("showInFinderButtonPressed", [this] { showInFinderButtonPressed(); });
}

void FileCommands::addInputFileMenuItemClicked() {
  neighbours_.panels.chooseFiles(localized(u"Add Input File"), localized(u"Add"), {"txt", "tab", "csv"},
                                 [this](const std::vector<std::string>& paths) { dropAtEnd(paths); });
}

void FileCommands::acceptDrop(const DraggedFiles& dragged, std::int64_t row) {
  row = std::clamp<std::int64_t>(row, 0, static_cast<std::int64_t>(neighbours_.list.count()));
  if (dragged.rows) return moveRows(*dragged.rows, row);
  neighbours_.list.addInputFiles(dragged.paths, static_cast<std::size_t>(row), SelectFiles::Yes,
                                 RestoreOperations::No);
}

void FileCommands::dropAtEnd(const std::vector<std::string>& paths) {
  neighbours_.list.addInputFiles(paths, neighbours_.list.count(), SelectFiles::Yes, RestoreOperations::No);
}

// The rows are selected where they were dropped, although rows that left from above have moved them up since;
// after a move downwards others are selected, or none. This is meant.
void FileCommands::moveRows(const IndexSet& rows, std::int64_t row) {
  const std::size_t moved = neighbours_.list.moveFiles(rows, row);
  IndexSet selected;
  selected.addRange(row, row + static_cast<std::int64_t>(moved) - 1);
  neighbours_.selection.select(selected);
  neighbours_.preview.showPreview();
}

void FileCommands::removeSelectedInputFilesMenuItemClicked() {
  const IndexSet selected = neighbours_.selection.rows();
  if (selected.isEmpty()) return;
  neighbours_.list.removeFiles(selected);
  selectAfterRemoval(selected.lastIndex() - selected.count());
  neighbours_.preview.updatePreviewPanel();
  neighbours_.rightSide.updateRightSide();
  neighbours_.operations.updateUIAfterOperationTableViewSelectionDidChange();
}

// The row is the last selected one less the number of them, which need not lie behind the removed block: this
// is meant.
void FileCommands::selectAfterRemoval(std::int64_t row) {
  const auto left = static_cast<std::int64_t>(neighbours_.list.count());
  if (left == 0) return neighbours_.preview.updateFilesTableView();
  neighbours_.selection.select(row >= 0 && row < left ? static_cast<std::size_t>(row) : 0);
}

void FileCommands::showInFinderButtonPressed() {
  const auto file = neighbours_.selection.singleFile();
  if (!file || !file->filePath) return;
  if (fileUrlFromPath(*file->filePath).empty()) {
    // The words speak of another path: this is meant.
    return neighbours_.alerts.showErrorAlertInWindow(localized(u"Could not create documentsPath URL"),
                                                     WindowName::Main);
  }
  neighbours_.workspace.reveal({*file->filePath});
}

}  // namespace quillet
