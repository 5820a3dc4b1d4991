#include "clipboard/separators.h"

namespace quillet {

namespace {

constexpr std::int64_t kOther = 4;

// What the settings of one separator are called.
struct SeparatorKeys {
  const char* code;
  const char* other;
};

constexpr SeparatorKeys kOldColumnKeys{"OldColumnSeparator", "OldColumnOtherSeparator"};
constexpr SeparatorKeys kNewColumnKeys{"NewColumnSeparator", "NewColumnOtherSeparator"};
constexpr SeparatorKeys kOldLineKeys{"OldLineSeparator", "OldLineOtherSeparator"};
constexpr SeparatorKeys kNewLineKeys{"NewLineSeparator", "NewLineOtherSeparator"};

}  // namespace

std::optional<std::u16string> stringForColumnSeparatorCode(std::int64_t code, const std::string& otherKey,
                                                           const UserDefaults& defaults) {
  switch (code) {
    case 1:
      return u"\t";
    case 2:
      return u"|";
    case 3:
      return u",";
    case kOther:
      return defaults.stringForKey(otherKey);
    default:
      return std::nullopt;
  }
}

std::optional<std::u16string> stringForLineSeparatorCode(std::int64_t code, const std::string& otherKey,
                                                         const UserDefaults& defaults) {
  switch (code) {
    case 1:
      return u"\n";
    case 2:
      return u"\r\n";
    case 3:
      return u"\r";
    case kOther:
      return defaults.stringForKey(otherKey);
    default:
      return std::nullopt;
  }
}

std::optional<std::u16string> stringForColumnSeparator(bool overrideColumnSeparator,
                                                       const UserDefaults& defaults) {
  const SeparatorKeys& keys = overrideColumnSeparator ? kNewColumnKeys : kOldColumnKeys;
  return stringForColumnSeparatorCode(defaults.integerForKey(keys.code), keys.other, defaults);
}

std::optional<std::u16string> stringForLineSeparator(bool overrideRowSeparator,
                                                     const UserDefaults& defaults) {
  const SeparatorKeys& keys = overrideRowSeparator ? kNewLineKeys : kOldLineKeys;
  return stringForLineSeparatorCode(defaults.integerForKey(keys.code), keys.other, defaults);
}

}  // namespace quillet
