#include "operations/stored_values.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(StoredValues, WhatIsOutOfRangeReadsAsTheFirst) {
  constexpr std::int64_t kLargest = INT64_MAX, kSmallest = INT64_MIN;
  const struct {
    std::int64_t value, first, last, result;
  } cases[] = {
      {1, 1, 4, 1},         {3, 1, 4, 3},  {4, 1, 4, 1},  // the last is out of range
      {0, 1, 4, 1},         {-1, 1, 4, 1}, {5, 5, 5, 5},  // an empty range
      {-2, -3, 0, -2},      {7, 3, 1, 3},  {kLargest, kSmallest, kLargest, kSmallest},
      {kSmallest, 1, 4, 1},
  };
  for (const auto& row : cases)
    EXPECT_EQ(validType(row.value, row.first, row.last), row.result)
        << row.value << " of " << row.first << " to " << row.last;
}

TEST(StoredValues, EachEnumerationOfAJobHasThreeValues) {
  for (const auto valid : {validOutputFileType, validOutputFileWriteMode, validOutputFileLineEndings}) {
    for (std::int64_t value : {1, 2, 3}) EXPECT_EQ(valid(value), value);
    for (std::int64_t value : {-1, 0, 4, 100}) EXPECT_EQ(valid(value), 1) << value;
  }
}

}  // namespace
}  // namespace quillet
