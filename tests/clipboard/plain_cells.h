// A grid as plain lists of texts, for tests that follow the rules step by step.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "clipboard/clipboard_grid.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet::testing {

using PlainCells = std::vector<std::vector<std::u16string>>;

inline ClipboardGrid gridOfPlainCells(const PlainCells& rows) {
  GridBuilder result;
  RowBuilder builder;
  for (const auto& row : rows) {
    for (const std::u16string& cell : row) builder.append(cell);
    result.append(builder.take());
  }
  return result.take();
}

inline PlainCells plainCellsOf(const ClipboardGrid& grid) {
  PlainCells result;
  grid.forEachRow([&](const ClipboardRow& row) {
    auto& cells = result.emplace_back();
    for (std::size_t column = 0; column < row.cellCount(); ++column) cells.emplace_back(row.cell(column));
  });
  return result;
}

// "[ab|c][]" for two rows, of which the second has one empty cell; a row without cells is "()".
inline std::string shownPlainCells(const PlainCells& rows) {
  std::string result;
  for (const auto& row : rows) {
    std::string cells;
    for (const std::u16string& cell : row) {
      cells += cells.empty() ? "[" : "|";
      cells += toUtf8(cell);
    }
    result += row.empty() ? "()" : cells + "]";
  }
  return result;
}

// Ragged, with cells of up to maximumParts parts of the alphabet.
template <typename Alphabet>
PlainCells randomPlainCells(RandomSource& random, std::size_t rowCount, std::size_t maximumColumns,
                            const Alphabet& alphabet, std::size_t maximumParts) {
  PlainCells rows(rowCount);
  for (auto& row : rows)
    for (std::size_t i = random.below(maximumColumns + 1); i > 0; --i)
      row.push_back(random.text(alphabet, maximumParts));
  return rows;
}

}  // namespace quillet::testing
