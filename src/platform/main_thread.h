// Hands work over from a job thread to the main thread.
//
// The main thread runs what was handed over when its event loop comes to it, by runPending(). After close() what
// waits is dropped and a waiting caller goes on at once, so that leaving the program never waits for a job and a
// job never waits for a program that has left.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace quillet {

class MainThread {
 public:
  // The constructing thread is the main thread. wake, if given, is called from other threads after something was
  // handed over, to make the event loop call runPending().
  explicit MainThread(std::function<void()> wake = {});

  // Runs work on the main thread, at once if this is it, and waits for its end unless closed.
  void performAndWait(std::function<void()> work);
  // The same without waiting; from the main thread too it runs later.
  void perform(std::function<void()> work);

  void runPending();                       // main thread only
  // Runs what comes in until done() holds, asked after each piece of work; main thread only.
  void runUntil(const std::function<bool()>& done);
  void wakeUp();                           // makes runUntil ask done() again
  void close();

 private:
  struct Work;
  void enqueue(std::shared_ptr<Work> work);

  std::thread::id mainThreadId_;
  std::function<void()> wake_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Work>> queue_;
  bool closed_ = false;
};

}  // namespace quillet
