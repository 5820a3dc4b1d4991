#include "clipboard/clipboard_data.h"

#include <new>
#include <stdexcept>
#include <utility>

#include "clipboard/cell_changes.h"
#include "clipboard/grid_text.h"
#include "operations/operation_codes.h"
#include "operations/operation_description.h"
#include "platform/localization.h"

namespace quillet {

namespace {

constexpr int kInformation = 0;
constexpr int kError = 2;

ClipboardGrid gridOfOneCell(std::u16string_view text) {
  GridBuilder rows;
  rows.append(ClipboardRow({&text, 1}));
  return rows.take();
}

std::int64_t integerOf(std::size_t value) {
  return static_cast<std::int64_t>(value);
}

}  // namespace

ClipboardData::ClipboardData(Pasteboard& pasteboard, ClipboardDisplay& display)
    : pasteboard_(pasteboard), display_(display) {}

const std::u16string& ClipboardData::clipboardDataString() const {
  static const std::u16string kNone;
  return text_ ? *text_ : kNone;
}

// Refresh.

void ClipboardData::refreshDataFromClipboard() {
  if (takeClipboardText()) {
    operations_.clear();
    grid_ = gridOfOneCell(*text_);
    selection_.resetClipboardDataFocusAndSelection();
    display_.updateClipboardDataWindowTextColumns(false);
    display_.setToolbarItemsEnabled(false);
    display_.setStatus(localized(u"Refreshed from macOS Clipboard."), kInformation);
  }
  display_.resizeClipboardTableViewColumns();
  display_.reloadTable();
  updateClipboardDataWindowTitle();
  display_.setText(clipboardDataString());
}

bool ClipboardData::takeClipboardText() {
  std::optional<std::u16string> text = pasteboard_.readString();
  if (!text) return false;
  if (text->size() > kMostCharacters) {
    display_.showAlert(localized(u"Too many characters"),
                       localizedFormat(u"This app is limited to %ld characters.\n"
                                       u"%ld characters were found on the clipboard.",
                                       {integerOf(kMostCharacters), integerOf(text->size())}));
    return false;
  }
  text_ = std::make_shared<const std::u16string>(*std::move(text));
  return true;
}

// The gate.

void ClipboardData::performClipboardDataOperation(const OperationRecord& operation) {
  undoManager_.removeAllActions();
  performClipboardDataOperationWithUndo(OperationRecord(operation));  // it may stand in the list, which grows
}

void ClipboardData::performClipboardDataOperationWithUndo(const OperationRecord& record) {
  operations_.push_back(record);
  oldGrid_ = grid_;
  errorText_.reset();
  const ClipboardOperation& operation = clipboardOperation(record.code());
  const bool rowsWereSelected = !selection_.selected2DIndexSet().infiniteRowIndexSet().isEmpty();
  const bool columnsWereSelected = !selection_.selected2DIndexSet().infiniteColumnIndexSet().isEmpty();

  compute(operation, record);
  rebuildColumns(operation, rowsWereSelected, columnsWereSelected);
  display_.reloadTable();
  updateClipboardDataWindowTitle();
  if (errorText_)
    display_.setStatus(*errorText_, kError);
  else
    updateClipboardDataWindowStatusLabel(record.code());
  registerUndo(record);
}

// What memory cannot hold leaves the grid as it was.
void ClipboardData::compute(const ClipboardOperation& operation, const OperationRecord& record) try {
  if (operation.compute)
    install(operation, operation.compute(grid_, record));
  else if (operation.code == OpClipboardSplit)
    split(record);
  else if (operation.code == OpClipboardJoin)
    join(record);
  else
    editCell(record);
} catch (const std::bad_alloc&) {
  errorText_ = localized(u"Not enough memory");
} catch (const std::length_error&) {
  errorText_ = localized(u"Not enough memory");
}

void ClipboardData::install(const ClipboardOperation& operation, ClipboardOutcome outcome) {
  grid_ = std::move(outcome.grid);
  TwoDimensionalMutableIndexSet& selection = selection_.selected2DIndexSet();
  switch (operation.selection) {
    case SelectionAfter::Unchanged:
      break;
    case SelectionAfter::WithoutInfinite:
      selection.removeAllInfiniteIndexes();
      break;
    case SelectionAfter::WithoutInfiniteRows:
      selection.removeAllInfiniteRowIndexes();
      break;
    case SelectionAfter::WithoutInfiniteColumns:
      selection.removeAllInfiniteColumnIndexes();
      break;
    case SelectionAfter::RowsFollow:
      if (outcome.indexes) selection.infiniteRowIndexSet() = *std::move(outcome.indexes);
      break;
    case SelectionAfter::ColumnsFollow:
      if (outcome.indexes) selection.infiniteColumnIndexSet() = *std::move(outcome.indexes);
      break;
  }
}

void ClipboardData::rebuildColumns(const ClipboardOperation& operation, bool rowsWereSelected,
                                   bool columnsWereSelected) {
  const bool rebuild =
      operation.columns == ColumnsAfter::Rebuilt ||
      (operation.columns == ColumnsAfter::RebuiltIfRowsWereSelected && rowsWereSelected) ||
      (operation.columns == ColumnsAfter::RebuiltIfColumnsWereSelected && columnsWereSelected);
  if (rebuild) display_.resizeClipboardTableViewColumns();
}

// Split always starts from the text, so what was done to the grid since the last Join is dropped.
void ClipboardData::split(const OperationRecord& record) {
  if (!text_) return;
  SplitText parts = splitText(*text_, record.text("Arg1"), record.text("Arg2"),
                              hasFlags(record.integer("IntArg1", 0), RemoveQuotes));
  if (parts.result == SplitText::Result::TooManyLines) {
    errorText_ = localized(u"Too many lines");
    display_.showAlert(*errorText_, localizedFormat(u"This app is limited to %ld lines.\n"
                                                    u"%ld lines were found on the clipboard.",
                                                    {integerOf(kMostLines), integerOf(parts.count)}));
    return;
  }
  grid_ = std::move(parts.grid);
  if (parts.result == SplitText::Result::TooManyColumns) {
    errorText_ = localized(u"Too many columns");
    display_.showAlert(*errorText_, localizedFormat(u"This app is limited to %ld columns.\n"
                                                    u"%ld columns were found on the clipboard on line %ld.",
                                                    {integerOf(kMostColumns), integerOf(parts.count),
                                                     integerOf(parts.lineNumber)}));
  }
  display_.resizeClipboardTableViewColumns();
  display_.updateClipboardDataWindowTextColumns(true);
}

// Leaves an empty grid, which is meant: Split and Undo bring one back.
void ClipboardData::join(const OperationRecord& record) {
  text_ = std::make_shared<const std::u16string>(joinedText(
      grid_, record.text("Arg1"), record.text("Arg2"), hasFlags(record.integer("IntArg1", 0), AddQuotes)));
  display_.updateClipboardDataWindowTextColumns(false);
  display_.setText(*text_);
  if (!pasteboard_.writeString(*text_)) {
    errorText_ = localized(u"Could not write to pasteboard");
    display_.showErrorAlert(*errorText_);
  }
  grid_ = {};
}

void ClipboardData::editCell(const OperationRecord& record) {
  if (std::optional<ClipboardGrid> edited = withCellEdited(grid_, record))
    grid_ = *std::move(edited);
  else
    errorText_ = localized(u"Index out of range");
}

// Undo.

void ClipboardData::registerUndo(const OperationRecord& record) {
  undoManager_.registerUndo(labelOfOperation(record.code()),
                            [this, record] { undoPerformClipboardDataOperation(record); });
}

void ClipboardData::undoPerformClipboardDataOperation(const OperationRecord& record) {
  grid_ = oldGrid_;
  display_.reloadTable();
  updateClipboardDataWindowStatusLabel(OpClipboardUndo);
  const ClipboardOperation& operation = clipboardOperation(record.code());
  if (operation.rebuildsColumnsAfterUndo) display_.resizeClipboardTableViewColumns();
  if (operation.shownAfterUndo != ShownAfterUndo::Unchanged)
    display_.updateClipboardDataWindowTextColumns(operation.shownAfterUndo == ShownAfterUndo::Grid);
  undoManager_.registerUndo(labelOfOperation(record.code()),
                            [this, record] { performClipboardDataOperationWithUndo(record); });
}

// What the window says.

void ClipboardData::updateClipboardDataWindowStatusLabel(std::int64_t code) {
  display_.setStatus(localizedFormat(u"%@ operation performed.", {labelOfOperation(code)}), kInformation);
}

void ClipboardData::updateClipboardDataWindowTitle() {
  if (grid_.rowCount() == 0) {
    display_.setTitle(localized(u"Clipboard Data"));
    return;
  }
  const std::int64_t lines = integerOf(grid_.rowCount());
  const std::int64_t columns = integerOf(display_.dataColumnCount());
  const std::int64_t characters = integerOf(clipboardDataString().size());
  display_.setTitle(
      localizedFormat(u"Clipboard Data - %ld %@, %ld %@ (%ld %@)",
                      {lines, lines == 1 ? localized(u"line") : localized(u"lines"), columns,
                       columns == 1 ? localized(u"column") : localized(u"columns"), characters,
                       characters == 1 ? localized(u"character total") : localized(u"characters total")}));
}

}  // namespace quillet
