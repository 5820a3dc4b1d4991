// What one use of the engine puts into the preview stores: all of it in a preview, a bounded head in a run.
#pragma once

#include <string_view>

#include "engine/column_stage.h"
#include "engine/preview_stores.h"

namespace quillet {

class PreviewFeed {
 public:
  enum class Extent { Everything, Head };

  // stores outlives the feed.
  PreviewFeed(PreviewStores& stores, Extent extent) : stores_(stores), bounded_(extent == Extent::Head) {}

  PreviewStores& stores() { return stores_; }

  bool takesRows(PreviewStores::Side side) const {
    const Fill& fill = fillOf(side);
    return !bounded_ || (fill.rows < kMostRows && fill.units < kMostRowUnits);
  }
  // moreInput: the cells of the line as it was read, of a file that is not split into lines; null for one
  // that is.
  void addRow(PreviewStores::Side side, const OutputCells& cells, const Cells* moreInput);

  bool takesOutput() const { return !bounded_ || outputUnits_ < PreviewStores::kTextUnits; }
  void appendOutput(std::u16string_view text);

 private:
  static constexpr std::size_t kMostRows = 1'000;
  static constexpr std::size_t kMostRowUnits =
      2'097'152;  // of all rows: some hundred lines of the longest kind

  struct Fill {
    std::size_t rows = 0;
    std::size_t units = 0;
  };
  const Fill& fillOf(PreviewStores::Side side) const {
    return side == PreviewStores::Side::Input ? input_ : output_;
  }

  PreviewStores& stores_;
  bool bounded_;
  Fill input_;
  Fill output_;
  std::size_t outputUnits_ = 0;
};

}  // namespace quillet
