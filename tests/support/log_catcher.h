// Catches what goes to the system log while it lives.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/system_log.h"

namespace quillet::testing {

class LogCatcher {
 public:
  LogCatcher() : before_(setSystemLogSink([this](std::u16string_view line) { lines.emplace_back(line); })) {}
  ~LogCatcher() { setSystemLogSink(std::move(before_)); }
  LogCatcher(const LogCatcher&) = delete;
  LogCatcher& operator=(const LogCatcher&) = delete;

  std::vector<std::u16string> lines;

 private:
  SystemLogSink before_;
};

}  // namespace quillet::testing
