// The list of operations and its panels.
#include "drive/command_table.h"
#include "drive/control_values.h"
#include "drive/json_values.h"
#include "drive/sheets.h"

namespace quillet::drive {

namespace {

// The controls of the opened panel, null for none. Without "values" Done is pressed all the same.
json commitOpenedPanel(Drive& drive, const SheetWatch& watch, const Arguments& arguments) {
  const Window* sheet = watch.openedSheet();
  json opened = finishOpenedSheet(drive, watch, arguments);
  if (sheet && sheet->isShown()) sheet->doneButton()->press();
  return {{"opened", std::move(opened)}};
}

json addOperation(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  const std::int64_t code = arguments.integer("code");
  const SheetWatch watch(drive);
  if (!application.fileSelection().rows().isEmpty()) application.operationEditor().showPanelForAdding(code);
  return commitOpenedPanel(drive, watch, arguments);
}

json editOperation(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  const SheetWatch watch(drive);
  application.operationEditor().showOperationWindow();
  return commitOpenedPanel(drive, watch, arguments);
}

json selectOperations(Drive& drive, const Arguments& arguments) {
  drive.launchedApplication().operationTable().table().userSelects(arguments.indexes("rows"));
  return json::object();
}

json deleteOperations(Drive& drive, const Arguments&) {
  drive.launchedApplication().operationEditor().deleteOperationButtonClicked();
  return json::object();
}

json dropOperations(Drive& drive, const Arguments& arguments) {
  drive.launchedApplication().operationEditor().acceptDrop(arguments.indexes("rows"),
                                                           arguments.integer("row"));
  return json::object();
}

json dropRearrangeColumns(Drive& drive, const Arguments& arguments) {
  drive.launchedApplication().operationEditor().panels().rearrangeColumns().acceptDrop(
      arguments.indexes("rows"), arguments.integer("row"));
  return json::object();
}

constexpr Command kCommands[] = {
    {"addOperation", addOperation},         {"editOperation", editOperation},
    {"selectOperations", selectOperations}, {"deleteOperations", deleteOperations},
    {"dropOperations", dropOperations},     {"dropRearrangeColumns", dropRearrangeColumns},
};

}  // namespace

std::span<const Command> operationCommands() {
  return kCommands;
}

}  // namespace quillet::drive
