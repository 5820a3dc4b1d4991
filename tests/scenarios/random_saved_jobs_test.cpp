// Random saves, searches, looks, renames, deletions and restores beside a plain model of what is saved.
#include <algorithm>
#include <cctype>
#include <map>

#include "scenarios/job_scenario.h"
#include "support/random_source.h"

namespace quillet::testing {
namespace {

using Codes = std::vector<int>;

struct ModelJob {
  std::string name;
  std::string date;
  bool isClipboardJob = false;
  std::map<std::string, Codes> files;  // by path; their order is tested elsewhere
  Codes clipboardOperations;
};

const std::vector<std::string> kNames = {"a", "B job", "it's", "job é", "JOB"};
const std::vector<std::string> kPaths = {"/data/1.txt", "/data/2.txt", "/other/1.txt", "/other/b.txt"};
const std::map<int, std::string> kTitles = {{101, "Initial"},         {202, "Trim Line"},
                                            {251, "Join Lines"},      {901, "Final"},
                                            {416, "Flip Horizontal"}, {417, "Flip Vertical"}};

json titles(const Codes& codes) {
  json result = json::array();
  for (const int code : codes) result.push_back(codes.size() < 2 ? "" : kTitles.at(code));
  return result;
}

json records(const Codes& codes) {
  json result = json::array();
  for (const int code : codes) result.push_back({{"Code", code}});
  return result;
}

std::string lowercase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char byte) { return byte < 128 ? std::tolower(byte) : byte; });
  return text;
}

class RandomSavedJobs : public JobScenario {
 protected:
  using Step = void (RandomSavedJobs::*)();

  // What the list must show, latest first.
  std::vector<ModelJob*> shownJobs() {
    std::vector<ModelJob*> result;
    for (auto& job : jobs_)
      if (searchText_.empty() ||
          (searchType_ == 2 ? job.date >= searchText_
                            : lowercase(job.name).find(lowercase(searchText_)) != std::string::npos))
        result.push_back(&job);
    std::sort(result.begin(), result.end(), [](auto* a, auto* b) { return a->date > b->date; });
    return result;
  }

  void expectList() {
    json expected = json::array();
    for (const auto* job : shownJobs()) expected.push_back({job->name, job->isClipboardJob ? "C" : "P"});
    json shown = json::array();
    const json window = browser();
    for (const auto& row : window["jobs"]) shown.push_back({row[1], row[2]});
    ASSERT_EQ(shown, expected);
    ASSERT_EQ(window["files"], json::array()) << "each reading empties the files";
  }

  std::string nextDate() {
    const std::string number = std::to_string(1000 + ++saves_);
    return "2018-05-" + number.substr(0, 2) + " 10:" + number.substr(2) + ":00 +0000";
  }

  Codes randomList() {
    Codes result = {101};
    for (std::size_t i = random_.below(3); i > 0; --i) result.push_back(random_.oneIn(2) ? 202 : 251);
    result.push_back(901);
    return result;
  }

  void changeInputFiles() {
    json entries = json::array();
    inputFiles_.clear();
    for (const auto& filePath : kPaths) {
      if (random_.oneIn(2)) continue;
      inputFiles_.emplace_back(filePath, randomList());
      entries.push_back({{"FilePath", filePath},
                         {"FileName", filePath.substr(filePath.rfind('/') + 1)},
                         {"Operations", records(inputFiles_.back().second)}});
    }
    done("setInputFiles", {{"entries", entries}});
  }

  void performOne() {
    performed_.push_back(random_.oneIn(2) ? 416 : 417);
    perform({{"Code", performed_.back()}});
  }

  // The one job of the name, or a new one.
  ModelJob& jobToSave(const std::string& name) {
    const auto hasName = [&name](const ModelJob& job) { return job.name == name; };
    if (std::count_if(jobs_.begin(), jobs_.end(), hasName) == 1)
      return *std::find_if(jobs_.begin(), jobs_.end(), hasName);
    jobs_.push_back({name, "", false, {}, {}});
    return jobs_.back();
  }

  void save() {
    const std::string name = random_.pick(kNames);
    const bool fromClipboard = random_.oneIn(3);
    ModelJob& job = jobToSave(name);
    job.isClipboardJob = fromClipboard;
    job.date = nextDate();
    if (fromClipboard) job.clipboardOperations = performed_;
    if (!fromClipboard)
      for (const auto& [filePath, codes] : inputFiles_) job.files[filePath] = codes;
    const json result = saveJob(name, fromClipboard ? "clipboardDataWindow" : "window");
    ASSERT_EQ(result["saved"], fromClipboard || !inputFiles_.empty());
    // Saves within one second have no order.
    run("update jobs set date_last_saved='" + job.date + "' where date_last_saved>'2019'");
    readListAnew();
  }

  void readListAnew() { JobScenario::search(searchText_, searchType_); }

  void search() {
    static const std::vector<std::string> texts = {"", "", "b", "JOB", "é", "'", "none"};
    static const std::vector<std::string> dates = {"2018", "2018-05-10", "2018-05-10 10:05", "2019"};
    searchType_ = 1 + static_cast<int>(random_.below(3));
    searchText_ = searchType_ == 2 ? random_.pick(dates) : random_.pick(texts);
    readListAnew();
  }

  // A random row of the list, selected; nothing in an empty list.
  ModelJob* selectOne() {
    const auto shown = shownJobs();
    if (shown.empty()) return nullptr;
    const std::size_t row = random_.below(shown.size());
    selectJobs({static_cast<int>(row)});
    selectJobFiles({});
    return shown[row];
  }

