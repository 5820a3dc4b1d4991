// The clipboard workbench: any records, clicks and keys in any order. No crash, no end of time, a grid that
// agrees with itself, and an undo that brings back what was there. As long as the grid is small all is as the
// plain rules have it.
//
// Input: the clipboard's text, then actions to the end: their kind, and for a record its code, three numbers,
// each with its type, and three texts.
#include <limits>
#include <optional>
#include <utility>

#include "clipboard/clipboard_data.h"
#include "clipboard/plain_workbench.h"
#include "clipboard/remembering_display.h"
#include "fuzz_input.h"

namespace quillet::fuzz {
namespace {

using testing::OneText;
using testing::PlainWorkbench;
using testing::RememberingDisplay;

constexpr std::size_t kMostTextBytes = 64;
constexpr std::size_t kMostClipboardBytes = 512;
constexpr std::size_t kMostActions = 40;
// Of a grid that is worked on; a single operation may go beyond it by as much as it likes.
constexpr std::size_t kMostRows = 100'000;
constexpr std::size_t kMostCells = 3'000'000;
constexpr std::size_t kMostUnits = 500'000;
// Of a grid that is compared with the plain one.
constexpr std::size_t kMostPlainCells = 2'000;
constexpr std::int64_t kMostPlainIndex = 10'000;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kNumbers[] = {0,  1,   2,      3,         4,         7,        32,           33,
                                     -1, 100, 16'384, 1'048'575, 1'048'576, kLargest, -kLargest - 1};
constexpr std::int64_t kCodes[] = {102, 311, 312, 314, 401, 402, 403, 404, 405, 406, 407, 408,
                                   409, 410, 411, 412, 413, 414, 415, 416, 417, 418, 419, 420,
                                   421, 422, 423, 424, 902, 0,   -1,  101, 425, 999};

struct GridSize {
  std::size_t cells = 0;
  std::size_t units = 0;
};

// Walks over it in every way that there is.
GridSize checkedSize(const ClipboardGrid& grid) {
  GridSize size;
  std::size_t width = 0;
  std::size_t index = 0;
  grid.forEachRow([&](const ClipboardRow& row) {
    require(&grid.row(index) == &row, "a row is found where the walk passes it");
    require(row.endOfTexts() <= row.cellCount(), "no text lies behind the last cell");
    require(row.text().size() == row.lengthInUnits(), "a row is as long as its texts");
    size.cells += row.cellCount();
    size.units += row.lengthInUnits();
    width = std::max(width, row.cellCount());
    ++index;
  });
  require(index == grid.rowCount(), "a grid has as many rows as it says");
  require(width == grid.maxRowLength(), "a grid is as wide as its longest row");
  return size;
}

std::size_t plainCellCount(const testing::PlainGrid& grid) {
  std::size_t count = 0;
  for (const testing::PlainRow& row : grid) count += row.size() + 1;
  return count;
}

class Session {
 public:
  explicit Session(FuzzInput& input) : input_(input) {}

  void act() {
    switch (input_.below(12)) {
      case 0:
        return refresh();
      case 1:
        return undoAndRedo();
      case 2:
        return click();
      case 3:
        return clickHeader();
      case 4:
        return press();
      case 5:
        data_.selection().rowsTableViewSelectAllMenuItemClicked(display_.size());
        if (plain_) plain_->selection.selectAll(plain_->tableSize());
        return;
      default:
        return perform(record());
    }
  }

  void refresh() {
    pasteboard_.text = input_.text(kMostClipboardBytes);
    data_.refreshDataFromClipboard();
    if (!plain_) return;
    plain_->pasteboard = pasteboard_.text;
    plain_->refresh();
  }

  void check() {
    hasRoom_ = data_.clipboardDataArray().rowCount() <= kMostRows;
    if (!hasRoom_) return;
    const GridSize size = checkedSize(data_.clipboardDataArray());
    hasRoom_ = size.cells <= kMostCells && size.units <= kMostUnits &&
               data_.clipboardDataString().size() <= kMostUnits;
    if (plain_) compare();
    if (plain_ && plainCellCount(plain_->grid) > kMostPlainCells) plain_.reset();
    // A merge takes over what its record names; the plain selection would write down all to there.
    const TwoDimensionalMutableIndexSet& selection = data_.selection().selected2DIndexSet();
    if (selection.infiniteRowIndexSet().lastIndex() > kMostPlainIndex ||
        selection.infiniteColumnIndexSet().lastIndex() > kMostPlainIndex)
      plain_.reset();
  }

  bool hasRoom() const { return hasRoom_; }

 private:
  OperationRecord record() {
    OperationRecord record{{"Code", input_.pick(kCodes)}};
    for (const char* key : {"IntArg1", "IntArg2", "IntArg3"}) {
      const std::int64_t number = input_.pick(kNumbers);
      const std::size_t type = input_.below(8);
      if (type == 6) record.set(key, input_.text(kMostTextBytes));
      if (type < 6) record.set(key, number);
    }
    setTexts(record);
    return record;
  }

