// Reading jobs back: the current ones, and those of the first generation, which are written by hand here.
#include "storage/database_fixture.h"

namespace quillet {
namespace {

using testing::asStored;
using testing::DatabaseTest;
using testing::fileEntry;
using testing::operation;
using FlatRows = DBInterface::FlatRows;
using Value = SettingsRecord::Value;
using Values = std::map<std::string, Value, std::less<>>;

Value whole(std::int64_t value) {
  return value;
}
Value text(const char* value) {
  return std::string(value);
}

class ReadingTest : public DatabaseTest {
 protected:
  void SetUp() override { setUp(); }

  SettingsRecord jobOf(const std::string& jobID) {
    SettingsRecord result;
    EXPECT_EQ(database_.getJobSettings(result, jobID), 0);
    return result;
  }
  FlatRows list(std::int64_t searchType, std::optional<std::u16string_view> searchString) {
    FlatRows result;
    EXPECT_EQ(database_.getPreviousJobs(result, searchType, searchString), 0);
    return result;
  }
  // The names that a search finds, one after the other.
  std::string found(std::int64_t searchType, std::optional<std::u16string_view> searchString) {
    std::string result;
    const FlatRows jobs = list(searchType, searchString);
    EXPECT_EQ(jobs.size() % 5, 0u);
    for (std::size_t i = 2; i < jobs.size(); i += 5) result += (result.empty() ? "" : ",") + jobs[i];
    return result;
  }
};

// The lookup by name.

TEST_F(ReadingTest, AJobIsLookedUpByItsName) {
  raw("insert into jobs (name, date_last_saved, flags) values ('it''s', 'some day', 8193), ('other', '', 0)");
  SettingsRecord job;
  EXPECT_EQ(database_.getJobDictionary(job, u"it's"), 0);
  EXPECT_EQ(job.values(), (Values{{"rowid", text("1")},
                                  {"name", text("it's")},
                                  {"LastSaveDate", text("some day")},
                                  {"flags", text("8193")}}));
  EXPECT_FALSE(job.columns());
}

TEST_F(ReadingTest, NoJobAndSeveralJobsOfANameFillNothing) {
  raw("insert into jobs (name) values ('two'), ('two')");
  for (const char16_t* name : {u"two", u"none", u"Two", u"tw%"}) {
    SettingsRecord job;
    EXPECT_EQ(database_.getJobDictionary(job, name), 0);
    EXPECT_TRUE(job.isEmpty());
  }
}

// Settings of a job.

TEST_F(ReadingTest, AJobOfOursReadsWithDefaults) {
  ASSERT_EQ(saveClipboard(u"job", {}), 0);
  Values expected = {{"LastSaveDate", text(rawValue("select date_last_saved from jobs").c_str())},
                     {"LastOutputFileType", whole(1)},
                     {"LastOutputFileWriteMode", whole(1)},
                     {"LastOutputFileLineEndings", whole(1)},
                     {"OverallContainRegex", text("")},
                     {"OverallAddMissingColumnsString", text("")},
                     {"OverallInvalidColumnString", text("")},
                     {"OverallLineNumbersToSkip", text("")},
                     {"OverallOutputFileNameString", text("")},
                     {"OverallJobNameString", text("job")},
                     {"OutputFileCSVSeparator", text("1")}};
  for (const char* key :
       {"OverallTrimWhitespace", "OverallAddMissingColumns", "OverallInvalidColumn", "OverallSkipBlankLines",
        "OverallSkipLineNumbers", "OverallSkipLinesThatContain", "OverallContainRegexCS",
        "OverallSameFileName", "OverallSeparateOutputFiles", "OverallOutputFileName"})
    expected[key] = false;
  EXPECT_EQ(jobOf("1").values(), expected);
  EXPECT_FALSE(jobOf("1").columns());
}

TEST_F(ReadingTest, EveryColumnOfAFirstGenerationJobIsUnderItsKey) {
  raw("insert into jobs values ('the name', 'the date', 2, 3, 77, 4, 'file', 'regex', 'missing', 'invalid', "
      "'lines', 0, ';')");
  const SettingsRecord job = jobOf("1");
  const struct {
    const char* key;
    Value value;
  } expected[] = {
      {"LastSaveDate", text("the date")},
      {"LastOutputFileType", whole(2)},
      {"LastOutputFileWriteMode", whole(3)},
      {"LastOutputFileLineEndings", whole(1)},  // 4 is out of range
      {"OverallOutputFileNameString", text("file")},
      {"OverallContainRegex", text("regex")},
      {"OverallAddMissingColumnsString", text("missing")},
      {"OverallInvalidColumnString", text("invalid")},
      {"OverallLineNumbersToSkip", text("lines")},
      {"OverallJobNameString", text("the name")},
      {"OutputFileCSVSeparator", text(";")},
  };
  for (const auto& row : expected) {
    ASSERT_TRUE(job.has(row.key)) << row.key;
    EXPECT_EQ(job.values().at(row.key), row.value) << row.key;
  }
  EXPECT_EQ(job.values().size(), 21u) << "the encoding is under no key";
}

TEST_F(ReadingTest, EnumerationsOutOfRangeReadAsTheFirst) {
  raw("insert into jobs default values");
  for (const auto& [column, key] : {std::pair("output_file_type", "LastOutputFileType"),
                                    std::pair("output_file_write_mode", "LastOutputFileWriteMode"),
                                    std::pair("output_file_line_endings", "LastOutputFileLineEndings")})
    for (const auto& [stored, read] : {std::pair("0", 1),
                                       {"1", 1},
                                       {"2", 2},
                                       {"3", 3},
                                       {"4", 1},
                                       {"-1", 1},
                                       {"'2 tabs'", 2},
                                       {"'x'", 1}}) {
      raw(std::string("update jobs set ") + column + "=" + stored);
      EXPECT_EQ(jobOf("1").values().at(key), whole(read)) << column << " " << stored;
    }
}

TEST_F(ReadingTest, AJobThatIsNotThereFillsNothing) {
  ASSERT_EQ(saveClipboard(u"job", {}), 0);
  ASSERT_EQ(database_.deleteJobSettings({"1"}, true), 0);
  EXPECT_TRUE(jobOf("1").isEmpty());
  ASSERT_EQ(saveClipboard(u"a", {}), 0);
  ASSERT_EQ(saveClipboard(u"b", {}), 0);
  EXPECT_TRUE(jobOf("1 or 1").isEmpty()) << "two rows";
  SettingsRecord settings;
  EXPECT_EQ(database_.getJobSettings(settings, "'"), 1);
  EXPECT_TRUE(settings.isEmpty());
}

// Bits. Every set of flags is read with each bit alone: the key of that bit is set, and no other.

struct Bit {
  int bit;
  const char* key;  // null: the bit has no meaning
};

// The keys among the bits that are true, or 1, in the record.
std::string keysSet(const SettingsRecord& record, const std::vector<Bit>& bits) {
  std::string result;
  for (const auto& bit : bits)
    if (bit.key && record.boolean(bit.key)) result += bit.key;
  return result;
}

const std::vector<Bit> kJobBits = {{0, "OverallTrimWhitespace"},
                                   {1, "OverallAddMissingColumns"},
                                   {2, "OverallInvalidColumn"},
                                   {3, "OverallSkipBlankLines"},
                                   {4, "OverallSkipLineNumbers"},
                                   {5, nullptr},
                                   {6, "OverallSkipLinesThatContain"},
                                   {7, nullptr},
                                   {8, "OverallContainRegexCS"},
                                   {9, "OverallSameFileName"},
                                   {10, "OverallSeparateOutputFiles"},
                                   {11, "OverallOutputFileName"},
                                   {12, nullptr},
                                   {13, nullptr},
                                   {30, nullptr}};
const std::vector<Bit> kFileBits = {{0, "SkipBlankLines"},
                                    {1, "SkipLineNumbers"},
                                    {2, nullptr},
                                    {3, "SkipLinesThatContain"},
                                    {4, nullptr},
                                    {5, "ContainRegexCS"},
                                    {6, "DontTrimWhitespaceFromEOL"},
                                    {7, nullptr}};
const std::vector<Bit> kColumnBits = {{0, "TrimWhitespace"}, {1, "Replace1"},   {2, "Replace1CS"},
                                      {3, "Replace2"},       {4, "Replace2CS"}, {5, "ConvertInto"},
                                      {6, "Excluded"},       {7, "Blank"},      {8, nullptr}};

TEST_F(ReadingTest, EveryFlagOfAJobIsOneBit) {
  raw("insert into jobs default values");
  for (const auto& bit : kJobBits) {
    raw("update jobs set flags=" + std::to_string(1 << bit.bit));
    EXPECT_EQ(keysSet(jobOf("1"), kJobBits), bit.key ? bit.key : "") << bit.bit;
  }
  raw("update jobs set flags=-1");
  for (const auto& bit : kJobBits)
    if (bit.key) {
      EXPECT_EQ(jobOf("1").values().at(bit.key), Value(true)) << bit.key;
    }
}

TEST_F(ReadingTest, EveryFlagOfAFileIsOneBit) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  for (const auto& bit : kFileBits) {
    raw("update input_file_settings set flags=" + std::to_string(1 << bit.bit));
    EXPECT_EQ(keysSet(filesOf("1").at(0), kFileBits), bit.key ? bit.key : "") << bit.bit;
  }
  raw("update input_file_settings set flags=127");
  for (const auto& bit : kFileBits)
    if (bit.key) {
      EXPECT_EQ(filesOf("1").at(0).values().at(bit.key), Value(true)) << bit.key;
    }
}

TEST_F(ReadingTest, EveryFlagOfAColumnIsOneBit) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  raw("insert into input_file_column_settings (job_id, input_file_id) values (1, 1)");
  const auto column = [this] { return filesOf("1").at(0).columns()->at(0); };
  for (const auto& bit : kColumnBits) {
    raw("update input_file_column_settings set flags=" + std::to_string(1 << bit.bit));
    EXPECT_EQ(keysSet(column(), kColumnBits), bit.key ? bit.key : "") << bit.bit;
  }
  EXPECT_EQ(column().values().at("Blank"), whole(0));
  EXPECT_EQ(column().values().at("Excluded"), Value(false));
  raw("update input_file_column_settings set flags=255");
  EXPECT_EQ(column().values().at("Blank"), whole(1)) << "an integer, unlike the others";
  EXPECT_EQ(column().values().at("Excluded"), Value(true));
}