  // The codes that the window shows after selecting a random file, or none.
  Codes selectFileOf(const ModelJob& job) {
    const json files = browser()["files"];
    if (files.empty()) return {};
    const std::size_t row = random_.below(files.size());
    done("doubleClick", {{"table", "jobFiles"}, {"row", row}});
    const std::string filePath = browser()["path"];
    EXPECT_EQ(filePath.substr(filePath.rfind('/') + 1), files[row]);
    EXPECT_TRUE(job.files.contains(filePath)) << filePath;
    return job.files.at(filePath);
  }

  void look() {
    const ModelJob* job = selectOne();
    if (!job) return;
    json names = json::array();
    for (const auto& [filePath, codes] : job->files)
      names.push_back(filePath.substr(filePath.rfind('/') + 1));
    json shown = browser()["files"];
    std::sort(shown.begin(), shown.end());
    std::sort(names.begin(), names.end());
    ASSERT_EQ(shown, names);
    ASSERT_EQ(browser()["restoreTitle"], job->isClipboardJob ? "Perform Operations" : "Restore Operations");
    ASSERT_EQ(operationTitles(), titles(job->isClipboardJob ? job->clipboardOperations : Codes()));
    const Codes ofFile = selectFileOf(*job);
    ASSERT_EQ(operationTitles(), titles(job->isClipboardJob ? job->clipboardOperations : ofFile));
    readListAnew();
  }

  void rename() {
    const auto shown = shownJobs();
    const int row = static_cast<int>(random_.below(shown.size() + 1));  // one beyond the list, too
    const std::string name = random_.pick(kNames);
    done("saveJobName", {{"row", row}, {"name", name}});
    if (row < static_cast<int>(shown.size())) shown[static_cast<std::size_t>(row)]->name = name;
    readListAnew();
  }

  void remove() {
    const auto shown = shownJobs();
    std::vector<int> rows;
    std::vector<std::string> dates;
    for (std::size_t row = 0; row < shown.size(); ++row) {
      if (!random_.oneIn(3)) continue;
      rows.push_back(static_cast<int>(row));
      dates.push_back(shown[row]->date);
    }
    selectJobs(rows);
    const bool confirmed = !random_.oneIn(4);
    done("deleteJobs", {{"answer", confirmed ? "Delete" : "Cancel"}});
    if (confirmed)
      std::erase_if(jobs_, [&](const ModelJob& job) {
        return std::find(dates.begin(), dates.end(), job.date) != dates.end();
      });
    readListAnew();
  }

  void restore() {
    const ModelJob* job = selectOne();
    if (!job) return;
    const Codes ofFile = selectFileOf(*job);
    std::vector<int> rows;
    for (std::size_t row = 0; row < inputFiles_.size(); ++row)
      if (random_.oneIn(2)) rows.push_back(static_cast<int>(row));
    select(rows);
    const json alerts = alertsOf(done("restoreOperations"));
    if (job->isClipboardJob) {
      performed_.insert(performed_.end(), job->clipboardOperations.begin(), job->clipboardOperations.end());
    } else {
      ASSERT_EQ(alerts.is_null(), !rows.empty()) << alerts;
      if (!ofFile.empty())
        for (const int row : rows) inputFiles_[static_cast<std::size_t>(row)].second = ofFile;
    }
    expectInputFiles();
    readListAnew();
  }

  void expectInputFiles() {
    const json shown = entries();
    ASSERT_EQ(shown.size(), inputFiles_.size());
    for (std::size_t i = 0; i < shown.size(); ++i) {
      Codes codes;
      for (const auto& operation : shown[i]["Operations"]) codes.push_back(operation["Code"]);
      ASSERT_EQ(shown[i]["FilePath"], inputFiles_[i].first);
      ASSERT_EQ(codes, inputFiles_[i].second);
    }
  }

  // The rows that no job needs are gone, and each job that the model has is in the database.
  void expectDatabase() {
    std::vector<std::string> expected;
    for (const auto& job : jobs_) expected.push_back(job.date);
    std::sort(expected.begin(), expected.end());
    ASSERT_EQ(rows("select date_last_saved from jobs order by date_last_saved"), expected);
    ASSERT_EQ(rows("select count(*) from input_file_settings where job_id not in (select rowid from jobs)"),
              std::vector<std::string>{"0"});
  }

  static constexpr Step kSteps[] = {&RandomSavedJobs::changeInputFiles,
                                    &RandomSavedJobs::performOne,
                                    &RandomSavedJobs::save,
                                    &RandomSavedJobs::save,
                                    &RandomSavedJobs::save,
                                    &RandomSavedJobs::search,
                                    &RandomSavedJobs::look,
                                    &RandomSavedJobs::look,
                                    &RandomSavedJobs::rename,
                                    &RandomSavedJobs::remove,
                                    &RandomSavedJobs::restore,
                                    &RandomSavedJobs::restore};

  RandomSource random_;
  std::vector<ModelJob> jobs_;
  std::vector<std::pair<std::string, Codes>> inputFiles_;
  Codes performed_;
  int saves_ = 0;
  int searchType_ = 1;
  std::string searchText_;
};

TEST_F(RandomSavedJobs, AgreeWithAPlainModel) {
  launch();
  for (std::uint64_t i = 0; i < rounds(250); ++i) {
    const Step step = random_.pick(kSteps);
    SCOPED_TRACE("step " + std::to_string(i));
    (this->*step)();
    ASSERT_NO_FATAL_FAILURE(expectList());
    if (HasFailure()) return;
  }
  expectDatabase();
}

}  // namespace
}  // namespace quillet::testing
