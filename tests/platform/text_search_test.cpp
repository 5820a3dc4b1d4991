#include "platform/text_search.h"

#include <gtest/gtest.h>

#include "equivalence_reference.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using Range = std::optional<TextRange>;
using Parts = std::vector<std::u16string_view>;

constexpr Range kNo = std::nullopt;
constexpr SearchOptions kBackAnchored = BackwardsSearch | AnchoredSearch;

Range range(std::size_t location, std::size_t length) {
  return TextRange{location, length};
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

struct Row {
  std::u16string text;
  std::u16string needle;
  SearchOptions options;
  Range found;
};

void expectRows(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const Range found = rangeOfString(row.text, row.needle, row.options);
    EXPECT_EQ(found, row.found) << printed(row.text) << "/ " << printed(row.needle) << "with " << row.options
                                << (found ? " at " + std::to_string(found->location) + "+" +
                                                std::to_string(found->length)
                                          : " nowhere");
  }
}

TEST(TextSearch, CanonicalEquivalentsAreFound) {
  expectRows({
      {u"e\u0301", u"e", 0, kNo},
      {u"e\u0301", u"e", LiteralSearch, range(0, 1)},
      {u"caf\u00E9", u"e\u0301", 0, range(3, 1)},
      {u"cafe\u0301", u"\u00E9", 0, range(3, 2)},
      {u"cafe\u0301", u"\u00E9", LiteralSearch, kNo},
      {u"a\u0301\u0323", u"a\u0323\u0301", 0, range(0, 3)},
      {u"a\u0301\u0323", u"\u0323\u0301", 0, range(1, 2)},
      {u"\u1EA1\u0301", u"a\u0301\u0323", 0, range(0, 2)},
      {u"\u212A", u"K", 0, range(0, 1)},
      {u"x\u037E", u";", 0, range(1, 1)},
      {u"\u1FEF", u"`", 0, range(0, 1)},
      {u"\u00C5", u"\u212B", 0, range(0, 1)},
      {u"\uAC01", u"\u1100\u1161\u11A8", 0, range(0, 1)},
      {u"\u1100\u1161\u11A8", u"\uAC01", 0, range(0, 3)},
      {u"\U0002F800", u"\u4E3D", 0, range(0, 2)},
      {u"e\u0301", u"\u0301", 0, range(1, 1)},  // the start is not checked; this is meant
      {u"\u00E9", u"\u0301", 0, kNo},
      {u"\u00A0", u" ", 0, kNo},
      {u"\uFF21", u"A", CaseInsensitiveSearch, kNo},
  });
}

TEST(TextSearch, CaseIsFoldedInFull) {
  constexpr SearchOptions kCaseless = CaseInsensitiveSearch;
  expectRows({
      {u"stra\u00DFe", u"STRASSE", kCaseless, range(0, 6)},
      {u"STRASSE", u"stra\u00DFe", kCaseless, range(0, 7)},
      {u"a\u00DF", u"s", kCaseless | kBackAnchored, kNo},
      {u"a\u00DF", u"ss", kCaseless | kBackAnchored, range(1, 1)},
      {u"a\u1E9E", u"ss", kCaseless, range(1, 1)},
      {u"\u00DF", u"ss", 0, kNo},
      {u"\uFB01", u"fi", kCaseless, range(0, 1)},
      {u"\uFB01", u"fi", 0, kNo},
      {u"\uFB03", u"ffi", kCaseless, range(0, 1)},
      {u"\uFB06", u"ST", kCaseless, range(0, 1)},
      {u"\u0130", u"i", kCaseless, kNo},
      {u"\u0130", u"I", kCaseless, kNo},
      {u"\u0130", u"i\u0307", kCaseless, range(0, 1)},
      {u"\u0131", u"i", kCaseless, kNo},
      {u"\u0131", u"I", kCaseless, kNo},
      {u"\u03A3", u"\u03C2", kCaseless, range(0, 1)},
      {u"\u03C3", u"\u03C2", kCaseless, range(0, 1)},
      {u"\u212A", u"k", kCaseless, range(0, 1)},
      {u"\u017F", u"S", kCaseless, range(0, 1)},
      {u"\u00B5", u"\u03BC", kCaseless, range(0, 1)},
      {u"E\u0301", u"\u00E9", kCaseless, range(0, 2)},
      {u"\u1FB3", u"\u0391\u0345", kCaseless, range(0, 1)},
      {u"[\\]^_`{|}~@", u"{", kCaseless, range(6, 1)},  // no letters: bit 0x20 is no case here
      {u"[", u"{", kCaseless, kNo},
      {u"@", u"`", kCaseless, kNo},
      {u"abCDef", u"cDE", kCaseless, range(2, 3)},
      {u"abCDef", u"cDE", 0, kNo},
  });
}

