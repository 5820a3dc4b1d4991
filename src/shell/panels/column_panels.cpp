#include "shell/panels/column_panels.h"

#include "operations/line_numbers.h"
#include "operations/operation_codes.h"
#include "operations/operation_description.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "shell/panels/column_entries.h"

namespace quillet {

namespace {

Table::Source columnsOf(const FileSelection& selection) {
  return {[&selection] { return expectedColumns(selection.singleFile()).size(); },
          [&selection](std::size_t row) {
            const auto file = selection.singleFile();
            const auto& columns = expectedColumns(file);
            return row < columns.size() ? Table::Row{shownColumn(columns[row])} : Table::Row();
          }};
}

}  // namespace

ColumnChoice::ColumnChoice(Window& window, const std::string& prefix, const FileSelection& selection)
    : table_(window, prefix + "ColumnsTableView", columnsOf(selection)),
      box_(window, prefix + "ControlsBox") {
  table_.setSelectionChanged([this] { enableBox(); });
}

void ColumnChoice::addToBox(const std::vector<Control*>& controls) {
  for (Control* control : controls) box_.add(*control);
  enableBox();
}

void ColumnChoice::enableBox() {
  enableControls(!table_.selectedRows().isEmpty(), box_);
}

void ColumnChoice::prepareForAdding() {
  table_.reloadData();
  enableControls(false, box_);
}

void ColumnChoice::fill(const OperationRecord& record) {
  IndexSet rows;
  parseLineNumbersString(record.text("Arg1"), rows, nullptr, true);
  table_.reloadData();
  table_.selectRows(rows);
  enableBox();
}

void ColumnChoice::write(OperationRecord& record) const {
  record.set("Arg1", stringPlus1FromIndexSet(table_.selectedRows()));
}

TrimColumnPanel::TrimColumnPanel(UserInterface& interface, const FileSelection& selection)
    : OperationPanel(interface, "trimColumnOperationWindow", OpTrimColumn,
                     localizable(u"As Trim Line, in the selected columns. None selected: no change.")),
      columns_(window(), named(""), selection),
      trim_(window(), named(""), "trimColumnOperationTypeValueChanged") {
  columns_.addToBox(trim_.all());
}

void TrimColumnPanel::prepareForAdding(std::int64_t) {
  columns_.prepareForAdding();
}

OperationPanel::Opens TrimColumnPanel::fill(const OperationRecord& record) {
  trim_.fill(record, "Arg2");
  columns_.fill(record);
  return Opens::Yes;
}

void TrimColumnPanel::write(OperationRecord& record) const {
  trim_.write(record, "Arg2");
  columns_.write(record);
}

ReplaceColumnPanel::ReplaceColumnPanel(UserInterface& interface, const FileSelection& selection)
    : OperationPanel(interface, "replaceColumnOperationWindow", OpReplaceColumn,
                     localizable(u"As Replace Line, in the selected columns.")),
      columns_(window(), named(""), selection),
      replace_(window(), named("")) {
  columns_.addToBox(replace_.all());
}

void ReplaceColumnPanel::prepareForAdding(std::int64_t) {
  columns_.prepareForAdding();
}

OperationPanel::Opens ReplaceColumnPanel::fill(const OperationRecord& record) {
  replace_.fill(record, "Arg2", "Arg3");
  columns_.fill(record);
  return Opens::Yes;
}

void ReplaceColumnPanel::write(OperationRecord& record) const {
  replace_.write(record, "Arg2", "Arg3");
  columns_.write(record);
}

SetNumberOfColumnsPanel::SetNumberOfColumnsPanel(UserInterface& interface, const FileSelection& selection)
    : OperationPanel(
          interface, "setNumberOfColumnsOperationWindow", "setNumberOfColumnsOperationsWindow",
          labelOfOperation(OpSetInitialNumberOfColumns),
          localizable(u"Cuts or fills each line to this number: Initial at its place in the list, Final on "
                      u"the finished line, without quotes.")),
      selection_(selection),
      requiredNumberOfColumns_(window(), named("RequiredNumberOfColumnsTextField")),
      textForAddedColumns_(window(), named("TextForAddedColumnsTextField")) {}

std::int64_t SetNumberOfColumnsPanel::columnCountOfFile() const {
  return static_cast<std::int64_t>(expectedColumns(selection_.singleFile()).size());
}

void SetNumberOfColumnsPanel::setCount(std::int64_t count) {
  std::u16string text;
  appendInteger(count, text);
  requiredNumberOfColumns_.setText(text);
}

void SetNumberOfColumnsPanel::prepareForAdding(std::int64_t code) {
  window().setTitle(labelOfOperation(code));
  if (selection_.singleRow()) setCount(columnCountOfFile());
}

OperationPanel::Opens SetNumberOfColumnsPanel::fill(const OperationRecord& record) {
  window().setTitle(labelOfOperation(record.code()));
  setCount(record.integer("IntArg1", columnCountOfFile()));
  textForAddedColumns_.setText(record.text("Arg1"));
  return Opens::Yes;
}

void SetNumberOfColumnsPanel::write(OperationRecord& record) const {
  record.set("IntArg1", integerValue(requiredNumberOfColumns_.text()));
  record.set("Arg1", textForAddedColumns_.text());
}

}  // namespace quillet
