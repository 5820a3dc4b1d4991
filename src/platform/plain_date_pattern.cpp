#include "platform/plain_date_pattern.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <unicode/ucal.h>
#include <unicode/uchar.h>
#include <unicode/udat.h>
#include <unicode/unum.h>
#include <unicode/ustring.h>
#include <utility>

namespace quillet {

namespace {

constexpr std::size_t kMostNames = 32;  // bits of FoldedNames::namesOfFirst_
constexpr std::int64_t kMinute = std::int64_t{60} * 1000;
constexpr std::int64_t kDay = kMinute * 60 * 24;

constexpr bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}
constexpr bool isLetter(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}
constexpr char16_t lower(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? unit + 0x20 : unit;
}

std::optional<std::u16string> symbolOf(const UDateFormat* format, UDateFormatSymbolType type,
                                       std::int32_t index) {
  char16_t text[64];
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length = udat_getSymbols(format, type, index, text, std::size(text), &error);
  if (U_FAILURE(error)) return std::nullopt;
  return std::u16string(text, length);
}

std::optional<std::u16string> symbolOf(const UNumberFormat* format, UNumberFormatSymbol symbol) {
  char16_t text[64];
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length = unum_getSymbol(format, symbol, text, std::size(text), &error);
  if (U_FAILURE(error)) return std::nullopt;
  return std::u16string(text, length);
}

bool readNames(const UDateFormat* format, UDateFormatSymbolType type, std::vector<std::u16string>& names,
               FoldedNames& folded) {
  const std::int32_t count = udat_countSymbols(format, type);
  for (std::int32_t i = 0; i < count; ++i) {
    const auto name = symbolOf(format, type, i);
    if (!name || !folded.add(i, *name)) return false;
    names.push_back(*name);
  }
  return true;
}

void appendNumber(int value, std::size_t leastDigits, std::u16string& out) {
  char16_t digits[10];
  char16_t* const end = std::end(digits);
  char16_t* start = end;
  for (; value > 0 || static_cast<std::size_t>(end - start) < leastDigits; value /= 10)
    *--start = static_cast<char16_t>(u'0' + value % 10);
  out.append(start, end);
}

}  // namespace

bool FoldedNames::add(int index, std::u16string_view name) {
  char16_t folded[64];
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length =
      u_strFoldCase(folded, std::size(folded), name.data(), static_cast<std::int32_t>(name.size()),
                    U_FOLD_CASE_DEFAULT, &error);
  if (length == 0) return true;
  if (U_FAILURE(error) || names_.size() == kMostNames) return false;
  std::string ascii;
  for (std::int32_t i = 0; i < length; ++i) {
    if (folded[i] >= 0x80) return true;
    ascii += static_cast<char>(folded[i]);
  }
  namesOfFirst_[static_cast<unsigned char>(ascii[0])] |= 1u << names_.size();
  names_.push_back({index, std::move(ascii)});
  return true;
}

std::optional<FoldedNames::Match> FoldedNames::longestAtStartOf(std::u16string_view text) const {
  std::optional<Match> longest;
  if (text.empty() || text[0] >= 0x80) return longest;
  for (std::uint32_t left = namesOfFirst_[lower(text[0])]; left != 0; left &= left - 1) {
    const Name& name = names_[std::countr_zero(left)];
    std::size_t length = 0;
    while (length < name.folded.size() && length < text.size() &&
           lower(text[length]) == static_cast<char16_t>(name.folded[length]))
      ++length;
    const bool isWhole =
        length == name.folded.size() || (length + 1 == name.folded.size() && name.folded.back() == '.');
    if (isWhole && length > (longest ? longest->lengthInUnits : 0)) longest = Match{name.index, length};
  }
  return longest;
}

std::shared_ptr<const DateSymbols> DateSymbols::of(const DateEnvironment& environment) {
  auto symbols = std::make_shared<DateSymbols>();
  UErrorCode error = U_ZERO_ERROR;
  UDateFormat* const format =
      udat_open(UDAT_PATTERN, UDAT_PATTERN, environment.locale.c_str(), u"UTC", 3, u"y", 1, &error);
  if (U_FAILURE(error)) return symbols;
  const char* const calendar = ucal_getType(udat_getCalendar(format), &error);
  const bool isGregorian = U_SUCCESS(error) && std::string_view(calendar) == "gregorian";
  const UNumberFormat* const numbers = udat_getNumberFormat(format);
  symbols->hasLatinDigits = symbolOf(numbers, UNUM_ZERO_DIGIT_SYMBOL) == u"0";
  const auto notANumber = symbolOf(numbers, UNUM_NAN_SYMBOL);
  const auto infinity = symbolOf(numbers, UNUM_INFINITY_SYMBOL);
  symbols->isPlain = isGregorian && readNames(format, UDAT_MONTHS, symbols->months, symbols->monthsToRead) &&
                     readNames(format, UDAT_SHORT_MONTHS, symbols->shortMonths, symbols->shortMonthsToRead) &&
                     readNames(format, UDAT_AM_PMS, symbols->halves, symbols->halvesToRead) && notANumber &&
                     symbols->specialNumbers.add(0, *notANumber) && infinity &&
                     symbols->specialNumbers.add(1, *infinity);
  udat_close(format);
  return symbols;
}