TEST(TextSearch, LiteralComparesUnits) {
  const std::u16string high = {0xD83D};
  const std::u16string low = {0xDE00};
  expectRows({
      {u"\u212A", u"K", LiteralSearch, kNo},
      {u",\u0301", u",", LiteralSearch, range(0, 1)},
      {u"\U0001F600", low, LiteralSearch, range(1, 1)},
      {u"\U0001F600", low, 0, kNo},
      {low + high, high, 0, range(1, 1)},
      {low + high, low, CaseInsensitiveSearch, range(0, 1)},
      {u"E\u0301", u"e", LiteralSearch | CaseInsensitiveSearch, range(0, 1)},
      {u"\u00DF", u"SS", LiteralSearch | CaseInsensitiveSearch, range(0, 1)},
      {u"\u00C9", u"\u00E9", LiteralSearch | CaseInsensitiveSearch, range(0, 1)},
      {u"E\u0301", u"\u00E9", LiteralSearch | CaseInsensitiveSearch, kNo},
      {u"abab\u00E9", u"b", LiteralSearch | BackwardsSearch, range(3, 1)},
      {u"ab\u00E9", u"\u00E9", LiteralSearch | kBackAnchored, range(2, 1)},
      {u"ab\u00E9", u"ab", LiteralSearch | AnchoredSearch, range(0, 2)},
      {u"ab\u00E9", u"b", LiteralSearch | AnchoredSearch, kNo},
  });
}

TEST(TextSearch, LineEndsAndMarks) {
  expectRows({
      {u"a\r\nb", u"\n", 0, range(2, 1)},  // CR LF is no unit of comparison
      {u"a\r\nb", u"\r", 0, range(1, 1)},
      {u"a\r\n", u"\n", kBackAnchored, range(2, 1)},
      {u"a\r\n", u"\r\n", kBackAnchored, range(1, 2)},
      {u",\u0301", u",", 0, kNo},  // a mark hides what it follows
      {u"\n\u0301", u"\n", 0, kNo},
      {u",\u0301,", u",", 0, range(2, 1)},
      {u",\u0301", u",", AnchoredSearch, kNo},
      {u",\U0001F3FD", u",", 0, kNo},
      {u",\u6F22", u",", 0, range(0, 1)},
  });
}

TEST(TextSearch, HitsEndWhereTheClusterLetsThem) {
  expectRows({
      {u"\U0001F44D\U0001F3FD", u"\U0001F44D", 0, kNo},
      {u"\u2764\uFE0F", u"\u2764", 0, kNo},
      {u"a\u200Cb", u"a", 0, kNo},
      {u"\U0001F468\u200D\U0001F469", u"\U0001F468", 0, range(0, 2)},
      {u"\U0001F468\u200D\U0001F469", u"\U0001F469", 0, range(3, 2)},
      {u"\U0001F468\u200D\U0001F469", u"\U0001F468\u200D", 0, kNo},
      {u"\U0001F468\u200Db", u"\U0001F468\u200D", 0, range(0, 3)},
      {u"\U0001F1E9\U0001F1EA", u"\U0001F1E9", 0, range(0, 2)},
      {u"\u0915\u094D\u0937", u"\u0915", 0, kNo},
      {u"\u0915\u094D\u0937", u"\u0937", 0, range(2, 1)},
      {u"\u0915\u094D\u0937", u"\u0915\u094D", 0, kNo},
      {u"\u0915\u094D1", u"\u0915\u094D", 0, range(0, 2)},
      {u"\u0915\u093E", u"\u0915", 0, range(0, 1)},
      {u"a\u034Fb", u"a\u034F", 0, kNo},
      {u"1\u034Fb", u"1\u034F", 0, range(0, 2)},
      {u"\u1100\u1161", u"\u1100", 0, kNo},
      {u"\u1100x\u1100", u"\u1100", BackwardsSearch, range(2, 1)},
      {u"\u1100x\u1100\u1161", u"\u1100", BackwardsSearch, range(0, 1)},
      {u"\uAC00\u11A8", u"\uAC00", 0, range(0, 1)},
  });
}

