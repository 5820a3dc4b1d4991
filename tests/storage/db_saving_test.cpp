// Saving, renaming and deleting jobs, as seen in the file.
#include <ctime>

#include "storage/database_fixture.h"

namespace quillet {
namespace {

using testing::asStored;
using testing::DatabaseTest;
using testing::fileEntry;
using testing::operation;
using testing::Table;
using Lines = std::vector<std::u16string>;
using Files = DBInterface::InputFileEntries;

class SavingTest : public DatabaseTest {
 protected:
  void SetUp() override { setUp(); }

  // From now on the statement of this kind on this table fails: "update of flags on jobs".
  void refuse(const std::string& event) {
    raw("create trigger refusal before " + event + " begin select raise(abort, 'refused'); end");
  }
  Table fileRowsOf(const std::string& jobID) {
    return raw("select input_file_id, display_order from input_file_settings where job_id=" + jobID +
               " order by display_order, input_file_id");
  }
  std::string count(const std::string& table) { return rawValue("select count(*) from " + table); }
};

// The row of the job.

TEST_F(SavingTest, ANewJobHasItsNameADateItsFlagAndItsKind) {
  const std::string before = DBInterface::dbStringFromDate(1000.0 * static_cast<double>(std::time(nullptr)));
  EXPECT_EQ(saveFiles(u"files", {fileEntry("/a")}), 0);
  EXPECT_EQ(saveClipboard(u"clips", {}), 0);
  const std::string after = DBInterface::dbStringFromDate(1000.0 * static_cast<double>(std::time(nullptr)));
  EXPECT_EQ(raw("select rowid, name, flags, typeof(flags), reserved, typeof(reserved) from jobs"),
            (Table{{"1", "files", "8192", "integer", "0", "text"},
                   {"2", "clips", "8192", "integer", "1", "text"}}));
  for (const auto& row : raw("select date_last_saved from jobs")) {
    EXPECT_GE(row[0], before);
    EXPECT_LE(row[0], after);
  }
  EXPECT_EQ(log(), Lines{});
}

TEST_F(SavingTest, EveryOtherColumnStaysAtItsDefault) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(101), operation(901)})}), 0);
  EXPECT_EQ(raw("select output_file_type, output_file_write_mode, output_file_encoding, "
                "output_file_line_endings, output_file_name, contain_regex, add_missing_columns_string, "
                "invalid_column_string, line_numbers_to_skip from jobs"),
            (Table{{"0", "0", "0", "0", "", "", "", "", ""}}));
  EXPECT_EQ(raw("select flags, reserved from input_files"), (Table{{"0", ""}}));
  EXPECT_EQ(raw("select file_type, file_encoding, line_numbers_to_skip, contain_regex, flags, reserved "
                "from input_file_settings"),
            (Table{{"0", "0", "", "", "0", ""}}));
  EXPECT_EQ(raw("select reserved from operations"), (Table{{""}, {""}}));
  EXPECT_EQ(count("input_file_column_settings"), "0");
}

TEST_F(SavingTest, TypeAndEncodingOfAnEntryAreNotStored) {
  InputFile file;
  file.filePath = "/a";
  file.fileName = "a";
  file.fileType = 2;
  file.fileEncoding = 5;
  ASSERT_EQ(saveFiles(u"job", {std::make_shared<const InputFile>(file)}), 0);
  EXPECT_EQ(raw("select file_type, file_encoding from input_file_settings"), (Table{{"0", "0"}}));
}

TEST_F(SavingTest, SavingAgainKeepsTheRowAndSetsItsDate) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  raw("update jobs set date_last_saved='2001-01-01 00:00:00 +0000', output_file_type=3, flags=flags|5");
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  EXPECT_EQ(raw("select rowid, flags, output_file_type, date_last_saved > '2018' from jobs"),
            (Table{{"1", "8197", "3", "1"}}))
      << "the other bits and columns stay";
}