PlainDatePattern::PlainDatePattern(std::u16string_view pattern, std::shared_ptr<const DateSymbols> symbols)
    : symbols_(std::move(symbols)) {
  if (!symbols_->isPlain || !readTokens(pattern)) return;
  canRead_ = !hasAdjacentFields();
  canPrint_ = symbols_->hasLatinDigits && canPrintAllFields();
}

bool PlainDatePattern::readTokens(std::u16string_view rest) {
  while (!rest.empty()) {
    if (!isLetter(rest[0])) {
      if (!readLiteral(rest)) return false;
      continue;
    }
    const std::size_t letters = std::min(rest.find_first_not_of(rest[0]), rest.size());
    if (!readLetters(rest.substr(0, letters))) return false;
    rest.remove_prefix(letters);
  }
  return !tokens_.empty();
}

// A letter, so and so often.
bool PlainDatePattern::readLetters(std::u16string_view letters) {
  static constexpr struct {
    char16_t letter;
    Field field;
    std::size_t mostLetters;
  } kFields[] = {
      {u'y', Field::Year, 4},     {u'M', Field::Month, 4},      {u'd', Field::Day, 2},
      {u'H', Field::Hour, 2},     {u'h', Field::HourOfHalf, 2}, {u'm', Field::Minute, 2},
      {u's', Field::Second, 2},   {u'a', Field::Half, 1},       {u'Z', Field::Offset, 1},
      {u'z', Field::ZoneName, 1},
  };
  for (const auto& known : kFields) {
    if (known.letter != letters[0]) continue;
    tokens_.push_back({known.field, letters.size(), {}});
    return letters.size() <= known.mostLetters;
  }
  return false;
}

// Up to the next letter outside of quotes. Two quotes are one, everywhere.
bool PlainDatePattern::readLiteral(std::u16string_view& rest) {
  std::u16string literal;
  bool isQuoted = false;
  std::size_t i = 0;
  for (; i < rest.size() && (isQuoted || !isLetter(rest[i])); ++i) {
    if (rest[i] == u'\'') {
      if (!rest.substr(i + 1).starts_with(u'\'')) {
        isQuoted = !isQuoted;
        continue;
      }
      ++i;
    }
    // ICU knows more blanks in patterns; they are its affair.
    if (rest[i] != u' ' && u_hasBinaryProperty(rest[i], UCHAR_PATTERN_WHITE_SPACE)) return false;
    literal += rest[i];
  }
  tokens_.push_back({Field::Literal, 0, std::move(literal)});
  rest.remove_prefix(i);
  return true;
}

// Numbers that touch share out their digits, which is left to ICU.
bool PlainDatePattern::hasAdjacentFields() const {
  for (std::size_t i = 1; i < tokens_.size(); ++i)
    if (tokens_[i - 1].field != Field::Literal && tokens_[i].field != Field::Literal) return true;
  return false;
}

bool PlainDatePattern::canPrintAllFields() const {
  return std::none_of(tokens_.begin(), tokens_.end(),
                      [](const Token& token) { return token.field == Field::ZoneName; }) &&
         symbols_->months.size() == 12 && symbols_->shortMonths.size() == 12 && symbols_->halves.size() == 2;
}

// Walks through a text as ICU's strict reading does: field by field, without a second try.
class PlainDatePattern::TextReader {
 public:
  TextReader(std::u16string_view text, const DateSymbols& symbols) : rest_(text), symbols_(symbols) {}

  Answer readToken(const Token& token, Values& values) {
    if (token.field == Field::Literal) return readLiteral(token.literal);
    if (rest_.empty()) return Answer::Failed;
    if (rest_[0] == u' ') return Answer::AskIcu;  // blanks in front of a field are passed over, most times
    switch (token.field) {
      case Field::Literal:
        break;
      case Field::Year:
        return readYear(token.letters, values);
      case Field::Month:
        return readMonth(token.letters, values);
      case Field::Day:
        return readPaddedNumber(token.letters, values.day);
      case Field::Hour:
        return readNumber(values.hour);
      case Field::HourOfHalf:
        return readNumber(values.hourOfHalf);
      case Field::Minute:
        return readPaddedNumber(token.letters, values.minute);
      case Field::Second:
        return readPaddedNumber(token.letters, values.second);
      case Field::Half:
        return readHalf(values);
      case Field::Offset:
        return readOffset(values);
      case Field::ZoneName:
        break;
    }
    return Answer::AskIcu;
  }