// Files of a job.

TEST_F(ReadingTest, FilesOfAJobOfOurs) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/b/b.csv"), fileEntry("/a.csv")}), 0);
  const auto files = filesOf("1");
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[1].values(), (Values{{"InputFileSettingsID", text("2")},
                                       {"JobID", text("1")},
                                       {"InputFileID", text("2")},
                                       {"FileName", text("a.csv")},
                                       {"FilePath", text("/a.csv")},
                                       {"DisplayOrder", whole(2)},
                                       {"FileType", whole(0)},
                                       {"FileEncoding", whole(0)},
                                       {"LineNumbersToSkip", text("")},
                                       {"ContainRegex", text("")},
                                       {"InputFileCSVSeparator", text("")},
                                       {"SkipBlankLines", false},
                                       {"SkipLineNumbers", false},
                                       {"SkipLinesThatContain", false},
                                       {"ContainRegexCS", false},
                                       {"DontTrimWhitespaceFromEOL", false}}));
  ASSERT_TRUE(files[1].columns());
  EXPECT_TRUE(files[1].columns()->empty());
  EXPECT_EQ(files[0].text("FilePath"), "/b/b.csv");
}

TEST_F(ReadingTest, EveryColumnOfAFirstGenerationFileIsUnderItsKey) {
  raw("insert into input_files (rowid, file_name, file_path) values (7, 'name', '/path');"
      "insert into input_file_settings values (3, 7, 11, 12, 13, 'lines', 'regex', 0, 'separator')");
  const auto files = filesOf("3");
  ASSERT_EQ(files.size(), 1u);
  const struct {
    const char* key;
    Value value;
  } expected[] = {
      {"InputFileSettingsID", text("1")},
      {"JobID", text("3")},
      {"InputFileID", text("7")},
      {"FileName", text("name")},
      {"FilePath", text("/path")},
      {"DisplayOrder", whole(11)},
      {"FileType", whole(12)},
      {"FileEncoding", whole(13)},
      {"LineNumbersToSkip", text("lines")},
      {"ContainRegex", text("regex")},
      {"InputFileCSVSeparator", text("separator")},
  };
  for (const auto& row : expected) EXPECT_EQ(files[0].values().at(row.key), row.value) << row.key;
}

