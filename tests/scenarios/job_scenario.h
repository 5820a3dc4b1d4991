// Scenarios with saved jobs: a connection of the test's own to the job database, and what the windows of jobs
// show.
//
//   const std::string job = insertJob("old", "2018-05-30 14:03:22 +0000", 0, "");
//   insertFile(job, "/data/a.txt", 1);
//   launch() or search();
//   selectJobs({0});
//   EXPECT_EQ(browser()["files"], json{"a.txt"});
#pragma once

#include <iterator>
#include <string>
#include <vector>

#include "scenarios/drive_session.h"
#include "support/raw_database.h"

namespace quillet::testing {

class JobScenario : public Scenario {
 protected:
  static constexpr const char* kDate = "2018-05-30 14:03:22 +0000";
  static constexpr int kOfFiles = 0x1000;  // flags of jobs
  static constexpr int kOurs = 0x2000;

  std::string databasePath() const { return path("Documents/quillet.db"); }
  void run(const std::string& script) { RawDatabase(databasePath()).rows(script); }
  // All values, row by row.
  std::vector<std::string> rows(const std::string& query) {
    std::vector<std::string> result;
    for (auto& row : RawDatabase(databasePath()).rows(query))
      result.insert(result.end(), std::make_move_iterator(row.begin()), std::make_move_iterator(row.end()));
    return result;
  }

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
    RawDatabase database(databasePath());
    database.rows(statement);
    return database.lastRow();
  }
};

}  // namespace quillet::testing
