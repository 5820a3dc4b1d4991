#include "platform/folders.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <pwd.h>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "platform/localization.h"
#include "platform/system_log.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

std::string_view withoutTrailingSlashes(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  return path;
}

// The absolute path in an environment variable; a relative one is not meant by anybody and is passed over.
std::optional<std::string> absolutePathFromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  if (!value || *value != '/') return {};
  return std::string(withoutTrailingSlashes(value));
}

std::optional<std::string> homeFolderOfTheAccount() {
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  while (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE &&
         buffer.size() < 1 << 20)
    buffer.resize(buffer.size() * 2);
  if (!found || !found->pw_dir || *found->pw_dir != '/') return {};
  return std::string(withoutTrailingSlashes(found->pw_dir));
}

std::optional<std::string> homeFolder() {
  const auto home = absolutePathFromEnvironment("HOME");
  return home ? home : homeFolderOfTheAccount();
}

// The folder that an XDG variable names, else the one in the home folder; nothing without a home folder.
std::optional<std::string> xdgFolder(const char* variable, std::string_view inHome) {
  if (auto folder = absolutePathFromEnvironment(variable)) return folder;
  const auto home = homeFolder();
  if (!home) return {};
  return appendPathComponent(*home, inHome);
}

void skipBlanks(std::string_view& text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
}

bool skip(std::string_view& text, std::string_view expected) {
  if (!text.starts_with(expected)) return false;
  text.remove_prefix(expected.size());
  return true;
}

// The text up to the closing quote, with what a backslash stands before taken as it is.
std::string quotedText(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size() && text[i] != '"'; ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    result += text[i];
  }
  return result;
}

// The value of a line such as XDG_DOCUMENTS_DIR="$HOME/Documents"; nothing for another line, a comment, or a
// value that is neither absolute nor begins with $HOME.
std::optional<std::string> documentsFolderOfLine(std::string_view line) {
  skipBlanks(line);
  if (!skip(line, "XDG_DOCUMENTS_DIR")) return {};
  skipBlanks(line);
  if (!skip(line, "=")) return {};
  skipBlanks(line);
  if (!skip(line, "\"")) return {};
  std::string start;
  if (line.starts_with("$HOME/") || line.starts_with("$HOME\"")) {
    skip(line, "$HOME");
    const auto home = homeFolder();
    if (!home) return {};
    start = *home;
  } else if (!line.starts_with('/')) {
    return {};
  }
  return std::string(withoutTrailingSlashes(start + quotedText(line)));
}

// The last line that names one counts.
std::optional<std::string> configuredDocumentsFolder() {
  const auto configFolder = xdgFolder("XDG_CONFIG_HOME", ".config");
  if (!configFolder) return {};
  std::ifstream file(appendPathComponent(*configFolder, "user-dirs.dirs"));
  std::optional<std::string> result;
  for (std::string line; std::getline(file, line);)
    if (auto folder = documentsFolderOfLine(line)) result = std::move(folder);
  return result;
}

}  // namespace

std::optional<std::string> UserFolders::documentsFolder() const {
  std::optional<std::string> folder = configuredDocumentsFolder();
  if (!folder) {
    const auto home = homeFolder();
    if (!home) return {};
    folder = appendPathComponent(*home, "Documents");
  }
  if (!makeFolders(*folder)) return {};
  return folder;
}

std::string UserFolders::temporaryParentFolder() const {
  if (auto folder = absolutePathFromEnvironment("TMPDIR")) return *folder;
  const auto cacheFolder = xdgFolder("XDG_CACHE_HOME", ".cache");
  return cacheFolder ? appendPathComponent(*cacheFolder, "quillet/tmp") : "/tmp";
}

std::string UserFolders::defaultsFile() const {
  const auto configFolder = xdgFolder("XDG_CONFIG_HOME", ".config");
  return configFolder ? appendPathComponent(*configFolder, "quillet/defaults.json") : "";
}

namespace {

constexpr std::string_view kTemporaryFolderPrefix = "quillet-";

// The paths of the folders in use by this process.
class LivingFolders {
 public:
  void add(const std::string& path) {
    const std::lock_guard lock(mutex_);
    paths_.insert(path);
  }
  void remove(const std::string& path) {
    const std::lock_guard lock(mutex_);
    paths_.erase(path);
  }
  std::set<std::string> all() {
    const std::lock_guard lock(mutex_);
    return paths_;
  }

 private:
  std::mutex mutex_;
  std::set<std::string> paths_;
};

LivingFolders& livingFolders() {
  static LivingFolders& living = *new LivingFolders;  // job threads may outlive the end of main()
  return living;
}

// A descriptor that holds the folder's lock; -1 if another has it.
int lockedFolder(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (descriptor < 0) return -1;
  if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) return descriptor;
  close(descriptor);
  return -1;
}

// What a process left that was killed: a folder of ours that nobody holds the lock of, and that is not just
// being made.
void removeAbandonedFolders(const std::string& parent) {
  constexpr auto kSurelyMade = std::chrono::minutes(10);
  std::error_code error;
  const auto now = std::filesystem::file_time_type::clock::now();
  for (const auto& entry : std::filesystem::directory_iterator(parent, error)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with(kTemporaryFolderPrefix) || name.size() != kTemporaryFolderPrefix.size() + 6)
      continue;
    struct stat status;
    if (lstat(entry.path().c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != geteuid())
      continue;
    if (now - entry.last_write_time(error) < kSurelyMade || error) continue;
    const int lock = lockedFolder(entry.path().string());
    if (lock < 0) continue;
    std::filesystem::remove_all(entry.path(), error);
    close(lock);
  }
}

}  // namespace

