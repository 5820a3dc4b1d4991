// The clipboard grid at 10,000, 100,000 and 1,000,000 rows of 10 columns: splitting its text and joining it,
// trimming, replacing and filling cells, editing one. A row has some 40 units, so the largest text has 80 MB.
//   All    every cell is selected
//   Few    three cells and two rows are
#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>

#include "clipboard/cell_changes.h"
#include "clipboard/grid_text.h"

namespace quillet {
namespace {

constexpr std::size_t kColumns = 10;

// Some cells have white space or quotes at their ends, which a split takes out.
std::u16string makeText(std::int64_t rowCount) {
  const std::u16string_view words[] = {u"Oslo", u"12.5", u"\"a b\"", u"",
                                       u" x ",  u"2018", u"M\u00FC", u"north"};
  std::u16string text;
  std::uint32_t state = 1;
  for (std::int64_t row = 0; row < rowCount; ++row) {
    if (row > 0) text += u'\n';
    for (std::size_t column = 0; column < kColumns; ++column) {
      if (column > 0) text += u',';
      state = state * 1664525 + 1013904223;
      text += words[state >> 24 & 7];
    }
  }
  return text;
}

void report(benchmark::State& state) {
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));  // rows
}

void split(benchmark::State& state, bool removeQuotes) {
  const std::u16string text = makeText(state.range(0));
  for (auto _ : state) {
    SplitText result = splitText(text, u"\n", u",", removeQuotes);
    if (result.grid.rowCount() != static_cast<std::size_t>(state.range(0))) state.SkipWithError("not split");
    state.PauseTiming();
    result = {};
    state.ResumeTiming();
  }
  report(state);
}

void join(benchmark::State& state, bool addQuotes) {
  const ClipboardGrid grid = splitText(makeText(state.range(0)), u"\n", u",", true).grid;
  for (auto _ : state) benchmark::DoNotOptimize(joinedText(grid, u"\n", u",", addQuotes));
  report(state);
}

using Change = ClipboardGrid (*)(const ClipboardGrid&, const OperationRecord&);

void change(benchmark::State& state, Change changed, const OperationRecord& operation) {
  const ClipboardGrid grid = splitText(makeText(state.range(0)), u"\n", u",", true).grid;
  for (auto _ : state) {
    ClipboardGrid result = changed(grid, operation);
    state.PauseTiming();
    if (result == grid) state.SkipWithError("nothing changed");
    result = {};
    state.ResumeTiming();
  }
  report(state);
}

void editCell(benchmark::State& state) {
  const std::int64_t rowCount = state.range(0);
  const ClipboardGrid grid = splitText(makeText(rowCount), u"\n", u",", true).grid;
  const OperationRecord operation = {{"IntArg1", rowCount / 2}, {"IntArg2", 3}, {"Arg1", u"new"}};
  for (auto _ : state) {
    const auto result = withCellEdited(grid, operation);
    benchmark::DoNotOptimize(result->rowCount());
  }
  report(state);
}

const std::u16string kAll = u"Columns: 1 - 10";
const std::u16string kFew = u"Lines: 3, 5001; Cells: (1, 2)+(4000, 3)+(9999, 7)";

OperationRecord trim(std::int64_t type, std::u16string_view what, const std::u16string& cells) {
  return {{"IntArg2", type}, {"Arg1", cells}, {"Arg2", std::u16string(what)}};
}

OperationRecord replace(std::int64_t type, std::u16string_view what, const std::u16string& cells) {
  return {{"IntArg2", type}, {"Arg1", cells}, {"Arg2", std::u16string(what)}, {"Arg3", u"<>"}};
}

OperationRecord fill(std::int64_t type, std::u16string_view what, const std::u16string& cells) {
  return {{"IntArg1", type}, {"Arg1", std::u16string(what)}, {"Arg2", cells}};
}

void atThreeSizes(benchmark::internal::Benchmark* one) {
  one->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(split, Plain, false)->Apply(atThreeSizes);
BENCHMARK_CAPTURE(split, RemovingQuotes, true)->Apply(atThreeSizes);
BENCHMARK_CAPTURE(join, Plain, false)->Apply(atThreeSizes);
BENCHMARK_CAPTURE(join, AddingQuotes, true)->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, TrimStringAll, withCellsTrimmed, trim(0, u"o", kAll))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, TrimCharactersAll, withCellsTrimmed, trim(1, u"0o", kAll))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, TrimWhitespaceAll, withCellsTrimmed, trim(2, u"", kAll))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, TrimExpressionAll, withCellsTrimmed, trim(3, u"[0-9]+", kAll))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, TrimWhitespaceFew, withCellsTrimmed, trim(2, u"", kFew))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, ReplaceStringAll, withCellsReplaced, replace(0, u"o", kAll))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, ReplaceExpressionAll, withCellsReplaced, replace(1, u"(o|x)", kAll))
    ->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, ReplaceStringFew, withCellsReplaced, replace(0, u"o", kFew))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, FillStringAll, withCellsFilled, fill(0, u"abc", kAll))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, FillSequenceAll, withCellsFilled, fill(1, u"10,5", kAll))->Apply(atThreeSizes);
BENCHMARK_CAPTURE(change, FillStringFew, withCellsFilled, fill(0, u"abc", kFew))->Apply(atThreeSizes);
BENCHMARK(editCell)->Apply(atThreeSizes);

}  // namespace
}  // namespace quillet
