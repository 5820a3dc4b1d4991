// A desktop for one test: it shows and hides the windows that it is given and writes down what it was asked,
// one text an event.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/unicode_text.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "shell/window.h"

namespace quillet::testing {

class RecordingDesktop final : public Alerts,
                               public Prompts,
                               public Panels,
                               public Workspace,
                               public ApplicationControl,
                               public WindowServer,
                               public Pasteboard {
 public:
  Desktop desktop() { return {*this, *this, *this, *this, *this, *this, *this}; }

  struct FilePanel {
    std::u16string title;
    std::u16string prompt;
    std::vector<std::string> extensions;
    std::function<void(const std::vector<std::string>&)> confirmed;
  };

  struct Prompt {
    std::u16string info;
    std::u16string text;
    std::function<void(const std::u16string&)> confirmed;
  };

  struct Question {
    std::vector<std::u16string> buttons;
    std::function<void(std::size_t)> answered;
  };

  std::vector<std::string> events;
  std::optional<FilePanel> filePanel;  // the last one; it stays open for the test to confirm
  std::optional<Question> question;    // the last one; it stays open for the test to answer
  std::optional<Prompt> prompt;        // the last one; it stays open for the test to confirm
  std::optional<std::u16string> pasteboard;
  bool pasteboardFails = false;
  const Window* key = nullptr;
  std::optional<std::vector<std::string>> panelAnswer;  // nothing: cancelled
  bool workspaceFails = false;

  void showAlert(std::u16string_view title, std::u16string_view message) override {
    events.push_back("alert " + toUtf8(title) + "|" + toUtf8(message));
  }
  void showAlertInWindow(std::u16string_view title, std::u16string_view message, WindowName window) override {
    events.push_back("sheet of " + nameOf(window) + " " + toUtf8(title) + "|" + toUtf8(message));
  }
  void askInWindow(std::u16string_view title, std::u16string_view, const std::vector<std::u16string>& buttons,
                   WindowName, std::function<void(std::size_t)> answered) override {
    events.push_back("question " + toUtf8(title));
    question = Question{buttons, std::move(answered)};
  }
  void askForText(std::u16string_view prompted, std::u16string_view info, std::u16string_view text,
                  WindowName window, std::function<void(const std::u16string&)> confirmed) override {
    events.push_back("prompt on " + nameOf(window) + " " + toUtf8(prompted));
    prompt = Prompt{std::u16string(info), std::u16string(text), std::move(confirmed)};
  }
  std::optional<std::u16string> readString() override { return pasteboard; }
  bool writeString(std::u16string_view text) override {
    if (!pasteboardFails) pasteboard = text;
    return !pasteboardFails;
  }
  void chooseFiles(std::u16string_view title, std::u16string_view prompted,
                   const std::vector<std::string>& extensions,
                   std::function<void(const std::vector<std::string>&)> confirmed) override {
    filePanel = FilePanel{std::u16string(title), std::u16string(prompted), extensions, std::move(confirmed)};
  }
  void chooseFolder(std::u16string_view title, std::u16string_view prompted,
                    std::function<void(const std::vector<std::string>&)> confirmed) override {
    events.push_back("panel " + toUtf8(title) + "|" + toUtf8(prompted));
    if (panelAnswer) confirmed(*panelAnswer);
  }
  bool reveal(const std::vector<std::string>& paths) override {
    for (const auto& path : paths) events.push_back("reveal " + path);
    return !workspaceFails;
  }
  bool open(const std::string& pathOrAddress) override {
    events.push_back("open " + pathOrAddress);
    return !workspaceFails;
  }
  void requestTermination() override { events.emplace_back("terminate"); }

  void makeKeyAndOrderFront(Window& window) override {
    events.push_back("front " + window.name());
    key = &window;
    window.show();
  }
  void orderBack(Window& window) override {
    events.push_back("back " + window.name());
    window.show();
  }
  void beginSheet(Window& sheet, WindowName parent) override { sheet.show(parent); }
  void endSheet(Window& sheet) override {
    sheet.hide();
    events.emplace_back("sheet ends");
  }
  const Window* keyWindow() const override { return key; }
  void focus(Control& control) override { events.push_back("focus " + control.name()); }
};

}  // namespace quillet::testing
