// The output folder: choosing it, and showing it.
#include <filesystem>
#include <unistd.h>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

class OutputFolder : public Scenario {
 protected:
  json choose(const std::string& action, json arguments = json::object()) {
    arguments["action"] = action;
    return done("menu", std::move(arguments));
  }
  json show(json arguments = json::object()) {
    return choose("showOutputFolderMenuItemClicked", std::move(arguments));
  }
  json bookmark() { return defaultOf("OutputFolderBookmark"); }
};

TEST_F(OutputFolder, AChosenFolderIsStored) {
  for (const char* name : {"out", "an other", "é"}) std::filesystem::create_directory(path(name));
  std::filesystem::create_symlink("out", path("link"));
  const struct {
    json panel;
    std::string stored;
  } cases[] = {{{"out"}, "/out"}, {{"an other"}, "/an%20other"}, {{"é"}, "/%C3%A9"}, {{"link"}, "/link"}};
  launch();
  for (const auto& [panel, stored] : cases) {
    EXPECT_FALSE(done("selectOutputFolder", {{"panel", panel}}).contains("alerts"));
    EXPECT_EQ(bookmark(), "file://" + root() + stored);
    setDefault("OutputFolderBookmark", nullptr);
    EXPECT_FALSE(choose("selectOutputFolderMenuItemClicked", {{"panel", panel}}).contains("alerts"));
    EXPECT_EQ(bookmark(), "file://" + root() + stored);
  }
  EXPECT_FALSE(done("press", {{"name", "selectOutputFolderButton"}, {"panel", {"out"}}}).contains("alerts"));
  EXPECT_EQ(bookmark(), "file://" + path("out"));
}

TEST_F(OutputFolder, WhatCannotBeStoredIsToldAndTheOldOneStays) {
  write("file", "");
  std::filesystem::create_symlink("nowhere", path("broken"));
  const json invalid = modalAlert("Error invalid bookmark to folder", "Output folder bookmark was invalid");
  const struct {
    json panel;
    json alerts;
  } cases[] = {{nullptr, nullptr},
               {json::array(), {modalAlert("Nothing selected")}},
               {{""}, {modalAlert("Output folder was nil")}},
               {{"missing"}, {invalid}},
               {{"broken"}, {invalid}},
               {{"file"}, {invalid}}};
  launch();
  for (const json& before : {json(), json("file://" + root())}) {
    setDefault("OutputFolderBookmark", before);
    for (const auto& [panel, alerts] : cases) {
      const json result = choose("selectOutputFolderMenuItemClicked", {{"panel", panel}});
      EXPECT_EQ(result.value("alerts", json()), alerts) << panel;
      EXPECT_EQ(bookmark(), before) << panel;
    }
  }
}

TEST_F(OutputFolder, WithNoneChosenShowingDoesNothingAtAll) {
  launch();
  const json result = show();
  EXPECT_EQ(result["performed"], true);
  for (const char* key : {"alerts", "revealed", "workspaceOpened", "systemLog"})
    EXPECT_FALSE(result.contains(key)) << key;
  EXPECT_EQ(log(), json::array());
}

TEST_F(OutputFolder, ShowingRevealsTheFolder) {
  launch();
  useOutputFolder();
  for (const bool fails : {false, true}) {
    const json result = show({{"workspaceFails", fails}});
    EXPECT_EQ(result["revealed"], json{{path("out")}});
    EXPECT_FALSE(result.contains("alerts"));
  }
  EXPECT_EQ(log(), json::array());
}

TEST_F(OutputFolder, WhatCannotBeShownIsAWarningInTheLogAndNoAlert) {
  write("file", "");
  const struct {
    json bookmark;
    std::string line;
  } cases[] = {
      {3, "Invalid bookmark URL to folder [Output folder bookmark URL was invalid]"},
      {"", "Invalid bookmark URL to folder [Output folder bookmark URL was invalid]"},
      {"relative", "Invalid bookmark URL to folder [Output folder bookmark URL was invalid]"},
      {"https://x/y", "Invalid bookmark URL to folder [Output folder bookmark URL was invalid]"},
      {"file://" + path("gone"), "Output folder does not exist \"" + path("gone") + "\" []"},
      {"file://" + path("file"), "Output URL is not a folder \"" + path("file") + "\" []"},
  };
  launch();
  for (const auto& [bookmark, line] : cases) {
    add({write("a.txt", "1\n")});
    if (!log().empty()) choose("clearLogMenuItemClicked");
    setDefault("OutputFolderBookmark", bookmark);
    const json result = show({{"panel", {"out"}}});
    for (const char* key : {"alerts", "revealed"}) EXPECT_FALSE(result.contains(key)) << line;
    EXPECT_EQ(log(), (json{{1, line}}));
    EXPECT_EQ(defaultOf("OutputFolderBookmark"), bookmark) << "nothing is asked, nothing is stored";
  }
}

}  // namespace
}  // namespace quillet::testing
