#include "platform/composed_sequences.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unicode/uchar.h>

#include "platform/simd_blocks.h"
#include "platform/unicode_text.h"

namespace quillet {
namespace {

constexpr char32_t kJoiner = 0x200D;
constexpr char32_t kGraphemeJoiner = 0x034F;

int clusterBreak(char32_t codePoint) {
  return u_getIntPropertyValue(static_cast<UChar32>(codePoint), UCHAR_GRAPHEME_CLUSTER_BREAK);
}

bool hasCategory(char32_t codePoint, std::uint32_t mask) {
  return (U_GET_GC_MASK(static_cast<UChar32>(codePoint)) & mask) != 0;
}

// Which code points join what they follow.
enum class Marks { All, Extending };

bool isBetween(char32_t codePoint, char32_t first, char32_t last) {
  return codePoint >= first && codePoint <= last;
}

bool isMark(char32_t codePoint, Marks marks) {
  if (codePoint < 0x0300) return false;
  const bool isModifier = isBetween(codePoint, 0x1F3FB, 0x1F3FF) || isBetween(codePoint, 0xE0020, 0xE007F) ||
                          isBetween(codePoint, 0xFF9E, 0xFF9F) || isBetween(codePoint, 0xF870, 0xF87F);
  if (isModifier) return true;
  return marks == Marks::All ? hasCategory(codePoint, U_GC_M_MASK) : clusterBreak(codePoint) == U_GCB_EXTEND;
}

bool isLetter(char32_t codePoint) {
  return hasCategory(codePoint, U_GC_L_MASK | U_GC_M_MASK);
}

bool isRegionalIndicatorAt(std::u16string_view text, std::size_t index) {
  return index < text.size() && isBetween(codePointAt(text, index), 0x1F1E6, 0x1F1FF);
}

bool isJoinerAt(std::u16string_view text, std::size_t index) {
  return index < text.size() && text[index] == kJoiner;
}

// Behind one of these a letter joins.
bool joinsLetters(char32_t codePoint) {
  return codePoint == kGraphemeJoiner || u_getCombiningClass(static_cast<UChar32>(codePoint)) == 9;
}

char32_t codePointBefore(std::u16string_view text, std::size_t end) {
  if (end >= 2 && isLowSurrogate(text[end - 1]) && isHighSurrogate(text[end - 2]))
    return codePointOfPair(text[end - 2], text[end - 1]);
  return text[end - 1];
}

// --- The steps of one sequence, each from an end reached so far to the one after it. ---

enum class Hangul { None, Leading, Vowel, Trailing, SyllableWithoutTrailing, SyllableWithTrailing };

Hangul hangulKind(char16_t unit) {
  if (isBetween(unit, 0x1100, 0x115F)) return Hangul::Leading;
  if (isBetween(unit, 0x1160, 0x11A7)) return Hangul::Vowel;
  if (isBetween(unit, 0x11A8, 0x11F9)) return Hangul::Trailing;
  if (!isBetween(unit, 0xAC00, 0xD7A3)) return Hangul::None;
  return (unit - 0xAC00) % 28 == 0 ? Hangul::SyllableWithoutTrailing : Hangul::SyllableWithTrailing;
}

bool hangulJoins(Hangul before, Hangul after) {
  switch (before) {
    case Hangul::None:
      return false;
    case Hangul::Leading:
      return after != Hangul::None && after != Hangul::Trailing;
    case Hangul::Vowel:
    case Hangul::SyllableWithoutTrailing:
      return after == Hangul::Vowel || after == Hangul::Trailing;
    case Hangul::Trailing:
    case Hangul::SyllableWithTrailing:
      return after == Hangul::Trailing;
  }
  return false;
}

std::size_t hangulEnd(std::u16string_view text, std::size_t end) {
  Hangul before = hangulKind(text[end - 1]);
  while (before != Hangul::None && end < text.size()) {
    const Hangul after = hangulKind(text[end]);
    if (!hangulJoins(before, after)) break;
    before = after;
    ++end;
  }
  return end;
}

std::size_t marksEnd(std::u16string_view text, std::size_t end, Marks marks) {
  while (end < text.size()) {
    const char32_t codePoint = codePointAt(text, end);
    if (!isMark(codePoint, marks)) break;
    end += unitsOfCodePoint(codePoint);
  }
  return end;
}

// One code point, the Hangul that goes on with it, and their marks.
std::size_t markedCodePointEnd(std::u16string_view text, std::size_t start, Marks marks) {
  const std::size_t end = start + unitsOfCodePoint(codePointAt(text, start));
  return marksEnd(text, hangulEnd(text, end), marks);
}

// Letters that follow a virama, as in conjunct consonants.
std::size_t joinedLettersEnd(std::u16string_view text, std::size_t end, Marks marks) {
  while (end < text.size() && joinsLetters(codePointBefore(text, end))) {
    const std::size_t letter = isJoinerAt(text, end) ? end + 1 : end;
    if (letter == text.size() || !isLetter(codePointAt(text, letter))) break;
    end = markedCodePointEnd(text, letter, marks);
  }
  return end;
}

template <typename Accepts>
std::size_t passOver(std::u16string_view text, std::size_t index, Accepts accepts) {
  while (index < text.size()) {
    const char32_t codePoint = codePointAt(text, index);
    if (!accepts(codePoint)) break;
    index += unitsOfCodePoint(codePoint);
  }
  return index;
}

bool isPictographAt(std::u16string_view text, std::size_t index) {
  return index < text.size() &&
         u_hasBinaryProperty(static_cast<UChar32>(codePointAt(text, index)), UCHAR_EXTENDED_PICTOGRAPHIC);
}

// End of the pictographs joined by U+200D that start at start; start if there are none.
std::size_t pictographsEnd(std::u16string_view text, std::size_t start) {
  const auto isPrepend = [](char32_t codePoint) { return clusterBreak(codePoint) == U_GCB_PREPEND; };
  const auto isExtend = [](char32_t codePoint) { return clusterBreak(codePoint) == U_GCB_EXTEND; };
  const auto belongsToTail = [&](char32_t codePoint) {
    return isExtend(codePoint) || codePoint == kJoiner || clusterBreak(codePoint) == U_GCB_SPACING_MARK;
  };
  std::size_t end = passOver(text, start, isPrepend);
  if (!isPictographAt(text, end)) return start;
  while (true) {
    end += unitsOfCodePoint(codePointAt(text, end));
    const std::size_t joiner = passOver(text, end, isExtend);
    if (!isJoinerAt(text, joiner) || !isPictographAt(text, joiner + 1)) break;
    end = joiner + 1;
  }
  return passOver(text, end, belongsToTail);
}

std::size_t clusterEnd(std::u16string_view text, std::size_t start, Marks marks) {
  const char32_t first = codePointAt(text, start);
  const std::size_t firstEnd = start + unitsOfCodePoint(first);
  std::size_t end = markedCodePointEnd(text, start, marks);
  if (end > firstEnd && isLetter(first)) end = joinedLettersEnd(text, end, marks);
  if (end == firstEnd && isRegionalIndicatorAt(text, start) && isRegionalIndicatorAt(text, end)) end += 2;
  end = std::max(end, pictographsEnd(text, start));
  return isJoinerAt(text, end) ? end + 1 : end;
}

// --- Runs of inert units. ---

bool isInert(char32_t unit) {
  if (unit < 0x0300) return true;
  if (isSurrogate(static_cast<char16_t>(unit)) || isBetween(unit, 0x1100, 0x11FF)) return false;
  if (unit == 0x200C || unit == kJoiner || unit == 0x0E33 || unit == 0x0EB3) return false;
  if (unit == 0xFF9E || unit == 0xFF9F || isBetween(unit, 0xF860, 0xF87F)) return false;
  return !hasCategory(unit, U_GC_M_MASK) && clusterBreak(unit) != U_GCB_PREPEND;
}

// In front of these units a sequence always ends, whatever stands before: nothing joins them.
bool isSureStart(std::u16string_view text, std::size_t index) {
  const char16_t unit = text[index];
  if (unit < 0x80 && !isLetter(unit)) return true;
  return isInertUnit(unit) && isInertUnit(text[index - 1]);
}

}  // namespace

InertUnits::InertUnits() {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    if (isInert(unit)) bits_[unit / 64] |= std::uint64_t{1} << (unit % 64);
  }
}

