#include "shell/app_delegate.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

#include "shell/application_fixture.h"

namespace quillet {
namespace {

class AppDelegateTest : public ::testing::Test {
 protected:
  testing::TemporaryFolder root_;
  std::shared_ptr<const Folders> folders_ = std::make_shared<testing::FoldersIn>(root_.path());
  std::shared_ptr<UserDefaults> defaults_ = std::make_shared<UserDefaults>(folders_->defaultsFile());
  testing::RecordingDesktop desktop_;
  AppDelegate application_{desktop_.desktop(), folders_, defaults_, std::make_shared<MainThread>()};
};

TEST_F(AppDelegateTest, NamesOfControlsAreUniqueOverAllWindows) {
  std::map<std::string, std::string> windowOfName;
  for (const Window* window : application_.interface().windows()) {
    EXPECT_TRUE(windowOfName.emplace(window->name(), "a window").second) << window->name();
    for (const Control* control : window->controls()) {
      EXPECT_FALSE(control->name().empty()) << window->name();
      const auto [other, isNew] = windowOfName.emplace(control->name(), window->name());
      EXPECT_TRUE(isNew) << control->name() << " in " << window->name() << " and " << other->second;
    }
  }
}

TEST_F(AppDelegateTest, TheGroupsOfControlsStandInTheirWindows) {
  const struct {
    Window& window;
    std::vector<std::string> controls;
  } cases[] = {
      {application_.windows().clipboardData,
       {"clipboardDataWindowHelpBox", "clipboardDataWindowTextView", "clipboardDataTableView",
        "clipboardDataWindowOperationsTableView", "clipboardDataWindowStatusLabel",
        "clipboardDataWindowClearStatusLabelButton", "clipboardDataWindowFocusLabel",
        "clipboardDataWindowPerformToolbarItem", "clipboardDataWindowJoinToolbarItem"}},
      {application_.windows().preferences,
       {"preferencesWindowDecodeErrorReplacementTextField",
        "preferencesWindowEncodeErrorReplacementTextField", "preferencesWindowAutoSplitButton",
        "preferencesWindowOpenLastLogFileAfterCompleteButton",
        "preferencesWindowOpenOutputFolderAfterCompleteButton"}},
  };
  for (const auto& [window, controls] : cases)
    for (const auto& name : controls) EXPECT_NE(window.control(name), nullptr) << name;
}

TEST_F(AppDelegateTest, CommandsOfMenusWithoutASheetAreThere) {
  for (const char* name :
       {"quilletWindowMenuItemClicked", "clipboardDataWindowMenuItemClicked", "preferencesMenuItemClicked",
        "selectOutputFolderMenuItemClicked", "showOutputFolderMenuItemClicked", "clearLogMenuItemClicked",
        "openLastLogFileMenuItemClicked", "tutorialsMenuItemClicked", "supportMenuItemClicked",
        "helpButtonPressed", "runButtonPressed", "clearStatusLabelButtonClicked",
        "clipboardDataWindowClearStatusLabelButtonClicked", "preferencesWindowAutoSplitButtonClicked",
        "preferencesWindowOpenLastLogFileAfterCompleteButtonClicked",
        "preferencesWindowOpenOutputFolderAfterCompleteButtonClicked"})
    EXPECT_TRUE(application_.interface().commands().has(name)) << name;
}

TEST_F(AppDelegateTest, QuilletMakesTheMainWindowKey) {
  application_.interface().commands().perform("quilletWindowMenuItemClicked");
  EXPECT_EQ(desktop_.events, std::vector<std::string>{"front window"});
}

TEST_F(AppDelegateTest, EveryWindowMayCloseAndThePreferencesStoreTheirTexts) {
  MainWindows& windows = application_.windows();
  for (const Window* window : {&windows.main, &windows.clipboardData, &windows.previousJobs}) {
    EXPECT_TRUE(application_.windowShouldClose(*window));
    EXPECT_FALSE(defaults_->has("DecodeErrorReplacement")) << window->name();
  }
  EXPECT_TRUE(application_.windowShouldClose(windows.preferences));
  EXPECT_EQ(defaults_->value("DecodeErrorReplacement"), "?");
}

// Another process that is about to write into the database, so that this one cannot.
class Writer {
 public:
  explicit Writer(const std::string& database) {
    int ready[2];
    EXPECT_EQ(pipe(ready), 0);
    process_ = fork();
    if (process_ == 0) {
      struct flock lock {};
      lock.l_type = F_WRLCK;
      lock.l_whence = SEEK_SET;
      lock.l_start = 0x40000001;  // where SQLite reserves a file for writing
      lock.l_len = 1;
      const int file = open(database.c_str(), O_RDWR | O_CREAT, 0600);
      const char locked = fcntl(file, F_SETLK, &lock) == 0 ? 'y' : 'n';
      if (write(ready[1], &locked, 1) == 1) pause();
      _exit(0);
    }
    char locked = 'n';
    EXPECT_EQ(read(ready[0], &locked, 1), 1);
    EXPECT_EQ(locked, 'y');
    close(ready[0]);
    close(ready[1]);
  }
  ~Writer() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

