#include "clipboard/clipboard_data.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/text_search.h"
#include "platform/unicode_text.h"

namespace quillet {
namespace {

using Events = std::vector<std::string>;

// One list for both, so that the order of the two can be seen. Long texts are told by their length.
std::string shortened(std::u16string_view text) {
  return text.size() > 1000 ? std::to_string(text.size()) + " units" : toUtf8(text);
}

class RecordingDisplay final : public ClipboardDisplay {
 public:
  explicit RecordingDisplay(Events& events) : events_(events) {}
  void shows(const ClipboardData& data) { data_ = &data; }

  void updateClipboardDataWindowTextColumns(bool showsGrid) override {
    events_.emplace_back(showsGrid ? "show grid" : "show text");
  }
  void resizeClipboardTableViewColumns() override {
    columnCount_ = data_->clipboardDataArray().maxRowLength();
    events_.push_back("columns " + std::to_string(columnCount_));
  }
  std::size_t dataColumnCount() const override { return columnCount_; }
  void reloadTable() override {
    events_.push_back("reload " + std::to_string(data_->clipboardDataArray().rowCount()));
  }
  void setTitle(std::u16string title) override { events_.push_back("title " + toUtf8(title)); }
  void setText(std::u16string_view text) override { events_.push_back("text " + shortened(text)); }
  void setStatus(std::u16string text, int type) override {
    events_.push_back("status " + std::to_string(type) + " " + toUtf8(text));
  }
  void setToolbarItemsEnabled(bool enabled) override {
    events_.emplace_back(enabled ? "items on" : "items off");
  }
  void showAlert(std::u16string_view title, std::u16string_view message) override {
    events_.push_back("alert " + toUtf8(title) + "|" + toUtf8(message));
  }
  void showErrorAlert(std::u16string_view message) override { events_.push_back("error " + toUtf8(message)); }

 private:
  Events& events_;
  const ClipboardData* data_ = nullptr;
  std::size_t columnCount_ = 0;
};

class RecordingPasteboard final : public Pasteboard {
 public:
  explicit RecordingPasteboard(Events& events) : events_(events) {}
  std::optional<std::u16string> readString() override {
    events_.emplace_back("read");
    return text;
  }
  bool writeString(std::u16string_view written) override {
    events_.push_back("write " + shortened(written));
    if (!fails) text = written;
    return !fails;
  }

  std::optional<std::u16string> text;
  bool fails = false;

 private:
  Events& events_;
};

// Rows between "/", cells between "|".
std::string drawn(const ClipboardGrid& grid) {
  std::string result;
  for (std::size_t row = 0; row < grid.rowCount(); ++row) {
    if (row) result += "/";
    for (std::size_t column = 0; column < grid.row(row).cellCount(); ++column) {
      if (column) result += "|";
      result += toUtf8(grid.row(row).cell(column));
    }
  }
  return result;
}

OperationRecord record(std::int64_t code) {
  return {{"Code", code}};
}
OperationRecord split(std::u16string_view lines, std::u16string_view columns) {
  return {{"Code", std::int64_t{102}}, {"Arg1", std::u16string(lines)}, {"Arg2", std::u16string(columns)}};
}
OperationRecord edit(std::int64_t row, std::int64_t column, std::u16string_view text) {
  return {{"Code", std::int64_t{401}}, {"IntArg1", row}, {"IntArg2", column}, {"Arg1", std::u16string(text)}};
}
OperationRecord join(std::u16string_view lines, std::u16string_view columns) {
  return {{"Code", std::int64_t{902}}, {"Arg1", std::u16string(lines)}, {"Arg2", std::u16string(columns)}};
}
OperationRecord onList(std::int64_t code, std::u16string_view list) {
  return {{"Code", code}, {"Arg1", std::u16string(list)}};
}
const OperationRecord kFlip = record(416);

class ClipboardDataTest : public ::testing::Test {
 protected:
  ClipboardDataTest() { display_.shows(data_); }

