// Random saves, renames and deletes, beside the rules of the job store in plain maps.
#include <algorithm>
#include <map>

#include "storage/database_fixture.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using testing::asStored;
using testing::DatabaseTest;
using testing::fileEntry;
using testing::RandomSource;
using Id = std::int64_t;

// Rows are keyed as SQLite hands out identifiers: one more than the highest that there is.
struct Model {
  struct Job {
    std::u16string name;
    std::string kind;
  };
  std::map<Id, Job> jobs;
  std::map<Id, std::string> files;
  std::map<std::pair<Id, Id>, std::size_t> places;  // of a file in a job
  std::map<std::pair<Id, Id>, OperationList> operations;

  template <typename Rows>
  static Id nextId(const Rows& rows) {
    return rows.empty() ? 1 : rows.rbegin()->first + 1;
  }

  Id jobNamed(const std::u16string& name, const std::string& kind) {
    std::vector<Id> found;
    for (const auto& [id, job] : jobs)
      if (job.name == name) found.push_back(id);
    const Id id = found.size() == 1 ? found.front() : nextId(jobs);
    jobs[id] = {name, kind};
    return id;
  }

  Id fileOf(const std::string& path) {
    for (const auto& [id, known] : files)
      if (known == path) return id;
    const Id id = nextId(files);
    files[id] = path;
    return id;
  }

  int saveFiles(const std::u16string& name, const DBInterface::InputFileEntries& entries) {
    const Id job = jobNamed(name, "0");
    std::vector<Id> ids;
    for (const auto& entry : entries) ids.push_back(fileOf(*entry->filePath));
    for (std::size_t i = 0; i < entries.size(); ++i) {
      places[{job, ids[i]}] = i + 1;
      operations[{job, ids[i]}] = asStored(*entries[i]->operations);
    }
    return entries.empty() ? -2 : 0;
  }

  void saveClipboard(const std::u16string& name, const OperationList& list) {
    operations[{jobNamed(name, "1"), 0}] = asStored(list);
  }

  void remove(Id job) {
    jobs.erase(job);
    std::erase_if(places, [job](const auto& place) { return place.first.first == job; });
    std::erase_if(files, [this](const auto& file) {
      return std::none_of(places.begin(), places.end(),
                          [&](const auto& place) { return place.first.second == file.first; });
    });
  }

  // The operations of a file of the job, 0 for those of a clipboard job.
  OperationList operationsOf(Id job, Id file) const {
    const auto found = operations.find({job, file});
    return found == operations.end() ? OperationList() : found->second;
  }
};

const std::u16string kNames[] = {u"a", u"A", u"it's", u"é", u""};
const std::string kPaths[] = {"/a", "/b/a", "/it's", "/\xff", "/c\"d", ""};

class RandomJobs : public DatabaseTest {
 protected:
  OperationList someOperations() {
    static constexpr std::u16string_view kParts[] = {u"x", u"'", u"\n", u"é", u"\U0001F600", u"%@", u"\""};
    OperationList result;
    for (std::size_t i = random_.below(4); i > 0; --i) {
      OperationRecord record;
      if (!random_.oneIn(8)) record.set("Code", static_cast<std::int64_t>(random_.below(1000)));
      if (random_.oneIn(2)) record.set("IntArg2", static_cast<std::int64_t>(random_.below(1000)) - 500);
      if (random_.oneIn(2)) record.set("Arg1", random_.text(kParts, 6));
      if (random_.oneIn(2)) record.set("Arg4", random_.text(kParts, 6));
      if (random_.oneIn(8)) record.set("Arg5", static_cast<std::int64_t>(random_.below(10)));
      result.push_back(std::move(record));
    }
    return result;
  }
  DBInterface::InputFileEntries someFiles() {
    DBInterface::InputFileEntries result;
    for (std::size_t i = random_.below(5); i > 0; --i)
      result.push_back(fileEntry(random_.pick(kPaths), someOperations()));
    return result;
  }
  // Mostly one that there is.
  Id someJob() { return 1 + static_cast<Id>(random_.below(model_.jobs.size() + 1)); }

