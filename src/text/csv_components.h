// A fixed splitter for comma and double quote, independent of any operation's settings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// Adds the fields to into: at least one, empty for an empty text.
void findComponentsOfCSVString(std::u16string_view text, std::vector<std::u16string>& into);

}  // namespace quillet
