#include "shell/panels/rearrange_columns_panel.h"

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "platform/moved_rows.h"
#include "shell/panels/column_entries.h"

namespace quillet {

RearrangeColumnsPanel::RearrangeColumnsPanel(UserInterface& interface, const FileSelection& selection)
    : OperationPanel(interface, "rearrangeColumnsOperationWindow", OpRearrangeColumns,
                     localizable(u"Drag rows, or press Alt+Up and Alt+Down. No column is left out.")),
      selection_(selection),
      table_(window(), named("ColumnsTableView"),
             {[this] { return rearrangeColumnsOperationWindowColumns_.size(); },
              [this](std::size_t row) {
                return Table::Row{shownColumn(rearrangeColumnsOperationWindowColumns_[row])};
              }}),
      moveUpButton_(window(), named("MoveUpButton"), localized(u"Move Up"),
                    "rearrangeColumnsOperationWindowMoveUpButtonClicked"),
      moveDownButton_(window(), named("MoveDownButton"), localized(u"Move Down"),
                      "rearrangeColumnsOperationWindowMoveDownButtonClicked") {}

void RearrangeColumnsPanel::prepareForAdding(std::int64_t) {
  if (const auto file = selection_.singleFile())
    rearrangeColumnsOperationWindowColumns_ = expectedColumns(file);
  table_.reloadData();
}

OperationPanel::Opens RearrangeColumnsPanel::fill(const OperationRecord& record) {
  const auto file = selection_.singleFile();
  if (!file) return Opens::No;
  rearrangeColumnsOperationWindowColumns_ = columnsNamedBy(record.text("Arg1"), u",", expectedColumns(file));
  table_.reloadData();
  return Opens::Yes;
}

void RearrangeColumnsPanel::write(OperationRecord& record) const {
  record.set("Arg1", stringListFromColumnDictionaryArray(rearrangeColumnsOperationWindowColumns_));
}

void RearrangeColumnsPanel::acceptDrop(const IndexSet& rows, std::int64_t row) {
  auto& columns = rearrangeColumnsOperationWindowColumns_;
  columns = withRowsMoved(std::move(columns), rows, row);
  table_.reloadData();
}

void RearrangeColumnsPanel::moveSelectedRowsUp() {
  const std::int64_t first = table_.selectedRows().firstIndex();
  if (first > 0) moveSelectedRows(first - 1, first - 1);
}

void RearrangeColumnsPanel::moveSelectedRowsDown() {
  const IndexSet& rows = table_.selectedRows();
  const std::int64_t last = rows.lastIndex();
  if (last < 0 || last + 1 >= static_cast<std::int64_t>(table_.rowCount())) return;
  moveSelectedRows(last + 2, last + 2 - rows.count());
}

void RearrangeColumnsPanel::moveSelectedRows(std::int64_t toRow, std::int64_t firstRowAfterwards) {
  const IndexSet rows = table_.selectedRows();
  acceptDrop(rows, toRow);
  IndexSet moved;
  moved.addRange(firstRowAfterwards, firstRowAfterwards + rows.count() - 1);
  table_.selectRows(moved);
}

}  // namespace quillet
