#include "shell/controls.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

class ControlsTest : public ::testing::Test {
 protected:
  ControlsTest() {
    interface_.commands().addWithSender("used", [this](Control* sender) {
      ++performed_;
      sender_ = sender;
    });
  }

  void observe(Control& control) {
    control.setObserver([this] { ++told_; });
    told_ = 0;
    performed_ = 0;
    sender_ = nullptr;
  }

  UserInterface interface_;
  Window window_{interface_, "window", u""};
  int told_ = 0;
  int performed_ = 0;
  Control* sender_ = nullptr;
};

TEST_F(ControlsTest, HidingAndEnablingAreToldOnceAChange) {
  Label label(window_, "label");
  observe(label);
  EXPECT_TRUE(label.isEnabled());
  EXPECT_FALSE(label.isHidden());
  label.setEnabled(true);
  label.setHidden(false);
  EXPECT_EQ(told_, 0);
  label.setEnabled(false);
  label.setHidden(true);
  EXPECT_FALSE(label.isEnabled());
  EXPECT_TRUE(label.isHidden());
  EXPECT_EQ(told_, 2);
}

TEST_F(ControlsTest, ALabelHasATextAndAColour) {
  Label label(window_, "label");
  observe(label);
  EXPECT_EQ(label.colour(), TextColour::SecondaryLabel);
  label.setText(u"text");
  label.setColour(TextColour::Red);
  EXPECT_TRUE(label.text() == u"text");
  EXPECT_EQ(label.colour(), TextColour::Red);
  EXPECT_EQ(told_, 2);
}

TEST_F(ControlsTest, AButtonIsPressedWhileItIsShownAndEnabled) {
  Button button(window_, "button", u"Title", "used");
  observe(button);
  button.press();
  EXPECT_EQ(performed_, 1);
  EXPECT_EQ(sender_, &button);
  button.setEnabled(false);
  button.press();
  button.setEnabled(true);
  button.setHidden(true);
  button.press();
  EXPECT_EQ(performed_, 1);
  button.setHidden(false);
  button.press();
  EXPECT_EQ(performed_, 2);
}

TEST_F(ControlsTest, AButtonWithoutAHandlerOrWithAnUnknownOneDoesNothing) {
  Button silent(window_, "silent", u"", "");
  Button unknown(window_, "unknown", u"", "nowhere");
  silent.press();
  unknown.press();
  EXPECT_EQ(performed_, 0);
}

TEST_F(ControlsTest, AButtonTellsItsTitleAndToolTip) {
  Button button(window_, "button", u"Title", "used");
  observe(button);
  EXPECT_TRUE(button.title() == u"Title");
  EXPECT_TRUE(button.toolTip().empty());
  button.setTitle(u"Other");
  button.setToolTip(u"Help");
  button.setTag(7);
  EXPECT_TRUE(button.title() == u"Other");
  EXPECT_TRUE(button.toolTip() == u"Help");
  EXPECT_EQ(button.tag(), 7);
  EXPECT_EQ(told_, 2);
  EXPECT_EQ(performed_, 0);
}

TEST_F(ControlsTest, ACheckBoxPerformsForTheUserAlone) {
  CheckBox box(window_, "box", u"Title", "used");
  observe(box);
  EXPECT_FALSE(box.isOn());
  box.setOn(true);
  EXPECT_TRUE(box.isOn());
  EXPECT_EQ(performed_, 0);
  box.userSets(false);
  EXPECT_FALSE(box.isOn());
  EXPECT_EQ(performed_, 1);
  EXPECT_EQ(sender_, &box);
  EXPECT_EQ(told_, 2);
}

TEST_F(ControlsTest, APopUpSelectsItsFirstItemAndOnlyTagsThatItHas) {
  PopUpButton popUp(window_, "popUp", {{4, u"four"}, {2, u"two"}}, "used");
  observe(popUp);
  EXPECT_EQ(popUp.selectedTag(), 4);
  popUp.selectItemWithTag(2);
  EXPECT_EQ(popUp.selectedTag(), 2);
  EXPECT_EQ(told_, 1);
  popUp.selectItemWithTag(3);
  EXPECT_EQ(popUp.selectedTag(), 2);
  EXPECT_EQ(told_, 1);
  EXPECT_EQ(performed_, 0);
  popUp.userSelects(4);
  EXPECT_EQ(popUp.selectedTag(), 4);
  EXPECT_EQ(performed_, 1);
  EXPECT_EQ(sender_, &popUp);
  popUp.setItems({{9, u"nine"}});
  EXPECT_EQ(popUp.selectedTag(), 9);
  popUp.setItems({});
  EXPECT_EQ(popUp.selectedTag(), 0);
}

