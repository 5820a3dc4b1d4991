// Scenarios with saved jobs: a connection of the test's own to the job database, and what the windows of jobs
// show.
//
//   const std::string job = insertJob("old", "2018-05-30 14:03:22 +0000", 0, "");
//   insertFile(job, "/data/a.txt", 1);
//   launch() or search();
//   selectJobs({0});
//   EXPECT_EQ(browser()["files"], json{"a.txt"});
#pragma once

#include <sqlite3.h>
#include <string>
#include <vector>

#include "scenarios/drive_session.h"

namespace quillet::testing {

// Locks that it holds are gone with it.
class Database {
 public:
  explicit Database(const std::string& path) {
    EXPECT_EQ(sqlite3_open(path.c_str(), &handle_), SQLITE_OK) << path;
  }
  ~Database() { sqlite3_close(handle_); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  void run(const std::string& script) {
    EXPECT_EQ(sqlite3_exec(handle_, script.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle_) << " in " << script;
  }
  // All values, row by row.
  std::vector<std::string> rows(const std::string& query) {
    std::vector<std::string> result;
    EXPECT_EQ(sqlite3_exec(handle_, query.c_str(), append, &result, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle_) << " in " << query;
    return result;
  }
  std::string lastRow() { return std::to_string(sqlite3_last_insert_rowid(handle_)); }

 private:
  static int append(void* result, int count, char** values, char**) {
    for (int i = 0; i < count; ++i)
      static_cast<std::vector<std::string>*>(result)->emplace_back(values[i] ? values[i] : "");
    return 0;
  }

  sqlite3* handle_ = nullptr;
};

class JobScenario : public Scenario {
 protected:
  static constexpr const char* kDate = "2018-05-30 14:03:22 +0000";
  static constexpr int kOfFiles = 0x1000;  // flags of jobs
  static constexpr int kOurs = 0x2000;

  std::string databasePath() const { return path("Documents/quillet.db"); }
  void run(const std::string& script) { Database(databasePath()).run(script); }
  std::vector<std::string> rows(const std::string& query) { return Database(databasePath()).rows(query); }

  // These three give the row of what they insert. Texts hold no quotes.
  std::string insertJob(const std::string& name, const std::string& date, int flags,
                        const std::string& kind) {
    return insert("insert into jobs (name, date_last_saved, flags, reserved) values ('" + name + "', '" +
                  date + "', " + std::to_string(flags) + ", '" + kind + "')");
  }
  std::string insertFile(const std::string& job, const std::string& filePath, int order) {
    const std::string name = filePath.substr(filePath.rfind('/') + 1);
    const std::string file =
        insert("insert into input_files (file_name, file_path) values ('" + name + "', '" + filePath + "')");
    insert("insert into input_file_settings (job_id, input_file_id, display_order) values (" + job + ", " +
           file + ", " + std::to_string(order) + ")");
    return file;
  }
  // The operations have nothing but their codes.
  void insertOperations(const std::string& job, const std::string& file, const std::vector<int>& codes) {
    for (std::size_t i = 0; i < codes.size(); ++i)
      insert("insert into operations (job_id, input_file_id, idx, code) values (" + job + ", " + file + ", " +
             std::to_string(i) + ", " + std::to_string(codes[i]) + ")");
  }

  json saveJob(const std::string& name, const std::string& window = "window") {
    return done("saveJob", {{"name", name}, {"window", window}});
  }
  json search(const std::string& text = "", int type = 1) {
    return done("searchJobs", {{"searchType", type}, {"searchString", text}});
  }
  json selectJobs(const std::vector<int>& rows) { return done("selectJobs", {{"rows", rows}}); }
  json selectJobFiles(const std::vector<int>& rows) { return done("selectJobFiles", {{"rows", rows}}); }
  json browser() { return done("previousJobsWindow"); }
  json jobNames() { return column(browser()["jobs"], 1); }
  json operationTitles() { return column(browser()["operations"], 0); }
  json controlNamed(const std::string& window, const std::string& name) {
    return done("controls", {{"window", window}})["controls"][name];
  }
  bool isOpen(const std::string& window) { return done("controls", {{"window", window}})["open"]; }
  void perform(const json& operation) { done("performClipboardDataOperation", {{"operation", operation}}); }

  static json column(const json& table, std::size_t index) {
    json result = json::array();
    for (const auto& row : table) result.push_back(row[index]);
    return result;
  }
  static json sheetOfBrowser(const std::string& title, const std::string& message = "") {
    return {{"title", title}, {"message", message}, {"sheet", true}, {"window", "previousJobsWindow"}};
  }
  // Null where there is none.
  static json alertsOf(const json& result) { return result.value("alerts", json()); }

 private:
  std::string insert(const std::string& statement) {
    Database database(databasePath());
    database.run(statement);
    return database.lastRow();
  }
};

}  // namespace quillet::testing
