// One operation of a list: a small ordered map from key to integer or text. Integers are read tolerantly, so
// a number may be held as text. A record is a value; an edit replaces it.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillet {

class OperationRecord {
 public:
  using Value = std::variant<std::int64_t, std::u16string>;

  OperationRecord() = default;
  OperationRecord(std::initializer_list<std::pair<std::string_view, Value>> items);

  std::int64_t code() const { return integer("Code", 0); }

  // The integer under the key, read from a text where it holds one; otherwise when the key is absent.
  std::int64_t integer(std::string_view key, std::int64_t otherwise) const;
  // The text under the key, an integer as its decimal text; "" when absent.
  std::u16string text(std::string_view key) const;
  bool has(std::string_view key) const { return find(key) != nullptr; }

  void set(std::string_view key, Value value);
  void remove(std::string_view key);

  // In ascending order of the keys.
  const std::vector<std::pair<std::string, Value>>& items() const { return items_; }

  bool operator==(const OperationRecord&) const = default;

 private:
  const Value* find(std::string_view key) const;
  std::vector<std::pair<std::string, Value>> items_;
};

using OperationList = std::vector<OperationRecord>;

// The records between the first and the last; empty for a list shorter than two. A view into the list.
inline std::span<const OperationRecord> middleRecords(const OperationList& list) {
  if (list.size() < 2) return {};
  return std::span(list).subspan(1, list.size() - 2);
}

}  // namespace quillet
