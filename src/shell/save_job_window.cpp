#include "shell/save_job_window.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "platform/localization.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr const char* kLastJobNameKey = "LastJobName";

}  // namespace

SaveJobWindow::SaveJobWindow(UserInterface& interface, Window& mainWindow, const Neighbours& neighbours,
                             std::function<void()> jobSaved)
    : neighbours_(neighbours),
      jobSaved_(std::move(jobSaved)),
      saveJobButton_(mainWindow, "saveJobButton", localized(u"Save Job…"), "saveJobMenuItemClicked"),
      window_(interface, "saveJobWindow", localized(u"Save Job")),
      nameField_(window_, "saveJobWindowJobNameComboBox"),
      infoLabel_(window_, "saveJobWindowInfoLabel"),
      cancelButton_(window_, "saveJobWindowCancelButton", localized(u"Cancel"),
                    "saveJobWindowCancelButtonClicked"),
      saveButton_(window_, "saveJobWindowSaveButton", localized(u"Save"), "saveJobWindowSaveButtonClicked") {
  window_.setSheetButtons(saveButton_, cancelButton_);
}

void SaveJobWindow::addCommandsTo(Commands& commands) {
  commands.add("saveJobMenuItemClicked", [this] { saveJobMenuItemClicked(); });
  commands.add("saveJobWindowSaveButtonClicked", [this] { saveJobWindowSaveButtonClicked(); });
  commands.add("saveJobWindowCancelButtonClicked", [this] { saveJobWindowCancelButtonClicked(); });
}

void SaveJobWindow::tell(std::u16string_view key, TextColour colour) {
  infoLabel_.setText(localized(key));
  infoLabel_.setColour(colour);
}

void SaveJobWindow::saveJobMenuItemClicked() {
  tell(u"Any job with the same name will be overwritten.", TextColour::SecondaryLabel);
  nameField_.setText(neighbours_.defaults.stringForKey(kLastJobNameKey).value_or(u""));
  const bool overMainWindow = neighbours_.windows.isKey(WindowName::Main);
  neighbours_.windows.beginSheet(window_, overMainWindow ? WindowName::Main : WindowName::ClipboardData);
}

void SaveJobWindow::saveJobWindowSaveButtonClicked() {
  const std::u16string name = nameField_.text();
  if (name.empty()) return tell(u"Job name is required.", TextColour::Red);
  if (!save(name)) return tell(u"Could not save the job.", TextColour::Red);
  neighbours_.defaults.setValue(kLastJobNameKey, toUtf8(name));
  neighbours_.windows.endSheet(window_);
  jobSaved_();
}

bool SaveJobWindow::save(std::u16string_view name) {
  DBInterface& database = neighbours_.database;
  if (window_.sheetParent() == WindowName::ClipboardData) {
    const OperationList& operations = neighbours_.clipboard.clipboardDataOperationsArray();
    return database.saveJobNamed(name, nullptr, &operations) == DBInterface::kSuccess;
  }
  const DBInterface::InputFileEntries files = neighbours_.inputFiles.all();
  return database.saveJobNamed(name, &files, nullptr) == DBInterface::kSuccess;
}

void SaveJobWindow::saveJobWindowCancelButtonClicked() {
  neighbours_.windows.endSheet(window_);
}

}  // namespace quillet
