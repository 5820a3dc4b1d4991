// The text form of a selection, read by the plain rule: cut, look, add, in the order of the text.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include "clipboard/two_dimensional_mutable_index_set.h"
#include "platform/numbers.h"
#include "platform/text_search.h"

namespace quillet::testing {

inline std::int64_t indexOfNumber(std::int64_t number) {
  return number == std::numeric_limits<std::int64_t>::min() ? number : number - 1;
}

inline void readCellPlainly(std::u16string_view item, TwoDimensionalMutableIndexSet& into) {
  const auto parts = componentsSeparatedByString(item, u",");
  if (parts.size() != 2 || !hasPrefix(parts[0], u"(") || !hasSuffix(parts[1], u")")) return;
  into.addRowIndex(indexOfNumber(integerValue(parts[0].substr(1))), indexOfNumber(integerValue(parts[1])));
}

template <typename AddIndex, typename AddRange>
void readRunsPlainly(std::u16string_view runs, AddIndex addIndex, AddRange addRange) {
  for (const std::u16string_view run : componentsSeparatedByString(runs, u", ")) {
    const auto parts = componentsSeparatedByString(run, u" - ");
    const std::int64_t first = integerValue(parts[0]);
    if (parts.size() == 1) {
      addIndex(indexOfNumber(first));
    } else if (parts.size() == 2 && integerValue(parts[1]) > first) {
      const std::int64_t start = std::max<std::int64_t>(first, 1);  // numbers below 1 name nothing
      addRange(start - 1, integerValue(parts[1]) - start + 1);
    }
  }
}

inline TwoDimensionalMutableIndexSet readPlainly(std::u16string_view cellString) {
  using Set = TwoDimensionalMutableIndexSet;
  Set set;
  for (const std::u16string_view piece : componentsSeparatedByString(cellString, u"; ")) {
    if (hasPrefix(piece, u"Cells: ")) {
      for (const auto item : componentsSeparatedByString(piece.substr(7), u"+")) readCellPlainly(item, set);
    } else if (hasPrefix(piece, u"Lines: ")) {
      readRunsPlainly(
          piece.substr(7), [&](auto row) { set.addInfiniteRowIndex(row); },
          [&](auto location, auto length) { set.addInfiniteRowIndexesInRange(location, length); });
    } else if (hasPrefix(piece, u"Columns: ")) {
      readRunsPlainly(
          piece.substr(9), [&](auto column) { set.addInfiniteColumnIndex(column); },
          [&](auto location, auto length) { set.addInfiniteColumnIndexesInRange(location, length); });
    }
  }
  return set;
}

}  // namespace quillet::testing
