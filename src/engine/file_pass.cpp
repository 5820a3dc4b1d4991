#include "engine/file_pass.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "operations/operation_codes.h"
#include "platform/localization.h"
#include "platform/unicode_text.h"

namespace quillet {

FileCounts& FileCounts::operator+=(const FileCounts& other) {
  read += other.read;
  written.bytesWritten += other.written.bytesWritten;
  written.charactersEncoded += other.written.charactersEncoded;
  written.linesWritten += other.written.linesWritten;
  linesSkipped += other.linesSkipped;
  return *this;
}

// What lives for the line loop of one file.
struct FilePass::Stages {
  LineRules rules;
  FieldsAndLinesParser parser{FieldsAndLinesParser::kLargeReadSize};
  LineOperations lineOperations;
  ColumnReformatter::Warn warn;
  ColumnStage columnStage;
  OutputStage outputStage;
  TextBuffer lineBuffer;
  TextArena arena;
  Cells inputColumns;  // of the line in hand; empty until they are asked for
  std::u16string_view singleCellText;
  std::int64_t inputLineIndex = 0;
  std::int64_t keptLineCount = 0;
  std::int64_t linesGiven = 0;
  bool endOfInput = false;

  Stages(FilePass& pass, TextWriter* writer)
      : rules(pass.settings_.inputEncoding, pass.settings_.inputQuote, pass.settings_.inputLineSeparator,
              ReplacementTable(pass.settings_.replaceCharacters, pass.settings_.inputQuote,
                               pass.settings_.inputLineSeparator, pass.settings_.inputColumnSeparator),
              pass.surroundings_.decodeErrorReplacement),
        lineOperations(middleRecords(pass.operations_)),
        warn([&log = pass.surroundings_.log](std::u16string_view message) {
          log.addToImportLog(LogWarning, message);
        }),
        columnStage(pass.settings_, middleRecords(pass.operations_), pass.surroundings_.dateReader, warn),
        outputStage(pass.settings_, writer, pass.surroundings_.preview, pass.surroundings_.log,
                    pass.output_ ? pass.output_->temporaryPath() : std::string(), [&pass] {
                      return pass.surroundings_.run ? pass.surroundings_.run->temporaryFolder.path()
                                                    : std::string();
                    }) {}
};

namespace {

// Opening a pipe must not wait for somebody who writes to it; reading waits as ever.
int openForReading(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor >= 0) fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
  return descriptor;
}

}  // namespace

FilePass::~FilePass() {
  if (descriptor_ >= 0) close(descriptor_);
}

FilePass::FilePass(const InputFile& file, const PassSurroundings& surroundings)
    : file_(file),
      surroundings_(surroundings),
      operations_(file.operations ? *file.operations : noOperations_),
      settings_(settingsFromOperations(operations_)) {}

void FilePass::logError(std::u16string_view key, int reason) const {
  surroundings_.log.addToImportLog(
      LogError, localizedFormat(key, {toUtf16(file_.filePathOrEmpty()), std::int64_t{reason}}));
}

FileCounts FilePass::run() {
  surroundings_.preview.stores().setInputLineSeparator(settings_.inputLineSeparator);
  if (surroundings_.state.stopJob) return counts_;
  descriptor_ = openForReading(file_.filePathOrEmpty());
  if (descriptor_ < 0) {
    logError(u"Could not open \"%@\" for reading [errno %d]", errno);
    return counts_;
  }
  posix_fadvise(descriptor_, 0, 0, POSIX_FADV_SEQUENTIAL);
  processOpenFile();
  return counts_;
}

void FilePass::processOpenFile() {
  std::optional<TextWriter> writer;
  if (const auto& run = surroundings_.run) {
    surroundings_.log.addToImportLog(
        LogInformation, localizedFormat(u"Processing \"%@\"", {toUtf16(file_.filePathOrEmpty())}));
    output_.emplace(run->temporaryFolder.path(), settings_.outputFileName, settings_.writeMode,
                    surroundings_.log);
    writer.emplace(output_->createTemporaryFile(), settings_.outputEncoding,
                   surroundings_.encodeErrorReplacement);
  }
  sampleForPreview();
  rewindInput();
  processLines(writer ? &*writer : nullptr);
  close(descriptor_);
  descriptor_ = -1;
  if (!output_) return;
  output_->closeTemporaryFile();
  output_->finish(surroundings_.run->outputFolder, surroundings_.run->outputOpened);
}

// The head of the raw text, read with neither quotes nor separators nor a table.
void FilePass::sampleForPreview() {
  FieldsAndLinesParser parser;
  TextBuffer text;
  ReadLineStats stats;
  const LineRules rules(settings_.inputEncoding, {}, {}, {}, surroundings_.decodeErrorReplacement);
  const ReadResult result = parser.readLineFrom(descriptor_, rules, text, stats, nullptr);
  const int reason = errno;
  // An empty file is reported here; this is meant.
  if (result == ReadResult::Failure || (result == ReadResult::EndOfFile && text.isEmpty()))
    logError(u"Could not read from \"%@\" [errno %d]", reason);
  surroundings_.preview.stores().setInputString(text.view());
}

