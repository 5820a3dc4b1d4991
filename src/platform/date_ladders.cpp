#include "platform/date_ladders.h"

#include <algorithm>
#include <array>
#include <span>
#include <unicode/uchar.h>
#include <utility>
#include <vector>

#include "platform/plain_date_pattern.h"
#include "platform/unicode_text.h"
#include "platform/zone_offsets.h"

namespace quillet {

namespace {

// One step of a ladder: a pattern, or styles.
struct Setting {
  std::u16string_view pattern;
  DateStyle dateStyle = DateStyle::None;
  DateStyle timeStyle = DateStyle::None;
};

constexpr Setting kDateSettings[] = {
    {u"yyyy-M-d Z"}, {{}, DateStyle::Medium}, {{}, DateStyle::Short}, {{}, DateStyle::Long},
    {u"yyyy-M-d"},   {u"M/d/yyyy"},           {u"d-MMM-yyyy"},
};

constexpr Setting kTimeSettings[] = {
    {u"h:m a"},
    {u"H:m"},
    {u"h:m:s a"},
    {u"H:m:s"},
    {u"h:m a Z"},
    {u"H:m Z"},
    {u"h:m:s a Z"},
    {u"H:m:s Z"},
    {{}, DateStyle::None, DateStyle::Medium},
    {{}, DateStyle::None, DateStyle::Short},
    {{}, DateStyle::None, DateStyle::Long},
};

constexpr Setting kDateTimeSettings[] = {
    {{}, DateStyle::Short, DateStyle::Short},   {{}, DateStyle::Short, DateStyle::Medium},
    {{}, DateStyle::Short, DateStyle::Long},    {{}, DateStyle::Medium, DateStyle::Short},
    {{}, DateStyle::Medium, DateStyle::Medium}, {{}, DateStyle::Medium, DateStyle::Long},
    {{}, DateStyle::Long, DateStyle::Short},    {{}, DateStyle::Long, DateStyle::Medium},
    {{}, DateStyle::Long, DateStyle::Long},
};

constexpr Setting kStandardDateTimeSettings[] = {
    {u"yyyy-M-d h:m a"},   {u"yyyy-M-d H:m"},   {u"yyyy-M-d h:m:s a"},   {u"yyyy-M-d H:m:s"},
    {u"yyyy-M-d h:m a Z"}, {u"yyyy-M-d H:m Z"}, {u"yyyy-M-d h:m:s a Z"}, {u"yyyy-M-d H:m:s Z"},
};

constexpr std::u16string_view kStandardDate = u"yyyy-M-d";

DateFormatter formatterFor(const Setting& setting, const DateEnvironment& environment) {
  DateFormatter formatter(environment);
  if (setting.pattern.empty()) {
    formatter.setDateStyle(setting.dateStyle);
    formatter.setTimeStyle(setting.timeStyle);
  } else {
    formatter.setDateFormat(setting.pattern);
  }
  return formatter;
}

// What a glance at a text tells.
struct TextShape {
  bool isPrintableAscii = true;
  bool hasDigit = false;  // of any script; without one no attempt reads the text
  int hyphens = 0;
  int slashes = 0;
  int colons = 0;

  explicit TextShape(std::u16string_view text) {
    for (char16_t unit : text) {
      isPrintableAscii &= unit >= 0x20 && unit < 0x7F;
      hasDigit |= unit >= u'0' && unit <= u'9';
      hyphens += unit == u'-';
      slashes += unit == u'/';
      colons += unit == u':';
    }
    if (!isPrintableAscii && !hasDigit) hasDigit = hasDigitOfAnyScript(text);
  }

  // The marks stand in a pattern between its fields, so a text needs as many of them.
  bool hasMarksOf(const TextShape& pattern) const {
    return hyphens >= pattern.hyphens && slashes >= pattern.slashes && colons >= pattern.colons;
  }

 private:
  static bool hasDigitOfAnyScript(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); i += unitsOfCodePoint(codePointAt(text, i)))
      if (u_isdigit(static_cast<UChar32>(codePointAt(text, i)))) return true;
    return false;
  }
};

// What the attempts of a reader share: made when it is first needed.
class DateTables {
 public:
  explicit DateTables(DateEnvironment newEnvironment) : environment_(std::move(newEnvironment)) {}

  const DateEnvironment& environment() const { return environment_; }

  const std::shared_ptr<const DateSymbols>& symbols() {
    if (!symbols_) symbols_ = DateSymbols::of(environment_);
    return symbols_;
  }

  const ZoneOffsets& offsets() {
    if (!offsets_) offsets_ = ZoneOffsets::of(environment_.timeZone);
    return *offsets_;
  }

 private:
  DateEnvironment environment_;
  std::shared_ptr<const DateSymbols> symbols_;
  std::shared_ptr<const ZoneOffsets> offsets_;
};

