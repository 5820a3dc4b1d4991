// The window of the saved jobs: search, selection, details, renaming, deleting, restoring.
#include <filesystem>
#include <fstream>
#include <functional>

#include "scenarios/job_scenario.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

constexpr const char* kNoList = "Error getting previous jobs from database";
constexpr const char* kNoSettings = "Could not get job settings from database";
constexpr const char* kUnknown = "Unknown error";

class PreviousJobs : public JobScenario {
 protected:
  // Makes the tables.
  void makeDatabase() { launch(); }

  // A job with files, each with the codes of its operations; it is dated by its place, later ones later.
  std::string insertFileJob(const std::string& name, int second,
                            const std::vector<std::pair<std::string, std::vector<int>>>& files) {
    const std::string job = insertJob(name, dated(second), kOurs, "0");
    int order = 1;
    for (const auto& [filePath, codes] : files)
      insertOperations(job, insertFile(job, filePath, order++), codes);
    return job;
  }
  std::string insertClipboardJob(const std::string& name, int second, const std::vector<int>& codes) {
    const std::string job = insertJob(name, dated(second), kOurs, "1");
    insertOperations(job, "0", codes);
    return job;
  }
  static std::string dated(int second) {
    return "2018-05-30 14:03:" + std::string(second < 10 ? "0" : "") + std::to_string(second) + " +0000";
  }
  json selectedJobs() {
    return controlNamed("previousJobsWindow", "previousJobsWindowJobsTableView")["value"];
  }
  json selectedJobFiles() {
    return controlNamed("previousJobsWindow", "previousJobsWindowFilesTableView")["value"];
  }
  json nameField() {
    return controlNamed("previousJobsWindow", "previousJobsPopoverDetailsTitleTextField")["value"];
  }
};

// The list.

TEST_F(PreviousJobs, WithoutJobsEverythingIsEmptyAndOff) {
  launch();
  EXPECT_EQ(browser(), R"({"ok": true, "jobs": [], "files": [], "operations": [],
                           "restoreTitle": "Restore Operations", "restoreEnabled": false,
                           "deleteEnabled": false, "details": "", "path": ""})"_json);
  EXPECT_FALSE(isOpen("previousJobsWindow"));
}

TEST_F(PreviousJobs, TheListIsReadAtLaunch) {
  makeDatabase();
  insertJob("old", kDate, 0, "");
  restart();
  launch();
  EXPECT_EQ(jobNames(), json{"old"});
}

TEST_F(PreviousJobs, TheMenuItemReadsTheListAndBringsTheWindowToTheFront) {
  makeDatabase();
  insertJob("later", kDate, 0, "");
  EXPECT_EQ(jobNames(), json::array());
  done("menu", {{"action", "previousJobsWindowMenuItemActionClicked"}});
  EXPECT_EQ(jobNames(), json{"later"});
  EXPECT_TRUE(isOpen("previousJobsWindow"));
}

TEST_F(PreviousJobs, ARowHasDateNameAndBadge) {
  makeDatabase();
  const struct {
    const char* date;
    int flags;
    const char* kind;
    const char* shown;
    const char* badge;
  } cases[] = {
      {"2018-05-30 14:03:22 +0000", kOurs, "0", "5/30/18, 2:03 PM", "P"},
      {"2018-05-30 00:03:22 +0200", kOurs, "1", "5/29/18, 10:03 PM", "C"},
      {"2018-05-30 14:03:22 +0000", kOfFiles, "1", "5/30/18, 2:03 PM", "P"},
      {"2018-05-30 14:03:22 +0000", kOfFiles | kOurs, "1", "5/30/18, 2:03 PM", "C"},
      {"2018-05-30 14:03:22 +0000", 0, "1", "5/30/18, 2:03 PM", "P"},
      {"2018-05-30", kOurs, "1", "", "C"},
      {"", 0, "", "", "P"},
  };
  for (const auto& [date, flags, kind, shown, badge] : cases) {
    insertJob("é", date, flags, kind);
    search();
    EXPECT_EQ(browser()["jobs"], (json{{shown, "é", badge}})) << date << ' ' << flags << ' ' << kind;
    run("delete from jobs");
  }
}

TEST_F(PreviousJobs, TheLatestStandsFirstAndTwoHundredAreShown) {
  makeDatabase();
  std::string script = "begin;";
  for (int i = 100; i < 303; ++i) {
    const std::string number = std::to_string(i);
    script += "insert into jobs (name, date_last_saved) values ('job " + number + "', '2018-05-30 " + number +
              "');";
  }
  run(script + "commit;");
  search();
  const json names = jobNames();
  ASSERT_EQ(names.size(), 200u);
  EXPECT_EQ(names.front(), "job 302");
  EXPECT_EQ(names.back(), "job 103");
}

// Searching.

