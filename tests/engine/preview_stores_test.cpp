#include "engine/preview_stores.h"

#include <gtest/gtest.h>

#include "engine/preview_feed.h"

namespace quillet {
namespace {

using Rows = PreviewStores::Rows;
using Row = PreviewStores::Row;
constexpr auto kInput = PreviewStores::Side::Input;
constexpr auto kOutput = PreviewStores::Side::Output;

TEST(PreviewStores, KeepRowsOfTwoSides) {
  PreviewStores stores;
  stores.addRow(kInput, {u"a", u"b"});
  stores.addRow(kInput, {u"c"});
  stores.addRow(kOutput, {u"x", u"y", u"z"});
  EXPECT_EQ(stores.content().inputRows, (Rows{{u"a", u"b"}, {u"c"}}));
  EXPECT_EQ(stores.content().outputRows, (Rows{{u"x", u"y", u"z"}}));
  EXPECT_EQ(stores.rowCount(kInput), 2u);
  EXPECT_EQ(stores.longestRow(kInput), 2u);
  EXPECT_EQ(stores.longestRow(kOutput), 3u);
  EXPECT_EQ(stores.rows(kInput, 1, 5), (Rows{{u"c"}}));
  EXPECT_EQ(stores.rows(kInput, 0, 1), (Rows{{u"a", u"b"}}));
  EXPECT_EQ(stores.rows(kInput, 2, 1), Rows{});
  EXPECT_EQ(stores.rows(kInput, 9, 9), Rows{});
  EXPECT_EQ(stores.cellCount(kInput, 0), 2u);
  EXPECT_EQ(stores.cellCount(kOutput, 0), 3u);
  EXPECT_EQ(stores.cellCount(kInput, 2), std::nullopt);
  stores.clearInputRows();
  EXPECT_EQ(stores.rowCount(kInput), 0u);
  EXPECT_EQ(stores.longestRow(kInput), 0u);
  EXPECT_EQ(stores.rowCount(kOutput), 1u);
}

TEST(PreviewStores, AreEmptyAfterAReset) {
  PreviewStores stores;
  stores.addRow(kInput, {u"a"});
  stores.addRow(kOutput, {u"a"});
  stores.setInputString(u"raw");
  stores.appendOutput(u"out");
  stores.appendOutput(u"put");
  EXPECT_EQ(stores.content().inputString, u"raw");
  EXPECT_EQ(stores.content().outputString, u"output");
  stores.reset();
  const auto content = stores.content();
  EXPECT_TRUE(content.inputRows.empty() && content.outputRows.empty());
  EXPECT_TRUE(content.inputString.empty() && content.outputString.empty());
}

TEST(PreviewStores, GrowOneRowOfAFileThatIsNotSplitIntoLines) {
  PreviewStores stores;
  const std::u16string more = u"raw";
  stores.growFirstRow(kOutput, {u"first", u"second"}, &more);
  EXPECT_EQ(stores.content().outputRows, (Rows{{u"first", u"second"}}));  // the row as it is
  stores.growFirstRow(kOutput, {u"unused"}, &more);
  EXPECT_EQ(stores.content().outputRows, (Rows{{u"firstraw"}}));  // other cells are dropped
  stores.growFirstRow(kOutput, {u"unused"}, nullptr);
  EXPECT_EQ(stores.content().outputRows, (Rows{{u"firstraw"}}));
}

TEST(PreviewStores, LeaveAnEmptyFirstRow) {
  PreviewStores stores;
  const std::u16string more = u"raw";
  stores.growFirstRow(kInput, {}, &more);
  stores.growFirstRow(kInput, {u"x"}, &more);
  EXPECT_EQ(stores.content().inputRows, Rows{{}});
}

TEST(PreviewStores, GrowARowByWholeSequencesUpToTheLimit) {
  PreviewStores stores;
  const std::u16string head(PreviewStores::kTextUnits - 2, u'x');
  stores.addRow(kInput, {head});
  const std::u16string more = u"e\u0301\U0001F600abc";
  stores.growFirstRow(kInput, {}, &more);  // two sequences fit, whatever their length in units
  EXPECT_EQ(stores.content().inputRows, (Rows{{head + u"e\u0301\U0001F600"}}));
  stores.growFirstRow(kInput, {}, &more);
  EXPECT_EQ(stores.content().inputRows, (Rows{{head + u"e\u0301\U0001F600"}}));
}

OutputCells cellsOf(const std::vector<std::u16string_view>& cells, std::size_t quotedCount = 0) {
  return {cells, quotedCount, u","};
}

TEST(PreviewFeed, StoresCellsAsTheyGoOut) {
  PreviewStores stores;
  PreviewFeed feed(stores, PreviewFeed::Extent::Everything);
  const std::vector<std::u16string_view> cells = {u"a\"b", u"", u"c"};
  feed.addRow(kOutput, cellsOf(cells, 2), nullptr);
  EXPECT_EQ(stores.content().outputRows, (Rows{{u"\"a\"\"b\"", u"\"\"", u"c"}}));
}

TEST(PreviewFeed, GrowsTheRowOfAFileThatIsNotSplitIntoLines) {
  PreviewStores stores;
  PreviewFeed feed(stores, PreviewFeed::Extent::Everything);
  const std::vector<std::u16string_view> cells = {u"x", u"y"}, raw = {u"raw", u"unused"}, none;
  feed.addRow(kOutput, cellsOf(cells), &raw);
  feed.addRow(kOutput, cellsOf(cells), &raw);
  feed.addRow(kOutput, cellsOf(cells), &none);
  EXPECT_EQ(stores.content().outputRows, (Rows{{u"xraw"}}));
}

TEST(PreviewFeed, TakesAllOfAPreview) {
  PreviewStores stores;
  PreviewFeed feed(stores, PreviewFeed::Extent::Everything);
  const std::vector<std::u16string_view> cells = {u"a"};
  for (int i = 0; i < 1'500; ++i) feed.addRow(kInput, cellsOf(cells), nullptr);
  feed.appendOutput(std::u16string(40'000, u'x'));
  EXPECT_TRUE(feed.takesRows(kInput));
  EXPECT_TRUE(feed.takesOutput());
  feed.appendOutput(u"y");
  EXPECT_EQ(stores.rowCount(kInput), 1'500u);
  EXPECT_EQ(stores.content().outputString.size(), 40'001u);
}

TEST(PreviewFeed, TakesTheHeadOfARun) {
  PreviewStores stores;
  PreviewFeed feed(stores, PreviewFeed::Extent::Head);
  const std::vector<std::u16string_view> cells = {u"a"};
  for (int i = 0; i < 999; ++i) feed.addRow(kInput, cellsOf(cells), nullptr);
  EXPECT_TRUE(feed.takesRows(kInput));
  feed.addRow(kInput, cellsOf(cells), nullptr);
  EXPECT_FALSE(feed.takesRows(kInput));
  EXPECT_TRUE(feed.takesRows(kOutput));  // each side by itself
  feed.appendOutput(std::u16string(16'000, u'x'));
  EXPECT_TRUE(feed.takesOutput());
  feed.appendOutput(std::u16string(16'000, u'y'));
  EXPECT_FALSE(feed.takesOutput());
  feed.appendOutput(u"z");
  EXPECT_EQ(stores.content().outputString, std::u16string(16'000, u'x') + std::u16string(384, u'y'));
}

TEST(PreviewFeed, TakesFewRowsOfAGreatWidth) {
  PreviewStores stores;
  PreviewFeed feed(stores, PreviewFeed::Extent::Head);
  const std::u16string wide(16'384, u'x');
  const std::vector<std::u16string_view> cells(8, wide);
  int rows = 0;
  for (; feed.takesRows(kOutput) && rows < 1'000; ++rows) feed.addRow(kOutput, cellsOf(cells), nullptr);
  EXPECT_EQ(rows, 16);
}

TEST(PreviewFeed, APreviewHasABoundThatOnlyAbsurdRowsReach) {
  PreviewStores stores;
  PreviewFeed feed(stores, PreviewFeed::Extent::Everything);
  const std::u16string filler(95, u'x');
  const std::vector<std::u16string_view> cells(65'536, filler);
  int rows = 0;
  for (; feed.takesRows(kOutput) && rows < 10; ++rows) feed.addRow(kOutput, cellsOf(cells), nullptr);
  EXPECT_EQ(rows, 5);
  EXPECT_TRUE(feed.takesRows(kInput));
  for (int i = 0; i < 10; ++i) feed.appendOutput(std::u16string(4'000'000, u'x'));
  EXPECT_FALSE(feed.takesOutput());
  EXPECT_EQ(stores.content().outputString.size(), 33'554'432u);
}

}  // namespace
}  // namespace quillet
