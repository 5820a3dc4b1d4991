// The rule of searching by canonical equivalence, written down plainly: slow, and the judge of the fast
// search.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "platform/text_search.h"

namespace quillet::testing {

class EquivalenceReference {
 public:
  EquivalenceReference(std::u16string_view text, std::u16string_view needle, SearchOptions options)
      : text_(text), options_(options), isCaseless_((options & CaseInsensitiveSearch) != 0) {
    for (std::size_t at = 0; at < needle.size(); at = chunkEnd(needle, at)) needle_ += chunkFold(needle, at);
  }

  std::optional<TextRange> find() const {
    if (needle_.empty()) return std::nullopt;
    const bool isBackward = (options_ & BackwardsSearch) != 0;
    const bool isAnchored = (options_ & AnchoredSearch) != 0;
    std::optional<TextRange> found;
    for (std::size_t start = 0; start < text_.size(); start += step(text_, start)) {
      const std::optional<TextRange> hit = matchAt(start);
      if (hit) found = hit;
      if ((found && !isBackward) || (isAnchored && !isBackward)) break;
    }
    if (found && isBackward && isAnchored && found->end() != text_.size()) return std::nullopt;
    return found;
  }

 private:
  static UChar32 at(std::u16string_view text, std::size_t index) {
    UChar32 codePoint = 0;
    U16_GET(text.data(), 0, index, text.size(), codePoint);
    return codePoint;
  }
  static std::size_t step(std::u16string_view text, std::size_t index) { return U16_LENGTH(at(text, index)); }

  static bool hasBreak(UChar32 codePoint, int value) {
    return u_getIntPropertyValue(codePoint, UCHAR_GRAPHEME_CLUSTER_BREAK) == value;
  }
  static bool isExtending(UChar32 codePoint) { return hasBreak(codePoint, U_GCB_EXTEND); }

  static std::size_t chunkEnd(std::u16string_view text, std::size_t start) {
    std::size_t end = start + step(text, start);
    while (end < text.size() && isExtending(at(text, end))) end += step(text, end);
    return end;
  }

  std::u32string chunkFold(std::u16string_view text, std::size_t start) const {
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2& decomposer = *icu::Normalizer2::getNFDInstance(error);
    icu::UnicodeString fold;
    const std::size_t end = chunkEnd(text, start);
    for (std::size_t index = start; index < end; index += step(text, index)) {
      icu::UnicodeString part;
      if (!decomposer.getDecomposition(at(text, index), part)) part = icu::UnicodeString(at(text, index));
      if (index == start && isCaseless_) {
        const int32_t first = U16_LENGTH(part.char32At(0));
        icu::UnicodeString folded(part, 0, first);
        part.replace(0, first, folded.foldCase());
      }
      fold += part;
    }
    return withMarksInOrder(fold);
  }

  // One exchange of neighbours after the other, until none is left.
  static std::u32string withMarksInOrder(const icu::UnicodeString& fold) {
    std::u32string codePoints;
    for (int32_t index = 0; index < fold.length(); index = fold.moveIndex32(index, 1))
      codePoints.push_back(static_cast<char32_t>(fold.char32At(index)));
    std::size_t tail = codePoints.size();
    while (tail > 0 && isExtending(static_cast<UChar32>(codePoints[tail - 1]))) --tail;
    const auto classAt = [&](std::size_t index) {
      return u_getCombiningClass(static_cast<UChar32>(codePoints[index]));
    };
    for (bool isExchanged = true; isExchanged;) {
      isExchanged = false;
      for (std::size_t index = tail + 1; index < codePoints.size(); ++index) {
        if (classAt(index) == 0 || classAt(index - 1) <= classAt(index)) continue;
        std::swap(codePoints[index - 1], codePoints[index]);
        isExchanged = true;
      }
    }
    return codePoints;
  }

  std::optional<TextRange> matchAt(std::size_t start) const {
    std::u32string fold;
    std::size_t end = start;
    while (end < text_.size() && fold.size() < needle_.size()) {
      fold += chunkFold(text_, end);
      end = chunkEnd(text_, end);
    }
    if (fold != needle_ || isRefused(end)) return std::nullopt;
    return TextRange{start, end - start};
  }

