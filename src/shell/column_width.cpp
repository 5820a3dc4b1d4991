#include "shell/column_width.h"

#include <algorithm>

namespace quillet {

namespace {

constexpr int kAroundText = 6;
constexpr int kLeastWidth = 40;

}  // namespace

int tableViewSizeToFitWidthOfColumn(const Table& table, std::size_t column, std::size_t firstRowInSight,
                                    std::size_t rowsInSight, const TextWidth& textWidth) {
  int width = kLeastWidth;
  const std::size_t first = std::min(firstRowInSight, table.rowCount());
  const std::size_t count = std::min(rowsInSight, table.rowCount() - first);
  for (std::size_t row = first; row < first + count; ++row)
    width = std::max(width, textWidth(table.cell(row, column)) + kAroundText);
  return width;
}

}  // namespace quillet
