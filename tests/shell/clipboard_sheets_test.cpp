// What the whole application does not show of the sheets: the order of what Done does, their titles, buttons
// and help. What they hold and make is in the scenarios.
#include "shell/clipboard/clipboard_sheets.h"

#include "shell/clipboard_group_fixture.h"

namespace quillet {
namespace {

const struct Sheet {
  std::string window;
  std::string action;
  std::string lastKey;  // "" for one that remembers nothing
  std::string clicked;  // the end of its handlers
  std::u16string title;
  std::u16string help;
} kSheets[] = {
    {"clipboardDataSplitWindow", "clipboardDataWindowSplitButtonPressed", "ClipboardDataSplitKey", "Pressed",
     u"Split",
     u"Cuts the clipboard's text anew: changes since the last Join are dropped. Line separators cut inside "
     u"quotes too."},
    {"clipboardDataJoinWindow", "clipboardDataWindowJoinButtonPressed", "ClipboardDataJoinKey", "Pressed",
     u"Join", u"Puts the grid on the clipboard as text. Add Quotes quotes every cell."},
    {"clipboardDataTrimWindow", "clipboardDataWindowTrimButtonPressed", "ClipboardDataTrimKey", "Pressed",
     u"Trim Column",
     u"As Trim Line, in the selected cells; but From Both Sides takes only the end off a cell that matches "
     u"at "
     u"both."},
    {"clipboardDataReplaceWindow", "clipboardDataWindowReplaceButtonPressed", "ClipboardDataReplaceKey",
     "Pressed", u"Replace Cells", u"As Replace Line, in the selected cells."},
    {"clipboardDataFillWindow", "clipboardDataWindowFillButtonPressed", "ClipboardDataFillKey", "Pressed",
     u"Fill Cells", u"Fills the selected cells that exist, along each line, then down."},
    {"cellDetailsWindow", "rowsTableViewReturnKeyPressed", "", "Clicked", u"Edit Cell", u""},
};

class ClipboardSheetsTest : public testing::ClipboardGroupTest {
 protected:
  Window& sheet(const Sheet& sheet) { return *interface_.window(sheet.window); }

  // Opens the sheet over a grid and writes from then on what happens, each event once, with "kept" when the
  // record is in the settings by then.
  void openAndWatch(const Sheet& watched) {
    control<Label>("clipboardDataWindowStatusLabel").setObserver({});
    split(u"a,b");
    perform(watched.action);
    events_.clear();
    const auto tell = [this, &watched](const std::string& event) {
      const auto all = defaults_.value("ClipboardDataLastKey");
      const std::string told = event + (all.contains(watched.lastKey) ? ", kept" : "");
      if (events_.empty() || events_.back() != told) events_.push_back(told);
    };
    control<Label>("clipboardDataWindowStatusLabel").setObserver([=] { tell("performed"); });
    sheet(watched).setObserver([=, this] {
      if (!sheet(watched).isShown()) tell("closed");
    });
    for (const char* item : {"clipboardDataWindowPerformToolbarItem", "clipboardDataWindowJoinToolbarItem"})
      control<Button>(item).setObserver([=] { tell(item); });
  }

