#include "clipboard/grid_merges.h"

#include <string>
#include <vector>

#include "clipboard/index_spans.h"

namespace quillet {

namespace {

// How the rows or columns of a list are merged.
struct Merge {
  std::vector<IndexSpan> merged;      // at least one
  std::vector<IndexSpan> keptBefore;  // those that stay, before the pivot
  std::vector<IndexSpan> keptAfter;
  std::size_t pivot = 0;       // in the list as it is
  std::size_t place = 0;       // of the merged one, in the new list
  std::size_t countAfter = 0;  // of the new list
};

Merge planMerge(std::vector<IndexSpan> merged, std::size_t count, bool down) {
  Merge merge;
  merge.pivot = down ? merged.back().end - 1 : merged.front().first;
  merge.keptBefore = gapsBetween(merged, 0, merge.pivot);
  merge.keptAfter = gapsBetween(merged, merge.pivot + 1, count);
  for (const IndexSpan& span : merge.keptBefore) merge.place += span.end - span.first;
  merge.countAfter = merge.place + 1;
  for (const IndexSpan& span : merge.keptAfter) merge.countAfter += span.end - span.first;
  merge.merged = std::move(merged);
  return merge;
}

IndexSet placeOf(const Merge& merge) {
  return IndexSet{static_cast<std::int64_t>(merge.place)};
}

// Puts rows together from top to bottom.
class MergedRow {
 public:
  MergedRow(std::size_t width, std::u16string_view mergeString) : cells_(width), mergeString_(mergeString) {}

  // A cell that the row lacks adds nothing, not even the merge text, which is meant.
  void add(const ClipboardRow& row) {
    if (mergeString_.empty()) return addTexts(row);
    for (std::size_t column = 0; column < row.cellCount(); ++column) add(column, row.cell(column));
  }
  // All cells of the pivot row are there.
  void addPivot(const ClipboardRow& row) {
    if (mergeString_.empty()) return addTexts(row);
    for (std::size_t column = 0; column < cells_.size(); ++column) add(column, row.cell(column));
  }

  ClipboardRow row() const {
    std::vector<std::u16string_view> texts;
    texts.reserve(cells_.size());
    for (const Cell& cell : cells_) texts.emplace_back(cell.text);
    return ClipboardRow(texts);
  }

 private:
  struct Cell {
    std::u16string text;
    bool begun = false;
  };

  void add(std::size_t column, std::u16string_view text) {
    Cell& cell = cells_[column];
    if (cell.begun) cell.text += mergeString_;
    cell.text += text;
    cell.begun = true;
  }
  // Without a merge text the blank cells of a wide grid need no visit.
  void addTexts(const ClipboardRow& row) {
    for (std::size_t i = 0; i < row.storedCellCount(); ++i) {
      const auto [column, text] = row.storedCell(i);
      cells_[column].text += text;
    }
  }

  std::vector<Cell> cells_;
  std::u16string_view mergeString_;
};

ClipboardRow mergedRow(const ClipboardGrid& grid, std::u16string_view mergeString, const Merge& merge) {
  MergedRow merged(grid.maxRowLength(), mergeString);
  for (const auto& [first, end] : merge.merged) {
    for (std::size_t i = first; i < end; ++i) {
      if (i == merge.pivot)
        merged.addPivot(grid.row(i));
      else
        merged.add(grid.row(i));
    }
  }
  return merged.row();
}

// Without a merge text only what is stored needs a visit.
void mergeTexts(const ClipboardRow& row, const Merge& merge, std::u16string& text) {
  for (const auto& [first, end] : merge.merged) {
    if (first >= row.endOfTexts()) break;
    row.forEachStoredCell(first, end, [&](std::size_t, std::u16string_view cell) { text += cell; });
  }
}

// A row that lacks some of the columns has blank cells there, which do get the merge text, as transposing
// makes them.
void mergeCells(const ClipboardRow& row, std::u16string_view mergeString, const Merge& merge,
                std::u16string& text) {
  text.clear();
  if (mergeString.empty()) return mergeTexts(row, merge, text);
  for (const auto& [first, end] : merge.merged) {
    for (std::size_t column = first; column < end; ++column) {
      if (column > merge.merged.front().first) text += mergeString;
      text += row.cell(column);
    }
  }
}

void appendSpans(const ClipboardRow& row, const std::vector<IndexSpan>& spans, RowBuilder& builder) {
  for (const auto& [first, end] : spans) {
    if (first >= row.endOfTexts()) break;  // only blank cells from here on
    builder.append(row, first, end);
  }
}

}  // namespace

MergedGrid mergeRows(const ClipboardGrid& grid, std::u16string_view mergeString, const IndexSet& rows,
                     bool down) {
  if (!grid.maxRowLength()) return {{}, rows};
  auto inside = spansBelow(rows, grid.rowCount());
  if (inside.empty()) return {grid, rows};
  requireRoomFor(grid.maxRowLength());
  const Merge merge = planMerge(std::move(inside), grid.rowCount(), down);
  GridBuilder result;
  for (const auto& [first, end] : merge.keptBefore) result.append(grid, first, end);
  result.append(mergedRow(grid, mergeString, merge));
  for (const auto& [first, end] : merge.keptAfter) result.append(grid, first, end);
  return {result.take(), placeOf(merge)};
}

MergedGrid mergeColumns(const ClipboardGrid& grid, std::u16string_view mergeString, const IndexSet& columns,
                        bool down) {
  if (!grid.maxRowLength()) return {{}, columns};
  auto inside = spansBelow(columns, grid.maxRowLength());
  if (inside.empty()) return {grid, columns};
  const Merge merge = planMerge(std::move(inside), grid.maxRowLength(), down);
  std::u16string text;
  return {withRowsRebuilt(grid,
                          [&](const ClipboardRow& row, RowBuilder& builder) {
                            mergeCells(row, mergeString, merge, text);
                            appendSpans(row, merge.keptBefore, builder);
                            builder.padTo(merge.place);
                            builder.append(text);
                            appendSpans(row, merge.keptAfter, builder);
                            builder.padTo(merge.countAfter);
                          }),
          placeOf(merge)};
}

}  // namespace quillet
