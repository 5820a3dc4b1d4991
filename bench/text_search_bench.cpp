// Searching and replacing in lines as they come in data files, in bytes of UTF-16 a second:
//   find, find without case, replace a frequent and a rare text, replace a text that is not ASCII,
//   the test for an ending, and the slow rule (a line with a character that folds to ASCII).
#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/text_search.h"

namespace quillet {
namespace {

constexpr std::size_t kLines = 1000;

// Each line has 12 cells, some with umlauts, and ends with a word of its own kind.
std::vector<std::u16string> makeLines(std::u16string_view ending) {
  const std::u16string_view words[] = {u"Berlin",       u"2018-08-16", u"12.50",
                                       u"M\u00FCnchen", u"",           u"north east"};
  std::vector<std::u16string> lines(kLines);
  unsigned state = 1;
  for (std::u16string& line : lines) {
    for (int cell = 0; cell < 12; ++cell) {
      state = state * 1664525 + 1013904223;
      line.append(words[state >> 16 & 3]).append(words[state >> 24 & 3]).append(u",");
    }
    line.append(ending);
  }
  return lines;
}

std::size_t bytesIn(const std::vector<std::u16string>& lines) {
  std::size_t units = 0;
  for (const std::u16string& line : lines) units += line.size();
  return units * sizeof(char16_t);
}

void reportBytes(benchmark::State& state, const std::vector<std::u16string>& lines) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytesIn(lines)));
}

void find(benchmark::State& state, std::u16string_view needle, SearchOptions options,
          std::u16string_view ending) {
  const std::vector<std::u16string> lines = makeLines(ending);
  const TextSearcher searcher(needle, options);
  for (auto _ : state) {
    std::size_t found = 0;
    for (const std::u16string& line : lines) found += searcher.find(line).has_value();
    if (found != kLines) state.SkipWithError("not found");
  }
  reportBytes(state, lines);
}

void replace(benchmark::State& state, std::u16string_view needle, SearchOptions options) {
  const std::vector<std::u16string> lines = makeLines(u"total");
  const TextSearcher searcher(needle, options);
  std::u16string out;
  for (auto _ : state) {
    std::size_t hits = 0;
    for (const std::u16string& line : lines) {
      out.clear();
      hits += searcher.appendReplacing(line, u"; ", out);
    }
    if (hits < kLines) state.SkipWithError("not replaced");
  }
  reportBytes(state, lines);
}

constexpr SearchOptions kAtEnd = BackwardsSearch | AnchoredSearch;

BENCHMARK_CAPTURE(find, Plain, u"total", 0, u"total");
BENCHMARK_CAPTURE(find, OneUnit, u"!", 0, u"!");
BENCHMARK_CAPTURE(find, Nocase, u"total", CaseInsensitiveSearch, u"TOTAL");
BENCHMARK_CAPTURE(find, Literal, u"total", LiteralSearch, u"total");
BENCHMARK_CAPTURE(find, AtEnd, u"\r\n", kAtEnd, u"\r\n");
BENCHMARK_CAPTURE(find, SlowRule, u"tokens", CaseInsensitiveSearch, u"to\u212Aens");
BENCHMARK_CAPTURE(find, NotAscii, u"\u20AC", 0, u"12 \u20AC");
BENCHMARK_CAPTURE(replace, Frequent, u",", 0);
BENCHMARK_CAPTURE(replace, Rare, u"total", 0);
BENCHMARK_CAPTURE(replace, Nocase, u"TOTAL", CaseInsensitiveSearch);
BENCHMARK_CAPTURE(replace, NotAscii, u"\u00FC", 0);

}  // namespace
}  // namespace quillet