TEST_F(PreviousJobs, TheTypeSaysWhatIsSearched) {
  makeDatabase();
  insertFileJob("Alpha", 1, {{"/data/beta.txt", {101, 901}}});
  const std::string beta = insertFileJob("BETA x_y", 2, {});
  run("update jobs set date_last_saved='2020-01-31 00:00:00 +0000' where rowid=" + beta);
  const struct {
    int type;
    const char* text;
    json names;
  } cases[] = {
      {1, "", {"BETA x_y", "Alpha"}},
      {2, "", {"BETA x_y", "Alpha"}},
      {3, "", {"BETA x_y", "Alpha"}},
      {1, "beta", json{"BETA x_y"}},
      {1, "ALPH", json{"Alpha"}},
      {1, "x_y", json{"BETA x_y"}},
      {1, "_l%a", json{"Alpha"}},  // both are wildcards
      {1, "it's", json::array()},
      {1, "2020", json::array()},
      {2, "2018-05-30", {"BETA x_y", "Alpha"}},
      {2, "2018-06", json{"BETA x_y"}},
      {2, "2020-02", json::array()},
      {2, "alpha", json::array()},
      {2, "'", {"BETA x_y", "Alpha"}},
      {3, "beta", json{"BETA x_y"}},  // the files are not searched
      {3, "data", json::array()},
      {7, "alpha", json{"Alpha"}},
  };
  for (const auto& [type, text, names] : cases) {
    const json result = search(text, type);
    EXPECT_EQ(jobNames(), names) << type << ' ' << text;
    EXPECT_EQ(result["previousJobsArray"].size(), 5 * names.size());
  }
  EXPECT_EQ(search("alpha")["previousJobsArray"], (json{"1", dated(1), "Alpha", "8192", "0"}));
}

TEST_F(PreviousJobs, TheTypeSetsThePlaceholderReadsTheListAndTakesTheFocus) {
  makeDatabase();
  EXPECT_EQ(controlNamed("previousJobsWindow", "previousJobsWindowSearchField")["placeholder"], "Job name");
  EXPECT_EQ(controlNamed("previousJobsWindow", "previousJobsWindowSearchTypeButton")["titles"],
            R"([[1, "Job Name"], [2, "Saved Since"], [3, "Files in Job"]])"_json);
  const struct {
    int type;
    const char* placeholder;
  } cases[] = {{2, "Format: 2018-05-30"}, {3, "Files in job"}, {1, "Job name"}};
  for (const auto& [type, placeholder] : cases) {
    insertJob("for " + std::to_string(type), dated(type), kOurs, "0");
    const std::size_t before = jobNames().size();
    done("setControl", {{"name", "previousJobsWindowSearchTypeButton"}, {"value", type}});
    EXPECT_EQ(controlNamed("previousJobsWindow", "previousJobsWindowSearchField")["placeholder"],
              placeholder);
    EXPECT_EQ(jobNames().size(), before + 1);
  }
}

TEST_F(PreviousJobs, TheFieldSearchesWhenItsEditingEnds) {
  makeDatabase();
  insertJob("one", dated(1), kOurs, "0");
  insertJob("two", dated(2), kOurs, "0");
  search();
  done("setControl", {{"name", "previousJobsWindowSearchField"}, {"value", "on"}, {"endEditing", false}});
  EXPECT_EQ(jobNames(), (json{"two", "one"}));
  done("setControl", {{"name", "previousJobsWindowSearchField"}, {"value", "one"}});
  EXPECT_EQ(jobNames(), json{"one"});
}

TEST_F(PreviousJobs, AReadingEmptiesTheFilesAndDropsRowsThatAreGone) {
  makeDatabase();
  insertFileJob("one", 1, {{"/a.txt", {101, 901}}});
  insertFileJob("two", 2, {{"/b.txt", {101, 901}}});
  search();
  selectJobs({1});
  selectJobFiles({0});
  EXPECT_EQ(operationTitles(), (json{"Initial", "Final"}));
  EXPECT_EQ(nameField(), "one");
  search();
  EXPECT_EQ(selectedJobs(), json{1}) << "the place stays selected";
  EXPECT_EQ(browser()["files"], json::array());
  EXPECT_EQ(browser()["operations"], json::array()) << "they belonged to a file";
  search("two");
  EXPECT_EQ(selectedJobs(), json::array());
  EXPECT_EQ(browser()["deleteEnabled"], false);
  EXPECT_EQ(nameField(), "");
}

TEST_F(PreviousJobs, AReadingLeavesTheOperationsOfAClipboardJob) {
  makeDatabase();
  insertClipboardJob("clip", 1, {416, 417});
  search();
  selectJobs({0});
  search();
  EXPECT_EQ(operationTitles(), (json{"Flip Horizontal", "Flip Vertical"}));
}

// Selecting.

TEST_F(PreviousJobs, AJobShowsItsFilesInTheirOrder) {
  makeDatabase();
  const std::string job = insertJob("job", kDate, kOurs, "0");
  insertFile(job, "/x/last.txt", 3);
  insertFile(job, "/x/first.txt", 1);
  insertFile(job, "/x/middle.txt", 2);
  search();
  EXPECT_EQ(browser()["deleteEnabled"], false);
  selectJobs({0});
  EXPECT_EQ(browser()["files"], (json{"first.txt", "middle.txt", "last.txt"}));
  EXPECT_EQ(browser()["operations"], json::array()) << "no file is selected";
  EXPECT_EQ(browser()["deleteEnabled"], true);
  EXPECT_EQ(nameField(), "job");
}

