#include "operations/line_numbers.h"

#include <vector>

#include "platform/character_set.h"
#include "platform/numbers.h"
#include "platform/text_search.h"

namespace quillet {

namespace {

// The digits behind leading white space. A sign is no digit, so "+5" is 0.
std::int64_t leadingNumber(std::u16string_view text) {
  while (!text.empty() && isWhitespaceOrNewline(text.front())) text.remove_prefix(1);
  if (text.empty() || text.front() < u'0' || text.front() > u'9') return 0;
  return integerValue(text);
}

void parseToken(std::u16string_view token, IndexSet& into, std::int64_t* skipBeyondNumber, bool subtract1) {
  const auto number = [subtract1](std::u16string_view part) {
    const std::int64_t value = leadingNumber(part);
    return subtract1 && value >= 1 ? value - 1 : value;
  };
  const std::vector<std::u16string_view> parts = componentsSeparatedByString(token, u"-");
  if (parts.size() == 1) {
    into.addIndex(number(parts[0]));
  } else if (parts.size() == 2) {
    const std::int64_t start = number(parts[0]);
    const std::int64_t end = number(parts[1]);
    if (start > 0 && end == 0) {
      // An open end. With subtract1 "2 - 1" reads as one too, which is meant.
      if (skipBeyondNumber) *skipBeyondNumber = start;
    } else if (end > start) {  // "5 - 5" selects nothing, which is meant
      into.addRange(start, end);
    }
  }
}

void appendSeparator(std::u16string& text) {
  if (!text.empty()) text += u", ";
}

}  // namespace

void parseLineNumbersString(std::u16string_view text, IndexSet& into, std::int64_t* skipBeyondNumber,
                            bool subtract1) {
  for (const std::u16string_view part : componentsSeparatedByString(text, u",")) {
    const std::u16string_view token = trimmed(part, CharacterSet::whitespaceAndNewline());
    if (!token.empty()) parseToken(token, into, skipBeyondNumber, subtract1);
  }
}

std::u16string stringPlus1FromIndexSet(const IndexSet& set) {
  std::u16string text;
  for (const IndexSet::Range& range : set.ranges()) {
    appendSeparator(text);
    appendInteger(range.first + 1, text);
    if (range.last == range.first) continue;
    text += u" - ";
    appendInteger(range.last + 1, text);
  }
  return text;
}

std::u16string expandedStringPlus1FromIndexSet(const IndexSet& set) {
  std::u16string text;
  for (const IndexSet::Range& range : set.ranges()) {
    for (std::int64_t index = range.first; index <= range.last; ++index) {
      appendSeparator(text);
      appendInteger(index + 1, text);
    }
  }
  return text;
}

}  // namespace quillet
