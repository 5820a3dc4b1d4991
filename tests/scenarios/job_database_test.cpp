// The job database through the application: made at launch, asked by statements and by jobs.
#include <filesystem>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

namespace fs = std::filesystem;

class JobDatabase : public Scenario {
 protected:
  json rows(const std::string& query) { return done("rows", {{"query", query}}); }
  json flat(const std::string& query) {
    const json result = rows(query);
    EXPECT_EQ(result["status"], 0) << query;
    return result["rows"];
  }
  void execute(const std::string& script) {
    EXPECT_EQ(done("execCommand", {{"script", script}})["status"], 0) << script;
  }
  // A job of the current model: "/data/it's.csv" before "/data/b.csv" with two operations.
  void insertJob() {
    execute(
        "insert into jobs (name, date_last_saved, flags, reserved) values ('mine', 'day', 8192, '0'); "
        "insert into input_files (file_name, file_path) values ('b.csv', '/data/b.csv'), "
        "('it''s.csv', '/data/it''s.csv'); "
        "insert into input_file_settings (job_id, input_file_id, display_order) values (1, 1, 2), (1, 2, 1); "
        "insert into operations (job_id, input_file_id, idx, code, intarg2, arg1) values "
        "(1, 1, 1, 901, 4, ','), (1, 1, 0, 101, 4, 'é');");
  }
  void insertFirstGenerationJob() {
    execute(
        "insert into jobs values ('old', 'day', 2, 9, 4, 3, 'out.csv', 'r', 'm', 'i', '1-2', 2050, ';'); "
        "insert into input_files (file_name, file_path) values ('a', '/a'); "
        "insert into input_file_settings values (1, 1, 1, 2, 5, '3', 'x', 34, ','); "
        "insert into input_file_column_settings values "
        "(1, 1, 7, 0, 'a', 'b', 'c', 'd', 1, 2, 3, 4, 5, 6, 'name', 129, '');");
  }

  static json operation(int code, int intArg2, const std::string& arg1) {
    return {{"Code", code}, {"IntArg1", 0}, {"IntArg2", intArg2}, {"IntArg3", 0},
            {"IntArg4", 0}, {"IntArg5", 0}, {"Arg1", arg1},       {"Arg2", ""},
            {"Arg3", ""},   {"Arg4", ""},   {"Arg5", ""}};
  }
};

// The life of the file.

TEST_F(JobDatabase, IsMadeInTheDocumentsFolderAtLaunch) {
  EXPECT_FALSE(fs::exists(path("Documents/quillet.db")));
  const json result = done("launch");
  EXPECT_FALSE(result.contains("systemLog")) << result;
  EXPECT_EQ(flat("select name from sqlite_master where type='table' order by name"),
            json({"input_file_column_settings", "input_file_settings", "input_files", "jobs", "operations"}));
  EXPECT_TRUE(fs::exists(path("Documents/quillet.db")));
}

TEST_F(JobDatabase, ALaterLaunchChangesNothing) {
  launch();
  insertJob();
  const std::string before = read("Documents/quillet.db");
  terminate();
  launch();
  terminate();
  restart();
  launch();
  EXPECT_EQ(read("Documents/quillet.db"), before);
  EXPECT_EQ(flat("select name from jobs"), json({"mine"}));
}

TEST_F(JobDatabase, WithoutADocumentsFolderEverythingIsTold) {
  restart({"--no-documents"});
  const json told = {"Could not find the database resource quillet.db"};
  EXPECT_EQ(done("launch")["systemLog"], told);
  json result = rows("select 1");
  EXPECT_EQ(result["status"], -1);
  EXPECT_EQ(result["rows"], json::array());
  EXPECT_EQ(result["systemLog"], told);
  result = done("execCommand", {{"script", "select 1"}});
  EXPECT_EQ(result["status"], -1);
  EXPECT_EQ(result["lastRowID"], 0);
  EXPECT_EQ(result["systemLog"], told);
  result = done("getNumberWithQuery", {{"query", "select 1"}});
  EXPECT_EQ(result["value"], -1);
  EXPECT_EQ(result["systemLog"], told);
  EXPECT_EQ(done("lastErrorMessage")["text"], "Unknown error");
}

TEST_F(JobDatabase, AFileThatIsNoDatabaseDoesNotHinderTheLaunchAndStaysAsItIs) {
  fs::create_directory(path("Documents"));
  const std::string garbage(5000, 'g');
  write("Documents/quillet.db", garbage);
  launch();
  EXPECT_EQ(rows("select * from jobs")["status"], 26);
  const json result = done("execCommand", {{"script", "delete from jobs"}});
  EXPECT_EQ(result["status"], 26);
  EXPECT_EQ(result["systemLog"], json{"file is not a database"});
  terminate();
  EXPECT_EQ(read("Documents/quillet.db"), garbage);
}