TEST_F(SavingTest, NamesAreFoundExactlyAndWithCase) {
  for (const char16_t* name :
       {u"job", u"Job", u"job ", u"it's", u"''", u"%", u"é", u"e\u0301", u"\U0001F600", u""}) {
    EXPECT_EQ(saveClipboard(name, {}), 0);
    EXPECT_EQ(saveClipboard(name, {}), 0);
  }
  EXPECT_EQ(raw("select name from jobs order by rowid"),
            (Table{{"job"}, {"Job"}, {"job "}, {"it's"}, {"''"}, {"%"}, {"é"}, {"e\u0301"}, {"😀"}, {""}}));
}

TEST_F(SavingTest, TwoJobsOfOneNameAreAsGoodAsNoneAndAThirdIsMade) {
  ASSERT_EQ(saveClipboard(u"a", {}), 0);
  ASSERT_EQ(saveClipboard(u"b", {}), 0);
  ASSERT_EQ(database_.updatePreviousJobs("2", u"a", true), 0);
  EXPECT_EQ(saveClipboard(u"a", {operation(416)}), 0);
  EXPECT_EQ(raw("select rowid, name from jobs"), (Table{{"1", "a"}, {"2", "a"}, {"3", "a"}}));
  EXPECT_EQ(operationsOf("3"), asStored(OperationList{operation(416)}));
  EXPECT_TRUE(operationsOf("1").empty());
}

TEST_F(SavingTest, ANameThatCannotBeLookedUpIsNotSaved) {
  raw("drop table jobs");
  EXPECT_EQ(saveFiles(u"job", {fileEntry("/a")}), 1);
  EXPECT_EQ(log(), Lines{}) << "the query's failure is not told";
  EXPECT_EQ(count("input_files"), "0");
}

TEST_F(SavingTest, ANameWithANulIsNoStatement) {
  EXPECT_EQ(saveFiles(std::u16string_view(u"a\0b", 3), {fileEntry("/a")}), 1);
  EXPECT_EQ(count("jobs"), "0");
  EXPECT_EQ(count("input_files"), "0");
}

TEST_F(SavingTest, AJobRowThatCannotBeAddedEndsTheSave) {
  refuse("insert on jobs");
  EXPECT_EQ(saveFiles(u"job", {fileEntry("/a")}), -3);
  EXPECT_EQ(log(), (Lines{u"refused", u"could not add the job to the db"}));
  for (const char* table : {"jobs", "input_files", "input_file_settings", "operations"})
    EXPECT_EQ(count(table), "0") << table;
}

TEST_F(SavingTest, AJobRowThatCannotBeUpdatedIsToldAndTheSaveGoesOn) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  refuse("update on jobs");
  EXPECT_EQ(saveFiles(u"job", {fileEntry("/b", OperationList{operation(201)})}), 0) << "as the last script";
  EXPECT_EQ(log(), (Lines{u"refused", u"Could not update the job in the db"}));
  EXPECT_EQ(operationsOf("1", "/b"), asStored(OperationList{operation(201)}));
  EXPECT_EQ(saveClipboard(u"job", {operation(416)}), 0);
  EXPECT_EQ(log(), (Lines{u"refused", u"Could not update the job in the db"}));
  EXPECT_EQ(operationsOf("1"), asStored(OperationList{operation(416)}));
  EXPECT_EQ(rawValue("select reserved from jobs"), "0");
  EXPECT_EQ(database_.saveJobNamed(u"job", nullptr, nullptr), -3) << "nothing replaces it";
}

TEST_F(SavingTest, AJobOfRowZeroGetsNothing) {
  raw("insert into jobs (rowid, name) values (0, 'job')");
  EXPECT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  EXPECT_EQ(saveClipboard(u"job", {operation(416)}), 0);
  EXPECT_EQ(rawValue("select flags from jobs"), "8192");
  EXPECT_EQ(count("input_files"), "0");
  EXPECT_EQ(count("operations"), "0");
}

