// What comes back from one launch to the next, and in which order.
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

class Session : public Scenario {
 protected:
  json controlsOf(const std::string& window) { return done("controls", {{"window", window}}); }
  bool isOpen(const std::string& window) { return controlsOf(window)["open"]; }
  bool isOn(const std::string& action) { return done("menuEnabled", {{"action", action}})["enabled"]; }
  void choose(const std::string& action) { EXPECT_EQ(done("menu", {{"action", action}})["performed"], true); }
  bool close(const std::string& window) { return done("closeWindow", {{"window", window}})["closed"]; }

  // The windows that are shown, as the settings keep them.
  int openWindows() {
    return (isOpen("window") ? 1 : 0) | (isOpen("clipboardDataWindow") ? 2 : 0) |
           (isOpen("previousJobsWindow") ? 4 : 0);
  }
};

// The launch.

TEST_F(Session, WithoutSettingsTheMainWindowComesUpAlone) {
  const json launched = done("launch");
  EXPECT_FALSE(launched.contains("alerts"));
  EXPECT_EQ(openWindows(), 1);
  EXPECT_FALSE(isOpen("preferencesWindow"));
  EXPECT_TRUE(isOn("addInputFileMenuItemClicked")) << "it is key";
  EXPECT_EQ(mainWindow()["helpBox"], true);
  EXPECT_EQ(entries(), json::array());
  EXPECT_TRUE(std::filesystem::exists(path("Documents/quillet.db")));
  EXPECT_FALSE(std::filesystem::exists(path("defaults.json"))) << "a launch stores nothing";
}

struct Setting {
  json stored;
  std::int64_t number;  // how it reads
};

struct Shown {
  int windows = 0;
  int key = 0;
};

Shown expectedWindows(std::int64_t windows, std::int64_t key) {
  Shown shown;
  if (windows & 4) {
    shown.windows |= 4;
    if (key == 4) shown.key = 4;
  }
  if (windows & 2) {
    shown.windows |= 2;
    if (key == 2) shown.key = 2;
  }
  if (windows & 1) {
    shown.windows |= 1;
    if (key == 1) shown.key = 1;
  }
  if (shown.key == 0) {
    shown.windows |= 1;
    shown.key = 1;
  }
  return shown;
}

TEST_F(Session, WindowsComeBackAsTheSettingsTell) {
  const Setting windows[] = {
      {nullptr, 0}, {0, 0}, {1, 1},     {2, 2},   {3, 3},   {4, 4},     {5, 5},
      {6, 6},       {7, 7}, {255, 255}, {-1, -1}, {"6", 6}, {"all", 0}, {json::array({4}), 0}};
  const Setting keys[] = {{nullptr, 0}, {1, 1},   {2, 2},   {3, 3},
                          {4, 4},       {"4", 4}, {-1, -1}, {json::array({4}), 0}};
  for (const auto& window : windows) {
    for (const auto& key : keys) {
      const std::string which = window.stored.dump() + " with key " + key.stored.dump();
      done("setDefaults",
           {{"values", {{"kLastOpenedWindows", window.stored}, {"kLastKeyWindow", key.stored}}}});
      launch();
      const Shown expected = expectedWindows(window.number, key.number);
      EXPECT_EQ(openWindows(), expected.windows) << which;
      EXPECT_EQ(isOn("addInputFileMenuItemClicked"), expected.key == 1) << which;
      EXPECT_EQ(isOn("saveJobMenuItemClicked"), expected.key == 2) << which;
      terminate();
      EXPECT_EQ(defaultOf("kLastOpenedWindows"), expected.windows) << which;
      EXPECT_EQ(defaultOf("kLastKeyWindow"), expected.key) << which;
    }
  }
}

TEST_F(Session, AStoredRowWithinTheListIsSelected) {
  const struct {
    json stored;
    json selected;
  } cases[] = {{nullptr, json::array()},
               {0, {0}},
               {1, {1}},
               {2, json::array()},
               {-1, json::array()},
               {"1", {1}},
               {1.0, {1}},
               {1e300, json::array()},
               {-1e300, json::array()},
               {"7", json::array()}};
  const json files = {"file://" + write("a.txt", "1\n"), "file://" + write("b.txt", "2\n")};
  for (const auto& [stored, selected] : cases) {
    done("setDefaults", {{"values", {{"LastOpenedFiles", files}, {"LastSelectedFileIndex", stored}}}});
    launch();
    EXPECT_EQ(mainWindow()["selectedFiles"], selected) << stored;
    EXPECT_EQ(mainWindow()["helpBox"], selected.empty()) << stored;
    terminate();
  }
}

