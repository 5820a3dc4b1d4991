#include "engine/line_operations.h"

#include "operations/case_option.h"
#include "operations/line_numbers.h"

namespace quillet {

LineSkipper::LineSkipper(const OperationRecord& record) : type_(record.integer("IntArg2", 0)) {
  const std::u16string text = record.text("Arg1");
  const SearchOptions options = caseOption(caseSensitivityOf(record));
  switch (static_cast<LineSkipType>(type_)) {
    case LineSkipType::IfBlank:
      break;
    case LineSkipType::IfContains:
      searcher_.emplace(text, options);
      break;
    case LineSkipType::LineNumbers:
      parseLineNumbersString(text, lineNumbers_, &skipBeyondNumber_, false);
      break;
    case LineSkipType::IfStartsWith:
      searcher_.emplace(text, options | AnchoredSearch);
      break;
    case LineSkipType::IfEndsWith:
      searcher_.emplace(text, options | BackwardsSearch | AnchoredSearch);
      break;
    case LineSkipType::IfMatches:
      expression_ = RegularExpression::compiled(text, caseSensitivityOf(record));
      break;
  }
}

bool LineSkipper::skips(std::u16string_view line, std::int64_t inputLineIndex) {
  switch (static_cast<LineSkipType>(type_)) {
    case LineSkipType::IfBlank:
      return line.empty();  // a line of blanks is not blank here, which is meant
    case LineSkipType::LineNumbers: {
      const auto lineNumber = static_cast<std::int64_t>(static_cast<std::uint64_t>(inputLineIndex) + 1);
      return lineNumbers_.contains(lineNumber) || (skipBeyondNumber_ > 0 && lineNumber >= skipBeyondNumber_);
    }
    case LineSkipType::IfContains:
    case LineSkipType::IfStartsWith:
    case LineSkipType::IfEndsWith:
      return searcher_->find(line).has_value();
    case LineSkipType::IfMatches:
      return expression_ && expression_->hasMatch(line);
  }
  return false;
}

LineOperations::LineOperations(std::span<const OperationRecord> records) {
  for (const auto& record : records) {
    switch (record.code()) {
      case OpSkipLine:
        steps_.emplace_back(LineSkipper(record));
        break;
      case OpTrimLine:
        steps_.emplace_back(TextTrimmer(record.integer("IntArg2", 0), record.integer("IntArg3", 0),
                                        caseSensitivityOf(record), record.text("Arg1")));
        break;
      case OpReplaceLine:
        steps_.emplace_back(TextReplacer(record.integer("IntArg2", 0), caseSensitivityOf(record),
                                         record.text("Arg1"), record.text("Arg2")));
        break;
      default:
        break;
    }
  }
}

std::optional<std::u16string_view> LineOperations::apply(std::u16string_view line,
                                                         std::int64_t inputLineIndex, TextArena& arena) {
  for (auto& step : steps_) {
    if (auto* skipper = std::get_if<LineSkipper>(&step)) {
      if (skipper->skips(line, inputLineIndex)) return std::nullopt;
    } else if (auto* trimmer = std::get_if<TextTrimmer>(&step)) {
      line = trimmer->trimmed(line, arena);
    } else {
      line = std::get<TextReplacer>(step).replaced(line, arena);
    }
  }
  return line;
}

}  // namespace quillet
