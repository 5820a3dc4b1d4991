#include "operations/default_operations.h"

#include "operations/operation_codes.h"
#include "platform/code_pages.h"

namespace quillet {

namespace {

constexpr std::int64_t kTabDelimited = 1;
constexpr std::int64_t kPipeDelimited = 3;

}  // namespace

OperationList defaultOperations(std::u16string_view fileName, std::int64_t fileType, bool dontAutoSplit) {
  // What the scan could not tell counts as CSV.
  const bool isCsv = fileType != kTabDelimited && fileType != kPipeDelimited;
  const std::u16string columnSeparator = isCsv ? u"," : fileType == kTabDelimited ? u"\t" : u"|";
  const std::int64_t splits = dontAutoSplit ? 0 : SplitIntoLines + SplitIntoColumns;
  const auto encoding = static_cast<std::int64_t>(Encoding::Utf8);
  return {
      {{"Code", OpInitial},
       {"IntArg1", splits + (isCsv ? std::int64_t{RemoveQuotes} : 0)},
       {"IntArg2", encoding},
       {"Arg1", u"\n"},
       {"Arg2", columnSeparator}},
      {{"Code", OpFinal},
       {"IntArg1", isCsv ? std::int64_t{AddQuotes} : 0},
       {"IntArg2", encoding},
       {"IntArg3", static_cast<std::int64_t>(WriteMode::Overwrite)},
       {"Arg1", u"\n"},
       {"Arg2", columnSeparator},
       {"Arg4", std::u16string(fileName)}},
  };
}

}  // namespace quillet
