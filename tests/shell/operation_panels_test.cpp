#include "shell/operation_panels.h"

#include <gtest/gtest.h>
#include <map>

#include "shell/menu_items.h"
#include "shell/panels/column_entries.h"

namespace quillet {
namespace {

class OperationPanelsTest : public ::testing::Test {
 protected:
  std::u16string title(std::int64_t code) { return panels_.panelForCode(code)->window().title(); }

  UserInterface interface_;
  Window window_{interface_, "window", u""};
  InputFiles files_;
  FileSelection selection_{window_, files_};
  OperationPanels panels_{interface_, selection_};
};

TEST_F(OperationPanelsTest, AreTitledAsTheirOperations) {
  const std::map<std::int64_t, std::u16string> titles = {
      {101, u"Initial"},           {150, u"Replace Character"}, {201, u"Skip Line"},
      {202, u"Trim Line"},         {203, u"Replace Line"},      {251, u"Join Lines"},
      {301, u"Trim Column"},       {302, u"Replace Column"},    {303, u"Reformat Column"},
      {352, u"Rearrange Columns"}, {353, u"Join Columns"},      {901, u"Final"}};
  for (const auto& [code, expected] : titles) EXPECT_EQ(title(code), expected) << code;
}

TEST_F(OperationPanelsTest, ThePanelOfTwoOperationsIsTitledAsTheOneAtHand) {
  OperationPanel& panel = *panels_.panelForCode(351);
  EXPECT_EQ(&panel, panels_.panelForCode(361));
  panel.prepareForAdding(361);
  EXPECT_EQ(panel.window().title(), u"Set Final Number of Columns");
  panel.prepareForAdding(351);
  EXPECT_EQ(panel.window().title(), u"Set Initial Number of Columns");
  panel.fill({{"Code", 361}});
  EXPECT_EQ(panel.window().title(), u"Set Final Number of Columns");
}

TEST_F(OperationPanelsTest, ThereIsNoneForOtherCodes) {
  for (const std::int64_t code : {0, 102, 304, 311, 999})
    EXPECT_EQ(panels_.panelForCode(code), nullptr) << code;
}

TEST_F(OperationPanelsTest, AreFoundByTheirControls) {
  Control* button = interface_.control("setNumberOfColumnsOperationsWindowCancelButton");
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(panels_.panelOf(*button), panels_.panelForCode(351));
  EXPECT_EQ(panels_.panelOf(*interface_.control("filesTableView")), nullptr);
}

TEST_F(OperationPanelsTest, TellTheDeskWhichButtonsAreDoneAndCancel) {
  for (const std::int64_t code : {101, 150, 201, 202, 203, 251, 301, 302, 303, 351, 352, 353, 901}) {
    const Window& window = panels_.panelForCode(code)->window();
    ASSERT_TRUE(window.doneButton() && window.cancelButton()) << code;
    EXPECT_EQ(window.doneButton()->handler(), "operationsWindowDoneButtonClicked");
    EXPECT_EQ(window.cancelButton()->handler(), "operationsWindowCancelButtonClicked");
  }
}

TEST_F(OperationPanelsTest, HelpIsTheToolTipOfTheHelpButton) {
  const auto* help = dynamic_cast<Button*>(interface_.control("joinLinesOperationWindowHelpButton"));
  ASSERT_NE(help, nullptr);
  EXPECT_EQ(help->handler(), "helpButtonPressed");
  EXPECT_EQ(help->toolTip(),
            u"Joins runs of that many output lines. The separator is taken as typed. 0 and 1 join nothing.");
}

TEST_F(OperationPanelsTest, SeparatorsAreOfferedAsTheyAreTyped) {
  const auto texts = [&](const char* name) {
    const auto* comboBox = dynamic_cast<ComboBox*>(interface_.control(name));
    std::vector<std::u16string> result;
    for (const auto& item : comboBox->items()) result.push_back(item.text);
    return result;
  };
  const std::vector<std::u16string> lines = {u"\\n", u"\\r\\n", u"\\r"};
  const std::vector<std::u16string> columns = {u"\\t", u",", u";", u"|", u" "};
  EXPECT_EQ(texts("initialOperationsWindowLineSeparatorComboBox"), lines);
  EXPECT_EQ(texts("finalOperationsWindowLineSeparatorComboBox"), lines);
  EXPECT_EQ(texts("initialOperationsWindowColumnSeparatorComboBox"), columns);
  EXPECT_EQ(texts("finalOperationsWindowColumnSeparatorComboBox"), columns);
}

TEST_F(OperationPanelsTest, AFillTypeIsOneOfTwo) {
  const auto items = fillTypeItems();
  ASSERT_EQ(items.size(), 2u);
  EXPECT_EQ(items[0].title, u"String");
  EXPECT_EQ(items[1].title, u"Sequence");
  EXPECT_EQ(items[1].tag, 1);
}

TEST_F(OperationPanelsTest, AListOfColumnsThatShrinksTakesItsSelectionAlong) {
  JoinColumnsPanel& panel = panels_.joinColumns();
  panel.refillJoinColumns({{0, u"a"}, {1, u"b"}, {2, u"c"}});
  auto& table = dynamic_cast<Table&>(*interface_.control("joinColumnsOperationWindowColumnsTableView"));
  IndexSet rows;
  rows.addRange(1, 2);
  table.userSelects(rows);
  const Control& join = *interface_.control("joinColumnsOperationWindowJoinButton");
  EXPECT_TRUE(join.isEnabled());
  panel.refillJoinColumns({{0, u"a"}});
  EXPECT_FALSE(join.isEnabled());
  EXPECT_TRUE(table.selectedRows().isEmpty());
  EXPECT_EQ(table.row(0), Table::Row{u"1. a"});
}

TEST(ColumnEntriesTest, AListPrintsNumbersFromOne) {
  EXPECT_EQ(stringListFromColumnDictionaryArray({}), u"");
  EXPECT_EQ(stringListFromColumnDictionaryArray({{2, u"c"}, {0, u"a"}, {std::nullopt, u"x"}}), u"3, 1, 0");
}

TEST(ColumnEntriesTest, NumbersThatNoColumnHasAreDropped) {
  const std::vector<ColumnEntry> columns = {{0, u"a"}, {1, u"b"}};
  EXPECT_EQ(columnsNamedBy(u" 2,0,3, -1, x, 1,2", u",", columns),
            (std::vector<ColumnEntry>{{1, u"b"}, {0, u"a"}, {1, u"b"}}));
  EXPECT_EQ(columnsNamedBy(u"", u",", columns), std::vector<ColumnEntry>{});
}

}  // namespace
}  // namespace quillet