const InertUnits& InertUnits::table() {
  static const InertUnits& made =
      *new InertUnits;  // never destroyed: job threads may outlive the end of main()
  return made;
}

namespace detail {

std::size_t composedSequenceEndByRules(std::u16string_view text, std::size_t start) {
  return clusterEnd(text, start, Marks::All);
}

}  // namespace detail

std::size_t inertRunLength(std::u16string_view text, std::size_t start) {
  std::size_t index = start;
  while (index < text.size()) {
    index = simd::passUnitsBelow(text, index, 0x0300);
    const InertUnits& table = InertUnits::table();
    const std::size_t blockEnd = std::min(index + 8, text.size());
    for (; index < blockEnd; ++index) {
      if (!table.contains(text[index])) return index == start ? 0 : index - 1 - start;
    }
  }
  return index - start;
}

std::size_t countComposedSequences(std::u16string_view text) {
  std::size_t count = 0;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t run = inertRunLength(text, start);
    start += run;
    count += run;
    if (start == text.size()) break;
    start = composedSequenceEnd(text, start);
    ++count;
  }
  return count;
}

std::size_t graphemeClusterEndAround(std::u16string_view text, std::size_t index) {
  std::size_t end = index;
  while (end > 0 && !isSureStart(text, end)) --end;
  while (end <= index) end = clusterEnd(text, end, Marks::Extending);
  return end;
}

}  // namespace quillet
