#include "operations/labels.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "platform/localization.h"

namespace quillet {
namespace {

using Label = std::u16string (*)(std::int64_t);

TEST(Labels, EveryValueOfATableHasItsLabelAndNoOtherHasOne) {
  struct Case {
    Label label;
    std::int64_t first;
    std::vector<std::u16string> labels;
  };
  const Case cases[] = {
      {stringForInputFileType, 1, {u"Tab-delimited", u"CSV", u"Pipe-delimited"}},
      {stringForOutputFileType, 1, {u"Tab", u"CSV", u"Pipe"}},
      {stringForOutputLineEndings, 1, {u"OS X / Unix (LF)", u"Classic Mac OS (CR)", u"Windows (CRLF)"}},
      {stringForOutputFileWriteMode, 1, {u"Create New", u"Overwrite", u"Append"}},
      {stringForLineSkipType,
       0,
       {u"If Blank", u"If Contains", u"Line Numbers", u"If Starts With", u"If Ends With",
        u"If Matches Regular Expression"}},
      {stringForTrimType, 0, {u"String", u"Characters", u"Whitespace", u"Regular Expression"}},
      {stringForTrimFromWhere, 0, {u"From Both Sides", u"From Start", u"From End"}},
      {stringForReplaceType, 0, {u"String", u"Regular Expression"}},
      {stringForFillType, 0, {u"String", u"Sequence"}},
      {[](std::int64_t value) { return stringForReformatAs(1, value); },
       1,
       {u"8/16/18", u"Aug 16, 2018", u"August 2016, 2018", u"2018-08-16", u"2018-08-16 -0400"}},
      {[](std::int64_t value) { return stringForReformatAs(2, value); },
       1,
       {u"8:13 PM", u"8:13:01 PM", u"8:13:01 PM EDT", u"20:13", u"20:13:01", u"20:13 -0400",
        u"20:13:01 -0400"}},
      {[](std::int64_t value) { return stringForReformatAs(0, value); }, 0, {}},
      {[](std::int64_t value) { return stringForReformatAs(3, value); }, 0, {}},
      {[](std::int64_t value) { return stringForReformatAs(4, value); }, 0, {}},
      {[](std::int64_t value) { return stringForReformatAs(5, value); }, 0, {}},
  };
  for (const Case& one : cases) {
    const auto end = one.first + static_cast<std::int64_t>(one.labels.size());
    for (std::int64_t value = -3; value < 12; ++value) {
      const bool known = value >= one.first && value < end;
      EXPECT_EQ(one.label(value),
                known ? one.labels[static_cast<std::size_t>(value - one.first)] : u"(Unknown)")
          << "table " << &one - cases << ", value " << value;
    }
    EXPECT_EQ(one.label(std::numeric_limits<std::int64_t>::min()), u"(Unknown)");
    EXPECT_EQ(one.label(std::numeric_limits<std::int64_t>::max()), u"(Unknown)");
  }
}

TEST(Labels, GoThroughTheTranslator) {
  setTranslator([](std::u16string_view key) { return u"<" + std::u16string(key) + u">"; });
  EXPECT_EQ(stringForTrimType(2), u"<Whitespace>");
  EXPECT_EQ(stringForTrimType(9), u"<(Unknown)>");
  EXPECT_EQ(stringForReformatAs(1, 1), u"<8/16/18>");
  setTranslator(nullptr);
}

}  // namespace
}  // namespace quillet
