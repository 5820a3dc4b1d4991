// The grid as plain lists, and what the operations on its shape do to it, step by step and by transposing:
// the reference for the real ones. And a way to write a grid down in a line: rows between "/", cells between
// " ", a blank cell as ".", a row without cells as nothing, and a grid without rows as "none".
#pragma once

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "clipboard/clipboard_grid.h"
#include "platform/index_set.h"
#include "support/random_source.h"

namespace quillet::testing {

using PlainRow = std::vector<std::u16string>;
using PlainGrid = std::vector<PlainRow>;
using Indexes = std::set<std::int64_t>;

// ---- from and to the real grid

inline ClipboardRow rowOf(const PlainRow& cells) {
  const std::vector<std::u16string_view> views(cells.begin(), cells.end());
  return ClipboardRow(views);
}

inline ClipboardGrid gridOf(const PlainGrid& plain) {
  GridBuilder rows;
  for (const PlainRow& row : plain) rows.append(rowOf(row));
  return rows.take();
}

inline PlainRow plainRow(const ClipboardRow& row) {
  PlainRow cells;
  for (std::size_t i = 0; i < row.cellCount(); ++i) cells.emplace_back(row.cell(i));
  return cells;
}

inline PlainGrid plainOf(const ClipboardGrid& grid) {
  PlainGrid plain;
  for (std::size_t i = 0; i < grid.rowCount(); ++i) plain.push_back(plainRow(grid.row(i)));
  return plain;
}

inline IndexSet setOf(const Indexes& indexes) {
  IndexSet set;
  for (const std::int64_t index : indexes) set.addIndex(index);
  return set;
}

// ---- written down

inline PlainGrid readPlain(std::string_view drawing) {
  PlainGrid plain;
  if (drawing == "none") return plain;
  plain.emplace_back();
  bool inCell = false;
  for (const char c : drawing) {
    if (c == '/') plain.emplace_back();
    const bool ends = c == '/' || c == ' ';
    if (!ends) {
      if (!inCell) plain.back().emplace_back();
      if (c != '.') plain.back().back() += static_cast<char16_t>(c);
    }
    inCell = !ends;
  }
  return plain;
}

inline ClipboardGrid readGrid(std::string_view drawing) {
  return gridOf(readPlain(drawing));
}

inline std::string drawn(const ClipboardGrid& grid) {
  if (!grid.rowCount()) return "none";
  std::string drawing;
  for (std::size_t i = 0; i < grid.rowCount(); ++i) {
    if (i) drawing += '/';
    for (std::size_t j = 0; j < grid.row(i).cellCount(); ++j) {
      if (j) drawing += ' ';
      const std::u16string_view text = grid.row(i).cell(j);
      if (text.empty()) drawing += '.';
      for (const char16_t unit : text) drawing += static_cast<char>(unit);
    }
  }
  return drawing;
}

// ---- the reference

inline std::size_t maxRowLength(const PlainGrid& grid) {
  std::size_t width = 0;
  for (const PlainRow& row : grid) width = std::max(width, row.size());
  return width;
}

inline PlainGrid transposed(const PlainGrid& grid) {
  PlainGrid result;
  for (std::size_t c = 0; c < maxRowLength(grid); ++c) {
    result.emplace_back();
    for (const PlainRow& row : grid) result.back().push_back(c < row.size() ? row[c] : u"");
  }
  return result;
}

inline Indexes inside(const Indexes& indexes, std::size_t count) {
  return {indexes.begin(), indexes.lower_bound(static_cast<std::int64_t>(count))};
}

inline PlainRow& at(PlainGrid& grid, std::int64_t index) {
  return grid[static_cast<std::size_t>(index)];
}

inline void place(const PlainGrid& objects, const Indexes& destination, PlainGrid& rows) {
  auto object = objects.begin();
  for (const std::int64_t index : destination) at(rows, index) = *object++;
}

inline PlainGrid taken(const Indexes& indexes, PlainGrid& rows) {
  PlainGrid objects;
  for (const std::int64_t index : indexes) objects.push_back(at(rows, index));
  return objects;
}

inline std::optional<Indexes> moveIndexes(const Indexes& listed, PlainGrid& rows, bool down) {
  const Indexes selected = inside(listed, rows.size());
  if (selected.empty()) return std::nullopt;
  if (down && *listed.rbegin() >= static_cast<std::int64_t>(rows.size()) - 1) return std::nullopt;
  if (!down && *listed.begin() == 0) return std::nullopt;
  const std::int64_t first = *selected.begin();
  const std::int64_t last = *selected.rbegin();
  const std::int64_t step = down ? 1 : -1;
  Indexes source{down ? last + 1 : first - 1};
  Indexes destination{down ? first : last};
  Indexes selectedDestination;
  for (std::int64_t i = first; i <= last; ++i) {
    if (selected.contains(i)) {
      selectedDestination.insert(i + step);
    } else {
      source.insert(i);
      destination.insert(i + step);
    }
  }
  const PlainGrid moved = taken(selected, rows);
  const PlainGrid jumped = taken(source, rows);
  place(moved, selectedDestination, rows);
  place(jumped, destination, rows);
  return selectedDestination;
}

inline PlainGrid mergeRows(const PlainGrid& source, const std::u16string& mergeString, Indexes& selected,
                           bool down) {
  PlainGrid result;
  if (!maxRowLength(source)) return result;
  const auto count = static_cast<std::int64_t>(source.size());
  const std::int64_t pivot = down ? *selected.rbegin() : *selected.begin();
  PlainRow merged = source[static_cast<std::size_t>(pivot)];
  merged.resize(maxRowLength(source));
  for (std::int64_t step = 0; step < count; ++step) {
    const std::int64_t i = down ? count - 1 - step : step;
    const PlainRow& row = source[static_cast<std::size_t>(i)];
    if (!selected.contains(i)) result.push_back(row);
    if (!selected.contains(i) || i == pivot) continue;
    for (std::size_t j = 0; j < row.size(); ++j)
      merged[j] = down ? row[j] + mergeString + merged[j] : merged[j] + mergeString + row[j];
  }
  if (down) std::reverse(result.begin(), result.end());
  const std::int64_t index = down ? pivot + 1 - count + static_cast<std::int64_t>(result.size()) : pivot;
  if (index < 0) return result;
  selected = {index};
  result.insert(result.begin() + index, merged);
  return result;
}

inline PlainGrid joinRows(const PlainGrid& source, std::int64_t groupSize) {
  PlainGrid result;
  const auto rowsInGroup = std::min(static_cast<std::size_t>(groupSize), source.size());
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (i % rowsInGroup == 0) result.emplace_back();
    result.back().insert(result.back().end(), source[i].begin(), source[i].end());
  }
  return result;
}

