#include "drive/scripted_desktop.h"

#include "drive/json_values.h"
#include "platform/system_log.h"

namespace quillet::drive {

namespace {

const char* nameOf(WindowName window) {
  switch (window) {
    case WindowName::Main:
      return "window";
    case WindowName::ClipboardData:
      return "clipboardDataWindow";
    case WindowName::PreviousJobs:
      return "previousJobsWindow";
    case WindowName::Preferences:
      return "preferencesWindow";
  }
  return "";
}

void moveTo(json& result, const char* key, json& list) {
  if (list.empty()) return;
  result[key] = std::move(list);
  list = json::array();
}

}  // namespace

ScriptedDesktop::ScriptedDesktop() {
  setSystemLogSink([this](std::u16string_view line) {
    const std::lock_guard lock(systemLogMutex_);
    systemLog_.push_back(jsonText(line));
  });
}

ScriptedDesktop::~ScriptedDesktop() {
  setSystemLogSink({});
}

void ScriptedDesktop::takeAnswers(const Arguments& command) {
  panelAnswer_.reset();
  if (command.has("panel")) panelAnswer_ = command.paths("panel");
  // No alert with a choice and no prompt exists yet; a wrong answer is told all the same.
  command.text("answer", u"");
  command.text("prompt", u"");
  workspaceFails_ = command.boolean("workspaceFails", false);
}

void ScriptedDesktop::addEventsTo(json& result) {
  moveTo(result, "alerts", alerts_);
  moveTo(result, "revealed", revealed_);
  moveTo(result, "workspaceOpened", opened_);
  const std::lock_guard lock(systemLogMutex_);
  moveTo(result, "systemLog", systemLog_);
}

void ScriptedDesktop::showAlert(std::u16string_view title, std::u16string_view message) {
  alerts_.push_back(
      {{"title", jsonText(title)}, {"message", jsonText(message)}, {"sheet", false}, {"window", ""}});
}

void ScriptedDesktop::showAlertInWindow(std::u16string_view title, std::u16string_view message,
                                        WindowName window) {
  alerts_.push_back({{"title", jsonText(title)},
                     {"message", jsonText(message)},
                     {"sheet", true},
                     {"window", nameOf(window)}});
}

void ScriptedDesktop::chooseFolder(std::u16string_view, std::u16string_view,
                                   std::function<void(const std::vector<std::string>&)> confirmed) {
  if (panelAnswer_) confirmed(*panelAnswer_);
}

bool ScriptedDesktop::reveal(const std::vector<std::string>& paths) {
  revealed_.push_back(jsonPaths(paths));
  return !workspaceFails_;
}

bool ScriptedDesktop::open(const std::string& pathOrAddress) {
  opened_.push_back(pathOrAddress);
  return !workspaceFails_;
}

}  // namespace quillet::drive
