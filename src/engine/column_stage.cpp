#include "engine/column_stage.h"

#include <algorithm>
#include <cstring>

#include "operations/case_option.h"
#include "operations/line_numbers.h"
#include "platform/numbers.h"

namespace quillet {

namespace {

IndexSet columnsOf(const OperationRecord& record) {
  IndexSet columns;
  parseLineNumbersString(record.text("Arg1"), columns, nullptr, true);
  return columns;
}

// Each group holds column numbers, from 1 in the text, joined by "+"; what is no number gives -1.
std::vector<std::vector<std::int64_t>> groupsFromText(std::u16string_view text) {
  std::vector<std::vector<std::int64_t>> groups;
  if (text.empty()) return groups;
  for (const auto token : componentsSeparatedByString(text, u",")) {
    auto& group = groups.emplace_back();
    for (const auto part : componentsSeparatedByString(token, u"+"))
      group.push_back(std::max<std::int64_t>(0, integerValue(part)) - 1);
  }
  return groups;
}

std::vector<std::int64_t> orderFromText(std::u16string_view text) {
  std::vector<std::int64_t> order;
  for (const auto token : componentsSeparatedByString(text, u",")) order.push_back(integerValue(token));
  return order;
}

}  // namespace

void resizeCells(Cells& cells, std::int64_t wantedCount, std::u16string_view text) {
  cells.resize(static_cast<std::size_t>(std::clamp<std::int64_t>(wantedCount, 0, kMostColumns)), text);
}

ColumnStage::ColumnStage(const FileSettings& settings, std::span<const OperationRecord> records,
                         DateReader& reader, const ColumnReformatter::Warn& warn)
    : settings_(settings), splitter_(settings.inputColumnSeparator, settings.inputQuote) {
  for (const auto& record : records) addStep(record, reader, warn);
  readArrangement(records);
  leavesLines_ = settings.inputColumnSeparator.empty() ||
                 (steps_.empty() && joinColumnGroups_.empty() && newOrder_.empty() && finalResizes_.empty() &&
                  !settings.addQuotes && settings.inputQuote.empty() &&
                  settings.inputColumnSeparator == settings.outputColumnSeparator);
}

void ColumnStage::addStep(const OperationRecord& record, DateReader& reader,
                          const ColumnReformatter::Warn& warn) {
  switch (record.code()) {
    case OpTrimColumn:
      steps_.push_back(
          {columnsOf(record), TextTrimmer(record.integer("IntArg2", 0), record.integer("IntArg3", 0),
                                          caseSensitivityOf(record), record.text("Arg2"))});
      break;
    case OpReplaceColumn:
      steps_.push_back(
          {columnsOf(record), TextReplacer(record.integer("IntArg2", 0), caseSensitivityOf(record),
                                           record.text("Arg2"), record.text("Arg3"))});
      break;
    case OpReformatColumn:
      steps_.push_back({columnsOf(record), ColumnReformatter(record, reader, warn)});
      break;
    case OpSetInitialNumberOfColumns:
      steps_.push_back({{}, Resize{record.integer("IntArg1", 0), record.text("Arg1")}});
      break;
    case OpSetFinalNumberOfColumns:
      finalResizes_.push_back({record.integer("IntArg1", 0), record.text("Arg1")});
      break;
    default:
      break;
  }
}

// Only the first operation of each kind counts, and a join with groups leaves no place for a new order.
void ColumnStage::readArrangement(std::span<const OperationRecord> records) {
  const auto firstOf = [&](std::int64_t code) {
    return std::find_if(records.begin(), records.end(),
                        [=](const auto& record) { return record.code() == code; });
  };
  if (const auto join = firstOf(OpJoinColumns); join != records.end()) {
    joinColumnGroups_ = groupsFromText(join->text("Arg1"));
    joinColumnsSeparator_ = join->text("Arg2");
  }
  if (const auto order = firstOf(OpRearrangeColumns); joinColumnGroups_.empty() && order != records.end())
    newOrder_ = orderFromText(order->text("Arg1"));
}

void ColumnStage::split(std::u16string_view line, Cells& into, TextArena& arena) const {
  if (settings_.inputColumnSeparator.empty())
    into.push_back(line);
  else
    splitter_.split(line, into, arena);
}

OutputCells ColumnStage::apply(std::u16string_view line, std::int64_t inputLineIndex, TextArena& arena) {
  cells_.clear();
  split(line, cells_, arena);
  // A file that is not split into columns has no column operations, no quotes and no final number of columns.
  if (settings_.inputColumnSeparator.empty()) return {cells_, 0, {}};
  for (auto& step : steps_) applyStep(step, inputLineIndex, arena);
  if (!joinColumnGroups_.empty())
    joinColumns(arena);
  else if (!newOrder_.empty())
    rearrangeColumns();
  std::size_t quotedCount = settings_.addQuotes ? cells_.size() : 0;
  for (const auto& [count, text] : finalResizes_) {
    resizeCells(cells_, count, text);  // what is added here stays without quotes: this is meant
    quotedCount = std::min(quotedCount, cells_.size());
  }
  return {cells_, quotedCount, settings_.outputColumnSeparator};
}

void ColumnStage::applyStep(ColumnStep& step, std::int64_t inputLineIndex, TextArena& arena) {
  if (const auto* resize = std::get_if<Resize>(&step.action))
    return resizeCells(cells_, resize->count, resize->text);
  const auto count = static_cast<std::int64_t>(cells_.size());
  for (const auto& range : step.columns.ranges()) {
    for (std::int64_t index = range.first; index <= range.last && index < count; ++index) {
      std::u16string_view& cell = cells_[static_cast<std::size_t>(index)];
      if (auto* trimmer = std::get_if<TextTrimmer>(&step.action))
        cell = trimmer->trimmed(cell, arena);
      else if (auto* replacer = std::get_if<TextReplacer>(&step.action))
        cell = replacer->replaced(cell, arena);
      else if (const auto text =
                   std::get<ColumnReformatter>(step.action).reformatted(cell, inputLineIndex, arena))
        cell = *text;
    }
  }
}

void ColumnStage::joinColumns(TextArena& arena) {
  otherCells_.clear();
  for (const auto& group : joinColumnGroups_) {
    std::size_t units = 0, parts = 0;
    std::u16string_view only;
    for (const std::int64_t index : group) {
      if (index < 0 || static_cast<std::size_t>(index) >= cells_.size()) continue;
      only = cells_[static_cast<std::size_t>(index)];
      units += only.size();
      ++parts;
    }
    if (parts < 2) {
      otherCells_.push_back(only);
      continue;
    }
    units += (parts - 1) * joinColumnsSeparator_.size();
    char16_t* to = arena.room(units);
    const auto put = [&](std::u16string_view text) { to = std::copy(text.begin(), text.end(), to); };
    bool first = true;
    for (const std::int64_t index : group) {
      if (index < 0 || static_cast<std::size_t>(index) >= cells_.size()) continue;
      if (!first) put(joinColumnsSeparator_);
      put(cells_[static_cast<std::size_t>(index)]);
      first = false;
    }
    otherCells_.push_back(arena.commit(units));
  }
  cells_.swap(otherCells_);
}

void ColumnStage::rearrangeColumns() {
  otherCells_ = cells_;
  const auto count = static_cast<std::int64_t>(otherCells_.size());
  for (std::size_t position = 0; position < newOrder_.size(); ++position) {
    const std::int64_t number = newOrder_[position];
    if (number < 1 || number > count) continue;
    const std::u16string_view cell = otherCells_[static_cast<std::size_t>(number - 1)];
    if (position < cells_.size())
      cells_[position] = cell;
    else if (position == cells_.size())
      cells_.push_back(cell);
    // A place further behind the end cannot be stored to; the token is passed over.
  }
}

}  // namespace quillet
