#include "engine/preview_feed.h"

#include <optional>

#include "text/text_writer.h"

namespace quillet {

void PreviewFeed::addRow(PreviewStores::Side side, const OutputCells& cells, const Cells* moreInput) {
  PreviewStores::Row row;
  row.reserve(cells.cells.size());
  Fill& fill = side == PreviewStores::Side::Input ? input_ : output_;
  TextBuffer quoted(64);
  for (std::size_t i = 0; i < cells.cells.size(); ++i) {
    quoted.clear();
    appendJoined(cells.cells.subspan(i, 1), {}, i < cells.quotedCount ? 1 : 0, quoted);
    row.emplace_back(quoted.view());
    fill.units += quoted.size() + 32;  // the text, and about what holds it
  }
  ++fill.rows;
  if (!moreInput) return stores_.addRow(side, std::move(row));
  std::optional<std::u16string> more;
  if (!moreInput->empty()) more.emplace(moreInput->front());
  stores_.growFirstRow(side, std::move(row), more ? &*more : nullptr);
}

void PreviewFeed::appendOutput(std::u16string_view text) {
  if (!takesOutput()) return;
  text = text.substr(0, limits_.outputUnits - outputUnits_);
  outputUnits_ += text.size();
  stores_.appendOutput(text);
}

}  // namespace quillet
