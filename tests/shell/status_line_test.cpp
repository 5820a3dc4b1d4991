#include "shell/status_line.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

class StatusLineTest : public ::testing::Test {
 protected:
  UserInterface interface_;
  Window window_{interface_, "window", u""};
};

TEST_F(StatusLineTest, IsRedForTheTypesThatWarn) {
  const struct {
    int type;
    TextColour colour;
  } cases[] = {{0, TextColour::SecondaryLabel},
               {1, TextColour::Red},
               {2, TextColour::Red},
               {3, TextColour::SecondaryLabel},
               {-1, TextColour::SecondaryLabel}};
  for (const auto& [type, colour] : cases) {
    StatusLine line(window_, "statusLabel", "clearStatusLabelButton", "");
    line.show(u"text", type);
    EXPECT_EQ(line.colour(), colour) << type;
    EXPECT_EQ(line.type(), type);
    EXPECT_TRUE(line.text() == u"text");
    EXPECT_TRUE(line.clearButtonShown());
  }
}

TEST_F(StatusLineTest, ClearingEmptiesTheTextAndHidesTheButton) {
  StatusLine line(window_, "statusLabel", "clearStatusLabelButton", "");
  line.show(u"text", 2);
  line.clear();
  EXPECT_TRUE(line.text().empty());
  EXPECT_EQ(line.type(), 0);
  EXPECT_FALSE(line.clearButtonShown());
}

}  // namespace
}  // namespace quillet
