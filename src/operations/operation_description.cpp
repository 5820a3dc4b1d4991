#include "operations/operation_description.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "operations/escapes.h"
#include "operations/labels.h"
#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "platform/text_search.h"
#include "text/encodings.h"

namespace quillet {

namespace {

struct Heading {
  OperationCode code;
  std::u16string_view title;
  std::u16string_view icon;
};

constexpr Heading kHeadings[] = {
    {OpInitial, localizable(u"Initial"), u"split-path"},
    {OpClipboardSplit, localizable(u"Split"), u"split-path"},
    {OpReplaceCharacter, localizable(u"Replace Character"), u"search"},
    {OpSkipLine, localizable(u"Skip Line"), u"dance-steps"},
    {OpTrimLine, localizable(u"Trim Line"), u"scissors"},
    {OpReplaceLine, localizable(u"Replace Line"), u"search"},
    {OpJoinLines, localizable(u"Join Lines"), u"join-lines"},
    {OpTrimColumn, localizable(u"Trim Column"), u"scissors"},
    {OpClipboardTrim, localizable(u"Trim Column"), u"scissors"},  // meant: both trims share the title
    {OpReplaceColumn, localizable(u"Replace Column"), u"search"},
    {OpReformatColumn, localizable(u"Reformat Column"), u"puzzle-piece"},
    {OpClipboardReplace, localizable(u"Replace Cells"), u"search"},
    {OpClipboardFill, localizable(u"Fill Cells"), u"paint-roller"},
    {OpSetInitialNumberOfColumns, localizable(u"Set Initial Number of Columns"), u"count"},
    {OpRearrangeColumns, localizable(u"Rearrange Columns"), u"shuffle"},
    {OpJoinColumns, localizable(u"Join Columns"), u"join-columns"},
    {OpSetFinalNumberOfColumns, localizable(u"Set Final Number of Columns"), u"count"},
    {OpClipboardEditCell, localizable(u"Edit Cell"), u"compose"},
    {OpClipboardShiftTruncateLeft, localizable(u"Delete Column from the Left"), u"trash"},
    {OpClipboardShiftTruncateRight, localizable(u"Delete Column from the Right"), u"trash"},
    {OpClipboardShiftTruncateTop, localizable(u"Delete Line from the Top"), u"trash"},
    {OpClipboardShiftTruncateBottom, localizable(u"Delete Line from the Bottom"), u"trash"},
    {OpClipboardDeleteSelectedLines, localizable(u"Delete Selected Lines"), u"trash"},
    {OpClipboardDeleteSelectedColumns, localizable(u"Delete Selected Columns"), u"trash"},
    {OpClipboardShiftFillFromLeft, localizable(u"Add Column to the Left"), u"plus"},
    {OpClipboardShiftFillFromRight, localizable(u"Add Column to the Right"), u"plus"},
    {OpClipboardShiftFillFromTop, localizable(u"Add Line to the Top"), u"plus"},
    {OpClipboardShiftFillFromBottom, localizable(u"Add Line to the Bottom"), u"plus"},
    {OpClipboardMoveLeft, localizable(u"Move Column Left"), u"shuffle"},
    {OpClipboardMoveRight, localizable(u"Move Column Right"), u"shuffle"},
    {OpClipboardMoveUp, localizable(u"Move Line Up"), u"shuffle"},
    {OpClipboardMoveDown, localizable(u"Move Line Down"), u"shuffle"},
    {OpClipboardFlipHorizontal, localizable(u"Flip Horizontal"), u"repeat"},
    {OpClipboardFlipVertical, localizable(u"Flip Vertical"), u"repeat"},
    {OpClipboardFlipDiagonal, localizable(u"Flip Diagonal"), u"repeat"},
    {OpClipboardMergeLeft, localizable(u"Merge Left"), u"merge"},
    {OpClipboardMergeRight, localizable(u"Merge Right"), u"merge"},
    {OpClipboardMergeUp, localizable(u"Merge Up"), u"merge"},
    {OpClipboardMergeDown, localizable(u"Merge Down"), u"merge"},
    {OpClipboardJoinRows, localizable(u"Join Lines"), u"join-lines"},
    {OpClipboardJoinColumns, localizable(u"Join Columns"), u"join-columns"},
    {OpFinal, localizable(u"Final"), u"join-path"},
    {OpClipboardJoin, localizable(u"Join"), u"join-path"},
    {OpClipboardUndo, localizable(u"Undo Last"), u"refresh-1"},
};

// The detail of one record: parts that are joined by "; ".
class Detail {
 public:
  Detail(const OperationRecord& record, const OperationRecord* initialOperation)
      : record_(record), initialOperation_(initialOperation) {}

