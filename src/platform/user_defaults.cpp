#include "platform/user_defaults.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/folders.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/system_log.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

using nlohmann::json;

// The object in the text; nothing for any other text, and for one that is nested deeper than settings ever
// are, as its writer and its comparisons call themselves for each level.
std::optional<json> parsedObject(const std::string& bytes) {
  constexpr int kDeepest = 200;
  bool tooDeep = false;
  const auto watchDepth = [&tooDeep](int depth, json::parse_event_t, const json&) {
    tooDeep = tooDeep || depth > kDeepest;
    return !tooDeep;
  };
  json parsed = json::parse(bytes, watchDepth, false);
  if (tooDeep || !parsed.is_object()) return {};
  return parsed;
}

// Equal in the program and in the file: the comparison alone takes 2^63 for -2^63.
bool isSame(const json& one, const json& other) {
  constexpr auto kReplace = json::error_handler_t::replace;
  return one == other && one.dump(-1, ' ', false, kReplace) == other.dump(-1, ' ', false, kReplace);
}

// A descriptor that is closed at the end of its block.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }

 private:
  int number_;
};

void logError(std::u16string_view format, int error, const std::string& path) {
  logToSystem(localizedFormat(format, {std::int64_t{error}, toUtf16(path)}));
}

struct FileContent {
  int error = 0;  // an errno; ENOENT when there is no such file
  std::string bytes;
};

FileContent readWholeFile(const std::string& path) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.isOpen()) return {errno == ENOTDIR ? ENOENT : errno, {}};
  FileContent content;
  char block[16384];
  while (true) {
    const ssize_t count = ::read(file.number(), block, sizeof block);
    if (count == 0) return content;
    if (count > 0) {
      content.bytes.append(block, static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return {errno, {}};
    }
  }
}

