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

TEST_F(Preview, EachTypeHidesTheViewsOfTheOthers) {
  previewOf("a\n", csvOperations("o.csv"));
  const auto shown = [this](int tag) {
    done("setPreviewType", {{"tag", tag}});
    const json controls = done("controls", {{"window", "window"}})["controls"];
    json result = json::array();
    for (const char* name : {"previewTableView", "previewOutputTableView", "previewTextView"})
      if (controls[name]["hidden"] == false) result.push_back(name);
    return result;
  };
  EXPECT_EQ(shown(0), json{"previewTextView"});
  EXPECT_EQ(shown(1), json{"previewTableView"});
  EXPECT_EQ(shown(2), json{"previewOutputTableView"});
  EXPECT_EQ(shown(3), json{"previewTextView"});
  EXPECT_EQ(shown(7), json{"previewTextView"}) << "there is no such type";
}

TEST_F(Preview, ADoubleClickOnAFileShowsItsRawTextFromThenOn) {
  previewOf("a,1\n", csvOperations("o.csv"));
  add({write("b.csv", "b,2\n")});
  EXPECT_EQ(done("doubleClick", {{"table", "files"}, {"row", 0}})["sheet"], json());
  json window = mainWindow();
  EXPECT_EQ(window["selectedFiles"], json{0});
  EXPECT_EQ(window["previewType"], 0);
  EXPECT_EQ(window["previewText"], "a,1\n");
  select({1});
  window = mainWindow();
  EXPECT_EQ(window["previewType"], 0) << "the type stays";
  EXPECT_EQ(window["previewText"], "b,2\n");
}

TEST_F(Preview, SeveralAndNoFilesKeepTheTextTheyHave) {
  previewOf("a\n", csvOperations("o.csv"));
  add({write("b.csv", "b\n")});
  done("setPreviewType", {{"tag", 3}});
  EXPECT_EQ(mainWindow()["previewText"], "\"b\"");
  select({});
  EXPECT_EQ(mainWindow()["previewText"], "\"b\"") << "nothing is shown, and nothing is emptied";
  select({0, 1});
  EXPECT_EQ(mainWindow()["previewText"], "");
  done("setPreviewType", {{"tag", 3}});
  done("setPreviewType", {{"tag", 0}});
  EXPECT_EQ(mainWindow()["previewText"], "") << "the emptied text stays";
}

TEST_F(Preview, CellsThatALineDoesNotHaveAreEmpty) {
  previewOf("a\nb,c,d\n,\n", csvOperations("o.csv", {{{"Code", 361}, {"IntArg1", 2}, {"Arg1", ""}}}));
  const auto isEmpty = [this](std::int64_t tag) {
    return done("previewCellIsEmpty", {{"tag", tag}})["empty"].get<bool>();
  };
  const std::int64_t row = 65'536, output = 65'536'000;
  const std::pair<std::int64_t, bool> cases[] = {{-1, false},
                                                 {-2, true},
                                                 {1, false},
                                                 {2, true},
                                                 {row + 3, false},
                                                 {row + 4, true},
                                                 {2 * row + 2, false},
                                                 {2 * row + 3, true},
                                                 {3 * row + 1, true},
                                                 {output + 2, false},
                                                 {output + 3, true},
                                                 {output + row + 2, false},
                                                 {output + row + 3, true},
                                                 {output + 3 * row + 1, true}};
  for (const auto& [tag, empty] : cases) EXPECT_EQ(isEmpty(tag), empty) << tag;
  add({write("other.csv", "x\n")});
  select({0, 1});
  EXPECT_TRUE(isEmpty(1)) << "several files empty the rows of the input";
  EXPECT_FALSE(isEmpty(output + 1)) << "and leave those of the output";
}

TEST_F(Preview, AnEmptyFileHasAnEmptyText) {
  previewOf("x\n", csvOperations("o.csv"));
  add({write("empty.csv", "")});
  done("setPreviewType", {{"tag", 0}});
  EXPECT_EQ(mainWindow()["previewText"], "");
  EXPECT_EQ(mainWindow()["inputColumns"], json{"Cil0"});
  EXPECT_EQ(mainWindow()["outputColumns"], json{"Col0"});
}

TEST_F(Preview, TheReplacementIsAQuestionMarkByDefault) {
  json operations = csvOperations("o.csv");
  operations[1]["IntArg2"] = 1;
  EXPECT_EQ(previewOf("aé日\n", operations)["encodedOutput"], "a??");
}

TEST_F(Preview, TheLastOperationOfTheOneSelectedFileTellsTheEncoding) {
  launch();
  const json one = {{{"Code", 901}, {"IntArg2", 12}}};
  const json two = {{{"Code", 101}}, {{"Code", 901}, {"IntArg2", 12}}};
  const json entries = {{{"FilePath", path("a")}, {"Operations", one}},
                        {{"FilePath", path("b")}, {"Operations", two}},
                        {{"FilePath", path("c")}}};
  done("setInputFiles", {{"entries", entries}});
  const std::pair<std::vector<int>, int> cases[] = {{{}, 4}, {{0}, 4}, {{1}, 12}, {{2}, 4}, {{1, 2}, 4}};
  for (const auto& [rows, encoding] : cases) {
    select(rows);
    EXPECT_EQ(done("stringEncodingForSelectedFinalOperation")["value"], encoding) << json(rows);
  }
}

TEST_F(Preview, AFileWithoutAPathLeavesThePathThatIsShown) {
  launch();
  done("setInputFiles", {{"entries", {{{"FilePath", path("a")}}, {{"FileName", "b"}}}}});
  select({1});
  EXPECT_EQ(mainWindow()["path"], "");
  select({0});
  select({1});
  EXPECT_EQ(mainWindow()["path"], path("a"));
  select({});
  EXPECT_EQ(mainWindow()["path"], path("a")) << "the panel is not updated without a file";
}

}  // namespace
}  // namespace quillet::testing
