// Jobs where files, folders and disks fail: the failure is told, the rest of the job is done, and nothing is
// left in the temporary folder.
#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <linux/capability.h>
#include <optional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

namespace fs = std::filesystem;

constexpr const char* kIssues = "\nJob completed with issues\n";

// A line as the log file has it.
std::string logLine(const std::string& text) {
  return "\n" + text + "\n";
}

// From now on file permissions hold for the processes that this one starts, also where they run as root.
bool makePermissionsHold() {
  if (geteuid() != 0) return true;
  return prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0) == 0 &&
         prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0) == 0;
}

// A small file system in memory at a folder. Only this process and those that it starts see it.
class SmallDisk {
 public:
  SmallDisk(const std::string& folder, const char* size) : folder_(folder) {
    static const bool isApart = setApart();
    const std::string options = std::string("mode=755,size=") + size;
    mounted_ = isApart && mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
  }
  ~SmallDisk() {
    if (mounted_) umount2(folder_.c_str(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  bool isThere() const { return mounted_; }
  bool makeReadOnly() const {
    return mount("none", folder_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
  }

 private:
  // Where this is not root, it can become the master of a space of its own.
  static bool setApart() {
    const std::string user = std::to_string(geteuid()), group = std::to_string(getegid());
    if (unshare(CLONE_NEWNS) != 0) {
      if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
      std::ofstream("/proc/self/setgroups") << "deny";
      std::ofstream("/proc/self/uid_map") << user << ' ' << user << " 1";
      std::ofstream("/proc/self/gid_map") << group << ' ' << group << " 1";
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
  }

  std::string folder_;
  bool mounted_ = false;
};

// A limit on a resource for the processes that begin meanwhile.
class ResourceLimit {
 public:
  ResourceLimit(__rlimit_resource resource, rlim_t most) : resource_(resource) {
    getrlimit(resource_, &before_);
    const rlimit limit = {most, before_.rlim_max};
    isSet_ = setrlimit(resource_, &limit) == 0;
  }
  ~ResourceLimit() { setrlimit(resource_, &before_); }
  ResourceLimit(const ResourceLimit&) = delete;
  ResourceLimit& operator=(const ResourceLimit&) = delete;
  bool isSet() const { return isSet_; }

 private:
  __rlimit_resource resource_;
  rlimit before_ = {};
  bool isSet_ = false;
};

// Numbered lines of 8 bytes.
std::string numberedLines(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += std::to_string(1'000'000 + i) + "\n";
  return text;
}

bool waitUntil(const std::function<bool()>& holds) {
  for (int i = 0; i < 2'000; ++i) {
    if (holds()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return false;
}

#define SKIP_UNLESS(condition, reason) \
  if (!(condition)) GTEST_SKIP() << reason

class Faults : public Scenario {
 protected:
  static void SetUpTestSuite() { signal(SIGPIPE, SIG_IGN); }

  // A job of the file at the path, and behind it a good one.
  void jobOf(const std::string& file, const json& operations = csvOperations("first.csv")) {
    launch();
    useOutputFolder();
    add({file, write("good.csv", "1,2\n3,4\n")});
    setOperations(0, operations);
    setOperations(1, csvOperations("good_out.csv"));
    select({});
  }

  std::string inFolder(const std::string& folder, const std::string& name) {
    fs::create_directories(path(folder));
    return path(folder + "/" + name);
  }

  void makePipe(const std::string& name) const { ASSERT_EQ(mkfifo(path(name).c_str(), 0600), 0); }

  // A job of a pipe, which was a file when it was added; its path.
  std::string jobOfAPipe() {
    const std::string file = write("pipe.csv", "");
    jobOf(file);
    fs::remove(file);
    makePipe("pipe.csv");
    return file;
  }

  // A run that waits in the middle of its first file; what release() wants.
  int runHeldInAPipe() {
    const int held = open(jobOfAPipe().c_str(), O_RDWR | O_CLOEXEC);
    done("runButtonPressed", {{"wait", false}});
    EXPECT_TRUE(waitUntil([&] { return isWriting("first.csv"); }));
    return held;
  }
  static void release(int held) {
    EXPECT_EQ(::write(held, "x\n", 2), 2);
    close(held);
  }

  // The folder of the run that is going on; empty when there is none.
  fs::path runFolder() const {
    for (const auto& entry : fs::directory_iterator(path("tmp"))) return entry.path();
    return {};
  }

  // The run is in the middle of this file.
  bool isWriting(const std::string& outputName) const {
    std::error_code ignored;
    const fs::path folder = runFolder();
    return !folder.empty() && fs::exists(folder / outputName, ignored);
  }

  void expectGoodFileDone(const json& result) const {
    EXPECT_EQ(output("good_out.csv"), "1,2\n3,4");
    const json& files = result["outputFiles"];
    EXPECT_NE(std::find(files.begin(), files.end(), path("out/good_out.csv")), files.end()) << files;
  }
  void expectNothingTemporary() const { EXPECT_TRUE(fs::is_empty(path("tmp"))) << runFolder(); }

  static std::string logOf(const json& result) { return result["log"].is_string() ? result["log"] : ""; }

  // The log of the job tells the failure and its outcome, the good file is there, the temporary folder is
  // not.
  void expectTold(const json& result, const std::string& message) {
    const std::string log = logOf(result);
    EXPECT_NE(log.find(logLine(message)), std::string::npos) << message << " is not in\n" << log;
    EXPECT_NE(log.find(kIssues), std::string::npos) << log;
    expectGoodFileDone(result);
    expectNothingTemporary();
  }

  static bool hasSystemLine(const json& result, const std::string& start, const std::string& end = "") {
    const json lines = result.value("systemLog", json::array());
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
      return line.starts_with(start) && line.ends_with(end);
    });
  }
  bool hasEntry(int level, const std::string& text) {
    const json entries = log();
    return std::find(entries.begin(), entries.end(), json({level, text})) != entries.end();
  }
};

std::string notOpened(const std::string& file, int reason) {
  return "Could not open \"" + file + "\" for reading [errno " + std::to_string(reason) + "]";
}
std::string notRead(const std::string& file, int reason) {
  return "Could not read from \"" + file + "\" [errno " + std::to_string(reason) + "]";
}
std::string outputNotOpened(const std::string& file, int reason) {
  return "Could not open output file \"" + file + "\" for writing [errno " + std::to_string(reason) + "]";
}

// Input files.

TEST_F(Faults, AMissingFileIsToldByTheScanAndByTheJob) {
  jobOf(path("gone.csv"));
  EXPECT_TRUE(hasEntry(2, "Error 2: Could not open \"" + path("gone.csv") + "\" for scan"));
  const json result = run();
  expectTold(result, notOpened(path("gone.csv"), ENOENT));
  EXPECT_EQ(result["outputFiles"].size(), 1u);
  EXPECT_FALSE(fs::exists(path("out/first.csv")));
}

TEST_F(Faults, AFileThatMayNotBeReadIsTold) {
  SKIP_UNLESS(makePermissionsHold(), "root's right to read everything cannot be given up here");
  const std::string file = write("secret.csv", "1\n");
  chmod(file.c_str(), 0);
  jobOf(file);
  EXPECT_TRUE(hasEntry(2, "Error 13: Could not open \"" + file + "\" for scan"));
  expectTold(run(), notOpened(file, EACCES));
}

TEST_F(Faults, AFolderInPlaceOfAFileIsToldAndGivesAnEmptyOutput) {
  fs::create_directory(path("folder.csv"));
  jobOf(path("folder.csv"));
  EXPECT_TRUE(hasEntry(2, "Error 21: Could not read file \"" + path("folder.csv") + "\""));
  const json result = run();
  expectTold(result, notRead(path("folder.csv"), EISDIR));
  EXPECT_NE(logOf(result).find(logLine("(Last message repeated 1 times)")), std::string::npos)
      << "by the sample and by the pass";
  EXPECT_EQ(output("first.csv"), "");
}

TEST_F(Faults, ASocketInPlaceOfAFileIsTold) {
  const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  const std::string file = path("s");
  ASSERT_LT(file.size(), sizeof address.sun_path);
  std::copy(file.begin(), file.end(), address.sun_path);
  ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  jobOf(file);
  expectTold(run(), notOpened(file, ENXIO));
  close(descriptor);
}

TEST_F(Faults, ALoopOfLinksIsTold) {
  fs::create_symlink(path("b.csv"), path("a.csv"));
  fs::create_symlink(path("a.csv"), path("b.csv"));
  jobOf(path("a.csv"));
  expectTold(run(), notOpened(path("a.csv"), ELOOP));
}

TEST_F(Faults, AnEmptyFileIsToldAndGivesAnEmptyOutput) {
  jobOf(write("empty.csv", ""));
  const json result = run();
  const std::string log = logOf(result);
  EXPECT_NE(log.find("\nCould not read from \"" + path("empty.csv") + "\" [errno "), std::string::npos)
      << log;
  EXPECT_NE(log.find(kIssues), std::string::npos) << log;
  expectGoodFileDone(result);
  EXPECT_TRUE(fs::exists(path("out/first.csv")));
  EXPECT_EQ(output("first.csv"), "");
}

TEST_F(Faults, AFileThatIsGoneBetweenAddingAndRunIsTold) {
  const std::string file = write("a.csv", "1\n");
  jobOf(file);
  fs::remove(file);
  expectTold(run(), notOpened(file, ENOENT));
}

TEST_F(Faults, AFileThatShrinksBetweenAddingAndRunIsReadAsItIs) {
  const std::string file = write("a.csv", numberedLines(10'000));
  jobOf(file);
  fs::resize_file(file, 24);
  const json result = run();
  EXPECT_EQ(output("first.csv"), "1000000\n1000001\n1000002");
  expectGoodFileDone(result);
  EXPECT_NE(logOf(result).find("\nJob completed\n"), std::string::npos) << logOf(result);
}

TEST_F(Faults, AFileThatVanishesDuringThePassIsReadToItsEnd) {
  const std::string text = numberedLines(1'000'000);
  const std::string file = write("large.csv", text);
  jobOf(file);
  done("runButtonPressed", {{"wait", false}});
  ASSERT_TRUE(waitUntil([&] { return isWriting("first.csv") || fs::exists(path("out/first.csv")); }));
  fs::remove(file);
  const json result = done("waitForRuns");
  EXPECT_EQ(output("first.csv"), text.substr(0, text.size() - 1));
  expectGoodFileDone(result);
  expectNothingTemporary();
}

TEST_F(Faults, AFileThatShrinksDuringThePassGivesWhatWasRead) {
  const std::string text = numberedLines(1'000'000);
  const std::string file = write("large.csv", text);
  jobOf(file);
  done("runButtonPressed", {{"wait", false}});
  ASSERT_TRUE(waitUntil([&] { return isWriting("first.csv") || fs::exists(path("out/first.csv")); }));
  fs::resize_file(file, 100);
  const json result = done("waitForRuns");
  EXPECT_TRUE(text.starts_with(output("first.csv"))) << output("first.csv").size();
  expectGoodFileDone(result);
  expectNothingTemporary();
}

TEST_F(Faults, APipeCannotBeRewoundAndGivesItsRest) {
  const std::string file = jobOfAPipe();
  const std::string text = numberedLines(20'000);
  std::thread writer([&] {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    for (std::size_t sent = 0; sent < text.size();) {
      const ssize_t count = ::write(descriptor, text.data() + sent, text.size() - sent);
      if (count <= 0) break;
      sent += static_cast<std::size_t>(count);
    }
    close(descriptor);
  });
  // The writer stands at the pipe's other end before anybody looks into it.
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const json result = run();
  writer.join();
  expectTold(result, "Could not rewind \"" + file + "\" for reading [errno 29]");
  // What the preview's sample took is gone.
  const std::string rest = output("first.csv");
  EXPECT_GT(rest.size(), text.size() / 2);
  EXPECT_TRUE(text.ends_with(rest + "\n"));
}

TEST_F(Faults, APipeThatNobodyWritesToDoesNotStopTheProgram) {
  makePipe("pipe.csv");
  jobOf(path("pipe.csv"));
  select({0});  // a preview, in the main thread
  EXPECT_EQ(mainWindow()["path"], path("pipe.csv"));
  select({});
  const json result = run();
  expectTold(result, "Could not rewind \"" + path("pipe.csv") + "\" for reading [errno 29]");
  EXPECT_EQ(output("first.csv"), "");
}

// The output folder and the output file.

TEST_F(Faults, AnOutputFolderThatIsGoneOrIsAFileIsAskedForAgain) {
  jobOf(write("a.csv", "1\n"));
  fs::remove(path("out"));
  json result = run();
  EXPECT_EQ(result["alerts"],
            json{sheet("Error", "Output folder does not exist \"" + path("out") + "\" []")});
  EXPECT_EQ(result["outputFiles"], json::array());
  write("out", "");
  result = run();
  EXPECT_EQ(result["alerts"], json{sheet("Error", "Output URL is not a folder \"" + path("out") + "\" []")});
  EXPECT_EQ(result["outputFiles"], json::array());
  expectNothingTemporary();
}

// The first file is a pipe, so that the run can be held in its middle.
TEST_F(Faults, AnOutputFolderThatVanishesDuringTheRunIsTold) {
  const int held = runHeldInAPipe();
  fs::remove(path("out"));
  release(held);
  const json result = done("waitForRuns");
  const std::string log = logOf(result);
  for (const char* name : {"out/first.csv", "out/good_out.csv"})
    EXPECT_NE(log.find(logLine(outputNotOpened(path(name), ENOENT))), std::string::npos) << log;
  EXPECT_NE(log.find(kIssues), std::string::npos) << log;
  EXPECT_EQ(result["outputFiles"], json::array());
  expectNothingTemporary();
}

TEST_F(Faults, AnOutputFolderThatMayNotBeWrittenToIsTold) {
  SKIP_UNLESS(makePermissionsHold(), "root's right to write everywhere cannot be given up here");
  jobOf(write("a.csv", "1\n"));
  write("out/first.csv", "old");  // what is there can be written to
  chmod(path("out").c_str(), 0555);
  const json result = run();
  chmod(path("out").c_str(), 0755);
  const std::string log = logOf(result);
  EXPECT_NE(log.find(logLine(outputNotOpened(path("out/good_out.csv"), EACCES))), std::string::npos) << log;
  EXPECT_NE(log.find(kIssues), std::string::npos) << log;
  EXPECT_EQ(output("first.csv"), "1");
  EXPECT_EQ(result["outputFiles"], json{path("out/first.csv")});
  expectNothingTemporary();
}

TEST_F(Faults, AnOutputFolderOnAReadOnlyDiskIsTold) {
  fs::create_directory(path("out"));
  const SmallDisk disk(path("out"), "1m");
  SKIP_UNLESS(disk.isThere() && disk.makeReadOnly(), "nothing can be mounted here");
  jobOf(write("a.csv", "1\n"));
  const json result = run();
  const std::string log = logOf(result);
  for (const char* name : {"out/first.csv", "out/good_out.csv"})
    EXPECT_NE(log.find(logLine(outputNotOpened(path(name), EROFS))), std::string::npos) << log;
  EXPECT_NE(log.find(kIssues), std::string::npos) << log;
  EXPECT_EQ(result["outputFiles"], json::array());
  expectNothingTemporary();
}

TEST_F(Faults, AnOutputFileThatMayNotBeWrittenToIsToldAndStays) {
  SKIP_UNLESS(makePermissionsHold(), "root's right to write everywhere cannot be given up here");
  jobOf(write("a.csv", "1\n"));
  write("out/first.csv", "old");
  chmod(path("out/first.csv").c_str(), 0444);
  expectTold(run(), outputNotOpened(path("out/first.csv"), EACCES));
  EXPECT_EQ(output("first.csv"), "old");
}

TEST_F(Faults, AFolderInPlaceOfTheOutputFileIsTold) {
  jobOf(write("a.csv", "1\n"));
  inFolder("out/first.csv", "");
  const json result = run();
  expectTold(result, outputNotOpened(path("out/first.csv"), EISDIR));
  EXPECT_EQ(result["outputFiles"].size(), 1u);
}

TEST_F(Faults, AnOutputNameInAFolderThatIsNotThereIsTold) {
  jobOf(write("a.csv", "1\n"), csvOperations("no/first.csv"));
  const json result = run();
  const std::string log = logOf(result);
  const auto start = log.find("\nCould not open \"" + path("tmp/"));
  ASSERT_NE(start, std::string::npos) << log;
  EXPECT_NE(log.find("/no/first.csv\" for writing [errno 2]\n", start), std::string::npos) << log;
  EXPECT_NE(log.find("/no/first.csv\" for reading [errno 2]\n", start), std::string::npos) << log;
  expectGoodFileDone(result);
  expectNothingTemporary();
}

TEST_F(Faults, AnEmptyOutputNameIsTold) {
  jobOf(write("a.csv", "1\n"), csvOperations(""));
  const json result = run();
  expectTold(result, "Output file must have a file name.");
  EXPECT_NE(logOf(result).find("\" for writing [errno 21]\n"), std::string::npos) << logOf(result);
}

// A name longer than any file system takes.
TEST_F(Faults, AnOutputNameThatIsTooLongIsTold) {
  const std::string name(300, 'n');
  jobOf(write("a.csv", "1\n"), csvOperations(name));
  const json result = run();
  EXPECT_NE(logOf(result).find("/" + name + "\" for writing [errno 36]\n"), std::string::npos)
      << logOf(result);
  EXPECT_NE(logOf(result).find(kIssues), std::string::npos);
  expectGoodFileDone(result);
  expectNothingTemporary();
}

// Full disks. A failed write is told to the system log; the job is not told, and what was written stands.

TEST_F(Faults, AFullDiskUnderTheOutputKeepsWhatFits) {
  fs::create_directory(path("out"));
  const SmallDisk disk(path("out"), "64k");
  SKIP_UNLESS(disk.isThere(), "nothing can be mounted here");
  const std::string text = numberedLines(100'000);
  jobOf(write("a.csv", text));
  const json result = run();
  EXPECT_TRUE(hasSystemLine(result, "Could not copy to the output file, errno: 28")) << result["systemLog"];
  const std::string kept = output("first.csv");
  EXPECT_GT(kept.size(), 0u);
  EXPECT_LE(kept.size(), 65'536u);
  EXPECT_TRUE(text.starts_with(kept));
  EXPECT_EQ(result["outputFiles"], (json{path("out/first.csv"), path("out/good_out.csv")}));
  EXPECT_NE(logOf(result).find("\nJob ended "), std::string::npos) << logOf(result);
  expectNothingTemporary();
}

TEST_F(Faults, AFullDiskUnderTheTemporaryFolderKeepsWhatFits) {
  fs::create_directory(path("tmp"));
  const SmallDisk disk(path("tmp"), "64k");
  SKIP_UNLESS(disk.isThere(), "nothing can be mounted here");
  const std::string text = numberedLines(100'000);
  jobOf(write("a.csv", text));
  const json result = run();
  EXPECT_TRUE(hasSystemLine(result, "Could not write string [", "] to file, errno: 28"))
      << result["systemLog"];
  const std::string kept = output("first.csv");
  EXPECT_GT(kept.size(), 0u);
  EXPECT_LE(kept.size(), 65'536u);
  EXPECT_TRUE(text.starts_with(kept));
  const std::string log = logOf(result);
  EXPECT_NE(log.find(logLine("Bytes written: " + std::to_string(kept.size()))), std::string::npos) << log;
  EXPECT_NE(log.find(logLine("Lines written: 100000")), std::string::npos) << "the job is not told\n" << log;
  expectGoodFileDone(result);
  expectNothingTemporary();
}

TEST_F(Faults, ALimitOnTheSizeOfFilesKeepsWhatFits) {
  const ResourceLimit limit(RLIMIT_FSIZE, 65'536);
  ASSERT_TRUE(limit.isSet());
  launch();  // the process begins under the limit
  std::string text = numberedLines(8'000);
  const std::string file = write("a.csv", text);
  done("addInputFiles", {{"paths", {file, file + "2"}}, {"row", 0}});
  write("a.csv2", "1,2\n3,4\n");
  useOutputFolder();
  // Every line becomes longer, so that the output is beyond the limit and the input is not.
  setOperations(0, csvOperations("first.csv", {{{"Code", 361}, {"IntArg1", 2}, {"Arg1", "0123456789"}}}));
  setOperations(1, csvOperations("good_out.csv"));
  const json result = run();
  EXPECT_TRUE(hasSystemLine(result, "Could not write string [", "] to file, errno: 27"))
      << result["systemLog"];
  const std::string kept = output("first.csv");
  EXPECT_EQ(kept.size(), 65'536u);
  EXPECT_TRUE(kept.starts_with("1000000,0123456789\n1000001,0123456789\n"));
  EXPECT_NE(logOf(result).find(logLine("Bytes written: 65536")), std::string::npos) << logOf(result);
  expectGoodFileDone(result);
  expectNothingTemporary();
}

TEST_F(Faults, ALineThatMemoryCannotHoldGivesUpItsFileAlone) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer takes more address space than the limit leaves";
#endif
  std::optional<ResourceLimit> limit;
  limit.emplace(RLIMIT_AS, rlim_t{1} << 30);
  ASSERT_TRUE(limit->isSet());
  launch();  // the process begins under the limit
  limit.reset();
  useOutputFolder();
  add({write("a.csv", "aaaaaaaaaa\n"), write("good.csv", "1,2\n3,4\n")});
  const json hundredfold = {{"Code", 203}, {"IntArg1", 1}, {"Arg1", "a"}, {"Arg2", std::string(100, 'a')}};
  setOperations(0, csvOperations("first.csv", {hundredfold, hundredfold, hundredfold, hundredfold}));
  setOperations(1, csvOperations("good_out.csv"));
  const json result = run();
  EXPECT_NE(logOf(result).find(logLine("Not enough memory for \"" + path("a.csv") + "\"")), std::string::npos)
      << logOf(result);
  EXPECT_FALSE(fs::exists(path("out/first.csv")));
  expectGoodFileDone(result);
  expectNothingTemporary();
}

// The temporary folder.

TEST_F(Faults, ATemporaryFolderThatCannotBeMadeIsTold) {
  write("tmp", "a file");
  jobOf(write("a.csv", "1\n"));
  const json result = run();
  const std::string log = logOf(result);
  const auto start = log.find("\nCould not open \"" + path("tmp"));
  ASSERT_NE(start, std::string::npos) << log;
  EXPECT_NE(log.find("/first.csv\" for writing [errno 20]\n", start), std::string::npos) << log;
  EXPECT_NE(log.find("\nCould not open tmp file \"" + path("tmp")), std::string::npos) << log;
  EXPECT_NE(log.find("/first.csv\" for reading [errno 20]\n", start), std::string::npos) << log;
  EXPECT_NE(log.find(logLine("Processing \"" + path("good.csv") + "\"")), std::string::npos) << log;
  EXPECT_NE(log.find(kIssues), std::string::npos) << log;
  EXPECT_TRUE(hasSystemLine(result, "Could not write string [1] to file, errno: 9")) << result["systemLog"];
  EXPECT_EQ(result["outputFiles"], json::array());
  EXPECT_EQ(read("tmp"), "a file");
}

TEST_F(Faults, AMissingTemporaryFolderIsMade) {
  jobOf(write("a.csv", "1\n"));
  fs::remove(path("tmp"));
  const json result = run();
  EXPECT_EQ(output("first.csv"), "1");
  expectGoodFileDone(result);
  expectNothingTemporary();
}

TEST_F(Faults, ATemporaryFolderThatMayNotBeWrittenToIsTold) {
  SKIP_UNLESS(makePermissionsHold(), "root's right to write everywhere cannot be given up here");
  jobOf(write("a.csv", "1\n"));
  chmod(path("tmp").c_str(), 0555);
  const json result = run();
  chmod(path("tmp").c_str(), 0755);
  const std::string log = logOf(result);
  EXPECT_NE(log.find("/first.csv\" for writing [errno "), std::string::npos) << log;
  EXPECT_NE(log.find(kIssues), std::string::npos) << log;
  EXPECT_EQ(result["outputFiles"], json::array());
  expectNothingTemporary();
}

// The pass over the first file is held by a pipe while its temporary file is taken away.
TEST_F(Faults, ATemporaryFileThatVanishesIsToldAndTheNextFileGetsAnother) {
  const int held = runHeldInAPipe();
  const std::string folder = runFolder();
  fs::remove_all(folder);
  release(held);
  expectTold(done("waitForRuns"),
             "Could not open tmp file \"" + folder + "/first.csv\" for reading [errno 2]");
}

// The log.

TEST_F(Faults, ALogFolderThatIsAFileIsToldInMemory) {
  write("Documents", "");
  fs::remove(path("Documents"));
  inFolder("Documents", "");
  write("Documents/Log", "a file");
  jobOf(write("a.csv", "1\n"));
  const json result = run();
  EXPECT_EQ(result["log"], nullptr);
  EXPECT_TRUE(hasEntry(1, "Log folder cannot be a file"));
  EXPECT_TRUE(hasEntry(0, "Job completed with issues"));
  EXPECT_EQ(read("Documents/Log"), "a file");
  expectGoodFileDone(result);
}

TEST_F(Faults, ALogFolderThatCannotBeMadeIsToldInMemory) {
  SKIP_UNLESS(makePermissionsHold(), "root's right to write everywhere cannot be given up here");
  jobOf(write("a.csv", "1\n"));
  chmod(path("Documents").c_str(), 0555);
  const json result = run();
  chmod(path("Documents").c_str(), 0755);
  EXPECT_EQ(result["log"], nullptr);
  EXPECT_TRUE(hasEntry(1, "Permission denied"));
  EXPECT_TRUE(hasEntry(0, "Job completed with issues"));
  expectGoodFileDone(result);
}

TEST_F(Faults, ALogFileThatIsAFolderIsToldInMemory) {
  inFolder("Documents/Log/LastLog.txt", "");
  jobOf(write("a.csv", "1\n"));
  const json result = run();
  EXPECT_TRUE(hasEntry(2, "Is a directory"));
  EXPECT_TRUE(hasEntry(0, "Job completed with issues"));
  EXPECT_TRUE(hasEntry(2, "Could not open log file, errno 21"));
  EXPECT_TRUE(fs::is_directory(path("Documents/Log/LastLog.txt")));
  expectGoodFileDone(result);
}

TEST_F(Faults, AFullDiskUnderTheLogIsToldInMemory) {
  const std::string folder = inFolder("Documents/Log", "");
  const SmallDisk disk(path("Documents/Log"), "4k");
  SKIP_UNLESS(disk.isThere(), "nothing can be mounted here");
  write("Documents/Log/filler", std::string(4'096, 'x'));
  jobOf(write("a.csv", "1\n"));
  const json result = run();
  EXPECT_TRUE(hasEntry(2, "Could not append to log file, errno 28"));
  expectGoodFileDone(result);
}

TEST_F(Faults, WithoutDocumentsTheJobIsDoneAndLoggedInMemory) {
  restart({"--no-documents"});
  jobOf(write("a.csv", "1\n"));
  const json result = run();
  EXPECT_EQ(result["log"], nullptr);
  EXPECT_TRUE(hasEntry(2, "Could not find document directory"));
  EXPECT_TRUE(hasEntry(0, "Job completed with issues"));
  EXPECT_FALSE(fs::exists(path("Documents")));
  expectGoodFileDone(result);
}

TEST_F(Faults, ADocumentsFolderThatIsAFileIsNone) {
  write("Documents", "a file");
  jobOf(write("a.csv", "1\n"));
  const json result = run();
  EXPECT_TRUE(hasEntry(2, "Could not find document directory"));
  EXPECT_EQ(read("Documents"), "a file");
  expectGoodFileDone(result);
}

// The settings.

TEST_F(Faults, SettingsThatAreGarbageAreSetAside) {
  for (const std::string garbage : {"{\"a\":", "[1]", "", "\xFF\xFE", "null"}) {
    write("defaults.json", garbage);
    restart();
    launch();
    useOutputFolder();
    EXPECT_EQ(defaultOf("OutputFolderBookmark"), "file://" + path("out")) << garbage;
    fs::remove(path("defaults.json"));
  }
  EXPECT_EQ(read("defaults.json.broken-1"), "{\"a\":");
  EXPECT_EQ(read("defaults.json.broken-5"), "null");
}

TEST_F(Faults, SettingsThatAreAFolderAreLeftAloneAndTheJobIsDone) {
  inFolder("defaults.json", "");
  const json launched = done("launch");
  EXPECT_TRUE(
      hasSystemLine(launched, "Error 21: Could not read settings file \"" + path("defaults.json") + "\""))
      << launched;
  useOutputFolder();
  add({write("good.csv", "1,2\n3,4\n")});
  setOperations(0, csvOperations("good_out.csv"));
  expectGoodFileDone(run());
  EXPECT_TRUE(fs::is_directory(path("defaults.json")));
}

TEST_F(Faults, SettingsThatCannotBeWrittenHoldForTheRun) {
  SKIP_UNLESS(makePermissionsHold(), "root's right to write everywhere cannot be given up here");
  write("defaults.json", "{\"DontAutoSplit\": true}");
  for (const char* name : {"out", "tmp", "Documents"}) fs::create_directory(path(name));
  const std::string file = write("good.csv", "1,2\n3,4\n");
  chmod(root().c_str(), 0555);
  launch();
  const json selected = done("selectOutputFolder", {{"panel", {path("out")}}});
  EXPECT_TRUE(hasSystemLine(selected, "Error 13: Could not write settings file \"")) << selected;
  add({file});
  setOperations(0, csvOperations("good_out.csv"));
  const json result = run();
  chmod(root().c_str(), 0755);
  expectGoodFileDone(result);
  EXPECT_EQ(read("defaults.json"), "{\"DontAutoSplit\": true}");
}

TEST_F(Faults, SettingsThatMayNotBeReadAreLeftAlone) {
  SKIP_UNLESS(makePermissionsHold(), "root's right to read everything cannot be given up here");
  write("defaults.json", "{\"DontAutoSplit\": true}");
  chmod(path("defaults.json").c_str(), 0);
  const json launched = done("launch");
  EXPECT_TRUE(hasSystemLine(launched, "Error 13: Could not read settings file \"")) << launched;
  useOutputFolder();
  chmod(path("defaults.json").c_str(), 0600);
  EXPECT_EQ(read("defaults.json"), "{\"DontAutoSplit\": true}");
}

}  // namespace
}  // namespace quillet::testing
