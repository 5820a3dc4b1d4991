#include "engine/file_settings.h"

#include <algorithm>

#include "operations/operation_codes.h"

namespace quillet {

std::vector<ReplacementTable::Pair> replaceCharactersFromOperations(const OperationList& operations,
                                                                    std::u16string_view quoteString,
                                                                    std::u16string_view lineSeparator,
                                                                    std::u16string_view columnSeparator) {
  std::vector<ReplacementTable::Pair> pairs;
  for (const auto& record : operations) {
    if (record.code() != OpReplaceCharacter) continue;
    appendReplacementPairs(record.integer("IntArg2", 0), record.text("Arg1"), record.text("Arg2"),
                           quoteString, lineSeparator, columnSeparator, pairs);
  }
  return pairs;
}

FileSettings settingsFromOperations(const OperationList& operations) {
  FileSettings settings;
  if (operations.size() < 2) return settings;
  const OperationRecord& initial = operations.front();
  const OperationRecord& final = operations.back();
  settings.runOperations = true;
  settings.inputEncoding = initial.integer("IntArg2", 4);
  settings.outputEncoding = final.integer("IntArg2", 4);
  settings.splitIntoLines = hasFlags(initial.integer("IntArg1", 0), SplitIntoLines);
  settings.splitIntoColumns = hasFlags(initial.integer("IntArg1", 0), SplitIntoColumns);
  // What was not split on the way in is not joined on the way out, whatever the final operation holds: this
  // is meant.
  if (settings.splitIntoLines) {
    settings.inputLineSeparator = initial.text("Arg1");
    settings.outputLineSeparator = final.text("Arg1");
  }
  if (settings.splitIntoColumns) {
    settings.inputColumnSeparator = initial.text("Arg2");
    settings.outputColumnSeparator = final.text("Arg2");
  }
  if (hasFlags(initial.integer("IntArg1", 0), RemoveQuotes)) settings.inputQuote = u"\"";
  settings.outputFileName = final.text("Arg4");
  settings.addQuotes = hasFlags(final.integer("IntArg1", 0), AddQuotes);
  settings.addLineSeparator = hasFlags(final.integer("IntArg1", 0), AddLineSeparator);
  settings.writeMode = final.integer("IntArg3", 2);
  settings.replaceCharacters = replaceCharactersFromOperations(
      operations, settings.inputQuote, settings.inputLineSeparator, settings.inputColumnSeparator);

  for (const auto& record : middleRecords(operations)) {
    if (record.code() != OpJoinLines) continue;
    settings.joinLinesCount = std::max<std::int64_t>(0, record.integer("IntArg1", 0));
    settings.joinLinesSeparator = record.text("Arg1");
    break;
  }
  return settings;
}

}  // namespace quillet
