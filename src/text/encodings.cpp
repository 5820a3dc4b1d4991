#include "text/encodings.h"

#include <string_view>

#include "platform/localization.h"

namespace quillet {

namespace {

struct EncodingEntry {
  Encoding encoding;
  std::u16string_view label;
  std::int64_t menuTag;

  std::int64_t code() const { return static_cast<std::int64_t>(encoding); }
};

constexpr EncodingEntry kEncodings[] = {
    {Encoding::Utf8, localizable(u"UTF-8"), 1},
    {Encoding::WindowsCP1252, localizable(u"Windows CP1252"), 2},
    {Encoding::MacOSRoman, localizable(u"Mac Roman"), 3},
    {Encoding::Ascii, localizable(u"ASCII"), 4},
};

}  // namespace

std::u16string stringForEncoding(std::int64_t code) {
  for (const EncodingEntry& entry : kEncodings)
    if (entry.code() == code) return localized(entry.label);
  return localized(u"(Unknown)");
}

std::int64_t tagForEncodingCode(std::int64_t code) {
  for (const EncodingEntry& entry : kEncodings)
    if (entry.code() == code) return entry.menuTag;
  return 1;
}

std::int64_t encodingCodeForTag(std::int64_t tag) {
  for (const EncodingEntry& entry : kEncodings)
    if (entry.menuTag == tag) return entry.code();
  return kDefaultEncodingCode;
}

}  // namespace quillet
