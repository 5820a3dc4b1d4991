#include "platform/case_mapping.h"

#include <algorithm>
#include <unicode/ustring.h>

#include "platform/simd_blocks.h"

namespace quillet {
namespace {

using Mapping = decltype(&u_strToLower);

// The empty locale is the root one: no mapping depends on the environment.
constexpr const char* kNoLocale = "";

std::u16string mapped(std::u16string_view text, Mapping mapping) {
  const auto size = static_cast<std::int32_t>(text.size());
  std::u16string result(text.size(), u'\0');
  UErrorCode error = U_ZERO_ERROR;
  std::int32_t length = mapping(result.data(), size, text.data(), size, kNoLocale, &error);
  result.resize(static_cast<std::size_t>(length));
  if (error == U_BUFFER_OVERFLOW_ERROR) {
    error = U_ZERO_ERROR;
    mapping(result.data(), length, text.data(), size, kNoLocale, &error);
  }
  return result;
}

bool isAscii(std::u16string_view text) {
  const std::size_t index = simd::passUnitsBelow(text, 0, 0x80);
  return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(index), text.end(),
                     [](char16_t unit) { return unit < 0x80; });
}

// Moves the 26 letters from first on to the other case; they differ in bit 0x20 only.
std::u16string withOtherCase(std::u16string_view text, char16_t first) {
  std::u16string result(text);
  for (char16_t& unit : result) {
    if (unit >= first && unit < first + 26) unit ^= 0x20;
  }
  return result;
}

}  // namespace

std::u16string lowercaseString(std::u16string_view text) {
  return isAscii(text) ? withOtherCase(text, u'A') : mapped(text, u_strToLower);
}

std::u16string uppercaseString(std::u16string_view text) {
  return isAscii(text) ? withOtherCase(text, u'a') : mapped(text, u_strToUpper);
}

}  // namespace quillet
