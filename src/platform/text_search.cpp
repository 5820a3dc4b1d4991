#include "platform/text_search.h"

#include <algorithm>
#include <bit>
#include <unicode/uchar.h>

#include "platform/composed_sequences.h"
#include "platform/simd_blocks.h"
#include "platform/text_fold.h"
#include "platform/unicode_text.h"

namespace quillet {
namespace {

constexpr std::size_t kNowhere = std::u16string_view::npos;

constexpr bool isAsciiLetter(char16_t unit) {
  return (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z';
}

constexpr char16_t asciiLowerCase(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit | 0x20) : unit;
}

bool isAscii(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

Folding foldingFor(SearchOptions options) {
  if (options & LiteralSearch) return Folding::LiteralCaseless;
  return options & CaseInsensitiveSearch ? Folding::CanonicalCaseless : Folding::Canonical;
}

// The few units outside of ASCII whose fold is ASCII. None of them is a surrogate, and none is below the
// limit.
constexpr char16_t kFoldsToAsciiLimit = 0x037E;
constexpr char16_t kFoldsToAsciiCaselessLimit = 0x00DF;

bool foldsToAscii(char16_t unit) {
  return unit == 0x037E || unit == 0x1FEF || unit == 0x212A;
}

bool foldsToAsciiCaseless(char16_t unit) {
  return unit == 0x00DF || unit == 0x017F || unit == 0x1E9E || (unit >= 0xFB00 && unit <= 0xFB06) ||
         foldsToAscii(unit);
}

#if defined(__SSE2__)
// The same for eight units.
bool anyFoldsToAscii(__m128i units, bool isCaseless) {
  const auto equals = [&](char16_t unit) { return _mm_cmpeq_epi16(units, simd::eightTimes(unit)); };
  __m128i found = _mm_or_si128(_mm_or_si128(equals(0x037E), equals(0x1FEF)), equals(0x212A));
  if (isCaseless) {
    const __m128i aboveLigatures =
        _mm_subs_epu16(_mm_sub_epi16(units, simd::eightTimes(0xFB00)), simd::eightTimes(6));
    found = _mm_or_si128(found, _mm_cmpeq_epi16(aboveLigatures, _mm_setzero_si128()));
    found = _mm_or_si128(found, _mm_or_si128(_mm_or_si128(equals(0x00DF), equals(0x017F)), equals(0x1E9E)));
  }
  return _mm_movemask_epi8(found) != 0;
}
#endif

// Behind one of these a hit must not end when its grapheme cluster goes on.
bool asksForMore(char16_t unit) {
  if (unit < 0x0300) return false;
  return unit == 0x200D || unit == 0x034F || (unit >= 0x1100 && unit <= 0x11F9) ||
         u_getCombiningClass(unit) == 9;
}

bool splitsPair(std::u16string_view text, std::size_t index) {
  return isLowSurrogate(text[index]) && index > 0 && isHighSurrogate(text[index - 1]);
}

// End of what matches the folded needle from start on; kNowhere if nothing does.
template <typename FoldedNeedle>
std::size_t matchEnd(std::u16string_view text, std::size_t start, FoldedNeedle needle, Folding folding) {
  std::u32string fold;
  while (!needle.empty()) {
    if (start == text.size()) return kNowhere;
    const char16_t unit = text[start];
    // ASCII without a mark behind it, the usual case, needs no fold.
    if (unit < 0x80 && (start + 1 == text.size() || text[start + 1] < 0x0300)) {
      if (needle[0] != (folding == Folding::Canonical ? unit : asciiLowerCase(unit))) return kNowhere;
      needle.remove_prefix(1);
      ++start;
      continue;
    }
    const std::optional<std::size_t> end = chunkEnd(text, start, folding, needle.size());
    if (!end) return kNowhere;
    fold.clear();
    appendChunkFold(text.substr(start, *end - start), folding, fold);
    if (fold.size() > needle.size() || !std::equal(fold.begin(), fold.end(), needle.begin())) return kNowhere;
    needle.remove_prefix(fold.size());
    start = *end;
  }
  return start;
}

}  // namespace

TextSearcher::TextSearcher(std::u16string_view needle, SearchOptions options)
    : needle_(needle), options_(options) {
  const bool isExact = has(LiteralSearch) && !has(CaseInsensitiveSearch);
  const bool hasAsciiNeedle = isAscii(needle_);
  unitByUnit_ = isExact || hasAsciiNeedle;
  if (hasAsciiNeedle && has(CaseInsensitiveSearch)) {
    std::transform(needle_.begin(), needle_.end(), needle_.begin(), asciiLowerCase);
  }
  if (!unitByUnit_) foldedNeedle_ = foldedText(needle_, foldingFor(options_));
}

std::optional<TextRange> TextSearcher::find(std::u16string_view text) const {
  if (needle_.empty() || text.empty()) return std::nullopt;
  if (has(AnchoredSearch)) return has(BackwardsSearch) ? hitAtEnd(text) : hitAtStart(text);
  return has(BackwardsSearch) ? lastHit(text) : firstHit(text);
}

// --- Forward. ---

TextSearcher::Way TextSearcher::wayFor(std::u16string_view text) const {
  return unitByUnit_ && !foldsToAsciiBetween(text, 0, text.size()) ? Way::UnitByUnit : Way::ByRule;
}

std::optional<TextRange> TextSearcher::nextHit(std::u16string_view text, std::size_t start, Way way) const {
  if (needle_.empty()) return std::nullopt;
  if (way == Way::ByRule) return nextByRule(text, start);
  for (start = plainFind(text, start); start != kNowhere; start = plainFind(text, start + 1)) {
    if (canEndAt(text, start + needle_.size())) return TextRange{start, needle_.size()};
  }
  return std::nullopt;
}

// As nextHit, but looks no further than to the hit: what stands behind it cannot change it.
std::optional<TextRange> TextSearcher::firstHit(std::u16string_view text) const {
  if (!unitByUnit_) return nextByRule(text, 0);
  const std::optional<TextRange> hit = nextHit(text, 0, Way::UnitByUnit);
  if (foldsToAsciiBetween(text, 0, hit ? hit->end() : text.size())) return nextByRule(text, 0);
  return hit;
}

std::optional<TextRange> TextSearcher::hitAtStart(std::u16string_view text) const {
  const std::size_t length = needle_.size();
  if (!unitByUnit_ || foldsToAsciiBetween(text, 0, std::min(length, text.size()))) return hitByRule(text, 0);
  if (length > text.size() || !isPlainHit(text, 0) || !canEndAt(text, length)) return std::nullopt;
  return TextRange{0, length};
}

// --- Backward. ---

std::optional<TextRange> TextSearcher::lastHit(std::u16string_view text) const {
  if (wayFor(text) == Way::ByRule) return lastByRule(text, 0);
  const std::size_t length = needle_.size();
  if (length > text.size()) return std::nullopt;
  for (std::size_t start = text.size() - length + 1; start-- > 0;) {
    if (isPlainHit(text, start) && canEndAt(text, start + length)) return TextRange{start, length};
  }
  return std::nullopt;
}

// The largest start that matches, if what it matches ends at the text's end: this is meant, and not the same
// as whether some match ends there. A match of n folded code points has at most 2 n units, so only the tail
// counts.
std::optional<TextRange> TextSearcher::hitAtEnd(std::u16string_view text) const {
  const std::size_t size = text.size();
  const std::size_t length = needle_.size();
  if (!unitByUnit_ || foldsToAsciiBetween(text, size - std::min(length, size), size)) {
    const std::size_t mostUnits = 2 * std::max(length, foldedNeedle_.size());
    const std::optional<TextRange> hit = lastByRule(text, size - std::min(mostUnits, size));
    return hit && hit->end() == size ? hit : std::nullopt;
  }
  if (length > size || !isPlainHit(text, size - length)) return std::nullopt;
  return TextRange{size - length, length};
}

// --- Unit by unit. ---

bool TextSearcher::isPlainHit(std::u16string_view text, std::size_t start) const {
  if (!has(CaseInsensitiveSearch)) return text.substr(start, needle_.size()) == needle_;
  return std::equal(needle_.begin(), needle_.end(), text.begin() + static_cast<std::ptrdiff_t>(start),
                    [](char16_t lower, char16_t unit) { return lower == asciiLowerCase(unit); });
}

// Marks hide the character in front of them.
bool TextSearcher::canEndAt(std::u16string_view text, std::size_t end) const {
  return end == text.size() || text[end] < 0x0300 || has(LiteralSearch) ||
         !isExtending(codePointAt(text, end));
}

// True if an ASCII needle cannot be searched unit by unit in this part of the text.
bool TextSearcher::foldsToAsciiBetween(std::u16string_view text, std::size_t start, std::size_t end) const {
  const bool isCaseless = has(CaseInsensitiveSearch);
  if (has(LiteralSearch) && !isCaseless) return false;
  const std::u16string_view part = text.substr(0, end);
  start = simd::passUnitsBelow(part, start, isCaseless ? kFoldsToAsciiCaselessLimit : kFoldsToAsciiLimit);
#if defined(__SSE2__)
  for (; start + 8 <= end; start += 8) {
    if (anyFoldsToAscii(simd::unitsAt(part, start), isCaseless)) return true;
  }
#endif
  return std::any_of(part.begin() + static_cast<std::ptrdiff_t>(start), part.end(),
                     isCaseless ? foldsToAsciiCaseless : foldsToAscii);
}

// The first place from start on where the needle stands unit by unit.
std::size_t TextSearcher::plainFind(std::u16string_view text, std::size_t start) const {
  const std::size_t length = needle_.size();
#if defined(__SSE2__)
  // Only where both the first and the last unit fit, looked up eight places at a time, all units are
  // compared. For a letter without case bit 0x20 is set on both sides.
  const auto caseBit = [&](char16_t unit) {
    return simd::eightTimes(has(CaseInsensitiveSearch) && isAsciiLetter(unit) ? 0x20 : 0);
  };
  const __m128i first = simd::eightTimes(needle_.front()), firstCaseBit = caseBit(needle_.front());
  const __m128i last = simd::eightTimes(needle_.back()), lastCaseBit = caseBit(needle_.back());
  for (; start + length + 7 <= text.size(); start += 8) {
    const __m128i fitsFirst = _mm_cmpeq_epi16(_mm_or_si128(simd::unitsAt(text, start), firstCaseBit), first);
    const __m128i fitsLast =
        _mm_cmpeq_epi16(_mm_or_si128(simd::unitsAt(text, start + length - 1), lastCaseBit), last);
    auto places = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(fitsFirst, fitsLast)));
    while (places != 0) {
      const std::size_t place = start + static_cast<std::size_t>(std::countr_zero(places)) / 2;
      if (length <= 2 || isPlainHit(text, place)) return place;
      places &= places - 1;
      places &= places - 1;  // two bits a unit
    }
  }
#endif
  for (; start + length <= text.size(); ++start) {
    if (isPlainHit(text, start)) return start;
  }
  return kNowhere;
}

