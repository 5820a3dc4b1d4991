#include "drive/index_set_steps.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "drive/arguments.h"

namespace quillet::drive {

namespace {

using Set = TwoDimensionalMutableIndexSet;
using Numbers = std::array<std::int64_t, 2>;

struct Step {
  std::string_view name;
  std::size_t numberCount;
  void (*take)(Set& set, const Numbers& numbers);
};

constexpr Step kSteps[] = {
    {"addRowIndex", 2, [](Set& set, const Numbers& n) { set.addRowIndex(n[0], n[1]); }},
    {"addInfiniteRowIndex", 1, [](Set& set, const Numbers& n) { set.addInfiniteRowIndex(n[0]); }},
    {"addInfiniteRowIndexesInRange", 2,
     [](Set& set, const Numbers& n) { set.addInfiniteRowIndexesInRange(n[0], n[1]); }},
    {"addInfiniteColumnIndex", 1, [](Set& set, const Numbers& n) { set.addInfiniteColumnIndex(n[0]); }},
    {"addInfiniteColumnIndexesInRange", 2,
     [](Set& set, const Numbers& n) { set.addInfiniteColumnIndexesInRange(n[0], n[1]); }},
    {"removeRowIndex", 2, [](Set& set, const Numbers& n) { set.removeRowIndex(n[0], n[1]); }},
    {"removeRowIndex", 1, [](Set& set, const Numbers& n) { set.removeRowIndex(n[0]); }},
    {"removeColumnIndex", 1, [](Set& set, const Numbers& n) { set.removeColumnIndex(n[0]); }},
    {"removeAllInfiniteRowIndexes", 0, [](Set& set, const Numbers&) { set.removeAllInfiniteRowIndexes(); }},
    {"removeAllInfiniteColumnIndexes", 0,
     [](Set& set, const Numbers&) { set.removeAllInfiniteColumnIndexes(); }},
    {"removeAllInfiniteIndexes", 0, [](Set& set, const Numbers&) { set.removeAllInfiniteIndexes(); }},
    {"removeNonInfiniteIndexes", 0, [](Set& set, const Numbers&) { set.removeNonInfiniteIndexes(); }},
    {"removeAllIndexes", 0, [](Set& set, const Numbers&) { set.removeAllIndexes(); }},
};

const Step& stepOf(const json& step) {
  if (!step.is_array() || step.empty() || !step[0].is_string())
    throw CommandError("\"steps\" must be a list of [operation, argument...]");
  const auto& name = step[0].get_ref<const std::string&>();
  const auto* found = std::find_if(std::begin(kSteps), std::end(kSteps), [&](const Step& one) {
    return one.name == name && one.numberCount == step.size() - 1;
  });
  if (found == std::end(kSteps)) throw CommandError("unknown step, or not its number of arguments: " + name);
  return *found;
}

}  // namespace

void takeIndexSetSteps(const json& steps, TwoDimensionalMutableIndexSet& set) {
  if (!steps.is_array()) throw CommandError("\"steps\" must be a list");
  for (const auto& values : steps) {
    const Step& step = stepOf(values);
    Numbers numbers{};
    for (std::size_t i = 0; i < step.numberCount; ++i)
      numbers[i] = integerFromCommand(values[i + 1], "steps");
    step.take(set, numbers);
  }
}

json containedCells(const json& cells, const TwoDimensionalMutableIndexSet& set) {
  constexpr const char* kExpected = "\"contains\" must be a list of [row, column]";
  if (!cells.is_array()) throw CommandError(kExpected);
  json result = json::array();
  for (const auto& cell : cells) {
    if (!cell.is_array() || cell.size() != 2) throw CommandError(kExpected);
    const std::int64_t row = integerFromCommand(cell[0], "contains");
    result.push_back(set.containsRowIndex(row, integerFromCommand(cell[1], "contains")));
  }
  return result;
}

}  // namespace quillet::drive
