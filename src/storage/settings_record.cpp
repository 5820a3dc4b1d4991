#include "storage/settings_record.h"

#include "storage/sql_text.h"

namespace quillet {

std::int64_t SettingsRecord::integer(std::string_view key, std::int64_t otherwise) const {
  const auto found = values_.find(key);
  if (found == values_.end()) return otherwise;
  if (const auto* text = std::get_if<std::string>(&found->second)) return integerOfText(*text);
  if (const auto* boolean = std::get_if<bool>(&found->second)) return *boolean ? 1 : 0;
  return std::get<std::int64_t>(found->second);
}

bool SettingsRecord::boolean(std::string_view key) const {
  return integer(key, 0) != 0;
}

std::string SettingsRecord::text(std::string_view key) const {
  const auto found = values_.find(key);
  if (found == values_.end()) return {};
  if (const auto* text = std::get_if<std::string>(&found->second)) return *text;
  return std::to_string(integer(key, 0));
}

}  // namespace quillet
