// Regular expressions and their templates: the same result as a plain walk with ICU and a plain reading of
// the template, whichever way was taken.
//
// Input: case, pattern, template; the rest is the text.
#include <memory>
#include <unicode/uregex.h>
#include <vector>

#include "fuzz_input.h"
#include "platform/regular_expression.h"

namespace quillet::fuzz {
namespace {

// ICU's own limit, where a text takes too long: there the answer may be any.
constexpr std::int32_t kTimeLimit = 5000;
constexpr std::size_t kMostPatternBytes = 64;
constexpr std::size_t kMostTextUnits = 256;

using Groups = std::vector<std::u16string>;

bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

// As many digits as the number of groups has; a group that is not there inserts nothing.
std::u16string expanded(std::u16string_view source, const Groups& groups) {
  const std::size_t digits = std::to_string(groups.size() - 1).size();
  std::u16string result;
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (source[i] == u'\\') {
      if (++i < source.size()) result += source[i];
    } else if (source[i] == u'$' && i + 1 < source.size() && isDigit(source[i + 1])) {
      std::size_t group = 0;
      for (std::size_t taken = 0; taken < digits && i + 1 < source.size() && isDigit(source[i + 1]); ++taken)
        group = group * 10 + (source[++i] - u'0');
      if (group < groups.size()) result += groups[group];
    } else {
      result += source[i];
    }
  }
  return result;
}

class PlainExpression {
 public:
  PlainExpression(const std::u16string& pattern, CaseSensitivity sensitivity) {
    const std::uint32_t flags = sensitivity == CaseSensitivity::Insensitive ? UREGEX_CASE_INSENSITIVE : 0;
    expression_.reset(
        uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), flags, nullptr, &error_));
    if (U_SUCCESS(error_)) uregex_setTimeLimit(expression_.get(), kTimeLimit, &error_);
  }

  bool isUsable() const { return U_SUCCESS(error_); }

  std::size_t replace(const std::u16string& text, std::u16string_view templateText, std::u16string& out) {
    uregex_setText(expression_.get(), text.data(), static_cast<std::int32_t>(text.size()), &error_);
    std::size_t matches = 0, copied = 0;
    while (uregex_findNext(expression_.get(), &error_)) {
      const auto start = static_cast<std::size_t>(uregex_start(expression_.get(), 0, &error_));
      out.append(text, copied, start - copied);
      out += expanded(templateText, groups(text));
      copied = static_cast<std::size_t>(uregex_end(expression_.get(), 0, &error_));
      ++matches;
    }
    if (matches > 0) out.append(text, copied);
    return matches;
  }

 private:
  Groups groups(const std::u16string& text) {
    Groups result;
    const std::int32_t count = uregex_groupCount(expression_.get(), &error_);
    for (std::int32_t group = 0; group <= count; ++group) {
      const std::int32_t start = uregex_start(expression_.get(), group, &error_);
      const std::int32_t end = uregex_end(expression_.get(), group, &error_);
      auto& part = result.emplace_back();
      if (start >= 0)
        part = text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
    }
    return result;
  }

  struct Close {
    void operator()(URegularExpression* expression) const { uregex_close(expression); }
  };
  UErrorCode error_ = U_ZERO_ERROR;
  std::unique_ptr<URegularExpression, Close> expression_;
};

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  using namespace quillet::fuzz;
  FuzzInput input(data, size);
  const auto sensitivity = input.flag() ? CaseSensitivity::Sensitive : CaseSensitivity::Insensitive;
  const std::u16string pattern = input.text(kMostPatternBytes);
  const std::u16string templateText = input.text(64);
  const std::u16string text = input.restText().substr(0, kMostTextUnits);

  auto expression = RegularExpression::compiled(pattern, sensitivity);
  if (pattern.empty()) {
    require(!expression, "an empty pattern is none");
    return 0;
  }
  PlainExpression plain(pattern, sensitivity);
  require(expression.has_value() == plain.isUsable(), "the same patterns compile");
  if (!expression) return 0;

  std::u16string result, plainResult;
  const std::size_t plainMatches = plain.replace(text, templateText, plainResult);
  const std::size_t matches = expression->appendReplacingMatches(text, templateText, result);
  const bool hasMatch = expression->hasMatch(text);
  if (!plain.isUsable()) return 0;  // the walk ran out of time or memory
  require(matches == plainMatches, "as many matches as ICU finds");
  require(result == plainResult, "the same text as ICU and the rule of templates give");
  require(hasMatch == (plainMatches > 0), "a text that is replaced in has a match");
  return 0;
}