TEST_F(SavingTest, AJobOfALargeRowKeepsAllBitsOfIt) {
  raw("insert into jobs (rowid, name) values (5000000000, 'job')");
  EXPECT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(101)})}), 0);
  EXPECT_EQ(saveClipboard(u"job", {operation(416)}), 0);
  EXPECT_EQ(saveClipboard(u"next", {operation(417)}), 0);
  EXPECT_EQ(raw("select distinct job_id from operations order by 1"),
            (Table{{"5000000000"}, {"5000000001"}}));
  EXPECT_EQ(rawValue("select job_id from input_file_settings"), "5000000000");
}

// Clipboard jobs.

TEST_F(SavingTest, AClipboardJobStoresItsOperationsUnderFileZero) {
  const OperationList operations = {operation(102, u"a"), operation(416), operation(902, u"b")};
  ASSERT_EQ(saveClipboard(u"job", operations), 0);
  EXPECT_EQ(raw("select job_id, input_file_id, idx, code, arg1 from operations order by idx"),
            (Table{{"1", "0", "0", "102", "a"}, {"1", "0", "1", "416", ""}, {"1", "0", "2", "902", "b"}}));
  EXPECT_EQ(count("input_files"), "0");
  EXPECT_EQ(count("input_file_settings"), "0");
}

TEST_F(SavingTest, AShorterListLeavesNothingOfTheLongerOne) {
  ASSERT_EQ(saveClipboard(u"job", {operation(416), operation(417), operation(418)}), 0);
  ASSERT_EQ(saveClipboard(u"job", {operation(412)}), 0);
  EXPECT_EQ(operationsOf("1"), asStored(OperationList{operation(412)}));
  ASSERT_EQ(saveClipboard(u"job", {}), 0);
  EXPECT_EQ(count("operations"), "0");
  EXPECT_EQ(log(), Lines{});
}

TEST_F(SavingTest, WithoutFilesAndOperationsOnlyTheRowIsWritten) {
  ASSERT_EQ(saveClipboard(u"job", {operation(416)}), 0);
  EXPECT_EQ(database_.saveJobNamed(u"job", nullptr, nullptr), 0);
  EXPECT_EQ(database_.saveJobNamed(u"new", nullptr, nullptr), 0);
  EXPECT_EQ(raw("select name, reserved from jobs"), (Table{{"job", "1"}, {"new", "1"}}));
  EXPECT_EQ(operationsOf("1").size(), 1u);
}

TEST_F(SavingTest, WithFilesTheListOfOperationsDoesNotCount) {
  const Files files = {fileEntry("/a")};
  const OperationList operations = {operation(416)};
  EXPECT_EQ(database_.saveJobNamed(u"job", &files, &operations), 0);
  EXPECT_EQ(rawValue("select reserved from jobs"), "0");
  EXPECT_EQ(count("operations"), "0");
}

// File jobs.

TEST_F(SavingTest, FilesAreStoredInTheirOrderFromOne) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/b/b.csv"), fileEntry("/a/a.csv"), fileEntry("/c")}), 0);
  EXPECT_EQ(raw("select rowid, file_name, file_path from input_files"),
            (Table{{"1", "b.csv", "/b/b.csv"}, {"2", "a.csv", "/a/a.csv"}, {"3", "c", "/c"}}));
  EXPECT_EQ(fileRowsOf("1"), (Table{{"1", "1"}, {"2", "2"}, {"3", "3"}}));
}

TEST_F(SavingTest, AKnownPathKeepsItsRowAndTheNameInIt) {
  ASSERT_EQ(saveFiles(u"first", {fileEntry("/a")}), 0);
  InputFile renamed;
  renamed.filePath = "/a";
  renamed.fileName = "other";
  ASSERT_EQ(saveFiles(u"second", {std::make_shared<const InputFile>(renamed)}), 0);
  EXPECT_EQ(raw("select file_name, file_path from input_files"), (Table{{"a", "/a"}}));
  EXPECT_EQ(fileRowsOf("2"), (Table{{"1", "1"}}));
}

TEST_F(SavingTest, AFileRowOfNoPositiveIdentifierIsNotUsed) {
  raw("insert into input_files (rowid, file_name, file_path) values (0, 'a', '/a'), (-3, 'b', '/b')");
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a"), fileEntry("/b")}), 0);
  EXPECT_EQ(fileRowsOf("1"), (Table{{"1", "1"}, {"2", "2"}}));
  EXPECT_EQ(count("input_files"), "4");
}

