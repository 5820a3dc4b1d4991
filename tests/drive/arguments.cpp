#include "drive/arguments.h"

#include <algorithm>
#include <limits>

#include "drive/json_values.h"
#include "platform/unicode_text.h"

namespace quillet::drive {

namespace {

[[noreturn]] void refuse(const char* key, const char* expected) {
  throw CommandError("\"" + std::string(key) + "\" must be " + expected);
}

}  // namespace

std::int64_t integerFromCommand(const json& value, const char* key) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
  if (!value.is_number_integer() || (value.is_number_unsigned() && value.get<std::uint64_t>() > kLargest))
    refuse(key, "an integer");
  return value.get<std::int64_t>();
}

const json* Arguments::find(const char* key) const {
  const auto found = command_.find(key);
  return found == command_.end() || found->is_null() ? nullptr : &*found;
}

bool Arguments::has(const char* key) const {
  return find(key) != nullptr;
}

const json& Arguments::value(const char* key) const {
  const json* value = find(key);
  if (!value) throw CommandError("\"" + std::string(key) + "\" is missing");
  return *value;
}

std::string Arguments::string(const char* key) const {
  const json& text = value(key);
  if (!text.is_string()) refuse(key, "a text");
  return text.get<std::string>();
}

std::u16string Arguments::text(const char* key) const {
  const json& text = value(key);
  if (!text.is_string()) refuse(key, "a text");
  return toUtf16(text.get_ref<const std::string&>());
}

std::u16string Arguments::text(const char* key, std::u16string_view otherwise) const {
  return has(key) ? text(key) : std::u16string(otherwise);
}

std::int64_t Arguments::integer(const char* key) const {
  return integerFromCommand(value(key), key);
}

std::int64_t Arguments::integer(const char* key, std::int64_t otherwise) const {
  return has(key) ? integer(key) : otherwise;
}

bool Arguments::boolean(const char* key, bool otherwise) const {
  const json* found = find(key);
  if (!found) return otherwise;
  if (!found->is_boolean()) refuse(key, "true or false");
  return found->get<bool>();
}

std::string Arguments::pathFromRoot(const json& path, const char* key) const {
  if (!path.is_string()) refuse(key, "a path");
  const auto& text = path.get_ref<const std::string&>();
  if (text.find('\0') != std::string::npos) refuse(key, "a path, which holds no NUL");
  return text.empty() || text.front() == '/' ? text : root_ + "/" + text;
}

std::string Arguments::path(const char* key) const {
  return pathFromRoot(value(key), key);
}

std::vector<std::string> Arguments::paths(const char* key) const {
  const json& list = value(key);
  if (!list.is_array()) refuse(key, "a list of paths");
  std::vector<std::string> result;
  for (const auto& element : list) result.push_back(pathFromRoot(element, key));
  return result;
}

std::vector<std::string> Arguments::strings(const char* key) const {
  const json& list = value(key);
  if (!list.is_array()) refuse(key, "a list of texts");
  std::vector<std::string> result;
  for (const auto& element : list) {
    if (!element.is_string()) refuse(key, "a list of texts");
    result.push_back(element.get<std::string>());
  }
  return result;
}

IndexSet Arguments::indexes(const char* key) const {
  const json& list = value(key);
  if (!list.is_array()) refuse(key, "a list of integers");
  std::vector<std::int64_t> indexes;
  for (const auto& element : list) indexes.push_back(integerFromCommand(element, key));
  std::sort(indexes.begin(), indexes.end());  // adding at the end of the set is quick
  IndexSet result;
  for (const std::int64_t index : indexes) result.addIndex(index);
  return result;
}

OperationRecord Arguments::operation(const char* key) const {
  return operationFromCommand(value(key));
}

std::optional<OperationRecord> Arguments::optionalOperation(const char* key) const {
  if (!has(key)) return std::nullopt;
  return operation(key);
}

OperationList Arguments::operations(const char* key) const {
  return operationsFromCommand(value(key));
}

}  // namespace quillet::drive
