// The ways of a line through a job, each by itself, in bytes a second: reading (bytes of the file), and
// splitting, trimming, replacing, joining and encoding (bytes of UTF-16). The data are the same on every run.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <fcntl.h>
#include <random>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "operations/operation_codes.h"
#include "operations/text_replace.h"
#include "operations/text_trim.h"
#include "text/field_splitter.h"
#include "text/fields_and_lines_parser.h"
#include "text/text_writer.h"

namespace quillet {
namespace {

constexpr std::size_t kFileBytes = 8'000'000;

enum class Kind { Plain, Quoted, NotAscii, LongLines };

// Lines of ten cells as data files have them.
std::u16string makeLine(std::mt19937& random, Kind kind) {
  const std::u16string_view plain[] = {u"Berlin",     u"2018-08-16", u"12.50",
                                       u"north east", u"",           u"a somewhat longer cell"};
  const std::u16string_view notAscii[] = {u"M\u00FCnchen", u"\u041C\u043E\u0441\u043A\u0432\u0430",
                                          u"\u6771\u4EAC", u"cafe\u0301",
                                          u"12.50 \u20AC", u"\U0001F600"};
  std::u16string line;
  for (int cell = 0, cells = kind == Kind::LongLines ? 400 : 10; cell < cells; ++cell) {
    if (cell > 0) line += u',';
    const std::size_t word = random() % 6;
    if (kind == Kind::Quoted && word < 4)
      line.append(u"\"").append(plain[word]).append(word == 0 ? u", \"\"here\"\"\"" : u"\"");
    else
      line += kind == Kind::NotAscii ? notAscii[word] : plain[word];
  }
  return line;
}

std::vector<std::u16string> makeLines(Kind kind, std::size_t count) {
  std::mt19937 random(1);
  std::vector<std::u16string> lines(count);
  for (auto& line : lines) line = makeLine(random, kind);
  return lines;
}

std::int64_t unitBytes(const std::vector<std::u16string>& lines) {
  std::size_t units = 0;
  for (const auto& line : lines) units += line.size();
  return static_cast<std::int64_t>(units * sizeof(char16_t));
}

// A file in memory that holds the lines in UTF-8.
class MemoryFile {
 public:
  explicit MemoryFile(Kind kind) : descriptor_(memfd_create("bench", 0)) {
    std::mt19937 random(1);
    TextWriter writer(descriptor_, static_cast<std::int64_t>(Encoding::Utf8), u"?");
    while (writer.bytesWritten() < static_cast<std::int64_t>(kFileBytes)) {
      for (int i = 0; i < 1'000; ++i) {
        writer.write(makeLine(random, kind));
        writer.write(u"\n");
      }
      writer.flush();
    }
    size_ = writer.bytesWritten();
  }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  int rewound() const {
    lseek(descriptor_, 0, SEEK_SET);
    return descriptor_;
  }
  std::int64_t size() const { return size_; }

