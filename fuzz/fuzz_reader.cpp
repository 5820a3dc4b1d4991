// Lines read from any bytes by any rules: the same whatever the size of the blocks, and counts that add up.
//
// Input: times that the rest is repeated, encoding, quote, line separator, column separator, class,
// characters and replacement of a Replace Character operation, decode replacement; the rest is the file.
#include <optional>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "fuzz_input.h"
#include "text/fields_and_lines_parser.h"

namespace quillet::fuzz {
namespace {

constexpr std::int64_t kEncodings[] = {4, 12, 30, 1, 99};
constexpr std::size_t kMostFileBytes = 49'152;

struct ReadCall {
  ReadResult result;
  std::u16string line;
  std::u16string errors;
  ReadLineStats stats;
  bool operator==(const ReadCall&) const = default;
};

// A file in memory.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view bytes) : descriptor_(memfd_create("fuzz", MFD_CLOEXEC)) {
    require(write(descriptor_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "a file is there");
  }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  int fromItsStart() const {
    lseek(descriptor_, 0, SEEK_SET);
    return descriptor_;
  }

 private:
  int descriptor_;
};

LineRules rulesFrom(FuzzInput& input) {
  const std::int64_t encoding = input.pick(kEncodings);
  const std::u16string quote = input.text(8);
  const std::u16string lineSeparator = input.text(16);
  const std::u16string columnSeparator = input.text(8);
  const auto characterClass = static_cast<std::int64_t>(input.below(4));
  const std::u16string characters = input.text(32);
  const std::u16string replacement = input.text(16);
  std::vector<ReplacementTable::Pair> pairs;
  appendReplacementPairs(characterClass, characters, replacement, quote, lineSeparator, columnSeparator,
                         pairs);
  const std::u16string decodeReplacement = input.text(16);
  return LineRules(encoding, quote, lineSeparator,
                   ReplacementTable(pairs, quote, lineSeparator, columnSeparator), decodeReplacement);
}

std::vector<ReadCall> allCalls(const MemoryFile& file, const LineRules& rules, std::size_t readSize) {
  const int descriptor = file.fromItsStart();
  FieldsAndLinesParser parser(readSize);
  std::vector<ReadCall> calls;
  do {
    TextBuffer line(16);
    ReadCall call{};
    call.result = parser.readLineFrom(descriptor, rules, line, call.stats, &call.errors);
    call.line = line.view();
    calls.push_back(std::move(call));
  } while (calls.back().result == ReadResult::Line);
  return calls;
}

void requireCountsThatAddUp(const std::vector<ReadCall>& calls, std::size_t fileSize) {
  ReadLineStats total;
  for (const ReadCall& call : calls) {
    require(call.stats.charactersDecoded <= call.stats.bytesRead, "a character takes at least a byte");
    require(call.stats.linesRead <= 1, "a call reads at most a line");
    if (call.result == ReadResult::Line)
      require(call.stats.linesRead + call.stats.maximumLengthLinesRead >= 1, "a call ends for a reason");
    total += call.stats;
  }
  require(calls.back().result == ReadResult::EndOfFile, "a file in memory ends without an error");
  require(total.bytesRead == static_cast<std::int64_t>(fileSize), "every byte is counted once");
}

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  using namespace quillet::fuzz;
  FuzzInput input(data, size);
  const std::size_t times = input.below(64) + 1;
  const LineRules rules = rulesFrom(input);
  std::string bytes;
  for (std::size_t i = 0; i < times && bytes.size() < kMostFileBytes; ++i) bytes += input.restBytes();
  bytes.resize(std::min(bytes.size(), kMostFileBytes));

  const MemoryFile file(bytes);
  const auto calls = allCalls(file, rules, FieldsAndLinesParser::kLargeReadSize);
  requireCountsThatAddUp(calls, bytes.size());
  require(calls == allCalls(file, rules, 7), "blocks of 7 bytes give the same lines");
  require(calls == allCalls(file, rules, 1), "blocks of 1 byte give the same lines");
  return 0;
}