TEST_F(ReadingTest, EveryColumnOfAFirstGenerationColumnIsUnderItsKey) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a")}), 0);
  raw("insert into input_file_column_settings values (1, 1, 21, 5, 'regex1', 'with1', 'regex2', 'with2', 22, "
      "23, 24, 25, 26, 27, 'descriptor', 0, 'unused')");
  const auto columns = filesOf("1").at(0).columns();
  ASSERT_TRUE(columns);
  ASSERT_EQ(columns->size(), 1u);
  Values expected = {{"ColumnIndex", whole(21)},
                     {"Replace1Regex", text("regex1")},
                     {"Replace1With", text("with1")},
                     {"TrimReplace2Regex", text("regex2")},
                     {"TrimReplace2With", text("with2")},
                     {"ConvertIntoType", whole(22)},
                     {"DateFormat", whole(23)},
                     {"TimeFormat", whole(24)},
                     {"DateTimeDateFormat", whole(25)},
                     {"DateTimeTimeFormat", whole(26)},
                     {"NumberOfDigitsToRight", whole(27)},
                     {"ColumnDescriptor", text("descriptor")},
                     {"Blank", whole(0)}};
  for (const char* key :
       {"TrimWhitespace", "Replace1", "Replace1CS", "Replace2", "Replace2CS", "ConvertInto", "Excluded"})
    expected[key] = false;
  EXPECT_EQ(columns->at(0).values(), expected);
  EXPECT_FALSE(columns->at(0).columns());
}

