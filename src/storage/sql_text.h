// Statements are texts with values put in, and values come back as texts.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/numbers.h"
#include "platform/unicode_text.h"

namespace quillet {

// The format with each "%@" replaced, left to right, by a value as it stands. There are as many values.
inline std::string sqlText(std::string_view format, std::initializer_list<std::string_view> values) {
  std::string result;
  for (const std::string_view value : values) {
    const std::size_t place = format.find("%@");
    result += format.substr(0, place);
    result += value;
    format.remove_prefix(place + 2);
  }
  result += format;
  return result;
}

// The integer that the UTF-8 text begins with; 0 if there is none.
inline std::int64_t integerOfText(std::string_view text) {
  return integerValue(toUtf16(text));
}

}  // namespace quillet