  void refresh(std::u16string text) {
    pasteboard_.text = std::move(text);
    data_.refreshDataFromClipboard();
    events_.clear();
  }
  // The grid is split at "/" and "|" first.
  void begin(std::u16string text) {
    refresh(std::move(text));
    perform(split(u"/", u"|"));
    events_.clear();
  }
  void perform(const OperationRecord& operation) { data_.performClipboardDataOperation(operation); }
  std::string grid() const { return drawn(data_.clipboardDataArray()); }
  std::string string() const { return toUtf8(data_.clipboardDataString()); }
  std::string selection() const {
    return toUtf8(data_.selection().selected2DIndexSet().stringPlus1FromAllIndexes());
  }
  std::string title() const {
    for (auto event = events_.rbegin(); event != events_.rend(); ++event)
      if (event->starts_with("title ")) return event->substr(6);
    return "none";
  }
  Events performed(const OperationRecord& operation) {
    events_.clear();
    perform(operation);
    return events_;
  }
  Events undone() {
    events_.clear();
    EXPECT_TRUE(data_.undoManager().undo());
    return events_;
  }

  Events events_;
  RecordingDisplay display_{events_};
  RecordingPasteboard pasteboard_{events_};
  ClipboardData data_{pasteboard_, display_};
};

// Refresh.

TEST_F(ClipboardDataTest, HoldsNothingAtFirst) {
  EXPECT_TRUE(events_.empty());
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 0u);
  EXPECT_FALSE(data_.hasClipboardDataString());
  EXPECT_EQ(string(), "");
  EXPECT_TRUE(data_.clipboardDataOperationsArray().empty());
  EXPECT_TRUE(data_.selection().selected2DIndexSet().isEmpty());
  EXPECT_FALSE(data_.undoManager().canUndo());
}

TEST_F(ClipboardDataTest, RefreshTakesItsSteps) {
  begin(u"a|b");
  perform(kFlip);
  data_.selection().mouseDown(0, 2, 1, {});
  data_.selection().selected2DIndexSet().addInfiniteRowIndex(0);
  events_.clear();
  pasteboard_.text = u"x|y/z";
  data_.refreshDataFromClipboard();
  EXPECT_EQ(events_, (Events{"read", "show text", "items off", "status 0 Refreshed from macOS Clipboard.",
                             "columns 1", "reload 1",
                             "title Clipboard Data - 1 line, 1 column (5 characters total)", "text x|y/z"}));
  EXPECT_EQ(grid(), "x|y/z");
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 1u) << "one row of one cell";
  EXPECT_EQ(string(), "x|y/z");
  EXPECT_TRUE(data_.clipboardDataOperationsArray().empty());
  EXPECT_EQ(selection(), "");
  EXPECT_TRUE(data_.selection().selected2DIndexSet().isEmpty());
  EXPECT_EQ(data_.selection().focusedRowIndex(), -1);
  EXPECT_EQ(data_.selection().focusedColumnIndex(), -1);
}

TEST_F(ClipboardDataTest, RefreshWithoutTextTakesItsLastStepOnly) {
  data_.refreshDataFromClipboard();
  EXPECT_EQ(events_, (Events{"read", "columns 0", "reload 0", "title Clipboard Data", "text "}));
  EXPECT_FALSE(data_.hasClipboardDataString());

  begin(u"a|b/c");
  data_.selection().mouseDown(0, 2, 1, {});
  pasteboard_.text.reset();
  events_.clear();
  data_.refreshDataFromClipboard();
  EXPECT_EQ(events_,
            (Events{"read", "columns 2", "reload 2",
                    "title Clipboard Data - 2 lines, 2 columns (5 characters total)", "text a|b/c"}));
  EXPECT_EQ(grid(), "a|b/c");
  EXPECT_EQ(selection(), "Cells: (1, 2)");
  EXPECT_EQ(data_.selection().focusedColumnIndex(), 1);
  EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 1u);
}

TEST_F(ClipboardDataTest, AnEmptyTextIsAText) {
  begin(u"a");
  refresh(u"");
  EXPECT_TRUE(data_.hasClipboardDataString());
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 1u);
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 1u);
}

