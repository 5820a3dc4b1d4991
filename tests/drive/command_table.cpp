#include "drive/command_table.h"

#include <algorithm>
#include <vector>

namespace quillet::drive {

namespace {

// Nothing that a command means is nested deeper; what is would exhaust the stack of those who walk it.
constexpr int kDeepest = 100;

json parsed(const std::string& line) {
  bool tooDeep = false;
  const auto watchDepth = [&tooDeep](int depth, json::parse_event_t, const json&) {
    tooDeep = tooDeep || depth > kDeepest;
    return !tooDeep;
  };
  json command = json::parse(line, watchDepth, false);
  if (tooDeep || !command.is_object()) throw CommandError("the line is not one JSON object");
  return command;
}

std::vector<Command> allCommands() {
  std::vector<Command> result;
  for (const auto table :
       {clipboardCommands(), controlCommands(), fileCommands(), jobCommands(), mainWindowCommands(),
        operationCommands(), previewCommands(), runCommands(), sessionCommands(), storageCommands()})
    result.insert(result.end(), table.begin(), table.end());
  return result;
}

std::span<const Command> applicationCommands() {
  static const std::vector<Command> commands = allCommands();
  return commands;
}

const Command& commandNamed(std::span<const Command> table, const json& object, const char* key) {
  const auto name = object.find(key);
  if (name == object.end() || !name->is_string())
    throw CommandError("\"" + std::string(key) + "\" must be a text");
  const auto& text = name->get_ref<const std::string&>();
  const auto found =
      std::find_if(table.begin(), table.end(), [&](const Command& row) { return row.name == text; });
  if (found == table.end()) throw CommandError("unknown \"" + std::string(key) + "\": " + text);
  return *found;
}

}  // namespace

json carryOut(Drive& drive, const std::string& line) {
  const json object = parsed(line);
  const Arguments arguments(object, drive.root());
  drive.desktop().takeAnswers(arguments);
  const auto action = object.find("do");
  const bool isCall = action != object.end() && *action == "call";
  const Command& command = isCall ? commandNamed(pureOperations(), object, "name")
                                  : commandNamed(applicationCommands(), object, "do");
  drive.doWaitingWork();
  json result = command.carryOut(drive, arguments);
  result["ok"] = true;
  return result;
}

}  // namespace quillet::drive
