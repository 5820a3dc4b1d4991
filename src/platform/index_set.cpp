#include "platform/index_set.h"

#include <algorithm>
#include <limits>

namespace quillet {

namespace {

constexpr std::int64_t kLargestIndex = std::numeric_limits<std::int64_t>::max() - 1;

}  // namespace

IndexSet::IndexSet(std::initializer_list<std::int64_t> indexes) {
  for (const std::int64_t index : indexes) addIndex(index);
}

void IndexSet::addIndex(std::int64_t index) {
  addRange(index, index);
}

void IndexSet::addRange(std::int64_t first, std::int64_t last) {
  first = std::max<std::int64_t>(first, 0);
  last = std::min(last, kLargestIndex);
  if (last < first) return;
  // The ranges from begin up to end touch the new one and become one with it.
  const auto begin =
      std::lower_bound(ranges_.begin(), ranges_.end(), first,
                       [](const Range& range, std::int64_t value) { return range.last + 1 < value; });
  const auto end = std::upper_bound(begin, ranges_.end(), last, [](std::int64_t value, const Range& range) {
    return value + 1 < range.first;
  });
  if (begin == end) {
    ranges_.insert(begin, Range{first, last});
    return;
  }
  begin->first = std::min(begin->first, first);
  begin->last = std::max(std::prev(end)->last, last);
  ranges_.erase(std::next(begin), end);
}

void IndexSet::removeIndex(std::int64_t index) {
  const auto range = std::lower_bound(ranges_.begin(), ranges_.end(), index,
                                      [](const Range& one, std::int64_t value) { return one.last < value; });
  if (range == ranges_.end() || index < range->first) return;
  const Range below{range->first, index - 1};
  const Range above{index + 1, range->last};
  if (below.last < below.first && above.last < above.first) {
    ranges_.erase(range);
  } else if (below.last < below.first) {
    *range = above;
  } else {
    *range = below;
    if (above.first <= above.last) ranges_.insert(std::next(range), above);
  }
}

bool IndexSet::contains(std::int64_t index) const {
  const auto range = std::lower_bound(ranges_.begin(), ranges_.end(), index,
                                      [](const Range& one, std::int64_t value) { return one.last < value; });
  return range != ranges_.end() && range->first <= index;
}

std::int64_t IndexSet::count() const {
  // No clamp is needed: indexes are 0 to INT64_MAX - 1, and that many are INT64_MAX.
  std::int64_t total = 0;
  for (const Range& range : ranges_) total += range.last - range.first + 1;
  return total;
}

std::int64_t IndexSet::firstIndex() const {
  return ranges_.empty() ? -1 : ranges_.front().first;
}

std::int64_t IndexSet::lastIndex() const {
  return ranges_.empty() ? -1 : ranges_.back().last;
}

}  // namespace quillet
