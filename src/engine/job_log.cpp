#include "engine/job_log.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

#include "platform/localization.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr const char* kFolderName = "Log";
constexpr const char* kFileName = "LastLog.txt";

std::string message(std::u16string_view key) {
  return toUtf8(localized(key));
}
std::string messageWithReason(std::u16string_view key, int reason) {
  return toUtf8(localizedFormat(key, {std::int64_t{reason}}));
}

}  // namespace

void JobLog::addToImportLog(int level, std::optional<std::u16string_view> text) {
  if (!text) return;
  const std::string line = toUtf8(*text);
  const std::lock_guard lock(mutex_);
  add(level, line);
}

void JobLog::add(int level, std::string_view text) {
  // The level does not matter, and a folded line sets no flag: this is meant.
  if (!entries_.empty() && entries_.back().text == text) {
    ++logRepeatCount_;
    return;
  }
  if (logRepeatCount_ != 0) {
    const std::int64_t count = logRepeatCount_;
    logRepeatCount_ = 0;  // first, so that reaching the limit below cannot tell it twice
    addEntryToPrepLog(LogInformation, toUtf8(localizedFormat(u"(Last message repeated %ld times)", {count})));
  }
  addEntryToPrepLog(level, text);
}

void JobLog::addEntryToPrepLog(int level, std::string_view entryLine) {
  entries_.push_back({level, std::string(entryLine)});
  bytes_ += entryLine.size();
  switch (level) {
    case LogInformation:
    case LogNote:
      atLeastOneInfo_ = true;
      break;
    case LogWarning:
      atLeastOneWarning_ = true;
      break;
    case LogError:
      atLeastOneError_ = true;
      break;
    default:
      break;
  }
  if (entries_.size() < kMostEntries && bytes_ < kMostBytes) return;
  save(false);
  entries_.clear();
  bytes_ = 0;
  add(LogNote, message(u"(Earlier entries are in the log file)"));
}

bool JobLog::saveLogToFile(bool truncate) {
  const std::lock_guard lock(mutex_);
  return save(truncate);
}

// The folder, made when missing; nothing, and the reason in the log, if there is none.
std::optional<std::string> JobLog::folderForSaving() {
  const auto documents = folders_->documentsFolder();
  if (!documents) {
    add(LogError, message(u"Could not find document directory"));
    return std::nullopt;
  }
  std::string folder = appendPathComponent(*documents, kFolderName);
  struct stat status;
  if (stat(folder.c_str(), &status) == 0) {
    if (S_ISDIR(status.st_mode)) return folder;
    add(LogWarning, message(u"Log folder cannot be a file"));
    return std::nullopt;
  }
  if (mkdir(folder.c_str(), 0755) != 0 && errno != EEXIST) {
    add(LogWarning, std::strerror(errno));
    return std::nullopt;
  }
  return folder;
}

bool JobLog::save(bool truncate) {
  const auto folder = folderForSaving();
  if (!folder) return true;
  const std::string path = appendPathComponent(*folder, kFileName);
  if (!truncate) return appendEntries(path);
  std::FILE* file = std::fopen(path.c_str(), "w");
  if (!file || std::fclose(file) != 0) {
    add(LogError, std::strerror(errno));
    return true;
  }
  return false;
}

bool JobLog::appendEntries(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "a");
  if (!file) {
    add(LogError, messageWithReason(u"Could not open log file, errno %d", errno));
    return true;
  }
  bool written = true;
  const std::size_t count = entries_.size();
  for (std::size_t i = 0; i < count && written; ++i) {
    const auto& [level, text] = entries_[i];
    if (level == LogNote || text.empty()) continue;
    written = std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fputc('\n', file) != EOF;
  }
  int reason = errno;
  if (std::fclose(file) != 0 && written) {
    reason = errno;
    written = false;
  }
  if (written) return false;
  add(LogError, messageWithReason(u"Could not append to log file, errno %d", reason));
  return true;
}

std::vector<JobLog::Entry> JobLog::entries() const {
  const std::lock_guard lock(mutex_);
  return entries_;
}

bool JobLog::isEmpty() const {
  const std::lock_guard lock(mutex_);
  return entries_.empty();
}

void JobLog::clear() {
  const std::lock_guard lock(mutex_);
  entries_.clear();
  bytes_ = 0;
}

std::optional<std::string> JobLog::path() const {
  const auto documents = folders_->documentsFolder();
  if (!documents) return std::nullopt;
  return appendPathComponent(appendPathComponent(*documents, kFolderName), kFileName);
}

void JobLog::clearFlags() {
  atLeastOneInfo_ = false;
  atLeastOneWarning_ = false;
  atLeastOneError_ = false;
}

}  // namespace quillet
