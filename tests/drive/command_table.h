// From a command's name to the function that carries it out. A new command is one more row in the table of
// its subject.
#pragma once

#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>

#include "drive/arguments.h"
#include "drive/drive.h"

namespace quillet::drive {

struct Command {
  std::string_view name;
  // An object of the keys of the result beside "ok". Throws CommandError.
  json (*carryOut)(Drive& drive, const Arguments& arguments);
};

std::span<const Command> pureOperations();  // of {"do":"call","name":...}
// Of {"do":...}, by subject.
std::span<const Command> clipboardCommands();
std::span<const Command> controlCommands();
std::span<const Command> fileCommands();
std::span<const Command> jobCommands();
std::span<const Command> mainWindowCommands();
std::span<const Command> operationCommands();
std::span<const Command> previewCommands();
std::span<const Command> runCommands();
std::span<const Command> sessionCommands();
std::span<const Command> storageCommands();

// The whole result of one line. Throws CommandError.
json carryOut(Drive& drive, const std::string& line);

}  // namespace quillet::drive
