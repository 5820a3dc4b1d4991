#include "platform/code_pages.h"

#include <algorithm>
#include <array>
#include <memory>

#include "platform/composed_sequences.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

using DecodeTable = std::array<char16_t, 256>;

constexpr char16_t kNone = kUndefinedByte;

// The bytes from 0x80 on.
constexpr std::array<char16_t, 32> kCp1252From80To9F = {
    0x20AC, kNone,  0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, kNone,  0x017D, kNone,  kNone,  0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, kNone,  0x017E, 0x0178,
};
constexpr std::array<char16_t, 128> kMacRomanFrom80 = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5,
    0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, 0x00F2, 0x00F4,
    0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6,
    0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, 0x221E, 0x00B1, 0x2264, 0x2265,
    0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF,
    0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5,
    0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044,
    0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9,
    0x0131, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,
};

constexpr DecodeTable makeDecodeTable(Encoding encoding) {
  DecodeTable table{};
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    const bool isAsciiByte = byte < 0x80;
    switch (encoding) {
      case Encoding::Ascii:
        table[byte] = isAsciiByte ? static_cast<char16_t>(byte) : kNone;
        break;
      case Encoding::WindowsCP1252:
        table[byte] =
            isAsciiByte || byte >= 0xA0 ? static_cast<char16_t>(byte) : kCp1252From80To9F[byte - 0x80];
        break;
      case Encoding::MacOSRoman:
        table[byte] = isAsciiByte ? static_cast<char16_t>(byte) : kMacRomanFrom80[byte - 0x80];
        break;
      case Encoding::Utf8:
        table[byte] = kNone;
        break;
    }
  }
  return table;
}

constexpr DecodeTable kAsciiTable = makeDecodeTable(Encoding::Ascii);
constexpr DecodeTable kCp1252Table = makeDecodeTable(Encoding::WindowsCP1252);
constexpr DecodeTable kMacRomanTable = makeDecodeTable(Encoding::MacOSRoman);
constexpr DecodeTable kEmptyTable = makeDecodeTable(Encoding::Utf8);

const DecodeTable& decodeTable(Encoding encoding) {
  switch (encoding) {
    case Encoding::Ascii:
      return kAsciiTable;
    case Encoding::WindowsCP1252:
      return kCp1252Table;
    case Encoding::MacOSRoman:
      return kMacRomanTable;
    case Encoding::Utf8:
      break;
  }
  return kEmptyTable;
}

// A letter with the marks that the code pages' characters compose with. Each of those characters is one ASCII
// letter and one mark, so nothing longer than this can compose to one.
struct Composition {
  char16_t composed;
  char16_t base;
  char16_t mark;
};
constexpr Composition kCompositions[] = {
    {0x00C0, u'A', 0x0300}, {0x00C1, u'A', 0x0301}, {0x00C2, u'A', 0x0302}, {0x00C3, u'A', 0x0303},
    {0x00C4, u'A', 0x0308}, {0x00C5, u'A', 0x030A}, {0x00C7, u'C', 0x0327}, {0x00C8, u'E', 0x0300},
    {0x00C9, u'E', 0x0301}, {0x00CA, u'E', 0x0302}, {0x00CB, u'E', 0x0308}, {0x00CC, u'I', 0x0300},
    {0x00CD, u'I', 0x0301}, {0x00CE, u'I', 0x0302}, {0x00CF, u'I', 0x0308}, {0x00D1, u'N', 0x0303},
    {0x00D2, u'O', 0x0300}, {0x00D3, u'O', 0x0301}, {0x00D4, u'O', 0x0302}, {0x00D5, u'O', 0x0303},
    {0x00D6, u'O', 0x0308}, {0x00D9, u'U', 0x0300}, {0x00DA, u'U', 0x0301}, {0x00DB, u'U', 0x0302},
    {0x00DC, u'U', 0x0308}, {0x00DD, u'Y', 0x0301}, {0x00E0, u'a', 0x0300}, {0x00E1, u'a', 0x0301},
    {0x00E2, u'a', 0x0302}, {0x00E3, u'a', 0x0303}, {0x00E4, u'a', 0x0308}, {0x00E5, u'a', 0x030A},
    {0x00E7, u'c', 0x0327}, {0x00E8, u'e', 0x0300}, {0x00E9, u'e', 0x0301}, {0x00EA, u'e', 0x0302},
    {0x00EB, u'e', 0x0308}, {0x00EC, u'i', 0x0300}, {0x00ED, u'i', 0x0301}, {0x00EE, u'i', 0x0302},
    {0x00EF, u'i', 0x0308}, {0x00F1, u'n', 0x0303}, {0x00F2, u'o', 0x0300}, {0x00F3, u'o', 0x0301},
    {0x00F4, u'o', 0x0302}, {0x00F5, u'o', 0x0303}, {0x00F6, u'o', 0x0308}, {0x00F9, u'u', 0x0300},
    {0x00FA, u'u', 0x0301}, {0x00FB, u'u', 0x0302}, {0x00FC, u'u', 0x0308}, {0x00FD, u'y', 0x0301},
    {0x00FF, u'y', 0x0308}, {0x0160, u'S', 0x030C}, {0x0161, u's', 0x030C}, {0x0178, u'Y', 0x0308},
    {0x017D, u'Z', 0x030C}, {0x017E, u'z', 0x030C},
};