// ---- random grids

struct GridLimits {
  std::size_t rows = 7;
  std::size_t cells = 7;          // in a row
  std::size_t oneFilledCell = 2;  // in so many, on average
};

// Small ones, tall ones that need several chunks, and wide ones that are nearly blank.
inline GridLimits randomLimits(RandomSource& random) {
  static constexpr GridLimits kKinds[] = {{}, {}, {}, {}, {5, 1, 2}, {3, 0, 1}, {700, 3, 2}, {9, 90, 20}};
  return random.pick(kKinds);
}

inline PlainGrid randomPlainGrid(RandomSource& random, const GridLimits& limits) {
  static const std::u16string kTexts[] = {u"a", u"bc", u"\"", u"d e", u"\xD83D\xDE00"};
  PlainGrid plain(random.below(limits.rows + 1));
  const bool square = random.oneIn(3);
  const std::size_t width = random.below(limits.cells + 1);
  for (PlainRow& row : plain) {
    row.resize(square ? width : random.below(limits.cells + 1));
    for (std::u16string& cell : row)
      if (random.oneIn(limits.oneFilledCell)) cell = random.pick(kTexts) + random.pick(kTexts);
  }
  return plain;
}

// The same rows in chunks of many sizes.
inline ClipboardGrid randomlyChunked(RandomSource& random, const PlainGrid& plain) {
  GridBuilder whole;
  for (std::size_t next = 0; next < plain.size();) {
    const std::size_t count = std::min(1 + random.below(300), plain.size() - next);
    const auto first = plain.begin() + static_cast<std::ptrdiff_t>(next);
    const PlainGrid part(first, first + static_cast<std::ptrdiff_t>(count));
    whole.append(gridOf(part), 0, count);
    next += count;
  }
  return whole.take();
}

inline Indexes randomIndexes(RandomSource& random, std::size_t count) {
  Indexes indexes;
  for (std::size_t i = random.below(5); i > 0; --i)
    indexes.insert(static_cast<std::int64_t>(random.below(count + (random.oneIn(3) ? 3 : 0) + 1)));
  if (random.oneIn(4) && !indexes.empty())
    for (std::int64_t i = 0; i < 3; ++i) indexes.insert(*indexes.begin() + i);
  return indexes;
}

// The grid is this one: its rows, its numbers, and the form that it is kept in.
inline bool matches(const ClipboardGrid& grid, const PlainGrid& plain) {
  return grid.rowCount() == plain.size() && grid.maxRowLength() == maxRowLength(plain) &&
         plainOf(grid) == plain && grid == gridOf(plain);
}

// Calls check(random, plain, grid) with random grids.
template <typename Check>
void withRandomGrids(std::uint64_t stream, Check check) {
  RandomSource random(stream);
  for (std::uint64_t round = rounds(300); round > 0; --round) {
    const PlainGrid plain = randomPlainGrid(random, randomLimits(random));
    check(random, plain, randomlyChunked(random, plain));
    if (::testing::Test::HasFailure()) return;
  }
}

}  // namespace quillet::testing
