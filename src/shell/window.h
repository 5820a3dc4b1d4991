// A window or a sheet without a toolkit: its name, whether it is shown, and its controls. A sheet hangs on
// one of the windows; its Done and Cancel buttons are known by their roles.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/commands.h"
#include "shell/desktop.h"

namespace quillet {

class Button;
class Control;
class Window;

// All windows and sheets, and the commands that their controls perform. Main thread only.
class UserInterface {
 public:
  Commands& commands() { return commands_; }
  const Commands& commands() const { return commands_; }

  const std::vector<Window*>& windows() const { return windows_; }  // in the order of their making
  Window* window(std::string_view name) const;                      // null when there is none
  Control* control(std::string_view name) const;                    // of any window; null when there is none

 private:
  friend class Window;
  Commands commands_;
  std::vector<Window*> windows_;
};

// Main thread only.
class Window {
 public:
  // interface outlives the use of the window. The title is localized.
  Window(UserInterface& interface, std::string name, std::u16string title);
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  const std::string& name() const { return name_; }
  const std::u16string& title() const { return title_; }
  void setTitle(std::u16string title);

  const std::vector<Control*>& controls() const { return controls_; }  // in the order of their making
  Control* control(std::string_view name) const;                       // null when there is none

  bool isShown() const { return isShown_; }
  std::optional<WindowName> sheetParent() const { return sheetParent_; }  // of a sheet that is shown

  // Of the desktop, which alone shows and hides.
  void show() { show(std::nullopt); }
  void show(std::optional<WindowName> sheetParent);
  void hide();

  // Of a sheet.
  Button* doneButton() const { return doneButton_; }
  Button* cancelButton() const { return cancelButton_; }
  void setSheetButtons(Button& done, Button& cancel);

  // What shows the window; called after every change. One at most.
  void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }

 private:
  friend class Control;
  void changed() const;

  const UserInterface& interface_;
  std::string name_;
  std::u16string title_;
  std::vector<Control*> controls_;
  bool isShown_ = false;
  std::optional<WindowName> sheetParent_;
  Button* doneButton_ = nullptr;
  Button* cancelButton_ = nullptr;
  std::function<void()> observer_;
};

}  // namespace quillet
