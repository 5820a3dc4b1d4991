// Saving, renaming and deleting jobs.
#include <algorithm>
#include <chrono>

#include "platform/localization.h"
#include "platform/system_log.h"
#include "platform/unicode_text.h"
#include "storage/db_interface.h"
#include "storage/job_codes.h"
#include "storage/operation_columns.h"
#include "storage/sql_text.h"

namespace quillet {

namespace {

constexpr int kInvalidName = -1;
constexpr int kFilesNotResolved = -2;
constexpr int kJobNotWritten = -3;
constexpr std::int64_t kNoFile = 0;  // in place of a file, for the operations of a clipboard job

std::string flagOfSavedJobs() {
  return std::to_string(kJobHasOperationsOfAKind);
}

std::string now() {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return DBInterface::dbStringFromDate(std::chrono::duration<double, std::milli>(sinceEpoch).count());
}

// A text of the record, quoted. A number has no quotes to double: it is told in the log and stands for
// itself.
std::string quotedArgument(const OperationRecord& record, std::string_view key) {
  const auto& items = record.items();
  const auto item = std::find_if(items.begin(), items.end(), [key](const auto& i) { return i.first == key; });
  if (item == items.end()) return {};
  if (const auto* text = std::get_if<std::u16string>(&item->second))
    return DBInterface::dbStringFromString(toUtf8(*text));
  const std::u16string number = record.text(key);
  logToSystem(formatted(u"class: [%@] string: %@", {u"NSNumber", number}));
  return toUtf8(number);
}

void appendInsertOfOperation(std::string& script, std::int64_t jobID, std::int64_t fileID, std::size_t index,
                             const OperationRecord& record) {
  static const std::string start = "insert into operations (" + operationColumnNames() + ") values ( ";
  script += start;
  script += std::to_string(jobID) + ", " + std::to_string(fileID) + ", " + std::to_string(index);
  for (const auto& integer : kOperationIntegers)
    script += ", " + std::to_string(record.integer(integer.key, 0));
  for (const auto& text : kOperationTexts) script += ", '" + quotedArgument(record, text.key) + "'";
  script += " );";
}

// Replaces all operations of the file, or of the clipboard job, in this job.
void appendOperations(std::string& script, std::int64_t jobID, std::int64_t fileID,
                      const OperationList& operations) {
  script += sqlText("delete from operations where job_id=%@ and input_file_id=%@; ",
                    {std::to_string(jobID), std::to_string(fileID)});
  for (std::size_t i = 0; i < operations.size(); ++i) {
    appendInsertOfOperation(script, jobID, fileID, i, operations[i]);
    script += '\n';
  }
}

void appendFile(std::string& script, std::int64_t jobID, std::int64_t fileID, std::size_t position,
                const InputFile& file) {
  script += sqlText(
      "insert or replace into input_file_settings (job_id, input_file_id, display_order) values "
      "(%@, %@, %@);\n",
      {std::to_string(jobID), std::to_string(fileID), std::to_string(position)});
  static const OperationList none;
  appendOperations(script, jobID, fileID, file.operations ? *file.operations : none);
}

}  // namespace

// What the job of this name had before and is not in the list now stays in it: this is meant.
int DBInterface::saveJobNamed(std::u16string_view name, const InputFileEntries* inputFilesArray,
                              const OperationList* operationsArray) {
  SettingsRecord job;
  if (const int status = getJobDictionary(job, name); status != kSuccess) return status;
  const auto kind =
      std::to_string(static_cast<std::int64_t>(inputFilesArray ? JobKind::Files : JobKind::Clipboard));
  const bool isNew = !job.has("rowid");
  const int result = isNew ? insertJob(name, kind) : updateJob(job.integer("rowid", 0), kind);
  if (isNew && result != kSuccess) return result;
  const std::int64_t jobID = isNew ? lastRowID_ : job.integer("rowid", 0);
  if (jobID == 0) return result;
  if (inputFilesArray) return saveFiles(jobID, *inputFilesArray);
  return operationsArray ? saveClipboardOperations(jobID, *operationsArray) : result;
}

int DBInterface::updateJob(std::int64_t jobID, std::string_view kind) {
  const int status = execCommand(
      sqlText("update jobs set date_last_saved='%@', flags=(flags|%@), reserved='%@' where rowid=%@;\n",
              {now(), flagOfSavedJobs(), kind, std::to_string(jobID)}));
  if (status == kSuccess) return kSuccess;
  logToSystem(u"Could not update the job in the db");
  return kJobNotWritten;
}

int DBInterface::insertJob(std::u16string_view name, std::string_view kind) {
  const int status = execCommand(
      sqlText("insert into jobs (name, date_last_saved, flags, reserved) values ('%@', '%@', %@, '%@');\n",
              {dbStringFromString(toUtf8(name)), now(), flagOfSavedJobs(), kind}));
  if (status == kSuccess) return kSuccess;
  logToSystem(u"could not add the job to the db");
  return kJobNotWritten;
}

int DBInterface::saveClipboardOperations(std::int64_t jobID, const OperationList& operations) {
  std::string script = "begin transaction;\n";
  appendOperations(script, jobID, kNoFile, operations);
  return execCommand(script + "commit transaction;");
}

int DBInterface::saveFiles(std::int64_t jobID, const InputFileEntries& files) {
  const std::vector<std::int64_t> fileIDs = rowsOfFiles(files);
  if (files.empty() || fileIDs.size() != files.size()) {
    logToSystem(
        formatted(u"Only %ld input files IDs, expected %ld",
                  {static_cast<std::int64_t>(fileIDs.size()), static_cast<std::int64_t>(files.size())}));
    return kFilesNotResolved;
  }
  std::string script = "begin transaction;\n";
  for (std::size_t i = 0; i < files.size(); ++i)
    if (fileIDs[i] != kNoFile) appendFile(script, jobID, fileIDs[i], i + 1, *files[i]);
  return execCommand(script + "commit transaction;");
}

std::vector<std::int64_t> DBInterface::rowsOfFiles(const InputFileEntries& files) {
  std::vector<std::int64_t> result;
  for (const auto& file : files) {
    if (!file || !file->filePath || !file->fileName) continue;
    const auto row = rowOfFile(*file->filePath, *file->fileName);
    if (!row) break;
    result.push_back(*row);
  }
  return result;
}

// A row that is there is used as it is, under the name that it has.
std::optional<std::int64_t> DBInterface::rowOfFile(const std::string& filePath, const std::string& fileName) {
  const std::string path = dbStringFromString(filePath);
  const std::int64_t row =
      getNumberWithQuery(sqlText("select rowid from input_files where file_path='%@'", {path}));
  if (row > 0) return row;
  const int status =
      execCommand(sqlText("insert into input_files (file_name, file_path) values ('%@', '%@');\n",
                          {dbStringFromString(fileName), path}));
  if (status == kSuccess) return lastRowID_;
  logToSystem(u"Could not add the input files to the db");
  return std::nullopt;
}

int DBInterface::updatePreviousJobs(const std::string& jobID, std::optional<std::u16string_view> name, bool) {
  if (!name) {
    lastErrorMsg_ = localized(u"Invalid job ID");  // although it is the name that is absent: this is meant
    return kInvalidName;
  }
  return execCommand(
      sqlText("update jobs set name='%@' where rowid=%@", {dbStringFromString(toUtf8(*name)), jobID}));
}

// The operations stay behind. Who gets the row of such a job later replaces the ones that it could find.
int DBInterface::deleteJobSettings(const std::vector<std::string>& jobIDs, bool) {
  if (jobIDs.empty()) return kSuccess;
  const std::string list = commaSeparatedStringForStringArray(jobIDs, false);
  return execCommand(
      sqlText("begin transaction;"
              "delete from jobs where rowid in (%@);"
              "delete from input_file_settings where job_id in (%@);"
              "delete from input_file_column_settings where job_id in (%@);"
              "delete from input_files where rowid not in "
              "(select distinct input_file_id from input_file_settings);"
              "commit transaction;",
              {list, list, list}));
}

}  // namespace quillet
