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

constexpr std::u16string_view kInputFileTypes[] = {localizable(u"Tab-delimited"), localizable(u"CSV"),
                                                   localizable(u"Pipe-delimited")};
constexpr std::u16string_view kOutputFileTypes[] = {localizable(u"Tab"), localizable(u"CSV"),
                                                    localizable(u"Pipe")};
constexpr std::u16string_view kLineEndings[] = {
    localizable(u"OS X / Unix (LF)"), localizable(u"Classic Mac OS (CR)"), localizable(u"Windows (CRLF)")};
constexpr std::u16string_view kWriteModes[] = {localizable(u"Create New"), localizable(u"Overwrite"),
                                               localizable(u"Append")};
constexpr std::u16string_view kLineSkipTypes[] = {
    localizable(u"If Blank"),     localizable(u"If Contains"),
    localizable(u"Line Numbers"), localizable(u"If Starts With"),
    localizable(u"If Ends With"), localizable(u"If Matches Regular Expression")};
constexpr std::u16string_view kTrimTypes[] = {localizable(u"String"), localizable(u"Characters"),
                                              localizable(u"Whitespace"), localizable(u"Regular Expression")};
constexpr std::u16string_view kTrimFromWhere[] = {localizable(u"From Both Sides"), localizable(u"From Start"),
                                                  localizable(u"From End")};
constexpr std::u16string_view kReplaceTypes[] = {localizable(u"String"), localizable(u"Regular Expression")};
constexpr std::u16string_view kFillTypes[] = {localizable(u"String"), localizable(u"Sequence")};
// Samples of one moment. The third date is worded as it is meant.
constexpr std::u16string_view kDateSamples[] = {localizable(u"8/16/18"), localizable(u"Aug 16, 2018"),
                                                localizable(u"August 2016, 2018"), localizable(u"2018-08-16"),
                                                localizable(u"2018-08-16 -0400")};
constexpr std::u16string_view kTimeSamples[] = {localizable(u"8:13 PM"),        localizable(u"8:13:01 PM"),
                                                localizable(u"8:13:01 PM EDT"), localizable(u"20:13"),
                                                localizable(u"20:13:01"),       localizable(u"20:13 -0400"),
                                                localizable(u"20:13:01 -0400")};

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
