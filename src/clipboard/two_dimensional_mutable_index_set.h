// The selection of the clipboard grid: single cells, and whole rows and whole columns as infinite indexes, so
// that they stay selected however large the grid becomes. It knows no grid and clips nothing. Indexes count
// from 0; only the text form counts from 1, and calls a row a line:
//
//   "Lines: 1, 3 - 5; Columns: 2; Cells: (1, 2)+(3, 4)"
//
// The three parts are independent: a cell can be in all of them, and nothing folds one into another. A row
// whose last single cell was removed stays as an empty entry, so isEmpty() stays false: both are meant.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "platform/index_set.h"

namespace quillet {

class TwoDimensionalMutableIndexSet {
 public:
  TwoDimensionalMutableIndexSet() = default;
  // Adds what the text form names, with "Lines: " and its like in English. There are no errors: what cannot
  // be understood is passed over, and so is every number below 1.
  explicit TwoDimensionalMutableIndexSet(std::u16string_view cellString);

  // Negative indexes are passed over, and so is the largest integer, which the text form cannot name.
  void addRowIndex(std::int64_t row, std::int64_t column);
  void addInfiniteRowIndex(std::int64_t row);
  void addInfiniteRowIndexesInRange(std::int64_t location, std::int64_t length);
  void addInfiniteColumnIndex(std::int64_t column);
  void addInfiniteColumnIndexesInRange(std::int64_t location, std::int64_t length);

  // The single cell only: an infinite row or column that covers it stays.
  void removeRowIndex(std::int64_t row, std::int64_t column);
  void removeRowIndex(std::int64_t row);        // the infinite row and all single cells of it
  void removeColumnIndex(std::int64_t column);  // the infinite column and all single cells in it
  void removeAllInfiniteRowIndexes() { infRowIndexSet_.clear(); }
  void removeAllInfiniteColumnIndexes() { infColumnIndexSet_.clear(); }
  void removeAllInfiniteIndexes();
  void removeNonInfiniteIndexes() { rowIndexDictionary_.clear(); }
  void removeAllIndexes();

  bool containsRowIndex(std::int64_t row, std::int64_t column) const;
  bool containsInfiniteRowIndex(std::int64_t row) const { return infRowIndexSet_.contains(row); }
  bool containsInfiniteColumnIndex(std::int64_t column) const { return infColumnIndexSet_.contains(column); }
  bool isEmpty() const;

  // The live parts.
  IndexSet& infiniteRowIndexSet() { return infRowIndexSet_; }
  const IndexSet& infiniteRowIndexSet() const { return infRowIndexSet_; }
  IndexSet& infiniteColumnIndexSet() { return infColumnIndexSet_; }
  const IndexSet& infiniteColumnIndexSet() const { return infColumnIndexSet_; }
  // From a row to the columns of its single cells, which may be none.
  const std::map<std::int64_t, IndexSet>& rowIndexDictionary() const { return rowIndexDictionary_; }

  // "1, 3 - 5". A null set gives "".
  static std::u16string stringPlus1FromInfiniteIndexSet(const IndexSet* set);
  std::u16string stringPlus1FromAllIndexes() const;  // cells in ascending order

  bool operator==(const TwoDimensionalMutableIndexSet&) const = default;  // empty entries count

 private:
  std::map<std::int64_t, IndexSet> rowIndexDictionary_;
  IndexSet infRowIndexSet_;
  IndexSet infColumnIndexSet_;
};

}  // namespace quillet
