// One row of the job database under the names that the rest of the system knows: a small map from key to
// integer, boolean or text. A value.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillet {

class SettingsRecord {
 public:
  // A text is bytes as the database holds them, which is UTF-8 for all but paths.
  using Value = std::variant<std::int64_t, bool, std::string>;

  bool isEmpty() const { return values_.empty() && !columns_; }
  bool has(std::string_view key) const { return values_.contains(key); }
  void set(std::string_view key, Value value) {
    values_.insert_or_assign(std::string(key), std::move(value));
  }

  // Read tolerantly: a text holds the integer that it begins with, a boolean is 0 or 1.
  std::int64_t integer(std::string_view key, std::int64_t otherwise) const;
  bool boolean(std::string_view key) const;      // false when absent; an integer other than 0 is true
  std::string text(std::string_view key) const;  // "" when absent; an integer as its decimal text

  const std::map<std::string, Value, std::less<>>& values() const { return values_; }

  // Under "ColumnsKey": absent where the columns could not be read.
  const std::optional<std::vector<SettingsRecord>>& columns() const { return columns_; }
  void setColumns(std::vector<SettingsRecord> columns) { columns_ = std::move(columns); }

  bool operator==(const SettingsRecord&) const = default;

 private:
  std::map<std::string, Value, std::less<>> values_;
  std::optional<std::vector<SettingsRecord>> columns_;
};

}  // namespace quillet
