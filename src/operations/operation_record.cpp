#include "operations/operation_record.h"

#include <algorithm>

#include "platform/numbers.h"

namespace quillet {

namespace {

// Where the key stands in the items, or would stand.
template <typename Items>
auto placeOf(Items& items, std::string_view key) {
  return std::lower_bound(items.begin(), items.end(), key,
                          [](const auto& item, std::string_view wanted) { return item.first < wanted; });
}

}  // namespace

OperationRecord::OperationRecord(std::initializer_list<std::pair<std::string_view, Value>> items) {
  for (const auto& [key, value] : items) set(key, value);
}

const OperationRecord::Value* OperationRecord::find(std::string_view key) const {
  const auto place = placeOf(items_, key);
  return place != items_.end() && place->first == key ? &place->second : nullptr;
}

std::int64_t OperationRecord::integer(std::string_view key, std::int64_t otherwise) const {
  const Value* value = find(key);
  if (!value) return otherwise;
  if (const auto* number = std::get_if<std::int64_t>(value)) return *number;
  return integerValue(std::get<std::u16string>(*value));
}

std::u16string OperationRecord::text(std::string_view key) const {
  const Value* value = find(key);
  if (!value) return {};
  if (const auto* stored = std::get_if<std::u16string>(value)) return *stored;
  std::u16string result;
  appendInteger(std::get<std::int64_t>(*value), result);
  return result;
}

void OperationRecord::set(std::string_view key, Value value) {
  const auto place = placeOf(items_, key);
  if (place != items_.end() && place->first == key) {
    place->second = std::move(value);
  } else {
    items_.emplace(place, key, std::move(value));
  }
}

void OperationRecord::remove(std::string_view key) {
  const auto place = placeOf(items_, key);
  if (place != items_.end() && place->first == key) items_.erase(place);
}

}  // namespace quillet
