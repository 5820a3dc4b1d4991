#include "platform/composed_sequences.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <vector>

#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using Texts = std::vector<std::u16string>;

Texts sequences(std::u16string_view text) {
  Texts result;
  forEachComposedSequence(text, [&](std::u16string_view sequence) { result.emplace_back(sequence); });
  return result;
}

std::string printed(std::u16string_view text) {
  std::string result;
  for (const char16_t unit : text) {
    char hex[8];
    std::snprintf(hex, sizeof hex, "%04X ", static_cast<unsigned>(unit));
    result += hex;
  }
  return result;
}

// Each row is the sequences of the text that they make when put one after the other.
const Texts kRows[] = {
    {},
    {u"a", u"b"},
    {u"\r", u"\n"},  // two; this is meant
    {u"e\u0301", u"x"},
    {u"e\u0323\u0301\u20DD"},
    {u"\u0301\u0302", u"a"},  // a mark at the start begins a sequence
    // Marks join any base.
    {u",\u0301", u"\"\u0301", u"\t\u0301", u"\n\u0301", std::u16string(u"\0\u0301", 2), u" \u0301"},
    {u"\u00E9\u0301", u"\u6F22\u3099", u"\u6F22"},
    {u"\u0915\u093E", u"\u0915"},  // a spacing mark joins too
    // Modifiers that are no marks.
    {u"\U0001F44D\U0001F3FD", u"\U0001F44D"},
    {u"a\U0001F3FD"},
    {u"\U0001F3F4\U000E0067\U000E007F", u"\U000E0001"},
    {u"\uFF76\uFF9E", u"\uFF8A\uFF9F"},
    {u"a\uF870\uF87F", u"\uF880"},
    {u"a", u"\u200C", u"\u0E01", u"\u0E33", u"\u0EB3"},
    // Hangul.
    {u"\u1100\u1161\u11A8", u"\u1100"},
    {u"\u1100\u1100\u1161\u1161\u11A8\u11A8"},
    {u"\u1100\uAC00\u1161", u"\u1100\uAC01\u11A8"},
    {u"\uAC00\u11A8", u"\uAC01", u"\u1161", u"\uAC00", u"\uAC00"},
    {u"\u11A8\u11A8", u"\u1161\u11A8", u"\u1161", u"\u1100", u"\u11A8"},
    {u"\uAC00\u11A8\u0301", u"\u11A8"},
    {u"\uA960", u"\u1161", u"\uAC00", u"\uD7B0"},  // the extended jamo do not join
    // A virama or U+034F takes the next letter in.
    {u"\u0915\u094D\u0937\u093E", u"\u0915"},
    {u"\u0915\u094D\u200D\u0937\u094D\u0915\u093F", u"x"},
    {u"\u0915\u094D", u"1"},
    {u"\u0915\u094D\u200D", u"1"},
    {u"a\u034Fb", u"c"},
    {u"1\u094D", u"\u0915"},  // only if the base is a letter
    {u"\u094D", u"\u0915"},   // and has something behind it
    {u"\u094D\u094D\u0915"},  // a mark counts as a letter
    {u"\u0915\u094D\u093E", u"\u0937"},
    {u"\U00011013\U00011046\U00011014"},
    // Regional indicators in pairs.
    {u"\U0001F1E9\U0001F1EA", u"\U0001F1EB\U0001F1F7", u"\U0001F1E9", u"a"},
    {u"\U0001F1E9\u0301", u"\U0001F1EA\U0001F1EA"},
    // Emoji joined by U+200D.
    {u"\U0001F468\u200D\U0001F469\u200D\U0001F467", u"\U0001F468"},
    {u"\U0001F468\U0001F3FD\u200D\U0001F469\U0001F3FD\uFE0F", u"a"},
    {u"\u2764\uFE0F\u200D\U0001F525", u"\u2764", u"\u2764"},
    {u"\u00A9\u200D\u00AE", u"\u00AE"},
    {u"\u0600\u00A9\u200D\u2764\u0903\u200D", u"\u0600", u"1"},
    {u"\U0001F468\u200D", u"a"},
    {u"a\u200D", u"\U0001F468"},
    // One U+200D directly behind joins.
    {u"a\u200D", u"\u200D\u200D", u"b"},
    {u"a\u0301\u200D", u"\u0301", u"b"},
    // Lone surrogates are code points of their own.
    {std::u16string{0xD83D}, u"a", std::u16string{0xDE00}, std::u16string{0xDE00, 0x0301}},
    {u"\U0001F600", u"\U00010400\u0301"},
};

TEST(ComposedSequences, TextsFallIntoTheirSequences) {
  for (const Texts& row : kRows) {
    std::u16string text;
    for (const std::u16string& sequence : row) text += sequence;
    EXPECT_EQ(sequences(text), row) << printed(text);
    EXPECT_EQ(countComposedSequences(text), row.size()) << printed(text);
  }
}

TEST(ComposedSequences, SequenceEndCountsFromTheTextsStart) {
  EXPECT_EQ(composedSequenceEnd(u"xye\u0301z", 2), 4u);
  EXPECT_EQ(composedSequenceEnd(u"xye\u0301z", 3), 4u);
  EXPECT_EQ(composedSequenceEnd(u"xye\u0301z", 4), 5u);
  EXPECT_EQ(composedSequenceEnd(u"x", 0), 1u);
}

