// Saved jobs: the sheet that saves them, and the window that shows them.
#include "drive/command_table.h"
#include "drive/json_values.h"
#include "drive/sheets.h"

namespace quillet::drive {

namespace {

constexpr std::int64_t kAnySearchType = 1;

template <typename Kind>
Kind& control(Drive& drive, const char* name) {
  return dynamic_cast<Kind&>(*drive.launchedApplication().interface().control(name));
}

// As its button or menu item does; whether that is enabled is not asked.
void perform(Drive& drive, const char* handler) {
  drive.launchedApplication().interface().commands().perform(handler);
}

json shownInSaveJobWindow(Drive& drive) {
  const auto& label = control<Label>(drive, "saveJobWindowInfoLabel");
  return {{"infoLabel", jsonText(label.text())}, {"infoLabelColour", jsonColour(label.colour())}};
}

void openSaveJobWindow(Drive& drive, const std::string& window) {
  if (!drive.launchedApplication().interface().window(window))
    throw CommandError("there is no window " + window);
  const KeyWindowForNow keyWindow(drive, window);
  perform(drive, "saveJobMenuItemClicked");
}

json saveJob(Drive& drive, const Arguments& arguments) {
  openSaveJobWindow(drive, arguments.has("window") ? arguments.string("window") : "window");
  auto& nameField = control<TextField>(drive, "saveJobWindowJobNameComboBox");
  json opened = shownInSaveJobWindow(drive);
  opened["name"] = jsonText(nameField.text());
  if (arguments.has("name")) nameField.userTypes(arguments.text("name"));
  auto& saveButton = control<Button>(drive, "saveJobWindowSaveButton");
  saveButton.press();
  json result = shownInSaveJobWindow(drive);
  result["opened"] = std::move(opened);
  result["saved"] = !saveButton.window().isShown();
  if (saveButton.window().isShown()) control<Button>(drive, "saveJobWindowCancelButton").press();
  return result;
}

json jsonPreviousJobs(const std::vector<PreviousJob>& jobs) {
  json result = json::array();
  for (const auto& job : jobs)
    for (const auto& text : {job.identifier, job.date, job.name, job.flags, job.kind}) result.push_back(text);
  return result;
}

// The text first, so that the list is read once.
json searchJobs(Drive& drive, const Arguments& arguments) {
  AppDelegate& application = drive.launchedApplication();
  control<TextField>(drive, "previousJobsWindowSearchField").userTypes(arguments.text("searchString", u""));
  auto& searchType = control<PopUpButton>(drive, "previousJobsWindowSearchTypeButton");
  searchType.selectItemWithTag(kAnySearchType);  // stands for a type that has no item
  searchType.userSelects(arguments.integer("searchType", kAnySearchType));
  return {{"previousJobsArray", jsonPreviousJobs(application.previousJobsWindow().previousJobsArray())}};
}

json selectJobs(Drive& drive, const Arguments& arguments) {
  control<Table>(drive, "previousJobsWindowJobsTableView").userSelects(arguments.indexes("rows"));
  return json::object();
}

json selectJobFiles(Drive& drive, const Arguments& arguments) {
  control<Table>(drive, "previousJobsWindowFilesTableView").userSelects(arguments.indexes("rows"));
  return json::object();
}

json namesOf(const Table& files) {
  json result = json::array();
  for (const auto& row : jsonShownRows(files)) result.push_back(row.front());
  return result;
}

json previousJobsWindow(Drive& drive, const Arguments&) {
  const auto& restore = control<Button>(drive, "previousJobsWindowRestoreOperationsButton");
  return {{"jobs", jsonShownRows(control<Table>(drive, "previousJobsWindowJobsTableView"))},
          {"files", namesOf(control<Table>(drive, "previousJobsWindowFilesTableView"))},
          {"operations", jsonShownRows(control<Table>(drive, "previousJobFileWindowOperationsTableView"))},
          {"restoreTitle", jsonText(restore.title())},
          {"restoreEnabled", restore.isEnabled()},
          {"deleteEnabled", control<Button>(drive, "previousJobsWindowDeleteJobsButton").isEnabled()},
          {"details", jsonText(control<Label>(drive, "previousJobFileWindowDetailsLabel").text())},
          {"path", jsonText(control<Label>(drive, "previousJobFileWindowFilePathLabel").text())}};
}

json saveJobName(Drive& drive, const Arguments& arguments) {
  std::optional<std::u16string> name;
  if (arguments.has("name")) name = arguments.text("name");
  drive.launchedApplication().previousJobsWindow().saveJobName(name, arguments.integer("row"));
  return json::object();
}

json deleteJobs(Drive& drive, const Arguments&) {
  drive.launchedApplication();
  perform(drive, "deleteJobsButtonClicked");
  return json::object();
}

json restoreOperations(Drive& drive, const Arguments&) {
  drive.launchedApplication();
  perform(drive, "previousJobFileWindowRestoreOperationsButtonPressed");
  return json::object();
}

constexpr Command kCommands[] = {
    {"saveJob", saveJob},
    {"searchJobs", searchJobs},
    {"selectJobs", selectJobs},
    {"selectJobFiles", selectJobFiles},
    {"previousJobsWindow", previousJobsWindow},
    {"saveJobName", saveJobName},
    {"deleteJobs", deleteJobs},
    {"restoreOperations", restoreOperations},
};

}  // namespace

std::span<const Command> jobCommands() {
  return kCommands;
}

}  // namespace quillet::drive
