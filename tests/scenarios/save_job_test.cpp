// A job is saved from the main window or from the clipboard data window.
#include <filesystem>

#include "scenarios/job_scenario.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

constexpr const char* kWillBeOverwritten = "Any job with the same name will be overwritten.";
constexpr const char* kFailed = "Could not save the job.";

class SaveJob : public JobScenario {
 protected:
  // One input file, "a.csv", with a list of three operations.
  void launchWithFile() {
    launch();
    add({write("a.csv", "x,y\n")});
    setOperations(0, csvOperations("a.csv", {{{"Code", 202}, {"IntArg1", 2}}}));
  }
  json jobsInDatabase() { return rows("select name, flags, reserved from jobs order by rowid"); }
};

TEST_F(SaveJob, OpensWithANoteAndTheNameOfTheLastJob) {
  launchWithFile();
  const json first = saveJob("first");
  EXPECT_EQ(first["opened"],
            (json{{"name", ""}, {"infoLabel", kWillBeOverwritten}, {"infoLabelColour", "secondaryLabel"}}));
  EXPECT_EQ(first["saved"], true);
  EXPECT_EQ(first["infoLabel"], kWillBeOverwritten);
  EXPECT_EQ(first["infoLabelColour"], "secondaryLabel");
  EXPECT_EQ(defaultOf("LastJobName"), "first");
  EXPECT_EQ(saveJob("second")["opened"]["name"], "first");
  EXPECT_EQ(done("saveJob")["opened"]["name"], "second");
  EXPECT_EQ(jobsInDatabase(), (json{"first", "8192", "0", "second", "8192", "0"}));
}

TEST_F(SaveJob, TheSheetHasItsControlsAndTheMainWindowItsButton) {
  launchWithFile();
  EXPECT_EQ(controlNamed("window", "saveJobButton")["value"], "Save Job…");
  done("press", {{"name", "saveJobButton"}});
  EXPECT_TRUE(isOpen("saveJobWindow"));
  EXPECT_EQ(controlNamed("saveJobWindow", "saveJobWindowSaveButton")["value"], "Save");
  done("setControl", {{"name", "saveJobWindowJobNameComboBox"}, {"value", "pressed"}});
  EXPECT_TRUE(isOpen("saveJobWindow")) << "typing saves nothing";
  done("press", {{"name", "done"}});
  EXPECT_FALSE(isOpen("saveJobWindow"));
  EXPECT_EQ(jobsInDatabase(), (json{"pressed", "8192", "0"}));
}

TEST_F(SaveJob, CancelEndsTheSheetAndChangesNothing) {
  setDefault("LastJobName", "kept");
  launchWithFile();
  done("press", {{"name", "saveJobButton"}});
  done("setControl", {{"name", "saveJobWindowJobNameComboBox"}, {"value", "other"}});
  done("press", {{"name", "saveJobWindowCancelButton"}});
  EXPECT_FALSE(isOpen("saveJobWindow"));
  EXPECT_EQ(defaultOf("LastJobName"), "kept");
  EXPECT_EQ(jobsInDatabase(), json::array());
}

TEST_F(SaveJob, ANameIsRequired) {
  launchWithFile();
  const json result = saveJob("");
  EXPECT_EQ(result["saved"], false);
  EXPECT_EQ(result["infoLabel"], "Job name is required.");
  EXPECT_EQ(result["infoLabelColour"], "red");
  EXPECT_FALSE(isOpen("saveJobWindow")) << "the tool cancels what was refused";
  EXPECT_EQ(jobsInDatabase(), json::array());
  EXPECT_EQ(defaultOf("LastJobName"), nullptr);

  done("press", {{"name", "saveJobButton"}});
  EXPECT_EQ(controlNamed("saveJobWindow", "saveJobWindowInfoLabel")["value"], kWillBeOverwritten)
      << "an opening words it anew";
  done("press", {{"name", "done"}});
  EXPECT_TRUE(isOpen("saveJobWindow")) << "it stays open";
  EXPECT_EQ(controlNamed("saveJobWindow", "saveJobWindowInfoLabel")["value"], "Job name is required.");
  done("setControl", {{"name", "saveJobWindowJobNameComboBox"}, {"value", " "}});
  done("press", {{"name", "done"}});
  EXPECT_FALSE(isOpen("saveJobWindow"));
  EXPECT_EQ(jobsInDatabase(), (json{" ", "8192", "0"})) << "a blank is a name";
}

TEST_F(SaveJob, OverTheClipboardDataWindowThePerformedOperationsAreSaved) {
  launchWithFile();
  perform({{"Code", 416}});
  perform({{"Code", 417}});
  EXPECT_EQ(saveJob("both", "clipboardDataWindow")["saved"], true);
  EXPECT_EQ(jobsInDatabase(), (json{"both", "8192", "1"}));
  EXPECT_EQ(json(rows("select input_file_id, idx, code from operations order by idx")),
            (json{"0", "0", "416", "0", "1", "417"}));
  EXPECT_EQ(json(rows("select count(*) from input_files")), json{"0"});
}

