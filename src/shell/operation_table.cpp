#include "shell/operation_table.h"

#include <utility>

#include "operations/operation_description.h"
#include "platform/localization.h"

namespace quillet {

OperationTable::OperationTable(Window& window, const FileSelection& selection)
    : selection_(selection),
      addButton_(window, "addOperationButton", localized(u"Add Operation"), {}),
      editButton_(window, "editOperationButton", {}, "showOperationWindow"),
      deleteButton_(window, "deleteOperationButton", {}, "deleteOperationButtonClicked"),
      table_(window, "operationsTableView",
             {[this] { return rowCount(); }, [this](std::size_t index) { return row(index); }}, {},
             "operationsTableViewDoubleClickOnRow") {
  deleteButton_.setEnabled(false);
  table_.setSelectionChanged([this] { updateUIAfterOperationTableViewSelectionDidChange(); });
}

void OperationTable::takeMultiFileOperations() {
  multiFileOperationsArray_.clear();
  const auto file = selection_.firstFile();
  if (!file || !file->operations || file->operations->size() < 2) return;
  multiFileOperationsArray_ = {file->operations->front(), file->operations->back()};
}

std::shared_ptr<const OperationList> OperationTable::shownList() const {
  if (selection_.rows().count() >= 2) return {std::shared_ptr<void>(), &multiFileOperationsArray_};
  const auto file = selection_.singleFile();
  if (!file || !file->operations) return nullptr;
  return {file, &*file->operations};
}

std::optional<OperationRecord> OperationTable::operation(std::size_t row) const {
  const auto list = shownList();
  return list && row < list->size() ? std::optional((*list)[row]) : std::nullopt;
}

std::optional<OperationRecord> OperationTable::multiFileOperation(std::size_t row) const {
  if (multiFileOperationsArray_.size() < 2 || row >= multiFileOperationsArray_.size()) return std::nullopt;
  return multiFileOperationsArray_[row];
}

void OperationTable::setMultiFileOperation(std::size_t row, OperationRecord record) {
  multiFileOperationsArray_[row] = std::move(record);
}

std::size_t OperationTable::rowCount() const {
  const auto list = shownList();
  return list ? list->size() : 0;
}

Table::Row OperationTable::row(std::size_t row) const {
  const auto list = shownList();
  if (!list || row >= list->size()) return {};
  const auto texts = descriptionForOperation((*list)[row], &list->front(), &list->back());
  return {texts.begin(), texts.end()};
}

void OperationTable::updateUIAfterOperationTableViewSelectionDidChange() {
  deleteButton_.setEnabled(!table_.selectedRows().isEmpty());
}

}  // namespace quillet
