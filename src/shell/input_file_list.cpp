#include "shell/input_file_list.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "operations/default_operations.h"
#include "platform/folders.h"
#include "platform/localization.h"
#include "platform/unicode_text.h"
#include "shell/bookmarks.h"
#include "shell/operation_json.h"
#include "text/encodings.h"
#include "text/file_scan.h"

namespace quillet {

namespace {

using nlohmann::json;

// Keys of settings are UTF-8, which a path need not be.
std::string settingsKeyOfPath(const std::string& path) {
  return toUtf8(toUtf16(path));
}

std::optional<OperationList> operationsOfPath(const json& lastOperations, const std::string& path) {
  if (!lastOperations.is_object()) return std::nullopt;
  const auto found = lastOperations.find(settingsKeyOfPath(path));
  return found == lastOperations.end() ? std::nullopt : operationsFromJson(*found);
}

}  // namespace

void InputFileList::logWarning(std::u16string_view key) {
  log_.addToImportLog(LogWarning, localized(key));
}

void InputFileList::logWarning(std::u16string_view key, const std::string& path) {
  log_.addToImportLog(LogWarning, localizedFormat(key, {toUtf16(path)}));
}

void InputFileList::addInputFiles(const std::vector<std::string>& paths, std::size_t row,
                                  SelectFiles selectFiles, RestoreOperations restoreOperations) {
  // A copy of what may be large, so it is made once for all files.
  const json lastOperations =
      restoreOperations == RestoreOperations::Yes ? defaults_.value("LastOperations") : json();
  std::vector<InputFiles::Entry> added;
  for (const auto& path : paths) {
    if (paths_.contains(path)) continue;
    added.push_back(std::make_shared<InputFile>(newEntry(path, lastOperations)));
    paths_.insert(path);
  }
  if (added.empty()) return;
  row = std::min(row, files_.count());
  files_.insert(row, added);
  selection_.reloadTable();
  if (selectFiles == SelectFiles::No) return;
  IndexSet newRows;
  newRows.addRange(static_cast<std::int64_t>(row), static_cast<std::int64_t>(row + added.size()) - 1);
  selection_.select(newRows);
}

InputFile InputFileList::newEntry(const std::string& path, const json& lastOperations) {
  InputFile entry;
  entry.filePath = path;
  entry.fileName = lastPathComponent(path);
  entry.fileEncoding = kDefaultEncodingCode;
  entry.fileType = 1;
  const std::u16string fileName = toUtf16(*entry.fileName);
  log_.addToImportLog(LogInformation, localizedFormat(u"Scanning \"%@\"", {fileName}));
  scanFile(path, kDefaultEncodingCode, nullptr, &*entry.fileType,
           [this](int level, std::u16string_view text) { log_.addToImportLog(level, text); });
  entry.operations = operationsOfPath(lastOperations, path);
  if (!entry.operations)
    entry.operations = defaultOperations(fileName, *entry.fileType, defaults_.boolForKey("DontAutoSplit"));
  return entry;
}

std::size_t InputFileList::moveFiles(const IndexSet& rows, std::int64_t row) {
  const std::size_t moved = files_.move(rows, row);
  selection_.reloadTable();
  return moved;
}

void InputFileList::removeFiles(const IndexSet& rows) {
  for (const auto& file : files_.remove(rows))
    if (file->filePath) paths_.erase(*file->filePath);
  selection_.reloadTable();
}

void InputFileList::setInputFiles(std::vector<InputFile> entries) {
  std::vector<InputFiles::Entry> shared;
  paths_.clear();
  for (auto& entry : entries) {
    if (entry.filePath) paths_.insert(*entry.filePath);
    shared.push_back(std::make_shared<InputFile>(std::move(entry)));
  }
  files_.setAll(std::move(shared));
  selection_.reloadTable();
}

bool InputFileList::setOperations(std::size_t row, OperationList operations) {
  return files_.setOperations(row, std::move(operations));
}

void InputFileList::storeLastOpenedFiles() {
  json bookmarks = json::array();
  json operations = json::object();
  for (const auto& entry : files_.all()) {
    if (!entry->filePath) continue;
    if (entry->operations)
      operations[settingsKeyOfPath(*entry->filePath)] = jsonFromOperations(*entry->operations);
    if (auto bookmark = bookmarkFromPath(*entry->filePath))
      bookmarks.push_back(*std::move(bookmark));
    else
      logWarning(u"Could not create bookmark URL for storage to defaults");
  }
  defaults_.setValues({{"LastOpenedFiles", std::move(bookmarks)}, {"LastOperations", std::move(operations)}});
}

void InputFileList::loadLastOpenedFiles() {
  const json bookmarks = defaults_.value("LastOpenedFiles");
  if (!bookmarks.is_array()) return;
  std::vector<std::string> paths;
  for (const auto& bookmark : bookmarks)
    if (auto path = restorablePath(bookmark)) paths.push_back(*std::move(path));
  if (!paths.empty()) addInputFiles(paths, 0, SelectFiles::No, RestoreOperations::Yes);
}

std::optional<std::string> InputFileList::restorablePath(const json& bookmark) {
  auto path = pathFromBookmark(bookmark);
  if (!path) {
    logWarning(u"Could not create bookmark URL from defaults");
    return std::nullopt;
  }
  if (!fileExists(*path)) {
    logWarning(u"File does not exist \"%@\"", *path);
    return std::nullopt;
  }
  if (isFolder(*path)) {
    logWarning(u"File is actually a directory \"%@\"", *path);
    return std::nullopt;
  }
  return path;
}

}  // namespace quillet
