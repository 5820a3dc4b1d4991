// Every pure operation answers through the tool; what the operations do in full is tested beside them.
#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

class PureOperations : public Scenario {};

struct Case {
  const char* name;
  json arguments;
  json result;  // the keys that the result must have
};

TEST_F(PureOperations, Answer) {
  const json skipBlank = {{"Code", 201}, {"IntArg1", 0}, {"IntArg2", 0}};
  const json skipNumbers = {{"Code", 201}, {"IntArg2", "2"}, {"Arg1", "2 - 3"}};
  const Case cases[] = {
      {"findFieldsInLine",
       {{"line", "a,\"b,\"\"c\""}, {"separatorString", ","}, {"quoteString", "\""}},
       {{"fields", {"a", "b,\"c"}}}},
      {"findFieldsInLine",
       {{"line", "a,\"b"}, {"separatorString", ","}, {"quoteString", nullptr}},
       {{"fields", {"a", "\"b"}}}},
      {"findComponentsOfCSVString", {{"text", "a,\"b,c\""}}, {{"fields", {"a", "b,c"}}}},
      {"replaceCharactersFromOperations",
       {{"operations",
         {{{"Code", 101}},
          {{"Code", 150}, {"IntArg2", 0}, {"Arg1", "\\tx"}, {"Arg2", " "}},
          {{"Code", 150}, {"IntArg2", 1}, {"Arg2", "?"}},
          {{"Code", 901}}}},
        {"columnSeparator", "x"}},
       {{"pairs", {{"\t", " "}, {1, "?"}}}}},
      {"parseLineNumbersString",
       {{"text", "1, 3 - 5, 9 -"}, {"subtract1", true}, {"skipBeyondNumber", -1}},
       {{"indexes", {0, 2, 3, 4}}, {"skipBeyondNumber", 8}}},
      {"stringPlus1FromIndexSet", {{"indexes", {0, 1, 4, 5, 6}}}, {{"text", "1 - 2, 5 - 7"}}},
      {"expandedStringPlus1FromIndexSet", {{"indexes", {4, 5, 6}}}, {{"text", "5, 6, 7"}}},
      {"stringPlus1FromIndexSet", {{"indexes", nullptr}}, {{"text", ""}}},
      {"expandedStringPlus1FromIndexSet", json::object(), {{"text", ""}}},
      {"replaceBackslashedCharacters", {{"text", "a\\tb"}}, {{"text", "a\tb"}}},
      {"replaceWithBackslashedCharacters", {{"text", "a\nb"}}, {{"text", "a\\nb"}}},
      {"stringByReplacingControlCharactersFromString",
       {{"text", "a\tb\r"}, {"lineSeparator", "\r"}},
       {{"text", "a・b\n"}}},
      {"descriptionForOperation",
       {{"operation", {{"Code", 202}, {"IntArg2", 2}}},
        {"initialOperation", nullptr},
        {"finalOperation", nullptr}},
       {{"description", {"Trim Line", "scissors", "Whitespace From Both Sides"}}}},
      {"stringForEncoding", {{"value", 12}}, {{"text", "Windows CP1252"}}},
      {"stringForInputFileType", {{"value", 3}}, {{"text", "Pipe-delimited"}}},
      {"stringForOutputFileType", {{"value", 1}}, {{"text", "Tab"}}},
      {"stringForOutputLineEndings", {{"value", 2}}, {{"text", "Classic Mac OS (CR)"}}},
      {"stringForOutputFileWriteMode", {{"value", 3}}, {{"text", "Append"}}},
      {"stringForLineSkipType", {{"value", 2}}, {{"text", "Line Numbers"}}},
      {"stringForTrimType", {{"value", 1}}, {{"text", "Characters"}}},
      {"stringForTrimFromWhere", {{"value", 2}}, {{"text", "From End"}}},
      {"stringForReplaceType", {{"value", 1}}, {{"text", "Regular Expression"}}},
      {"stringForFillType", {{"value", 1}}, {{"text", "Sequence"}}},
      {"stringForFillType", {{"value", 2}}, {{"text", "(Unknown)"}}},
      {"stringForReformatAs", {{"value", 2}, {"withFormat", 5}}, {{"text", "20:13:01"}}},
      {"tagForEncodingCode", {{"value", 30}}, {{"value", 3}}},
      {"encodingCodeForTag", {{"value", 4}}, {{"value", 1}}},
      {"validOutputFileType", {{"value", 3}}, {{"value", 3}}},
      {"validOutputFileType", {{"value", 4}}, {{"value", 1}}},
      {"validOutputFileType", {{"value", 0}}, {{"value", 1}}},
      {"writeEncodedString",
       {{"text", "aé日"}, {"encoding", 12}, {"replacement", "??"}},
       {{"hex", "61e93f3f"}, {"result", 4}, {"characters", 3}}},
      {"writeEncodedString",
       {{"text", ""}, {"encoding", 4}},
       {{"hex", ""}, {"result", -1}, {"characters", 0}}},
      {"dateFromString", {{"text", "2018-08-16"}}, {{"seconds", 1534377600}}},
      {"dateFromString", {{"text", "no date"}}, {{"seconds", nullptr}}},
      {"timeFromString", {{"text", "20:13:01"}}, {{"seconds", 946757581}}},
      {"dateTimeFromString", {{"text", "2018-08-16 20:13:01"}}, {{"seconds", 1534450381}}},
      {"dateTimeFromString", {{"text", ""}}, {{"seconds", nullptr}}},
      {"trimCell",
       {{"operation", {{"Code", 311}, {"IntArg2", 2}}}, {"text", "  abc  "}},
       {{"text", "  abc"}}},
      {"trimCell",
       {{"operation", {{"Code", 311}, {"IntArg2", 1}, {"IntArg3", 1}, {"Arg2", "ab"}}}, {"text", "ABabc"}},
       {{"text", "c"}}},
      {"trimCell",
       {{"operation", {{"Code", 311}, {"IntArg1", 1}, {"IntArg3", 1}, {"Arg2", "ab"}}}, {"text", "ababc"}},
       {{"text", "abc"}}},
      {"trimCell",
       {{"operation", {{"Code", 311}, {"IntArg2", 3}, {"IntArg3", 7}, {"Arg2", "[ab]"}}}, {"text", "aXbYA"}},
       {{"text", "XY"}}},
      {"trimLine", {{"operation", {{"Code", 202}, {"IntArg2", 2}}}, {"line", " a "}}, {{"line", "a"}}},
      {"replaceLine",
       {{"operation", {{"Code", 203}, {"IntArg2", 1}, {"Arg1", "(b+)"}, {"Arg2", "<$1>"}}}, {"line", "abbc"}},
       {{"line", "a<bb>c"}}},
      {"skipLine", {{"operation", skipBlank}, {"line", ""}, {"inputLineIndex", 0}}, {{"skipped", true}}},
      {"skipLine", {{"operation", skipBlank}, {"line", " "}, {"inputLineIndex", 0}}, {{"skipped", false}}},
      {"skipLine", {{"operation", skipNumbers}, {"line", "x"}, {"inputLineIndex", 2}}, {{"skipped", true}}},
      {"skipLine", {{"operation", skipNumbers}, {"line", "x"}, {"inputLineIndex", 3}}, {{"skipped", false}}},
      {"doubleValueFromFieldValue", {{"text", "($12.00)"}}, {{"value", -12.0}}},
      {"doubleValueFromFieldValue", {{"text", nullptr}}, {{"value", 0.0}}},
      {"defaultOperations",
       {{"fileName", "a.txt"}, {"fileType", 3}},
       {{"operations",
         {{{"Code", 101}, {"IntArg1", 17}, {"IntArg2", 4}, {"Arg1", "\n"}, {"Arg2", "|"}},
          {{"Code", 901},
           {"IntArg1", 0},
           {"IntArg2", 4},
           {"IntArg3", 2},
           {"Arg1", "\n"},
           {"Arg2", "|"},
           {"Arg4", "a.txt"}}}}}},
  };
  for (const auto& [name, arguments, expected] : cases) {
    json result = call(name, arguments);
    for (const auto& [key, value] : expected.items())
      EXPECT_EQ(result[key], value) << name << " of " << arguments;
  }
}

