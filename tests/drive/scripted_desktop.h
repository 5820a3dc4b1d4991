// A desktop without windows: alerts, panels and calls to other programs are answered from the command at hand
// and written down for its result.
#pragma once

#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "drive/arguments.h"
#include "shell/desktop.h"

namespace quillet::drive {

class ScriptedDesktop final : public Alerts, public Panels, public Workspace, public ApplicationControl {
 public:
  ScriptedDesktop();  // takes the system log until it goes
  ~ScriptedDesktop() override;

  // Takes the answers that the command brings; those of the command before are gone.
  void takeAnswers(const Arguments& command);

  // Adds what has happened since the last call: "alerts", "systemLog", "revealed", "workspaceOpened".
  void addEventsTo(json& result);

  bool terminationRequested() const { return terminationRequested_; }
  void forgetTerminationRequest() { terminationRequested_ = false; }

  Desktop desktop() { return {*this, *this, *this, *this}; }

  void showAlert(std::u16string_view title, std::u16string_view message) override;
  void showAlertInWindow(std::u16string_view title, std::u16string_view message, WindowName window) override;
  void chooseFolder(std::u16string_view title, std::u16string_view prompt,
                    std::function<void(const std::vector<std::string>&)> confirmed) override;
  bool reveal(const std::vector<std::string>& paths) override;
  bool open(const std::string& pathOrAddress) override;
  void requestTermination() override { terminationRequested_ = true; }

 private:
  std::optional<std::vector<std::string>> panelAnswer_;
  bool workspaceFails_ = false;
  bool terminationRequested_ = false;
  json alerts_ = json::array();
  json revealed_ = json::array();
  json opened_ = json::array();
  std::mutex systemLogMutex_;  // lines come from any thread
  json systemLog_ = json::array();
};

}  // namespace quillet::drive
