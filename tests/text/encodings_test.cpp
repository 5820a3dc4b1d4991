#include "text/encodings.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(Encodings, LabelsAndTags) {
  struct Case {
    std::int64_t code;
    std::u16string_view label;
    std::int64_t tag;
    std::int64_t codeOfTag;
  };
  const Case cases[] = {
      {4, u"UTF-8", 1, 4},       {12, u"Windows CP1252", 2, 12},
      {30, u"Mac Roman", 3, 30}, {1, u"ASCII", 4, 1},
      {0, u"(Unknown)", 1, 4},   {-4, u"(Unknown)", 1, 4},
      {2, u"(Unknown)", 1, 4},   {3, u"(Unknown)", 1, 4},
      {10, u"(Unknown)", 1, 4},  {1LL << 32 | 4, u"(Unknown)", 1, 4},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(stringForEncoding(one.code), one.label) << one.code;
    EXPECT_EQ(tagForEncodingCode(one.code), one.tag) << one.code;
    EXPECT_EQ(encodingCodeForTag(tagForEncodingCode(one.code)), one.codeOfTag) << one.code;
  }
}

TEST(Encodings, AnUnknownTagIsUtf8) {
  for (const std::int64_t tag : {-1, 0, 5, 12, 30}) EXPECT_EQ(encodingCodeForTag(tag), 4) << tag;
}

}  // namespace
}  // namespace quillet
