#include "shell/preview_cells.h"

namespace quillet {

namespace {

constexpr std::int64_t kTagsOfRow = 65'536;
constexpr std::int64_t kRowOfOutput = 1'000;
constexpr std::int64_t kFirstTagOfOutput = kRowOfOutput * kTagsOfRow;

}  // namespace

std::int64_t previewCellTag(PreviewStores::Side side, std::int64_t row, std::int64_t column) {
  const std::int64_t tag = column + row * kTagsOfRow;
  return side == PreviewStores::Side::Output ? tag + kFirstTagOfOutput : tag;
}

bool previewTableCellViewIsEmpty(const PreviewStores& stores, std::int64_t tag) {
  if (tag < 0) return tag != -1;
  const bool isOutput = tag >= kFirstTagOfOutput;
  const std::int64_t row = tag / kTagsOfRow - (isOutput ? kRowOfOutput : 0);
  const std::int64_t column = tag % kTagsOfRow;
  const auto cells = stores.cellCount(isOutput ? PreviewStores::Side::Output : PreviewStores::Side::Input,
                                      static_cast<std::size_t>(row));
  return !cells || column - 1 >= static_cast<std::int64_t>(*cells);
}

}  // namespace quillet
