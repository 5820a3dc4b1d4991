#include "clipboard/grid_moves.h"

#include <vector>

#include "clipboard/index_spans.h"

namespace quillet {

namespace {

// Two neighbours that change places: [first, middle) and [middle, end). One of them is a run of what moves,
// the other the single one that it jumps over.
struct Swap {
  std::size_t first = 0;
  std::size_t middle = 0;
  std::size_t end = 0;
};

struct Moves {
  std::vector<Swap> swaps;  // ascending, none touching another's places
  IndexSet indexes;         // afterwards, of what moves
};

std::optional<Moves> planMoves(const IndexSet& indexes, std::size_t count, bool down) {
  const auto spans = spansBelow(indexes, count);
  if (spans.empty()) return std::nullopt;
  const bool atEdge = down ? indexes.lastIndex() >= static_cast<std::int64_t>(count) - 1 : !spans[0].first;
  if (atEdge) return std::nullopt;
  Moves moves;
  for (const auto& [first, end] : spans) {
    moves.swaps.push_back(down ? Swap{first, end, end + 1} : Swap{first - 1, first, end});
    const auto movedFirst = static_cast<std::int64_t>(down ? first + 1 : first - 1);
    moves.indexes.addRange(movedFirst, movedFirst + static_cast<std::int64_t>(end - first) - 1);
  }
  return moves;
}

// Pads the row to the width, as far as its cells move over the end of it.
void appendWithCellsMoved(const ClipboardRow& row, const std::vector<Swap>& swaps, RowBuilder& builder) {
  std::size_t next = 0;
  for (const auto& [first, middle, end] : swaps) {
    if (first >= row.endOfTexts()) break;  // only blank cells from here on
    builder.append(row, next, first);
    builder.append(row, middle, end);
    builder.padTo(first + end - middle);
    builder.append(row, first, middle);
    builder.padTo(end);
    next = end;
  }
  builder.append(row, next, row.cellCount());
}

}  // namespace

std::optional<MovedGrid> moveRows(const ClipboardGrid& grid, const IndexSet& rows, bool down) {
  const auto moves = planMoves(rows, grid.rowCount(), down);
  if (!moves) return std::nullopt;
  GridBuilder moved;
  std::size_t next = 0;
  for (const auto& [first, middle, end] : moves->swaps) {
    moved.append(grid, next, first);
    moved.append(grid, middle, end);
    moved.append(grid, first, middle);
    next = end;
  }
  moved.append(grid, next, grid.rowCount());
  return MovedGrid{moved.take(), moves->indexes};
}

std::optional<MovedGrid> moveColumns(const ClipboardGrid& grid, const IndexSet& columns, bool down) {
  const std::size_t width = grid.maxRowLength();
  const auto moves = planMoves(columns, width, down);
  if (!moves) return std::nullopt;
  return MovedGrid{withRowsRebuilt(grid,
                                   [&](const ClipboardRow& row, RowBuilder& builder) {
                                     appendWithCellsMoved(row, moves->swaps, builder);
                                     builder.padTo(width);
                                   }),
                   moves->indexes};
}

}  // namespace quillet
