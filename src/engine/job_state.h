// What the engine and the main thread both look at while jobs run. Safe from any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace quillet {

struct JobState {
  // Cleared at the end of a run, and set by nothing: Run always starts a job. This is meant.
  std::atomic<bool> runningJob = false;
  std::atomic<bool> stopJob = false;  // obeyed between files
  std::atomic<std::int64_t> linesInCurrentFile = 0;
};

// The output files of the last run, in the order of the job; a name that occurs twice occurs twice here.
class OutputFiles {
 public:
  void clear() {
    const std::lock_guard lock(mutex_);
    paths_.clear();
  }
  void add(std::string path) {
    const std::lock_guard lock(mutex_);
    paths_.push_back(std::move(path));
  }
  std::vector<std::string> paths() const {
    const std::lock_guard lock(mutex_);
    return paths_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> paths_;
};

}  // namespace quillet
