// Texts for the user: every one goes through localized() with its English literal as the key, and formats are
// filled by formatted().
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace quillet {

// A translation of the key, or the key itself where no catalogue has it. Safe from any thread.
std::u16string localized(std::u16string_view key);

// Marks a literal that is no direct argument of localized() as a key, so that tools/update_po finds it.
template <typename Unit>
constexpr const Unit* localizable(const Unit* key) {
  return key;
}

// Installs what localized() asks; nothing installed, or null, gives keys as they stand. Call before threads
// start.
using Translator = std::u16string (*)(std::u16string_view key);
void setTranslator(Translator translator);

// One value of a format. std::monostate is an absent value: it prints as "".
using FormatValue = std::variant<std::monostate, std::int64_t, std::u16string_view>;

// Replaces, left to right, "%@" by a text, "%ld" by a 64-bit integer and "%d" by an integer cut to 32 bits. A
// placeholder without a value prints as "", "%%" is a percent sign. Any other text stays.
std::u16string formatted(std::u16string_view format, std::initializer_list<FormatValue> values);

// formatted() of the localized key.
std::u16string localizedFormat(std::u16string_view key, std::initializer_list<FormatValue> values);

}  // namespace quillet