TEST_F(ReadingTest, ColumnsComeInTheOrderOfTheOutputAndOfTheirFileAlone) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a"), fileEntry("/b")}), 0);
  raw("insert into input_file_column_settings (job_id, input_file_id, column_index, output_column_index) "
      "values (1, 1, 0, 2), (1, 1, 1, 0), (1, 1, 2, 1), (1, 2, 8, 0), (2, 1, 9, 0)");
  std::string order;
  for (const auto& file : filesOf("1")) {
    for (const auto& column : *file.columns()) order += column.text("ColumnIndex") + " ";
    order += "| ";
  }
  EXPECT_EQ(order, "1 2 0 | 8 | ");
}

TEST_F(ReadingTest, FilesComeInTheirOrderAndBehindWhatIsThere) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a"), fileEntry("/b"), fileEntry("/c")}), 0);
  raw("update input_file_settings set display_order=10-display_order");
  EXPECT_EQ(pathsOf("1"), (std::vector<std::string>{"/c", "/b", "/a"}));
  std::vector<SettingsRecord> files(1);
  EXPECT_EQ(database_.getInputFileSettings(files, "1"), 0);
  EXPECT_EQ(files.size(), 4u);
}

TEST_F(ReadingTest, AMissingFileRowHidesTheFileAndANullPathIsEmpty) {
  raw("insert into input_files (file_name, file_path) values ('a', null);"
      "insert into input_file_settings (job_id, input_file_id, display_order) values (1, 1, 1), (1, 2, 2)");
  EXPECT_EQ(pathsOf("1"), std::vector<std::string>{""});
  EXPECT_TRUE(pathsOf("2").empty());
}

TEST_F(ReadingTest, AFailureOfTheColumnsLeavesTheEntryOutAndIsNotTheStatus) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a"), fileEntry("/b")}), 0);
  raw("drop table input_file_column_settings");
  std::vector<SettingsRecord> files;
  EXPECT_EQ(database_.getInputFileSettings(files, "1"), 0);
  EXPECT_TRUE(files.empty());
  SettingsRecord file;
  EXPECT_EQ(database_.getInputFileSettings(file, "1", "1"), 1);
  EXPECT_EQ(file.text("FilePath"), "/a");
  EXPECT_FALSE(file.columns());
  raw("drop table input_files");
  EXPECT_EQ(database_.getInputFileSettings(files, "1"), 1);
}

