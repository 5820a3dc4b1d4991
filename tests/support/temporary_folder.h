// A folder of its own for a test, removed with all it holds, and small questions about files.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>

namespace quillet::testing {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = ::testing::TempDir() + "quillet-test-XXXXXX";
    path_ = ::mkdtemp(name.data()) ? name : "";
    EXPECT_FALSE(path_.empty());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string path(const std::string& name) const { return path_ + "/" + name; }

  // Writes a file and returns its path.
  std::string write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }
  std::string read(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  // The names of all entries.
  std::set<std::string> names() const {
    std::set<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
      result.insert(entry.path().filename());
    return result;
  }

 private:
  std::string path_;
};

}  // namespace quillet::testing
