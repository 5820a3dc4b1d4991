// A whole use of the engine as the plain rule tells it: one character, one sequence, one cell after the
// other, with no buffers and no fast ways. It judges the engine. Searches, regular expressions, dates,
// encodings and the replacement table are the program's own; they have judges of their own.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/job_fixture.h"
#include "engine/job_log.h"
#include "engine/preview_stores.h"
#include "operations/input_file.h"
#include "operations/line_numbers.h"
#include "operations/operation_codes.h"
#include "operations/operation_record.h"
#include "platform/case_mapping.h"
#include "platform/character_set.h"
#include "platform/code_pages.h"
#include "platform/composed_sequences.h"
#include "platform/date_ladders.h"
#include "platform/numbers.h"
#include "platform/regular_expression.h"
#include "platform/text_search.h"
#include "platform/unicode_text.h"
#include "text/fields_and_lines_parser.h"
#include "text/replacement_table.h"

namespace quillet::testing {

using Text = std::u16string;
using Texts = std::vector<Text>;

inline Texts sequencesOf(std::u16string_view text) {
  Texts result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = composedSequenceEnd(text, at);
    result.emplace_back(text.substr(at, end - at));
    at = end;
  }
  return result;
}

inline Text joined(const Texts& parts, const Text& separator) {
  Text result;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) result += separator;
    result += parts[i];
  }
  return result;
}

inline Texts split(const Text& text, std::u16string_view separator) {
  Texts result;
  for (const auto part : componentsSeparatedByString(text, separator)) result.emplace_back(part);
  return result;
}

// --- Reading ---

struct ReferenceSettings {
  bool runOperations = false;
  std::int64_t inputEncoding = 4, outputEncoding = 4, writeMode = 2, joinLinesCount = 0;
  bool splitIntoLines = false, splitIntoColumns = false, addQuotes = false, addLineSeparator = false;
  std::optional<Text> inputLineSeparator, inputColumnSeparator, inputQuote;
  Text outputLineSeparator, outputColumnSeparator, outputFileName, joinLinesSeparator, joinColumnsSeparator;
  std::vector<std::vector<std::int64_t>> joinColumnGroups;
  std::vector<ReplacementTable::Pair> replaceCharacters;
};

inline bool hasBit(std::int64_t value, std::int64_t bit) {
  return (value & bit) != 0;
}

inline ReferenceSettings referenceSettings(const OperationList& list) {
  ReferenceSettings s;
  if (list.size() < 2) return s;
  const auto& first = list.front();
  const auto& last = list.back();
  s.runOperations = true;
  s.inputEncoding = first.integer("IntArg2", 4);
  s.splitIntoLines = hasBit(first.integer("IntArg1", 0), 1);
  if (s.splitIntoLines && first.has("Arg1")) s.inputLineSeparator = first.text("Arg1");
  s.splitIntoColumns = hasBit(first.integer("IntArg1", 0), 16);
  if (s.splitIntoColumns && first.has("Arg2")) s.inputColumnSeparator = first.text("Arg2");
  if (hasBit(first.integer("IntArg1", 0), 32)) s.inputQuote = u"\"";
  s.outputEncoding = last.integer("IntArg2", 4);
  if (s.splitIntoLines) s.outputLineSeparator = last.text("Arg1");
  if (s.splitIntoColumns) s.outputColumnSeparator = last.text("Arg2");
  s.outputFileName = last.text("Arg4");
  s.addQuotes = hasBit(last.integer("IntArg1", 0), 1);
  s.addLineSeparator = hasBit(last.integer("IntArg1", 0), 2);
  s.writeMode = last.integer("IntArg3", 2);
  for (const auto& one : list) {
    if (one.code() != 150) continue;
    appendReplacementPairs(one.integer("IntArg2", 0), one.text("Arg1"), one.text("Arg2"),
                           s.inputQuote.value_or(u""), s.inputLineSeparator.value_or(u""),
                           s.inputColumnSeparator.value_or(u""), s.replaceCharacters);
  }
  for (std::size_t i = 1; i + 1 < list.size(); ++i) {
    if (list[i].code() != 251) continue;
    s.joinLinesCount = list[i].integer("IntArg1", 0);
    if (s.joinLinesCount < 0) s.joinLinesCount = 0;
    s.joinLinesSeparator = list[i].text("Arg1");
    break;
  }
  for (std::size_t i = 1; i + 1 < list.size(); ++i) {
    if (list[i].code() != 353) continue;
    if (const Text groups = list[i].text("Arg1"); !groups.empty()) {
      for (const Text& token : split(groups, u",")) {
        s.joinColumnGroups.emplace_back();
        for (const Text& part : split(token, u"+"))
          s.joinColumnGroups.back().push_back(integerValue(part) - 1);
      }
    }
    s.joinColumnsSeparator = list[i].text("Arg2");
    break;
  }
  return s;
}