TEST_F(PureOperations, ReadLinesTellsEachCallOfTheReader) {
  write("a.txt", "a,\xE2\n\nb");
  EXPECT_EQ(call("readLines", {{"path", "a.txt"}, {"encoding", 4}, {"lineSeparator", "\n"}})["calls"],
            (json{{{"result", 2},
                   {"line", "a,???b"},
                   {"errors", "Invalid 3-byte UTF-8 character."},
                   {"stats", {6, 3, 1, 0}}}}))
      << "an invalid lead byte takes the two bytes behind it along";
}

TEST_F(PureOperations, ReadLinesReplacesCharactersAndUndecodableBytes) {
  write("a.txt", "xay\x81\nb\n");
  json calls = call("readLines", {{"path", "a.txt"},
                                  {"encoding", 12},
                                  {"lineSeparator", "\n"},
                                  {"replaceCharacters", {{"x", "--"}, {2, "u"}}},
                                  {"decodeErrorReplacement", "!"}})["calls"];
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(calls[0]["line"], "--ay!");
  EXPECT_EQ(calls[0]["errors"], "Could not init single-byte character [-127].");
  EXPECT_EQ(calls[1], (json{{"result", 0}, {"line", "b"}, {"errors", ""}, {"stats", {2, 2, 1, 0}}}));
  EXPECT_EQ(calls[2], (json{{"result", 2}, {"line", ""}, {"errors", ""}, {"stats", {0, 0, 0, 0}}}));
}

