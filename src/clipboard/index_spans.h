// Index sets as the places of rows or columns in a list of so many, counted from 0.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/index_set.h"

namespace quillet {

struct IndexSpan {
  std::size_t first = 0;
  std::size_t end = 0;  // exclusive, above first

  bool operator==(const IndexSpan&) const = default;
};

// The indexes below the count, in ascending spans that do not touch.
std::vector<IndexSpan> spansBelow(const IndexSet& indexes, std::size_t count);
// The places from first up to end that are in none of the spans, which ascend.
std::vector<IndexSpan> gapsBetween(const std::vector<IndexSpan>& spans, std::size_t first, std::size_t end);

}  // namespace quillet
