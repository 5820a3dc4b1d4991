// The numbers in the list of saved jobs, and of the ways to search it.
#pragma once

#include <cstdint>

namespace quillet {

// Bits of a job's flags. The lower ones are settings of the first generation of jobs.
inline constexpr std::int64_t kJobHasOperations = 0x1000;         // of files, always; set by nothing
inline constexpr std::int64_t kJobHasOperationsOfAKind = 0x2000;  // set by every save

// Which kind, in the column "reserved" of a job with the latter bit.
enum class JobKind : std::int64_t { Files = 0, Clipboard = 1 };

enum JobSearchType : std::int64_t { SearchByJobName = 1, SearchSavedSince = 2, SearchFilesInJob = 3 };

}  // namespace quillet
