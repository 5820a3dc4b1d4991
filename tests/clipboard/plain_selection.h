// The focus and the selection of the clipboard grid as plain sets of numbers, each rule word by word: the
// reference for the real one.
#pragma once

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

#include "clipboard/clipboard_selection.h"

namespace quillet::testing {

class PlainSelection {
 public:
  using Focus = std::pair<std::int64_t, std::int64_t>;

  std::set<std::int64_t> rows, columns, cellRows;
  std::set<std::pair<std::int64_t, std::int64_t>> cells;
  Focus focus{-1, -1};

  void key(GridKey key, bool alternate, const GridTableSize& table) {
    auto [row, column] = focus;
    if (key == GridKey::Up) row = alternate ? std::max<std::int64_t>(row - 10, 0) : row - 1;
    if (key == GridKey::Down) row = alternate ? std::min(row + 10, table.rowCount - 1) : row + 1;
    if (key == GridKey::Left && alternate) column = std::max<std::int64_t>(column - 10, 0);
    if (key == GridKey::Right && alternate) column = std::min(column + 10, table.columnCount - 1);
    if ((key == GridKey::Left && !alternate) || key == GridKey::BackTab) column -= 1;
    if ((key == GridKey::Right && !alternate) || key == GridKey::Tab) column += 1;
    if (key == GridKey::Return || key == GridKey::Delete) return;
    if (row >= 0 && column >= 0 && row < table.rowCount && column < table.columnCount) focus = {row, column};
  }

  void mouse(std::int64_t r, std::int64_t t, std::int64_t count, const ClickModifiers& held) {
    if (r < 0 || t < 0) return;
    if (count >= 2)
      plainClick(r, t);
    else if (held.shift && held.alternate)
      return;
    else if (held.shift)
      shiftClick(r, t);
    else if (held.command)
      commandClick(r, t);
    else if (!held.alternate)
      plainClick(r, t);
  }

  void header(std::int64_t t, const ClickModifiers& held, const GridTableSize& table) {
    focus = {-1, -1};
    if (t == 0) {
      if (table.rowCount >= 1 && table.columnCount + 1 >= 2) selectAll(table);
      return;
    }
    const std::int64_t c = t - 1;
    const bool wasOnly = columns == std::set<std::int64_t>{c};
    rows.clear();
    removeCells();
    if (held.command) toggle(columns, c);
    if (held.shift && !held.command) extend(columns, c);
    if (held.shift || held.command) return;
    columns.clear();
    if (!wasOnly) columns.insert(c);
  }

  void selectAll(const GridTableSize& table) {
    rows.clear();
    columns.clear();
    for (std::int64_t row = 0; row < table.rowCount; ++row) rows.insert(row);
  }

 private:
  void removeCells() {
    cells.clear();
    cellRows.clear();
  }

  void plainClick(std::int64_t r, std::int64_t t) {
    const bool wasOnly = rows == std::set<std::int64_t>{r};
    rows.clear();
    columns.clear();
    removeCells();
    if (t != 0) {
      cells.insert({r, t - 1});
      cellRows.insert(r);
      focus = {r, t - 1};
    } else {
      if (!wasOnly) rows.insert(r);
      focus.second = -1;
    }
  }

  void commandClick(std::int64_t r, std::int64_t t) {
    columns.clear();
    if (t == 0) {
      removeCells();
      return toggle(rows, r);
    }
    rows.clear();
    if (cells.erase({r, t - 1})) return;
    cells.insert({r, t - 1});
    cellRows.insert(r);
  }

  void shiftClick(std::int64_t r, std::int64_t t) {
    if (t != 0) return;
    columns.clear();
    removeCells();
    extend(rows, r);
  }

  static void toggle(std::set<std::int64_t>& set, std::int64_t index) {
    if (!set.erase(index)) set.insert(index);
  }

  static void extend(std::set<std::int64_t>& set, std::int64_t index) {
    if (set.empty()) set.insert(index);
    const std::int64_t first = *set.begin();
    const std::int64_t last = *set.rbegin();
    if (index == first) return;
    set.clear();
    for (auto i = std::min(first, index); i <= std::max(last, index); ++i) set.insert(i);
  }
};

}  // namespace quillet::testing
