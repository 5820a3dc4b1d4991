// Taking a row or a column off an edge of the grid, or adding a blank one to it.
#pragma once

#include "clipboard/clipboard_grid.h"

namespace quillet {

ClipboardGrid withoutFirstColumn(const ClipboardGrid& grid);
// Only rows of full width lose a cell, which is meant.
ClipboardGrid withoutLastColumn(const ClipboardGrid& grid);
ClipboardGrid withoutFirstRow(const ClipboardGrid& grid);
ClipboardGrid withoutLastRow(const ClipboardGrid& grid);

// A grid of width 0 becomes one row of one blank cell; its empty rows are dropped, which is meant.
ClipboardGrid withBlankColumnFirst(const ClipboardGrid& grid);  // short rows stay short
ClipboardGrid withBlankColumnLast(const ClipboardGrid& grid);   // all rows get the width plus 1
// The new row has as many cells as the grid is wide, 1 at least.
ClipboardGrid withBlankRowFirst(const ClipboardGrid& grid);
ClipboardGrid withBlankRowLast(const ClipboardGrid& grid);

}  // namespace quillet
