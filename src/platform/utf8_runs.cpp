#include "platform/utf8_runs.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "platform/simd_blocks.h"

#if defined(__x86_64__)
#include <tmmintrin.h>
#endif

namespace quillet {

namespace {

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

// Decodes the one character at the start; false if it is invalid or longer than the input.
bool decodeOne(const unsigned char* from, std::size_t count, char16_t* to, DecodedRun& run) {
  const unsigned first = from[0];
  std::size_t length = 1, units = 1;
  char32_t character = first;
  if (first >= 0x80) {
    if (first < 0xC2 || first > 0xF4) return false;
    length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length > count) return false;
    character = first & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
      if (!isContinuation(from[i])) return false;
      character = character << 6 | (from[i] & 0x3F);
    }
    if (length == 3 && (character < 0x800 || (character & 0xF800) == 0xD800)) return false;
    if (length == 4 && (character < 0x10000 || character > 0x10FFFF)) return false;
  }
  if (length == 4) {
    to[0] = static_cast<char16_t>(0xD7C0 + (character >> 10));
    to[1] = static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    units = 2;
  } else {
    to[0] = static_cast<char16_t>(character);
  }
  run.bytes += length;
  run.units += units;
  ++run.characters;
  return true;
}

DecodedRun decodeOneByOne(const unsigned char* from, std::size_t count, char16_t* to) {
  DecodedRun run;
  while (run.bytes < count && decodeOne(from + run.bytes, count - run.bytes, to + run.units, run)) continue;
  return run;
}

// The ranges of standAlone8, first and last.
struct UnitRange {
  char16_t first, last;
};
constexpr UnitRange kAlone[] = {
    {0x0000, 0x02FF},  // Latin
    {0x0370, 0x0482},  // Greek, Cyrillic
    {0x3041, 0x3096},  // hiragana
    {0x30A0, 0xA66E},  // katakana to Han
    {0xAC00, 0xD7A3},  // Hangul syllables
};

EncodedRun encodeOneByOne(std::u16string_view text, char* to) {
  EncodedRun run;
  while (text.size() - run.units >= 8 && standAlone8(text.data() + run.units)) {
    char* const start = to + run.bytes;
    char* at = start;
    for (int i = 0; i < 8; ++i) {
      if (text[run.units + i] == 0) return run;
      at = putUtf8(text[run.units + i], at);
    }
    run.units += 8;
    run.bytes += static_cast<std::size_t>(at - start);
  }
  return run;
}

#if defined(__x86_64__)
#define QUILLET_SHUFFLES __attribute__((target("ssse3,popcnt")))

constexpr std::uint8_t kNothing = 0x80;  // in a shuffle: a zero byte

struct Shuffle {
  alignas(16) std::array<std::uint8_t, 16> from{};
};

// How the next up to 12 bytes become units, by the mask of the bytes that end a character.
//
//   Short   six characters of 1 or 2 bytes, each to 16 bits: last byte, first byte
//   Long    four characters of up to 3 bytes, each to 32 bits: last byte, the one before, first byte
//
// A character of more bytes stops the table's reading; masks that hold one first are never asked for.
class DecodeTable {
 public:
  struct Entry {
    std::uint16_t shuffle = 0;
    std::uint8_t bytes = 0;
    std::uint8_t characters = 0;  // 6 for a short entry, 4 for a long one
  };

  DecodeTable() {
    for (std::size_t mask = 0; mask < entries_.size(); ++mask) entries_[mask] = makeEntry(mask);
  }
  const Entry& entry(std::uint64_t mask) const { return entries_[mask & 0xFFF]; }
  const Shuffle& shuffle(const Entry& entry) const { return shuffles_[entry.shuffle]; }

  static const DecodeTable& instance() {
    static const DecodeTable& table = *new DecodeTable;
    return table;
  }

