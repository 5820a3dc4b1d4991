// The display of the preview: which store is shown how. A preview is made by the engine; here nothing is
// computed but the columns of two tables and the texts of two text views.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/preview_stores.h"
#include "platform/user_defaults.h"
#include "shell/file_selection.h"

namespace quillet {

enum class PreviewType : std::int64_t { InputText = 0, InputTable = 1, OutputTable = 2, OutputText = 3 };

// A table over the first rows of one store. Column 0 shows line numbers; the others are made to fit the rows.
class PreviewTable {
 public:
  static constexpr std::size_t kMostRows = 10;

  // columnPrefix begins the identifiers of the columns, as in "Cil0". stores outlives the table.
  PreviewTable(const PreviewStores& stores, PreviewStores::Side side, std::string columnPrefix)
      : stores_(stores), side_(side), columnPrefix_(std::move(columnPrefix)) {}

  // Asks the store anew. startPreviewFromLine counts from 1.
  void fitAndReload(std::int64_t startPreviewFromLine);

  std::vector<std::string> columnIdentifiers() const;
  // The shown rows, a text for every column; "" for a cell that the line does not have.
  PreviewStores::Rows shownCells() const;

 private:
  const PreviewStores& stores_;
  PreviewStores::Side side_;
  std::string columnPrefix_;
  std::size_t columnCount_ = 1;  // with the one of the line numbers
  // As of the last reload, since a run may be filling the store meanwhile.
  std::size_t shownRowCount_ = 0;
  std::int64_t firstLineNumber_ = 1;
  PreviewStores::Rows lines_;
};

// Main thread only. All references outlive the panel.
class PreviewPanel {
 public:
  PreviewPanel(const PreviewStores& stores, const FileSelection& selection, const UserDefaults& defaults);

  void updatePreviewPanel();
  void updatePreviewArea();
  void updateFilesTableView();            // back to the first line
  void setPreviewType(std::int64_t tag);  // any integer; an unknown one shows nothing new
  void emptyText() { text_.clear(); }

  // What writing the output would give, as far as it is shown.
  std::u16string encodedOutputText() const;
  // The output encoding of the one selected file.
  std::int64_t stringEncodingForSelectedFinalOperation() const;

  const std::string& pathLabel() const { return pathLabel_; }
  const PreviewTable& inputTable() const { return inputTable_; }
  const PreviewTable& outputTable() const { return outputTable_; }
  std::int64_t previewType() const { return previewType_; }
  std::int64_t startPreviewFromLine() const { return startPreviewFromLine_; }
  const std::u16string& text() const { return text_; }

 private:
  const PreviewStores& stores_;
  const FileSelection& selection_;
  const UserDefaults& defaults_;
  PreviewTable inputTable_;
  PreviewTable outputTable_;
  std::string pathLabel_;
  std::int64_t previewType_ = static_cast<std::int64_t>(PreviewType::InputTable);
  std::int64_t startPreviewFromLine_ = 1;  // from 1
  std::u16string text_;                    // of the text view
};

}  // namespace quillet
