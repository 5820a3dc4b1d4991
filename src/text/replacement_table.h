// The table of a file that replaces single characters while lines are read: pairs of a key (a character, or a
// class of characters) and a text, each of which sees the result of the pairs before it.
#pragma once

#include <bitset>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillet {

class ReplacementTable {
 public:
  // A number as key: 1 control characters, 2 characters above U+FFFF, any other matches nothing.
  using Key = std::variant<std::int64_t, std::u16string>;
  using Pair = std::pair<Key, std::u16string>;

  ReplacementTable() = default;
  // The protected texts are never replaced by a class; "" for those that are absent.
  ReplacementTable(std::vector<Pair> pairs, std::u16string_view quoteString,
                   std::u16string_view lineSeparator, std::u16string_view columnSeparator);

  bool isEmpty() const { return pairs_.empty(); }
  const std::vector<Pair>& pairs() const { return pairs_; }

  // Whether the table can change this character; cheap, and false for nearly every character.
  bool affects(char32_t character) const;
  // What stands in the character's place. A view into the table or into the argument.
  std::u16string_view replaced(std::u16string_view character) const;

 private:
  std::u16string_view walked(std::u16string_view character) const;

  std::vector<Pair> pairs_;
  std::u16string protected_[3];
  std::bitset<256> affectsLow_;
  std::vector<char32_t> affectedAbove_;                          // ascending
  std::map<std::u16string, std::u16string, std::less<>> known_;  // results for the characters that are keys
  bool affectsUncommon_ = false;
};

// Adds the pairs of one Replace Character operation: characterClass 0 lists characters, with the escapes a,
// b, f, n, r, t and v; 1 and 2 are the classes. Characters that a protected text contains are left out.
void appendReplacementPairs(std::int64_t characterClass, std::u16string_view characters,
                            std::u16string_view replacement, std::u16string_view quoteString,
                            std::u16string_view lineSeparator, std::u16string_view columnSeparator,
                            std::vector<ReplacementTable::Pair>& pairs);

}  // namespace quillet
