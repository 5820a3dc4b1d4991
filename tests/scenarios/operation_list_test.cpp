// Operations are added, edited, deleted and moved, in one file and in several at a time.
#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

using namespace nlohmann::literals;

const json kJoinLines = {{"Code", 251}, {"IntArg1", 2}, {"Arg1", "-"}};

// A middle record that can be told from others and changes nothing.
json marked(const std::string& mark) {
  return {{"Code", 202}, {"IntArg1", 1}, {"IntArg2", 0}, {"IntArg3", 0}, {"Arg1", "\t" + mark}};
}

json skipValues(const std::string& text) {
  return {{"skipLineOperationWindowSkipIfPopUpButton", 3}, {"skipLineOperationWindowTextField", text}};
}

json skipRecord(const std::string& text) {
  return {{"Code", 201}, {"IntArg1", 0}, {"IntArg2", 3}, {"Arg1", text}};
}

class OperationListTest : public Scenario {
 protected:
  void launchWithFiles(int count) {
    launch();
    for (int i = 0; i < count; ++i) {
      const std::string name(1, static_cast<char>('a' + i));
      add({write(name + ".csv", "x,1\nb,2\nc,3\n")});
      setOperations(i, csvOperations(name + ".csv"));
    }
  }
  // One selected file with these operations between its ends.
  void launchWithOperations(const std::vector<json>& between) {
    launchWithFiles(1);
    setOperations(0, csvOperations("a.csv", between));
    select({0});
  }
  void selectOperations(const std::vector<int>& rows) { done("selectOperations", {{"rows", rows}}); }
  json operations(int file = 0) { return entries()[file]["Operations"]; }
  json between(int file = 0) {
    json list = operations(file);
    list.erase(list.size() - 1);
    list.erase(0);
    return list;
  }
  json status() { return mainWindow()["status"]; }
  bool isOpen(const std::string& window) { return done("controls", {{"window", window}})["open"]; }
};

json plainStatus(const std::string& text) {
  return {{"text", text}, {"type", 0}};
}

TEST_F(OperationListTest, ANewOperationGoesBeforeTheFinalOneWhateverRowIsSelected) {
  launchWithOperations({marked("1"), marked("2")});
  for (const int row : {0, 1, 3}) {
    setOperations(0, csvOperations("a.csv", {marked("1"), marked("2")}));
    selectOperations({row});
    done("addOperation", {{"code", 201}, {"values", skipValues("#")}});
    EXPECT_EQ(between(), (json{marked("1"), marked("2"), skipRecord("#")})) << row;
  }
}

TEST_F(OperationListTest, AddingMakesAPreviewAndTellsSo) {
  launchWithFiles(1);
  done("addOperation", {{"code", 201}, {"values", skipValues("b")}});
  const json window = mainWindow();
  EXPECT_EQ(window["outputCells"], R"([["1", "x", "1"], ["2", "c", "3"]])"_json);
  EXPECT_EQ(window["operationRows"].size(), 3u);
  EXPECT_EQ(window["status"], plainStatus("Skip Line operation added for 1 input file(s)."));
  EXPECT_EQ(window["statusClearShown"], true);
}

TEST_F(OperationListTest, AnOutputTextInSightFollowsACommit) {
  launchWithFiles(1);
  done("setPreviewType", {{"tag", 3}});
  done("addOperation", {{"code", 201}, {"values", skipValues("b")}});
  EXPECT_EQ(mainWindow()["previewText"], "x,1\nc,3");
  selectOperations({1});
  done("editOperation", {{"values", skipValues("c")}});
  EXPECT_EQ(mainWindow()["previewText"], "x,1\nb,2");
  done("deleteOperations");
  EXPECT_EQ(mainWindow()["previewText"], "x,1\nb,2\nc,3");
}

