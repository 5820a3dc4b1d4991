// Moving rows and columns of the grid by one place, each in its own gap: with rows a b c d e, b and d moved
// down give a c b e d.
#pragma once

#include <optional>

#include "clipboard/clipboard_grid.h"
#include "platform/index_set.h"

namespace quillet {

struct MovedGrid {
  ClipboardGrid grid;
  IndexSet indexes;  // where the moved rows or columns are now
};

// Nothing when there is none to move, or one of them stands at the edge that they move to (down: at or past
// the last one); then none moves. Indexes beyond the grid are passed over otherwise.
std::optional<MovedGrid> moveRows(const ClipboardGrid& grid, const IndexSet& rows, bool down);

// The same for columns, down being to the right. All rows of the result have the width of the grid, as a grid
// is transposed to move its columns, which is meant.
std::optional<MovedGrid> moveColumns(const ClipboardGrid& grid, const IndexSet& columns, bool down);

}  // namespace quillet
