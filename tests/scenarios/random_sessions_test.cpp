// What a user may do in any order: the list of files, their operations, saved jobs and restarts, beside a
// plain model of what the rules say.
#include <algorithm>
#include <map>
#include <set>

#include "scenarios/drive_session.h"
#include "support/random_source.h"

namespace quillet::testing {
namespace {

using Rows = std::set<int>;

constexpr int kFileCount = 7;
constexpr int kAddableCodes[] = {150, 201, 202, 203, 251, 301, 302, 303, 351, 352, 353, 361};

struct ModelFile {
  std::string path;
  json operations;
};

std::vector<int> listOf(const Rows& rows) {
  return {rows.begin(), rows.end()};
}

Rows within(const Rows& rows, int count) {
  Rows result;
  for (const int row : rows)
    if (row < count) result.insert(row);
  return result;
}

bool isEnd(const json& operation) {
  return operation["Code"] == 101 || operation["Code"] == 901;
}

// Every key that a record of the database has.
json withAllKeys(const json& operations) {
  json result = json::array();
  for (const auto& operation : operations) {
    json full = {{"Code", operation.value("Code", 0)}};
    for (int i = 1; i <= 5; ++i) {
      full["IntArg" + std::to_string(i)] = operation.value("IntArg" + std::to_string(i), 0);
      const json argument = operation.value("Arg" + std::to_string(i), json(""));
      full["Arg" + std::to_string(i)] = argument.is_string() ? argument : json(argument.dump());
    }
    result.push_back(full);
  }
  return result;
}

// The elements at the rows, as one block at the row: where they are bound for is told before they leave.
template <typename Sequence>
Sequence moved(const Sequence& sequence, const Rows& rows, int to) {
  Sequence before, block, behind;
  for (int i = 0; i < static_cast<int>(sequence.size()); ++i)
    (rows.contains(i) ? block : i < to ? before : behind).push_back(sequence[i]);
  for (const auto& element : block) before.push_back(element);
  for (const auto& element : behind) before.push_back(element);
  return before;
}

class RandomSessions : public Scenario {
 protected:
  RandomSessions() {
    for (int i = 0; i < kFileCount; ++i)
      pool_.push_back(write("f" + std::to_string(i) + (i % 2 ? ".csv" : ".txt"), "a,b,c\n1,2,3\n4\t5\n"));
    std::string large;
    while (large.size() < 400'000) large += "1,\"two, or more\",3\n";
    write("f1.csv", large);
  }

  void act(RandomSource& random);
  void compare(const std::string& action);
  void launchAsStored();

 private:
  Rows someRows(RandomSource& random, int count) {
    Rows rows;
    for (int i = static_cast<int>(random.below(3)); i > 0 && count > 0; --i)
      rows.insert(static_cast<int>(random.below(static_cast<std::size_t>(count))));
    return rows;
  }
  int fileCount() const { return static_cast<int>(files_.size()); }
  ModelFile* singleFile() {
    return selected_.size() == 1 ? &files_[static_cast<std::size_t>(*selected_.begin())] : nullptr;
  }
  int operationRowCount() {
    if (selected_.empty()) return 0;
    return singleFile() ? static_cast<int>(singleFile()->operations.size()) : 2;
  }
  void cutSelections() {
    selected_ = within(selected_, fileCount());
    selectedOperations_ = within(selectedOperations_, operationRowCount());
  }
  // Files that came in above, unselected, may have put another file with a shorter list into the row.
  bool anyEndSelected() {
    const Rows rows = within(selectedOperations_, operationRowCount());
    return std::any_of(rows.begin(), rows.end(), [this](int row) {
      return isEnd(singleFile()->operations[static_cast<std::size_t>(row)]);
    });
  }

  void addFiles(RandomSource& random);
  void moveFiles(RandomSource& random);
  void removeFiles();
  void addAnOperation(RandomSource& random);
  void editAnOperation();
  void deleteSelectedOperations();
  void moveOperations(RandomSource& random);
  void save(const std::string& name);
  void restore(RandomSource& random, const std::string& name);
  void store();

  std::vector<std::string> pool_;
  std::vector<ModelFile> files_;
  Rows selected_;
  Rows selectedOperations_;
  std::map<std::string, std::map<std::string, json>> jobs_;  // from name to the operations by path
  std::vector<ModelFile> storedFiles_;
  Rows storedSelection_;
};

void RandomSessions::addFiles(RandomSource& random) {
  std::vector<std::string> paths;
  for (std::size_t i = random.below(3) + 1; i > 0; --i) paths.push_back(random.pick(pool_));
  const int row = static_cast<int>(random.below(files_.size() + 1));
  const bool selects = !random.oneIn(3);
  done("addInputFiles", {{"paths", paths}, {"row", row}, {"selectFiles", selects}});
  const json actual = entries();
  int at = row;
  for (const auto& path : paths) {
    const auto isHere = [&](const ModelFile& file) { return file.path == path; };
    if (std::any_of(files_.begin(), files_.end(), isHere)) continue;
    ASSERT_LT(static_cast<std::size_t>(at), actual.size());
    const json operations = actual[static_cast<std::size_t>(at)]["Operations"];
    EXPECT_EQ(operations.size(), 2u);
    files_.insert(files_.begin() + at++, {path, operations});
  }
  if (!selects || at == row) return;
  selected_.clear();
  for (int i = row; i < at; ++i) selected_.insert(i);
  cutSelections();
}

void RandomSessions::moveFiles(RandomSource& random) {
  const Rows rows = someRows(random, fileCount());
  if (rows.empty()) return;
  const int to = static_cast<int>(random.below(files_.size() + 1));
  done("dropFiles", {{"rows", listOf(rows)}, {"row", to}});
  files_ = moved(files_, rows, to);
  selected_.clear();
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) selected_.insert(to + i);
  cutSelections();
}

void RandomSessions::removeFiles() {
  if (selected_.empty()) return;
  done("removeSelectedInputFiles");
  const int next = *selected_.rbegin() - static_cast<int>(selected_.size());
  std::vector<ModelFile> left;
  for (int i = 0; i < fileCount(); ++i)
    if (!selected_.contains(i)) left.push_back(files_[static_cast<std::size_t>(i)]);
  files_ = left;
  selected_.clear();
  if (!files_.empty()) selected_.insert(next >= 0 && next < fileCount() ? next : 0);
  cutSelections();
}

void RandomSessions::addAnOperation(RandomSource& random) {
  const int code = random.pick(kAddableCodes);
  done("addOperation", {{"code", code}, {"values", json::object()}});
  const json actual = entries();
  for (const int row : selected_) {
    json& operations = files_[static_cast<std::size_t>(row)].operations;
    json now = actual[static_cast<std::size_t>(row)]["Operations"];
    const auto place = static_cast<std::ptrdiff_t>(operations.size()) - 1;
    ASSERT_EQ(now.size(), operations.size() + 1);
    EXPECT_EQ(now[static_cast<std::size_t>(place)]["Code"], code);
    json others = now;
    others.erase(static_cast<std::size_t>(place));
    EXPECT_EQ(others, operations) << "it stands before the last one, and the others stay";
    operations = now;
  }
}

void RandomSessions::editAnOperation() {
  done("editOperation", {{"values", json::object()}});
  const json actual = entries();
  for (int row = 0; row < fileCount(); ++row) {
    json& operations = files_[static_cast<std::size_t>(row)].operations;
    const json now = actual[static_cast<std::size_t>(row)]["Operations"];
    ASSERT_EQ(now.size(), operations.size());
    const bool touched = selected_.contains(row) && selectedOperations_.size() == 1;
    for (std::size_t i = 0; i < now.size(); ++i) {
      EXPECT_EQ(now[i]["Code"], operations[i]["Code"]);
      if (!touched || !selectedOperations_.contains(static_cast<int>(i))) {
        EXPECT_EQ(now[i], operations[i]);
      }
    }
    operations = now;
  }
}

void RandomSessions::deleteSelectedOperations() {
  const json result = done("deleteOperations");
  if (!singleFile() || selectedOperations_.empty()) return;
  const bool refused = anyEndSelected();
  EXPECT_EQ(result.contains("alerts"), refused);
  if (refused) return;
  json left = json::array();
  for (int i = 0; i < operationRowCount(); ++i)
    if (!selectedOperations_.contains(i))
      left.push_back(singleFile()->operations[static_cast<std::size_t>(i)]);
  singleFile()->operations = left;
  cutSelections();
}

void RandomSessions::moveOperations(RandomSource& random) {
  const int count = operationRowCount();
  const int to = count > 2 ? 1 + static_cast<int>(random.below(static_cast<std::size_t>(count) - 1)) : 1;
  const json result = done("dropOperations", {{"rows", listOf(selectedOperations_)}, {"row", to}});
  if (!singleFile() || selectedOperations_.empty()) return;
  const bool refused = anyEndSelected();
  EXPECT_EQ(result.contains("alerts"), refused);
  if (!refused) singleFile()->operations = moved(singleFile()->operations, selectedOperations_, to);
}

void RandomSessions::save(const std::string& name) {
  const json result = done("saveJob", {{"name", name}});
  EXPECT_EQ(result["saved"], !files_.empty());
  for (const auto& file : files_) jobs_[name][file.path] = withAllKeys(file.operations);
  if (files_.empty()) jobs_[name];
}

void RandomSessions::restore(RandomSource& random, const std::string& name) {
  done("searchJobs", {{"searchType", 1}, {"searchString", ""}});
  const json jobs = done("previousJobsWindow")["jobs"];
  EXPECT_EQ(jobs.size(), jobs_.size());
  const auto row = std::find_if(jobs.begin(), jobs.end(), [&](const json& job) { return job[1] == name; });
  ASSERT_EQ(row != jobs.end(), jobs_.contains(name));
  if (row == jobs.end()) return;
  done("selectJobs", {{"rows", {row - jobs.begin()}}});
  const json names = done("previousJobsWindow")["files"];
  ASSERT_EQ(names.size(), jobs_[name].size()) << "a job keeps the files of every save";
  if (names.empty()) return;
  const std::size_t chosen = random.below(names.size());
  done("selectJobFiles", {{"rows", {chosen}}});
  const json result = done("restoreOperations");
  EXPECT_EQ(result.contains("alerts"), selected_.empty());
  const json actual = entries();
  for (const int i : selected_) {
    ModelFile& file = files_[static_cast<std::size_t>(i)];
    file.operations = actual[static_cast<std::size_t>(i)]["Operations"];
    EXPECT_EQ(file.operations, jobs_[name][path(names[chosen])]);
  }
  cutSelections();
}

void RandomSessions::store() {
  storedFiles_ = files_;
  storedSelection_ = selected_.size() == 1 ? selected_ : Rows();
}

void RandomSessions::launchAsStored() {
  launch();
  files_ = storedFiles_;
  selected_ = storedSelection_;
  selectedOperations_.clear();
}

void RandomSessions::act(RandomSource& random) {
  static const std::vector<std::string> jobNames = {"one", "it's two", "three %"};
  switch (random.below(16)) {
    case 0:
    case 1:
      return addFiles(random);
    case 2:
      return moveFiles(random);
    case 3:
      return random.oneIn(2) ? removeFiles() : void();
    case 4:
    case 5:
      selected_ = someRows(random, fileCount());
      done("selectFiles", {{"rows", listOf(selected_)}});
      return cutSelections();
    case 6:
    case 7:
    case 8:
      return addAnOperation(random);
    case 9:
    case 10:
      selectedOperations_ = someRows(random, operationRowCount());
      done("selectOperations", {{"rows", listOf(selectedOperations_)}});
      return;
    case 11:
      return editAnOperation();
    case 12:
      return random.oneIn(2) ? deleteSelectedOperations() : moveOperations(random);
    case 13:
      return save(random.pick(jobNames));
    case 14:
      return restore(random, random.pick(jobNames));
    default:
      if (random.oneIn(2)) {  // other things are done meanwhile, or the process ends
        done("runButtonPressed", {{"wait", random.oneIn(3)}});
        return;
      }
      if (random.oneIn(2)) {  // the end of the process stores nothing
        restart();
      } else {
        terminate();
        store();
      }
      launchAsStored();
  }
}

void RandomSessions::compare(const std::string& action) {
  SCOPED_TRACE(action);
  const json actual = entries();
  ASSERT_EQ(actual.size(), files_.size());
  for (std::size_t i = 0; i < files_.size(); ++i) {
    EXPECT_EQ(actual[i]["FilePath"], files_[i].path);
    EXPECT_EQ(actual[i]["Operations"], files_[i].operations);
    EXPECT_EQ(actual[i]["Operations"].front()["Code"], 101);
    EXPECT_EQ(actual[i]["Operations"].back()["Code"], 901);
  }
  const json window = mainWindow();
  EXPECT_EQ(window["selectedFiles"], listOf(selected_));
  EXPECT_EQ(window["selectedOperations"], listOf(selectedOperations_));
  EXPECT_EQ(window["deleteEnabled"], !selectedOperations_.empty());
  EXPECT_EQ(window["operationRows"].size(), static_cast<std::size_t>(operationRowCount()));
  EXPECT_EQ(window["helpBox"], selected_.empty());
}

TEST_F(RandomSessions, KeepToTheRules) {
  RandomSource random(3003);
  setDefault("DontOpenOutputFolderAfterComplete", true);
  launchAsStored();
  useOutputFolder();
  for (std::uint64_t step = 0; step < rounds(250) && !HasFailure(); ++step) {
    act(random);
    if (!HasFailure()) compare("after step " + std::to_string(step));
  }
}

}  // namespace
}  // namespace quillet::testing
