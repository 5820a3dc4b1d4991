#include "shell/job_details.h"

#include <gtest/gtest.h>
#include <limits>

#include "platform/unicode_text.h"
#include "support/environment.h"

namespace quillet {
namespace {

using Settings = std::vector<std::pair<const char*, SettingsRecord::Value>>;

SettingsRecord record(const Settings& settings) {
  SettingsRecord result;
  for (const auto& [key, value] : settings) result.set(key, value);
  return result;
}

std::string text(const char* value) {
  return value;
}

class FileDetailsTest : public ::testing::Test {};

constexpr const char* kPlainFile = "Type: CSV\nEncoding: UTF-8\n";

std::string fileDetails(const Settings& settings) {
  SettingsRecord file = record(settings);
  file.set("FileType", std::int64_t{2});
  file.set("FileEncoding", std::int64_t{4});
  return toUtf8(stringForFileDetails(file));
}

TEST_F(FileDetailsTest, BeginsWithTypeAndEncoding) {
  const struct {
    Settings settings;
    const char* details;
  } cases[] = {
      {{{"FileType", std::int64_t{1}}, {"FileEncoding", std::int64_t{4}}},
       "Type: Tab-delimited\nEncoding: UTF-8\n"},
      {{{"FileType", std::int64_t{3}}, {"FileEncoding", std::int64_t{12}}},
       "Type: Pipe-delimited\nEncoding: Windows CP1252\n"},
      {{{"FileType", std::int64_t{0}}, {"FileEncoding", std::int64_t{0}}},
       "Type: (Unknown)\nEncoding: (Unknown)\n"},
      {{}, "Type: (Unknown)\nEncoding: (Unknown)\n"},
  };
  for (const auto& [settings, details] : cases)
    EXPECT_EQ(toUtf8(stringForFileDetails(record(settings))), details);
}

TEST_F(FileDetailsTest, HasALineForEachSettingThatIsOn) {
  const struct {
    Settings settings;
    const char* lines;
  } cases[] = {
      {{{"SkipBlankLines", true}}, "Skip blank lines\n"},
      {{{"SkipLineNumbers", true}, {"LineNumbersToSkip", text("1, 3 - 5")}}, "Skip line numbers: 1, 3 - 5\n"},
      {{{"SkipLineNumbers", true}}, "Skip line numbers: \n"},
      {{{"SkipLinesThatContain", true}, {"ContainRegex", text("^é%@$")}}, "Skip that contain: ^é%@$\n"},
      {{{"SkipLinesThatContain", true}}, "Skip that contain: \n"},
      {{{"ContainRegexCS", true}}, "Case-sensitive\n"},
      {{{"DontTrimWhitespaceFromEOL", true}}, ""},
      {{{"SkipBlankLines", false},
        {"SkipLineNumbers", false},
        {"LineNumbersToSkip", text("1")},
        {"SkipLinesThatContain", false},
        {"ContainRegex", text("x")},
        {"ContainRegexCS", false}},
       ""},
      {{{"SkipBlankLines", std::int64_t{1}}, {"ContainRegexCS", std::int64_t{0}}}, "Skip blank lines\n"},
  };
  for (const auto& [settings, lines] : cases)
    EXPECT_EQ(fileDetails(settings), kPlainFile + std::string(lines));
}

SettingsRecord withColumns(std::vector<SettingsRecord> columns) {
  SettingsRecord file = record({{"FileType", std::int64_t{2}}, {"FileEncoding", std::int64_t{4}}});
  file.setColumns(std::move(columns));
  return file;
}

TEST_F(FileDetailsTest, TellsTheColumnsWhereTheyCouldBeRead) {
  const SettingsRecord third = record({{"ColumnIndex", std::int64_t{2}}});
  const SettingsRecord first = record({{"ColumnIndex", std::int64_t{0}}});
  const SettingsRecord without = record({{"ColumnDescriptor", text("x")}});
  const SettingsRecord last = record({{"ColumnIndex", std::numeric_limits<std::int64_t>::max()}});
  const struct {
    std::vector<SettingsRecord> columns;
    const char* lines;
  } cases[] = {
      {{}, "\nNumber of columns: 0\n"},
      {{third}, "\nNumber of columns: 1\nColumn order: 3\n"},
      {{third, first}, "\nNumber of columns: 2\nColumn order: 3, 1\n"},
      {{without}, "\nNumber of columns: 1\n"},
      {{without, third, without}, "\nNumber of columns: 3\nColumn order: 3\n"},
      {{last}, "\nNumber of columns: 1\nColumn order: -9223372036854775808\n"},
  };
  for (const auto& [columns, lines] : cases)
    EXPECT_EQ(toUtf8(stringForFileDetails(withColumns(columns))), kPlainFile + std::string(lines));
}

TEST_F(FileDetailsTest, KeepsTheOrderOfItsLines) {
  SettingsRecord file = withColumns({record({{"ColumnIndex", std::int64_t{4}}})});
  for (const char* key : {"ContainRegexCS", "SkipLinesThatContain", "SkipLineNumbers", "SkipBlankLines"})
    file.set(key, true);
  file.set("ContainRegex", text("c"));
  file.set("LineNumbersToSkip", text("7"));
  EXPECT_EQ(toUtf8(stringForFileDetails(file)),
            kPlainFile + text("Skip blank lines\nSkip line numbers: 7\nSkip that contain: c\nCase-sensitive\n"
                              "\nNumber of columns: 1\nColumn order: 5\n"));
}

class JobDetailsTest : public ::testing::Test {
 protected:
  JobDetailsTest() {
    environment_.set("LC_ALL", "en_US.UTF-8");
    environment_.set("TZ", "UTC");
  }

  static std::string details(const SettingsRecord& job) {
    return toUtf8(stringForJobDetails(job, JobDates()));
  }