// --- By the rule of equivalence. ---

// Tells where the first code point of the fold already shows that nothing matches.
class TextSearcher::StartFilter {
 public:
  explicit StartFilter(const TextSearcher& searcher)
      : firstFolds_(firstFoldTable(foldingFor(searcher.options_))),
        first_(searcher.foldedNeedle_.empty() ? searcher.needle_[0] : searcher.foldedNeedle_[0]),
        // Marks can come to stand in another order.
        takesAnyMark_(u_getCombiningClass(static_cast<UChar32>(first_)) != 0) {}

  bool canStartInAscii() const { return first_ < 0x80; }

  bool couldStartAt(std::u16string_view text, std::size_t index) const {
    const char16_t unit = text[index];
    if (firstFolds_[unit] == first_) return !splitsPair(text, index);
    if (unit < 0x0300) return false;
    return takesAnyMark_ || (isSurrogate(unit) && !splitsPair(text, index));
  }

 private:
  const char16_t* firstFolds_;
  char32_t first_;
  bool takesAnyMark_;
};

std::optional<TextRange> TextSearcher::hitByRule(std::u16string_view text, std::size_t start) const {
  const Folding folding = foldingFor(options_);
  const std::size_t end = foldedNeedle_.empty()
                              ? matchEnd(text, start, std::u16string_view(needle_), folding)
                              : matchEnd(text, start, std::u32string_view(foldedNeedle_), folding);
  if (end == kNowhere) return std::nullopt;
  if (!has(LiteralSearch) && end < text.size() && asksForMore(text[end - 1]) &&
      graphemeClusterEndAround(text, end - 1) > end)
    return std::nullopt;
  return TextRange{start, end - start};
}

