#include "shell/output_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "shell/recording_desktop.h"
#include "support/log_catcher.h"
#include "support/no_folders.h"
#include "support/temporary_folder.h"

namespace quillet {
namespace {

class OutputFolderTest : public ::testing::Test {
 protected:
  std::string toolTip() const {
    return toUtf8(dynamic_cast<Button*>(interface_.control("selectOutputFolderButton"))->toolTip());
  }

  testing::LogCatcher quiet_;  // the settings below have no file
  testing::TemporaryFolder root_;
  UserInterface interface_;
  Window window_{interface_, "window", u""};
  UserDefaults defaults_{""};
  JobLog log_{std::make_shared<testing::NoFolders>()};
  testing::RecordingDesktop desktop_;
  OutputFolder folder_{window_, defaults_, log_, desktop_.desktop()};
};

TEST_F(OutputFolderTest, ThePanelIsTitledAndItsButtonSaysTheSame) {
  folder_.selectOutputFolder();
  EXPECT_EQ(desktop_.events, std::vector<std::string>{"panel Select Output Folder|Select Output Folder"});
}

TEST_F(OutputFolderTest, TheButtonsToolTipIsTheFolder) {
  EXPECT_EQ(toolTip(), "No output folder chosen yet");
  desktop_.panelAnswer = {root_.path("missing")};
  folder_.selectOutputFolder();
  EXPECT_EQ(toolTip(), "No output folder chosen yet");
  desktop_.panelAnswer = {root_.path()};
  folder_.selectOutputFolder();
  EXPECT_EQ(toolTip(), root_.path());
  UserInterface other;
  Window window(other, "window", u"");
  const OutputFolder next(window, defaults_, log_, desktop_.desktop());
  EXPECT_EQ(toUtf8(dynamic_cast<Button*>(other.control("selectOutputFolderButton"))->toolTip()),
            root_.path());
}

}  // namespace
}  // namespace quillet
