// Date patterns of the plain kind, read and printed by hand: numbers, month names, halves of the day and
// offsets, in the Gregorian calendar of 1900 to 2199, read from texts of ASCII. What it answers is what ICU
// would answer when strict; where it cannot know that, it says so.
//
//   "MMM d, y"    fields: month, literal " ", day, literal ", ", year
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date_formatter.h"
#include "platform/zone_offsets.h"

namespace quillet {

// Names for reading from texts of ASCII: case-folded, only those that such a text can hold.
class FoldedNames {
 public:
  struct Match {
    int index;
    std::size_t lengthInUnits;
  };

  // False if it could not be taken in.
  [[nodiscard]] bool add(int index, std::u16string_view name);
  // The longest name that the text starts with; one that ends in a dot also without it.
  std::optional<Match> longestAtStartOf(std::u16string_view text) const;

 private:
  struct Name {
    int index;
    std::string folded;
  };
  std::vector<Name> names_;
  std::array<std::uint32_t, 128> namesOfFirst_{};  // by the first character: a bit for each place in names_
};

// The words of a locale. Immutable once read, so readers and printers of one thread or many share them.
struct DateSymbols {
  bool isPlain = false;  // the calendar is the Gregorian one, and all words could be taken in
  bool hasLatinDigits = false;
  std::vector<std::u16string> months, shortMonths, halves;
  FoldedNames monthsToRead, shortMonthsToRead, halvesToRead, specialNumbers;

  static std::shared_ptr<const DateSymbols> of(const DateEnvironment& environment);
};

class PlainDatePattern {
 public:
  enum class Answer { Read, Failed, AskIcu };

  PlainDatePattern() = default;  // can neither read nor print
  PlainDatePattern(std::u16string_view pattern, std::shared_ptr<const DateSymbols> symbols);

  // The text consists of printable ASCII only. Sets instant if it was read.
  Answer read(std::u16string_view text, const ZoneOffsets& offsets, Instant& instant) const;

  // False, with nothing appended, where ICU has to be asked.
  bool append(Instant instant, const ZoneOffsets& offsets, std::u16string& out) const;

 private:
  enum class Field { Literal, Year, Month, Day, Hour, HourOfHalf, Minute, Second, Half, Offset, ZoneName };

  struct Token {
    Field field;
    std::size_t letters;     // how often the letter stands there
    std::u16string literal;  // blanks match blanks, the rest itself
  };

  struct Values {
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int hourOfHalf = -1;  // 1 to 12, if that is how the hour is told
    int half = 0;         // 1 in the afternoon
    int minute = 0;
    int second = 0;
    std::optional<int> offsetInMinutes;
    bool isDoubtful = false;
  };

  class TextReader;

  bool readTokens(std::u16string_view pattern);
  bool readLetters(std::u16string_view letters);
  bool readLiteral(std::u16string_view& rest);
  bool hasAdjacentFields() const;
  bool canPrintAllFields() const;
  static Answer instantOf(const Values& values, const ZoneOffsets& offsets, Instant& instant);
  void appendToken(const Token& token, const Values& values, std::u16string& out) const;

  std::vector<Token> tokens_;
  std::shared_ptr<const DateSymbols> symbols_;
  bool canRead_ = false;
  bool canPrint_ = false;
};

}  // namespace quillet
