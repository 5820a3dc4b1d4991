#include "shell/panels/column_entries.h"

#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/text_search.h"

namespace quillet {

namespace {

void appendSeparator(std::u16string& text) {
  if (!text.empty()) text += u", ";
}

}  // namespace

const std::vector<ColumnEntry>& expectedColumns(const InputFiles::Entry& file) {
  static const std::vector<ColumnEntry> none;
  return file && file->expectedColumnsInLine ? *file->expectedColumnsInLine : none;
}

std::int64_t columnNumber(const ColumnEntry& column) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(column.columnIndex.value_or(0)) + 1);
}

std::u16string shownColumn(const ColumnEntry& column) {
  return formatted(u"%ld. %@", {columnNumber(column), column.columnDescriptor});
}

std::u16string shownColumns(const std::vector<ColumnEntry>& columns) {
  std::u16string text;
  for (const auto& column : columns) {
    appendSeparator(text);
    text += shownColumn(column);
  }
  return text;
}

std::vector<ColumnEntry> columnsNamedBy(std::u16string_view text, std::u16string_view separator,
                                        const std::vector<ColumnEntry>& columns) {
  std::vector<ColumnEntry> result;
  for (const auto token : componentsSeparatedByString(text, separator)) {
    const std::int64_t number = integerValue(token);
    if (number >= 1 && number <= static_cast<std::int64_t>(columns.size()))
      result.push_back(columns[static_cast<std::size_t>(number - 1)]);
  }
  return result;
}

std::u16string stringListFromColumnDictionaryArray(const std::vector<ColumnEntry>& columns) {
  std::u16string text;
  for (const auto& column : columns) {
    appendSeparator(text);
    appendInteger(column.columnIndex ? columnNumber(column) : 0, text);
  }
  return text;
}

}  // namespace quillet
