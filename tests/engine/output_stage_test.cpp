#include "engine/output_stage.h"

#include <gtest/gtest.h>

#include "engine/job_fixture.h"
#include "support/temporary_file.h"

namespace quillet {
namespace {

using testing::ScriptedFolders;
using testing::TemporaryFile;
using testing::TemporaryFolder;

// What a real run puts into the file and a preview into its text, for lines of one cell.
struct Outcome {
  std::string file;
  std::u16string previewText;
  std::int64_t linesWritten = 0;
  int linesTaken = 0;
  std::vector<std::string> log;
};

struct Stage {
  FileSettings settings;

  Outcome run(const std::vector<std::u16string>& lines) const {
    Outcome outcome;
    const TemporaryFolder folder;
    const TemporaryFile file("");
    TextWriter writer(file.descriptor(), settings.outputEncoding, u"?");
    PreviewStores stores;
    PreviewFeed feed(stores, PreviewFeed::Extent::Head);
    JobLog log(std::make_shared<ScriptedFolders>(folder.path()));
    OutputStage stage(settings, &writer, feed, log, "/tmp/the file", [&] { return folder.path(); });
    for (const auto& line : lines) {
      const std::u16string_view cell = line;
      stage.add({{&cell, 1}, 0, {}}, outcome.linesTaken++);
      if (stage.endsInput()) break;
    }
    stage.flushPending();
    writer.flush();
    outcome.file = file.content();
    outcome.linesWritten = stage.counts().linesWritten;
    EXPECT_EQ(stage.counts().bytesWritten, static_cast<std::int64_t>(outcome.file.size()));
    for (const auto& [level, text] : log.entries())
      outcome.log.push_back(text.substr(0, text.find(" [errno")));
    outcome.previewText = preview(lines);
    return outcome;
  }

