// A desktop without windows: alerts, panels and calls to other programs are answered from the command at hand
// and written down for its result.
#pragma once

#include <cstdint>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "drive/arguments.h"
#include "shell/desktop.h"
#include "shell/window.h"

namespace quillet::drive {

class ScriptedDesktop final : public Alerts,
                              public Prompts,
                              public Panels,
                              public Workspace,
                              public ApplicationControl,
                              public WindowServer,
                              public Pasteboard {
 public:
  ScriptedDesktop();  // takes the system log until it goes
  ~ScriptedDesktop() override;

  // Takes the answers that the command brings; those of the command before are gone.
  void takeAnswers(const Arguments& command);

  // Adds what has happened since the last call: "alerts", "systemLog", "revealed", "workspaceOpened".
  void addEventsTo(json& result);

  bool terminationRequested() const { return terminationRequested_; }
  void forgetTerminationRequest() { terminationRequested_ = false; }

  Desktop desktop() { return {*this, *this, *this, *this, *this, *this, *this}; }

  void showAlert(std::u16string_view title, std::u16string_view message) override;
  void showAlertInWindow(std::u16string_view title, std::u16string_view message, WindowName window) override;
  void askInWindow(std::u16string_view title, std::u16string_view message,
                   const std::vector<std::u16string>& buttons, WindowName window,
                   std::function<void(std::size_t)> answered) override;
  void askForText(std::u16string_view prompt, std::u16string_view info, std::u16string_view text,
                  WindowName window, std::function<void(const std::u16string&)> confirmed) override;
  void chooseFiles(std::u16string_view title, std::u16string_view prompt,
                   const std::vector<std::string>& extensions,
                   std::function<void(const std::vector<std::string>&)> confirmed) override;
  void chooseFolder(std::u16string_view title, std::u16string_view prompt,
                    std::function<void(const std::vector<std::string>&)> confirmed) override;
  bool reveal(const std::vector<std::string>& paths) override;
  bool open(const std::string& pathOrAddress) override;
  void requestTermination() override { terminationRequested_ = true; }

  void makeKeyAndOrderFront(Window& window) override;
  void orderBack(Window& window) override;
  void beginSheet(Window& sheet, WindowName parent) override;
  void endSheet(Window& sheet) override;
  const Window* keyWindow() const override;
  void focus(Control& control) override { focused_ = &control; }

  std::optional<std::u16string> readString() override { return pasteboard_; }
  bool writeString(std::u16string_view text) override;
  // What another program puts on the clipboard; nothing: no text.
  void setPasteboard(std::optional<std::u16string> text) { pasteboard_ = std::move(text); }

  // As a user closes it; the next one that is shown becomes key.
  void closeWindow(Window& window);
  Window* openSheet() const { return sheets_.empty() ? nullptr : sheets_.back(); }  // the latest
  bool hasSheet(const Window& window) const { return sheetOn(window) != nullptr; }
  std::uint64_t sheetsBegun() const { return sheetsBegun_; }
  const Control* focused() const { return focused_; }
  void pretendKeyWindow(const Window* window) { pretendedKeyWindow_ = window; }
  void forgetPretendedKeyWindow() { pretendedKeyWindow_.reset(); }
  void forgetWindows();  // of an application that has ended

 private:
  const Window* sheetOn(const Window& window) const;  // the latest; null when there is none

  std::optional<std::vector<std::string>> panelAnswer_;
  std::optional<std::u16string> answer_;
  std::optional<std::u16string> promptAnswer_;
  std::optional<std::u16string> pasteboard_;  // stays from one application to the next
  std::vector<Window*> order_;                // those that are shown, without sheets; the front one first
  std::vector<Window*> sheets_;               // those that are shown, in the order of their opening
  std::uint64_t sheetsBegun_ = 0;
  Window* key_ = nullptr;  // of order_
  std::optional<const Window*> pretendedKeyWindow_;
  const Control* focused_ = nullptr;
  bool workspaceFails_ = false;
  bool terminationRequested_ = false;
  json alerts_ = json::array();
  json revealed_ = json::array();
  json opened_ = json::array();
  std::mutex systemLogMutex_;  // lines come from any thread
  json systemLog_ = json::array();
};

}  // namespace quillet::drive
