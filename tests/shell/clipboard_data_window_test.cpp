#include "shell/clipboard/clipboard_data_window.h"

#include <gtest/gtest.h>

#include "operations/escapes.h"
#include "shell/recording_desktop.h"

namespace quillet {
namespace {

class ClipboardDataWindowTest : public ::testing::Test {
 protected:
  ClipboardDataWindowTest() { clipboardData_.addCommandsTo(interface_.commands()); }

  void refresh(std::u16string text) {
    desktop_.pasteboard = std::move(text);
    data_.refreshDataFromClipboard();
  }
  void split() {
    data_.performClipboardDataOperation({{"Code", std::int64_t{102}}, {"Arg1", u"/"}, {"Arg2", u"|"}});
  }

  bool isAtItsStart() {
    return !clipboardData_.helpBox().isHidden() && clipboardData_.textView().isHidden() &&
           clipboardData_.table().table().isHidden() && clipboardData_.statusLine().text().empty() &&
           !clipboardData_.statusLine().clearButtonShown();
  }
  void choose() { interface_.commands().perform("clipboardDataWindowMenuItemClicked"); }

  testing::RecordingDesktop desktop_;
  UserInterface interface_;
  Window window_{interface_, "clipboardDataWindow", u"Clipboard Data"};
  ClipboardDataWindow clipboardData_{window_, desktop_.desktop(), data_, [] {}};
  ClipboardData data_{desktop_, clipboardData_};
};

TEST_F(ClipboardDataWindowTest, StartsWithItsHelpAndWithTwoItemsOff) {
  EXPECT_TRUE(isAtItsStart());
  EXPECT_FALSE(clipboardData_.performItem().isEnabled());
  EXPECT_FALSE(clipboardData_.joinItem().isEnabled());
  EXPECT_TRUE(window_.title() == u"Clipboard Data");
}

TEST_F(ClipboardDataWindowTest, StartsAnewWhenItWasNotShownAndReadsNothing) {
  refresh(u"text");
  desktop_.pasteboard = u"other";
  // It is reset before it is shown.
  bool resetWhenShown = false;
  window_.setObserver([&] { resetWhenShown = isAtItsStart(); });
  choose();
  EXPECT_TRUE(resetWhenShown);
  EXPECT_TRUE(isAtItsStart());
  EXPECT_EQ(desktop_.events, std::vector<std::string>{"front clipboardDataWindow"});
  EXPECT_TRUE(data_.clipboardDataString() == u"text");
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 1u) << "the grid is left";
}

TEST_F(ClipboardDataWindowTest, StaysAsItIsWhenItWasShown) {
  choose();
  refresh(u"text");
  desktop_.key = nullptr;
  choose();
  EXPECT_FALSE(clipboardData_.textView().isHidden());
  EXPECT_TRUE(clipboardData_.statusLine().text() == u"Refreshed from macOS Clipboard.");
  EXPECT_EQ(desktop_.key, &window_);
}

TEST_F(ClipboardDataWindowTest, TheTextOrTheGridCoversTheHelp) {
  refresh(u"a|b");
  EXPECT_FALSE(clipboardData_.textView().isHidden());
  EXPECT_TRUE(clipboardData_.table().table().isHidden());
  EXPECT_FALSE(clipboardData_.helpBox().isHidden());
  split();
  EXPECT_TRUE(clipboardData_.textView().isHidden());
  EXPECT_FALSE(clipboardData_.table().table().isHidden());
  EXPECT_FALSE(clipboardData_.helpBox().isHidden());
}

TEST_F(ClipboardDataWindowTest, ControlCharactersOfTheTextAreVisible) {
  refresh(u"a\tb\r\nc\n");
  EXPECT_TRUE(clipboardData_.textView().text() ==
              stringByReplacingControlCharactersFromString(u"a\tb\r\nc\n", {}));
  EXPECT_FALSE(clipboardData_.textView().text() == u"a\tb\r\nc\n");
  data_.performClipboardDataOperation({{"Code", std::int64_t{902}}});
  EXPECT_TRUE(clipboardData_.textView().text() ==
              stringByReplacingControlCharactersFromString(u"a\tb\r\nc\n", {}));
}

TEST_F(ClipboardDataWindowTest, RefreshSwitchesTheTwoItemsOff) {
  clipboardData_.setToolbarItemsEnabled(true);
  EXPECT_TRUE(clipboardData_.performItem().isEnabled());
  EXPECT_TRUE(clipboardData_.joinItem().isEnabled());
  desktop_.pasteboard.reset();
  data_.refreshDataFromClipboard();
  EXPECT_TRUE(clipboardData_.performItem().isEnabled()) << "without a text they stay";
  refresh(u"");
  EXPECT_FALSE(clipboardData_.performItem().isEnabled());
  EXPECT_FALSE(clipboardData_.joinItem().isEnabled());
}

TEST_F(ClipboardDataWindowTest, TheStatusNamesTheOperation) {
  const struct {
    std::int64_t code;
    std::u16string_view text;
  } cases[] = {{311, u"Trim Column operation performed."},
               {361, u"Set Final Number of Columns operation performed."},
               {999, u"Undo Last operation performed."},
               {4711, u" operation performed."}};
  for (const auto& [code, text] : cases) {
    data_.updateClipboardDataWindowStatusLabel(code);
    EXPECT_TRUE(clipboardData_.statusLine().text() == text) << toUtf8(clipboardData_.statusLine().text());
    EXPECT_EQ(clipboardData_.statusLine().type(), 0);
    EXPECT_EQ(clipboardData_.statusLine().colour(), TextColour::SecondaryLabel);
    EXPECT_TRUE(clipboardData_.statusLine().clearButtonShown());
  }
  interface_.commands().perform("clipboardDataWindowClearStatusLabelButtonClicked");
  EXPECT_TRUE(clipboardData_.statusLine().text().empty());
  EXPECT_FALSE(clipboardData_.statusLine().clearButtonShown());
}

TEST_F(ClipboardDataWindowTest, AFailureIsRedAndItsAlertIsOnTheWindow) {
  refresh(u"a");
  desktop_.pasteboardFails = true;
  desktop_.events.clear();
  data_.performClipboardDataOperation({{"Code", std::int64_t{902}}});
  EXPECT_EQ(clipboardData_.statusLine().colour(), TextColour::Red);
  EXPECT_EQ(clipboardData_.statusLine().type(), 2);
  EXPECT_TRUE(clipboardData_.statusLine().text() == u"Could not write to pasteboard");
  EXPECT_EQ(desktop_.events,
            std::vector<std::string>{"sheet of clipboardDataWindow Error|Could not write to pasteboard"});
  clipboardData_.showAlert(u"Title", u"message");
  EXPECT_EQ(desktop_.events.back(), "sheet of clipboardDataWindow Title|message");
}

TEST_F(ClipboardDataWindowTest, ListsWhatWasPerformed) {
  EXPECT_EQ(clipboardData_.operationsTable().rowCount(), 0u);
  refresh(u"a/b");
  int told = 0;
  clipboardData_.operationsTable().setObserver([&told] { ++told; });
  split();
  EXPECT_EQ(told, 1);
  ASSERT_EQ(clipboardData_.operationsTable().rowCount(), 1u);
  const Table::Row row = clipboardData_.operationsTable().row(0);
  ASSERT_EQ(row.size(), 3u);
  EXPECT_TRUE(row[0] == u"Split");
  refresh(u"c");
  EXPECT_EQ(clipboardData_.operationsTable().rowCount(), 0u);
}

}  // namespace
}  // namespace quillet
