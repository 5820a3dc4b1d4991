// What the main window shows.
#include "drive/command_table.h"
#include "drive/json_values.h"

namespace quillet::drive {

namespace {

void addStatus(json& result, const StatusLine& statusLine) {
  result["status"] = {{"text", jsonText(statusLine.text())}, {"type", statusLine.type()}};
  result["statusClearShown"] = statusLine.clearButtonShown();
  result["statusColour"] = jsonColour(statusLine.colour());
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
  OperationTable& operations = application.operationTable();
  result["selectedOperations"] = jsonIndexes(operations.table().selectedRows());
  result["deleteEnabled"] = operations.deleteButton().isEnabled();
  result["path"] = jsonText(application.previewPanel().pathLabel());
  result["helpBox"] = application.rightSide().helpBoxShown();
  result["operationRows"] = jsonShownRows(operations.table());
  addPreview(result, application.previewPanel());
  return result;
}

constexpr Command kCommands[] = {
    {"mainWindow", mainWindow},
};

}  // namespace

std::span<const Command> mainWindowCommands() {
  return kCommands;
}

}  // namespace quillet::drive
