// The log of jobs: lines with a level, in memory and in the file "LastLog.txt" of the folder "Log" in the
// user's Documents folder. Safe from any thread.
//
// Equal lines one after the other are folded into one. At 1,000 entries, or some MB, the list moves to the
// file. A failure of the log never stops a job: it becomes a line of the log.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/folders.h"

namespace quillet {

enum LogLevel : int {
  LogInformation = 0,
  LogWarning = 1,
  LogError = 2,
  LogNote = 3,  // stays in memory
};

class JobLog {
 public:
  struct Entry {
    int level = 0;
    std::string text;  // UTF-8
    bool operator==(const Entry&) const = default;
  };

  static constexpr std::size_t kMostEntries = 1'000;
  static constexpr std::size_t kMostBytes = 8'388'608;  // of texts, so that long ones cannot fill the memory

  explicit JobLog(std::shared_ptr<const Folders> folders) : folders_(std::move(folders)) {}

  // Folds a repeat, else stores; an absent text is nothing.
  void addToImportLog(int level, std::optional<std::u16string_view> message);

  // Makes the file empty (truncate), or appends the list to it. True on failure.
  bool saveLogToFile(bool truncate);

  std::vector<Entry> entries() const;  // a copy
  bool isEmpty() const;
  void clear();

  // The file's path; nothing without a Documents folder. The file need not exist.
  std::optional<std::string> path() const;

  // Which levels were logged since clearFlags().
  void clearFlags();
  bool atLeastOneInfo() const { return atLeastOneInfo_; }
  bool atLeastOneWarning() const { return atLeastOneWarning_; }
  bool atLeastOneError() const { return atLeastOneError_; }

 private:
  void add(int level, std::string_view text);  // the rest with the mutex held
  void addEntryToPrepLog(int level, std::string_view entryLine);
  bool save(bool truncate);
  std::optional<std::string> folderForSaving();
  bool appendEntries(const std::string& path);

  std::shared_ptr<const Folders> folders_;
  mutable std::mutex mutex_;
  std::vector<Entry> entries_;
  std::size_t bytes_ = 0;            // of their texts
  std::int64_t logRepeatCount_ = 0;  // repeats folded since the last entry
  std::atomic<bool> atLeastOneInfo_ = false;
  std::atomic<bool> atLeastOneWarning_ = false;
  std::atomic<bool> atLeastOneError_ = false;
};

}  // namespace quillet
