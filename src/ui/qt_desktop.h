// The desktop behind real windows: alerts, prompts and file panels as sheets, the file manager, the
// clipboard, and the windows themselves, each shown and hidden as the application says.
#pragma once

#include <QHash>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>

#include "shell/desktop.h"
#include "shell/window.h"

namespace quillet::ui {

// Main thread only.
class QtDesktop final : public Alerts,
                        public Prompts,
                        public Panels,
                        public Workspace,
                        public ApplicationControl,
                        public WindowServer,
                        public Pasteboard {
 public:
  // requestTermination calls terminate later, from the event loop.
  explicit QtDesktop(std::function<void()> terminate) : terminate_(std::move(terminate)) {}

  Desktop desktop() { return {*this, *this, *this, *this, *this, *this, *this}; }

  // From now on the widget shows the window. Both outlive the desktop's use.
  void addWindow(Window& window, QWidget& widget);
  QWidget* widgetOf(const Window& window) const;
  QWidget* widgetOf(WindowName window) const;

  // The name and version of the application, over the window.
  void showAbout(QWidget& window);

  // Alerts.
  void showAlert(std::u16string_view title, std::u16string_view message) override;
  void showAlertInWindow(std::u16string_view title, std::u16string_view message, WindowName window) override;
  void askInWindow(std::u16string_view title, std::u16string_view message,
                   const std::vector<std::u16string>& buttons, WindowName window,
                   std::function<void(std::size_t)> answered) override;
  // Prompts.
  void askForText(std::u16string_view prompt, std::u16string_view info, std::u16string_view text,
                  WindowName window, std::function<void(const std::u16string&)> confirmed) override;
  // Panels.
  void chooseFiles(std::u16string_view title, std::u16string_view prompt,
                   const std::vector<std::string>& extensions,
                   std::function<void(const std::vector<std::string>&)> confirmed) override;
  void chooseFolder(std::u16string_view title, std::u16string_view prompt,
                    std::function<void(const std::vector<std::string>&)> confirmed) override;
  // Workspace.
  bool reveal(const std::vector<std::string>& paths) override;
  bool open(const std::string& pathOrAddress) override;
  // ApplicationControl.
  void requestTermination() override;
  // WindowServer.
  void makeKeyAndOrderFront(Window& window) override;
  void orderBack(Window& window) override;
  void beginSheet(Window& sheet, WindowName parent) override;
  void endSheet(Window& sheet) override;
  const Window* keyWindow() const override;
  void focus(Control& control) override;
  // Pasteboard.
  std::optional<std::u16string> readString() override;
  bool writeString(std::u16string_view text) override;

 private:
  std::function<void()> terminate_;
  std::map<const Window*, QWidget*> widgets_;
  QPointer<QWidget> keyWidget_;  // the last that was made key
};

}  // namespace quillet::ui