// Behind a row of -1 SQLite hands out 0, which stands for the clipboard.
TEST_F(SavingTest, AFileThatGetsRowZeroIsPassedOver) {
  raw("insert into input_files (rowid, file_name, file_path) values (-1, 'x', '/x')");
  ASSERT_EQ(saveClipboard(u"job", {operation(416)}), 0);
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a"), fileEntry("/b")}), 0);
  EXPECT_EQ(raw("select rowid, file_path from input_files where rowid >= 0 order by rowid"),
            (Table{{"0", "/a"}, {"1", "/b"}}));
  EXPECT_EQ(fileRowsOf("1"), (Table{{"1", "2"}})) << "the other file keeps its place in the list";
  EXPECT_EQ(operationsOf("1"), asStored(OperationList{operation(416)}));
}

TEST_F(SavingTest, PathsAndNamesMayHoldQuotesAndBytesThatAreNoText) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/it's/'a'"), fileEntry("/b\xff\x80")}), 0);
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/it's/'a'"), fileEntry("/b\xff\x80")}), 0);
  EXPECT_EQ(raw("select file_name, file_path from input_files"),
            (Table{{"'a'", "/it's/'a'"}, {"b\xff\x80", "/b\xff\x80"}}));
  EXPECT_EQ(pathsOf("1"), (std::vector<std::string>{"/it's/'a'", "/b\xff\x80"}));
}

TEST_F(SavingTest, EveryKeyOfAnOperationIsStoredInItsColumn) {
  const OperationRecord full = {{"Code", 303},          {"IntArg1", -1},         {"IntArg2", INT64_MAX},
                                {"IntArg3", INT64_MIN}, {"IntArg4", 4},          {"IntArg5", 5},
                                {"Arg1", u"it's"},      {"Arg2", u"\n\t\u0001"}, {"Arg3", u"''"},
                                {"Arg4", u"é😀"},        {"Arg5", u"%@ %d"}};
  const OperationRecord texts = {{"Code", u"201"}, {"IntArg1", u" 7 lines"}, {"IntArg2", u"none"}};
  const OperationRecord empty;
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{full, texts, empty})}), 0);
  EXPECT_EQ(raw("select * from operations order by idx"),
            (Table{{"1", "1", "0", "303", "-1", "9223372036854775807", "-9223372036854775808", "4", "5",
                    "it's", "\n\t\u0001", "''", "é😀", "%@ %d", ""},
                   {"1", "1", "1", "201", "7", "0", "0", "0", "0", "", "", "", "", "", ""},
                   {"1", "1", "2", "0", "0", "0", "0", "0", "0", "", "", "", "", "", ""}}));
  EXPECT_EQ(raw("select distinct typeof(arg1), typeof(arg3) from operations"), (Table{{"text", "text"}}));
  EXPECT_EQ(log(), Lines{});
}

TEST_F(SavingTest, ANumberInPlaceOfATextIsPrintedAndTold) {
  const OperationRecord record = {{"Code", 303}, {"Arg5", -2}};
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{record})}), 0);
  EXPECT_EQ(log(), Lines{u"class: [NSNumber] string: -2"});
  EXPECT_EQ(raw("select arg5, typeof(arg5) from operations"), (Table{{"-2", "text"}}));
  ASSERT_EQ(saveClipboard(u"clip", {record}), 0);
  EXPECT_EQ(log(), Lines{u"class: [NSNumber] string: -2"});
}

TEST_F(SavingTest, ATextWithANulBreaksTheScriptAndNothingOfItStays) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(201)})}), 0);
  const OperationRecord record = {{"Code", 203}, {"Arg2", std::u16string(u"a\0b", 3)}};
  EXPECT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(202), record})}), 1);
  EXPECT_EQ(log().size(), 1u);
  EXPECT_EQ(operationsOf("1", "/a"), asStored(OperationList{operation(201)}));
}

