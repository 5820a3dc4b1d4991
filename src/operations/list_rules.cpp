#include "operations/list_rules.h"

#include <algorithm>

#include "operations/operation_codes.h"
#include "platform/localization.h"

namespace quillet {

namespace {

struct OnlyOnce {
  OperationCode code;
  std::u16string_view message;
};
// In the order of the messages.
constexpr OnlyOnce kOnlyOnce[] = {
    {OpSetInitialNumberOfColumns,
     localizable(u"%@: Only one Set Initial Number of Columns operation is allowed.")},
    {OpSetFinalNumberOfColumns,
     localizable(u"%@: Only one Set Final Number of Columns operation is allowed.")},
    {OpJoinColumns, localizable(u"%@: Only one Join Columns operation is allowed.")},
    {OpJoinLines, localizable(u"%@: Only one Join Lines operation is allowed.")},
    {OpRearrangeColumns, localizable(u"%@: Only one Rearrange Columns operation is allowed.")},
};

}  // namespace

std::vector<std::u16string> problemsBeforeRun(const OperationList& operations, std::u16string_view fileName) {
  std::vector<std::u16string> problems;
  for (const OnlyOnce& rule : kOnlyOnce) {
    const auto count =
        std::count_if(operations.begin(), operations.end(),
                      [&rule](const OperationRecord& record) { return record.code() == rule.code; });
    if (count > 1) problems.push_back(localizedFormat(rule.message, {fileName}));
  }
  return problems;
}

}  // namespace quillet