// Reads lines from bytes, one character at a time.
class ReferenceReader {
 public:
  explicit ReferenceReader(const std::string& bytes) : bytes_(bytes) {}

  // 0 a line or a piece, 2 the end of the file.
  int readLine(std::int64_t encoding, const Text& quote, const Text& separator, const ReplacementTable& table,
               const Text& replacement, Text& into, ReadLineStats& stats) {
    Text buffer;
    bool inQuotes = false;
    for (;;) {
      Text text;
      int invalidBytes = 0;
      const Taken taken = encoding == 4 ? takeUtf8(stats, text, invalidBytes)
                                        : takeByteIn(encoding, replacement, stats, text);
      if (taken == Taken::Nothing) {
        into += buffer;
        if (!buffer.empty()) ++stats.linesRead;
        return 2;
      }
      if (taken == Taken::InvalidUtf8) {
        for (int i = 0; i < invalidBytes; ++i) buffer += replacement;
        if (buffer.size() >= 16384) moveToLine(buffer, into, stats);
        continue;
      }
      if (taken == Taken::Character) text = Text(table.replaced(text));
      bool limitHit = false;
      if (!text.empty()) {
        buffer += text;
        if (buffer.size() >= 16384) {
          moveToLine(buffer, into, stats);
          limitHit = true;
        }
      }
      if (!quote.empty() && text == quote) inQuotes = !inQuotes;
      if (limitHit) return 0;
      if (inQuotes || separator.empty()) continue;
      // The separator can stand at the very end only, so the end is all that must be looked at.
      const std::size_t tail = buffer.size() < 200 ? 0 : buffer.size() - 200;
      if (const auto found = rangeOfString(std::u16string_view(buffer).substr(tail), separator, 12)) {
        into += buffer.substr(0, tail + found->location);
        ++stats.linesRead;
        return 0;
      }
    }
  }

 private:
  enum class Taken { Nothing, Character, Replaced, InvalidUtf8 };

  static void moveToLine(Text& buffer, Text& into, ReadLineStats& stats) {
    into += buffer;
    buffer.clear();
    ++stats.maximumLengthLinesRead;
  }

  bool takeByte(ReadLineStats& stats, unsigned char& byte) {
    if (at_ == bytes_.size()) return false;
    byte = static_cast<unsigned char>(bytes_[at_++]);
    ++stats.bytesRead;
    return true;
  }

  Taken takeByteIn(std::int64_t encoding, const Text& replacement, ReadLineStats& stats, Text& text) {
    unsigned char byte;
    if (!takeByte(stats, byte)) return Taken::Nothing;
    const char16_t unit = singleByteTable(static_cast<Encoding>(encoding))[byte];
    if (unit == kUndefinedByte) {
      text = replacement;
      return Taken::Replaced;
    }
    ++stats.charactersDecoded;
    text = Text(1, unit);
    return Taken::Character;
  }

