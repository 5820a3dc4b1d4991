// Labels and menu tags of the encodings.
#pragma once

#include <cstdint>
#include <string>

#include "platform/code_pages.h"

namespace quillet {

inline constexpr std::int64_t kDefaultEncodingCode = 4;

std::u16string stringForEncoding(std::int64_t code);  // "(Unknown)" for any other code
std::int64_t tagForEncodingCode(std::int64_t code);   // 1 to 4; 1 for any other code
std::int64_t encodingCodeForTag(std::int64_t tag);    // 4 for any other tag

}  // namespace quillet