TEST_F(PreviousJobs, AFileShowsItsOperations) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}, {"/b.txt", {101, 202, 901}}});
  search();
  selectJobs({0});
  selectJobFiles({1});
  EXPECT_EQ(browser()["operations"],
            (json{{"Initial", "split-path", "Decode as (Unknown)"},
                  {"Trim Line", "scissors", "String \"\" From Both Sides"},
                  {"Final", "join-path", "Encode as (Unknown); Write to \"output.txt\""}}));
  selectJobFiles({0});
  EXPECT_EQ(operationTitles(), (json{"Initial", "Final"}));
  selectJobFiles({});
  EXPECT_EQ(browser()["operations"], json::array());
  EXPECT_EQ(browser()["restoreEnabled"], true);
}

TEST_F(PreviousJobs, TheFirstRecordOfTheListWordsTheLast) {
  launch();
  add({write("a.csv", "x,y\n")});
  setOperations(0, csvOperations("out.csv"));
  saveJob("job");
  selectJobs({0});
  selectJobFiles({0});
  EXPECT_EQ(browser()["operations"][1][2],
            "Join columns with \",\"; Join lines with \"\\n\"; Encode as UTF-8; Write to \"out.csv\"");
}

TEST_F(PreviousJobs, AListOfOneRecordShowsNothingInItsCells) {
  makeDatabase();
  insertClipboardJob("one", 1, {416});
  insertClipboardJob("none", 2, {});
  search();
  selectJobs({1});
  EXPECT_EQ(browser()["operations"], R"([["", "", ""]])"_json);
  selectJobs({0});
  EXPECT_EQ(browser()["operations"], json::array());
}

TEST_F(PreviousJobs, TheKindOfAJobDecidesWhatIsShown) {
  makeDatabase();
  const json ofFile = {"Initial", "Final"};
  const json ofClipboard = {"Flip Horizontal", "Flip Vertical"};
  const struct {
    int flags;
    const char* kind;
    const char* title;
    bool restoreEnabled;
    json withoutFile;
    json withFile;
  } cases[] = {
      {0, "", "Restore Operations", false, json::array(), json::array()},
      {0, "1", "Restore Operations", false, json::array(), json::array()},
      {0xFFF, "1", "Restore Operations", false, json::array(), json::array()},
      {kOfFiles, "0", "Restore Operations", true, json::array(), ofFile},
      {kOfFiles, "1", "Restore Operations", true, json::array(), ofFile},
      {kOurs, "0", "Restore Operations", true, json::array(), ofFile},
      {kOurs, "", "Restore Operations", true, json::array(), ofFile},
      {kOurs, "2", "Restore Operations", true, json::array(), ofFile},
      {kOurs, "1", "Perform Operations", true, ofClipboard, ofClipboard},
      {kOfFiles | kOurs, "1", "Perform Operations", true, ofClipboard, ofClipboard},
  };
  for (const auto& [flags, kind, title, restoreEnabled, withoutFile, withFile] : cases) {
    const std::string job = insertJob("job", kDate, flags, kind);
    insertOperations(job, insertFile(job, "/a.txt", 1), {101, 901});
    insertOperations(job, "0", {416, 417});
    search();
    selectJobs({0});
    const std::string which = std::to_string(flags) + " " + kind;
    EXPECT_EQ(browser()["restoreTitle"], title) << which;
    EXPECT_EQ(browser()["restoreEnabled"], restoreEnabled) << which;
    EXPECT_EQ(operationTitles(), withoutFile) << which;
    selectJobFiles({0});
    EXPECT_EQ(operationTitles(), withFile) << which;
    EXPECT_EQ(browser()["restoreTitle"], title) << which;
    EXPECT_EQ(controlNamed("previousJobFileWindow", "previousJobFileWindowDetailsLabel")["hidden"],
              restoreEnabled)
        << which;
    run("delete from jobs; delete from input_files; delete from input_file_settings; "
        "delete from operations");
    selectJobs({});
  }
}

TEST_F(PreviousJobs, SeveralJobsShowNothingButCanBeDeleted) {
  makeDatabase();
  insertFileJob("file", 1, {{"/a.txt", {101, 901}}});
  insertClipboardJob("clip", 2, {416, 417});
  search();
  selectJobs({0});
  EXPECT_EQ(browser()["restoreTitle"], "Perform Operations");
  selectJobs({0, 1});
  const json shown = browser();
  EXPECT_EQ(shown["files"], json::array());
  EXPECT_EQ(shown["operations"], json::array());
  EXPECT_EQ(shown["restoreTitle"], "Restore Operations");
  EXPECT_EQ(shown["deleteEnabled"], true);
  EXPECT_EQ(nameField(), "");
  selectJobs({});
  EXPECT_EQ(browser()["deleteEnabled"], false);
}

TEST_F(PreviousJobs, NothingIsRestoredWhileAJobRuns) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}});
  search();
  done("setFlags", {{"runningJob", true}});
  selectJobs({0});
  EXPECT_EQ(browser()["restoreEnabled"], false);
  done("setFlags", {{"runningJob", false}});
  EXPECT_EQ(browser()["restoreEnabled"], false) << "it follows the selection alone";
  selectJobFiles({0});
  EXPECT_EQ(browser()["restoreEnabled"], true);
}

