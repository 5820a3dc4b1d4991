#include "platform/code_pages.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <unicode/ucnv.h>
#include <unicode/unorm2.h>

#include "platform/composed_sequences.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

constexpr Encoding kCodePages[] = {Encoding::WindowsCP1252, Encoding::MacOSRoman};
constexpr Encoding kSingleByteEncodings[] = {Encoding::Ascii, Encoding::WindowsCP1252, Encoding::MacOSRoman};
constexpr Encoding kUnknown = static_cast<Encoding>(99);

std::optional<std::string> encodedSequence(std::u16string_view sequence, Encoding encoding) {
  std::string bytes = "before";
  const bool converted = appendEncoded(sequence, encoding, bytes);
  EXPECT_EQ(canBeConverted(sequence, encoding), converted);
  EXPECT_EQ(bytes.substr(0, 6), "before");
  if (!converted) {
    EXPECT_EQ(bytes, "before");
    return {};
  }
  return bytes.substr(6);
}

// The byte as ICU reads it, kUndefinedByte if it gives nothing.
char16_t decodedByIcu(const char* converterName, int byte) {
  UErrorCode status = U_ZERO_ERROR;
  UConverter* converter = ucnv_open(converterName, &status);
  const char source = static_cast<char>(byte);
  char16_t units[8] = {};
  const int32_t length = ucnv_toUChars(converter, units, 8, &source, 1, &status);
  ucnv_close(converter);
  EXPECT_TRUE(U_SUCCESS(status)) << converterName;
  return length == 1 && units[0] != 0xFFFD ? units[0] : kUndefinedByte;
}

TEST(CodePages, DecodeTablesAreThoseOfTheField) {
  const std::set<int> undefinedInCp1252 = {0x81, 0x8D, 0x8F, 0x90, 0x9D};
  for (int byte = 0; byte < 256; ++byte) {
    const char16_t cp1252 = singleByteTable(Encoding::WindowsCP1252)[byte];
    EXPECT_EQ(cp1252, undefinedInCp1252.contains(byte) ? kUndefinedByte : decodedByIcu("windows-1252", byte))
        << byte;
    EXPECT_EQ(singleByteTable(Encoding::MacOSRoman)[byte], decodedByIcu("macintosh", byte)) << byte;
    EXPECT_EQ(singleByteTable(Encoding::Ascii)[byte], byte < 0x80 ? char16_t(byte) : kUndefinedByte) << byte;
    EXPECT_EQ(singleByteTable(kUnknown)[byte], kUndefinedByte) << byte;
  }
}

TEST(CodePages, BytesOfNoteInMacRoman) {
  const char16_t* table = singleByteTable(Encoding::MacOSRoman);
  EXPECT_EQ(table[0xDB], 0x20AC);  // the euro, not the currency sign
  EXPECT_EQ(table[0xF0], 0xF8FF);
  EXPECT_EQ(table[0xBD], 0x03A9);
  EXPECT_EQ(table[0xCA], 0x00A0);
}

TEST(CodePages, EveryCodePointIsEncodedAsTheByteItComesFrom) {
  for (const Encoding encoding : kSingleByteEncodings) {
    std::map<char16_t, std::string> bytes;
    for (int byte = 0; byte < 256; ++byte) {
      const char16_t unit = singleByteTable(encoding)[byte];
      if (unit != kUndefinedByte) bytes[unit] = std::string(1, static_cast<char>(byte));
    }
    if (encoding == Encoding::MacOSRoman) bytes[0x2126] = "\xBD";
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
      const char16_t text = static_cast<char16_t>(unit);
      const auto expected = bytes.find(text);
      const auto encoded = encodedSequence({&text, 1}, encoding);
      if (expected == bytes.end()) {
        ASSERT_EQ(encoded, std::nullopt) << int(text);
      } else {
        ASSERT_EQ(encoded, expected->second) << int(text);
      }
    }
  }
}

