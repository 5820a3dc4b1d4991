#include "clipboard/grid_text.h"

#include <vector>

#include "platform/simd_blocks.h"
#include "platform/text_buffer.h"
#include "platform/text_search.h"
#include "text/field_splitter.h"
#include "text/text_writer.h"

namespace quillet {

namespace {

constexpr std::u16string_view kQuote = u"\"";

struct LineEnds {
  std::size_t lineCount = 1;
  std::vector<TextRange> separators;  // not beyond the lines that may be
};

// Without regard to quotes, which is meant: what is pasted is cut where one sees the separator.
LineEnds lineEndsIn(std::u16string_view text, std::u16string_view separator) {
  LineEnds result;
  result.lineCount += TextSearcher(separator, 0).forEachHit(text, [&](TextRange hit) {
    if (result.separators.size() < kMostLines) result.separators.push_back(hit);
  });
  return result;
}

// How many the line has if that is too many, otherwise 0. Of a line without its right separator there can be
// so many that one must not collect them.
std::size_t tooManyColumns(std::u16string_view line, const FieldSplitter& splitter) {
  if (line.size() < kMostColumns) return 0;
  const std::size_t count = splitter.fieldCount(line);
  return count > kMostColumns ? count : 0;
}

std::size_t quotesIn(std::u16string_view text) {
  std::size_t count = 0;
  for (std::size_t at = simd::findUnit(text, kQuote[0], 0); at < text.size();
       at = simd::findUnit(text, kQuote[0], at + 1))
    ++count;
  return count;
}

// At least what the joined text takes, and more only where a quote is not doubled.
std::size_t joinedLengthInUnits(const ClipboardGrid& grid, std::u16string_view lineSeparator,
                                std::u16string_view columnSeparator, bool addQuotes) {
  if (grid.rowCount() == 0) return 0;
  std::size_t length = (grid.rowCount() - 1) * lineSeparator.size();
  grid.forEachRow([&](const ClipboardRow& row) {
    if (row.cellCount() == 0) return;
    length += row.lengthInUnits() + (row.cellCount() - 1) * columnSeparator.size();
    if (addQuotes) length += row.cellCount() * 2 * kQuote.size() + quotesIn(row.text());
  });
  return length;
}

}  // namespace

SplitText splitText(std::u16string_view text, std::u16string_view lineSeparator,
                    std::u16string_view columnSeparator, bool removeQuotes) {
  const LineEnds ends = lineEndsIn(text, lineSeparator);
  if (ends.lineCount > kMostLines) return {SplitText::Result::TooManyLines, {}, ends.lineCount, 0};

  const FieldSplitter splitter(columnSeparator, removeQuotes ? kQuote : std::u16string_view());
  GridBuilder rows;
  Cells cells;
  TextArena arena;
  std::size_t start = 0;
  for (std::size_t line = 0; line < ends.lineCount; ++line) {
    const bool isLast = line == ends.separators.size();
    const std::size_t end = isLast ? text.size() : ends.separators[line].location;
    const std::u16string_view lineText = text.substr(start, end - start);
    if (const std::size_t count = tooManyColumns(lineText, splitter))
      return {SplitText::Result::TooManyColumns, rows.take(), count, line + 1};
    cells.clear();
    arena.reset();
    splitter.split(lineText, cells, arena);
    rows.append(ClipboardRow(cells));
    if (!isLast) start = ends.separators[line].end();
  }
  return {SplitText::Result::Done, rows.take()};
}

std::u16string joinedText(const ClipboardGrid& grid, std::u16string_view lineSeparator,
                          std::u16string_view columnSeparator, bool addQuotes) {
  std::u16string result;
  result.reserve(joinedLengthInUnits(grid, lineSeparator, columnSeparator, addQuotes));
  Cells cells;
  TextBuffer line;
  bool isFirst = true;
  grid.forEachRow([&](const ClipboardRow& row) {
    if (!isFirst) result.append(lineSeparator);
    isFirst = false;
    cells.clear();
    for (std::size_t column = 0; column < row.cellCount(); ++column) cells.push_back(row.cell(column));
    line.clear();
    appendJoined(cells, columnSeparator, addQuotes ? cells.size() : 0, line);
    result.append(line.view());
  });
  return result;
}

}  // namespace quillet