TEST_F(ClipboardDataTest, RefreshTakesAHundredMillionCharactersAndNotOneMore) {
  refresh(std::u16string(100'000'000, u'x'));
  EXPECT_EQ(data_.clipboardDataString().size(), 100'000'000u);
  pasteboard_.text->front() = u'y';
  pasteboard_.text->push_back(u'y');
  data_.refreshDataFromClipboard();
  EXPECT_EQ(events_, (Events{"read",
                             "alert Too many characters|This app is limited to 100000000 characters.\n"
                             "100000001 characters were found on the clipboard.",
                             "columns 1", "reload 1",
                             "title Clipboard Data - 1 line, 1 column (100000000 characters total)",
                             "text 100000000 units"}));
  EXPECT_EQ(data_.clipboardDataString().front(), u'x');
  EXPECT_EQ(data_.clipboardDataArray().row(0).cell(0).front(), u'x');
}

TEST_F(ClipboardDataTest, RefreshTouchesNeitherTheUndoNorTheSnapshot) {
  begin(u"a|b");
  perform(kFlip);
  EXPECT_EQ(grid(), "b|a");
  refresh(u"new");
  EXPECT_TRUE(data_.undoManager().undoActionName() == u"Flip Horizontal");
  EXPECT_TRUE(data_.undoManager().undo());
  EXPECT_EQ(grid(), "a|b") << "the grid from before the operation, over the new text";
  EXPECT_EQ(string(), "new");
  EXPECT_TRUE(data_.undoManager().redo());
  EXPECT_EQ(grid(), "b|a");
}

// The title.

TEST_F(ClipboardDataTest, TheTitleCountsLinesColumnsAndCharacters) {
  const struct {
    std::u16string text;
    std::string title;
  } cases[] = {
      {u"", "Clipboard Data - 1 line, 1 column (0 characters total)"},
      {u"x", "Clipboard Data - 1 line, 1 column (1 character total)"},
      {u"x|", "Clipboard Data - 1 line, 2 columns (2 characters total)"},
      {u"/", "Clipboard Data - 2 lines, 1 column (1 character total)"},
      {u"a/b|c|d/", "Clipboard Data - 3 lines, 3 columns (8 characters total)"},
      {u"\U0001F600", "Clipboard Data - 1 line, 1 column (2 characters total)"},
  };
  for (const auto& one : cases) {
    refresh(one.text);
    perform(split(u"/", u"|"));
    EXPECT_EQ(title(), one.title);
  }
}

// The table says how many columns there are, as they were rebuilt last.
TEST_F(ClipboardDataTest, TheTitleIsAsFreshAsTheColumns) {
  begin(u"a|b");
  perform(edit(0, 4, u"x"));
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 5u);
  EXPECT_EQ(title(), "Clipboard Data - 1 line, 2 columns (3 characters total)");
}

// Split.

TEST_F(ClipboardDataTest, SplitTakesItsSteps) {
  refresh(u"a|b/c");
  EXPECT_EQ(performed(split(u"/", u"|")),
            (Events{"columns 2", "show grid", "reload 2",
                    "title Clipboard Data - 2 lines, 2 columns (5 characters total)",
                    "status 0 Split operation performed."}));
  EXPECT_EQ(grid(), "a|b/c");
  EXPECT_TRUE(data_.undoManager().undoActionName() == u"Split");
  EXPECT_EQ(undone(), (Events{"reload 1", "status 0 Undo Last operation performed.", "show text"}));
  EXPECT_EQ(grid(), "a|b/c");
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 1u);
}

TEST_F(ClipboardDataTest, SplitReadsTheFlagOfQuotesAndAbsentSeparatorsAsEmpty) {
  refresh(u"\"a|b\"|c");
  perform(split(u"", u"|"));
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 3u);
  OperationRecord removing = split(u"", u"|");
  for (const std::int64_t flags : {16, 31, 64, 0}) {
    removing.set("IntArg1", flags);
    perform(removing);
    EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 3u) << flags;
  }
  for (const std::int64_t flags : {32, 33, 49}) {
    removing.set("IntArg1", flags);
    perform(removing);
    EXPECT_EQ(grid(), "a|b|c") << flags;
    EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 2u) << flags;
  }
  perform(record(102));
  EXPECT_EQ(grid(), "\"a|b\"|c");
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 1u);
}

TEST_F(ClipboardDataTest, SplitWithoutATextDoesNothingAndCounts) {
  EXPECT_EQ(performed(split(u"/", u"|")),
            (Events{"reload 0", "title Clipboard Data", "status 0 Split operation performed."}));
  EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 1u);
  EXPECT_EQ(undone(), (Events{"reload 0", "status 0 Undo Last operation performed.", "show text"}));
}

