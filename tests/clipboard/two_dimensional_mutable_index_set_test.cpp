#include "clipboard/two_dimensional_mutable_index_set.h"

#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "clipboard/cell_string_reference.h"
#include "platform/localization.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {

void PrintTo(const TwoDimensionalMutableIndexSet& set, std::ostream* out) {
  *out << toUtf8(set.stringPlus1FromAllIndexes());
}

namespace {

using Set = TwoDimensionalMutableIndexSet;
using Ranges = std::vector<IndexSet::Range>;
using testing::RandomSource;
using testing::rounds;

constexpr std::int64_t kMaximum = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMinimum = std::numeric_limits<std::int64_t>::min();

std::string textOf(const Set& set) {
  return toUtf8(set.stringPlus1FromAllIndexes());
}

// The text is copied to a buffer of its size, so that a sanitizer sees its end.
Set readFrom(std::u16string_view text) {
  const std::vector<char16_t> units(text.begin(), text.end());
  return Set(std::u16string_view(units.data(), units.size()));
}

std::string reprinted(std::u16string_view text) {
  return textOf(readFrom(text));
}

// --- Adding and removing. ---

TEST(TwoDimensionalMutableIndexSet, BeginsEmpty) {
  const Set set;
  EXPECT_TRUE(set.isEmpty());
  EXPECT_EQ(textOf(set), "");
  EXPECT_FALSE(set.containsRowIndex(0, 0));
  EXPECT_TRUE(set.infiniteRowIndexSet().isEmpty());
  EXPECT_TRUE(set.infiniteColumnIndexSet().isEmpty());
  EXPECT_TRUE(set.rowIndexDictionary().empty());
}

// Lines 2, 3, 4, columns 2, 4, and cells in the rows of the indexes 0, 1 and 6.
Set mixedSet() {
  return Set(u"Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)");
}

TEST(TwoDimensionalMutableIndexSet, EachOperationChangesItsOwnPart) {
  const struct {
    const char* what;
    void (*change)(Set& set);
    const char* text;
  } cases[] = {
      {"nothing", [](Set&) {}, "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"a cell in a new row", [](Set& set) { set.addRowIndex(4, 0); },
       "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(5, 1)+(7, 6)"},
      {"a cell in a row that is there, and in a whole column", [](Set& set) { set.addRowIndex(1, 3); },
       "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 4)+(2, 6)+(7, 6)"},
      {"a cell that is there", [](Set& set) { set.addRowIndex(1, 5); },
       "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"a row", [](Set& set) { set.addInfiniteRowIndex(6); },
       "Lines: 2 - 4, 7; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"rows", [](Set& set) { set.addInfiniteRowIndexesInRange(3, 4); },
       "Lines: 2 - 7; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"a column", [](Set& set) { set.addInfiniteColumnIndex(2); },
       "Lines: 2 - 4; Columns: 2 - 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"columns", [](Set& set) { set.addInfiniteColumnIndexesInRange(5, 2); },
       "Lines: 2 - 4; Columns: 2, 4, 6 - 7; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"a cell less", [](Set& set) { set.removeRowIndex(1, 1); },
       "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 6)+(7, 6)"},
      {"a cell that is not there", [](Set& set) { set.removeRowIndex(1, 9); },
       "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"a cell of a row without cells", [](Set& set) { set.removeRowIndex(3, 1); },
       "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"a row less, with its cells", [](Set& set) { set.removeRowIndex(1); },
       "Lines: 3 - 4; Columns: 2, 4; Cells: (1, 2)+(7, 6)"},
      {"a row that has cells only", [](Set& set) { set.removeRowIndex(6); },
       "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)"},
      {"a column less, with its cells", [](Set& set) { set.removeColumnIndex(1); },
       "Lines: 2 - 4; Columns: 4; Cells: (2, 6)+(7, 6)"},
      {"a column that has cells only", [](Set& set) { set.removeColumnIndex(5); },
       "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)"},
      {"no rows", [](Set& set) { set.removeAllInfiniteRowIndexes(); },
       "Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"no columns", [](Set& set) { set.removeAllInfiniteColumnIndexes(); },
       "Lines: 2 - 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"neither", [](Set& set) { set.removeAllInfiniteIndexes(); }, "Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"no cells", [](Set& set) { set.removeNonInfiniteIndexes(); }, "Lines: 2 - 4; Columns: 2, 4"},
      {"nothing left", [](Set& set) { set.removeAllIndexes(); }, ""},
      {"through the live rows", [](Set& set) { set.infiniteRowIndexSet().removeIndex(2); },
       "Lines: 2, 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
      {"through the live columns", [](Set& set) { set.infiniteColumnIndexSet().addIndex(0); },
       "Lines: 2 - 4; Columns: 1 - 2, 4; Cells: (1, 2)+(2, 2)+(2, 6)+(7, 6)"},
  };
  for (const auto& [what, change, text] : cases) {
    Set set = mixedSet();
    change(set);
    EXPECT_EQ(textOf(set), text) << what;
    EXPECT_EQ(set.isEmpty(), *text == '\0') << what;
  }
}

TEST(TwoDimensionalMutableIndexSet, KeepsACellInAllPartsAtOnce) {
  Set set;
  set.addRowIndex(2, 3);
  set.addInfiniteRowIndex(2);
  set.addInfiniteColumnIndex(3);
  EXPECT_EQ(textOf(set), "Lines: 3; Columns: 4; Cells: (3, 4)");
  set.removeAllInfiniteRowIndexes();
  EXPECT_TRUE(set.containsRowIndex(2, 3));
  set.removeAllInfiniteColumnIndexes();
  EXPECT_TRUE(set.containsRowIndex(2, 3));
  set.removeNonInfiniteIndexes();
  EXPECT_FALSE(set.containsRowIndex(2, 3));
}

TEST(TwoDimensionalMutableIndexSet, ContainsWhatRowColumnOrCellCover) {
  const Set set(u"Lines: 2; Columns: 3; Cells: (5, 6)");
  const struct {
    std::int64_t row, column;
    bool contained;
  } cases[] = {
      {1, 0, true},  {1, 1'000'000, true}, {0, 2, true},   {1'000'000, 2, true}, {4, 5, true},
      {4, 4, false}, {5, 5, false},        {0, 0, false},  {-1, 0, false},       {0, -1, false},
      {1, -1, true}, {-1, 2, true},        {4, -1, false}, {kMaximum, 0, false}, {kMinimum, kMinimum, false},
  };
  for (const auto& [row, column, contained] : cases)
    EXPECT_EQ(set.containsRowIndex(row, column), contained) << row << ", " << column;
  EXPECT_TRUE(set.containsInfiniteRowIndex(1));
  EXPECT_FALSE(set.containsInfiniteRowIndex(4)) << "a cell makes no row";
  EXPECT_TRUE(set.containsInfiniteColumnIndex(2));
  EXPECT_FALSE(set.containsInfiniteColumnIndex(5)) << "a cell makes no column";
}

TEST(TwoDimensionalMutableIndexSet, ARowWhoseLastCellWasRemovedStaysAsAnEmptyEntry) {
  Set set;
  set.addRowIndex(2, 3);
  set.removeRowIndex(2, 3);
  EXPECT_FALSE(set.containsRowIndex(2, 3));
  EXPECT_EQ(textOf(set), "");
  EXPECT_FALSE(set.isEmpty());
  ASSERT_EQ(set.rowIndexDictionary().count(2), 1u);
  EXPECT_TRUE(set.rowIndexDictionary().at(2).isEmpty());
  EXPECT_TRUE(Set(set.stringPlus1FromAllIndexes()).isEmpty()) << "the text form loses it";
  set.removeAllInfiniteIndexes();
  EXPECT_FALSE(set.isEmpty());
  set.removeRowIndex(2);
  EXPECT_TRUE(set.isEmpty());
}

TEST(TwoDimensionalMutableIndexSet, AColumnLeavesEmptyEntriesBehindToo) {
  Set set(u"Cells: (3, 4)+(5, 4)");
  set.removeColumnIndex(3);
  EXPECT_EQ(textOf(set), "");
  EXPECT_EQ(set.rowIndexDictionary().size(), 2u);
  EXPECT_FALSE(set.isEmpty());
  set.removeNonInfiniteIndexes();
  EXPECT_TRUE(set.isEmpty());
}

TEST(TwoDimensionalMutableIndexSet, RemovingACellLeavesTheRowAndTheColumnThatCoverIt) {
  Set set(u"Lines: 3; Cells: (3, 4)");
  set.removeRowIndex(2, 3);
  EXPECT_TRUE(set.containsRowIndex(2, 3));
  set = Set(u"Columns: 4; Cells: (3, 4)");
  set.removeRowIndex(2);
  EXPECT_TRUE(set.containsRowIndex(2, 3));
  set = Set(u"Lines: 3; Cells: (3, 4)");
  set.removeColumnIndex(3);
  EXPECT_TRUE(set.containsRowIndex(2, 3));
}

TEST(TwoDimensionalMutableIndexSet, PassesOverWhatIsNoIndex) {
  Set set;
  for (const std::int64_t bad : {std::int64_t{-1}, kMinimum, kMaximum}) {
    set.addRowIndex(bad, 0);
    set.addRowIndex(0, bad);
    set.addInfiniteRowIndex(bad);
    set.addInfiniteColumnIndex(bad);
    set.removeRowIndex(bad, bad);
    set.removeRowIndex(bad);
    set.removeColumnIndex(bad);
  }
  EXPECT_TRUE(set.isEmpty());
}

TEST(TwoDimensionalMutableIndexSet, AddsRangesOfAnyLength) {
  const struct {
    std::int64_t location, length;
    Ranges added;
  } cases[] = {
      {3, 1, {{3, 3}}},
      {3, 2, {{3, 4}}},
      {3, 0, {}},
      {3, -2, {}},
      {3, kMinimum, {}},
      {-2, 4, {{0, 1}}},
      {kMinimum, kMaximum, {}},
      {0, kMaximum, {{0, kMaximum - 1}}},
      {5, kMaximum, {{5, kMaximum - 1}}},
      {kMaximum - 1, 5, {{kMaximum - 1, kMaximum - 1}}},
      {kMaximum, 1, {}},
  };
  for (const auto& [location, length, added] : cases) {
    Set set;
    set.addInfiniteRowIndexesInRange(location, length);
    set.addInfiniteColumnIndexesInRange(location, length);
    EXPECT_EQ(set.infiniteRowIndexSet().ranges(), added) << location << ", " << length;
    EXPECT_EQ(set.infiniteColumnIndexSet().ranges(), added) << location << ", " << length;
  }
}

// --- The text form. ---

TEST(TwoDimensionalMutableIndexSet, PrintsRuns) {
  const struct {
    Ranges ranges;
    std::u16string_view text;
  } cases[] = {
      {{}, u""},
      {{{0, 0}}, u"1"},
      {{{0, 1}}, u"1 - 2"},
      {{{0, 0}, {2, 4}}, u"1, 3 - 5"},
      {{{1, 3}, {5, 5}, {7, 8}}, u"2 - 4, 6, 8 - 9"},
      {{{0, kMaximum - 1}}, u"1 - 9223372036854775807"},
  };
  for (const auto& [ranges, text] : cases) {
    IndexSet set;
    for (const auto& range : ranges) set.addRange(range.first, range.last);
    EXPECT_EQ(Set::stringPlus1FromInfiniteIndexSet(&set), text);
  }
  EXPECT_EQ(Set::stringPlus1FromInfiniteIndexSet(nullptr), u"");
}

TEST(TwoDimensionalMutableIndexSet, PrintsLinesThenColumnsThenCells) {
  Set set;
  set.addRowIndex(0, 1);
  EXPECT_EQ(textOf(set), "Cells: (1, 2)");
  set.addInfiniteColumnIndex(1);
  EXPECT_EQ(textOf(set), "Columns: 2; Cells: (1, 2)");
  set.addInfiniteRowIndexesInRange(2, 3);
  set.addInfiniteRowIndex(0);
  EXPECT_EQ(textOf(set), "Lines: 1, 3 - 5; Columns: 2; Cells: (1, 2)");
  set.removeNonInfiniteIndexes();
  EXPECT_EQ(textOf(set), "Lines: 1, 3 - 5; Columns: 2");
  set.removeAllInfiniteColumnIndexes();
  EXPECT_EQ(textOf(set), "Lines: 1, 3 - 5");
}

TEST(TwoDimensionalMutableIndexSet, PrintsCellsInAscendingOrderWithoutABlankBetween) {
  Set set;
  set.addRowIndex(2, 3);
  set.addRowIndex(0, 1);
  set.addRowIndex(2, 0);
  set.addRowIndex(1, 0);
  set.removeRowIndex(1, 0);
  EXPECT_EQ(textOf(set), "Cells: (1, 2)+(3, 1)+(3, 4)");
}

TEST(TwoDimensionalMutableIndexSet, PrintsTheWordsInTheLanguageOfTheUserAndReadsThemInEnglish) {
  const Set set(u"Lines: 1; Columns: 2; Cells: (1, 2)");
  setTranslator([](std::u16string_view key) {
    return key == u"Lines: " ? std::u16string(u"Zeilen: ") : std::u16string(key);
  });
  const std::string printed = textOf(set);
  const Set again(set.stringPlus1FromAllIndexes());
  const Set fromEnglish(u"Lines: 1");
  setTranslator(nullptr);
  EXPECT_EQ(printed, "Zeilen: 1; Columns: 2; Cells: (1, 2)");
  EXPECT_EQ(textOf(again), "Columns: 2; Cells: (1, 2)");
  EXPECT_TRUE(fromEnglish.containsInfiniteRowIndex(0));
}

TEST(TwoDimensionalMutableIndexSet, ReadsWhatATextNamesAndPassesOverTheRest) {
  const struct {
    std::u16string_view text;
    const char* reprinted;
  } cases[] = {
      {u"", ""},
      {u"Lines: 1, 3 - 5; Columns: 2; Cells: (1, 2)", "Lines: 1, 3 - 5; Columns: 2; Cells: (1, 2)"},
      // Sections in any order and number; a section is cut off by "; " and begins with its word.
      {u"Cells: (1, 2); Columns: 2; Lines: 1", "Lines: 1; Columns: 2; Cells: (1, 2)"},
      {u"Lines: 5; Cells: (2, 2); Lines: 1; Cells: (1, 1)", "Lines: 1, 5; Cells: (1, 1)+(2, 2)"},
      {u"Lines: 1;Columns: 2", "Lines: 1"},
      {u"Lines: 1; lines: 2; Lines:3; Line: 4; Rows: 5;  Lines: 6; 7; ; Columns: 8", "Lines: 1; Columns: 8"},
      {u"All; Lines: 2", "Lines: 2"},
      {u"Lines: ", ""},
      {u"Cells: ", ""},
      // Runs.
      {u"Lines: 4", "Lines: 4"},
      {u"Lines: 1 - 2", "Lines: 1 - 2"},
      {u"Lines: 4 - 4", ""},
      {u"Lines: 5 - 2", ""},
      {u"Columns: 3 - 3, 5 - 2, 7", "Columns: 7"},
      {u"Lines: 1 - 2 - 3, 9", "Lines: 9"},
      {u"Lines: 1-3", "Lines: 1"},
      {u"Lines: 1 -3", "Lines: 1"},
      {u"Lines: 1,3", "Lines: 1"},
      {u"Lines: 3, 1, 2", "Lines: 1 - 3"},
      {u"Lines: 7 - 9, 1 - 3, 2 - 7", "Lines: 1 - 9"},
      {u"Lines:   4 ,  +6 , 8x, 10 -  12", "Lines: 4, 6, 8, 10 - 12"},
      {u"Lines: 0, -3, x, 2", "Lines: 2"},
      {u"Lines: -3 - 2", "Lines: 1 - 2"},
      {u"Lines: x - 2; Columns: 0 - 3", "Lines: 1 - 2; Columns: 1 - 3"},
      {u"Columns: 2, 4 - 6", "Columns: 2, 4 - 6"},
      {u"Columns: (1, 2)+(3, 4)", "Columns: 2, 4"},  // "(1" is no number, "2)+(3" is 2, "4)" is 4
      {u"Lines: 9223372036854775807", "Lines: 9223372036854775807"},
      {u"Lines: 2 - 99999999999999999999", "Lines: 2 - 9223372036854775807"},
      {u"Lines: -99999999999999999999, -99999999999999999999 - 1", "Lines: 1"},
      // Cells.
      {u"Cells: (1, 2)+(3, 4)", "Cells: (1, 2)+(3, 4)"},
      {u"Cells: (3, 4)+(1, 2)+(3, 4)", "Cells: (1, 2)+(3, 4)"},
      {u"Cells: (1, 2)+bad+(3, 4)", "Cells: (1, 2)+(3, 4)"},
      {u"Cells: (1,2)+( 3 ,  4 )", "Cells: (1, 2)+(3, 4)"},
      {u"Cells: (1x, 2y)", "Cells: (1, 2)"},
      {u"Cells: (1, 2, 3)+(4)+()+(,)+(5, 6)", "Cells: (5, 6)"},
      {u"Cells: 1, 2)+(3, 4+(5, 6) + (7, 8)", ""},  // no bracket where one belongs, or a blank in its place
      {u"Cells: (1, 2) +(3, 4)", "Cells: (3, 4)"},
      {u"Cells: (+1, +2)", ""},  // "+" cuts
      {u"Cells: (0, 1)+(1, 0)+(-1, 2)+(x, 3)+(4, 4)", "Cells: (4, 4)"},
      {u"Cells: 1 - 3", ""},
      {u"Cells: (9223372036854775807, 99999999999999999999)",
       "Cells: (9223372036854775807, 9223372036854775807)"},
      {u"Cells: (-99999999999999999999, 1)+(1, -99999999999999999999)", ""},
      // A combining mark makes another character of what it follows.
      {u"Lines: 1;\u0301 Columns: 2", "Lines: 1"},
      {u"Lines: \u0301; Columns: 2", "Columns: 2"},
      {u"Cells: (1, 2)+\u0301(3, 4)+(5, 6)", "Cells: (5, 6)"},
      {u"Cells: (\u03011, 2)+(3, 4)\u0301+(5, 6)", "Cells: (5, 6)"},
      // The Greek question mark is the same as a semicolon.
      {u"Lines: 1\u037E Columns: 2", "Lines: 1; Columns: 2"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(reprinted(text), expected) << toUtf8(text);
}

TEST(TwoDimensionalMutableIndexSet, ReadsEveryPieceOfTextAsThePlainRuleDoes) {
  const std::u16string_view alphabet[] = {
      u"Lines: ",
      u"Columns: ",
      u"Cells: ",
      u"Cells: (",
      u"; ",
      u"; ",
      u", ",
      u", ",
      u" - ",
      u" - ",
      u"+",
      u")+(",
      u"(",
      u")",
      u"(1, 2)",
      u"(3, 4)",
      u"1",
      u"2",
      u"3",
      u"12",
      u"0",
      u"9",
      u"-",
      u" ",
      u"x",
      u"\u0301",
      u"\u037E",
      u"\u212A",
      u",",
      u"\xA0",
      u"99999999999999999999",
  };
  const std::u16string_view beginnings[] = {u"Lines: ", u"Columns: ", u"Cells: (", u"Cells: (4, 4)+(", u""};
  RandomSource random(5101);
  for (auto round = rounds(20'000); round > 0; --round) {
    const std::u16string text = std::u16string(random.pick(beginnings)) + random.text(alphabet, 16);
    ASSERT_EQ(readFrom(text), testing::readPlainly(text)) << toUtf8(text);
  }
}

// --- Against a set of cells. ---

// Everything is kept one by one.
struct PlainSelection {
  std::set<std::int64_t> rows, columns, rowEntries;
  std::set<std::pair<std::int64_t, std::int64_t>> cells;

  void removeCellsIf(auto isRemoved) { std::erase_if(cells, isRemoved); }
  bool contains(std::int64_t row, std::int64_t column) const {
    return rows.count(row) || columns.count(column) || cells.count({row, column});
  }
  bool isEmpty() const { return rows.empty() && columns.empty() && rowEntries.empty(); }
};

constexpr std::int64_t kSide = 9;

// Rarely, as little is left afterwards.
void removeAPartOfBoth(RandomSource& random, Set& set, PlainSelection& plain) {
  switch (random.below(5)) {
    case 0:
      set.removeAllInfiniteRowIndexes();
      plain.rows.clear();
      break;
    case 1:
      set.removeAllInfiniteColumnIndexes();
      plain.columns.clear();
      break;
    case 2:
      set.removeAllInfiniteIndexes();
      plain.rows.clear();
      plain.columns.clear();
      break;
    case 3:
      set.removeNonInfiniteIndexes();
      plain.cells.clear();
      plain.rowEntries.clear();
      break;
    default:
      set.removeAllIndexes();
      plain = {};
  }
}

void changeBoth(RandomSource& random, Set& set, PlainSelection& plain) {
  const auto row = static_cast<std::int64_t>(random.below(kSide));
  const auto column = static_cast<std::int64_t>(random.below(kSide));
  const auto length = static_cast<std::int64_t>(random.below(4));
  if (random.oneIn(15)) return removeAPartOfBoth(random, set, plain);
  switch (random.below(16)) {
    case 0:
      set.addInfiniteRowIndex(row);
      plain.rows.insert(row);
      break;
    case 1:
      set.addInfiniteRowIndexesInRange(row, length);
      for (std::int64_t i = 0; i < length; ++i) plain.rows.insert(row + i);
      break;
    case 2:
      set.addInfiniteColumnIndex(column);
      plain.columns.insert(column);
      break;
    case 3:
      set.addInfiniteColumnIndexesInRange(column, length);
      for (std::int64_t i = 0; i < length; ++i) plain.columns.insert(column + i);
      break;
    case 4:
    case 5:
      set.removeRowIndex(row);
      plain.rows.erase(row);
      plain.rowEntries.erase(row);
      plain.removeCellsIf([row](const auto& cell) { return cell.first == row; });
      break;
    case 6:
    case 7:
      set.removeColumnIndex(column);
      plain.columns.erase(column);
      plain.removeCellsIf([column](const auto& cell) { return cell.second == column; });
      break;
    case 8:
    case 9:
    case 10:
      set.removeRowIndex(row, column);
      plain.cells.erase({row, column});
      break;
    default:
      set.addRowIndex(row, column);
      plain.cells.insert({row, column});
      plain.rowEntries.insert(row);
  }
}

bool sameCells(const Set& set, const PlainSelection& plain) {
  for (std::int64_t row = 0; row < kSide + 5; ++row)
    for (std::int64_t column = 0; column < kSide + 5; ++column)
      if (set.containsRowIndex(row, column) != plain.contains(row, column)) return false;
  return true;
}

TEST(TwoDimensionalMutableIndexSet, HoldsWhatAPlainSetOfCellsHolds) {
  RandomSource random(5102);
  for (auto round = rounds(300); round > 0; --round) {
    Set set;
    PlainSelection plain;
    for (int step = 0; step < 40; ++step) {
      changeBoth(random, set, plain);
      ASSERT_TRUE(sameCells(set, plain)) << "round " << round << " step " << step << ": " << textOf(set);
      ASSERT_EQ(set.isEmpty(), plain.isEmpty());
    }
  }
}

// The same set without its empty entries.
Set withoutEmptyEntries(const Set& set) {
  Set result;
  for (const auto& range : set.infiniteRowIndexSet().ranges())
    result.addInfiniteRowIndexesInRange(range.first, range.last - range.first + 1);
  for (const auto& range : set.infiniteColumnIndexSet().ranges())
    result.addInfiniteColumnIndexesInRange(range.first, range.last - range.first + 1);
  for (const auto& [row, columns] : set.rowIndexDictionary())
    for (const auto& range : columns.ranges())
      for (auto column = range.first; column <= range.last; ++column) result.addRowIndex(row, column);
  return result;
}

TEST(TwoDimensionalMutableIndexSet, IsReadAgainAsItWasPrintedButForEmptyEntries) {
  RandomSource random(5103);
  for (auto round = rounds(2'000); round > 0; --round) {
    Set set;
    PlainSelection plain;
    for (std::size_t step = random.below(40); step > 0; --step) changeBoth(random, set, plain);
    ASSERT_EQ(readFrom(set.stringPlus1FromAllIndexes()), withoutEmptyEntries(set)) << textOf(set);
  }
}

// --- Size. ---

TEST(TwoDimensionalMutableIndexSet, ReadsAndPrintsLargeSelections) {
  constexpr int kMany = 50'000;
  std::u16string ascending = u"Lines: 1";
  std::u16string descending = u"Columns: ";
  for (int number = 3; number < 2 * kMany; number += 2) {
    ascending += u", ";
    appendInteger(number, ascending);
  }
  for (int number = 2 * kMany; number > 0; number -= 2) {
    appendInteger(number, descending);
    descending += number > 2 ? u", " : u"; ";
  }
  std::u16string cells = u"Cells: ";
  for (int number = kMany; number > 0; --number) {
    cells += u"(";
    appendInteger(number, cells);
    cells += u", 7)";
    if (number > 1) cells += u"+";
  }
  const Set set(descending + cells + u"; " + ascending);
  EXPECT_EQ(set.infiniteRowIndexSet().count(), kMany);
  EXPECT_EQ(set.infiniteColumnIndexSet().count(), kMany);
  EXPECT_EQ(set.rowIndexDictionary().size(), static_cast<std::size_t>(kMany));
  EXPECT_EQ(Set(set.stringPlus1FromAllIndexes()), set);
}

}  // namespace
}  // namespace quillet