TEST_F(OperationListTest, AddingReachesEverySelectedFile) {
  launchWithFiles(4);
  select({0, 1, 3});
  done("addOperation", {{"code", 201}, {"values", skipValues("#")}});
  for (const int file : {0, 1, 3}) EXPECT_EQ(between(file), json{skipRecord("#")}) << file;
  EXPECT_EQ(between(2), json::array());
  EXPECT_EQ(status(), plainStatus("Skip Line operation added for 3 input file(s)."));
  EXPECT_EQ(mainWindow()["operationRows"].size(), 2u) << "the two ends still speak for all";
}

TEST_F(OperationListTest, NothingIsAddedWithoutAFile) {
  launchWithFiles(1);
  select({});
  EXPECT_EQ(done("addOperation", {{"code", 201}, {"values", skipValues("#")}})["opened"], nullptr);
  EXPECT_EQ(between(), json::array());
  EXPECT_EQ(status(), plainStatus(""));
}

TEST_F(OperationListTest, ThePanelOpensWithoutAFileAndItsDoneDoesNothingButClose) {
  launchWithFiles(1);
  select({});
  const json result =
      done("menu", {{"action", "addLineOperationSkipMenuItemClicked"}, {"values", skipValues("#")}});
  EXPECT_NE(result["opened"], nullptr);
  EXPECT_FALSE(isOpen("skipLineOperationWindow"));
  EXPECT_EQ(between(), json::array());
  EXPECT_EQ(status(), plainStatus(""));
}

TEST_F(OperationListTest, AnOperationWithoutAPanelOfItsOwnIsNotAdded) {
  launchWithFiles(1);
  for (const int code : {0, 101, 901, 304, 311, 999})
    EXPECT_EQ(done("addOperation", {{"code", code}})["opened"], nullptr) << code;
  EXPECT_EQ(between(), json::array());
}

TEST_F(OperationListTest, AListOfFewerThanTwoOperationsIsLeftAlone) {
  launchWithFiles(1);
  for (const json& list : {json::array(), json{marked("1")}}) {
    setOperations(0, list);
    select({0});
    done("addOperation", {{"code", 201}, {"values", skipValues("#")}});
    selectOperations({0});
    done("editOperation");
    done("deleteOperations");
    done("dropOperations", {{"rows", {0}}, {"row", 1}});
    EXPECT_EQ(operations(), list);
  }
}

TEST_F(OperationListTest, AnEditReplacesTheSelectedRecordAndMakesAPreview) {
  launchWithOperations({marked("1"), skipRecord("b")});
  selectOperations({2});
  EXPECT_EQ(
      done("editOperation", {{"values", skipValues("c")}})["opened"]["skipLineOperationWindowTextField"],
      "b");
  EXPECT_EQ(between(), (json{marked("1"), skipRecord("c")}));
  const json window = mainWindow();
  EXPECT_EQ(window["outputCells"], R"([["1", "x", "1"], ["2", "b", "2"]])"_json);
  EXPECT_EQ(window["operationRows"][2][2], "Skip If Starts With \"c\"");
  EXPECT_EQ(window["selectedOperations"], json{2});
  EXPECT_EQ(window["status"], plainStatus("Skip Line operation updated for 1 input file(s)."));
}

TEST_F(OperationListTest, AnEditOfTheInitialOperationChangesTheWordsOfTheFinalOne) {
  launchWithFiles(1);
  selectOperations({0});
  const std::string before = mainWindow()["operationRows"][1][2];
  done("editOperation", {{"values", {{"initialOperationsWindowSplitLinesIntoColumnsCheckbox", false}}}});
  EXPECT_NE(mainWindow()["operationRows"][1][2], before);
}

TEST_F(OperationListTest, NothingOpensUnlessOneRowIsSelected) {
  launchWithOperations({marked("1"), marked("2")});
  for (const std::vector<int>& rows : {std::vector<int>{}, {1, 2}, {9}}) {
    selectOperations(rows);
    EXPECT_EQ(done("editOperation")["opened"], nullptr);
  }
  select({});
  EXPECT_EQ(done("editOperation")["opened"], nullptr);
}

