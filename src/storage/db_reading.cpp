// Reading jobs. A table for each kind of row says which column goes under which key; the statement is made
// from it, so that the columns and the values stand in one order.
#include <iterator>
#include <span>
#include <utility>

#include "operations/stored_values.h"
#include "platform/unicode_text.h"
#include "storage/db_interface.h"
#include "storage/job_codes.h"
#include "storage/operation_columns.h"
#include "storage/sql_text.h"

namespace quillet {

namespace {

enum class Kind { Skipped, Text, Integer, FileType, WriteMode, LineEndings, Flags };
struct Column {
  std::string_view column;
  std::string_view key;
  Kind kind;
};

enum class FlagKind { Boolean, ZeroOrOne };
struct Flag {
  std::string_view key;
  int bit;
  FlagKind kind = FlagKind::Boolean;
};

using Columns = std::span<const Column>;
using Flags = std::span<const Flag>;
using Values = std::span<const std::string>;

constexpr Column kJobLookupColumns[] = {
    {"rowid", "rowid", Kind::Text},
    {"name", "name", Kind::Text},
    {"date_last_saved", "LastSaveDate", Kind::Text},
    {"flags", "flags", Kind::Text},
};

constexpr Column kJobColumns[] = {
    {"rowid", "", Kind::Skipped},
    {"date_last_saved", "LastSaveDate", Kind::Text},
    {"output_file_type", "LastOutputFileType", Kind::FileType},
    {"output_file_write_mode", "LastOutputFileWriteMode", Kind::WriteMode},
    {"output_file_line_endings", "LastOutputFileLineEndings", Kind::LineEndings},
    {"contain_regex", "OverallContainRegex", Kind::Text},
    {"add_missing_columns_string", "OverallAddMissingColumnsString", Kind::Text},
    {"invalid_column_string", "OverallInvalidColumnString", Kind::Text},
    {"line_numbers_to_skip", "OverallLineNumbersToSkip", Kind::Text},
    {"output_file_name", "OverallOutputFileNameString", Kind::Text},
    {"name", "OverallJobNameString", Kind::Text},
    {"flags", "", Kind::Flags},
    {"reserved", "OutputFileCSVSeparator", Kind::Text},
};
constexpr Flag kJobFlags[] = {
    {"OverallTrimWhitespace", 0},  {"OverallAddMissingColumns", 1}, {"OverallInvalidColumn", 2},
    {"OverallSkipBlankLines", 3},  {"OverallSkipLineNumbers", 4},   {"OverallSkipLinesThatContain", 6},
    {"OverallContainRegexCS", 8},  {"OverallSameFileName", 9},      {"OverallSeparateOutputFiles", 10},
    {"OverallOutputFileName", 11},
};

constexpr Column kFileColumns[] = {
    {"ifs.rowid", "InputFileSettingsID", Kind::Text},
    {"ifs.job_id", "JobID", Kind::Text},
    {"ifs.input_file_id", "InputFileID", Kind::Text},
    {"if.file_name", "FileName", Kind::Text},
    {"if.file_path", "FilePath", Kind::Text},
    {"ifs.display_order", "DisplayOrder", Kind::Integer},
    {"ifs.file_type", "FileType", Kind::Integer},
    {"ifs.file_encoding", "FileEncoding", Kind::Integer},
    {"ifs.line_numbers_to_skip", "LineNumbersToSkip", Kind::Text},
    {"ifs.contain_regex", "ContainRegex", Kind::Text},
    {"ifs.flags", "", Kind::Flags},
    {"ifs.reserved", "InputFileCSVSeparator", Kind::Text},
};
constexpr Flag kFileFlags[] = {
    {"SkipBlankLines", 0}, {"SkipLineNumbers", 1},           {"SkipLinesThatContain", 3},
    {"ContainRegexCS", 5}, {"DontTrimWhitespaceFromEOL", 6},
};

constexpr Column kFileColumnColumns[] = {
    {"column_index", "ColumnIndex", Kind::Integer},
    {"replace1_regex", "Replace1Regex", Kind::Text},
    {"replace1_with", "Replace1With", Kind::Text},
    {"replace2_regex", "TrimReplace2Regex", Kind::Text},
    {"replace2_with", "TrimReplace2With", Kind::Text},
    {"convert_into_type", "ConvertIntoType", Kind::Integer},
    {"date_format", "DateFormat", Kind::Integer},
    {"time_format", "TimeFormat", Kind::Integer},
    {"date_time_date_format", "DateTimeDateFormat", Kind::Integer},
    {"date_time_time_format", "DateTimeTimeFormat", Kind::Integer},
    {"number_of_digits_to_right", "NumberOfDigitsToRight", Kind::Integer},
    {"descriptor", "ColumnDescriptor", Kind::Text},
    {"flags", "", Kind::Flags},
};
constexpr Flag kFileColumnFlags[] = {
    {"TrimWhitespace", 0}, {"Replace1", 1},    {"Replace1CS", 2}, {"Replace2", 3},
    {"Replace2CS", 4},     {"ConvertInto", 5}, {"Excluded", 6},   {"Blank", 7, FlagKind::ZeroOrOne},
};

std::string columnNames(Columns columns) {
  std::string result;
  for (const auto& column : columns) {
    if (!result.empty()) result += ", ";
    result += column.column;
  }
  return result;
}

void setFlags(SettingsRecord& record, std::int64_t bits, Flags flags) {
  for (const auto& flag : flags) {
    const bool isSet = (bits >> flag.bit & 1) != 0;
    if (flag.kind == FlagKind::Boolean)
      record.set(flag.key, isSet);
    else
      record.set(flag.key, std::int64_t{isSet});
  }
}

void setValue(SettingsRecord& record, const Column& column, const std::string& value, Flags flags) {
  switch (column.kind) {
    case Kind::Skipped:
      return;
    case Kind::Text:
      return record.set(column.key, value);
    case Kind::Integer:
      return record.set(column.key, integerOfText(value));
    case Kind::FileType:
      return record.set(column.key, validOutputFileType(integerOfText(value)));
    case Kind::WriteMode:
      return record.set(column.key, validOutputFileWriteMode(integerOfText(value)));
    case Kind::LineEndings:
      return record.set(column.key, validOutputFileLineEndings(integerOfText(value)));
    case Kind::Flags:
      return setFlags(record, integerOfText(value), flags);
  }
}

// As many values as columns.
void fill(SettingsRecord& record, Columns columns, Values values, Flags flags = {}) {
  for (std::size_t i = 0; i < columns.size(); ++i) setValue(record, columns[i], values[i], flags);
}

// Calls the function with the values of each row, as long as it answers true.
template <typename Function>
void forEachRow(const DBInterface::FlatRows& rows, std::size_t columnCount, Function&& function) {
  for (std::size_t i = 0; i + columnCount <= rows.size(); i += columnCount)
    if (!function(Values(rows).subspan(i, columnCount))) return;
}

constexpr std::size_t kColumnsBeforeCode = 3;  // job, file and place in the list
constexpr std::size_t kOperationColumnCount =
    kColumnsBeforeCode + std::size(kOperationIntegers) + std::size(kOperationTexts);

OperationRecord operationOfRow(Values values) {
  OperationRecord result;
  std::size_t i = kColumnsBeforeCode;
  for (const auto& integer : kOperationIntegers) result.set(integer.key, integerOfText(values[i++]));
  for (const auto& text : kOperationTexts) result.set(text.key, toUtf16(values[i++]));
  return result;
}

}  // namespace

int DBInterface::getJobDictionary(SettingsRecord& dictionary, std::u16string_view jobName) {
  FlatRows rows;
  const int status =
      getRows(&rows, sqlText("select %@ from jobs where name='%@'",
                             {columnNames(kJobLookupColumns), dbStringFromString(toUtf8(jobName))}));
  // Several jobs of one name are as good as none: this is meant.
  if (status == kSuccess && rows.size() == std::size(kJobLookupColumns))
    fill(dictionary, kJobLookupColumns, rows);
  return status;
}

int DBInterface::getJobSettings(SettingsRecord& settings, const std::string& jobID) {
  FlatRows rows;
  const int status =
      getRows(&rows, sqlText("select %@ from jobs where rowid=%@", {columnNames(kJobColumns), jobID}));
  if (status == kSuccess && rows.size() == std::size(kJobColumns))
    fill(settings, kJobColumns, rows, kJobFlags);
  return status;
}

int DBInterface::getInputFileSettings(std::vector<SettingsRecord>& files, const std::string& jobID) {
  FlatRows rows;
  const int status =
      getRows(&rows, sqlText("select %@ from input_files if, input_file_settings ifs where ifs.job_id=%@ and "
                             "ifs.input_file_id=if.rowid order by ifs.display_order",
                             {columnNames(kFileColumns), jobID}));
  if (status != kSuccess) return status;
  forEachRow(rows, std::size(kFileColumns), [&](Values values) {
    SettingsRecord file;
    if (getInputFileSettings(file, jobID, values) != kSuccess) return false;
    files.push_back(std::move(file));
    return true;
  });
  return status;
}

int DBInterface::getInputFileSettings(SettingsRecord& settings, const std::optional<std::string>& jobID,
                                      const std::string& inputFileID) {
  if (!jobID) return kSuccess;
  FlatRows rows;
  const int status =
      getRows(&rows, sqlText("select %@ from input_files if, input_file_settings ifs where ifs.job_id=%@ and "
                             "ifs.input_file_id=if.rowid and if.rowid=%@ order by ifs.display_order",
                             {columnNames(kFileColumns), *jobID, inputFileID}));
  if (status != kSuccess || rows.size() != std::size(kFileColumns)) return status;
  return getInputFileSettings(settings, *jobID, Values(rows));
}

// The values are those of kFileColumns.
int DBInterface::getInputFileSettings(SettingsRecord& settings, const std::string& jobID,
                                      std::span<const std::string> values) {
  fill(settings, kFileColumns, values, kFileFlags);
  FlatRows rows;
  const int status =
      getRows(&rows, sqlText("select %@ from input_file_column_settings where job_id=%@ and "
                             "input_file_id=%@ order by output_column_index",
                             {columnNames(kFileColumnColumns), jobID, settings.text("InputFileID")}));
  if (status != kSuccess) return status;
  std::vector<SettingsRecord> columns;
  forEachRow(rows, std::size(kFileColumnColumns), [&](Values columnValues) {
    fill(columns.emplace_back(), kFileColumnColumns, columnValues, kFileColumnFlags);
    return true;
  });
  settings.setColumns(std::move(columns));
  return status;
}

int DBInterface::getOperations(OperationList& operations, const std::string& jobID,
                               const std::optional<std::string>& inputFilePath) {
  const std::string columns = operationColumnNames();
  const std::string query =
      inputFilePath
          ? sqlText(
                "select %@ from operations where job_id=%@ and input_file_id=(select ifs.input_file_id "
                "from input_files ipf, input_file_settings ifs where ifs.job_id=%@ and "
                "ifs.input_file_id=ipf.rowid and ipf.file_path='%@') order by idx",
                {columns, jobID, jobID, *inputFilePath})  // the path is not quoted: this is meant
          : sqlText("select %@ from operations where job_id=%@ and input_file_id=0 order by idx",
                    {columns, jobID});
  FlatRows rows;
  const int status = getRows(&rows, query);
  if (status != kSuccess) return status;
  forEachRow(rows, kOperationColumnCount, [&](Values values) {
    operations.push_back(operationOfRow(values));
    return true;
  });
  return status;
}

namespace {

// Wildcards in the text of a search by name are not escaped, and any type but that of dates searches by name,
// also the one for the files of a job: this is meant.
std::string queryOfPreviousJobs(std::int64_t searchType, std::u16string_view searchString) {
  constexpr const char* kLatest = " order by date_last_saved desc limit 200";
  std::string query = "select rowid, date_last_saved, name, flags, reserved from jobs";
  if (searchString.empty()) return query + kLatest;
  const std::string text = DBInterface::dbStringFromString(toUtf8(searchString));
  query += sqlText(
      searchType == SearchSavedSince ? " where date_last_saved >= '%@'" : " where name like '%%@%'", {text});
  return query + kLatest;
}

}  // namespace

int DBInterface::getPreviousJobs(FlatRows& jobs, std::int64_t searchType,
                                 std::optional<std::u16string_view> searchString) {
  FlatRows rows;
  const int status =
      getRows(&rows, queryOfPreviousJobs(searchType, searchString.value_or(std::u16string_view())));
  if (status == kSuccess)
    jobs.insert(jobs.end(), std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
  return status;
}

}  // namespace quillet