TEST_F(SavingTest, ALoneSurrogateBecomesAReplacementCharacter) {
  ASSERT_EQ(saveClipboard(std::u16string(1, 0xD800), {operation(416, std::u16string(1, 0xDC00))}), 0);
  EXPECT_EQ(rawValue("select name from jobs"), "\uFFFD");
  EXPECT_EQ(rawValue("select arg1 from operations"), "\uFFFD");
}

TEST_F(SavingTest, AnEmptyOrAbsentListOfOperationsWritesTheFileAlone) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList()), fileEntry("/b", std::nullopt)}), 0);
  EXPECT_EQ(fileRowsOf("1"), (Table{{"1", "1"}, {"2", "2"}}));
  EXPECT_EQ(count("operations"), "0");
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(201)})}), 0);
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", std::nullopt)}), 0);
  EXPECT_EQ(count("operations"), "0") << "the delete runs also without a list";
}

TEST_F(SavingTest, AnEmptyListOfFilesIsToldAndLeavesTheRow) {
  EXPECT_EQ(saveFiles(u"job", {}), -2);
  EXPECT_EQ(log(), Lines{u"Only 0 input files IDs, expected 0"});
  EXPECT_EQ(raw("select name, reserved from jobs"), (Table{{"job", "0"}}));
}

TEST_F(SavingTest, AnEntryWithoutPathOrNameIsToldAndNoFileIsInTheJob) {
  InputFile noPath, noName;
  noPath.fileName = "a";
  noName.filePath = "/a";
  const Files lists[] = {
      {fileEntry("/x"), std::make_shared<const InputFile>(noPath), fileEntry("/y")},
      {fileEntry("/x"), std::make_shared<const InputFile>(noName), fileEntry("/y")},
      {fileEntry("/x"), nullptr, fileEntry("/y")},
  };
  for (const auto& list : lists) {
    EXPECT_EQ(saveFiles(u"job", list), -2);
    EXPECT_EQ(log(), Lines{u"Only 2 input files IDs, expected 3"});
    EXPECT_EQ(raw("select file_path from input_files"), (Table{{"/x"}, {"/y"}}));
    EXPECT_EQ(count("input_file_settings"), "0");
  }
  EXPECT_EQ(count("jobs"), "1");
}

TEST_F(SavingTest, AFileRowThatCannotBeAddedEndsTheLoop) {
  refuse("insert on input_files when new.file_path = '/b'");
  EXPECT_EQ(saveFiles(u"job", {fileEntry("/a"), fileEntry("/b"), fileEntry("/c")}), -2);
  EXPECT_EQ(log(), (Lines{u"refused", u"Could not add the input files to the db",
                          u"Only 1 input files IDs, expected 3"}));
  EXPECT_EQ(raw("select file_path from input_files"), (Table{{"/a"}}));
  EXPECT_EQ(count("jobs"), "1");
  EXPECT_EQ(count("input_file_settings"), "0");
}

TEST_F(SavingTest, AFailedLastScriptLeavesTheRowsOfTheJobAndItsFilesAlone) {
  refuse("insert on operations when new.code = 203");
  EXPECT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(201)}),
                               fileEntry("/b", OperationList{operation(203)})}),
            19);
  EXPECT_EQ(log(), Lines{u"refused"});
  EXPECT_EQ(count("jobs"), "1");
  EXPECT_EQ(count("input_files"), "2");
  EXPECT_EQ(count("input_file_settings"), "0");
  EXPECT_EQ(count("operations"), "0");
}

TEST_F(SavingTest, TheSameFileTwiceHasOneRowWithTheLaterPlaceAndOperations) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(201), operation(202)}),
                               fileEntry("/b"), fileEntry("/a", OperationList{operation(203)})}),
            0);
  EXPECT_EQ(fileRowsOf("1"), (Table{{"2", "2"}, {"1", "3"}}));
  EXPECT_EQ(operationsOf("1", "/a"), asStored(OperationList{operation(203)}));
}

// Overwriting.

