// Lists of line numbers: what any text names can be printed, and read again as the same.
//
// Input: whether numbers are lowered; the rest is the text.
#include "fuzz_input.h"
#include "operations/line_numbers.h"

namespace quillet::fuzz {
namespace {

constexpr std::int64_t kMostExpanded = 1'000;
constexpr std::int64_t kPreset = -1;

void requireRoundTrip(const IndexSet& set, const std::u16string& printed) {
  IndexSet again;
  std::int64_t open = kPreset;
  parseLineNumbersString(printed, again, &open, true);
  require(again == set, "a printed set is read as itself");
  require(open == kPreset, "no printed range is open");
}

void requireOrder(const IndexSet& set) {
  std::int64_t last = -2;
  for (const auto& range : set.ranges()) {
    require(range.first > last + 1 && range.last >= range.first, "ranges ascend and do not touch");
    require(set.contains(range.first) && set.contains(range.last) && !set.contains(range.last + 1),
            "a range holds its ends and ends there");
    last = range.last;
  }
}

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  using namespace quillet::fuzz;
  FuzzInput input(data, size);
  const bool subtract1 = input.flag();
  const std::u16string text = input.restText();

  IndexSet set;
  std::int64_t open = kPreset;
  parseLineNumbersString(text, set, &open, subtract1);
  require(open == kPreset || open > 0, "an open range starts at a line");
  require(open == kPreset || text.find(u'-') != text.npos, "an open range has a hyphen");
  requireOrder(set);
  requireRoundTrip(set, stringPlus1FromIndexSet(set));
  if (set.count() <= kMostExpanded) requireRoundTrip(set, expandedStringPlus1FromIndexSet(set));
  return 0;
}
