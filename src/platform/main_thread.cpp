#include "platform/main_thread.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <utility>

namespace quillet {

struct MainThread::Work {
  std::function<void()> body;
  bool finished = false;  // it was run or dropped, and body is gone; guarded by Shared::mutex
};

struct MainThread::Shared {
  bool enqueue(const std::shared_ptr<Work>& work);

  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::shared_ptr<Work>> queue;
  std::uint64_t wakeUps = 0;
  bool closed = false;

  std::mutex wakeMutex;  // held for a call of wake; never together with mutex
  std::function<void()> wake;
};

// False, and nothing happens, when closed.
bool MainThread::Shared::enqueue(const std::shared_ptr<Work>& work) {
  {
    const std::lock_guard lock(mutex);
    if (closed) return false;
    queue.push_back(work);
  }
  changed.notify_all();
  const std::lock_guard lock(wakeMutex);
  if (wake) wake();
  return true;
}

MainThread::MainThread(std::function<void()> wake)
    : mainThreadId_(std::this_thread::get_id()), shared_(std::make_shared<Shared>()) {
  shared_->wake = std::move(wake);
}

MainThread::~MainThread() {
  close();
}

void MainThread::performAndWait(std::function<void()> work) {
  if (std::this_thread::get_id() == mainThreadId_) {
    work();
    return;
  }
  const std::shared_ptr<Shared> shared = shared_;
  const auto item = std::make_shared<Work>();
  item->body = std::move(work);
  if (!shared->enqueue(item)) return;
  std::unique_lock lock(shared->mutex);
  shared->changed.wait(lock, [&item] { return item->finished; });
}

void MainThread::perform(std::function<void()> work) {
  const std::shared_ptr<Shared> shared = shared_;
  const auto item = std::make_shared<Work>();
  item->body = std::move(work);
  shared->enqueue(item);
}

// Runs the oldest piece of work; false if there is none.
bool MainThread::runNext(Shared& shared) {
  std::shared_ptr<Work> item;
  {
    const std::lock_guard lock(shared.mutex);
    if (shared.queue.empty()) return false;
    item = std::move(shared.queue.front());
    shared.queue.pop_front();
  }
  item->body();
  item->body = nullptr;  // before the caller goes on, so that nothing of the work outlives its call
  {
    const std::lock_guard lock(shared.mutex);
    item->finished = true;
  }
  shared.changed.notify_all();
  return true;
}

void MainThread::runPending() {
  const std::shared_ptr<Shared> shared = shared_;
  std::size_t waiting = 0;
  {
    const std::lock_guard lock(shared->mutex);
    waiting = shared->queue.size();
  }
  while (waiting > 0 && runNext(*shared)) --waiting;
}

void MainThread::runUntil(const std::function<bool()>& done) {
  const std::shared_ptr<Shared> shared = shared_;
  while (true) {
    std::uint64_t wakeUpsSeen = 0;
    {
      const std::lock_guard lock(shared->mutex);
      if (shared->closed) return;
      wakeUpsSeen = shared->wakeUps;
    }
    if (done()) return;
    if (runNext(*shared)) continue;
    // What changed since the look above ends the wait at once: nothing is missed.
    std::unique_lock lock(shared->mutex);
    shared->changed.wait(
        lock, [&] { return shared->closed || !shared->queue.empty() || shared->wakeUps != wakeUpsSeen; });
  }
}

void MainThread::wakeUp() {
  const std::shared_ptr<Shared> shared = shared_;
  {
    const std::lock_guard lock(shared->mutex);
    ++shared->wakeUps;
  }
  shared->changed.notify_all();
}

void MainThread::close() {
  std::deque<std::shared_ptr<Work>> dropped;
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->closed = true;
    dropped.swap(shared_->queue);
  }
  {
    const std::lock_guard lock(shared_->wakeMutex);
    shared_->wake = nullptr;
  }
  for (const auto& item : dropped) item->body = nullptr;
  {
    const std::lock_guard lock(shared_->mutex);
    for (const auto& item : dropped) item->finished = true;
  }
  shared_->changed.notify_all();
}

}  // namespace quillet