 private:
  Entry makeEntry(std::size_t mask) {
    std::array<std::size_t, 12> lengths{};
    std::size_t count = 0, length = 0;
    for (std::size_t i = 0; i < 12; ++i) {
      ++length;
      if (mask >> i & 1) {
        lengths[count++] = length;
        length = 0;
      }
    }
    const auto areAtMost = [&](std::size_t characters, std::size_t most) {
      return count >= characters &&
             std::all_of(lengths.begin(), lengths.begin() + static_cast<std::ptrdiff_t>(characters),
                         [=](std::size_t one) { return one <= most; });
    };
    if (areAtMost(6, 2)) return add(lengths, 6, 2);
    if (areAtMost(4, 3)) return add(lengths, 4, 4);
    return {};
  }

  Entry add(const std::array<std::size_t, 12>& lengths, std::size_t characters, std::size_t laneBytes) {
    Shuffle shuffle;
    shuffle.from.fill(kNothing);
    std::size_t start = 0;
    for (std::size_t i = 0; i < characters; ++i) {
      for (std::size_t back = 0; back < lengths[i]; ++back)
        shuffle.from[i * laneBytes + back] = static_cast<std::uint8_t>(start + lengths[i] - 1 - back);
      start += lengths[i];
    }
    const auto same = std::find_if(shuffles_.begin(), shuffles_.begin() + shuffleCount_,
                                   [&](const Shuffle& other) { return other.from == shuffle.from; });
    const auto index = same - shuffles_.begin();
    if (index == shuffleCount_) shuffles_[static_cast<std::size_t>(shuffleCount_++)] = shuffle;
    return {static_cast<std::uint16_t>(index), static_cast<std::uint8_t>(start),
            static_cast<std::uint8_t>(characters)};
  }

  std::array<Entry, 4096> entries_{};
  std::array<Shuffle, 64 + 81> shuffles_{};  // 2 lengths of 6 characters, 3 of 4
  std::ptrdiff_t shuffleCount_ = 0;
};

// What 64 bytes are, one bit a byte.
struct ByteKinds {
  std::uint64_t continuations;
  std::uint64_t usable;  // the lowest bits: whole, valid characters of at most 3 bytes
};

QUILLET_SHUFFLES std::uint64_t atLeast(const __m128i (&parts)[4], unsigned char byte) {
  // Unsigned: the larger of both is the byte itself.
  const __m128i limit = _mm_set1_epi8(static_cast<char>(byte));
  int masks[4];
  for (int i = 0; i < 4; ++i)
    masks[i] = _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_max_epu8(parts[i], limit), parts[i]));
  return simd::joinMasks(masks[0], masks[1], masks[2], masks[3]);
}

QUILLET_SHUFFLES std::uint64_t equalTo(const __m128i (&parts)[4], unsigned char byte) {
  const __m128i wanted = _mm_set1_epi8(static_cast<char>(byte));
  int masks[4];
  for (int i = 0; i < 4; ++i) masks[i] = _mm_movemask_epi8(_mm_cmpeq_epi8(parts[i], wanted));
  return simd::joinMasks(masks[0], masks[1], masks[2], masks[3]);
}