TEST_F(SavingTest, AnOverwriteMerges) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(201), operation(202), operation(203)}),
                               fileEntry("/b", OperationList{operation(301)})}),
            0);
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/c"), fileEntry("/a", OperationList{operation(251)})}), 0);
  EXPECT_EQ(fileRowsOf("1"), (Table{{"3", "1"}, {"1", "2"}, {"2", "2"}})) << "the place of /b is an old one";
  EXPECT_EQ(operationsOf("1", "/a"), asStored(OperationList{operation(251)}));
  EXPECT_EQ(operationsOf("1", "/b"), asStored(OperationList{operation(301)}));
  EXPECT_EQ(rawValue("select count(distinct name) || count(*) from jobs"), "11");
}

TEST_F(SavingTest, AnOverwriteSetsTheFirstGenerationsSettingsOfAFileBack) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  raw("update input_file_settings set file_type=2, flags=3, reserved=';'");
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  EXPECT_EQ(raw("select file_type, flags, reserved from input_file_settings"), (Table{{"0", "0", ""}}));
}

TEST_F(SavingTest, AJobThatChangesItsKindKeepsTheRowsOfTheOther) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a", OperationList{operation(201)})}), 0);
  ASSERT_EQ(saveClipboard(u"job", {operation(416)}), 0);
  EXPECT_EQ(rawValue("select reserved from jobs"), "1");
  EXPECT_EQ(operationsOf("1", "/a"), asStored(OperationList{operation(201)}));
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/b")}), 0);
  EXPECT_EQ(rawValue("select reserved from jobs"), "0");
  EXPECT_EQ(operationsOf("1"), asStored(OperationList{operation(416)}));
  EXPECT_EQ(pathsOf("1").size(), 2u);
}

// Renaming.

TEST_F(SavingTest, AJobIsRenamedWhateverItsGeneration) {
  for (const bool newJob : {true, false}) {
    raw("delete from jobs; insert into jobs (name) values ('old'), ('other')");
    EXPECT_EQ(database_.updatePreviousJobs("1", u"it's é", newJob), 0);
    EXPECT_EQ(raw("select name from jobs"), (Table{{"it's é"}, {"other"}}));
  }
  EXPECT_EQ(database_.updatePreviousJobs("1", u"", true), 0);
  EXPECT_EQ(database_.updatePreviousJobs("2", u"", true), 0);
  EXPECT_EQ(raw("select name from jobs"), (Table{{""}, {""}}));
}

TEST_F(SavingTest, AnAbsentNameRenamesNothing) {
  ASSERT_EQ(saveClipboard(u"job", {}), 0);
  EXPECT_EQ(database_.updatePreviousJobs("1", std::nullopt, true), -1);
  EXPECT_EQ(rawValue("select name from jobs"), "job");
  EXPECT_EQ(log(), Lines{});
}

TEST_F(SavingTest, AnIdentifierIsPrintedAsItIs) {
  raw("insert into jobs (name) values ('a'), ('b')");
  EXPECT_EQ(database_.updatePreviousJobs("9", u"x", true), 0) << "there is no such job";
  EXPECT_EQ(database_.updatePreviousJobs("2 or 1", u"x", true), 0);
  EXPECT_EQ(raw("select name from jobs"), (Table{{"x"}, {"x"}}));
  EXPECT_EQ(database_.updatePreviousJobs("", u"y", true), 1);
  EXPECT_EQ(log(), Lines{u"incomplete input"});
}

// Deleting.

TEST_F(SavingTest, DeletingNothingTouchesNothing) {
  DBInterface none("quillet.db", std::nullopt);
  EXPECT_EQ(none.deleteJobSettings({}, true), 0);
  EXPECT_EQ(log(), Lines{});
}