std::optional<TextRange> TextSearcher::nextByRule(std::u16string_view text, std::size_t start) const {
  const StartFilter filter(*this);
  while (start < text.size()) {
    if (!filter.canStartInAscii()) start = simd::passUnitsBelow(text, start, 0x80);
    const std::size_t blockEnd = std::min(start + 8, text.size());
    for (; start < blockEnd; ++start) {
      if (!filter.couldStartAt(text, start)) continue;
      if (const std::optional<TextRange> hit = hitByRule(text, start)) return hit;
    }
  }
  return std::nullopt;
}

std::optional<TextRange> TextSearcher::lastByRule(std::u16string_view text, std::size_t lowestStart) const {
  const StartFilter filter(*this);
  for (std::size_t start = text.size(); start-- > lowestStart;) {
    if (!filter.couldStartAt(text, start)) continue;
    if (const std::optional<TextRange> hit = hitByRule(text, start)) return hit;
  }
  return std::nullopt;
}

// --- What derives from searching. ---

std::size_t TextSearcher::appendReplacing(std::u16string_view text, std::u16string_view replacement,
                                          std::u16string& out) const {
  std::size_t copied = 0;
  const std::size_t hits = forEachHit(text, [&](TextRange hit) {
    out.append(text.substr(copied, hit.location - copied)).append(replacement);
    copied = hit.end();
  });
  if (hits > 0) out.append(text.substr(copied));
  return hits;
}

std::optional<TextRange> rangeOfString(std::u16string_view text, std::u16string_view needle,
                                       SearchOptions options) {
  return TextSearcher(needle, options).find(text);
}

std::u16string stringByReplacingOccurrences(std::u16string_view text, std::u16string_view target,
                                            std::u16string_view replacement, SearchOptions options) {
  std::u16string result;
  if (TextSearcher(target, options).appendReplacing(text, replacement, result) == 0) result = text;
  return result;
}

std::vector<std::u16string_view> componentsSeparatedByString(std::u16string_view text,
                                                             std::u16string_view separator) {
  std::vector<std::u16string_view> parts;
  std::size_t start = 0;
  TextSearcher(separator, 0).forEachHit(text, [&](TextRange hit) {
    parts.push_back(text.substr(start, hit.location - start));
    start = hit.end();
  });
  parts.push_back(text.substr(start));
  return parts;
}

bool hasPrefix(std::u16string_view text, std::u16string_view prefix) {
  return rangeOfString(text, prefix, AnchoredSearch).has_value();
}

bool hasSuffix(std::u16string_view text, std::u16string_view suffix) {
  return rangeOfString(text, suffix, AnchoredSearch | BackwardsSearch).has_value();
}

}  // namespace quillet
