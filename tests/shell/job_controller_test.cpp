#include "shell/job_controller.h"

#include "shell/application_fixture.h"

namespace quillet::testing {
namespace {

class JobControllerTest : public ApplicationTest {
 protected:
  template <typename Kind>
  Kind& control(const char* name) {
    return dynamic_cast<Kind&>(*application().interface().control(name));
  }
};

// No run locks the window, so that its end only puts back what nothing has changed.
TEST_F(JobControllerTest, TheEndOfARunUnlocksTheWindow) {
  const auto& runButton = control<Button>("runButton");
  const auto& files = control<Table>("filesTableView");
  EXPECT_EQ(runButton.title(), u"Run Job");
  EXPECT_TRUE(files.isEnabled());
  application().jobController().updateUIBeforePrep();
  EXPECT_EQ(runButton.title(), u"Stop");
  EXPECT_FALSE(files.isEnabled());
  application().jobController().updateUIAfterPrep();
  EXPECT_EQ(runButton.title(), u"Run Job");
  EXPECT_TRUE(files.isEnabled());
}

}  // namespace
}  // namespace quillet::testing
