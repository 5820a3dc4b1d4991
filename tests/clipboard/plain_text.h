// From the clipboard's text to plain lists of cells and back, by the plain rules.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "clipboard/plain_cells.h"
#include "platform/text_search.h"
#include "text/field_splitter.h"

namespace quillet::testing {

inline PlainCells plainSplit(std::u16string_view text, std::u16string_view lineSeparator,
                             std::u16string_view columnSeparator, bool removeQuotes) {
  std::vector<std::u16string_view> lines{text};
  if (!lineSeparator.empty()) lines = componentsSeparatedByString(text, lineSeparator);
  PlainCells rows;
  for (const std::u16string_view line : lines)
    findFieldsInLine(line, rows.emplace_back(), columnSeparator, removeQuotes ? u"\"" : u"");
  return rows;
}

inline std::u16string plainJoin(const PlainCells& rows, std::u16string_view lineSeparator,
                                std::u16string_view columnSeparator, bool addQuotes) {
  std::u16string result;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (i > 0) result += lineSeparator;
    for (std::size_t column = 0; column < rows[i].size(); ++column) {
      if (column > 0) result += columnSeparator;
      const std::u16string& cell = rows[i][column];
      result += addQuotes ? u"\"" + stringByReplacingOccurrences(cell, u"\"", u"\"\"") + u"\"" : cell;
    }
  }
  return result;
}

}  // namespace quillet::testing