constexpr char16_t kFirstMark = 0x0300;
constexpr char16_t kLastMark = 0x0327;

// From a unit, or a letter and a mark, to the byte; 0 where there is none, since a zero byte is looked at
// apart.
struct EncodeTable {
  explicit EncodeTable(const DecodeTable& decode) {
    for (std::size_t byte = 1; byte < decode.size(); ++byte)
      if (decode[byte] != kNone) byteOfUnit[decode[byte]] = static_cast<std::uint8_t>(byte);
    for (const Composition& one : kCompositions)
      byteOfPair[one.mark - kFirstMark][one.base] = byteOfUnit[one.composed];
  }

  std::array<std::uint8_t, 0x10000> byteOfUnit{};
  std::array<std::array<std::uint8_t, 0x80>, kLastMark - kFirstMark + 1> byteOfPair{};
};

// Made at the first use and never destroyed, as job threads may outlive the end of main().
const EncodeTable& cp1252EncodeTable() {
  static const EncodeTable& table = *new EncodeTable(kCp1252Table);
  return table;
}

const EncodeTable& asciiEncodeTable() {
  static const EncodeTable& table = *new EncodeTable(kAsciiTable);
  return table;
}

const EncodeTable& macRomanEncodeTable() {
  static const EncodeTable& table = *[] {
    auto made = std::make_unique<EncodeTable>(kMacRomanTable);
    made->byteOfUnit[0x2126] = 0xBD;  // the ohm sign, a twin of the capital omega
    return made.release();
  }();
  return table;
}

constexpr int kNotConvertible = -1;

// The byte of one composed sequence, or kNotConvertible.
int byteOfSequence(std::u16string_view sequence, const EncodeTable& table) {
  const char16_t unit = sequence[0];
  if (sequence.size() == 1) {
    const int byte = table.byteOfUnit[unit];
    return byte != 0 || unit == 0 ? byte : kNotConvertible;
  }
  if (sequence.size() != 2 || unit >= 0x80 || sequence[1] < kFirstMark || sequence[1] > kLastMark)
    return kNotConvertible;
  const int byte = table.byteOfPair[sequence[1] - kFirstMark][unit];
  return byte != 0 ? byte : kNotConvertible;
}

int byteOfSequence(std::u16string_view sequence, Encoding encoding) {
  switch (encoding) {
    case Encoding::Ascii:
      return sequence.size() == 1 && sequence[0] < 0x80 ? sequence[0] : kNotConvertible;
    case Encoding::WindowsCP1252:
      return byteOfSequence(sequence, cp1252EncodeTable());
    case Encoding::MacOSRoman:
      return byteOfSequence(sequence, macRomanEncodeTable());
    case Encoding::Utf8:
      break;
  }
  return kNotConvertible;
}

bool hasLoneSurrogate(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!isSurrogate(text[i])) continue;
    if (isLowSurrogate(text[i]) || i + 1 == text.size() || !isLowSurrogate(text[i + 1])) return true;
    ++i;
  }
  return false;
}

bool isKnown(Encoding encoding) {
  switch (encoding) {
    case Encoding::Ascii:
    case Encoding::Utf8:
    case Encoding::WindowsCP1252:
    case Encoding::MacOSRoman:
      return true;
  }
  return false;
}

}  // namespace

const char16_t* singleByteTable(Encoding encoding) {
  return decodeTable(encoding).data();
}

bool canBeConverted(std::u16string_view sequence, Encoding encoding) {
  if (sequence.empty()) return isKnown(encoding);
  if (encoding == Encoding::Utf8) return !hasLoneSurrogate(sequence);
  return byteOfSequence(sequence, encoding) != kNotConvertible;
}

bool appendEncoded(std::u16string_view sequence, Encoding encoding, std::string& out) {
  if (sequence.empty()) return isKnown(encoding);
  if (encoding == Encoding::Utf8) {
    if (hasLoneSurrogate(sequence)) return false;
    appendUtf8(sequence, out);
    return true;
  }
  const int byte = byteOfSequence(sequence, encoding);
  if (byte == kNotConvertible) return false;
  out += static_cast<char>(byte);
  return true;
}

const std::uint8_t* singleByteEncodeTable(Encoding encoding) {
  switch (encoding) {
    case Encoding::Ascii:
      return asciiEncodeTable().byteOfUnit.data();
    case Encoding::WindowsCP1252:
      return cp1252EncodeTable().byteOfUnit.data();
    case Encoding::MacOSRoman:
      return macRomanEncodeTable().byteOfUnit.data();
    case Encoding::Utf8:
      break;
  }
  return nullptr;
}

std::optional<std::string> encodedText(std::u16string_view text, Encoding encoding) {
  std::string bytes;
  if (encoding == Encoding::Utf8 || text.empty()) {
    if (!appendEncoded(text, encoding, bytes)) return {};
    return bytes;
  }
  bytes.reserve(text.size());
  for (std::size_t start = 0; start < text.size();) {
    for (const std::size_t end = start + inertRunLength(text, start); start < end; ++start)
      if (!appendEncoded(text.substr(start, 1), encoding, bytes)) return {};
    if (start == text.size()) break;
    const std::size_t end = composedSequenceEnd(text, start);
    if (!appendEncoded(text.substr(start, end - start), encoding, bytes)) return {};
    start = end;
  }
  return bytes;
}

}  // namespace quillet
