#include "platform/localization.h"

#include <algorithm>
#include <atomic>

#include "platform/numbers.h"

namespace quillet {

namespace {

std::atomic<Translator> installedTranslator = nullptr;

void appendValue(const FormatValue& value, bool cutTo32Bits, std::u16string& out) {
  if (const auto* text = std::get_if<std::u16string_view>(&value)) {
    out += *text;
  } else if (const auto* number = std::get_if<std::int64_t>(&value)) {
    appendInteger(cutTo32Bits ? static_cast<std::int32_t>(*number) : *number, out);
  }
}

// The placeholder at the start of the text, or "".
std::u16string_view placeholderAtStart(std::u16string_view text) {
  for (const std::u16string_view placeholder : {u"%@", u"%ld", u"%d", u"%%"})
    if (text.starts_with(placeholder)) return placeholder;
  return {};
}

}  // namespace

std::u16string localized(std::u16string_view key) {
  const Translator translator = installedTranslator.load();
  return translator ? translator(key) : std::u16string(key);
}

void setTranslator(Translator translator) {
  installedTranslator.store(translator);
}

std::u16string formatted(std::u16string_view format, std::initializer_list<FormatValue> values) {
  std::u16string result;
  auto value = values.begin();
  while (!format.empty()) {
    const std::size_t percent = std::min(format.find(u'%'), format.size());
    result += format.substr(0, percent);
    format.remove_prefix(percent);
    if (format.empty()) break;
    const std::u16string_view placeholder = placeholderAtStart(format);
    if (placeholder.empty() || placeholder == u"%%") {
      result += u'%';
    } else if (value != values.end()) {
      appendValue(*value++, placeholder == u"%d", result);
    }
    format.remove_prefix(placeholder.empty() ? 1 : placeholder.size());
  }
  return result;
}

std::u16string localizedFormat(std::u16string_view key, std::initializer_list<FormatValue> values) {
  return formatted(localized(key), values);
}

}  // namespace quillet
