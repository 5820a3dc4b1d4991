#include "clipboard/grid_text.h"

#include <gtest/gtest.h>

#include "clipboard/plain_cells.h"
#include "clipboard/plain_text.h"
#include "platform/text_search.h"
#include "text/field_splitter.h"

namespace quillet {
namespace {

using testing::gridOfPlainCells;
using testing::PlainCells;
using testing::plainCellsOf;
using testing::plainJoin;
using testing::plainSplit;
using testing::RandomSource;
using testing::shownPlainCells;
using Result = SplitText::Result;

std::u16string times(std::size_t count, std::u16string_view text) {
  std::u16string result;
  result.reserve(count * text.size());
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

SplitText splitExact(std::u16string_view text, std::u16string_view lineSeparator,
                     std::u16string_view columnSeparator, bool removeQuotes) {
  const std::vector<char16_t> exact(text.begin(), text.end());  // so that a read beyond it is seen
  return splitText({exact.data(), exact.size()}, lineSeparator, columnSeparator, removeQuotes);
}

TEST(SplitText, CutsLinesAndThenCells) {
  constexpr bool kKept = false, kRemoved = true;
  struct Case {
    const char* why;
    std::u16string text, lineSeparator, columnSeparator;
    bool removeQuotes;
    PlainCells rows;
  };
  const Case kCases[] = {
      {"lines and columns", u"a,b\nc,d", u"\n", u",", kKept, {{u"a", u"b"}, {u"c", u"d"}}},
      {"ragged lines", u"a\nb,c,d\n,", u"\n", u",", kKept, {{u"a"}, {u"b", u"c", u"d"}, {u"", u""}}},
      {"a last empty line has one cell", u"a\nb\n", u"\n", u",", kKept, {{u"a"}, {u"b"}, {u""}}},
      {"and each empty line", u"\n\na", u"\n", u",", kKept, {{u""}, {u""}, {u"a"}}},
      {"no separators", u"a,b\nc", u"", u"", kKept, {{u"a,b\nc"}}},
      {"no separator of lines", u"a,b\nc", u"", u",", kKept, {{u"a", u"b\nc"}}},
      {"no separator of columns", u"a,b\nc", u"\n", u"", kKept, {{u"a,b"}, {u"c"}}},
      {"nor quotes to remove", u"\"a\",b\nc", u"\n", u"", kRemoved, {{u"a,b"}, {u"c"}}},
      {"an empty text", u"", u"\n", u",", kKept, {{u""}}},
      {"an empty text and no separators", u"", u"", u"", kRemoved, {{u""}}},
      {"quotes stay", u"\"a,b\",c", u"\n", u",", kKept, {{u"\"a", u"b\"", u"c"}}},
      {"quotes go and hide a separator", u"\"a,b\",c", u"\n", u",", kRemoved, {{u"a,b", u"c"}}},
      {"a doubled quote is one", u"\"a\"\"b\"", u"\n", u",", kRemoved, {{u"a\"b"}}},
      {"lines are cut inside quotes", u"\"a\nb\",c", u"\n", u",", kRemoved, {{u"a"}, {u"b,c"}}},
      {"an open quote ends with its line", u"\"a,b\nc,d", u"\n", u",", kRemoved, {{u"a,b"}, {u"c", u"d"}}},
      {"a separator of two", u"a\r\nb\r\n", u"\r\n", u",", kKept, {{u"a"}, {u"b"}, {u""}}},
      {"exactly that one", u"a\r\nb\nc\rd", u"\r\n", u",", kKept, {{u"a"}, {u"b\nc\rd"}}},
      {"what is not asked for stays", u"a\r\nb", u"\n", u",", kKept, {{u"a\r"}, {u"b"}}},
      {"a long one", u"a<end>b<end", u"<end>", u",", kKept, {{u"a"}, {u"b<end"}}},
      {"case counts", u"aXbxc", u"x", u",", kKept, {{u"aXb"}, {u"c"}}},
      {"from the left", u"aaa", u"aa", u",", kKept, {{u""}, {u"a"}}},
      {"lines by equivalence", u"ae\u0301b\u00E9c", u"\u00E9", u",", kKept, {{u"a"}, {u"b"}, {u"c"}}},
      {"a mark hides the separator", u"a\n\u0301b\nc", u"\n", u",", kKept, {{u"a\n\u0301b"}, {u"c"}}},
      {"also of columns", u"a,\u0301b,c", u"\n", u",", kKept, {{u"a,\u0301b", u"c"}}},
      {"columns have no separator of two", u"a;;b", u"\n", u";;", kKept, {{u"a;;b"}}},
      {"one separator for both", u"a,b", u",", u",", kKept, {{u"a"}, {u"b"}}},
      {"a quote as the separator of lines", u"a\"b,c", u"\"", u",", kRemoved, {{u"a"}, {u"b", u"c"}}},
      {"a quote is no separator of columns", u"a\"b,c", u"\n", u"\"", kRemoved, {{u"ab,c"}}},
      {"unless it stays", u"a\"b,c", u"\n", u"\"", kKept, {{u"a", u"b,c"}}},
  };
  for (const auto& [why, text, lineSeparator, columnSeparator, removeQuotes, rows] : kCases) {
    const SplitText split = splitExact(text, lineSeparator, columnSeparator, removeQuotes);
    EXPECT_EQ(split.result, Result::Done) << why;
    EXPECT_EQ(shownPlainCells(plainCellsOf(split.grid)), shownPlainCells(rows)) << why;
  }
}

TEST(SplitText, MakesAsManyLinesAsMayBe) {
  const std::u16string text = times(kMostLines - 1, u"\n");
  const SplitText split = splitText(text, u"\n", u",", false);
  EXPECT_EQ(split.result, Result::Done);
  EXPECT_EQ(split.grid.rowCount(), 1'048'576u);
  EXPECT_EQ(split.grid.maxRowLength(), 1u);
}

TEST(SplitText, MakesNoneOfTooManyLines) {
  for (const std::size_t beyond : {1, 2, 1000}) {
    const std::u16string text = times(kMostLines - 1 + beyond, u"\n");
    const SplitText split = splitText(text, u"\n", u",", false);
    EXPECT_EQ(split.result, Result::TooManyLines);
    EXPECT_EQ(split.count, 1'048'576u + beyond);
    EXPECT_EQ(split.grid.rowCount(), 0u);
  }
}

TEST(SplitText, CountsTheLinesBeforeItLooksAtColumns) {
  const std::u16string text = times(kMostColumns, u",") + times(kMostLines, u"\n");
  EXPECT_EQ(splitText(text, u"\n", u",", false).result, Result::TooManyLines);
}

TEST(SplitText, MakesAsManyColumnsAsMayBe) {
  const SplitText split = splitText(u"a\n" + times(kMostColumns - 1, u",") + u"b", u"\n", u",", false);
  EXPECT_EQ(split.result, Result::Done);
  ASSERT_EQ(split.grid.rowCount(), 2u);
  EXPECT_EQ(split.grid.row(1).cellCount(), 16'384u);
  EXPECT_EQ(split.grid.row(1).cell(16'383), u"b");
}

TEST(SplitText, KeepsTheLinesBeforeTheOneWithTooManyColumns) {
  for (const bool removeQuotes : {false, true})
    for (const std::size_t beyond : {1, 2, 1000}) {
      const std::u16string text =
          u"a,b\nc\n" + times(kMostColumns - 1 + beyond, u",") + u"\nd\n" + times(kMostColumns + 5, u",");
      const SplitText split = splitText(text, u"\n", u",", removeQuotes);
      EXPECT_EQ(split.result, Result::TooManyColumns);
      EXPECT_EQ(split.count, 16'384u + beyond);
      EXPECT_EQ(split.lineNumber, 3u);
      EXPECT_EQ(plainCellsOf(split.grid), (PlainCells{{u"a", u"b"}, {u"c"}}));
    }
}

TEST(SplitText, TellsOfTooManyColumnsInTheFirstLine) {
  const SplitText split = splitText(times(kMostColumns, u"\t") + u"\nd", u"\n", u"\t", false);
  EXPECT_EQ(split.result, Result::TooManyColumns);
  EXPECT_EQ(split.lineNumber, 1u);
  EXPECT_EQ(split.grid.rowCount(), 0u);
}

TEST(SplitText, CountsVeryManyColumns) {
  const std::u16string text = times(5'000'000, u"\"\",");
  for (const bool removeQuotes : {false, true}) {
    const SplitText split = splitText(text, u"\n", u",", removeQuotes);
    EXPECT_EQ(split.result, Result::TooManyColumns);
    EXPECT_EQ(split.count, 5'000'001u);
    EXPECT_EQ(split.lineNumber, 1u);
  }
}

TEST(SplitText, DoesNotCountQuotedSeparatorsAsColumns) {
  const std::u16string text = u"\"" + times(kMostColumns, u",") + u"\",b";
  const SplitText split = splitText(text, u"\n", u",", true);
  EXPECT_EQ(split.result, Result::Done);
  EXPECT_EQ(split.grid.row(0).cellCount(), 2u);
  EXPECT_EQ(splitText(text, u"\n", u",", false).count, kMostColumns + 2);
}

TEST(SplitText, SplitsAsThePlainRule) {
  RandomSource random;
  const std::u16string parts[] = {u"a",  u"b",      u"X",      u",",       u",", u"\n",         u"\n",
                                  u"\r", u"\u0301", u"\u00E9", u"e\u0301", u";", u"\U0001F600", u"\""};
  const std::u16string lineSeparators[] = {u"\n", u"\n", u"\r\n", u"\r", u",", u"\u00E9", u"ab", u""};
  const std::u16string columnSeparators[] = {u",", u",", u";", u"\u00E9", u"\"", u",;", u""};
  for (std::uint64_t round = 0; round < testing::rounds(10'000); ++round) {
    const std::u16string text = random.text(parts, random.oneIn(10) ? 400 : 30);
    const std::u16string& lineSeparator = random.pick(lineSeparators);
    const std::u16string& columnSeparator = random.pick(columnSeparators);
    const bool removeQuotes = random.oneIn(2);
    ASSERT_EQ(
        shownPlainCells(plainCellsOf(splitExact(text, lineSeparator, columnSeparator, removeQuotes).grid)),
        shownPlainCells(plainSplit(text, lineSeparator, columnSeparator, removeQuotes)))
        << toUtf8(text) << " by " << toUtf8(lineSeparator) << " and " << toUtf8(columnSeparator) << " "
        << removeQuotes;
  }
}

TEST(JoinedText, PutsSeparatorsBetween) {
  constexpr bool kPlain = false, kQuoted = true;
  struct Case {
    const char* why;
    PlainCells rows;
    std::u16string lineSeparator, columnSeparator;
    bool addQuotes;
    std::u16string text;
  };
  const Case kCases[] = {
      {"cells and lines", {{u"a", u"b"}, {u"c", u"d"}}, u"\n", u",", kPlain, u"a,b\nc,d"},
      {"ragged rows give ragged lines", {{u"a"}, {u"b", u"c", u"d"}}, u"\n", u",", kPlain, u"a\nb,c,d"},
      {"none behind the last line", {{u"a"}}, u"\n", u",", kPlain, u"a"},
      {"a last empty line", {{u"a"}, {u""}}, u"\n", u",", kPlain, u"a\n"},
      {"empty cells", {{u"", u"", u""}, {u"", u""}}, u"\n", u",", kPlain, u",,\n,"},
      {"empty cells at the end", {{u"a", u"", u""}}, u"\n", u",", kPlain, u"a,,"},
      {"rows without cells", {{}, {u"a"}, {}}, u"\n", u",", kPlain, u"\na\n"},
      {"no rows", {}, u"\n", u",", kPlain, u""},
      {"no rows, quoted", {}, u"\n", u",", kQuoted, u""},
      {"no separators", {{u"a", u"b"}, {u"c"}}, u"", u"", kPlain, u"abc"},
      {"long ones", {{u"a", u"b"}, {u"c"}}, u"<\r\n>", u" | ", kPlain, u"a | b<\r\n>c"},
      {"a cell is taken as it is", {{u"a,\"b\"\n", u"c"}}, u"\n", u",", kPlain, u"a,\"b\"\n,c"},
      {"quotes around all", {{u"a", u"b"}, {u"c"}}, u"\n", u",", kQuoted, u"\"a\",\"b\"\n\"c\""},
      {"also around nothing", {{u"", u""}, {u""}}, u"\n", u",", kQuoted, u"\"\",\"\"\n\"\""},
      {"but not where no cell is", {{}, {u"a"}}, u"\n", u",", kQuoted, u"\n\"a\""},
      {"the quote is doubled", {{u"a\"b"}}, u"\n", u",", kQuoted, u"\"a\"\"b\""},
      {"each is", {{u"\"", u"\"\""}}, u"\n", u",", kQuoted, u"\"\"\"\",\"\"\"\"\"\""},
      {"with a mark it is another character", {{u"a\"\u0301b"}}, u"\n", u",", kQuoted, u"\"a\"\u0301b\""},
      {"separators are not quoted", {{u"a", u"b"}, {u"c"}}, u"\"", u"'", kQuoted, u"\"a\"'\"b\"\"\"c\""},
  };
  for (const auto& [why, rows, lineSeparator, columnSeparator, addQuotes, text] : kCases)
    EXPECT_EQ(toUtf8(joinedText(gridOfPlainCells(rows), lineSeparator, columnSeparator, addQuotes)),
              toUtf8(text))
        << why;
}

TEST(JoinedText, JoinsAsThePlainRule) {
  RandomSource random;
  const std::u16string parts[] = {u"a", u"bc", u"\"", u"\"", u",", u"\n", u"\u0301", u"é", u"\U0001F600"};
  const std::u16string separators[] = {u"\n", u",", u"\r\n", u"", u"\"", u"\u0301"};
  for (std::uint64_t round = 0; round < testing::rounds(3'000); ++round) {
    const PlainCells rows = testing::randomPlainCells(random, random.below(20), 6, parts, 5);
    const std::u16string& lineSeparator = random.pick(separators);
    const std::u16string& columnSeparator = random.pick(separators);
    for (const bool addQuotes : {false, true})
      ASSERT_EQ(joinedText(gridOfPlainCells(rows), lineSeparator, columnSeparator, addQuotes),
                plainJoin(rows, lineSeparator, columnSeparator, addQuotes))
          << shownPlainCells(rows) << " by " << toUtf8(lineSeparator) << " and " << toUtf8(columnSeparator);
  }
}

TEST(JoinedText, IsSplitToTheSameGridAgain) {
  RandomSource random;
  const std::u16string parts[] = {u"a", u"bc", u"\"", u",", u"é", u" ", u"\t"};
  for (std::uint64_t round = 0; round < testing::rounds(300); ++round) {
    PlainCells rows = testing::randomPlainCells(random, 1 + random.below(600), 4, parts, 3);
    for (auto& row : rows)
      if (row.empty()) row.emplace_back();  // an empty line has a cell
    const ClipboardGrid grid = gridOfPlainCells(rows);
    ASSERT_TRUE(splitText(joinedText(grid, u"\n", u",", true), u"\n", u",", true).grid == grid)
        << shownPlainCells(rows);
  }
}

}  // namespace
}  // namespace quillet
