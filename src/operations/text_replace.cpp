#include "operations/text_replace.h"

#include "operations/case_option.h"

namespace quillet {

TextReplacer::TextReplacer(std::int64_t replaceType, CaseSensitivity sensitivity, std::u16string_view what,
                           std::u16string_view with)
    : with_(with) {
  if (what.empty()) return;
  switch (static_cast<ReplaceType>(replaceType)) {
    case ReplaceType::String:
      searcher_.emplace(what, caseOption(sensitivity));
      break;
    case ReplaceType::RegularExpression:
      expression_ = RegularExpression::compiled(what, sensitivity);
      break;
  }
}

std::u16string_view TextReplacer::replaced(std::u16string_view text, TextArena& arena) {
  scratch_.clear();
  std::size_t count = 0;
  if (searcher_)
    count = searcher_->appendReplacing(text, with_, scratch_);
  else if (expression_)
    count = expression_->appendReplacingMatches(text, with_, scratch_);
  return count == 0 ? text : arena.copy(scratch_);
}

}  // namespace quillet