TEST_F(OperationListTest, AnUnassignedCodeOpensNothing) {
  launchWithOperations({{{"Code", 304}}});
  selectOperations({1});
  EXPECT_EQ(done("editOperation")["opened"], nullptr);
  EXPECT_EQ(done("doubleClick", {{"table", "operations"}, {"row", 1}})["sheet"], nullptr);
}

TEST_F(OperationListTest, ADoubleClickOpensThePanelOfItsRow) {
  launchWithOperations({marked("1"), kJoinLines});
  EXPECT_EQ(done("doubleClick", {{"table", "operations"}, {"row", 2}})["sheet"], "joinLinesOperationWindow");
  done("press", {{"name", "cancel"}});
  EXPECT_EQ(done("doubleClick", {{"table", "operations"}, {"row", 9}})["sheet"], nullptr);
}

TEST_F(OperationListTest, CancelChangesNothing) {
  launchWithOperations({skipRecord("b")});
  selectOperations({1});
  json cancelled = {{"action", "showOperationWindow"}, {"cancel", true}, {"values", skipValues("c")}};
  EXPECT_EQ(done("menu", cancelled)["opened"]["skipLineOperationWindowTextField"], "b");
  cancelled["action"] = "addLineOperationSkipMenuItemClicked";
  done("menu", cancelled);
  EXPECT_FALSE(isOpen("skipLineOperationWindow"));
  EXPECT_EQ(between(), json{skipRecord("b")});
  EXPECT_EQ(status(), plainStatus(""));
}

TEST_F(OperationListTest, DoneClosesThePanelThoughTheSelectionFitsNoMore) {
  launchWithOperations({skipRecord("b"), marked("1")});
  for (const std::vector<int>& rows : {std::vector<int>{}, {1, 2}}) {
    selectOperations({1});
    done("menu", {{"action", "showOperationWindow"}});
    EXPECT_TRUE(isOpen("skipLineOperationWindow"));
    done("setControl", {{"name", "skipLineOperationWindowTextField"}, {"value", "c"}});
    selectOperations(rows);
    done("press", {{"name", "skipLineOperationWindowDoneButton"}});
    EXPECT_FALSE(isOpen("skipLineOperationWindow"));
    EXPECT_EQ(between(), (json{skipRecord("b"), marked("1")}));
    EXPECT_EQ(status(), plainStatus(""));
  }
}

TEST_F(OperationListTest, TheRecordThatIsSelectedAtDoneIsWrittenFromThePanelOfItsCode) {
  launchWithOperations({skipRecord("b"), kJoinLines});
  selectOperations({1});
  done("menu", {{"action", "showOperationWindow"}});
  done("setControl", {{"name", "skipLineOperationWindowTextField"}, {"value", "c"}});
  selectOperations({2});
  done("press", {{"name", "done"}});
  EXPECT_EQ(between(), (json{skipRecord("b"), {{"Code", 251}, {"IntArg1", 0}, {"Arg1", ""}}}));
  EXPECT_EQ(status(), plainStatus("Join Lines operation updated for 1 input file(s)."));
}

TEST_F(OperationListTest, DeletingRemovesAllSelectedRowsAtOnce) {
  launchWithOperations({marked("1"), marked("2"), marked("3")});
  selectOperations({1, 3});
  done("deleteOperations");
  EXPECT_EQ(between(), json{marked("2")});
  EXPECT_EQ(status(), plainStatus("2 operation(s) deleted for 1 input file(s)."));
}

TEST_F(OperationListTest, DeletingMakesAPreview) {
  launchWithOperations({skipRecord("b")});
  EXPECT_EQ(mainWindow()["outputCells"].size(), 2u);
  selectOperations({1});
  done("deleteOperations");
  EXPECT_EQ(mainWindow()["outputCells"].size(), 3u);
}

TEST_F(OperationListTest, TheEndsAreNotDeletedNorWhatIsSelectedWithThem) {
  launchWithOperations({marked("1")});
  for (const std::vector<int>& rows : {std::vector<int>{0, 1}, {1, 2}, {0}, {2}}) {
    selectOperations(rows);
    EXPECT_EQ(done("deleteOperations")["alerts"],
              json{sheet("Cannot Delete Operation",
                         "An initial operation and a final operation are required for each input file.")});
    EXPECT_EQ(operations(), csvOperations("a.csv", {marked("1")}));
    EXPECT_EQ(status(), plainStatus(""));
  }
}