TEST_F(ReadingTest, OneFileOfAJob) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/a"), fileEntry("/b")}), 0);
  SettingsRecord file;
  EXPECT_EQ(database_.getInputFileSettings(file, "1", "2"), 0);
  EXPECT_EQ(file, filesOf("1").at(1));
  for (const auto& [jobID, fileID] : {std::pair<std::optional<std::string>, const char*>("1", "3"),
                                      {"2", "1"},
                                      {std::nullopt, "1"},
                                      {"1", "1 or 1"}}) {
    SettingsRecord none;
    EXPECT_EQ(database_.getInputFileSettings(none, jobID, fileID), 0) << fileID;
    EXPECT_TRUE(none.isEmpty()) << fileID;
  }
  SettingsRecord none;
  EXPECT_EQ(database_.getInputFileSettings(none, "1", "'"), 1);
  EXPECT_EQ(database_.getInputFileSettings(none, std::nullopt, "'"), 0) << "no query is made";
  EXPECT_TRUE(none.isEmpty());
}

// Operations.

TEST_F(ReadingTest, OperationsHaveAllElevenKeys) {
  const OperationList operations = {
      {{"Code", 303}, {"IntArg1", -1}, {"IntArg5", 5}, {"Arg1", u"it's"}, {"Arg5", 2}}, {}};
  ASSERT_EQ(saveClipboard(u"job", operations), 0);
  const OperationList read = operationsOf("1");
  ASSERT_EQ(read.size(), 2u);
  EXPECT_EQ(read, asStored(operations));
  EXPECT_EQ(read[1].items().size(), 11u);
  EXPECT_EQ(read[0].items().size(), 11u);
}

TEST_F(ReadingTest, OperationsComeByTheirPlaceBehindWhatIsThere) {
  raw("insert into operations (job_id, input_file_id, idx, code) values (1, 0, 10, 3), (1, 0, 2, 2), "
      "(1, 0, -1, 1), (1, 4, 0, 9), (2, 0, 0, 9)");
  OperationList operations = {operation(7)};
  EXPECT_EQ(database_.getOperations(operations, "1", std::nullopt), 0);
  ASSERT_EQ(operations.size(), 4u);
  for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(operations[i].code(), static_cast<std::int64_t>(i));
}

TEST_F(ReadingTest, OperationsAreThoseOfThisFileInThisJob) {
  ASSERT_EQ(saveFiles(u"a", {fileEntry("/x", OperationList{operation(201)}),
                             fileEntry("/y", OperationList{operation(202)})}),
            0);
  ASSERT_EQ(saveFiles(u"b", {fileEntry("/x", OperationList{operation(203)})}), 0);
  EXPECT_EQ(operationsOf("1", "/x"), asStored(OperationList{operation(201)}));
  EXPECT_EQ(operationsOf("1", "/y"), asStored(OperationList{operation(202)}));
  EXPECT_EQ(operationsOf("2", "/x"), asStored(OperationList{operation(203)}));
  for (const char* path : {"/y", "/z", "/X", ""}) EXPECT_TRUE(operationsOf("2", path).empty()) << path;
  EXPECT_TRUE(operationsOf("3", "/x").empty());
}

TEST_F(ReadingTest, AQuoteInThePathBreaksTheStatement) {
  ASSERT_EQ(saveFiles(u"job", {fileEntry("/it's", OperationList{operation(201)}),
                               fileEntry("/a''b", OperationList{operation(202)})}),
            0);
  OperationList operations;
  EXPECT_EQ(database_.getOperations(operations, "1", "/it's"), 1);
  EXPECT_TRUE(operations.empty());
  EXPECT_TRUE(log().empty());
  EXPECT_EQ(operationsOf("1", "/it''s"), asStored(OperationList{operation(201)})) << "nothing is quoted";
  EXPECT_TRUE(operationsOf("1", "/a''b").empty());
}

TEST_F(ReadingTest, BytesThatAreNoTextReadAsReplacementCharacters) {
  raw("insert into operations (job_id, arg1) values (1, cast(x'61ff62' as text)); "
      "insert into jobs (name) values (cast(x'61ff' as text))");
  EXPECT_EQ(operationsOf("1").at(0).text("Arg1"), u"a\uFFFDb");
  EXPECT_EQ(jobOf("1").text("OverallJobNameString"), "a\xff") << "kept as bytes";
}

// The list of jobs.

