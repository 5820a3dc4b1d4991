// The list of input files.
#include <limits>
#include <map>

#include "drive/command_table.h"
#include "drive/json_values.h"
#include "shell/table_keys.h"

namespace quillet::drive {

namespace {

json addInputFiles(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  const std::int64_t row = arguments.integer("row", std::numeric_limits<std::int64_t>::max());
  if (row < 0) throw CommandError("\"row\" must not be negative");
  application.inputFileList().addInputFiles(
      arguments.paths("paths"), static_cast<std::size_t>(row),
      arguments.boolean("selectFiles", false) ? SelectFiles::Yes : SelectFiles::No,
      arguments.boolean("restoreOperations", false) ? RestoreOperations::Yes : RestoreOperations::No);
  return json::object();
}

json openFiles(Drive& drive, const Arguments& arguments) {
  drive.application().openFiles(arguments.paths("paths"));
  return json::object();
}

json selectFiles(Drive& drive, const Arguments& arguments) {
  drive.launchedApplication().fileSelection().select(arguments.indexes("rows"));
  return json::object();
}

json setInputFiles(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  const json& entries = arguments.value("entries");
  if (!entries.is_array()) throw CommandError("\"entries\" must be a list");
  std::vector<InputFile> files;
  for (const auto& entry : entries) files.push_back(inputFileFromCommand(entry));
  application.inputFileList().setInputFiles(std::move(files));
  application.operationTable().reloadTable();  // rows that are gone are not selected any more
  return json::object();
}

json setOperations(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  const std::int64_t index = arguments.integer("index");
  if (index < 0 || !application.inputFileList().setOperations(static_cast<std::size_t>(index),
                                                              arguments.operations("operations")))
    throw CommandError("there is no input file of this index");
  application.operationTable().reloadTable();
  return json::object();
}

json inputFiles(Drive& drive, const Arguments&) {
  json entries = json::array();
  for (const auto& file : drive.launchedApplication().shared().files->all())
    entries.push_back(jsonInputFile(*file));
  return {{"inputFilesArray", std::move(entries)}};
}

json dropFiles(Drive& drive, const Arguments& arguments) {
  drive.launchedApplication().fileCommands().acceptDrop({arguments.indexes("rows"), {}},
                                                        arguments.integer("row"));
  return json::object();
}

json dropPaths(Drive& drive, const Arguments& arguments) {
  drive.launchedApplication().fileCommands().acceptDrop({std::nullopt, arguments.paths("paths")},
                                                        arguments.integer("row"));
  return json::object();
}

json removeSelectedInputFiles(Drive& drive, const Arguments&) {
  drive.launchedApplication().fileCommands().removeSelectedInputFilesMenuItemClicked();
  return json::object();
}

json addInputFileMenuItemClicked(Drive& drive, const Arguments&) {
  drive.launchedApplication().fileCommands().addInputFileMenuItemClicked();
  return json::object();
}

DragType dragTypeNamed(const std::string& name) {
  if (name == "fileNames") return DragType::FileNames;
  if (name == "string") return DragType::String;
  const auto type = privateDragTypeNamed(name);
  if (!type) throw CommandError("there is no type " + name);
  return *type;
}

template <typename Value>
const Value& valueNamed(const std::map<std::string, Value>& values, const std::string& name) {
  const auto found = values.find(name);
  if (found == values.end()) throw CommandError("unknown table: " + name);
  return found->second;
}

json validateDropOnTable(Drive& drive, const Arguments& arguments) {
  static const std::map<std::string, DropTable> tables = {{"files", DropTable::Files},
                                                          {"operations", DropTable::Operations},
                                                          {"rearrangeColumns", DropTable::RearrangeColumns}};
  drive.launchedApplication();
  std::vector<DragType> types;
  for (const auto& name : arguments.strings("types")) types.push_back(dragTypeNamed(name));
  return {{"operation", validateDrop(valueNamed(tables, arguments.string("table")), types)}};
}

const std::string& nameOfTable(const Arguments& arguments) {
  static const std::map<std::string, std::string> names = {
      {"files", "filesTableView"},
      {"operations", "operationsTableView"},
      {"jobs", "previousJobsWindowJobsTableView"},
      {"jobFiles", "previousJobsWindowFilesTableView"},
      {"log", "logTableView"},
      {"rearrangeColumns", "rearrangeColumnsOperationWindowColumnsTableView"},
      {"input", "previewTableView"},
      {"output", "previewOutputTableView"},
  };
  return valueNamed(names, arguments.string("table"));
}

json paste(Drive& drive, const Arguments& arguments) {
  drive.launchedApplication();
  return {{"handled", swallowsPaste(nameOfTable(arguments))}};
}

json tableKey(Drive& drive, const Arguments& arguments) {
  static const std::map<std::string, char16_t> keys = {{"space", kSpaceKey}, {"return", kReturnKey}};
  drive.launchedApplication();
  const auto key = keys.find(arguments.string("key"));
  if (key == keys.end()) throw CommandError("\"key\" must be space or return");
  return {{"handled", swallowsKey(nameOfTable(arguments), key->second)}};
}

constexpr Command kCommands[] = {
    {"addInputFiles", addInputFiles},
    {"openFiles", openFiles},
    {"selectFiles", selectFiles},
    {"setInputFiles", setInputFiles},
    {"setOperations", setOperations},
    {"inputFiles", inputFiles},
    {"dropFiles", dropFiles},
    {"dropPaths", dropPaths},
    {"removeSelectedInputFiles", removeSelectedInputFiles},
    {"addInputFileMenuItemClicked", addInputFileMenuItemClicked},
    {"validateDrop", validateDropOnTable},
    {"paste", paste},
    {"tableKey", tableKey},
};

}  // namespace

std::span<const Command> fileCommands() {
  return kCommands;
}

}  // namespace quillet::drive