TEST(CodePages, EncodesOneSequence) {
  using Bytes = std::optional<std::string>;
  struct Case {
    const char* what;
    std::u16string_view sequence;
    Bytes cp1252, macRoman, ascii, utf8;
  };
  const Bytes no;
  const Case cases[] = {
      {"e and acute", u"e\u0301", "\xE9", "\x8E", no, "e\xCC\x81"},
      {"u and diaeresis", u"u\u0308", "\xFC", "\x9F", no, "u\xCC\x88"},
      {"n and tilde", u"n\u0303", "\xF1", "\x96", no, "n\xCC\x83"},
      {"S and caron", u"S\u030C", "\x8A", no, no, "S\xCC\x8C"},
      {"A and ring", u"A\u030A", "\xC5", "\x81", no, "A\xCC\x8A"},
      {"q and acute", u"q\u0301", no, no, no, "q\xCC\x81"},
      {"two marks", u"E\u0301\u0323", no, no, no, "E\xCC\x81\xCC\xA3"},
      {"a mark twice", u"e\u0301\u0301", no, no, no, "e\xCC\x81\xCC\x81"},
      {"a composed letter and a mark", u"\u00E9\u0301", no, no, no, "\xC3\xA9\xCC\x81"},
      {"a mark alone", u"\u0301", no, no, no, "\xCC\x81"},
      {"a mark that takes no part", u"a\u0340", no, no, no, "a\xCD\x80"},
      {"equals and stroke", u"=\u0338", no, no, no, "=\xCC\xB8"},
      {"emoji", u"\U0001F44D", no, no, no, "\xF0\x9F\x91\x8D"},
      {"euro", u"\u20AC", "\x80", "\xDB", no, "\xE2\x82\xAC"},
      {"currency sign", u"\u00A4", "\xA4", no, no, "\xC2\xA4"},
      {"ohm", u"\u2126", no, "\xBD", no, "\xE2\x84\xA6"},
      {"omega", u"\u03A9", no, "\xBD", no, "\xCE\xA9"},
      {"angstrom", u"\u212B", no, no, no, "\xE2\x84\xAB"},
      {"fullwidth A", u"\uFF21", no, no, no, "\xEF\xBC\xA1"},
      {"control 81", u"\u0081", no, no, no, "\xC2\x81"},
      {"control 9D", u"\u009D", no, no, no, "\xC2\x9D"},
      {"NUL", std::u16string_view(u"\0", 1), std::string(1, '\0'), std::string(1, '\0'), std::string(1, '\0'),
       std::string(1, '\0')},
      {"a letter", u"z", "z", "z", "z", "z"},
      {"FFFF", u"\uFFFF", no, no, no, "\xEF\xBF\xBF"},
      {"FEFF", u"\uFEFF", no, no, no, "\xEF\xBB\xBF"},
      {"high surrogate", u"\xD83D", no, no, no, no},
      {"low surrogate", u"\xDC4D", no, no, no, no},
      {"low and high surrogate", u"\xDC4D\xD83D", no, no, no, no},
      {"e and a high surrogate", u"e\xD83D", no, no, no, no},
      {"nothing", u"", "", "", "", ""},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(encodedSequence(one.sequence, Encoding::WindowsCP1252), one.cp1252) << one.what;
    EXPECT_EQ(encodedSequence(one.sequence, Encoding::MacOSRoman), one.macRoman) << one.what;
    EXPECT_EQ(encodedSequence(one.sequence, Encoding::Ascii), one.ascii) << one.what;
    EXPECT_EQ(encodedSequence(one.sequence, Encoding::Utf8), one.utf8) << one.what;
    EXPECT_EQ(encodedSequence(one.sequence, kUnknown), no) << one.what;
  }
}

// The rule in words: one code point of the table; or two and more units, of which all but the first code
// point are marks that take part, and which compose canonically to one character of the table.
std::optional<std::string> encodedByTheRule(std::u16string_view sequence, Encoding encoding) {
  static const std::set<char16_t> marks = {0x300, 0x301, 0x302, 0x303, 0x304, 0x306, 0x307, 0x308,
                                           0x30A, 0x30B, 0x30C, 0x30F, 0x311, 0x31B, 0x327, 0x328};
  std::u16string composed(sequence);
  if (sequence.size() > 1) {
    for (std::size_t i = unitsOfCodePoint(codePointAt(sequence, 0)); i < sequence.size(); ++i)
      if (!marks.contains(sequence[i])) return {};
    UErrorCode status = U_ZERO_ERROR;
    char16_t units[64];
    const int32_t length = unorm2_normalize(unorm2_getNFCInstance(&status), sequence.data(),
                                            static_cast<int32_t>(sequence.size()), units, 64, &status);
    EXPECT_TRUE(U_SUCCESS(status));
    composed.assign(units, static_cast<std::size_t>(length));
  } else if (encoding == Encoding::MacOSRoman && composed == u"\u2126") {
    return "\xBD";
  }
  if (composed.size() != 1) return {};
  for (int byte = 0; byte < 256; ++byte)
    if (singleByteTable(encoding)[byte] == composed[0] && composed[0] != kUndefinedByte)
      return std::string(1, static_cast<char>(byte));
  return {};
}

