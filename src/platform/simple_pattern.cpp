#include "platform/simple_pattern.h"

#include <algorithm>

#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}
constexpr bool isUpper(char16_t unit) {
  return unit >= u'A' && unit <= u'Z';
}
constexpr bool isLower(char16_t unit) {
  return unit >= u'a' && unit <= u'z';
}
constexpr bool isLetter(char16_t unit) {
  return isUpper(unit) || isLower(unit);
}
constexpr bool isPrintable(char16_t unit) {
  return unit >= 0x20 && unit < 0x7F;
}
constexpr bool isPunctuation(char16_t unit) {
  return isPrintable(unit) && unit != u' ' && !isDigit(unit) && !isLetter(unit);
}
constexpr bool isLineEnd(char16_t unit) {
  return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

// What stands for itself, outside and inside of brackets.
constexpr bool isPlainOutside(char16_t unit) {
  return isPrintable(unit) &&
         std::u16string_view(u"\\^$.|?*+()[]{}#").find(unit) == std::u16string_view::npos;
}
constexpr bool isPlainInside(char16_t unit) {
  return isPrintable(unit) && std::u16string_view(u"\\^$[]{}-&:#").find(unit) == std::u16string_view::npos;
}

// "$" also holds in front of a final line end, but not between CR and LF.
bool isAtEnd(std::u16string_view text, std::size_t position) {
  const std::size_t left = text.size() - position;
  if (left == 0) return true;
  if (left == 1) {
    const bool insideCrLf = text[position] == u'\n' && position > 0 && text[position - 1] == u'\r';
    return isLineEnd(text[position]) && !insideCrLf;
  }
  return left == 2 && text[position] == u'\r' && text[position + 1] == u'\n';
}

// The engine behind stops a text after some 50,000,000 steps; texts that cannot come near are ours.
constexpr double kMostSteps = 1e6;
constexpr std::size_t kLongestTextInUnits = 4000;
constexpr std::size_t kLongestTextOfOneRunInUnits = 1000000;
constexpr std::size_t kHighestCount = 1000;

}  // namespace

// Reads a pattern, and gives up at the first thing that it does not know for certain.
class SimplePatternReader {
 public:
  SimplePatternReader(std::u16string_view pattern, CaseSensitivity caseSensitivity)
      : rest_(pattern), ignoresCase_(caseSensitivity == CaseSensitivity::Insensitive) {}

  std::optional<SimplePattern> read() {
    if (rest_.empty()) return std::nullopt;
    result_.startAnchored_ = skip(u'^');
    while (!rest_.empty() && rest_ != u"$")
      if (!readPart()) return std::nullopt;
    result_.endAnchored_ = skip(u'$');
    if (!openGroups_.empty()) return std::nullopt;
    return std::move(result_);
  }

 private:
  using Item = SimplePattern::Item;

  bool skip(char16_t unit) {
    if (rest_.empty() || rest_.front() != unit) return false;
    rest_.remove_prefix(1);
    return true;
  }

  char16_t take() {
    const char16_t unit = rest_.front();
    rest_.remove_prefix(1);
    return unit;
  }

  bool readPart() {
    if (skip(u'(')) return openGroup();
    if (skip(u')')) return closeGroup();
    return readItem();
  }

  bool openGroup() {
    if (result_.groups_.size() == SimplePattern::kMostGroups) return false;
    openGroups_.push_back(result_.groups_.size());
    result_.groups_.push_back({result_.items_.size(), 0});
    return true;
  }

  // A quantifier behind the group is no item, so it ends the reading.
  bool closeGroup() {
    if (openGroups_.empty()) return false;
    auto& group = result_.groups_[openGroups_.back()];
    openGroups_.pop_back();
    group.endItem = result_.items_.size();
    return group.endItem > group.firstItem;
  }

  bool readItem() {
    if (result_.items_.size() == SimplePattern::kMostItems) return false;
    Item item;
    if (!readMembers(item) || !readQuantifier(item)) return false;
    result_.items_.push_back(item);
    return true;
  }