TEST(TextSearch, DirectionsAndAnchors) {
  expectRows({
      {u"abab", u"ab", 0, range(0, 2)},
      {u"abab", u"ab", BackwardsSearch, range(2, 2)},
      {u"aaa", u"aa", BackwardsSearch, range(1, 2)},
      {u"aaa", u"aa", kBackAnchored, range(1, 2)},
      {u"xab", u"ab", AnchoredSearch, kNo},
      {u"abx", u"ab", AnchoredSearch, range(0, 2)},
      {u"abx", u"ab", kBackAnchored, kNo},
      {u"xAB", u"ab", kBackAnchored | CaseInsensitiveSearch, range(1, 2)},
      {u"xAB", u"ab", kBackAnchored, kNo},
      {u"xe\u0301", u"\u00E9", kBackAnchored, range(1, 2)},
      {u"\u00E9x", u"e\u0301", AnchoredSearch, range(0, 1)},
      {u"x\u00E9", u"e\u0301", AnchoredSearch, kNo},
      // The largest start that matches counts, though a smaller one would reach the end.
      {u"a\u0301\u0301", u"\u0301", kBackAnchored, range(2, 1)},
      {u"ab", u"abc", 0, kNo},
      {u"ab", u"abc", kBackAnchored, kNo},
      {u"ab", u"abc", AnchoredSearch, kNo},
      {u"ab", u"abc", BackwardsSearch, kNo},
  });
}

TEST(TextSearch, NothingIsFoundInNothing) {
  for (SearchOptions options = 0; options < 16; ++options) {
    EXPECT_EQ(rangeOfString(u"", u"", options), kNo);
    EXPECT_EQ(rangeOfString(u"", u"a", options), kNo);
    EXPECT_EQ(rangeOfString(u"a", u"", options), kNo);
    EXPECT_EQ(rangeOfString(u"\u00E9", u"", options), kNo);
  }
}

TEST(TextSearch, ReplacingGoesFromLeftToRightInTheOriginal) {
  EXPECT_EQ(stringByReplacingOccurrences(u"aaa", u"aa", u"b"), u"ba");
  EXPECT_EQ(stringByReplacingOccurrences(u"aaaa", u"aa", u"a"), u"aa");
  EXPECT_EQ(stringByReplacingOccurrences(u"abc", u"b", u"bb"), u"abbc");
  EXPECT_EQ(stringByReplacingOccurrences(u"abc", u"", u"x"), u"abc");
  EXPECT_EQ(stringByReplacingOccurrences(u"", u"a", u"x"), u"");
  EXPECT_EQ(stringByReplacingOccurrences(u"abc", u"x", u"y"), u"abc");
  EXPECT_EQ(stringByReplacingOccurrences(u"a\r\nb\n", u"\n", u"|"), u"a\r|b|");
  EXPECT_EQ(stringByReplacingOccurrences(u"xAxaX", u"x", u"", CaseInsensitiveSearch), u"Aa");
  EXPECT_EQ(stringByReplacingOccurrences(u"e\u0301\u00E9e", u"\u00E9", u"E"), u"EEe");
  EXPECT_EQ(stringByReplacingOccurrences(u"\u00DFss\u00DFs", u"ss", u"z", CaseInsensitiveSearch), u"zzzs");
  EXPECT_EQ(stringByReplacingOccurrences(u"\"\u0301\"", u"\"", u"\"\""), u"\"\u0301\"\"");
  EXPECT_EQ(stringByReplacingOccurrences(u"\"\u0301", u"\"", u"\"\"", LiteralSearch), u"\"\"\u0301");
}

TEST(TextSearch, AppendReplacingAppendsOnlyWithHits) {
  const TextSearcher searcher(u",", 0);
  std::u16string out = u"<";
  EXPECT_EQ(searcher.appendReplacing(u"abc", u";", out), 0u);
  EXPECT_EQ(out, u"<");
  EXPECT_EQ(searcher.appendReplacing(u",a,b", u"; ", out), 2u);
  EXPECT_EQ(out, u"<; a; b");
}

TEST(TextSearch, ForEachHitGivesRangesInOrder) {
  std::vector<TextRange> ranges;
  EXPECT_EQ(TextSearcher(u"ss", CaseInsensitiveSearch)
                .forEachHit(u"SS\u00DFsss", [&](TextRange hit) { ranges.push_back(hit); }),
            3u);
  EXPECT_EQ(ranges, (std::vector<TextRange>{{0, 2}, {2, 1}, {3, 2}}));
}

