// Operations on the shape of the clipboard grid, with 10,000, 100,000 and 1,000,000 rows of 10 cells, of
// about 8 units each: what touches few rows, and what touches every cell. The freeing of the result is part
// of the time. Ragged grids have one row of 16,384 cells and otherwise rows of 1 to 3.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>
#include <utility>

#include "clipboard/clipboard_grid.h"
#include "clipboard/grid_deletions.h"
#include "clipboard/grid_edges.h"
#include "clipboard/grid_flips.h"
#include "clipboard/grid_joins.h"
#include "clipboard/grid_merges.h"
#include "clipboard/grid_moves.h"

namespace quillet {
namespace {

constexpr std::size_t kColumns = 10;
constexpr std::size_t kWideRow = 16'384;

class RowSource {
 public:
  ClipboardRow row(std::size_t cellCount) {
    for (std::size_t i = 0; i < cellCount; ++i) builder_.append(text());
    return builder_.take();
  }

 private:
  // 4 to 11 units.
  std::u16string text() {
    state_ = state_ * 1664525 + 1013904223;
    std::u16string text(4 + (state_ >> 29), u'a');
    for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char16_t>(u'a' + (state_ >> i) % 26);
    return text;
  }

  RowBuilder builder_;
  std::uint32_t state_ = 1;
};

enum class Kind { Even, Ragged };

ClipboardGrid makeGrid(Kind kind, std::size_t rowCount) {
  RowSource source;
  GridBuilder rows;
  for (std::size_t i = 0; i < rowCount; ++i) {
    const bool wide = kind == Kind::Ragged && i == rowCount / 2;
    rows.append(source.row(kind == Kind::Even ? kColumns : wide ? kWideRow : 1 + i % 3));
  }
  return rows.take();
}

// The last one is kept, as the benchmarks of one size follow each other.
const ClipboardGrid& grid(Kind kind, std::size_t rowCount) {
  static ClipboardGrid kept;
  static Kind keptKind;
  if (keptKind != kind || kept.rowCount() != rowCount) {
    kept = {};
    kept = makeGrid(kind, rowCount);
    keptKind = kind;
  }
  return kept;
}

using Operation = void (*)(const ClipboardGrid& grid);

struct Benchmark {
  const char* name;
  Operation operation;
};

template <typename Result>
void keep(Result result) {
  benchmark::DoNotOptimize(result);
}

std::int64_t middle(const ClipboardGrid& grid) {
  return static_cast<std::int64_t>(grid.rowCount()) / 2;
}

IndexSet everySecond(std::size_t count) {
  IndexSet indexes;
  for (std::size_t i = 0; i + 1 < count; i += 2) indexes.addIndex(static_cast<std::int64_t>(i + 1));
  return indexes;
}

const Benchmark kFewRows[] = {
    {"first row off", [](const ClipboardGrid& g) { keep(withoutFirstRow(g)); }},
    {"last row off", [](const ClipboardGrid& g) { keep(withoutLastRow(g)); }},
    {"blank row first", [](const ClipboardGrid& g) { keep(withBlankRowFirst(g)); }},
    {"blank row last", [](const ClipboardGrid& g) { keep(withBlankRowLast(g)); }},
    {"delete a row", [](const ClipboardGrid& g) { keep(withoutRows(g, IndexSet{middle(g)})); }},
    {"move a row up", [](const ClipboardGrid& g) { keep(moveRows(g, IndexSet{middle(g)}, false)); }},
    {"move a row down", [](const ClipboardGrid& g) { keep(moveRows(g, IndexSet{middle(g)}, true)); }},
    {"merge two rows up",
     [](const ClipboardGrid& g) {
       keep(mergeRows(g, u"-", IndexSet{middle(g), middle(g) + 1}, false));
     }},
    {"merge two rows down",
     [](const ClipboardGrid& g) {
       keep(mergeRows(g, u"-", IndexSet{middle(g), middle(g) + 1}, true));
     }},
};

const Benchmark kAllCells[] = {
    {"first column off", [](const ClipboardGrid& g) { keep(withoutFirstColumn(g)); }},
    {"last column off", [](const ClipboardGrid& g) { keep(withoutLastColumn(g)); }},
    {"blank column first", [](const ClipboardGrid& g) { keep(withBlankColumnFirst(g)); }},
    {"blank column last", [](const ClipboardGrid& g) { keep(withBlankColumnLast(g)); }},
    {"delete every second row",
     [](const ClipboardGrid& g) { keep(withoutRows(g, everySecond(g.rowCount()))); }},
    {"delete columns",
     [](const ClipboardGrid& g) {
       keep(withoutColumns(g, IndexSet{2, 5, 6}));
     }},
    {"move every second row up",
     [](const ClipboardGrid& g) { keep(moveRows(g, everySecond(g.rowCount()), false)); }},
    {"move columns left",
     [](const ClipboardGrid& g) {
       keep(moveColumns(g, IndexSet{2, 5, 6}, false));
     }},
    {"move columns right",
     [](const ClipboardGrid& g) {
       keep(moveColumns(g, IndexSet{2, 5, 6}, true));
     }},
    {"flip horizontal", [](const ClipboardGrid& g) { keep(flippedHorizontally(g)); }},
    {"flip vertical", [](const ClipboardGrid& g) { keep(flippedVertically(g)); }},
    {"flip diagonal", [](const ClipboardGrid& g) { keep(flippedDiagonally(g)); }},
    {"flip diagonal and back", [](const ClipboardGrid& g) { keep(flippedDiagonally(flippedDiagonally(g))); }},
    {"merge all rows",
     [](const ClipboardGrid& g) {
       IndexSet all;
       all.addRange(0, static_cast<std::int64_t>(g.rowCount()));
       keep(mergeRows(g, u"-", all, false));
     }},
    {"merge columns left",
     [](const ClipboardGrid& g) {
       keep(mergeColumns(g, u"-", IndexSet{2, 5, 6}, false));
     }},
    {"merge columns right",
     [](const ClipboardGrid& g) {
       keep(mergeColumns(g, u"-", IndexSet{2, 5, 6}, true));
     }},
    {"join 2 rows", [](const ClipboardGrid& g) { keep(joinConsecutiveRows(g, 2)); }},
    {"join all rows", [](const ClipboardGrid& g) { keep(joinConsecutiveRows(g, 1LL << 40)); }},
    {"join 2 columns", [](const ClipboardGrid& g) { keep(joinConsecutiveColumns(g, 2)); }},
    {"join all columns", [](const ClipboardGrid& g) { keep(joinConsecutiveColumns(g, kColumns)); }},
};

constexpr std::int64_t kLast = kWideRow - 1;

const Benchmark kRagged[] = {
    {"ragged: last column off", [](const ClipboardGrid& g) { keep(withoutLastColumn(g)); }},
    {"ragged: blank column last", [](const ClipboardGrid& g) { keep(withBlankColumnLast(g)); }},
    {"ragged: move first column right",
     [](const ClipboardGrid& g) { keep(moveColumns(g, IndexSet{0}, true)); }},
    {"ragged: move every second column left",
     [](const ClipboardGrid& g) { keep(moveColumns(g, everySecond(kWideRow), false)); }},
    {"ragged: merge first and last column right",
     [](const ClipboardGrid& g) {
       keep(mergeColumns(g, u"-", IndexSet{0, kLast}, true));
     }},
    {"ragged: merge two last columns left",
     [](const ClipboardGrid& g) {
       keep(mergeColumns(g, u"-", IndexSet{kLast - 1, kLast}, false));
     }},
    {"ragged: flip horizontal", [](const ClipboardGrid& g) { keep(flippedHorizontally(g)); }},
    {"ragged: flip diagonal", [](const ClipboardGrid& g) { keep(flippedDiagonally(g)); }},
    {"ragged: join 2 columns", [](const ClipboardGrid& g) { keep(joinConsecutiveColumns(g, 2)); }},
};

void run(benchmark::State& state, Kind kind, Operation operation) {
  const ClipboardGrid& operand = grid(kind, static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) operation(operand);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <std::size_t count>
void add(Kind kind, const Benchmark (&list)[count], std::int64_t rowCount) {
  for (const Benchmark& one : list) {
    const std::string name = std::string("clipboard/") + one.name;
    benchmark::RegisterBenchmark(name.c_str(), run, kind, one.operation)
        ->Arg(rowCount)
        ->Unit(benchmark::kMillisecond);
  }
}

const bool kAdded = [] {
  for (const std::int64_t rowCount : {10'000, 100'000, 1'000'000}) {
    add(Kind::Even, kFewRows, rowCount);
    add(Kind::Even, kAllCells, rowCount);
    add(Kind::Ragged, kRagged, rowCount);
  }
  return true;
}();

}  // namespace
}  // namespace quillet
