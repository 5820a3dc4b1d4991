// The commands of the application: its launch and its end, the list of input files, previews and runs.
#include <fstream>
#include <iterator>
#include <limits>
#include <map>

#include "drive/command_table.h"
#include "drive/json_values.h"
#include "platform/folders.h"
#include "platform/unicode_text.h"

namespace quillet::drive {

namespace {

json setDefaults(Drive& drive, const Arguments& arguments) {
  const json& values = arguments.value("values");
  if (!values.is_object()) throw CommandError("\"values\" must be an object");
  drive.defaults().setValues(values.get<std::map<std::string, json>>());
  return json::object();
}

json getDefaults(Drive& drive, const Arguments& arguments) {
  json values = json::object();
  for (const auto& key : arguments.strings("keys")) values[key] = drive.defaults().value(key);
  return {{"values", std::move(values)}};
}

json launch(Drive& drive, const Arguments&) {
  drive.launch();
  return json::object();
}

json terminate(Drive& drive, const Arguments&) {
  drive.terminate();
  return json::object();
}

// The list of input files.

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

// Previews.

json preview(Drive& drive, const Arguments&) {
  AppDelegate& application = drive.launchedApplication();
  application.jobController().startPrepFilesThreadInBackground(StartPrep::Preview);
  const PreviewStores::Content content = application.shared().previewStores->content();
  return {{"previewInputRows", jsonRows(content.inputRows)},
          {"previewOutputRows", jsonRows(content.outputRows)},
          {"previewInputString", jsonText(content.inputString)},
          {"previewOutputString", jsonText(content.outputString)},
          {"previewInputLineSeparator", jsonText(content.inputLineSeparator)},
          {"encodedOutput", jsonText(application.previewPanel().encodedOutputText())}};
}

json setPreviewType(Drive& drive, const Arguments& arguments) {
  drive.launchedApplication().previewPanel().setPreviewType(arguments.integer("tag"));
  return json::object();
}

json stringEncodingForSelectedFinalOperation(Drive& drive, const Arguments&) {
  return {{"value", drive.launchedApplication().previewPanel().stringEncodingForSelectedFinalOperation()}};
}

// Runs.

json selectOutputFolder(Drive& drive, const Arguments&) {
  drive.launchedApplication().outputFolder().selectOutputFolder();
  return json::object();
}

json setFlags(Drive& drive, const Arguments& arguments) {
  JobState& state = *drive.launchedApplication().shared().state;
  if (arguments.has("runningJob")) state.runningJob = arguments.boolean("runningJob", false);
  return {{"runningJob", state.runningJob.load()}, {"stopJob", state.stopJob.load()}};
}

// Null where there is no log file.
json logFileText(const JobLog& log) {
  const auto path = log.path();
  if (!path || !fileExists(*path) || isFolder(*path)) return json();
  std::ifstream file(*path, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  return jsonText(toUtf16(bytes));
}

enum class RunStarted { No, Yes };

json resultOfRuns(Drive& drive, RunStarted started) {
  const auto shared = drive.launchedApplication().shared();
  drive.waitForRuns();
  const bool quit = drive.desktop().terminationRequested();
  json result = {{"log", logFileText(*shared.log)}, {"quit", quit}};
  result["outputFiles"] = started == RunStarted::Yes ? jsonPaths(shared.outputFiles->paths()) : json::array();
  if (quit) drive.terminate();
  return result;
}

json runButtonPressed(Drive& drive, const Arguments& arguments) {
  JobController& jobs = drive.launchedApplication().jobController();
  const bool wait = arguments.boolean("wait", true);
  const std::uint64_t before = jobs.runsStarted();
  jobs.runButtonPressed();
  if (!wait) return json::object();
  const bool waitsForRun = jobs.runsStarted() != before || *jobs.runsGoingOn() > 0;
  return resultOfRuns(drive, waitsForRun ? RunStarted::Yes : RunStarted::No);
}

json waitForRuns(Drive& drive, const Arguments&) {
  const bool anyRun = drive.launchedApplication().jobController().runsStarted() > 0;
  return resultOfRuns(drive, anyRun ? RunStarted::Yes : RunStarted::No);
}

json log(Drive& drive, const Arguments&) {
  json entries = json::array();
  for (const auto& entry : drive.launchedApplication().shared().log->entries())
    entries.push_back({entry.level, entry.text});
  return {{"entries", std::move(entries)}};
}

// The main window.

void addStatus(json& result, const StatusLine& statusLine) {
  result["status"] = {{"text", jsonText(statusLine.text())}, {"type", statusLine.type()}};
  result["statusClearShown"] = statusLine.clearButtonShown();
  result["statusColour"] = statusLine.colour() == TextColour::Red ? "red" : "secondaryLabel";
}

void addPreview(json& result, const PreviewPanel& preview) {
  result["previewType"] = preview.previewType();
  result["inputColumns"] = preview.inputTable().columnIdentifiers();
  result["outputColumns"] = preview.outputTable().columnIdentifiers();
  result["inputCells"] = jsonRows(preview.inputTable().shownCells());
  result["outputCells"] = jsonRows(preview.outputTable().shownCells());
  result["previewText"] = jsonText(preview.text());
}

json mainWindow(Drive& drive, const Arguments&) {
  AppDelegate& application = drive.launchedApplication();
  json result = json::object();
  addStatus(result, application.statusLine());
  result["selectedFiles"] = jsonIndexes(application.fileSelection().rows());
  result["selectedOperations"] = json::array();  // the operations table has no selection yet
  result["deleteEnabled"] = false;
  result["path"] = application.previewPanel().pathLabel();
  result["helpBox"] = application.rightSide().shownBox() == RightSideBox::Help;
  json rows = json::array();
  for (const auto& row : application.operationTable().rows())
    rows.push_back({jsonText(row[0]), jsonText(row[1]), jsonText(row[2])});
  result["operationRows"] = std::move(rows);
  addPreview(result, application.previewPanel());
  return result;
}

constexpr Command kCommands[] = {
    {"setDefaults", setDefaults},
    {"getDefaults", getDefaults},
    {"launch", launch},
    {"terminate", terminate},
    {"addInputFiles", addInputFiles},
    {"openFiles", openFiles},
    {"selectFiles", selectFiles},
    {"setInputFiles", setInputFiles},
    {"setOperations", setOperations},
    {"inputFiles", inputFiles},
    {"preview", preview},
    {"setPreviewType", setPreviewType},
    {"stringEncodingForSelectedFinalOperation", stringEncodingForSelectedFinalOperation},
    {"selectOutputFolder", selectOutputFolder},
    {"setFlags", setFlags},
    {"runButtonPressed", runButtonPressed},
    {"waitForRuns", waitForRuns},
    {"log", log},
    {"mainWindow", mainWindow},
};

}  // namespace

std::span<const Command> applicationCommands() {
  return kCommands;
}

}  // namespace quillet::drive
