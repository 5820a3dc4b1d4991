// Leaving out rows and columns of the grid. Indexes beyond it are passed over; an empty set leaves the grid
// as it is.
#pragma once

#include "clipboard/clipboard_grid.h"
#include "platform/index_set.h"

namespace quillet {

ClipboardGrid withoutRows(const ClipboardGrid& grid, const IndexSet& rows);
ClipboardGrid withoutColumns(const ClipboardGrid& grid, const IndexSet& columns);

}  // namespace quillet
