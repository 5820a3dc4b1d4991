// A quick matcher for the plain kind of regular expression: a sequence of characters and character classes,
// each with a greedy quantifier or none, groups around them that do not repeat, "^" at the start, "$" at the
// end. Where it takes a pattern and a text, it finds what ICU finds; everything else it leaves to ICU.
//
//   ^\(([0-9]{3})\) ([0-9]{3})-([0-9]{4})$     items: ( [0-9]{3} ) blank [0-9]{3} - [0-9]{4}; 3 groups
//
// One object serves one thread: it holds the state of the match.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/regular_expression.h"

namespace quillet {

class SimplePattern {
 public:
  // Nothing for a pattern that has anything but the forms above, or might have.
  static std::optional<SimplePattern> recognised(std::u16string_view pattern,
                                                 CaseSensitivity caseSensitivity);

  int groupCount() const { return static_cast<int>(groups_.size()); }

  // Whether the answers for this text are ICU's: not with surrogates, nor where ICU might run out of time.
  bool serves(std::u16string_view text) const;

  // The first match that starts at start, in UTF-16 units, or behind it.
  bool find(std::u16string_view text, std::size_t start);

  // Of the match found last, in UTF-16 units; group 0 is the whole.
  std::size_t groupStart(int group) const;
  std::size_t groupEnd(int group) const;

 private:
  friend class SimplePatternReader;

  static constexpr std::size_t kUnbounded = SIZE_MAX;
  static constexpr std::size_t kMostItems = 24;
  static constexpr std::size_t kMostGroups = 12;

  struct Item {
    std::array<bool, 128> ascii{};
    bool others = false;  // whether units from U+0080 on are members
    std::size_t least = 1;
    std::size_t most = 1;  // kUnbounded for "*", "+", "{n,}"

    bool contains(char16_t unit) const { return unit < 0x80 ? ascii[unit] : others; }
  };

  // The items that a group spans: [firstItem, endItem).
  struct Group {
    std::size_t firstItem, endItem;
  };

  bool matchesAt(std::u16string_view text, std::size_t start);
  bool giveBack(std::size_t& item, std::size_t& position);
  double mostSteps(std::size_t lengthInUnits) const;

  std::vector<Item> items_;
  std::vector<Group> groups_;
  bool startAnchored_ = false;
  bool endAnchored_ = false;
  bool asciiTextOnly_ = false;
  // Where each item's run starts, and behind them the end of the match; the length of each run.
  std::array<std::size_t, kMostItems + 1> runStart_{};
  std::array<std::size_t, kMostItems> runLength_{};
};

}  // namespace quillet