TEST_F(OperationListTest, AnEndIsKnownByItsCodeAndNotByItsPlace) {
  launchWithFiles(1);
  const json list = {marked("1"), csvOperations("a.csv")[0], marked("2")};
  setOperations(0, list);
  select({0});
  selectOperations({1});
  EXPECT_TRUE(done("deleteOperations").contains("alerts"));
  selectOperations({0, 2});
  EXPECT_FALSE(done("deleteOperations").contains("alerts"));
  EXPECT_EQ(operations(), json{list[1]});
}

TEST_F(OperationListTest, NothingIsDeletedWithoutASelectionOrWithSeveralFiles) {
  launchWithFiles(2);
  select({0});
  EXPECT_FALSE(done("deleteOperations").contains("alerts"));
  select({0, 1});
  selectOperations({0});
  EXPECT_FALSE(done("deleteOperations").contains("alerts"));
  EXPECT_EQ(operations(0).size(), 2u);
  EXPECT_EQ(operations(1).size(), 2u);
}

TEST_F(OperationListTest, TheDeleteButtonIsOnWhileARowIsSelected) {
  launchWithOperations({marked("1")});
  EXPECT_EQ(mainWindow()["deleteEnabled"], false);
  selectOperations({0});
  EXPECT_EQ(mainWindow()["deleteEnabled"], true);
  selectOperations({});
  EXPECT_EQ(mainWindow()["deleteEnabled"], false);
  selectOperations({2});
  done("selectFiles", {{"rows", json::array()}});
  EXPECT_EQ(mainWindow()["deleteEnabled"], false) << "the rows are gone";
}

TEST_F(OperationListTest, RowsThatAListHasNoMoreAreNotSelectedAnyMore) {
  launchWithOperations({marked("1"), marked("2")});
  selectOperations({1, 3});
  setOperations(0, csvOperations("a.csv"));
  EXPECT_EQ(mainWindow()["selectedOperations"], json{1});
  EXPECT_EQ(mainWindow()["deleteEnabled"], true);
  done("setInputFiles", {{"entries", json::array()}});
  EXPECT_EQ(mainWindow()["selectedOperations"], json::array());
  EXPECT_EQ(mainWindow()["deleteEnabled"], false);
}

// Where rows of the list i 1 2 3 4 f go that are dropped before a row.
TEST_F(OperationListTest, DroppedRowsStandAsOneBlockBeforeTheRow) {
  struct Move {
    std::vector<int> rows;
    int row;
    std::string order;
  };
  const Move moves[] = {{{1}, 3, "i2134f"},    {{1}, 1, "i1234f"},    {{1}, 2, "i1234f"},
                        {{4}, 1, "i4123f"},    {{1, 3}, 5, "i2413f"}, {{2, 4}, 1, "i2413f"},
                        {{1, 4}, 3, "i2143f"}, {{2}, 0, "2i134f"},    {{2}, 6, "i134f2"},
                        {{2}, 99, "i134f2"},   {{3, 9}, 1, "i3124f"}, {{}, 1, "i1234f"}};
  launchWithFiles(1);
  for (const Move& move : moves) {
    setOperations(0, csvOperations("a.csv", {marked("1"), marked("2"), marked("3"), marked("4")}));
    select({0});
    selectOperations({1});
    EXPECT_FALSE(done("dropOperations", {{"rows", move.rows}, {"row", move.row}}).contains("alerts"));
    std::string order;
    for (const json& record : operations()) {
      const int code = record["Code"];
      order += code == 101 ? "i" : code == 901 ? "f" : record["Arg1"].get<std::string>().substr(1);
    }
    EXPECT_EQ(order, move.order) << json(move.rows) << " before " << move.row;
  }
}

