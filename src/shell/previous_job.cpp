#include "shell/previous_job.h"

#include "storage/sql_text.h"

namespace quillet {

namespace {

constexpr std::int64_t kHasOperations = 0x1000;         // of files, always
constexpr std::int64_t kHasOperationsOfAKind = 0x2000;  // which kind, the column "reserved" tells
constexpr std::int64_t kClipboardKind = 1;
constexpr std::size_t kTextsPerJob = 5;

}  // namespace

bool PreviousJob::isOperationsJob() const {
  return (integerOfText(flags) & (kHasOperations | kHasOperationsOfAKind)) != 0;
}

bool PreviousJob::isClipboardJob() const {
  return (integerOfText(flags) & kHasOperationsOfAKind) != 0 && integerOfText(kind) == kClipboardKind;
}

std::vector<PreviousJob> previousJobsFromRows(const DBInterface::FlatRows& rows) {
  std::vector<PreviousJob> result;
  for (std::size_t i = 0; i + kTextsPerJob <= rows.size(); i += kTextsPerJob)
    result.push_back({rows[i], rows[i + 1], rows[i + 2], rows[i + 3], rows[i + 4]});
  return result;
}

}  // namespace quillet
