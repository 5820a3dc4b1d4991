// What each code does to the clipboard grid, and what follows from it: one table. The codes that have to do
// with the clipboard's text (Split and Join) stand in it for what follows only.
#pragma once

#include <cstdint>
#include <optional>

#include "clipboard/clipboard_grid.h"
#include "operations/operation_record.h"
#include "platform/index_set.h"

namespace quillet {

struct ClipboardOutcome {
  ClipboardGrid grid;
  // Where the whole rows or columns that the operation has moved or merged are now.
  std::optional<IndexSet> indexes = {};
};

// What becomes of the infinite indexes of the selection; single cells are never touched.
enum class SelectionAfter {
  Unchanged,
  WithoutInfinite,
  WithoutInfiniteRows,
  WithoutInfiniteColumns,
  RowsFollow,    // the outcome's indexes, if any, replace the infinite rows
  ColumnsFollow  // the same for columns
};

enum class ColumnsAfter { Stay, Rebuilt, RebuiltIfRowsWereSelected, RebuiltIfColumnsWereSelected };
enum class ShownAfterUndo { Unchanged, Text, Grid };

struct ClipboardOperation {
  std::int64_t code;
  ClipboardOutcome (*compute)(const ClipboardGrid& grid, const OperationRecord& record);  // null: elsewhere
  SelectionAfter selection;
  ColumnsAfter columns;
  bool rebuildsColumnsAfterUndo;
  ShownAfterUndo shownAfterUndo = ShownAfterUndo::Unchanged;
};

// A code that is not in the table has the entry that changes nothing.
const ClipboardOperation& clipboardOperation(std::int64_t code);

}  // namespace quillet
