// The end of a line's way: separators between lines, Join Lines, the preview of the output, and the writing.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "engine/column_stage.h"
#include "engine/file_settings.h"
#include "engine/job_log.h"
#include "engine/pending_text.h"
#include "engine/preview_feed.h"
#include "text/text_writer.h"

namespace quillet {

// One object serves one pass over one file.
class OutputStage {
 public:
  struct Counts {
    std::int64_t bytesWritten = 0;
    std::int64_t charactersEncoded = 0;  // composed sequences
    std::int64_t linesWritten = 0;
  };

  // writer is null in a preview. temporaryPath names the file in messages; temporaryFolder is asked when
  // memory does not suffice. All references outlive the stage.
  OutputStage(const FileSettings& settings, TextWriter* writer, PreviewFeed& preview, JobLog& log,
              std::string temporaryPath, std::function<std::string()> temporaryFolder);

  // One kept line. keptLineCount counts those before it.
  void add(const OutputCells& cells, std::int64_t keptLineCount);

  // What waits for more lines to be joined with goes out as it is; it does not count as a written line, which
  // is meant.
  void flushPending();

  // A write failed; the reading must end with this line.
  bool endsInput() const { return endsInput_; }
  Counts counts() const;  // after the writer's flush

 private:
  void addLeadingSeparator();
  void addSeparatorBetweenLines();
  void writeLineSeparator();
  void emit(const OutputCells& cells);
  bool emitPending();
  void noteWritten(bool written);
  void logEmptyText();

  const FileSettings& settings_;
  TextWriter* writer_;
  PreviewFeed& preview_;
  JobLog& log_;
  std::string temporaryPath_;
  PendingText pending_;
  TextBuffer joined_;
  bool previewHasOutput_ = false;
  bool fileHasOutput_ = false;
  bool endsInput_ = false;
  std::int64_t linesWritten_ = 0;
};

}  // namespace quillet