// count: of the bytes that may be used, 1 to 64.
QUILLET_SHUFFLES ByteKinds kindsOf(const unsigned char* from, std::size_t count) {
  const __m128i parts[4] = {simd::load(from), simd::load(from + 16), simd::load(from + 32),
                            simd::load(from + 48)};
  const std::uint64_t from80 = simd::joinMasks(_mm_movemask_epi8(parts[0]), _mm_movemask_epi8(parts[1]),
                                               _mm_movemask_epi8(parts[2]), _mm_movemask_epi8(parts[3]));
  const std::uint64_t fromC0 = atLeast(parts, 0xC0);
  const std::uint64_t fromC2 = atLeast(parts, 0xC2);
  const std::uint64_t fromE0 = atLeast(parts, 0xE0);
  const std::uint64_t fromF0 = atLeast(parts, 0xF0);
  const std::uint64_t continuations = from80 & ~fromC0;
  const std::uint64_t threeByteLeads = fromE0 & ~fromF0;
  const std::uint64_t expected = fromC2 << 1 | threeByteLeads << 2;  // F0 and above are refused below
  // Where something is wrong, or for one by one: a byte that should continue and does not, or the other way
  // round; leads that are never valid, or of four bytes; and what E0 and ED do not allow behind them.
  std::uint64_t wrong = (continuations ^ expected) | (fromC0 & ~fromC2) | fromF0;
  if (threeByteLeads) {
    const std::uint64_t fromA0 = atLeast(parts, 0xA0);
    wrong |= (equalTo(parts, 0xE0) << 1 & ~fromA0) | (equalTo(parts, 0xED) << 1 & fromA0);
  }
  std::size_t usable = std::min(count, static_cast<std::size_t>(std::countr_zero(wrong)));
  // Back to the start of the character that the end, or the wrong byte, cuts.
  const std::uint64_t leads = fromC2 & simd::lowBits(usable);
  if (leads) {
    const auto lastLead = static_cast<std::size_t>(63 - std::countl_zero(leads));
    const std::size_t length = (threeByteLeads >> lastLead & 1) ? 3 : 2;
    if (lastLead + length > usable) usable = lastLead;
  }
  return {continuations, simd::lowBits(usable)};
}

QUILLET_SHUFFLES void decodeStep(__m128i bytes, const DecodeTable& table, const DecodeTable::Entry& entry,
                                 char16_t* to) {
  const __m128i lanes = _mm_shuffle_epi8(bytes, simd::load(table.shuffle(entry).from.data()));
  if (entry.characters == 6) {
    const __m128i low = _mm_and_si128(lanes, _mm_set1_epi16(0x007F));
    const __m128i high = _mm_and_si128(lanes, _mm_set1_epi16(0x1F00));
    simd::store(to, _mm_or_si128(low, _mm_srli_epi16(high, 2)));
    return;
  }
  const __m128i low = _mm_and_si128(lanes, _mm_set1_epi32(0x00007F));
  const __m128i middle = _mm_and_si128(lanes, _mm_set1_epi32(0x003F00));
  const __m128i high = _mm_and_si128(lanes, _mm_set1_epi32(0x0F0000));
  const __m128i units = _mm_or_si128(low, _mm_or_si128(_mm_srli_epi32(middle, 2), _mm_srli_epi32(high, 4)));
  const __m128i packed = _mm_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, -1, -1, -1, -1, -1, -1, -1, -1);
  simd::store(to, _mm_shuffle_epi8(units, packed));
}

// One block of up to 64 bytes, as far as its characters have at most 3 bytes.
QUILLET_SHUFFLES std::size_t decodeBlock(const unsigned char* from, std::size_t count, char16_t* to,
                                         const DecodeTable& table, std::size_t& units) {
  const ByteKinds kinds = kindsOf(from, count);
  if (kinds.usable == 0) return 0;
  const auto usable = static_cast<std::size_t>(std::popcount(kinds.usable));
  // What lies behind the usable bytes counts as single bytes, so that every window has an entry.
  const std::uint64_t ends = ~(kinds.continuations >> 1) | ~(kinds.usable >> 1);
  units = static_cast<std::size_t>(std::popcount(ends & kinds.usable));
  std::size_t at = 0;
  for (;;) {
    const __m128i bytes = simd::load(from + at);
    const std::uint64_t window = at == 0 ? ends : ends >> at | ~(~std::uint64_t{0} >> at);
    if ((window & 0xFFFF) == 0xFFFF) {
      const __m128i zero = _mm_setzero_si128();
      simd::store(to, _mm_unpacklo_epi8(bytes, zero));
      simd::store(to + 8, _mm_unpackhi_epi8(bytes, zero));
      to += 16;
      at += 16;
    } else {
      const DecodeTable::Entry& entry = table.entry(window);
      decodeStep(bytes, table, entry, to);
      to += entry.characters;
      at += entry.bytes;
    }
    if (at >= usable) return usable;
  }
}

