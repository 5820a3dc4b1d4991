// The operations on a line as one text, before it is split into cells: skip, trim and replace, in list order.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "operations/operation_record.h"
#include "operations/text_replace.h"
#include "operations/text_trim.h"
#include "platform/index_set.h"

namespace quillet {

// Whether a line is skipped, made ready from a Skip Line operation.
class LineSkipper {
 public:
  explicit LineSkipper(const OperationRecord& record);
  // inputLineIndex counts from 0 over all lines of the input.
  bool skips(std::u16string_view line, std::int64_t inputLineIndex);

 private:
  std::int64_t type_;
  std::optional<TextSearcher> searcher_;
  std::optional<RegularExpression> expression_;
  IndexSet lineNumbers_;  // from 1
  std::int64_t skipBeyondNumber_ = -1;
};

// One object serves one thread.
class LineOperations {
 public:
  explicit LineOperations(std::span<const OperationRecord> records);  // codes of other kinds are passed over

  // The line after all operations, a view of the line or into the arena; nothing when it is skipped.
  std::optional<std::u16string_view> apply(std::u16string_view line, std::int64_t inputLineIndex,
                                           TextArena& arena);

 private:
  std::vector<std::variant<LineSkipper, TextTrimmer, TextReplacer>> steps_;
};

}  // namespace quillet
