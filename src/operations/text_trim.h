// Trimming of a line or a cell at its ends, made ready once from an operation's arguments.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/character_set.h"
#include "platform/regular_expression.h"
#include "platform/text_buffer.h"
#include "platform/text_search.h"

namespace quillet {

// The innermost character that the run of members at one end of the text reaches, as a range in UTF-16 units;
// nothing if the text does not begin (end, with fromEnd) with a member. options: AnchoredSearch, and
// BackwardsSearch with fromEnd. The walk goes on one unit at a time: forwards a surrogate pair ends it after
// it has been reached, backwards it is reached only as the very last character.
std::optional<TextRange> longestRangeOfCharactersInSet(const CharacterSet& set, std::u16string_view text,
                                                       SearchOptions options, bool fromEnd);

// One object serves one thread.
class TextTrimmer {
 public:
  // The values of the operation's arguments as they stand; unknown values trim nothing.
  TextTrimmer(std::int64_t trimType, std::int64_t trimFromWhere, CaseSensitivity sensitivity,
              std::u16string_view text);

  // A part of the text, or a text in the arena.
  std::u16string_view trimmed(std::u16string_view text, TextArena& arena);

 private:
  std::u16string_view withoutStart(std::u16string_view text) const;
  std::u16string_view withoutEnd(std::u16string_view text) const;

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
