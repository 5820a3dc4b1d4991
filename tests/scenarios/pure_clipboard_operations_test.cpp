// The operations of the clipboard grid that need no application answer through the tool, and refuse what they
// cannot take.
#include <cstdint>
#include <initializer_list>
#include <limits>

#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

// Lists are written as JSON, as braces make an object of a list of pairs.
class PureClipboardOperations : public Scenario {
 protected:
  json indexSet(const std::string& cellString, const std::string& steps, const std::string& contains = "[]") {
    return call(
        "TwoDimensionalMutableIndexSet",
        {{"cellString", cellString}, {"steps", json::parse(steps)}, {"contains", json::parse(contains)}});
  }

  void expectRefusals(const char* name, std::initializer_list<const char*> arguments) {
    for (const char* some : arguments) {
      json command = json::parse(some);
      command.update({{"do", "call"}, {"name", name}});
      EXPECT_NE(refused(command), "") << some;
    }
  }
};

constexpr std::int64_t kMaximum = std::numeric_limits<std::int64_t>::max();
const double kLargest = std::numeric_limits<double>::max();

TEST_F(PureClipboardOperations, AnIndexSetTakesEachStepAndTellsItsText) {
  const std::string start = "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(7, 6)";
  const struct {
    const char* steps;
    const char* text;
  } cases[] = {
      {"[]", "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(7, 6)"},
      {R"([["addRowIndex", 4, 0]])", "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(5, 1)+(7, 6)"},
      {R"([["addInfiniteRowIndex", 0]])", "Lines: 1 - 4; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(7, 6)"},
      {R"([["addInfiniteRowIndexesInRange", 5, 2]])",
       "Lines: 2 - 4, 6 - 7; Columns: 2, 4; Cells: (1, 2)+(2, 2)+(7, 6)"},
      {R"([["addInfiniteColumnIndex", 2]])", "Lines: 2 - 4; Columns: 2 - 4; Cells: (1, 2)+(2, 2)+(7, 6)"},
      {R"([["addInfiniteColumnIndexesInRange", 0, 6]])",
       "Lines: 2 - 4; Columns: 1 - 6; Cells: (1, 2)+(2, 2)+(7, 6)"},
      {R"([["removeRowIndex", 1, 1]])", "Lines: 2 - 4; Columns: 2, 4; Cells: (1, 2)+(7, 6)"},
      {R"([["removeRowIndex", 1]])", "Lines: 3 - 4; Columns: 2, 4; Cells: (1, 2)+(7, 6)"},
      {R"([["removeColumnIndex", 1]])", "Lines: 2 - 4; Columns: 4; Cells: (7, 6)"},
      {R"([["removeAllInfiniteRowIndexes"]])", "Columns: 2, 4; Cells: (1, 2)+(2, 2)+(7, 6)"},
      {R"([["removeAllInfiniteColumnIndexes"]])", "Lines: 2 - 4; Cells: (1, 2)+(2, 2)+(7, 6)"},
      {R"([["removeAllInfiniteIndexes"]])", "Cells: (1, 2)+(2, 2)+(7, 6)"},
      {R"([["removeNonInfiniteIndexes"]])", "Lines: 2 - 4; Columns: 2, 4"},
      {R"([["removeRowIndex", 0, 1], ["removeRowIndex", 1, 1], ["removeRowIndex", 6, 5],
           ["removeAllInfiniteIndexes"], ["removeNonInfiniteIndexes"]])",
       ""},
      {R"([["removeAllIndexes"]])", ""},
      {R"([["removeAllIndexes"], ["addRowIndex", 2, 3], ["addRowIndex", 0, 3]])", "Cells: (1, 4)+(3, 4)"},
  };
  for (const auto& [steps, text] : cases) {
    json result = indexSet(start, steps);
    EXPECT_EQ(result["text"], std::string(text)) << steps;
    EXPECT_EQ(result["isEmpty"], *text == '\0') << steps;
    EXPECT_EQ(result["contains"], json::array()) << steps;
  }
}

TEST_F(PureClipboardOperations, AnIndexSetTellsWhatItContains) {
  EXPECT_EQ(indexSet("Lines: 2; Cells: (5, 6)", R"([["addInfiniteColumnIndex", 2]])",
                     R"([[1, 9], [9, 2], [4, 5], [4, 4], [-1, 0],
                         [9223372036854775807, -9223372036854775808]])")["contains"],
            (json{true, true, true, false, false, false}));
  json emptied = indexSet("", R"([["addRowIndex", 2, 3], ["removeRowIndex", 2, 3]])", "[[2, 3]]");
  EXPECT_EQ(emptied["text"], "");
  EXPECT_EQ(emptied["isEmpty"], false) << "the entry of the row stays";
  EXPECT_EQ(emptied["contains"], json::array({false}));
}