// Gives the file another name beside it, one that nothing has yet. An errno, 0 if done.
int setAside(const std::string& path) {
  for (int number = 1;; ++number) {
    const std::string asideName = path + ".broken-" + std::to_string(number);
    if (::renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, asideName.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno == EEXIST) continue;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    // The file system cannot refuse to replace: look first.
    struct stat status {};
    if (::lstat(asideName.c_str(), &status) == 0) continue;
    return ::rename(path.c_str(), asideName.c_str()) == 0 ? 0 : errno;
  }
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

// The mode of the file that is there stays; a new one is for its owner only, as mkstemp made it.
bool takeOverMode(int descriptor, const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return true;
  return ::fchmod(descriptor, status.st_mode & 0777) == 0;
}

// So that the new name too is on the disk. Not every file system can do it, and the file is whole without it.
void syncFolder(const std::string& folder) {
  const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.isOpen()) ::fsync(descriptor.number());
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// The file that a symbolic link leads to, so that the link stays.
std::string behindLinks(const std::string& path) {
  std::error_code error;
  const std::filesystem::path target = std::filesystem::canonical(path, error);
  return error ? path : target.string();
}

// Writes the bytes under a name of their own beside the file and renames that over it. An errno, 0 if done.
int replaceFile(const std::string& linkPath, std::string_view bytes) {
  if (linkPath.empty()) return ENOENT;
  const std::string path = behindLinks(linkPath);
  const std::string folder = folderOf(path);
  makeFolders(folder);
  std::string temporaryName = path + ".XXXXXX";
  const Descriptor file(::mkostemp(temporaryName.data(), O_CLOEXEC));
  if (!file.isOpen()) return errno;
  if (!writeAll(file.number(), bytes) || !takeOverMode(file.number(), path) || ::fsync(file.number()) != 0 ||
      ::rename(temporaryName.c_str(), path.c_str()) != 0) {
    const int error = errno;
    ::unlink(temporaryName.c_str());
    return error;
  }
  syncFolder(folder);
  return 0;
}

std::int64_t integerOfDouble(double value) {
  if (std::isnan(value)) return 0;
  // 2^63, the first number that is too large, is a double without rounding.
  if (value >= 9223372036854775808.0) return std::numeric_limits<std::int64_t>::max();
  if (value < -9223372036854775808.0) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

char16_t asciiLowered(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool isYes(std::u16string text) {
  std::transform(text.begin(), text.end(), text.begin(), asciiLowered);
  return text == u"yes" || text == u"true" || doubleValue(text) != 0;
}

std::u16string textOfNumber(const json& number) {
  if (number.is_number_float()) {
    const double value = number.get<double>();
    if (std::trunc(value) == value && std::abs(value) < 1e15)
      return toUtf16(std::to_string(integerOfDouble(value)));
  }
  return toUtf16(number.dump());
}

}  // namespace

UserDefaults::UserDefaults(std::string path) : path_(std::move(path)) {
  fileState_ = load();
}

UserDefaults::FileState UserDefaults::load() {
  const FileContent content = readWholeFile(path_);
  if (content.error == ENOENT) return FileState::Known;
  if (content.error != 0) {
    logError(u"Error %ld: Could not read settings file \"%@\"", content.error, path_);
    return FileState::LeftAlone;
  }
  if (std::optional<json> parsed = parsedObject(content.bytes)) {
    values_ = *std::move(parsed);
    return FileState::Known;
  }
  const int error = setAside(path_);
  if (error != 0) {
    logError(u"Error %ld: Could not set aside unreadable settings file \"%@\"", error, path_);
    return FileState::LeftAlone;
  }
  logToSystem(formatted(u"Settings file \"%@\" is not valid and was set aside", {toUtf16(path_)}));
  return FileState::Known;
}

json UserDefaults::value(const std::string& key) const {
  const std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  return found == values_.end() ? json() : *found;
}

void UserDefaults::setValue(const std::string& key, json value) {
  const std::lock_guard lock(mutex_);
  change(key, std::move(value));
  store();
}

void UserDefaults::setValues(const std::map<std::string, json>& values) {
  const std::lock_guard lock(mutex_);
  for (const auto& [key, value] : values) change(key, value);
  store();
}

void UserDefaults::change(const std::string& key, json value) {
  if (fileState_ == FileState::LeftAlone) {
    unreadChanges_[key] = value;
    changed_ = true;
  }
  const auto found = values_.find(key);
  if (found == values_.end() ? value.is_null() : isSame(*found, value)) return;  // costs no write
  changed_ = true;
  if (value.is_null()) {
    values_.erase(found);
  } else {
    values_[key] = std::move(value);
  }
}

void UserDefaults::store() {
  if (!changed_) return;
  if (fileState_ == FileState::LeftAlone) {
    fileState_ = load();
    if (fileState_ == FileState::LeftAlone) return;
    for (const auto& [key, value] : std::exchange(unreadChanges_, {})) change(key, value);
  }
  // Half of a surrogate pair in a text must not lose the other settings.
  const std::string bytes = values_.dump(2, ' ', false, json::error_handler_t::replace) + '\n';
  if (const int error = replaceFile(path_, bytes)) {
    logError(u"Error %ld: Could not write settings file \"%@\"", error, path_);
    return;
  }
  changed_ = false;
}

bool UserDefaults::has(const std::string& key) const {
  const std::lock_guard lock(mutex_);
  return values_.contains(key);
}

bool UserDefaults::boolForKey(const std::string& key) const {
  const json stored = value(key);
  if (stored.is_boolean()) return stored.get<bool>();
  if (stored.is_number()) return stored.get<double>() != 0;
  return stored.is_string() && isYes(toUtf16(stored.get_ref<const std::string&>()));
}

std::int64_t UserDefaults::integerForKey(const std::string& key) const {
  const json stored = value(key);
  if (stored.is_boolean()) return stored.get<bool>() ? 1 : 0;
  if (stored.is_number_unsigned()) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(std::min(stored.get<std::uint64_t>(), kLargest));
  }
  if (stored.is_number_integer()) return stored.get<std::int64_t>();
  if (stored.is_number_float()) return integerOfDouble(stored.get<double>());
  return stored.is_string() ? integerValue(toUtf16(stored.get_ref<const std::string&>())) : 0;
}

std::optional<std::u16string> UserDefaults::stringForKey(const std::string& key) const {
  const json stored = value(key);
  if (stored.is_string()) return toUtf16(stored.get_ref<const std::string&>());
  if (stored.is_boolean()) return stored.get<bool>() ? u"1" : u"0";
  if (stored.is_number()) return textOfNumber(stored);
  return {};
}

}  // namespace quillet