TEST_F(PreviousJobs, OfSeveralFilesTheLastIsSelectedAlone) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}, {"/b.txt", {101, 202, 901}}});
  search();
  selectJobs({0});
  selectJobFiles({0, 1});
  EXPECT_EQ(selectedJobFiles(), json{1});
  EXPECT_EQ(operationTitles(), (json{"Initial", "Trim Line", "Final"}));
}

TEST_F(PreviousJobs, ADoubleClickOnAJobSelectsItAlone) {
  makeDatabase();
  insertFileJob("one", 1, {{"/a.txt", {101, 901}}});
  insertFileJob("two", 2, {{"/b.txt", {101, 901}}});
  search();
  selectJobs({0, 1});
  EXPECT_EQ(done("doubleClick", {{"table", "jobs"}, {"row", 1}})["sheet"], nullptr);
  EXPECT_EQ(selectedJobs(), json{1});
  EXPECT_EQ(browser()["files"], json{"a.txt"});
  selectJobs({0, 1});
  done("menu", {{"action", "previousJobsWindowJobsTableViewDoubleClickOnRow"}});
  EXPECT_EQ(selectedJobs(), json{1});
}

// Details.

TEST_F(PreviousJobs, ADoubleClickOnAFileTellsWhereItIs) {
  makeDatabase();
  insertFileJob("job", 1, {{"/some where/a.txt", {101, 901}}});
  search();
  selectJobs({0});
  const json result = done("doubleClick", {{"table", "jobFiles"}, {"row", 0}});
  EXPECT_EQ(alertsOf(result), (json{sheetOfBrowser("Input File Path", "/some where/a.txt")}));
  EXPECT_EQ(result["sheet"], nullptr);
  EXPECT_EQ(browser()["path"], "/some where/a.txt");
  EXPECT_EQ(browser()["details"], "Type: (Unknown)\nEncoding: (Unknown)\n\nNumber of columns: 0\n");
  EXPECT_EQ(operationTitles(), (json{"Initial", "Final"}));
  selectJobs({0});
  EXPECT_EQ(browser()["path"], "") << "selecting a job empties it";
}

TEST_F(PreviousJobs, OnlyTheSelectionOfOneJobEmptiesThePath) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}});
  insertFileJob("other", 2, {});
  search();
  selectJobs({1});
  done("doubleClick", {{"table", "jobFiles"}, {"row", 0}});
  for (const std::vector<int>& rows : {std::vector<int>{}, {0, 1}}) {
    selectJobs(rows);
    EXPECT_EQ(browser()["path"], "/a.txt") << rows.size() << " jobs";
  }
  selectJobs({0});
  EXPECT_EQ(browser()["path"], "");
}

TEST_F(PreviousJobs, AFileOfTheFirstGenerationShowsItsSettings) {
  makeDatabase();
  const std::string job = insertJob("old", kDate, 0x3F, "");
  const std::string file = insertFile(job, "/old.csv", 1);
  insertOperations(job, file, {101, 901});
  run("update input_file_settings set file_type=2, file_encoding=30, flags=1+2+8+32, "
      "line_numbers_to_skip='1, 2', contain_regex='^#'");
  run("insert into input_file_column_settings (job_id, input_file_id, column_index, output_column_index) "
      "values (" +
      job + ", " + file + ", 4, 1), (" + job + ", " + file + ", 0, 2)");
  search();
  selectJobs({0});
  EXPECT_EQ(done("doubleClick", {{"table", "jobFiles"}, {"row", 0}})["sheet"], "previousJobFileWindow");
  const json shown = browser();
  EXPECT_EQ(shown["path"], "/old.csv");
  EXPECT_EQ(shown["details"],
            "Type: CSV\nEncoding: Mac Roman\nSkip blank lines\nSkip line numbers: 1, 2\nSkip that contain: "
            "^#\nCase-sensitive\n\nNumber of columns: 2\nColumn order: 5, 1\n");
  EXPECT_EQ(shown["operations"], json::array());
  EXPECT_EQ(shown["restoreEnabled"], false);
  EXPECT_EQ(controlNamed("previousJobFileWindow", "previousJobFileWindowDetailsLabel")["hidden"], false);
  EXPECT_TRUE(isOpen("previousJobFileWindow"));
  done("press", {{"name", "cancel"}});
  EXPECT_FALSE(isOpen("previousJobFileWindow"));
}

TEST_F(PreviousJobs, WithoutASelectedFileTheDetailsOnlyReadTheFilesAnew) {
  makeDatabase();
  const std::string job = insertFileJob("job", 1, {{"/a.txt", {101, 901}}});
  search();
  selectJobs({0});
  insertFile(job, "/b.txt", 2);
  const json result = done("menu", {{"action", "previousJobsWindowFilesTableViewDoubleClickOnRow"}});
  EXPECT_EQ(alertsOf(result), nullptr);
  EXPECT_EQ(browser()["files"], (json{"a.txt", "b.txt"}));
  EXPECT_EQ(browser()["details"], "");
}

