#include "engine/input_files.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

InputFiles::Entry entry(const std::string& path) {
  auto file = std::make_shared<InputFile>();
  file->filePath = path;
  return file;
}

std::vector<std::string> paths(const InputFiles& files) {
  std::vector<std::string> result;
  for (const auto& file : files.all()) result.push_back(file->filePath);
  return result;
}

TEST(InputFiles, InsertsAsABlockAndBehindTheEndAtTheEnd) {
  InputFiles files;
  files.insert(5, {entry("a"), entry("b")});
  files.insert(1, {entry("c"), entry("d")});
  EXPECT_EQ(paths(files), (std::vector<std::string>{"a", "c", "d", "b"}));
  EXPECT_EQ(files.at(1)->filePath, "c");
  EXPECT_EQ(files.at(4), nullptr);
}

TEST(InputFiles, AnEntryInHandIsNotChangedByAnEdit) {
  InputFiles files;
  files.insert(0, {entry("a")});
  const auto inHand = files.at(0);
  EXPECT_TRUE(files.setOperations(0, {{{"Code", std::int64_t{101}}}}));
  EXPECT_FALSE(inHand->operations);
  EXPECT_EQ(files.at(0)->operations->size(), 1u);
  EXPECT_FALSE(files.setOperations(1, {}));
}

TEST(InputFiles, ColumnsGoToTheFileThatTheyAreOf) {
  InputFiles files;
  files.insert(0, {entry("a")});
  files.setOperations(0, {{{"Code", std::int64_t{101}}}});
  files.setExpectedColumnsInLine(0, "a", {{0, u"x"}});
  EXPECT_EQ(files.at(0)->expectedColumnsInLine->size(), 1u);
  EXPECT_EQ(files.at(0)->operations->size(), 1u) << "an edit made meanwhile stays";
  files.replace(0, entry("b"));
  files.setExpectedColumnsInLine(0, "a", {{0, u"x"}});
  files.setExpectedColumnsInLine(1, "a", {{0, u"x"}});
  EXPECT_FALSE(files.at(0)->expectedColumnsInLine);
}

}  // namespace
}  // namespace quillet