TEST_F(ClipboardDataTest, SplitStartsFromTheTextAndKeepsTheSelection) {
  begin(u"a|b/c");
  perform(edit(0, 0, u"x"));
  data_.selection().mouseDown(1, 1, 1, {});
  perform(split(u"/", u"|"));
  EXPECT_EQ(grid(), "a|b/c") << "the edit is dropped";
  EXPECT_EQ(selection(), "Cells: (2, 1)");
  EXPECT_EQ(data_.selection().focusedRowIndex(), 1);
}

TEST_F(ClipboardDataTest, SplitMakesAsManyLinesAsItMayAndNotOneMore) {
  begin(u"a|b");
  const std::u16string most(1'048'575, u'/');
  refresh(most);
  perform(split(u"/", u""));
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 1'048'576u);

  begin(u"a|b");
  pasteboard_.text = most + u"/";
  data_.refreshDataFromClipboard();
  EXPECT_EQ(performed(split(u"/", u"")),
            (Events{"alert Too many lines|This app is limited to 1048576 lines.\n"
                    "1048577 lines were found on the clipboard.",
                    "reload 1", "title Clipboard Data - 1 line, 1 column (1048576 characters total)",
                    "status 2 Too many lines"}));
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 1u);
  EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 1u);
  EXPECT_TRUE(data_.undoManager().undoActionName() == u"Split");
  EXPECT_EQ(undone(), (Events{"reload 1", "status 0 Undo Last operation performed.", "show text"}));
}

TEST_F(ClipboardDataTest, SplitMakesAsManyColumnsAsItMayAndNotOneMore) {
  const std::u16string most(16'383, u'|');
  begin(u"a/" + most);
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 16'384u);

  refresh(u"a/b|c/" + most + u"|/d");
  EXPECT_EQ(performed(split(u"/", u"|")),
            (Events{"alert Too many columns|This app is limited to 16384 columns.\n"
                    "16385 columns were found on the clipboard on line 3.",
                    "columns 2", "show grid", "reload 2",
                    "title Clipboard Data - 2 lines, 2 columns (16392 characters total)",
                    "status 2 Too many columns"}));
  EXPECT_EQ(grid(), "a/b|c") << "what came before the line stays";
  EXPECT_TRUE(data_.undoManager().canUndo());
  perform(split(u"/", u""));
  EXPECT_EQ(events_.back(), "status 0 Split operation performed.") << "an error is of one operation";
}

// Join.

TEST_F(ClipboardDataTest, JoinTakesItsSteps) {
  begin(u"a|b/c");
  data_.selection().selected2DIndexSet().addInfiniteRowIndex(1);
  EXPECT_EQ(performed(join(u"\n", u",")),
            (Events{"show text", "text a,b\nc", "write a,b\nc", "reload 0", "title Clipboard Data",
                    "status 0 Join operation performed."}));
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 0u);
  EXPECT_EQ(string(), "a,b\nc");
  EXPECT_EQ(*pasteboard_.text, u"a,b\nc");
  EXPECT_EQ(selection(), "Lines: 2");
  EXPECT_EQ(undone(), (Events{"reload 2", "status 0 Undo Last operation performed.", "show grid"}));
  EXPECT_EQ(grid(), "a|b/c");
  EXPECT_EQ(string(), "a,b\nc") << "the text and the clipboard keep what was joined";
  EXPECT_EQ(*pasteboard_.text, u"a,b\nc");
}

TEST_F(ClipboardDataTest, ASplitAfterAJoinCutsTheJoinedText) {
  begin(u"a|b/c");
  perform(join(u";", u":"));
  perform(split(u";", u":"));
  EXPECT_EQ(grid(), "a|b/c");
  EXPECT_EQ(string(), "a:b;c");
}

TEST_F(ClipboardDataTest, JoinQuotesByItsFlag) {
  OperationRecord quoting = join(u"/", u"|");
  const struct {
    std::int64_t flags;
    std::string text;
  } cases[] = {{0, "a\"|b"}, {1, "\"a\"\"\"|\"b\""}, {2, "a\"|b"}, {3, "\"a\"\"\"|\"b\""}};
  for (const auto& one : cases) {
    begin(u"a\"|b");
    quoting.set("IntArg1", one.flags);
    perform(quoting);
    EXPECT_EQ(string(), one.text) << one.flags;
  }
}

