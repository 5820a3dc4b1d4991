#include "platform/main_thread.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet {
namespace {

TEST(MainThread, RunsItsOwnWaitingWorkAtOnceAndTheOtherLater) {
  MainThread mainThread;
  std::string order;
  mainThread.perform([&] { order += 'b'; });
  mainThread.performAndWait([&] { order += 'a'; });
  EXPECT_EQ(order, "a");
  mainThread.runPending();
  EXPECT_EQ(order, "ab");
}

TEST(MainThread, RunsWorkOfAJobOnTheMainThreadInItsOrder) {
  MainThread mainThread;
  std::vector<int> order;  // touched by the main thread only
  std::atomic<bool> ended = false;
  std::thread job([&] {
    const auto jobThread = std::this_thread::get_id();
    for (int i = 0; i < 100; i += 2) {
      mainThread.perform([&order, i] { order.push_back(i); });
      bool ran = false;
      mainThread.performAndWait([&, i] {
        EXPECT_NE(std::this_thread::get_id(), jobThread);
        order.push_back(i + 1);
        ran = true;
      });
      EXPECT_TRUE(ran);
    }
    ended = true;
    mainThread.wakeUp();
  });
  mainThread.runUntil([&] { return ended.load(); });
  job.join();
  ASSERT_EQ(order.size(), 100u);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(MainThread, TakesWorkFromSeveralThreads) {
  MainThread mainThread;
  int counter = 0;  // without a lock: all work runs on one thread
  std::atomic<int> running = 4;
  std::vector<std::thread> jobs;
  for (int i = 0; i < 4; ++i) {
    jobs.emplace_back([&] {
      for (int step = 0; step < 200; ++step) {
        mainThread.perform([&] { ++counter; });
        mainThread.performAndWait([&] { ++counter; });
      }
      --running;
      mainThread.wakeUp();
    });
  }
  mainThread.runUntil([&] { return running == 0; });
  for (std::thread& job : jobs) job.join();
  EXPECT_EQ(counter, 1600);
}

TEST(MainThread, WakesTheEventLoopForEachPieceOfWork) {
  std::atomic<int> wakes = 0;
  MainThread mainThread([&] { ++wakes; });
  mainThread.perform([] {});
  EXPECT_EQ(wakes, 1);
  std::thread job([&] { mainThread.perform([] {}); });
  job.join();
  EXPECT_EQ(wakes, 2);
  mainThread.performAndWait([] {});
  EXPECT_EQ(wakes, 2);
  mainThread.close();
  mainThread.perform([] {});
  EXPECT_EQ(wakes, 2);
}

TEST(MainThread, RunPendingLeavesWhatComesInMeanwhile) {
  MainThread mainThread;
  std::string order;
  mainThread.perform([&] {
    order += 'a';
    mainThread.perform([&] { order += 'b'; });
  });
  mainThread.runPending();
  EXPECT_EQ(order, "a");
  mainThread.runPending();
  EXPECT_EQ(order, "ab");
}

TEST(MainThread, WorkMayRunWhatIsPending) {
  MainThread mainThread;
  std::string order;
  mainThread.perform([&] {
    order += '(';
    mainThread.runPending();
    order += ')';
  });
  mainThread.perform([&] { order += 'x'; });
  mainThread.perform([&] { order += 'y'; });
  mainThread.runPending();
  EXPECT_EQ(order, "(xy)");
}

TEST(MainThread, WorkMayWaitForLaterWorkOfTheSameJob) {
  MainThread mainThread;
  std::string order;
  std::atomic<bool> ended = false;
  std::thread job([&] {
    mainThread.perform([&] {
      bool inner = false;
      order += 'a';
      mainThread.perform([&] { inner = true; });
      mainThread.runUntil([&] { return inner; });
      order += 'c';
    });
    mainThread.performAndWait([&] { order += 'b'; });
    ended = true;
    mainThread.wakeUp();
  });
  mainThread.runUntil([&] { return ended.load() && order.size() == 3; });
  job.join();
  EXPECT_EQ(order.front(), 'a');
  EXPECT_NE(order.find('c'), std::string::npos);
}

TEST(MainThread, RunUntilAsksFirstAndAfterEachPieceOfWork) {
  MainThread mainThread;
  int ran = 0;
  for (int i = 0; i < 3; ++i) mainThread.perform([&] { ++ran; });
  mainThread.runUntil([&] { return true; });
  EXPECT_EQ(ran, 0);
  mainThread.runUntil([&] { return ran == 2; });
  EXPECT_EQ(ran, 2);
}

TEST(MainThread, CloseReleasesWhoWaitsAndDropsItsWork) {
  MainThread mainThread;
  std::atomic<int> ran = 0;
  std::atomic<int> handedOver = 0;
  std::vector<std::thread> jobs;
  for (int i = 0; i < 3; ++i) {
    jobs.emplace_back([&] {
      ++handedOver;
      mainThread.performAndWait([&] { ++ran; });
      mainThread.performAndWait([&] { ++ran; });
      mainThread.perform([&] { ++ran; });
    });
  }
  while (handedOver < 3) std::this_thread::yield();
  mainThread.close();
  for (std::thread& job : jobs) job.join();
  mainThread.runPending();
  mainThread.runUntil([] { return false; });  // does not wait for what cannot come
  EXPECT_EQ(ran, 0);
  mainThread.performAndWait([&] { ++ran; });  // its own thread has not left
  EXPECT_EQ(ran, 1);
}

TEST(MainThread, CloseFromInsideOfWorkLetsItsCallerWaitForTheEnd) {
  MainThread mainThread;
  std::atomic<bool> ended = false;
  std::optional<std::string> ofTheJob;
  std::thread job([&] {
    std::string local;  // the work refers to it until its end
    mainThread.performAndWait([&] {
      mainThread.close();
      std::this_thread::yield();
      local = "written behind close";
    });
    ofTheJob = local;
    ended = true;
    mainThread.wakeUp();
  });
  mainThread.runUntil([&] { return ended.load(); });
  job.join();
  EXPECT_EQ(ofTheJob, "written behind close");
}

TEST(MainThread, NothingOfTheWorkIsLeftWhenItsCallerGoesOn) {
  MainThread mainThread;
  const auto held = std::make_shared<int>(1);
  std::atomic<bool> ended = false;
  std::thread job([&] {
    mainThread.performAndWait([copy = held] { EXPECT_EQ(*copy, 1); });
    EXPECT_EQ(held.use_count(), 1);
    ended = true;
    mainThread.wakeUp();
  });
  mainThread.runUntil([&] { return ended.load(); });
  job.join();
  mainThread.perform([copy = held] {});
  mainThread.close();
  EXPECT_EQ(held.use_count(), 1);
}

TEST(MainThread, MayBeDestroyedWhileAJobWaits) {
  for (int round = 0; round < 50; ++round) {
    std::atomic<bool> jobIsInside = false;
    auto mainThread = std::make_unique<MainThread>([&] { jobIsInside = true; });
    bool ran = false;
    std::thread job([&ran, target = mainThread.get()] { target->performAndWait([&ran] { ran = true; }); });
    while (!jobIsInside) std::this_thread::yield();
    mainThread.reset();
    job.join();
    EXPECT_FALSE(ran);
  }
}

}  // namespace
}  // namespace quillet