 private:
  int descriptor_;
  std::int64_t size_ = 0;
};

void read(benchmark::State& state, Kind kind, std::int64_t encoding) {
  const MemoryFile file(kind);
  const LineRules rules(encoding, kind == Kind::Quoted ? u"\"" : u"", u"\n", {}, u"?");
  TextBuffer line;
  for (auto _ : state) {
    FieldsAndLinesParser parser(FieldsAndLinesParser::kLargeReadSize);
    const int descriptor = file.rewound();
    ReadLineStats stats;
    do line.clear();
    while (parser.readLineFrom(descriptor, rules, line, stats, nullptr) == ReadResult::Line);
    if (stats.bytesRead != file.size()) state.SkipWithError("not read");
  }
  state.SetBytesProcessed(state.iterations() * file.size());
}

void split(benchmark::State& state, Kind kind) {
  const auto lines = makeLines(kind, 1'000);
  const FieldSplitter splitter(u",", kind == Kind::Quoted ? u"\"" : u"");
  TextArena arena;
  Cells cells;
  for (auto _ : state) {
    for (const auto& line : lines) {
      arena.reset();
      cells.clear();
      splitter.split(line, cells, arena);
      benchmark::DoNotOptimize(cells.data());
    }
  }
  state.SetBytesProcessed(state.iterations() * unitBytes(lines));
}

void trim(benchmark::State& state, TrimType type, std::u16string_view text) {
  auto lines = makeLines(Kind::Plain, 1'000);
  for (auto& line : lines) line = u"  " + line + u"  ";
  TextTrimmer trimmer(static_cast<std::int64_t>(type), 0, CaseSensitivity::Insensitive, text);
  TextArena arena;
  for (auto _ : state) {
    for (const auto& line : lines) {
      arena.reset();
      benchmark::DoNotOptimize(trimmer.trimmed(line, arena).size());
    }
  }
  state.SetBytesProcessed(state.iterations() * unitBytes(lines));
}

void replaceInLine(benchmark::State& state, Kind kind, CaseSensitivity sensitivity) {
  const auto lines = makeLines(kind, 1'000);
  TextReplacer replacer(static_cast<std::int64_t>(ReplaceType::String), sensitivity, u"Berlin", u"Hamburg");
  TextArena arena;
  for (auto _ : state) {
    for (const auto& line : lines) {
      arena.reset();
      benchmark::DoNotOptimize(replacer.replaced(line, arena).size());
    }
  }
  state.SetBytesProcessed(state.iterations() * unitBytes(lines));
}

enum class Quotes { None, All };

void joinAndEncode(benchmark::State& state, Kind kind, Encoding encoding, Quotes quotes) {
  const auto lines = makeLines(kind, 1'000);
  const FieldSplitter splitter(u",", u"\"");
  TextArena arena;
  std::vector<Cells> cells(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) splitter.split(lines[i], cells[i], arena);
  const int nowhere = open("/dev/null", O_WRONLY);
  TextWriter writer(nowhere, static_cast<std::int64_t>(encoding), u"?");
  for (auto _ : state) {
    for (const auto& line : cells) {
      writer.writeJoined(line, u";", quotes == Quotes::All ? line.size() : 0);
      writer.write(u"\n");
    }
  }
  writer.flush();
  close(nowhere);
  state.SetBytesProcessed(state.iterations() * unitBytes(lines));
}

BENCHMARK_CAPTURE(read, Plain, Kind::Plain, 4);
BENCHMARK_CAPTURE(read, Quoted, Kind::Quoted, 4);
BENCHMARK_CAPTURE(read, NotAscii, Kind::NotAscii, 4);
BENCHMARK_CAPTURE(read, SingleBytes, Kind::NotAscii, 30);
BENCHMARK_CAPTURE(read, LongLines, Kind::LongLines, 4);
BENCHMARK_CAPTURE(split, Plain, Kind::Plain);
BENCHMARK_CAPTURE(split, Quoted, Kind::Quoted);
BENCHMARK_CAPTURE(split, NotAscii, Kind::NotAscii);
BENCHMARK_CAPTURE(trim, String, TrimType::String, u"  ");
BENCHMARK_CAPTURE(trim, Characters, TrimType::Characters, u" ,.");
BENCHMARK_CAPTURE(trim, Whitespace, TrimType::Whitespace, u"");
BENCHMARK_CAPTURE(replaceInLine, Plain, Kind::Plain, CaseSensitivity::Sensitive);
BENCHMARK_CAPTURE(replaceInLine, Nocase, Kind::Plain, CaseSensitivity::Insensitive);
BENCHMARK_CAPTURE(replaceInLine, NotAscii, Kind::NotAscii, CaseSensitivity::Insensitive);
BENCHMARK_CAPTURE(joinAndEncode, Plain, Kind::Plain, Encoding::Utf8, Quotes::None);
BENCHMARK_CAPTURE(joinAndEncode, Quoted, Kind::Quoted, Encoding::Utf8, Quotes::All);
BENCHMARK_CAPTURE(joinAndEncode, NotAscii, Kind::NotAscii, Encoding::Utf8, Quotes::None);
BENCHMARK_CAPTURE(joinAndEncode, Cp1252, Kind::NotAscii, Encoding::WindowsCP1252, Quotes::All);

}  // namespace
}  // namespace quillet
