#include "engine/input_files.h"

#include <gtest/gtest.h>

#include "engine/job_fixture.h"

namespace quillet {
namespace {

InputFiles::Entry entry(const std::string& path) {
  InputFile file;
  file.filePath = path;
  return std::make_shared<InputFile>(file);
}

std::string pathsOf(const InputFiles& files) {
  std::string paths;
  for (const auto& one : files.all()) paths += *one->filePath;
  return paths;
}

TEST(InputFiles, AreAListThatIsEdited) {
  InputFiles files;
  EXPECT_EQ(files.count(), 0u);
  EXPECT_EQ(files.at(0), nullptr);
  files.insert(0, {entry("a"), entry("b")});
  files.insert(1, {entry("c")});
  files.insert(99, {entry("d")});
  EXPECT_EQ(pathsOf(files), "acbd");
  files.replace(3, entry("e"));
  files.replace(4, entry("f"));
  EXPECT_EQ(pathsOf(files), "acbe");
  EXPECT_EQ(files.at(1)->filePath, "c");
  EXPECT_EQ(files.at(4), nullptr);
  files.setAll({entry("z")});
  EXPECT_EQ(pathsOf(files), "z");
}

TEST(InputFiles, MoveRowsAsABlock) {
  InputFiles files;
  files.setAll({entry("a"), entry("b"), entry("c"), entry("d")});
  EXPECT_EQ(files.move(IndexSet({0, 3, 4, 9}), 2), 2u) << "two of them are there";
  EXPECT_EQ(pathsOf(files), "badc");
  EXPECT_EQ(files.move({}, 0), 0u);
  EXPECT_EQ(pathsOf(files), "badc");
}

TEST(InputFiles, GiveWhatIsRemoved) {
  InputFiles files;
  files.setAll({entry("a"), entry("b"), entry("c"), entry("d"), entry("e")});
  const auto removed = files.remove(IndexSet({0, 2, 3, 7}));
  ASSERT_EQ(removed.size(), 3u);
  EXPECT_EQ(*removed[0]->filePath + *removed[1]->filePath + *removed[2]->filePath, "acd");
  EXPECT_EQ(pathsOf(files), "be");
  EXPECT_TRUE(files.remove({}).empty());
  IndexSet all;
  all.addRange(0, INT64_MAX);
  EXPECT_EQ(files.remove(all).size(), 2u);
  EXPECT_EQ(files.count(), 0u);
}

TEST(InputFiles, ReplaceAnEntryThatChanges) {
  InputFiles files;
  files.setAll({entry("a")});
  const auto before = files.at(0);
  EXPECT_TRUE(files.setOperations(0, {testing::record(OpInitial)}));
  EXPECT_FALSE(files.setOperations(1, {}));
  EXPECT_FALSE(before->operations.has_value());
  ASSERT_TRUE(files.at(0)->operations.has_value());
  EXPECT_EQ(files.at(0)->operations->size(), 1u);
  files.setExpectedColumnsInLine(0, "a", {{0, u"x"}});
  EXPECT_EQ(files.at(0)->expectedColumnsInLine, (std::vector<ColumnEntry>{{0, u"x"}}));
  EXPECT_EQ(files.at(0)->operations->size(), 1u);  // what was edited meanwhile stays
}

TEST(InputFiles, TakeColumnsOnlyForTheFileThatTheyAreOf) {
  InputFiles files;
  files.setAll({entry("a")});
  files.setExpectedColumnsInLine(0, "b", {{0, u"x"}});
  files.setExpectedColumnsInLine(1, "a", {{0, u"x"}});
  EXPECT_FALSE(files.at(0)->expectedColumnsInLine.has_value());
}

}  // namespace
}  // namespace quillet
