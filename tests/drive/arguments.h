// The arguments of one command, read by key and type. What is missing or of another type ends the command
// with an error result: it is thrown as CommandError and caught in one place. The tool's own code does so;
// the application's never sees it.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "operations/operation_record.h"
#include "platform/index_set.h"

namespace quillet::drive {

using nlohmann::json;

class CommandError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The key is named in the error.
std::int64_t integerFromCommand(const json& value, const char* key);

class Arguments {
 public:
  // root: where relative paths are taken from. Both outlive the object.
  Arguments(const json& command, const std::string& root) : command_(command), root_(root) {}

  bool has(const char* key) const;  // present and not null
  const json& value(const char* key) const;

  std::u16string text(const char* key) const;
  std::u16string text(const char* key, std::u16string_view otherwise) const;  // absent or null
  std::int64_t integer(const char* key) const;
  std::int64_t integer(const char* key, std::int64_t otherwise) const;
  bool boolean(const char* key, bool otherwise) const;

  std::string path(const char* key) const;
  std::vector<std::string> paths(const char* key) const;
  std::string string(const char* key) const;  // a text as it is
  std::vector<std::string> strings(const char* key) const;
  IndexSet indexes(const char* key) const;
  OperationRecord operation(const char* key) const;
  std::optional<OperationRecord> optionalOperation(const char* key) const;
  OperationList operations(const char* key) const;

 private:
  const json* find(const char* key) const;
  std::string pathFromRoot(const json& path, const char* key) const;

  const json& command_;
  const std::string& root_;
};

}  // namespace quillet::drive
