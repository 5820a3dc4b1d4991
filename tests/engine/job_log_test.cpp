#include "engine/job_log.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "engine/job_fixture.h"

namespace quillet {
namespace {

using testing::ScriptedFolders;
using testing::TemporaryFolder;
using Entry = JobLog::Entry;
using Entries = std::vector<Entry>;

const Entry kNote = {LogNote, "(Earlier entries are in the log file)"};

class JobLogTest : public ::testing::Test {
 protected:
  std::string file() const { return folder_.read("Documents/Log/LastLog.txt"); }
  void addNumbered(int first, int last) {
    for (int i = first; i <= last; ++i)
      log_.addToImportLog(LogInformation, toUtf16("line " + std::to_string(i)));
  }

  TemporaryFolder folder_;
  std::shared_ptr<ScriptedFolders> folders_ = std::make_shared<ScriptedFolders>(folder_.path());
  JobLog log_{folders_};
};

TEST_F(JobLogTest, StoresLinesWithTheirLevels) {
  EXPECT_TRUE(log_.isEmpty());
  log_.addToImportLog(LogWarning, u"é");
  log_.addToImportLog(LogInformation, u"");
  log_.addToImportLog(LogError, std::nullopt);  // is nothing
  EXPECT_EQ(log_.entries(), (Entries{{1, "é"}, {0, ""}}));
  EXPECT_FALSE(log_.isEmpty());
  log_.clear();
  EXPECT_TRUE(log_.isEmpty());
}

TEST_F(JobLogTest, FoldsEqualLines) {
  for (int i = 0; i < 10; ++i) log_.addToImportLog(LogInformation, u"a");
  EXPECT_EQ(log_.entries(), (Entries{{0, "a"}}));
  log_.addToImportLog(LogInformation, u"b");
  log_.addToImportLog(LogInformation, u"a");
  EXPECT_EQ(log_.entries(), (Entries{{0, "a"}, {0, "(Last message repeated 9 times)"}, {0, "b"}, {0, "a"}}));
}

TEST_F(JobLogTest, FoldsALineOfAnotherLevelAndSetsNoFlagForIt) {
  log_.addToImportLog(LogInformation, u"a");
  log_.addToImportLog(LogError, u"a");
  EXPECT_FALSE(log_.atLeastOneError());
  log_.addToImportLog(LogError, u"b");
  EXPECT_EQ(log_.entries(), (Entries{{0, "a"}, {0, "(Last message repeated 1 times)"}, {2, "b"}}));
  EXPECT_TRUE(log_.atLeastOneError());
}

TEST_F(JobLogTest, FoldsEmptyLinesAndTheLineOfRepeatsItself) {
  log_.addToImportLog(LogInformation, u"");
  log_.addToImportLog(LogInformation, u"");
  EXPECT_EQ(log_.entries().size(), 1u);
  log_.addToImportLog(LogInformation, u"b");
  EXPECT_EQ(log_.entries()[1].text, "(Last message repeated 1 times)");
}

TEST_F(JobLogTest, KeepsPendingRepeatsWhenItIsClearedOrSaved) {
  log_.addToImportLog(LogInformation, u"a");
  log_.addToImportLog(LogInformation, u"a");
  EXPECT_FALSE(log_.saveLogToFile(false));
  EXPECT_EQ(file(), "a\n");  // not flushed
  log_.clear();
  log_.addToImportLog(LogInformation, u"b");
  EXPECT_EQ(log_.entries(), (Entries{{0, "(Last message repeated 1 times)"}, {0, "b"}}));
}

TEST_F(JobLogTest, SetsAFlagForEachLevel) {
  struct Case {
    int level;
    bool info, warning, error;
  };
  for (const auto& [level, info, warning, error] :
       {Case{LogInformation, true, false, false}, Case{LogWarning, false, true, false},
        Case{LogError, false, false, true}, Case{LogNote, true, false, false}, Case{4, false, false, false},
        Case{-1, false, false, false}}) {
    log_.clear();
    log_.clearFlags();
    log_.addToImportLog(level, u"x");
    EXPECT_EQ(log_.atLeastOneInfo(), info) << level;
    EXPECT_EQ(log_.atLeastOneWarning(), warning) << level;
    EXPECT_EQ(log_.atLeastOneError(), error) << level;
  }
}

TEST_F(JobLogTest, SavesToItsFile) {
  EXPECT_EQ(log_.path(), folder_.path("Documents/Log/LastLog.txt"));
  EXPECT_FALSE(std::filesystem::exists(*log_.path()));  // asking makes nothing
  log_.addToImportLog(LogInformation, u"é\U0001F600");
  log_.addToImportLog(LogInformation, u"");  // is stored but not written
  log_.addToImportLog(LogNote, u"a note");
  log_.addToImportLog(LogError, u"c");
  EXPECT_FALSE(log_.saveLogToFile(false));
  EXPECT_EQ(file(), "é\U0001F600\nc\n");
  EXPECT_EQ(log_.entries().size(), 4u);  // saving does not empty the list
  EXPECT_FALSE(log_.saveLogToFile(false));
  EXPECT_EQ(file(), "é\U0001F600\nc\né\U0001F600\nc\n");
  EXPECT_FALSE(log_.saveLogToFile(true));
  EXPECT_EQ(file(), "");
  EXPECT_EQ(log_.entries().size(), 4u);
}

TEST_F(JobLogTest, MovesToTheFileAtTheLimit) {
  addNumbered(1, 999);
  EXPECT_EQ(log_.entries().size(), 999u);
  EXPECT_FALSE(std::filesystem::exists(*log_.path()));
  log_.addToImportLog(LogInformation, u"the last");
  EXPECT_EQ(log_.entries(), Entries{kNote});
  const std::string content = file();
  EXPECT_EQ(content.substr(0, 14), "line 1\nline 2\n");
  EXPECT_EQ(content.substr(content.size() - 18), "line 999\nthe last\n");
  EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 1'000);
  log_.addToImportLog(LogInformation, u"the last");  // the note stands in between: no repeat
  EXPECT_EQ(log_.entries(), (Entries{kNote, {0, "the last"}}));
  EXPECT_FALSE(log_.saveLogToFile(false));
  EXPECT_EQ(file(), content + "the last\n");
}

TEST_F(JobLogTest, CountsEntriesWithEmptyTextsTowardTheLimit) {
  for (int i = 0; i < 500; ++i) {
    log_.addToImportLog(LogInformation, u"");
    log_.addToImportLog(LogInformation, u"x");
  }
  EXPECT_EQ(log_.entries(), Entries{kNote});
  EXPECT_EQ(file().size(), 1'000u);  // 500 lines
}

TEST_F(JobLogTest, WritesTheLineOfRepeatsOnceAtTheLimit) {
  addNumbered(1, 999);
  log_.addToImportLog(LogInformation, u"line 999");
  EXPECT_EQ(log_.entries().size(), 999u);
  log_.addToImportLog(LogInformation, u"next");  // the line of repeats is the 1,000th
  EXPECT_EQ(log_.entries(), (Entries{kNote, {0, "next"}}));
  const std::string content = file();
  const std::string end = "line 999\n(Last message repeated 1 times)\n";
  EXPECT_EQ(content.substr(content.size() - end.size()), end);
  EXPECT_EQ(content.find("repeated"), content.rfind("repeated"));
}

TEST_F(JobLogTest, SavesAgainOnceWhenSavingFailsAtTheLimit) {
  folders_->hasDocuments = false;
  addNumbered(1, 1'000);
  // The error of the first save is an entry beyond the limit and saves again; the error of that is a repeat,
  // whose count stands in front of the note. Then the list is emptied for the first save too.
  EXPECT_EQ(log_.entries(), Entries{kNote});
  EXPECT_TRUE(log_.atLeastOneError());
  log_.addToImportLog(LogInformation, u"next");
  EXPECT_EQ(log_.entries(), (Entries{kNote, {0, "next"}}));
}

// --- Failures: lines of the log, never more. ---

TEST_F(JobLogTest, TellsThatThereIsNoDocumentsFolder) {
  folders_->hasDocuments = false;
  EXPECT_EQ(log_.path(), std::nullopt);
  EXPECT_TRUE(log_.saveLogToFile(true));
  EXPECT_TRUE(log_.saveLogToFile(false));
  EXPECT_EQ(log_.entries(), (Entries{{2, "Could not find document directory"}}));
}

TEST_F(JobLogTest, TellsThatItsFolderIsAFile) {
  makeFolders(folder_.path("Documents"));
  folder_.write("Documents/Log", "mine");
  EXPECT_TRUE(log_.saveLogToFile(true));
  EXPECT_EQ(log_.entries(), (Entries{{1, "Log folder cannot be a file"}}));
  EXPECT_EQ(folder_.read("Documents/Log"), "mine");
}

TEST_F(JobLogTest, TellsThatItsFileIsAFolder) {
  makeFolders(folder_.path("Documents/Log/LastLog.txt"));
  EXPECT_TRUE(log_.saveLogToFile(true));
  EXPECT_TRUE(log_.saveLogToFile(false));
  EXPECT_EQ(log_.entries(), (Entries{{2, "Is a directory"}, {2, "Could not open log file, errno 21"}}));
}

TEST_F(JobLogTest, TellsThatItsFolderCannotBeMade) {
  // The Documents folder is a file here, so nothing can be made in it.
  class Broken final : public Folders {
   public:
    explicit Broken(std::string path) : path_(std::move(path)) {}
    std::optional<std::string> documentsFolder() const override { return path_; }
    std::string temporaryParentFolder() const override { return path_; }
    std::string defaultsFile() const override { return path_; }

   private:
    std::string path_;
  };
  JobLog log(std::make_shared<Broken>(folder_.write("file", "")));
  EXPECT_TRUE(log.saveLogToFile(true));
  EXPECT_EQ(log.entries(), (Entries{{1, "Not a directory"}}));
}

TEST_F(JobLogTest, TellsThatTheDiskIsFull) {
  if (::access("/dev/full", W_OK) != 0) GTEST_SKIP() << "needs /dev/full";
  makeFolders(folder_.path("Documents/Log"));
  std::filesystem::create_symlink("/dev/full", folder_.path("Documents/Log/LastLog.txt"));
  log_.addToImportLog(LogInformation, u"a");
  EXPECT_TRUE(log_.saveLogToFile(false));
  EXPECT_EQ(log_.entries(), (Entries{{0, "a"}, {2, "Could not append to log file, errno 28"}}));
}

TEST_F(JobLogTest, TakesLinesFromSeveralThreads) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&, i] {
      for (int k = 0; k < 500; ++k)
        log_.addToImportLog(LogInformation, toUtf16(std::to_string(i) + " " + std::to_string(k)));
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_FALSE(log_.saveLogToFile(false));
  const std::string content = file();
  EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 2'000);
}

}  // namespace
}  // namespace quillet
