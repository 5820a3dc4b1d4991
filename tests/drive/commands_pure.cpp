// The operations that need no application: {"do":"call","name":...}.
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "clipboard/cell_statistics.h"
#include "clipboard/cell_trim.h"
#include "clipboard/field_value.h"
#include "drive/command_table.h"
#include "drive/index_set_steps.h"
#include "drive/json_values.h"
#include "engine/file_settings.h"
#include "engine/line_operations.h"
#include "operations/default_operations.h"
#include "operations/escapes.h"
#include "operations/labels.h"
#include "operations/line_numbers.h"
#include "operations/operation_codes.h"
#include "operations/operation_description.h"
#include "operations/stored_values.h"
#include "platform/date_ladders.h"
#include "platform/unicode_text.h"
#include "shell/job_details.h"
#include "shell/operation_json.h"
#include "storage/db_interface.h"
#include "text/csv_components.h"
#include "text/encodings.h"
#include "text/field_splitter.h"
#include "text/fields_and_lines_parser.h"
#include "text/file_scan.h"
#include "text/text_writer.h"

namespace quillet::drive {

namespace {

// A descriptor that is closed at the end of its block.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

// Text input.

json findFields(Drive&, const Arguments& arguments) {
  std::vector<std::u16string> fields;
  findFieldsInLine(arguments.text("line"), fields, arguments.text("separatorString", u""),
                   arguments.text("quoteString", u""));
  return {{"fields", jsonTexts(fields)}};
}

json findComponents(Drive&, const Arguments& arguments) {
  std::vector<std::u16string> fields;
  findComponentsOfCSVString(arguments.text("text"), fields);
  return {{"fields", jsonTexts(fields)}};
}

ReplacementTable::Pair pairFromCommand(const json& value) {
  if (!value.is_array() || value.size() != 2 || !value[1].is_string() ||
      (!value[0].is_string() && !value[0].is_number_integer()))
    throw CommandError("\"replaceCharacters\" must be a list of [key, text]");
  const std::u16string text = toUtf16(value[1].get_ref<const std::string&>());
  if (value[0].is_string()) return {toUtf16(value[0].get_ref<const std::string&>()), text};
  return {value[0].get<std::int64_t>(), text};
}

LineRules lineRules(const Arguments& arguments) {
  std::vector<ReplacementTable::Pair> pairs;
  if (arguments.has("replaceCharacters")) {
    const json& list = arguments.value("replaceCharacters");
    if (!list.is_array()) throw CommandError("\"replaceCharacters\" must be a list of [key, text]");
    for (const auto& pair : list)
      if (!pair.is_array() || pair.size() == 2) pairs.push_back(pairFromCommand(pair));  // others are ignored
  }
  const std::u16string quote = arguments.text("quoteString", u"");
  const std::u16string lineSeparator = arguments.text("lineSeparator", u"");
  return LineRules(
      arguments.integer("encoding", kDefaultEncodingCode), quote, lineSeparator,
      ReplacementTable(std::move(pairs), quote, lineSeparator, arguments.text("columnSeparator", u"")),
      arguments.text("decodeErrorReplacement", u"?"));
}

json readLines(Drive&, const Arguments& arguments) {
  const LineRules rules = lineRules(arguments);
  const Descriptor file(open(arguments.path("path").c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.number() < 0)
    throw CommandError(std::string("\"path\" cannot be opened: ") + std::strerror(errno));
  FieldsAndLinesParser parser;
  json calls = json::array();
  for (ReadResult result = ReadResult::Line; result == ReadResult::Line;) {
    TextBuffer line;
    ReadLineStats stats;
    std::u16string errors;
    result = parser.readLineFrom(file.number(), rules, line, stats, &errors);
    calls.push_back(
        {{"result", static_cast<int>(result)},
         {"line", jsonText(line.view())},
         {"errors", jsonText(errors)},
         {"stats",
          {stats.bytesRead, stats.charactersDecoded, stats.linesRead, stats.maximumLengthLinesRead}}});
  }
  return {{"calls", std::move(calls)}};
}

json replaceCharacters(Drive&, const Arguments& arguments) {
  const auto pairs = replaceCharactersFromOperations(
      arguments.operations("operations"), arguments.text("quoteString", u""),
      arguments.text("lineSeparator", u""), arguments.text("columnSeparator", u""));
  json result = json::array();
  for (const auto& [key, text] : pairs) {
    const auto* number = std::get_if<std::int64_t>(&key);
    result.push_back({number ? json(*number) : jsonText(std::get<std::u16string>(key)), jsonText(text)});
  }
  return {{"pairs", std::move(result)}};
}

json scan(Drive&, const Arguments& arguments) {
  bool lineEndsInCR = false;
  std::int64_t fileType = 1;
  json log = json::array();
  scanFile(arguments.path("path"), arguments.integer("encoding", kDefaultEncodingCode), &lineEndsInCR,
           &fileType, [&log](int level, std::u16string_view text) {
             log.push_back({level, toUtf8(text)});
           });
  return {{"fileType", fileType}, {"lineEndsInCR", lineEndsInCR}, {"log", std::move(log)}};
}

// Lists of lines and columns.

json parseLineNumbers(Drive&, const Arguments& arguments) {
  IndexSet indexes;
  std::int64_t skipBeyondNumber = arguments.integer("skipBeyondNumber", -1);
  parseLineNumbersString(arguments.text("text", u""), indexes, &skipBeyondNumber,
                         arguments.boolean("subtract1", false));
  return {{"indexes", jsonIndexes(indexes)}, {"skipBeyondNumber", skipBeyondNumber}};
}

// An absent set is an empty one.
IndexSet indexesOrNone(const Arguments& arguments) {
  return arguments.has("indexes") ? arguments.indexes("indexes") : IndexSet();
}

json stringFromIndexes(Drive&, const Arguments& arguments) {
  return {{"text", jsonText(stringPlus1FromIndexSet(indexesOrNone(arguments)))}};
}

json expandedStringFromIndexes(Drive&, const Arguments& arguments) {
  return {{"text", jsonText(expandedStringPlus1FromIndexSet(indexesOrNone(arguments)))}};
}

// Texts to type and to show.

json fromBackslashes(Drive&, const Arguments& arguments) {
  return {{"text", jsonText(replaceBackslashedCharacters(arguments.text("text")))}};
}

json toBackslashes(Drive&, const Arguments& arguments) {
  return {{"text", jsonText(replaceWithBackslashedCharacters(arguments.text("text")))}};
}

json withControlCharactersShown(Drive&, const Arguments& arguments) {
  return {{"text", jsonText(stringByReplacingControlCharactersFromString(
                       arguments.text("text"), arguments.text("lineSeparator", u"")))}};
}

json description(Drive&, const Arguments& arguments) {
  const auto initial = arguments.optionalOperation("initialOperation");
  const auto final = arguments.optionalOperation("finalOperation");
  const auto texts = descriptionForOperation(arguments.operation("operation"), initial ? &*initial : nullptr,
                                             final ? &*final : nullptr);
  return {{"description", {jsonText(texts[0]), jsonText(texts[1]), jsonText(texts[2])}}};
}

template <std::u16string (*kLabel)(std::int64_t)>
json label(Drive&, const Arguments& arguments) {
  return {{"text", jsonText(kLabel(arguments.integer("value")))}};
}

json labelOfReformatAs(Drive&, const Arguments& arguments) {
  return {{"text",
           jsonText(stringForReformatAs(arguments.integer("value"), arguments.integer("withFormat", 0)))}};
}

template <std::int64_t (*kNumber)(std::int64_t)>
json number(Drive&, const Arguments& arguments) {
  return {{"value", kNumber(arguments.integer("value"))}};
}

// Writing.

std::string hexOf(int descriptor) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string result;
  char bytes[4096];
  for (off_t at = 0;;) {
    const ssize_t count = pread(descriptor, bytes, sizeof bytes, at);
    if (count <= 0) return result;
    for (ssize_t i = 0; i < count; ++i) {
      const auto byte = static_cast<unsigned char>(bytes[i]);
      result += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    at += count;
  }
}

json writeEncodedString(Drive&, const Arguments& arguments) {
  const Descriptor file(memfd_create("written", MFD_CLOEXEC));
  if (file.number() < 0) throw CommandError(std::string("no memory file: ") + std::strerror(errno));
  TextWriter writer(file.number(), arguments.integer("encoding", kDefaultEncodingCode),
                    arguments.text("replacement", u"?"));
  const bool written = writer.write(arguments.text("text"));
  writer.flush();
  return {{"hex", hexOf(file.number())},
          {"result", written ? writer.bytesWritten() : -1},
          {"characters", writer.charactersEncoded()}};
}

// Dates and numbers.

json secondsOf(const std::optional<Instant>& instant) {
  return {{"seconds", instant ? json(*instant / 1000) : json()}};
}

json dateFromString(Drive&, const Arguments& arguments) {
  return secondsOf(DateReader().dateFromString(arguments.text("text")));
}

json timeFromString(Drive&, const Arguments& arguments) {
  return secondsOf(DateReader().timeFromString(arguments.text("text")));
}

json dateTimeFromString(Drive&, const Arguments& arguments) {
  return secondsOf(DateReader().dateTimeFromString(arguments.text("text")));
}

json fieldValue(Drive&, const Arguments& arguments) {
  return {{"value", doubleValueFromFieldValue(arguments.text("text", u""))}};
}

// The clipboard grid.

ClipboardGrid gridFromCommand(const json& rows) {
  constexpr const char* kExpected = "\"rows\" must be a list of lists of texts";
  if (!rows.is_array()) throw CommandError(kExpected);
  GridBuilder grid;
  RowBuilder cells;
  for (const auto& row : rows) {
    if (!row.is_array()) throw CommandError(kExpected);
    for (const auto& cell : row) {
      if (!cell.is_string()) throw CommandError(kExpected);
      cells.append(toUtf16(cell.get_ref<const std::string&>()));
    }
    grid.append(cells.take());
  }
  return grid.take();
}

template <typename Index, void (*kCompute)(const ClipboardGrid&, Index, CellStatistics&)>
json statistics(Drive&, const Arguments& arguments) {
  CellStatistics sums;
  kCompute(gridFromCommand(arguments.value("rows")), static_cast<Index>(arguments.integer("index")), sums);
  return {{"cellCount", sums.cellCount},
          {"total", sums.total},
          {"average", sums.average},
          {"minimum", sums.minimum},
          {"maximum", sums.maximum}};
}

json indexSet(Drive&, const Arguments& arguments) {
  TwoDimensionalMutableIndexSet set(arguments.text("cellString", u""));
  if (arguments.has("steps")) takeIndexSetSteps(arguments.value("steps"), set);
  json contains = json::array();
  if (arguments.has("contains")) contains = containedCells(arguments.value("contains"), set);
  return {{"text", jsonText(set.stringPlus1FromAllIndexes())},
          {"isEmpty", set.isEmpty()},
          {"contains", std::move(contains)}};
}

// Line operations: the record counts as one of the code, whatever it says.

std::optional<std::u16string> lineAfter(OperationCode code, const Arguments& arguments) {
  OperationRecord operation = arguments.operation("operation");
  operation.set("Code", std::int64_t{code});
  LineOperations operations({&operation, 1});
  TextArena arena;
  const std::u16string line = arguments.text("line");
  const auto result = operations.apply(line, arguments.integer("inputLineIndex", 0), arena);
  if (!result) return std::nullopt;
  return std::u16string(*result);
}

template <OperationCode kCode>
json changedLine(Drive&, const Arguments& arguments) {
  return {{"line", jsonText(*lineAfter(kCode, arguments))}};
}

json skipLine(Drive&, const Arguments& arguments) {
  return {{"skipped", !lineAfter(OpSkipLine, arguments)}};
}

// Cell operations: the record says all but the code.

json trimmedCell(Drive&, const Arguments& arguments) {
  TextArena arena;
  const std::u16string text = arguments.text("text");
  return {{"text", jsonText(CellTrimmer(arguments.operation("operation")).trimmed(text, arena))}};
}

// Records and names.

json defaultRecords(Drive& drive, const Arguments& arguments) {
  return {{"operations",
           jsonFromOperations(defaultOperations(arguments.text("fileName"), arguments.integer("fileType"),
                                                drive.defaults().boolForKey("DontAutoSplit")))}};
}

json availableName(Drive&, const Arguments& arguments) {
  return {{"text", jsonText(fileNameAvailableInFolder(arguments.path("folder"),
                                                      toUtf8(arguments.text("fileName"))))}};
}

json dbStringFromString(Drive&, const Arguments& arguments) {
  std::optional<std::string> text;
  if (arguments.has("text")) text = arguments.string("text");
  return {{"text", DBInterface::dbStringFromString(text)}};
}

// Settings of saved jobs.

SettingsRecord::Value settingFromCommand(const json& value) {
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number_integer()) return value.get<std::int64_t>();
  if (value.is_string()) return value.get<std::string>();
  throw CommandError("a setting must be an integer, true or false, or a text");
}

SettingsRecord settingsFromCommand(const json& values) {
  if (!values.is_object()) throw CommandError("settings must be an object");
  SettingsRecord result;
  for (const auto& [key, value] : values.items()) {
    if (value.is_array()) {
      if (key != "ColumnsKey") throw CommandError("only \"ColumnsKey\" is a list");
      std::vector<SettingsRecord> columns;
      for (const auto& column : value) columns.push_back(settingsFromCommand(column));
      result.setColumns(std::move(columns));
    } else if (!value.is_null()) {
      result.set(key, settingFromCommand(value));
    }
  }
  return result;
}

json fileDetails(Drive&, const Arguments& arguments) {
  return {{"text", jsonText(stringForFileDetails(settingsFromCommand(arguments.value("settings"))))}};
}

json jobDetails(Drive&, const Arguments& arguments) {
  return {
      {"text", jsonText(stringForJobDetails(settingsFromCommand(arguments.value("settings")), JobDates()))}};
}

constexpr Command kOperations[] = {
    {"findFieldsInLine", findFields},
    {"findComponentsOfCSVString", findComponents},
    {"readLines", readLines},
    {"replaceCharactersFromOperations", replaceCharacters},
    {"scanFile", scan},
    {"parseLineNumbersString", parseLineNumbers},
    {"stringPlus1FromIndexSet", stringFromIndexes},
    {"expandedStringPlus1FromIndexSet", expandedStringFromIndexes},
    {"replaceBackslashedCharacters", fromBackslashes},
    {"replaceWithBackslashedCharacters", toBackslashes},
    {"stringByReplacingControlCharactersFromString", withControlCharactersShown},
    {"descriptionForOperation", description},
    {"stringForEncoding", label<stringForEncoding>},
    {"stringForInputFileType", label<stringForInputFileType>},
    {"stringForOutputFileType", label<stringForOutputFileType>},
    {"stringForOutputLineEndings", label<stringForOutputLineEndings>},
    {"stringForOutputFileWriteMode", label<stringForOutputFileWriteMode>},
    {"stringForLineSkipType", label<stringForLineSkipType>},
    {"stringForTrimType", label<stringForTrimType>},
    {"stringForTrimFromWhere", label<stringForTrimFromWhere>},
    {"stringForReplaceType", label<stringForReplaceType>},
    {"stringForFillType", label<stringForFillType>},
    {"stringForReformatAs", labelOfReformatAs},
    {"tagForEncodingCode", number<tagForEncodingCode>},
    {"encodingCodeForTag", number<encodingCodeForTag>},
    {"validOutputFileType", number<validOutputFileType>},
    {"dbStringFromString", dbStringFromString},
    {"writeEncodedString", writeEncodedString},
    {"dateFromString", dateFromString},
    {"timeFromString", timeFromString},
    {"dateTimeFromString", dateTimeFromString},
    {"doubleValueFromFieldValue", fieldValue},
    {"computeRow", statistics<std::int64_t, computeRow>},
    {"computeColumn", statistics<std::uint64_t, computeColumn>},
    {"TwoDimensionalMutableIndexSet", indexSet},
    {"trimLine", changedLine<OpTrimLine>},
    {"replaceLine", changedLine<OpReplaceLine>},
    {"skipLine", skipLine},
    {"trimCell", trimmedCell},
    {"stringForFileDetails", fileDetails},
    {"stringForJobDetails", jobDetails},
    {"defaultOperations", defaultRecords},
    {"fileNameAvailableInFolder", availableName},
};

}  // namespace

std::span<const Command> pureOperations() {
  return kOperations;
}

}  // namespace quillet::drive
