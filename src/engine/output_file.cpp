#include "engine/output_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "platform/system_log.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr std::size_t kCopyBlock = 262'144;  // bytes
constexpr mode_t kFileMode = 0644;
constexpr const char* kNeverMade = "quillet-XXXXXX";  // the pattern of their names, which none has itself

// -1 and errno as open() gives it; a path with a NUL in it names nothing.
int openPath(const std::string& path, int flags) {
  if (path.find('\0') != std::string::npos) {
    errno = EINVAL;
    return -1;
  }
  return open(path.c_str(), flags | O_CLOEXEC, kFileMode);
}

bool writeAll(int descriptor, const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t written = write(descriptor, bytes, count);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
  return true;
}

// A read error ends the copy like the end of the file, and the job is not told of a failed write: both are
// meant.
void copyByBlocks(int from, int to) {
  const std::unique_ptr<char[]> block(new char[kCopyBlock]);
  for (;;) {
    const ssize_t count = read(from, block.get(), kCopyBlock);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    if (writeAll(to, block.get(), static_cast<std::size_t>(count))) continue;
    logToSystem(localizedFormat(u"Could not copy to the output file, errno: %d", {std::int64_t{errno}}));
    return;
  }
}

// Copies inside the system where it can, which spares the way through this process.
void copyContent(int from, int to) {
  constexpr std::size_t kLargeStep = 1 << 30;
  for (;;) {
    const ssize_t count = copy_file_range(from, nullptr, to, nullptr, kLargeStep, 0);
    if (count == 0) return;
    if (count < 0) return copyByBlocks(from, to);  // goes on where both files stand
  }
}

// Whether a file made elsewhere and moved into the folder would be just like one made in it: no group, access
// list or label is inherited.
bool givesNothingToItsFiles(const std::string& folder) {
  struct stat status;
  if (stat(folder.c_str(), &status) != 0 || (status.st_mode & S_ISGID)) return false;
  return getxattr(folder.c_str(), "system.posix_acl_default", nullptr, 0) < 0 &&
         getxattr(folder.c_str(), "security.selinux", nullptr, 0) < 0;
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

}  // namespace

std::string RunFolder::path() {
  if (!folder_ || folder_->path().empty() || !isFolder(folder_->path()))
    folder_ = std::make_unique<PrivateTemporaryFolder>(parent_);
  return folder_->path().empty() ? appendPathComponent(parent_, kNeverMade) : folder_->path();
}

OutputFile::OutputFile(const std::string& temporaryFolder, std::u16string_view outputFileName,
                       std::int64_t writeMode, JobLog& log)
    : outputFileName_(toUtf8(outputFileName)),
      writeMode_(writeMode),
      temporaryPath_(appendPathComponent(temporaryFolder, outputFileName_)),
      log_(log) {}

OutputFile::~OutputFile() {
  closeTemporaryFile();
}

void OutputFile::logError(std::u16string_view key, const std::string& path, int reason) const {
  log_.addToImportLog(LogError, localizedFormat(key, {toUtf16(path), std::int64_t{reason}}));
}

int OutputFile::createTemporaryFile() {
  descriptor_ = openPath(temporaryPath_, O_WRONLY | O_CREAT | O_TRUNC);
  if (descriptor_ < 0) logError(u"Could not open \"%@\" for writing [errno %d]", temporaryPath_, errno);
  return descriptor_;
}

void OutputFile::closeTemporaryFile() {
  if (descriptor_ >= 0) close(descriptor_);
  descriptor_ = -1;
}

void OutputFile::finish(const std::string& outputFolder,
                        const std::function<void(const std::string&)>& opened) {
  const int temporary = openPath(temporaryPath_, O_RDONLY);
  if (temporary < 0)
    return logError(u"Could not open tmp file \"%@\" for reading [errno %d]", temporaryPath_, errno);
  if (outputFileName_.empty())
    log_.addToImportLog(LogError, localized(u"Output file must have a file name."));
  else if (bringTo(appendPathComponent(outputFolder, outputFileName_), temporary, opened) == Brought::Moved)
    return void(close(temporary));
  close(temporary);
  removeTemporaryFile();
}

OutputFile::Brought OutputFile::bringTo(const std::string& outputPath, int temporary,
                                        const std::function<void(const std::string&)>& opened) {
  if (moveTo(outputPath, temporary)) {
    opened(outputPath);
    return Brought::Moved;
  }
  // The mode "Create New" replaces an existing file too: this is meant.
  const int ending = static_cast<WriteMode>(writeMode_) == WriteMode::Append ? O_APPEND : O_TRUNC;
  const int output = openPath(outputPath, O_WRONLY | O_CREAT | ending);
  if (output < 0) {
    logError(u"Could not open output file \"%@\" for writing [errno %d]", outputPath, errno);
    return Brought::NotAtAll;
  }
  opened(outputPath);
  if (ending == O_APPEND)
    copyByBlocks(temporary, output);  // copy_file_range refuses files open for appending
  else
    copyContent(temporary, output);
  close(output);
  return Brought::Copied;
}

// Where the output does not exist yet, and would be no other file than the temporary one, this becomes it
// without a copy.
bool OutputFile::moveTo(const std::string& outputPath, int temporary) const {
  struct stat status;
  if (fstat(temporary, &status) != 0 || !S_ISREG(status.st_mode)) return false;
  if (!givesNothingToItsFiles(folderOf(outputPath)) || !givesNothingToItsFiles(folderOf(temporaryPath_)))
    return false;
  return renameat2(AT_FDCWD, temporaryPath_.c_str(), AT_FDCWD, outputPath.c_str(), RENAME_NOREPLACE) == 0;
}

void OutputFile::removeTemporaryFile() const {
  if (std::remove(temporaryPath_.c_str()) == 0) return;
  log_.addToImportLog(LogError, localizedFormat(u"Could not remove tmp file \"%@\" [%@]",
                                                {toUtf16(temporaryPath_), toUtf16(std::strerror(errno))}));
}

}  // namespace quillet
