// UTF-8 and UTF-16 turned into each other in runs of many characters, for the loops that see every byte. With
// byte shuffles where the processor has them (SSSE3), one by one elsewhere; both give the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillet {

struct DecodedRun {
  std::size_t bytes = 0;  // taken
  std::size_t units = 0;  // written
  std::size_t characters = 0;
  bool operator==(const DecodedRun&) const = default;
};

// Bytes behind the input, and units behind the output, that are read or written without meaning.
inline constexpr std::size_t kRunSlack = 64;

// Decodes characters from the first count bytes, up to the first that is invalid or not wholly among them.
// There must be kRunSlack readable bytes behind these, and room for count + kRunSlack units.
DecodedRun decodeUtf8Run(const unsigned char* from, std::size_t count, char16_t* to);

struct EncodedRun {
  std::size_t units = 0;  // taken
  std::size_t bytes = 0;  // written
  bool operator==(const EncodedRun&) const = default;
};

// Encodes units that are each a composed sequence, eight at a time, and stops before eight of which one may
// be none, or is U+0000; fewer than eight are left. There must be room for 3 bytes a unit and kRunSlack
// bytes. A unit that stands last may still be joined by what follows it.
EncodedRun encodeUtf8Run(std::u16string_view text, char* to);

// The number of bytes of a unit, no surrogate, in UTF-8.
constexpr std::size_t utf8Length(char16_t unit) {
  return unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
}

// Without branches, as a text that is not all of one script would have them mispredicted. Writes 3 bytes,
// which do not all count; of a NUL none does: it is a character, but it ends the bytes of its text before
// they begin.
inline char* putUtf8(char16_t unit, char* to) {
  const std::uint32_t u = unit;
  const std::uint32_t two = (0xC0 | u >> 6) | (0x80 | (u & 0x3F)) << 8;
  const std::uint32_t three = (0xE0 | u >> 12) | (0x80 | (u >> 6 & 0x3F)) << 8 | (0x80 | (u & 0x3F)) << 16;
  const std::uint32_t bytes = u < 0x80 ? u : u < 0x800 ? two : three;
  to[0] = static_cast<char>(bytes);
  to[1] = static_cast<char>(bytes >> 8);
  to[2] = static_cast<char>(bytes >> 16);
  return to + (u != 0) + (u >= 0x80) + (u >= 0x800);
}

// Whether each of the eight units belongs to a script whose characters stand alone: Latin, Greek, Cyrillic,
// kana, Han, Hangul syllables. False says nothing.
bool standAlone8(const char16_t* units);

}  // namespace quillet
