// The list of input files: how entries come into being, and how the list survives from one launch to the
// next. Entries keep their own operations; a path stands in the list at most once.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "engine/input_files.h"
#include "engine/job_log.h"
#include "platform/user_defaults.h"
#include "shell/file_selection.h"

namespace quillet {

enum class SelectFiles { No, Yes };
enum class RestoreOperations { No, Yes };

// Main thread only. All references outlive the list.
class InputFileList {
 public:
  InputFileList(InputFiles& files, FileSelection& selection, JobLog& log, UserDefaults& defaults)
      : files_(files), selection_(selection), log_(log), defaults_(defaults) {}

  // The one way in for new entries: scans each file, gives it its operations (those of the last session when
  // they are to be restored and there are any, else the default ones) and inserts all as a block at the row.
  // A path that the list has is passed over silently; a file that cannot be read becomes an entry all the
  // same.
  void addInputFiles(const std::vector<std::string>& paths, std::size_t row, SelectFiles selectFiles,
                     RestoreOperations restoreOperations);

  // Puts a whole list in place, or the operations of one file (false for a row that there is not). Neither
  // computes a preview.
  void setInputFiles(std::vector<InputFile> entries);
  bool setOperations(std::size_t row, OperationList operations);

  // Failures become lines of the log.
  void storeLastOpenedFiles();
  void loadLastOpenedFiles();

 private:
  InputFile newEntry(const std::string& path, RestoreOperations restoreOperations);
  std::optional<OperationList> lastOperations(const std::string& path) const;
  std::optional<std::string> restorablePath(const nlohmann::json& bookmark);
  void logWarning(std::u16string_view key);
  void logWarning(std::u16string_view key, const std::string& path);

  InputFiles& files_;
  FileSelection& selection_;
  JobLog& log_;
  UserDefaults& defaults_;
  std::set<std::string> paths_;  // of all entries
};

}  // namespace quillet
