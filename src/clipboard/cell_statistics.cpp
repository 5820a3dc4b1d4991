#include "clipboard/cell_statistics.h"

#include <algorithm>
#include <limits>

#include "clipboard/field_value.h"

namespace quillet {

namespace {

class Sums {
 public:
  void visit(std::u16string_view cell) {
    const double value = doubleValueFromFieldValue(cell);
    ++count_;
    sum_ += value;
    minimum_ = std::min(minimum_, value);
    maximum_ = std::max(maximum_, value);
  }

  void addTo(CellStatistics& into) const {
    into.cellCount += count_;
    into.total += sum_;
    into.average += count_ ? sum_ / static_cast<double>(count_) : 0.0;
    into.minimum += minimum_;
    into.maximum += maximum_;
  }

 private:
  std::int64_t count_ = 0;
  double sum_ = 0;
  double minimum_ = std::numeric_limits<double>::max();
  double maximum_ = std::numeric_limits<double>::lowest();
};

}  // namespace

void computeRow(const ClipboardGrid& grid, std::int64_t row, CellStatistics& into) {
  Sums sums;
  if (row >= 0 && static_cast<std::uint64_t>(row) < grid.rowCount()) {
    const ClipboardRow& cells = grid.row(static_cast<std::size_t>(row));
    for (std::size_t column = 0; column < cells.cellCount(); ++column) sums.visit(cells.cell(column));
  }
  sums.addTo(into);
}

void computeColumn(const ClipboardGrid& grid, std::uint64_t column, CellStatistics& into) {
  Sums sums;
  grid.forEachRow([&](const ClipboardRow& row) {
    if (column < row.cellCount()) sums.visit(row.cell(static_cast<std::size_t>(column)));
  });
  sums.addTo(into);
}

}  // namespace quillet
