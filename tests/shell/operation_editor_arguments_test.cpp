// Arguments that no panel gives.
#include <gtest/gtest.h>

#include "shell/application_fixture.h"
#include "shell/operation_editor.h"

namespace quillet {
namespace {

class OperationEditorArguments : public testing::ApplicationTest {
 protected:
  OperationEditor& editor() { return application().operationEditor(); }
};

TEST_F(OperationEditorArguments, OnlyTheEndsAreWrittenIntoADictionary) {
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

TEST_F(OperationEditorArguments, TheStatusHasTheTitleOfTheOperationOrNone) {
  editor().updateStatusLabel(361, 7, OperationEditor::Added::Yes);
  EXPECT_TRUE(application().statusLine().text() ==
              u"Set Final Number of Columns operation added for 7 input file(s).");
  editor().updateStatusLabel(304, -1, OperationEditor::Added::No);
  EXPECT_TRUE(application().statusLine().text() == u" operation updated for -1 input file(s).");
  EXPECT_EQ(application().statusLine().type(), 0);
}

}  // namespace
}  // namespace quillet
