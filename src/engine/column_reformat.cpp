#include "engine/column_reformat.h"

#include <algorithm>

#include "operations/operation_codes.h"
#include "platform/character_set.h"
#include "platform/localization.h"
#include "platform/numbers.h"

namespace quillet {

namespace {

// More digits behind the point than a line of the input has units would only exhaust the memory.
constexpr std::int64_t kMostDigits = 16'384;

std::optional<DatePrinter> printerFor(std::int64_t reformatAs, std::int64_t format, std::int64_t timeFormat) {
  switch (static_cast<ReformatAs>(reformatAs)) {
    case ReformatAs::Date:
      return DatePrinter::forDate(format);
    case ReformatAs::Time:
      return DatePrinter::forTime(format);
    case ReformatAs::DateTime:
      return DatePrinter::forDateTime(format, timeFormat);
    case ReformatAs::Integer:
    case ReformatAs::Number:
      break;
  }
  return std::nullopt;
}

std::optional<Instant> instantOf(ReformatAs reformatAs, std::u16string_view text, DateReader& reader) {
  if (reformatAs == ReformatAs::Date) return reader.dateFromString(text);
  if (reformatAs == ReformatAs::Time) return reader.timeFromString(text);
  return reader.dateTimeFromString(text);
}

std::u16string_view warningFor(ReformatAs reformatAs) {
  if (reformatAs == ReformatAs::Date) return localizable(u"Could not convert \"%@\" into a date on line %ld");
  if (reformatAs == ReformatAs::Time) return localizable(u"Could not convert \"%@\" into a time on line %ld");
  return localizable(u"Could not convert \"%@\" into a date time on line %ld");
}

}  // namespace

ColumnReformatter::ColumnReformatter(const OperationRecord& record, DateReader& reader, const Warn& warn)
    : reformatAs_(record.integer("IntArg2", 1)),
      useInvalidString_(hasFlags(record.integer("IntArg1", 0), UseInvalidStringFlag)),
      invalidString_(record.text("Arg2")),
      digits_(std::min(record.integer("Arg5", 0), kMostDigits)),
      reader_(reader),
      warn_(warn),
      printer_(printerFor(reformatAs_, record.integer("IntArg3", 1), record.integer("IntArg4", 1))) {}

std::optional<std::u16string_view> ColumnReformatter::reformatted(std::u16string_view cell,
                                                                  std::int64_t inputLineIndex,
                                                                  TextArena& arena) {
  scratch_.clear();
  switch (static_cast<ReformatAs>(reformatAs_)) {
    case ReformatAs::Date:
    case ReformatAs::Time:
    case ReformatAs::DateTime:
      return reformattedDate(cell, inputLineIndex, arena);
    case ReformatAs::Integer:
      appendInteger(integerValue(cell), scratch_);
      return arena.copy(scratch_);
    // Numbers have the precision of 32 bits: this is meant.
    case ReformatAs::Number:
      appendFixed(floatValue(cell), digits_, scratch_);
      return arena.copy(scratch_);
  }
  return std::nullopt;
}

std::optional<std::u16string_view> ColumnReformatter::reformattedDate(std::u16string_view cell,
                                                                      std::int64_t inputLineIndex,
                                                                      TextArena& arena) {
  const std::u16string_view text = trimmed(cell, CharacterSet::whitespaceAndNewline());
  if (text.empty()) return std::nullopt;
  const auto reformatAs = static_cast<ReformatAs>(reformatAs_);
  const auto instant = instantOf(reformatAs, text, reader_);
  if (instant) {
    printer_->append(*instant, scratch_);
    return arena.copy(scratch_);
  }
  warn_(localizedFormat(warningFor(reformatAs), {text, inputLineIndex + 1}));
  if (!useInvalidString_) return std::nullopt;
  return invalidString_;
}

}  // namespace quillet