  Taken takeUtf8(ReadLineStats& stats, Text& text, int& count) {
    unsigned char b[4];
    int expected = 1;
    for (count = 0; count < expected;) {
      if (!takeByte(stats, b[count])) return Taken::Nothing;
      if (count++ == 0) expected = b[0] <= 0xBF ? 1 : b[0] <= 0xDF ? 2 : b[0] <= 0xEF ? 3 : 4;
    }
    const auto in = [&](int i, int low, int high) { return b[i] >= low && b[i] <= high; };
    const auto tail = [&](int i) { return in(i, 0x80, 0xBF); };
    bool valid = false;
    char32_t character = 0;
    switch (count) {
      case 1:
        valid = b[0] < 0x80;
        character = b[0];
        break;
      case 2:
        valid = in(0, 0xC2, 0xDF) && tail(1);
        character = (b[0] & 0x1Fu) << 6 | (b[1] & 0x3Fu);
        break;
      case 3:
        valid = tail(2) && ((in(0, 0xE0, 0xE0) && in(1, 0xA0, 0xBF)) || (in(0, 0xE1, 0xEC) && tail(1)) ||
                            (in(0, 0xED, 0xED) && in(1, 0x80, 0x9F)) || (in(0, 0xEE, 0xEF) && tail(1)));
        character = (b[0] & 0x0Fu) << 12 | (b[1] & 0x3Fu) << 6 | (b[2] & 0x3Fu);
        break;
      default:
        valid = tail(2) && tail(3) &&
                ((in(0, 0xF0, 0xF0) && in(1, 0x90, 0xBF)) || (in(0, 0xF1, 0xF3) && tail(1)) ||
                 (in(0, 0xF4, 0xF4) && in(1, 0x80, 0x8F)));
        character = (b[0] & 0x07u) << 18 | (b[1] & 0x3Fu) << 12 | (b[2] & 0x3Fu) << 6 | (b[3] & 0x3Fu);
    }
    if (!valid) return Taken::InvalidUtf8;
    ++stats.charactersDecoded;
    appendCodePoint(character, text);
    return Taken::Character;
  }

  const std::string& bytes_;
  std::size_t at_ = 0;
};

inline Texts referenceFields(const Text& line, const Text& separator, const Text& quote) {
  const Texts sequences = sequencesOf(line);
  Texts fields;
  Text field;
  bool inQuotes = false;
  for (std::size_t i = 0; i < sequences.size(); ++i) {
    const Text& sequence = sequences[i];
    if (!quote.empty() && sequence == quote) {
      if (!inQuotes) {
        inQuotes = true;
      } else if (i + 1 < sequences.size() && sequences[i + 1] == quote) {
        field += quote;
        ++i;
      } else {
        inQuotes = false;
      }
    } else if (sequence == separator && !inQuotes) {
      fields.push_back(field);
      field.clear();
    } else {
      field += sequence;
    }
  }
  fields.push_back(field);
  return fields;
}

// --- The operations ---

inline SearchOptions referenceCase(const OperationRecord& record) {
  return hasBit(record.integer("IntArg1", 0), 1) ? 0 : 1;
}
inline std::optional<RegularExpression> referenceExpression(const OperationRecord& record,
                                                            const Text& pattern) {
  return RegularExpression::compiled(pattern, hasBit(record.integer("IntArg1", 0), 1)
                                                  ? CaseSensitivity::Sensitive
                                                  : CaseSensitivity::Insensitive);
}

inline Text referenceReplaceMatches(const OperationRecord& record, const Text& text, const Text& pattern,
                                    const Text& templateText) {
  auto expression = referenceExpression(record, pattern);
  Text result;
  if (!expression || expression->appendReplacingMatches(text, templateText, result) == 0) return text;
  return result;
}

// The member of the set that stands at one end of a range, by itself or as a pair.
inline std::optional<TextRange> memberAt(const std::set<char32_t>& set, const Text& text, TextRange range,
                                         bool atEnd) {
  const Text part = text.substr(range.location, range.length);
  if (part.empty()) return std::nullopt;
  const std::size_t n = part.size();
  const bool pair = n >= 2 && (atEnd ? isHighSurrogate(part[n - 2]) && isLowSurrogate(part[n - 1])
                                     : isHighSurrogate(part[0]) && isLowSurrogate(part[1]));
  const std::size_t units = pair ? 2 : 1;
  const std::size_t start = atEnd ? n - units : 0;
  const char32_t character = codePointAt(part, start);
  if (!pair && isSurrogate(part[start])) return std::nullopt;
  if (!set.contains(character)) return std::nullopt;
  return TextRange{range.location + start, units};
}

