// Whole jobs: any list of operations over any bytes, as a run and as a preview. No crash, nothing left in the
// temporary folder, counts that fit the files, and a preview that shows what the run has done.
//
// Input: number of files, for each of them how its path is, then its list (number of operations between the
// two ends, for each record its code, four numbers and five texts); the rest is cut into the contents of the
// files.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "engine/job_engine.h"
#include "fuzz_input.h"
#include "operations/operation_codes.h"
#include "platform/system_log.h"

namespace quillet::fuzz {
namespace {

constexpr std::size_t kMostTextBytes = 24;
constexpr std::size_t kMostFileBytes = 4096;
constexpr std::int64_t kMiddleCodes[] = {OpReplaceCharacter,
                                         OpSkipLine,
                                         OpTrimLine,
                                         OpReplaceLine,
                                         OpJoinLines,
                                         OpTrimColumn,
                                         OpReplaceColumn,
                                         OpReformatColumn,
                                         OpSetInitialNumberOfColumns,
                                         OpRearrangeColumns,
                                         OpJoinColumns,
                                         OpSetFinalNumberOfColumns,
                                         0,
                                         OpInitial};
constexpr std::int64_t kNumbers[] = {0, 1, 2, 3, 4, 5, 6, 7, 12, 16, 17, 30, 32, 33, 48, 49, 51, 99, -1, -5};
// Names that stay in the folder. "folder" is one, "missing/x" cannot be made.
constexpr const char16_t* kOutputNames[] = {u"out.txt", u"out.txt",   u"other.csv", u"",
                                            u"folder",  u"missing/x", u"."};

// The user's home of this process, removed at its end.
class Home final : public Folders {
 public:
  Home() {
    const char* parent = isFolder("/dev/shm") ? "/dev/shm" : std::getenv("TMPDIR");
    const std::string start = std::string(parent ? parent : "/tmp") + "/quillet-fuzz-";
    removeFoldersOfTheDead(start);
    path_ = start + std::to_string(getpid());
    require(mkdir(path_.c_str(), 0700) == 0, "a folder for the jobs can be made");
  }
  ~Home() override {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::optional<std::string> documentsFolder() const override { return makeFolder("Documents"); }
  std::string temporaryParentFolder() const override { return path_ + "/tmp"; }
  std::string defaultsFile() const override { return path_ + "/defaults.json"; }

  std::string outputFolder() const { return makeFolder("output"); }
  std::string path(const std::string& name) const { return path_ + "/" + name; }

  // The state before a job.
  void clear() const {
    for (const char* name : {"Documents", "tmp", "output"}) std::filesystem::remove_all(path(name));
    makeFolder("tmp");
    mkdir((outputFolder() + "/folder").c_str(), 0755);
  }
  bool temporaryFolderIsEmpty() const { return std::filesystem::is_empty(temporaryParentFolder()); }
  std::string read(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  // A target that finds something ends without cleaning up. The next one does it.
  static void removeFoldersOfTheDead(const std::string& start) {
    const std::filesystem::path folder = std::filesystem::path(start).parent_path();
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
      const std::string path = entry.path();
      if (!path.starts_with(start)) continue;
      const int process = std::atoi(path.c_str() + start.size());
      if (process > 0 && (process == getpid() || kill(process, 0) != 0))
        std::filesystem::remove_all(entry.path(), ignored);
    }
  }

  std::string makeFolder(const std::string& name) const {
    makeFolders(path(name));
    return path(name);
  }

  std::string path_;
};

const Home& home() {
  static const Home one;
  return one;
}

OperationRecord recordFrom(FuzzInput& input, std::int64_t code) {
  OperationRecord record;
  record.set("Code", code);
  for (const char* key : {"IntArg1", "IntArg2", "IntArg3", "IntArg4"}) record.set(key, input.pick(kNumbers));
  for (const char* key : {"Arg1", "Arg2", "Arg3", "Arg5"}) {
    std::u16string text = input.text(kMostTextBytes);
    if (!text.empty()) record.set(key, std::move(text));
  }
  return record;
}

OperationList listFrom(FuzzInput& input) {
  OperationList list = {recordFrom(input, OpInitial)};
  for (std::size_t count = input.below(6); count > 0; --count) {
    const std::int64_t code = input.pick(kMiddleCodes);
    list.push_back(recordFrom(input, code));
  }
  list.push_back(recordFrom(input, OpFinal));
  list.back().set("Arg4", std::u16string(input.pick(kOutputNames)));
  return list;
}

struct Job {
  std::vector<InputFile> files;
  std::size_t inputBytes = 0;  // of all files

