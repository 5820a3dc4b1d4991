// What one use of the engine puts into the preview stores: all of it in a preview, a bounded head in a run. A
// preview has a bound, too, which only a list made for it reaches: thousands of added columns of long texts.
#pragma once

#include <cstddef>
#include <limits>
#include <string_view>

#include "engine/column_stage.h"
#include "engine/preview_stores.h"

namespace quillet {

class PreviewFeed {
 public:
  enum class Extent { Everything, Head };

  // stores outlives the feed.
  PreviewFeed(PreviewStores& stores, Extent extent)
      : stores_(stores), limits_(extent == Extent::Head ? kHead : kEverything) {}

  PreviewStores& stores() { return stores_; }

  bool takesRows(PreviewStores::Side side) const {
    const Fill& fill = fillOf(side);
    return fill.rows < limits_.rows && fill.units < limits_.rowUnits;
  }
  // moreInput: the cells of the line as it was read, of a file that is not split into lines; null for one
  // that is.
  void addRow(PreviewStores::Side side, const OutputCells& cells, const Cells* moreInput);

  bool takesOutput() const { return outputUnits_ < limits_.outputUnits; }
  void appendOutput(std::u16string_view text);

 private:
  struct Limits {
    std::size_t rows;
    std::size_t rowUnits;  // of all rows of a side
    std::size_t outputUnits;
  };
  static constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();
  // Some hundred lines of the longest kind.
  static constexpr Limits kHead = {1'000, 2'097'152, PreviewStores::kTextUnits};
  static constexpr Limits kEverything = {kAnyNumber, 33'554'432, 33'554'432};

  struct Fill {
    std::size_t rows = 0;
    std::size_t units = 0;
  };
  const Fill& fillOf(PreviewStores::Side side) const {
    return side == PreviewStores::Side::Input ? input_ : output_;
  }

  PreviewStores& stores_;
  Limits limits_;
  Fill input_;
  Fill output_;
  std::size_t outputUnits_ = 0;
};

}  // namespace quillet