TEST_F(ClipboardDataTest, AClipboardThatCannotBeWrittenIsTold) {
  begin(u"a|b");
  pasteboard_.fails = true;
  EXPECT_EQ(performed(join(u"\n", u",")),
            (Events{"show text", "text a,b", "write a,b", "error Could not write to pasteboard", "reload 0",
                    "title Clipboard Data", "status 2 Could not write to pasteboard"}));
  EXPECT_EQ(string(), "a,b");
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 0u) << "the grid goes all the same";
  EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 2u);
  EXPECT_TRUE(data_.undoManager().undo());
  EXPECT_EQ(grid(), "a|b");
}

TEST_F(ClipboardDataTest, JoinBeforeTheFirstRefreshMakesAnEmptyText) {
  perform(join(u"\n", u","));
  EXPECT_TRUE(data_.hasClipboardDataString());
  EXPECT_EQ(*pasteboard_.text, u"");
}

// Edit Cell.

TEST_F(ClipboardDataTest, EditingOutOfRangeIsListedAndUndone) {
  for (const auto& [row, column] :
       {std::pair<std::int64_t, std::int64_t>{2, 0}, {-1, 0}, {0, -1}, {0, 1'048'576}}) {
    begin(u"a|b/c");
    EXPECT_EQ(performed(edit(row, column, u"x")),
              (Events{"reload 2", "title Clipboard Data - 2 lines, 2 columns (5 characters total)",
                      "status 2 Index out of range"}));
    EXPECT_EQ(grid(), "a|b/c");
    EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 2u);
    EXPECT_TRUE(data_.undoManager().undoActionName() == u"Edit Cell");
    EXPECT_EQ(undone(), (Events{"reload 2", "status 0 Undo Last operation performed."}));
    EXPECT_EQ(grid(), "a|b/c");
  }
}

// What follows from each code. The grid has three lines and three columns; the second line, the second column
// and the first cell are selected.

struct Following {
  OperationRecord operation;
  std::string selection;
  bool rebuilds;
  bool rebuildsAfterUndo;
  std::string shownAfterUndo = {};
};

OperationRecord merge(std::int64_t code, std::u16string_view list) {
  return {{"Code", code}, {"Arg1", u"-"}, {"Arg2", std::u16string(list)}};
}

const std::string kAll = "Lines: 2; Columns: 2; Cells: (1, 1)";
const std::string kCells = "Cells: (1, 1)";

// "Lines: 1; Columns: 2; Cells: (1, 1)" and so on.
std::string selected(const std::string& lines, const std::string& columns) {
  return (lines.empty() ? "" : "Lines: " + lines + "; ") +
         (columns.empty() ? "" : "Columns: " + columns + "; ") + kCells;
}

std::vector<Following> whatFollows() {
  const OperationRecord cells = {{"Code", std::int64_t{0}},
                                 {"IntArg1", std::int64_t{0}},
                                 {"IntArg2", std::int64_t{0}},
                                 {"Arg1", u"Cells: (1, 1)"},
                                 {"Arg2", u"a"},
                                 {"Arg3", u"x"}};
  OperationRecord trim = cells;
  trim.set("Code", std::int64_t{311});
  OperationRecord replace = cells;
  replace.set("Code", std::int64_t{312});
  const OperationRecord fill = {
      {"Code", std::int64_t{314}}, {"IntArg1", std::int64_t{0}}, {"Arg1", u"x"}, {"Arg2", u"Cells: (1, 1)"}};
  return {
      {trim, kAll, false, false},
      {replace, kAll, false, false},
      {fill, kAll, false, false},
      {edit(0, 0, u"x"), kAll, false, false},
      {record(402), kCells, true, true},
      {record(403), kCells, true, true},
      {record(404), kCells, false, false},
      {record(405), kCells, false, false},
      {onList(406, u"2"), selected("", "2"), true, true},
      {onList(407, u"2"), selected("2", ""), true, true},
      {record(408), kCells, true, true},
      {record(409), kCells, true, true},
      {record(410), kCells, false, false},
      {record(411), kCells, false, false},
      {onList(412, u"2"), selected("2", "1"), false, false},
      {onList(413, u"2"), selected("2", "3"), false, false},
      {onList(414, u"2"), selected("1", "2"), false, false},
      {onList(415, u"2"), selected("3", "2"), false, false},
      // A move that cannot be leaves the selection.
      {onList(412, u"1"), kAll, false, false},
      {onList(413, u"3"), kAll, false, false},
      {onList(414, u""), kAll, false, false},
      {onList(415, u"3"), kAll, false, false},
      {record(416), kCells, false, false},
      {record(417), kCells, false, false},
      {record(418), kCells, true, true},
      {merge(419, u"2, 3"), selected("2", "2"), true, true},
      {merge(420, u"1, 3"), selected("2", "2"), true, true},
      {merge(421, u"1, 3"), selected("1", "2"), false, false},
      {merge(422, u"1, 3"), selected("2", "2"), false, false},
      {onList(423, u"2"), kCells, true, true},
      {onList(424, u"2"), kCells, true, true},
      {join(u"/", u"|"), kAll, false, false, "show grid"},
      {record(998), kAll, false, false},
      {record(0), kAll, false, false},
      {record(425), kAll, false, false},
      {record(-1), kAll, false, false},
      {OperationRecord(), kAll, false, false},
  };
}

