// Previews.
#include "drive/command_table.h"
#include "drive/json_values.h"

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

constexpr Command kCommands[] = {
    {"preview", preview},
    {"setPreviewType", setPreviewType},
    {"stringEncodingForSelectedFinalOperation", stringEncodingForSelectedFinalOperation},
};

}  // namespace

std::span<const Command> previewCommands() {
  return kCommands;
}

}  // namespace quillet::drive