TEST_F(SavingTest, ADeletedJobLeavesItsOperationsBehind) {
  ASSERT_EQ(saveFiles(u"a", {fileEntry("/a", OperationList{operation(201)})}), 0);
  ASSERT_EQ(saveFiles(u"b", {fileEntry("/b")}), 0);
  raw("insert into input_file_column_settings (job_id, input_file_id) values (1, 1), (2, 2)");
  for (const bool newJob : {true, false}) EXPECT_EQ(database_.deleteJobSettings({"1"}, newJob), 0);
  EXPECT_EQ(raw("select name from jobs"), (Table{{"b"}}));
  EXPECT_EQ(raw("select file_path from input_files"), (Table{{"/b"}}));
  EXPECT_EQ(raw("select job_id from input_file_settings"), (Table{{"2"}}));
  EXPECT_EQ(raw("select job_id from input_file_column_settings"), (Table{{"2"}}));
  EXPECT_EQ(raw("select job_id, code from operations"), (Table{{"1", "201"}}));
}

TEST_F(SavingTest, SeveralJobsAreDeletedAtOnce) {
  raw("insert into jobs (name) values ('a'), ('b'), ('c')");
  EXPECT_EQ(database_.deleteJobSettings({"1", "3", "7"}, true), 0);
  EXPECT_EQ(raw("select name from jobs"), (Table{{"b"}}));
}

TEST_F(SavingTest, AFileRowLivesAsLongAsAJobNamesIt) {
  ASSERT_EQ(saveFiles(u"a", {fileEntry("/x")}), 0);
  ASSERT_EQ(saveFiles(u"b", {fileEntry("/x")}), 0);
  EXPECT_EQ(count("input_files"), "1");
  ASSERT_EQ(database_.deleteJobSettings({"1"}, true), 0);
  EXPECT_EQ(count("input_files"), "1");
  ASSERT_EQ(database_.deleteJobSettings({"2"}, true), 0);
  EXPECT_EQ(count("input_files"), "0");
}

TEST_F(SavingTest, ADeleteRemovesEveryFileRowThatNoJobNames) {
  ASSERT_EQ(saveClipboard(u"job", {}), 0);
  raw("insert into input_files (file_path) values ('/left')");
  ASSERT_EQ(database_.deleteJobSettings({"99"}, true), 0);
  EXPECT_EQ(count("input_files"), "0");
  EXPECT_EQ(count("jobs"), "1");
}

TEST_F(SavingTest, AFailedDeleteLeavesAllAsItWas) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  refuse("delete on input_files");
  EXPECT_EQ(database_.deleteJobSettings({"1"}, true), 19);
  EXPECT_EQ(log(), Lines{u"refused"});
  EXPECT_EQ(count("jobs"), "1");
  EXPECT_EQ(count("input_file_settings"), "1");
}

TEST_F(SavingTest, OrphansAreReplacedByTheJobThatGetsTheirIdentifiers) {
  ASSERT_EQ(saveFiles(u"old", {fileEntry("/a", OperationList{operation(201), operation(202)})}), 0);
  ASSERT_EQ(database_.deleteJobSettings({"1"}, true), 0);
  ASSERT_EQ(saveFiles(u"new", {fileEntry("/other", OperationList{operation(301)})}), 0);
  EXPECT_EQ(idOf("new"), "1");
  EXPECT_EQ(fileIdOf("/other"), "1");
  EXPECT_EQ(operationsOf("1", "/other"), asStored(OperationList{operation(301)}));

  ASSERT_EQ(saveClipboard(u"clip", {operation(416), operation(417)}), 0);
  ASSERT_EQ(database_.deleteJobSettings({"2"}, true), 0);
  EXPECT_EQ(rawValue("select count(*) from operations where job_id=2"), "2");
  ASSERT_EQ(saveClipboard(u"clip2", {}), 0);
  EXPECT_EQ(idOf("clip2"), "2");
  EXPECT_TRUE(operationsOf("2").empty());
}

TEST_F(SavingTest, OrphansOfAClipboardJobShowInAJobThatSavesNoOperations) {
  ASSERT_EQ(saveClipboard(u"clip", {operation(416)}), 0);
  ASSERT_EQ(database_.deleteJobSettings({"1"}, true), 0);
  ASSERT_EQ(saveFiles(u"files", {fileEntry("/a")}), 0);
  EXPECT_EQ(operationsOf("1").size(), 1u);
}

}  // namespace
}  // namespace quillet
