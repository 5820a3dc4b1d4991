// Enumerations of a job as the database stores them: what is out of range reads as the first value.
#pragma once

#include <cstdint>

namespace quillet {

// The value if first <= value < last, else first.
constexpr std::int64_t validType(std::int64_t value, std::int64_t first, std::int64_t last) {
  return first <= value && value < last ? value : first;
}

constexpr std::int64_t validOutputFileType(std::int64_t value) {
  return validType(value, 1, 4);
}
constexpr std::int64_t validOutputFileWriteMode(std::int64_t value) {
  return validType(value, 1, 4);
}
constexpr std::int64_t validOutputFileLineEndings(std::int64_t value) {
  return validType(value, 1, 4);
}

}  // namespace quillet
