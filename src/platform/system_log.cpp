#include "platform/system_log.h"

#include <cerrno>
#include <mutex>
#include <unistd.h>
#include <utility>

#include "platform/unicode_text.h"

namespace quillet {

namespace {

struct Log {
  std::mutex mutex;
  SystemLogSink sink;
};

// Never destroyed, as threads may log until the process ends.
Log& log() {
  static Log& theLog = *new Log;
  return theLog;
}

void writeToStandardError(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(STDERR_FILENO, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;  // there is no other place to tell it
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace

void logToSystem(std::u16string_view line) {
  const std::lock_guard lock(log().mutex);
  if (log().sink) {
    log().sink(line);
    return;
  }
  std::string bytes = toUtf8(line);
  bytes += '\n';
  writeToStandardError(bytes);
}

SystemLogSink setSystemLogSink(SystemLogSink sink) {
  const std::lock_guard lock(log().mutex);
  return std::exchange(log().sink, std::move(sink));
}

}  // namespace quillet
