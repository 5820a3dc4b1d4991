// The list of input files.
#include <limits>

#include "drive/command_table.h"
#include "drive/json_values.h"

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
  return json::object();
}

json setOperations(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  const std::int64_t index = arguments.integer("index");
  if (index < 0 || !application.inputFileList().setOperations(static_cast<std::size_t>(index),
                                                              arguments.operations("operations")))
    throw CommandError("there is no input file of this index");
  return json::object();
}

json inputFiles(Drive& drive, const Arguments&) {
  json entries = json::array();
  for (const auto& file : drive.launchedApplication().shared().files->all())
    entries.push_back(jsonInputFile(*file));
  return {{"inputFilesArray", std::move(entries)}};
}

constexpr Command kCommands[] = {
    {"addInputFiles", addInputFiles}, {"openFiles", openFiles},         {"selectFiles", selectFiles},
    {"setInputFiles", setInputFiles}, {"setOperations", setOperations}, {"inputFiles", inputFiles},
};

}  // namespace

std::span<const Command> fileCommands() {
  return kCommands;
}

}  // namespace quillet::drive