TEST_F(PreviousJobs, ADoubleClickWithSeveralJobsTellsNothing) {
  makeDatabase();
  insertFileJob("one", 1, {{"/a.txt", {101, 901}}});
  insertFileJob("two", 2, {});
  search();
  selectJobs({0, 1});
  EXPECT_EQ(alertsOf(done("doubleClick", {{"table", "jobFiles"}, {"row", 0}})), nullptr);
}

// Renaming.

TEST_F(PreviousJobs, RenamingInTheTableChangesRowAndDatabase) {
  makeDatabase();
  insertFileJob("one", 1, {{"/a.txt", {101, 901}}});
  insertFileJob("two", 2, {});
  search();
  selectJobs({1});
  selectJobFiles({0});
  for (const char* name : {"it's mine", "", "two", "é"}) {
    EXPECT_EQ(alertsOf(done("saveJobName", {{"row", 1}, {"name", name}})), nullptr);
    EXPECT_EQ(jobNames(), (json{"two", name}));
    EXPECT_EQ(json(rows("select name from jobs order by rowid")), (json{name, "two"}));
  }
  EXPECT_EQ(browser()["files"], json::array());
  EXPECT_EQ(browser()["operations"], json::array());
  EXPECT_EQ(selectedJobs(), json{1});
  EXPECT_EQ(nameField(), "é");
}

TEST_F(PreviousJobs, ARenameIsNotASave) {
  makeDatabase();
  insertJob("one", kDate, 0, "kind");
  search();
  done("saveJobName", {{"row", 0}, {"name", "two"}});
  EXPECT_EQ(json(rows("select name, date_last_saved, flags, reserved from jobs")),
            (json{"two", kDate, "0", "kind"}));
}

TEST_F(PreviousJobs, SomeRenamesDoNothing) {
  makeDatabase();
  insertFileJob("one", 1, {{"/a.txt", {101, 901}}});
  search();
  selectJobs({0});
  run("create trigger refuse before update on jobs begin select raise(fail, 'asked'); end");
  const json before = browser();
  for (const auto& [row, name] : std::vector<std::pair<int, const char*>>{{0, "one"}, {1, "x"}, {-1, "x"}}) {
    const json result = done("saveJobName", {{"row", row}, {"name", name}});
    EXPECT_EQ(alertsOf(result), nullptr) << row;
    EXPECT_EQ(result.value("systemLog", json()), nullptr) << row;
    EXPECT_EQ(browser(), before) << row;
  }
  EXPECT_EQ(alertsOf(done("saveJobName", {{"row", 0}, {"name", "x"}})), (json{modalAlert("Error", kUnknown)}))
      << "the trigger does work";
}

TEST_F(PreviousJobs, ARenameThatFailsIsToldAndChangesNothing) {
  makeDatabase();
  insertFileJob("one", 1, {{"/a.txt", {101, 901}}});
  search();
  selectJobs({0});
  const json before = browser();
  {
    RawDatabase lock(databasePath());
    lock.rows("begin exclusive");
    EXPECT_EQ(alertsOf(done("saveJobName", {{"row", 0}, {"name", "x"}})),
              (json{modalAlert("Error", kUnknown)}));
  }
  EXPECT_EQ(browser(), before);
}

TEST_F(PreviousJobs, AnAbsentNameIsToldAndItsMessageStays) {
  makeDatabase();
  insertJob("one", kDate, kOurs, "0");
  search();
  EXPECT_EQ(alertsOf(done("saveJobName", {{"row", 0}, {"name", nullptr}})),
            (json{modalAlert("Error", "Invalid job ID")}));
  EXPECT_EQ(jobNames(), json{"one"});
  run("create trigger refuse before update on jobs begin select raise(fail, 'no'); end");
  EXPECT_EQ(alertsOf(done("saveJobName", {{"row", 0}, {"name", "x"}})),
            (json{modalAlert("Error", "Invalid job ID")}));
}

TEST_F(PreviousJobs, TheNameFieldRenamesTheOneSelectedJob) {
  makeDatabase();
  insertFileJob("one", 1, {});
  insertFileJob("two", 2, {});
  search();
  const auto type = [this](const char* name) {
    return done("setControl", {{"name", "previousJobsPopoverDetailsTitleTextField"}, {"value", name}});
  };
  selectJobs({1});
  type("three");
  EXPECT_EQ(jobNames(), (json{"two", "three"}));
  EXPECT_EQ(json(rows("select name from jobs order by rowid")), (json{"three", "two"}));
  for (const std::vector<int>& none : {std::vector<int>{}, std::vector<int>{0, 1}}) {
    selectJobs(none);
    type("no one's");
    EXPECT_EQ(jobNames(), (json{"two", "three"})) << "it belongs to no job";
  }
  selectJobs({0});
  run("create trigger refuse before update on jobs begin select raise(fail, 'no'); end");
  EXPECT_EQ(alertsOf(type("four")), (json{modalAlert("Error", kUnknown)}));
  EXPECT_EQ(nameField(), "two");
}

// Deleting.

