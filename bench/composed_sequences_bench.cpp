// Walking over composed character sequences, in bytes of UTF-16 a second: counting and visiting, in texts of
// Latin letters, of Han characters, with a mark now and then, and of Devanagari.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>

#include "platform/composed_sequences.h"

namespace quillet {
namespace {

std::u16string repeated(std::u16string_view part) {
  std::u16string text;
  while (text.size() < 100000) text += part;
  return text;
}

void reportBytes(benchmark::State& state, const std::u16string& text) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size() * sizeof(char16_t)));
}

void count(benchmark::State& state, std::u16string_view part) {
  const std::u16string text = repeated(part);
  for (auto _ : state) {
    const std::size_t sequences = countComposedSequences(text);
    if (sequences == 0 || sequences > text.size()) state.SkipWithError("miscounted");
    benchmark::DoNotOptimize(sequences);
  }
  reportBytes(state, text);
}

void visit(benchmark::State& state, std::u16string_view part) {
  const std::u16string text = repeated(part);
  for (auto _ : state) {
    std::size_t units = 0;
    forEachComposedSequence(text, [&](std::u16string_view sequence) { units += sequence.size(); });
    if (units != text.size()) state.SkipWithError("lost units");
    benchmark::DoNotOptimize(units);
  }
  reportBytes(state, text);
}

constexpr std::u16string_view kLatin = u"Berlin,2018-08-16,M\u00FCnchen,12.50\r\n";
constexpr std::u16string_view kHan = u"\u6F22\u5B57\u4EEE\u540D,\u3042\u3044\u3046,12\n";
constexpr std::u16string_view kMarks = u"Berlin,2018-08-16,Mu\u0308nchen,12.50\r\n";
constexpr std::u16string_view kDevanagari = u"\u0915\u094D\u0937\u0924\u094D\u0930\u093F\u092F, ";

BENCHMARK_CAPTURE(count, Latin, kLatin);
BENCHMARK_CAPTURE(count, Han, kHan);
BENCHMARK_CAPTURE(count, Marks, kMarks);
BENCHMARK_CAPTURE(count, Devanagari, kDevanagari);
BENCHMARK_CAPTURE(visit, Latin, kLatin);
BENCHMARK_CAPTURE(visit, Han, kHan);
BENCHMARK_CAPTURE(visit, Marks, kMarks);
BENCHMARK_CAPTURE(visit, Devanagari, kDevanagari);

}  // namespace
}  // namespace quillet
