// The display of the preview: which store is shown how. A preview is made by the engine; here nothing is
// computed but the columns of two tables and the texts of two text views.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "engine/preview_stores.h"
#include "platform/user_defaults.h"
#include "shell/controls.h"
#include "shell/file_selection.h"

namespace quillet {

enum class PreviewType : std::int64_t { InputText = 0, InputTable = 1, OutputTable = 2, OutputText = 3 };

// A table over the first rows of one store. Column 0 shows line numbers; the others are made to fit the rows.
// Main thread only.
class PreviewTable {
 public:
  static constexpr std::size_t kMostRows = 10;

  // columnPrefix begins the identifiers of the columns, as in "Cil0". window and stores outlive the table.
  PreviewTable(Window& window, std::string name, const PreviewStores& stores, PreviewStores::Side side,
               std::string columnPrefix);

  // Asks the store anew. startPreviewFromLine counts from 1.
  void fitAndReload(std::int64_t startPreviewFromLine);

  std::vector<std::string> columnIdentifiers() const;
  // The shown rows, a text for every column; "" for a cell that the line does not have.
  PreviewStores::Rows shownCells() const;

  Table& table() { return table_; }
  const Table& table() const { return table_; }

 private:
  void fitColumns(std::size_t count);  // with the one of the line numbers
  void reload();
  const PreviewStores::Row* lineOf(std::size_t row) const;
  std::u16string shownCell(std::size_t row, std::size_t column) const;
  PreviewStores::Row shownRow(std::size_t row) const;

  const PreviewStores& stores_;
  PreviewStores::Side side_;
  std::string columnPrefix_;
  // As of the last reload, since a run may be filling the store meanwhile.
  std::size_t shownRowCount_ = 0;
  std::int64_t firstLineNumber_ = 1;
  PreviewStores::Rows lines_;
  Table table_;
};

// Main thread only. All references outlive the panel.
class PreviewPanel {
 public:
  PreviewPanel(Window& window, const PreviewStores& stores, const FileSelection& selection,
               const UserDefaults& defaults);

  void addCommandsTo(Commands& commands);

  void updatePreviewPanel();
  void updatePreviewArea();
  void updateFilesTableView();            // back to the first line
  void showPreview();                     // the same while a file is selected
  void filesTableViewDoubleClickOnRow();  // shows the raw text of the input
  void setPreviewType(std::int64_t tag);  // one that there is not changes nothing
  void emptyText() { textView_.setText({}); }

  // Called by each update with one file selected, with the columns that are expected in a line of that file:
  // the panel that joins columns begins with them.
  void setRefillJoinColumns(std::function<void(const std::vector<ColumnEntry>&)> refill) {
    refillJoinColumns_ = std::move(refill);
  }

  // What writing the output would give, as far as it is shown.
  std::u16string encodedOutputText() const;
  // The output encoding of the one selected file.
  std::int64_t stringEncodingForSelectedFinalOperation() const;

  const std::u16string& pathLabel() const { return pathLabel_.text(); }
  const PreviewTable& inputTable() const { return inputTable_; }
  const PreviewTable& outputTable() const { return outputTable_; }
  std::int64_t previewType() const { return typeButton_.selectedTag(); }
  PreviewTable& inputTable() { return inputTable_; }
  PreviewTable& outputTable() { return outputTable_; }
  std::int64_t startPreviewFromLine() const { return startPreviewFromLine_; }
  void setStartPreviewFromLine(std::int64_t line) { startPreviewFromLine_ = line; }  // shown by an update
  const std::u16string& text() const { return textView_.text(); }

 private:
  void showViewOf(PreviewType type);
  void updatePathLabel();
  void tellExpectedColumns();

  const PreviewStores& stores_;
  const FileSelection& selection_;
  const UserDefaults& defaults_;
  PopUpButton typeButton_;
  Label pathLabel_;
  PreviewTable inputTable_;
  PreviewTable outputTable_;
  TextView textView_;
  std::int64_t startPreviewFromLine_ = 1;  // from 1
  std::function<void(const std::vector<ColumnEntry>&)> refillJoinColumns_;
};

}  // namespace quillet
