// In the steady state of a job nothing is allocated on the heap for a line or a cell: ten times the lines
// take the same number of allocations.
#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>

#include "engine/job_fixture.h"

namespace {

std::atomic<std::int64_t> allocations = 0;

void* countedAllocation(std::size_t size) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
  return countedAllocation(size);
}
void* operator new[](std::size_t size) {
  return countedAllocation(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  allocations.fetch_add(1, std::memory_order_relaxed);
  return std::malloc(size ? size : 1);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}

namespace quillet {
namespace {

using testing::finalRecord;
using testing::initialRecord;
using testing::record;

struct JobCase {
  const char* what;
  OperationList operations;
  std::string lines;  // repeated; as many as kLinesInText
};
constexpr int kLinesInText = 4;

// More than the head that the preview stores keep of a run.
constexpr int kFewLines = 2'000;
constexpr int kManyLines = 20'000;
// Growth of what is kept for the whole file, by doubling.
constexpr std::int64_t kSmallConstant = 16;

const char* const kPlain =
    "  first ,\"second, cell\",3.50,,x\n"
    "some,\"a \"\"quoted\"\" word\",-7,aaa bbb aaa,y\n"
    "short,line\n"
    "a line,with,seven,cells,in,all,of it  \n";
const std::string kNotAscii =
    "  n\u00E4chste ,\"zweite, Zelle\",3.50,,\u20AC\n"
    "caf\u00E9,\"a \"\"quoted\"\" word\",-7,aaa b\u00DFb aaa,y\n"
    "cafe\u0301,l\u00EDnea,\U0001F600\n"
    "\u4E2D\u6587,with,seven,cells,in,all,of it  \n";

OperationList with(OperationList middle, testing::Items initial = {}, testing::Items final = {}) {
  middle.insert(middle.begin(), initialRecord(initial));
  middle.push_back(finalRecord(final));
  return middle;
}

OperationList all() {
  const auto trim = [](std::int64_t type, std::u16string text) {
    return record(OpTrimColumn, {{"IntArg2", type}, {"Arg1", u"1 - 3"}, {"Arg2", text}});
  };
  return with(
      {record(OpReplaceCharacter, {{"IntArg2", 1}, {"Arg2", u"-"}}),
       record(OpSkipLine, {{"IntArg2", 1}, {"Arg1", u"no such text"}}),
       record(OpSkipLine, {{"IntArg1", 1}, {"IntArg2", 3}, {"Arg1", u"short"}}),
       record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", u"2, 5 - 8"}}), record(OpTrimLine, {{"IntArg2", 2}}),
       record(OpReplaceLine, {{"Arg1", u"aaa"}, {"Arg2", u"longer text"}}), trim(0, u"s"), trim(1, u"fx"),
       trim(2, u""), record(OpReplaceColumn, {{"Arg1", u"1, 2"}, {"Arg2", u"e"}, {"Arg3", u"<e>"}}),
       record(OpReformatColumn, {{"IntArg2", 5}, {"Arg1", u"3"}, {"Arg5", 2}}),
       record(OpReformatColumn, {{"IntArg2", 4}, {"Arg1", u"4"}}),
       record(OpSetInitialNumberOfColumns, {{"IntArg1", 6}, {"Arg1", u"filled"}}),
       record(OpJoinColumns, {{"Arg1", u"2, 1 + 3, 4, 6"}, {"Arg2", u" / "}}),
       record(OpSetFinalNumberOfColumns, {{"IntArg1", 5}, {"Arg1", u"end"}}),
       record(OpJoinLines, {{"IntArg1", 3}, {"Arg1", u"; "}})},
      {}, {{"IntArg1", 1 + 2}});
}

std::int64_t allocationsOfAJob(const JobCase& one, int lineCount) {
  testing::Job job;
  std::string bytes;
  for (int i = 0; i < lineCount; i += kLinesInText) bytes += one.lines;
  job.addFile("a", bytes, one.operations);
  const std::int64_t before = allocations;
  job.run();
  const std::int64_t after = allocations;
  EXPECT_NE(job.output(), "") << one.what;
  EXPECT_TRUE(job.systemLog.lines.empty()) << one.what;
  const auto lines = job.logLines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Lines read: " + std::to_string(lineCount)), 1)
      << one.what;
  return after - before;
}

TEST(SteadyState, AllocatesNothingForLinesAndCells) {
  const JobCase kCases[] = {
      {"split and join", with({}), kPlain},
      {"lines as they are", with({}, {{"IntArg1", 1}}), kPlain},
      {"quotes", with({}, {}, {{"IntArg1", 1}}), kPlain},
      {"skip by a text", with({record(OpSkipLine, {{"IntArg2", 1}, {"Arg1", u"SOME"}})}), kPlain},
      {"skip by an ending", with({record(OpSkipLine, {{"IntArg2", 4}, {"Arg1", u"y"}})}), kPlain},
      {"skip by numbers", with({record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", u"3, 7 - 900"}})}), kPlain},
      {"trim lines", with({record(OpTrimLine, {{"IntArg2", 1}, {"Arg1", u" x"}})}), kPlain},
      {"replace in lines", with({record(OpReplaceLine, {{"Arg1", u"a"}, {"Arg2", u"bcd"}})}), kPlain},
      {"replace in columns",
       with({record(OpReplaceColumn, {{"Arg1", u"1 - 4"}, {"Arg2", u"a"}, {"Arg3", u"bcd"}})}), kPlain},
      {"rearrange",
       with({record(OpSetInitialNumberOfColumns, {{"IntArg1", 4}, {"Arg1", u"x"}}),
             record(OpRearrangeColumns, {{"Arg1", u"3, 1, 2"}})}),
       kPlain},
      {"join columns", with({record(OpJoinColumns, {{"Arg1", u"3 + 1, 2"}, {"Arg2", u"-"}})}), kPlain},
      {"join lines", with({record(OpJoinLines, {{"IntArg1", 10}, {"Arg1", u"-"}})}), kPlain},
      {"CP1252 in and out", with({}, {{"IntArg2", 12}}, {{"IntArg2", 12}, {"IntArg1", 1}}), kNotAscii},
      {"UTF-8 to Mac Roman", with({}, {}, {{"IntArg2", 30}, {"IntArg1", 1}}), kNotAscii},
      {"everything at once", all(), kPlain},
      {"everything at once, not ASCII", all(), kNotAscii},
  };
  for (const auto& one : kCases) {
    allocationsOfAJob(one, kFewLines);  // tables that are made at the first use
    const std::int64_t few = allocationsOfAJob(one, kFewLines);
    const std::int64_t many = allocationsOfAJob(one, kManyLines);
    EXPECT_GT(few, 0) << one.what;  // or nothing is counted
    EXPECT_LE(many - few, kSmallConstant) << one.what << ": " << few << " and " << many;
  }
}

}  // namespace
}  // namespace quillet
