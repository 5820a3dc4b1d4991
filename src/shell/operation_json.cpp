#include "shell/operation_json.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

#include "platform/unicode_text.h"

namespace quillet {

namespace {

using nlohmann::json;

std::int64_t integerFromFloat(double value) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (value >= kTwoTo63) return std::numeric_limits<std::int64_t>::max();
  if (value <= -kTwoTo63) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);  // JSON has no nan
}

std::int64_t integerFromUnsigned(std::uint64_t value) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
  return static_cast<std::int64_t>(std::min(value, kLargest));
}

std::optional<OperationRecord::Value> valueFromJson(const json& value) {
  if (value.is_string()) return toUtf16(value.get_ref<const std::string&>());
  if (value.is_boolean()) return std::int64_t{value.get<bool>()};
  if (value.is_number_unsigned()) return integerFromUnsigned(value.get<std::uint64_t>());
  if (value.is_number_integer()) return value.get<std::int64_t>();
  if (value.is_number_float()) return integerFromFloat(value.get<double>());
  return std::nullopt;
}

}  // namespace

json jsonFromOperation(const OperationRecord& operation) {
  json result = json::object();
  for (const auto& [key, value] : operation.items()) {
    if (const auto* integer = std::get_if<std::int64_t>(&value))
      result[key] = *integer;
    else
      result[key] = toUtf8(std::get<std::u16string>(value));
  }
  return result;
}

json jsonFromOperations(const OperationList& operations) {
  json result = json::array();
  for (const auto& operation : operations) result.push_back(jsonFromOperation(operation));
  return result;
}

std::optional<OperationRecord> operationFromJson(const json& json) {
  if (!json.is_object()) return std::nullopt;
  OperationRecord result;
  for (const auto& [key, value] : json.items()) {
    if (value.is_null()) continue;
    auto converted = valueFromJson(value);
    if (!converted) return std::nullopt;
    result.set(key, *std::move(converted));
  }
  return result;
}

OperationRecord readablePartOfOperation(const json& json) {
  OperationRecord result;
  if (!json.is_object()) return result;
  for (const auto& [key, value] : json.items())
    if (auto converted = valueFromJson(value)) result.set(key, *std::move(converted));
  return result;
}

std::optional<OperationList> operationsFromJson(const json& json) {
  if (!json.is_array()) return std::nullopt;
  OperationList result;
  for (const auto& element : json) {
    auto operation = operationFromJson(element);
    if (!operation) return std::nullopt;
    result.push_back(*std::move(operation));
  }
  return result;
}

}  // namespace quillet