  std::u16string text() &&;

 private:
  void addPartsOfCode(OperationCode code);
  void addDecode();
  void addSplits();
  void addReplaceCharacter();
  void addSkipLine();
  void addTrimLine();
  void addReplaceLine();
  void addJoinLines();
  void addTrimColumn(std::u16string_view columnsWord);
  void addReplaceColumn(std::u16string_view columnsWord);
  void addReformatColumn();
  void addReformatPart();
  void addNumberOfColumns();
  void addJoinColumns();
  void addFinal();
  void addOutput();
  void addFill();
  void addEditCell();
  void addClipboardJoin();

  void add(std::u16string_view part);
  void addFormat(std::u16string_view key, std::initializer_list<FormatValue> values) {
    add(localizedFormat(key, values));
  }
  void addPlace(std::u16string_view word, std::string_view key) { add(localized(word) + record_.text(key)); }
  void addCaseSensitivity() {
    if (flagsAreSet(CaseSensitiveFlag)) add(localized(u"Case-sensitive"));
  }

  std::int64_t integer(std::string_view key, std::int64_t otherwise = 0) const {
    return record_.integer(key, otherwise);
  }
  std::u16string argument(std::string_view key) const { return record_.text(key); }
  // A separator as it would be typed.
  std::u16string separator(std::string_view key) const {
    return replaceWithBackslashedCharacters(record_.text(key));
  }
  bool flagsAreSet(std::int64_t flags) const { return hasFlags(integer("IntArg1"), flags); }

