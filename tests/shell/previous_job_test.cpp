#include "shell/previous_job.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

class PreviousJobTest : public ::testing::Test {};

TEST_F(PreviousJobTest, ItsNumbersTellItsKind) {
  const struct {
    const char* flags;
    const char* kind;
    bool isOperationsJob;
    bool isClipboardJob;
  } cases[] = {
      {"0", "", false, false},      {"0", "1", false, false},    {"4095", "1", false, false},
      {"4096", "", true, false},    {"4096", "1", true, false},  // never a clipboard job
      {"8192", "0", true, false},   {"8192", "", true, false},   {"8192", "2", true, false},
      {"8192", "1", true, true},    {"12288", "1", true, true},  {"8193", "1", true, true},
      {"8192", "1x", true, true},   {"8192", "x1", true, false}, {"8192 and more", "1", true, true},
      {"16384", "1", false, false}, {"", "1", false, false},
  };
  for (const auto& [flags, kind, isOperationsJob, isClipboardJob] : cases) {
    const PreviousJob job{"1", "", "name", flags, kind};
    EXPECT_EQ(job.isOperationsJob(), isOperationsJob) << flags << ' ' << kind;
    EXPECT_EQ(job.isClipboardJob(), isClipboardJob) << flags << ' ' << kind;
  }
}

TEST_F(PreviousJobTest, OnlyTheTextZeroIsOfAnOldJob) {
  EXPECT_FALSE((PreviousJob{"", "", "", "0", ""}.isNewJob()));
  EXPECT_TRUE((PreviousJob{"", "", "", "00", ""}.isNewJob()));
  EXPECT_TRUE((PreviousJob{"", "", "", "", ""}.isNewJob()));
}

TEST_F(PreviousJobTest, FiveTextsAreAJob) {
  EXPECT_TRUE(previousJobsFromRows({}).empty());
  const auto jobs =
      previousJobsFromRows({"3", "d", "n", "8192", "1", "7", "e", "m", "0", "", "half", "a row"});
  ASSERT_EQ(jobs.size(), 2u);
  EXPECT_EQ(jobs[0].identifier, "3");
  EXPECT_EQ(jobs[0].date, "d");
  EXPECT_EQ(jobs[0].name, "n");
  EXPECT_EQ(jobs[0].flags, "8192");
  EXPECT_EQ(jobs[0].kind, "1");
  EXPECT_EQ(jobs[1].identifier, "7");
}

}  // namespace
}  // namespace quillet
