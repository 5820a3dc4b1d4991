#include "clipboard/cell_trim.h"

#include <string>

#include "operations/case_option.h"
#include "operations/operation_codes.h"

namespace quillet {

CellTrimmer::CellTrimmer(const OperationRecord& operation) {
  const std::int64_t type = operation.integer("IntArg2", 0);
  const auto from = static_cast<TrimFromWhere>(operation.integer("IntArg3", 0));
  const bool isExpression = static_cast<TrimType>(type) == TrimType::RegularExpression;
  const std::u16string text = operation.text("Arg2");
  const auto trimmerFrom = [&](TrimFromWhere end) {
    return TextTrimmer(type, static_cast<std::int64_t>(end), caseSensitivityOf(operation), text);
  };
  if (isExpression || from == TrimFromWhere::BothSides || from == TrimFromWhere::Start)
    atStart_ = trimmerFrom(TrimFromWhere::Start);
  if (!isExpression && (from == TrimFromWhere::BothSides || from == TrimFromWhere::End))
    atEnd_ = trimmerFrom(TrimFromWhere::End);
}

std::u16string_view CellTrimmer::trimmed(std::u16string_view text, TextArena& arena) {
  // The end goes from the cell as it came in and not from what the start has left: this is meant.
  if (atEnd_) {
    const std::u16string_view withoutEnd = atEnd_->trimmed(text, arena);
    if (withoutEnd.size() != text.size()) return withoutEnd;
  }
  return atStart_ ? atStart_->trimmed(text, arena) : text;
}

}  // namespace quillet
