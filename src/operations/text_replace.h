// Replacing in a line or a cell, made ready once from an operation's arguments.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/regular_expression.h"
#include "platform/text_buffer.h"
#include "platform/text_search.h"

namespace quillet {

// One object serves one thread.
class TextReplacer {
 public:
  // The values of the operation's arguments as they stand. An empty text to replace, an unknown type and a
  // regular expression that does not compile change nothing.
  TextReplacer(std::int64_t replaceType, CaseSensitivity sensitivity, std::u16string_view what,
               std::u16string_view with);

  // The text itself, or a text in the arena.
  std::u16string_view replaced(std::u16string_view text, TextArena& arena);

 private:
  std::optional<TextSearcher> searcher_;
  std::optional<RegularExpression> expression_;
  std::u16string with_;
  std::u16string scratch_;
};

}  // namespace quillet
