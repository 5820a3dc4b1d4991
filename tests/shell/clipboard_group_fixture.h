// The clipboard data window with all that belongs to it, over a desktop that writes down what it is asked.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "platform/unicode_text.h"
#include "shell/clipboard/clipboard_group.h"
#include "shell/recording_desktop.h"
#include "support/temporary_folder.h"

namespace quillet::testing {

class ClipboardGroupTest : public ::testing::Test {
 protected:
  ClipboardGroupTest() { group_.addCommandsTo(interface_.commands()); }

  void perform(const std::string& command) { EXPECT_TRUE(interface_.commands().perform(command)) << command; }

  // A grid of the text, by line feeds and commas.
  void split(const std::u16string& text) {
    desktop_.pasteboard = text;
    group_.refreshDataFromClipboard();
    group_.performClipboardDataOperation({{"Code", 102}, {"Arg1", u"\n"}, {"Arg2", u","}});
  }
  const OperationList& operations() const { return group_.clipboardDataOperationsArray(); }
  TwoDimensionalMutableIndexSet& selection() { return group_.data().selection().selected2DIndexSet(); }

  template <typename Kind>
  Kind& control(const std::string& name) {
    return dynamic_cast<Kind&>(*interface_.control(name));
  }

  TemporaryFolder folder_;
  UserDefaults defaults_{folder_.path("defaults.json")};
  RecordingDesktop desktop_;
  UserInterface interface_;
  Window window_{interface_, "clipboardDataWindow", u"Clipboard Data"};
  ClipboardGroup group_{interface_, window_, desktop_.desktop(), defaults_};
};

}  // namespace quillet::testing
