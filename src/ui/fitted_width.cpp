#include "ui/fitted_width.h"

#include <algorithm>

#include "shell/column_width.h"
#include "ui/text_conversion.h"

namespace quillet::ui {

int fittedWidth(const TableView& view, const Table& table, std::size_t column, int addedSpace) {
  const QFontMetrics metrics(view.font());
  const auto first = static_cast<std::size_t>(std::max(view.rowAt(0), 0));
  const int inSight = view.viewport()->height() / std::max(view.rowHeight(0), 1) + 1;
  return tableViewSizeToFitWidthOfColumn(
      table, column, first, static_cast<std::size_t>(inSight),
      [&](std::u16string_view text) { return metrics.horizontalAdvance(qString(text)) + addedSpace; });
}

}  // namespace quillet::ui