TEST_F(ControlsTest, ATextFieldPerformsWhenEditingEnds) {
  TextField field(window_, "field", "used");
  observe(field);
  field.setText(u"set");
  field.setPlaceholder(u"placeholder");
  EXPECT_TRUE(field.text() == u"set");
  EXPECT_TRUE(field.placeholder() == u"placeholder");
  EXPECT_EQ(told_, 2);
  field.userTypes(u"typed");
  EXPECT_TRUE(field.text() == u"typed");
  EXPECT_EQ(performed_, 0) << "it is still editing";
  EXPECT_EQ(told_, 2) << "what shows it has the text already";
  field.userEndsEditing();
  EXPECT_EQ(performed_, 1);
  EXPECT_EQ(sender_, &field);
}

TEST_F(ControlsTest, AComboBoxIsATextFieldThatOffersTexts) {
  ComboBox box(window_, "box", {{u"\\n", u"Line feed"}, {u"\\t", u"Tab"}});
  observe(box);
  EXPECT_TRUE(box.text().empty()) << "no item is chosen for the user";
  ASSERT_EQ(box.items().size(), 2u);
  EXPECT_TRUE(box.items()[1].text == u"\\t");
  EXPECT_TRUE(box.items()[1].note == u"Tab");
  box.userTypes(u"anything");
  box.userEndsEditing();
  EXPECT_TRUE(box.text() == u"anything");
  EXPECT_EQ(performed_, 0);
}

TEST_F(ControlsTest, ATextViewShowsAText) {
  TextView view(window_, "view");
  observe(view);
  view.setText(u"text");
  EXPECT_TRUE(view.text() == u"text");
  EXPECT_EQ(told_, 1);
}

// A table over texts of one column.
class TableTest : public ControlsTest {
 protected:
  TableTest() {
    observe(table_);
    table_.setSelectionChanged([this] { ++selectionsTold_; });
  }

  std::vector<std::u16string> texts_ = {u"a", u"b", u"c"};
  Table table_{
      window_,
      "table",
      {[this] { return texts_.size(); }, [this](std::size_t row) { return Table::Row{texts_[row]}; }},
      {{"Column", u"Title", 10}},
      "used"};
  int selectionsTold_ = 0;
};

TEST_F(TableTest, AsksForItsRows) {
  EXPECT_EQ(table_.rowCount(), 3u);
  EXPECT_TRUE(table_.row(1)[0] == u"b");
  texts_.pop_back();
  EXPECT_EQ(table_.rowCount(), 2u);
  EXPECT_EQ(told_, 0);
}

TEST_F(TableTest, ColumnsThatStayAreNotTold) {
  table_.setColumns({{"Column", u"Title", 10}});
  EXPECT_EQ(told_, 0);
  table_.setColumns({{"Column", u"Title", 10}, {"Second", u"", 0}});
  EXPECT_EQ(told_, 1);
  EXPECT_EQ(table_.columnCount(), 2u);
}