  const OperationRecord& record_;
  const OperationRecord* initialOperation_;
  std::u16string text_;
  bool hasParts_ = false;
};

void Detail::add(std::u16string_view part) {
  if (hasParts_) text_ += u"; ";
  text_ += part;
  hasParts_ = true;
}

std::u16string Detail::text() && {
  addPartsOfCode(static_cast<OperationCode>(record_.code()));
  return std::move(text_);
}

void Detail::addPartsOfCode(OperationCode code) {
  switch (code) {
    case OpInitial:
      addDecode();
      return addSplits();
    case OpClipboardSplit:
      return addSplits();
    case OpReplaceCharacter:
      return addReplaceCharacter();
    case OpSkipLine:
      return addSkipLine();
    case OpTrimLine:
      return addTrimLine();
    case OpReplaceLine:
      return addReplaceLine();
    case OpJoinLines:
      return addJoinLines();
    case OpTrimColumn:
      return addTrimColumn(localized(u"columns "));
    case OpClipboardTrim:
      return addTrimColumn(u"");
    case OpReplaceColumn:
      return addReplaceColumn(localized(u"columns "));
    case OpClipboardReplace:
      return addReplaceColumn(u"");
    case OpReformatColumn:
      return addReformatColumn();
    case OpSetInitialNumberOfColumns:
    case OpSetFinalNumberOfColumns:
      return addNumberOfColumns();
    case OpRearrangeColumns:
      return add(argument("Arg1"));
    case OpJoinColumns:
      return addJoinColumns();
    case OpFinal:
      return addFinal();
    case OpClipboardFill:
      return addFill();
    case OpClipboardEditCell:
      return addEditCell();
    case OpClipboardDeleteSelectedLines:
    case OpClipboardMoveUp:
    case OpClipboardMoveDown:
      return addPlace(u"Lines ", "Arg1");
    case OpClipboardDeleteSelectedColumns:
    case OpClipboardMoveLeft:
    case OpClipboardMoveRight:
      return addPlace(u"Columns ", "Arg1");
    case OpClipboardMergeLeft:
    case OpClipboardMergeRight:
      return addPlace(u"Columns ", "Arg2");
    case OpClipboardMergeUp:
    case OpClipboardMergeDown:
      return addPlace(u"Lines ", "Arg2");
    case OpClipboardJoin:
      return addClipboardJoin();
    case OpClipboardShiftTruncateLeft:
    case OpClipboardShiftTruncateRight:
    case OpClipboardShiftTruncateTop:
    case OpClipboardShiftTruncateBottom:
    case OpClipboardShiftFillFromLeft:
    case OpClipboardShiftFillFromRight:
    case OpClipboardShiftFillFromTop:
    case OpClipboardShiftFillFromBottom:
    case OpClipboardFlipHorizontal:
    case OpClipboardFlipVertical:
    case OpClipboardFlipDiagonal:
    case OpClipboardJoinRows:
    case OpClipboardJoinColumns:
    case OpClipboardUndo:
      return;
  }
}

void Detail::addDecode() {
  add(localized(u"Decode as ") + stringForEncoding(integer("IntArg2", kDefaultEncodingCode)));
}

void Detail::addSplits() {
  if (flagsAreSet(SplitIntoLines)) addFormat(u"Split contents into lines by \"%@\"", {separator("Arg1")});
  if (flagsAreSet(SplitIntoColumns)) addFormat(u"Split lines Into columns by \"%@\"", {separator("Arg2")});
}

void Detail::addReplaceCharacter() {
  const std::u16string replacement = argument("Arg2");
  switch (static_cast<CharacterClass>(integer("IntArg2"))) {
    case CharacterClass::Characters:
      return addFormat(u"%@ \"%@\" with \"%@\"", {localized(u"Characters"), argument("Arg1"), replacement});
    case CharacterClass::Control:
      return addFormat(u"%@ with \"%@\"", {localized(u"ASCII Control Character"), replacement});
    case CharacterClass::Uncommon:
      return addFormat(u"%@ with \"%@\"", {localized(u"Uncommon Character"), replacement});
  }
}

void Detail::addSkipLine() {
  const std::int64_t value = integer("IntArg2");
  std::u16string part = localized(u"Skip ") + stringForLineSkipType(value);
  const auto type = static_cast<LineSkipType>(value);
  const bool searches = type == LineSkipType::IfContains || type == LineSkipType::IfStartsWith ||
                        type == LineSkipType::IfEndsWith || type == LineSkipType::IfMatches;
  if (searches || type == LineSkipType::LineNumbers) part += u" \"" + argument("Arg1") + u"\"";
  add(part);
  if (searches) addCaseSensitivity();
}

void Detail::addTrimLine() {
  const std::int64_t value = integer("IntArg2");
  const std::u16string type = stringForTrimType(value);
  const std::u16string where = stringForTrimFromWhere(integer("IntArg3"));
  switch (static_cast<TrimType>(value)) {
    case TrimType::String:
    case TrimType::Characters:
      addFormat(u"%@ \"%@\" %@", {type, argument("Arg1"), where});
      return addCaseSensitivity();
    case TrimType::RegularExpression:
      addFormat(u"%@ \"%@\"", {type, argument("Arg1")});
      return addCaseSensitivity();
    case TrimType::Whitespace:
      break;
  }
  addFormat(u"%@ %@", {type, where});
}

bool isReplaceType(std::int64_t value) {
  return value == static_cast<std::int64_t>(ReplaceType::String) ||
         value == static_cast<std::int64_t>(ReplaceType::RegularExpression);
}

void Detail::addReplaceLine() {
  const std::int64_t type = integer("IntArg2");
  if (!isReplaceType(type)) return;
  addFormat(u"%@ \"%@\" with \"%@\"", {stringForReplaceType(type), argument("Arg1"), argument("Arg2")});
  addCaseSensitivity();
}

void Detail::addJoinLines() {
  addFormat(u"Number of lines to join: %ld", {integer("IntArg1")});
  addFormat(u"Separated by \"%@\"", {argument("Arg1")});
}

void Detail::addTrimColumn(std::u16string_view columnsWord) {
  const std::int64_t value = integer("IntArg2");
  const std::u16string type = stringForTrimType(value);
  const std::u16string where = stringForTrimFromWhere(integer("IntArg3"));
  const std::u16string place = argument("Arg1");
  switch (static_cast<TrimType>(value)) {
    case TrimType::String:
    case TrimType::Characters:
      addFormat(u"%@ \"%@\" %@ in %@\"%@\"", {type, argument("Arg2"), where, columnsWord, place});
      return addCaseSensitivity();
    case TrimType::RegularExpression:
      addFormat(u"%@ \"%@\"", {type, argument("Arg2")});  // meant: it leaves the columns out
      return addCaseSensitivity();
    case TrimType::Whitespace:
      break;
  }
  addFormat(u"%@ %@ in %@\"%@\"", {type, where, columnsWord, place});
}

void Detail::addReplaceColumn(std::u16string_view columnsWord) {
  const std::int64_t type = integer("IntArg2");
  if (!isReplaceType(type)) return;
  addFormat(u"%@ \"%@\" with \"%@\" in %@\"%@\"",
            {stringForReplaceType(type), argument("Arg2"), argument("Arg3"), columnsWord, argument("Arg1")});
  addCaseSensitivity();
}

void Detail::addReformatColumn() {
  addReformatPart();
  if (flagsAreSet(UseInvalidStringFlag))
    addFormat(u"Use \"%@\" if cannot be reformatted", {argument("Arg2")});
}

std::u16string sample(ReformatAs kind, std::int64_t format) {
  return stringForReformatAs(static_cast<std::int64_t>(kind), format);
}

void Detail::addReformatPart() {
  const std::int64_t first = integer("IntArg3", 1);
  const std::u16string columns = argument("Arg1");
  switch (static_cast<ReformatAs>(integer("IntArg2", 1))) {
    case ReformatAs::Date:
      return addFormat(u"Reformat as Date with format \"%@\" in columns \"%@\"",
                       {sample(ReformatAs::Date, first), columns});
    case ReformatAs::Time:
      return addFormat(u"Reformat as Time with format \"%@\" in columns \"%@\"",
                       {sample(ReformatAs::Time, first), columns});
    case ReformatAs::DateTime: {
      const std::u16string both = localizedFormat(
          u"%@ %@", {sample(ReformatAs::Date, first), sample(ReformatAs::Time, integer("IntArg4", 1))});
      return addFormat(u"Reformat as Date Time with format \"%@\" in columns \"%@\"", {both, columns});
    }
    case ReformatAs::Integer:
      return addFormat(u"Reformat as Integer in columns \"%@\"", {columns});
    case ReformatAs::Number:
      return addFormat(u"Reformat as Number with \"%ld\" digits after decimal point in columns \"%@\"",
                       {integer("Arg5"), columns});
  }
}

void Detail::addNumberOfColumns() {
  addFormat(u"Number of columns: %d", {integer("IntArg1", -1)});
  addFormat(u"Text for added columns \"%@\"", {argument("Arg1")});
}

void Detail::addJoinColumns() {
  const std::u16string list = argument("Arg1");
  std::u16string groups;
  for (const std::u16string_view token : componentsSeparatedByString(list, u",")) {
    if (!rangeOfString(token, u"+", 0)) continue;
    if (!groups.empty()) groups += u", ";
    groups += token;  // with its blanks, which is meant
  }
  add(groups.empty() ? localized(u"(None)") : groups);
  addFormat(u"Separated by \"%@\"", {argument("Arg2")});
}

void Detail::addFinal() {
  const std::int64_t initialFlags = initialOperation_ ? initialOperation_->integer("IntArg1", 0) : 0;
  if (hasFlags(initialFlags, SplitIntoColumns)) addFormat(u"Join columns with \"%@\"", {separator("Arg2")});
  if (hasFlags(initialFlags, SplitIntoLines)) addFormat(u"Join lines with \"%@\"", {separator("Arg1")});
  add(localized(u"Encode as ") + stringForEncoding(integer("IntArg2", kDefaultEncodingCode)));
  addOutput();
}

void Detail::addOutput() {
  const auto mode =
      static_cast<WriteMode>(integer("IntArg3", static_cast<std::int64_t>(WriteMode::Overwrite)));
  const std::u16string verb =
      localized(mode == WriteMode::Append ? localizable(u"Append") : localizable(u"Write"));
  const std::u16string folder = argument("Arg3");
  std::u16string fileName = argument("Arg4");
  if (fileName.empty()) fileName = u"output.txt";
  if (folder.empty()) {
    addFormat(u"%@ to \"%@\"", {verb, fileName});
  } else {
    addFormat(u"%@ to \"%@/%@\"", {verb, folder, fileName});
  }
}

void Detail::addFill() {
  const std::int64_t type = integer("IntArg1");
  if (type != static_cast<std::int64_t>(FillType::String) &&
      type != static_cast<std::int64_t>(FillType::Sequence))
    return;
  addFormat(u"%@ with \"%@\" in \"%@\"", {stringForFillType(type), argument("Arg1"), argument("Arg2")});
}

// Shown from 1. The largest index has no number behind it and wraps around.
std::int64_t shownNumber(std::int64_t index) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(index) + 1);
}

void Detail::addEditCell() {
  addFormat(u"Set value at line %ld column %ld to \"%@\"",
            {shownNumber(integer("IntArg1", -1)), shownNumber(integer("IntArg2", -1)), argument("Arg1")});
}

void Detail::addClipboardJoin() {
  addFormat(u"Join columns with \"%@\"", {separator("Arg2")});
  addFormat(u"Join lines with \"%@\"", {separator("Arg1")});
}

}  // namespace

std::array<std::u16string, 3> descriptionForOperation(const OperationRecord& operation,
                                                      const OperationRecord* initialOperation,
                                                      const OperationRecord* /*finalOperation*/) {
  for (const Heading& heading : kHeadings) {
    if (heading.code == operation.code())
      return {localized(heading.title), std::u16string(heading.icon),
              Detail(operation, initialOperation).text()};
  }
  return {};
}

std::u16string labelOfOperation(std::int64_t code) {
  return descriptionForOperation({{"Code", code}}, nullptr, nullptr)[0];
}

}  // namespace quillet
