#include "shell/table_keys.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(TableKeys, EachTableSwallowsItsOwn) {
  struct Case {
    const char* table;
    bool space;
    bool returnKey;
    bool paste;
  };
  const Case cases[] = {
      {"filesTableView", true, false, true},          {"operationsTableView", false, false, false},
      {"logTableView", false, true, false},           {"previewTableView", false, true, false},
      {"previewOutputTableView", false, true, false}, {"", false, false, false},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(swallowsKey(one.table, 32), one.space) << one.table;
    EXPECT_EQ(swallowsKey(one.table, 13), one.returnKey) << one.table;
    EXPECT_FALSE(swallowsKey(one.table, u'a')) << one.table;
    EXPECT_FALSE(swallowsKey(one.table, 0xF700)) << one.table;
    EXPECT_EQ(swallowsPaste(one.table), one.paste) << one.table;
  }
}

}  // namespace
}  // namespace quillet