TEST_F(OperationListTest, TheTableShowsTheNewOrderAndThePreviewTheOldOneUntilTheNextChange) {
  const json first = {{"Code", 203}, {"IntArg1", 1}, {"IntArg2", 0}, {"Arg1", "x"}, {"Arg2", "y"}};
  const json second = {{"Code", 203}, {"IntArg1", 1}, {"IntArg2", 0}, {"Arg1", "y"}, {"Arg2", "z"}};
  launchWithOperations({first, second});
  EXPECT_EQ(mainWindow()["outputCells"][0], (json{"1", "z", "1"}));
  selectOperations({1});
  done("dropOperations", {{"rows", {1}}, {"row", 3}});
  EXPECT_EQ(between(), (json{second, first}));
  json window = mainWindow();
  EXPECT_NE(window["operationRows"][1][2].get<std::string>().find("\"y\" with \"z\""), std::string::npos);
  EXPECT_EQ(window["outputCells"][0], (json{"1", "z", "1"}));
  EXPECT_EQ(window["status"], plainStatus("")) << "a move tells nothing";
  done("addOperation", {{"code", 251}});
  EXPECT_EQ(mainWindow()["outputCells"][0], (json{"1", "y", "1"}));
}

TEST_F(OperationListTest, NothingMovesWhileAnEndIsSelected) {
  launchWithOperations({marked("1"), marked("2")});
  for (const std::vector<int>& rows : {std::vector<int>{0}, {3}, {0, 1}, {1, 3}}) {
    selectOperations(rows);
    EXPECT_EQ(
        done("dropOperations", {{"rows", {1}}, {"row", 3}})["alerts"],
        json{sheet("Cannot Move Operation", "The initial operation and final operation cannot me moved.")});
    EXPECT_EQ(between(), (json{marked("1"), marked("2")}));
  }
}

TEST_F(OperationListTest, OnlyTheSelectionIsTestedAndNotWhatIsDragged) {
  launchWithOperations({marked("1")});
  selectOperations({1});
  done("dropOperations", {{"rows", {0}}, {"row", 3}});
  EXPECT_EQ(operations()[2]["Code"], 101);
}

TEST_F(OperationListTest, NothingMovesWithoutASelectionOrWithSeveralFiles) {
  launchWithOperations({marked("1"), marked("2")});
  selectOperations({});
  done("dropOperations", {{"rows", {1}}, {"row", 3}});
  EXPECT_EQ(between(), (json{marked("1"), marked("2")}));
  add({write("b.csv", "x\n")});
  select({0, 1});
  selectOperations({1});
  EXPECT_FALSE(done("dropOperations", {{"rows", {1}}, {"row", 0}}).contains("alerts"));
  EXPECT_EQ(between(), (json{marked("1"), marked("2")}));
}

TEST_F(OperationListTest, WhatMayStandOnlyOnceIsRefusedByTheRunAlone) {
  launchWithOperations({kJoinLines, kJoinLines});
  done("setPreviewType", {{"tag", 3}});
  EXPECT_EQ(mainWindow()["previewText"], "x,1-b,2\nc,3") << "the preview works";
  EXPECT_EQ(run()["alerts"],
            json{sheet("Invalid Operations", "a.csv: Only one Join Lines operation is allowed.")});
  done("addOperation", {{"code", 251}});
  EXPECT_EQ(between().size(), 3u) << "the list takes any number";
}

class SeveralFilesTest : public OperationListTest {
 protected:
  static json finalValues() {
    return {{"finalOperationsWindowFileNameTextField", "all.csv"},
            {"finalOperationsWindowColumnSeparatorComboBox", ";"}};
  }
  static json initialValues() { return {{"initialOperationsWindowColumnSeparatorComboBox", "\\t"}}; }
};