void PrivateTemporaryFolder::removeAll() {
  std::error_code error;
  for (const auto& path : livingFolders().all()) std::filesystem::remove_all(path, error);
}

PrivateTemporaryFolder::PrivateTemporaryFolder(const std::string& parent) {
  if (!makeFolders(parent)) return;
  removeAbandonedFolders(parent);
  std::string name = appendPathComponent(parent, std::string(kTemporaryFolderPrefix) + "XXXXXX");
  if (!::mkdtemp(name.data())) return;  // of mode 0700
  path_ = name;
  lock_ = lockedFolder(path_);
  livingFolders().add(path_);
}

PrivateTemporaryFolder::~PrivateTemporaryFolder() {
  if (path_.empty()) return;
  livingFolders().remove(path_);
  if (lock_ >= 0) close(lock_);
  std::error_code error;
  std::filesystem::remove_all(path_, error);  // removes a symbolic link, never what it leads to
  if (error) {
    logToSystem(formatted(u"Error %ld: Could not remove temporary folder \"%@\"",
                          {std::int64_t{error.value()}, toUtf16(path_)}));
  }
}

std::string lastPathComponent(std::string_view path) {
  path = withoutTrailingSlashes(path);
  const std::size_t slash = path.rfind('/');
  return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string appendPathComponent(std::string_view folder, std::string_view name) {
  if (folder.empty() || name.empty()) return std::string(folder.empty() ? name : folder);
  std::string result(withoutTrailingSlashes(folder));
  if (result.back() != '/') result += '/';
  result += name.substr(std::min(name.find_first_not_of('/'), name.size()));
  return result;
}

bool makeFolders(const std::string& path) {
  if (path.empty()) return false;
  std::error_code error;
  std::filesystem::create_directories(withoutTrailingSlashes(path), error);
  return isFolder(path);
}

bool fileExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0;
}

bool isFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

namespace {

bool standsForItselfInUrl(char byte) {
  if ((byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9'))
    return true;
  return std::string_view("-._~!$&'()*+,=:@/").find(byte) != std::string_view::npos;
}

int hexValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  return -1;
}

// Nothing for an incomplete escape, and for one of NUL or a slash, which no name holds.
std::optional<std::string> percentDecoded(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      result += text[i];
      continue;
    }
    if (i + 2 >= text.size()) return {};
    const int high = hexValue(text[i + 1]);
    const int low = hexValue(text[i + 2]);
    if (high < 0 || low < 0) return {};
    const char byte = static_cast<char>(high * 16 + low);
    if (byte == '\0' || byte == '/') return {};
    result += byte;
    i += 2;
  }
  return result;
}

bool isSchemeOfFiles(std::string_view text) {
  const std::string_view scheme = "file:";
  return text.size() >= scheme.size() &&
         std::equal(scheme.begin(), scheme.end(), text.begin(),
                    [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); });
}

// The name without its extension, and the extension with its dot. A name that begins with its only dot has
// none, nor has one with a blank behind the last dot, as in "Mr. Smith".
std::pair<std::string_view, std::string_view> splitAtExtension(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) return {name, {}};
  const std::string_view extension = name.substr(dot);
  if (extension.find(' ') != std::string_view::npos) return {name, {}};
  return {name.substr(0, dot), extension};
}

// A symbolic link that leads nowhere is an entry too.
bool isEntry(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

}  // namespace

std::string fileUrlFromPath(std::string_view path) {
  if (!path.starts_with('/')) return {};
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string result = "file://";
  for (const char byte : path) {
    if (standsForItselfInUrl(byte)) {
      result += byte;
    } else {
      result += '%';
      result += kDigits[static_cast<unsigned char>(byte) >> 4];
      result += kDigits[static_cast<unsigned char>(byte) & 15];
    }
  }
  return result;
}

std::optional<std::string> pathFromFileUrl(std::string_view url) {
  if (!isSchemeOfFiles(url)) return {};
  url.remove_prefix(5);
  if (url.starts_with("//")) {
    url.remove_prefix(2);
    if (url.starts_with("localhost/")) url.remove_prefix(9);
  }
  if (!url.starts_with('/')) return {};  // relative, or on another machine
  const auto path = percentDecoded(url.substr(0, std::min(url.find_first_of("?#"), url.size())));
  if (!path) return {};
  return std::string(withoutTrailingSlashes(*path));
}

std::optional<std::string> fileNameAvailableInFolder(const std::string& folder, const std::string& fileName) {
  if (!isEntry(appendPathComponent(folder, fileName))) return fileName;
  const auto [stem, extension] = splitAtExtension(fileName);
  for (int number = 2; number <= 99; ++number) {
    std::string name(stem);
    name += '_' + std::to_string(number);
    name += extension;
    if (!isEntry(appendPathComponent(folder, name))) return name;
  }
  return {};
}

}  // namespace quillet
