#include "shell/operation_table.h"

#include "operations/operation_description.h"

namespace quillet {

void OperationTable::takeMultiFileOperations() {
  multiFileOperations_.clear();
  const auto file = selection_.firstFile();
  if (!file || !file->operations || file->operations->size() < 2) return;
  multiFileOperations_ = {file->operations->front(), file->operations->back()};
}

OperationList OperationTable::operations() const {
  if (selection_.rows().count() >= 2) return multiFileOperations_;
  const auto file = selection_.singleFile();
  return file && file->operations ? *file->operations : OperationList{};
}

std::vector<std::array<std::u16string, 3>> OperationTable::rows() const {
  const OperationList list = operations();
  std::vector<std::array<std::u16string, 3>> result;
  for (const auto& operation : list)
    result.push_back(descriptionForOperation(operation, &list.front(), &list.back()));
  return result;
}

}  // namespace quillet