TEST(TextSearch, HitsMakeOnePartMore) {
  EXPECT_EQ(componentsSeparatedByString(u"a,b,,c", u","), (Parts{u"a", u"b", u"", u"c"}));
  EXPECT_EQ(componentsSeparatedByString(u",", u","), (Parts{u"", u""}));
  EXPECT_EQ(componentsSeparatedByString(u"", u","), (Parts{u""}));
  EXPECT_EQ(componentsSeparatedByString(u"ab", u""), (Parts{u"ab"}));
  EXPECT_EQ(componentsSeparatedByString(u"a\r\nb", u"\n"), (Parts{u"a\r", u"b"}));
  EXPECT_EQ(componentsSeparatedByString(u"axX", u"X"), (Parts{u"ax", u""}));
  EXPECT_EQ(componentsSeparatedByString(u"1e\u03012\u00E9", u"\u00E9"), (Parts{u"1", u"2", u""}));
}

TEST(TextSearch, PrefixesAndSuffixes) {
  EXPECT_TRUE(hasPrefix(u"abc", u"ab"));
  EXPECT_FALSE(hasPrefix(u"abc", u"bc"));
  EXPECT_FALSE(hasPrefix(u"abc", u"AB"));
  EXPECT_FALSE(hasPrefix(u"abc", u""));
  EXPECT_FALSE(hasPrefix(u"e\u0301", u"e"));
  EXPECT_TRUE(hasPrefix(u"e\u0301x", u"\u00E9"));
  EXPECT_TRUE(hasSuffix(u"abc", u"bc"));
  EXPECT_FALSE(hasSuffix(u"abc", u"ab"));
  EXPECT_FALSE(hasSuffix(u"abc", u""));
  EXPECT_TRUE(hasSuffix(u"xe\u0301", u"\u00E9"));
}

// --- Against the plain rule. ---

const std::u16string kAscii[] = {u"a", u"b", u"A",  u"B",  u"s", u"S", u"k", u"K", u"i",
                                 u"f", u",", u"\n", u"\r", u";", u"`", u"@", u"["};
const std::u16string kOther[] = {
    u"\u0301", u"\u0323",     u"\u00E9",     u"\u00DF",     u"\u017F", u"\u212A",
    u"\u037E", u"\u1FEF",     u"\u1E9E",     u"\uFB01",     u"\uFB00", u"\u0130",
    u"\u200D", u"\U0001F468", u"\U0001F3FD", u"\u2764",     u"\uFE0F", u"\u1100",
    u"\u1161", u"\u11A8",     u"\uAC00",     u"\uAC01",     u"\u0915", u"\u094D",
    u"\u093E", u"\u034F",     u"\u00E1",     u"\u1EA1",     u"\u0345", u"\u03B1",
    u"\u03B9", u"\u0344",     u"\u6F22",     u"\U0001F1E9", u"\u0600", std::u16string{0xD83D}};

std::u16string randomText(testing::RandomSource& random, std::size_t mostParts, std::size_t otherOneIn) {
  std::u16string text;
  // A few kinds of ASCII only, so that needles are found.
  const std::size_t kinds = 1 + random.below(std::size(kAscii));
  const std::size_t firstKind = random.below(std::size(kAscii) - kinds + 1);
  for (std::size_t parts = random.below(mostParts + 1); parts > 0; --parts)
    text += random.oneIn(otherOneIn) ? random.pick(kOther) : kAscii[firstKind + random.below(kinds)];
  return text;
}

std::u16string randomNeedle(testing::RandomSource& random, const std::u16string& text) {
  if (random.oneIn(3)) return randomText(random, 3, 1 + random.below(4));
  if (text.empty()) return u"a";
  const std::size_t start = random.below(text.size());
  return text.substr(start, 1 + random.below(random.oneIn(4) ? 12 : 3));
}

void expectAgreement(const std::u16string& sourceText, const std::u16string& needle, SearchOptions options) {
  // A buffer of exactly this size: a sanitizer sees every step beyond it.
  const std::vector<char16_t> exact(sourceText.begin(), sourceText.end());
  const std::u16string_view text(exact.data(), exact.size());
  const Range expected = testing::EquivalenceReference(text, needle, options).find();
  const Range found = TextSearcher(needle, options).find(text);
  ASSERT_EQ(found, expected) << printed(text) << "/ " << printed(needle) << "with " << options << " found "
                             << (found ? static_cast<int>(found->location) : -1) << " expected "
                             << (expected ? static_cast<int>(expected->location) : -1);
}

