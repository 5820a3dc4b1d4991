// Settings, the launch and the end of the application, and its help.
#include <map>

#include "drive/command_table.h"
#include "shell/controls.h"

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

// The buttons of the application have texts of their own; this one stands in none of its windows.
json helpButtonPressed(Drive& drive, const Arguments& arguments) {
  UserInterface elsewhere;
  Window window(elsewhere, "", {});
  Button button(window, "", {}, {});
  button.setToolTip(arguments.text("toolTip", u""));
  drive.launchedApplication().interface().commands().perform("helpButtonPressed", &button);
  return json::object();
}

constexpr Command kCommands[] = {
    {"setDefaults", setDefaults},
    {"getDefaults", getDefaults},
    {"launch", launch},
    {"terminate", terminate},
    {"helpButtonPressed", helpButtonPressed},
};

}  // namespace

std::span<const Command> sessionCommands() {
  return kCommands;
}

}  // namespace quillet::drive
