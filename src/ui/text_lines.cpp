#include "ui/text_lines.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace quillet::ui {

namespace {

constexpr char16_t kFirstOtherWidth = 0x300;  // combining marks; behind them are scripts of other fonts
constexpr qsizetype kWideColumns = 2;
constexpr qsizetype kTabColumns = 12;
constexpr qsizetype kLigatureColumns = 16;  // Arabic phrases that are one character
constexpr qsizetype kAround = 1'024;        // units

struct UnitCounts {
  std::size_t lineFeeds = 0;
  std::size_t ofOtherWidths = 0;
};

// In blocks whose counts fit into a unit, which lets the compiler count several units at once.
UnitCounts countUnits(std::u16string_view text) {
  constexpr std::size_t kBlock = 0x8000;
  UnitCounts counts;
  for (; !text.empty(); text.remove_prefix(std::min(kBlock, text.size()))) {
    std::uint16_t lineFeeds = 0;
    std::uint16_t others = 0;
    for (const char16_t unit : text.substr(0, kBlock)) {
      lineFeeds = static_cast<std::uint16_t>(lineFeeds + (unit == u'\n'));
      others = static_cast<std::uint16_t>(others + (unit < u' ' || unit >= kFirstOtherWidth));
    }
    counts.lineFeeds += lineFeeds;
    counts.ofOtherWidths += static_cast<std::size_t>(others) - lineFeeds;
  }
  return counts;
}

// At most.
qsizetype columnsOf(char16_t unit) {
  if (unit == u'\t') return kTabColumns;
  if (unit >= 0xFDF0 && unit <= 0xFDFF) return kLigatureColumns;
  return unit < kFirstOtherWidth ? 1 : kWideColumns;
}

// Of the widest line; only a bound for a text that takes its time.
qsizetype mostColumnsOf(std::u16string_view text, qsizetype longestLine) {
  constexpr std::size_t kMostMeasured = 4'000'000;
  if (text.size() > kMostMeasured) return longestLine * kLigatureColumns;
  qsizetype most = 0;
  qsizetype columns = 0;
  for (const char16_t unit : text) {
    columns = unit == u'\n' ? 0 : columns + columnsOf(unit);
    most = std::max(most, columns);
  }
  return most;
}

char16_t signFor(char16_t unit) {
  constexpr char16_t kReplacement = 0xFFFD;
  switch (unit) {
    case u'\t':
      return unit;
    case 0x7F:
      return 0x2421;
    case 0x85:
      return 0x2424;
    case 0x2028:
      return 0x21B5;
    case 0x2029:
      return 0xB6;
    case 0xFFFC:
      return kReplacement;
    default:
      if (unit < u' ') return static_cast<char16_t>(0x2400 + unit);
      return unit >= 0x80 && unit < 0xA0 ? kReplacement : unit;
  }
}

QTextBoundaryFinder finder(QStringView part, TextLines::Of of) {
  return QTextBoundaryFinder(
      of == TextLines::Of::Word ? QTextBoundaryFinder::Word : QTextBoundaryFinder::Grapheme, part.data(),
      part.size());
}

}  // namespace

TextLines::TextLines(QString text) : text_(std::move(text)) {
  const std::u16string_view units(reinterpret_cast<const char16_t*>(text_.constData()),
                                  static_cast<std::size_t>(text_.size()));
  const UnitCounts counts = countUnits(units);
  isOfOneWidth_ = counts.ofOtherWidths == 0;
  findStarts(counts.lineFeeds);
  mostColumns_ = isOfOneWidth_ ? longest_ : mostColumnsOf(units, longest_);
}

void TextLines::findStarts(std::size_t lineFeeds) {
  starts_.reserve(lineFeeds + 1);
  qsizetype start = 0;
  for (qsizetype end = text_.indexOf(QLatin1Char('\n')); end >= 0;
       end = text_.indexOf(QLatin1Char('\n'), start)) {
    longest_ = std::max(longest_, end - start);
    start = end + 1;
    starts_.push_back(start);
  }
  longest_ = std::max(longest_, text_.size() - start);
}

QStringView TextLines::line(qsizetype line) const {
  const qsizetype from = start(line);
  const qsizetype to = line + 1 < count() ? start(line + 1) - 1 : text_.size();
  return QStringView(text_).mid(from, to - from);
}

qsizetype TextLines::lineAt(qsizetype position) const {
  return std::upper_bound(starts_.begin(), starts_.end(), position) - starts_.begin() - 1;
}

qsizetype TextLines::next(qsizetype position, Of of) const {
  if (position >= text_.size()) return text_.size();
  const qsizetype from = std::max<qsizetype>(position - kAround, 0);
  QTextBoundaryFinder boundaries = finder(QStringView(text_).mid(from, 2 * kAround), of);
  boundaries.setPosition(position - from);
  const qsizetype found = boundaries.toNextBoundary();
  return found < 0 ? position + 1 : from + found;
}

qsizetype TextLines::previous(qsizetype position, Of of) const {
  if (position <= 0) return 0;
  const qsizetype from = std::max<qsizetype>(position - kAround, 0);
  QTextBoundaryFinder boundaries = finder(QStringView(text_).mid(from, 2 * kAround), of);
  boundaries.setPosition(position - from);
  const qsizetype found = boundaries.toPreviousBoundary();
  return found < 0 ? position - 1 : from + found;
}

TextLines::Range TextLines::wordAt(qsizetype position) const {
  const qsizetype to = next(position, Of::Word);
  return {previous(to, Of::Word), to};
}

QString shownForm(QStringView part) {
  QString shown = part.toString();
  for (qsizetype i = 0; i < shown.size(); ++i) {
    const QChar unit = shown[i];
    if (!unit.isSurrogate()) {
      shown[i] = QChar(signFor(unit.unicode()));
    } else if (unit.isHighSurrogate() && i + 1 < shown.size() && shown[i + 1].isLowSurrogate()) {
      ++i;
    } else {
      shown[i] = QChar(QChar::ReplacementCharacter);
    }
  }
  return shown;
}

}  // namespace quillet::ui
