#include "drive/json_values.h"

#include "drive/arguments.h"
#include "platform/unicode_text.h"
#include "shell/operation_json.h"

namespace quillet::drive {

json jsonText(std::u16string_view text) {
  return toUtf8(text);
}

json jsonText(const std::optional<std::string>& text) {
  return text ? json(*text) : json();
}

json jsonTexts(const std::vector<std::u16string>& texts) {
  json result = json::array();
  for (const auto& text : texts) result.push_back(toUtf8(text));
  return result;
}

json jsonRows(const std::vector<std::vector<std::u16string>>& rows) {
  json result = json::array();
  for (const auto& row : rows) result.push_back(jsonTexts(row));
  return result;
}

json jsonShownRows(const Table& table) {
  json result = json::array();
  for (std::size_t row = 0; row < table.rowCount(); ++row) result.push_back(jsonTexts(table.row(row)));
  return result;
}

json jsonPaths(const std::vector<std::string>& paths) {
  return paths;
}

json jsonIndexes(const IndexSet& indexes) {
  constexpr std::int64_t kMostIndexes = 1'000'000;
  std::int64_t count = 0;
  for (const auto& range : indexes.ranges()) {
    if (range.last - range.first >= kMostIndexes - count) throw CommandError("too many indexes to list");
    count += range.last - range.first + 1;
  }
  json result = json::array();
  for (const auto& range : indexes.ranges())
    for (std::int64_t index = range.first; index <= range.last; ++index) result.push_back(index);
  return result;
}

json jsonColour(TextColour colour) {
  switch (colour) {
    case TextColour::SecondaryLabel:
      return "secondaryLabel";
    case TextColour::Red:
      return "red";
  }
  return json();
}

OperationRecord operationFromCommand(const json& value) {
  auto operation = operationFromJson(value);
  if (!operation) throw CommandError("an operation must be an object of integers and texts");
  return *std::move(operation);
}

OperationList operationsFromCommand(const json& value) {
  auto operations = operationsFromJson(value);
  if (!operations) throw CommandError("operations must be a list of objects of integers and texts");
  return *std::move(operations);
}

json jsonInputFile(const InputFile& file) {
  json result = json::object();
  if (file.filePath) result["FilePath"] = *file.filePath;
  if (file.fileName) result["FileName"] = *file.fileName;
  if (file.fileEncoding) result["FileEncoding"] = *file.fileEncoding;
  if (file.fileType) result["FileType"] = *file.fileType;
  if (file.operations) result["Operations"] = jsonFromOperations(*file.operations);
  if (!file.expectedColumnsInLine) return result;
  json columns = json::array();
  for (const auto& column : *file.expectedColumnsInLine) {
    columns.push_back({{"ColumnDescriptor", jsonText(column.columnDescriptor)}});
    if (column.columnIndex) columns.back()["ColumnIndex"] = *column.columnIndex;
  }
  result["ExpectedColumnsInLine"] = std::move(columns);
  return result;
}

namespace {

ColumnEntry columnFromCommand(const json& value) {
  if (!value.is_object()) throw CommandError("a column must be an object");
  const std::string noRoot;
  const Arguments column(value, noRoot);
  ColumnEntry entry;
  if (column.has("ColumnIndex")) entry.columnIndex = column.integer("ColumnIndex");
  entry.columnDescriptor = column.text("ColumnDescriptor", u"");
  return entry;
}

}  // namespace

InputFile inputFileFromCommand(const json& value) {
  if (!value.is_object()) throw CommandError("an entry must be an object");
  const std::string noRoot;
  const Arguments entry(value, noRoot);
  InputFile file;
  if (entry.has("FilePath")) file.filePath = toUtf8(entry.text("FilePath"));
  if (entry.has("FileName")) file.fileName = toUtf8(entry.text("FileName"));
  if (entry.has("FileEncoding")) file.fileEncoding = entry.integer("FileEncoding");
  if (entry.has("FileType")) file.fileType = entry.integer("FileType");
  if (entry.has("Operations")) file.operations = entry.operations("Operations");
  if (!entry.has("ExpectedColumnsInLine")) return file;
  const json& columns = entry.value("ExpectedColumnsInLine");
  if (!columns.is_array()) throw CommandError("\"ExpectedColumnsInLine\" must be a list");
  file.expectedColumnsInLine.emplace();
  for (const auto& column : columns) file.expectedColumnsInLine->push_back(columnFromCommand(column));
  return file;
}

}  // namespace quillet::drive
