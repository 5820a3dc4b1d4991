#include "shell/drag_and_drop.h"

#include <algorithm>
#include <utility>

namespace quillet {

namespace {

constexpr std::pair<DragType, std::string_view> kPrivateTypes[] = {
    {DragType::InputFiles, "InputFilesDataType"},
    {DragType::Operations, "OperationsDataType"},
    {DragType::RearrangeColumns, "RearrangeColumnsDataType"},
};

bool takes(DropTable table, DragType type) {
  if (type == dragTypeOfRows(table)) return true;
  return table == DropTable::Files && (type == DragType::FileNames || type == DragType::String);
}

}  // namespace

std::string_view pasteboardNameOf(DragType type) {
  for (const auto& [privateType, name] : kPrivateTypes)
    if (privateType == type) return name;
  return {};
}

std::optional<DragType> privateDragTypeNamed(std::string_view name) {
  for (const auto& [type, typeName] : kPrivateTypes)
    if (typeName == name) return type;
  return std::nullopt;
}

DragType dragTypeOfRows(DropTable table) {
  switch (table) {
    case DropTable::Operations:
      return DragType::Operations;
    case DropTable::RearrangeColumns:
      return DragType::RearrangeColumns;
    case DropTable::Files:
      break;
  }
  return DragType::InputFiles;
}

DropOperation validateDrop(DropTable table, const std::vector<DragType>& types) {
  const bool taken =
      std::any_of(types.begin(), types.end(), [table](DragType type) { return takes(table, type); });
  return taken ? DropOperation::Copy : DropOperation::None;
}

}  // namespace quillet