std::size_t rebuilds(const Events& events) {
  std::size_t count = 0;
  for (const auto& event : events) count += event.starts_with("columns ");
  return count;
}

TEST_F(ClipboardDataTest, EachCodeIsFollowedByWhatItsRowSays) {
  for (const Following& row : whatFollows()) {
    SCOPED_TRACE(row.operation.code());
    begin(u"a|b|c/d|e|f/g|h|i");
    data_.selection().selected2DIndexSet() =
        TwoDimensionalMutableIndexSet(u"Lines: 2; Columns: 2; Cells: (1, 1)");
    const std::string before = grid();
    const Events performing = performed(row.operation);
    EXPECT_EQ(rebuilds(performing), row.rebuilds ? 1u : 0u);
    EXPECT_EQ(selection(), row.selection);
    const Events undoing = undone();
    EXPECT_EQ(rebuilds(undoing), row.rebuildsAfterUndo ? 1u : 0u);
    EXPECT_EQ(grid(), before);
    EXPECT_EQ(selection(), row.selection) << "an undo leaves the selection";
    // The grid first, then the status, then the columns and the view.
    Events expected = {"reload 3", "status 0 Undo Last operation performed."};
    if (row.rebuildsAfterUndo) expected.emplace_back("columns 3");
    if (!row.shownAfterUndo.empty()) expected.push_back(row.shownAfterUndo);
    EXPECT_EQ(undoing, expected);
  }
}

// After the columns, in this order.
TEST_F(ClipboardDataTest, EveryOperationEndsWithTheTableTheTitleAndTheStatus) {
  begin(u"a|b/c");
  EXPECT_EQ(performed(record(408)),
            (Events{"columns 3", "reload 2", "title Clipboard Data - 2 lines, 3 columns (5 characters total)",
                    "status 0 Add Column to the Left operation performed."}));
  EXPECT_EQ(performed(kFlip),
            (Events{"reload 2", "title Clipboard Data - 2 lines, 3 columns (5 characters total)",
                    "status 0 Flip Horizontal operation performed."}));
  EXPECT_EQ(performed(record(4711)),
            (Events{"reload 2", "title Clipboard Data - 2 lines, 3 columns (5 characters total)",
                    "status 0  operation performed."}));
}

// Whether lines or columns are selected is read before the operation, whatever its list says.
TEST_F(ClipboardDataTest, ADeletionRebuildsTheColumnsWhenItsKindWasSelected) {
  const struct {
    std::int64_t code;
    std::u16string_view selection;
    bool rebuilds;
  } cases[] = {
      {406, u"Lines: 2", true},       {406, u"Lines: 7", true},
      {406, u"Columns: 2", false},    {406, u"", false},
      {407, u"Columns: 2", true},     {407, u"Columns: 7", true},
      {407, u"Lines: 2", false},      {407, u"", false},
      {406, u"Cells: (1, 1)", false}, {407, u"Cells: (1, 1)", false},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(toUtf8(one.selection));
    begin(u"a|b/c|d/e|f");
    data_.selection().selected2DIndexSet() = TwoDimensionalMutableIndexSet(one.selection);
    EXPECT_EQ(rebuilds(performed(onList(one.code, u"1"))), one.rebuilds ? 1u : 0u) << one.code;
    EXPECT_EQ(grid(), one.code == 406 ? "c|d/e|f" : "b/d/f");
    EXPECT_EQ(rebuilds(undone()), 1u) << "an undo always does";
  }
}

