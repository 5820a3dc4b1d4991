// Trimming of one cell. It differs from the trimming of a line: from both sides, a cell that matches at both
// ends loses only its end, which is meant.
#pragma once

#include <optional>
#include <string_view>

#include "operations/operation_record.h"
#include "operations/text_trim.h"
#include "platform/text_buffer.h"

namespace quillet {

// An operation of the code 311 made ready for many cells.
class CellTrimmer {
 public:
  explicit CellTrimmer(const OperationRecord& operation);

  // A part of the text, or a text in the arena.
  std::u16string_view trimmed(std::u16string_view text, TextArena& arena);

 private:
  // Each trims one end only; that of the start also takes the matches of a regular expression, which may lie
  // anywhere. Nothing where the operation asks for none.
  std::optional<TextTrimmer> atStart_;
  std::optional<TextTrimmer> atEnd_;
};

}  // namespace quillet
