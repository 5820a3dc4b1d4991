// The clipboard workbench in any order of actions, beside the plain rules.
#include <gtest/gtest.h>
#include <string>

#include "clipboard/clipboard_data.h"
#include "clipboard/plain_workbench.h"
#include "clipboard/random_records.h"
#include "clipboard/remembering_display.h"
#include "platform/unicode_text.h"

namespace quillet::testing {
namespace {

// The real workbench and the plain one, to which the same is done.
class BothWorkbenches {
 public:
  explicit BothWorkbenches(RandomSource& random) : random_(random), records_(random) {}

  // Returns what it was, for a failure's message.
  std::string act() {
    if (!plain_.isSmall()) return refresh();
    const std::size_t kind = random_.below(40);
    if (kind == 0) return refresh();
    if (kind < 4) return undo();
    if (kind < 7) return redo();
    if (kind < 22) return perform(records_.any(plain_));
    if (kind < 29) return click();
    if (kind < 34) return clickHeader();
    if (kind < 39) return pressKey();
    return selectAll();
  }

  std::string refresh() {
    pasteboard_.fails = plain_.pasteboardFails = random_.oneIn(10);
    pasteboard_.text.reset();
    if (!random_.oneIn(15)) pasteboard_.text = records_.clipboardText();
    plain_.pasteboard = pasteboard_.text;
    data_.refreshDataFromClipboard();
    plain_.refresh();
    if (!random_.oneIn(6)) perform(records_.split());
    return "refresh";
  }

  std::string perform(const OperationRecord& record) {
    data_.performClipboardDataOperation(record);
    plain_.perform(record);
    std::string said = "perform";
    for (const auto& [key, value] : record.items()) {
      const std::string text = toUtf8(record.text(key));
      said += " " + key + " '" + text + "'";
    }
    return said;
  }

  void expectTheSame() {
    EXPECT_TRUE(matches(data_.clipboardDataArray(), plain_.grid));
    EXPECT_EQ(data_.hasClipboardDataString(), plain_.string.has_value());
    EXPECT_TRUE(data_.clipboardDataString() == plain_.string.value_or(u""));
    EXPECT_TRUE(pasteboard_.text == plain_.pasteboard);
    EXPECT_TRUE(data_.clipboardDataOperationsArray() == plain_.operations);
    expectTheSameSelection();
    expectTheSameUndo();
    expectTheSameShown();
  }

 private:
  std::string undo() {
    EXPECT_EQ(data_.undoManager().undo(), plain_.undo());
    return "undo";
  }

  std::string redo() {
    EXPECT_EQ(data_.undoManager().redo(), plain_.redo());
    return "redo";
  }

  std::string click() {
    const std::int64_t row = anyBelow(plain_.tableRowCount);
    const std::int64_t tableColumn = random_.oneIn(3) ? 0 : anyBelow(plain_.tableColumnCount + 1);
    const std::int64_t count = random_.oneIn(6) ? 2 : 1;
    const ClickModifiers held{random_.oneIn(4), random_.oneIn(3), random_.oneIn(6)};
    const auto next = data_.selection().mouseDown(row, tableColumn, count, held);
    plain_.selection.mouse(row, tableColumn, count, held);
    const bool showsDetails = count == 2 && row >= 0 && tableColumn >= 1;
    EXPECT_EQ(next == ClipboardSelection::Next::ShowCellDetails, showsDetails);
    if (showsDetails && random_.oneIn(2)) editFocusedCell();
    return "click";
  }

  std::string clickHeader() {
    const std::int64_t tableColumn = std::max<std::int64_t>(anyBelow(plain_.tableColumnCount + 1), 0);
    const ClickModifiers held{random_.oneIn(3), random_.oneIn(3), false};
    data_.selection().didClickTableColumn(tableColumn, held, display_.size());
    plain_.selection.header(tableColumn, held, plain_.tableSize());
    return "click on a header";
  }

