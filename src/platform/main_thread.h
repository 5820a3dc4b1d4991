// Hands work over from a job thread to the main thread.
//
// The main thread runs what was handed over when its event loop comes to it, by runPending(). After close()
// what waits is dropped and a waiting caller goes on at once, so that leaving the program never waits for a
// job and a job never waits for a program that has left. A caller whose work is already being run waits for
// its end even then, since the work may refer to what the caller holds.
//
// A thread may be inside a call while the object is destroyed, it then goes on as after close(); it must not
// begin a call later.
#pragma once

#include <functional>
#include <memory>
#include <thread>

namespace quillet {

class MainThread {
 public:
  // The constructing thread is the main thread. wake, if given, is called on the thread that handed something
  // over, each time, to make the event loop call runPending(). It is called under a lock of its own: it
  // returns at once and calls nothing of this object. It is not called any more when close() has returned.
  explicit MainThread(std::function<void()> wake = {});
  ~MainThread();  // closes; on the main thread
  MainThread(const MainThread&) = delete;
  MainThread& operator=(const MainThread&) = delete;

  // Runs work on the main thread, at once if this is it, and waits for its end. Once closed, work from
  // another thread is not run.
  void performAndWait(std::function<void()> work);
  // The same without waiting; from the main thread too it runs later.
  void perform(std::function<void()> work);

  // Runs what had been handed over when it was called, not what comes in meanwhile; main thread only. Work
  // may call it, and then goes on when the rest has run.
  void runPending();
  // Runs what comes in until done() holds, asked first and after each piece of work, or until close(); main
  // thread only.
  void runUntil(const std::function<bool()>& done);
  void wakeUp();  // makes runUntil ask done() again; from any thread
  void close();   // main thread only, also from inside of work

 private:
  struct Work;
  struct Shared;
  static bool runNext(Shared& shared);

  std::thread::id mainThreadId_;
  std::shared_ptr<Shared> shared_;  // a waiting caller holds it too
};

}  // namespace quillet
