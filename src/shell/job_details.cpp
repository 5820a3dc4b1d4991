#include "shell/job_details.h"

#include <span>

#include "operations/labels.h"
#include "platform/localization.h"
#include "platform/numbers.h"
#include "platform/unicode_text.h"
#include "storage/db_interface.h"
#include "text/encodings.h"

namespace quillet {

namespace {

// Stands in the details when the setting under "when" is on, filled with the text under "text".
struct DetailLine {
  std::string_view when;
  std::u16string_view format;
  std::string_view text = {};
};

constexpr DetailLine kFileLines[] = {
    {"SkipBlankLines", localizable(u"Skip blank lines\n")},
    {"SkipLineNumbers", localizable(u"Skip line numbers: %@\n"), "LineNumbersToSkip"},
    {"SkipLinesThatContain", localizable(u"Skip that contain: %@\n"), "ContainRegex"},
    {"ContainRegexCS", localizable(u"Case-sensitive\n")},
};

constexpr DetailLine kJobLines[] = {
    {"OverallSameFileName", localizable(u"Use same file name\n")},
    {"OverallSeparateOutputFiles", localizable(u"Separate output files\n")},
    {"OverallOutputFileName", localizable(u"Output file name: %@\n"), "OverallOutputFileNameString"},
    {"OverallSkipBlankLines", localizable(u"Skip blank lines\n")},
    {"OverallSkipLineNumbers", localizable(u"Skip line numbers: %@\n"), "OverallLineNumbersToSkip"},
    // No job has this key, so the text is always empty: this is meant.
    {"OverallSkipLinesThatContain", localizable(u"Skip lines that contain: %@\n"), "ContainRegex"},
    {"OverallContainRegexCS", localizable(u"Case-sensitive\n")},
    {"OverallTrimWhitespace", localizable(u"Trim whitespace\n")},
    {"OverallAddMissingColumns", localizable(u"Add missing columns: %@\n"), "OverallAddMissingColumnsString"},
    {"OverallInvalidColumn", localizable(u"If a column cannot be converted: %@\n"),
     "OverallInvalidColumnString"},
};

void appendLines(std::span<const DetailLine> lines, const SettingsRecord& settings, std::u16string& out) {
  for (const DetailLine& line : lines)
    if (settings.boolean(line.when)) out += localizedFormat(line.format, {toUtf16(settings.text(line.text))});
}

// The numbers of the columns, from 1, as they stand in the output. A column without an index is passed over.
std::u16string columnOrder(const std::vector<SettingsRecord>& columns) {
  std::u16string result;
  for (const SettingsRecord& column : columns) {
    if (!column.has("ColumnIndex")) continue;
    if (!result.empty()) result += u", ";
    const auto number = static_cast<std::uint64_t>(column.integer("ColumnIndex", 0)) + 1;
    appendInteger(static_cast<std::int64_t>(number), result);
  }
  return result;
}

void appendColumns(const std::vector<SettingsRecord>& columns, std::u16string& out) {
  out += u'\n';
  out += localizedFormat(u"Number of columns: %d\n", {static_cast<std::int64_t>(columns.size())});
  const std::u16string order = columnOrder(columns);
  if (!order.empty()) out += localizedFormat(u"Column order: %@\n", {order});
}

}  // namespace

JobDates::JobDates() {
  previousJobsDateFormatter_.setDateStyle(DateStyle::Short);
  previousJobsDateFormatter_.setTimeStyle(DateStyle::Short);
  databaseDateFormatter_.setDateFormat(DBInterface::kDateFormat);
}

std::u16string JobDates::shown(std::string_view databaseDate) const {
  const auto date = databaseDateFormatter_.dateFromString(toUtf16(databaseDate));
  return date ? previousJobsDateFormatter_.stringFromDate(*date) : std::u16string();
}

std::u16string stringForFileDetails(const SettingsRecord& file) {
  std::u16string result =
      localizedFormat(u"Type: %@\nEncoding: %@\n", {stringForInputFileType(file.integer("FileType", 0)),
                                                    stringForEncoding(file.integer("FileEncoding", 0))});
  appendLines(kFileLines, file, result);
  if (file.columns()) appendColumns(*file.columns(), result);
  return result;
}

std::u16string stringForJobDetails(const SettingsRecord& job, const JobDates& dates) {
  std::u16string result =
      localizedFormat(u"Last saved: %@\nWrite mode: %@\nColumn separator: %@\nLine endings: %@\n",
                      {dates.shown(job.text("LastSaveDate")),
                       stringForOutputFileWriteMode(job.integer("LastOutputFileWriteMode", 0)),
                       stringForOutputFileType(job.integer("LastOutputFileType", 0)),
                       stringForOutputLineEndings(job.integer("LastOutputFileLineEndings", 0))});
  appendLines(kJobLines, job, result);
  return result;
}

}  // namespace quillet