inline std::optional<TextRange> referenceLongestRange(const std::set<char32_t>& set, const Text& text,
                                                      bool fromEnd) {
  auto found = memberAt(set, text, {0, text.size()}, fromEnd);
  if (!found) return found;
  for (;;) {
    TextRange next;
    if (fromEnd) {
      next = {found->location < 2 ? 0 : found->location - 1, 1};
    } else {
      next.location = found->location + 1;
      next.length = next.location < text.size() ? text.size() - next.location : 0;
      if (next.length == 0) next.location = text.size();
    }
    const auto result = memberAt(set, text, next, fromEnd);
    if (!result) return found;
    found = result;
    if (fromEnd && found->location == 0) return found;
  }
}

inline std::set<char32_t> referenceSet(const Text& text) {
  std::set<char32_t> set;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t character = codePointAt(text, i);
    if (character > 0xFFFF) ++i;
    if (character > 0xFFFF || !isSurrogate(static_cast<char16_t>(character))) set.insert(character);
  }
  return set;
}

inline Text referenceTrim(const OperationRecord& record, Text text, const Text& what) {
  const std::int64_t type = record.integer("IntArg2", 0);
  const std::int64_t where = record.integer("IntArg3", 0);
  const SearchOptions options = referenceCase(record);
  if (type == 3) return what.empty() ? text : referenceReplaceMatches(record, text, what, u"");
  std::set<char32_t> set;
  if (type == 1) set = referenceSet(options == 0 ? what : lowercaseString(what) + uppercaseString(what));
  if (type == 2) {
    set = {0x09, 0x20, 0xA0, 0x1680, 0x202F, 0x205F, 0x3000};
    for (char32_t blank = 0x2000; blank <= 0x200B; ++blank) set.insert(blank);
  }
  if (where == 0 || where == 1) {
    if (type == 0) {
      if (const auto found = rangeOfString(text, what, options | 8)) text = text.substr(found->length);
    } else if (type == 1 || type == 2) {
      if (const auto found = referenceLongestRange(set, text, false)) text = text.substr(found->end());
    }
  }
  if (where == 0 || where == 2) {
    if (type == 0) {
      if (const auto found = rangeOfString(text, what, options | 4 | 8))
        text = text.substr(0, found->location);
    } else if (type == 1 || type == 2) {
      if (const auto found = referenceLongestRange(set, text, true)) text = text.substr(0, found->location);
    }
  }
  return text;
}

inline Text referenceReplace(const OperationRecord& record, const Text& text, const Text& what,
                             const Text& with) {
  if (what.empty()) return text;
  const std::int64_t type = record.integer("IntArg2", 0);
  if (type == 0) return stringByReplacingOccurrences(text, what, with, referenceCase(record));
  if (type == 1) return referenceReplaceMatches(record, text, what, with);
  return text;
}

inline bool referenceSkips(const OperationRecord& record, const Text& line, std::int64_t inputLineIndex) {
  const Text text = record.text("Arg1");
  const SearchOptions options = referenceCase(record);
  switch (record.integer("IntArg2", 0)) {
    case 0:
      return line.empty();
    case 1:
      return rangeOfString(line, text, options).has_value();
    case 2: {
      IndexSet numbers;
      std::int64_t skipBeyond = -1;
      parseLineNumbersString(text, numbers, &skipBeyond, false);
      return numbers.contains(inputLineIndex + 1) || (skipBeyond > 0 && inputLineIndex + 1 >= skipBeyond);
    }
    case 3:
      return rangeOfString(line, text, options | 8).has_value();
    case 4:
      return rangeOfString(line, text, options | 4 | 8).has_value();
    case 5: {
      auto expression = referenceExpression(record, text);
      return expression && expression->hasMatch(line);
    }
    default:
      return false;
  }
}

inline void referenceResize(Texts& cells, const OperationRecord& record) {
  const std::int64_t wanted = record.integer("IntArg1", 0);
  while (static_cast<std::int64_t>(cells.size()) > (wanted < 0 ? 0 : wanted)) cells.pop_back();
  while (static_cast<std::int64_t>(cells.size()) < wanted) cells.push_back(record.text("Arg1"));
}

