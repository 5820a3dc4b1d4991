// Full default case mappings, without a locale. The length of a text can change.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

std::u16string lowercaseString(std::u16string_view text);
std::u16string uppercaseString(std::u16string_view text);

}  // namespace quillet
