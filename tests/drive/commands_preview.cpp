// Previews.
#include <map>

#include "drive/command_table.h"
#include "drive/json_values.h"
#include "shell/preview_cells.h"
#include "shell/table_keys.h"

namespace quillet::drive {

namespace {

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

Table& previewTable(PreviewPanel& panel, const std::string& name) {
  if (name == "input") return panel.inputTable().table();
  if (name == "output") return panel.outputTable().table();
  throw CommandError("\"table\" must be input or output");
}

// A key without a meaning here stands for all others.
char16_t keyNamed(const std::string& name) {
  static const std::map<std::string, char16_t> keys = {
      {"up", kUpArrowKey}, {"down", kDownArrowKey}, {"return", kReturnKey}, {"space", kSpaceKey}};
  const auto key = keys.find(name);
  return key == keys.end() ? u'x' : key->second;
}

json previewKey(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  Table& table = previewTable(application.previewPanel(), arguments.string("table"));
  const char16_t key = keyNamed(arguments.string("key"));
  const PreviewKeyPress press = {key, arguments.boolean("option", false),
                                 arguments.boolean("command", false)};
  if (arguments.has("selectedRow")) table.userSelects(IndexSet{arguments.integer("selectedRow")});
  const bool handled = application.previewKeys().keyDown(table, press);
  return {{"selectedRow", table.selectedRow()},
          {"startPreviewFromLine", application.previewPanel().startPreviewFromLine()},
          {"standard", !handled}};
}

json previewCellIsEmpty(Drive& drive, const Arguments& arguments) {
  return {{"empty", previewTableCellViewIsEmpty(*drive.launchedApplication().shared().previewStores,
                                                arguments.integer("tag"))}};
}

constexpr Command kCommands[] = {
    {"preview", preview},
    {"setPreviewType", setPreviewType},
    {"previewKey", previewKey},
    {"previewCellIsEmpty", previewCellIsEmpty},
    {"stringEncodingForSelectedFinalOperation", stringEncodingForSelectedFinalOperation},
};

}  // namespace

std::span<const Command> previewCommands() {
  return kCommands;
}

}  // namespace quillet::drive
