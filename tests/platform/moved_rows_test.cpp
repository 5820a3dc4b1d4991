#include "platform/moved_rows.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>

#include "support/random_source.h"

namespace quillet {
namespace {

using Rows = std::vector<int>;

IndexSet set(const std::vector<std::int64_t>& indexes) {
  IndexSet result;
  for (const auto index : indexes) result.addIndex(index);
  return result;
}

TEST(MovedRows, GoBeforeTheRowAsItCountsBeforeTheMove) {
  struct Case {
    std::vector<std::int64_t> indexes;
    std::int64_t row;
    Rows expected;
  };
  const Case cases[] = {
      {{0}, 3, {1, 2, 0, 3, 4}},
      {{3}, 0, {3, 0, 1, 2, 4}},
      {{1}, 1, {0, 1, 2, 3, 4}},
      {{1}, 2, {0, 1, 2, 3, 4}},
      {{0, 4}, 2, {1, 0, 4, 2, 3}},
      {{1, 3}, 5, {0, 2, 4, 1, 3}},
      {{0, 1, 2, 3, 4}, 2, {0, 1, 2, 3, 4}},
      {{}, 2, {0, 1, 2, 3, 4}},
      {{2, 7}, 0, {2, 0, 1, 3, 4}},  // there is no row 7
      {{9}, 0, {0, 1, 2, 3, 4}},
      {{2}, -5, {2, 0, 1, 3, 4}},
      {{2}, 99, {0, 1, 3, 4, 2}},
  };
  for (const auto& one : cases)
    EXPECT_EQ(withRowsMoved(Rows{0, 1, 2, 3, 4}, set(one.indexes), one.row), one.expected)
        << ::testing::PrintToString(one.indexes) << " to " << one.row;
  EXPECT_EQ(withRowsMoved(Rows{}, set({0}), 0), Rows{});
}

TEST(MovedRows, AreNotCopied) {
  std::vector<std::unique_ptr<int>> rows;
  for (int i = 0; i < 3; ++i) rows.push_back(std::make_unique<int>(i));
  rows = withRowsMoved(std::move(rows), set({2}), 0);
  EXPECT_EQ(*rows.front(), 2);
}

// Placeholders keep the places while the copies are inserted, and are removed then.
Rows reference(const Rows& rows, const std::vector<std::int64_t>& indexes, std::size_t row) {
  std::vector<std::optional<int>> places(rows.begin(), rows.end());
  std::vector<std::optional<int>> copies;
  for (const auto index : indexes) copies.push_back(rows[static_cast<std::size_t>(index)]);
  for (const auto index : indexes) places[static_cast<std::size_t>(index)] = std::nullopt;
  places.insert(places.begin() + static_cast<std::ptrdiff_t>(row), copies.begin(), copies.end());
  Rows result;
  for (const auto& place : places)
    if (place) result.push_back(*place);
  return result;
}

TEST(MovedRows, AreWhereAPlainReferencePutsThem) {
  testing::RandomSource random(601);
  for (std::uint64_t round = 0; round < testing::rounds(3'000); ++round) {
    Rows rows;
    std::vector<std::int64_t> indexes;
    const std::size_t count = random.below(12);
    const std::size_t oneIn = 1 + random.below(4);
    for (std::size_t i = 0; i < count; ++i) {
      rows.push_back(static_cast<int>(i));
      if (random.oneIn(oneIn)) indexes.push_back(static_cast<std::int64_t>(i));
    }
    const std::size_t row = random.below(count + 1);
    ASSERT_EQ(withRowsMoved(rows, set(indexes), static_cast<std::int64_t>(row)),
              reference(rows, indexes, row))
        << ::testing::PrintToString(indexes) << " of " << count << " to " << row;
  }
}

}  // namespace
}  // namespace quillet