TEST_F(PureOperations, ReadLinesOfAFolderFails) {
  json calls = call("readLines", {{"path", "tmp"}})["calls"];
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0]["result"], 1);
  EXPECT_EQ(calls[0]["errors"], "Error reading file: 21");
}

TEST_F(PureOperations, ScanFileTellsTypeLineEndsAndLog) {
  write("a.csv", "a|b\rc\n");
  EXPECT_EQ(call("scanFile", {{"path", "a.csv"}, {"encoding", 4}}),
            (json{{"ok", true}, {"fileType", 3}, {"lineEndsInCR", true}, {"log", json::array()}}));
  json missing = call("scanFile", {{"path", "missing"}, {"encoding", 4}});
  EXPECT_EQ(missing["fileType"], 1);
  EXPECT_EQ(missing["log"], (json{{2, "Error 2: Could not open \"" + path("missing") + "\" for scan"}}));
}

TEST_F(PureOperations, DefaultOperationsFollowTheSettingThatSwitchesSplittingOff) {
  setDefault("DontAutoSplit", true);
  EXPECT_EQ(call("defaultOperations", {{"fileName", "a.csv"}, {"fileType", 2}})["operations"][0]["IntArg1"],
            32);
}

TEST_F(PureOperations, AnAvailableNameIsNumberedOrAbsent) {
  const json arguments = {{"folder", "."}, {"fileName", "a.b.txt"}};
  EXPECT_EQ(call("fileNameAvailableInFolder", arguments)["text"], "a.b.txt");
  write("a.b.txt", "");
  EXPECT_EQ(call("fileNameAvailableInFolder", arguments)["text"], "a.b_2.txt");
  for (int number = 2; number <= 99; ++number) write("a.b_" + std::to_string(number) + ".txt", "");
  EXPECT_EQ(call("fileNameAvailableInFolder", arguments)["text"], nullptr);
}

TEST_F(PureOperations, DetailsOfSavedJobs) {
  const json file = {{"FileType", 2},
                     {"FileEncoding", 4},
                     {"SkipBlankLines", true},
                     {"LineNumbersToSkip", 3},
                     {"ContainRegex", nullptr},
                     {"SkipLineNumbers", true},
                     {"ColumnsKey", {{{"ColumnIndex", 1}, {"Excluded", false}}}}};
  EXPECT_EQ(call("stringForFileDetails", {{"settings", file}})["text"],
            "Type: CSV\nEncoding: UTF-8\nSkip blank lines\nSkip line numbers: 3\n\n"
            "Number of columns: 1\nColumn order: 2\n");
  EXPECT_EQ(call("stringForFileDetails", {{"settings", json::object()}})["text"],
            "Type: (Unknown)\nEncoding: (Unknown)\n");
  EXPECT_EQ(call("stringForJobDetails", {{"settings",
                                          {{"LastSaveDate", "2018-05-30 14:03:22 +0000"},
                                           {"LastOutputFileType", 1},
                                           {"OverallSkipLinesThatContain", true},
                                           {"OverallContainRegex", "x"}}}})["text"],
            "Last saved: 5/30/18, 2:03 PM\nWrite mode: (Unknown)\nColumn separator: Tab\n"
            "Line endings: (Unknown)\nSkip lines that contain: \n");
  for (const json& settings : {json(3), json{{"FileType", 1.5}}, json{{"Other", json::array()}}})
    refused({{"do", "call"}, {"name", "stringForFileDetails"}, {"settings", settings}});
}

}  // namespace
}  // namespace quillet::testing
