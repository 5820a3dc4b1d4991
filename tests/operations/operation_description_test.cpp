#include "operations/operation_description.h"

#include <gtest/gtest.h>
#include <optional>

#include "operations/operation_codes.h"
#include "platform/localization.h"

namespace quillet {
namespace {

using Description = std::array<std::u16string, 3>;

Description describe(const OperationRecord& record) {
  return descriptionForOperation(record, nullptr, nullptr);
}

// One record and the detail that it reads as.
struct DetailCase {
  OperationRecord record;
  std::u16string detail;
};

void expectDetails(std::initializer_list<DetailCase> cases) {
  for (const DetailCase& one : cases)
    EXPECT_EQ(describe(one.record)[2], one.detail)
        << "row " << &one - cases.begin() << " of code " << one.record.code();
}

TEST(OperationDescription, TitleAndIcon) {
  struct Case {
    std::int64_t code;
    std::u16string title;
    std::u16string icon;
  };
  const Case cases[] = {
      {101, u"Initial", u"split-path"},
      {102, u"Split", u"split-path"},
      {150, u"Replace Character", u"search"},
      {201, u"Skip Line", u"dance-steps"},
      {202, u"Trim Line", u"scissors"},
      {203, u"Replace Line", u"search"},
      {251, u"Join Lines", u"join-lines"},
      {301, u"Trim Column", u"scissors"},
      {302, u"Replace Column", u"search"},
      {303, u"Reformat Column", u"puzzle-piece"},
      {311, u"Trim Column", u"scissors"},
      {312, u"Replace Cells", u"search"},
      {314, u"Fill Cells", u"paint-roller"},
      {351, u"Set Initial Number of Columns", u"count"},
      {352, u"Rearrange Columns", u"shuffle"},
      {353, u"Join Columns", u"join-columns"},
      {361, u"Set Final Number of Columns", u"count"},
      {401, u"Edit Cell", u"compose"},
      {402, u"Delete Column from the Left", u"trash"},
      {403, u"Delete Column from the Right", u"trash"},
      {404, u"Delete Line from the Top", u"trash"},
      {405, u"Delete Line from the Bottom", u"trash"},
      {406, u"Delete Selected Lines", u"trash"},
      {407, u"Delete Selected Columns", u"trash"},
      {408, u"Add Column to the Left", u"plus"},
      {409, u"Add Column to the Right", u"plus"},
      {410, u"Add Line to the Top", u"plus"},
      {411, u"Add Line to the Bottom", u"plus"},
      {412, u"Move Column Left", u"shuffle"},
      {413, u"Move Column Right", u"shuffle"},
      {414, u"Move Line Up", u"shuffle"},
      {415, u"Move Line Down", u"shuffle"},
      {416, u"Flip Horizontal", u"repeat"},
      {417, u"Flip Vertical", u"repeat"},
      {418, u"Flip Diagonal", u"repeat"},
      {419, u"Merge Left", u"merge"},
      {420, u"Merge Right", u"merge"},
      {421, u"Merge Up", u"merge"},
      {422, u"Merge Down", u"merge"},
      {423, u"Join Lines", u"join-lines"},
      {424, u"Join Columns", u"join-columns"},
      {901, u"Final", u"join-path"},
      {902, u"Join", u"join-path"},
      {999, u"Undo Last", u"refresh-1"},
  };
  std::int64_t next = -2;
  for (const Case& one : cases) {
    // All codes between two assigned ones are unassigned.
    for (; next < one.code; ++next)
      EXPECT_EQ(describe({{"Code", next}, {"Arg1", u"x"}}), Description{}) << next;
    next = one.code + 1;
    const Description description = describe({{"Code", one.code}});
    EXPECT_EQ(description[0], one.title) << one.code;
    EXPECT_EQ(description[1], one.icon) << one.code;
  }
  EXPECT_EQ(describe({{"Code", 1000}}), Description{});
  EXPECT_EQ(describe({}), Description{});
}

TEST(OperationDescription, TheCodeMayBeAText) {
  EXPECT_EQ(describe({{"Code", u"202"}})[0], u"Trim Line");
}

TEST(OperationDescription, Initial) {
  expectDetails({
      {{{"Code", 101}}, u"Decode as UTF-8"},
      {{{"Code", 101}, {"IntArg2", 12}}, u"Decode as Windows CP1252"},
      {{{"Code", 101}, {"IntArg2", 30}}, u"Decode as Mac Roman"},
      {{{"Code", 101}, {"IntArg2", 1}}, u"Decode as ASCII"},
      {{{"Code", 101}, {"IntArg2", 0}}, u"Decode as (Unknown)"},
      {{{"Code", 101}, {"IntArg1", 1}, {"IntArg2", 4}, {"Arg1", u"\n"}, {"Arg2", u","}},
       u"Decode as UTF-8; Split contents into lines by \"\\n\""},
      {{{"Code", 101}, {"IntArg1", 16}, {"Arg1", u"\n"}, {"Arg2", u"\t"}},
       u"Decode as UTF-8; Split lines Into columns by \"\\t\""},
      {{{"Code", 101}, {"IntArg1", 49}, {"Arg1", u"\r\n"}, {"Arg2", u"|"}},
       u"Decode as UTF-8; Split contents into lines by \"\\r\\n\"; Split lines Into columns by \"|\""},
      {{{"Code", 101}, {"IntArg1", 32}, {"Arg1", u"\n"}, {"Arg2", u"|"}}, u"Decode as UTF-8"},
      {{{"Code", 101}, {"IntArg1", 17}},
       u"Decode as UTF-8; Split contents into lines by \"\"; Split lines Into columns by \"\""},
  });
}

TEST(OperationDescription, ReplaceCharacter) {
  expectDetails({
      {{{"Code", 150}}, u"Characters \"\" with \"\""},
      {{{"Code", 150}, {"IntArg2", 0}, {"Arg1", u"ab"}, {"Arg2", u"c"}}, u"Characters \"ab\" with \"c\""},
      {{{"Code", 150}, {"IntArg2", 1}, {"Arg1", u"ab"}, {"Arg2", u"c"}},
       u"ASCII Control Character with \"c\""},
      {{{"Code", 150}, {"IntArg2", 2}, {"Arg1", u"ab"}, {"Arg2", u"c"}}, u"Uncommon Character with \"c\""},
      {{{"Code", 150}, {"IntArg2", 3}, {"Arg1", u"ab"}, {"Arg2", u"c"}}, u""},
      {{{"Code", 150}, {"IntArg1", 0}, {"Arg1", u"ab"}, {"Arg2", u"c"}}, u"Characters \"ab\" with \"c\""},
      {{{"Code", 150}, {"Arg1", u"\n"}, {"Arg2", u"\t"}}, u"Characters \"\n\" with \"\t\""},  // as it stands
  });
}

TEST(OperationDescription, SkipLine) {
  const auto skip = [](std::int64_t type, std::int64_t flags) {
    return OperationRecord{{"Code", 201}, {"IntArg1", flags}, {"IntArg2", type}, {"Arg1", u"x"}};
  };
  expectDetails({
      {{{"Code", 201}}, u"Skip If Blank"},
      {skip(0, 0), u"Skip If Blank"},
      {skip(0, 1), u"Skip If Blank"},
      {skip(1, 0), u"Skip If Contains \"x\""},
      {skip(1, 1), u"Skip If Contains \"x\"; Case-sensitive"},
      {skip(2, 0), u"Skip Line Numbers \"x\""},
      {skip(2, 1), u"Skip Line Numbers \"x\""},
      {skip(3, 0), u"Skip If Starts With \"x\""},
      {skip(3, 1), u"Skip If Starts With \"x\"; Case-sensitive"},
      {skip(4, 0), u"Skip If Ends With \"x\""},
      {skip(4, 1), u"Skip If Ends With \"x\"; Case-sensitive"},
      {skip(5, 0), u"Skip If Matches Regular Expression \"x\""},
      {skip(5, 3), u"Skip If Matches Regular Expression \"x\"; Case-sensitive"},
      {skip(5, 2), u"Skip If Matches Regular Expression \"x\""},  // another bit
      {skip(6, 1), u"Skip (Unknown)"},
      {skip(-1, 1), u"Skip (Unknown)"},
  });
}

TEST(OperationDescription, TrimLine) {
  const auto trim = [](std::int64_t type, std::int64_t where, std::int64_t flags) {
    return OperationRecord{
        {"Code", 202}, {"IntArg1", flags}, {"IntArg2", type}, {"IntArg3", where}, {"Arg1", u"x"}};
  };
  expectDetails({
      {{{"Code", 202}}, u"String \"\" From Both Sides"},
      {trim(0, 0, 0), u"String \"x\" From Both Sides"},
      {trim(0, 1, 0), u"String \"x\" From Start"},
      {trim(0, 2, 1), u"String \"x\" From End; Case-sensitive"},
      {trim(0, 3, 0), u"String \"x\" (Unknown)"},
      {trim(1, 0, 0), u"Characters \"x\" From Both Sides"},
      {trim(1, 2, 1), u"Characters \"x\" From End; Case-sensitive"},
      {trim(2, 1, 0), u"Whitespace From Start"},
      {trim(2, 1, 1), u"Whitespace From Start"},
      {trim(3, 1, 0), u"Regular Expression \"x\""},
      {trim(3, 1, 1), u"Regular Expression \"x\"; Case-sensitive"},
      {trim(4, 1, 1), u"(Unknown) From Start"},
  });
}

TEST(OperationDescription, ReplaceLine) {
  const auto replace = [](std::int64_t type, std::int64_t flags) {
    return OperationRecord{
        {"Code", 203}, {"IntArg1", flags}, {"IntArg2", type}, {"Arg1", u"a"}, {"Arg2", u"b"}};
  };
  expectDetails({
      {{{"Code", 203}}, u"String \"\" with \"\""},
      {replace(0, 0), u"String \"a\" with \"b\""},
      {replace(0, 1), u"String \"a\" with \"b\"; Case-sensitive"},
      {replace(1, 0), u"Regular Expression \"a\" with \"b\""},
      {replace(1, 1), u"Regular Expression \"a\" with \"b\"; Case-sensitive"},
      {replace(2, 1), u""},
      {replace(-1, 1), u""},
  });
}

TEST(OperationDescription, JoinLines) {
  expectDetails({
      {{{"Code", 251}}, u"Number of lines to join: 0; Separated by \"\""},
      {{{"Code", 251}, {"IntArg1", 3}, {"Arg1", u", "}}, u"Number of lines to join: 3; Separated by \", \""},
      {{{"Code", 251}, {"IntArg1", 4294967299}, {"Arg1", u"\n"}},
       u"Number of lines to join: 4294967299; Separated by \"\n\""},  // the separator as it stands
  });
}

TEST(OperationDescription, TrimColumnAndTrimOfCells) {
  struct Case {
    std::int64_t type;
    std::int64_t where;
    std::int64_t flags;
    std::u16string beforePlace;
    std::u16string afterPlaceWord;  // nothing where the place is left out
  };
  const Case cases[] = {
      {0, 0, 0, u"String \"x\" From Both Sides in ", u"\"2\""},
      {0, 1, 1, u"String \"x\" From Start in ", u"\"2\"; Case-sensitive"},
      {1, 2, 0, u"Characters \"x\" From End in ", u"\"2\""},
      {1, 2, 1, u"Characters \"x\" From End in ", u"\"2\"; Case-sensitive"},
      {2, 2, 0, u"Whitespace From End in ", u"\"2\""},
      {2, 2, 1, u"Whitespace From End in ", u"\"2\""},
      {3, 0, 0, u"Regular Expression \"x\"", u""},
      {3, 0, 1, u"Regular Expression \"x\"; Case-sensitive", u""},
      {4, 0, 1, u"(Unknown) From Both Sides in ", u"\"2\""},
      {0, 7, 0, u"String \"x\" (Unknown) in ", u"\"2\""},
  };
  for (const Case& one : cases) {
    for (const std::int64_t code : {301, 311}) {
      const OperationRecord record{{"Code", code},         {"IntArg1", one.flags}, {"IntArg2", one.type},
                                   {"IntArg3", one.where}, {"Arg1", u"2"},         {"Arg2", u"x"}};
      const std::u16string word = one.afterPlaceWord.empty() || code == 311 ? u"" : u"columns ";
      EXPECT_EQ(describe(record)[2], one.beforePlace + word + one.afterPlaceWord)
          << code << " row " << &one - cases;
    }
  }
}

TEST(OperationDescription, ReplaceColumnAndReplaceCells) {
  const auto replace = [](std::int64_t code, std::int64_t type, std::int64_t flags) {
    return OperationRecord{{"Code", code},    {"IntArg1", flags}, {"IntArg2", type},
                           {"Arg1", u"1, 3"}, {"Arg2", u"a"},     {"Arg3", u"b"}};
  };
  expectDetails({
      {{{"Code", 302}}, u"String \"\" with \"\" in columns \"\""},
      {replace(302, 0, 0), u"String \"a\" with \"b\" in columns \"1, 3\""},
      {replace(302, 0, 1), u"String \"a\" with \"b\" in columns \"1, 3\"; Case-sensitive"},
      {replace(302, 1, 0), u"Regular Expression \"a\" with \"b\" in columns \"1, 3\""},
      {replace(302, 1, 1), u"Regular Expression \"a\" with \"b\" in columns \"1, 3\"; Case-sensitive"},
      {replace(302, 2, 1), u""},
      {replace(312, 0, 0), u"String \"a\" with \"b\" in \"1, 3\""},
      {replace(312, 0, 1), u"String \"a\" with \"b\" in \"1, 3\"; Case-sensitive"},
      {replace(312, 1, 0), u"Regular Expression \"a\" with \"b\" in \"1, 3\""},
      {replace(312, 1, 1), u"Regular Expression \"a\" with \"b\" in \"1, 3\"; Case-sensitive"},
      {replace(312, 9, 1), u""},
  });
}

TEST(OperationDescription, ReformatColumn) {
  const auto reformat = [](std::int64_t type, std::int64_t first, std::int64_t second) {
    return OperationRecord{{"Code", 303},       {"IntArg2", type}, {"IntArg3", first},
                           {"IntArg4", second}, {"Arg1", u"1"},    {"Arg2", u"n/a"}};
  };
  OperationRecord withFlag = reformat(4, 1, 1);
  withFlag.set("IntArg1", 1);
  OperationRecord withFlagOnly = reformat(9, 1, 1);
  withFlagOnly.set("IntArg1", 1);
  OperationRecord digitsAsNumber = reformat(5, 1, 1);
  digitsAsNumber.set("Arg5", 2);
  OperationRecord digitsAsText = reformat(5, 1, 1);
  digitsAsText.set("Arg5", u"2");
  expectDetails({
      {{{"Code", 303}}, u"Reformat as Date with format \"8/16/18\" in columns \"\""},
      {{{"Code", 303}, {"IntArg2", 2}, {"Arg1", u"4"}},
       u"Reformat as Time with format \"8:13 PM\" in columns \"4\""},
      {{{"Code", 303}, {"IntArg2", 3}},
       u"Reformat as Date Time with format \"8/16/18 8:13 PM\" in columns \"\""},
      {reformat(1, 4, 1), u"Reformat as Date with format \"2018-08-16\" in columns \"1\""},
      {reformat(1, 6, 1), u"Reformat as Date with format \"(Unknown)\" in columns \"1\""},
      {reformat(2, 7, 1), u"Reformat as Time with format \"20:13:01 -0400\" in columns \"1\""},
      {reformat(2, 0, 1), u"Reformat as Time with format \"(Unknown)\" in columns \"1\""},
      {reformat(3, 3, 3),
       u"Reformat as Date Time with format \"August 2016, 2018 8:13:01 PM EDT\" in columns \"1\""},
      {reformat(3, 9, 5), u"Reformat as Date Time with format \"(Unknown) 20:13:01\" in columns \"1\""},
      {reformat(4, 1, 1), u"Reformat as Integer in columns \"1\""},
      {reformat(5, 1, 1), u"Reformat as Number with \"0\" digits after decimal point in columns \"1\""},
      {digitsAsNumber, u"Reformat as Number with \"2\" digits after decimal point in columns \"1\""},
      {digitsAsText, u"Reformat as Number with \"2\" digits after decimal point in columns \"1\""},
      {reformat(0, 1, 1), u""},
      {reformat(6, 1, 1), u""},
      {withFlag, u"Reformat as Integer in columns \"1\"; Use \"n/a\" if cannot be reformatted"},
      {withFlagOnly, u"Use \"n/a\" if cannot be reformatted"},
  });
}

TEST(OperationDescription, NumberOfColumns) {
  for (const std::int64_t code : {351, 361}) {
    expectDetails({
        {{{"Code", code}}, u"Number of columns: -1; Text for added columns \"\""},
        {{{"Code", code}, {"IntArg1", 5}, {"Arg1", u"x"}},
         u"Number of columns: 5; Text for added columns \"x\""},
        {{{"Code", code}, {"IntArg1", 4294967301}}, u"Number of columns: 5; Text for added columns \"\""},
    });
  }
}

TEST(OperationDescription, RearrangeAndJoinColumns) {
  const auto join = [](const char16_t* groups) {
    return OperationRecord{{"Code", 353}, {"Arg1", groups}, {"Arg2", u"\t"}};
  };
  expectDetails({
      {{{"Code", 352}}, u""},
      {{{"Code", 352}, {"Arg1", u"3, 1, 2"}}, u"3, 1, 2"},
      {{{"Code", 353}}, u"(None); Separated by \"\""},
      {join(u"1, 2, 3"), u"(None); Separated by \"\t\""},      // the separator as it stands
      {join(u"1, 2 + 3, 4"), u" 2 + 3; Separated by \"\t\""},  // blanks included
      {join(u"1 + 2, 3, 4 + 5"), u"1 + 2,  4 + 5; Separated by \"\t\""},
      {join(u"+"), u"+; Separated by \"\t\""},
  });
}

TEST(OperationDescription, Final) {
  struct Case {
    std::optional<std::int64_t> initialFlags;  // nothing: no initial record
    OperationRecord record;
    std::u16string detail;
  };
  const OperationRecord plain{{"Code", 901}};
  const OperationRecord full{{"Code", 901},     {"IntArg1", 3},  {"IntArg2", 30},   {"IntArg3", 3},
                             {"Arg1", u"\r\n"}, {"Arg2", u"\t"}, {"Arg3", u"/out"}, {"Arg4", u"a.txt"}};
  const auto mode = [](std::int64_t value) {
    return OperationRecord{{"Code", 901}, {"IntArg3", value}, {"Arg3", u""}, {"Arg4", u"a.txt"}};
  };
  const Case cases[] = {
      {std::nullopt, plain, u"Encode as UTF-8; Write to \"output.txt\""},
      {std::nullopt, full, u"Encode as Mac Roman; Append to \"/out/a.txt\""},
      {0, full, u"Encode as Mac Roman; Append to \"/out/a.txt\""},
      {1, full, u"Join lines with \"\\r\\n\"; Encode as Mac Roman; Append to \"/out/a.txt\""},
      {16, full, u"Join columns with \"\\t\"; Encode as Mac Roman; Append to \"/out/a.txt\""},
      {49, full,
       u"Join columns with \"\\t\"; Join lines with \"\\r\\n\"; Encode as Mac Roman; Append to "
       u"\"/out/a.txt\""},
      {32, plain, u"Encode as UTF-8; Write to \"output.txt\""},
      {17, plain, u"Join columns with \"\"; Join lines with \"\"; Encode as UTF-8; Write to \"output.txt\""},
      {std::nullopt, mode(1), u"Encode as UTF-8; Write to \"a.txt\""},
      {std::nullopt, mode(2), u"Encode as UTF-8; Write to \"a.txt\""},
      {std::nullopt, mode(3), u"Encode as UTF-8; Append to \"a.txt\""},
      {std::nullopt, mode(4), u"Encode as UTF-8; Write to \"a.txt\""},
      {std::nullopt,
       {{"Code", 901}, {"IntArg2", 5}, {"Arg3", u"/out"}},
       u"Encode as (Unknown); Write to \"/out/output.txt\""},
  };
  for (const Case& one : cases) {
    const OperationRecord initial{{"Code", 101}, {"IntArg1", one.initialFlags.value_or(0)}};
    const Description description =
        descriptionForOperation(one.record, one.initialFlags ? &initial : nullptr, nullptr);
    EXPECT_EQ(description[2], one.detail) << "row " << &one - cases;
  }
}

TEST(OperationDescription, TheFinalRecordIsNeverRead) {
  const OperationRecord initial{{"Code", 101}, {"IntArg1", 17}};
  const OperationRecord final{{"Code", 901}, {"Arg1", u"x"}, {"Arg4", u"y"}};
  EXPECT_EQ(descriptionForOperation(initial, &initial, &final), describe(initial));
}

TEST(OperationDescription, ClipboardSplitAndJoin) {
  expectDetails({
      {{{"Code", 102}}, u""},
      {{{"Code", 102}, {"IntArg1", 1}, {"Arg1", u"\n"}, {"Arg2", u"\t"}},
       u"Split contents into lines by \"\\n\""},
      {{{"Code", 102}, {"IntArg1", 16}, {"Arg1", u"\n"}, {"Arg2", u"\t"}},
       u"Split lines Into columns by \"\\t\""},
      {{{"Code", 102}, {"IntArg1", 17}, {"Arg1", u"\n"}, {"Arg2", u"\t"}},
       u"Split contents into lines by \"\\n\"; Split lines Into columns by \"\\t\""},
      {{{"Code", 102}, {"IntArg1", 32}, {"Arg1", u"\n"}, {"Arg2", u"\t"}}, u""},
      {{{"Code", 902}}, u"Join columns with \"\"; Join lines with \"\""},
      {{{"Code", 902}, {"IntArg1", 1}, {"Arg1", u"\n"}, {"Arg2", u"\t"}},
       u"Join columns with \"\\t\"; Join lines with \"\\n\""},
  });
}

TEST(OperationDescription, FillAndEditCell) {
  expectDetails({
      {{{"Code", 314}}, u"String with \"\" in \"\""},
      {{{"Code", 314}, {"IntArg1", 0}, {"Arg1", u"x"}, {"Arg2", u"1:2"}}, u"String with \"x\" in \"1:2\""},
      {{{"Code", 314}, {"IntArg1", 1}, {"Arg1", u"x"}, {"Arg2", u"1:2"}}, u"Sequence with \"x\" in \"1:2\""},
      {{{"Code", 314}, {"IntArg1", 2}, {"Arg1", u"x"}, {"Arg2", u"1:2"}}, u""},
      {{{"Code", 401}}, u"Set value at line 0 column 0 to \"\""},
      {{{"Code", 401}, {"IntArg1", 0}, {"IntArg2", 4}, {"Arg1", u"x"}},
       u"Set value at line 1 column 5 to \"x\""},
      {{{"Code", 401}, {"IntArg1", u"9223372036854775807"}},
       u"Set value at line -9223372036854775808 column 0 to \"\""},
  });
}

TEST(OperationDescription, ClipboardPlaces) {
  struct Case {
    std::u16string detail;
    std::initializer_list<std::int64_t> codes;
  };
  const Case cases[] = {
      {u"Lines 1, 3", {406, 414, 415}},
      {u"Columns 1, 3", {407, 412, 413}},
      {u"Columns 5", {419, 420}},
      {u"Lines 5", {421, 422}},
      {u"", {402, 403, 404, 405, 408, 409, 410, 411, 416, 417, 418, 423, 424, 999}},
  };
  for (const Case& one : cases) {
    for (const std::int64_t code : one.codes)
      EXPECT_EQ(describe({{"Code", code}, {"IntArg1", 1}, {"Arg1", u"1, 3"}, {"Arg2", u"5"}})[2], one.detail)
          << code;
  }
}

TEST(OperationDescription, WhatARecordHoldsIsNoFormat) {
  EXPECT_EQ(describe({{"Code", 203}, {"Arg1", u"%@"}, {"Arg2", u"%ld"}})[2], u"String \"%@\" with \"%ld\"");
}

TEST(OperationDescription, AllWordsGoThroughTheTranslator) {
  setTranslator([](std::u16string_view key) { return u"<" + std::u16string(key) + u">"; });
  const Description trim = describe({{"Code", 301}, {"IntArg1", 1}, {"Arg1", u"2"}, {"Arg2", u"x"}});
  const Description skip = describe({{"Code", 201}});
  const Description final = describe({{"Code", 901}});
  const Description join = describe({{"Code", 353}});
  setTranslator(nullptr);
  EXPECT_EQ(trim, (Description{u"<Trim Column>", u"scissors",
                               u"<<String> \"x\" <From Both Sides> in <columns >\"2\">; <Case-sensitive>"}));
  EXPECT_EQ(skip[2], u"<Skip ><If Blank>");
  EXPECT_EQ(final[2], u"<Encode as ><UTF-8>; <<Write> to \"output.txt\">");
  EXPECT_EQ(join[2], u"<(None)>; <Separated by \"\">");
}

}  // namespace
}  // namespace quillet
