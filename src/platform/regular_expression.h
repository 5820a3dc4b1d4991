// Regular expressions with the patterns of ICU, and templates of our own rules: "$" and as many digits as the
// number of groups has, at most, insert a group; a backslash makes the next unit literal. A group that took
// no part, or does not exist, inserts nothing. Inserted text is not scanned again.
//
// One object serves one thread: it holds the state of the match.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

enum class CaseSensitivity { Sensitive, Insensitive };

class RegularExpression {
 public:
  // Nothing for a pattern that does not compile; an empty pattern is one.
  static std::optional<RegularExpression> compiled(std::u16string_view pattern,
                                                   CaseSensitivity caseSensitivity);

  RegularExpression(RegularExpression&&) noexcept;
  RegularExpression& operator=(RegularExpression&&) noexcept;
  ~RegularExpression();

  bool hasMatch(std::u16string_view text);

  // Appends text to out with every match replaced by the template. Returns the number of matches; with none
  // nothing is appended. A match that runs out of time or memory ends the walk: the matches before it stand.
  std::size_t appendReplacingMatches(std::u16string_view text, std::u16string_view templateText,
                                     std::u16string& out);

 private:
  struct State;
  explicit RegularExpression(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace quillet
