#include "shell/session_windows.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "shell/recording_desktop.h"
#include "support/log_catcher.h"

namespace quillet {
namespace {

using nlohmann::json;
using Events = std::vector<std::string>;

class Workbench final : public ClipboardWorkbench {
 public:
  explicit Workbench(Events& events) : events_(events) {}
  void refreshDataFromClipboard() override { events_.emplace_back("read the clipboard"); }
  void performClipboardDataOperation(const OperationRecord&) override {}
  const OperationList& clipboardDataOperationsArray() const override { return operations_; }
  Content content() const override { return {}; }

 private:
  Events& events_;
  OperationList operations_;
};

class SessionWindowsTest : public ::testing::Test {
 protected:
  void restore(std::int64_t shown, std::int64_t key) {
    desktop_.events.clear();
    for (Window* window : interface_.windows()) window->hide();
    defaults_.setValues({{"kLastOpenedWindows", shown}, {"kLastKeyWindow", key}});
    session_.restore();
  }

  testing::LogCatcher quiet_;  // the settings below have no file
  UserInterface interface_;
  Window main_{interface_, "window", u""};
  Window clipboardData_{interface_, "clipboardDataWindow", u""};
  Window previousJobs_{interface_, "previousJobsWindow", u""};
  Window preferences_{interface_, "preferencesWindow", u""};
  testing::RecordingDesktop desktop_;
  Workbench workbench_{desktop_.events};
  UserDefaults defaults_{""};
  SessionWindows session_{{main_, clipboardData_, previousJobs_}, desktop_, workbench_, defaults_};
};

// What is asked of the desktop, step by step.
Events expectedEvents(std::int64_t shown, std::int64_t key) {
  Events events;
  bool oneIsKey = false;
  if (shown & 4) {
    if (key == 4) {
      events.emplace_back("front previousJobsWindow");
      oneIsKey = true;
    } else {
      events.emplace_back("back previousJobsWindow");
    }
  }
  if (shown & 2) {
    events.emplace_back("read the clipboard");
    if (key == 2) {
      events.emplace_back("front clipboardDataWindow");
      oneIsKey = true;
    } else {
      events.emplace_back("back clipboardDataWindow");
    }
  }
  if (shown & 1) {
    if (key == 1) {
      events.emplace_back("front window");
      return events;
    }
    events.emplace_back("back window");
  }
  if (!oneIsKey) events.emplace_back("front window");
  return events;
}

TEST_F(SessionWindowsTest, EveryCombinationTakesItsSteps) {
  for (std::int64_t shown = -1; shown <= 17; ++shown) {
    for (std::int64_t key = -1; key <= 9; ++key) {
      restore(shown, key);
      EXPECT_EQ(desktop_.events, expectedEvents(shown, key)) << shown << " with key " << key;
    }
  }
}

TEST_F(SessionWindowsTest, TheStepsOfSomeCombinations) {
  const struct {
    std::int64_t shown, key;
    Events events;
  } cases[] = {
      {0, 0, {"front window"}},
      {0, 4, {"front window"}},
      {1, 1, {"front window"}},
      {1, 0, {"back window", "front window"}},
      {2, 1, {"read the clipboard", "back clipboardDataWindow", "front window"}},
      {3, 2, {"read the clipboard", "front clipboardDataWindow", "back window"}},
      {5, 4, {"front previousJobsWindow", "back window"}},
      {7, 1, {"back previousJobsWindow", "read the clipboard", "back clipboardDataWindow", "front window"}},
  };
  for (const auto& [shown, key, events] : cases) {
    restore(shown, key);
    EXPECT_EQ(desktop_.events, events) << shown << " with key " << key;
  }
}

TEST_F(SessionWindowsTest, StoresWhatIsShownAndTheKeyWindow) {
  const struct {
    const Window* key;
    int stored;
  } keys[] = {{&main_, 1}, {&clipboardData_, 2}, {&previousJobs_, 4}, {&preferences_, 9}, {nullptr, 9}};
  for (int shown = 0; shown < 8; ++shown) {
    for (const auto& [key, stored] : keys) {
      for (Window* window : interface_.windows()) window->hide();
      if (shown & 1) main_.show();
      if (shown & 2) clipboardData_.show();
      if (shown & 4) previousJobs_.show();
      preferences_.show();
      desktop_.key = key;
      defaults_.setValues({{"kLastOpenedWindows", "old"}, {"kLastKeyWindow", 9}});
      session_.store();
      EXPECT_EQ(defaults_.value("kLastOpenedWindows"), shown);
      EXPECT_EQ(defaults_.value("kLastKeyWindow"), stored) << "9 is the earlier value";
    }
  }
}

TEST_F(SessionWindowsTest, WithASheetTheOldKeyWindowStays) {
  Window sheet(interface_, "saveJobWindow", u"");
  main_.show();
  desktop_.key = &sheet;
  session_.store();
  EXPECT_EQ(defaults_.value("kLastOpenedWindows"), 1);
  EXPECT_EQ(defaults_.value("kLastKeyWindow"), nullptr);
}

TEST_F(SessionWindowsTest, ValuesOfAnyKindAreReadWithoutHarm) {
  const json values[] = {nullptr, "", "6", "all", true, 2.9, -1e300, 1e300, json::array({4}), json::object()};
  for (const auto& shown : values) {
    for (const auto& key : values) {
      desktop_.events.clear();
      defaults_.setValues({{"kLastOpenedWindows", shown}, {"kLastKeyWindow", key}});
      session_.restore();
      EXPECT_EQ(desktop_.events, expectedEvents(defaults_.integerForKey("kLastOpenedWindows"),
                                                defaults_.integerForKey("kLastKeyWindow")))
          << shown << " with key " << key;
    }
  }
}

}  // namespace
}  // namespace quillet