// The rule for the table, said anew.
bool isInertByProperties(char16_t unit) {
  if (isSurrogate(unit) || (U_GET_GC_MASK(unit) & U_GC_M_MASK)) return false;
  if (u_getIntPropertyValue(unit, UCHAR_GRAPHEME_CLUSTER_BREAK) == U_GCB_PREPEND) return false;
  if ((unit >= 0xF860 && unit <= 0xF87F) || (unit >= 0x1100 && unit <= 0x11FF)) return false;
  return std::u16string_view(u"\u200C\u200D\u0E33\u0EB3\uFF9E\uFF9F").find(unit) == std::u16string_view::npos;
}

TEST(ComposedSequences, InertUnitsAreThoseThatNeverJoin) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const auto asUnit = static_cast<char16_t>(unit);
    ASSERT_EQ(isInertUnit(asUnit), isInertByProperties(asUnit)) << std::hex << unit;
    if (unit < 0x0300) {
      ASSERT_TRUE(isInertUnit(asUnit)) << std::hex << unit;
    }
  }
  EXPECT_TRUE(isInertUnit(0xAC00));
  EXPECT_TRUE(isInertUnit(0x6F22));
  EXPECT_TRUE(isInertUnit(0x3042));
  EXPECT_FALSE(isInertUnit(0x0600));
}

TEST(ComposedSequences, InertRunLeavesWhatFollowsCouldJoin) {
  EXPECT_EQ(inertRunLength(u""), 0u);
  EXPECT_EQ(inertRunLength(u"abc"), 3u);
  EXPECT_EQ(inertRunLength(u"abc", 1), 2u);
  EXPECT_EQ(inertRunLength(u"abc", 3), 0u);
  EXPECT_EQ(inertRunLength(u"abc\u0301"), 2u);
  EXPECT_EQ(inertRunLength(u"c\u0301"), 0u);
  EXPECT_EQ(inertRunLength(u"\u0301abc"), 0u);
  EXPECT_EQ(inertRunLength(u"\u6F22\u6F22\uAC00"), 3u);
}

// Alphabets that put inert and joining units side by side.
const std::u16string kPlain[] = {u"a", u"Z", u"1", u",", u"\n", u"\r", u"\u00E9", u"\u00A9", u"\u02FF"};
const std::u16string kWide[] = {u"\u03B1", u"\u6F22", u"\uAC00", u"\uAC01", u"\u0E01", u"\u0915", u"\u2764"};
const std::u16string kJoining[] = {u"\u0301",     u"\u0323",
                                   u"\u0903",     u"\u094D",
                                   u"\u034F",     u"\u200D",
                                   u"\u200C",     u"\u0600",
                                   u"\u1100",     u"\u1161",
                                   u"\u11A8",     u"\u0E33",
                                   u"\uFF9E",     u"\uF865",
                                   u"\uF875",     u"\U0001F468",
                                   u"\U0001F3FD", u"\U0001F1E9",
                                   u"\U000E0067", std::u16string{0xD83D},
                                   u"\uFE0F",     std::u16string{0xDE00}};

std::u16string randomText(testing::RandomSource& random) {
  std::u16string text;
  const std::size_t rarity = 1 + random.below(40);
  for (std::size_t length = random.below(90); length > 0; --length) {
    if (random.oneIn(rarity)) {
      text += random.pick(kJoining);
    } else {
      text += random.oneIn(rarity) ? random.pick(kWide) : random.pick(kPlain);
    }
  }
  return text;
}

TEST(ComposedSequences, ShortCutsAgreeWithTheRulesOnRandomTexts) {
  testing::RandomSource random;
  for (std::uint64_t round = testing::rounds(4000); round > 0; --round) {
    // A buffer of exactly this size: a sanitizer sees every step beyond it.
    const std::u16string random16 = randomText(random);
    const std::vector<char16_t> exact(random16.begin(), random16.end());
    const std::u16string_view text(exact.data(), exact.size());
    std::size_t count = 0;
    for (std::size_t start = 0; start < text.size(); ++count) {
      const std::size_t end = detail::composedSequenceEndByRules(text, start);
      ASSERT_EQ(composedSequenceEnd(text, start), end) << printed(text) << " at " << start;
      start = end;
    }
    ASSERT_EQ(countComposedSequences(text), count) << printed(text);
  }
}

TEST(ComposedSequences, InertRunAgreesWithUnitByUnit) {
  testing::RandomSource random(1);
  for (std::uint64_t round = testing::rounds(4000); round > 0; --round) {
    const std::u16string random16 = randomText(random);
    const std::vector<char16_t> exact(random16.begin(), random16.end());
    const std::u16string_view text(exact.data(), exact.size());
    const std::size_t start = random.below(text.size() + 1);
    std::size_t end = start;
    while (end < text.size() && isInertByProperties(text[end])) ++end;
    if (end < text.size() && end > start) --end;
    ASSERT_EQ(inertRunLength(text, start), end - start) << printed(text) << " from " << start;
  }
}

TEST(ComposedSequences, ClusterAroundAnIndex) {
  EXPECT_EQ(graphemeClusterEndAround(u"abc", 1), 2u);
  EXPECT_EQ(graphemeClusterEndAround(u"\u0915\u094D\u0937", 1), 3u);
  EXPECT_EQ(graphemeClusterEndAround(u"\u0915\u093E", 0), 1u);  // a spacing mark does not extend a cluster
  EXPECT_EQ(graphemeClusterEndAround(u"\u1100\u1161\u11A8x", 1), 3u);
  EXPECT_EQ(graphemeClusterEndAround(u"\U0001F468\u200D\U0001F469", 2), 5u);
  EXPECT_EQ(graphemeClusterEndAround(u"a\u200Db", 1), 2u);
  EXPECT_EQ(graphemeClusterEndAround(u"a\u034Fb", 1), 3u);
  EXPECT_EQ(graphemeClusterEndAround(u"1\u034Fb", 1), 2u);
}

}  // namespace
}  // namespace quillet
