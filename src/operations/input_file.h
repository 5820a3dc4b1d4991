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
  std::int64_t columnIndex = 0;  // from 0
  std::u16string columnDescriptor;
  bool operator==(const ColumnEntry&) const = default;
};

struct InputFile {
  std::string filePath;  // bytes; the entry's identity
  std::string fileName;  // its last component
  std::int64_t fileEncoding = 4;
  std::int64_t fileType = 1;  // 1 tab-delimited, 2 CSV, 3 pipe-delimited
  std::optional<OperationList> operations;
  std::optional<std::vector<ColumnEntry>>
      expectedColumnsInLine;  // absent before the first pass with a kept line
  bool operator==(const InputFile&) const = default;
};

}  // namespace quillet
