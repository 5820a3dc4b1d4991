// The text form of a selection: any text can be read, as the plain rule reads it, and what it named can be
// printed and read again as the same.
//
// Input: the text.
#include "clipboard/cell_string_reference.h"
#include "clipboard/two_dimensional_mutable_index_set.h"
#include "fuzz_input.h"

namespace quillet::fuzz {
namespace {

// A selection that was read holds no empty entries.
void requireCells(const TwoDimensionalMutableIndexSet& set) {
  for (const auto& [row, columns] : set.rowIndexDictionary()) {
    require(row >= 0 && !columns.isEmpty(), "an entry is a row with cells");
    require(set.containsRowIndex(row, columns.firstIndex()), "the set contains its cells");
  }
}

void requireLoneParts(const TwoDimensionalMutableIndexSet& set) {
  TwoDimensionalMutableIndexSet rest = set;
  rest.removeNonInfiniteIndexes();
  require(rest.infiniteRowIndexSet() == set.infiniteRowIndexSet(), "cells are apart from rows");
  rest.removeAllInfiniteRowIndexes();
  require(rest.infiniteColumnIndexSet() == set.infiniteColumnIndexSet(), "rows are apart from columns");
  rest.removeAllInfiniteColumnIndexes();
  require(rest.isEmpty() && rest.stringPlus1FromAllIndexes().empty(), "the three parts are all");
}

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  using namespace quillet::fuzz;
  const std::u16string text = FuzzInput(data, size).restText();
  const TwoDimensionalMutableIndexSet set(text);
  require(set == testing::readPlainly(text), "a text is read by the plain rule");
  const std::u16string printed = set.stringPlus1FromAllIndexes();
  require(set.isEmpty() == printed.empty(), "what was read is empty when nothing is printed");
  require(TwoDimensionalMutableIndexSet(printed) == set, "a printed selection is read as itself");
  requireCells(set);
  requireLoneParts(set);
  return 0;
}
