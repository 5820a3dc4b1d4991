#include "shell/preferences_window.h"

#include <nlohmann/json.hpp>

#include "platform/localization.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr const char* kDecodeErrorReplacement = "DecodeErrorReplacement";
constexpr const char* kEncodeErrorReplacement = "EncodeErrorReplacement";
constexpr const char* kDontAutoSplit = "DontAutoSplit";
constexpr const char* kOpenLastLog = "OpenLastLogAfterComplete";
constexpr const char* kDontOpenOutputFolder = "DontOpenOutputFolderAfterComplete";

constexpr const char* kSaveTextFields = "preferencesWindowSaveTextFieldsToDefaults";
constexpr const char* kAutoSplitClicked = "preferencesWindowAutoSplitButtonClicked";
constexpr const char* kOpenLastLogClicked = "preferencesWindowOpenLastLogFileAfterCompleteButtonClicked";
constexpr const char* kOpenOutputFolderClicked =
    "preferencesWindowOpenOutputFolderAfterCompleteButtonClicked";

}  // namespace

PreferencesWindow::PreferencesWindow(Window& window, WindowServer& server, UserDefaults& defaults)
    : window_(window),
      server_(server),
      defaults_(defaults),
      decodeErrorReplacement_(window, "preferencesWindowDecodeErrorReplacementTextField", kSaveTextFields),
      encodeErrorReplacement_(window, "preferencesWindowEncodeErrorReplacementTextField", kSaveTextFields),
      autoSplit_(window, "preferencesWindowAutoSplitButton",
                 localized(u"Split new files into lines and columns"), kAutoSplitClicked),
      openLastLogFileAfterComplete_(window, "preferencesWindowOpenLastLogFileAfterCompleteButton",
                                    localized(u"Open the log file after a job"), kOpenLastLogClicked),
      openOutputFolderAfterComplete_(window, "preferencesWindowOpenOutputFolderAfterCompleteButton",
                                     localized(u"Show the output files after a job"),
                                     kOpenOutputFolderClicked) {
  fillControls();  // so that a text that nobody has seen is never stored as an empty one
}

void PreferencesWindow::addCommandsTo(Commands& commands) {
  commands.add("preferencesMenuItemClicked", [this] { preferencesMenuItemClicked(); });
  commands.add(kSaveTextFields, [this] { preferencesWindowSaveTextFieldsToDefaults(); });
  commands.add(kAutoSplitClicked, [this] { toggleDefaultForKey(kDontAutoSplit); });
  commands.add(kOpenLastLogClicked, [this] { toggleDefaultForKey(kOpenLastLog); });
  commands.add(kOpenOutputFolderClicked, [this] { toggleDefaultForKey(kDontOpenOutputFolder); });
}

void PreferencesWindow::preferencesMenuItemClicked() {
  fillControls();
  server_.makeKeyAndOrderFront(window_);
}

void PreferencesWindow::fillControls() {
  decodeErrorReplacement_.setText(defaults_.stringForKey(kDecodeErrorReplacement).value_or(u"?"));
  encodeErrorReplacement_.setText(defaults_.stringForKey(kEncodeErrorReplacement).value_or(u"?"));
  autoSplit_.setOn(!defaults_.boolForKey(kDontAutoSplit));
  openLastLogFileAfterComplete_.setOn(defaults_.boolForKey(kOpenLastLog));
  openOutputFolderAfterComplete_.setOn(!defaults_.boolForKey(kDontOpenOutputFolder));
}

void PreferencesWindow::preferencesWindowSaveTextFieldsToDefaults() {
  defaults_.setValues({{kDecodeErrorReplacement, toUtf8(decodeErrorReplacement_.text())},
                       {kEncodeErrorReplacement, toUtf8(encodeErrorReplacement_.text())}});
}

void PreferencesWindow::toggleDefaultForKey(const std::string& key) {
  defaults_.setValue(key, !defaults_.boolForKey(key));
}

}  // namespace quillet