  bool isBlankFromHere() const { return rest_.find_first_not_of(u' ') == rest_.npos; }

 private:
  // A literal is also through when the text is; the next field then finds nothing.
  Answer readLiteral(std::u16string_view literal) {
    for (std::size_t i = 0; i < literal.size() && !rest_.empty(); ++i) {
      if (literal[i] == u' ') {
        if (rest_[0] != u' ') return Answer::Failed;
        rest_.remove_prefix(std::min(rest_.find_first_not_of(u' '), rest_.size()));
        i = std::min(literal.find_first_not_of(u' ', i), literal.size());
        if (i == literal.size()) break;
        if (rest_.empty()) return Answer::Failed;
      }
      if (rest_[0] != literal[i]) return Answer::Failed;
      rest_.remove_prefix(1);
    }
    return Answer::Read;
  }

  Answer readNumber(int& value) {
    if (!isDigit(rest_[0])) {
      const bool cannotBeNumber = isLetter(rest_[0]) && !symbols_.specialNumbers.longestAtStartOf(rest_);
      return cannotBeNumber ? Answer::Failed : Answer::AskIcu;
    }
    constexpr std::size_t kMostDigits = 8;
    std::size_t length = 0;
    value = 0;
    for (; length < rest_.size() && isDigit(rest_[length]); ++length) {
      if (length == kMostDigits) return Answer::AskIcu;
      value = value * 10 + (rest_[length] - u'0');
    }
    digits_ = length;
    rest_.remove_prefix(length);
    return endsNumber() ? Answer::Read : Answer::AskIcu;
  }

  // Needs as many digits as there are letters.
  Answer readPaddedNumber(std::size_t letters, int& value) {
    const Answer answer = readNumber(value);
    return answer == Answer::Read && digits_ < letters ? Answer::Failed : answer;
  }

  // Whether a number surely ends in front of what follows: exponents and groups are ICU's affair.
  bool endsNumber() const {
    if (rest_.empty()) return true;
    const char16_t next = rest_[0];
    if (isLetter(next)) return lower(next) != u'e';
    if (next == u',') return rest_.size() == 1 || !isDigit(rest_[1]);
    return next == u' ' || next == u'-' || next == u'/' || next == u':' || next == u'.';
  }

  Answer readYear(std::size_t letters, Values& values) {
    const Answer answer = readNumber(values.year);
    if (answer != Answer::Read || letters > 2 || digits_ != 2) return answer;
    // Two digits are a year of 1950 to 2049; at the border the zone has a say.
    values.isDoubtful |= values.year == 49 || values.year == 50;
    values.year += values.year < 50 ? 2000 : 1900;
    return answer;
  }

  Answer readMonth(std::size_t letters, Values& values) {
    if (letters <= 2) {
      if (isDigit(rest_[0])) return readNumber(values.month);
      if (!isLetter(rest_[0]) || symbols_.specialNumbers.longestAtStartOf(rest_)) return Answer::AskIcu;
    }
    auto match = symbols_.monthsToRead.longestAtStartOf(rest_);
    if (!match) match = symbols_.shortMonthsToRead.longestAtStartOf(rest_);
    if (!match) return Answer::Failed;
    values.month = match->index + 1;
    rest_.remove_prefix(match->lengthInUnits);
    return Answer::Read;
  }

  Answer readHalf(Values& values) {
    const auto match = symbols_.halvesToRead.longestAtStartOf(rest_);
    if (!match) return isLetter(rest_[0]) ? Answer::AskIcu : Answer::Failed;  // there are shorter words yet
    values.half = match->index;
    rest_.remove_prefix(match->lengthInUnits);
    return Answer::Read;
  }

  // "+0200" at the end of the text.
  Answer readOffset(Values& values) {
    const bool isPlain = rest_.size() == 5 && (rest_[0] == u'+' || rest_[0] == u'-') &&
                         std::all_of(rest_.begin() + 1, rest_.end(), isDigit);
    if (!isPlain) return Answer::AskIcu;
    const int hours = (rest_[1] - u'0') * 10 + (rest_[2] - u'0');
    const int minutes = (rest_[3] - u'0') * 10 + (rest_[4] - u'0');
    if (hours > 14 || minutes > 59) return Answer::AskIcu;
    values.offsetInMinutes = (rest_[0] == u'-' ? -1 : 1) * (hours * 60 + minutes);
    rest_.remove_prefix(5);
    return Answer::Read;
  }

  std::u16string_view rest_;
  const DateSymbols& symbols_;
  std::size_t digits_ = 0;  // of the number read last
};

