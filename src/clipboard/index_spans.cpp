#include "clipboard/index_spans.h"

#include <algorithm>

namespace quillet {

std::vector<IndexSpan> spansBelow(const IndexSet& indexes, std::size_t count) {
  std::vector<IndexSpan> spans;
  for (const IndexSet::Range& range : indexes.ranges()) {
    const auto first = static_cast<std::size_t>(range.first);
    if (first >= count) break;
    spans.push_back({first, std::min(static_cast<std::size_t>(range.last) + 1, count)});
  }
  return spans;
}

std::vector<IndexSpan> gapsBetween(const std::vector<IndexSpan>& spans, std::size_t first, std::size_t end) {
  std::vector<IndexSpan> gaps;
  for (const IndexSpan& span : spans) {
    if (span.first >= end) break;
    if (span.first > first) gaps.push_back({first, span.first});
    first = std::max(first, span.end);
  }
  if (first < end) gaps.push_back({first, end});
  return gaps;
}

}  // namespace quillet