// Any window but the main one stands for the clipboard data window.
TEST_F(SaveJob, TheKeyWindowDecidesWhatIsSaved) {
  launchWithFile();
  const auto kindOfJobSavedAs = [this](const std::string& name) {
    done("press", {{"name", "saveJobButton"}});
    done("setControl", {{"name", "saveJobWindowJobNameComboBox"}, {"value", name}});
    done("press", {{"name", "done"}});
    return json(rows("select reserved from jobs where name='" + name + "'"));
  };
  EXPECT_EQ(kindOfJobSavedAs("main window"), json{"0"});
  done("menu", {{"action", "previousJobsWindowMenuItemActionClicked"}});
  EXPECT_EQ(kindOfJobSavedAs("previous jobs"), json{"1"});
  done("closeWindow", {{"window", "previousJobsWindow"}});
  EXPECT_EQ(kindOfJobSavedAs("main window again"), json{"0"});
}

TEST_F(SaveJob, AWindowThatThereIsNotIsRefused) {
  EXPECT_NE(refused({{"do", "saveJob"}, {"name", "job"}}), "") << "before the launch";
  launchWithFile();
  EXPECT_NE(refused({{"do", "saveJob"}, {"name", "job"}, {"window", "clipboardWindow"}}), "");
  EXPECT_FALSE(isOpen("saveJobWindow"));
  EXPECT_EQ(jobsInDatabase(), json::array());
}

TEST_F(SaveJob, ASaveShowsInTheBrowserAtOnce) {
  launchWithFile();
  saveJob("first");
  EXPECT_EQ(jobNames(), json{"first"});
  saveJob("it's \"two\"");
  EXPECT_EQ(json(rows("select name from jobs order by rowid")), (json{"first", "it's \"two\""}));
  EXPECT_EQ(browser()["jobs"].size(), 2u);
}

TEST_F(SaveJob, SavingUnderANameThatThereIsOverwrites) {
  launchWithFile();
  saveJob("job");
  run("update jobs set date_last_saved='2001-01-01 00:00:00 +0000'");
  setOperations(0, csvOperations("short.csv"));
  EXPECT_EQ(saveJob("job")["saved"], true);
  EXPECT_EQ(json(rows("select count(*), max(rowid), min(date_last_saved)>'2002' from jobs")),
            (json{"1", "1", "1"}));
  EXPECT_EQ(json(rows("select idx, code, arg4 from operations order by idx")),
            (json{"0", "101", "", "1", "901", "short.csv"}))
      << "no operation of the longer list is left";

  done("setInputFiles", {{"entries", {{{"FilePath", "/b.csv"}, {"FileName", "b.csv"}}}}});
  EXPECT_EQ(saveJob("job")["saved"], true);
  selectJobs({0});
  EXPECT_EQ(browser()["files"].size(), 2u) << "what is not in the list any more stays in the job";
}

TEST_F(SaveJob, AJobTakesTheKindOfItsLastSave) {
  launchWithFile();
  perform({{"Code", 416}});
  perform({{"Code", 417}});
  saveJob("job");
  EXPECT_EQ(browser()["jobs"][0][2], "P");
  saveJob("job", "clipboardDataWindow");
  EXPECT_EQ(browser()["jobs"][0][2], "C");
  selectJobs({0});
  EXPECT_EQ(browser()["files"], json{"a.csv"}) << "its files stay where they are";
  EXPECT_EQ(operationTitles(), (json{"Flip Horizontal", "Flip Vertical"}));
  saveJob("job");
  EXPECT_EQ(browser()["jobs"][0][2], "P");
}

TEST_F(SaveJob, AClipboardJobMayHoldNothing) {
  launch();
  EXPECT_EQ(saveJob("nothing", "clipboardDataWindow")["saved"], true);
  EXPECT_EQ(jobsInDatabase(), (json{"nothing", "8192", "1"}));
}

TEST_F(SaveJob, WithTwoJobsOfOneNameAThirdIsMade) {
  launchWithFile();
  saveJob("one");
  saveJob("two");
  run("update jobs set name='same'");
  EXPECT_EQ(saveJob("same")["saved"], true);
  EXPECT_EQ(json(rows("select count(*) from jobs where name='same'")), json{"3"});
}

TEST_F(SaveJob, SavingGoesOnWhileAJobRuns) {
  launchWithFile();
  done("setFlags", {{"runningJob", true}});
  EXPECT_EQ(saveJob("job", "clipboardDataWindow")["saved"], true);
}

// What fails, and what is left of it.

class SaveJobFailure : public SaveJob {
 protected:
  // Refused with the one message; the browser still shows what it showed.
  json expectRefused(const std::string& name = "job", const std::string& window = "window") {
    json result = saveJob(name, window);
    EXPECT_EQ(result["saved"], false);
    EXPECT_EQ(result["infoLabel"], kFailed);
    EXPECT_EQ(result["infoLabelColour"], "red");
    EXPECT_EQ(alertsOf(result), nullptr) << "the sheet is told, nothing else";
    EXPECT_EQ(defaultOf("LastJobName"), nullptr);
    EXPECT_EQ(jobNames(), json::array());
    return result.value("systemLog", json());
  }
};

