#include "engine/file_settings.h"

#include <gtest/gtest.h>

#include "engine/job_fixture.h"

namespace quillet {
namespace {

using testing::record;

void expectDefaults(const FileSettings& settings) {
  EXPECT_FALSE(settings.runOperations);
  EXPECT_EQ(settings.inputEncoding, 4);
  EXPECT_FALSE(settings.splitIntoLines);
  EXPECT_EQ(settings.inputLineSeparator, u"");
  EXPECT_FALSE(settings.splitIntoColumns);
  EXPECT_EQ(settings.inputColumnSeparator, u"");
  EXPECT_EQ(settings.inputQuote, u"");
  EXPECT_EQ(settings.outputEncoding, 4);
  EXPECT_EQ(settings.outputLineSeparator, u"");
  EXPECT_EQ(settings.outputColumnSeparator, u"");
  EXPECT_EQ(settings.outputFileName, u"");
  EXPECT_FALSE(settings.addQuotes);
  EXPECT_FALSE(settings.addLineSeparator);
  EXPECT_EQ(settings.writeMode, 2);
  EXPECT_TRUE(settings.replaceCharacters.empty());
  EXPECT_EQ(settings.joinLinesCount, 0);
  EXPECT_EQ(settings.joinLinesSeparator, u"");
}

TEST(FileSettings, HaveDefaultsWithoutBothEndsOfTheList) {
  expectDefaults(settingsFromOperations({}));
  expectDefaults(settingsFromOperations({record(
      OpInitial, {{"IntArg1", 49}, {"IntArg2", 12}, {"Arg1", u"\n"}, {"Arg2", u","}, {"Arg4", u"out"}})}));
}

TEST(FileSettings, OfTwoEmptyRecordsAreTheDefaultsButForTheOperations) {
  FileSettings settings = settingsFromOperations({{}, {}});
  EXPECT_TRUE(settings.runOperations);
  settings.runOperations = false;
  expectDefaults(settings);
}

TEST(FileSettings, ComeFromTheTwoEnds) {
  const FileSettings settings = settingsFromOperations(
      {record(OpInitial, {{"IntArg1", 1 + 16 + 32}, {"IntArg2", 12}, {"Arg1", u"\r\n"}, {"Arg2", u";"}}),
       record(OpFinal, {{"IntArg1", 1 + 2},
                        {"IntArg2", 30},
                        {"IntArg3", 3},
                        {"Arg1", u"\n"},
                        {"Arg2", u"\t"},
                        {"Arg3", u"unread"},
                        {"Arg4", u"out.txt"}})});
  EXPECT_TRUE(settings.runOperations);
  EXPECT_EQ(settings.inputEncoding, 12);
  EXPECT_TRUE(settings.splitIntoLines);
  EXPECT_EQ(settings.inputLineSeparator, u"\r\n");
  EXPECT_TRUE(settings.splitIntoColumns);
  EXPECT_EQ(settings.inputColumnSeparator, u";");
  EXPECT_EQ(settings.inputQuote, u"\"");
  EXPECT_EQ(settings.outputEncoding, 30);
  EXPECT_EQ(settings.outputLineSeparator, u"\n");
  EXPECT_EQ(settings.outputColumnSeparator, u"\t");
  EXPECT_EQ(settings.outputFileName, u"out.txt");
  EXPECT_TRUE(settings.addQuotes);
  EXPECT_TRUE(settings.addLineSeparator);
  EXPECT_EQ(settings.writeMode, 3);
}

TEST(FileSettings, ReadEachBitByItself) {
  struct Case {
    std::int64_t flags;
    bool lines, columns, quotes;
  };
  for (const auto& [flags, lines, columns, quotes] :
       {Case{0, false, false, false}, Case{1, true, false, false}, Case{16, false, true, false},
        Case{32, false, false, true}, Case{49, true, true, true},
        Case{2 + 4 + 8 + 64, false, false, false}}) {
    const FileSettings settings = settingsFromOperations(
        {record(OpInitial, {{"IntArg1", flags}, {"Arg1", u"\n"}, {"Arg2", u","}}), record(OpFinal)});
    EXPECT_EQ(settings.splitIntoLines, lines) << flags;
    EXPECT_EQ(settings.splitIntoColumns, columns) << flags;
    EXPECT_EQ(settings.inputQuote, quotes ? u"\"" : u"") << flags;
  }
  for (const std::int64_t flags : {0, 1, 2, 3, 4}) {
    const FileSettings settings =
        settingsFromOperations({record(OpInitial), record(OpFinal, {{"IntArg1", flags}})});
    EXPECT_EQ(settings.addQuotes, (flags & 1) != 0) << flags;
    EXPECT_EQ(settings.addLineSeparator, (flags & 2) != 0) << flags;
  }
}

TEST(FileSettings, TieTheOutputSeparatorsToTheInput) {
  const auto settings = [](std::int64_t flags) {
    return settingsFromOperations({record(OpInitial, {{"IntArg1", flags}, {"Arg1", u"\n"}, {"Arg2", u","}}),
                                   record(OpFinal, {{"Arg1", u"L"}, {"Arg2", u"C"}})});
  };
  EXPECT_EQ(settings(1).outputLineSeparator, u"L");
  EXPECT_EQ(settings(1).outputColumnSeparator, u"");
  EXPECT_EQ(settings(1).inputColumnSeparator, u"");
  EXPECT_EQ(settings(16).outputLineSeparator, u"");
  EXPECT_EQ(settings(16).inputLineSeparator, u"");
  EXPECT_EQ(settings(16).outputColumnSeparator, u"C");
}

TEST(FileSettings, TakeTheFirstJoinLinesOfTheMiddle) {
  const auto join = [](std::int64_t count, std::u16string separator) {
    return record(OpJoinLines, {{"IntArg1", count}, {"Arg1", separator}});
  };
  FileSettings settings =
      settingsFromOperations({record(OpInitial), join(3, u"+"), join(4, u"-"), record(OpFinal)});
  EXPECT_EQ(settings.joinLinesCount, 3);
  EXPECT_EQ(settings.joinLinesSeparator, u"+");
  settings = settingsFromOperations({record(OpInitial), join(-5, u"+"), record(OpFinal)});
  EXPECT_EQ(settings.joinLinesCount, 0);
  settings = settingsFromOperations({join(3, u"+"), join(4, u"-")});  // these are the ends
  EXPECT_EQ(settings.joinLinesCount, 0);
  settings = settingsFromOperations({record(OpInitial), record(OpJoinLines), record(OpFinal)});
  EXPECT_EQ(settings.joinLinesCount, 0);
  EXPECT_EQ(settings.joinLinesSeparator, u"");
}

TEST(FileSettings, TakeAllReplaceCharactersInOrder) {
  const auto replace = [](std::int64_t characterClass, std::u16string characters, std::u16string with) {
    return record(OpReplaceCharacter, {{"IntArg2", characterClass}, {"Arg1", characters}, {"Arg2", with}});
  };
  const FileSettings settings = settingsFromOperations(
      {record(OpInitial, {{"IntArg1", 49}, {"Arg1", u"\n"}, {"Arg2", u","}}), replace(0, u"b,\"\\n", u"c"),
       record(OpSkipLine), replace(1, u"", u""), replace(5, u"x", u"y"), record(OpFinal)});
  const std::vector<ReplacementTable::Pair> expected = {{u"b", u"c"}, {std::int64_t{1}, u""}};
  EXPECT_EQ(settings.replaceCharacters, expected);
  // Without the bits nothing is protected.
  EXPECT_EQ(settingsFromOperations({record(OpInitial, {{"Arg1", u"\n"}, {"Arg2", u","}}),
                                    replace(0, u",\\n", u"-"), record(OpFinal)})
                .replaceCharacters.size(),
            2u);
}

TEST(FileSettings, ReadNumbersFromTexts) {
  const FileSettings settings = settingsFromOperations(
      {record(OpInitial, {{"IntArg1", u"17"}, {"IntArg2", u"12"}, {"Arg1", 5}, {"Arg2", 6}}),
       record(OpFinal)});
  EXPECT_EQ(settings.inputEncoding, 12);
  EXPECT_EQ(settings.inputLineSeparator, u"5");
  EXPECT_EQ(settings.inputColumnSeparator, u"6");
}

}  // namespace
}  // namespace quillet
