// One pass over one input file, from its first byte to its output: the same code for a preview and for a run.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/column_stage.h"
#include "engine/file_settings.h"
#include "engine/job_log.h"
#include "engine/job_state.h"
#include "engine/line_operations.h"
#include "engine/output_file.h"
#include "engine/output_stage.h"
#include "engine/preview_feed.h"
#include "operations/input_file.h"
#include "text/fields_and_lines_parser.h"

namespace quillet {

struct FileCounts {
  ReadLineStats read;
  OutputStage::Counts written;
  std::int64_t linesSkipped = 0;
  FileCounts& operator+=(const FileCounts& other);
};

// What a pass needs from the use of the engine that it is part of. All references outlive the pass.
struct PassSurroundings {
  JobState& state;
  JobLog& log;
  PreviewFeed& preview;
  DateReader& dateReader;
  std::u16string decodeErrorReplacement;
  std::u16string encodeErrorReplacement;
  // A run's; a preview has none.
  struct Run {
    RunFolder& temporaryFolder;
    std::string outputFolder;
    std::function<void(const std::string& path)> outputOpened;
  };
  std::optional<Run> run;
  std::function<void(std::vector<ColumnEntry> columns)> setExpectedColumnsInLine;
};

class FilePass {
 public:
  static constexpr std::int64_t kPreviewLines = 10;

  FilePass(const InputFile& file, const PassSurroundings& surroundings);
  ~FilePass();
  FilePass(const FilePass&) = delete;
  FilePass& operator=(const FilePass&) = delete;

  FileCounts run();

 private:
  void processOpenFile();
  void sampleForPreview();
  void rewindInput();
  void processLines(TextWriter* writer);
  bool takeTurn();
  void processLine(std::u16string_view line);
  void addToPreviewInput(std::u16string_view line);
  void setExpectedColumns(std::u16string_view line);
  OutputCells outputCellsOf(std::u16string_view line);
  void logError(std::u16string_view key, int reason) const;

  struct Stages;

  const InputFile& file_;
  const PassSurroundings& surroundings_;
  const OperationList noOperations_;
  const OperationList& operations_;
  FileSettings settings_;
  FileCounts counts_;
  int descriptor_ = -1;
  std::optional<OutputFile> output_;
  Stages* stages_ = nullptr;  // of the line loop
};

}  // namespace quillet
