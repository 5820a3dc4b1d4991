// The job database: saved jobs, the input files that they name, and their operations, in one SQLite file.
//
// The design is plain and stays so. No connection is held: every command and every query opens the file, runs
// and closes it again. There are no prepared statements, and nothing is set on a connection: a file that
// another process has locked fails at once. All SQL is text.
//
// A status is 0 for success, SQLite's result code, or -1 (no database file), -2 (not all input files could be
// resolved), -3 (the row of the job could not be written). Reasons go to the system log, never to the user.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "operations/input_file.h"
#include "operations/operation_record.h"
#include "platform/date_formatter.h"
#include "storage/settings_record.h"

namespace quillet {

// Main thread only.
class DBInterface {
 public:
  static constexpr int kSuccess = 0;
  // Of the dates in the file. Written in one time zone, they sort as texts.
  static constexpr std::u16string_view kDateFormat = u"yyyy-MM-dd HH:mm:ss Z";

  // Rows of a result, one after the other and not delimited: every caller knows how many columns it asked
  // for. NULL is "".
  using FlatRows = std::vector<std::string>;
  using InputFileEntries = std::vector<std::shared_ptr<const InputFile>>;

  // databaseFile is a bare name. Without a folder there is no database, and every call fails with -1. Nothing
  // is opened here.
  DBInterface(std::string databaseFile, const std::optional<std::string>& documentsFolder);

  const std::string& databaseFile() const { return databaseFile_; }
  const std::optional<std::string>& databaseFilePath() const { return databaseFilePath_; }
  std::int64_t lastRowID() const { return lastRowID_; }  // after the last command that succeeded
  std::u16string lastErrorMessage() const;               // localized; never cleared

  int setupDatabase();  // creates what is missing; a database that cannot be asked counts as success
  int execCommand(const std::string& script);                 // returns no rows
  int getRows(FlatRows* rows, const std::string& query);      // appends; null is told in the log, and success
  std::int32_t getNumberWithQuery(const std::string& query);  // the first value; -1 if there is none

  // Saving. A job of this name is overwritten, where there is exactly one. The files decide the kind: with a
  // list, even an empty one, it is a file job, with null a clipboard job of the operations.
  int saveJobNamed(std::u16string_view name, const InputFileEntries* inputFilesArray,
                   const OperationList* operationsArray);
  // newJob is ignored by these two: both generations of jobs are renamed and deleted alike, which is meant.
  int updatePreviousJobs(const std::string& jobID, std::optional<std::u16string_view> name, bool newJob);
  int deleteJobSettings(const std::vector<std::string>& jobIDs, bool newJob);

  // Reading. What is not found leaves the container as it is, with status 0.
  int getJobDictionary(SettingsRecord& dictionary, std::u16string_view jobName);
  int getJobSettings(SettingsRecord& settings, const std::string& jobID);
  int getInputFileSettings(std::vector<SettingsRecord>& files, const std::string& jobID);
  int getInputFileSettings(SettingsRecord& settings, const std::optional<std::string>& jobID,
                           const std::string& inputFileID);
  // Without a path: the operations of a clipboard job. A path with a single quote fails: this one statement
  // quotes nothing, which is meant.
  int getOperations(OperationList& operations, const std::string& jobID,
                    const std::optional<std::string>& inputFilePath);
  // Five texts a job: identifier, date, name, flags, kind; at most 200 jobs, the latest first. Type 2
  // searches by date, any other by name.
  int getPreviousJobs(FlatRows& jobs, std::int64_t searchType,
                      std::optional<std::u16string_view> searchString);

  // Quotes inside a text between single quotes; "" when absent.
  static std::string dbStringFromString(std::optional<std::string_view> text);
  // In kDateFormat, the default locale and time zone; "" when absent.
  static std::string dbStringFromDate(std::optional<Instant> date);
  // With "," between them, each in double quotes if these are asked for.
  static std::string commaSeparatedStringForStringArray(const std::vector<std::string>& texts,
                                                        bool doubleQuote);
  static std::string commaSeparatedStringForStringSet(const std::set<std::string>& texts);

  // 0 when absent; the first cuts to 32 bits.
  static std::int32_t dbIntFromNumber(std::optional<std::int64_t> number);
  static std::int64_t dbIntegerFromNumber(std::optional<std::int64_t> number);
  // Sets the bits of the mask for a number other than 0, else clears them.
  static void setFlagValue(std::int32_t& flags, std::int32_t mask, std::optional<std::int64_t> number);

 private:
  // The steps of a save. The kind is "0" for a file job, "1" for a clipboard job.
  int updateJob(std::int64_t jobID, std::string_view kind);
  int insertJob(std::u16string_view name, std::string_view kind);
  int saveClipboardOperations(std::int64_t jobID, const OperationList& operations);
  int saveFiles(std::int64_t jobID, const InputFileEntries& files);
  std::vector<std::int64_t> rowsOfFiles(const InputFileEntries& files);  // fewer where one has none
  std::optional<std::int64_t> rowOfFile(const std::string& filePath, const std::string& fileName);

  int getInputFileSettings(SettingsRecord& settings, const std::string& jobID,
                           std::span<const std::string> values);

  std::string databaseFile_;
  std::optional<std::string> databaseFilePath_;
  std::int64_t lastRowID_ = 0;
  std::optional<std::u16string> lastErrorMsg_;  // localized
};

}  // namespace quillet
