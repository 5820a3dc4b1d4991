#include "shell/previous_job.h"

#include "storage/job_codes.h"
#include "storage/sql_text.h"

namespace quillet {

namespace {

constexpr std::size_t kTextsPerJob = 5;

}  // namespace

bool PreviousJob::isOperationsJob() const {
  return (integerOfText(flags) & (kJobHasOperations | kJobHasOperationsOfAKind)) != 0;
}

bool PreviousJob::isClipboardJob() const {
  return (integerOfText(flags) & kJobHasOperationsOfAKind) != 0 &&
         integerOfText(kind) == static_cast<std::int64_t>(JobKind::Clipboard);
}

std::vector<PreviousJob> previousJobsFromRows(const DBInterface::FlatRows& rows) {
  std::vector<PreviousJob> result;
  for (std::size_t i = 0; i + kTextsPerJob <= rows.size(); i += kTextsPerJob)
    result.push_back({rows[i], rows[i + 1], rows[i + 2], rows[i + 3], rows[i + 4]});
  return result;
}

}  // namespace quillet
