// Database files that are locked, write-protected, broken, too large for the disk or gone: every call comes
// back at once with its status, nothing in the file is lost, and what works again later does so.
#include <chrono>
#include <csignal>
#include <filesystem>
#include <linux/capability.h>
#include <sqlite3.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "storage/database_fixture.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using testing::asStored;
using testing::DatabaseTest;
using testing::fileEntry;
using testing::operation;
using testing::RawDatabase;
using testing::Table;
using testing::TemporaryFolder;
using Lines = std::vector<std::u16string>;
using FlatRows = DBInterface::FlatRows;

// While it lives, permissions of files hold for this process, also where it runs as root.
class HeldPermissions {
 public:
  HeldPermissions() {
    syscall(SYS_capget, &header_, before_);
    __user_cap_data_struct without[2] = {before_[0], before_[1]};
    without[0].effective &= ~(1u << CAP_DAC_OVERRIDE | 1u << CAP_DAC_READ_SEARCH);
    hold_ = syscall(SYS_capset, &header_, without) == 0;
  }
  ~HeldPermissions() { syscall(SYS_capset, &header_, before_); }
  HeldPermissions(const HeldPermissions&) = delete;
  HeldPermissions& operator=(const HeldPermissions&) = delete;
  bool hold() const { return hold_; }

 private:
  __user_cap_header_struct header_ = {_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct before_[2] = {};
  bool hold_ = false;
};

// While it lives, no file of this process grows beyond the size.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t most) : handlerBefore_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {most, before_.rlim_max};
    isSet_ = setrlimit(RLIMIT_FSIZE, &limit) == 0;
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handlerBefore_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  bool isSet() const { return isSet_; }

 private:
  sighandler_t handlerBefore_;
  rlimit before_ = {};
  bool isSet_ = false;
};

class DatabaseFaults : public DatabaseTest {
 protected:
  void SetUp() override {
    setUp();
    ASSERT_EQ(saveFiles(u"kept", {fileEntry("/a", OperationList{operation(201)})}), 0);
    ASSERT_EQ(saveClipboard(u"clip", {operation(416)}), 0);
  }

