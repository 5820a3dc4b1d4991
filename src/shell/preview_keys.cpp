#include "shell/preview_keys.h"

#include <algorithm>
#include <limits>

#include "shell/table_keys.h"

namespace quillet {

namespace {

constexpr std::int64_t kPage = 10;

// The difference, or the least number where it would lie below that. Limits are compared by it and not by a
// sum, which could pass the greatest number.
std::int64_t difference(std::int64_t value, std::int64_t by) {
  std::int64_t result = 0;
  const bool passed = __builtin_sub_overflow(value, by, &result);
  return passed ? std::numeric_limits<std::int64_t>::min() : result;
}

std::int64_t lastRow(const Table& table) {
  return static_cast<std::int64_t>(table.rowCount()) - 1;
}

bool hasRow(const Table& table, std::int64_t row) {
  return row >= 0 && row <= lastRow(table);
}

void selectIfThere(Table& table, std::int64_t row) {
  if (hasRow(table, row)) table.selectRows(IndexSet{row});
}

}  // namespace

bool PreviewKeys::keyDown(Table& table, const PreviewKeyPress& press) {
  if (swallowsKey(table.name(), press.key)) return true;
  if (press.key == kUpArrowKey) return upKeyDown(table, press);
  if (press.key == kDownArrowKey) return downKeyDown(table, press);
  return false;
}

bool PreviewKeys::upKeyDown(Table& table, const PreviewKeyPress& press) {
  if (press.option)
    previewTableViewAlternateUpKeyPressed(table);
  else if (press.command)
    previewTableViewCommandUpKeyPressed(table);
  else if (table.selectedRow() == 0)
    previewTableViewUpKeyPressed(table);
  else
    return false;
  return true;
}

bool PreviewKeys::downKeyDown(Table& table, const PreviewKeyPress& press) {
  if (press.option)
    previewTableViewAlternateDownKeyPressed(table);
  else if (press.command)
    previewTableViewCommandDownKeyPressed(table);
  else if (hasRow(table, table.selectedRow()) && table.selectedRow() == lastRow(table))
    previewTableViewDownKeyPressed(table);
  else
    return false;
  return true;
}

void PreviewKeys::startFrom(std::int64_t line) {
  panel_.setStartPreviewFromLine(line);
  panel_.updatePreviewPanel();
}

void PreviewKeys::previewTableViewUpKeyPressed(Table&) {
  const std::int64_t start = panel_.startPreviewFromLine();
  if (start >= 2 && start - 1 <= state_.linesInCurrentFile) startFrom(start - 1);
}

void PreviewKeys::previewTableViewDownKeyPressed(Table& table) {
  const std::int64_t start = panel_.startPreviewFromLine();
  if (start < 0 || start > difference(state_.linesInCurrentFile, kPage)) return;
  startFrom(start + 1);
  selectIfThere(table, lastRow(table));
}

// The line that was selected stays so, ten lines up, as far as there are lines above it.
void PreviewKeys::previewTableViewAlternateUpKeyPressed(Table& table) {
  const std::int64_t tenUp = difference(panel_.startPreviewFromLine(), kPage);
  const std::int64_t start = std::max<std::int64_t>(tenUp, 1);
  if (start > state_.linesInCurrentFile) return selectIfThere(table, 0);
  const std::int64_t selected = table.selectedRow();
  const std::int64_t target = selected < 0 ? 0 : std::max<std::int64_t>(selected + tenUp, 1);
  startFrom(start);
  const std::int64_t row = target - start;
  selectIfThere(table, hasRow(table, row) ? row : 0);
}

void PreviewKeys::previewTableViewAlternateDownKeyPressed(Table& table) {
  const std::int64_t start = panel_.startPreviewFromLine();
  if (start < 1 - kPage || start > difference(state_.linesInCurrentFile, kPage))
    return selectIfThere(table, lastRow(table));
  const std::int64_t selected = table.selectedRow();
  startFrom(start + kPage);
  selectIfThere(table, hasRow(table, selected) ? selected : lastRow(table));
}

void PreviewKeys::previewTableViewCommandUpKeyPressed(Table& table) {
  startFrom(1);
  selectIfThere(table, 0);
}

void PreviewKeys::previewTableViewCommandDownKeyPressed(Table& table) {
  startFrom(std::max<std::int64_t>(difference(state_.linesInCurrentFile, kPage - 1), 1));
  selectIfThere(table, lastRow(table));
}

}  // namespace quillet
