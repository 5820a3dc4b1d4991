// Joining each run of so many rows, or columns, into one.
#pragma once

#include <cstdint>

#include "clipboard/clipboard_grid.h"

namespace quillet {

// Each run of groupSize rows becomes one row, their cells end to end; the last run may be shorter. A group
// size below 2 changes nothing.
ClipboardGrid joinConsecutiveRows(const ClipboardGrid& grid, std::int64_t groupSize);

// The mirror of it, made by transposition: the columns of a group are stacked in one column, the k-th below
// the one before, which is meant. The last group is padded with blank cells at the bottom.
ClipboardGrid joinConsecutiveColumns(const ClipboardGrid& grid, std::int64_t groupSize);

}  // namespace quillet
