// What no panel asks for; the rest is tested through the panels.
#include "shell/operation_editor.h"

#include <gtest/gtest.h>

#include "shell/application_fixture.h"

namespace quillet {
namespace {

class OperationEditorTest : public testing::ApplicationTest {
 protected:
  void addFile() { add({home_.write("a.csv", "x,y\n")}); }
  OperationList operations() { return *application().shared().files->at(0)->operations; }
  OperationEditor& editor() { return application().operationEditor(); }
};

TEST_F(OperationEditorTest, ACodeWithoutAPanelOfItsOwnIsAddedAlone) {
  for (const std::int64_t code : {0, 101, 304, 311, 901, 999}) {
    if (application().inputFileList().count() == 0) addFile();
    const std::size_t before = operations().size();
    editor().addOperation(code, 0);
    ASSERT_EQ(operations().size(), before + 1) << code;
    EXPECT_EQ(operations()[before - 1], (OperationRecord{{"Code", code}})) << code;
  }
}

TEST_F(OperationEditorTest, NothingIsAddedBeyondTheListOfFiles) {
  addFile();
  editor().addOperation(201, 1);
  editor().addOperation(201, SIZE_MAX);
  EXPECT_EQ(operations().size(), 2u);
}

TEST_F(OperationEditorTest, OnlyTheEndsAreWrittenIntoADictionary) {
  for (const std::int64_t code : {0, 102, 150, 201, 202, 203, 251, 301, 302, 303, 351, 352, 353, 361, 999}) {
    OperationRecord record{{"Code", code}};
    editor().updateOperationDictionary(record);
    EXPECT_EQ(record, (OperationRecord{{"Code", code}})) << code;
  }
  for (const std::int64_t code : {101, 901}) {
    OperationRecord record{{"Code", code}};
    editor().updateOperationDictionary(record);
    EXPECT_TRUE(record.has("IntArg2")) << code;
  }
}

TEST_F(OperationEditorTest, TheStatusHasTheTitleOfTheOperationOrNone) {
  editor().updateStatusLabel(361, 7, OperationEditor::Added::Yes);
  EXPECT_TRUE(application().statusLine().text() ==
              u"Set Final Number of Columns operation added for 7 input file(s).");
  editor().updateStatusLabel(304, -1, OperationEditor::Added::No);
  EXPECT_TRUE(application().statusLine().text() == u" operation updated for -1 input file(s).");
  EXPECT_EQ(application().statusLine().type(), 0);
}

}  // namespace
}  // namespace quillet