// The record says what to do; the live selection says nothing.
TEST_F(ClipboardDataTest, AnOperationActsOnTheListOfItsRecord) {
  const struct {
    OperationRecord operation;
    std::string grid;
  } cases[] = {
      {onList(406, u"1, 3"), "d|e|f"},
      {onList(406, u"2 - 3"), "a|b|c"},
      {onList(406, u""), ""},
      {record(406), ""},
      {onList(406, u"2 -"), "a|b|c/d|e|f/g|h|i"},
      {onList(406, u"4 - 9"), "a|b|c/d|e|f/g|h|i"},
      {onList(407, u"1, 3"), "b/e/h"},
      {onList(407, u""), ""},
      {onList(407, u","), "a|b|c/d|e|f/g|h|i"},
      {onList(414, u"3"), "a|b|c/g|h|i/d|e|f"},
      {onList(412, u"3"), "a|c|b/d|f|e/g|i|h"},
      {onList(414, u""), "a|b|c/d|e|f/g|h|i"},
      {record(412), "a|b|c/d|e|f/g|h|i"},
      {merge(421, u"2, 3"), "a|b|c/d-g|e-h|f-i"},
      {merge(419, u"1, 2"), "a-b|c/d-e|f/g-h|i"},
      {merge(422, u"7"), "a|b|c/d|e|f/g|h|i"},
      {onList(423, u"2"), "a|b|c|d|e|f/g|h|i"},
      {onList(423, u"1"), "a|b|c/d|e|f/g|h|i"},
      {onList(423, u"x"), "a|b|c/d|e|f/g|h|i"},
      {onList(424, u"3"), "a/d/g/b/e/h/c/f/i"},
  };
  for (const auto& one : cases) {
    begin(u"a|b|c/d|e|f/g|h|i");
    data_.selection().selected2DIndexSet() = TwoDimensionalMutableIndexSet(u"Lines: 1; Columns: 1");
    perform(one.operation);
    EXPECT_EQ(grid(), one.grid) << one.operation.code() << " " << toUtf8(one.operation.text("Arg1"));
  }
}

// Undo and redo.

TEST_F(ClipboardDataTest, UndoAndRedoAlternateAndTheListGrows) {
  begin(u"a/b/c");
  perform(onList(406, u"2"));
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(grid(), "a/c");
    EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 2 + i);
    EXPECT_TRUE(data_.undoManager().undoActionName() == u"Delete Selected Lines");
    EXPECT_TRUE(data_.undoManager().undo());
    EXPECT_EQ(grid(), "a/b/c");
    EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 2 + i) << "the undone record stays";
    EXPECT_TRUE(data_.undoManager().redoActionName() == u"Delete Selected Lines");
    EXPECT_TRUE(data_.undoManager().redo());
  }
  EXPECT_EQ(data_.clipboardDataOperationsArray().back(), onList(406, u"2"));
}

TEST_F(ClipboardDataTest, ARedoTakesTheStepsOfTheOperation) {
  begin(u"a|b/c");
  perform(record(408));
  data_.undoManager().undo();
  events_.clear();
  data_.undoManager().redo();
  EXPECT_EQ(events_,
            (Events{"columns 3", "reload 2", "title Clipboard Data - 2 lines, 3 columns (5 characters total)",
                    "status 0 Add Column to the Left operation performed."}));
}

// Its snapshot is the grid that it finds.
TEST_F(ClipboardDataTest, ARedoTakesANewSnapshot) {
  begin(u"a|b");
  perform(edit(0, 0, u"x"));
  EXPECT_TRUE(data_.undoManager().undo());
  refresh(u"new");
  EXPECT_TRUE(data_.undoManager().redo());
  EXPECT_EQ(grid(), "x");
  EXPECT_TRUE(data_.undoManager().undo());
  EXPECT_EQ(grid(), "new");
}

