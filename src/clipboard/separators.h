// The separators that the settings name by a number. No operation asks for the two without arguments.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/user_defaults.h"

namespace quillet {

// 1 a tab, 2 "|", 3 ",", 4 the setting under otherKey. Nothing for any other code.
std::optional<std::u16string> stringForColumnSeparatorCode(std::int64_t code, const std::string& otherKey,
                                                           const UserDefaults& defaults);
// 1 "\n", 2 "\r\n", 3 "\r", 4 the setting under otherKey. Nothing for any other code.
std::optional<std::u16string> stringForLineSeparatorCode(std::int64_t code, const std::string& otherKey,
                                                         const UserDefaults& defaults);

// By the settings OldColumnSeparator and OldColumnOtherSeparator, with the override by NewColumnSeparator and
// NewColumnOtherSeparator; and so for lines.
std::optional<std::u16string> stringForColumnSeparator(bool overrideColumnSeparator,
                                                       const UserDefaults& defaults);
std::optional<std::u16string> stringForLineSeparator(bool overrideRowSeparator, const UserDefaults& defaults);

}  // namespace quillet