TEST_F(ReadingTest, TheListHasFiveTextsAJobTheLatestFirst) {
  raw("insert into jobs (name, date_last_saved, flags, reserved) values ('old', '2018-05-30', 0, ';'), "
      "('new', '2019-01-01', 8192, '1'), ('mid', '2018-06-01', 8192, '0')");
  const FlatRows expected = {"2",    "2019-01-01", "new", "8192",       "1",   "3", "2018-06-01", "mid",
                             "8192", "0",          "1",   "2018-05-30", "old", "0", ";"};
  EXPECT_EQ(list(1, std::nullopt), expected);
  EXPECT_EQ(list(1, u""), expected);
  EXPECT_EQ(list(2, u""), expected);
  EXPECT_EQ(list(2, std::nullopt), expected);
  FlatRows jobs = {"before"};
  EXPECT_EQ(database_.getPreviousJobs(jobs, 1, std::nullopt), 0);
  EXPECT_EQ(jobs.size(), 16u);
}

TEST_F(ReadingTest, Searches) {
  raw("insert into jobs (name, date_last_saved) values ('Alpha', '2018-05-30 14:03:22 +0200'), "
      "('alphabet', '2018-06-01 00:00:00 +0200'), ('it''s 100%', '2018-06-15 10:00:00 +0200'), "
      "('a_b', '2019-01-01 00:00:00 +0200'), ('Ärger', '2020-01-01 00:00:00 +0200')");
  const struct {
    std::int64_t type;
    const char16_t* text;
    const char* names;
  } cases[] = {
      {1, u"ALPHA", "alphabet,Alpha"},  // the case of ASCII letters does not count
      {1, u"bet", "alphabet"},
      {1, u"ä", ""},  // that of others does
      {1, u"Ä", "Ärger"},
      {1, u"it's", "it's 100%"},
      {1, u"'", "it's 100%"},
      {1, u"%", "Ärger,a_b,it's 100%,alphabet,Alpha"},
      {1, u"a_b", "a_b"},
      {1, u"l_h", "alphabet,Alpha"},
      {1, u"a%t", "alphabet"},
      {1, u" Alpha", ""},  // as typed
      {1, u"2018", ""},
      {3, u"alpha", "alphabet,Alpha"},  // the files in the job are not searched
      {0, u"alpha", "alphabet,Alpha"},
      {-7, u"alpha", "alphabet,Alpha"},
      {2, u"2018-06", "Ärger,a_b,it's 100%,alphabet"},
      {2, u"2018-06-01", "Ärger,a_b,it's 100%,alphabet"},
      {2, u"2018-06-02", "Ärger,a_b,it's 100%"},
      {2, u"2018-06-01 00:00:00 +0200", "Ärger,a_b,it's 100%,alphabet"},
      {2, u"2021", ""},
      {2, u"x", ""},  // behind all digits
      {2, u" ", "Ärger,a_b,it's 100%,alphabet,Alpha"},
      {2, u"'", "Ärger,a_b,it's 100%,alphabet,Alpha"},
  };
  for (const auto& row : cases)
    EXPECT_EQ(found(row.type, row.text), row.names) << row.type << " " << toUtf8(row.text);
}

TEST_F(ReadingTest, TheListEndsAtTwoHundredJobs) {
  raw("with recursive n(i) as (select 1 union all select i+1 from n where i<250) "
      "insert into jobs (name, date_last_saved) select 'job'||i, ''||(1000+i) from n");
  const std::pair<std::int64_t, const char16_t*> searches[] = {{1, u""}, {1, u"job"}, {2, u"1"}};
  for (const auto& [type, text] : searches) {
    const FlatRows jobs = list(type, text);
    ASSERT_EQ(jobs.size(), 1000u);
    EXPECT_EQ(jobs[2], "job250");
    EXPECT_EQ(jobs[997], "job51");
  }
}

TEST_F(ReadingTest, AFailedListIsAStatusAndLeavesTheJobs) {
  raw("drop table jobs");
  FlatRows jobs = {"before"};
  EXPECT_EQ(database_.getPreviousJobs(jobs, 1, std::nullopt), 1);
  EXPECT_EQ(jobs, FlatRows{"before"});
  EXPECT_TRUE(log().empty());
}

}  // namespace
}  // namespace quillet
