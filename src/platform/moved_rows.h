// Moves rows of a list to another place of it, as a drag and drop does.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/index_set.h"

namespace quillet {

// The list with the rows at the indexes, in their order, as one block before the row (from 0, as it counts
// before the move). Indexes beyond the list are passed over; a row outside of it is its nearest end. Takes
// linear time.
template <typename Row>
std::vector<Row> withRowsMoved(std::vector<Row> rows, const IndexSet& indexes, std::int64_t row) {
  const auto count = static_cast<std::int64_t>(rows.size());
  row = std::clamp<std::int64_t>(row, 0, count);
  std::vector<Row> above, moved, below;
  std::int64_t next = 0;
  const auto passTo = [&](std::int64_t end) {
    for (; next < end; ++next)
      (next < row ? above : below).push_back(std::move(rows[static_cast<std::size_t>(next)]));
  };
  for (const auto& range : indexes.ranges()) {
    passTo(std::min(range.first, count));
    for (; next <= range.last && next < count; ++next)
      moved.push_back(std::move(rows[static_cast<std::size_t>(next)]));
  }
  passTo(count);
  above.insert(above.end(), std::make_move_iterator(moved.begin()), std::make_move_iterator(moved.end()));
  above.insert(above.end(), std::make_move_iterator(below.begin()), std::make_move_iterator(below.end()));
  return above;
}

}  // namespace quillet
