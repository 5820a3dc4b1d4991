// The layer: commands, queries, the schema, and the small helpers.
#include "storage/db_interface.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "platform/localization.h"
#include "storage/database_fixture.h"
#include "support/environment.h"

namespace quillet {
namespace {

using testing::DatabaseTest;
using testing::RawDatabase;
using testing::Table;
using testing::TemporaryFolder;
using Lines = std::vector<std::u16string>;
using FlatRows = DBInterface::FlatRows;

// Commands.

TEST_F(DatabaseTest, OpensNothingUntilItIsUsed) {
  EXPECT_EQ(database_.databaseFile(), "quillet.db");
  EXPECT_EQ(database_.databaseFilePath(), file());
  EXPECT_EQ(database_.lastRowID(), 0);
  EXPECT_TRUE(folder_.names().empty());
  EXPECT_EQ(database_.execCommand(""), 0);
  EXPECT_EQ(folder_.names(), std::set<std::string>{"quillet.db"});
}

TEST_F(DatabaseTest, WithoutADocumentsFolderEverythingFails) {
  DBInterface none("quillet.db", std::nullopt);
  const Lines told = {u"Could not find the database resource quillet.db"};
  EXPECT_EQ(none.databaseFilePath(), std::nullopt);
  EXPECT_EQ(none.execCommand("select 1"), -1);
  EXPECT_EQ(log(), told);
  FlatRows rows;
  EXPECT_EQ(none.getRows(&rows, "select 1"), -1);
  EXPECT_EQ(log(), told);
  EXPECT_EQ(none.getRows(nullptr, "select 1"), -1);
  EXPECT_EQ(log(), told);
  EXPECT_EQ(none.getNumberWithQuery("select 1"), -1);
  EXPECT_EQ(log(), told);
  EXPECT_EQ(none.setupDatabase(), 0);
  EXPECT_EQ(log(), told);
  const DBInterface::InputFileEntries files;
  EXPECT_EQ(none.saveJobNamed(u"a", &files, nullptr), -1);
  EXPECT_EQ(none.updatePreviousJobs("1", u"a", true), -1);
  EXPECT_EQ(none.deleteJobSettings({"1"}, true), -1);
  SettingsRecord settings;
  EXPECT_EQ(none.getJobSettings(settings, "1"), -1);
  EXPECT_EQ(none.getPreviousJobs(rows, 1, std::nullopt), -1);
  EXPECT_EQ(log(), Lines(5, told[0]));
  EXPECT_TRUE(settings.isEmpty());
  EXPECT_TRUE(rows.empty());
  EXPECT_EQ(none.lastErrorMessage(), u"Unknown error");
}

TEST_F(DatabaseTest, ACommandSetsTheLastRowIdentifierAlsoWithoutAnInsert) {
  EXPECT_EQ(database_.execCommand("create table t (a); insert into t values (1), (2);"), 0);
  EXPECT_EQ(database_.lastRowID(), 2);
  EXPECT_EQ(database_.execCommand("insert into t values (1); insert into nowhere values (1)"), 1);
  EXPECT_EQ(database_.lastRowID(), 2) << "a failure leaves it";
  EXPECT_EQ(database_.execCommand("update t set a=3"), 0);
  EXPECT_EQ(database_.lastRowID(), 0) << "a connection that inserted nothing";
}

TEST_F(DatabaseTest, ARowIdentifierHasSixtyFourBits) {
  EXPECT_EQ(database_.execCommand("create table t (a); insert into t (rowid, a) values (5000000000, 1);"), 0);
  EXPECT_EQ(database_.lastRowID(), 5'000'000'000);
}

TEST_F(DatabaseTest, AFailedCommandIsToldInSqlitesWords) {
  EXPECT_EQ(database_.execCommand("nonsense"), 1);
  EXPECT_EQ(log(), Lines{u"near \"nonsense\": syntax error"});
  EXPECT_EQ(database_.execCommand("select 'é' from nowhere"), 1);
  EXPECT_EQ(log(), Lines{u"no such table: nowhere"});
  EXPECT_EQ(database_.execCommand("create table t (a unique); insert into t values (1), (1);"), 19);
  EXPECT_EQ(log(), Lines{u"UNIQUE constraint failed: t.a"});
  EXPECT_EQ(database_.lastErrorMessage(), u"Unknown error") << "it is logged, never stored";
}

TEST_F(DatabaseTest, AFailedScriptInATransactionLeavesNothing) {
  setUp();
  EXPECT_EQ(database_.execCommand(
                "begin transaction; insert into jobs (name) values ('a'); nonsense; commit transaction;"),
            1);
  EXPECT_EQ(rawValue("select count(*) from jobs"), "0");
}

TEST_F(DatabaseTest, AFailedScriptOutsideATransactionKeepsWhatRan) {
  setUp();
  EXPECT_EQ(database_.execCommand("insert into jobs (name) values ('a'); nonsense;"), 1);
  EXPECT_EQ(rawValue("select name from jobs"), "a");
}

TEST_F(DatabaseTest, AFileThatCannotBeOpenedIsToldWithItsCode) {
  std::filesystem::create_directory(file());
  const std::u16string told = u"Could not open the database " + toUtf16(file());
  EXPECT_EQ(database_.execCommand("select 1"), 14);
  EXPECT_EQ(log(), Lines{told + u", rc = 14"});
  FlatRows rows;
  EXPECT_EQ(database_.getRows(&rows, "select 1"), 14);
  EXPECT_EQ(log(), Lines{told});
  EXPECT_EQ(database_.getNumberWithQuery("select 1"), -1);
  EXPECT_EQ(log(), Lines{told});
  EXPECT_EQ(database_.setupDatabase(), 0);
  EXPECT_EQ(log(), Lines{told});
}

TEST_F(DatabaseTest, AScriptEndsAtANul) {
  EXPECT_EQ(database_.execCommand(std::string("create table t (a); \0nonsense", 29)), 0);
  EXPECT_EQ(database_.getNumberWithQuery(std::string("select 7\0nonsense", 17)), 7);
}

// Queries.

TEST_F(DatabaseTest, RowsAreOneFlatListOfTexts) {
  FlatRows rows = {"before"};
  EXPECT_EQ(database_.getRows(&rows, "select 1, 'é', null, 2.5 union all select 2, '', x'41', -3"), 0);
  EXPECT_EQ(rows, (FlatRows{"before", "1", "é", "", "2.5", "2", "", "A", "-3"}));
}

TEST_F(DatabaseTest, AQueryWithoutRowsLeavesTheListAndIsASuccess) {
  FlatRows rows = {"before"};
  EXPECT_EQ(database_.getRows(&rows, "select 1 where 0"), 0);
  EXPECT_EQ(rows, FlatRows{"before"});
}

TEST_F(DatabaseTest, AnAbsentListIsASuccessAndTouchesNoFile) {
  EXPECT_EQ(database_.getRows(nullptr, "nonsense"), 0);
  EXPECT_EQ(log(), Lines{u"rows pointer was nil"});
  EXPECT_TRUE(folder_.names().empty());
}

TEST_F(DatabaseTest, AFailedQueryIsNotTold) {
  FlatRows rows;
  EXPECT_EQ(database_.getRows(&rows, "nonsense"), 1);
  EXPECT_EQ(log(), Lines{});
  EXPECT_TRUE(rows.empty());
}

TEST_F(DatabaseTest, ANumberIsTheFirstValueInThirtyTwoBits) {
  const struct {
    const char* query;
    std::int32_t number;
  } cases[] = {
      {"select 3, 4 union all select 5, 6", 3},
      {"select '12 jobs'", 12},
      {"select 'jobs'", 0},
      {"select null", 0},
      {"select 3000000000", INT32_MAX},
      {"select -3000000000", INT32_MIN},
      {"select 1 where 0", -1},
      {"nonsense", -1},
  };
  for (const auto& row : cases) EXPECT_EQ(database_.getNumberWithQuery(row.query), row.number) << row.query;
}

// The schema.

struct SchemaColumn {
  const char* name;
  const char* type;
  const char* notNull;
  const char* preset;
};
constexpr SchemaColumn text(const char* name) {
  return {name, "", "1", "''"};
}
constexpr SchemaColumn integer(const char* name) {
  return {name, "INT", "1", "0"};
}

const struct {
  const char* name;
  std::vector<SchemaColumn> columns;
} kTables[] = {
    {"jobs",
     {text("name"), text("date_last_saved"), integer("output_file_type"), integer("output_file_write_mode"),
      integer("output_file_encoding"), integer("output_file_line_endings"), text("output_file_name"),
      text("contain_regex"), text("add_missing_columns_string"), text("invalid_column_string"),
      text("line_numbers_to_skip"), integer("flags"), text("reserved")}},
    {"input_files", {text("file_name"), {"file_path", "", "0", "''"}, integer("flags"), text("reserved")}},
    {"input_file_settings",
     {integer("job_id"), integer("input_file_id"), integer("display_order"), integer("file_type"),
      integer("file_encoding"), text("line_numbers_to_skip"), text("contain_regex"), integer("flags"),
      text("reserved")}},
    {"input_file_column_settings",
     {integer("job_id"), integer("input_file_id"), integer("column_index"), integer("output_column_index"),
      text("replace1_regex"), text("replace1_with"), text("replace2_regex"), text("replace2_with"),
      integer("convert_into_type"), integer("date_format"), integer("time_format"),
      integer("date_time_date_format"), integer("date_time_time_format"),
      integer("number_of_digits_to_right"), text("descriptor"), integer("flags"), text("reserved")}},
    {"operations",
     {integer("job_id"), integer("input_file_id"), integer("idx"), integer("code"), integer("intarg1"),
      integer("intarg2"), integer("intarg3"), integer("intarg4"), integer("intarg5"), text("arg1"),
      text("arg2"), text("arg3"), text("arg4"), text("arg5"), text("reserved")}},
};

const struct {
  const char* table;
  const char* index;
  const char* unique;
  const char* columns;
} kIndexes[] = {
    {"jobs", "indjobname", "0", "name"},
    {"jobs", "indjobdate", "0", "date_last_saved"},
    {"input_files", "indfilename", "0", "file_name"},
    {"input_files", "indfilepath", "0", "file_path"},
    {"input_file_settings", "indfilesettings", "1", "job_id,input_file_id"},
    {"input_file_column_settings", "indfilecolumnsettings", "0", "job_id,input_file_id"},
    {"input_file_column_settings", "indfilecolumnsettings2", "1", "job_id,input_file_id,column_index"},
    {"operations", "indoperations", "1", "job_id,input_file_id,idx"},
};

std::string upperCased(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
  return text;
}

TEST_F(DatabaseTest, TheTablesHaveTheseColumns) {
  setUp();
  EXPECT_EQ(log(), Lines{});
  EXPECT_EQ(rawValue("select count(*) from sqlite_master where type='table'"), "5");
  EXPECT_EQ(rawValue("select count(*) from sqlite_master where type not in ('table', 'index')"), "0");
  for (const auto& table : kTables) {
    Table expected;
    for (const auto& column : table.columns)
      expected.push_back({column.name, column.type, column.notNull, column.preset, "0"});
    Table actual =
        raw(std::string("select name, type, \"notnull\", dflt_value, pk from pragma_table_info('") +
            table.name + "') order by cid");
    for (auto& column : actual) column[1] = upperCased(column[1]);
    EXPECT_EQ(actual, expected) << table.name;
    EXPECT_EQ(rawValue(std::string("select wr from pragma_table_list('") + table.name + "')"), "0")
        << "has a row identifier";
  }
}

TEST_F(DatabaseTest, TheTablesHaveTheseIndexes) {
  setUp();
  Table expected;
  for (const auto& index : kIndexes)
    expected.push_back({index.table, index.index, index.unique, index.columns, "c", "0"});
  std::sort(expected.begin(), expected.end());
  const Table actual =
      raw("select m.name, l.name, l.\"unique\", (select group_concat(name) from (select name from "
          "pragma_index_info(l.name) order by seqno)), l.origin, l.partial "
          "from sqlite_master m, pragma_index_list(m.name) l where m.type='table' order by 1, 2");
  EXPECT_EQ(actual, expected);
}

TEST_F(DatabaseTest, ARowOfDefaultsHoldsEmptyTextsAndZeros) {
  setUp();
  for (const auto& table : kTables) {
    std::vector<std::string> expected, columns;
    std::string query = "insert into " + std::string(table.name) + " default values; select ";
    for (const auto& column : table.columns) {
      expected.emplace_back(column.type == std::string() ? "text:" : "integer:0");
      query +=
          (columns.empty() ? "" : ", ") + ("typeof(" + std::string(column.name)) + ")||':'||" + column.name;
      columns.emplace_back(column.name);
    }
    EXPECT_EQ(raw(query + " from " + table.name), Table{expected}) << table.name;
  }
}

TEST_F(DatabaseTest, AFreedHighestRowIdentifierIsHandedOutAgain) {
  setUp();
  raw("insert into jobs (name) values ('a'), ('b'); delete from jobs where name='b'; "
      "insert into jobs (name) values ('c');");
  EXPECT_EQ(idOf("c"), "2");
}

TEST_F(DatabaseTest, ASecondSetupChangesNothing) {
  setUp();
  raw("insert into jobs (name) values ('a')");
  const std::string before = bytes();
  setUp();
  EXPECT_EQ(bytes(), before);
  EXPECT_EQ(log(), Lines{});
}

TEST_F(DatabaseTest, SetupAddsWhatIsMissing) {
  setUp();
  const Table whole = raw("select name, sql from sqlite_master order by name");
  raw("insert into jobs (name) values ('a'); drop table operations; drop index indjobdate;");
  setUp();
  EXPECT_EQ(raw("select name, sql from sqlite_master order by name"), whole);
  EXPECT_EQ(idOf("a"), "1");
}

TEST_F(DatabaseTest, SetupLeavesTablesOfOthersAlone) {
  raw("create table other (a)");
  setUp();
  EXPECT_EQ(rawValue("select count(*) from sqlite_master where type='table'"), "6");
}

TEST_F(DatabaseTest, SetupTellsAScriptThatFails) {
  raw("create table jobs (name)");  // lacks the column of the second index
  EXPECT_EQ(database_.setupDatabase(), 1);
  EXPECT_EQ(log(), (Lines{u"no such column: date_last_saved",
                          u"setupDatabase: could not create the main tables, rc = 1"}));
  EXPECT_EQ(rawValue("select count(*) from sqlite_master"), "1") << "nothing of it stays";
}

// Helpers.

TEST(DBInterface, QuotesAreDoubled) {
  const struct {
    std::optional<std::string_view> text;
    const char* quoted;
  } cases[] = {
      {std::nullopt, ""}, {"", ""},           {"plain", "plain"},      {"it's", "it''s"}, {"'", "''"},
      {"'''", "''''''"},  {"\"é\"", "\"é\""}, {"a\xff'b", "a\xff''b"}, {"'x'", "''x''"},
  };
  for (const auto& row : cases) EXPECT_EQ(DBInterface::dbStringFromString(row.text), row.quoted);
  EXPECT_EQ(DBInterface::dbStringFromString(std::string_view("a\0'", 3)), std::string("a\0''", 4));
}

// The zone is that with which the process began.
TEST(DBInterfaceDeathTest, DatesArePrintedInTheZoneOfTheSystem) {
  constexpr Instant kInstant = 1527681802'000.0;  // 2018-05-30 12:03:22 UTC
  ::testing::FLAGS_gtest_death_test_style = "threadsafe";
  testing::Environment environment;
  environment.set("LC_ALL", "en_US.UTF-8");
  const struct {
    const char* zone;
    const char* text;
  } cases[] = {{"UTC", "<2018-05-30 12:03:22 [+]0000>"},
               {"Europe/Berlin", "<2018-05-30 14:03:22 [+]0200>"},
               {"America/New_York", "<2018-05-30 08:03:22 -0400>"}};
  for (const auto& row : cases) {
    environment.set("TZ", row.zone);
    EXPECT_EXIT(
        {
          std::fprintf(stderr, "<%s>", DBInterface::dbStringFromDate(kInstant).c_str());
          std::_Exit(0);
        },
        ::testing::ExitedWithCode(0), row.text);
  }
}

TEST(DBInterface, AnAbsentDateIsAnEmptyText) {
  EXPECT_EQ(DBInterface::dbStringFromDate(std::nullopt), "");
  EXPECT_NE(DBInterface::dbStringFromDate(0), "");
}

TEST(DBInterface, TextsAreJoinedByCommas) {
  const struct {
    std::vector<std::string> texts;
    const char* plain;
    const char* quoted;
  } cases[] = {{{}, "", ""},
               {{"1"}, "1", "\"1\""},
               {{"2", "1", "2"}, "2,1,2", "\"2\",\"1\",\"2\""},
               {{"", ""}, ",", "\"\",\"\""}};
  for (const auto& row : cases) {
    EXPECT_EQ(DBInterface::commaSeparatedStringForStringArray(row.texts, false), row.plain);
    EXPECT_EQ(DBInterface::commaSeparatedStringForStringArray(row.texts, true), row.quoted);
  }
  EXPECT_EQ(DBInterface::commaSeparatedStringForStringSet({}), "");
  EXPECT_EQ(DBInterface::commaSeparatedStringForStringSet({"b", "a", "b"}), "a,b");
}

TEST(DBInterface, AnAbsentNumberIsZero) {
  EXPECT_EQ(DBInterface::dbIntFromNumber(std::nullopt), 0);
  EXPECT_EQ(DBInterface::dbIntFromNumber(-5), -5);
  EXPECT_EQ(DBInterface::dbIntFromNumber(0x1'0000'0002), 2) << "cut to 32 bits";
  EXPECT_EQ(DBInterface::dbIntegerFromNumber(std::nullopt), 0);
  EXPECT_EQ(DBInterface::dbIntegerFromNumber(0x1'0000'0002), 0x1'0000'0002);
}

TEST(DBInterface, AFlagIsSetByAnyNumberButZero) {
  const struct {
    std::int32_t before, mask;
    std::optional<std::int64_t> number;
    std::int32_t after;
  } cases[] = {
      {0b0001, 0b0100, 1, 0b0101},  {0b0101, 0b0100, 1, 0b0101},
      {0b0101, 0b0100, 0, 0b0001},  {0b0111, 0b0110, std::nullopt, 0b0001},
      {0b0000, 0b0110, -1, 0b0110}, {0b0001, 0b0110, 0, 0b0001},
      {0, 8, 0x1'0000'0000, 8},  // all 64 bits count
  };
  for (const auto& row : cases) {
    std::int32_t flags = row.before;
    DBInterface::setFlagValue(flags, row.mask, row.number);
    EXPECT_EQ(flags, row.after) << row.before << " " << row.mask;
  }
}

std::u16string translated(std::u16string_view key) {
  return u"<" + std::u16string(key) + u">";
}

TEST_F(DatabaseTest, TheLastErrorIsUnknownUntilANameWasAbsentAndIsNeverCleared) {
  setUp();
  EXPECT_EQ(database_.lastErrorMessage(), u"Unknown error");
  EXPECT_EQ(database_.execCommand("nonsense"), 1);
  EXPECT_EQ(database_.lastErrorMessage(), u"Unknown error");
  EXPECT_EQ(database_.updatePreviousJobs("1", std::nullopt, true), -1);
  EXPECT_EQ(database_.lastErrorMessage(), u"Invalid job ID");
  EXPECT_EQ(database_.execCommand("nonsense"), 1);
  EXPECT_EQ(database_.execCommand("select 1"), 0);
  EXPECT_EQ(database_.lastErrorMessage(), u"Invalid job ID");
}

TEST_F(DatabaseTest, TheLastErrorIsTranslated) {
  setTranslator(translated);
  EXPECT_EQ(database_.lastErrorMessage(), u"<Unknown error>");
  database_.updatePreviousJobs("1", std::nullopt, true);
  setTranslator(nullptr);
  EXPECT_EQ(database_.lastErrorMessage(), u"<Invalid job ID>");
}

}  // namespace
}  // namespace quillet
