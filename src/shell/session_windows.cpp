#include "shell/session_windows.h"

#include <map>
#include <nlohmann/json.hpp>
#include <string>

namespace quillet {

namespace {

constexpr const char* kKeyWindow = "kLastKeyWindow";
constexpr const char* kShownWindows = "kLastOpenedWindows";

// The key window's number is its bit.
constexpr std::int64_t kMain = 1;
constexpr std::int64_t kClipboardData = 2;
constexpr std::int64_t kPreviousJobs = 4;

}  // namespace

bool SessionWindows::bringBack(Window& window, bool wasKey) {
  if (wasKey)
    server_.makeKeyAndOrderFront(window);
  else
    server_.orderBack(window);
  return wasKey;
}

// Whatever the settings hold reads as some number, whose other bits mean nothing.
void SessionWindows::restore() {
  const std::int64_t key = defaults_.integerForKey(kKeyWindow);
  const std::int64_t shown = defaults_.integerForKey(kShownWindows);
  bool oneIsKey = false;
  if (shown & kPreviousJobs) oneIsKey = bringBack(windows_.previousJobs, key == kPreviousJobs);
  if (shown & kClipboardData) {
    clipboard_.refreshDataFromClipboard();
    oneIsKey = bringBack(windows_.clipboardData, key == kClipboardData) || oneIsKey;
  }
  if (shown & kMain) oneIsKey = bringBack(windows_.main, key == kMain) || oneIsKey;
  if (!oneIsKey) server_.makeKeyAndOrderFront(windows_.main);
}

void SessionWindows::store() {
  std::map<std::string, nlohmann::json> values = {{kShownWindows, shownWindows()}};
  if (server_.isKey(WindowName::Main))
    values[kKeyWindow] = kMain;
  else if (server_.isKey(WindowName::ClipboardData))
    values[kKeyWindow] = kClipboardData;
  else if (server_.isKey(WindowName::PreviousJobs))
    values[kKeyWindow] = kPreviousJobs;
  defaults_.setValues(values);
}

std::int64_t SessionWindows::shownWindows() const {
  return (windows_.main.isShown() ? kMain : 0) | (windows_.clipboardData.isShown() ? kClipboardData : 0) |
         (windows_.previousJobs.isShown() ? kPreviousJobs : 0);
}

}  // namespace quillet
