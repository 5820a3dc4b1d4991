// Passing quickly over UTF-16 units that need no closer look, many at a time.
#pragma once

#include <cstddef>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace quillet {

#if defined(__SSE2__)
// Eight units of the text from index on, which must all lie in it.
inline __m128i unitsAt(std::u16string_view text, std::size_t index) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + index));
}

inline __m128i eightTimes(char16_t unit) {
  return _mm_set1_epi16(static_cast<short>(unit));
}
#endif

// An index from which to look closely: all units from index up to it are below limit (above 0). What it stops
// at can be below limit too, as whole blocks are passed over.
inline std::size_t passUnitsBelow(std::u16string_view text, std::size_t index, char16_t limit) {
#if defined(__SSE2__)
  const __m128i highest = eightTimes(static_cast<char16_t>(limit - 1));
  // By how much each unit is above the highest allowed.
  const auto excess = [&](std::size_t at) { return _mm_subs_epu16(unitsAt(text, at), highest); };
  const auto isZero = [](__m128i lanes) {
    return _mm_movemask_epi8(_mm_cmpeq_epi8(lanes, _mm_setzero_si128())) == 0xFFFF;
  };
  while (text.size() - index >= 32) {
    const __m128i first = _mm_or_si128(excess(index), excess(index + 8));
    const __m128i second = _mm_or_si128(excess(index + 16), excess(index + 24));
    if (!isZero(_mm_or_si128(first, second))) break;
    index += 32;
  }
  while (text.size() - index >= 8 && isZero(excess(index))) index += 8;
#else
  while (index < text.size() && text[index] < limit) ++index;
#endif
  return index;
}

}  // namespace quillet