 private:
  pid_t process_ = -1;
};

// The order: database, files, selection, windows. The clipboard is read where its window comes back.
TEST_F(AppDelegateTest, LaunchesInItsOrder) {
  const Writer writer(*folders_->documentsFolder() + "/quillet.db");
  defaults_->setValues({{"LastOpenedFiles", {"file://" + root_.write("a.txt", "1\n")}},
                        {"LastSelectedFileIndex", 0},
                        {"kLastOpenedWindows", 2},
                        {"kLastKeyWindow", 2}});
  desktop_.pasteboard = u"text";
  Window& clipboardData = application_.windows().clipboardData;
  std::vector<std::string> seen;
  clipboardData.setObserver([&] {
    if (!clipboardData.isShown()) return;
    seen.push_back(std::to_string(desktop_.events.size()) + " alert");
    seen.push_back(std::to_string(application_.fileSelection().rows().count()) + " selected");
    seen.push_back(toUtf8(application_.clipboard().data().clipboardDataString()));
  });
  application_.applicationDidFinishLaunching();
  EXPECT_EQ(desktop_.events, (std::vector<std::string>{"alert Could not setup jobs database|",
                                                       "alert Error getting previous jobs from database|",
                                                       "front clipboardDataWindow"}));
  // The window server has written down its own event when it shows the window.
  EXPECT_EQ(seen, (std::vector<std::string>{"3 alert", "1 selected", "text"}));
}

TEST_F(AppDelegateTest, TheDatabaseIsSetUpBeforeFilesAreLoaded) {
  class CountingAlerts final : public Alerts {
   public:
    void showAlert(std::u16string_view, std::u16string_view) override {
      filesAtAlert = static_cast<int>(application->shared().files->count());
    }
    void showAlertInWindow(std::u16string_view, std::u16string_view, WindowName) override {}
    void askInWindow(std::u16string_view, std::u16string_view, const std::vector<std::u16string>&, WindowName,
                     std::function<void(std::size_t)>) override {}
    const AppDelegate* application = nullptr;
    int filesAtAlert = -1;
  };
  const Writer writer(*folders_->documentsFolder() + "/quillet.db");
  defaults_->setValue("LastOpenedFiles", {"file://" + root_.write("a.txt", "1\n")});
  CountingAlerts alerts;
  AppDelegate application({alerts, desktop_, desktop_, desktop_, desktop_, desktop_, desktop_}, folders_,
                          defaults_, std::make_shared<MainThread>());
  alerts.application = &application;
  application.applicationDidFinishLaunching();
  EXPECT_EQ(alerts.filesAtAlert, 0);
  EXPECT_EQ(application.shared().files->count(), 1u);
}

}  // namespace
}  // namespace quillet
