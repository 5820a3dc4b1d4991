// From the clipboard's text to the grid and back.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "clipboard/clipboard_grid.h"

namespace quillet {

inline constexpr std::size_t kMostCharacters = 100'000'000;  // UTF-16 units of the clipboard's text
inline constexpr std::size_t kMostLines = 1'048'576;         // that a split makes
inline constexpr std::size_t kMostColumns = 16'384;          // in one line of a split

struct SplitText {
  enum class Result { Done, TooManyLines, TooManyColumns };
  Result result = Result::Done;
  // Empty after TooManyLines; after TooManyColumns what came before that line.
  ClipboardGrid grid;
  std::size_t count = 0;       // of the lines or columns that are too many
  std::size_t lineNumber = 0;  // from 1; of the line with too many columns
};

// Lines are cut at the separator as it stands, also inside quotes; an empty one leaves one line. Each line is
// cut into cells as a file's line is; an empty separator leaves one cell.
SplitText splitText(std::u16string_view text, std::u16string_view lineSeparator,
                    std::u16string_view columnSeparator, bool removeQuotes);

// With addQuotes every cell is quoted, whatever it holds, and its quotes are doubled. No separator follows
// the last line.
std::u16string joinedText(const ClipboardGrid& grid, std::u16string_view lineSeparator,
                          std::u16string_view columnSeparator, bool addQuotes);

}  // namespace quillet
