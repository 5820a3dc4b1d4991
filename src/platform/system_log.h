// The system log: lines for those who look after the machine, not for the user. Standard error, unless a sink
// is installed. Safe from any thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillet {

void logToSystem(std::u16string_view line);

// Replaces the sink and returns the one before; an empty function stands for standard error. The sink is
// called under a lock, one line at a time, and must not log itself.
using SystemLogSink = std::function<void(std::u16string_view line)>;
SystemLogSink setSystemLogSink(SystemLogSink sink);

}  // namespace quillet