  // As the selection is, or as the input says, or a number, or none.
  void setTexts(OperationRecord& record) {
    const TwoDimensionalMutableIndexSet& selection = data_.selection().selected2DIndexSet();
    for (const char* key : {"Arg1", "Arg2", "Arg3"}) {
      const std::size_t kind = input_.below(8);
      if (kind < 4) record.set(key, input_.text(kMostTextBytes));
      if (kind == 4) record.set(key, selection.stringPlus1FromAllIndexes());
      if (kind == 5)
        record.set(key, TwoDimensionalMutableIndexSet::stringPlus1FromInfiniteIndexSet(
                            &selection.infiniteRowIndexSet()));
      if (kind == 6) record.set(key, input_.pick(kNumbers));
    }
  }

  void perform(const OperationRecord& record) {
    // The plain grid would write all the blank cells down.
    const bool reachesFar = record.code() == 401 && record.integer("IntArg2", -1) > 1'000;
    if (reachesFar) plain_.reset();
    const ClipboardGrid before = data_.clipboardDataArray();
    const std::size_t count = data_.clipboardDataOperationsArray().size();
    data_.performClipboardDataOperation(record);
    require(data_.clipboardDataOperationsArray().size() == count + 1, "an operation is listed");
    require(data_.undoManager().canUndo(), "an operation can be undone");
    before_ = before;
    if (plain_) plain_->perform(record);
  }

  void undoAndRedo() {
    const ClipboardGrid after = data_.clipboardDataArray();
    const bool undone = data_.undoManager().undo();
    require(undone == before_.has_value(), "what was performed can be undone");
    if (plain_) require(plain_->undo() == undone, "undo is there when the plain rules have it");
    if (!undone) return;
    require(data_.clipboardDataArray() == *before_, "an undo brings the grid back");
    check();
    const bool wasRefreshed = !data_.clipboardDataOperationsArray().size();
    require(data_.undoManager().redo(), "what was undone can be redone");
    if (plain_) plain_->redo();
    if (!wasRefreshed) require(data_.clipboardDataArray() == after, "a redo does what was done");
  }

  void click() {
    const std::int64_t row = anyBelow(display_.size().rowCount);
    const std::int64_t tableColumn = anyBelow(display_.size().columnCount + 1);
    const std::int64_t count = input_.flag() ? 2 : 1;
    const ClickModifiers held{input_.flag(), input_.flag(), input_.flag()};
    data_.selection().mouseDown(row, tableColumn, count, held);
    if (plain_) plain_->selection.mouse(row, tableColumn, count, held);
  }

  void clickHeader() {
    const std::int64_t tableColumn = std::max<std::int64_t>(anyBelow(display_.size().columnCount + 1), 0);
    const ClickModifiers held{input_.flag(), input_.flag(), false};
    data_.selection().didClickTableColumn(tableColumn, held, display_.size());
    if (plain_) plain_->selection.header(tableColumn, held, plain_->tableSize());
  }

  void press() {
    constexpr GridKey kKeys[] = {GridKey::Up,    GridKey::Down, GridKey::Left,
                                 GridKey::Right, GridKey::Tab,  GridKey::BackTab};
    const GridKey key = input_.pick(kKeys);
    const bool alternate = input_.flag();
    data_.selection().keyDown(key, false, alternate, display_.size());
    if (plain_) plain_->selection.key(key, alternate, plain_->tableSize());
  }

  // -1 to count - 1.
  std::int64_t anyBelow(std::int64_t count) {
    const auto at = static_cast<std::int64_t>(input_.below(256));
    return at % (count + 1) - 1;
  }

  void compare() {
    require(testing::matches(data_.clipboardDataArray(), plain_->grid), "the grid is as the rules have it");
    require(data_.clipboardDataString() == plain_->string.value_or(u""), "so is the text");
    const ClipboardSelection& selection = data_.selection();
    require(selection.focusedRowIndex() == plain_->selection.focus.first &&
                selection.focusedColumnIndex() == plain_->selection.focus.second,
            "so is the focus");
    require(display_.title == plain_->title, "so is the title");
    require(display_.status == plain_->status, "so is the status");
    require(display_.showsGrid == plain_->showsGrid, "so is what is shown");
    require(display_.alerts.size() == plain_->alerts.size(), "so are the alerts");
  }

  FuzzInput& input_;
  OneText pasteboard_;
  ClipboardData data_{pasteboard_, display_};
  RememberingDisplay display_{data_};
  std::optional<PlainWorkbench> plain_{std::in_place};
  std::optional<ClipboardGrid> before_;  // before the last operation
  bool hasRoom_ = true;
};

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet::fuzz;
  FuzzInput input(data, size);
  Session session(input);
  session.refresh();
  session.check();
  for (std::size_t i = 0; i < kMostActions && session.hasRoom() && !input.restBytes().empty(); ++i) {
    session.act();
    session.check();
  }
  return 0;
}
