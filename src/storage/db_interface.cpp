#include "storage/db_interface.h"

#include <sqlite3.h>
#include <utility>

#include "platform/folders.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/system_log.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr int kNoDatabaseFile = -1;

// Run at every launch, and adds what is missing. Keys are the implicit row identifiers, which SQLite hands
// out again behind the highest one. Older jobs have their settings in columns that are only read by now, and
// columns without a type hold texts.
constexpr const char* kSchema =
    "begin transaction; "

    "create table if not exists jobs ("
    "name not null default '', "
    "date_last_saved not null default '', "
    "output_file_type int not null default 0, "
    "output_file_write_mode int not null default 0, "
    "output_file_encoding int not null default 0, "
    "output_file_line_endings int not null default 0, "
    "output_file_name not null default '', "
    "contain_regex not null default '', "
    "add_missing_columns_string not null default '', "
    "invalid_column_string not null default '', "
    "line_numbers_to_skip not null default '', "
    "flags int not null default 0, "
    "reserved not null default ''); "
    "create index if not exists indjobname on jobs (name); "
    "create index if not exists indjobdate on jobs (date_last_saved); "

    "create table if not exists input_files ("
    "file_name not null default '', "
    "file_path null default '', "
    "flags int not null default 0, "
    "reserved not null default ''); "
    "create index if not exists indfilename on input_files (file_name); "
    "create index if not exists indfilepath on input_files (file_path); "

    "create table if not exists input_file_settings ("
    "job_id int not null default 0, "
    "input_file_id int not null default 0, "
    "display_order int not null default 0, "
    "file_type int not null default 0, "
    "file_encoding int not null default 0, "
    "line_numbers_to_skip not null default '', "
    "contain_regex not null default '', "
    "flags int not null default 0, "
    "reserved not null default ''); "
    "create unique index if not exists indfilesettings on input_file_settings (job_id, input_file_id); "

    "create table if not exists input_file_column_settings ("
    "job_id int not null default 0, "
    "input_file_id int not null default 0, "
    "column_index int not null default 0, "
    "output_column_index int not null default 0, "
    "replace1_regex not null default '', "
    "replace1_with not null default '', "
    "replace2_regex not null default '', "
    "replace2_with not null default '', "
    "convert_into_type int not null default 0, "
    "date_format int not null default 0, "
    "time_format int not null default 0, "
    "date_time_date_format int not null default 0, "
    "date_time_time_format int not null default 0, "
    "number_of_digits_to_right int not null default 0, "
    "descriptor not null default '', "
    "flags int not null default 0, "
    "reserved not null default ''); "
    "create index if not exists indfilecolumnsettings on input_file_column_settings "
    "(job_id, input_file_id); "
    "create unique index if not exists indfilecolumnsettings2 on input_file_column_settings "
    "(job_id, input_file_id, column_index); "

    "create table if not exists operations ("
    "job_id int not null default 0, "
    "input_file_id int not null default 0, "
    "idx int not null default 0, "
    "code int not null default 0, "
    "intarg1 int not null default 0, "
    "intarg2 int not null default 0, "
    "intarg3 int not null default 0, "
    "intarg4 int not null default 0, "
    "intarg5 int not null default 0, "
    "arg1 not null default '', "
    "arg2 not null default '', "
    "arg3 not null default '', "
    "arg4 not null default '', "
    "arg5 not null default '', "
    "reserved not null default ''); "
    "create unique index if not exists indoperations on operations (job_id, input_file_id, idx); "

    "commit transaction; ";

void logMissingDatabase(const std::string& databaseFile) {
  logToSystem(formatted(u"Could not find the database resource %@", {toUtf16(databaseFile)}));
}