  bool readMembers(Item& item) {
    const char16_t unit = take();
    if (unit == u'[') return readBrackets(item);
    if (unit == u'\\') return readEscape(item);
    if (unit == u'.') {
      for (char16_t member = 0; member < 0x80; ++member) item.ascii[member] = !isLineEnd(member);
      result_.asciiTextOnly_ = true;
      return true;
    }
    if (!isPlainOutside(unit)) return false;
    addMember(item, unit);
    return true;
  }

  // A letter stands for both cases when case is ignored. Others than ASCII may fold to it: asciiTextOnly_.
  void addMember(Item& item, char16_t unit) {
    item.ascii[unit] = true;
    if (!ignoresCase_ || !isLetter(unit)) return;
    item.ascii[unit ^ 0x20] = true;
    result_.asciiTextOnly_ = true;
    hasFoldedLetters_ = true;
  }

  // Behind a backslash.
  bool readEscape(Item& item) {
    if (rest_.empty()) return false;
    const char16_t unit = take();
    if (isPunctuation(unit)) {
      addMember(item, unit);
      return true;
    }
    return addClassOfEscape(item, unit);
  }

  // \d, \w, \s, for texts of ASCII.
  bool addClassOfEscape(Item& item, char16_t letter) {
    if (letter != u'd' && letter != u'w' && letter != u's') return false;
    for (char16_t member = 0; member < 0x80; ++member) {
      const bool isMember = letter == u'd'   ? isDigit(member)
                            : letter == u'w' ? isDigit(member) || isLetter(member) || member == u'_'
                                             : member == u' ' || (member >= 0x09 && member <= 0x0D);
      if (isMember) item.ascii[member] = true;
    }
    result_.asciiTextOnly_ = true;
    return true;
  }

  bool readBrackets(Item& item) {
    const bool negated = skip(u'^');
    hasFoldedLetters_ = false;
    bool isEmpty = true;
    for (; !skip(u']'); isEmpty = false) {
      if (rest_.empty() || !readMemberOrRange(item)) return false;
    }
    if (isEmpty) return false;
    if (!negated) return true;
    if (hasFoldedLetters_) return false;  // which of the two comes first is ICU's affair
    for (bool& isMember : item.ascii) isMember = !isMember;
    item.others = true;
    return true;
  }

  bool readMemberOrRange(Item& item) {
    const char16_t first = take();
    if (first == u'\\') return readEscape(item) && !rest_.starts_with(u'-');
    if (first == u'-') {  // itself, only as the last
      item.ascii[first] = true;
      return rest_.starts_with(u']');
    }
    if (!isPlainInside(first)) return false;
    if (!rest_.starts_with(u'-') || rest_.starts_with(u"-]")) {
      addMember(item, first);
      return true;
    }
    rest_.remove_prefix(1);
    return !rest_.empty() && addRange(item, first, take());
  }

  bool addRange(Item& item, char16_t first, char16_t last) {
    const bool isPlain = (isDigit(first) && isDigit(last)) || (isLower(first) && isLower(last)) ||
                         (isUpper(first) && isUpper(last));
    if (!isPlain || first > last) return false;
    for (char16_t unit = first; unit <= last; ++unit) addMember(item, unit);
    return true;
  }

  bool readQuantifier(Item& item) {
    if (rest_.empty()) return true;
    if (skip(u'*')) {
      item.least = 0;
      item.most = SimplePattern::kUnbounded;
    } else if (skip(u'+')) {
      item.most = SimplePattern::kUnbounded;
    } else if (skip(u'?')) {
      item.least = 0;
    } else if (skip(u'{')) {
      if (!readCounts(item)) return false;
    }
    // What would make it lazy or possessive, or quantify twice, is no item and ends the reading.
    return rest_.empty() || std::u16string_view(u"*+?{").find(rest_.front()) == std::u16string_view::npos;
  }

  bool readCounts(Item& item) {
    const auto least = readCount();
    if (!least) return false;
    item.least = item.most = *least;
    if (skip(u',')) {
      if (rest_.starts_with(u'}')) {
        item.most = SimplePattern::kUnbounded;
      } else if (const auto most = readCount()) {
        item.most = *most;
      } else {
        return false;
      }
    }
    return skip(u'}') && item.most > 0 && item.most >= item.least;
  }

