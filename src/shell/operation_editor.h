// The rules of the lists of operations: how operations come in, are changed, deleted and moved, in one file
// or in all that are selected. The values come from the panels. Every edit puts a new list in the place of
// the old one, since a run reads the lists meanwhile.
//
// The initial operation stands at index 0 and the final one at the last; new ones go before the final one. A
// list of fewer than two operations counts as empty: nothing here changes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

#include "engine/input_files.h"
#include "shell/desktop.h"
#include "shell/operation_panels.h"
#include "shell/operation_table.h"
#include "shell/preview_panel.h"
#include "shell/status_line.h"

namespace quillet {

// Main thread only.
class OperationEditor {
 public:
  // All outlive the editor.
  struct Neighbours {
    InputFiles& files;
    FileSelection& selection;
    OperationTable& table;
    PreviewPanel& preview;
    StatusLine& statusLine;
    Alerts& alerts;
    WindowServer& windows;
  };

  // computePreview makes a new preview of the selected file.
  OperationEditor(UserInterface& interface, const Neighbours& neighbours,
                  std::function<void()> computePreview);

  void addCommandsTo(Commands& commands);

  // Opens the panel of the code for adding; nothing for a code that is not added by a panel.
  void showPanelForAdding(std::int64_t code);
  void showOperationWindow();  // of the selected operation, for editing

  // A record from the panel of the code, one with the code alone if it has none, before the last of the list.
  // Nothing beyond the list of files.
  void addOperation(std::int64_t code, std::size_t toInputFileWithIndex);
  // From the panels of the initial and the final operation; any other record stays as it is.
  void updateOperationDictionary(OperationRecord& record);

  // Of the panel that the button belongs to; null does nothing.
  void operationsWindowDoneButtonClicked(Control* sender);
  void operationsWindowCancelButtonClicked(Control* sender);

  void deleteOperationButtonClicked();

  // A drop of rows of the table of operations, before the row. That none of the selected rows is an end is
  // all that is tested: what is dropped before the initial or behind the final operation lands there.
  void acceptDrop(const IndexSet& rows, std::int64_t row);

  enum class Added { No, Yes };
  void updateStatusLabel(std::int64_t code, std::int64_t inputFileCount, Added added);

  OperationPanels& panels() { return panels_; }

 private:
  InputFiles::Entry singleFileWithOperations() const;
  bool anyEndIsSelected(const OperationList& operations) const;
  std::optional<std::size_t> singleSelectedRow() const;

  // The code whose label tells of the commit; nothing when the selection did not fit.
  std::optional<std::int64_t> commitAdding(std::int64_t code);
  std::optional<std::int64_t> commitEditing();
  std::optional<std::int64_t> commitEditingSingleFile(std::size_t row);
  std::optional<std::int64_t> commitEditingSeveralFiles(std::size_t row);

  Neighbours neighbours_;
  std::function<void()> computePreview_;
  OperationPanels panels_;
};

}  // namespace quillet
