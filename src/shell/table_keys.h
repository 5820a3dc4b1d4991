// What tables do with keys and with Paste before their standard handling sees them.
#pragma once

#include <string_view>

namespace quillet {

// The first character of a key press without its modifiers, as a UTF-16 unit.
inline constexpr char16_t kReturnKey = 13;
inline constexpr char16_t kSpaceKey = 32;
inline constexpr char16_t kUpArrowKey = 0xF700;
inline constexpr char16_t kDownArrowKey = 0xF701;

// Whether the table of this name takes the key and does nothing with it.
bool swallowsKey(std::string_view tableName, char16_t key);
// The same for Paste.
bool swallowsPaste(std::string_view tableName);

}  // namespace quillet