TEST_F(Session, ARowPastTheFilesThatAreLeftIsNotSelected) {
  write("a.txt", "1\n");
  launch();
  add({path("a.txt"), write("b.txt", "2\n")});
  select({1});
  terminate();
  EXPECT_EQ(defaultOf("LastSelectedFileIndex"), 1);
  std::filesystem::remove(path("a.txt"));
  launch();
  EXPECT_EQ(entries().size(), 1u);
  EXPECT_EQ(mainWindow()["selectedFiles"], json::array());
  EXPECT_EQ(mainWindow()["helpBox"], true);
}

// A lock as another process holds it that is about to write into the database.
class WriteLock {
 public:
  explicit WriteLock(const std::string& database) : file_(open(database.c_str(), O_RDWR | O_CREAT, 0600)) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0x40000001;  // where SQLite reserves a file for writing
    lock.l_len = 1;
    EXPECT_EQ(fcntl(file_, F_SETLK, &lock), 0);
  }
  ~WriteLock() { close(file_); }
  WriteLock(const WriteLock&) = delete;
  WriteLock& operator=(const WriteLock&) = delete;

 private:
  int file_;
};

TEST_F(Session, ADatabaseThatCannotBeSetUpIsToldAndTheLaunchGoesOn) {
  write("a.txt", "1\n");
  std::filesystem::create_directory(path("Documents"));
  done("setDefaults", {{"values",
                        {{"LastOpenedFiles", {"file://" + path("a.txt")}},
                         {"LastSelectedFileIndex", 0},
                         {"kLastOpenedWindows", 4},
                         {"kLastKeyWindow", 4}}}});
  {
    const WriteLock lock(path("Documents/quillet.db"));
    EXPECT_EQ(done("launch")["alerts"], (json{modalAlert("Could not setup jobs database"),
                                              modalAlert("Error getting previous jobs from database")}));
  }
  EXPECT_EQ(entries().size(), 1u);
  EXPECT_EQ(mainWindow()["selectedFiles"], json{0});
  EXPECT_EQ(openWindows(), 4);
  terminate();
  EXPECT_FALSE(done("launch").contains("alerts")) << "the lock is gone";
}

TEST_F(Session, ADatabaseThatCannotBeAskedIsToldOfItsJobsAlone) {
  restart({"--no-documents"});
  EXPECT_EQ(done("launch")["alerts"], json{modalAlert("Error getting previous jobs from database")});
}

// Between the launch and the end.

TEST_F(Session, NothingOfTheSessionIsStoredBetweenLaunchAndTermination) {
  write("a.txt", "1\n");
  write("b.txt", "2\n");
  done("setDefaults", {{"values",
                        {{"LastOpenedFiles", {"file://" + path("a.txt")}},
                         {"LastSelectedFileIndex", 0},
                         {"kLastOpenedWindows", 3},
                         {"kLastKeyWindow", 2}}}});
  const std::string before = read("defaults.json");
  launch();
  EXPECT_EQ(read("defaults.json"), before);
  add({path("b.txt")});
  select({1});
  choose("clipboardDataWindowMenuItemClicked");
  choose("preferencesMenuItemClicked");
  EXPECT_TRUE(close("clipboardDataWindow"));
  choose("quilletWindowMenuItemClicked");
  setOperations(0, json::array());
  EXPECT_EQ(read("defaults.json"), before);
  terminate();
  EXPECT_EQ(defaultOf("LastOpenedFiles").size(), 2u);
  EXPECT_EQ(defaultOf("LastSelectedFileIndex"), 1);
  EXPECT_EQ(defaultOf("kLastOpenedWindows"), 1);
  EXPECT_EQ(defaultOf("kLastKeyWindow"), 1);
}

