// Random operations on the clipboard grid: of all codes, with the arguments that a command would write for
// the present selection, or with any others.
#pragma once

#include <cstdint>
#include <string>

#include "clipboard/plain_workbench.h"
#include "operations/operation_record.h"
#include "support/random_source.h"

namespace quillet::testing {

class RandomRecords {
 public:
  explicit RandomRecords(RandomSource& random) : random_(random) {}

  // What a clipboard may hold: lines at line feeds, cells at commas.
  std::u16string clipboardText() {
    if (random_.oneIn(200)) return std::u16string(16'383 + random_.below(3), u',') + u"\na,b";
    if (random_.oneIn(400)) return std::u16string(1'048'576, u'\n');
    std::u16string text = random_.text(kParts, random_.oneIn(10) ? 400 : 40);
    if (random_.oneIn(3)) text += u"\n" + text;
    return text;
  }

  OperationRecord split() {
    static const std::u16string kLines[] = {u"\n", u"\n", u"\n", u"\n", u",", u"", u"a"};
    static const std::u16string kColumns[] = {u",", u",", u",", u",", u"\n", u"", u"b", u"\u00E9"};
    OperationRecord record{{"Code", 102}, {"Arg1", random_.pick(kLines)}, {"Arg2", random_.pick(kColumns)}};
    if (random_.oneIn(2)) record.set("IntArg1", number(64));
    return record;
  }

  OperationRecord join() {
    static const std::u16string kSeparators[] = {u"\n", u",", u";", u"", u"\""};
    return {{"Code", 902},
            {"IntArg1", number(4)},
            {"Arg1", random_.pick(kSeparators)},
            {"Arg2", random_.pick(kSeparators)}};
  }

  OperationRecord edit(std::int64_t row, std::int64_t column) {
    return {{"Code", 401}, {"IntArg1", row}, {"IntArg2", column}, {"Arg1", random_.text(kParts, 4)}};
  }

  // Anything, where the workbench is what it is.
  OperationRecord any(const PlainWorkbench& workbench) {
    if (random_.oneIn(12)) return split();
    if (random_.oneIn(30)) return join();
    if (random_.oneIn(10)) return anyEdit(workbench);
    if (random_.oneIn(40)) return unusual();
    if (random_.oneIn(3)) return ofCells(workbench);
    return ofShape(workbench);
  }

  OperationRecord ofCells(const PlainWorkbench& workbench) {
    const std::u16string cells = random_.oneIn(3) ? anyCells() : workbench.selectionText();
    switch (random_.below(3)) {
      case 0:
        return {{"Code", 311},          {"IntArg1", number(3)},
                {"IntArg2", number(5)}, {"IntArg3", random_.oneIn(2) ? 0 : number(4)},
                {"Arg1", cells},        {"Arg2", random_.text(kPatterns, 2)}};
      case 1:
        return {{"Code", 312},
                {"IntArg1", number(3)},
                {"IntArg2", number(3)},
                {"Arg1", cells},
                {"Arg2", random_.text(kPatterns, 2)},
                {"Arg3", random_.text(kTemplates, 2)}};
      default:
        return {{"Code", 314}, {"IntArg1", number(3)}, {"Arg1", random_.pick(kSequences)}, {"Arg2", cells}};
    }
  }

  OperationRecord ofShape(const PlainWorkbench& workbench) {
    const std::int64_t code = 402 + number(23);
    OperationRecord record{{"Code", code}};
    const bool ofColumns = code == 407 || code == 412 || code == 413 || code == 419 || code == 420;
    const Indexes& selected = ofColumns ? workbench.selection.columns : workbench.selection.rows;
    const std::u16string list = random_.oneIn(3) ? anyList() : PlainWorkbench::runs(selected);
    const bool takesList = code == 406 || code == 407 || (code >= 412 && code <= 415);
    if (takesList) record.set("Arg1", list);
    if (code >= 419 && code <= 422) {
      record.set("Arg1", random_.text(kTemplates, 2));
      record.set("Arg2", list);
    }
    if (code >= 423) record.set("Arg1", random_.pick(kGroupSizes));
    return record;
  }

 private:
  inline static const std::u16string kParts[] = {
      u"a", u"b",  u"B",      u"1",      u"7",          u" ",  u"\t",     u",",       u",",  u",",
      u",", u",",  u"\n",     u"\n",     u"\n",         u"\"", u"\u00E9", u"e\u0301", u"x",  u"Y",
      u"-", u"\r", u"\u3000", u"\u00DF", u"\U0001F600", u"ab", u" a ",    u"bab",     u" 1 "};
  inline static const std::u16string kPatterns[] = {u"a", u"b",   u"B",    u" ",      u"1",  u"(", u"a*",
                                                    u".", u"(a)", u"[ab]", u"\u00E9", u"\"", u"^", u"\\d"};
  inline static const std::u16string kTemplates[] = {u"-", u"$1", u"$0", u"a", u"\\", u"\"", u",", u"\n"};
  inline static const std::u16string kSequences[] = {
      u"", u"7", u"10,5", u"1,-1", u"a,b", u",", u"x", u"3,0", u" 5 , 2 ", u"9223372036854775806,3"};
  inline static const std::u16string kGroupSizes[] = {
      u"2", u"2", u"3", u"4", u"7", u"1", u"0", u"-3", u"", u"x", u"300", u"9223372036854775807"};

  std::int64_t number(std::size_t below) { return static_cast<std::int64_t>(random_.below(below)); }
  std::u16string numberText(std::size_t below) {
    std::u16string text;
    appendInteger(number(below), text);
    return text;
  }

  // "1, 3 - 5", more or less.
  std::u16string anyList() {
    static const std::u16string kBetween[] = {u", ", u", ", u" - ", u"-", u",", u" ", u"x"};
    if (random_.oneIn(40)) return u"2, 5000";
    std::u16string list;
    for (std::size_t i = random_.below(4); i > 0; --i) {
      list += numberText(random_.oneIn(8) ? 60 : 9);
      if (i > 1 || random_.oneIn(12)) list += random_.pick(kBetween);
    }
    return list;
  }

  std::u16string anyCells() {
    std::u16string cells;
    if (random_.oneIn(2)) cells += u"Lines: " + anyList();
    if (random_.oneIn(2)) cells += (cells.empty() ? u"Columns: " : u"; Columns: ") + anyList();
    if (random_.oneIn(3))
      cells += (cells.empty() ? u"Cells: (" : u"; Cells: (") + numberText(8) + u", " + numberText(8) +
               u")+(" + numberText(8) + u", " + numberText(8) + u")";
    return cells;
  }

  OperationRecord anyEdit(const PlainWorkbench& workbench) {
    if (random_.oneIn(3)) return edit(workbench.selection.focus.first, workbench.selection.focus.second);
    return edit(number(workbench.grid.size() + 3) - 1, number(random_.oneIn(20) ? 300 : 8) - 1);
  }

  // Codes of other lists, or none, and arguments of other types.
  OperationRecord unusual() {
    static const std::int64_t kCodes[] = {0, -1, 101, 203, 400, 425, 901, 903, 999, 4711};
    switch (random_.below(3)) {
      case 0:
        return {};
      case 1:
        return {{"Code", random_.pick(kCodes)}, {"Arg1", anyList()}};
      default:
        return {{"Code", 400 + number(26)}, {"IntArg2", u"1"}, {"Arg1", number(5)}, {"Arg2", number(5)}};
    }
  }

  RandomSource& random_;
};

}  // namespace quillet::testing
