#include "text/csv_components.h"

#include <utility>

namespace quillet {

namespace {

constexpr char16_t kQuote = u'"';

// A quote at index with exactly one more quote behind it.
bool isDoubledQuote(std::u16string_view text, std::size_t index) {
  const bool nextIsQuote = index + 1 < text.size() && text[index + 1] == kQuote;
  const bool thirdIsQuote = index + 2 < text.size() && text[index + 2] == kQuote;
  return nextIsQuote && !thirdIsQuote;
}

}  // namespace

void findComponentsOfCSVString(std::u16string_view text, std::vector<std::u16string>& into) {
  std::u16string field;
  bool inQuotes = false;
  bool skipToComma = false;
  const auto endField = [&] { into.push_back(std::exchange(field, {})); };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (skipToComma) {
      if (unit != u',') continue;
      endField();
      skipToComma = false;
    } else if (unit == u',' && !inQuotes) {
      endField();
    } else if (unit != kQuote) {
      field += unit;
    } else if (!isDoubledQuote(text, i)) {
      inQuotes = !inQuotes;  // three quotes in a row come here too, which is meant
    } else if (inQuotes) {
      field += kQuote;
      ++i;
    } else {
      skipToComma = true;  // an empty quoted field drops what stands up to the comma, which is meant
    }
  }
  endField();
}

}  // namespace quillet
