// The job database as it grows: lists and searches among 1,000 to 100,000 jobs, and jobs of 500 and 5,000
// files saved and read. Ten times the size should take at most ten times as long.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "storage/db_interface.h"

namespace quillet {
namespace {

// A database in a folder of its own.
class BenchDatabase {
 public:
  BenchDatabase() : folder_(newFolder()), database_("quillet.db", folder_) { database_.setupDatabase(); }
  ~BenchDatabase() { std::filesystem::remove_all(folder_); }
  BenchDatabase(const BenchDatabase&) = delete;
  BenchDatabase& operator=(const BenchDatabase&) = delete;
  DBInterface* operator->() { return &database_; }

 private:
  static std::string newFolder() {
    std::string name = std::filesystem::temp_directory_path() / "quillet-bench-XXXXXX";
    if (!mkdtemp(name.data())) std::abort();  // and nothing that is there already is ever removed
    return name;
  }

  std::string folder_;
  DBInterface database_;
};

void addJobs(BenchDatabase& database, std::int64_t count) {
  database->execCommand(
      "insert into jobs (name, date_last_saved, flags, reserved) with recursive n(i) as "
      "(select 1 union all select i + 1 from n where i < " +
      std::to_string(count) +
      ") select 'job number ' || i, '2026-01-01 ' || printf('%08d', i), 8192, '0' from n");
}

DBInterface::InputFileEntries filesWithOperations(std::int64_t count) {
  const OperationList operations(
      5, OperationRecord{{"Code", 203}, {"IntArg2", 1}, {"Arg1", u"what it's about"}, {"Arg2", u"with"}});
  DBInterface::InputFileEntries result;
  for (std::int64_t i = 0; i < count; ++i) {
    InputFile file;
    file.fileName = "file" + std::to_string(i) + ".csv";
    file.filePath = "/home/somebody/data/" + *file.fileName;
    file.operations = operations;
    result.push_back(std::make_shared<const InputFile>(std::move(file)));
  }
  return result;
}

void listJobs(benchmark::State& state, std::int64_t searchType, std::u16string_view text,
              std::size_t jobsFound) {
  BenchDatabase database;
  addJobs(database, state.range(0));
  for (auto _ : state) {
    DBInterface::FlatRows rows;
    if (database->getPreviousJobs(rows, searchType, text) != 0 || rows.size() != 5 * jobsFound)
      state.SkipWithError("the list is not whole");
  }
}

void saveFiles(benchmark::State& state) {
  BenchDatabase database;
  const auto files = filesWithOperations(state.range(0));
  database->saveJobNamed(u"large", &files, nullptr);
  for (auto _ : state)
    if (database->saveJobNamed(u"large", &files, nullptr) != 0) state.SkipWithError("not saved");
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void saveNewFiles(benchmark::State& state) {
  const auto files = filesWithOperations(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    auto database = std::make_unique<BenchDatabase>();
    state.ResumeTiming();
    if ((*database)->saveJobNamed(u"large", &files, nullptr) != 0) state.SkipWithError("not saved");
    state.PauseTiming();
    database.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void readFiles(benchmark::State& state) {
  BenchDatabase database;
  const auto files = filesWithOperations(state.range(0));
  database->saveJobNamed(u"large", &files, nullptr);
  for (auto _ : state) {
    std::vector<SettingsRecord> read;
    if (database->getInputFileSettings(read, "1") != 0 || read.size() != files.size())
      state.SkipWithError("not read");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Of one file of many.
void readOperations(benchmark::State& state) {
  BenchDatabase database;
  const auto files = filesWithOperations(state.range(0));
  database->saveJobNamed(u"large", &files, nullptr);
  for (auto _ : state) {
    OperationList operations;
    if (database->getOperations(operations, "1", files.back()->filePath) != 0 || operations.size() != 5)
      state.SkipWithError("not read");
  }
}

void deleteJob(benchmark::State& state) {
  const auto files = filesWithOperations(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    auto database = std::make_unique<BenchDatabase>();
    (*database)->saveJobNamed(u"large", &files, nullptr);
    state.ResumeTiming();
    if ((*database)->deleteJobSettings({"1"}, true) != 0) state.SkipWithError("not deleted");
    state.PauseTiming();
    database.reset();
    state.ResumeTiming();
  }
}

BENCHMARK_CAPTURE(listJobs, latest, 1, u"", 200)->RangeMultiplier(10)->Range(1'000, 100'000);
BENCHMARK_CAPTURE(listJobs, byName, 1, u"job", 200)->RangeMultiplier(10)->Range(1'000, 100'000);
BENCHMARK_CAPTURE(listJobs, byNameInVain, 1, u"none", 0)->RangeMultiplier(10)->Range(1'000, 100'000);
BENCHMARK_CAPTURE(listJobs, byDate, 2, u"2026", 200)->RangeMultiplier(10)->Range(1'000, 100'000);
BENCHMARK(saveFiles)->Arg(500)->Arg(5'000)->Unit(benchmark::kMillisecond);
BENCHMARK(saveNewFiles)->Arg(500)->Arg(5'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(readFiles)->Arg(500)->Arg(5'000)->Unit(benchmark::kMillisecond);
BENCHMARK(readOperations)->Arg(500)->Arg(5'000);
BENCHMARK(deleteJob)->Arg(500)->Arg(5'000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace quillet
