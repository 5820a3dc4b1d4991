#include "clipboard/two_dimensional_mutable_index_set.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

#include "operations/line_numbers.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/text_search.h"

namespace quillet {

namespace {

using Range = IndexSet::Range;

constexpr std::int64_t kMaximum = std::numeric_limits<std::int64_t>::max();

// That the text form can name: it counts from 1.
bool isIndex(std::int64_t index) {
  return index >= 0 && index < kMaximum;
}

void addRange(std::int64_t location, std::int64_t length, IndexSet& into) {
  if (length < 1) return;
  const std::int64_t last = location > kMaximum - (length - 1) ? kMaximum : location + (length - 1);
  into.addRange(location, last);
}

// Reading. What the text names is collected and sorted first, so that adding it is quick in any order.

struct Cell {
  std::int64_t row = 0;
  std::int64_t column = 0;
};

// In the numbers of the text, from 1.
struct NamedIndexes {
  std::vector<Range> lines;
  std::vector<Range> columns;
  std::vector<Cell> cells;
};

// A text cut at a separator.
struct TwoParts {
  std::size_t count = 0;  // of parts; may be more than two
  std::u16string_view first;
  std::u16string_view second;  // of exactly two
};

class CellStringReader {
 public:
  explicit CellStringReader(NamedIndexes& into) : into_(into) {}

  void read(std::u16string_view cellString) const {
    forEachPart(cellString, sectionEnd_, [this](std::u16string_view section) { readSection(section); });
  }

 private:
  template <typename Visit>
  static void forEachPart(std::u16string_view text, const TextSearcher& separator, Visit visit) {
    std::size_t start = 0;
    separator.forEachHit(text, [&](TextRange hit) {
      visit(text.substr(start, hit.location - start));
      start = hit.end();
    });
    visit(text.substr(start));
  }

  static TwoParts twoParts(std::u16string_view text, const TextSearcher& separator) {
    TwoParts parts;
    forEachPart(text, separator, [&parts](std::u16string_view part) {
      ++parts.count;
      (parts.count == 1 ? parts.first : parts.second) = part;
    });
    return parts;
  }

  void readSection(std::u16string_view section) const {
    if (const auto cells = cells_.find(section))
      forEachPart(section.substr(cells->end()), cellEnd_,
                  [this](std::u16string_view cell) { readCell(cell); });
    else if (const auto lines = lines_.find(section))
      readRuns(section.substr(lines->end()), into_.lines);
    else if (const auto columns = columns_.find(section))
      readRuns(section.substr(columns->end()), into_.columns);
  }

  void readCell(std::u16string_view text) const {
    const TwoParts parts = twoParts(text, cellMiddle_);
    if (parts.count != 2) return;
    const auto open = open_.find(parts.first);
    if (!open || !close_.find(parts.second)) return;
    into_.cells.push_back({integerValue(parts.first.substr(open->end())), integerValue(parts.second)});
  }

  void readRuns(std::u16string_view text, std::vector<Range>& runs) const {
    forEachPart(text, runEnd_, [&](std::u16string_view run) { readRun(run, runs); });
  }

  void readRun(std::u16string_view text, std::vector<Range>& runs) const {
    const TwoParts parts = twoParts(text, runMiddle_);
    if (parts.count > 2) return;
    const std::int64_t first = integerValue(parts.first);
    const std::int64_t last = parts.count == 2 ? integerValue(parts.second) : first;
    if (parts.count == 2 && last <= first) return;  // "4 - 4" names nothing, which is meant
    runs.push_back({first, last});
  }