TEST_F(SaveJobFailure, TheSheetStaysOpenAndCanTryAgain) {
  launchWithFile();
  done("press", {{"name", "saveJobButton"}});
  done("setControl", {{"name", "saveJobWindowJobNameComboBox"}, {"value", "job"}});
  {
    RawDatabase lock(databasePath());
    lock.rows("begin exclusive");
    done("press", {{"name", "done"}});
  }
  EXPECT_TRUE(isOpen("saveJobWindow"));
  EXPECT_EQ(controlNamed("saveJobWindow", "saveJobWindowInfoLabel")["value"], kFailed);
  done("press", {{"name", "done"}});
  EXPECT_FALSE(isOpen("saveJobWindow"));
  EXPECT_EQ(jobsInDatabase(), (json{"job", "8192", "0"}));
}

TEST_F(SaveJobFailure, ALockedDatabaseKeepsNothing) {
  launchWithFile();
  {
    RawDatabase lock(databasePath());
    lock.rows("begin exclusive");
    expectRefused();
  }
  EXPECT_EQ(jobsInDatabase(), json::array());
}

TEST_F(SaveJobFailure, WithoutDocumentsThereIsNoDatabase) {
  restart({"--no-documents"});
  EXPECT_EQ(done("launch")["alerts"], (json{modalAlert("Error getting previous jobs from database")}));
  EXPECT_EQ(expectRefused(), (json{"Could not find the database resource quillet.db"}));
}

TEST_F(SaveJobFailure, AJobThatCannotBeInsertedLeavesNothing) {
  launchWithFile();
  run("create trigger refuse before insert on jobs begin select raise(fail, 'no'); end");
  EXPECT_EQ(expectRefused(), (json{"no", "could not add the job to the db"}));
  EXPECT_EQ(json(rows("select count(*) from input_files")), json{"0"});
}

TEST_F(SaveJobFailure, AFileThatCannotBeInsertedLeavesTheJobAndTheFilesSoFar) {
  launchWithFile();
  add({write("b.csv", "x,y\n"), write("c.csv", "x,y\n")});
  run("create trigger refuse before insert on input_files when new.file_name='b.csv' "
      "begin select raise(fail, 'no'); end");
  EXPECT_EQ(expectRefused(),
            (json{"no", "Could not add the input files to the db", "Only 1 input files IDs, expected 3"}));
  EXPECT_EQ(jobsInDatabase(), (json{"job", "8192", "0"}));
  EXPECT_EQ(json(rows("select file_name from input_files")), json{"a.csv"});
  EXPECT_EQ(json(rows("select count(*) from input_file_settings")), json{"0"});
  search();
  EXPECT_EQ(jobNames(), json{"job"}) << "the job without files shows in the browser";
}

TEST_F(SaveJobFailure, AnEntryWithoutPathOrNameIsNotEnough) {
  const json whole = {{"FilePath", "/a"}, {"FileName", "a"}};
  for (const json& broken : {json{{"FilePath", "/b"}}, json{{"FileName", "b"}}}) {
    restart();
    launch();
    done("setInputFiles", {{"entries", {broken, whole}}});
    EXPECT_EQ(expectRefused(), (json{"Only 1 input files IDs, expected 2"}));
    EXPECT_EQ(json(rows("select file_path from input_files")), json{"/a"});
    run("delete from jobs; delete from input_files");
  }
}

TEST_F(SaveJobFailure, AnEmptyListOfFilesLeavesAJobWithoutFiles) {
  launch();
  EXPECT_EQ(expectRefused(), (json{"Only 0 input files IDs, expected 0"}));
  EXPECT_EQ(jobsInDatabase(), (json{"job", "8192", "0"}));
}

TEST_F(SaveJobFailure, ALastScriptThatFailsLeavesJobAndFileRows) {
  launchWithFile();
  run("create trigger refuse before insert on operations when new.idx=1 begin select raise(fail, 'no'); end");
  EXPECT_EQ(expectRefused(), (json{"no"}));
  EXPECT_EQ(jobsInDatabase(), (json{"job", "8192", "0"}));
  EXPECT_EQ(json(rows("select file_name from input_files")), json{"a.csv"});
  EXPECT_EQ(json(rows("select count(*) from input_file_settings")), json{"0"});
  EXPECT_EQ(json(rows("select count(*) from operations")), json{"0"});
}

TEST_F(SaveJobFailure, AJobRowThatCannotBeUpdatedStopsNothing) {
  launchWithFile();
  saveJob("job");
  run("create trigger refuse before update on jobs begin select raise(fail, 'no'); end");
  setOperations(0, csvOperations("other.csv"));
  const json result = saveJob("job");
  EXPECT_EQ(result["saved"], true) << "the last script's status is that of the save";
  EXPECT_EQ(result["systemLog"], (json{"no", "Could not update the job in the db"}));
  EXPECT_EQ(json(rows("select arg4 from operations where code=901")), json{"other.csv"});
}

}  // namespace
}  // namespace quillet::testing
