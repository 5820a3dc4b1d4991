#include "shell/input_file_list.h"

#include <nlohmann/json.hpp>

#include "shell/application_fixture.h"

namespace quillet::testing {
namespace {

using nlohmann::json;

class InputFileListTest : public ApplicationTest {
 protected:
  InputFileList& list() { return application().inputFileList(); }
  const UserDefaults& defaults() { return *application().shared().defaults; }
  std::vector<std::string> logged() {
    std::vector<std::string> result;
    for (const auto& entry : application().shared().log->entries())
      result.push_back(std::to_string(entry.level) + " " + entry.text);
    return result;
  }
  static InputFile fileOf(const std::string& path, std::optional<OperationList> operations) {
    InputFile file;
    file.filePath = path;
    file.operations = std::move(operations);
    return file;
  }
};

TEST_F(InputFileListTest, StoresEntriesWithAPath) {
  OperationRecord record;
  record.set("Code", 202);
  list().setInputFiles({fileOf("/b b", OperationList{record}), InputFile{},
                        fileOf("relative", OperationList{}), fileOf("/a", std::nullopt)});
  list().storeLastOpenedFiles();
  EXPECT_EQ(defaults().value("LastOpenedFiles"), (json{"file:///b%20b", "file:///a"}));
  EXPECT_EQ(defaults().value("LastOperations"),
            (json{{"/b b", json::array({{{"Code", 202}}})}, {"relative", json::array()}}))
      << "operations are stored before the bookmark is made";
  EXPECT_EQ(logged(), std::vector<std::string>{"1 Could not create bookmark URL for storage to defaults"});
}

TEST_F(InputFileListTest, StoringReplacesAll) {
  list().setInputFiles({fileOf("/a", OperationList{})});
  list().storeLastOpenedFiles();
  list().setInputFiles({});
  list().storeLastOpenedFiles();
  EXPECT_EQ(defaults().value("LastOpenedFiles"), json::array());
  EXPECT_EQ(defaults().value("LastOperations"), json::object());
}

TEST_F(InputFileListTest, LoadingLogsInTheOrderOfTheListAndThenScans) {
  const std::string a = home_.write("a", "1\n");
  const std::string b = home_.write("b", "1\n");
  UserDefaults(home_.path("defaults.json"))
      .setValue("LastOpenedFiles", {"file://" + b, "file:///missing", 5, "file://" + home_.path(),
                                    "file://" + a, "file://" + b, "file://elsewhere" + a});
  list().loadLastOpenedFiles();
  EXPECT_EQ(listedPaths(), (std::vector<std::string>{b, a})) << "as they stood";
  EXPECT_EQ(logged(),
            (std::vector<std::string>{
                "1 File does not exist \"/missing\"", "1 Could not create bookmark URL from defaults",
                "1 File is actually a directory \"" + home_.path() + "\"",
                "1 Could not create bookmark URL from defaults", "0 Scanning \"b\"", "0 Scanning \"a\""}));
  EXPECT_TRUE(selectedRows().isEmpty());
}

TEST_F(InputFileListTest, LoadsNothingWithoutAList) {
  list().loadLastOpenedFiles();
  EXPECT_TRUE(logged().empty());
  EXPECT_TRUE(listedPaths().empty());
}

TEST_F(InputFileListTest, MovesAndRemovesWithoutSelecting) {
  add({"/a", "/b", "/c"});
  application().fileSelection().select(IndexSet({0, 2}));
  EXPECT_EQ(list().moveFiles(IndexSet({2, 7}), 0), 1u);
  EXPECT_EQ(listedPaths(), (std::vector<std::string>{"/c", "/a", "/b"}));
  EXPECT_EQ(selectedRows(), IndexSet({0, 2}));
  list().removeFiles(IndexSet({0}));
  EXPECT_EQ(listedPaths(), (std::vector<std::string>{"/a", "/b"}));
  EXPECT_EQ(selectedRows(), IndexSet({0})) << "but for rows that are gone";
  add({"/c", "/a"});
  EXPECT_EQ(listedPaths(), (std::vector<std::string>{"/a", "/b", "/c"}));
}

}  // namespace
}  // namespace quillet::testing