  // The words are read as they stand in English, whatever the language of the user.
  TextSearcher cells_{u"Cells: ", AnchoredSearch};
  TextSearcher lines_{u"Lines: ", AnchoredSearch};
  TextSearcher columns_{u"Columns: ", AnchoredSearch};
  TextSearcher sectionEnd_{u"; ", 0};
  TextSearcher runEnd_{u", ", 0};
  TextSearcher runMiddle_{u" - ", 0};
  TextSearcher cellEnd_{u"+", 0};
  TextSearcher cellMiddle_{u",", 0};
  TextSearcher open_{u"(", AnchoredSearch};
  TextSearcher close_{u")", AnchoredSearch | BackwardsSearch};
  NamedIndexes& into_;
};

template <typename Less, typename Element>
void sortUnlessSorted(std::vector<Element>& elements, Less less) {
  if (!std::is_sorted(elements.begin(), elements.end(), less))
    std::sort(elements.begin(), elements.end(), less);
}

void addRuns(std::vector<Range>& runs, IndexSet& into) {
  sortUnlessSorted(runs, [](const Range& a, const Range& b) { return a.first < b.first; });
  for (const Range& run : runs)
    if (run.last > 0) into.addRange(std::max<std::int64_t>(run.first, 1) - 1, run.last - 1);
}

// Printing.

void appendPart(std::u16string_view part, std::u16string_view separator, std::u16string& text) {
  if (!text.empty()) text += separator;
  text += part;
}

void appendCell(std::int64_t row, std::int64_t column, std::u16string& cells) {
  if (!cells.empty()) cells += u'+';
  cells += u'(';
  appendInteger(row + 1, cells);
  cells += u", ";
  appendInteger(column + 1, cells);
  cells += u')';
}

void appendSection(std::u16string_view key, std::u16string_view content, std::u16string& text) {
  if (!content.empty()) appendPart(localized(key).append(content), u"; ", text);
}

}  // namespace

TwoDimensionalMutableIndexSet::TwoDimensionalMutableIndexSet(std::u16string_view cellString) {
  NamedIndexes named;
  CellStringReader(named).read(cellString);
  addRuns(named.lines, infRowIndexSet_);
  addRuns(named.columns, infColumnIndexSet_);
  sortUnlessSorted(named.cells, [](const Cell& a, const Cell& b) {
    return std::tie(a.row, a.column) < std::tie(b.row, b.column);
  });
  for (const Cell& cell : named.cells)
    if (cell.row > 0 && cell.column > 0) addRowIndex(cell.row - 1, cell.column - 1);
}

void TwoDimensionalMutableIndexSet::addRowIndex(std::int64_t row, std::int64_t column) {
  if (!isIndex(row) || !isIndex(column)) return;
  // Rows mostly come in ascending order.
  if (rowIndexDictionary_.empty() || rowIndexDictionary_.rbegin()->first < row)
    rowIndexDictionary_.emplace_hint(rowIndexDictionary_.end(), row, IndexSet{column});
  else
    rowIndexDictionary_[row].addIndex(column);
}

void TwoDimensionalMutableIndexSet::addInfiniteRowIndex(std::int64_t row) {
  infRowIndexSet_.addIndex(row);
}

void TwoDimensionalMutableIndexSet::addInfiniteRowIndexesInRange(std::int64_t location, std::int64_t length) {
  addRange(location, length, infRowIndexSet_);
}

void TwoDimensionalMutableIndexSet::addInfiniteColumnIndex(std::int64_t column) {
  infColumnIndexSet_.addIndex(column);
}

void TwoDimensionalMutableIndexSet::addInfiniteColumnIndexesInRange(std::int64_t location,
                                                                    std::int64_t length) {
  addRange(location, length, infColumnIndexSet_);
}

void TwoDimensionalMutableIndexSet::removeRowIndex(std::int64_t row, std::int64_t column) {
  const auto entry = rowIndexDictionary_.find(row);
  if (entry != rowIndexDictionary_.end()) entry->second.removeIndex(column);
}

void TwoDimensionalMutableIndexSet::removeRowIndex(std::int64_t row) {
  infRowIndexSet_.removeIndex(row);
  rowIndexDictionary_.erase(row);
}

void TwoDimensionalMutableIndexSet::removeColumnIndex(std::int64_t column) {
  infColumnIndexSet_.removeIndex(column);
  for (auto& [row, columns] : rowIndexDictionary_) columns.removeIndex(column);
}

void TwoDimensionalMutableIndexSet::removeAllInfiniteIndexes() {
  removeAllInfiniteRowIndexes();
  removeAllInfiniteColumnIndexes();
}

void TwoDimensionalMutableIndexSet::removeAllIndexes() {
  removeAllInfiniteIndexes();
  removeNonInfiniteIndexes();
}

bool TwoDimensionalMutableIndexSet::containsRowIndex(std::int64_t row, std::int64_t column) const {
  if (containsInfiniteRowIndex(row) || containsInfiniteColumnIndex(column)) return true;
  const auto entry = rowIndexDictionary_.find(row);
  return entry != rowIndexDictionary_.end() && entry->second.contains(column);
}

bool TwoDimensionalMutableIndexSet::isEmpty() const {
  return infRowIndexSet_.isEmpty() && infColumnIndexSet_.isEmpty() && rowIndexDictionary_.empty();
}

std::u16string TwoDimensionalMutableIndexSet::stringPlus1FromInfiniteIndexSet(const IndexSet* set) {
  return set ? stringPlus1FromIndexSet(*set) : std::u16string();
}

std::u16string TwoDimensionalMutableIndexSet::stringPlus1FromAllIndexes() const {
  std::u16string cells;
  for (const auto& [row, columns] : rowIndexDictionary_)
    for (const Range& run : columns.ranges())
      for (std::int64_t column = run.first; column <= run.last; ++column) appendCell(row, column, cells);
  std::u16string text;
  // The words go through a catalogue, but a text in other words cannot be read again, which is meant.
  appendSection(u"Lines: ", stringPlus1FromInfiniteIndexSet(&infRowIndexSet_), text);
  appendSection(u"Columns: ", stringPlus1FromInfiniteIndexSet(&infColumnIndexSet_), text);
  appendSection(u"Cells: ", cells, text);
  return text;
}

}  // namespace quillet
