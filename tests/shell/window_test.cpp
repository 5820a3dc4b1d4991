#include "shell/window.h"

#include <gtest/gtest.h>

#include "shell/controls.h"
#include "shell/recording_desktop.h"

namespace quillet {
namespace {

class WindowTest : public ::testing::Test {
 protected:
  UserInterface interface_;
  Window main_{interface_, "window", u"Quillet"};
  Window other_{interface_, "previousJobsWindow", u"Previous Jobs"};
};

TEST_F(WindowTest, WindowsAndTheirControlsAreFoundByName) {
  Label first(main_, "first");
  Label second(other_, "second");
  EXPECT_EQ(interface_.windows(), (std::vector<Window*>{&main_, &other_}));
  EXPECT_EQ(interface_.window("previousJobsWindow"), &other_);
  EXPECT_EQ(interface_.window("nowhere"), nullptr);
  EXPECT_EQ(interface_.control("second"), &second);
  EXPECT_EQ(interface_.control("nowhere"), nullptr);
  EXPECT_EQ(main_.control("first"), &first);
  EXPECT_EQ(main_.control("second"), nullptr) << "it belongs to the other window";
  EXPECT_EQ(&second.window(), &other_);
}

TEST_F(WindowTest, ShowingHidingAndTheTitleAreTold) {
  int told = 0;
  main_.setObserver([&] { ++told; });
  EXPECT_FALSE(main_.isShown());
  main_.show();
  EXPECT_TRUE(main_.isShown());
  EXPECT_EQ(told, 1);
  main_.setTitle(u"Other");
  EXPECT_TRUE(main_.title() == u"Other");
  EXPECT_EQ(told, 2);
  main_.hide();
  EXPECT_FALSE(main_.isShown());
  EXPECT_EQ(told, 3);
}

TEST_F(WindowTest, ASheetKnowsItsWindowWhileItIsShown) {
  Window sheet(interface_, "saveJobWindow", u"");
  Button done(sheet, "saveJobWindowSaveButton", u"", "");
  Button cancel(sheet, "saveJobWindowCancelButton", u"", "");
  sheet.setSheetButtons(done, cancel);
  EXPECT_EQ(sheet.doneButton(), &done);
  EXPECT_EQ(sheet.cancelButton(), &cancel);
  EXPECT_EQ(sheet.sheetParent(), std::nullopt);
  sheet.show(WindowName::ClipboardData);
  EXPECT_EQ(sheet.sheetParent(), WindowName::ClipboardData);
  sheet.hide();
  EXPECT_EQ(sheet.sheetParent(), std::nullopt);
}

TEST_F(WindowTest, WhichWindowIsKeyIsKnownByName) {
  testing::RecordingDesktop desktop;
  EXPECT_FALSE(desktop.isKey(WindowName::Main)) << "none is";
  desktop.makeKeyAndOrderFront(other_);
  EXPECT_TRUE(desktop.isKey(WindowName::PreviousJobs));
  EXPECT_FALSE(desktop.isKey(WindowName::Main));
}

}  // namespace
}  // namespace quillet
