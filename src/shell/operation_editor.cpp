#include "shell/operation_editor.h"

#include <utility>

#include "operations/operation_codes.h"
#include "operations/operation_description.h"
#include "platform/localization.h"
#include "platform/moved_rows.h"

namespace quillet {

namespace {

struct AddCommand {
  const char* handler;
  std::int64_t code;
};

constexpr AddCommand kAddCommands[] = {
    {"addOperationReplaceCharacterMenuItemClicked", OpReplaceCharacter},
    {"addLineOperationSkipMenuItemClicked", OpSkipLine},
    {"addLineOperationTrimMenuItemClicked", OpTrimLine},
    {"addLineOperationReplaceMenuItemClicked", OpReplaceLine},
    {"addOperationJoinLinesMenuItemClicked", OpJoinLines},
    {"addColumnOperationTrimMenuItemClicked", OpTrimColumn},
    {"addColumnOperationReplaceMenuItemClicked", OpReplaceColumn},
    {"addColumnOperationReformatMenuItemClicked", OpReformatColumn},
    {"addOperationSetInitialNumberOfColumnsMenuItemClicked", OpSetInitialNumberOfColumns},
    {"addOperationSetFinalNumberOfColumnsMenuItemClicked", OpSetFinalNumberOfColumns},
    {"addOperationRearrangeColumnsMenuItemClicked", OpRearrangeColumns},
    {"addOperationJoinColumnsMenuItemClicked", OpJoinColumns},
};

bool isEnd(std::int64_t code) {
  return code == OpInitial || code == OpFinal;
}

}  // namespace

OperationEditor::OperationEditor(UserInterface& interface, const Neighbours& neighbours,
                                 std::function<void()> computePreview)
    : neighbours_(neighbours),
      computePreview_(std::move(computePreview)),
      panels_(interface, neighbours.selection) {}

void OperationEditor::addCommandsTo(Commands& commands) {
  for (const AddCommand& command : kAddCommands)
    commands.add(command.handler, [this, code = command.code] { showPanelForAdding(code); });
  commands.add("showOperationWindow", [this] { showOperationWindow(); });
  commands.add("operationsTableViewDoubleClickOnRow", [this] { showOperationWindow(); });
  commands.add("deleteOperationButtonClicked", [this] { deleteOperationButtonClicked(); });
  commands.addWithSender("operationsWindowDoneButtonClicked",
                         [this](Control* sender) { operationsWindowDoneButtonClicked(sender); });
  commands.addWithSender("operationsWindowCancelButtonClicked",
                         [this](Control* sender) { operationsWindowCancelButtonClicked(sender); });
  panels_.addCommandsTo(commands);
}

void OperationEditor::showPanelForAdding(std::int64_t code) {
  OperationPanel* panel = panels_.panelForCode(code);
  if (!panel || isEnd(code)) return;
  panel->doneButton().setTag(code);
  panel->prepareForAdding(code);
  neighbours_.windows.beginSheet(panel->window(), WindowName::Main);
}

void OperationEditor::showOperationWindow() {
  const auto row = singleSelectedRow();
  const auto record = row ? neighbours_.table.operation(*row) : std::nullopt;
  if (!record) return;
  OperationPanel* panel = panels_.panelForCode(record->code());
  if (!panel || panel->fill(*record) == OperationPanel::Opens::No) return;
  panel->doneButton().setTag(0);
  neighbours_.windows.beginSheet(panel->window(), WindowName::Main);
}

std::optional<std::size_t> OperationEditor::singleSelectedRow() const {
  const IndexSet& rows = neighbours_.table.table().selectedRows();
  if (rows.count() != 1) return std::nullopt;
  return static_cast<std::size_t>(rows.firstIndex());
}

void OperationEditor::addOperation(std::int64_t code, std::size_t toInputFileWithIndex) {
  const auto file = neighbours_.files.at(toInputFileWithIndex);
  if (!file || !file->operations || file->operations->size() < 2) return;
  const OperationPanel* panel = isEnd(code) ? nullptr : panels_.panelForCode(code);
  OperationList operations = *file->operations;
  operations.insert(operations.end() - 1, panel ? panel->makeRecord(code) : OperationRecord{{"Code", code}});
  neighbours_.files.setOperations(toInputFileWithIndex, std::move(operations));
  computePreview_();
}

void OperationEditor::updateOperationDictionary(OperationRecord& record) {
  if (isEnd(record.code())) panels_.panelForCode(record.code())->write(record);
}

void OperationEditor::operationsWindowDoneButtonClicked(Control* sender) {
  OperationPanel* panel = sender ? panels_.panelOf(*sender) : nullptr;
  if (!panel) return;
  const std::int64_t code = panel->doneButton().tag();
  const Added added = code != 0 ? Added::Yes : Added::No;
  const auto told = added == Added::Yes ? commitAdding(code) : commitEditing();
  if (told) {
    neighbours_.table.reloadTable();
    updateStatusLabel(*told, neighbours_.selection.rows().count(), added);
  }
  neighbours_.windows.endSheet(panel->window());
  if (told) neighbours_.preview.updatePreviewArea();
}

void OperationEditor::operationsWindowCancelButtonClicked(Control* sender) {
  OperationPanel* panel = sender ? panels_.panelOf(*sender) : nullptr;
  if (panel) neighbours_.windows.endSheet(panel->window());
}

std::optional<std::int64_t> OperationEditor::commitAdding(std::int64_t code) {
  const IndexSet files = neighbours_.selection.rows();
  if (files.isEmpty()) return std::nullopt;
  for (const auto& range : files.ranges())
    for (std::int64_t file = range.first; file <= range.last; ++file)
      addOperation(code, static_cast<std::size_t>(file));
  return code;
}

std::optional<std::int64_t> OperationEditor::commitEditing() {
  const auto row = singleSelectedRow();
  if (!row) return std::nullopt;
  return neighbours_.selection.rows().count() >= 2 ? commitEditingSeveralFiles(*row)
                                                   : commitEditingSingleFile(*row);
}

std::optional<std::int64_t> OperationEditor::commitEditingSingleFile(std::size_t row) {
  const auto file = singleFileWithOperations();
  if (!file || row >= file->operations->size()) return std::nullopt;
  OperationList operations = *file->operations;
  OperationRecord& record = operations[row];
  const std::int64_t code = record.code();
  if (const OperationPanel* panel = panels_.panelForCode(code)) panel->write(record);
  neighbours_.files.setOperations(*neighbours_.selection.singleRow(), std::move(operations));
  computePreview_();
  return code;
}

// The row picks the record in every file, whatever its code: with anything between the ends row 1 is no final
// operation, and such a file keeps what it has. This is meant.
std::optional<std::int64_t> OperationEditor::commitEditingSeveralFiles(std::size_t row) {
  auto shown = neighbours_.table.multiFileOperation(row);
  if (!shown) return std::nullopt;
  std::int64_t code = shown->code();
  updateOperationDictionary(*shown);
  neighbours_.table.setMultiFileOperation(row, *std::move(shown));
  const IndexSet files = neighbours_.selection.rows();
  for (const auto& range : files.ranges())
    for (std::int64_t index = range.first; index <= range.last; ++index) {
      const auto file = neighbours_.files.at(static_cast<std::size_t>(index));
      if (!file || !file->operations || file->operations->size() < 2 || row >= file->operations->size())
        continue;
      OperationList operations = *file->operations;
      code = operations[row].code();  // the last one met gives its label to the message: this is meant
      updateOperationDictionary(operations[row]);
      neighbours_.files.setOperations(static_cast<std::size_t>(index), std::move(operations));
    }
  return code;
}

// Null unless exactly one file is selected, and it has a list with both ends.
InputFiles::Entry OperationEditor::singleFileWithOperations() const {
  auto file = neighbours_.selection.singleFile();
  return file && file->operations && file->operations->size() >= 2 ? file : nullptr;
}

bool OperationEditor::anyEndIsSelected(const OperationList& operations) const {
  const IndexSet& rows = neighbours_.table.table().selectedRows();
  for (std::size_t row = 0; row < operations.size(); ++row)
    if (isEnd(operations[row].code()) && rows.contains(static_cast<std::int64_t>(row))) return true;
  return false;
}

void OperationEditor::deleteOperationButtonClicked() {
  const auto file = singleFileWithOperations();
  const IndexSet rows = neighbours_.table.table().selectedRows();
  if (!file || rows.isEmpty()) return;
  if (anyEndIsSelected(*file->operations))
    return neighbours_.alerts.showAlertInWindow(
        localized(u"Cannot Delete Operation"),
        localized(u"An initial operation and a final operation are required for each input file."),
        WindowName::Main);
  OperationList remaining;
  for (std::size_t row = 0; row < file->operations->size(); ++row)
    if (!rows.contains(static_cast<std::int64_t>(row))) remaining.push_back((*file->operations)[row]);
  neighbours_.files.setOperations(*neighbours_.selection.singleRow(), std::move(remaining));
  neighbours_.table.reloadTable();
  computePreview_();
  neighbours_.preview.updatePreviewArea();
  neighbours_.statusLine.show(localizedFormat(u"%ld operation(s) deleted for %ld input file(s).",
                                              {rows.count(), neighbours_.selection.rows().count()}),
                              0);
}

void OperationEditor::acceptDrop(const IndexSet& rows, std::int64_t row) {
  const auto file = singleFileWithOperations();
  if (file && !neighbours_.table.table().selectedRows().isEmpty()) {
    if (anyEndIsSelected(*file->operations)) {
      neighbours_.alerts.showAlertInWindow(
          localized(u"Cannot Move Operation"),
          localized(u"The initial operation and final operation cannot me moved."), WindowName::Main);
    } else {
      neighbours_.files.setOperations(*neighbours_.selection.singleRow(),
                                      withRowsMoved(*file->operations, rows, row));
    }
  }
  neighbours_.table.reloadTable();  // the preview stays as it was
}

void OperationEditor::updateStatusLabel(std::int64_t code, std::int64_t inputFileCount, Added added) {
  const std::u16string_view format = added == Added::Yes
                                         ? localizable(u"%@ operation added for %ld input file(s).")
                                         : localizable(u"%@ operation updated for %ld input file(s).");
  neighbours_.statusLine.show(localizedFormat(format, {labelOfOperation(code), inputFileCount}), 0);
}

}  // namespace quillet