TEST_F(JobDatabase, AFolderInPlaceOfTheFileIsTold) {
  fs::create_directories(path("Documents/quillet.db"));
  const std::string told = "Could not open the database " + path("Documents/quillet.db");
  EXPECT_EQ(done("launch")["systemLog"], json{told});
  const json result = done("execCommand", {{"script", "select 1"}});
  EXPECT_EQ(result["status"], 14);
  EXPECT_EQ(result["systemLog"], json{told + ", rc = 14"});
}

// Statements.

TEST_F(JobDatabase, StatementsAnswerWithStatusRowsAndNumbers) {
  launch();
  json result = done("execCommand", {{"script", "insert into jobs (name) values ('a'), ('b')"}});
  EXPECT_EQ(result["status"], 0);
  EXPECT_EQ(result["lastRowID"], 2);
  EXPECT_EQ(flat("select rowid, name, null from jobs"), json({"1", "a", "", "2", "b", ""}));
  EXPECT_EQ(flat("select 1 where 0"), json::array());
  EXPECT_EQ(done("getNumberWithQuery", {{"query", "select count(*) from jobs"}})["value"], 2);
  EXPECT_EQ(done("getNumberWithQuery", {{"query", "select 1 where 0"}})["value"], -1);
  result = done("execCommand", {{"script", "nonsense"}});
  EXPECT_EQ(result["status"], 1);
  EXPECT_EQ(result["lastRowID"], 2);
  EXPECT_EQ(result["systemLog"], json{"near \"nonsense\": syntax error"});
  result = rows("nonsense");
  EXPECT_EQ(result["status"], 1);
  EXPECT_FALSE(result.contains("systemLog")) << result;
  EXPECT_EQ(done("lastErrorMessage")["text"], "Unknown error");
}

TEST_F(JobDatabase, QuotesAreDoubled) {
  EXPECT_EQ(call("dbStringFromString", {{"text", "it's ''é"}})["text"], "it''s ''''é");
  EXPECT_EQ(call("dbStringFromString", {{"text", nullptr}})["text"], "");
  EXPECT_EQ(call("dbStringFromString")["text"], "");
}

// Jobs.

TEST_F(JobDatabase, AJobIsAskedByTextOrNumber) {
  launch();
  insertJob();
  for (const json& id : {json("1"), json(1)}) {
    json result = done("jobSettings", {{"jobID", id}});
    EXPECT_EQ(result["status"], 0);
    EXPECT_EQ(result["settings"]["OverallJobNameString"], "mine");
    result = done("jobFiles", {{"jobID", id}});
    EXPECT_EQ(result["status"], 0);
    ASSERT_EQ(result["files"].size(), 2u);
    EXPECT_EQ(result["files"][0]["FilePath"], "/data/it's.csv");
    EXPECT_EQ(result["files"][1], (json{{"InputFileSettingsID", "1"},
                                        {"JobID", "1"},
                                        {"InputFileID", "1"},
                                        {"FileName", "b.csv"},
                                        {"FilePath", "/data/b.csv"},
                                        {"DisplayOrder", 2},
                                        {"FileType", 0},
                                        {"FileEncoding", 0},
                                        {"LineNumbersToSkip", ""},
                                        {"ContainRegex", ""},
                                        {"InputFileCSVSeparator", ""},
                                        {"SkipBlankLines", false},
                                        {"SkipLineNumbers", false},
                                        {"SkipLinesThatContain", false},
                                        {"ContainRegexCS", false},
                                        {"DontTrimWhitespaceFromEOL", false},
                                        {"ColumnsKey", json::array()}}));
    EXPECT_EQ(done("jobFile", {{"jobID", id}, {"inputFileID", id}})["file"], result["files"][1]);
    EXPECT_EQ(done("jobOperations", {{"jobID", id}, {"inputFilePath", "/data/b.csv"}})["operations"],
              json({operation(101, 4, "é"), operation(901, 4, ",")}));
  }
}

TEST_F(JobDatabase, AJobThatIsNotThereIsNoError) {
  launch();
  insertJob();
  json result = done("jobSettings", {{"jobID", 9}});
  EXPECT_EQ(result["status"], 0);
  EXPECT_EQ(result["settings"], json::object());
  EXPECT_EQ(done("jobFiles", {{"jobID", 9}})["files"], json::array());
  for (const json& query :
       {json{{"jobID", 1}, {"inputFileID", 9}}, {{"jobID", nullptr}, {"inputFileID", 1}}}) {
    result = done("jobFile", query);
    EXPECT_EQ(result["status"], 0);
    EXPECT_EQ(result["file"], json::object());
  }
  result = done("jobOperations", {{"jobID", 1}, {"inputFilePath", "/data/none.csv"}});
  EXPECT_EQ(result["status"], 0);
  EXPECT_EQ(result["operations"], json::array());
  EXPECT_EQ(done("jobSettings", {{"jobID", "x'"}})["status"], 1);
}

