#include "drive/scripted_desktop.h"

#include <algorithm>

#include "drive/json_values.h"
#include "platform/system_log.h"

namespace quillet::drive {

namespace {

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
  answer_.reset();
  if (command.has("answer")) answer_ = command.text("answer");
  promptAnswer_.reset();
  if (command.has("prompt")) promptAnswer_ = command.text("prompt");
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

// Without an answer the last button is pressed, which is the harmless one.
void ScriptedDesktop::askInWindow(std::u16string_view title, std::u16string_view message,
                                  const std::vector<std::u16string>& buttons, WindowName window,
                                  std::function<void(std::size_t)> answered) {
  showAlertInWindow(title, message, window);
  const auto pressed = std::find(buttons.begin(), buttons.end(), answer_.value_or(u""));
  const std::ptrdiff_t last = std::ssize(buttons) - 1;
  answered(static_cast<std::size_t>(std::min(pressed - buttons.begin(), last)));
}

void ScriptedDesktop::askForText(std::u16string_view, std::u16string_view, std::u16string_view, WindowName,
                                 std::function<void(const std::u16string&)> confirmed) {
  if (promptAnswer_) confirmed(*promptAnswer_);
}

bool ScriptedDesktop::writeString(std::u16string_view text) {
  pasteboard_ = text;
  return true;
}

void ScriptedDesktop::chooseFiles(std::u16string_view, std::u16string_view, const std::vector<std::string>&,
                                  std::function<void(const std::vector<std::string>&)> confirmed) {
  if (panelAnswer_) confirmed(*panelAnswer_);
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

void ScriptedDesktop::makeKeyAndOrderFront(Window& window) {
  std::erase(order_, &window);
  order_.insert(order_.begin(), &window);
  key_ = &window;
  window.show();
}

void ScriptedDesktop::orderBack(Window& window) {
  std::erase(order_, &window);
  order_.push_back(&window);
  window.show();
}

void ScriptedDesktop::beginSheet(Window& sheet, WindowName parent) {
  std::erase(sheets_, &sheet);
  sheets_.push_back(&sheet);
  ++sheetsBegun_;
  sheet.show(parent);
}

void ScriptedDesktop::endSheet(Window& sheet) {
  std::erase(sheets_, &sheet);
  sheet.hide();
}

const Window* ScriptedDesktop::keyWindow() const {
  if (pretendedKeyWindow_) return *pretendedKeyWindow_;
  const Window* sheet = key_ ? sheetOn(*key_) : nullptr;
  return sheet ? sheet : key_;
}

const Window* ScriptedDesktop::sheetOn(const Window& window) const {
  const auto hangsOnIt = [&](const Window* sheet) { return nameOf(*sheet->sheetParent()) == window.name(); };
  const auto sheet = std::find_if(sheets_.rbegin(), sheets_.rend(), hangsOnIt);
  return sheet == sheets_.rend() ? nullptr : *sheet;
}

void ScriptedDesktop::closeWindow(Window& window) {
  std::erase(order_, &window);
  std::erase(sheets_, &window);
  window.hide();
  if (key_ == &window) key_ = order_.empty() ? nullptr : order_.front();
}

void ScriptedDesktop::forgetWindows() {
  order_.clear();
  sheets_.clear();
  key_ = nullptr;
  focused_ = nullptr;
}

}  // namespace quillet::drive