  explicit Job(FuzzInput& input) {
    const std::size_t count = input.below(3) + 1;
    for (std::size_t i = 0; i < count; ++i) {
      InputFile& file = files.emplace_back();
      const bool missing = input.below(8) == 7;
      file.fileName = (missing ? "missing" : "input") + std::to_string(i) + ".txt";
      file.filePath = home().path(*file.fileName);
      if (input.below(16) != 15) file.operations = listFrom(input);
    }
    writeContents(input.restBytes().substr(0, kMostFileBytes));
  }

 private:
  // The first gets all, the second the second half, and so on.
  void writeContents(std::string_view bytes) {
    for (const auto& file : files) {
      if (file.fileName->starts_with("missing")) continue;
      std::ofstream(*file.filePath, std::ios::binary) << bytes;
      inputBytes += bytes.size();
      bytes.remove_prefix(bytes.size() / 2);
    }
  }
};

// The controller that the engine works for.
class Controller {
 public:
  explicit Controller(const Job& job) {
    const std::shared_ptr<const Folders> folders(std::shared_ptr<void>(), &home());
    around_.files = std::make_shared<InputFiles>();
    around_.state = std::make_shared<JobState>();
    around_.log = std::make_shared<JobLog>(folders);
    around_.previewStores = std::make_shared<PreviewStores>();
    around_.outputFiles = std::make_shared<OutputFiles>();
    around_.defaults = std::make_shared<UserDefaults>(folders->defaultsFile());
    around_.folders = folders;
    around_.mainThread = std::make_shared<MainThread>();
    around_.updatePreviewPanel = [this] { ++previewsShown_; };
    around_.updateUIAfterPrep = [this] { ++runsEnded_; };
    around_.hideProgressIndicator = [] {};
    std::vector<InputFiles::Entry> entries;
    for (const auto& file : job.files) entries.push_back(std::make_shared<InputFile>(file));
    around_.files->setAll(std::move(entries));
  }

  void run() {
    JobParameters parameters;
    parameters.write = true;
    parameters.outputFolder = home().outputFolder();
    prepFiles(parameters, around_);
    require(runsEnded_ == 1 && previewsShown_ == 0, "a run ends once");
    around_.mainThread->runPending();
  }

  void preview(std::size_t file) {
    JobParameters parameters;
    parameters.selectedFileIndexes.addIndex(static_cast<std::int64_t>(file));
    previewsShown_ = 0;
    prepFiles(parameters, around_);
    require(previewsShown_ == 1, "a preview is shown once");
  }

  PreviewStores::Content content() const { return around_.previewStores->content(); }
  std::vector<JobLog::Entry> log() const { return around_.log->entries(); }
  std::size_t outputFileCount() const { return around_.outputFiles->paths().size(); }

