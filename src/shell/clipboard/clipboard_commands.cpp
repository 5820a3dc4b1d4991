#include "shell/clipboard/clipboard_commands.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "operations/line_numbers.h"
#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr std::int64_t kMostFlippedRows = 100;
constexpr std::int64_t kFewestJoined = 2;

struct Directed {
  const char* handler;
  std::int64_t code;
};

constexpr Directed kFills[] = {
    {"clipboardDataWindowShiftFillFromLeftMenuItemClicked", OpClipboardShiftFillFromLeft},
    {"clipboardDataWindowShiftFillFromRightMenuItemClicked", OpClipboardShiftFillFromRight},
    {"clipboardDataWindowShiftFillFromTopMenuItemClicked", OpClipboardShiftFillFromTop},
    {"clipboardDataWindowShiftFillFromBottomMenuItemClicked", OpClipboardShiftFillFromBottom},
};

constexpr Directed kFlips[] = {
    {"flipHorizontalMenuItemClicked", OpClipboardFlipHorizontal},
    {"flipVerticalMenuItemClicked", OpClipboardFlipVertical},
    {"flipDiagonalMenuItemClicked", OpClipboardFlipDiagonal},
};

// Why a flip is refused, nothing if it is not. The limit is one of rows, for all three flips, although the
// text says columns: both are meant.
std::optional<std::u16string> refusalOfFlip(std::int64_t code, const ClipboardGrid& grid) {
  if (grid.rowCount() > kMostFlippedRows)
    return localizedFormat(u"Transform is limited to %ld columns", {kMostFlippedRows});
  if (code == OpClipboardFlipHorizontal && grid.rowCount() != 0 && grid.maxRowLength() == 0)
    return localized(u"All rows are empty");
  return std::nullopt;
}

// Why a prompted text is refused, nothing if it is not.
std::optional<std::u16string> refusalOfText(std::int64_t code, std::u16string_view text) {
  if (code == OpClipboardJoinRows && integerValue(text) < kFewestJoined)
    return localized(u"You must join at least 2 rows");
  if (code == OpClipboardJoinColumns && integerValue(text) < kFewestJoined)
    return localized(u"You must join at least 2 columns");
  return std::nullopt;
}

}  // namespace

const ClipboardCommands::Plain ClipboardCommands::kPlain[] = {
    {"clipboardDataWindowShiftTruncateLeftMenuItemClicked", OpClipboardShiftTruncateLeft, Selected::Nothing},
    {"clipboardDataWindowShiftTruncateRightMenuItemClicked", OpClipboardShiftTruncateRight,
     Selected::Nothing},
    {"clipboardDataWindowShiftTruncateTopMenuItemClicked", OpClipboardShiftTruncateTop, Selected::Nothing},
    {"clipboardDataWindowShiftTruncateBottomMenuItemClicked", OpClipboardShiftTruncateBottom,
     Selected::Nothing},
    {"clipboardDataWindowDeleteSelectedLineMenuItemClicked", OpClipboardDeleteSelectedLines, Selected::Lines},
    {"clipboardDataWindowDeleteSelectedColumnMenuItemClicked", OpClipboardDeleteSelectedColumns,
     Selected::Columns},
    {"clipboardDataWindowMoveLeftMenuItemClicked", OpClipboardMoveLeft, Selected::Columns},
    {"clipboardDataWindowMoveRightMenuItemClicked", OpClipboardMoveRight, Selected::Columns},
    {"clipboardDataWindowMoveUpMenuItemClicked", OpClipboardMoveUp, Selected::Lines},
    {"clipboardDataWindowMoveDownMenuItemClicked", OpClipboardMoveDown, Selected::Lines},
};

