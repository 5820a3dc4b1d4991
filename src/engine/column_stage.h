// The way of one line through its cells: split, column operations in list order, join or rearrange, quotes,
// final number of columns.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "engine/column_reformat.h"
#include "engine/file_settings.h"
#include "operations/operation_record.h"
#include "operations/text_replace.h"
#include "operations/text_trim.h"
#include "platform/index_set.h"
#include "text/field_splitter.h"

namespace quillet {

// More columns than any line can need; a count beyond it would only exhaust the memory.
inline constexpr std::int64_t kMostColumns = 65'536;

// Makes the count of cells the wanted one, by cutting or by adding the text. A negative count is 0, one above
// kMostColumns is that.
void resizeCells(Cells& cells, std::int64_t wantedCount, std::u16string_view text);

// The cells that a line became. Views hold until the arena is reset and the next line is read.
struct OutputCells {
  std::span<const std::u16string_view> cells;
  std::size_t quotedCount = 0;    // how many of them, from the first, go out between quotes
  std::u16string_view separator;  // between them
};

// One object serves one file and one thread.
class ColumnStage {
 public:
  // settings, reader and warn must outlive the stage; records are those between the two ends of the list.
  ColumnStage(const FileSettings& settings, std::span<const OperationRecord> records, DateReader& reader,
              const ColumnReformatter::Warn& warn);

  // Adds the cells of a line as it was read.
  void split(std::u16string_view line, Cells& into, TextArena& arena) const;

  // The result is in use until the next call.
  OutputCells apply(std::u16string_view line, std::int64_t inputLineIndex, TextArena& arena);

  // Nothing touches a cell, and cells are joined as they were split: the text of the output cells is the
  // line.
  bool leavesLinesAsTheyAre() const { return leavesLines_; }

 private:
  // An operation on selected cells, or on their number.
  struct Resize {
    std::int64_t count;
    std::u16string text;
  };
  struct ColumnStep {
    IndexSet columns;
    std::variant<TextTrimmer, TextReplacer, ColumnReformatter, Resize> action;
  };

  void addStep(const OperationRecord& record, DateReader& reader, const ColumnReformatter::Warn& warn);
  void readArrangement(std::span<const OperationRecord> records);
  void applyStep(ColumnStep& step, std::int64_t inputLineIndex, TextArena& arena);
  void joinColumns(TextArena& arena);
  void rearrangeColumns();

  const FileSettings& settings_;
  FieldSplitter splitter_;
  std::vector<ColumnStep> steps_;
  std::vector<std::vector<std::int64_t>> joinColumnGroups_;  // indexes from 0
  std::u16string joinColumnsSeparator_;
  std::vector<std::int64_t> newOrder_;  // numbers from 1
  std::vector<Resize> finalResizes_;
  bool leavesLines_ = false;
  Cells cells_;
  Cells otherCells_;
};

}  // namespace quillet