  std::u16string preview(const std::vector<std::u16string>& lines) const {
    PreviewStores stores;
    PreviewFeed feed(stores, PreviewFeed::Extent::Everything);
    JobLog log(nullptr);
    OutputStage stage(settings, nullptr, feed, log, "", [] { return std::string("/nowhere"); });
    std::int64_t kept = 0;
    for (const auto& line : lines) {
      const std::u16string_view cell = line;
      stage.add({{&cell, 1}, 0, {}}, kept++);
      EXPECT_FALSE(stage.endsInput());
    }
    stage.flushPending();
    EXPECT_EQ(stage.counts().bytesWritten, 0);
    EXPECT_EQ(stage.counts().linesWritten, 0);
    return stores.content().outputString;
  }
};

FileSettings settings(std::int64_t joinLinesCount = 0, bool addLineSeparator = false) {
  FileSettings result;
  result.runOperations = true;
  result.splitIntoLines = true;
  result.outputLineSeparator = u"/";
  result.joinLinesCount = joinLinesCount;
  result.joinLinesSeparator = u"+";
  result.addLineSeparator = addLineSeparator;
  return result;
}

using Log = std::vector<std::string>;
const std::string kEmptyText = "Could not write to \"/tmp/the file\"";
const std::string kEmptySeparator = "Could not write line separator to \"/tmp/the file\"";

TEST(OutputStage, PutsSeparatorsBetweenLines) {
  const Outcome outcome = Stage{settings()}.run({u"a", u"b", u"c"});
  EXPECT_EQ(outcome.file, "a/b/c");  // none behind the last
  EXPECT_EQ(outcome.previewText, u"a/b/c");
  EXPECT_EQ(outcome.linesWritten, 3);
  EXPECT_EQ(outcome.log, Log{});
}

TEST(OutputStage, BeginsWithASeparatorOnRequest) {
  const Outcome outcome = Stage{settings(0, true)}.run({u"a", u"b"});
  EXPECT_EQ(outcome.file, "/a/b");
  EXPECT_EQ(outcome.previewText, u"//a/b");  // two: this is meant
  EXPECT_EQ(outcome.linesWritten, 2);
}

TEST(OutputStage, PutsNothingBetweenPieces) {
  FileSettings pieces = settings(0, true);
  pieces.splitIntoLines = false;
  const Outcome outcome = Stage{pieces}.run({u"a", u"b"});
  EXPECT_EQ(outcome.file, "ab");
  EXPECT_EQ(outcome.previewText, u"ab");
  EXPECT_EQ(outcome.linesWritten, 2);
}

TEST(OutputStage, JoinsLines) {
  const std::vector<std::u16string> seven = {u"1", u"2", u"3", u"4", u"5", u"6", u"7"};
  Outcome outcome = Stage{settings(3)}.run(seven);
  EXPECT_EQ(outcome.file, "1+2+3/4+5+6/7");
  EXPECT_EQ(outcome.previewText, u"1+2+3/4+5+6/7");
  EXPECT_EQ(outcome.linesWritten, 2);  // the last group is not counted: this is meant
  EXPECT_EQ(Stage{settings(7)}.run(seven).file, "1+2+3+4+5+6+7");
  EXPECT_EQ(Stage{settings(9)}.run(seven).file, "1+2+3+4+5+6+7");
  EXPECT_EQ(Stage{settings(9)}.run(seven).linesWritten, 0);
  EXPECT_EQ(Stage{settings(1)}.run(seven).file, "1/2/3/4/5/6/7");
  EXPECT_EQ(Stage{settings(0)}.run(seven).linesWritten, 7);
}

TEST(OutputStage, RepeatsTheLeadingSeparatorUpToTheFirstGroup) {
  Outcome outcome = Stage{settings(2, true)}.run({u"a", u"b", u"c", u"d"});
  EXPECT_EQ(outcome.file, "//a+b/c+d");
  EXPECT_EQ(outcome.previewText, u"//a+b/c+d");
  outcome = Stage{settings(3, true)}.run({u"a"});
  EXPECT_EQ(outcome.file, "/a");
  EXPECT_EQ(outcome.previewText, u"//a");
}

TEST(OutputStage, JoinsPiecesWithoutSeparators) {
  FileSettings pieces = settings(2, true);
  pieces.splitIntoLines = false;
  EXPECT_EQ(Stage{pieces}.run({u"a", u"b", u"c"}).file, "a+bc");
}

TEST(OutputStage, TakesAnEmptyLineForAFailedWrite) {
  const Outcome outcome = Stage{settings()}.run({u"a", u"", u"c"});
  EXPECT_EQ(outcome.file, "a/");
  EXPECT_EQ(outcome.previewText, u"a//c");  // a preview shows all lines
  EXPECT_EQ(outcome.linesWritten, 1);
  EXPECT_EQ(outcome.linesTaken, 2);
  EXPECT_EQ(outcome.log, Log{kEmptyText});
}

TEST(OutputStage, TakesAnEmptySeparatorForAFailedWrite) {
  FileSettings none = settings();
  none.outputLineSeparator = u"";
  const Outcome outcome = Stage{none}.run({u"a", u"b", u"c"});
  EXPECT_EQ(outcome.file, "ab");  // the line is still written
  EXPECT_EQ(outcome.linesWritten, 2);
  EXPECT_EQ(outcome.linesTaken, 2);
  EXPECT_EQ(outcome.log, Log{kEmptySeparator});
  none.addLineSeparator = true;
  EXPECT_EQ(Stage{none}.run({u"a", u"b"}).file, "a");
}

TEST(OutputStage, TakesAnEmptyGroupForAFailedWrite) {
  FileSettings joining = settings(2);
  joining.joinLinesSeparator = u"";
  Outcome outcome = Stage{joining}.run({u"", u"", u"c"});
  EXPECT_EQ(outcome.file, "");
  EXPECT_EQ(outcome.linesTaken, 2);
  EXPECT_EQ(outcome.log, Log{kEmptyText});
  outcome = Stage{joining}.run({u"a", u"b", u""});  // the flush of an empty rest
  EXPECT_EQ(outcome.file, "ab/");
  EXPECT_EQ(outcome.linesWritten, 1);
  EXPECT_EQ(outcome.log, Log{kEmptyText});
  EXPECT_EQ(Stage{settings(2)}.run({u"", u""}).file, "+");
}

TEST(OutputStage, CountsCharactersOfTextsAndSeparators) {
  const TemporaryFile file("");
  TextWriter writer(file.descriptor(), 12, u"?");
  PreviewStores stores;
  PreviewFeed feed(stores, PreviewFeed::Extent::Head);
  JobLog log(nullptr);
  FileSettings crlf = settings();
  crlf.outputLineSeparator = u"\r\n";
  OutputStage stage(crlf, &writer, feed, log, "", [] { return std::string(); });
  const std::u16string_view cells[] = {u"e\u0301", u"\U0001F600"};
  stage.add({cells, 2, u","}, 0);
  stage.add({cells, 0, u","}, 1);
  writer.flush();
  EXPECT_EQ(file.content(), "\"\xE9\",\"?\"\r\n\xE9,?");
  EXPECT_EQ(stage.counts().charactersEncoded, 7 + 2 + 3);
  EXPECT_EQ(stage.counts().bytesWritten, 12);
  EXPECT_EQ(stores.content().outputString, u"\"e\u0301\",\"\U0001F600\"\r\ne\u0301,\U0001F600");
}

}  // namespace
}  // namespace quillet
