#include "operations/labels.h"

#include <span>
#include <string_view>

#include "operations/operation_codes.h"
#include "platform/localization.h"

namespace quillet {

namespace {

// The label of the value, when the first of them belongs to firstValue.
std::u16string label(std::int64_t value, std::int64_t firstValue,
                     std::span<const std::u16string_view> labels) {
  if (value < firstValue || value - firstValue >= static_cast<std::int64_t>(labels.size()))
    return localized(u"(Unknown)");
  return localized(labels[static_cast<std::size_t>(value - firstValue)]);
}

constexpr std::u16string_view kInputFileTypes[] = {u"Tab-delimited", u"CSV", u"Pipe-delimited"};
constexpr std::u16string_view kOutputFileTypes[] = {u"Tab", u"CSV", u"Pipe"};
constexpr std::u16string_view kLineEndings[] = {u"OS X / Unix (LF)", u"Classic Mac OS (CR)",
                                                u"Windows (CRLF)"};
constexpr std::u16string_view kWriteModes[] = {u"Create New", u"Overwrite", u"Append"};
constexpr std::u16string_view kLineSkipTypes[] = {u"If Blank",     u"If Contains",
                                                  u"Line Numbers", u"If Starts With",
                                                  u"If Ends With", u"If Matches Regular Expression"};
constexpr std::u16string_view kTrimTypes[] = {u"String", u"Characters", u"Whitespace", u"Regular Expression"};
constexpr std::u16string_view kTrimFromWhere[] = {u"From Both Sides", u"From Start", u"From End"};
constexpr std::u16string_view kReplaceTypes[] = {u"String", u"Regular Expression"};
constexpr std::u16string_view kFillTypes[] = {u"String", u"Sequence"};
// Samples of one moment. The third date is worded as it is meant.
constexpr std::u16string_view kDateSamples[] = {u"8/16/18", u"Aug 16, 2018", u"August 2016, 2018",
                                                u"2018-08-16", u"2018-08-16 -0400"};
constexpr std::u16string_view kTimeSamples[] = {u"8:13 PM",  u"8:13:01 PM",  u"8:13:01 PM EDT", u"20:13",
                                                u"20:13:01", u"20:13 -0400", u"20:13:01 -0400"};

}  // namespace

std::u16string stringForInputFileType(std::int64_t value) {
  return label(value, 1, kInputFileTypes);
}
std::u16string stringForOutputFileType(std::int64_t value) {
  return label(value, 1, kOutputFileTypes);
}
std::u16string stringForOutputLineEndings(std::int64_t value) {
  return label(value, 1, kLineEndings);
}
std::u16string stringForOutputFileWriteMode(std::int64_t value) {
  return label(value, 1, kWriteModes);
}
std::u16string stringForLineSkipType(std::int64_t value) {
  return label(value, 0, kLineSkipTypes);
}
std::u16string stringForTrimType(std::int64_t value) {
  return label(value, 0, kTrimTypes);
}
std::u16string stringForTrimFromWhere(std::int64_t value) {
  return label(value, 0, kTrimFromWhere);
}
std::u16string stringForReplaceType(std::int64_t value) {
  return label(value, 0, kReplaceTypes);
}
std::u16string stringForFillType(std::int64_t value) {
  return label(value, 0, kFillTypes);
}

std::u16string stringForReformatAs(std::int64_t value, std::int64_t withFormat) {
  if (value == static_cast<std::int64_t>(ReformatAs::Date)) return label(withFormat, 1, kDateSamples);
  if (value == static_cast<std::int64_t>(ReformatAs::Time)) return label(withFormat, 1, kTimeSamples);
  return localized(u"(Unknown)");
}

}  // namespace quillet