QUILLET_SHUFFLES DecodedRun decodeByShuffles(const unsigned char* from, std::size_t count, char16_t* to) {
  const DecodeTable& table = DecodeTable::instance();
  DecodedRun run;
  while (run.bytes < count) {
    std::size_t units = 0;
    const std::size_t bytes = decodeBlock(from + run.bytes, std::min(count - run.bytes, simd::kBlock),
                                          to + run.units, table, units);
    run.bytes += bytes;
    run.units += units;
    run.characters += units;
    // A character of four bytes, or none that is valid.
    if (bytes == 0 && !decodeOne(from + run.bytes, count - run.bytes, to + run.units, run)) break;
  }
  return run;
}

// Where the bytes of each lane go when only those that count are kept: by which lanes are how long.
struct EncodeTables {
  std::array<Shuffle, 256> pairs;    // eight lanes of 2 bytes; a set bit is a lane of one
  std::array<Shuffle, 256> triples;  // four lanes of 4 bytes; two bits each: how many more than one count
  std::array<std::uint8_t, 256> tripleBytes{};

  EncodeTables() {
    for (std::size_t index = 0; index < 256; ++index) {
      pairs[index].from.fill(kNothing);
      triples[index].from.fill(kNothing);
      std::size_t at = 0;
      for (std::size_t lane = 0; lane < 8; ++lane) {
        pairs[index].from[at++] = static_cast<std::uint8_t>(lane * 2);
        if (!(index >> lane & 1)) pairs[index].from[at++] = static_cast<std::uint8_t>(lane * 2 + 1);
      }
      at = 0;
      for (std::size_t lane = 0; lane < 4; ++lane) {
        const std::size_t length = 1 + std::min<std::size_t>(2, index >> lane * 2 & 3);
        for (std::size_t i = 0; i < length; ++i)
          triples[index].from[at++] = static_cast<std::uint8_t>(lane * 4 + i);
      }
      tripleBytes[index] = static_cast<std::uint8_t>(at);
    }
  }
  static const EncodeTables& instance() {
    static const EncodeTables& tables = *new EncodeTables;
    return tables;
  }
};

// Units that are all below 800.
QUILLET_SHUFFLES std::size_t encodePairs(__m128i units, const EncodeTables& tables, char* to) {
  const __m128i isAscii = _mm_cmplt_epi16(units, _mm_set1_epi16(0x80));
  const __m128i first = _mm_or_si128(_mm_srli_epi16(units, 6), _mm_set1_epi16(0x00C0));
  const __m128i second =
      _mm_slli_epi16(_mm_or_si128(_mm_and_si128(units, _mm_set1_epi16(0x3F)), _mm_set1_epi16(0x80)), 8);
  const __m128i lanes =
      _mm_or_si128(_mm_and_si128(isAscii, units), _mm_andnot_si128(isAscii, _mm_or_si128(first, second)));
  const int mask = _mm_movemask_epi8(_mm_packs_epi16(isAscii, _mm_setzero_si128()));
  simd::store(to, _mm_shuffle_epi8(lanes, simd::load(tables.pairs[static_cast<unsigned>(mask)].from.data())));
  return 16 - static_cast<std::size_t>(std::popcount(static_cast<unsigned>(mask)));
}

