// The files that the output of one input goes through: a temporary one, named like the output, and at the end
// the output itself.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/job_log.h"
#include "platform/folders.h"

namespace quillet {

// The private temporary folder of one run, made when it is first needed and again when it has been removed.
class RunFolder {
 public:
  explicit RunFolder(std::string parent) : parent_(std::move(parent)) {}
  // The folder's path; where it cannot be made, that of a folder that does not exist.
  std::string path();

 private:
  std::string parent_;
  std::unique_ptr<PrivateTemporaryFolder> folder_;
};

class OutputFile {
 public:
  // log outlives the file.
  OutputFile(const std::string& temporaryFolder, std::u16string_view outputFileName, std::int64_t writeMode,
             JobLog& log);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Creates the temporary file. -1, and an error in the log, when that fails: the pass goes on all the same,
  // with nothing to write to.
  int createTemporaryFile();
  const std::string& temporaryPath() const { return temporaryPath_; }
  void closeTemporaryFile();

  // Brings the temporary file's bytes to the output by the write mode, and removes it. Calls opened with the
  // output's path once it is open.
  void finish(const std::string& outputFolder, const std::function<void(const std::string& path)>& opened);

 private:
  enum class Brought { NotAtAll, Copied, Moved };
  Brought bringTo(const std::string& outputPath, int temporary,
                  const std::function<void(const std::string&)>& opened);
  bool moveTo(const std::string& outputPath, int temporary) const;
  void removeTemporaryFile() const;
  void logError(std::u16string_view key, const std::string& path, int reason) const;

  std::string outputFileName_;
  std::int64_t writeMode_;
  std::string temporaryPath_;
  int descriptor_ = -1;
  JobLog& log_;
};

}  // namespace quillet
