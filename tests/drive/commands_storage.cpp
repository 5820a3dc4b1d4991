// The job database: statements as they are, and what is read of a job.
#include "drive/command_table.h"
#include "drive/json_values.h"
#include "shell/operation_json.h"
#include "storage/db_interface.h"

namespace quillet::drive {

namespace {

DBInterface& database(Drive& drive) {
  return drive.launchedApplication().database();
}

// An identifier is a text; a command may give the number that it holds.
std::string identifier(const Arguments& arguments, const char* key) {
  return arguments.value(key).is_number_integer() ? std::to_string(arguments.integer(key))
                                                  : arguments.string(key);
}

json jsonValue(const SettingsRecord::Value& value) {
  return std::visit([](const auto& held) { return json(held); }, value);
}

json jsonSettings(const SettingsRecord& settings) {
  json result = json::object();
  for (const auto& [key, value] : settings.values()) result[key] = jsonValue(value);
  if (!settings.columns()) return result;
  json columns = json::array();
  for (const auto& column : *settings.columns()) columns.push_back(jsonSettings(column));
  result["ColumnsKey"] = std::move(columns);
  return result;
}

// Statements.

json rows(Drive& drive, const Arguments& arguments) {
  DBInterface::FlatRows rows;
  const int status = database(drive).getRows(&rows, arguments.string("query"));
  return {{"status", status}, {"rows", rows}};
}

json execCommand(Drive& drive, const Arguments& arguments) {
  DBInterface& db = database(drive);
  const int status = db.execCommand(arguments.string("script"));
  return {{"status", status}, {"lastRowID", db.lastRowID()}};
}

json getNumberWithQuery(Drive& drive, const Arguments& arguments) {
  return {{"value", database(drive).getNumberWithQuery(arguments.string("query"))}};
}

json lastErrorMessage(Drive& drive, const Arguments&) {
  return {{"text", jsonText(database(drive).lastErrorMessage())}};
}

// Jobs.

json jobSettings(Drive& drive, const Arguments& arguments) {
  SettingsRecord settings;
  const int status = database(drive).getJobSettings(settings, identifier(arguments, "jobID"));
  return {{"status", status}, {"settings", jsonSettings(settings)}};
}

json jobFiles(Drive& drive, const Arguments& arguments) {
  std::vector<SettingsRecord> records;
  const int status = database(drive).getInputFileSettings(records, identifier(arguments, "jobID"));
  json files = json::array();
  for (const auto& record : records) files.push_back(jsonSettings(record));
  return {{"status", status}, {"files", std::move(files)}};
}

json jobFile(Drive& drive, const Arguments& arguments) {
  std::optional<std::string> jobID;
  if (arguments.has("jobID")) jobID = identifier(arguments, "jobID");
  SettingsRecord file;
  const int status = database(drive).getInputFileSettings(file, jobID, identifier(arguments, "inputFileID"));
  return {{"status", status}, {"file", jsonSettings(file)}};
}

json jobOperations(Drive& drive, const Arguments& arguments) {
  const std::string jobID = identifier(arguments, "jobID");
  std::optional<std::string> path;
  if (arguments.has("inputFilePath")) path = arguments.path("inputFilePath");
  OperationList operations;
  int status = database(drive).getOperations(operations, jobID, path);
  // An entry that was stored as it is may be under a relative path.
  if (status == DBInterface::kSuccess && operations.empty() && path)
    status = database(drive).getOperations(operations, jobID, arguments.string("inputFilePath"));
  return {{"status", status}, {"operations", jsonFromOperations(operations)}};
}

constexpr Command kCommands[] = {
    {"rows", rows},
    {"execCommand", execCommand},
    {"getNumberWithQuery", getNumberWithQuery},
    {"lastErrorMessage", lastErrorMessage},
    {"jobSettings", jobSettings},
    {"jobFiles", jobFiles},
    {"jobFile", jobFile},
    {"jobOperations", jobOperations},
};

}  // namespace

std::span<const Command> storageCommands() {
  return kCommands;
}

}  // namespace quillet::drive