  std::string pressKey() {
    constexpr GridKey kKeys[] = {GridKey::Up,  GridKey::Down,    GridKey::Left,   GridKey::Right,
                                 GridKey::Tab, GridKey::BackTab, GridKey::Return, GridKey::Delete};
    const GridKey key = random_.pick(kKeys);
    const bool alternate = random_.oneIn(4);
    const auto next = data_.selection().keyDown(key, random_.oneIn(3), alternate, display_.size());
    plain_.selection.key(key, alternate, plain_.tableSize());
    EXPECT_EQ(next == ClipboardSelection::Next::ShowCellDetails, key == GridKey::Return);
    if (key == GridKey::Return) editFocusedCell();
    return "key";
  }

  std::string selectAll() {
    data_.selection().rowsTableViewSelectAllMenuItemClicked(display_.size());
    plain_.selection.selectAll(plain_.tableSize());
    return "select all";
  }

  void editFocusedCell() {
    perform(records_.edit(data_.selection().focusedRowIndex(), data_.selection().focusedColumnIndex()));
  }

  // -1 to count - 1.
  std::int64_t anyBelow(std::int64_t count) {
    return static_cast<std::int64_t>(random_.below(static_cast<std::size_t>(count) + 1)) - 1;
  }

  void expectTheSameSelection() {
    const ClipboardSelection& selection = data_.selection();
    const TwoDimensionalMutableIndexSet& set = selection.selected2DIndexSet();
    EXPECT_EQ(toUtf8(set.stringPlus1FromAllIndexes()), toUtf8(plain_.selectionText()));
    const bool isEmpty = plain_.selection.rows.empty() && plain_.selection.columns.empty() &&
                         plain_.selection.cellRows.empty();
    EXPECT_EQ(set.isEmpty(), isEmpty);
    EXPECT_EQ(std::pair(selection.focusedRowIndex(), selection.focusedColumnIndex()), plain_.selection.focus);
  }

  void expectTheSameUndo() {
    const UndoManager& manager = data_.undoManager();
    EXPECT_EQ(manager.canUndo(), plain_.action == PlainWorkbench::Action::Undo);
    EXPECT_EQ(manager.canRedo(), plain_.action == PlainWorkbench::Action::Redo);
    const std::u16string name = plain_.action == PlainWorkbench::Action::None ? u"" : plain_.actionName();
    EXPECT_EQ(toUtf8(manager.undoActionName() + manager.redoActionName()), toUtf8(name));
  }

  void expectTheSameShown() {
    EXPECT_EQ(toUtf8(display_.title), toUtf8(plain_.title));
    EXPECT_TRUE(display_.text == plain_.text);
    EXPECT_EQ(toUtf8(display_.status), toUtf8(plain_.status));
    EXPECT_EQ(display_.statusType, plain_.statusType);
    EXPECT_EQ(display_.showsGrid, plain_.showsGrid);
    EXPECT_EQ(display_.toolbarItemsEnabled, plain_.toolbarItemsEnabled);
    EXPECT_EQ(display_.size().rowCount, plain_.tableRowCount);
    EXPECT_EQ(display_.size().columnCount, plain_.tableColumnCount);
    EXPECT_TRUE(std::exchange(display_.alerts, {}) == std::exchange(plain_.alerts, {}));
  }

  RandomSource& random_;
  RandomRecords records_;
  OneText pasteboard_;
  ClipboardData data_{pasteboard_, display_};
  RememberingDisplay display_{data_};
  PlainWorkbench plain_;
};

TEST(RandomWorkbench, FollowsThePlainRulesInAnyOrderOfActions) {
  RandomSource random(5301);
  for (auto round = rounds(150); round > 0; --round) {
    BothWorkbenches both(random);
    std::string done;
    both.expectTheSame();
    if (!random.oneIn(20)) both.refresh();
    for (int step = 0; step < 60; ++step) {
      done += both.act() + "\n";
      both.expectTheSame();
      ASSERT_FALSE(::testing::Test::HasFailure()) << "round " << round << " after\n" << done;
    }
  }
}

}  // namespace
}  // namespace quillet::testing