TEST_F(PureClipboardOperations, AnIndexSetNeedsNoArguments) {
  json result = call("TwoDimensionalMutableIndexSet");
  EXPECT_EQ(result["text"], "");
  EXPECT_EQ(result["isEmpty"], true);
  EXPECT_EQ(result["contains"], json::array());
  EXPECT_EQ(call("TwoDimensionalMutableIndexSet", {{"cellString", nullptr}, {"steps", nullptr}})["text"], "");
}

TEST_F(PureClipboardOperations, AnIndexSetStandsAnyNumbers) {
  EXPECT_EQ(indexSet("", R"([["addInfiniteRowIndexesInRange", 0, 9223372036854775807],
                             ["removeRowIndex", 5],
                             ["addInfiniteColumnIndexesInRange", 9223372036854775807, 9223372036854775807],
                             ["addInfiniteColumnIndexesInRange", -9223372036854775808, -9223372036854775808],
                             ["addInfiniteColumnIndexesInRange", -1, 3],
                             ["addRowIndex", -9223372036854775808, 0],
                             ["addRowIndex", 0, 9223372036854775807],
                             ["addRowIndex", 9223372036854775806, 9223372036854775806],
                             ["removeColumnIndex", -9223372036854775808]])")["text"],
            "Lines: 1 - 5, 7 - 9223372036854775807; Columns: 1 - 2; "
            "Cells: (9223372036854775807, 9223372036854775807)");
}

TEST_F(PureClipboardOperations, AnIndexSetRefusesWhatItCannotTake) {
  expectRefusals("TwoDimensionalMutableIndexSet",
                 {
                     R"({"cellString": 3})",
                     R"({"steps": "removeAllIndexes"})",
                     R"({"steps": {"removeRowIndex": 1}})",
                     R"({"steps": ["removeAllIndexes"]})",
                     R"({"steps": [[]]})",
                     R"({"steps": [[3]]})",
                     R"({"steps": [["noSuchStep"]]})",
                     R"({"steps": [["addRowIndex:columnIndex:", 1, 2]]})",
                     R"({"steps": [["addRowIndex", 1]]})",
                     R"({"steps": [["addRowIndex", 1, 2, 3]]})",
                     R"({"steps": [["addRowIndex", 1, "2"]]})",
                     R"({"steps": [["addRowIndex", 1, 2.5]]})",
                     R"({"steps": [["addRowIndex", 1, null]]})",
                     R"({"steps": [["addRowIndex", 1, 18446744073709551615]]})",
                     R"({"steps": [["removeRowIndex"]]})",
                     R"({"steps": [["removeAllIndexes", 1]]})",
                     R"({"contains": 1})",
                     R"({"contains": [1]})",
                     R"({"contains": [[1]]})",
                     R"({"contains": [[1, 2, 3]]})",
                     R"({"contains": [[1, "2"]]})",
                 });
}

TEST_F(PureClipboardOperations, SumsOfARowAndOfAColumn) {
  const json rows = json::parse(R"grid([["1", "2", "x"], ["$ 10", "( 5 )"], []])grid");
  const struct {
    const char* name;
    std::int64_t index;
    json sums;
  } cases[] = {
      {"computeRow", 0, {3, 3.0, 1.0, 0.0, 2.0}},
      {"computeRow", 1, {2, 5.0, 2.5, -5.0, 10.0}},
      {"computeRow", 2, {0, 0.0, 0.0, kLargest, -kLargest}},
      {"computeRow", 3, {0, 0.0, 0.0, kLargest, -kLargest}},
      {"computeRow", -1, {0, 0.0, 0.0, kLargest, -kLargest}},
      {"computeColumn", 0, {2, 11.0, 5.5, 1.0, 10.0}},
      {"computeColumn", 1, {2, -3.0, -1.5, -5.0, 2.0}},
      {"computeColumn", 2, {1, 0.0, 0.0, 0.0, 0.0}},
      {"computeColumn", 3, {0, 0.0, 0.0, kLargest, -kLargest}},
      {"computeColumn", kMaximum, {0, 0.0, 0.0, kLargest, -kLargest}},
  };
  for (const auto& [name, index, sums] : cases) {
    json result = call(name, {{"rows", rows}, {"index", index}});
    EXPECT_EQ(
        (json{result["cellCount"], result["total"], result["average"], result["minimum"], result["maximum"]}),
        sums)
        << name << " " << index;
  }
}

TEST_F(PureClipboardOperations, SumsRefuseWhatIsNoGrid) {
  for (const char* name : {"computeRow", "computeColumn"})
    expectRefusals(name, {
                             R"({"index": 0})",
                             R"({"rows": []})",
                             R"({"rows": "1", "index": 0})",
                             R"({"rows": ["1"], "index": 0})",
                             R"({"rows": [[1]], "index": 0})",
                             R"({"rows": [[null]], "index": 0})",
                             R"({"rows": [["1"]], "index": "0"})",
                         });
}

}  // namespace
}  // namespace quillet::testing