  std::optional<std::size_t> readCount() {
    if (rest_.empty() || !isDigit(rest_.front())) return std::nullopt;
    std::size_t count = 0;
    while (!rest_.empty() && isDigit(rest_.front()) && count <= kHighestCount)
      count = count * 10 + (take() - u'0');
    if (count > kHighestCount) return std::nullopt;
    return count;
  }

  std::u16string_view rest_;
  bool ignoresCase_;
  bool hasFoldedLetters_ = false;  // in the brackets at hand
  SimplePattern result_;
  std::vector<std::size_t> openGroups_;
};

std::optional<SimplePattern> SimplePattern::recognised(std::u16string_view pattern,
                                                       CaseSensitivity caseSensitivity) {
  return SimplePatternReader(pattern, caseSensitivity).read();
}

bool SimplePattern::serves(std::u16string_view text) const {
  char16_t allBits = 0;
  for (char16_t unit : text) allBits |= unit;
  if (allBits >= 0x80) {
    if (asciiTextOnly_) return false;
    bool hasSurrogate = false;
    for (char16_t unit : text) hasSurrogate |= isSurrogate(unit);
    if (hasSurrogate) return false;
  }
  const bool isOneRun = items_.size() == 1 && items_[0].least <= 1 && !startAnchored_ && !endAnchored_ &&
                        (items_[0].most == 1 || items_[0].most == kUnbounded);
  if (isOneRun) return text.size() <= kLongestTextOfOneRunInUnits;
  return text.size() <= kLongestTextInUnits && mostSteps(text.size()) <= kMostSteps;
}

// The ways to share out the text among the items, from every start.
double SimplePattern::mostSteps(std::size_t lengthInUnits) const {
  const double length = static_cast<double>(lengthInUnits) + 1;
  double steps = startAnchored_ ? 1 : length;
  for (const Item& item : items_) {
    if (item.most == item.least) continue;
    steps *=
        item.most == kUnbounded ? length : std::min(length, static_cast<double>(item.most - item.least + 1));
  }
  return steps;
}

bool SimplePattern::find(std::u16string_view text, std::size_t start) {
  if (startAnchored_) return start == 0 && matchesAt(text, 0);
  const Item* const needed = !items_.empty() && items_[0].least > 0 ? &items_[0] : nullptr;
  for (; start <= text.size(); ++start) {
    if (needed) {
      while (start < text.size() && !needed->contains(text[start])) ++start;
      if (start == text.size()) return false;
    }
    if (matchesAt(text, start)) return true;
  }
  return false;
}

bool SimplePattern::matchesAt(std::u16string_view text, std::size_t start) {
  std::size_t position = start;
  std::size_t item = 0;
  for (;;) {
    bool fits = true;
    while (item < items_.size()) {
      const Item& wanted = items_[item];
      const std::size_t most = std::min(wanted.most, text.size() - position);
      std::size_t length = 0;
      while (length < most && wanted.contains(text[position + length])) ++length;
      if (length < wanted.least) {
        fits = false;
        break;
      }
      runStart_[item] = position;
      runLength_[item++] = length;
      position += length;
    }
    if (fits && (!endAnchored_ || isAtEnd(text, position))) {
      runStart_[items_.size()] = position;
      return true;
    }
    if (!giveBack(item, position)) return false;
  }
}

// Shortens the last run in front of item that may be shorter, and goes on behind it.
bool SimplePattern::giveBack(std::size_t& item, std::size_t& position) {
  do {
    if (item == 0) return false;
    --item;
  } while (runLength_[item] == items_[item].least);
  position = runStart_[item] + --runLength_[item];
  ++item;
  return true;
}

std::size_t SimplePattern::groupStart(int group) const {
  return runStart_[group == 0 ? 0 : groups_[group - 1].firstItem];
}

std::size_t SimplePattern::groupEnd(int group) const {
  return runStart_[group == 0 ? items_.size() : groups_[group - 1].endItem];
}

}  // namespace quillet