const ClipboardCommands::Prompted ClipboardCommands::kPrompted[] = {
    {"clipboardDataWindowJoinRowsMenuItemClicked",
     "JoinRows",
     localizable(u"Number of consecutive lines to join:"),
     {},
     OpClipboardJoinRows,
     Selected::Nothing},
    {"clipboardDataWindowJoinColumnsMenuItemClicked",
     "JoinColumns",
     localizable(u"Number of consecutive columns to join:"),
     {},
     OpClipboardJoinColumns,
     Selected::Nothing},
    {"clipboardDataWindowMergeLeftMenuItemClicked", "MergeString", localizable(u"Merge Columns"),
     localizable(u"Enter any text to insert between columns:"), OpClipboardMergeLeft, Selected::Columns},
    {"clipboardDataWindowMergeRightMenuItemClicked", "MergeString", localizable(u"Merge Columns"),
     localizable(u"Enter any text to insert between columns:"), OpClipboardMergeRight, Selected::Columns},
    {"clipboardDataWindowMergeUpMenuItemClicked", "MergeString", localizable(u"Merge Lines"),
     localizable(u"Enter any text to insert between lines:"), OpClipboardMergeUp, Selected::Lines},
    {"clipboardDataWindowMergeDownMenuItemClicked", "MergeString", localizable(u"Merge Lines"),
     localizable(u"Enter any text to insert between lines:"), OpClipboardMergeDown, Selected::Lines},
};

ClipboardCommands::ClipboardCommands(ClipboardData& data, UserDefaults& defaults, const Desktop& desktop)
    : data_(data), defaults_(defaults), alerts_(desktop.alerts), prompts_(desktop.prompts) {}

void ClipboardCommands::addCommandsTo(Commands& commands) {
  commands.add("clipboardDataWindowRefreshNowButtonPressed", [this] { data_.refreshDataFromClipboard(); });
  for (const Plain& command : kPlain)
    commands.add(std::string(command.handler), [this, &command] { perform(command); });
  for (const auto& [handler, code] : kFills)
    commands.add(handler, [this, code = code] { fillFromDirection(code); });
  for (const auto& [handler, code] : kFlips) commands.add(handler, [this, code = code] { flip(code); });
  for (const Prompted& command : kPrompted)
    commands.add(std::string(command.handler), [this, &command] { promptAndStoreDefaults(command); });
}

std::u16string ClipboardCommands::listOf(Selected selected) const {
  const TwoDimensionalMutableIndexSet& selection = data_.selection().selected2DIndexSet();
  switch (selected) {
    case Selected::Nothing:
      break;
    case Selected::Lines:
      return stringPlus1FromIndexSet(selection.infiniteRowIndexSet());
    case Selected::Columns:
      return stringPlus1FromIndexSet(selection.infiniteColumnIndexSet());
  }
  return {};
}

void ClipboardCommands::perform(const Plain& command) {
  OperationRecord record{{"Code", command.code}};
  if (command.arg1 != Selected::Nothing) record.set("Arg1", listOf(command.arg1));
  data_.performClipboardDataOperation(record);
}

// The text is there for the record's description alone: what is added is blank, which is meant. Nothing in
// the application writes these settings.
void ClipboardCommands::fillFromDirection(std::int64_t code) {
  const std::int64_t type = defaults_.integerForKey("FillType");
  const bool isSequence = type == static_cast<std::int64_t>(FillType::Sequence);
  const auto text = defaults_.stringForKey(isSequence ? "FillSequence" : "FillString");
  data_.performClipboardDataOperation({{"Code", code}, {"IntArg1", type}, {"Arg1", text.value_or(u"")}});
}

void ClipboardCommands::flip(std::int64_t code) {
  const ClipboardGrid& grid = data_.clipboardDataArray();
  if (const auto refusal = refusalOfFlip(code, grid))
    return alerts_.showErrorAlertInWindow(*refusal, WindowName::ClipboardData);
  if (grid.rowCount() != 0) data_.performClipboardDataOperation({{"Code", code}});
}

// The record names what is selected now, also when the prompt is answered later.
void ClipboardCommands::promptAndStoreDefaults(const Prompted& command) {
  const std::u16string last = defaults_.stringForKey(command.defaultsKey).value_or(u"");
  prompts_.askForText(localized(command.prompt), command.info.empty() ? u"" : localized(command.info), last,
                      WindowName::ClipboardData,
                      [this, &command, arg2 = listOf(command.arg2)](const std::u16string& text) {
                        performPrompted(command, text, arg2);
                      });
}

void ClipboardCommands::performPrompted(const Prompted& command, const std::u16string& text,
                                        const std::u16string& arg2) {
  if (const auto refusal = refusalOfText(command.code, text))
    return alerts_.showErrorAlertInWindow(*refusal, WindowName::ClipboardData);
  defaults_.setValue(command.defaultsKey, toUtf8(text));
  data_.performClipboardDataOperation({{"Code", command.code}, {"Arg1", text}, {"Arg2", arg2}});
}

}  // namespace quillet
