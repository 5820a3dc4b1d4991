// How wide a double click on a divider makes a column of a view.
#pragma once

#include <cstddef>

#include "shell/controls.h"
#include "ui/table_view.h"

namespace quillet::ui {

// For the cells in sight, in logical pixels. The column counts among those of the table; a view that draws
// its texts further apart than a grid does gives the space that it adds.
int fittedWidth(const TableView& view, const Table& table, std::size_t column, int addedSpace = 0);

}  // namespace quillet::ui
