// The user's settings: JSON values under string keys, kept in one file. A change is written at once, whole,
// beside the file and renamed over it, so the file is never half written. Safe from any thread.
//
// A file that cannot be parsed is set aside under another name, with a line in the system log, and the settings
// start empty. A file that cannot be written is told in the system log; the value holds for this run.
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

  nlohmann::json value(const std::string& key) const;  // null when absent
  void setValue(const std::string& key, nlohmann::json value);  // null removes
  // Several changes with one write.
  void setValues(const std::map<std::string, nlohmann::json>& values);

  bool has(const std::string& key) const;
  bool boolForKey(const std::string& key) const;              // text: YES, true or a number other than 0
  std::int64_t integerForKey(const std::string& key) const;   // text through integerValue
  std::optional<std::u16string> stringForKey(const std::string& key) const;  // a number as its text

 private:
  void load();
  void store() const;  // with the mutex held

  std::string path_;
  mutable std::mutex mutex_;
  nlohmann::json values_;
};

}  // namespace quillet
