// A drop of rows within their list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/index_set.h"

namespace quillet {

// Moves the elements of the rows, in ascending order and as one block, before the one that stands in the row
// now. Rows that the list does not have are passed over; a row behind the end is the end, one before the
// start the start.
template <typename Element>
void moveRows(std::vector<Element>& list, const IndexSet& rows, std::int64_t toRow) {
  std::vector<Element> before;
  std::vector<Element> moved;
  std::vector<Element> behind;
  for (std::size_t index = 0; index < list.size(); ++index) {
    const auto row = static_cast<std::int64_t>(index);
    auto& part = rows.contains(row) ? moved : row < toRow ? before : behind;
    part.push_back(std::move(list[index]));
  }
  list = std::move(before);
  list.insert(list.end(), std::make_move_iterator(moved.begin()), std::make_move_iterator(moved.end()));
  list.insert(list.end(), std::make_move_iterator(behind.begin()), std::make_move_iterator(behind.end()));
}

}  // namespace quillet
