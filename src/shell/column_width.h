// How wide a column is made by a double click on its divider.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "shell/controls.h"

namespace quillet {

// The width of a text in the fixed-width font, in logical pixels. What shows the table knows it.
using TextWidth = std::function<int(std::u16string_view text)>;

// The width for the widest of the cells in sight, in logical pixels. Rows and columns count from 0; those
// beyond the table have no cells.
int tableViewSizeToFitWidthOfColumn(const Table& table, std::size_t column, std::size_t firstRowInSight,
                                    std::size_t rowsInSight, const TextWidth& textWidth);

}  // namespace quillet