class Attempt {
 public:
  explicit Attempt(const Setting& setting) : setting_(setting), neededMarks_(setting.pattern) {}

  // By hand.
  PlainDatePattern::Answer readPlainly(std::u16string_view text, const TextShape& shape, DateTables& tables,
                                       Instant& instant) {
    if (!shape.hasMarksOf(neededMarks_)) return PlainDatePattern::Answer::Failed;
    if (!formatter_) open(tables);
    if (!shape.isPrintableAscii) return PlainDatePattern::Answer::AskIcu;
    return plainPattern_.read(text, tables.offsets(), instant);
  }

  // By ICU, behind the other.
  std::optional<Instant> read(std::u16string_view text) const { return formatter_->dateFromString(text); }

 private:
  void open(DateTables& tables) {
    formatter_ = formatterFor(setting_, tables.environment());
    plainPattern_ = PlainDatePattern(formatter_->dateFormat(), tables.symbols());
  }

  const Setting& setting_;
  TextShape neededMarks_;
  std::optional<DateFormatter> formatter_;
  PlainDatePattern plainPattern_;
};

// Remembers what dear texts read as: the values of a column repeat. A newer text takes an older one's place.
class Memory {
 public:
  // Nothing for an unknown text, else what it reads as, or that it does not.
  const std::optional<Instant>* find(std::u16string_view text) const {
    if (entries_.empty() || text.size() > kLongestInUnits) return nullptr;
    const Entry& entry = entries_[placeOf(text)];
    return entry.isUsed && std::u16string_view(entry.text.data(), entry.length) == text ? &entry.instant
                                                                                        : nullptr;
  }

  void keep(std::u16string_view text, std::optional<Instant> instant) {
    if (text.size() > kLongestInUnits) return;
    if (entries_.empty()) entries_.resize(kEntries);
    Entry& entry = entries_[placeOf(text)];
    entry.isUsed = true;
    entry.length = static_cast<std::uint8_t>(text.size());
    std::copy(text.begin(), text.end(), entry.text.begin());
    entry.instant = instant;
  }

 private:
  static constexpr std::size_t kEntries = 1024;
  static constexpr std::size_t kLongestInUnits = 38;

  struct Entry {
    std::optional<Instant> instant;
    std::array<char16_t, kLongestInUnits> text;
    std::uint8_t length = 0;
    bool isUsed = false;
  };

  static std::size_t placeOf(std::u16string_view text) {
    std::uint64_t hash = 0;
    for (char16_t unit : text) hash = (hash ^ unit) * 0x9E3779B97F4A7C15;
    return hash >> 54;
  }
  static_assert(kEntries == std::size_t{1} << (64 - 54));

  std::vector<Entry> entries_;
};

// The attempts of one ladder; each opens its formatter when it is first asked.
class Ladder {
 public:
  explicit Ladder(std::span<const Setting> settings) : attempts_(settings.begin(), settings.end()) {}

  std::optional<Instant> read(std::u16string_view text, DateTables& tables) {
    const TextShape shape(text);
    if (!shape.hasDigit) return std::nullopt;
    bool askedIcu = false;
    for (Attempt& attempt : attempts_) {
      Instant instant = 0;
      switch (attempt.readPlainly(text, shape, tables, instant)) {
        case PlainDatePattern::Answer::Read:
          return kept(text, instant, askedIcu);
        case PlainDatePattern::Answer::Failed:
          break;
        case PlainDatePattern::Answer::AskIcu:
          if (!askedIcu) {
            if (const auto* known = memory_.find(text)) return *known;
            askedIcu = true;
          }
          if (const auto found = attempt.read(text)) return kept(text, found, askedIcu);
      }
    }
    return kept(text, std::nullopt, askedIcu);
  }

 private:
  std::optional<Instant> kept(std::u16string_view text, std::optional<Instant> instant, bool askedIcu) {
    if (askedIcu) memory_.keep(text, instant);
    return instant;
  }

  std::vector<Attempt> attempts_;
  Memory memory_;
};

// One configured formatter, and the same by hand.
class FastFormatter {
 public:
  explicit FastFormatter(DateFormatter formatter, DateTables& tables)
      : formatter_(std::move(formatter)), plainPattern_(formatter_.dateFormat(), tables.symbols()) {}

  void append(Instant instant, DateTables& tables, std::u16string& out) const {
    if (!plainPattern_.append(instant, tables.offsets(), out)) out += formatter_.stringFromDate(instant);
  }

 private:
  DateFormatter formatter_;
  PlainDatePattern plainPattern_;
};

}  // namespace

struct DateReader::State {
  explicit State(DateTables tablesOfReader) : tables(std::move(tablesOfReader)) {}

