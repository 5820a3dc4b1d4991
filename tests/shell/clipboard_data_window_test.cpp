#include "shell/clipboard_data_window.h"

#include <gtest/gtest.h>

#include "shell/scripted_workbench.h"
#include "shell/recording_desktop.h"

namespace quillet {
namespace {

class ClipboardDataWindowTest : public ::testing::Test {
 protected:
  ClipboardDataWindowTest() { clipboardData_.addCommandsTo(interface_.commands()); }

  // As after a refresh.
  void showText() {
    clipboardData_.helpBox().setHidden(true);
    clipboardData_.textView().setHidden(false);
    clipboardData_.grid().setHidden(false);
    clipboardData_.statusLine().show(u"text", 2);
  }

  bool isAtItsStart() {
    return !clipboardData_.helpBox().isHidden() && clipboardData_.textView().isHidden() &&
           clipboardData_.grid().isHidden() && clipboardData_.statusLine().text().empty() &&
           !clipboardData_.statusLine().clearButtonShown();
  }

  void choose() { interface_.commands().perform("clipboardDataWindowMenuItemClicked"); }

  UserInterface interface_;
  Window window_{interface_, "clipboardDataWindow", u""};
  testing::RecordingDesktop desktop_;
  testing::ScriptedWorkbench workbench_;
  ClipboardDataWindow clipboardData_{window_, desktop_, workbench_};
};

TEST_F(ClipboardDataWindowTest, StartsWithItsHelpAndWithTwoItemsOff) {
  EXPECT_TRUE(isAtItsStart());
  EXPECT_FALSE(clipboardData_.performItem().isEnabled());
  EXPECT_FALSE(clipboardData_.joinItem().isEnabled());
}

TEST_F(ClipboardDataWindowTest, StartsAnewWhenItWasNotShownAndReadsNothing) {
  showText();
  // It is reset before it is shown.
  bool resetWhenShown = false;
  window_.setObserver([&] { resetWhenShown = isAtItsStart(); });
  choose();
  EXPECT_TRUE(resetWhenShown);
  EXPECT_TRUE(isAtItsStart());
  EXPECT_EQ(desktop_.events, std::vector<std::string>{"front clipboardDataWindow"});
  EXPECT_EQ(workbench_.refreshes(), 0);
}

TEST_F(ClipboardDataWindowTest, StaysAsItIsWhenItWasShown) {
  choose();
  showText();
  desktop_.key = nullptr;
  choose();
  EXPECT_TRUE(clipboardData_.helpBox().isHidden());
  EXPECT_FALSE(clipboardData_.textView().isHidden());
  EXPECT_FALSE(clipboardData_.grid().isHidden());
  EXPECT_TRUE(clipboardData_.statusLine().text() == u"text");
  EXPECT_EQ(desktop_.key, &window_);
}

TEST_F(ClipboardDataWindowTest, TheStatusNamesTheOperation) {
  const struct {
    std::int64_t code;
    std::u16string_view text;
  } cases[] = {{311, u"Trim Column operation performed."},
               {361, u"Set Final Number of Columns operation performed."},
               {4711, u" operation performed."}};
  for (const auto& [code, text] : cases) {
    clipboardData_.updateClipboardDataWindowStatusLabel(code);
    EXPECT_TRUE(clipboardData_.statusLine().text() == text) << toUtf8(clipboardData_.statusLine().text());
    EXPECT_EQ(clipboardData_.statusLine().type(), 0);
    EXPECT_TRUE(clipboardData_.statusLine().clearButtonShown());
  }
  interface_.commands().perform("clipboardDataWindowClearStatusLabelButtonClicked");
  EXPECT_TRUE(clipboardData_.statusLine().text().empty());
  EXPECT_FALSE(clipboardData_.statusLine().clearButtonShown());
}

TEST_F(ClipboardDataWindowTest, ListsWhatWasPerformed) {
  EXPECT_EQ(clipboardData_.operationsTable().rowCount(), 0u);
  workbench_.performClipboardDataOperation({{"Code", std::int64_t{251}}});
  ASSERT_EQ(clipboardData_.operationsTable().rowCount(), 1u);
  const Table::Row row = clipboardData_.operationsTable().row(0);
  ASSERT_EQ(row.size(), 3u);
  EXPECT_TRUE(row[0] == u"Join Lines");
}

}  // namespace
}  // namespace quillet
