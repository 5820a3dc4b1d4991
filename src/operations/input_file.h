// An entry of the input file list: a file and the operations that are its own. A value; who changes an entry
// stores a changed copy.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "operations/operation_record.h"

namespace quillet {

// One column of the first kept line of a file.
struct ColumnEntry {
  std::optional<std::int64_t> columnIndex;  // from 0; what a pass makes has one
  std::u16string columnDescriptor;
  bool operator==(const ColumnEntry&) const = default;
};

// What the list makes has all of the first five; one that was put there as it is may lack any of them.
struct InputFile {
  std::optional<std::string> filePath;  // bytes; the entry's identity
  std::optional<std::string> fileName;  // its last component
  std::optional<std::int64_t> fileEncoding;
  std::optional<std::int64_t> fileType;  // 1 tab-delimited, 2 CSV, 3 pipe-delimited
  std::optional<OperationList> operations;
  std::optional<std::vector<ColumnEntry>>
      expectedColumnsInLine;  // absent before the first pass with a kept line

  std::string filePathOrEmpty() const { return filePath.value_or(std::string()); }

  bool operator==(const InputFile&) const = default;
};

}  // namespace quillet