TEST_F(PreviousJobs, DeletingAsksFirst) {
  makeDatabase();
  insertFileJob("one", 1, {{"/a.txt", {101, 901}}});
  search();
  selectJobs({0});
  const json question = {sheetOfBrowser("Delete the selected jobs?")};
  EXPECT_EQ(alertsOf(done("deleteJobs", {{"answer", "Cancel"}})), question);
  EXPECT_EQ(alertsOf(done("press", {{"name", "previousJobsWindowDeleteJobsButton"}})), question);
  EXPECT_EQ(jobNames(), json{"one"});
  EXPECT_EQ(browser()["files"], json{"a.txt"});
  done("press", {{"name", "previousJobsWindowDeleteJobsButton"}, {"answer", "Delete"}});
  EXPECT_EQ(jobNames(), json::array());
  EXPECT_EQ(json(rows("select count(*) from jobs")), json{"0"});
  EXPECT_EQ(json(rows("select count(*) from input_files")), json{"0"});
  EXPECT_EQ(json(rows("select count(*) from input_file_settings")), json{"0"});
  EXPECT_EQ(json(rows("select count(*) from operations")), json{"2"}) << "the operations stay behind";
}

TEST_F(PreviousJobs, AFileThatAnotherJobHasStays) {
  launch();
  add({write("a.csv", "x\n")});
  saveJob("one");
  saveJob("two");
  selectJobs({0});
  done("deleteJobs", {{"answer", "Delete"}});
  EXPECT_EQ(json(rows("select count(*) from input_files")), json{"1"});
  selectJobs({0});
  done("deleteJobs", {{"answer", "Delete"}});
  EXPECT_EQ(json(rows("select count(*) from input_files")), json{"0"});
}

TEST_F(PreviousJobs, AfterDeletingThePlaceStaysSelected) {
  makeDatabase();
  insertFileJob("last", 1, {{"/last.txt", {101, 901}}});
  insertFileJob("middle", 2, {{"/middle.txt", {101, 202, 901}}});
  insertFileJob("first", 3, {{"/first.txt", {101, 901}}});
  search();
  selectJobs({1});
  selectJobFiles({0});
  EXPECT_EQ(operationTitles().size(), 3u);
  done("deleteJobs", {{"answer", "Delete"}});
  EXPECT_EQ(jobNames(), (json{"first", "last"}));
  EXPECT_EQ(selectedJobs(), json{1});
  EXPECT_EQ(browser()["files"], json{"last.txt"});
  EXPECT_EQ(browser()["operations"], json::array());
  EXPECT_EQ(nameField(), "last");
  done("deleteJobs", {{"answer", "Delete"}});
  EXPECT_EQ(jobNames(), json{"first"});
  EXPECT_EQ(browser()["files"], json::array());
  EXPECT_EQ(browser()["deleteEnabled"], false);
  EXPECT_EQ(alertsOf(done("deleteJobs", {{"answer", "Delete"}})),
            (json{sheetOfBrowser("Delete the selected jobs?")}));
  EXPECT_EQ(jobNames(), json{"first"}) << "with nothing selected nothing is deleted";
}

TEST_F(PreviousJobs, JobsAreDeletedOneByOneDownToTheFirstFailure) {
  makeDatabase();
  for (const auto& [name, second] :
       std::vector<std::pair<const char*, int>>{{"d", 1}, {"c", 2}, {"b", 3}, {"a", 4}})
    insertFileJob(name, second, {{std::string("/") + name, {101, 901}}});
  search();
  run("create trigger refuse before delete on jobs when old.name='c' begin select raise(fail, 'no'); end");
  selectJobs({0, 1, 2, 3});
  const json result = done("deleteJobs", {{"answer", "Delete"}});
  EXPECT_EQ(alertsOf(result), (json{sheetOfBrowser("Delete the selected jobs?"),
                                    modalAlert("Could not delete the selected jobs")}));
  EXPECT_EQ(jobNames(), (json{"a", "b", "c", "d"})) << "the table stays as it is";
  EXPECT_EQ(selectedJobs(), (json{0, 1, 2, 3}));
  EXPECT_EQ(json(rows("select name from jobs order by name")), (json{"c", "d"}));
  EXPECT_EQ(json(rows("select file_name from input_files order by file_name")), (json{"c", "d"}));
  search();
  EXPECT_EQ(jobNames(), (json{"c", "d"}));
}

// Restoring.

TEST_F(PreviousJobs, OperationsComeBackOntoTheSelectedFiles) {
  makeDatabase();
  insertFileJob("job", 1, {{"/other/place.txt", {101, 202, 901}}});
  add({write("a.csv", "x,y\n"), write("b.csv", "1,2\n"), write("c.csv", "3,4\n")});
  select({0, 2});
  const json before = entries();
  search();
  selectJobs({0});
  selectJobFiles({0});
  EXPECT_EQ(alertsOf(done("press", {{"name", "previousJobsWindowRestoreOperationsButton"}})), nullptr);
  const json after = entries();
  ASSERT_EQ(after.size(), 3u);
  for (int restored : {0, 2}) {
    EXPECT_EQ(after[restored]["Operations"].size(), 3u);
    EXPECT_EQ(after[restored]["Operations"][1]["Code"], 202);
    EXPECT_EQ(after[restored]["FilePath"], before[restored]["FilePath"]);
  }
  EXPECT_EQ(after[1], before[1]);
  EXPECT_EQ(browser()["files"], json{"place.txt"}) << "the browser stays as it is";
}

