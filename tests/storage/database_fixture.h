// A job database of its own for a test, and what was saved into it.
#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/unicode_text.h"
#include "storage/db_interface.h"
#include "support/log_catcher.h"
#include "support/raw_database.h"
#include "support/temporary_folder.h"

namespace quillet::testing {

class DatabaseTest : public ::testing::Test {
 protected:
  std::string file() const { return folder_.path("quillet.db"); }
  std::string bytes() const { return folder_.read("quillet.db"); }
  Table raw(const std::string& script) { return RawDatabase(file()).rows(script); }
  std::string rawValue(const std::string& query) {
    const Table table = raw(query);
    return table.empty() ? "(no row)" : table.front().front();
  }

  // What went to the system log since the last call.
  std::vector<std::u16string> log() { return std::exchange(catcher_.lines, {}); }

  void setUp() { ASSERT_EQ(database_.setupDatabase(), 0); }

  int saveFiles(std::u16string_view name, const DBInterface::InputFileEntries& files) {
    return database_.saveJobNamed(name, &files, nullptr);
  }
  int saveClipboard(std::u16string_view name, const OperationList& operations) {
    return database_.saveJobNamed(name, nullptr, &operations);
  }
  std::string idOf(std::string_view name) {
    return rawValue("select rowid from jobs where name='" + std::string(name) + "'");
  }
  std::string fileIdOf(std::string_view path) {
    return rawValue("select rowid from input_files where file_path='" + std::string(path) + "'");
  }
  OperationList operationsOf(const std::string& jobID, const std::optional<std::string>& path = {}) {
    OperationList result;
    EXPECT_EQ(database_.getOperations(result, jobID, path), 0);
    return result;
  }
  std::vector<SettingsRecord> filesOf(const std::string& jobID) {
    std::vector<SettingsRecord> result;
    EXPECT_EQ(database_.getInputFileSettings(result, jobID), 0);
    return result;
  }
  std::vector<std::string> pathsOf(const std::string& jobID) {
    std::vector<std::string> result;
    for (const auto& file : filesOf(jobID)) result.push_back(file.text("FilePath"));
    return result;
  }

  TemporaryFolder folder_;
  LogCatcher catcher_;
  DBInterface database_{"quillet.db", folder_.path()};
};

inline OperationRecord operation(std::int64_t code, std::u16string_view argument = u"") {
  return {{"Code", code}, {"Arg1", std::u16string(argument)}};
}

inline std::shared_ptr<const InputFile> fileEntry(const std::string& path,
                                                  std::optional<OperationList> operations = OperationList()) {
  InputFile file;
  file.filePath = path;
  file.fileName = path.substr(path.rfind('/') + 1);
  file.operations = std::move(operations);
  return std::make_shared<const InputFile>(std::move(file));
}

// A record as it comes back: all eleven keys are there, an absent one as 0 or "", a number in a text as its
// digits.
inline OperationRecord asStored(const OperationRecord& record) {
  OperationRecord result;
  for (const char* key : {"Code", "IntArg1", "IntArg2", "IntArg3", "IntArg4", "IntArg5"})
    result.set(key, record.integer(key, 0));
  for (const char* key : {"Arg1", "Arg2", "Arg3", "Arg4", "Arg5"}) result.set(key, record.text(key));
  return result;
}

inline OperationList asStored(const OperationList& list) {
  OperationList result;
  for (const auto& record : list) result.push_back(asStored(record));
  return result;
}

}  // namespace quillet::testing
