// What is dragged onto the tables, without a toolkit: the types that a drag's pasteboard can hold, and which
// table takes which of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/index_set.h"

namespace quillet {

enum class DragType {
  FileNames,  // paths from other programs
  String,
  // Rows of one of this application's tables; used within the application only.
  InputFiles,
  Operations,
  RearrangeColumns,
};

// The names of the private types: "InputFilesDataType"... Empty for the types of other programs.
std::string_view pasteboardNameOf(DragType type);
std::optional<DragType> privateDragTypeNamed(std::string_view name);

enum class DropTable { Files, Operations, RearrangeColumns };

// What the rows of the table are dragged as.
DragType dragTypeOfRows(DropTable table);

enum class DropOperation : std::int64_t { None = 0, Copy = 1 };

// By the types on the pasteboard alone: neither the row nor what is dragged matters.
DropOperation validateDrop(DropTable table, const std::vector<DragType>& types);

// What a pasteboard holds for the table of files. Other types bring nothing, plain text among them, although
// the table takes it: this is meant.
struct DraggedFiles {
  std::optional<IndexSet> rows;  // of the table itself, from 0
  std::vector<std::string> paths;
};

}  // namespace quillet