// One connection, for one script.
class Connection {
 public:
  // The file is made when it is missing.
  explicit Connection(const std::string& path) { openStatus_ = sqlite3_open(path.c_str(), &handle_); }
  ~Connection() { sqlite3_close(handle_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  int openStatus() const { return openStatus_; }
  int run(const std::string& script) {
    return sqlite3_exec(handle_, script.c_str(), nullptr, nullptr, nullptr);
  }
  int run(const std::string& query, DBInterface::FlatRows& rows) {
    return sqlite3_exec(handle_, query.c_str(), appendRow, &rows, nullptr);
  }
  std::u16string errorMessage() const { return toUtf16(sqlite3_errmsg(handle_)); }
  std::int64_t lastInsertRowID() const { return sqlite3_last_insert_rowid(handle_); }

 private:
  static int appendRow(void* rows, int count, char** values, char**) noexcept {
    for (int i = 0; i < count; ++i)
      static_cast<DBInterface::FlatRows*>(rows)->emplace_back(values[i] ? values[i] : "");
    return 0;
  }

  sqlite3* handle_ = nullptr;
  int openStatus_;
};

}  // namespace

DBInterface::DBInterface(std::string databaseFile, const std::optional<std::string>& documentsFolder)
    : databaseFile_(std::move(databaseFile)) {
  if (documentsFolder) databaseFilePath_ = appendPathComponent(*documentsFolder, databaseFile_);
}

std::u16string DBInterface::lastErrorMessage() const {
  return lastErrorMsg_ ? *lastErrorMsg_ : localized(u"Unknown error");
}

int DBInterface::execCommand(const std::string& script) {
  if (!databaseFilePath_) {
    logMissingDatabase(databaseFile_);
    return kNoDatabaseFile;
  }
  Connection connection(*databaseFilePath_);
  if (const int status = connection.openStatus(); status != SQLITE_OK) {
    logToSystem(formatted(u"Could not open the database %@, rc = %d", {toUtf16(*databaseFilePath_), status}));
    return status;
  }
  const int status = connection.run(script);
  if (status == SQLITE_OK)
    lastRowID_ = connection.lastInsertRowID();  // also of a script that inserted nothing: this is meant
  else
    logToSystem(connection.errorMessage());
  return status;
}

int DBInterface::getRows(FlatRows* rows, const std::string& query) {
  if (!databaseFilePath_) {
    logMissingDatabase(databaseFile_);
    return kNoDatabaseFile;
  }
  if (!rows) {
    logToSystem(u"rows pointer was nil");
    return SQLITE_OK;
  }
  Connection connection(*databaseFilePath_);
  if (const int status = connection.openStatus(); status != SQLITE_OK) {
    logToSystem(formatted(u"Could not open the database %@", {toUtf16(*databaseFilePath_)}));
    return status;
  }
  return connection.run(query, *rows);
}

std::int32_t DBInterface::getNumberWithQuery(const std::string& query) {
  FlatRows rows;
  if (getRows(&rows, query) != SQLITE_OK || rows.empty()) return -1;
  return intValue(toUtf16(rows.front()));
}

int DBInterface::setupDatabase() {
  const int count = getNumberWithQuery("select count(*) from sqlite_master where type='table'");
  if (count < 0) return kSuccess;  // a database that cannot be asked counts as success: this is meant
  const int status = execCommand(kSchema);
  if (status != SQLITE_OK)
    logToSystem(formatted(u"setupDatabase: could not create the main tables, rc = %d", {status}));
  return status;
}

std::string DBInterface::dbStringFromString(std::optional<std::string_view> text) {
  std::string result;
  if (!text) return result;
  result.reserve(text->size());
  for (const char byte : *text) {
    if (byte == '\'') result += '\'';
    result += byte;
  }
  return result;
}

std::string DBInterface::dbStringFromDate(std::optional<Instant> date) {
  if (!date) return {};
  DateFormatter formatter;
  formatter.setDateFormat(kDateFormat);
  return toUtf8(formatter.stringFromDate(*date));
}

namespace {

// The texts with "," between them, each between two of the quote.
template <typename Texts>
std::string joinedWithCommas(const Texts& texts, std::string_view quote) {
  std::string result;
  for (bool isFirst = true; const std::string& text : texts) {
    if (!std::exchange(isFirst, false)) result += ',';
    result.append(quote).append(text).append(quote);
  }
  return result;
}

}  // namespace

std::string DBInterface::commaSeparatedStringForStringArray(const std::vector<std::string>& texts,
                                                            bool doubleQuote) {
  return joinedWithCommas(texts, doubleQuote ? "\"" : "");
}

std::string DBInterface::commaSeparatedStringForStringSet(const std::set<std::string>& texts) {
  return joinedWithCommas(texts, "");
}

std::int32_t DBInterface::dbIntFromNumber(std::optional<std::int64_t> number) {
  return static_cast<std::int32_t>(dbIntegerFromNumber(number));
}

std::int64_t DBInterface::dbIntegerFromNumber(std::optional<std::int64_t> number) {
  return number.value_or(0);
}

void DBInterface::setFlagValue(std::int32_t& flags, std::int32_t mask, std::optional<std::int64_t> number) {
  flags = dbIntegerFromNumber(number) != 0 ? flags | mask : flags & ~mask;
}

}  // namespace quillet
