// Runs, the folder that they write to, and their log.
#include <fstream>
#include <iterator>

#include "drive/command_table.h"
#include "drive/json_values.h"
#include "platform/folders.h"
#include "platform/unicode_text.h"

namespace quillet::drive {

namespace {

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

constexpr Command kCommands[] = {
    {"selectOutputFolder", selectOutputFolder},
    {"setFlags", setFlags},
    {"runButtonPressed", runButtonPressed},
    {"waitForRuns", waitForRuns},
    {"log", log},
};

}  // namespace

std::span<const Command> runCommands() {
  return kCommands;
}

}  // namespace quillet::drive