// Four units in lanes of 32 bits.
QUILLET_SHUFFLES std::size_t encodeTriples(__m128i units, const EncodeTables& tables, char* to) {
  const auto bits = [](int value) { return _mm_set1_epi32(value); };
  const __m128i low = _mm_or_si128(_mm_and_si128(units, bits(0x3F)), bits(0x80));
  const __m128i middle = _mm_and_si128(_mm_srli_epi32(units, 6), bits(0x3F));
  const __m128i two =
      _mm_or_si128(_mm_or_si128(_mm_srli_epi32(units, 6), bits(0xC0)), _mm_slli_epi32(low, 8));
  const __m128i three = _mm_or_si128(
      _mm_or_si128(_mm_srli_epi32(units, 12), bits(0xE0)),
      _mm_or_si128(_mm_slli_epi32(_mm_or_si128(middle, bits(0x80)), 8), _mm_slli_epi32(low, 16)));
  const __m128i isLong = _mm_cmpgt_epi32(units, bits(0x7FF));
  const __m128i isNotAscii = _mm_cmpgt_epi32(units, bits(0x7F));
  const __m128i longer = _mm_or_si128(_mm_and_si128(isLong, three), _mm_andnot_si128(isLong, two));
  const __m128i lanes = _mm_or_si128(_mm_and_si128(isNotAscii, longer), _mm_andnot_si128(isNotAscii, units));
  // Two bits a lane: 0, 1 or 2 bytes more.
  const auto notAscii = static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(isNotAscii)));
  const auto longOnes = static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(isLong)));
  const auto spread = [](unsigned four) {
    return (four & 1) | (four & 2) << 1 | (four & 4) << 2 | (four & 8) << 3;
  };
  const unsigned index = spread(notAscii) + spread(longOnes);
  simd::store(to, _mm_shuffle_epi8(lanes, simd::load(tables.triples[index].from.data())));
  return tables.tripleBytes[index];
}

QUILLET_SHUFFLES EncodedRun encodeByShuffles(std::u16string_view text, char* to) {
  const EncodeTables& tables = EncodeTables::instance();
  const __m128i zero = _mm_setzero_si128();
  EncodedRun run;
  for (; text.size() - run.units >= 8; run.units += 8) {
    const __m128i units = simd::load(text.data() + run.units);
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(units, zero)) != 0) break;
    // Unsigned: nothing is left of a unit below the limit.
    const int below80 = _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(units, _mm_set1_epi16(~0x7F)), zero));
    if (below80 == 0xFFFF) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(to + run.bytes), _mm_packus_epi16(units, units));
      run.bytes += 8;
      continue;
    }
    if (!standAlone8(text.data() + run.units)) break;
    const int below800 =
        _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(units, _mm_set1_epi16(~0x7FF)), zero));
    if (below800 == 0xFFFF) {
      run.bytes += encodePairs(units, tables, to + run.bytes);
      continue;
    }
    run.bytes += encodeTriples(_mm_unpacklo_epi16(units, zero), tables, to + run.bytes);
    run.bytes += encodeTriples(_mm_unpackhi_epi16(units, zero), tables, to + run.bytes);
  }
  return run;
}

bool hasByteShuffles() {
  static const bool has = __builtin_cpu_supports("ssse3") && __builtin_cpu_supports("popcnt");
  return has;
}

#endif

}  // namespace

DecodedRun decodeUtf8Run(const unsigned char* from, std::size_t count, char16_t* to) {
#if defined(__x86_64__)
  if (hasByteShuffles()) return decodeByShuffles(from, count, to);
#endif
  return decodeOneByOne(from, count, to);
}

EncodedRun encodeUtf8Run(std::u16string_view text, char* to) {
#if defined(__x86_64__)
  if (hasByteShuffles()) return encodeByShuffles(text, to);
#endif
  return encodeOneByOne(text, to);
}

bool standAlone8(const char16_t* units) {
#if defined(__SSE2__)
  const __m128i block = simd::load(units);
  __m128i alone = _mm_setzero_si128();
  for (const auto& [first, last] : kAlone) {
    // Unsigned: what is left of the distance to the first beyond the width of the range is nothing.
    const __m128i distance = _mm_sub_epi16(block, _mm_set1_epi16(static_cast<short>(first)));
    const __m128i beyond = _mm_subs_epu16(distance, _mm_set1_epi16(static_cast<short>(last - first)));
    alone = _mm_or_si128(alone, _mm_cmpeq_epi16(beyond, _mm_setzero_si128()));
  }
  return _mm_movemask_epi8(alone) == 0xFFFF;
#else
  return std::all_of(units, units + 8, [](char16_t unit) {
    return std::any_of(std::begin(kAlone), std::end(kAlone),
                       [=](const UnitRange& range) { return unit >= range.first && unit <= range.last; });
  });
#endif
}

}  // namespace quillet
