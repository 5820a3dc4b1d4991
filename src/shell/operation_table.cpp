#include "shell/operation_table.h"

#include "operations/operation_description.h"
#include "platform/localization.h"

namespace quillet {

OperationTable::OperationTable(Window& window, const FileSelection& selection)
    : selection_(selection),
      addButton_(window, "addOperationButton", localized(u"Add Operation"), {}),
      editButton_(window, "editOperationButton", {}, "showOperationWindow"),
      deleteButton_(window, "deleteOperationButton", {}, "deleteOperationButtonClicked"),
      table_(window, "operationsTableView",
             {[this] { return rowCount(); }, [this](std::size_t index) { return row(index); }}) {
  deleteButton_.setEnabled(false);
  table_.setSelectionChanged([this] { updateUIAfterOperationTableViewSelectionDidChange(); });
}

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

std::size_t OperationTable::rowCount() const {
  if (selection_.rows().count() >= 2) return multiFileOperations_.size();
  const auto file = selection_.singleFile();
  return file && file->operations ? file->operations->size() : 0;
}

// Nothing is copied but the texts of the row: a list may be long, and only rows in sight are asked for.
Table::Row OperationTable::row(std::size_t row) const {
  const auto file = selection_.singleFile();
  const bool several = selection_.rows().count() >= 2;
  if (!several && (!file || !file->operations)) return {};
  const OperationList& list = several ? multiFileOperations_ : *file->operations;
  if (row >= list.size()) return {};
  const auto texts = descriptionForOperation(list[row], &list.front(), &list.back());
  return {texts.begin(), texts.end()};
}

void OperationTable::updateUIAfterOperationTableViewSelectionDidChange() {
  deleteButton_.setEnabled(!table_.selectedRows().isEmpty());
}

}  // namespace quillet
