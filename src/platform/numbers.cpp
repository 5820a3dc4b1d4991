#include "platform/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/character_set.h"

namespace quillet {
namespace {

constexpr bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

void skipWhitespace(std::u16string_view text, std::size_t& index) {
  while (index < text.size() && isWhitespaceOrNewline(text[index])) ++index;
}

enum class Sign { Plus, Minus };

// White space, one sign, white space again: a number may stand apart from its sign.
Sign skipToDigits(std::u16string_view text, std::size_t& index) {
  skipWhitespace(text, index);
  if (index == text.size() || (text[index] != u'-' && text[index] != u'+')) return Sign::Plus;
  const Sign sign = text[index] == u'-' ? Sign::Minus : Sign::Plus;
  ++index;
  skipWhitespace(text, index);
  return sign;
}

template <typename Integer>
Integer clampedInteger(std::u16string_view text) {
  constexpr Integer kMinimum = std::numeric_limits<Integer>::min();
  constexpr Integer kMaximum = std::numeric_limits<Integer>::max();
  std::size_t index = 0;
  const Sign sign = skipToDigits(text, index);
  // Counted on the negative side, which reaches one further.
  Integer negative = 0;
  for (; index < text.size() && isDigit(text[index]); ++index) {
    const auto digit = static_cast<Integer>(text[index] - u'0');
    if (negative < (kMinimum + digit) / 10) return sign == Sign::Minus ? kMinimum : kMaximum;
    negative = static_cast<Integer>(negative * 10 - digit);
  }
  if (sign == Sign::Minus) return negative;
  return negative == kMinimum ? kMaximum : static_cast<Integer>(-negative);
}

// Where the parts of a decimal number without its sign stand: "12.5e3" from start to end.
struct DecimalPrefix {
  std::size_t end = 0;         // start when there is no number
  std::int64_t magnitude = 0;  // decimal exponent of the first digit that is not 0, of the mantissa alone
  bool isZero = true;          // no digit other than 0
  std::int64_t exponent = 0;   // clamped far outside of what a double can hold
};

// Digits, "." and digits; at least one digit.
DecimalPrefix scanMantissa(std::u16string_view text, std::size_t start) {
  DecimalPrefix prefix;
  prefix.end = start;
  std::size_t index = start;
  std::size_t firstNonZero = std::u16string_view::npos;
  const auto scanDigits = [&] {
    const std::size_t from = index;
    for (; index < text.size() && isDigit(text[index]); ++index) {
      if (text[index] != u'0' && firstNonZero == std::u16string_view::npos) firstNonZero = index;
    }
    return index - from;
  };
  std::size_t digits = scanDigits();
  const std::size_t point = index;
  if (index < text.size() && text[index] == u'.') {
    ++index;
    digits += scanDigits();
  }
  if (digits == 0) return prefix;
  prefix.end = index;
  if (firstNonZero != std::u16string_view::npos) {
    prefix.isZero = false;
    prefix.magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstNonZero);
  }
  return prefix;
}

// Adds "e", a sign and digits, if there is at least one digit: "12e" is 12.
void scanExponent(std::u16string_view text, DecimalPrefix& prefix) {
  constexpr std::int64_t kFarOutside = 1'000'000'000'000;
  std::size_t index = prefix.end;
  if (index == text.size() || (text[index] != u'e' && text[index] != u'E')) return;
  ++index;
  const bool isNegative = index < text.size() && text[index] == u'-';
  if (index < text.size() && (text[index] == u'-' || text[index] == u'+')) ++index;
  if (index == text.size() || !isDigit(text[index])) return;
  std::int64_t exponent = 0;
  for (; index < text.size() && isDigit(text[index]); ++index)
    exponent = std::min(exponent * 10 + (text[index] - u'0'), kFarOutside);
  prefix.exponent = isNegative ? -exponent : exponent;
  prefix.end = index;
}

double parseDecimal(std::u16string_view number, const DecimalPrefix& prefix) {
  // from_chars gives no value for what is out of range; an exponent so large that it need not count exactly
  // is out of range whatever the digits are.
  const std::int64_t magnitude = prefix.magnitude + prefix.exponent;
  if (magnitude > 400) return std::numeric_limits<double>::infinity();
  if (magnitude < -400) return 0;
  char stack[128];
  std::string heap;
  char* bytes = stack;
  if (number.size() > sizeof stack) {
    heap.resize(number.size());
    bytes = heap.data();
  }
  std::transform(number.begin(), number.end(), bytes, [](char16_t unit) { return static_cast<char>(unit); });
  double value = 0;
  if (std::from_chars(bytes, bytes + number.size(), value).ec == std::errc::result_out_of_range)
    return magnitude > 0 ? std::numeric_limits<double>::infinity() : 0;
  return value;
}

}  // namespace

std::int64_t integerValue(std::u16string_view text) {
  return clampedInteger<std::int64_t>(text);
}

std::int32_t intValue(std::u16string_view text) {
  return clampedInteger<std::int32_t>(text);
}

double doubleValue(std::u16string_view text) {
  std::size_t start = 0;
  const Sign sign = skipToDigits(text, start);
  DecimalPrefix prefix = scanMantissa(text, start);
  if (prefix.end == start) return 0;
  scanExponent(text, prefix);
  const double value = prefix.isZero ? 0.0 : parseDecimal(text.substr(start, prefix.end - start), prefix);
  return sign == Sign::Minus ? -value : value;
}

float floatValue(std::u16string_view text) {
  return static_cast<float>(doubleValue(text));
}

void appendInteger(std::int64_t value, std::u16string& out) {
  char digits[24];
  const auto result = std::to_chars(digits, digits + sizeof digits, value);
  out.append(digits, result.ptr);
}

void appendFixed(double value, std::int64_t digits, std::u16string& out) {
  if (std::isnan(value)) {
    out += u"nan";
    return;
  }
  // A double has at most 309 digits in front of the point and 1074 behind it; all further ones are 0.
  constexpr std::int64_t kMostDigits = 1074;
  char buffer[1 + 309 + 1 + kMostDigits];
  const std::int64_t wanted = std::clamp<std::int64_t>(digits, 0, kMostFixedDigits);
  const int exactDigits = static_cast<int>(std::min(wanted, kMostDigits));
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, exactDigits);
  out.append(buffer, result.ptr);
  if (std::isfinite(value)) out.append(static_cast<std::size_t>(wanted - exactDigits), u'0');
}

}  // namespace quillet
