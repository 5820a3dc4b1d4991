// Reading and printing dates, in cells per second, over two columns:
//   mixed      numeric forms, month names, empty and unknown cells, as a column of many hands holds them
//   each form  the same form in every cell, other days
// and what a reader and a printer cost to make.
#include <benchmark/benchmark.h>
#include <random>
#include <string>
#include <vector>

#include "platform/date_ladders.h"

namespace quillet {
namespace {

constexpr const char* kZones[] = {"UTC", "America/New_York", "Europe/Berlin"};
constexpr std::u16string_view kForms[] = {u"yyyy-MM-dd", u"M/d/yyyy",   u"M/d/yy",    u"MMM d, y",
                                          u"MMMM d, y",  u"d-MMM-yyyy", u"'unknown'", u"''"};

std::vector<std::u16string> column(std::size_t firstForm, std::size_t forms) {
  std::vector<DateFormatter> formatters(forms);
  for (std::size_t i = 0; i < forms; ++i) {
    formatters[i] = DateFormatter({"en_US", "UTC"});
    formatters[i].setDateFormat(kForms[firstForm + i]);
  }
  std::mt19937_64 random(7);
  std::vector<std::u16string> cells;
  for (int i = 0; i < 100000; ++i) {
    const double day = static_cast<double>(random() % 25000);  // 1970 to 2038
    cells.push_back(formatters[random() % forms].stringFromDate(day * 86400000));
    if (cells.back() == u"'") cells.back().clear();
  }
  return cells;
}

void readAndPrint(benchmark::State& state, const std::vector<std::u16string>& cells, const char* zone) {
  const DateEnvironment environment{"en_US", zone};
  DateReader reader(environment);
  auto printer = DatePrinter::forDate(4, environment);
  std::u16string out;
  std::size_t read = 0;
  for (auto _ : state) {
    read = 0;
    for (const auto& cell : cells) {
      out.clear();
      if (const auto instant = reader.dateFromString(cell)) {
        printer.append(*instant, out);
        ++read;
      }
      benchmark::DoNotOptimize(out.data());
    }
  }
  state.SetItemsProcessed(state.iterations() * cells.size());
  state.SetLabel(std::string(zone) + ", " + std::to_string(read * 100 / cells.size()) + "% read");
}

void mixedColumn(benchmark::State& state) {
  static const auto cells = column(0, std::size(kForms));
  readAndPrint(state, cells, kZones[state.range(0)]);
}
BENCHMARK(mixedColumn)->DenseRange(0, 2);

void oneForm(benchmark::State& state) {
  readAndPrint(state, column(state.range(0), 1), "America/New_York");
}
BENCHMARK(oneForm)->DenseRange(0, 7);

void dateTimes(benchmark::State& state) {
  constexpr std::u16string_view kPatterns[] = {u"M/d/yy, h:mm a", u"yyyy-MM-dd HH:mm:ss", u"M/d/yyyy h:mm a"};
  const DateEnvironment environment{"en_US", "America/New_York"};
  DateFormatter formatter(environment);
  formatter.setDateFormat(kPatterns[state.range(0)]);
  std::vector<std::u16string> cells;
  std::mt19937_64 random(7);
  for (int i = 0; i < 100000; ++i)
    cells.push_back(formatter.stringFromDate(static_cast<double>(random() % 2000000000) * 1000));
  DateReader reader(environment);
  std::size_t read = 0;
  for (auto _ : state) {
    read = 0;
    for (const auto& cell : cells) read += reader.dateTimeFromString(cell).has_value();
  }
  if (read < cells.size() * 9 / 10) state.SkipWithError("the cells are not read");
  state.SetItemsProcessed(state.iterations() * cells.size());
}
BENCHMARK(dateTimes)->DenseRange(0, 2);

void makeReaderAndPrinter(benchmark::State& state) {
  const DateEnvironment environment{"en_US", "America/New_York"};
  for (auto _ : state) {
    DateReader reader(environment);
    auto printer = DatePrinter::forDate(4, environment);
    std::u16string out;
    printer.append(reader.dateFromString(u"7-Mar-1985").value_or(0), out);
    benchmark::DoNotOptimize(out.data());
  }
}
BENCHMARK(makeReaderAndPrinter);

}  // namespace
}  // namespace quillet