  // What every call answers, one after the other.
  struct Answers {
    int command, rows, number, save, rename, remove, settings, files, operations, list;
    bool operator==(const Answers&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Answers& a) {
      return out << a.command << " " << a.rows << " " << a.number << " " << a.save << " " << a.rename << " "
                 << a.remove << " " << a.settings << " " << a.files << " " << a.operations << " " << a.list;
    }
  };
  Answers answers() {
    const auto start = std::chrono::steady_clock::now();
    Answers result = {};
    FlatRows rows;
    SettingsRecord settings;
    std::vector<SettingsRecord> files;
    OperationList operations;
    const std::string query = "select count(*) from jobs";
    result.command = database_.execCommand("insert into jobs (name) values ('direct')");
    result.rows = database_.getRows(&rows, query);
    result.number = database_.getNumberWithQuery(query);
    result.save = saveFiles(u"new", {fileEntry("/b", OperationList{operation(202)})});
    result.rename = database_.updatePreviousJobs("1", u"renamed", true);
    result.remove = database_.deleteJobSettings({"2"}, true);
    result.settings = database_.getJobSettings(settings, "1");
    result.files = database_.getInputFileSettings(files, "1");
    result.operations = database_.getOperations(operations, "1", "/a");
    result.list = database_.getPreviousJobs(rows, 1, std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    return result;
  }

  // All of the two jobs is there, and no more.
  void expectAsBefore() {
    EXPECT_EQ(raw("select name from jobs order by rowid"), (Table{{"kept"}, {"clip"}}));
    EXPECT_EQ(operationsOf("1", "/a"), asStored(OperationList{operation(201)}));
    EXPECT_EQ(operationsOf("2"), asStored(OperationList{operation(416)}));
    EXPECT_EQ(rawValue("pragma integrity_check"), "ok");
  }
  void expectItWorksAgain() {
    EXPECT_EQ(saveFiles(u"again", {fileEntry("/c")}), 0);
    EXPECT_EQ(rawValue("select count(*) from jobs where name='again'"), "1");
  }
};

TEST_F(DatabaseFaults, ALockedFileFailsAtOnce) {
  const std::string before = bytes();
  {
    RawDatabase other(file());
    other.rows("begin exclusive");
    EXPECT_EQ(answers(), (Answers{5, 5, -1, 5, 5, 5, 5, 5, 5, 5}));
    EXPECT_EQ(log(), Lines(3, u"database is locked")) << "of the command, the rename and the delete";
    EXPECT_EQ(database_.setupDatabase(), 0);
    EXPECT_EQ(log(), Lines{});
  }
  EXPECT_EQ(bytes(), before);
  expectAsBefore();
  expectItWorksAgain();
}

TEST_F(DatabaseFaults, AFileThatAnotherReadsCanBeReadAndNotWritten) {
  {
    RawDatabase other(file());
    other.rows("begin; select * from jobs");
    EXPECT_EQ(answers(), (Answers{5, 0, 2, -3, 5, 5, 0, 0, 0, 0}));
    EXPECT_EQ(log(), (Lines{u"database is locked", u"database is locked", u"could not add the job to the db",
                            u"database is locked", u"database is locked"}));
    EXPECT_EQ(saveFiles(u"kept", {fileEntry("/a")}), 5) << "the status of the last script";
    EXPECT_EQ(log(),
              (Lines{u"database is locked", u"Could not update the job in the db", u"database is locked"}));
    EXPECT_EQ(saveFiles(u"kept", {fileEntry("/b")}), -2);
    EXPECT_EQ(log().back(), u"Only 0 input files IDs, expected 1");
  }
  expectAsBefore();
  expectItWorksAgain();
}

TEST_F(DatabaseFaults, AWriteProtectedFileCanBeRead) {
  chmod(file().c_str(), 0444);
  {
    const HeldPermissions permissions;
    if (!permissions.hold()) GTEST_SKIP() << "root's right to write everywhere cannot be given up here";
    EXPECT_EQ(answers(), (Answers{8, 0, 2, -3, 8, 8, 0, 0, 0, 0}));
    EXPECT_EQ(log().front(), u"attempt to write a readonly database");
    EXPECT_EQ(database_.setupDatabase(), 0) << "there is nothing to add";
  }
  expectAsBefore();
}

TEST_F(DatabaseFaults, AnUnreadableFileCannotBeOpened) {
  chmod(file().c_str(), 0);
  {
    const HeldPermissions permissions;
    if (!permissions.hold()) GTEST_SKIP() << "root's right to read everything cannot be given up here";
    EXPECT_EQ(answers(), (Answers{14, 14, -1, 14, 14, 14, 14, 14, 14, 14}));
    EXPECT_EQ(log().front(), u"Could not open the database " + toUtf16(file()) + u", rc = 14");
    EXPECT_EQ(database_.setupDatabase(), 0);
  }
  chmod(file().c_str(), 0644);
  expectAsBefore();
}

TEST_F(DatabaseFaults, AWriteProtectedFolderTakesNoJournal) {
  chmod(folder_.path().c_str(), 0555);
  {
    const HeldPermissions permissions;
    if (!permissions.hold()) GTEST_SKIP() << "root's right to write everywhere cannot be given up here";
    const Answers told = answers();
    EXPECT_GT(told.command, 0);
    EXPECT_EQ(told, (Answers{told.command, 0, 2, -3, told.command, told.command, 0, 0, 0, 0}));
    DBInterface other("other.db", folder_.path());
    EXPECT_EQ(other.execCommand("select 1"), 14) << "cannot be made";
  }
  chmod(folder_.path().c_str(), 0755);
  expectAsBefore();
  expectItWorksAgain();
}

TEST_F(DatabaseFaults, AFileThatIsNoDatabaseStaysAsItIs) {
  for (const std::string& garbage : {std::string(8192, 'g'), std::string("name,city\n"),
                                     std::string("SQLite format 3\0", 16) + std::string(4096, '\xff')}) {
    folder_.write("quillet.db", garbage);
    EXPECT_EQ(answers(), (Answers{26, 26, -1, 26, 26, 26, 26, 26, 26, 26}));
    EXPECT_EQ(log(), Lines(3, u"file is not a database"));
    EXPECT_EQ(database_.setupDatabase(), 0);
    EXPECT_EQ(bytes(), garbage);
  }
}

// A file that lacks a page is told to every call. One that is cut in its last page alone is not: SQLite
// fills up what is missing.
TEST_F(DatabaseFaults, ACutFileIsToldAndStaysAsItIs) {
  const std::string whole = bytes();
  const std::size_t lastPage = whole.size() - std::stoul(rawValue("pragma page_size"));
  for (std::size_t size = 16; size < whole.size(); size += size < 128 ? 16 : 509) {
    const std::string cut = whole.substr(0, size);
    folder_.write("quillet.db", cut);
    FlatRows rows;
    const int status = database_.getRows(&rows, "select * from jobs");
    if (size > lastPage) {
      EXPECT_EQ(status, 0) << size;
      EXPECT_EQ(bytes(), cut);
      continue;
    }
    EXPECT_TRUE(status == 11 || status == 26) << size << ": " << status;
    const int n = status;
    EXPECT_EQ(answers(), (Answers{n, n, -1, n, n, n, n, n, n, n})) << size;
    EXPECT_EQ(database_.setupDatabase(), 0) << size;
    EXPECT_EQ(bytes(), cut) << size;
  }
}

TEST_F(DatabaseFaults, AnEmptyFileBecomesADatabase) {
  folder_.write("quillet.db", "");
  EXPECT_EQ(saveFiles(u"new", {fileEntry("/b")}), 1) << "there are no tables";
  setUp();
  expectItWorksAgain();
}

TEST_F(DatabaseFaults, BrokenPagesNeverCrash) {
  const std::string whole = bytes();
  for (std::size_t place = 100; place < whole.size(); place += 331) {
    std::string broken = whole;
    for (std::size_t i = place; i < std::min(place + 40, whole.size()); ++i) broken[i] = '\xee';
    folder_.write("quillet.db", broken);
    answers();
    database_.setupDatabase();
  }
}

TEST_F(DatabaseFaults, AFullDiskLosesNothing) {
  const OperationList large(200, operation(203, std::u16string(1000, u'x')));
  {
    const FileSizeLimit limit(static_cast<rlim_t>(bytes().size()) + 20'000);
    ASSERT_TRUE(limit.isSet());
    const int status = saveFiles(u"large", {fileEntry("/b", large)});
    EXPECT_TRUE(status == 10 || status == 13) << status;
    EXPECT_EQ(raw("select name from jobs order by rowid"), (Table{{"kept"}, {"clip"}, {"large"}}))
        << "only its row";
    EXPECT_EQ(operationsOf("1", "/a"), asStored(OperationList{operation(201)}));
  }
  ASSERT_EQ(database_.deleteJobSettings({"3"}, true), 0);
  expectAsBefore();
  ASSERT_EQ(saveFiles(u"large", {fileEntry("/b", large)}), 0);
  EXPECT_EQ(operationsOf(idOf("large"), "/b"), asStored(large));
}

TEST_F(DatabaseFaults, ADiskThatIsFullFromTheStartTellsIt) {
  const std::string before = bytes();
  {
    const FileSizeLimit limit(0);
    ASSERT_TRUE(limit.isSet());
    const Answers told = answers();
    EXPECT_TRUE(told.command == 10 || told.command == 13) << told;
    EXPECT_EQ(told, (Answers{told.command, 0, 2, -3, told.command, told.command, 0, 0, 0, 0}));
  }
  EXPECT_EQ(bytes(), before);
  expectAsBefore();
  expectItWorksAgain();
}

TEST_F(DatabaseFaults, AFileThatIsGoneIsMadeAnewAndHasNoTables) {
  fs::remove(file());
  EXPECT_EQ(answers(), (Answers{1, 1, -1, 1, 1, 1, 1, 1, 1, 1}));
  EXPECT_EQ(log(), Lines(3, u"no such table: jobs"));
  setUp();
  expectItWorksAgain();
}

TEST_F(DatabaseFaults, AFolderThatIsGoneIsTold) {
  fs::remove_all(folder_.path());
  EXPECT_EQ(answers(), (Answers{14, 14, -1, 14, 14, 14, 14, 14, 14, 14}));
  EXPECT_EQ(database_.setupDatabase(), 0);
  EXPECT_FALSE(fs::exists(folder_.path()));
}

TEST_F(DatabaseFaults, APipeInPlaceOfTheFileDoesNotHang) {
  fs::remove(file());
  ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
  const Answers told = answers();
  EXPECT_GT(told.command, 0);
  EXPECT_GT(told.save, 0);
  EXPECT_EQ(database_.setupDatabase(), 0);
}

TEST_F(DatabaseFaults, WhatAKilledProcessBeganIsTakenBack) {
  const pid_t child = fork();
  if (child == 0) {
    sqlite3* handle = nullptr;
    sqlite3_open(file().c_str(), &handle);
    // A small cache, so that pages of the transaction reach the file.
    sqlite3_exec(handle,
                 "pragma cache_size=1; pragma cache_spill=1; begin immediate; delete from jobs; "
                 "with recursive n(i) as (select 1 union all select i+1 from n where i<20000) "
                 "insert into jobs (name) select 'half'||i from n;",
                 nullptr, nullptr, nullptr);
    kill(getpid(), SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  ASSERT_TRUE(fs::exists(file() + "-journal"));
  EXPECT_EQ(database_.getNumberWithQuery("select count(*) from jobs"), 2);
  expectAsBefore();
  expectItWorksAgain();
}

}  // namespace
}  // namespace quillet