TEST_F(SeveralFilesTest, TheInitialOperationOfEachIsEdited) {
  launchWithFiles(3);
  setOperations(1, csvOperations("b.csv", {marked("1"), marked("2")}));
  select({0, 1});
  selectOperations({0});
  EXPECT_EQ(done("editOperation",
                 {{"values", initialValues()}})["opened"]["initialOperationsWindowColumnSeparatorComboBox"],
            ",");
  EXPECT_EQ(operations(0)[0]["Arg2"], "\t");
  EXPECT_EQ(operations(1)[0]["Arg2"], "\t");
  EXPECT_EQ(between(1), (json{marked("1"), marked("2")}));
  EXPECT_EQ(operations(2)[0]["Arg2"], ",") << "it is not selected";
  EXPECT_EQ(status(), plainStatus("Initial operation updated for 2 input file(s)."));
  EXPECT_NE(mainWindow()["operationRows"][0][2].get<std::string>().find("\"\\t\""), std::string::npos)
      << "the rows that speak for all are changed, too";
}

TEST_F(SeveralFilesTest, RowOneReachesAFinalOperationOnlyWhereNothingStandsBetween) {
  launchWithFiles(2);
  setOperations(1, csvOperations("b.csv", {marked("1")}));
  select({0, 1});
  selectOperations({1});
  done("editOperation", {{"values", finalValues()}});
  EXPECT_EQ(operations(0)[1]["Arg4"], "all.csv");
  EXPECT_EQ(operations(0)[1]["Arg2"], ";");
  EXPECT_EQ(operations(1), csvOperations("b.csv", {marked("1")}));
  EXPECT_EQ(status(), plainStatus("Trim Line operation updated for 2 input file(s)."))
      << "the label is that of the record met last";
}

TEST_F(SeveralFilesTest, AllGetTheOneFileName) {
  launchWithFiles(3);
  select({0, 1, 2});
  selectOperations({1});
  done("editOperation", {{"values", finalValues()}});
  for (const int file : {0, 1, 2}) EXPECT_EQ(operations(file)[1]["Arg4"], "all.csv") << file;
  EXPECT_EQ(status(), plainStatus("Final operation updated for 3 input file(s)."));
}

TEST_F(SeveralFilesTest, AFileWithoutTheRowIsPassedOver) {
  launchWithFiles(3);
  setOperations(1, json{marked("1")});
  setOperations(2, json::array());
  select({0, 1, 2});
  selectOperations({0});
  done("editOperation", {{"values", initialValues()}});
  EXPECT_EQ(operations(0)[0]["Arg2"], "\t");
  EXPECT_EQ(operations(1), json{marked("1")});
  EXPECT_EQ(operations(2), json::array());
}

TEST_F(SeveralFilesTest, ARecordThatIsNoEndStaysAsItIs) {
  launchWithFiles(2);
  setOperations(0, {marked("1"), skipRecord("b")});
  setOperations(1, {marked("3"), skipRecord("c")});
  select({0, 1});
  selectOperations({1});
  EXPECT_EQ(
      done("editOperation", {{"values", skipValues("new")}})["opened"]["skipLineOperationWindowTextField"],
      "b")
      << "the first file's last record opens, whatever its code";
  EXPECT_EQ(operations(0)[1], skipRecord("b"));
  EXPECT_EQ(operations(1)[1], skipRecord("c"));
  EXPECT_EQ(status(), plainStatus("Skip Line operation updated for 2 input file(s)."));
}

TEST_F(SeveralFilesTest, NothingCanBeEditedWhenTheFirstFileHasNoEnds) {
  launchWithFiles(2);
  setOperations(0, json{marked("1")});
  select({0, 1});
  EXPECT_EQ(mainWindow()["operationRows"], json::array());
  selectOperations({0});
  EXPECT_EQ(done("editOperation")["opened"], nullptr);
}

TEST_F(SeveralFilesTest, AnEditMakesNoPreview) {
  launchWithFiles(2);
  select({0});
  const json output = mainWindow()["outputCells"];
  select({0, 1});
  selectOperations({0});
  done("editOperation", {{"values", initialValues()}});
  EXPECT_EQ(mainWindow()["outputCells"], output);
}

}  // namespace
}  // namespace quillet::testing
