// Blocks of 64 bytes or 64 UTF-16 units turned into 64-bit masks, one bit a byte or unit, lowest first; the
// widening and narrowing of ASCII; and passing quickly over units that need no closer look. With SSE2 where
// the processor has it, plain loops elsewhere.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace quillet::simd {

inline constexpr std::size_t kBlock = 64;

// The n lowest bits, n from 0 to 64.
constexpr std::uint64_t lowBits(std::size_t n) {
  return n >= kBlock ? ~std::uint64_t{0} : (std::uint64_t{1} << n) - 1;
}

// Bit i of the result is the parity of the bits 0 to i: the bits that lie at or behind an odd number of set
// bits.
constexpr std::uint64_t prefixParity(std::uint64_t bits) {
  for (int shift = 1; shift < 64; shift *= 2) bits ^= bits << shift;
  return bits;
}

// Whether the number of set bits is odd.
inline bool isOdd(std::uint64_t bits) {
  return __builtin_parityll(bits) != 0;
}

#if defined(__SSE2__)

inline __m128i load(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}
inline void store(void* to, __m128i value) {
  _mm_storeu_si128(static_cast<__m128i*>(to), value);
}

inline std::uint64_t joinMasks(int first, int second, int third, int fourth) {
  return std::uint64_t(std::uint16_t(first)) | std::uint64_t(std::uint16_t(second)) << 16 |
         std::uint64_t(std::uint16_t(third)) << 32 | std::uint64_t(std::uint16_t(fourth)) << 48;
}

// 64 bytes, held in registers.
class ByteBlock {
 public:
  explicit ByteBlock(const unsigned char* from)
      : parts_{load(from), load(from + 16), load(from + 32), load(from + 48)} {}

  std::uint64_t equalTo(unsigned char byte) const {
    const __m128i wanted = _mm_set1_epi8(static_cast<char>(byte));
    return joinMasks(_mm_movemask_epi8(_mm_cmpeq_epi8(parts_[0], wanted)),
                     _mm_movemask_epi8(_mm_cmpeq_epi8(parts_[1], wanted)),
                     _mm_movemask_epi8(_mm_cmpeq_epi8(parts_[2], wanted)),
                     _mm_movemask_epi8(_mm_cmpeq_epi8(parts_[3], wanted)));
  }
  std::uint64_t notAscii() const {
    return joinMasks(_mm_movemask_epi8(parts_[0]), _mm_movemask_epi8(parts_[1]), _mm_movemask_epi8(parts_[2]),
                     _mm_movemask_epi8(parts_[3]));
  }
  // Writes 64 units.
  void widen(char16_t* to) const {
    const __m128i zero = _mm_setzero_si128();
    for (std::size_t i = 0; i < 4; ++i) {
      store(to + i * 16, _mm_unpacklo_epi8(parts_[i], zero));
      store(to + i * 16 + 8, _mm_unpackhi_epi8(parts_[i], zero));
    }
  }

 private:
  __m128i parts_[4];
};

// Which of 64 units are equal to the wanted one.
class UnitBlock {
 public:
  explicit UnitBlock(const char16_t* from) {
    for (std::size_t i = 0; i < 8; ++i) parts_[i] = load(from + i * 8);
  }
  std::uint64_t equalTo(char16_t unit) const {
    const __m128i wanted = _mm_set1_epi16(static_cast<short>(unit));
    int masks[4];
    for (std::size_t i = 0; i < 4; ++i) {
      masks[i] = _mm_movemask_epi8(_mm_packs_epi16(_mm_cmpeq_epi16(parts_[2 * i], wanted),
                                                   _mm_cmpeq_epi16(parts_[2 * i + 1], wanted)));
    }
    return joinMasks(masks[0], masks[1], masks[2], masks[3]);
  }

 private:
  __m128i parts_[8];
};

// Index of the first unit that is equal to the wanted one, from start on; text.size() if there is none.
inline std::size_t findUnit(std::u16string_view text, char16_t wanted, std::size_t start) {
  const __m128i pattern = _mm_set1_epi16(static_cast<short>(wanted));
  for (; start + 8 <= text.size(); start += 8) {
    const int mask = _mm_movemask_epi8(_mm_cmpeq_epi16(load(text.data() + start), pattern));
    if (mask != 0) return start + static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(mask))) / 2;
  }
  while (start < text.size() && text[start] != wanted) ++start;
  return start;
}

// Eight units of the text from index on, which must all lie in it.
inline __m128i unitsAt(std::u16string_view text, std::size_t index) {
  return load(text.data() + index);
}

inline __m128i eightTimes(char16_t unit) {
  return _mm_set1_epi16(static_cast<short>(unit));
}

#else

inline std::size_t findUnit(std::u16string_view text, char16_t wanted, std::size_t start) {
  return std::min(text.find(wanted, start), text.size());
}

class ByteBlock {
 public:
  explicit ByteBlock(const unsigned char* from) { std::memcpy(bytes_, from, kBlock); }
  std::uint64_t equalTo(unsigned char byte) const {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < kBlock; ++i) mask |= std::uint64_t{bytes_[i] == byte} << i;
    return mask;
  }
  std::uint64_t notAscii() const {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < kBlock; ++i) mask |= std::uint64_t{bytes_[i] >= 0x80} << i;
    return mask;
  }
  void widen(char16_t* to) const {
    for (std::size_t i = 0; i < kBlock; ++i) to[i] = bytes_[i];
  }

 private:
  unsigned char bytes_[kBlock];
};

class UnitBlock {
 public:
  explicit UnitBlock(const char16_t* from) { std::memcpy(units_, from, sizeof units_); }
  std::uint64_t equalTo(char16_t unit) const {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < kBlock; ++i) mask |= std::uint64_t{units_[i] == unit} << i;
    return mask;
  }

 private:
  char16_t units_[kBlock];
};

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

}  // namespace quillet::simd
