#include "operations/line_numbers.h"

#include <gtest/gtest.h>
#include <limits>
#include <optional>

#include "support/random_source.h"

namespace quillet {
namespace {

using Ranges = std::vector<IndexSet::Range>;
constexpr std::int64_t kMaximum = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kPreset = -1;

// Text counts from 1, indexes from 0 with subtract1.
TEST(LineNumbers, ParsesNumbersAndRanges) {
  struct Case {
    std::u16string_view text;
    Ranges asTheyStand;
    Ranges subtracted;
    std::int64_t openAsItStands = kPreset;
    std::int64_t openSubtracted = kPreset;
  };
  const Case cases[] = {
      {u"", {}, {}},
      {u"1, 2, 5 - 8", {{1, 2}, {5, 8}}, {{0, 1}, {4, 7}}},
      {u"3", {{3, 3}}, {{2, 2}}},
      {u"0", {{0, 0}}, {{0, 0}}},
      {u"1", {{1, 1}}, {{0, 0}}},
      {u"3,3,3", {{3, 3}}, {{2, 2}}},
      {u"8,1", {{1, 1}, {8, 8}}, {{0, 0}, {7, 7}}},
      {u",,", {}, {}},
      {u" , \n ,\t", {}, {}},
      {u",4,", {{4, 4}}, {{3, 3}}},
      {u"\u00A0 4 \u2003", {{4, 4}}, {{3, 3}}},
      {u"2-4", {{2, 4}}, {{1, 3}}},
      {u"2 -\u00A04", {{2, 4}}, {{1, 3}}},  // white space before the digits is skipped
      {u"2\n-\n4", {{2, 4}}, {{1, 3}}},
      {u"5 -", {}, {}, 5, 4},  // an open end
      {u"5-", {}, {}, 5, 4},
      {u"5 - 0", {}, {}, 5, 4},
      {u"5 - x", {}, {}, 5, 4},
      {u"2 - 1", {}, {}, kPreset, 1},  // the lowered end is 0
      {u"1 -", {}, {}, 1, kPreset},    // the lowered start is 0
      {u"1 - 1", {}, {}},
      {u"3-, 5-", {}, {}, 5, 4},  // the last one counts
      {u"5 - 5", {}, {}},
      {u"8 - 5", {}, {}},
      {u"1-2-3", {}, {}},
      {u"--", {}, {}},
      {u"-", {}, {}},
      {u"-5", {{0, 5}}, {{0, 4}}},  // from the beginning
      {u"0 - 2", {{0, 2}}, {{0, 1}}},
      {u"-1", {{0, 1}}, {}},
      {u"word", {{0, 0}}, {{0, 0}}},
      {u"3x", {{3, 3}}, {{2, 2}}},
      {u"x3", {{0, 0}}, {{0, 0}}},
      {u"3 4", {{3, 3}}, {{2, 2}}},
      {u"+5", {{0, 0}}, {{0, 0}}},  // a sign is no digit
      {u"2 - +5", {}, {}, 2, 1},
      {u"1.9", {{1, 1}}, {{0, 0}}},
      {u"\uFF13", {{0, 0}}, {{0, 0}}},      // a fullwidth three
      {u"2 \u2212 4", {{2, 2}}, {{1, 1}}},  // a minus sign is no hyphen
      {u"1;2", {{1, 1}}, {{0, 0}}},
      {u"007", {{7, 7}}, {{6, 6}}},
      {u"9223372036854775807", {}, {{kMaximum - 1, kMaximum - 1}}},  // the largest number is no index
      {u"5 - 99999999999999999999", {{5, kMaximum - 1}}, {{4, kMaximum - 1}}},
  };
  for (const Case& one : cases) {
    for (const bool subtract1 : {false, true}) {
      IndexSet set;
      std::int64_t open = kPreset;
      parseLineNumbersString(one.text, set, &open, subtract1);
      const auto row = &one - cases;
      EXPECT_EQ(set.ranges(), subtract1 ? one.subtracted : one.asTheyStand)
          << "row " << row << ' ' << subtract1;
      EXPECT_EQ(open, subtract1 ? one.openSubtracted : one.openAsItStands)
          << "row " << row << ' ' << subtract1;
    }
  }
}

TEST(LineNumbers, AddsToTheSetAndNeedsNoPlaceForAnOpenEnd) {
  IndexSet set;
  set.addIndex(9);
  parseLineNumbersString(u"5 -, 1", set, nullptr, true);
  EXPECT_EQ(set.ranges(), (Ranges{{0, 0}, {9, 9}}));
}

TEST(LineNumbers, PrintsASet) {
  struct Case {
    Ranges ranges;
    std::u16string_view text;
    std::u16string_view expanded;
  };
  const Case cases[] = {
      {{}, u"", u""},
      {{{0, 0}}, u"1", u"1"},
      {{{0, 1}}, u"1 - 2", u"1, 2"},
      {{{0, 1}, {4, 7}}, u"1 - 2, 5 - 8", u"1, 2, 5, 6, 7, 8"},
      {{{0, 0}, {2, 2}, {9, 10}}, u"1, 3, 10 - 11", u"1, 3, 10, 11"},
      {{{kMaximum - 1, kMaximum - 1}}, u"9223372036854775807", u"9223372036854775807"},
  };
  for (const Case& one : cases) {
    IndexSet set;
    for (const auto& range : one.ranges) set.addRange(range.first, range.last);
    EXPECT_EQ(stringPlus1FromIndexSet(set), one.text);
    EXPECT_EQ(expandedStringPlus1FromIndexSet(set), one.expanded);
  }
}

TEST(LineNumbers, PrintedTextParsesToTheSameSet) {
  testing::RandomSource random;
  for (std::uint64_t round = 0; round < testing::rounds(2000); ++round) {
    IndexSet set;
    for (std::size_t i = random.below(8); i > 0; --i) {
      const auto first = static_cast<std::int64_t>(random.below(60));
      set.addRange(first, first + static_cast<std::int64_t>(random.below(5)));
    }
    for (const std::u16string& text : {stringPlus1FromIndexSet(set), expandedStringPlus1FromIndexSet(set)}) {
      IndexSet parsed;
      std::int64_t open = kPreset;
      parseLineNumbersString(text, parsed, &open, true);
      ASSERT_EQ(parsed, set);
      ASSERT_EQ(open, kPreset);
    }
  }
}

}  // namespace
}  // namespace quillet
