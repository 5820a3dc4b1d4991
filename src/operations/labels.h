// The words for the values of the enumerations, through localized(). A value outside its table gives
// "(Unknown)".
#pragma once

#include <cstdint>
#include <string>

namespace quillet {

std::u16string stringForInputFileType(std::int64_t value);
std::u16string stringForOutputFileType(std::int64_t value);
std::u16string stringForOutputLineEndings(std::int64_t value);
std::u16string stringForOutputFileWriteMode(std::int64_t value);
std::u16string stringForLineSkipType(std::int64_t value);
std::u16string stringForTrimType(std::int64_t value);
std::u16string stringForTrimFromWhere(std::int64_t value);
std::u16string stringForReplaceType(std::int64_t value);
std::u16string stringForFillType(std::int64_t value);
// A sample of the date (1) or time (2) format; any other value of reformatAs gives "(Unknown)".
std::u16string stringForReformatAs(std::int64_t value, std::int64_t withFormat);

}  // namespace quillet
