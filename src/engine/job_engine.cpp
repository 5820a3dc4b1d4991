#include "engine/job_engine.h"

#include <chrono>
#include <new>
#include <stdexcept>

#include "engine/file_pass.h"
#include "platform/date_formatter.h"
#include "platform/localization.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

std::u16string currentDateAndTime() {
  DateFormatter formatter;
  formatter.setDateStyle(DateStyle::Medium);
  formatter.setTimeStyle(DateStyle::Medium);
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return formatter.stringFromDate(
      static_cast<Instant>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
}

void logInformation(JobLog& log, std::u16string_view text) {
  log.addToImportLog(LogInformation, text);
}

void logCounts(JobLog& log, const FileCounts& counts, const char16_t* const (&keys)[8]) {
  const std::int64_t values[8] = {counts.read.bytesRead,       counts.read.charactersDecoded,
                                  counts.read.linesRead,       counts.read.maximumLengthLinesRead,
                                  counts.written.bytesWritten, counts.written.charactersEncoded,
                                  counts.written.linesWritten, counts.linesSkipped};
  for (int i = 0; i < 8; ++i) logInformation(log, localizedFormat(keys[i], {values[i]}));
}

constexpr const char16_t* kFileCountKeys[8] = {
    localizable(u"Bytes read: %d"),    localizable(u"Characters decoded: %d"),
    localizable(u"Lines read: %d"),    localizable(u"Maximum length lines read: %d"),
    localizable(u"Bytes written: %d"), localizable(u"Characters encoded: %d"),
    localizable(u"Lines written: %d"), localizable(u"Lines skipped: %d")};
constexpr const char16_t* kTotalCountKeys[8] = {
    localizable(u"Total bytes read: %d"),    localizable(u"Total characters decoded: %d"),
    localizable(u"Total lines read: %d"),    localizable(u"Total maximum length lines read: %d"),
    localizable(u"Total bytes written: %d"), localizable(u"Total characters encoded: %d"),
    localizable(u"Total lines written: %d"), localizable(u"Total lines skipped: %d")};

// The settings that a use reads once, at its start.
std::u16string replacementSetting(const UserDefaults& defaults, const char* key) {
  return defaults.stringForKey(key).value_or(u"?");  // only an absent value becomes "?"
}

class EngineUse {
 public:
  EngineUse(const JobParameters& parameters, const JobSurroundings& surroundings)
      : parameters_(parameters),
        around_(surroundings),
        decodeErrorReplacement_(replacementSetting(*surroundings.defaults, "DecodeErrorReplacement")),
        encodeErrorReplacement_(replacementSetting(*surroundings.defaults, "EncodeErrorReplacement")),
        preview_(*surroundings.previewStores,
                 parameters.write ? PreviewFeed::Extent::Head : PreviewFeed::Extent::Everything) {}

  void preview() {
    around_.log->clearFlags();
    around_.previewStores->reset();
    const std::int64_t index = parameters_.selectedFileIndexes.firstIndex();
    if (parameters_.selectedFileIndexes.count() == 1 &&
        index < static_cast<std::int64_t>(around_.files->count())) {
      around_.state->linesInCurrentFile = 0;
      if (!around_.state->stopJob) passOver(static_cast<std::size_t>(index));
    }
    around_.mainThread->performAndWait(around_.updatePreviewPanel);
  }

  void run() {
    JobLog& log = *around_.log;
    log.clearFlags();
    around_.outputFiles->clear();
    // The folder needs no access to be begun here, as a sandbox would want it, so there is none that can
    // fail.
    log.saveLogToFile(true);
    logInformation(log, localizedFormat(u"Job started %@", {currentDateAndTime()}));
    around_.previewStores->reset();
    FileCounts totals;
    const std::size_t count = around_.files->count();
    for (std::size_t index = 0; index < count && !around_.state->stopJob; ++index) totals += passOver(index);
    logCounts(log, totals, kTotalCountKeys);
    logInformation(log, localized(outcome()));
    logInformation(log, localizedFormat(u"Job ended %@", {currentDateAndTime()}));
    log.saveLogToFile(false);
    temporaryFolder_.reset();
    around_.mainThread->performAndWait(around_.updateUIAfterPrep);
    around_.mainThread->perform(around_.hideProgressIndicator);
    around_.state->runningJob = false;
  }

 private:
  std::u16string_view outcome() const {
    if (around_.state->stopJob) return localizable(u"Job stopped by user");
    if (around_.log->atLeastOneError() || around_.log->atLeastOneWarning())
      return localizable(u"Job completed with issues");
    return localizable(u"Job completed");
  }

  // The list is read live: an entry that is gone by now is passed over.
  FileCounts passOver(std::size_t index) {
    const InputFiles::Entry file = around_.files->at(index);
    if (!file) return {};
    PassSurroundings surroundings{*around_.state,
                                  *around_.log,
                                  preview_,
                                  dateReader_,
                                  decodeErrorReplacement_,
                                  encodeErrorReplacement_,
                                  {},
                                  [&](std::vector<ColumnEntry> columns) {
                                    around_.files->setExpectedColumnsInLine(index, file->filePath,
                                                                            std::move(columns));
                                  }};
    if (parameters_.write) {
      if (!temporaryFolder_) temporaryFolder_.emplace(around_.folders->temporaryParentFolder());
      surroundings.run.emplace(
          PassSurroundings::Run{*temporaryFolder_, parameters_.outputFolder.value_or(""),
                                [&](const std::string& path) { around_.outputFiles->add(path); }});
    }
    const FileCounts counts = countsOf(*file, surroundings);
    if (parameters_.write) logCounts(*around_.log, counts, kFileCountKeys);
    return counts;
  }

  // Operations can make a line of any length from a short one. A file for which memory does not suffice is
  // given up, and the next one follows.
  FileCounts countsOf(const InputFile& file, const PassSurroundings& surroundings) const {
    try {
      return FilePass(file, surroundings).run();
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    around_.log->addToImportLog(
        LogError, localizedFormat(u"Not enough memory for \"%@\"", {toUtf16(file.filePathOrEmpty())}));
    return {};
  }

  const JobParameters& parameters_;
  const JobSurroundings& around_;
  std::u16string decodeErrorReplacement_;
  std::u16string encodeErrorReplacement_;
  PreviewFeed preview_;
  DateReader dateReader_;
  std::optional<RunFolder> temporaryFolder_;
};

}  // namespace

void prepFiles(const JobParameters& parameters, const JobSurroundings& surroundings) {
  EngineUse use(parameters, surroundings);
  if (parameters.write)
    use.run();
  else
    use.preview();
}

}  // namespace quillet