// --- The whole ---

struct ReferenceFile {
  std::string path;
  std::string bytes;
  bool isThere = true;
  std::optional<OperationList> operations;
};

class ReferenceJob {
 public:
  // What a job begins with; outputs also receives what it writes.
  std::vector<ReferenceFile> files;
  Text decodeReplacement = u"?", encodeReplacement = u"?";
  std::map<std::string, std::string> outputs;  // by name
  std::set<std::string> outputFolders;         // names at which there is a folder
  std::string outputFolder;

  // What it gives.
  std::vector<JobLog::Entry> log;  // as Job::logEntries() shows it
  PreviewStores::Content preview;
  std::vector<std::string> outputPaths;
  std::map<std::size_t, std::vector<ColumnEntry>> expectedColumns;  // by file
  std::vector<std::string> systemLog;                               // kinds of lines that go there
  bool hasManyRows = false;                                         // more than a run keeps

  void run() {
    write_ = true;
    logLine(0, "Job started ...");
    for (std::size_t i = 0; i < files.size(); ++i) passOver(i);
    logCounts(true, totals_);
    logLine(0, hasIssues_ ? "Job completed with issues" : "Job completed");
    logLine(0, "Job ended ...");
  }

  void previewOf(std::size_t index) {
    write_ = false;
    passOver(index);
  }

 private:
  struct Counts {
    ReadLineStats read;
    std::int64_t bytesWritten = 0, charactersEncoded = 0, linesWritten = 0, linesSkipped = 0;
  };

  void logLine(int level, const std::string& text) {
    if (!log.empty() && log.back().text == text) {
      ++repeats_;
      return;
    }
    if (repeats_ != 0) log.push_back({0, "(Last message repeated " + std::to_string(repeats_) + " times)"});
    repeats_ = 0;
    log.push_back({level, text});
    if (level == 1 || level == 2) hasIssues_ = true;
  }
  void logCounts(bool total, const Counts& c) {
    for (const auto& line : countLines(total, {c.read.bytesRead, c.read.charactersDecoded, c.read.linesRead,
                                               c.read.maximumLengthLinesRead, c.bytesWritten,
                                               c.charactersEncoded, c.linesWritten, c.linesSkipped}))
      logLine(0, line);
  }

  void passOver(std::size_t index) {
    const ReferenceFile& file = files[index];
    file_ = &file;
    fileIndex_ = index;
    list_ = file.operations.value_or(OperationList());
    settings_ = referenceSettings(list_);
    counts_ = {};
    preview.inputLineSeparator = settings_.inputLineSeparator.value_or(u"");
    if (file.isThere)
      processOpenFile();
    else
      logLine(2, "Could not open \"" + file.path + "\" for reading [errno ?]");
    if (!write_) return;
    logCounts(false, counts_);
    totals_.read += counts_.read;
    totals_.bytesWritten += counts_.bytesWritten;
    totals_.charactersEncoded += counts_.charactersEncoded;
    totals_.linesWritten += counts_.linesWritten;
    totals_.linesSkipped += counts_.linesSkipped;
  }

  void processOpenFile() {
    const std::string name = toUtf8(settings_.outputFileName);
    temporaryPath_ = name.empty() ? "<tmp>" : "<tmp>/" + name;
    temporary_.reset();
    if (write_) {
      logLine(0, "Processing \"" + file_->path + "\"");
      if (!name.empty() && name.find('/') == name.npos)
        temporary_ = "";
      else
        logLine(2, "Could not open \"" + temporaryPath_ + "\" for writing [errno ?]");
    }
    sample();
    lineLoop();
    if (write_) finishOutput(name);
  }

  void sample() {
    ReferenceReader reader(file_->bytes);
    Text text;
    ReadLineStats dropped;
    if (reader.readLine(settings_.inputEncoding, u"", u"", {}, decodeReplacement, text, dropped) == 2 &&
        text.empty())
      logLine(2, "Could not read from \"" + file_->path + "\" [errno ?]");
    preview.inputString = text;
  }

