// Turns the text of a cell into a date, a time, a date with time, an integer or a number in a chosen form.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "operations/operation_record.h"
#include "platform/date_ladders.h"
#include "platform/text_buffer.h"

namespace quillet {

// One object serves one thread.
class ColumnReformatter {
 public:
  // A warning for the log.
  using Warn = std::function<void(std::u16string_view message)>;

  // reader and warn must outlive the reformatter.
  ColumnReformatter(const OperationRecord& record, DateReader& reader, const Warn& warn);

  // The new text, in the arena; nothing when the cell keeps its own.
  std::optional<std::u16string_view> reformatted(std::u16string_view cell, std::int64_t inputLineIndex,
                                                 TextArena& arena);

 private:
  std::optional<std::u16string_view> reformattedDate(std::u16string_view cell, std::int64_t inputLineIndex,
                                                     TextArena& arena);

  std::int64_t reformatAs_;
  bool useInvalidString_;
  std::u16string invalidString_;
  std::int64_t digits_;
  DateReader& reader_;
  const Warn& warn_;
  std::optional<DatePrinter> printer_;
  std::u16string scratch_;
};

}  // namespace quillet
