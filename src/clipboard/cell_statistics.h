// Sums of one row or column of the grid. Nothing on screen shows them.
#pragma once

#include <cstdint>

#include "clipboard/clipboard_grid.h"

namespace quillet {

struct CellStatistics {
  std::int64_t cellCount = 0;
  double total = 0;
  double average = 0;
  double minimum = 0;
  double maximum = 0;
};

// Add to every field, never assign; so does a second call, for the average and the extremes too, which is
// meant. Where no cell is visited the minimum grows by the largest finite number and the maximum by its
// negative. An index beyond the grid visits none.
void computeRow(const ClipboardGrid& grid, std::int64_t row, CellStatistics& into);
void computeColumn(const ClipboardGrid& grid, std::uint64_t column, CellStatistics& into);

}  // namespace quillet
