// Composed character sequences: a base character with all marks, joiners and modifiers that belong to it.
// They are what a user takes for one character, and the unit of counting and converting in all output.
// Positions are in UTF-16 units, from 0. CR LF is two sequences.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillet {

// True if this unit, next to another inert unit, never joins it: a run of n inert units is n sequences. False
// for surrogates, marks, joiners and the like. All units below U+0300 are inert.
inline bool isInertUnit(char16_t unit);

// The number of units from start that are inert, without the last one if what follows is not inert (which
// could join it). Fast: it looks at many units at a time below U+0300.
std::size_t inertRunLength(std::u16string_view text, std::size_t start = 0);

// End of the sequence that starts at start (below text.size()).
inline std::size_t composedSequenceEnd(std::u16string_view text, std::size_t start);

// The grapheme cluster that holds the unit at index (below text.size()) goes on to here. Clusters differ from
// sequences in that only extending marks join, not the spacing ones.
std::size_t graphemeClusterEndAround(std::u16string_view text, std::size_t index);

std::size_t countComposedSequences(std::u16string_view text);

// Calls visit(sequence) for each sequence in order, as a view into text.
template <typename Visit>
void forEachComposedSequence(std::u16string_view text, Visit visit) {
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = composedSequenceEnd(text, start);
    visit(text.substr(start, end - start));
    start = end;
  }
}

// The units that are inert, for a loop that looks at every one.
class InertUnits {
 public:
  static const InertUnits& table();  // made at the first use
  bool contains(char16_t unit) const { return (bits_[unit / 64] >> (unit % 64) & 1) != 0; }

 private:
  InertUnits();
  std::array<std::uint64_t, 0x10000 / 64> bits_ = {};
};

namespace detail {

std::size_t composedSequenceEndByRules(std::u16string_view text, std::size_t start);

}  // namespace detail

inline bool isInertUnit(char16_t unit) {
  return unit < 0x0300 || InertUnits::table().contains(unit);
}

inline std::size_t composedSequenceEnd(std::u16string_view text, std::size_t start) {
  const std::size_t next = start + 1;
  if (next >= text.size()) return next;
  const InertUnits& inert = InertUnits::table();
  if (inert.contains(text[start])) {
    if (inert.contains(text[next])) return next;
    // One common mark; the joiner among them reaches further.
    const bool isCommonMark = text[next] >= 0x0300 && text[next] < 0x0370 && text[next] != 0x034F;
    if (isCommonMark && (next + 1 == text.size() || inert.contains(text[next + 1]))) return next + 1;
  }
  return detail::composedSequenceEndByRules(text, start);
}

}  // namespace quillet