  bool isRefused(std::size_t end) const {
    const char16_t last = text_[end - 1];
    if (last != 0x200D && last != 0x034F && u_getCombiningClass(last) != 9 &&
        (last < 0x1100 || last > 0x11F9))
      return false;
    std::size_t boundary = 0;
    while (boundary < end) boundary = clusterEnd(boundary);
    return boundary > end;
  }

  // --- Grapheme clusters: marks, Hangul, conjuncts, flags, joined emoji, one joiner behind. ---

  UChar32 textAt(std::size_t index) const { return index < text_.size() ? at(text_, index) : -1; }

  static bool isLetter(UChar32 codePoint) {
    return codePoint >= 0 && (U_GET_GC_MASK(codePoint) & (U_GC_L_MASK | U_GC_M_MASK)) != 0;
  }
  static bool isPictograph(UChar32 codePoint) {
    return codePoint >= 0 && u_hasBinaryProperty(codePoint, UCHAR_EXTENDED_PICTOGRAPHIC);
  }

  // L, V and T for jamo, v for a syllable without a final, t for one with.
  static char hangulKind(UChar32 codePoint) {
    if (codePoint >= 0x1100 && codePoint <= 0x115F) return 'L';
    if (codePoint >= 0x1160 && codePoint <= 0x11A7) return 'V';
    if (codePoint >= 0x11A8 && codePoint <= 0x11F9) return 'T';
    if (codePoint < 0xAC00 || codePoint > 0xD7A3) return ' ';
    return (codePoint - 0xAC00) % 28 == 0 ? 'v' : 't';
  }

  std::size_t simpleEnd(std::size_t start) const {
    static const std::string_view kJoiningPairs = "LL LV Lv Lt VV VT vV vT TT tT";
    std::size_t end = start + step(text_, start);
    char kind = hangulKind(textAt(start));
    while (kind != ' ' && end < text_.size()) {
      const char next = hangulKind(textAt(end));
      const char pair[] = {kind, next, 0};
      if (next == ' ' || kJoiningPairs.find(pair) == std::string_view::npos) break;
      kind = next;
      ++end;
    }
    while (end < text_.size() && isExtending(textAt(end))) end += step(text_, end);
    return end;
  }

  std::size_t clusterEnd(std::size_t start) const {
    const UChar32 first = textAt(start);
    const std::size_t firstEnd = start + step(text_, start);
    std::size_t end = simpleEnd(start);
    while (isLetter(first) && end > firstEnd && end < text_.size()) {
      const char16_t last = text_[end - 1];
      if (last != 0x034F && u_getCombiningClass(last) != 9) break;
      const std::size_t letter = textAt(end) == 0x200D ? end + 1 : end;
      if (!isLetter(textAt(letter))) break;
      end = simpleEnd(letter);
    }
    const auto isIndicator = [&](std::size_t index) {
      return textAt(index) >= 0x1F1E6 && textAt(index) <= 0x1F1FF;
    };
    if (isIndicator(start) && isIndicator(end) && end == firstEnd) end += 2;
    if (const std::size_t emoji = emojiEnd(start); emoji > end) end = emoji;
    return textAt(end) == 0x200D ? end + 1 : end;
  }

  std::size_t emojiEnd(std::size_t start) const {
    std::size_t end = start;
    while (end < text_.size() && hasBreak(textAt(end), U_GCB_PREPEND)) end += step(text_, end);
    if (!isPictograph(textAt(end))) return start;
    for (bool goesOn = true; goesOn;) {
      end += step(text_, end);
      std::size_t joiner = end;
      while (joiner < text_.size() && isExtending(textAt(joiner))) joiner += step(text_, joiner);
      goesOn = textAt(joiner) == 0x200D && isPictograph(textAt(joiner + 1));
      if (goesOn) end = joiner + 1;
    }
    while (end < text_.size() &&
           (isExtending(textAt(end)) || textAt(end) == 0x200D || hasBreak(textAt(end), U_GCB_SPACING_MARK)))
      end += step(text_, end);
    return end;
  }

  std::u16string_view text_;
  std::u32string needle_;
  SearchOptions options_;
  bool isCaseless_;
};

}  // namespace quillet::testing
