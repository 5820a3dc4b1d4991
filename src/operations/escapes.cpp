#include "operations/escapes.h"

#include "platform/text_search.h"

namespace quillet {

namespace {

struct Escape {
  std::u16string_view typed;
  std::u16string_view real;
};
// In the order in which they are replaced.
constexpr Escape kEscapes[] = {{u"\\n", u"\n"}, {u"\\r", u"\r"}, {u"\\t", u"\t"}};

constexpr char16_t kKatakanaMiddleDot = 0x30FB;
constexpr char16_t kSymbolForNull = 0x2400;
constexpr char16_t kSymbolForHorizontalTabulation = 0x2409;
constexpr char16_t kSymbolForDelete = 0x2421;

char16_t visible(char16_t unit) {
  switch (unit) {
    case u'\t':
      return kKatakanaMiddleDot;  // meant: a tab shows as a dot
    case u'\n':
      return unit;
    case u'\v':
      return kSymbolForHorizontalTabulation;  // meant: this row keeps the symbol that the tab does not use
    case 0x7F:
      return kSymbolForDelete;
    default:
      return unit < 0x20 ? static_cast<char16_t>(kSymbolForNull + unit) : unit;
  }
}

}  // namespace

std::u16string replaceBackslashedCharacters(std::u16string_view text) {
  std::u16string result(text);
  if (text.find(u'\\') == std::u16string_view::npos) return result;
  for (const Escape& escape : kEscapes)
    result = stringByReplacingOccurrences(result, escape.typed, escape.real);
  return result;
}

std::u16string replaceWithBackslashedCharacters(std::u16string_view text) {
  std::u16string result(text);
  for (const Escape& escape : kEscapes)
    result = stringByReplacingOccurrences(result, escape.real, escape.typed);
  return result;
}

std::u16string stringByReplacingControlCharactersFromString(std::u16string_view text,
                                                            std::u16string_view lineSeparator) {
  std::u16string result = stringByReplacingOccurrences(text, lineSeparator, u"\n");
  for (char16_t& unit : result) unit = visible(unit);
  return result;
}

}  // namespace quillet
