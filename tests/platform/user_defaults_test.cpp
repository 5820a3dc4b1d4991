#include "platform/user_defaults.h"

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "support/log_catcher.h"
#include "support/temporary_folder.h"

namespace quillet {
namespace {

using nlohmann::json;
using testing::LogCatcher;
using testing::TemporaryFolder;
using Names = std::set<std::string>;

class UserDefaultsTest : public ::testing::Test {
 protected:
  json stored() { return json::parse(folder.read("defaults.json")); }

  TemporaryFolder folder;
  std::string path = folder.path("defaults.json");
  LogCatcher log;
};

TEST_F(UserDefaultsTest, StartsEmptyWithoutAFileAndMakesNone) {
  const UserDefaults defaults(path);
  EXPECT_TRUE(defaults.value("Key").is_null());
  EXPECT_FALSE(defaults.has("Key"));
  EXPECT_FALSE(defaults.boolForKey("Key"));
  EXPECT_EQ(defaults.integerForKey("Key"), 0);
  EXPECT_EQ(defaults.stringForKey("Key"), std::nullopt);
  EXPECT_EQ(folder.names(), Names{});
  EXPECT_TRUE(log.lines.empty());
}

TEST_F(UserDefaultsTest, WritesAChangeAtOnceAndNothingBesideIt) {
  UserDefaults defaults(path);
  defaults.setValue("Text", "caf\xC3\xA9");
  EXPECT_EQ(stored(), json({{"Text", "caf\xC3\xA9"}}));
  defaults.setValues({{"List", json::array({1, 2})}, {"Text", nullptr}, {"Empty", ""}});
  EXPECT_EQ(stored(), json({{"List", {1, 2}}, {"Empty", ""}}));
  EXPECT_FALSE(defaults.has("Text"));
  EXPECT_TRUE(defaults.has("Empty"));
  EXPECT_EQ(defaults.stringForKey("Empty"), u"");
  EXPECT_EQ(folder.names(), Names{"defaults.json"});
  EXPECT_EQ(UserDefaults(path).value("List"), json::array({1, 2}));
  EXPECT_TRUE(log.lines.empty());
}

TEST_F(UserDefaultsTest, MakesTheFolderOfTheFile) {
  UserDefaults(folder.path("a/b/defaults.json")).setValue("Key", 1);
  EXPECT_EQ(folder.read("a/b/defaults.json"), "{\n  \"Key\": 1\n}\n");
}

TEST_F(UserDefaultsTest, IsForItsOwnerOnlyUnlessTheFileSaysOtherwise) {
  const auto modeOfFile = [this] {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 0777;
  };
  UserDefaults defaults(path);
  defaults.setValue("Key", 1);
  EXPECT_EQ(modeOfFile(), 0600u);
  ::chmod(path.c_str(), 0644);
  defaults.setValue("Key", 2);
  EXPECT_EQ(modeOfFile(), 0644u);
}

TEST_F(UserDefaultsTest, ALinkStaysAndTheFileBehindItIsReplaced) {
  std::filesystem::create_directory(folder.path("real"));
  folder.write("real/settings", "{\"Kept\": true}");
  std::filesystem::create_symlink("real/settings", path);
  UserDefaults(path).setValue("Key", 1);
  EXPECT_TRUE(std::filesystem::is_symlink(path));
  EXPECT_EQ(json::parse(folder.read("real/settings")), json({{"Kept", true}, {"Key", 1}}));
}

TEST_F(UserDefaultsTest, ReadsNumbersAndTextsTolerantly) {
  struct Case {
    json value;
    bool asBool;
    std::int64_t asInteger;
    std::optional<std::u16string> asString;
  };
  constexpr std::int64_t kMaximum = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kMinimum = std::numeric_limits<std::int64_t>::min();
  const Case cases[] = {
      {true, true, 1, u"1"},
      {false, false, 0, u"0"},
      {0, false, 0, u"0"},
      {-7, true, -7, u"-7"},
      {std::uint64_t{1} << 63, true, kMaximum, u"9223372036854775808"},
      {kMinimum, true, kMinimum, u"-9223372036854775808"},
      {2.9, true, 2, u"2.9"},
      {-2.9, true, -2, u"-2.9"},
      {0.5, true, 0, u"0.5"},
      {3.0, true, 3, u"3"},
      {1e300, true, kMaximum, u"1e+300"},
      {-1e300, true, kMinimum, u"-1e+300"},
      {"", false, 0, u""},
      {"YES", true, 0, u"YES"},
      {"yes", true, 0, u"yes"},
      {"true", true, 0, u"true"},
      {"NO", false, 0, u"NO"},
      {"yesterday", false, 0, u"yesterday"},
      {"0", false, 0, u"0"},
      {"12abc", true, 12, u"12abc"},
      {"-1", true, -1, u"-1"},
      {"0.5", true, 0, u"0.5"},
      {json::array({1}), false, 0, std::nullopt},
      {json::object({{"a", 1}}), false, 0, std::nullopt},
  };
  UserDefaults defaults(path);
  for (const Case& one : cases) {
    defaults.setValue("Key", one.value);
    EXPECT_EQ(defaults.boolForKey("Key"), one.asBool) << one.value;
    EXPECT_EQ(defaults.integerForKey("Key"), one.asInteger) << one.value;
    EXPECT_EQ(defaults.stringForKey("Key"), one.asString) << one.value;
  }
}

TEST_F(UserDefaultsTest, ALoneSurrogateInATextLosesNothingElse) {
  UserDefaults defaults(path);
  defaults.setValues({{"Bad", "a\xED\xA0\x80z"}, {"Worse", "\xFF"}, {"Good", "b"}});
  EXPECT_EQ(stored()["Good"], "b");
  EXPECT_EQ(UserDefaults(path).stringForKey("Good"), u"b");
  EXPECT_EQ(UserDefaults(path).stringForKey("Worse"), u"\uFFFD");
  EXPECT_TRUE(log.lines.empty());
}

TEST_F(UserDefaultsTest, SetsAsideWhatIsNoObject) {
  const std::string broken[] = {"{\"Key\": 1",
                                "",
                                "[1, 2]",
                                "42",
                                "{\"Key\": \"\xFF\"}",
                                "{} x",
                                "{\"Deep\": " + std::string(100000, '[') + std::string(100000, ']') + "}"};
  for (const std::string& content : broken) {
    const TemporaryFolder place;
    place.write("settings", content);
    log.lines.clear();
    UserDefaults defaults(place.path("settings"));
    EXPECT_EQ(place.names(), Names{"settings.broken-1"});
    EXPECT_EQ(place.read("settings.broken-1"), content);
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_NE(log.lines[0].find(u"set aside"), std::u16string::npos);
    defaults.setValue("Key", 2);
    EXPECT_EQ(json::parse(place.read("settings")), json({{"Key", 2}}));
  }
}

TEST_F(UserDefaultsTest, NeverSetsAsideOverAnEarlierOne) {
  folder.write("defaults.json.broken-1", "first");
  folder.write("defaults.json.broken-3", "third");
  for (const char* content : {"second{", "fourth{"}) {
    folder.write("defaults.json", content);
    const UserDefaults defaults(path);
  }
  EXPECT_EQ(folder.read("defaults.json.broken-1"), "first");
  EXPECT_EQ(folder.read("defaults.json.broken-2"), "second{");
  EXPECT_EQ(folder.read("defaults.json.broken-3"), "third");
  EXPECT_EQ(folder.read("defaults.json.broken-4"), "fourth{");
}

// A folder in the place of the file cannot be read, whoever runs the test.
TEST_F(UserDefaultsTest, LeavesAloneWhatItCouldNotRead) {
  std::filesystem::create_directory(path);
  folder.write("defaults.json/inside", "kept");
  UserDefaults defaults(path);
  EXPECT_EQ(log.lines.size(), 1u);
  defaults.setValue("Key", 1);
  EXPECT_EQ(defaults.integerForKey("Key"), 1);  // it holds for this run
  EXPECT_EQ(folder.read("defaults.json/inside"), "kept");
  EXPECT_EQ(folder.names(), Names{"defaults.json"});
  EXPECT_EQ(log.lines.size(), 2u);
}

TEST_F(UserDefaultsTest, LeavesAloneAFileWithoutPermission) {
  if (::geteuid() == 0) GTEST_SKIP() << "nothing is unreadable for this account";
  folder.write("defaults.json", "{\"Theirs\": 1, \"Both\": 1}");
  ::chmod(path.c_str(), 0);
  UserDefaults defaults(path);
  defaults.setValue("Both", 2);
  ::chmod(path.c_str(), 0600);
  EXPECT_EQ(stored(), json({{"Theirs", 1}, {"Both", 1}}));
}

TEST_F(UserDefaultsTest, WritesOnTopOfWhatCouldBeReadAfterAll) {
  std::filesystem::create_directory(path);
  UserDefaults defaults(path);
  defaults.setValue("Both", 2);
  defaults.setValue("Gone", nullptr);
  std::filesystem::remove(path);
  folder.write("defaults.json", "{\"Theirs\": 1, \"Both\": 1, \"Gone\": 1}");
  defaults.setValue("Mine", 3);
  EXPECT_EQ(stored(), json({{"Theirs", 1}, {"Both", 2}, {"Mine", 3}}));
  EXPECT_EQ(defaults.integerForKey("Theirs"), 1);
}

TEST_F(UserDefaultsTest, TellsWhatItCouldNotWriteAndTriesAgain) {
  folder.write("file", "");
  UserDefaults defaults(folder.path("file/defaults.json"));
  EXPECT_TRUE(log.lines.empty());
  defaults.setValue("Key", 1);
  ASSERT_EQ(log.lines.size(), 1u);
  EXPECT_NE(log.lines[0].find(u"Could not write"), std::u16string::npos);
  EXPECT_EQ(defaults.integerForKey("Key"), 1);
  std::filesystem::remove(folder.path("file"));
  defaults.setValue("Key", 1);  // no change, but not written yet
  EXPECT_EQ(folder.read("file/defaults.json"), "{\n  \"Key\": 1\n}\n");
  EXPECT_EQ(log.lines.size(), 1u);
}

TEST_F(UserDefaultsTest, WithoutAPathHoldsForThisRun) {
  UserDefaults defaults("");
  defaults.setValue("Key", 1);
  EXPECT_EQ(defaults.integerForKey("Key"), 1);
  EXPECT_EQ(log.lines.size(), 1u);
}

TEST_F(UserDefaultsTest, AChangeToTheSameValueCostsNoWrite) {
  UserDefaults defaults(path);
  defaults.setValue("Key", 1);
  std::filesystem::remove(path);
  defaults.setValue("Key", 1);
  defaults.setValue("Missing", nullptr);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(UserDefaultsTest, TakesChangesFromSeveralThreads) {
  UserDefaults defaults(path);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&defaults, i] {
      for (int step = 0; step < 10; ++step) {
        defaults.setValue("Key" + std::to_string(i), step);
        EXPECT_EQ(defaults.integerForKey("Key" + std::to_string(i)), step);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(stored(), json({{"Key0", 9}, {"Key1", 9}, {"Key2", 9}, {"Key3", 9}}));
  EXPECT_EQ(folder.names(), Names{"defaults.json"});
}

// Each of the two contents is written over the other until the process is killed, wherever it then stands.
TEST_F(UserDefaultsTest, AKilledProcessLeavesTheOldFileOrTheNewOne) {
  const std::string large(200'000, 'x');
  const json first = {{"Key", 1}, {"Large", large}};
  const json second = {{"Key", 2}, {"Large", large + large}};
  int newer = 0;
  for (int round = 0; round < 40 || (newer == 0 && round < 400); ++round) {
    UserDefaults(path).setValues(first.get<std::map<std::string, json>>());
    const pid_t writer = ::fork();
    if (writer == 0) {
      UserDefaults defaults(path);
      for (;;) {
        defaults.setValues(second.get<std::map<std::string, json>>());
        defaults.setValues(first.get<std::map<std::string, json>>());
      }
    }
    std::this_thread::sleep_for(std::chrono::microseconds(1'000 + round * 731));
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    const json left = stored();
    ASSERT_TRUE(left == first || left == second) << "round " << round;
    newer += left == second;
  }
  EXPECT_GT(newer, 0) << "no round was killed behind a write";
  EXPECT_TRUE(log.lines.empty());
}

}  // namespace
}  // namespace quillet
