// What the desktop gives to the application: one small interface each, with a real one behind the windows and
// a scripted one in tests. Used on the main thread only.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

enum class WindowName { Main, ClipboardData, PreviousJobs, Preferences };

// Messages that stop an action before it starts. Texts are already localized.
class Alerts {
 public:
  virtual ~Alerts() = default;

  virtual void showAlert(std::u16string_view title, std::u16string_view message) = 0;  // modal
  virtual void showAlertInWindow(std::u16string_view title, std::u16string_view message,
                                 WindowName window) = 0;

  // The same with the title "Error".
  void showErrorAlert(std::u16string_view message);
  void showErrorAlertInWindow(std::u16string_view message, WindowName window);
};

class Panels {
 public:
  virtual ~Panels() = default;

  // Asks for one folder in a sheet of the main window. Calls confirmed, now or later, with the paths that
  // were selected, possibly none; a cancelled panel calls nothing.
  virtual void chooseFolder(std::u16string_view title, std::u16string_view prompt,
                            std::function<void(const std::vector<std::string>& paths)> confirmed) = 0;
};

class Workspace {
 public:
  virtual ~Workspace() = default;

  // Shows the files in the file viewer. False when that fails.
  virtual bool reveal(const std::vector<std::string>& paths) = 0;
  // Opens a file in the user's application for it, or the page of an address. False when that fails.
  virtual bool open(const std::string& pathOrAddress) = 0;
};

class ApplicationControl {
 public:
  virtual ~ApplicationControl() = default;

  // Asks the application to terminate. The call returns; what it asked for happens later.
  virtual void requestTermination() = 0;
};

// One of each. All outlive the application.
struct Desktop {
  Alerts& alerts;
  Panels& panels;
  Workspace& workspace;
  ApplicationControl& application;
};

}  // namespace quillet
