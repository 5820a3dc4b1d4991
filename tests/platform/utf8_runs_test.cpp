#include "platform/utf8_runs.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/composed_sequences.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using testing::RandomSource;

bool isIn(int value, int low, int high) {
  return value >= low && value <= high;
}

// The length of the valid character at the start, 0 if there is none.
std::size_t validLength(const std::string& bytes, std::size_t at) {
  const auto byte = [&](std::size_t i) {
    return at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0;
  };
  const auto follow = [&](std::size_t count) {
    for (std::size_t i = 2; i <= count; ++i)
      if (!isIn(byte(i), 0x80, 0xBF)) return false;
    return true;
  };
  const int first = byte(0), second = byte(1);
  if (first < 0x80) return 1;
  if (isIn(first, 0xC2, 0xDF)) return isIn(second, 0x80, 0xBF) ? 2 : 0;
  if (isIn(first, 0xE0, 0xEF)) {
    const int low = first == 0xE0 ? 0xA0 : 0x80, high = first == 0xED ? 0x9F : 0xBF;
    return isIn(second, low, high) && follow(2) ? 3 : 0;
  }
  if (isIn(first, 0xF0, 0xF4)) {
    const int low = first == 0xF0 ? 0x90 : 0x80, high = first == 0xF4 ? 0x8F : 0xBF;
    return isIn(second, low, high) && follow(3) ? 4 : 0;
  }
  return 0;
}

struct Decoded {
  DecodedRun run;
  std::u16string units;
  bool operator==(const Decoded&) const = default;
};

Decoded decodedByRule(const std::string& bytes) {
  Decoded result;
  while (result.run.bytes < bytes.size()) {
    const std::size_t length = validLength(bytes, result.run.bytes);
    if (length == 0) break;
    result.units += toUtf16(bytes.substr(result.run.bytes, length));
    result.run.bytes += length;
    ++result.run.characters;
  }
  result.run.units = result.units.size();
  return result;
}

Decoded decoded(const std::string& bytes, unsigned char slackByte) {
  std::vector<unsigned char> padded(bytes.begin(), bytes.end());
  padded.resize(bytes.size() + kRunSlack, slackByte);
  std::vector<char16_t> units(bytes.size() + kRunSlack);
  Decoded result;
  result.run = decodeUtf8Run(padded.data(), bytes.size(), units.data());
  result.units.assign(units.data(), result.run.units);
  return result;
}

const std::string kPieces[] = {"a",
                               "b",
                               "plain text of some length",
                               "é",
                               "я",
                               "日",
                               "語",
                               "\uFFFF",
                               "\u0800",
                               "😀",
                               "\u0080",
                               "\xE2",
                               "\x80",
                               "\xC0",
                               "\xC1",
                               "\xED\xA0\x80",
                               "\xE0\x9F\x80",
                               "\xF5",
                               "\xF4\x90",
                               "\xF0\x80",
                               "\xFF",
                               "\xC3"};
constexpr std::size_t kValidPieces = 11;

TEST(Utf8Runs, DecodesAsTheRuleSays) {
  RandomSource random;
  const unsigned char kSlackBytes[] = {0, 'x', 0x80, 0xC3, 0xE3, 0xF0, 0xFF};
  for (std::uint64_t round = testing::rounds(60'000); round > 0; --round) {
    std::string bytes;
    const bool onlyValid = !random.oneIn(3);
    for (std::size_t i = random.below(random.oneIn(5) ? 90 : 20); i > 0; --i)
      bytes += onlyValid ? kPieces[random.below(kValidPieces)] : random.pick(kPieces);
    if (random.oneIn(4) && !bytes.empty()) bytes.resize(random.below(bytes.size()));
    ASSERT_EQ(decoded(bytes, random.pick(kSlackBytes)), decodedByRule(bytes))
        << ::testing::PrintToString(bytes);
  }
}

TEST(Utf8Runs, DecodesEveryPatternOfLengths) {
  const std::string kByLength[] = {"a", "é", "日", "😀"};
  for (std::size_t number = 0; number < 65'536; ++number) {
    std::string bytes;
    for (std::size_t i = 0, rest = number; i < 8; ++i, rest /= 4) bytes += kByLength[rest % 4];
    ASSERT_EQ(decoded(bytes, 'x'), decodedByRule(bytes)) << ::testing::PrintToString(bytes);
  }
}

TEST(Utf8Runs, EncodesWhatStandsAloneAndStopsBeforeTheRest) {
  RandomSource random;
  const std::u16string kUnits[] = {u"a",      u"é",      u"я",          u"日",
                                   u"한",     u"ア",     u"plain text", u"\u07FF",
                                   u"\u0300", u"\u200D", u"😀",          std::u16string(1, 0)};
  for (std::uint64_t round = testing::rounds(60'000); round > 0; --round) {
    std::u16string text;
    for (std::size_t i = random.below(40); i > 0; --i)
      text += kUnits[random.below(random.oneIn(3) ? std::size(kUnits) : 7)];
    const std::vector<char16_t> exact(text.begin(), text.end());
    std::vector<char> bytes(text.size() * 3 + kRunSlack);
    const EncodedRun run = encodeUtf8Run({exact.data(), exact.size()}, bytes.data());
    ASSERT_EQ(std::string(bytes.data(), run.bytes), toUtf8(text.substr(0, run.units)));
    ASSERT_EQ(run.units % 8, 0u);
    if (text.size() - run.units < 8) continue;
    const std::u16string next = text.substr(run.units, 8);
    ASSERT_TRUE(next.find(u'\0') != next.npos || !standAlone8(next.data())) << toUtf8(text);
  }
}

TEST(Utf8Runs, EncodesEveryMixOfLengths) {
  const std::u16string_view kByLength = u"aя日";
  for (std::size_t number = 0; number < 6'561; ++number) {
    std::u16string text;
    for (std::size_t i = 0, rest = number; i < 8; ++i, rest /= 3) text += kByLength[rest % 3];
    char bytes[24 + kRunSlack];
    const EncodedRun run = encodeUtf8Run(text, bytes);
    ASSERT_EQ(run.units, 8u);
    ASSERT_EQ(std::string(bytes, run.bytes), toUtf8(text));
  }
}

TEST(Utf8Runs, WhatStandsAloneIsInert) {
  std::size_t count = 0;
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    std::u16string eight(8, u'a');
    eight[unit % 8] = static_cast<char16_t>(unit);
    if (!standAlone8(eight.data())) continue;
    ++count;
    EXPECT_TRUE(isInertUnit(static_cast<char16_t>(unit))) << std::hex << unit;
  }
  EXPECT_GT(count, 40'000u);  // Latin to Han
}

}  // namespace
}  // namespace quillet