void FilePass::rewindInput() {
  if (lseek(descriptor_, 0, SEEK_SET) < 0) logError(u"Could not rewind \"%@\" for reading [errno %d]", errno);
}

void FilePass::processLines(TextWriter* writer) {
  Stages stages(*this, writer);
  stages_ = &stages;
  while (takeTurn()) ++stages.inputLineIndex;
  stages.outputStage.flushPending();
  if (writer) writer->flush();
  counts_.written = stages.outputStage.counts();
  stages_ = nullptr;
}

// One call of the reader and what follows from it. False when it was the last.
bool FilePass::takeTurn() {
  Stages& stages = *stages_;
  stages.lineBuffer.clear();
  stages.arena.reset();
  ReadLineStats stats;
  const ReadResult result =
      stages.parser.readLineFrom(descriptor_, stages.rules, stages.lineBuffer, stats, nullptr);
  if (result == ReadResult::Failure) {
    logError(u"Could not read from \"%@\" [errno %d]", errno);
    return false;
  }
  counts_.read += stats;
  if (result == ReadResult::EndOfFile) {
    stages.endOfInput = true;
    if (stages.lineBuffer.isEmpty()) return false;
  }
  surroundings_.state.linesInCurrentFile.fetch_add(1, std::memory_order_relaxed);
  ++stages.linesGiven;
  processLine(stages.lineBuffer.view());
  if (stages.endOfInput || stages.outputStage.endsInput()) return false;
  return surroundings_.run || stages.linesGiven < kPreviewLines;
}

void FilePass::processLine(std::u16string_view line) {
  Stages& stages = *stages_;
  stages.inputColumns.clear();
  addToPreviewInput(line);
  if (!settings_.runOperations) return;
  const auto kept = stages.lineOperations.apply(line, stages.inputLineIndex, stages.arena);
  if (!kept) {
    ++counts_.linesSkipped;
    return;
  }
  if (stages.keptLineCount == 0) setExpectedColumns(line);
  const OutputCells cells = outputCellsOf(*kept);
  if (surroundings_.preview.takesRows(PreviewStores::Side::Output)) {
    surroundings_.preview.addRow(PreviewStores::Side::Output, cells,
                                 settings_.splitIntoLines ? nullptr : &stages.inputColumns);
  }
  stages.outputStage.add(cells, stages.keptLineCount);
  ++stages.keptLineCount;
}

OutputCells FilePass::outputCellsOf(std::u16string_view line) {
  Stages& stages = *stages_;
  if (!stages.columnStage.leavesLinesAsTheyAre() ||
      surroundings_.preview.takesRows(PreviewStores::Side::Output))
    return stages.columnStage.apply(line, stages.inputLineIndex, stages.arena);
  stages.singleCellText = line;
  return {{&stages.singleCellText, 1}, 0, {}};
}

void FilePass::addToPreviewInput(std::u16string_view line) {
  Stages& stages = *stages_;
  PreviewFeed& preview = surroundings_.preview;
  if (!preview.takesRows(PreviewStores::Side::Input) && !preview.takesRows(PreviewStores::Side::Output))
    return;
  stages.columnStage.split(line, stages.inputColumns, stages.arena);
  if (preview.takesRows(PreviewStores::Side::Input)) {
    preview.addRow(PreviewStores::Side::Input, {stages.inputColumns, 0, {}},
                   settings_.splitIntoLines ? nullptr : &stages.inputColumns);
  }
}

// The columns are those of the line as it was read, made as many as Set Initial Number of Columns wants.
void FilePass::setExpectedColumns(std::u16string_view line) {
  Stages& stages = *stages_;
  if (stages.inputColumns.empty()) stages.columnStage.split(line, stages.inputColumns, stages.arena);
  Cells& columns = stages.inputColumns;
  const auto records = middleRecords(operations_);
  const auto resize = std::find_if(records.begin(), records.end(), [](const OperationRecord& record) {
    return record.code() == OpSetInitialNumberOfColumns;
  });
  if (resize != records.end())
    resizeCells(columns, resize->integer("IntArg1", 0), stages.arena.copy(resize->text("Arg1")));
  std::vector<ColumnEntry> entries;
  entries.reserve(columns.size());
  for (const auto& cell : columns)
    entries.push_back({static_cast<std::int64_t>(entries.size()), std::u16string(cell)});
  surroundings_.setExpectedColumnsInLine(std::move(entries));
}

}  // namespace quillet
