#include "clipboard/index_spans.h"

#include <gtest/gtest.h>

#include "clipboard/plain_grid.h"

namespace quillet {
namespace {

using Spans = std::vector<IndexSpan>;

TEST(IndexSpans, AreTheIndexesBelowACount) {
  const struct {
    testing::Indexes indexes;
    std::size_t count;
    Spans spans;
  } cases[] = {
      {{}, 5, {}},
      {{0, 1, 3}, 5, {{0, 2}, {3, 4}}},
      {{4}, 5, {{4, 5}}},
      {{5}, 5, {}},
      {{3, 4, 5, 9}, 5, {{3, 5}}},
      {{0}, 0, {}},
      {{0, 9'000'000'000'000'000'000}, 1, {{0, 1}}},
  };
  for (const auto& [indexes, count, spans] : cases)
    EXPECT_EQ(spansBelow(testing::setOf(indexes), count), spans) << ::testing::PrintToString(indexes);
}

TEST(IndexSpans, HaveGapsBetweenThem) {
  const struct {
    Spans spans;
    std::size_t first;
    std::size_t end;
    Spans gaps;
  } cases[] = {
      {{}, 0, 5, {{0, 5}}},
      {{}, 0, 0, {}},
      {{{0, 2}, {3, 4}}, 0, 5, {{2, 3}, {4, 5}}},
      {{{1, 5}}, 0, 5, {{0, 1}}},
      {{{0, 5}}, 0, 5, {}},
      {{{0, 2}, {4, 6}}, 5, 9, {{6, 9}}},
      {{{0, 2}, {4, 6}}, 1, 3, {{2, 3}}},
      {{{0, 2}, {4, 6}}, 3, 4, {{3, 4}}},
      {{{0, 2}}, 7, 5, {}},
  };
  for (const auto& [spans, first, end, gaps] : cases)
    EXPECT_EQ(gapsBetween(spans, first, end), gaps) << first << " to " << end;
}

}  // namespace
}  // namespace quillet