 private:
  testing::Environment environment_;
};

constexpr const char* kPlainJob =
    "Last saved: \nWrite mode: Create New\nColumn separator: Tab\nLine endings: OS X / Unix (LF)\n";

TEST_F(JobDetailsTest, BeginsWithTheDateAndThreeLabels) {
  const struct {
    Settings settings;
    const char* text;
  } cases[] = {
      {{{"LastSaveDate", text("2018-05-30 14:03:22 +0200")},
        {"LastOutputFileWriteMode", std::int64_t{3}},
        {"LastOutputFileType", std::int64_t{2}},
        {"LastOutputFileLineEndings", std::int64_t{3}}},
       "Last saved: 5/30/18, 12:03 PM\nWrite mode: Append\nColumn separator: CSV\nLine endings: Windows "
       "(CRLF)\n"},
      {{{"LastSaveDate", text("yesterday")},
        {"LastOutputFileWriteMode", std::int64_t{2}},
        {"LastOutputFileType", std::int64_t{3}},
        {"LastOutputFileLineEndings", std::int64_t{2}}},
       "Last saved: \nWrite mode: Overwrite\nColumn separator: Pipe\nLine endings: Classic Mac OS (CR)\n"},
      {{}, "Last saved: \nWrite mode: (Unknown)\nColumn separator: (Unknown)\nLine endings: (Unknown)\n"},
  };
  for (const auto& [settings, expected] : cases) EXPECT_EQ(details(record(settings)), expected);
}

TEST_F(JobDetailsTest, HasALineForEachSettingThatIsOn) {
  const struct {
    Settings settings;
    const char* lines;
  } cases[] = {
      {{{"OverallSameFileName", true}}, "Use same file name\n"},
      {{{"OverallSeparateOutputFiles", true}}, "Separate output files\n"},
      {{{"OverallOutputFileName", true}, {"OverallOutputFileNameString", text("é.txt")}},
       "Output file name: é.txt\n"},
      {{{"OverallSkipBlankLines", true}}, "Skip blank lines\n"},
      {{{"OverallSkipLineNumbers", true}, {"OverallLineNumbersToSkip", text("2 -")}},
       "Skip line numbers: 2 -\n"},
      {{{"OverallSkipLinesThatContain", true}, {"OverallContainRegex", text("x")}},
       "Skip lines that contain: \n"},
      {{{"OverallSkipLinesThatContain", true}, {"ContainRegex", text("x")}}, "Skip lines that contain: x\n"},
      {{{"OverallContainRegexCS", true}}, "Case-sensitive\n"},
      {{{"OverallTrimWhitespace", true}}, "Trim whitespace\n"},
      {{{"OverallAddMissingColumns", true}, {"OverallAddMissingColumnsString", text("-")}},
       "Add missing columns: -\n"},
      {{{"OverallInvalidColumn", true}, {"OverallInvalidColumnString", text("n/a")}},
       "If a column cannot be converted: n/a\n"},
      {{{"OverallOutputFileName", true}}, "Output file name: \n"},
      {{{"OverallSameFileName", false}, {"OverallOutputFileNameString", text("x")}}, ""},
  };
  for (auto [settings, lines] : cases) {
    for (const char* key : {"LastOutputFileWriteMode", "LastOutputFileType", "LastOutputFileLineEndings"})
      settings.emplace_back(key, std::int64_t{1});
    EXPECT_EQ(details(record(settings)), kPlainJob + std::string(lines));
  }
}

TEST_F(JobDetailsTest, KeepsTheOrderOfItsLines) {
  SettingsRecord job = record({{"LastOutputFileWriteMode", std::int64_t{1}},
                               {"LastOutputFileType", std::int64_t{1}},
                               {"LastOutputFileLineEndings", std::int64_t{1}}});
  for (const char* key :
       {"OverallInvalidColumn", "OverallAddMissingColumns", "OverallTrimWhitespace", "OverallContainRegexCS",
        "OverallSkipLinesThatContain", "OverallSkipLineNumbers", "OverallSkipBlankLines",
        "OverallOutputFileName", "OverallSeparateOutputFiles", "OverallSameFileName"})
    job.set(key, true);
  EXPECT_EQ(
      details(job),
      kPlainJob + text("Use same file name\nSeparate output files\nOutput file name: \nSkip blank lines\n"
                       "Skip line numbers: \nSkip lines that contain: \nCase-sensitive\nTrim whitespace\n"
                       "Add missing columns: \nIf a column cannot be converted: \n"));
}

class JobDatesTest : public ::testing::Test {};

TEST_F(JobDatesTest, ShowsDatesOfTheDatabaseInTheShortStyles) {
  const struct {
    const char* locale;
    const char* databaseDate;
    const char* shown;
  } cases[] = {
      {"en_US.UTF-8", "2018-05-30 14:03:22 +0000", "5/30/18, 2:03 PM"},
      {"en_US.UTF-8", "2018-05-30 00:03:22 +0200", "5/29/18, 10:03 PM"},
      {"de_DE.UTF-8", "2018-05-30 14:03:22 +0000", "30.05.18, 14:03"},
      {"en_US.UTF-8", "2018-05-30 14:03:22", ""},
      {"en_US.UTF-8", "2018-05-30", ""},
      {"en_US.UTF-8", "5/30/18, 2:03 PM", ""},
      {"en_US.UTF-8", "", ""},
  };
  for (const auto& [locale, databaseDate, shown] : cases) {
    testing::Environment environment;
    environment.set("LC_ALL", locale);
    environment.set("TZ", "UTC");
    EXPECT_EQ(toUtf8(JobDates().shown(databaseDate)), shown) << databaseDate << " in " << locale;
  }
}

}  // namespace
}  // namespace quillet
