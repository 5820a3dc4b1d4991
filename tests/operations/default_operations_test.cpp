#include "operations/default_operations.h"

#include <gtest/gtest.h>

#include "operations/operation_codes.h"

namespace quillet {
namespace {

TEST(DefaultOperations, FitTheFile) {
  struct Case {
    std::int64_t fileType;
    bool dontAutoSplit;
    std::int64_t initialFlags;
    std::int64_t finalFlags;
    std::u16string columnSeparator;
  };
  const Case cases[] = {
      {1, false, 17, 0, u"\t"}, {2, false, 49, 1, u","}, {3, false, 17, 0, u"|"}, {0, false, 49, 1, u","},
      {9, false, 49, 1, u","},  {1, true, 0, 0, u"\t"},  {2, true, 32, 1, u","},  {3, true, 0, 0, u"|"},
  };
  for (const Case& one : cases) {
    const OperationList expected = {
        {{"Code", OpInitial},
         {"IntArg1", one.initialFlags},
         {"IntArg2", 4},
         {"Arg1", u"\n"},
         {"Arg2", one.columnSeparator}},
        {{"Code", OpFinal},
         {"IntArg1", one.finalFlags},
         {"IntArg2", 4},
         {"IntArg3", 2},
         {"Arg1", u"\n"},
         {"Arg2", one.columnSeparator},
         {"Arg4", u"data.txt"}},
    };
    EXPECT_EQ(defaultOperations(u"data.txt", one.fileType, one.dontAutoSplit), expected)
        << one.fileType << ' ' << one.dontAutoSplit;
  }
}

}  // namespace
}  // namespace quillet