TEST_F(Session, WindowsAreBroughtForwardAndClosed) {
  launch();
  choose("clipboardDataWindowMenuItemClicked");
  EXPECT_EQ(openWindows(), 3);
  EXPECT_TRUE(isOn("saveJobMenuItemClicked")) << "the clipboard data window is key";
  choose("quilletWindowMenuItemClicked");
  EXPECT_TRUE(isOn("addInputFileMenuItemClicked"));
  EXPECT_TRUE(close("window"));
  EXPECT_FALSE(close("window")) << "it is closed already";
  EXPECT_EQ(openWindows(), 2);
  EXPECT_TRUE(isOn("saveJobMenuItemClicked")) << "the next window has become key";
  EXPECT_TRUE(close("clipboardDataWindow"));
  EXPECT_EQ(openWindows(), 0);
  EXPECT_TRUE(mainWindow()["helpBox"]) << "closing the last window does not quit";
  choose("quilletWindowMenuItemClicked");
  EXPECT_EQ(openWindows(), 1);
  EXPECT_NE(refused({{"do", "closeWindow"}, {"window", "nowhere"}}), "");
}

TEST_F(Session, TheClipboardDataWindowStartsWithItsHelp) {
  launch();
  choose("clipboardDataWindowMenuItemClicked");
  const json controls = controlsOf("clipboardDataWindow")["controls"];
  const struct {
    const char* name;
    bool hidden, enabled;
    json value;
  } cases[] = {{"clipboardDataWindowHelpBox", false, true, nullptr},
               {"clipboardDataWindowTextView", true, true, ""},
               {"clipboardDataTableView", true, true, json::array()},
               {"clipboardDataWindowOperationsTableView", false, true, json::array()},
               {"clipboardDataWindowStatusLabel", false, true, ""},
               {"clipboardDataWindowClearStatusLabelButton", true, true, ""},
               {"clipboardDataWindowFocusLabel", false, true, ""},
               {"clipboardDataWindowPerformToolbarItem", false, false, "Perform"},
               {"clipboardDataWindowJoinToolbarItem", false, false, "Join…"}};
  for (const auto& [name, hidden, enabled, value] : cases) {
    ASSERT_TRUE(controls.contains(name)) << name;
    EXPECT_EQ(controls[name]["hidden"], hidden) << name;
    EXPECT_EQ(controls[name]["enabled"], enabled) << name;
    EXPECT_EQ(controls[name]["value"], value) << name;
  }
}

// The end.

TEST_F(Session, OneSelectedRowIsStoredAndAnyOtherSelectionRemovesIt) {
  const std::string a = write("a.txt", "1\n");
  const std::string b = write("b.txt", "2\n");
  const struct {
    std::vector<int> selected;
    json stored;
  } cases[] = {{{1}, 1}, {{0, 1}, nullptr}, {{0}, 0}, {{}, nullptr}};
  for (const auto& [selected, stored] : cases) {
    done("setDefaults",
         {{"values", {{"LastOpenedFiles", {"file://" + a, "file://" + b}}, {"LastSelectedFileIndex", 0}}}});
    launch();
    select(selected);
    terminate();
    EXPECT_EQ(defaultOf("LastSelectedFileIndex"), stored);
  }
}

TEST_F(Session, WithoutAKeyWindowTheEarlierValueStays) {
  setDefault("kLastKeyWindow", 4);
  launch();
  EXPECT_TRUE(close("window"));
  terminate();
  EXPECT_EQ(defaultOf("kLastKeyWindow"), 4);
  EXPECT_EQ(defaultOf("kLastOpenedWindows"), 0);
  launch();
  EXPECT_EQ(openWindows(), 1) << "the main window comes up though it was closed";
}

TEST_F(Session, WithThePreferencesKeyTheEarlierValueStays) {
  setDefault("kLastKeyWindow", 2);
  launch();
  choose("preferencesMenuItemClicked");
  terminate();
  EXPECT_EQ(defaultOf("kLastKeyWindow"), 2);
  EXPECT_EQ(defaultOf("kLastOpenedWindows"), 1);
  launch();
  EXPECT_FALSE(isOpen("preferencesWindow")) << "it does not come back";
}

TEST_F(Session, FilesFromOutsideBeforeTheLaunchForgetTheStoredSelection) {
  write("a.txt", "1\n");
  done("setDefaults",
       {{"values", {{"LastOpenedFiles", {"file://" + path("a.txt")}}, {"LastSelectedFileIndex", 0}}}});
  done("openFiles", {{"paths", json::array()}});
  EXPECT_EQ(defaultOf("LastSelectedFileIndex"), nullptr);
  launch();
  EXPECT_EQ(mainWindow()["selectedFiles"], json::array());
  EXPECT_EQ(mainWindow()["helpBox"], true);
}

}  // namespace
}  // namespace quillet::testing
