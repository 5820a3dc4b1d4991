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

// Whether each of the eight units belongs to a script whose characters stand alone: Latin, Greek, Cyrillic,
// kana, Han, Hangul syllables. False says nothing.
bool standAlone8(const char16_t* units);

}  // namespace quillet
