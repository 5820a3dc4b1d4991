// What the operations of one file say about reading and writing it, taken once before its first line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "operations/operation_record.h"
#include "text/replacement_table.h"

namespace quillet {

struct FileSettings {
  bool runOperations = false;  // the list has both ends; otherwise lines only reach the preview of the input
  std::int64_t inputEncoding = 4;
  bool splitIntoLines = false;
  std::u16string inputLineSeparator;  // "" is none
  bool splitIntoColumns = false;
  std::u16string inputColumnSeparator;  // "" is none: column operations do nothing then
  std::u16string inputQuote;            // "" is none
  std::int64_t outputEncoding = 4;
  std::u16string outputLineSeparator;
  std::u16string outputColumnSeparator;
  std::u16string outputFileName;
  bool addQuotes = false;
  bool addLineSeparator = false;
  std::int64_t writeMode = 2;
  std::vector<ReplacementTable::Pair> replaceCharacters;
  std::int64_t joinLinesCount = 0;  // below 2: no joining
  std::u16string joinLinesSeparator;
};

FileSettings settingsFromOperations(const OperationList& operations);

// The pairs of all Replace Character operations, in list order.
std::vector<ReplacementTable::Pair> replaceCharactersFromOperations(const OperationList& operations,
                                                                    std::u16string_view quoteString,
                                                                    std::u16string_view lineSeparator,
                                                                    std::u16string_view columnSeparator);

}  // namespace quillet