 private:
  JobSurroundings around_;
  int previewsShown_ = 0;
  int runsEnded_ = 0;
};

// The numbers that the log tells behind the words, in its order.
std::vector<std::int64_t> loggedNumbers(const Controller& controller, const std::string& words) {
  std::vector<std::int64_t> numbers;
  for (const auto& entry : controller.log())
    if (entry.text.starts_with(words)) numbers.push_back(std::atoll(entry.text.c_str() + words.size()));
  return numbers;
}

std::int64_t loggedTotal(const Controller& controller, const std::string& words) {
  const auto numbers = loggedNumbers(controller, words);
  require(numbers.size() == 1, "a total is logged once");
  return numbers.front();
}

void requireSaneCounts(const Controller& controller, const Job& job) {
  const auto bytesRead = loggedTotal(controller, "Total bytes read: ");
  const auto linesRead = loggedTotal(controller, "Total lines read: ");
  const auto pieces = loggedTotal(controller, "Total maximum length lines read: ");
  require(bytesRead >= 0 && bytesRead <= static_cast<std::int64_t>(job.inputBytes), "no byte is read twice");
  require(loggedTotal(controller, "Total characters decoded: ") <= bytesRead,
          "a character takes at least a byte");
  require(loggedTotal(controller, "Total lines written: ") <= linesRead + pieces, "no line is written twice");
  require(loggedTotal(controller, "Total lines skipped: ") <= linesRead + pieces, "no line is skipped twice");
  require(loggedTotal(controller, "Total bytes written: ") >= 0, "bytes are counted up");
  require(controller.outputFileCount() <= job.files.size(), "a file has at most one output");
}

// One file to a plain name: what was counted is what is there.
void requireOutputAsCounted(const Controller& controller, const Job& job) {
  if (job.files.size() != 1 || controller.outputFileCount() != 1) return;
  const std::string name =
      job.files[0].operations ? toUtf8(job.files[0].operations->back().text("Arg4")) : "";
  const auto written = loggedTotal(controller, "Total bytes written: ");
  require(static_cast<std::int64_t>(home().read("output/" + name).size()) == written,
          "the output has what was written");
}

void requireFinishedLog() {
  const std::string log = home().read("Documents/Log/LastLog.txt");
  require(log.starts_with("Job started "), "the log begins with the job's start");
  require(log.find("\nJob completed") != log.npos, "the log has the outcome");
  require(log.find("\nJob ended ") != log.npos, "the log has the job's end");
}

// As many rows as both have. A file that is not split into lines has one row, of which a run keeps only a
// part.
void requireSameRows(const PreviewStores::Rows& ofRun, const PreviewStores::Rows& ofPreview) {
  for (std::size_t i = 0; i < std::min(ofRun.size(), ofPreview.size()); ++i)
    require(ofRun[i] == ofPreview[i], "the preview shows what the run does");
}

void requirePreviewLikeRun(Controller& controller, const Job& job, const PreviewStores::Content& ofRun) {
  constexpr std::size_t kMostRows = 10;
  controller.preview(job.files.size() - 1);
  const auto content = controller.content();
  require(content.inputRows.size() <= kMostRows && content.outputRows.size() <= kMostRows,
          "a preview is short");
  require(content.inputString == ofRun.inputString || job.files.size() > 1, "both show the same head");
  const auto& operations = job.files.back().operations;
  const bool splitIntoLines =
      operations && hasFlags(operations->front().integer("IntArg1", 0), SplitIntoLines);
  if (job.files.size() > 1 || !splitIntoLines) return;
  requireSameRows(ofRun.inputRows, content.inputRows);
  requireSameRows(ofRun.outputRows, content.outputRows);
}

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  setenv("LC_ALL", "en_US.UTF-8", 1);
  setenv("TZ", "UTC", 1);
  quillet::setSystemLogSink([](std::u16string_view) {});
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet::fuzz;
  home().clear();
  FuzzInput input(data, size);
  const Job job(input);
  Controller controller(job);
  controller.run();
  require(home().temporaryFolderIsEmpty(), "a run leaves nothing in the temporary folder");
  requireSaneCounts(controller, job);
  requireOutputAsCounted(controller, job);
  requireFinishedLog();
  const auto ofRun = controller.content();
  requirePreviewLikeRun(controller, job, ofRun);
  return 0;
}
