#include "engine/output_stage.h"

#include <cerrno>

#include "platform/localization.h"
#include "platform/unicode_text.h"

namespace quillet {

OutputStage::OutputStage(const FileSettings& settings, TextWriter* writer, PreviewFeed& preview, JobLog& log,
                         std::string temporaryPath, std::function<std::string()> temporaryFolder)
    : settings_(settings),
      writer_(writer),
      preview_(preview),
      log_(log),
      temporaryPath_(std::move(temporaryPath)),
      pending_(std::move(temporaryFolder)) {}

void OutputStage::add(const OutputCells& cells, std::int64_t keptLineCount) {
  if (settings_.splitIntoLines && settings_.addLineSeparator) addLeadingSeparator();
  if (settings_.joinLinesCount < 2) {
    addSeparatorBetweenLines();
    return emit(cells);
  }
  joined_.clear();
  appendJoined(cells.cells, cells.separator, cells.quotedCount, joined_);
  pending_.addPart(joined_.view(), settings_.joinLinesSeparator);
  if ((keptLineCount + 1) % settings_.joinLinesCount != 0) return;
  addSeparatorBetweenLines();
  const bool written = emitPending();
  previewHasOutput_ = true;
  if (writer_) noteWritten(written);
}

// The two flags differ on purpose: a preview's text begins with two separators, a file with one, or with one
// for each line up to the first complete group of Join Lines.
void OutputStage::addLeadingSeparator() {
  if (!previewHasOutput_) {
    preview_.appendOutput(settings_.outputLineSeparator);
    previewHasOutput_ = true;
  }
  if (writer_ && !fileHasOutput_) writeLineSeparator();
}

void OutputStage::addSeparatorBetweenLines() {
  if (!settings_.splitIntoLines) return;
  if (previewHasOutput_) preview_.appendOutput(settings_.outputLineSeparator);
  if (writer_ && fileHasOutput_) writeLineSeparator();
}

void OutputStage::writeLineSeparator() {
  if (writer_->write(settings_.outputLineSeparator)) return;
  const std::int64_t reason = errno;
  log_.addToImportLog(LogError, localizedFormat(u"Could not write line separator to \"%@\" [errno %d]",
                                                {toUtf16(temporaryPath_), reason}));
  endsInput_ = true;
}

void OutputStage::emit(const OutputCells& cells) {
  if (preview_.takesOutput()) {
    joined_.clear();
    appendJoined(cells.cells, cells.separator, cells.quotedCount, joined_);
    preview_.appendOutput(joined_.view());
  }
  previewHasOutput_ = true;
  if (writer_) noteWritten(writer_->writeJoined(cells.cells, cells.separator, cells.quotedCount));
}

void OutputStage::noteWritten(bool written) {
  if (!written) {
    logEmptyText();
    endsInput_ = true;
    return;
  }
  fileHasOutput_ = true;
  ++linesWritten_;
}

void OutputStage::logEmptyText() {
  const std::int64_t reason = errno;
  log_.addToImportLog(
      LogError, localizedFormat(u"Could not write to \"%@\" [errno %d]", {toUtf16(temporaryPath_), reason}));
}

// False if the joined text is empty.
bool OutputStage::emitPending() {
  const bool empty = pending_.isEmptyText();
  pending_.forEachPiece([&](std::u16string_view piece) {
    preview_.appendOutput(piece);
    if (writer_) writer_->write(piece);
  });
  pending_.clear();
  return !empty;
}

void OutputStage::flushPending() {
  if (!pending_.hasParts()) return;
  addSeparatorBetweenLines();
  if (!emitPending() && writer_) logEmptyText();
}

OutputStage::Counts OutputStage::counts() const {
  if (!writer_) return {};
  return {writer_->bytesWritten(), writer_->charactersEncoded(), linesWritten_};
}

}  // namespace quillet
