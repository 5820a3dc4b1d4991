// What the desktop gives to the application: one small interface each, with a real one behind the windows and
// a scripted one in tests. Used on the main thread only.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clipboard/pasteboard.h"

namespace quillet {

class Control;
class Window;

enum class WindowName { Main, ClipboardData, PreviousJobs, Preferences };
// The name of the window's object: "window", "clipboardDataWindow"...
std::string nameOf(WindowName window);

// Messages that stop an action before it starts. Texts are already localized.
class Alerts {
 public:
  virtual ~Alerts() = default;

  virtual void showAlert(std::u16string_view title, std::u16string_view message) = 0;  // modal
  virtual void showAlertInWindow(std::u16string_view title, std::u16string_view message,
                                 WindowName window) = 0;
  // A question in a sheet. Calls answered, now or later, with the index of the button that was pressed.
  virtual void askInWindow(std::u16string_view title, std::u16string_view message,
                           const std::vector<std::u16string>& buttons, WindowName window,
                           std::function<void(std::size_t button)> answered) = 0;

  // The same with the title "Error".
  void showErrorAlert(std::u16string_view message);
  void showErrorAlertInWindow(std::u16string_view message, WindowName window);
};

class Prompts {
 public:
  virtual ~Prompts() = default;

  // Asks for one line of text in a sheet with OK and Cancel; the field holds text at first. Calls confirmed,
  // now or later, with what the field holds when OK is pressed; a cancelled prompt calls nothing. info may be
  // empty.
  virtual void askForText(std::u16string_view prompt, std::u16string_view info, std::u16string_view text,
                          WindowName window, std::function<void(const std::u16string& text)> confirmed) = 0;
};

class Panels {
 public:
  virtual ~Panels() = default;

  // Asks for files in a sheet of the main window; extensions without a dot. As chooseFolder otherwise.
  virtual void chooseFiles(std::u16string_view title, std::u16string_view prompt,
                           const std::vector<std::string>& extensions,
                           std::function<void(const std::vector<std::string>& paths)> confirmed) = 0;

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

// The order of windows, and which of them the keys go to. It shows and hides the windows that it is given.
class WindowServer {
 public:
  virtual ~WindowServer() = default;

  virtual void makeKeyAndOrderFront(Window& window) = 0;
  virtual void orderBack(Window& window) = 0;  // shows it behind the others; the key window stays
  virtual void beginSheet(Window& sheet, WindowName parent) = 0;
  virtual void endSheet(Window& sheet) = 0;
  // Null when none of the application's is; a window with a sheet is not key, its sheet is.
  virtual const Window* keyWindow() const = 0;
  virtual void focus(Control& control) = 0;

  bool isKey(WindowName window) const;
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
  Prompts& prompts;
  Panels& panels;
  Workspace& workspace;
  ApplicationControl& application;
  WindowServer& windows;
  Pasteboard& pasteboard;
};

}  // namespace quillet
