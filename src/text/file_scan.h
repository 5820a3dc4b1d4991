// The first look at a new file: what kind of delimited text it is, from its first block and its name.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quillet {

// Writes lineEndsInCR (a bare carriage return was seen) and detectedFileType (1 tab, 2 CSV, 3 pipe) only when
// the block decodes; both may be null. Says failures, level 2, and an empty first line, level 0, to log.
void scanFile(const std::string& path, std::int64_t encoding, bool* lineEndsInCR,
              std::int64_t* detectedFileType,
              const std::function<void(int level, std::u16string_view text)>& log);

}  // namespace quillet
