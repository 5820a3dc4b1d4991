// Replacing by regular expressions, in cells per second: two plain patterns, the same where ICU has to do it,
// and texts without a match.
#include <benchmark/benchmark.h>
#include <random>
#include <string>
#include <vector>

#include "platform/regular_expression.h"

namespace quillet {
namespace {

// "(212) 555-0187"
std::vector<std::u16string> telephoneNumbers() {
  std::mt19937_64 random(7);
  const auto digits = [&](int count) {
    std::u16string text;
    for (; count > 0; --count) text += static_cast<char16_t>(u'0' + random() % 10);
    return text;
  };
  std::vector<std::u16string> cells;
  for (int i = 0; i < 100000; ++i) cells.push_back(u"(" + digits(3) + u") " + digits(3) + u"-" + digits(4));
  return cells;
}

void replaceMatches(benchmark::State& state, std::u16string_view pattern, std::u16string_view templateText,
                    bool matches) {
  static const auto cells = telephoneNumbers();
  auto expression = RegularExpression::compiled(pattern, CaseSensitivity::Sensitive);
  std::u16string out;
  for (auto _ : state) {
    std::size_t matched = 0;
    for (const auto& cell : cells) {
      out.clear();
      matched += expression->appendReplacingMatches(cell, templateText, out) > 0;
    }
    if (matched != (matches ? cells.size() : 0)) state.SkipWithError("not what was to be found");
  }
  state.SetItemsProcessed(state.iterations() * cells.size());
}

BENCHMARK_CAPTURE(replaceMatches, digitsOnly, u"[^0-9]+", u"", true);
BENCHMARK_CAPTURE(replaceMatches, digitsOnlyByIcu, u"(?:[^0-9])+", u"", true);
BENCHMARK_CAPTURE(replaceMatches, groups, u"^\\(([0-9]{3})\\) ([0-9]{3})-([0-9]{4})$", u"+1 $1.$2.$3", true);
BENCHMARK_CAPTURE(replaceMatches, groupsByIcu, u"^(?:\\()([0-9]{3})\\) ([0-9]{3})-([0-9]{4})$",
                  u"+1 $1.$2.$3", true);
BENCHMARK_CAPTURE(replaceMatches, noMatch, u"[a-z]+@[a-z]+", u"", false);

}  // namespace
}  // namespace quillet