TEST(CodePages, ComposesEveryPairThatTheRuleComposes) {
  for (const Encoding encoding : kCodePages) {
    for (char32_t base = 0; base < 0x3000; ++base) {
      for (char32_t mark = 0x2FE; mark < 0x332; ++mark) {
        const char16_t sequence[] = {static_cast<char16_t>(base), static_cast<char16_t>(mark)};
        // Few of them compose: the slow rule looks at those that compose at all and at a part of the others.
        if (base > 0x80 && (base + mark) % 7 != 0) continue;
        ASSERT_EQ(encodedSequence({sequence, 2}, encoding), encodedByTheRule({sequence, 2}, encoding))
            << int(base) << " " << int(mark);
      }
    }
  }
}

TEST(CodePages, LongerSequencesFollowTheRule) {
  const std::u16string_view parts[] = {u"e",      u"A",      u"s",         u"\u00E9", u"\u212B",
                                       u"\u0301", u"\u0302", u"\u0308",    u"\u030A", u"\u030C",
                                       u"\u0323", u"\u0327", u"\U0001F44D"};
  testing::RandomSource random;
  for (std::uint64_t round = 0; round < testing::rounds(20000); ++round) {
    const std::u16string sequence = random.text(parts, 4);
    if (sequence.empty()) continue;
    for (const Encoding encoding : kCodePages)
      ASSERT_EQ(encodedSequence(sequence, encoding), encodedByTheRule(sequence, encoding));
  }
}

TEST(CodePages, EncodesATextSequenceBySequence) {
  EXPECT_EQ(encodedText(u"cafe\u0301, na\u00EFve\r\n", Encoding::WindowsCP1252), "caf\xE9, na\xEFve\r\n");
  EXPECT_EQ(encodedText(u"e\u0301e\u0301", Encoding::MacOSRoman), "\x8E\x8E");
  EXPECT_EQ(encodedText(u"a q\u0301 b", Encoding::WindowsCP1252), std::nullopt);
  EXPECT_EQ(encodedText(u"a\u20AC", Encoding::Ascii), std::nullopt);
  EXPECT_EQ(encodedText(u"plain", Encoding::Ascii), "plain");
  EXPECT_EQ(encodedText(u"\U0001F44D\u0301 ok", Encoding::Utf8), "\xF0\x9F\x91\x8D\xCC\x81 ok");
  EXPECT_EQ(encodedText(u"ok \xD83D ok", Encoding::Utf8), std::nullopt);
  EXPECT_EQ(encodedText(u"", Encoding::Ascii), "");
  EXPECT_EQ(encodedText(u"", kUnknown), std::nullopt);
  EXPECT_EQ(encodedText(u"a", kUnknown), std::nullopt);
}

TEST(CodePages, ATextIsItsSequencesOneAfterTheOther) {
  const std::u16string_view parts[] = {u"a",    u"e",      u"\u0301",  u"\u00E9",
                                       u"\r\n", u"\u20AC", u"bcdefgh", u"\u0308"};
  testing::RandomSource random;
  for (std::uint64_t round = 0; round < testing::rounds(5000); ++round) {
    const std::u16string text = random.text(parts, 8);
    for (const Encoding encoding : kSingleByteEncodings) {
      std::optional<std::string> expected = "";
      forEachComposedSequence(text, [&](std::u16string_view sequence) {
        if (expected && !appendEncoded(sequence, encoding, *expected)) expected.reset();
      });
      ASSERT_EQ(encodedText(text, encoding), expected);
    }
  }
}

}  // namespace
}  // namespace quillet
