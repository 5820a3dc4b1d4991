#include "ui/termination_signals.h"

#include <csignal>
#include <gtest/gtest.h>

#include "ui/event_loop.h"

namespace quillet::ui {

namespace {

using quillet::testing::runEventLoopUntil;

class TerminationSignalsTest : public ::testing::TestWithParam<int> {};

TEST_P(TerminationSignalsTest, TerminateFromTheEventLoop) {
  int asked = 0;
  const TerminationSignals termination([&asked] { ++asked; });
  std::raise(GetParam());
  EXPECT_EQ(asked, 0);
  EXPECT_TRUE(runEventLoopUntil([&asked] { return asked == 1; }));
}

TEST_P(TerminationSignalsTest, EndTheProcessTheSecondTime) {
  EXPECT_EXIT(
      {
        const TerminationSignals termination([] {});
        std::raise(GetParam());
        std::raise(GetParam());
      },
      ::testing::KilledBySignal(GetParam()), "");
}

TEST_P(TerminationSignalsTest, StayIgnoredWhereTheyWere) {
  std::signal(GetParam(), SIG_IGN);
  {
    int asked = 0;
    const TerminationSignals termination([&asked] { ++asked; });
    std::raise(GetParam());
    EXPECT_FALSE(runEventLoopUntil([&asked] { return asked > 0; }, 100));
  }
  EXPECT_EQ(std::signal(GetParam(), SIG_DFL), SIG_IGN);
}

TEST_P(TerminationSignalsTest, AreGivenBack) {
  {
    const TerminationSignals termination([] {});
  }
  EXPECT_EQ(std::signal(GetParam(), SIG_DFL), SIG_DFL);
}

INSTANTIATE_TEST_SUITE_P(All, TerminationSignalsTest, ::testing::Values(SIGTERM, SIGINT, SIGHUP));

}  // namespace

}  // namespace quillet::ui
