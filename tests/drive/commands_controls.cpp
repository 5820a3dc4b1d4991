// Controls, sheets and menus, as a user sees and uses them.
#include <map>

#include "drive/command_table.h"
#include "drive/control_values.h"
#include "drive/json_values.h"
#include "drive/sheets.h"

namespace quillet::drive {

namespace {

Window& windowNamed(Drive& drive, const std::string& name) {
  Window* window = drive.launchedApplication().interface().window(name);
  if (!window) throw CommandError("there is no window " + name);
  return *window;
}

json controls(Drive& drive, const Arguments& arguments) {
  const Window& window = windowNamed(drive, arguments.string("window"));
  json described = json::object();
  for (Control* control : window.controls()) described[control->name()] = describe(*control);
  return {{"open", window.isShown()}, {"controls", std::move(described)}};
}

json setControl(Drive& drive, const Arguments& arguments) {
  setAsUser(controlNamed(drive.launchedApplication().interface(), arguments.string("name")),
            arguments.value("value"),
            arguments.boolean("endEditing", true) ? EndEditing::Yes : EndEditing::No);
  return json::object();
}

Button& buttonToPress(Drive& drive, const std::string& name) {
  Button* button = nullptr;
  if (name == "done" || name == "cancel") {
    const Window* sheet = drive.desktop().openSheet();
    if (!sheet) throw CommandError("no sheet is open");
    button = name == "done" ? sheet->doneButton() : sheet->cancelButton();
  } else {
    button = dynamic_cast<Button*>(&controlNamed(drive.launchedApplication().interface(), name));
  }
  if (!button) throw CommandError("there is no button " + name);
  return *button;
}

// A check box is a button, too: pressing it is a click that switches it over.
json press(Drive& drive, const Arguments& arguments) {
  const UserInterface& interface = drive.launchedApplication().interface();
  const std::string name = arguments.string("name");
  auto* checkBox = dynamic_cast<CheckBox*>(interface.control(name));
  if (!checkBox)
    buttonToPress(drive, name).press();
  else if (checkBox->isEnabled() && !checkBox->isHidden())
    checkBox->userSets(!checkBox->isOn());
  return json::object();
}

json doubleClick(Drive& drive, const Arguments& arguments) {
  static const std::map<std::string, std::string> tables = {{"files", "filesTableView"},
                                                            {"operations", "operationsTableView"},
                                                            {"jobs", "previousJobsWindowJobsTableView"},
                                                            {"jobFiles", "previousJobsWindowFilesTableView"}};
  const auto name = tables.find(arguments.string("table"));
  if (name == tables.end()) throw CommandError("this table has no double click");
  auto* table = dynamic_cast<Table*>(&controlNamed(drive.launchedApplication().interface(), name->second));
  const SheetWatch watch(drive);
  table->userDoubleClicks(arguments.integer("row"));
  const Window* sheet = watch.openedSheet();
  return {{"sheet", sheet ? json(sheet->name()) : json()}};
}

// A window that is not shown or stands behind its sheet cannot be closed. A sheet closes by its Cancel
// button.
bool closeAsUser(Drive& drive, Window& window) {
  if (!window.isShown() || drive.desktop().hasSheet(window)) return false;
  if (window.sheetParent() && window.cancelButton()) {
    window.cancelButton()->press();
    return !window.isShown();
  }
  if (!drive.launchedApplication().windowShouldClose(window)) return false;
  drive.desktop().closeWindow(window);
  return true;
}

json closeWindow(Drive& drive, const Arguments& arguments) {
  return {{"closed", closeAsUser(drive, windowNamed(drive, arguments.string("window")))}};
}

json menu(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  const std::string action = arguments.string("action");
  if (!application.interface().commands().has(action)) throw CommandError("there is no handler " + action);
  const bool enabled = application.validateMenuItem(action);
  const SheetWatch watch(drive);
  if (enabled) application.interface().commands().perform(action);
  return {{"performed", enabled}, {"opened", finishOpenedSheet(drive, watch, arguments)}};
}

json menuEnabled(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  std::optional<KeyWindowForNow> keyWindow;
  if (arguments.has("keyWindow")) keyWindow.emplace(drive, arguments.string("keyWindow"));
  return {{"enabled", application.validateMenuItem(arguments.string("action"))}};
}

constexpr Command kCommands[] = {
    {"controls", controls},       {"setControl", setControl},   {"press", press},
    {"doubleClick", doubleClick}, {"closeWindow", closeWindow}, {"menu", menu},
    {"menuEnabled", menuEnabled},
};

}  // namespace

std::span<const Command> controlCommands() {
  return kCommands;
}

}  // namespace quillet::drive
