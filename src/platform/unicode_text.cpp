#include "platform/unicode_text.h"

#include <cstdint>

namespace quillet {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// What a lead byte announces: how many bytes follow, and which range the first of them must lie in.
struct LeadByte {
  int trailBytes = 0;  // 0 for a byte that cannot lead a sequence of several bytes
  unsigned char lowestSecond = 0x80;
  unsigned char highestSecond = 0xBF;
};

// The narrower ranges of the second byte keep out overlong forms, surrogates and what lies above U+10FFFF.
LeadByte leadByte(unsigned char byte) {
  if (byte >= 0xC2 && byte <= 0xDF) return {1, 0x80, 0xBF};
  if (byte == 0xE0) return {2, 0xA0, 0xBF};
  if (byte == 0xED) return {2, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {2, 0x80, 0xBF};
  if (byte == 0xF0) return {3, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return {3, 0x80, 0xBF};
  if (byte == 0xF4) return {3, 0x80, 0x8F};
  return {};
}

// Decodes the sequence of several bytes at index and moves index behind it, or behind its maximal ill-formed
// part.
char32_t decodeSequence(std::string_view utf8, std::size_t& index) {
  const auto first = static_cast<unsigned char>(utf8[index++]);
  const LeadByte lead = leadByte(first);
  if (lead.trailBytes == 0) return kReplacement;
  char32_t codePoint = first & (0x3F >> lead.trailBytes);
  for (int trail = 0; trail < lead.trailBytes; ++trail) {
    if (index == utf8.size()) return kReplacement;
    const auto byte = static_cast<unsigned char>(utf8[index]);
    const unsigned char lowest = trail == 0 ? lead.lowestSecond : 0x80;
    const unsigned char highest = trail == 0 ? lead.highestSecond : 0xBF;
    if (byte < lowest || byte > highest) return kReplacement;
    codePoint = (codePoint << 6) | (byte & 0x3F);
    ++index;
  }
  return codePoint;
}

}  // namespace

std::u16string toUtf16(std::string_view utf8) {
  std::u16string result;
  result.reserve(utf8.size());
  for (std::size_t index = 0; index < utf8.size();) {
    const auto byte = static_cast<unsigned char>(utf8[index]);
    if (byte < 0x80) {
      result.push_back(byte);
      ++index;
    } else {
      appendCodePoint(decodeSequence(utf8, index), result);
    }
  }
  return result;
}

void appendUtf8(std::u16string_view text, std::string& out) {
  const auto append = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  for (std::size_t index = 0; index < text.size();) {
    char32_t codePoint = codePointAt(text, index);
    index += unitsOfCodePoint(codePoint);
    if (codePoint < 0x80) {
      append(codePoint);
      continue;
    }
    if (codePoint < 0x800) {
      append(0xC0 | codePoint >> 6);
      append(0x80 | (codePoint & 0x3F));
      continue;
    }
    if (codePoint <= 0xFFFF) {
      if (isSurrogate(static_cast<char16_t>(codePoint))) codePoint = kReplacement;
      append(0xE0 | codePoint >> 12);
    } else {
      append(0xF0 | codePoint >> 18);
      append(0x80 | (codePoint >> 12 & 0x3F));
    }
    append(0x80 | (codePoint >> 6 & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  }
}

std::string toUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  appendUtf8(text, result);
  return result;
}

void appendCodePoint(char32_t codePoint, std::u16string& out) {
  if (codePoint <= 0xFFFF) {
    out.push_back(static_cast<char16_t>(codePoint));
    return;
  }
  out.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
  out.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
}

}  // namespace quillet
