// Trimming, replacing and filling of plain lists of cells, by the plain rules.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "clipboard/cell_string_reference.h"
#include "clipboard/plain_cells.h"
#include "operations/operation_record.h"
#include "operations/text_trim.h"
#include "platform/case_mapping.h"
#include "platform/character_set.h"
#include "platform/numbers.h"
#include "platform/regular_expression.h"
#include "platform/text_search.h"

namespace quillet::testing {

// The types of the records, as numbers.
inline constexpr std::int64_t kTrimString = 0, kTrimCharacters = 1, kTrimWhitespace = 2, kTrimExpression = 3;
inline constexpr std::int64_t kReplaceString = 0, kReplaceExpression = 1;
inline constexpr std::int64_t kFillString = 0, kFillSequence = 1;

template <typename Rule>
inline PlainCells plainlyChanged(PlainCells rows, const std::u16string& cellString, Rule rule) {
  const TwoDimensionalMutableIndexSet selection = readPlainly(cellString);
  for (std::size_t row = 0; row < rows.size(); ++row)
    for (std::size_t column = 0; column < rows[row].size(); ++column)
      if (selection.containsRowIndex(static_cast<std::int64_t>(row), static_cast<std::int64_t>(column)))
        rows[row][column] = rule(rows[row][column]);
  return rows;
}

inline std::u16string plainlyReplaced(const OperationRecord& operation, const std::u16string& cell) {
  const bool sensitive = operation.integer("IntArg1", 0) & 1;
  const std::u16string what = operation.text("Arg2"), with = operation.text("Arg3");
  if (operation.integer("IntArg2", 0) == kReplaceString)
    return stringByReplacingOccurrences(cell, what, with, sensitive ? 0u : CaseInsensitiveSearch);
  if (operation.integer("IntArg2", 0) != kReplaceExpression) return cell;
  auto expression = RegularExpression::compiled(
      what, sensitive ? CaseSensitivity::Sensitive : CaseSensitivity::Insensitive);
  std::u16string result;
  return expression && expression->appendReplacingMatches(cell, with, result) > 0 ? result : cell;
}

inline PlainCells plainlyFilled(const PlainCells& rows, const OperationRecord& operation) {
  const std::u16string text = operation.text("Arg1");
  const auto pieces = componentsSeparatedByString(text, u",");
  auto counter = static_cast<std::uint64_t>(integerValue(pieces[0]));  // may overflow
  const std::int64_t step = pieces.size() > 1 ? integerValue(pieces[1]) : 1;
  return plainlyChanged(rows, operation.text("Arg2"), [&](const std::u16string& cell) {
    if (operation.integer("IntArg1", 0) == kFillString) return text;
    if (operation.integer("IntArg1", 0) != kFillSequence) return cell;
    std::u16string number;
    appendInteger(static_cast<std::int64_t>(counter), number);
    counter += static_cast<std::uint64_t>(step);
    return number;
  });
}

inline std::u16string plainlyTrimmed(std::int64_t type, std::int64_t where, std::int64_t caseFlag,
                                     const std::u16string& what, const std::u16string& cell) {
  const bool sensitive = caseFlag & 1;
  if (type == kTrimExpression) {
    if (what.empty()) return cell;
    auto expression = RegularExpression::compiled(
        what, sensitive ? CaseSensitivity::Sensitive : CaseSensitivity::Insensitive);
    std::u16string result;
    return expression && expression->appendReplacingMatches(cell, u"", result) > 0 ? result : cell;
  }
  std::u16string result = cell;
  const SearchOptions caseOption = sensitive ? 0u : CaseInsensitiveSearch;
  const CharacterSet set = type == kTrimWhitespace
                               ? CharacterSet::whitespace()
                               : CharacterSet::withCharactersInString(
                                     sensitive ? what : lowercaseString(what) + uppercaseString(what));
  const auto foundAt = [&](SearchOptions options, bool fromEnd) -> std::optional<TextRange> {
    if (type == kTrimString) return rangeOfString(cell, what, options);
    if (type == kTrimCharacters || type == kTrimWhitespace)
      return longestRangeOfCharactersInSet(set, cell, options, fromEnd);
    return std::nullopt;
  };
  if (where == 0 || where == 1)
    if (const auto found = foundAt(AnchoredSearch | caseOption, false)) result = cell.substr(found->end());
  if (where == 0 || where == 2)
    if (const auto found = foundAt(BackwardsSearch | AnchoredSearch | caseOption, true))
      result = cell.substr(0, found->location);
  return result;
}

}  // namespace quillet::testing
