// A place for whole jobs: a home, an input and an output folder of its own, and all that the engine needs.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/job_engine.h"
#include "operations/operation_codes.h"
#include "platform/unicode_text.h"
#include "support/log_catcher.h"
#include "support/temporary_folder.h"

namespace quillet::testing {

using Items = std::initializer_list<std::pair<std::string_view, OperationRecord::Value>>;

inline OperationRecord record(std::int64_t code, Items items = {}) {
  OperationRecord result(items);
  result.set("Code", code);
  return result;
}

// An initial record that splits into lines and columns, and takes quotes away.
inline OperationRecord initialRecord(Items changes = {}) {
  OperationRecord result =
      record(OpInitial, {{"IntArg1", 49}, {"IntArg2", 4}, {"Arg1", u"\n"}, {"Arg2", u","}});
  for (const auto& [key, value] : changes) result.set(key, value);
  return result;
}

// A final record that joins by a tab and line feeds into "out.txt".
inline OperationRecord finalRecord(Items changes = {}) {
  OperationRecord result = record(OpFinal, {{"IntArg1", 0},
                                            {"IntArg2", 4},
                                            {"IntArg3", 2},
                                            {"Arg1", u"\n"},
                                            {"Arg2", u"\t"},
                                            {"Arg4", u"out.txt"}});
  for (const auto& [key, value] : changes) result.set(key, value);
  return result;
}

class ScriptedFolders final : public Folders {
 public:
  explicit ScriptedFolders(std::string home) : home_(std::move(home)) {}
  std::optional<std::string> documentsFolder() const override {
    if (!hasDocuments) return std::nullopt;
    makeFolders(home_ + "/Documents");
    return home_ + "/Documents";
  }
  std::string temporaryParentFolder() const override { return home_ + "/tmp"; }
  std::string defaultsFile() const override { return home_ + "/defaults.json"; }

  bool hasDocuments = true;

 private:
  std::string home_;
};

class Job {
 public:
  Job() {
    makeFolders(outputFolder());
    makeFolders(folder_.path("in"));
    surroundings.files = std::make_shared<InputFiles>();
    surroundings.state = std::make_shared<JobState>();
    surroundings.log = std::make_shared<JobLog>(folders);
    surroundings.previewStores = std::make_shared<PreviewStores>();
    surroundings.outputFiles = std::make_shared<OutputFiles>();
    surroundings.defaults = std::make_shared<UserDefaults>(folder_.path("defaults.json"));
    surroundings.folders = folders;
    surroundings.mainThread = std::make_shared<MainThread>();
    surroundings.updatePreviewPanel = [this] { events.push_back("updatePreviewPanel"); };
    surroundings.updateUIAfterPrep = [this] { events.push_back("updateUIAfterPrep"); };
    surroundings.hideProgressIndicator = [this] { events.push_back("hideProgressIndicator"); };
  }

  // Writes the file and adds it with its operations; returns its path.
  std::string addFile(const std::string& name, const std::string& bytes,
                      std::optional<OperationList> operations) {
    const std::string path = folder_.write("in/" + name, bytes);
    addEntry(path, std::move(operations));
    return path;
  }
  void addEntry(const std::string& path, std::optional<OperationList> operations) {
    InputFile file;
    file.filePath = path;
    file.fileName = lastPathComponent(path);
    file.operations = std::move(operations);
    surroundings.files->insert(surroundings.files->count(), {std::make_shared<InputFile>(std::move(file))});
  }

  void run() {
    JobParameters parameters;
    parameters.write = true;
    parameters.outputFolder = outputFolder();
    prepFiles(parameters, surroundings);
    surroundings.mainThread->runPending();
  }
  void preview(std::initializer_list<std::int64_t> selected) {
    JobParameters parameters;
    parameters.selectedFileIndexes = IndexSet(selected);
    prepFiles(parameters, surroundings);
  }

  std::string outputFolder() const { return folder_.path("out"); }
  std::string outputPath(const std::string& name) const { return outputFolder() + "/" + name; }
  std::string output(const std::string& name = "out.txt") const { return folder_.read("out/" + name); }
  std::string logFile() const { return folder_.read("Documents/Log/LastLog.txt"); }
  const TemporaryFolder& folder() const { return folder_; }
  PreviewStores::Content stores() const { return surroundings.previewStores->content(); }

  // The log in memory without what differs from run to run: times, the values of errno, and the name of the
  // run's own temporary folder, which becomes "<tmp>".
  std::vector<JobLog::Entry> logEntries() const {
    std::vector<JobLog::Entry> entries = surroundings.log->entries();
    for (auto& entry : entries) entry.text = plain(entry.text);
    return entries;
  }
  std::vector<std::string> logLines() const {
    std::vector<std::string> lines;
    for (const auto& entry : logEntries()) lines.push_back(entry.text);
    return lines;
  }

 private:
  TemporaryFolder folder_;

 public:
  std::shared_ptr<ScriptedFolders> folders = std::make_shared<ScriptedFolders>(folder_.path());
  JobSurroundings surroundings;
  std::vector<std::string> events;
  LogCatcher systemLog;

 private:
  std::string plain(std::string text) const {
    for (const char* start : {"Job started ", "Job ended "})
      if (text.rfind(start, 0) == 0) return std::string(start) + "...";
    const std::string parent = folders->temporaryParentFolder() + "/quillet-";
    if (const std::size_t at = text.find(parent); at != text.npos)
      text.replace(at, parent.size() + 6, "<tmp>");
    const std::string number = "[errno ";
    if (const std::size_t at = text.find(number); at != text.npos)
      text.replace(at, text.find(']', at) - at, "[errno ?");
    return text;
  }
};

// The eight statistics as they are logged; total is "" or "Total ".
inline std::vector<std::string> countLines(bool total, const std::int64_t (&values)[8]) {
  constexpr const char* kNames[8] = {
      "bytes read",    "characters decoded", "lines read",    "maximum length lines read",
      "bytes written", "characters encoded", "lines written", "lines skipped"};
  std::vector<std::string> lines;
  for (int i = 0; i < 8; ++i) {
    std::string name = kNames[i];
    if (total)
      name = "Total " + name;
    else
      name[0] = static_cast<char>(name[0] - 'a' + 'A');
    lines.push_back(name + ": " + std::to_string(static_cast<std::int32_t>(values[i])));
  }
  return lines;
}

}  // namespace quillet::testing
