// The four text encodings: UTF-8 (code 4), Windows CP1252 (12), Mac Roman (30) and ASCII (1), strict and
// without loss. Any other code is an encoding in which nothing can be decoded or encoded.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

enum class Encoding : std::int64_t { Ascii = 1, Utf8 = 4, WindowsCP1252 = 12, MacOSRoman = 30 };

// The code points of the 256 bytes; kUndefinedByte where the encoding has none (all bytes of an unknown
// encoding). Not for UTF-8.
inline constexpr char16_t kUndefinedByte = 0xFFFF;
const char16_t* singleByteTable(Encoding encoding);

// Whether one composed character sequence can be written in the encoding. A base with marks can be written in
// a code page when it composes to one character of it.
bool canBeConverted(std::u16string_view sequence, Encoding encoding);

// Appends the bytes of one composed sequence. False, and nothing appended, when it cannot be converted.
bool appendEncoded(std::u16string_view sequence, Encoding encoding, std::string& out);

// From a unit that is a sequence by itself to its byte, 0 for those without one and for U+0000. Null for
// UTF-8 and for unknown encodings. 65,536 entries.
const std::uint8_t* singleByteEncodeTable(Encoding encoding);

// Converts a text of any length, sequence by sequence: nothing if one of them cannot be converted.
std::optional<std::string> encodedText(std::u16string_view text, Encoding encoding);

}  // namespace quillet
