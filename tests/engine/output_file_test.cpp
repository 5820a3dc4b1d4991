#include "engine/output_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "engine/job_fixture.h"

namespace quillet {
namespace {

using testing::LogCatcher;
using testing::ScriptedFolders;
using testing::TemporaryFolder;

class OutputFileTest : public ::testing::Test {
 protected:
  OutputFileTest() {
    makeFolders(folder_.path("out"));
    makeFolders(folder_.path("tmp"));
  }

  // One whole use: the bytes go to the temporary file and from there to the output.
  void bring(const std::string& bytes, std::u16string_view name, std::int64_t mode) {
    OutputFile file(folder_.path("tmp"), name, mode, log_);
    const int descriptor = file.createTemporaryFile();
    if (descriptor >= 0) {
      EXPECT_EQ(::write(descriptor, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    file.closeTemporaryFile();
    finish(file);
  }
  void finish(OutputFile& file) {
    file.finish(folder_.path("out"), [this](const std::string& path) { opened_.push_back(path); });
  }

  // The log's lines with the test's folder as "~".
  std::vector<std::string> logged() const {
    std::vector<std::string> lines;
    for (const auto& [level, text] : log_.entries()) {
      EXPECT_EQ(level, LogError);
      std::string line = text;
      for (std::size_t at; (at = line.find(folder_.path())) != line.npos;)
        line.replace(at, folder_.path().size(), "~");
      lines.push_back(line);
    }
    return lines;
  }

  TemporaryFolder folder_;
  JobLog log_{std::make_shared<ScriptedFolders>(folder_.path())};
  std::vector<std::string> opened_;
  LogCatcher systemLog_;
};

using Lines = std::vector<std::string>;
using Names = std::set<std::string>;

TEST_F(OutputFileTest, ReplacesOrAppendsByItsMode) {
  struct Case {
    std::int64_t mode;
    std::string before, after;
  };
  for (const auto& [mode, before, after] :
       {Case{1, "old", "new"}, Case{2, "a longer old one", "new"}, Case{3, "old", "oldnew"},
        Case{0, "old", "new"}, Case{4, "old", "new"}}) {
    folder_.write("out/a.txt", before);
    bring("new", u"a.txt", mode);
    EXPECT_EQ(folder_.read("out/a.txt"), after) << mode;
    std::filesystem::remove(folder_.path("out/a.txt"));
    bring("new", u"a.txt", mode);
    EXPECT_EQ(folder_.read("out/a.txt"), "new") << mode;
    EXPECT_EQ(std::filesystem::exists(folder_.path("tmp/a.txt")), false) << mode;
  }
  EXPECT_EQ(logged(), Lines{});
  EXPECT_EQ(opened_, Lines(10, folder_.path("out/a.txt")));
}

TEST_F(OutputFileTest, GivesTheOutputItsMode) {
  bring("new", u"a.txt", 2);
  struct stat status;
  ASSERT_EQ(stat(folder_.path("out/a.txt").c_str(), &status), 0);
  const mode_t mask = umask(0);
  umask(mask);
  EXPECT_EQ(status.st_mode & 0777, 0644 & ~mask);
}

TEST_F(OutputFileTest, BringsAnEmptyAndALargeFile) {
  bring("", u"empty", 2);
  EXPECT_EQ(folder_.names().size(), 2u);
  EXPECT_TRUE(std::filesystem::exists(folder_.path("out/empty")));
  std::string large;
  for (int i = 0; large.size() < 1'000'000; ++i) large += std::to_string(i);
  folder_.write("out/large", "x");
  bring(large, u"large", 2);
  EXPECT_EQ(folder_.read("out/large"), large);
  bring(large, u"large", 3);
  EXPECT_EQ(folder_.read("out/large"), large + large);
}

TEST_F(OutputFileTest, WritesThroughALinkAndToNoOtherName) {
  folder_.write("elsewhere", "old");
  std::filesystem::create_symlink(folder_.path("elsewhere"), folder_.path("out/a.txt"));
  std::filesystem::create_symlink(folder_.path("made later"), folder_.path("out/b.txt"));
  bring("new", u"a.txt", 2);
  bring("new too", u"b.txt", 2);
  EXPECT_EQ(folder_.read("elsewhere"), "new");
  EXPECT_EQ(folder_.read("made later"), "new too");
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.path("out/a.txt")));
}

TEST_F(OutputFileTest, NeedsAFileName) {
  bring("", u"", 2);
  EXPECT_EQ(logged(),
            (Lines{"Could not open \"~/tmp\" for writing [errno 21]", "Output file must have a file name."}));
  EXPECT_EQ(opened_, Lines{});
  EXPECT_FALSE(std::filesystem::exists(folder_.path("tmp")));  // the run's own empty folder
}

TEST_F(OutputFileTest, TellsThatATemporaryFolderIsNotEmpty) {
  folder_.write("tmp/other", "x");
  bring("", u"", 2);
  ASSERT_EQ(logged().size(), 3u);
  EXPECT_EQ(logged()[2], "Could not remove tmp file \"~/tmp\" [Directory not empty]");
  EXPECT_EQ(folder_.read("tmp/other"), "x");
}

TEST_F(OutputFileTest, LosesAnOutputThatCannotBeOpened) {
  makeFolders(folder_.path("out/a.txt"));
  bring("new", u"a.txt", 2);
  EXPECT_EQ(logged(), Lines{"Could not open output file \"~/out/a.txt\" for writing [errno 21]"});
  EXPECT_FALSE(std::filesystem::exists(folder_.path("tmp/a.txt")));
  EXPECT_EQ(opened_, Lines{});
}

TEST_F(OutputFileTest, LosesTheOutputWithoutAFolderForIt) {
  std::filesystem::remove(folder_.path("out"));
  bring("new", u"a.txt", 2);
  EXPECT_EQ(logged(), Lines{"Could not open output file \"~/out/a.txt\" for writing [errno 2]"});
  EXPECT_FALSE(std::filesystem::exists(folder_.path("tmp/a.txt")));
}

TEST_F(OutputFileTest, GoesOnWithoutATemporaryFile) {
  std::filesystem::remove(folder_.path("tmp"));
  bring("", u"a.txt", 2);
  EXPECT_EQ(logged(), (Lines{"Could not open \"~/tmp/a.txt\" for writing [errno 2]",
                             "Could not open tmp file \"~/tmp/a.txt\" for reading [errno 2]"}));
  EXPECT_EQ(folder_.names(), Names{"out"});
}

TEST_F(OutputFileTest, MissesATemporaryFileThatVanished) {
  OutputFile file(folder_.path("tmp"), u"a.txt", 2, log_);
  EXPECT_GE(file.createTemporaryFile(), 0);
  file.closeTemporaryFile();
  std::filesystem::remove(folder_.path("tmp/a.txt"));
  finish(file);
  EXPECT_EQ(logged(), Lines{"Could not open tmp file \"~/tmp/a.txt\" for reading [errno 2]"});
}

TEST_F(OutputFileTest, KeepsToTheFolderOfTheProcessWithoutOne) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path("out"));
  OutputFile file(folder_.path("tmp"), u"bare.txt", 2, log_);
  file.createTemporaryFile();
  file.closeTemporaryFile();
  file.finish("", [this](const std::string& path) { opened_.push_back(path); });
  std::filesystem::current_path(before);
  EXPECT_EQ(opened_, Lines{"bare.txt"});
  EXPECT_TRUE(std::filesystem::exists(folder_.path("out/bare.txt")));
}

TEST(RunFolder, IsPrivateAndIsMadeAgain) {
  const TemporaryFolder folder;
  std::string path;
  {
    RunFolder run(folder.path("parent"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("parent")));  // not before it is needed
    path = run.path();
    EXPECT_EQ(run.path(), path);
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    EXPECT_NE(RunFolder(folder.path("parent")).path(), path);
    std::filesystem::remove(path);
    EXPECT_TRUE(std::filesystem::is_directory(run.path()));
    path = run.path();
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(RunFolder, NamesAFolderThatIsNotThereWhereNoneCanBeMade) {
  const TemporaryFolder folder;
  RunFolder run(folder.write("file", "") + "/below");
  EXPECT_NE(run.path(), "");
  EXPECT_FALSE(std::filesystem::exists(run.path()));
}

}  // namespace
}  // namespace quillet
