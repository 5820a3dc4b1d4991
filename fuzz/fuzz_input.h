// What the fuzz targets make of a fuzzer's bytes: choices and texts from the head, one after the other, and a
// rest.
//
// A seed can be written by hand: a choice is one byte taken modulo the number of alternatives, so a letter
// will do; a text is UTF-8 up to a byte FE, which no UTF-8 has. FF and two bytes are one UTF-16 unit of any
// value, high byte first, so lone surrogates occur too. Behind the end all choices are 0 and all texts are
// empty.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/unicode_text.h"

namespace quillet::fuzz {

inline std::u16string textFromBytes(std::string_view bytes) {
  std::u16string text;
  while (!bytes.empty()) {
    const std::size_t escape = std::min(bytes.find('\xFF'), bytes.size());
    text += toUtf16(bytes.substr(0, escape));
    bytes.remove_prefix(escape);
    if (bytes.size() < 3) break;
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[1]) << 8 |
                                  static_cast<unsigned char>(bytes[2]));
    bytes.remove_prefix(3);
  }
  return text;
}

// Views hold as long as the fuzzer's bytes.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  // 0 to count - 1; count is 1 to 256.
  std::size_t below(std::size_t count) {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return byte % count;
  }

  bool flag() { return below(2) == 1; }

  template <typename Sequence>
  const auto& pick(const Sequence& sequence) {
    return sequence[below(std::size(sequence))];
  }

  std::string_view bytes(std::size_t most) {
    const std::string_view all = rest_.substr(0, rest_.find('\xFE'));
    rest_.remove_prefix(std::min(all.size() + 1, rest_.size()));
    return all.substr(0, most);
  }

  // From at most this many bytes; what the field has more is passed over.
  std::u16string text(std::size_t mostBytes) { return textFromBytes(bytes(mostBytes)); }

  std::string_view restBytes() const { return rest_; }
  std::u16string restText() const { return textFromBytes(rest_); }

 private:
  std::string_view rest_;
};

// Ends the program, as the fuzzer wants it, where a property does not hold.
inline void require(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "This does not hold: %s\n", property);
  std::abort();
}

}  // namespace quillet::fuzz
