#include "platform/index_set.h"

#include <gtest/gtest.h>
#include <limits>
#include <set>

#include "support/random_source.h"

namespace quillet {
namespace {

using Ranges = std::vector<IndexSet::Range>;
constexpr std::int64_t kMaximum = std::numeric_limits<std::int64_t>::max();

IndexSet setOf(const Ranges& ranges) {
  IndexSet set;
  for (const auto& range : ranges) set.addRange(range.first, range.last);
  return set;
}

TEST(IndexSet, IsMadeOfIndexesInAnyOrder) {
  EXPECT_EQ(IndexSet({}).ranges(), Ranges{});
  EXPECT_EQ(IndexSet({7, 2, 1, -1, 2, kMaximum}).ranges(), (Ranges{{1, 2}, {7, 7}}));
}

TEST(IndexSet, KeepsRangesThatNeverTouch) {
  struct Case {
    const char* what;
    Ranges added;
    Ranges kept;
  };
  const Case cases[] = {
      {"nothing", {}, {}},
      {"apart", {{5, 6}, {1, 2}}, {{1, 2}, {5, 6}}},
      {"adjacent above", {{1, 2}, {3, 3}}, {{1, 3}}},
      {"adjacent below", {{3, 3}, {1, 2}}, {{1, 3}}},
      {"a gap of one is filled", {{1, 2}, {4, 5}, {3, 3}}, {{1, 5}}},
      {"a gap of one stays", {{1, 2}, {4, 5}}, {{1, 2}, {4, 5}}},
      {"overlapping", {{1, 4}, {3, 8}}, {{1, 8}}},
      {"inside", {{1, 8}, {3, 4}}, {{1, 8}}},
      {"around several", {{2, 2}, {4, 4}, {9, 9}, {1, 6}}, {{1, 6}, {9, 9}}},
      {"the same twice", {{7, 7}, {7, 7}}, {{7, 7}}},
      {"running backwards", {{5, 4}}, {}},
      {"below zero", {{-5, -1}}, {}},
      {"from below zero", {{-5, 2}}, {{0, 2}}},
      {"the largest number is no index", {{kMaximum, kMaximum}}, {}},
      {"up to the largest number", {{kMaximum - 2, kMaximum}}, {{kMaximum - 2, kMaximum - 1}}},
      {"all", {{std::numeric_limits<std::int64_t>::min(), kMaximum}, {3, 4}}, {{0, kMaximum - 1}}},
  };
  for (const Case& one : cases) EXPECT_EQ(setOf(one.added).ranges(), one.kept) << one.what;
}

TEST(IndexSet, RemovesOneIndex) {
  struct Case {
    std::int64_t removed;
    Ranges kept;
  };
  const Case cases[] = {
      {0, {{1, 3}, {7, 7}}}, {1, {{2, 3}, {7, 7}}},  {2, {{1, 1}, {3, 3}, {7, 7}}},
      {3, {{1, 2}, {7, 7}}}, {5, {{1, 3}, {7, 7}}},  {7, {{1, 3}}},
      {8, {{1, 3}, {7, 7}}}, {-1, {{1, 3}, {7, 7}}}, {kMaximum, {{1, 3}, {7, 7}}},
  };
  for (const Case& one : cases) {
    IndexSet set = setOf({{1, 3}, {7, 7}});
    set.removeIndex(one.removed);
    EXPECT_EQ(set.ranges(), one.kept) << one.removed;
  }
}

TEST(IndexSet, TellsItsEndsAndCount) {
  IndexSet set;
  EXPECT_TRUE(set.isEmpty());
  EXPECT_EQ(set.firstIndex(), -1);
  EXPECT_EQ(set.lastIndex(), -1);
  EXPECT_EQ(set.count(), 0);
  set = setOf({{2, 4}, {9, 9}});
  EXPECT_FALSE(set.isEmpty());
  EXPECT_EQ(set.firstIndex(), 2);
  EXPECT_EQ(set.lastIndex(), 9);
  EXPECT_EQ(set.count(), 4);
  EXPECT_EQ(setOf({{0, kMaximum}}).count(), kMaximum);
  set.clear();
  EXPECT_EQ(set, IndexSet());
}

TEST(IndexSet, AgreesWithASetOfNumbers) {
  testing::RandomSource random;
  for (std::uint64_t round = 0; round < testing::rounds(300); ++round) {
    IndexSet set;
    std::set<std::int64_t> reference;
    for (int step = 0; step < 30; ++step) {
      const std::int64_t first = static_cast<std::int64_t>(random.below(40)) - 3;
      if (random.oneIn(3)) {
        set.removeIndex(first);
        reference.erase(first);
      } else {
        const std::int64_t last = first + static_cast<std::int64_t>(random.below(6)) - 1;
        set.addRange(first, last);
        for (std::int64_t index = std::max<std::int64_t>(first, 0); index <= last; ++index)
          reference.insert(index);
      }
      ASSERT_EQ(set.count(), static_cast<std::int64_t>(reference.size()));
      for (std::int64_t index = -4; index < 50; ++index)
        ASSERT_EQ(set.contains(index), reference.contains(index)) << index;
      for (std::size_t i = 1; i < set.ranges().size(); ++i)
        ASSERT_LT(set.ranges()[i - 1].last + 1, set.ranges()[i].first);
    }
  }
}

}  // namespace
}  // namespace quillet