PlainDatePattern::Answer PlainDatePattern::read(std::u16string_view text, const ZoneOffsets& offsets,
                                                Instant& instant) const {
  if (!canRead_) return Answer::AskIcu;
  TextReader reader(text, *symbols_);
  Values values;
  for (const Token& token : tokens_)
    if (const Answer answer = reader.readToken(token, values); answer != Answer::Read) return answer;
  if (!reader.isBlankFromHere()) return Answer::Failed;
  return instantOf(values, offsets, instant);
}

PlainDatePattern::Answer PlainDatePattern::instantOf(const Values& values, const ZoneOffsets& offsets,
                                                     Instant& instant) {
  using namespace std::chrono;
  if (values.month < 1 || values.month > 12 || values.day < 1 || values.day > 31) return Answer::Failed;
  if (values.hour > 23 || values.hourOfHalf > 12 || values.minute > 59 || values.second > 59)
    return Answer::Failed;
  if (values.isDoubtful || values.hourOfHalf == 0) return Answer::AskIcu;
  if (values.year < ZoneOffsets::kFirstYear || values.year > ZoneOffsets::kLastYear) return Answer::AskIcu;
  const year_month_day date{year{values.year}, month(values.month), day(values.day)};
  if (!date.ok()) return Answer::Failed;
  const int hour = values.hourOfHalf < 0 ? values.hour : values.hourOfHalf % 12 + 12 * values.half;
  const std::int64_t wallTime = sys_days{date}.time_since_epoch().count() * kDay +
                                (std::int64_t{hour} * 60 + values.minute) * kMinute +
                                std::int64_t{values.second} * 1000;
  if (values.offsetInMinutes) {
    instant = static_cast<Instant>(wallTime - *values.offsetInMinutes * kMinute);
    return Answer::Read;
  }
  const auto found = offsets.instantOfWallTime(wallTime);
  if (!found) return Answer::AskIcu;
  instant = static_cast<Instant>(*found);
  return Answer::Read;
}

bool PlainDatePattern::append(Instant instant, const ZoneOffsets& offsets, std::u16string& out) const {
  using namespace std::chrono;
  constexpr Instant kFarEnough = 1e14;
  if (!canPrint_ || !(std::abs(instant) < kFarEnough)) return false;
  const auto milliseconds = static_cast<std::int64_t>(std::floor(instant));
  const auto offset = offsets.offsetAt(milliseconds);
  if (!offset || *offset % kMinute != 0) return false;
  const std::int64_t wallTime = milliseconds + *offset;
  const std::int64_t days = (wallTime >= 0 ? wallTime : wallTime - (kDay - 1)) / kDay;
  const int seconds = static_cast<int>((wallTime - days * kDay) / 1000);
  const year_month_day date{sys_days{std::chrono::days{days}}};
  Values values;
  values.year = static_cast<int>(date.year());
  values.month = static_cast<int>(static_cast<unsigned>(date.month()));
  values.day = static_cast<int>(static_cast<unsigned>(date.day()));
  values.hour = seconds / 3600;
  values.minute = seconds / 60 % 60;
  values.second = seconds % 60;
  values.offsetInMinutes = static_cast<int>(*offset / kMinute);
  if (values.year < ZoneOffsets::kFirstYear || values.year > ZoneOffsets::kLastYear) return false;
  for (const Token& token : tokens_) appendToken(token, values, out);
  return true;
}

void PlainDatePattern::appendToken(const Token& token, const Values& values, std::u16string& out) const {
  switch (token.field) {
    case Field::Literal:
      out += token.literal;
      return;
    case Field::Year:
      return appendNumber(token.letters == 2 ? values.year % 100 : values.year, token.letters, out);
    case Field::Month:
      if (token.letters <= 2) return appendNumber(values.month, token.letters, out);
      out += (token.letters == 3 ? symbols_->shortMonths : symbols_->months)[values.month - 1];
      return;
    case Field::Day:
      return appendNumber(values.day, token.letters, out);
    case Field::Hour:
      return appendNumber(values.hour, token.letters, out);
    case Field::HourOfHalf:
      return appendNumber((values.hour + 11) % 12 + 1, token.letters, out);
    case Field::Minute:
      return appendNumber(values.minute, token.letters, out);
    case Field::Second:
      return appendNumber(values.second, token.letters, out);
    case Field::Half:
      out += symbols_->halves[values.hour / 12];
      return;
    case Field::Offset: {
      const int offset = *values.offsetInMinutes;
      out += offset < 0 ? u'-' : u'+';
      return appendNumber(std::abs(offset) / 60 * 100 + std::abs(offset) % 60, 4, out);
    }
    case Field::ZoneName:
      return;
  }
}

}  // namespace quillet