TEST_F(ClipboardDataTest, OnlyTheLastOperationCanBeUndone) {
  begin(u"a|b");
  perform(kFlip);
  perform(record(408));
  EXPECT_TRUE(data_.undoManager().undo());
  EXPECT_FALSE(data_.undoManager().undo());
  EXPECT_EQ(grid(), "b|a");
  perform(kFlip);
  EXPECT_FALSE(data_.undoManager().redo()) << "an operation after an undo removes the redo";
  EXPECT_TRUE(data_.undoManager().undo());
  EXPECT_EQ(grid(), "b|a");
}

TEST_F(ClipboardDataTest, AnUndoLeavesTheFocusTheTitleAndTheToolbarItems) {
  begin(u"a|b/c");
  perform(onList(406, u"1"));
  data_.selection().mouseDown(0, 1, 1, {});
  EXPECT_EQ(undone(), (Events{"reload 2", "status 0 Undo Last operation performed.", "columns 2"}));
  EXPECT_EQ(data_.selection().focusedRowIndex(), 0);
  EXPECT_EQ(data_.selection().focusedColumnIndex(), 0);
  EXPECT_EQ(selection(), "Cells: (1, 1)");
}

TEST_F(ClipboardDataTest, WhatStandsInTheListCanBePerformedAgain) {
  begin(u"a|b");
  for (int i = 0; i < 20; ++i) perform(data_.clipboardDataOperationsArray().front());
  EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 21u);
  EXPECT_EQ(data_.clipboardDataOperationsArray().back(), split(u"/", u"|"));
  EXPECT_TRUE(data_.undoManager().undoActionName() == u"Split");
}

TEST_F(ClipboardDataTest, ARecordWithoutACodeChangesNothingAndCounts) {
  begin(u"a|b/c");
  EXPECT_EQ(performed(OperationRecord()),
            (Events{"reload 2", "title Clipboard Data - 2 lines, 2 columns (5 characters total)",
                    "status 0  operation performed."}));
  EXPECT_EQ(grid(), "a|b/c");
  EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 2u);
  EXPECT_TRUE(data_.undoManager().canUndo());
}

// Lines that are wide without holding much: joined they have more cells than a line can count.
TEST_F(ClipboardDataTest, WhatMemoryCannotHoldLeavesTheGridAndIsTold) {
  begin(std::u16string(4'199, u'/'));
  perform(edit(0, 1'048'575, u"x"));
  perform(record(409));
  data_.selection().selected2DIndexSet().addInfiniteRowIndex(2);
  const Events events = performed(onList(423, u"4200"));
  EXPECT_EQ(events.back(), "status 2 Not enough memory");
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 4'200u);
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 1'048'577u);
  EXPECT_EQ(selection(), "Lines: 3");
  EXPECT_EQ(data_.clipboardDataOperationsArray().size(), 4u);
  EXPECT_TRUE(data_.undoManager().undoActionName() == u"Join Lines");
  perform(kFlip);
  EXPECT_EQ(events_.back(), "status 0 Flip Horizontal operation performed.");
}

// Each of these would make something for every cell of a line, or for every line, of which there are 70
// million.
TEST_F(ClipboardDataTest, WhatMakesTooMuchOfAWideGridIsToldBeforeItBegins) {
  begin(std::u16string(66, u'/'));
  perform(edit(0, 1'048'575, u"x"));
  perform(record(409));
  EXPECT_EQ(performed(onList(424, u"1048577")).back(), "status 2 Not enough memory");
  EXPECT_EQ(performed(onList(423, u"67")).back(), "status 0 Join Lines operation performed.");
  EXPECT_EQ(data_.clipboardDataArray().maxRowLength(), 67u * 1'048'577u);
  EXPECT_EQ(performed(record(418)).back(), "status 2 Not enough memory");
  perform(record(411));
  EXPECT_EQ(performed(merge(421, u"1, 2")).back(), "status 2 Not enough memory");
  EXPECT_EQ(data_.clipboardDataArray().rowCount(), 2u);
  EXPECT_EQ(data_.clipboardDataArray().row(0).cell(1'048'575), u"x");
}

}  // namespace
}  // namespace quillet
