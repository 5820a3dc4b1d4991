#include "platform/system_log.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace quillet {
namespace {

TEST(SystemLog, GoesToTheSinkAndBackToTheOneBefore) {
  std::vector<std::u16string> first;
  std::vector<std::u16string> second;
  const SystemLogSink original =
      setSystemLogSink([&](std::u16string_view line) { first.emplace_back(line); });
  logToSystem(u"one");
  SystemLogSink before = setSystemLogSink([&](std::u16string_view line) { second.emplace_back(line); });
  logToSystem(u"two");
  setSystemLogSink(std::move(before));
  logToSystem(u"three");
  setSystemLogSink(original);
  EXPECT_EQ(first, (std::vector<std::u16string>{u"one", u"three"}));
  EXPECT_EQ(second, std::vector<std::u16string>{u"two"});
}

TEST(SystemLog, GoesToStandardErrorWithoutASink) {
  const SystemLogSink original = setSystemLogSink({});
  ::testing::internal::CaptureStderr();
  logToSystem(u"caf\u00E9");
  logToSystem(u"");
  logToSystem(u"cut \xD83D");  // half of a pair must not stop the line
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "caf\xC3\xA9\n\ncut \xEF\xBF\xBD\n");
  setSystemLogSink(original);
}

TEST(SystemLog, TakesLinesFromSeveralThreadsOneAtATime) {
  int lines = 0;  // without a lock of its own
  const SystemLogSink original = setSystemLogSink([&](std::u16string_view) { ++lines; });
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int line = 0; line < 250; ++line) logToSystem(u"line");
    });
  }
  for (std::thread& thread : threads) thread.join();
  setSystemLogSink(original);
  EXPECT_EQ(lines, 1000);
}

}  // namespace
}  // namespace quillet
