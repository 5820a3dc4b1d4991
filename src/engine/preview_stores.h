// The first lines of a file before and after its operations, as the preview shows them. Filled by every pass
// over a file, of a preview and of a run. Safe from any thread.
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

class PreviewStores {
 public:
  using Row = std::vector<std::u16string>;
  using Rows = std::vector<Row>;
  enum class Side { Input, Output };

  static constexpr std::size_t kTextUnits = 16'384;  // of the head of a file that is not split into lines

  struct Content {
    Rows inputRows;
    Rows outputRows;
    std::u16string inputString;   // the head of the raw text
    std::u16string outputString;  // the output text with its separators
    std::u16string inputLineSeparator;
  };

  void reset();
  void clearInputRows();
  void setInputString(std::u16string_view text);
  void setInputLineSeparator(std::u16string_view separator);
  void addRow(Side side, Row row);
  // For a file that is not split into lines: the rows become one, whose only cell grows by whole composed
  // sequences of moreInput up to the limit; an empty store takes the row as it is.
  void growFirstRow(Side side, Row row, const std::u16string* moreInput);
  void appendOutput(std::u16string_view text);

  Content content() const;  // a copy

  // What a table asks.
  std::size_t rowCount(Side side) const;
  std::size_t longestRow(Side side) const;                                 // in cells; 0 without rows
  std::optional<std::size_t> cellCount(Side side, std::size_t row) const;  // nothing beyond the rows
  Rows rows(Side side, std::size_t first, std::size_t mostRows) const;     // a copy of those that there are

 private:
  const Rows& rowsOf(Side side) const {
    return side == Side::Input ? content_.inputRows : content_.outputRows;
  }

  mutable std::mutex mutex_;
  Content content_;
};

}  // namespace quillet