  void lineLoop() {
    ReferenceReader reader(file_->bytes);
    const ReplacementTable table(settings_.replaceCharacters, settings_.inputQuote.value_or(u""),
                                 settings_.inputLineSeparator.value_or(u""),
                                 settings_.inputColumnSeparator.value_or(u""));
    keptLineCount_ = 0;
    pending_.clear();
    previewHasOutput_ = fileHasOutput_ = endOfInput_ = false;
    std::int64_t linesInCurrentFile = 0;
    for (std::int64_t inputLineIndex = 0;; ++inputLineIndex) {
      Text line;
      ReadLineStats stats;
      const int result =
          reader.readLine(settings_.inputEncoding, settings_.inputQuote.value_or(u""),
                          settings_.inputLineSeparator.value_or(u""), table, decodeReplacement, line, stats);
      counts_.read += stats;
      if (result == 2) endOfInput_ = true;
      if (result == 2 && line.empty()) break;
      ++linesInCurrentFile;
      takeLine(line, inputLineIndex);
      if (endOfInput_ || (!write_ && linesInCurrentFile == 10)) break;
    }
    if (!pending_.empty()) flush();
  }

  Texts cellsOf(const Text& line) const {
    if (!settings_.inputColumnSeparator || settings_.inputColumnSeparator->empty()) return {line};
    return referenceFields(line, *settings_.inputColumnSeparator, settings_.inputQuote.value_or(u""));
  }

  const OperationRecord* firstOf(std::int64_t code) const {
    for (std::size_t i = 1; i + 1 < list_.size(); ++i)
      if (list_[i].code() == code) return &list_[i];
    return nullptr;
  }

  void takeLine(Text line, std::int64_t inputLineIndex) {
    inputColumns_ = cellsOf(line);
    addToStore(preview.inputRows, inputColumns_);
    if (!settings_.runOperations) return;
    for (std::size_t i = 1; i + 1 < list_.size(); ++i) {
      const OperationRecord& record = list_[i];
      switch (record.code()) {
        case 201:
          if (referenceSkips(record, line, inputLineIndex)) {
            ++counts_.linesSkipped;
            return;
          }
          break;
        case 202:
          line = referenceTrim(record, line, record.text("Arg1"));
          break;
        case 203:
          line = referenceReplace(record, line, record.text("Arg1"), record.text("Arg2"));
          break;
        default:
          break;
      }
    }
    if (keptLineCount_ == 0) {
      if (const auto* resize = firstOf(351)) referenceResize(inputColumns_, *resize);
      auto& columns = expectedColumns[fileIndex_];
      columns.clear();
      for (const Text& cell : inputColumns_)
        columns.push_back({static_cast<std::int64_t>(columns.size()), cell});
    }
    Texts outputCells;
    const Text outputText = columnStage(line, inputLineIndex, outputCells);
    outputStage(outputCells, outputText);
    ++keptLineCount_;
  }

