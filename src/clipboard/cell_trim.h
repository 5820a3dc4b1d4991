// Trimming of one cell. It differs from the trimming of a line: from both sides, a cell that matches at both
// ends loses only its end, which is meant.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "operations/operation_record.h"
#include "platform/character_set.h"
#include "platform/regular_expression.h"
#include "platform/text_search.h"

namespace quillet {

// An operation of the code 311 made ready for many cells.
class CellTrimmer {
 public:
  explicit CellTrimmer(const OperationRecord& operation);

  // A part of the text, or a text that holds until the next call.
  std::u16string_view trimmed(std::u16string_view text);

 private:
  std::optional<TextRange> matchAt(std::u16string_view text, const TextSearcher& searcher, bool end) const;

  std::int64_t trimType_;
  bool fromStart_;
  bool fromEnd_;
  TextSearcher atStart_;
  TextSearcher atEnd_;
  CharacterSet set_;
  std::optional<RegularExpression> expression_;
  std::u16string scratch_;
};

}  // namespace quillet
