// The operations that change the texts of cells and leave the shape of the grid. The cells are named by the
// record, as a cell string; those that do not exist are passed over.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "clipboard/clipboard_grid.h"
#include "operations/operation_record.h"

namespace quillet {

ClipboardGrid withCellsTrimmed(const ClipboardGrid& grid, const OperationRecord& operation);   // 311
ClipboardGrid withCellsReplaced(const ClipboardGrid& grid, const OperationRecord& operation);  // 312
ClipboardGrid withCellsFilled(const ClipboardGrid& grid, const OperationRecord& operation);    // 314

// 401. Nothing when the record's row is not one of the grid, or its column is negative or not below
// 1,048,576. A row that is too short gets blank cells up to the column.
std::optional<ClipboardGrid> withCellEdited(const ClipboardGrid& grid, const OperationRecord& operation);

// Every run of white space as one blank, none at the ends. No operation asks for it.
std::u16string stringByCondensingCharacters(std::u16string_view text);

}  // namespace quillet