TEST_F(TableTest, ColumnsCanBeMadeByARule) {
  int made = 0;
  const auto rule = [&made](std::size_t column) {
    ++made;
    return Table::Column{"Column" + std::to_string(column), u"", 100};
  };
  table_.setColumns(4'000'000'000, rule);
  EXPECT_EQ(table_.columnCount(), 4'000'000'000u);
  EXPECT_EQ(made, 0);
  EXPECT_EQ(table_.column(3'999'999'999), (Table::Column{"Column3999999999", u"", 100}));
  EXPECT_EQ(made, 1);
  table_.userResizesColumn(3'999'999'999, 30);
  table_.userResizesColumn(4'000'000'000, 30);
  EXPECT_EQ(table_.column(3'999'999'999).width, 30);
  EXPECT_EQ(table_.column(0).width, 100);
  EXPECT_EQ(told_, 1);
  table_.setColumns(4'000'000'000, rule);
  EXPECT_EQ(told_, 2) << "a rule is always told";
  EXPECT_EQ(table_.column(3'999'999'999).width, 100);
  table_.setColumns({{"Column", u"Title", 10}});
  EXPECT_EQ(told_, 3);
  EXPECT_EQ(table_.columnCount(), 1u);
  EXPECT_EQ(table_.column(0), (Table::Column{"Column", u"Title", 10}));
}

TEST_F(TableTest, ACellIsOneOfTheTextsOfItsRow) {
  EXPECT_EQ(table_.cell(1, 0), u"b");
  EXPECT_EQ(table_.cell(1, 1), u"");
}

TEST_F(TableTest, ACellCanBeAskedForAlone) {
  Table table(window_, "cells",
              {[] { return std::size_t{3}; }, [](std::size_t) { return Table::Row{u"row"}; },
               [](std::size_t row, std::size_t column) {
                 return std::u16string(row, u'r') + std::u16string(column, u'c');
               }});
  EXPECT_EQ(table.cell(2, 3), u"rrccc");
  EXPECT_EQ(table.row(2), Table::Row{u"row"});
}

TEST_F(TableTest, SelectingTellsAChangeAndLeavesOutRowsBeyondIt) {
  EXPECT_EQ(table_.selectedRow(), -1);
  table_.selectRows(IndexSet({0, 2, 3, 9}));
  EXPECT_EQ(table_.selectedRows(), IndexSet({0, 2}));
  EXPECT_EQ(table_.selectedRow(), 2) << "the last one";
  EXPECT_EQ(selectionsTold_, 1);
  table_.selectRows(IndexSet({0, 2, 4}));
  EXPECT_EQ(selectionsTold_, 1) << "the same rows";
  table_.userSelects(IndexSet({0, 2}));
  EXPECT_EQ(selectionsTold_, 2) << "a user's selecting always tells";
  EXPECT_EQ(performed_, 0);
}

TEST_F(TableTest, ADoubleClickSelectsTheRowAloneAndThenPerforms) {
  table_.selectRows(IndexSet({0, 2}));
  IndexSet selectedWhenPerformed;
  interface_.commands().add("used", [&] { selectedWhenPerformed = table_.selectedRows(); });
  table_.userDoubleClicks(1);
  EXPECT_EQ(selectedWhenPerformed, IndexSet({1}));
  table_.userDoubleClicks(3);
  EXPECT_EQ(table_.selectedRows(), IndexSet({})) << "there is no such row";
}

TEST_F(TableTest, ReloadingLosesRowsThatAreGone) {
  table_.selectRows(IndexSet({0, 2}));
  selectionsTold_ = 0;
  table_.reloadData();
  EXPECT_EQ(selectionsTold_, 0);
  texts_.pop_back();
  table_.reloadData();
  EXPECT_EQ(table_.selectedRows(), IndexSet({0}));
  EXPECT_EQ(selectionsTold_, 1);
  texts_.clear();
  table_.reloadData(Table::Tell::No);
  EXPECT_EQ(table_.selectedRows(), IndexSet({}));
  EXPECT_EQ(selectionsTold_, 1);
}

TEST_F(ControlsTest, ABoxEnablesItsControlsButIsNotTheirHider) {
  Box box(window_, "box");
  Label inside(window_, "inside");
  Button alsoInside(window_, "alsoInside", u"", "");
  Label outside(window_, "outside");
  box.add(inside);
  box.add(alsoInside);
  enableControls(false, box);
  EXPECT_FALSE(inside.isEnabled());
  EXPECT_FALSE(alsoInside.isEnabled());
  EXPECT_TRUE(outside.isEnabled());
  EXPECT_TRUE(box.isEnabled());
  enableControls(true, box);
  EXPECT_TRUE(inside.isEnabled());
  box.setHidden(true);
  EXPECT_FALSE(inside.isHidden()) << "what is inside is out of sight with the box";
}

class KindOf final : public ControlVisitor {
 public:
  using ControlVisitor::visit;
  void visit(Label&) override { kind = "label"; }
  void visit(Button&) override { kind = "button"; }
  void visit(CheckBox&) override { kind = "check box"; }
  void visit(PopUpButton&) override { kind = "pop-up"; }
  void visit(TextField&) override { kind = "text field"; }
  void visit(TextView&) override { kind = "text view"; }
  void visit(Table&) override { kind = "table"; }
  void visit(Box&) override { kind = "box"; }
  void visit(ProgressIndicator&) override { kind = "progress indicator"; }
  std::string kind;
};

TEST_F(ControlsTest, AVisitorIsToldTheKind) {
  Label label(window_, "1");
  Button button(window_, "2", u"", "");
  CheckBox checkBox(window_, "3", u"");
  PopUpButton popUp(window_, "4", {});
  TextField field(window_, "5");
  ComboBox comboBox(window_, "6");
  TextView view(window_, "7");
  Table table(window_, "8", {[] { return std::size_t{0}; }, [](std::size_t) { return Table::Row(); }});
  Box box(window_, "9");
  ProgressIndicator progress(window_, "10");
  std::vector<std::string> kinds;
  for (Control* control : window_.controls()) {
    KindOf visitor;
    control->accept(visitor);
    kinds.push_back(visitor.kind);
  }
  EXPECT_EQ(kinds,
            (std::vector<std::string>{"label", "button", "check box", "pop-up", "text field", "text field",
                                      "text view", "table", "box", "progress indicator"}));
}

}  // namespace
}  // namespace quillet
