#include "operations/list_rules.h"

#include <gtest/gtest.h>

#include "operations/operation_codes.h"

namespace quillet {
namespace {

using Problems = std::vector<std::u16string>;

OperationList listOf(std::initializer_list<std::int64_t> codes) {
  OperationList list;
  for (const std::int64_t code : codes) list.push_back({{"Code", code}});
  return list;
}

TEST(ListRules, FiveOperationsMayStandOnlyOnce) {
  const std::pair<std::int64_t, std::u16string> cases[] = {
      {351, u"a%@.txt: Only one Set Initial Number of Columns operation is allowed."},
      {361, u"a%@.txt: Only one Set Final Number of Columns operation is allowed."},
      {353, u"a%@.txt: Only one Join Columns operation is allowed."},
      {251, u"a%@.txt: Only one Join Lines operation is allowed."},
      {352, u"a%@.txt: Only one Rearrange Columns operation is allowed."},
  };
  for (const auto& [code, message] : cases) {
    EXPECT_EQ(problemsBeforeRun(listOf({101, code, 901}), u"a%@.txt"), Problems{});
    EXPECT_EQ(problemsBeforeRun(listOf({101, code, 202, code, 901}), u"a%@.txt"), Problems{message});
    EXPECT_EQ(problemsBeforeRun(listOf({code, code, code}), u"a%@.txt"), Problems{message});
  }
}

TEST(ListRules, AllOthersMayStandOften) {
  EXPECT_EQ(problemsBeforeRun({}, u"a"), Problems{});
  for (const std::int64_t code : {0, 101, 150, 201, 202, 203, 301, 302, 303, 901})
    EXPECT_EQ(problemsBeforeRun(listOf({code, code}), u"a"), Problems{}) << code;
}

TEST(ListRules, MessagesHaveAnOrderOfTheirOwn) {
  const Problems problems =
      problemsBeforeRun(listOf({101, 352, 251, 353, 361, 351, 352, 251, 353, 361, 351, 901}), u"f");
  EXPECT_EQ(problems, (Problems{u"f: Only one Set Initial Number of Columns operation is allowed.",
                                u"f: Only one Set Final Number of Columns operation is allowed.",
                                u"f: Only one Join Columns operation is allowed.",
                                u"f: Only one Join Lines operation is allowed.",
                                u"f: Only one Rearrange Columns operation is allowed."}));
}

}  // namespace
}  // namespace quillet
