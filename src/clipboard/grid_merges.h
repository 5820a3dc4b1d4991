// Folding several rows, or columns, of the grid into one, with a text between the cells.
#pragma once

#include <string_view>

#include "clipboard/clipboard_grid.h"
#include "platform/index_set.h"

namespace quillet {

struct MergedGrid {
  ClipboardGrid grid;
  IndexSet indexes;  // where the merged row or column is; as given when nothing was merged
};

// The merged row takes the place of the first one, or, down, of the last one; the text goes from top to
// bottom in both cases. Cells that a row lacks add nothing. A grid of width 0 loses all rows, which is meant.
// Indexes beyond the grid are passed over; when all are, the grid stays as it is.
MergedGrid mergeRows(const ClipboardGrid& grid, std::u16string_view mergeString, const IndexSet& rows,
                     bool down);

// The same for columns, down being to the right. All rows of the result are of one length, as a grid is
// transposed to merge its columns, which is meant.
MergedGrid mergeColumns(const ClipboardGrid& grid, std::u16string_view mergeString, const IndexSet& columns,
                        bool down);

}  // namespace quillet
