#include "clipboard/field_value.h"

#include <algorithm>
#include <string>

#include "platform/character_set.h"
#include "platform/numbers.h"

namespace quillet {

namespace {

std::u16string_view withoutBlanks(std::u16string_view text) {
  return trimmed(text, CharacterSet::whitespaceAndNewline());
}
std::u16string_view withoutSymbols(std::u16string_view text) {
  return trimmed(text, CharacterSet::symbol());
}

bool isBracket(char16_t unit) {
  return unit == u'(' || unit == u')';
}

}  // namespace

double doubleValueFromFieldValue(std::u16string_view text) {
  text = withoutBlanks(withoutSymbols(withoutBlanks(text)));
  if (text.empty() || text.front() != u'(') return doubleValue(text);
  std::u16string inside(text);
  inside.erase(std::remove_if(inside.begin(), inside.end(), isBracket), inside.end());
  const double value = doubleValue(withoutSymbols(withoutBlanks(inside)));
  return value != 0 ? -value : 0.0;  // a zero stays positive
}

}  // namespace quillet