TEST_F(PreviousJobs, RestoringShowsTheOperationsAndANewPreview) {
  launch();
  add({write("a.csv", "x,y\n"), write("b.csv", "1,2\n")});
  setOperations(0, csvOperations("a.csv", {{{"Code", 203}, {"Arg1", "x"}, {"Arg2", "z"}}}));
  saveJob("job");
  setOperations(0, csvOperations("a.csv"));
  select({0});
  EXPECT_EQ(mainWindow()["outputCells"], R"([["1", "x", "y"]])"_json);
  selectJobs({0});
  selectJobFiles({0});
  done("restoreOperations");
  EXPECT_EQ(column(mainWindow()["operationRows"], 0), (json{"Initial", "Replace Line", "Final"}));
  EXPECT_EQ(mainWindow()["outputCells"], R"([["1", "z", "y"]])"_json);
}

TEST_F(PreviousJobs, RestoringAShorterListShowsItsRowsAlone) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}});
  add({write("a.csv", "x,y\n")});
  setOperations(0, csvOperations("a.csv", {{{"Code", 202}}}));
  select({0});
  done("setControl", {{"name", "operationsTableView"}, {"value", {2}}});
  EXPECT_EQ(mainWindow()["selectedOperations"], json{2});
  search();
  selectJobs({0});
  selectJobFiles({0});
  done("restoreOperations");
  EXPECT_EQ(mainWindow()["selectedOperations"], json::array());
}

TEST_F(PreviousJobs, EachFileGetsAListOfItsOwn) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}});
  add({write("a.csv", "x\n"), write("b.csv", "x\n")});
  select({0, 1});
  search();
  selectJobs({0});
  selectJobFiles({0});
  done("restoreOperations");
  setOperations(0, csvOperations("a.csv"));
  EXPECT_EQ(entries()[1]["Operations"].size(), 2u);
  EXPECT_EQ(entries()[1]["Operations"][0]["IntArg1"], 0);
  EXPECT_EQ(operationTitles(), (json{"Initial", "Final"}));
}

TEST_F(PreviousJobs, RestoringEndsTheSheetOfTheFile) {
  makeDatabase();
  const std::string job = insertJob("old", dated(1), 0, "");
  insertFile(job, "/old.csv", 1);
  insertFileJob("new", 2, {{"/a.txt", {101, 901}}});
  add({write("a.csv", "x\n")});
  search();
  selectJobs({1});
  done("doubleClick", {{"table", "jobFiles"}, {"row", 0}});
  EXPECT_TRUE(isOpen("previousJobFileWindow"));
  done("restoreOperations");
  EXPECT_TRUE(isOpen("previousJobFileWindow")) << "an old job has nothing to restore";
  selectJobs({0});
  selectJobFiles({0});
  done("restoreOperations");
  EXPECT_FALSE(isOpen("previousJobFileWindow"));
}

TEST_F(PreviousJobs, RestoringNeedsASelectedInputFile) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}});
  search();
  const json noFiles = {sheetOfBrowser("No input files to restore file settings to.")};
  const json noSelection = {
      sheetOfBrowser("Select an input file in the main window to restore operations to.")};
  EXPECT_EQ(alertsOf(done("restoreOperations")), noFiles) << "also with no job selected";
  selectJobs({0});
  selectJobFiles({0});
  EXPECT_EQ(alertsOf(done("restoreOperations")), noFiles);
  add({write("a.csv", "x\n")});
  select({});
  const json before = entries();
  EXPECT_EQ(alertsOf(done("restoreOperations")), noSelection);
  selectJobs({});
  EXPECT_EQ(alertsOf(done("restoreOperations")), noSelection);
  EXPECT_EQ(entries(), before);
}

TEST_F(PreviousJobs, WithoutOperationsNothingIsRestored) {
  makeDatabase();
  insertFileJob("empty", 1, {{"/a.txt", {}}});
  insertFileJob("other", 2, {{"/b.txt", {101, 901}}});
  add({write("a.csv", "x\n")});
  const json before = entries();
  search();
  selectJobs({1});
  selectJobFiles({0});
  EXPECT_EQ(alertsOf(done("restoreOperations")), nullptr) << "a file without operations";
  selectJobs({0, 1});
  EXPECT_EQ(alertsOf(done("restoreOperations")), nullptr) << "several jobs";
  EXPECT_EQ(entries(), before);
}

TEST_F(PreviousJobs, AClipboardJobIsPerformedOnTheGrid) {
  launch();
  perform({{"Code", 416}});
  perform({{"Code", 417}});
  saveJob("two", "clipboardDataWindow");
  selectJobs({0});
  EXPECT_EQ(browser()["restoreTitle"], "Perform Operations");
  const json before = browser();
  const json result = done("press", {{"name", "previousJobsWindowRestoreOperationsButton"}});
  EXPECT_EQ(alertsOf(result), nullptr) << "no input file is needed";
  EXPECT_EQ(browser(), before);
  saveJob("four", "clipboardDataWindow");
  EXPECT_EQ(json(rows("select code from operations where job_id=2 order by idx")),
            (json{"416", "417", "416", "417"}))
      << "each step counts as a new operation";
}

