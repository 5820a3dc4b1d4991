#include "shell/preview_panel.h"

#include <algorithm>

#include "operations/escapes.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/unicode_text.h"
#include "text/encodings.h"
#include "text/text_writer.h"

namespace quillet {

void PreviewTable::fitAndReload(std::int64_t startPreviewFromLine) {
  columnCount_ = stores_.longestRow(side_) + 1;
  shownRowCount_ = std::min(stores_.rowCount(side_), kMostRows);
  firstLineNumber_ = startPreviewFromLine;
  const auto firstRow = static_cast<std::size_t>(std::max<std::int64_t>(startPreviewFromLine, 1) - 1);
  lines_ = stores_.rows(side_, firstRow, shownRowCount_);
}

std::vector<std::string> PreviewTable::columnIdentifiers() const {
  std::vector<std::string> result;
  for (std::size_t column = 0; column < columnCount_; ++column)
    result.push_back(columnPrefix_ + std::to_string(column));
  return result;
}

PreviewStores::Rows PreviewTable::shownCells() const {
  PreviewStores::Rows result(shownRowCount_);
  for (std::size_t row = 0; row < shownRowCount_; ++row) {
    auto& cells = result[row];
    appendInteger(static_cast<std::int64_t>(row) + firstLineNumber_, cells.emplace_back());
    if (row < lines_.size()) cells.insert(cells.end(), lines_[row].begin(), lines_[row].end());
    cells.resize(columnCount_);
  }
  return result;
}

PreviewPanel::PreviewPanel(const PreviewStores& stores, const FileSelection& selection,
                           const UserDefaults& defaults)
    : stores_(stores),
      selection_(selection),
      defaults_(defaults),
      inputTable_(stores, PreviewStores::Side::Input, "Cil"),
      outputTable_(stores, PreviewStores::Side::Output, "Col") {}

void PreviewPanel::updatePreviewPanel() {
  if (const auto file = selection_.singleFile())
    pathLabel_ = file->filePathOrEmpty();
  else
    pathLabel_ = selection_.rows().count() >= 2 ? toUtf8(localized(u"(Multiple)")) : "";
  inputTable_.fitAndReload(startPreviewFromLine_);
  outputTable_.fitAndReload(startPreviewFromLine_);
}

void PreviewPanel::updatePreviewArea() {
  if (!selection_.singleRow()) return;  // the text stays as it is
  switch (static_cast<PreviewType>(previewType_)) {
    case PreviewType::InputText: {
      const auto content = stores_.content();
      text_ = stringByReplacingControlCharactersFromString(content.inputString, content.inputLineSeparator);
      return;
    }
    case PreviewType::OutputText:
      text_ = encodedOutputText();
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

void PreviewPanel::setPreviewType(std::int64_t tag) {
  previewType_ = tag;
  updatePreviewArea();
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
