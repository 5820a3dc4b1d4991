// The user's settings: JSON values under string keys, kept in one file. A change is written at once, whole,
// beside the file and renamed over it, so the file is never half written. Safe from any thread.
//
// A file that cannot be parsed is set aside as <name>.broken-<number>, with a line in the system log, and the
// settings start empty. A file that is there but cannot be read is left alone: the settings start empty, and
// a change is written only once the file could be read after all, on top of what it holds. A file that cannot
// be written is told in the system log; the value holds for this run, and the next change tries again.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace quillet {

class UserDefaults {
 public:
  explicit UserDefaults(std::string path);

  nlohmann::json value(const std::string& key) const;           // null when absent
  void setValue(const std::string& key, nlohmann::json value);  // null removes
  // Several changes with one write.
  void setValues(const std::map<std::string, nlohmann::json>& values);

  bool has(const std::string& key) const;
  bool boolForKey(const std::string& key) const;             // text: YES, true or a number other than 0
  std::int64_t integerForKey(const std::string& key) const;  // text through integerValue
  std::optional<std::u16string> stringForKey(const std::string& key) const;  // a number as its text

 private:
  enum class FileState { Known, LeftAlone };  // LeftAlone: it holds something that this run has not read

  FileState load();  // these three with the mutex held
  void change(const std::string& key, nlohmann::json value);
  void store();

  std::string path_;
  mutable std::mutex mutex_;
  nlohmann::json values_ = nlohmann::json::object();
  std::map<std::string, nlohmann::json> unreadChanges_;  // made while the file was LeftAlone; null removes
  FileState fileState_ = FileState::Known;
  bool changed_ = false;  // there is something to write
};

}  // namespace quillet
