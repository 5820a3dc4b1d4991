// Which items of the menus are on, and the small commands behind them.
#include <filesystem>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

const std::string kKeyWindows[] = {"window", "clipboardDataWindow", "previousJobsWindow", "preferencesWindow",
                                   "none"};

class Menus : public Scenario {
 protected:
  bool isOn(const std::string& action, const std::string& keyWindow) {
    return done("menuEnabled", {{"action", action}, {"keyWindow", keyWindow}})["enabled"];
  }
  json choose(const std::string& action, json arguments = json::object()) {
    arguments["action"] = action;
    return done("menu", std::move(arguments));
  }

  struct State {
    bool logged = false;
    bool hasFiles = false;
    bool selected = false;
    bool running = false;
  };

  void expectItemsOfTheJob(const State& state) {
    for (const auto& key : kKeyWindows) {
      const bool main = key == "window";
      const bool free = !state.running;
      const struct {
        const char* action;
        bool on;
      } rows[] = {
          {"clearLogMenuItemClicked", state.logged && free},
          {"removeSelectedInputFilesMenuItemClicked", state.selected && free && main},
          {"addInputFileMenuItemClicked", free && main},
          {"runButtonPressed", state.hasFiles && free && main},
          {"saveJobMenuItemClicked", (state.hasFiles && free && main) || key == "clipboardDataWindow"},
      };
      for (const auto& [action, on] : rows)
        EXPECT_EQ(isOn(action, key), on)
            << action << " with key " << key << ", log " << state.logged << ", files " << state.hasFiles
            << ", selected " << state.selected << ", running " << state.running;
    }
  }
};

TEST_F(Menus, ItemsOfTheJobFollowFilesSelectionLogAndKeyWindow) {
  launch();
  expectItemsOfTheJob({});
  add({write("a.txt", "1\n")});  // its scan is logged
  expectItemsOfTheJob({.logged = true, .hasFiles = true, .selected = true});
  select({});
  expectItemsOfTheJob({.logged = true, .hasFiles = true});
  EXPECT_EQ(choose("clearLogMenuItemClicked")["performed"], true);
  EXPECT_EQ(log(), json::array());
  expectItemsOfTheJob({.hasFiles = true});
  EXPECT_EQ(choose("clearLogMenuItemClicked")["performed"], false) << "it is off by now";
  // Nothing in the application sets this flag.
  done("setFlags", {{"runningJob", true}});
  expectItemsOfTheJob({.hasFiles = true, .running = true});
  add({write("b.txt", "1\n")});
  expectItemsOfTheJob({.logged = true, .hasFiles = true, .selected = true, .running = true});
}

// In the grid's state without rows and selection.
TEST_F(Menus, ItemsOfAnEmptyGridAreOffWhileItsWindowIsKey) {
  const char* const items[] = {
      "clipboardDataWindowTrimButtonPressed",
      "clipboardDataWindowReplaceButtonPressed",
      "clipboardDataWindowFillButtonPressed",
      "clipboardDataWindowMoveUpMenuItemClicked",
      "clipboardDataWindowMoveDownMenuItemClicked",
      "clipboardDataWindowDeleteSelectedLineMenuItemClicked",
      "clipboardDataWindowMoveLeftMenuItemClicked",
      "clipboardDataWindowMoveRightMenuItemClicked",
      "clipboardDataWindowDeleteSelectedColumnMenuItemClicked",
      "clipboardDataWindowMergeUpMenuItemClicked",
      "clipboardDataWindowMergeDownMenuItemClicked",
      "clipboardDataWindowMergeLeftMenuItemClicked",
      "clipboardDataWindowMergeRightMenuItemClicked",
      "clipboardDataWindowJoinColumnsMenuItemClicked",
      "clipboardDataWindowJoinRowsMenuItemClicked",
      "clipboardDataWindowShiftTruncateTopMenuItemClicked",
      "clipboardDataWindowShiftTruncateLeftMenuItemClicked",
      "clipboardDataWindowShiftTruncateRightMenuItemClicked",
      "clipboardDataWindowShiftTruncateBottomMenuItemClicked",
      "flipVerticalMenuItemClicked",
      "flipHorizontalMenuItemClicked",
      "flipDiagonalMenuItemClicked",
  };
  const char* const others[] = {"clipboardDataWindowRefreshNowButtonPressed",
                                "clipboardDataWindowSplitButtonPressed",
                                "clipboardDataWindowShiftFillFromTopMenuItemClicked",
                                "preferencesMenuItemClicked",
                                "quilletWindowMenuItemClicked",
                                "selectOutputFolderMenuItemClicked",
                                "noSuchAction"};
  launch();
  for (const auto& key : kKeyWindows) {
    for (const char* item : items) EXPECT_EQ(isOn(item, key), key != "clipboardDataWindow") << item << key;
    for (const char* other : others) EXPECT_TRUE(isOn(other, key)) << other << key;
  }
}

