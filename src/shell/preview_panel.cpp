#include "shell/preview_panel.h"

#include <algorithm>

#include "operations/escapes.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/unicode_text.h"
#include "shell/panels/column_entries.h"
#include "text/encodings.h"
#include "text/text_writer.h"

namespace quillet {

namespace {

constexpr int kLineNumberWidth = 65;
constexpr int kColumnWidth = 80;

}  // namespace

PreviewTable::PreviewTable(Window& window, std::string name, const PreviewStores& stores,
                           PreviewStores::Side side, std::string columnPrefix)
    : stores_(stores),
      side_(side),
      columnPrefix_(std::move(columnPrefix)),
      table_(window, std::move(name),
             {[this] { return shownRowCount_; }, [this](std::size_t row) { return shownRow(row); },
              [this](std::size_t row, std::size_t column) { return shownCell(row, column); }}) {
  fitColumns(1);
}

void PreviewTable::fitAndReload(std::int64_t startPreviewFromLine) {
  const std::size_t columnCount = stores_.longestRow(side_) + 1;
  shownRowCount_ = std::min(stores_.rowCount(side_), kMostRows);
  firstLineNumber_ = startPreviewFromLine;
  const auto firstRow = static_cast<std::size_t>(std::max<std::int64_t>(startPreviewFromLine, 1) - 1);
  lines_ = stores_.rows(side_, firstRow, shownRowCount_);
  fitColumns(columnCount);
  table_.scrollToStart();
  reload();
}

// Widths that the user gave are gone afterwards: this is meant.
void PreviewTable::fitColumns(std::size_t count) {
  std::vector<Table::Column> columns = {{columnPrefix_ + "0", {}, kLineNumberWidth, true}};
  for (std::size_t column = 1; column < count; ++column) {
    std::u16string title;
    appendInteger(static_cast<std::int64_t>(column), title);
    columns.push_back({columnPrefix_ + std::to_string(column), std::move(title), kColumnWidth, true});
  }
  table_.setColumns(std::move(columns));
}

// Of several selected rows the last one stays selected, if it is still there.
void PreviewTable::reload() {
  const std::int64_t selected = table_.selectedRow();
  table_.reloadData();
  if (selected >= 0 && selected < static_cast<std::int64_t>(shownRowCount_))
    table_.selectRows(IndexSet{selected});
}

std::vector<std::string> PreviewTable::columnIdentifiers() const {
  std::vector<std::string> result;
  for (std::size_t column = 0; column < table_.columnCount(); ++column)
    result.push_back(table_.column(column).identifier);
  return result;
}

// Null for a row without a line: there are none before the first.
const PreviewStores::Row* PreviewTable::lineOf(std::size_t row) const {
  const std::int64_t line =
      static_cast<std::int64_t>(row) +
      std::clamp(firstLineNumber_, -static_cast<std::int64_t>(kMostRows), std::int64_t{1}) - 1;
  return line >= 0 && line < std::ssize(lines_) ? &lines_[static_cast<std::size_t>(line)] : nullptr;
}

std::u16string PreviewTable::shownCell(std::size_t row, std::size_t column) const {
  if (column == 0) {
    std::u16string number;
    appendInteger(static_cast<std::int64_t>(row) + firstLineNumber_, number);
    return number;
  }
  const PreviewStores::Row* line = lineOf(row);
  return line && column <= line->size() ? (*line)[column - 1] : std::u16string();
}

PreviewStores::Row PreviewTable::shownRow(std::size_t row) const {
  PreviewStores::Row cells;
  for (std::size_t column = 0; column < table_.columnCount(); ++column)
    cells.push_back(shownCell(row, column));
  return cells;
}

PreviewStores::Rows PreviewTable::shownCells() const {
  PreviewStores::Rows result;
  for (std::size_t row = 0; row < shownRowCount_; ++row) result.push_back(shownRow(row));
  return result;
}

PreviewPanel::PreviewPanel(Window& window, const PreviewStores& stores, const FileSelection& selection,
                           const UserDefaults& defaults)
    : stores_(stores),
      selection_(selection),
      defaults_(defaults),
      typeButton_(window, "previewTypePopUpButton",
                  {{0, localized(u"Input as Text")},
                   {1, localized(u"Input as Table")},
                   {2, localized(u"Output as Table")},
                   {3, localized(u"Output as Text")}},
                  "previewTypeMenuItemClicked"),
      pathLabel_(window, "previewPanelInputFilePathLabel"),
      inputTable_(window, "previewTableView", stores, PreviewStores::Side::Input, "Cil"),
      outputTable_(window, "previewOutputTableView", stores, PreviewStores::Side::Output, "Col"),
      textView_(window, "previewTextView") {
  typeButton_.selectItemWithTag(static_cast<std::int64_t>(PreviewType::InputTable));
  showViewOf(PreviewType::InputTable);
}

void PreviewPanel::addCommandsTo(Commands& commands) {
  commands.add("previewTypeMenuItemClicked", [this] { updatePreviewArea(); });
  commands.add("filesTableViewDoubleClickOnRow", [this] { filesTableViewDoubleClickOnRow(); });
}

void PreviewPanel::showViewOf(PreviewType type) {
  inputTable_.table().setHidden(type != PreviewType::InputTable);
  outputTable_.table().setHidden(type != PreviewType::OutputTable);
  textView_.setHidden(type != PreviewType::InputText && type != PreviewType::OutputText);
}

void PreviewPanel::updatePreviewPanel() {
  updatePathLabel();
  inputTable_.fitAndReload(startPreviewFromLine_);
  outputTable_.fitAndReload(startPreviewFromLine_);
  tellExpectedColumns();
}

void PreviewPanel::updatePathLabel() {
  const auto file = selection_.singleFile();
  if (file && !file->filePath) return;  // the label stays as it is: this is meant
  if (file)
    pathLabel_.setText(toUtf16(*file->filePath));
  else
    pathLabel_.setText(selection_.rows().count() >= 2 ? localized(u"(Multiple)") : std::u16string());
}

void PreviewPanel::tellExpectedColumns() {
  const auto file = selection_.singleFile();
  if (file && refillJoinColumns_) refillJoinColumns_(expectedColumns(file));
}

void PreviewPanel::updatePreviewArea() {
  const auto type = static_cast<PreviewType>(previewType());
  showViewOf(type);
  if (!selection_.singleRow()) return;  // the text stays as it is
  switch (type) {
    case PreviewType::InputText: {
      const auto content = stores_.content();
      textView_.setText(
          stringByReplacingControlCharactersFromString(content.inputString, content.inputLineSeparator));
      return;
    }
    case PreviewType::OutputText:
      textView_.setText(encodedOutputText());
      return;
    case PreviewType::InputTable:
    case PreviewType::OutputTable:
      return;
  }
}

void PreviewPanel::updateFilesTableView() {
  startPreviewFromLine_ = 1;
  updatePreviewPanel();
}

void PreviewPanel::showPreview() {
  if (selection_.selectedRow() >= 0) updateFilesTableView();
}

void PreviewPanel::filesTableViewDoubleClickOnRow() {
  typeButton_.selectItemWithTag(static_cast<std::int64_t>(PreviewType::InputText));
  updatePreviewArea();
}

void PreviewPanel::setPreviewType(std::int64_t tag) {
  typeButton_.userSelects(tag);
}

std::int64_t PreviewPanel::stringEncodingForSelectedFinalOperation() const {
  const auto file = selection_.singleFile();
  if (!file || !file->operations || file->operations->size() < 2) return kDefaultEncodingCode;
  return file->operations->back().integer("IntArg2", kDefaultEncodingCode);
}

std::u16string PreviewPanel::encodedOutputText() const {
  const std::u16string replacement = defaults_.stringForKey("EncodeErrorReplacement").value_or(u"?");
  const std::u16string text =
      textAsEncoded(stores_.content().outputString, stringEncodingForSelectedFinalOperation(), replacement,
                    PreviewStores::kTextUnits);
  // A line separator stays visible here, unlike in the text of the input: this is meant.
  return stringByReplacingControlCharactersFromString(text, {});
}

}  // namespace quillet
