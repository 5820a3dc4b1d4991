// The list of input files: how entries come into being, and how the list survives from one launch to the
// next. Entries keep their own operations; a path stands in the list at most once.
#pragma once

#include <cstddef>
#include <cstdint>
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

  std::size_t count() const { return files_.count(); }

  // Moves the rows, in their order, as one block before the row; both as they count before the move. Gives
  // how many were moved. Nothing is selected by it, here and in removing.
  std::size_t moveFiles(const IndexSet& rows, std::int64_t row);
  void removeFiles(const IndexSet& rows);

  // Puts a whole list in place, or the operations of one file (false for a row that there is not). Neither
  // computes a preview.
  void setInputFiles(std::vector<InputFile> entries);
  bool setOperations(std::size_t row, OperationList operations);

  // Failures become lines of the log.
  void storeLastOpenedFiles();
  void loadLastOpenedFiles();

 private:
  // lastOperations: those of the last session by path, null to restore none.
  InputFile newEntry(const std::string& path, const nlohmann::json& lastOperations);
  std::optional<std::string> restorablePath(const nlohmann::json& bookmark);
  void logWarning(std::u16string_view key);
  void logWarning(std::u16string_view key, const std::string& path);

  InputFiles& files_;
  FileSelection& selection_;
  JobLog& log_;
  UserDefaults& defaults_;
  std::set<std::string> paths_;  // of all entries, so that a known path is found without a walk over them
};

}  // namespace quillet
