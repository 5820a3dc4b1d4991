// The clipboard workbench behind its window: the text, the grid, the list of performed operations, and the
// one gate that every change of the grid goes through, with one level of undo.
//
// Undo leaves much as it is, all of it meant: the selection and the focus, the title, the text and the
// clipboard after a Join, and the list, which keeps the undone record and gets it again by redo. A Refresh
// touches neither the undo nor the snapshot.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "clipboard/clipboard_display.h"
#include "clipboard/clipboard_engine.h"
#include "clipboard/clipboard_grid.h"
#include "clipboard/clipboard_selection.h"
#include "clipboard/pasteboard.h"
#include "clipboard/undo_manager.h"
#include "operations/operation_record.h"

namespace quillet {

// Main thread only. Both references outlive it.
class ClipboardData {
 public:
  ClipboardData(Pasteboard& pasteboard, ClipboardDisplay& display);

  // Loads the clipboard's text, and empties the grid and the list. A clipboard without text changes nothing.
  void refreshDataFromClipboard();

  // The gate. The record alone says what to do; failures are told by the display, and are listed and undone
  // as a success is.
  void performClipboardDataOperation(const OperationRecord& operation);

  void updateClipboardDataWindowTitle();
  // "<name of the operation> operation performed."
  void updateClipboardDataWindowStatusLabel(std::int64_t code);

  const ClipboardGrid& clipboardDataArray() const { return grid_; }
  // What Split reads and Join writes. There is none before the first Refresh or Join; it reads as "" then.
  bool hasClipboardDataString() const { return text_ != nullptr; }
  const std::u16string& clipboardDataString() const;
  // In the order performed since the last Refresh.
  const OperationList& clipboardDataOperationsArray() const { return operations_; }
  ClipboardSelection& selection() { return selection_; }
  const ClipboardSelection& selection() const { return selection_; }
  UndoManager& undoManager() { return undoManager_; }
  const UndoManager& undoManager() const { return undoManager_; }

 private:
  using Text = std::shared_ptr<const std::u16string>;

  bool takeClipboardText();
  void performClipboardDataOperationWithUndo(const OperationRecord& record);
  void undoPerformClipboardDataOperation(const OperationRecord& record);
  void registerUndo(const OperationRecord& record);

  void compute(const ClipboardOperation& operation, const OperationRecord& record);
  void split(const OperationRecord& record);
  void join(const OperationRecord& record);
  void editCell(const OperationRecord& record);
  void install(const ClipboardOperation& operation, ClipboardOutcome outcome);
  void rebuildColumns(const ClipboardOperation& operation, bool rowsWereSelected, bool columnsWereSelected);

  Pasteboard& pasteboard_;
  ClipboardDisplay& display_;
  Text text_;  // null when there is none yet
  ClipboardGrid grid_;
  ClipboardGrid oldGrid_;  // before the last operation
  OperationList operations_;
  ClipboardSelection selection_;
  UndoManager undoManager_;
  std::optional<std::u16string> errorText_;  // of the operation that is being performed
};

}  // namespace quillet