  void doStep() {
    switch (random_.below(8)) {
      case 0:
      case 1:
      case 2: {
        const auto name = random_.pick(kNames);
        const auto files = someFiles();
        ASSERT_EQ(saveFiles(name, files), model_.saveFiles(name, files));
        return;
      }
      case 3:
      case 4: {
        const auto name = random_.pick(kNames);
        const auto operations = someOperations();
        ASSERT_EQ(saveClipboard(name, operations), 0);
        model_.saveClipboard(name, operations);
        return;
      }
      case 5: {
        const Id job = someJob();
        const auto name = random_.pick(kNames);
        ASSERT_EQ(database_.updatePreviousJobs(std::to_string(job), name, random_.oneIn(2)), 0);
        if (model_.jobs.contains(job)) model_.jobs[job].name = name;
        return;
      }
      case 6: {
        const Id first = someJob(), second = someJob();
        ASSERT_EQ(database_.deleteJobSettings({std::to_string(first), std::to_string(second)}, true), 0);
        model_.remove(first);
        model_.remove(second);
        return;
      }
      default:  // another start of the program
        database_ = DBInterface("quillet.db", folder_.path());
        ASSERT_EQ(database_.setupDatabase(), 0);
    }
  }

  void compareList() {
    std::map<Id, std::vector<std::string>> expected, actual;
    for (const auto& [id, job] : model_.jobs) expected[id] = {toUtf8(job.name), "8192", job.kind};
    DBInterface::FlatRows rows;
    ASSERT_EQ(database_.getPreviousJobs(rows, 1, std::nullopt), 0);
    for (std::size_t i = 0; i + 5 <= rows.size(); i += 5)
      actual[std::stoll(rows[i])] = {rows[i + 2], rows[i + 3], rows[i + 4]};
    ASSERT_EQ(actual, expected);
  }

  void compareFiles(Id job) {
    std::vector<std::pair<std::size_t, std::string>> expected, actual;
    for (const auto& [row, place] : model_.places)
      if (row.first == job) expected.emplace_back(place, model_.files.at(row.second));
    for (const auto& file : filesOf(std::to_string(job)))
      actual.emplace_back(static_cast<std::size_t>(file.integer("DisplayOrder", 0)), file.text("FilePath"));
    ASSERT_TRUE(std::is_sorted(actual.begin(), actual.end(),
                               [](const auto& a, const auto& b) { return a.first < b.first; }));
    std::sort(actual.begin(), actual.end());  // equal places come in any order
    std::sort(expected.begin(), expected.end());
    ASSERT_EQ(actual, expected);
  }

  void compareOperations(Id job) {
    const std::string jobID = std::to_string(job);
    ASSERT_EQ(operationsOf(jobID), model_.operationsOf(job, 0));
    for (const auto& path : kPaths) {
      OperationList actual, expected;
      const int status = database_.getOperations(actual, jobID, path);
      if (path.find('\'') != path.npos) {
        ASSERT_EQ(status, 1);
        continue;
      }
      ASSERT_EQ(status, 0);
      for (const auto& [id, known] : model_.files)
        if (known == path && model_.places.contains({job, id})) expected = model_.operationsOf(job, id);
      ASSERT_EQ(actual, expected) << job << " " << path;
    }
  }

  void compare() {
    ASSERT_NO_FATAL_FAILURE(compareList());
    for (const auto& [job, ignored] : model_.jobs) {
      ASSERT_NO_FATAL_FAILURE(compareFiles(job));
      ASSERT_NO_FATAL_FAILURE(compareOperations(job));
    }
    std::vector<std::string> expected;
    for (const auto& [id, path] : model_.files) expected.push_back(path);
    std::vector<std::string> actual;
    for (const auto& row : raw("select file_path from input_files order by rowid")) actual.push_back(row[0]);
    ASSERT_EQ(actual, expected);
  }

  RandomSource random_{41};
  Model model_;
};

TEST_F(RandomJobs, BehaveAsTheRulesInPlainMaps) {
  constexpr int kSteps = 40;
  for (std::uint64_t round = testing::rounds(10); round > 0; --round) {
    std::filesystem::remove(file());
    model_ = {};
    setUp();
    for (int step = 0; step < kSteps; ++step) {
      ASSERT_NO_FATAL_FAILURE(doStep()) << "step " << step << ", rounds left " << round;
      ASSERT_NO_FATAL_FAILURE(compare()) << "step " << step << ", rounds left " << round;
    }
  }
}

}  // namespace
}  // namespace quillet