  std::vector<std::string> events_;
};

TEST_F(ClipboardSheetsTest, AreTitledAsTheirOperations) {
  for (const Sheet& each : kSheets) EXPECT_EQ(sheet(each).title(), each.title) << each.window;
}

TEST_F(ClipboardSheetsTest, HaveButtonsAndHandlersOfTheirName) {
  for (const Sheet& each : kSheets) {
    const Window& window = sheet(each);
    ASSERT_TRUE(window.doneButton() && window.cancelButton()) << each.window;
    EXPECT_EQ(window.doneButton()->name(), each.window + "DoneButton");
    EXPECT_EQ(window.doneButton()->handler(), each.window + "DoneButton" + each.clicked);
    EXPECT_EQ(window.doneButton()->title(), u"Done");
    EXPECT_EQ(window.cancelButton()->name(), each.window + "CancelButton");
    EXPECT_EQ(window.cancelButton()->handler(), each.window + "CancelButton" + each.clicked);
    EXPECT_EQ(window.cancelButton()->title(), u"Cancel");
    EXPECT_TRUE(interface_.commands().has(window.doneButton()->handler()));
    EXPECT_TRUE(interface_.commands().has(window.cancelButton()->handler()));
  }
}

TEST_F(ClipboardSheetsTest, HelpIsTheToolTipOfTheHelpButton) {
  for (const Sheet& each : kSheets) {
    const auto* help = dynamic_cast<Button*>(interface_.control(each.window + "HelpButton"));
    ASSERT_EQ(help != nullptr, !each.help.empty()) << each.window;
    if (!help) continue;
    EXPECT_EQ(help->toolTip(), each.help);
    EXPECT_EQ(help->handler(), "helpButtonPressed");
  }
}

TEST_F(ClipboardSheetsTest, SeparatorsAreOfferedAsTheyAreTyped) {
  const std::vector<std::u16string> lines = {u"\\n", u"\\r\\n", u"\\r"};
  const std::vector<std::u16string> columns = {u"\\t", u",", u";", u"|", u" "};
  const auto texts = [&](const std::string& name) {
    std::vector<std::u16string> result;
    for (const auto& item : control<ComboBox>(name).items()) result.push_back(item.text);
    return result;
  };
  for (const std::string sheet : {"clipboardDataSplitWindow", "clipboardDataJoinWindow"}) {
    EXPECT_EQ(texts(sheet + "LineSeparatorComboBox"), lines);
    EXPECT_EQ(texts(sheet + "ColumnSeparatorComboBox"), columns);
  }
}

TEST_F(ClipboardSheetsTest, FillTellsWhatASequenceIs) {
  EXPECT_EQ(control<Label>("clipboardDataFillWindowHelpLabel").text(),
            u"Sequence: start and step, such as 10,5");
}

TEST_F(ClipboardSheetsTest, AHiddenWindowIsShownBeforeItsSheetOpens) {
  for (const Sheet& each : kSheets) {
    window_.hide();
    desktop_.key = nullptr;
    desktop_.events.clear();
    bool windowWasShown = false;
    sheet(each).setObserver([&] { windowWasShown = window_.isShown(); });
    perform(each.action);
    EXPECT_TRUE(windowWasShown) << each.window;
    EXPECT_EQ(desktop_.events, std::vector<std::string>{"back clipboardDataWindow"}) << each.window;
    EXPECT_EQ(sheet(each).sheetParent(), WindowName::ClipboardData) << each.window;
    sheet(each).setObserver({});
    desktop_.events.clear();
    perform(each.action);
    EXPECT_EQ(desktop_.events, std::vector<std::string>()) << "it is shown already";
  }
}

TEST_F(ClipboardSheetsTest, DonePerformsThenRemembersThenClosesAndSplitThenEnablesTheItems) {
  for (const Sheet& each : kSheets) {
    openAndWatch(each);
    sheet(each).doneButton()->press();
    std::vector<std::string> expected = {"performed", each.lastKey.empty() ? "closed" : "closed, kept"};
    if (each.window == "clipboardDataSplitWindow") {
      expected.emplace_back("clipboardDataWindowPerformToolbarItem, kept");
      expected.emplace_back("clipboardDataWindowJoinToolbarItem, kept");
    }
    EXPECT_EQ(events_, expected) << each.window;
    EXPECT_EQ(operations().size(), 2u) << each.window;
  }
}

TEST_F(ClipboardSheetsTest, CancelOnlyCloses) {
  for (const Sheet& each : kSheets) {
    openAndWatch(each);
    sheet(each).cancelButton()->press();
    EXPECT_EQ(events_, std::vector<std::string>{"closed"}) << each.window;
    EXPECT_EQ(operations().size(), 1u) << each.window;
    EXPECT_FALSE(defaults_.has("ClipboardDataLastKey"));
  }
}

// A list of lines, columns and cells at once is what Trim, Replace and Fill act on.
TEST_F(ClipboardSheetsTest, AllOfTheSelectionIsInTheRecord) {
  const struct {
    const char* action;
    const char* done;
    const char* key;
  } sheets[] = {
      {"clipboardDataWindowTrimButtonPressed", "clipboardDataTrimWindowDoneButtonPressed", "Arg1"},
      {"clipboardDataWindowReplaceButtonPressed", "clipboardDataReplaceWindowDoneButtonPressed", "Arg1"},
      {"clipboardDataWindowFillButtonPressed", "clipboardDataFillWindowDoneButtonPressed", "Arg2"},
  };
  for (const auto& [action, done, key] : sheets) {
    split(u"a,b,c\nd,e,f");
    selection().addInfiniteRowIndex(1);
    selection().addInfiniteColumnIndex(2);
    selection().addRowIndex(0, 1);
    perform(action);
    perform(done);
    EXPECT_EQ(operations().back().text(key), u"Lines: 2; Columns: 3; Cells: (1, 2)") << action;
  }
}

}  // namespace
}  // namespace quillet
