// A sorted set of non-negative integers, kept as ranges that never touch each other.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

namespace quillet {

class IndexSet {
 public:
  struct Range {
    std::int64_t first = 0;
    std::int64_t last = 0;  // inclusive
    bool operator==(const Range&) const = default;
  };

  IndexSet() = default;
  explicit IndexSet(std::initializer_list<std::int64_t> indexes);  // in any order; as addIndex for each

  // Negative indexes, and INT64_MAX, are passed over; a range whose last is below its first adds nothing.
  void addIndex(std::int64_t index);
  void addRange(std::int64_t first, std::int64_t last);
  void removeIndex(std::int64_t index);
  void clear() { ranges_.clear(); }

  bool contains(std::int64_t index) const;
  bool isEmpty() const { return ranges_.empty(); }
  std::int64_t count() const;       // of indexes
  std::int64_t firstIndex() const;  // -1 for an empty set
  std::int64_t lastIndex() const;   // -1 for an empty set
  const std::vector<Range>& ranges() const { return ranges_; }

  bool operator==(const IndexSet&) const = default;

 private:
  std::vector<Range> ranges_;  // ascending, at least one index between two
};

}  // namespace quillet