  DateTables tables;
  Ladder dates{kDateSettings};
  Ladder times{kTimeSettings};
  Ladder dateTimes{kDateTimeSettings};
  Ladder standardDateTimes{kStandardDateTimeSettings};
  std::optional<FastFormatter> standardDate;
  std::u16string standardText;

  void appendStandardDate(Instant instant, std::u16string& out) {
    if (!standardDate) standardDate.emplace(formatterFor({kStandardDate}, tables.environment()), tables);
    standardDate->append(instant, tables, out);
  }
};

DateReader::DateReader(DateEnvironment environment)
    : state_(std::make_unique<State>(DateTables(std::move(environment)))) {}
DateReader::DateReader(DateReader&&) noexcept = default;
DateReader::~DateReader() = default;

std::optional<Instant> DateReader::dateFromString(std::u16string_view text) {
  return state_->dates.read(text, state_->tables);
}

std::optional<Instant> DateReader::timeFromString(std::u16string_view text) {
  return state_->times.read(text, state_->tables);
}

std::optional<Instant> DateReader::dateTimeFromString(std::u16string_view text) {
  if (const auto instant = state_->dateTimes.read(text, state_->tables)) return instant;
  // The part in front of the first blank as a date of any form, the rest as a time in numbers.
  // (A blank under a combining mark parts nothing, strictly; but a mark stands in no date or time that is
  // read.)
  const std::size_t blank = text.find(u' ');
  if (blank == text.npos) return std::nullopt;
  const auto date = dateFromString(text.substr(0, blank));
  if (!date) return std::nullopt;
  std::u16string& standardText = state_->standardText;
  standardText.clear();
  state_->appendStandardDate(*date, standardText);
  standardText += text.substr(blank);
  return dateTimeFromStringWithStandardDate(standardText);
}

std::optional<Instant> DateReader::dateTimeFromStringWithStandardDate(std::u16string_view text) {
  return state_->standardDateTimes.read(text, state_->tables);
}

namespace {

void configureDateFormatter(DateFormatter& formatter, std::int64_t formatNumber) {
  switch (formatNumber) {
    case 1:
      return formatter.setDateStyle(DateStyle::Short);
    case 2:
      return formatter.setDateStyle(DateStyle::Medium);
    case 3:
      return formatter.setDateStyle(DateStyle::Long);
    case 4:
      return formatter.setDateFormat(u"yyyy-MM-dd");
    default:
      return formatter.setDateFormat(u"yyyy-MM-dd Z");
  }
}

// The appended patterns touch the date's, and a time style replaces an explicit date pattern: both are meant.
void configureTimeFormatter(DateFormatter& formatter, std::int64_t formatNumber) {
  switch (formatNumber) {
    case 1:
      return formatter.setTimeStyle(DateStyle::Short);
    case 2:
      return formatter.setTimeStyle(DateStyle::Medium);
    case 3:
      return formatter.setTimeStyle(DateStyle::Long);
    case 4:
      return formatter.setDateFormat(formatter.dateFormat() + u"HH:mm");
    case 5:
      return formatter.setDateFormat(formatter.dateFormat() + u"HH:mm:ss");
    case 6:
      return formatter.setDateFormat(formatter.dateFormat() + u"HH:mm Z");
    default:
      return formatter.setDateFormat(formatter.dateFormat() + u"HH:mm:ss Z");
  }
}

}  // namespace

struct DatePrinter::State {
  DateTables tables;
  FastFormatter formatter;

  State(const DateEnvironment& environment, DateFormatter configured)
      : tables(environment), formatter(std::move(configured), tables) {}
};

DatePrinter::DatePrinter(std::unique_ptr<State> state) : state_(std::move(state)) {}
DatePrinter::DatePrinter(DatePrinter&&) noexcept = default;
DatePrinter::~DatePrinter() = default;

DatePrinter DatePrinter::forDate(std::int64_t dateFormat, const DateEnvironment& environment) {
  DateFormatter formatter(environment);
  configureDateFormatter(formatter, dateFormat);
  return DatePrinter(std::make_unique<State>(environment, std::move(formatter)));
}

DatePrinter DatePrinter::forTime(std::int64_t timeFormat, const DateEnvironment& environment) {
  DateFormatter formatter(environment);
  formatter.setDateStyle(DateStyle::None);
  configureTimeFormatter(formatter, timeFormat);
  return DatePrinter(std::make_unique<State>(environment, std::move(formatter)));
}

DatePrinter DatePrinter::forDateTime(std::int64_t dateFormat, std::int64_t timeFormat,
                                     const DateEnvironment& environment) {
  DateFormatter formatter(environment);
  configureDateFormatter(formatter, dateFormat);
  configureTimeFormatter(formatter, timeFormat);
  return DatePrinter(std::make_unique<State>(environment, std::move(formatter)));
}

void DatePrinter::append(Instant instant, std::u16string& out) {
  state_->formatter.append(instant, state_->tables, out);
}

}  // namespace quillet
