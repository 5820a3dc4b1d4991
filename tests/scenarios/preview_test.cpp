// What the preview shows of the selected file.
#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

class Preview : public Scenario {
 protected:
  // Adds and selects a file with a list of operations, and gives the preview.
  json previewOf(const std::string& bytes, const json& operations) {
    launch();
    add({write("a.csv", bytes)});
    setOperations(0, operations);
    return done("preview");
  }
};

TEST_F(Preview, ShowsTheSelectedFileBeforeAndAfterItsOperations) {
  json preview =
      previewOf("a, b\n\"c,d\",e\n",
                csvOperations("o.csv", {{{"Code", 301}, {"IntArg2", 2}, {"Arg1", "2"}, {"Arg2", ""}}}));
  EXPECT_EQ(preview["previewInputRows"], R"([["a", " b"], ["c,d", "e"]])"_json);
  EXPECT_EQ(preview["previewOutputRows"], R"([["a", "b"], ["c,d", "e"]])"_json);
  EXPECT_EQ(preview["previewInputString"], "a, b\n\"c,d\",e\n");
  EXPECT_EQ(preview["previewOutputString"], "a,b\nc,d,e");
  EXPECT_EQ(preview["previewInputLineSeparator"], "\n");
  EXPECT_EQ(preview["encodedOutput"], "a,b\nc,d,e");
}

TEST_F(Preview, StopsAfterTenLinesOfTheReader) {
  std::string lines;
  for (int i = 1; i <= 12; ++i) lines += std::to_string(i) + "\n";
  json preview =
      previewOf(lines, csvOperations("o.csv", {{{"Code", 201}, {"IntArg2", 2}, {"Arg1", "1 - 9"}}}));
  EXPECT_EQ(preview["previewInputRows"].size(), 10u);
  EXPECT_EQ(preview["previewOutputRows"], R"([["10"]])"_json) << "skipped lines count";
  EXPECT_EQ(preview["previewInputString"], lines) << "the text of the input is not cut at ten lines";
}

TEST_F(Preview, TablesHaveAColumnForTheLongestRowAndEmptyCellsForShortOnes) {
  previewOf("a\nb,c,d\n", csvOperations("o.csv"));
  json window = mainWindow();
  EXPECT_EQ(window["inputColumns"], (json{"Cil0", "Cil1", "Cil2", "Cil3"}));
  EXPECT_EQ(window["inputCells"], R"([["1", "a", "", ""], ["2", "b", "c", "d"]])"_json);
  EXPECT_EQ(window["outputColumns"], (json{"Col0", "Col1", "Col2", "Col3"}));
  add({write("narrow.csv", "x\n")});
  EXPECT_EQ(mainWindow()["inputColumns"], (json{"Cil0", "Cil1"}));
}

TEST_F(Preview, AnEmptyFileHasOnlyTheLineNumberColumn) {
  previewOf("", csvOperations("o.csv"));
  json window = mainWindow();
  EXPECT_EQ(window["inputColumns"], json{"Cil0"});
  EXPECT_EQ(window["inputCells"], json::array());
  const json entries = log();
  EXPECT_TRUE(
      entries.back()[1].get<std::string>().starts_with("Could not read from \"" + path("a.csv") + "\""))
      << entries;
}

TEST_F(Preview, EncodedOutputShowsReplacementsAndControlPictures) {
  setDefault("EncodeErrorReplacement", "<>");
  json operations = csvOperations("o.csv");
  operations[1]["IntArg2"] = 12;
  operations[1]["Arg1"] = "\r\n";
  json preview = previewOf("日é\nb\n", operations);
  EXPECT_EQ(preview["previewOutputString"], "日é\r\nb");
  EXPECT_EQ(preview["encodedOutput"], "<>é␍\nb");
  EXPECT_EQ(done("stringEncodingForSelectedFinalOperation")["value"], 12);
}

TEST_F(Preview, TheTextViewFollowsTheType) {
  previewOf("a\tb\rc", csvOperations("o.csv"));
  EXPECT_EQ(mainWindow()["previewType"], 1);
  done("setPreviewType", {{"tag", 0}});
  EXPECT_EQ(mainWindow()["previewText"], "a・b␍c");
  json operations = csvOperations("o.csv");
  operations[0]["Arg1"] = "\r";
  setOperations(0, operations);
  done("preview");
  done("setPreviewType", {{"tag", 0}});
  EXPECT_EQ(mainWindow()["previewText"], "a・b\nc") << "the line separator is folded into a real line break";
  done("setPreviewType", {{"tag", 3}});
  EXPECT_EQ(mainWindow()["previewText"], "a・b\nc");
  add({write("b.csv", "x\n")});
  select({0, 1});
  EXPECT_EQ(mainWindow()["previewText"], "") << "several files have no text";
}

TEST_F(Preview, NoSelectionLeavesTheStoresEmpty) {
  previewOf("a\n", csvOperations("o.csv"));
  select({});
  json preview = done("preview");
  EXPECT_EQ(preview["previewInputRows"], json::array());
  EXPECT_EQ(preview["previewInputString"], "");
}

TEST_F(Preview, WithoutFilesItIsRefusedByASheet) {
  launch();
  EXPECT_EQ(done("preview")["alerts"],
            json{sheet("No input files", "Add one or more text files to the Input Files list.")});
}

TEST_F(Preview, ExpectedColumnsAreThoseOfTheFirstKeptLine) {
  previewOf("skipped,1\nb,c\n", csvOperations("o.csv", {{{"Code", 201}, {"IntArg2", 2}, {"Arg1", "1"}},
                                                        {{"Code", 351}, {"IntArg1", 3}, {"Arg1", "new"}}}));
  EXPECT_EQ(entries()[0]["ExpectedColumnsInLine"], (json{{{"ColumnIndex", 0}, {"ColumnDescriptor", "b"}},
                                                         {{"ColumnIndex", 1}, {"ColumnDescriptor", "c"}},
                                                         {{"ColumnIndex", 2}, {"ColumnDescriptor", "new"}}}));
}

TEST_F(Preview, AListThatIsSetHasNoPreviewByItself) {
  previewOf("a\n", csvOperations("o.csv"));
  setOperations(0, csvOperations("o.csv", {{{"Code", 203}, {"IntArg2", 0}, {"Arg1", "a"}, {"Arg2", "b"}}}));
  EXPECT_EQ(mainWindow()["outputCells"], R"([["1", "a"]])"_json);
  done("preview");
  EXPECT_EQ(mainWindow()["outputCells"], R"([["1", "b"]])"_json);
}

}  // namespace
}  // namespace quillet::testing
