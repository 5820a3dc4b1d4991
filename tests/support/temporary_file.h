// A file of given bytes for one test, and its open descriptor.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace quillet::testing {

class TemporaryFile {
 public:
  explicit TemporaryFile(std::string_view bytes) : path_(std::string(folder()) + "/quillet-test-XXXXXX") {
    descriptor_ = mkstemp(path_.data());
    while (!bytes.empty()) {
      const ssize_t count = write(descriptor_, bytes.data(), bytes.size());
      if (count <= 0) break;
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    rewind();
  }
  ~TemporaryFile() {
    close(descriptor_);
    unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  int descriptor() const { return descriptor_; }
  const std::string& path() const { return path_; }
  void rewind() const { lseek(descriptor_, 0, SEEK_SET); }

  std::string content() const {
    std::string bytes;
    char block[4096];
    rewind();
    while (true) {
      const ssize_t count = read(descriptor_, block, sizeof block);
      if (count <= 0) return bytes;
      bytes.append(block, static_cast<std::size_t>(count));
    }
  }

 private:
  static const char* folder() {
    const char* value = std::getenv("TMPDIR");
    return value && *value ? value : "/tmp";
  }

  std::string path_;
  int descriptor_;
};

}  // namespace quillet::testing