constexpr SearchOptions kDirections[] = {0, BackwardsSearch, AnchoredSearch, kBackAnchored};

TEST(TextSearch, AgreesWithThePlainRuleOnRandomTexts) {
  testing::RandomSource random;
  for (std::uint64_t round = testing::rounds(6000); round > 0; --round) {
    const std::size_t otherOneIn = random.oneIn(2) ? 1 + random.below(3) : 20;
    const std::u16string text = randomText(random, 40, otherOneIn);
    const std::u16string needle = randomNeedle(random, text);
    ASSERT_NO_FATAL_FAILURE(
        expectAgreement(text, needle, random.pick(kDirections) + (random.oneIn(2) ? 1 : 0)));
  }
}

TEST(TextSearch, AgreesWithThePlainRuleOnAllShortTexts) {
  const std::u16string alphabet[] = {u"s", u"S", u"\u0301", u"\u00DF", u"\u212A", u"k"};
  std::vector<std::u16string> texts = {u""};
  for (std::size_t from = 0, length = 1; length <= 3; ++length) {
    const std::size_t to = texts.size();
    for (; from < to; ++from) {
      for (const std::u16string& part : alphabet) texts.push_back(texts[from] + part);
    }
  }
  for (const std::u16string& text : texts) {
    for (const char16_t* needle : {u"s", u"SS", u"k", u"K", u"\u00DF", u"s\u0301", u"\u0301"}) {
      for (const SearchOptions direction : kDirections) {
        ASSERT_NO_FATAL_FAILURE(expectAgreement(text, needle, direction));
        ASSERT_NO_FATAL_FAILURE(expectAgreement(text, needle, direction | CaseInsensitiveSearch));
      }
    }
  }
}

TEST(TextSearch, LiteralAgreesWithUnitByUnit) {
  testing::RandomSource random(2);
  for (std::uint64_t round = testing::rounds(4000); round > 0; --round) {
    const std::u16string text = randomText(random, 60, 6);
    const std::u16string needle = randomNeedle(random, text);
    if (needle.empty()) continue;
    const auto at = [&](std::size_t start) {
      return start == std::u16string::npos ? kNo : range(start, needle.size());
    };
    ASSERT_EQ(rangeOfString(text, needle, LiteralSearch), at(text.find(needle)));
    ASSERT_EQ(rangeOfString(text, needle, LiteralSearch | BackwardsSearch), at(text.rfind(needle)));
    ASSERT_EQ(rangeOfString(text, needle, LiteralSearch | AnchoredSearch).has_value(),
              text.starts_with(needle));
    ASSERT_EQ(rangeOfString(text, needle, LiteralSearch | kBackAnchored).has_value(), text.ends_with(needle));
  }
}

TEST(TextSearch, ReplacingAgreesWithFindingAgainAndAgain) {
  testing::RandomSource random(3);
  for (std::uint64_t round = testing::rounds(3000); round > 0; --round) {
    // No characters whose cluster reaches back over a hit: the rest is searched as a text of its own here.
    const std::u16string alphabet[] = {u"a",      u"S", u"s",      u",",     u"\u0301",
                                       u"\u00E9", u"e", u"\u00DF", u"\u6F22"};
    const std::u16string text = random.text(alphabet, 50);
    const std::u16string needle = random.text(alphabet, 2);
    const auto options = static_cast<SearchOptions>(random.below(4));
    std::u16string expected;
    std::u16string_view rest = text;
    while (const Range hit = rangeOfString(rest, needle, options)) {
      expected.append(rest.substr(0, hit->location)).append(u"<>");
      rest.remove_prefix(hit->end());
    }
    expected.append(rest);
    ASSERT_EQ(stringByReplacingOccurrences(text, needle, u"<>", options), expected)
        << printed(text) << "/ " << printed(needle) << "with " << options;
  }
}

TEST(TextSearch, ReplacingIsLinear) {
  // Quadratic, each of these would take minutes.
  const std::size_t kUnits = 400000;
  const std::u16string sharp(kUnits, u'\u00DF');
  EXPECT_EQ(stringByReplacingOccurrences(sharp, u"ss", u"", CaseInsensitiveSearch), u"");
  const std::u16string marks(kUnits, u'\u0301');
  EXPECT_EQ(stringByReplacingOccurrences(marks, u"\u0301", u"x").size(), kUnits);
  EXPECT_EQ(stringByReplacingOccurrences(std::u16string(kUnits, u','), u",", u"").size(), 0u);
}

}  // namespace
}  // namespace quillet
