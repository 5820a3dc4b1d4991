#include "shell/drag_and_drop.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

using Types = std::vector<DragType>;

TEST(DragAndDrop, TablesTakeADragByItsTypesAlone) {
  struct Case {
    Types types;
    int files;
    int operations;
    int rearrangeColumns;
  };
  const Case cases[] = {
      {{}, 0, 0, 0},
      {{DragType::FileNames}, 1, 0, 0},
      {{DragType::String}, 1, 0, 0},
      {{DragType::InputFiles}, 1, 0, 0},
      {{DragType::Operations}, 0, 1, 0},
      {{DragType::RearrangeColumns}, 0, 0, 1},
      {{DragType::Operations, DragType::RearrangeColumns}, 0, 1, 1},
      {{DragType::Operations, DragType::String}, 1, 1, 0},
  };
  for (const auto& one : cases) {
    const auto answer = [&](DropTable table) { return static_cast<int>(validateDrop(table, one.types)); };
    EXPECT_EQ(answer(DropTable::Files), one.files);
    EXPECT_EQ(answer(DropTable::Operations), one.operations);
    EXPECT_EQ(answer(DropTable::RearrangeColumns), one.rearrangeColumns);
  }
}

TEST(DragAndDrop, PrivateTypesHaveNames) {
  EXPECT_EQ(pasteboardNameOf(dragTypeOfRows(DropTable::Files)), "InputFilesDataType");
  EXPECT_EQ(pasteboardNameOf(dragTypeOfRows(DropTable::Operations)), "OperationsDataType");
  EXPECT_EQ(pasteboardNameOf(dragTypeOfRows(DropTable::RearrangeColumns)), "RearrangeColumnsDataType");
  EXPECT_EQ(pasteboardNameOf(DragType::String), "");
  EXPECT_EQ(privateDragTypeNamed("OperationsDataType"), DragType::Operations);
  EXPECT_EQ(privateDragTypeNamed("operationsdatatype"), std::nullopt);
  EXPECT_EQ(privateDragTypeNamed(""), std::nullopt);
}

}  // namespace
}  // namespace quillet
