#include "shell/file_selection.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

class FileSelectionTest : public ::testing::Test {
 protected:
  FileSelectionTest() { fill(3); }

  void fill(int count) {
    std::vector<InputFiles::Entry> entries;
    for (int i = 0; i < count; ++i) {
      auto file = std::make_shared<InputFile>();
      file->filePath = std::to_string(i);
      entries.push_back(std::move(file));
    }
    files_.setAll(std::move(entries));
  }

  UserInterface interface_;
  Window window_{interface_, "window", u""};
  InputFiles files_;
  FileSelection selection_{window_, files_};
};

TEST_F(FileSelectionTest, LeavesOutRowsBeyondTheTable) {
  IndexSet many;
  many.addRange(1, 1'000'000'000'000);
  selection_.select(many);
  EXPECT_EQ(selection_.rows(), IndexSet({1, 2}));
  selection_.select(IndexSet({3, 4}));
  EXPECT_EQ(selection_.rows(), IndexSet({}));
}

TEST_F(FileSelectionTest, TellsEachSelectingButNotTheLossOfRows) {
  int told = 0;
  selection_.setChanged([&told] { ++told; });
  selection_.select(IndexSet({0, 2}));
  selection_.select(IndexSet({0, 2}));
  EXPECT_EQ(told, 2) << "other files may stand in the same rows";
  fill(1);
  selection_.reloadTable();
  EXPECT_EQ(selection_.rows(), IndexSet({0}));
  EXPECT_EQ(told, 2);
}

TEST_F(FileSelectionTest, KnowsTheSingleAndTheFirstFile) {
  EXPECT_EQ(selection_.singleFile(), nullptr);
  EXPECT_EQ(selection_.firstFile(), nullptr);
  selection_.select(IndexSet({1}));
  EXPECT_EQ(selection_.singleRow(), 1u);
  EXPECT_EQ(selection_.singleFile()->filePath, "1");
  selection_.select(IndexSet({1, 2}));
  EXPECT_EQ(selection_.singleRow(), std::nullopt);
  EXPECT_EQ(selection_.singleFile(), nullptr);
  EXPECT_EQ(selection_.firstFile()->filePath, "1");
}

}  // namespace
}  // namespace quillet