TEST_F(JobDatabase, OperationsAreThoseOfAPathOrOfTheClipboard) {
  launch();
  insertJob();
  execute("insert into operations (job_id, input_file_id, code) values (1, 0, 416)");
  EXPECT_EQ(done("jobOperations", {{"jobID", 1}})["operations"], json({operation(416, 0, "")}));
  EXPECT_EQ(done("jobOperations", {{"jobID", 1}, {"inputFilePath", nullptr}})["operations"].size(), 1u);
  const json result = done("jobOperations", {{"jobID", 1}, {"inputFilePath", "/data/it's.csv"}});
  EXPECT_EQ(result["status"], 1) << "the path is not quoted";
  EXPECT_EQ(result["operations"], json::array());
}

TEST_F(JobDatabase, ARelativePathIsTakenFromTheHomeOrAsItWasStored) {
  launch();
  insertJob();
  for (const std::string& stored : {path("b.csv"), std::string("b.csv")}) {
    execute("update input_files set file_path='" + stored + "' where rowid=1");
    EXPECT_EQ(done("jobOperations", {{"jobID", 1}, {"inputFilePath", "b.csv"}})["operations"].size(), 2u)
        << stored;
  }
}

TEST_F(JobDatabase, AJobOfTheFirstGenerationShowsItsSettings) {
  launch();
  insertFirstGenerationJob();
  EXPECT_EQ(done("jobSettings", {{"jobID", 1}})["settings"], (json{{"LastSaveDate", "day"},
                                                                   {"LastOutputFileType", 2},
                                                                   {"LastOutputFileWriteMode", 1},
                                                                   {"LastOutputFileLineEndings", 3},
                                                                   {"OverallContainRegex", "r"},
                                                                   {"OverallAddMissingColumnsString", "m"},
                                                                   {"OverallInvalidColumnString", "i"},
                                                                   {"OverallLineNumbersToSkip", "1-2"},
                                                                   {"OverallOutputFileNameString", "out.csv"},
                                                                   {"OverallJobNameString", "old"},
                                                                   {"OutputFileCSVSeparator", ";"},
                                                                   {"OverallTrimWhitespace", false},
                                                                   {"OverallAddMissingColumns", true},
                                                                   {"OverallInvalidColumn", false},
                                                                   {"OverallSkipBlankLines", false},
                                                                   {"OverallSkipLineNumbers", false},
                                                                   {"OverallSkipLinesThatContain", false},
                                                                   {"OverallContainRegexCS", false},
                                                                   {"OverallSameFileName", false},
                                                                   {"OverallSeparateOutputFiles", false},
                                                                   {"OverallOutputFileName", true}}));
  const json file = done("jobFiles", {{"jobID", 1}})["files"][0];
  EXPECT_EQ(file["FileType"], 2);
  EXPECT_EQ(file["SkipLineNumbers"], true);
  EXPECT_EQ(file["ContainRegexCS"], true);
  EXPECT_EQ(file["SkipBlankLines"], false);
  EXPECT_EQ(file["ColumnsKey"], json({{{"ColumnIndex", 7},
                                       {"Replace1Regex", "a"},
                                       {"Replace1With", "b"},
                                       {"TrimReplace2Regex", "c"},
                                       {"TrimReplace2With", "d"},
                                       {"ConvertIntoType", 1},
                                       {"DateFormat", 2},
                                       {"TimeFormat", 3},
                                       {"DateTimeDateFormat", 4},
                                       {"DateTimeTimeFormat", 5},
                                       {"NumberOfDigitsToRight", 6},
                                       {"ColumnDescriptor", "name"},
                                       {"TrimWhitespace", true},
                                       {"Replace1", false},
                                       {"Replace1CS", false},
                                       {"Replace2", false},
                                       {"Replace2CS", false},
                                       {"ConvertInto", false},
                                       {"Excluded", false},
                                       {"Blank", 1}}}));
}

TEST_F(JobDatabase, ACommandNeedsItsArgumentsAndALaunch) {
  EXPECT_NE(refused({{"do", "rows"}, {"query", "select 1"}}), "");
  launch();
  for (const json& command : {json{{"do", "rows"}},
                              {{"do", "execCommand"}, {"script", 1}},
                              {{"do", "getNumberWithQuery"}},
                              {{"do", "jobSettings"}},
                              {{"do", "jobSettings"}, {"jobID", true}},
                              {{"do", "jobFiles"}, {"jobID", 1.5}},
                              {{"do", "jobFile"}, {"jobID", 1}},
                              {{"do", "jobOperations"}, {"jobID", 1}, {"inputFilePath", 3}}})
    EXPECT_NE(refused(command), "") << command;
}

}  // namespace
}  // namespace quillet::testing
