// The columns of the one selected input file, as the panels offer them, and lists of their numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/input_files.h"
#include "shell/file_selection.h"

namespace quillet {

// The columns of the file's first kept line; empty for null, and before there was such a line. The file
// outlives the result.
const std::vector<ColumnEntry>& expectedColumns(const InputFiles::Entry& file);

// From 1; 1 for a column without an index. The largest index has no number behind it and wraps around.
std::int64_t columnNumber(const ColumnEntry& column);

// "3. text", the number from 1.
std::u16string shownColumn(const ColumnEntry& column);
// The same of several, joined by ", ".
std::u16string shownColumns(const std::vector<ColumnEntry>& columns);

// The columns whose numbers, from 1, the text names, separated by the separator. Numbers that no column has
// are dropped.
std::vector<ColumnEntry> columnsNamedBy(std::u16string_view text, std::u16string_view separator,
                                        const std::vector<ColumnEntry>& columns);

// The numbers from 1, joined by ", ". A column without an index prints 0.
std::u16string stringListFromColumnDictionaryArray(const std::vector<ColumnEntry>& columns);

}  // namespace quillet
