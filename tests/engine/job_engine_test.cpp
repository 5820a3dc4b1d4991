#include "engine/job_engine.h"

#include <gtest/gtest.h>

#include "engine/job_fixture.h"

namespace quillet {
namespace {

using namespace testing;
using Lines = std::vector<std::string>;
using Rows = PreviewStores::Rows;

// A list of operations between the two ends.
OperationList list(OperationList middle = {}, Items initial = {}, Items final = {}) {
  middle.insert(middle.begin(), initialRecord(initial));
  middle.push_back(finalRecord(final));
  return middle;
}

Lines operator+(Lines lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

TEST(JobEngine, LogsARunInItsOrder) {
  Job job;
  const auto one =
      job.addFile("one.csv", "a,b\nx,y\nc,d", list({record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", u"2"}})}));
  const auto two = job.addFile("two.csv", "é\n", list({}, {}, {{"Arg4", u"two.txt"}}));
  job.run();
  EXPECT_EQ(job.logLines(),
            Lines{"Job started ..."} + Lines{"Processing \"" + one + "\""} +
                countLines(false, {11, 11, 3, 0, 7, 7, 2, 1}) + Lines{"Processing \"" + two + "\""} +
                countLines(false, {3, 2, 1, 0, 2, 1, 1, 0}) + countLines(true, {14, 13, 4, 0, 9, 8, 3, 1}) +
                Lines({"Job completed", "Job ended ..."}));
  for (const auto& [level, text] : job.logEntries()) EXPECT_EQ(level, LogInformation) << text;
  EXPECT_EQ(job.output("out.txt"), "a\tb\nc\td");
  EXPECT_EQ(job.output("two.txt"), "é");
  EXPECT_EQ(job.surroundings.outputFiles->paths(),
            (Lines{job.outputPath("out.txt"), job.outputPath("two.txt")}));
  EXPECT_EQ(job.events, (Lines{"updateUIAfterPrep", "hideProgressIndicator"}));
}

TEST(JobEngine, WritesTheLogFile) {
  Job job;
  job.addFile("one.csv", "a\n", list());
  job.run();
  std::string expected;
  for (const auto& entry : job.surroundings.log->entries()) expected += entry.text + "\n";
  EXPECT_EQ(job.logFile(), expected);
  job.run();  // the file begins anew, but the list in memory still has the first job
  EXPECT_EQ(job.logFile().substr(0, expected.size()), expected);
  EXPECT_GT(job.logFile().size(), expected.size() * 3 / 2);
}

TEST(JobEngine, LeavesNothingInTheTemporaryFolder) {
  Job job;
  job.addFile("one.csv", "a\n", list());
  job.run();
  EXPECT_TRUE(std::filesystem::is_empty(job.folders->temporaryParentFolder()));
}

// --- The outcome line. ---

std::string outcome(const Job& job) {
  const Lines lines = job.logLines();
  return lines.size() < 2 ? "" : lines[lines.size() - 2];
}

TEST(JobEngine, TellsTheOutcome) {
  Job fine;
  fine.addFile("a", "a\n", list());
  fine.run();
  EXPECT_EQ(outcome(fine), "Job completed");

  Job warned;
  warned.addFile("a", "a\n", list({record(OpReformatColumn, {{"Arg1", u"1"}})}));
  warned.run();
  EXPECT_EQ(outcome(warned), "Job completed with issues");
  EXPECT_TRUE(warned.surroundings.log->atLeastOneWarning());
  EXPECT_FALSE(warned.surroundings.log->atLeastOneError());

  Job failed;
  failed.addEntry("/nowhere/a", list());
  failed.run();
  EXPECT_EQ(outcome(failed), "Job completed with issues");
}

TEST(JobEngine, ForgetsTheFlagsOfTheJobBefore) {
  Job job;
  job.addEntry("/nowhere/a", list());
  job.run();
  job.surroundings.files->setAll({});
  job.addFile("a", "a\n", list());
  job.run();
  EXPECT_EQ(outcome(job), "Job completed");
}

TEST(JobEngine, StopsBetweenFiles) {
  Job job;
  job.addFile("a", "a\n", list());
  job.surroundings.state->stopJob = true;
  job.surroundings.state->runningJob = true;
  job.run();
  EXPECT_EQ(job.logLines(), Lines{"Job started ..."} + countLines(true, {0, 0, 0, 0, 0, 0, 0, 0}) +
                                Lines({"Job stopped by user", "Job ended ..."}));
  EXPECT_FALSE(job.surroundings.state->runningJob);
  job.surroundings.state->stopJob = true;
  job.preview({0});
  EXPECT_TRUE(job.stores().inputRows.empty());
}

// --- Whole texts. ---

struct TextCase {
  const char* what;
  std::string input;
  OperationList operations;
  std::string output;
  std::int64_t linesWritten;
};

TEST(JobEngine, MakesTheOutput) {
  const auto joinLines = [](std::int64_t count) {
    return record(OpJoinLines, {{"IntArg1", count}, {"Arg1", u"+"}});
  };
  const TextCase kCases[] = {
      {"two records alone split and join again", "a,\"b,c\"\nd\n", list(), "a\tb,c\nd", 2},
      {"quotes are added", "a,b\"\"\n", list({}, {}, {{"IntArg1", 1}}), "\"a\"\t\"b\"", 1},
      {"no lines: pieces follow each other", "a,b\nc,d\n", list({}, {{"IntArg1", 16}}), "a\tb\nc\td\n", 1},
      {"no columns: the output column separator is none", "a,b\n", list({}, {{"IntArg1", 1}}), "a,b", 1},
      {"the last line has no separator", "a\nb", list(), "a\nb", 2},
      {"a leading separator", "a\nb\n", list({}, {}, {{"IntArg1", 2}}), "\na\nb", 2},
      {"joined lines, the last group is not counted", "1\n2\n3\n4\n5\n6\n7\n", list({joinLines(3)}),
       "1+2+3\n4+5+6\n7", 2},
      {"joined lines with leading separators", "1\n2\n3\n", list({joinLines(2)}, {}, {{"IntArg1", 2}}),
       "\n\n1+2\n3", 1},
      {"joined lines count kept lines", "1\nx\n2\n3\n",
       list({record(OpSkipLine, {{"IntArg2", 1}, {"Arg1", u"x"}}), joinLines(2)}), "1+2\n3", 1},
      {"joining one line is no joining", "1\n2\n", list({joinLines(1)}), "1\n2", 2},
      {"an empty line ends the output", "a\n\nb\n", list(), "a\n", 1},
      {"unless it is skipped", "a\n\nb\n", list({record(OpSkipLine)}), "a\nb", 2},
      {"a line that a replacement empties is not skipped", "a\nb\n",
       list({record(OpReplaceLine, {{"Arg1", u"b"}})}), "a\n", 1},
      {"an empty separator fails at the second line", "a\nb\nc\n", list({}, {}, {{"Arg1", u""}}), "ab", 2},
      {"replacements are made before all else", "a;b\n",
       list({record(OpTrimColumn, {{"Arg1", u"2"}, {"Arg2", u"b"}, {"IntArg2", 1}}),
             record(OpReplaceCharacter, {{"Arg1", u";"}, {"Arg2", u","}})}),
       "a\t", 1},
      {"an empty list of columns", "a,b\n", list({record(OpSetInitialNumberOfColumns, {{"IntArg1", 1}})}),
       "a", 1},
      {"another encoding", "é\u20AC\n", list({}, {}, {{"IntArg2", 12}}), "\xE9\x80", 1},
      {"characters that it lacks", "é\U0001F600x\n", list({}, {}, {{"IntArg2", 1}}), "??x", 1},
      {"bad bytes",
       "a\x80"
       "b\xE2"
       "cd\n",
       list(), "a?b???", 1},
  };
  for (const auto& [what, input, operations, output, linesWritten] : kCases) {
    Job job;
    job.addFile("a.csv", input, operations);
    job.run();
    EXPECT_EQ(job.output(), output) << what;
    const Lines lines = job.logLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "Lines written: " + std::to_string(linesWritten)), 1)
        << what;
  }
}

TEST(JobEngine, GivesLongLinesInPieces) {
  Job job;
  job.addFile("a", std::string(40'000, 'x') + "\n", list());
  job.run();
  EXPECT_EQ(job.output(),
            std::string(16'384, 'x') + "\n" + std::string(16'384, 'x') + "\n" + std::string(7'232, 'x'));
  const auto counts = countLines(false, {40'001, 40'001, 1, 2, 40'002, 40'002, 3, 0});
  const Lines lines = job.logLines();
  EXPECT_EQ(Lines(lines.begin() + 2, lines.begin() + 10), counts);
}

TEST(JobEngine, JoinsMoreThanMemoryHolds) {
  Job job;
  std::string input, expected;
  for (int i = 0; i < 300'000; ++i) {
    const std::string number = std::to_string(i);
    input += number + "é\n";
    expected += (i > 0 ? "+" : "") + number + "é";
  }
  job.addFile("a", input, list({record(OpJoinLines, {{"IntArg1", 300'000}, {"Arg1", u"+"}})}));
  job.run();
  EXPECT_TRUE(job.output() == expected);
  EXPECT_EQ(outcome(job), "Job completed");
  EXPECT_TRUE(std::filesystem::is_empty(job.folders->temporaryParentFolder()));
}

TEST(JobEngine, UsesTheReplacementsOfTheSettings) {
  Job job;
  job.surroundings.defaults->setValues(
      {{"DecodeErrorReplacement", "[d]"}, {"EncodeErrorReplacement", "[e]"}});
  job.addFile("a", "\x80\u20AC\n", list({}, {}, {{"IntArg2", 1}}));
  job.run();
  EXPECT_EQ(job.output(), "[d][e]");
  job.surroundings.defaults->setValues({{"DecodeErrorReplacement", ""}, {"EncodeErrorReplacement", ""}});
  job.run();  // an empty one stays empty
  EXPECT_EQ(job.output(), "");
  const Lines lines = job.logLines();
  EXPECT_EQ(lines[lines.size() - 13], "Characters encoded: 1");
}

// --- What can go wrong. ---

TEST(JobEngine, TellsOfAnInputThatIsNotThereAndGoesOn) {
  Job job;
  job.addEntry("/nowhere/a", list());
  const auto path = job.addFile("b", "b\n", list());
  job.run();
  EXPECT_EQ(job.logLines(),
            Lines({"Job started ...", "Could not open \"/nowhere/a\" for reading [errno ?]"}) +
                countLines(false, {0, 0, 0, 0, 0, 0, 0, 0}) + Lines{"Processing \"" + path + "\""} +
                countLines(false, {2, 2, 1, 0, 1, 1, 1, 0}) + countLines(true, {2, 2, 1, 0, 1, 1, 1, 0}) +
                Lines({"Job completed with issues", "Job ended ..."}));
  EXPECT_EQ(job.logEntries()[1].level, LogError);
  EXPECT_EQ(job.output(), "b");
}

TEST(JobEngine, ReadsNothingFromAFolder) {
  Job job;
  job.addEntry(job.folder().path("in"), list());
  job.run();
  const Lines lines = job.logLines();
  EXPECT_EQ(lines[2], "Could not read from \"" + job.folder().path("in") + "\" [errno ?]");
  EXPECT_EQ(lines[3], "(Last message repeated 1 times)");  // once for the sample, once for the lines
  EXPECT_EQ(job.output(), "");
  EXPECT_TRUE(std::filesystem::exists(job.outputPath("out.txt")));
}

TEST(JobEngine, ReportsAnEmptyInputOnce) {
  Job job;
  const auto path = job.addFile("a", "", list());
  job.run();
  EXPECT_EQ(job.logLines(), Lines({"Job started ...", "Processing \"" + path + "\"",
                                   "Could not read from \"" + path + "\" [errno ?]"}) +
                                countLines(false, {0, 0, 0, 0, 0, 0, 0, 0}) +
                                countLines(true, {0, 0, 0, 0, 0, 0, 0, 0}) +
                                Lines({"Job completed with issues", "Job ended ..."}));
  EXPECT_TRUE(std::filesystem::exists(job.outputPath("out.txt")));
}

TEST(JobEngine, NeedsANameForTheOutput) {
  Job job;
  const auto path = job.addFile("a", "a\nb\n", list({}, {}, {{"Arg4", u""}}));
  job.addFile("b", "b\n", list());
  job.run();
  const Lines lines = job.logLines();
  EXPECT_EQ(Lines(lines.begin(), lines.begin() + 12),
            Lines({"Job started ...", "Processing \"" + path + "\"",
                   "Could not open \"<tmp>\" for writing [errno ?]", "Output file must have a file name."}) +
                countLines(false, {4, 4, 2, 0, 0, 3, 2, 0}));  // lines and characters count, bytes do not
  EXPECT_EQ(job.output(), "b");                                // the next file is done
  EXPECT_EQ(job.surroundings.outputFiles->paths(), Lines{job.outputPath("out.txt")});
}

TEST(JobEngine, CannotWriteOverAFolder) {
  Job job;
  makeFolders(job.outputPath("out.txt"));
  job.addFile("a", "a\n", list());
  job.run();
  const Lines lines = job.logLines();
  EXPECT_EQ(lines[2],
            "Could not open output file \"" + job.outputPath("out.txt") + "\" for writing [errno ?]");
  EXPECT_EQ(lines[7], "Bytes written: 1");
  EXPECT_EQ(outcome(job), "Job completed with issues");
  EXPECT_TRUE(job.surroundings.outputFiles->paths().empty());
}

TEST(JobEngine, EndsAtAnEmptyTextOrSeparator) {
  Job job;
  job.addFile("a", "a\n\nb\n", list());
  job.run();
  EXPECT_EQ(job.logLines()[2], "Could not write to \"<tmp>/out.txt\" [errno ?]");
  EXPECT_EQ(job.logLines()[3], "Bytes read: 3");  // what follows is not read
  Job other;
  other.addFile("a", "a\nb\nc\n", list({}, {}, {{"Arg1", u""}}));
  other.run();
  EXPECT_EQ(other.logLines()[2], "Could not write line separator to \"<tmp>/out.txt\" [errno ?]");
  EXPECT_EQ(other.logLines()[3], "Bytes read: 4");
}

TEST(JobEngine, RunsWithoutAPlaceForTemporaryFiles) {
  Job job;
  job.folder().write("tmp", "a file in the folder's place");
  job.addFile("a", "a\n", list());
  job.run();
  const Lines lines = job.logLines();
  EXPECT_EQ(lines[2].substr(0, 16), "Could not open \"");
  EXPECT_EQ(lines[3].substr(0, 25), "Could not open tmp file \"");
  EXPECT_EQ(outcome(job), "Job completed with issues");
}

// --- Two files of one name. ---

TEST(JobEngine, ReplacesOrAppendsWhenNamesAreEqual) {
  for (const std::int64_t mode : {1, 2, 3}) {
    Job job;
    job.folder().write("out/out.txt", "old");
    job.addFile("a", "a\n", list({}, {}, {{"IntArg3", mode}}));
    job.addFile("b", "b\n", list({}, {}, {{"IntArg3", mode}}));
    job.run();
    EXPECT_EQ(job.output(), mode == 3 ? "oldab" : "b") << mode;
    EXPECT_EQ(job.surroundings.outputFiles->paths(), Lines(2, job.outputPath("out.txt"))) << mode;
  }
}

TEST(JobEngine, ForgetsTheOutputFilesOfTheJobBefore) {
  Job job;
  job.addFile("a", "a\n", list());
  job.run();
  job.run();
  EXPECT_EQ(job.surroundings.outputFiles->paths().size(), 1u);
}

// --- Lists without both ends. ---

TEST(JobEngine, OnlyShowsAFileWithoutOperations) {
  for (const std::optional<OperationList>& operations :
       {std::optional<OperationList>(), std::optional<OperationList>(OperationList{initialRecord()})}) {
    Job job;
    job.addFile("a", "a,b\nc\n", operations);
    job.preview({0});
    EXPECT_EQ(job.stores().inputRows, (Rows{{u"a,b\nc\n"}}));
    EXPECT_TRUE(job.stores().outputRows.empty());
    EXPECT_EQ(job.stores().outputString, u"");
    EXPECT_FALSE(job.surroundings.files->at(0)->expectedColumnsInLine.has_value());
    job.run();
    EXPECT_EQ(outcome(job), "Job completed with issues");  // there is no name for an output
  }
}

// --- Previews. ---

TEST(JobEngine, PreviewsTheFirstTenLines) {
  Job job;
  std::string input;
  for (int i = 1; i <= 15; ++i) input += std::to_string(i) + ",x\n";
  job.addFile("a", input, list({record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", u"2 - 9"}})}));
  job.preview({0});
  const auto stores = job.stores();
  EXPECT_EQ(stores.inputRows.size(), 10u);  // skipped lines count
  EXPECT_EQ(stores.inputRows[9], (PreviewStores::Row{u"10", u"x"}));
  EXPECT_EQ(stores.outputRows, (Rows{{u"1", u"x"}, {u"10", u"x"}}));
  EXPECT_EQ(stores.outputString, u"1\tx\n10\tx");
  EXPECT_EQ(toUtf8(stores.inputString), input);
  EXPECT_EQ(stores.inputLineSeparator, u"\n");
  EXPECT_EQ(job.surroundings.state->linesInCurrentFile, 10);
  EXPECT_EQ(job.events, Lines{"updatePreviewPanel"});
  EXPECT_TRUE(job.logLines().empty());
  EXPECT_TRUE(std::filesystem::is_empty(job.outputFolder()));
}

TEST(JobEngine, PreviewsAllLinesOfWhatARunWouldEndAt) {
  Job job;
  job.addFile("a", "a\n\nb\n", list());
  job.preview({0});
  EXPECT_EQ(job.stores().outputString, u"a\n\nb");
  EXPECT_EQ(job.stores().outputRows, (Rows{{u"a"}, {u""}, {u"b"}}));
}

TEST(JobEngine, PreviewsTheRowsWithQuotesAndReplacements) {
  Job job;
  job.addFile("a", "a;b\"\"\n",
              list({record(OpReplaceCharacter, {{"Arg1", u";"}, {"Arg2", u","}})}, {}, {{"IntArg1", 1 + 2}}));
  job.preview({0});
  EXPECT_EQ(job.stores().inputRows, (Rows{{u"a", u"b"}}));
  EXPECT_EQ(job.stores().inputString, u"a;b\"\"\n");  // the sample is read without the table
  EXPECT_EQ(job.stores().outputRows, (Rows{{u"\"a\"", u"\"b\""}}));
  EXPECT_EQ(job.stores().outputString, u"\n\n\"a\"\t\"b\"");
}

TEST(JobEngine, PreviewsNothingWithoutExactlyOneSelectedFile) {
  Job job;
  job.addFile("a", "a\n", list());
  job.addFile("b", "b\n", list());
  job.preview({0});
  for (const auto& selected : {std::initializer_list<std::int64_t>{}, {0, 1}, {2}}) {
    job.preview(selected);
    EXPECT_TRUE(job.stores().inputRows.empty());
    EXPECT_EQ(job.stores().inputString, u"");
  }
  EXPECT_EQ(job.events.size(), 4u);  // the panel is told all the same
  job.preview({1});
  EXPECT_EQ(job.stores().inputRows, (Rows{{u"b"}}));
}

TEST(JobEngine, LogsFailuresOfAPreview) {
  Job job;
  job.addEntry("/nowhere/a", list());
  job.preview({0});
  EXPECT_EQ(job.logLines(), Lines{"Could not open \"/nowhere/a\" for reading [errno ?]"});
  EXPECT_TRUE(job.surroundings.log->atLeastOneError());
  job.surroundings.files->setAll({});
  job.addFile("a", "a,later\n", list({record(OpReformatColumn, {{"Arg1", u"2"}})}));
  job.preview({0});
  EXPECT_EQ(job.logLines().back(), "Could not convert \"later\" into a date on line 1");
  EXPECT_FALSE(job.surroundings.log->atLeastOneError());  // the flags are those of this use
  EXPECT_TRUE(job.surroundings.log->atLeastOneWarning());
}

TEST(JobEngine, GrowsOneRowOfAFileThatIsNotSplitIntoLines) {
  Job job;
  job.addFile(
      "a", std::string(16'384, 'a') + "bcd",
      list({record(OpReplaceLine, {{"IntArg1", 1}, {"Arg1", u"aaaa"}, {"Arg2", u"x"}})}, {{"IntArg1", 0}}));
  job.preview({0});
  // The first piece as it goes out, and then the raw text of the next: this is meant.
  EXPECT_EQ(job.stores().outputRows, (Rows{{std::u16string(4'096, u'x') + u"bcd"}}));
  EXPECT_EQ(job.stores().inputRows, (Rows{{std::u16string(16'384, u'a')}}));
  EXPECT_EQ(job.stores().inputString.size(), 16'384u);
}

TEST(JobEngine, FillsTheStoresInARunToo) {
  Job job;
  std::string input;
  for (int i = 0; i < 1'200; ++i) input += "line,with some twenty units\n";
  job.addFile("a", input, list());
  job.run();
  EXPECT_EQ(job.stores().inputRows.size(), 1'000u);  // a head of it
  EXPECT_EQ(job.stores().outputRows.size(), 1'000u);
  EXPECT_EQ(job.stores().outputString.size(), 16'384u);
}

// --- The columns of the first kept line. ---

std::u16string expectedColumns(const Job& job, std::size_t index = 0) {
  const auto columns = job.surroundings.files->at(index)->expectedColumnsInLine;
  if (!columns) return u"none";
  std::u16string text;
  for (std::size_t i = 0; i < columns->size(); ++i) {
    EXPECT_EQ((*columns)[i].columnIndex, static_cast<std::int64_t>(i));
    text += u"[" + (*columns)[i].columnDescriptor + u"]";
  }
  return text;
}

TEST(JobEngine, TellsTheColumnsOfTheFirstKeptLine) {
  struct Case {
    const char* what;
    OperationList operations;
    std::u16string columns;
  };
  const auto skip = record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", u"1"}});
  const Case kCases[] = {
      {"the first line", list(), u"[h1][h2]"},
      {"the first kept line", list({skip}), u"[a][b][c]"},
      {"as it was read", list({record(OpReplaceLine, {{"Arg1", u"h"}, {"Arg2", u"x,"}})}), u"[h1][h2]"},
      {"not as the columns become", list({record(OpRearrangeColumns, {{"Arg1", u"2, 1"}})}), u"[h1][h2]"},
      {"as many as are set", list({record(OpSetInitialNumberOfColumns, {{"IntArg1", 3}, {"Arg1", u"x"}})}),
       u"[h1][h2][x]"},
      {"or as few", list({record(OpSetInitialNumberOfColumns)}), u""},
      {"not at the end", list({record(OpSetFinalNumberOfColumns, {{"IntArg1", 3}})}), u"[h1][h2]"},
      {"a line that is not split", list({}, {{"IntArg1", 1}}), u"[h1,h2]"},
      {"no kept line", list({record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", u"1 -"}})}), u"none"},
  };
  for (const auto& [what, operations, columns] : kCases) {
    for (const bool isRun : {false, true}) {
      Job job;
      job.addFile("a", "h1,h2\na,b,c\n", operations);
      if (isRun)
        job.run();
      else
        job.preview({0});
      EXPECT_EQ(expectedColumns(job), columns) << what;
      EXPECT_EQ(job.surroundings.files->at(0)->operations, operations) << what;
    }
  }
}

TEST(JobEngine, KeepsTheOldColumnsWhenNoLineIsKept) {
  Job job;
  job.addFile("a", "a,b\n", list());
  job.preview({0});
  job.surroundings.files->setOperations(0, list({record(OpSkipLine, {{"IntArg2", 2}, {"Arg1", u"1 -"}})}));
  job.preview({0});
  EXPECT_EQ(expectedColumns(job), u"[a][b]");
}

}  // namespace
}  // namespace quillet
