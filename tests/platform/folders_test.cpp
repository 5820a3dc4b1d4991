#include "platform/folders.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/environment.h"
#include "support/log_catcher.h"
#include "support/temporary_folder.h"

namespace quillet {
namespace {

using testing::TemporaryFolder;

// A user whose home is a temporary folder, with no variable set but HOME.
class UserFoldersTest : public ::testing::Test {
 protected:
  UserFoldersTest() {
    environment.set("HOME", home.path());
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DOCUMENTS_DIR", "TMPDIR"})
      environment.set(name, std::nullopt);
  }

  void writeUserDirs(const std::string& content) {
    makeFolders(home.path(".config"));
    home.write(".config/user-dirs.dirs", content);
  }

  TemporaryFolder home;
  testing::Environment environment;
  UserFolders folders;
};

TEST_F(UserFoldersTest, DocumentsFolderIsMadeWhenMissing) {
  EXPECT_EQ(folders.documentsFolder(), home.path("Documents"));
  EXPECT_TRUE(isFolder(home.path("Documents")));
  EXPECT_EQ(folders.documentsFolder(), home.path("Documents"));
}

TEST_F(UserFoldersTest, DocumentsFolderIsReadFromTheUserDirectories) {
  struct Case {
    const char* what;
    std::string content;
    std::string folder;  // below the home folder
  };
  const Case cases[] = {
      {"below the home folder", "XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n", "/Papers"},
      {"absolute", "XDG_DOCUMENTS_DIR=\"" + home.path() + "/a b/c\"\n", "/a b/c"},
      {"the home folder itself", "XDG_DOCUMENTS_DIR=\"$HOME/\"\n", ""},
      {"the home folder without a slash", "XDG_DOCUMENTS_DIR=\"$HOME\"\n", ""},
      {"blanks", "  XDG_DOCUMENTS_DIR = \t\"$HOME/Papers\"  \n", "/Papers"},
      {"trailing slash", "XDG_DOCUMENTS_DIR=\"$HOME/Papers/\"", "/Papers"},
      {"escaped", "XDG_DOCUMENTS_DIR=\"$HOME/\\\"My\\\" Papers\"\n", "/\"My\" Papers"},
      {"the last one counts", "XDG_DOCUMENTS_DIR=\"$HOME/A\"\nXDG_DOCUMENTS_DIR=\"$HOME/B\"\n", "/B"},
      {"among others", "# a comment\nXDG_MUSIC_DIR=\"$HOME/M\"\n\nXDG_DOCUMENTS_DIR=\"$HOME/D\"\n", "/D"},
      {"a comment", "# XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n", "/Documents"},
      {"a relative one is passed over", "XDG_DOCUMENTS_DIR=\"Papers\"\n", "/Documents"},
      {"another variable", "XDG_DOCUMENTS_DIR=\"$HOMER/Papers\"\n", "/Documents"},
      {"without quotes", "XDG_DOCUMENTS_DIR=$HOME/Papers\n", "/Documents"},
      {"a longer name", "XDG_DOCUMENTS_DIRS=\"$HOME/Papers\"\n", "/Documents"},
      {"empty file", "", "/Documents"},
  };
  for (const Case& one : cases) {
    writeUserDirs(one.content);
    EXPECT_EQ(folders.documentsFolder(), home.path() + one.folder) << one.what;
    EXPECT_TRUE(isFolder(home.path() + one.folder)) << one.what;
  }
}

TEST_F(UserFoldersTest, TheConfigurationFolderCanBeElsewhere) {
  environment.set("XDG_CONFIG_HOME", home.path("cfg"));
  makeFolders(home.path("cfg"));
  home.write("cfg/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
  EXPECT_EQ(folders.documentsFolder(), home.path("Papers"));
  EXPECT_EQ(folders.defaultsFile(), home.path("cfg/quillet/defaults.json"));
}

TEST_F(UserFoldersTest, NoDocumentsFolderWhenItCannotBeMade) {
  home.write("Documents", "a file");
  EXPECT_EQ(folders.documentsFolder(), std::nullopt);
}

TEST_F(UserFoldersTest, FilesOfTheProgramFollowTheEnvironment) {
  EXPECT_EQ(folders.defaultsFile(), home.path(".config/quillet/defaults.json"));
  EXPECT_EQ(folders.temporaryParentFolder(), home.path(".cache/quillet/tmp"));
  EXPECT_FALSE(fileExists(home.path(".cache")));  // nothing is made by asking
  environment.set("XDG_CACHE_HOME", "/somewhere/cache/");
  EXPECT_EQ(folders.temporaryParentFolder(), "/somewhere/cache/quillet/tmp");
  environment.set("TMPDIR", "/elsewhere//");
  EXPECT_EQ(folders.temporaryParentFolder(), "/elsewhere");
}

TEST_F(UserFoldersTest, RelativeVariablesArePassedOver) {
  environment.set("XDG_CONFIG_HOME", "cfg");
  environment.set("XDG_CACHE_HOME", "");
  environment.set("TMPDIR", "tmp");
  EXPECT_EQ(folders.defaultsFile(), home.path(".config/quillet/defaults.json"));
  EXPECT_EQ(folders.temporaryParentFolder(), home.path(".cache/quillet/tmp"));
}

TEST_F(UserFoldersTest, TheAccountTellsTheHomeFolderWhereTheEnvironmentDoesNot) {
  const passwd* account = ::getpwuid(::getuid());
  if (!account || *account->pw_dir != '/') GTEST_SKIP() << "this account has no home folder";
  const std::string expected = appendPathComponent(account->pw_dir, ".config/quillet/defaults.json");
  for (const auto& value :
       {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>("home")}) {
    environment.set("HOME", value);
    EXPECT_EQ(folders.defaultsFile(), expected);
  }
}

TEST(PrivateTemporaryFolder, IsForItsOwnerOnlyAndHasANameOfItsOwn) {
  const TemporaryFolder parent;
  const PrivateTemporaryFolder one(parent.path("a/b"));
  const PrivateTemporaryFolder two(parent.path("a/b"));
  ASSERT_FALSE(one.path().empty());
  EXPECT_NE(one.path(), two.path());
  EXPECT_EQ(one.path().find(parent.path("a/b/")), 0u);
  struct stat status {};
  ASSERT_EQ(::stat(one.path().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0700u);
}

TEST(PrivateTemporaryFolder, GoesWithItsLeftoversAndStaysInside) {
  const TemporaryFolder parent;
  makeFolders(parent.path("outside"));
  parent.write("outside/kept", "kept");
  std::string path;
  {
    const PrivateTemporaryFolder folder(parent.path("tmp"));
    path = folder.path();
    makeFolders(path + "/inner/more");
    std::ofstream(path + "/inner/more/file") << "left over";
    std::filesystem::create_directory_symlink(parent.path("outside"), path + "/inner/link");
    std::filesystem::create_symlink(parent.path("outside/kept"), path + "/link");
  }
  EXPECT_FALSE(fileExists(path));
  EXPECT_EQ(parent.names(), (std::set<std::string>{"outside", "tmp"}));
  EXPECT_EQ(parent.read("outside/kept"), "kept");
}

// Makes the entry look as if nobody had touched it for an hour.
void makeOld(const std::string& path) {
  const timespec times[2] = {{::time(nullptr) - 3600, 0}, {::time(nullptr) - 3600, 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
}

TEST(PrivateTemporaryFolder, RemovesWhatAKilledProcessLeftAndNothingElse) {
  const TemporaryFolder parent;
  const PrivateTemporaryFolder living(parent.path());
  for (const char* name : {"quillet-Abc123", "quillet-young1", "quillet-longer-name", "other-Abc123"})
    makeFolders(parent.path(name));
  parent.write("quillet-Abc123/big", "left over");
  parent.write("quillet-file01", "a file");
  for (const char* name : {"quillet-Abc123", "quillet-longer-name", "other-Abc123", "quillet-file01"})
    makeOld(parent.path(name));
  makeOld(living.path());

  const PrivateTemporaryFolder next(parent.path());
  EXPECT_EQ(parent.names(), (std::set<std::string>{lastPathComponent(living.path()),
                                                   lastPathComponent(next.path()), "quillet-young1",
                                                   "quillet-longer-name", "other-Abc123", "quillet-file01"}));
}

TEST(PrivateTemporaryFolder, AllThatLiveCanBeRemovedAtOnce) {
  const TemporaryFolder parent;
  parent.write("kept", "kept");
  const PrivateTemporaryFolder one(parent.path());
  const PrivateTemporaryFolder two(parent.path());
  std::ofstream(one.path() + "/file") << "in use";
  PrivateTemporaryFolder::removeAll();
  EXPECT_EQ(parent.names(), (std::set<std::string>{"kept"}));
}

TEST(PrivateTemporaryFolder, HasNoPathWhenItCannotBeMade) {
  const TemporaryFolder parent;
  parent.write("file", "");
  EXPECT_EQ(PrivateTemporaryFolder(parent.path("file/tmp")).path(), "");
  EXPECT_EQ(PrivateTemporaryFolder("").path(), "");
}

TEST(Folders, LastPathComponent) {
  const std::pair<const char*, const char*> cases[] = {
      {"/a/b.txt", "b.txt"}, {"/a/b/", "b"}, {"/a//", "a"}, {"a", "a"},
      {"/a", "a"},           {"/", ""},      {"//", ""},    {"", ""},
  };
  for (const auto& [path, name] : cases) EXPECT_EQ(lastPathComponent(path), name) << path;
}

TEST(Folders, AppendPathComponent) {
  struct Case {
    const char* folder;
    const char* name;
    const char* path;
  };
  const Case cases[] = {
      {"/a", "b", "/a/b"}, {"/a/", "b", "/a/b"}, {"/a//", "//b", "/a/b"},
      {"/", "b", "/b"},    {"", "b", "b"},       {"/a", "", "/a"},
      {"/", "", "/"},      {"", "", ""},         {"a", "b/c", "a/b/c"},
  };
  for (const Case& one : cases)
    EXPECT_EQ(appendPathComponent(one.folder, one.name), one.path) << one.folder << " and " << one.name;
}

TEST(Folders, MakesAndTells) {
  const TemporaryFolder folder;
  EXPECT_TRUE(makeFolders(folder.path("a/b/c")));
  EXPECT_TRUE(makeFolders(folder.path("a/b/c/")));
  EXPECT_TRUE(isFolder(folder.path("a/b/c")));
  EXPECT_TRUE(fileExists(folder.path("a")));
  folder.write("file", "");
  EXPECT_TRUE(fileExists(folder.path("file")));
  EXPECT_FALSE(isFolder(folder.path("file")));
  EXPECT_FALSE(makeFolders(folder.path("file")));
  EXPECT_FALSE(makeFolders(folder.path("file/a")));
  EXPECT_FALSE(makeFolders(""));
  EXPECT_FALSE(fileExists(folder.path("missing")));
  EXPECT_FALSE(isFolder(folder.path("missing")));
}

TEST(Folders, FileUrlsGoBothWays) {
  const std::pair<std::string, std::string> cases[] = {
      {"/a b", "file:///a%20b"},
      {"/", "file:///"},
      {"/caf\xC3\xA9", "file:///caf%C3%A9"},
      {"/not \xFF text", "file:///not%20%FF%20text"},
      {"/100%?#;[\n", "file:///100%25%3F%23%3B%5B%0A"},
      {"/it's-(a)_b.c~d+e", "file:///it's-(a)_b.c~d+e"},
  };
  for (const auto& [path, url] : cases) {
    EXPECT_EQ(fileUrlFromPath(path), url);
    EXPECT_EQ(pathFromFileUrl(url), path);
  }
  EXPECT_EQ(fileUrlFromPath("relative"), "");
}

TEST(Folders, FileUrlsOfOtherHandsAreRead) {
  struct Case {
    const char* url;
    std::optional<std::string> path;
  };
  const Case cases[] = {
      {"file://localhost/a", "/a"},
      {"file:/a", "/a"},
      {"FILE:///a%c3%a9/", "/a\xC3\xA9"},
      {"file:///a?b#c", "/a"},
      {"file://elsewhere/a", std::nullopt},
      {"file:a", std::nullopt},
      {"http:///a", std::nullopt},
      {"/a", std::nullopt},
      {"", std::nullopt},
      {"file", std::nullopt},
      {"file:///a%2", std::nullopt},
      {"file:///a%", std::nullopt},
      {"file:///a%G0", std::nullopt},
      {"file:///a%00b", std::nullopt},
      {"file:///a%2Fb", std::nullopt},
  };
  for (const Case& one : cases) EXPECT_EQ(pathFromFileUrl(one.url), one.path) << one.url;
}

TEST(Folders, FileNameAvailableInFolder) {
  struct Case {
    const char* name;
    std::set<std::string> taken;
    std::string available;
  };
  const Case cases[] = {
      {"data.csv", {}, "data.csv"},
      {"data.csv", {"data.csv"}, "data_2.csv"},
      {"data.csv", {"data.csv", "data_2.csv", "data_4.csv"}, "data_3.csv"},
      {"data.csv", {"data_2.csv"}, "data.csv"},
      {"a.b.csv", {"a.b.csv"}, "a.b_2.csv"},
      {"data", {"data"}, "data_2"},
      {".profile", {".profile"}, ".profile_2"},
      {"data.", {"data."}, "data._2"},
      {"Mr. Smith", {"Mr. Smith"}, "Mr. Smith_2"},
  };
  for (const Case& one : cases) {
    const TemporaryFolder folder;
    for (const std::string& name : one.taken) folder.write(name, "");
    EXPECT_EQ(fileNameAvailableInFolder(folder.path(), one.name), one.available);
  }
}

TEST(Folders, FileNameAvailableInFolderEndsAt99) {
  const TemporaryFolder folder;
  folder.write("a.txt", "");
  for (int number = 2; number < 99; ++number) folder.write("a_" + std::to_string(number) + ".txt", "");
  EXPECT_EQ(fileNameAvailableInFolder(folder.path(), "a.txt"), "a_99.txt");
  makeFolders(folder.path("a_99.txt"));  // a folder takes a name too
  EXPECT_EQ(fileNameAvailableInFolder(folder.path(), "a.txt"), std::nullopt);
}

TEST(Folders, ALinkThatLeadsNowhereTakesItsName) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink(folder.path("missing"), folder.path("a.txt"));
  EXPECT_EQ(fileNameAvailableInFolder(folder.path(), "a.txt"), "a_2.txt");
}

}  // namespace
}  // namespace quillet
