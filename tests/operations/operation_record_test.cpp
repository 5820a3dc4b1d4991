#include "operations/operation_record.h"

#include <gtest/gtest.h>
#include <limits>

#include "operations/operation_codes.h"

namespace quillet {
namespace {

TEST(OperationRecord, ReadsAnIntegerFromANumberOrAText) {
  struct Case {
    OperationRecord::Value value;
    std::int64_t integer;
    std::u16string text;
  };
  const Case cases[] = {
      {std::int64_t{5}, 5, u"5"},
      {std::int64_t{-1}, -1, u"-1"},
      {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::min(),
       u"-9223372036854775808"},
      {u"5", 5, u"5"},
      {u" 12abc", 12, u" 12abc"},
      {u"word", 0, u"word"},  // it is there, so the value for an absent one does not count
      {u"", 0, u""},
      {u"99999999999999999999", std::numeric_limits<std::int64_t>::max(), u"99999999999999999999"},
  };
  for (const Case& one : cases) {
    const OperationRecord record{{"Arg5", one.value}};
    EXPECT_EQ(record.integer("Arg5", 77), one.integer);
    EXPECT_EQ(record.text("Arg5"), one.text);
    EXPECT_TRUE(record.has("Arg5"));
  }
}

TEST(OperationRecord, AnAbsentKeyReadsAsTheReaderSays) {
  const OperationRecord record;
  EXPECT_EQ(record.integer("IntArg1", -1), -1);
  EXPECT_EQ(record.text("Arg1"), u"");
  EXPECT_FALSE(record.has("Arg1"));
  EXPECT_EQ(record.code(), 0);
  EXPECT_TRUE(record.items().empty());
}

TEST(OperationRecord, KeepsItsItemsInTheOrderOfTheKeys) {
  OperationRecord record{{"IntArg1", 3}, {"Code", OpTrimLine}, {"Arg1", u"x"}};
  record.set("Arg2", u"y");
  record.set("Arg1", u"z");
  const std::vector<std::pair<std::string, OperationRecord::Value>> expected = {
      {"Arg1", u"z"}, {"Arg2", u"y"}, {"Code", std::int64_t{202}}, {"IntArg1", std::int64_t{3}}};
  EXPECT_EQ(record.items(), expected);
  EXPECT_EQ(record.code(), 202);
}

TEST(OperationRecord, ForgetsAKey) {
  OperationRecord record{{"Code", OpTrimLine}, {"Arg1", u"x"}};
  record.remove("Arg1");
  record.remove("Arg1");
  record.remove("Missing");
  EXPECT_EQ(record, (OperationRecord{{"Code", OpTrimLine}}));
}

TEST(OperationRecord, EqualsByKeysAndValues) {
  const OperationRecord record{{"Code", OpTrimLine}, {"Arg1", u"x"}};
  EXPECT_EQ(record, (OperationRecord{{"Arg1", u"x"}, {"Code", OpTrimLine}}));
  EXPECT_NE(record, (OperationRecord{{"Code", OpTrimLine}}));
  EXPECT_NE(record, (OperationRecord{{"Code", OpTrimLine}, {"Arg1", u"y"}}));
}

TEST(OperationRecord, AFlagIsSetWhenAllItsBitsAre) {
  EXPECT_TRUE(hasFlags(17, SplitIntoLines));
  EXPECT_TRUE(hasFlags(17, SplitIntoLines | SplitIntoColumns));
  EXPECT_FALSE(hasFlags(16, SplitIntoLines | SplitIntoColumns));
  EXPECT_FALSE(hasFlags(17, RemoveQuotes));
}

TEST(OperationRecord, TheMiddleOfAListIsWithoutItsEnds) {
  OperationList list;
  EXPECT_TRUE(middleRecords(list).empty());
  list.push_back({{"Code", OpInitial}});
  EXPECT_TRUE(middleRecords(list).empty());
  list.push_back({{"Code", OpFinal}});
  EXPECT_TRUE(middleRecords(list).empty());
  list.insert(list.begin() + 1, {{"Code", OpTrimLine}});
  ASSERT_EQ(middleRecords(list).size(), 1u);
  EXPECT_EQ(&middleRecords(list)[0], &list[1]);
}

}  // namespace
}  // namespace quillet
