// What the rest of the application asks of the clipboard data window: the spreadsheet on the clipboard's
// text.
#pragma once

#include <cstdint>

#include "operations/operation_record.h"

namespace quillet {

// Main thread only.
class ClipboardWorkbench {
 public:
  // What decides which of its commands are enabled.
  struct Content {
    bool hasRows = false;
    bool hasSelection = false;
    std::int64_t selectedRowCount = 0;     // whole rows
    std::int64_t selectedColumnCount = 0;  // whole columns
  };

  virtual ~ClipboardWorkbench() = default;

  virtual void refreshDataFromClipboard() = 0;
  virtual void performClipboardDataOperation(const OperationRecord& operation) = 0;
  // The operations performed so far: what a saved job of this window keeps.
  virtual const OperationList& clipboardDataOperationsArray() const = 0;
  virtual Content content() const = 0;
};

}  // namespace quillet