TEST_F(PreviousJobs, AClipboardJobLeavesTheInputFilesAlone) {
  launch();
  add({write("a.csv", "x\n")});
  perform({{"Code", 416}});
  saveJob("one", "clipboardDataWindow");
  const json before = entries();
  selectJobs({0});
  done("restoreOperations");
  EXPECT_EQ(entries(), before);
}

// Failures.

TEST_F(PreviousJobs, AStoreThatFailsAtLaunchIsToldOnce) {
  const struct {
    const char* what;
    std::function<void(const std::string& path)> breakStore;
  } cases[] = {
      {"garbage", [](const std::string& path) { std::ofstream(path) << std::string(4096, 'x'); }},
      {"a folder", [](const std::string& path) { std::filesystem::create_directory(path); }},
  };
  for (const auto& [what, breakStore] : cases) {
    restart();
    std::filesystem::remove_all(databasePath());
    std::filesystem::create_directories(path("Documents"));
    breakStore(databasePath());
    EXPECT_EQ(alertsOf(done("launch")), (json{modalAlert(kNoList)})) << what;
    EXPECT_EQ(jobNames(), json::array());
    EXPECT_EQ(alertsOf(search()), (json{modalAlert(kNoList)})) << what;
  }
}

TEST_F(PreviousJobs, AListThatCannotBeReadIsEmpty) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}});
  search();
  selectJobs({0});
  selectJobFiles({0});
  {
    RawDatabase lock(databasePath());
    lock.rows("begin exclusive");
    EXPECT_EQ(alertsOf(search()), (json{modalAlert(kNoList)}));
    EXPECT_EQ(alertsOf(done("menu", {{"action", "previousJobsWindowMenuItemActionClicked"}})),
              (json{modalAlert(kNoList)}));
  }
  EXPECT_TRUE(isOpen("previousJobsWindow"));
  const json shown = browser();
  for (const char* list : {"jobs", "files", "operations"}) EXPECT_EQ(shown[list], json::array()) << list;
  EXPECT_EQ(shown["deleteEnabled"], false);
  EXPECT_EQ(selectedJobs(), json::array());
  EXPECT_EQ(alertsOf(search()), nullptr);
  EXPECT_EQ(jobNames(), json{"job"});
}

TEST_F(PreviousJobs, SettingsAndOperationsThatCannotBeReadAreTold) {
  makeDatabase();
  insertFileJob("file", 1, {{"/a.txt", {101, 901}}});
  insertClipboardJob("clip", 2, {416, 417});
  search();
  RawDatabase lock(databasePath());
  lock.rows("begin exclusive");
  EXPECT_EQ(alertsOf(selectJobs({1})), (json{modalAlert(kNoSettings)})) << "no file is selected";
  EXPECT_EQ(browser()["files"], json::array());
  EXPECT_EQ(browser()["restoreEnabled"], true);
  EXPECT_EQ(browser()["deleteEnabled"], true);
  EXPECT_EQ(alertsOf(selectJobs({0})), (json{modalAlert(kNoSettings), sheetOfBrowser("Error", kUnknown)}));
  EXPECT_EQ(browser()["restoreTitle"], "Perform Operations");
  EXPECT_EQ(browser()["operations"], json::array());
}

TEST_F(PreviousJobs, AReadThatFailsLeavesTheRestoreButtonAsItIs) {
  makeDatabase();
  insertJob("old", dated(1), 0, "");
  insertClipboardJob("clip", 2, {416, 417});
  search();
  selectJobs({1});
  EXPECT_EQ(browser()["restoreEnabled"], false);
  run("drop table operations");
  EXPECT_EQ(alertsOf(selectJobs({0})), (json{sheetOfBrowser("Error", kUnknown)}));
  EXPECT_EQ(browser()["restoreEnabled"], false);
}

TEST_F(PreviousJobs, OperationsOfAPathWithAQuoteCannotBeRead) {
  launch();
  add({write("it's.csv", "x\n"), write("plain.csv", "x\n")});
  EXPECT_EQ(saveJob("job")["saved"], true);
  EXPECT_EQ(alertsOf(selectJobs({0})), nullptr);
  EXPECT_EQ(browser()["files"], (json{"it's.csv", "plain.csv"}));
  EXPECT_EQ(alertsOf(selectJobFiles({0})), (json{sheetOfBrowser("Error", kUnknown)}));
  EXPECT_EQ(browser()["operations"], json::array());
  EXPECT_EQ(alertsOf(selectJobFiles({1})), nullptr);
  EXPECT_EQ(operationTitles(), (json{"Initial", "Final"}));
}

TEST_F(PreviousJobs, AJobThatIsGoneShowsNothing) {
  makeDatabase();
  insertFileJob("job", 1, {{"/a.txt", {101, 901}}});
  search();
  run("delete from jobs; delete from input_file_settings");
  EXPECT_EQ(alertsOf(selectJobs({0})), nullptr);
  EXPECT_EQ(browser()["files"], json::array());
}

}  // namespace
}  // namespace quillet::testing