  void addToStore(PreviewStores::Rows& rows, const Texts& cells) {
    if (++storedRows_ > 1'000) hasManyRows = true;  // of both sides; a safe guess
    if (settings_.splitIntoLines || rows.empty()) {
      rows.push_back(cells);
      return;
    }
    if (rows[0].empty() || inputColumns_.empty()) return;
    Text head = rows[0][0];
    std::int64_t remaining = 16384 - static_cast<std::int64_t>(head.size());
    if (remaining <= 0) return;
    for (const Text& sequence : sequencesOf(inputColumns_[0])) {
      if (remaining-- == 0) break;
      head += sequence;
    }
    rows.clear();
    rows.push_back({head});
  }

  // --- Columns ---

  Text columnStage(const Text& line, std::int64_t inputLineIndex, Texts& outputCells) {
    Texts cells = cellsOf(line);
    if (settings_.inputColumnSeparator.value_or(u"").empty()) {
      outputCells = cells;
      return line;
    }
    for (std::size_t i = 1; i + 1 < list_.size(); ++i) {
      const OperationRecord& record = list_[i];
      if (record.code() == 351) referenceResize(cells, record);
      if (record.code() != 301 && record.code() != 302 && record.code() != 303) continue;
      IndexSet selected;
      parseLineNumbersString(record.text("Arg1"), selected, nullptr, true);
      for (std::size_t index = 0; index < cells.size(); ++index)
        if (selected.contains(static_cast<std::int64_t>(index)))
          changeCell(record, cells[index], inputLineIndex);
    }
    if (!settings_.joinColumnGroups.empty())
      joinColumns(cells);
    else if (const auto* order = firstOf(352))
      rearrange(cells, order->text("Arg1"));
    for (const Text& cell : cells) {
      if (!settings_.addQuotes)
        outputCells.push_back(cell);
      else
        outputCells.push_back(u"\"" + stringByReplacingOccurrences(cell, u"\"", u"\"\"") + u"\"");
    }
    for (std::size_t i = 1; i + 1 < list_.size(); ++i)
      if (list_[i].code() == 361) referenceResize(outputCells, list_[i]);
    return joined(outputCells, settings_.outputColumnSeparator);
  }

  void changeCell(const OperationRecord& record, Text& cell, std::int64_t inputLineIndex) {
    if (record.code() == 301) cell = referenceTrim(record, cell, record.text("Arg2"));
    if (record.code() == 302) cell = referenceReplace(record, cell, record.text("Arg2"), record.text("Arg3"));
    if (record.code() == 303)
      if (const auto result = reformatted(record, cell, inputLineIndex)) cell = *result;
  }

  std::optional<Text> reformatted(const OperationRecord& record, const Text& cell,
                                  std::int64_t inputLineIndex) {
    const std::int64_t as = record.integer("IntArg2", 1);
    Text result;
    if (as == 4) {
      appendInteger(integerValue(cell), result);
      return result;
    }
    if (as == 5) {
      appendFixed(double{floatValue(cell)}, record.integer("Arg5", 0), result);
      return result;
    }
    if (as < 1 || as > 5) return std::nullopt;
    const Text text(trimmed(cell, CharacterSet::whitespaceAndNewline()));
    if (text.empty()) return std::nullopt;
    const auto instant = as == 1   ? dateReader_.dateFromString(text)
                         : as == 2 ? dateReader_.timeFromString(text)
                                   : dateReader_.dateTimeFromString(text);
    if (!instant) {
      const char* const kinds[] = {"date", "time", "date time"};
      logLine(1, "Could not convert \"" + toUtf8(text) + "\" into a " + kinds[as - 1] + " on line " +
                     std::to_string(inputLineIndex + 1));
      if (hasBit(record.integer("IntArg1", 0), 1)) return record.text("Arg2");
      return std::nullopt;
    }
    const std::int64_t format = record.integer("IntArg3", 1);
    DatePrinter printer = as == 1   ? DatePrinter::forDate(format)
                          : as == 2 ? DatePrinter::forTime(format)
                                    : DatePrinter::forDateTime(format, record.integer("IntArg4", 1));
    printer.append(*instant, result);
    return result;
  }

  void joinColumns(Texts& cells) const {
    Texts groups;
    for (const auto& group : settings_.joinColumnGroups) {
      Texts collected;
      for (const std::int64_t index : group)
        if (index >= 0 && index < static_cast<std::int64_t>(cells.size()))
          collected.push_back(cells[static_cast<std::size_t>(index)]);
      groups.push_back(joined(collected, settings_.joinColumnsSeparator));
    }
    cells = groups;
  }

  static void rearrange(Texts& cells, const Text& order) {
    const Texts snapshot = cells;
    const Texts tokens = split(order, u",");
    for (std::size_t p = 0; p < tokens.size(); ++p) {
      const std::int64_t v = integerValue(tokens[p]);
      if (v < 1 || v - 1 >= static_cast<std::int64_t>(snapshot.size())) continue;
      if (p > cells.size()) continue;
      if (p == cells.size()) cells.emplace_back();
      cells[p] = snapshot[static_cast<std::size_t>(v - 1)];
    }
  }

  // --- Output ---

  // Adds to bytes and characters; the bytes written, or -1 for an empty text.
  std::int64_t writeEncodedString(const Text& text, std::int64_t& characters) {
    std::int64_t total = 0;
    for (const Text& sequence : sequencesOf(text)) {
      const auto encoding = static_cast<Encoding>(settings_.outputEncoding);
      const Text& choice = canBeConverted(sequence, encoding) ? sequence : encodeReplacement;
      auto bytes = encodedText(choice, encoding);
      if (!bytes) {
        systemLog.push_back("replacement");
        continue;
      }
      ++characters;
      bytes = bytes->substr(0, bytes->find('\0'));
      if (!temporary_) continue;  // the write fails
      *temporary_ += *bytes;
      total += static_cast<std::int64_t>(bytes->size());
    }
    return text.empty() ? -1 : total;
  }

  bool writeAndCount(const Text& text) {
    std::int64_t characters = 0;
    const std::int64_t bytes = writeEncodedString(text, characters);
    if (bytes == -1) return false;
    counts_.bytesWritten += bytes;
    counts_.charactersEncoded += characters;
    return true;
  }

  void writeLineSeparator() {
    if (writeAndCount(settings_.outputLineSeparator)) return;
    logLine(2, "Could not write line separator to \"" + temporaryPath_ + "\" [errno ?]");
    endOfInput_ = true;
  }

  void outputStage(const Texts& cells, const Text& text) {
    addToStore(preview.outputRows, cells);
    if (settings_.splitIntoLines && settings_.addLineSeparator) {
      if (!previewHasOutput_) {
        preview.outputString += settings_.outputLineSeparator;
        previewHasOutput_ = true;
      }
      if (write_ && !fileHasOutput_) writeLineSeparator();
    }
    Text toEmit = text;
    if (settings_.joinLinesCount >= 2) {
      pending_.push_back(text);
      if ((keptLineCount_ + 1) % settings_.joinLinesCount != 0) return;
      toEmit = joined(pending_, settings_.joinLinesSeparator);
      pending_.clear();
    }
    separatorBetweenLines();
    preview.outputString += toEmit;
    previewHasOutput_ = true;
    if (!write_) return;
    if (!writeAndCount(toEmit)) {
      logLine(2, "Could not write to \"" + temporaryPath_ + "\" [errno ?]");
      endOfInput_ = true;
      return;
    }
    fileHasOutput_ = true;
    ++counts_.linesWritten;
  }

  void separatorBetweenLines() {
    if (!settings_.splitIntoLines) return;
    if (previewHasOutput_) preview.outputString += settings_.outputLineSeparator;
    if (write_ && fileHasOutput_) writeLineSeparator();
  }

  void flush() {
    separatorBetweenLines();
    const Text text = joined(pending_, settings_.joinLinesSeparator);
    preview.outputString += text;
    if (write_ && !writeAndCount(text)) logLine(2, "Could not write to \"" + temporaryPath_ + "\" [errno ?]");
  }

  void finishOutput(const std::string& name) {
    if (!temporary_ && !name.empty()) {
      logLine(2, "Could not open tmp file \"" + temporaryPath_ + "\" for reading [errno ?]");
      return;
    }
    if (name.empty()) {
      logLine(2, "Output file must have a file name.");
      return;
    }
    const std::string path = outputFolder + "/" + name;
    if (outputFolders.contains(name)) {
      logLine(2, "Could not open output file \"" + path + "\" for writing [errno ?]");
      return;
    }
    outputPaths.push_back(path);
    if (settings_.writeMode != 3) outputs[name].clear();
    outputs[name] += *temporary_;
  }

  bool write_ = false;
  bool hasIssues_ = false;
  std::int64_t repeats_ = 0, storedRows_ = 0;
  Counts totals_, counts_;
  DateReader dateReader_;

  const ReferenceFile* file_ = nullptr;
  std::size_t fileIndex_ = 0;
  OperationList list_;
  ReferenceSettings settings_;
  std::string temporaryPath_;
  std::optional<std::string> temporary_;  // nothing if it could not be made
  std::int64_t keptLineCount_ = 0;
  Texts pending_, inputColumns_;
  bool previewHasOutput_ = false, fileHasOutput_ = false, endOfInput_ = false;
};

}  // namespace quillet::testing
