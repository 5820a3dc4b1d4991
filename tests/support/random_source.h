// Random input for tests: the same on every run, unless QUILLET_TEST_SEED names another seed.
// QUILLET_TEST_ROUNDS multiplies the number of rounds, for the long mode.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

namespace quillet::testing {

inline std::uint64_t environmentNumber(const char* name, std::uint64_t otherwise) {
  const char* value = std::getenv(name);
  return value && *value ? std::strtoull(value, nullptr, 10) : otherwise;
}

inline std::uint64_t rounds(std::uint64_t inShortMode) {
  return inShortMode * environmentNumber("QUILLET_TEST_ROUNDS", 1);
}

class RandomSource {
 public:
  explicit RandomSource(std::uint64_t stream = 0)
      : bits_(environmentNumber("QUILLET_TEST_SEED", 1) * 1000003 + stream) {}

  // 0 to n - 1; n is above 0.
  std::size_t below(std::size_t n) { return bits_() % n; }
  bool oneIn(std::size_t n) { return below(n) == 0; }

  template <typename Sequence>
  const auto& pick(const Sequence& sequence) {
    return sequence[below(std::size(sequence))];
  }

  // Up to maximumParts parts picked from the alphabet, one after the other.
  template <typename Alphabet>
  std::u16string text(const Alphabet& alphabet, std::size_t maximumParts) {
    std::u16string result;
    for (std::size_t i = below(maximumParts + 1); i > 0; --i) result += pick(alphabet);
    return result;
  }

 private:
  std::mt19937_64 bits_;
};

}  // namespace quillet::testing
