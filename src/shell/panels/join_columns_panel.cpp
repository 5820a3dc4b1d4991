#include "shell/panels/join_columns_panel.h"

#include <algorithm>

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/text_search.h"
#include "shell/panels/column_entries.h"

namespace quillet {

namespace {

// The columns of the file in the order of its first rearranging, wherever that stands in the list.
std::vector<ColumnEntry> rearrangedColumns(const InputFile& file, const std::vector<ColumnEntry>& columns) {
  if (!file.operations) return columns;
  const auto rearranging =
      std::find_if(file.operations->begin(), file.operations->end(),
                   [](const OperationRecord& record) { return record.code() == OpRearrangeColumns; });
  if (rearranging == file.operations->end()) return columns;
  return columnsNamedBy(rearranging->text("Arg1"), u",", columns);
}

void appendNumbers(const std::vector<ColumnEntry>& group, std::u16string& text) {
  for (std::size_t index = 0; index < group.size(); ++index) {
    if (index > 0) text += u" + ";
    appendInteger(columnNumber(group[index]), text);
  }
}

}  // namespace

JoinColumnsPanel::JoinColumnsPanel(UserInterface& interface, const FileSelection& selection)
    : OperationPanel(
          interface, "joinColumnsOperationWindow", OpJoinColumns,
          localizable(u"Select two or more rows and press Join. It takes the place of Rearrange Columns. "
                      u"Unjoin changes nothing; to go back press Cancel.")),
      selection_(selection),
      table_(window(), named("ColumnsTableView"),
             {[this] { return joinColumnsOperationWindowColumns_.size(); },
              [this](std::size_t row) {
                return Table::Row{shownColumns(joinColumnsOperationWindowColumns_[row])};
              }}),
      joinButton_(window(), named("JoinButton"), localized(u"Join"),
                  "joinColumnsOperationWindowJoinButtonClicked"),
      unjoinButton_(window(), named("UnjoinButton"), localized(u"Unjoin"),
                    "joinColumnsOperationWindowUnjoinButtonClicked"),
      separator_(window(), named("SeparatorTextField")) {
  table_.setSelectionChanged([this] { updateJoinColumnsOperationWindow(); });
  updateJoinColumnsOperationWindow();
}

void JoinColumnsPanel::prepareForAdding(std::int64_t) {
  if (const auto file = selection_.singleFile())
    refillJoinColumns(rearrangedColumns(*file, expectedColumns(file)));
  else
    reload();
}

OperationPanel::Opens JoinColumnsPanel::fill(const OperationRecord& record) {
  separator_.setText(record.text("Arg2"));
  joinColumnsOperationWindowColumns_.clear();
  const auto file = selection_.singleFile();
  const std::u16string list = record.text("Arg1");
  if (file && file->expectedColumnsInLine && !list.empty()) fillGroups(list, *file->expectedColumnsInLine);
  reload();
  return Opens::Yes;
}

// A group whose columns are all gone stays as an empty one, a single column that is gone does not: this is
// meant.
void JoinColumnsPanel::fillGroups(std::u16string_view list, const std::vector<ColumnEntry>& columns) {
  for (const auto token : componentsSeparatedByString(list, u",")) {
    Group group = columnsNamedBy(token, u"+", columns);
    const bool isJoined = rangeOfString(token, u"+", 0).has_value();
    if (isJoined || !group.empty()) joinColumnsOperationWindowColumns_.push_back(std::move(group));
  }
}

void JoinColumnsPanel::refillJoinColumns(const std::vector<ColumnEntry>& columns) {
  joinColumnsOperationWindowColumns_.clear();
  for (const auto& column : columns) joinColumnsOperationWindowColumns_.push_back({column});
  reload();
}

void JoinColumnsPanel::write(OperationRecord& record) const {
  std::u16string text;
  for (std::size_t index = 0; index < joinColumnsOperationWindowColumns_.size(); ++index) {
    if (index > 0) text += u", ";
    appendNumbers(joinColumnsOperationWindowColumns_[index], text);
  }
  record.set("Arg1", std::move(text));
  record.set("Arg2", separator_.text());
}

void JoinColumnsPanel::reload() {
  table_.reloadData();
  updateJoinColumnsOperationWindow();
}

void JoinColumnsPanel::updateJoinColumnsOperationWindow() {
  const IndexSet& rows = table_.selectedRows();
  bool anyJoined = false;
  for (const auto& range : rows.ranges())
    for (std::int64_t row = range.first; row <= range.last; ++row)
      anyJoined = anyJoined || joinColumnsOperationWindowColumns_[static_cast<std::size_t>(row)].size() >= 2;
  joinButton_.setEnabled(rows.count() >= 2);
  unjoinButton_.setEnabled(anyJoined);
}

void JoinColumnsPanel::joinColumnsOperationWindowJoinButtonClicked() {
  const IndexSet rows = table_.selectedRows();
  if (rows.isEmpty()) return;
  std::vector<Group> remaining;
  Group joined;
  for (std::size_t row = 0; row < joinColumnsOperationWindowColumns_.size(); ++row) {
    Group& group = joinColumnsOperationWindowColumns_[row];
    if (!rows.contains(static_cast<std::int64_t>(row))) {
      remaining.push_back(std::move(group));
    } else {
      joined.insert(joined.end(), group.begin(), group.end());
    }
  }
  remaining.insert(remaining.begin() + rows.firstIndex(), std::move(joined));
  joinColumnsOperationWindowColumns_ = std::move(remaining);
  reload();
}

}  // namespace quillet