TEST_F(Menus, TheKeyWindowIsTheOneInFront) {
  launch();
  const auto addIsOn = [this] {
    return done("menuEnabled", {{"action", "addInputFileMenuItemClicked"}})["enabled"];
  };
  EXPECT_EQ(addIsOn(), true);
  choose("clipboardDataWindowMenuItemClicked");
  EXPECT_EQ(addIsOn(), false);
  EXPECT_EQ(choose("runButtonPressed")["performed"], false);
  choose("quilletWindowMenuItemClicked");
  EXPECT_EQ(addIsOn(), true);
}

TEST_F(Menus, AnItemThatIsOffDoesNothing) {
  launch();
  const json result = choose("runButtonPressed");
  EXPECT_EQ(result["performed"], false);
  EXPECT_FALSE(result.contains("alerts")) << "the press of its button would tell that there is no file";
  EXPECT_EQ(done("press", {{"name", "runButton"}})["alerts"].size(), 1u);
}

// The log.

TEST_F(Menus, TheLastLogFileIsOpened) {
  launch();
  EXPECT_EQ(choose("openLastLogFileMenuItemClicked")["alerts"],
            json{modalAlert("Last log file does not exist yet")});
  std::filesystem::create_directories(path("Documents/Log/LastLog.txt"));
  EXPECT_EQ(choose("openLastLogFileMenuItemClicked")["alerts"],
            json{modalAlert("Last log file should not be a folder")});
  std::filesystem::remove(path("Documents/Log/LastLog.txt"));
  write("Documents/Log/LastLog.txt", "a line\n");
  for (const bool fails : {false, true}) {
    const json result = choose("openLastLogFileMenuItemClicked", {{"workspaceFails", fails}});
    EXPECT_EQ(result["workspaceOpened"], json{path("Documents/Log/LastLog.txt")});
    EXPECT_FALSE(result.contains("alerts")) << "a failure is not told";
  }
}

TEST_F(Menus, WithoutDocumentsThereIsNoLogFileToOpen) {
  restart({"--no-documents"});
  launch();
  const json result = choose("openLastLogFileMenuItemClicked");
  EXPECT_FALSE(result.contains("alerts"));
  EXPECT_FALSE(result.contains("workspaceOpened"));
}

TEST_F(Menus, ClearingTheLogEmptiesTheListAndLeavesTheFile) {
  launch();
  useOutputFolder();
  add({write("a.csv", "1\n")});
  const json file = run()["log"];
  choose("clearLogMenuItemClicked");
  EXPECT_EQ(log(), json::array());
  EXPECT_EQ(read("Documents/Log/LastLog.txt"), file);
}

// Help.

TEST_F(Menus, HelpPagesAreOpenedAndAFailureIsTold) {
  const struct {
    const char* action;
    const char* page;
  } cases[] = {{"tutorialsMenuItemClicked", "https://quillet.org/tutorials"},
               {"supportMenuItemClicked", "https://quillet.org/support"}};
  launch();
  for (const auto& [action, page] : cases) {
    json result = choose(action);
    EXPECT_EQ(result["workspaceOpened"], json{page});
    EXPECT_FALSE(result.contains("alerts"));
    result = choose(action, {{"workspaceFails", true}});
    EXPECT_EQ(result["workspaceOpened"], json{page});
    EXPECT_EQ(result["alerts"], json{modalAlert("Could not open URL")});
  }
}

TEST_F(Menus, AHelpButtonTellsItsToolTip) {
  const struct {
    json toolTip;
    std::string told;
  } cases[] = {{"How the file is read.", "How the file is read."},
               {"100 %@ %ld", "100 %@ %ld"},
               {nullptr, "No help available."},
               {"", "No help available."}};
  launch();
  for (const auto& [toolTip, told] : cases)
    EXPECT_EQ(done("helpButtonPressed", {{"toolTip", toolTip}})["alerts"], json{modalAlert(told)}) << toolTip;
  EXPECT_EQ(done("helpButtonPressed")["alerts"], json{modalAlert("No help available.")});
  EXPECT_EQ(choose("helpButtonPressed")["alerts"], json{modalAlert("No help available.")}) << "no button";
  EXPECT_NE(refused({{"do", "helpButtonPressed"}, {"toolTip", 3}}), "");
}

}  // namespace
}  // namespace quillet::testing
