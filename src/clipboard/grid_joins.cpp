#include "clipboard/grid_joins.h"

#include <utility>
#include <vector>

namespace quillet {

namespace {

constexpr std::int64_t kSmallestGroup = 2;

std::size_t cappedGroupSize(std::int64_t groupSize, std::size_t count) {
  return std::min(static_cast<std::size_t>(groupSize), count);
}

// Calls visit(position, text) for what is not blank of every groupSize-th cell from the column on. By the
// cells that are stored where those are fewer: a wide row may have a text at its end, and nothing before.
template <typename Visit>
void forEachNthFilledCell(const ClipboardRow& row, std::size_t column, std::size_t groupSize, Visit visit) {
  const std::size_t end = row.endOfTexts();
  if (row.storedCellCount() < end / groupSize) {
    row.forEachStoredCell(column, end, [&](std::size_t i, std::u16string_view text) {
      if ((i - column) % groupSize == 0 && !text.empty()) visit((i - column) / groupSize, text);
    });
    return;
  }
  std::size_t position = 0;
  for (std::size_t i = column; i < end; i += groupSize, ++position)
    if (const auto text = row.cell(i); !text.empty()) visit(position, text);
}

// Every groupSize-th cell of the row, from the column on; cellCount cells in all.
ClipboardRow everyNthCell(const ClipboardRow& row, std::size_t column, std::size_t groupSize,
                          std::size_t cellCount) {
  RowSize size{.cellCount = cellCount};
  forEachNthFilledCell(row, column, groupSize,
                       [&](std::size_t i, std::u16string_view text) { size.addFilledCell(i, text.size()); });
  RowWriter writer(size);
  forEachNthFilledCell(row, column, groupSize,
                       [&](std::size_t i, std::u16string_view text) { writer.write(i, text); });
  return writer.take();
}

// For each place in a group, whether a column there has a text.
std::vector<bool> placesWithTexts(const ClipboardGrid& grid, std::size_t groupSize) {
  std::vector<bool> places(groupSize);
  std::size_t blankPlaces = groupSize;
  grid.forEachRow([&](const ClipboardRow& row) {
    for (std::size_t i = 0; blankPlaces > 0 && i < row.storedCellCount(); ++i) {
      const auto [column, text] = row.storedCell(i);
      const std::size_t place = column % groupSize;
      if (text.empty() || places[place]) continue;
      places[place] = true;
      --blankPlaces;
    }
  });
  return places;
}

}  // namespace

ClipboardGrid joinConsecutiveRows(const ClipboardGrid& grid, std::int64_t groupSize) {
  if (groupSize < kSmallestGroup) return grid;
  const std::size_t rowsInGroup = cappedGroupSize(groupSize, grid.rowCount());
  GridBuilder joined;
  RowBuilder builder;
  std::size_t rowsInBuilder = 0;
  const auto takeGroup = [&] {
    joined.append(builder.take());
    rowsInBuilder = 0;
  };
  grid.forEachRow([&](const ClipboardRow& row) {
    builder.append(row);
    if (++rowsInBuilder == rowsInGroup) takeGroup();
  });
  if (rowsInBuilder) takeGroup();
  return joined.take();
}

ClipboardGrid joinConsecutiveColumns(const ClipboardGrid& grid, std::int64_t groupSize) {
  if (groupSize < kSmallestGroup) return grid;
  const std::size_t width = grid.maxRowLength();
  if (!width) return {};  // transposed there is nothing to join
  const std::size_t columnsInGroup = cappedGroupSize(groupSize, width);
  const std::size_t groups = (width + columnsInGroup - 1) / columnsInGroup;
  requireRoomFor(grid.rowCount() * columnsInGroup);
  RowBuilder builder;
  builder.appendBlanks(groups);
  const ClipboardRow blankRow = builder.take();
  GridBuilder joined;
  // The first columns of all groups make the first rows, the second columns those below, and so on. Making
  // the rows in their order keeps them in the order of memory, which is worth the walks over the grid.
  const std::vector<bool> hasTexts = placesWithTexts(grid, columnsInGroup);
  std::size_t blankRows = 0;  // still to be appended; a grid can have a million columns for one text
  for (std::size_t k = 0; k < columnsInGroup; ++k) {
    if (!hasTexts[k]) {
      blankRows += grid.rowCount();
      continue;
    }
    joined.append(blankRow, std::exchange(blankRows, 0));
    grid.forEachRow([&](const ClipboardRow& row) {
      const bool blank = k >= row.endOfTexts();
      joined.append(blank ? blankRow : everyNthCell(row, k, columnsInGroup, groups));
    });
  }
  joined.append(blankRow, blankRows);
  return joined.take();
}

}  // namespace quillet
