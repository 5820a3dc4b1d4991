// The code space of operation records and the bits and values of their arguments.
#pragma once

#include <cstdint>

namespace quillet {

enum OperationCode : std::int64_t {
  // Jobs from file to file.
  OpInitial = 101,
  OpReplaceCharacter = 150,
  OpSkipLine = 201,
  OpTrimLine = 202,
  OpReplaceLine = 203,
  OpJoinLines = 251,
  OpTrimColumn = 301,
  OpReplaceColumn = 302,
  OpReformatColumn = 303,
  OpSetInitialNumberOfColumns = 351,
  OpRearrangeColumns = 352,
  OpJoinColumns = 353,
  OpSetFinalNumberOfColumns = 361,
  OpFinal = 901,
  // The clipboard data window.
  OpClipboardSplit = 102,
  OpClipboardTrim = 311,
  OpClipboardReplace = 312,
  OpClipboardFill = 314,
  OpClipboardEditCell = 401,
  OpClipboardShiftTruncateLeft = 402,
  OpClipboardShiftTruncateRight = 403,
  OpClipboardShiftTruncateTop = 404,
  OpClipboardShiftTruncateBottom = 405,
  OpClipboardDeleteSelectedLines = 406,
  OpClipboardDeleteSelectedColumns = 407,
  OpClipboardShiftFillFromLeft = 408,
  OpClipboardShiftFillFromRight = 409,
  OpClipboardShiftFillFromTop = 410,
  OpClipboardShiftFillFromBottom = 411,
  OpClipboardMoveLeft = 412,
  OpClipboardMoveRight = 413,
  OpClipboardMoveUp = 414,
  OpClipboardMoveDown = 415,
  OpClipboardFlipHorizontal = 416,
  OpClipboardFlipVertical = 417,
  OpClipboardFlipDiagonal = 418,
  OpClipboardMergeLeft = 419,
  OpClipboardMergeRight = 420,
  OpClipboardMergeUp = 421,
  OpClipboardMergeDown = 422,
  OpClipboardJoinRows = 423,
  OpClipboardJoinColumns = 424,
  OpClipboardJoin = 902,
  OpClipboardUndo = 999,
};

// IntArg1 of OpInitial; OpClipboardSplit reads only the last.
enum InitialFlag : std::int64_t { SplitIntoLines = 1, SplitIntoColumns = 16, RemoveQuotes = 32 };
// IntArg1 of OpFinal.
enum FinalFlag : std::int64_t { AddQuotes = 1, AddLineSeparator = 2 };
// IntArg1 of the trim, replace and skip operations.
inline constexpr std::int64_t CaseSensitiveFlag = 1;
// IntArg1 of OpReformatColumn.
inline constexpr std::int64_t UseInvalidStringFlag = 1;

enum class CharacterClass : std::int64_t { Characters = 0, Control = 1, Uncommon = 2 };
enum class LineSkipType : std::int64_t {
  IfBlank,
  IfContains,
  LineNumbers,
  IfStartsWith,
  IfEndsWith,
  IfMatches
};
enum class TrimType : std::int64_t { String, Characters, Whitespace, RegularExpression };
enum class TrimFromWhere : std::int64_t { BothSides, Start, End };
enum class ReplaceType : std::int64_t { String, RegularExpression };
enum class FillType : std::int64_t { String, Sequence };
enum class ReformatAs : std::int64_t { Date = 1, Time, DateTime, Integer, Number };
enum class WriteMode : std::int64_t { CreateNew = 1, Overwrite, Append };

// All the named bits are set.
constexpr bool hasFlags(std::int64_t value, std::int64_t flags) {
  return (value & flags) == flags;
}

}  // namespace quillet
