// Cells of the preview's tables that the line does not have. What draws a cell knows it by its tag alone.
#pragma once

#include <cstdint>

#include "engine/preview_stores.h"

namespace quillet {

// The tag of a cell of a shown row; both count from 0, and column 0 is that of the line numbers.
std::int64_t previewCellTag(PreviewStores::Side side, std::int64_t row, std::int64_t column);

// Whether the cell of this tag gets a frame. -1 stands for no cell. The row is taken as that of the store,
// whichever line the tables begin with: this is meant.
bool previewTableCellViewIsEmpty(const PreviewStores& stores, std::int64_t tag);

}  // namespace quillet
