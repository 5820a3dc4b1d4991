#include "operations/text_trim.h"

#include "operations/case_option.h"
#include "platform/case_mapping.h"

namespace quillet {

namespace {

// Without regard to case the set is widened by both cases of its characters.
CharacterSet setOf(std::int64_t trimType, CaseSensitivity sensitivity, std::u16string_view text) {
  if (static_cast<TrimType>(trimType) != TrimType::Characters) return CharacterSet::whitespace();
  if (sensitivity == CaseSensitivity::Sensitive) return CharacterSet::withCharactersInString(text);
  return CharacterSet::withCharactersInString(lowercaseString(text) + uppercaseString(text));
}

std::optional<RegularExpression> expressionOf(std::int64_t trimType, CaseSensitivity sensitivity,
                                              std::u16string_view text) {
  if (static_cast<TrimType>(trimType) != TrimType::RegularExpression) return std::nullopt;
  return RegularExpression::compiled(text, sensitivity);
}

}  // namespace

std::optional<TextRange> longestRangeOfCharactersInSet(const CharacterSet& set, std::u16string_view text,
                                                       SearchOptions options, bool fromEnd) {
  std::optional<TextRange> found = rangeOfCharacterFromSet(text, set, options, {0, text.size()});
  if (!found) return std::nullopt;
  for (;;) {
    TextRange next;
    if (fromEnd) {
      next = {found->location < 2 ? 0 : found->location - 1, 1};
    } else {
      next.location = found->location + 1;
      next.length = next.location < text.size() ? text.size() - next.location : 0;
    }
    const auto further = next.length == 0 ? std::nullopt : rangeOfCharacterFromSet(text, set, options, next);
    if (!further) return found;
    found = further;
    if (fromEnd && found->location == 0) return found;
  }
}

TextTrimmer::TextTrimmer(std::int64_t trimType, std::int64_t trimFromWhere, CaseSensitivity sensitivity,
                         std::u16string_view text)
    : trimType_(trimType),
      fromStart_(trimFromWhere == static_cast<std::int64_t>(TrimFromWhere::BothSides) ||
                 trimFromWhere == static_cast<std::int64_t>(TrimFromWhere::Start)),
      fromEnd_(trimFromWhere == static_cast<std::int64_t>(TrimFromWhere::BothSides) ||
               trimFromWhere == static_cast<std::int64_t>(TrimFromWhere::End)),
      atStart_(text, caseOption(sensitivity) | AnchoredSearch),
      atEnd_(text, caseOption(sensitivity) | BackwardsSearch | AnchoredSearch),
      set_(setOf(trimType, sensitivity, text)),
      expression_(expressionOf(trimType, sensitivity, text)) {}

std::u16string_view TextTrimmer::trimmed(std::u16string_view text, TextArena& arena) {
  if (static_cast<TrimType>(trimType_) == TrimType::RegularExpression) {
    // Matches anywhere go, not only at the ends: this is meant.
    if (!expression_) return text;
    scratch_.clear();
    return expression_->appendReplacingMatches(text, {}, scratch_) == 0 ? text : arena.copy(scratch_);
  }
  if (fromStart_) text = withoutStart(text);
  if (fromEnd_) text = withoutEnd(text);
  return text;
}

std::u16string_view TextTrimmer::withoutStart(std::u16string_view text) const {
  switch (static_cast<TrimType>(trimType_)) {
    case TrimType::String:
      if (const auto found = atStart_.find(text)) return text.substr(found->length);
      return text;
    case TrimType::Whitespace:
      // All members are one unit long, so the run is what it seems.
      while (!text.empty() && isWhitespace(text.front())) text.remove_prefix(1);
      return text;
    case TrimType::Characters:
      if (const auto found = longestRangeOfCharactersInSet(set_, text, AnchoredSearch, false))
        return text.substr(found->end());
      return text;
    case TrimType::RegularExpression:
      break;
  }
  return text;
}

std::u16string_view TextTrimmer::withoutEnd(std::u16string_view text) const {
  switch (static_cast<TrimType>(trimType_)) {
    case TrimType::String:
      if (const auto found = atEnd_.find(text)) return text.substr(0, found->location);
      return text;
    case TrimType::Whitespace:
      while (!text.empty() && isWhitespace(text.back())) text.remove_suffix(1);
      return text;
    case TrimType::Characters:
      if (const auto found =
              longestRangeOfCharactersInSet(set_, text, BackwardsSearch | AnchoredSearch, true))
        return text.substr(0, found->location);
      return text;
    case TrimType::RegularExpression:
      break;
  }
  return text;
}

}  // namespace quillet
