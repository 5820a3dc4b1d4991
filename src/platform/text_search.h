// Searching in text by canonical equivalence, and what derives from it: replacing, splitting, prefixes.
//
// Unless Literal is set a needle is compared by canonical equivalence of whole chunks (a code point and the
// extending marks behind it), so "é" is found in "e" + U+0301, and "e" is not. CaseInsensitive is full case
// folding without a locale. Positions and lengths are in UTF-16 units, from 0. The length of a hit can differ
// from the needle's. An empty needle or an empty text is never found.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

enum SearchOption : unsigned {
  CaseInsensitiveSearch = 1,
  LiteralSearch = 2,
  BackwardsSearch = 4,
  AnchoredSearch = 8,
};
using SearchOptions = unsigned;  // a sum of SearchOption values

struct TextRange {
  std::size_t location = 0;
  std::size_t length = 0;
  std::size_t end() const { return location + length; }
  bool operator==(const TextRange&) const = default;
};

// A needle made ready for many searches. Finding allocates nothing when needle and text are ASCII, nor when
// the needle is ASCII and the text holds none of the few characters that fold to ASCII.
class TextSearcher {
 public:
  TextSearcher(std::u16string_view needle, SearchOptions options);

  std::optional<TextRange> find(std::u16string_view text) const;

  // Appends text to out with every hit replaced: hits are found left to right in the original, they do not
  // overlap, and replaced text is not searched again. Anchored and backwards options are not meant for this.
  // Returns the number of hits; with none nothing is appended.
  std::size_t appendReplacing(std::u16string_view text, std::u16string_view replacement,
                              std::u16string& out) const;

  // Calls visit(TextRange) for each hit, as appendReplacing finds them; returns their number. Linear in the
  // text.
  template <typename Visit>
  std::size_t forEachHit(std::u16string_view text, Visit visit) const {
    const Way way = wayFor(text);
    std::size_t hits = 0;
    for (auto hit = nextHit(text, 0, way); hit; hit = nextHit(text, hit->end(), way), ++hits) visit(*hit);
    return hits;
  }

 private:
  enum class Way { UnitByUnit, ByRule };
  class StartFilter;

  Way wayFor(std::u16string_view text) const;
  std::optional<TextRange> nextHit(std::u16string_view text, std::size_t start, Way way) const;
  std::optional<TextRange> firstHit(std::u16string_view text) const;
  std::optional<TextRange> lastHit(std::u16string_view text) const;
  std::optional<TextRange> hitAtStart(std::u16string_view text) const;
  std::optional<TextRange> hitAtEnd(std::u16string_view text) const;

  // Unit by unit.
  bool isPlainHit(std::u16string_view text, std::size_t start) const;
  bool canEndAt(std::u16string_view text, std::size_t end) const;
  bool foldsToAsciiBetween(std::u16string_view text, std::size_t start, std::size_t end) const;
  std::size_t plainFind(std::u16string_view text, std::size_t start) const;

  // By the rule of equivalence.
  std::optional<TextRange> hitByRule(std::u16string_view text, std::size_t start) const;
  std::optional<TextRange> nextByRule(std::u16string_view text, std::size_t start) const;
  std::optional<TextRange> lastByRule(std::u16string_view text, std::size_t lowestStart) const;

  bool has(SearchOption option) const { return (options_ & option) != 0; }

  std::u16string needle_;        // in lower case if case is ignored and it is ASCII
  std::u32string foldedNeedle_;  // empty when needle_ is its own fold
  SearchOptions options_;
  bool unitByUnit_ = false;  // the needle is ASCII or compared literally
};

std::optional<TextRange> rangeOfString(std::u16string_view text, std::u16string_view needle,
                                       SearchOptions options);

std::u16string stringByReplacingOccurrences(std::u16string_view text, std::u16string_view target,
                                            std::u16string_view replacement, SearchOptions options = 0);

// n hits give n + 1 parts, views into text; an empty text or separator gives the whole text as the one part.
std::vector<std::u16string_view> componentsSeparatedByString(std::u16string_view text,
                                                             std::u16string_view separator);

bool hasPrefix(std::u16string_view text, std::u16string_view prefix);
bool hasSuffix(std::u16string_view text, std::u16string_view suffix);

}  // namespace quillet
