// Mirroring the grid.
#pragma once

#include "clipboard/clipboard_grid.h"

namespace quillet {

// Left and right swapped: each row is padded to the width, then reversed, so the padding comes first.
ClipboardGrid flippedHorizontally(const ClipboardGrid& grid);
ClipboardGrid flippedVertically(const ClipboardGrid& grid);  // rows keep their lengths
// Transposed: as many rows as the grid is wide, each with as many cells as the grid has rows.
ClipboardGrid flippedDiagonally(const ClipboardGrid& grid);

}  // namespace quillet
