#include "platform/regular_expression.h"

#include <algorithm>
#include <cstdint>
#include <unicode/uregex.h>
#include <vector>

#include "platform/simple_pattern.h"

namespace quillet {

namespace {

// Steps of the engine in thousands, roughly, that one text may take: an expression that would never end
// stops.
constexpr std::int32_t kTimeLimitForEachText = 5000;

struct CloseExpression {
  void operator()(URegularExpression* expression) const { uregex_close(expression); }
};
using ExpressionPointer = std::unique_ptr<URegularExpression, CloseExpression>;

constexpr bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

// How many digits behind a "$" belong to it: as many as the highest group number has.
int digitsOfGroupNumbers(int groupCount) {
  int digits = 1;
  for (std::int64_t limit = 10; limit < groupCount + 1; limit *= 10) ++digits;
  return digits;
}

// A template, read once: literal text with groups in between.
class Template {
 public:
  struct Part {
    std::size_t literalEnd;  // in literals(), where the next part's begins
    int group;               // inserted behind the literal; -1 for none
  };

  bool isReadFrom(std::u16string_view source) const { return isRead_ && source_ == source; }

  void read(std::u16string_view source, int groupCount) {
    source_ = source;
    isRead_ = true;
    literals_.clear();
    parts_.clear();
    const int digits = digitsOfGroupNumbers(groupCount);
    for (std::size_t i = 0; i < source.size(); ++i) {
      if (source[i] == u'\\') {
        if (++i < source.size()) literals_ += source[i];
      } else if (source[i] == u'$' && i + 1 < source.size() && isDigit(source[i + 1])) {
        int group = 0;
        for (int taken = 0; taken < digits && i + 1 < source.size() && isDigit(source[i + 1]); ++taken)
          group = group * 10 + (source[++i] - u'0');
        parts_.push_back({literals_.size(), group <= groupCount ? group : -1});
      } else {
        literals_ += source[i];
      }
    }
    parts_.push_back({literals_.size(), -1});
  }

  // groupText gives the text of a group that exists.
  template <typename GroupText>
  void appendTo(std::u16string& out, GroupText&& groupText) const {
    std::size_t literalStart = 0;
    for (const Part& part : parts_) {
      out.append(literals_, literalStart, part.literalEnd - literalStart);
      literalStart = part.literalEnd;
      if (part.group >= 0) out.append(groupText(part.group));
    }
  }

 private:
  bool isRead_ = false;
  std::u16string source_;
  std::u16string literals_;
  std::vector<Part> parts_;
};

}  // namespace

struct RegularExpression::State {
  ExpressionPointer expression;
  std::optional<SimplePattern> simplePattern;  // does the same quickly, for the texts that it serves
  int groupCount = 0;
  Template readTemplate;

  // The walk over the matches of one text.
  std::u16string_view text;
  bool isSimple = false;
  std::size_t nextStart = 0;  // of the simple walk

  void setText(std::u16string_view newText) {
    text = newText;
    isSimple = simplePattern && simplePattern->serves(text);
    nextStart = 0;
    if (isSimple) return;
    UErrorCode error = U_ZERO_ERROR;
    uregex_setText(expression.get(), text.empty() ? u"" : text.data(), static_cast<std::int32_t>(text.size()),
                   &error);
  }

  bool findNext() {
    if (isSimple) return findNextSimple();
    UErrorCode error = U_ZERO_ERROR;
    return uregex_findNext(expression.get(), &error) && U_SUCCESS(error);
  }

  bool findNextSimple() {
    if (nextStart > text.size() || !simplePattern->find(text, nextStart)) return false;
    nextStart = simplePattern->groupEnd(0);
    if (simplePattern->groupStart(0) == nextStart) ++nextStart;  // behind an empty match
    return true;
  }

  // Empty for a group that took no part.
  std::u16string_view groupText(int group) const {
    if (isSimple) {
      const std::size_t start = simplePattern->groupStart(group);
      return {text.data() + start, simplePattern->groupEnd(group) - start};
    }
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t start = uregex_start(expression.get(), group, &error);
    const std::int32_t end = uregex_end(expression.get(), group, &error);
    if (U_FAILURE(error) || start < 0) return {};
    return text.substr(start, end - start);
  }
};

RegularExpression::RegularExpression(std::unique_ptr<State> state) : state_(std::move(state)) {}
RegularExpression::RegularExpression(RegularExpression&&) noexcept = default;
RegularExpression& RegularExpression::operator=(RegularExpression&&) noexcept = default;
RegularExpression::~RegularExpression() = default;

std::optional<RegularExpression> RegularExpression::compiled(std::u16string_view pattern,
                                                             CaseSensitivity caseSensitivity) {
  if (pattern.empty()) return std::nullopt;
  UErrorCode error = U_ZERO_ERROR;
  const std::uint32_t flags = caseSensitivity == CaseSensitivity::Insensitive ? UREGEX_CASE_INSENSITIVE : 0;
  auto state = std::make_unique<State>();
  state->expression.reset(
      uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), flags, nullptr, &error));
  uregex_setTimeLimit(state->expression.get(), kTimeLimitForEachText, &error);
  state->groupCount = uregex_groupCount(state->expression.get(), &error);
  if (U_FAILURE(error)) return std::nullopt;
  state->simplePattern = SimplePattern::recognised(pattern, caseSensitivity);
  return RegularExpression(std::move(state));
}

bool RegularExpression::hasMatch(std::u16string_view text) {
  state_->setText(text);
  return state_->findNext();
}

std::size_t RegularExpression::appendReplacingMatches(std::u16string_view text,
                                                      std::u16string_view templateText, std::u16string& out) {
  if (!state_->readTemplate.isReadFrom(templateText))
    state_->readTemplate.read(templateText, state_->groupCount);
  state_->setText(text);
  std::size_t matches = 0;
  std::size_t copied = 0;
  for (; state_->findNext(); ++matches) {
    const std::u16string_view match = state_->groupText(0);
    const std::size_t start = static_cast<std::size_t>(match.data() - text.data());
    out.append(text.substr(copied, start - copied));
    copied = start + match.size();
    state_->readTemplate.appendTo(out, [&](int group) { return state_->groupText(group); });
  }
  if (matches > 0) out.append(text.substr(copied));
  return matches;
}

}  // namespace quillet
