// Sets environment variables for the time of a test.
#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace quillet::testing {

class Environment {
 public:
  Environment() = default;
  ~Environment() {
    for (const auto& [name, value] : before_) apply(name, value);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

  void set(const std::string& name, const std::optional<std::string>& value) {  // nothing removes it
    const char* before = std::getenv(name.c_str());
    before_.emplace(name, before ? std::optional<std::string>(before) : std::nullopt);
    apply(name, value);
  }

 private:
  static void apply(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
      ::setenv(name.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name.c_str());
    }
  }

  std::map<std::string, std::optional<std::string>> before_;
};

}  // namespace quillet::testing
