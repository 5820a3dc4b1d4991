// Tables that replace single characters: the quick question agrees with the answer, and the answer with the
// rule.
//
// Input: number of operations, quote, line separator, column separator, for each operation its class,
// characters and replacement; the rest is the text whose characters are looked up.
#include <variant>
#include <vector>

#include "fuzz_input.h"
#include "platform/character_set.h"
#include "platform/text_search.h"
#include "text/replacement_table.h"

namespace quillet::fuzz {
namespace {

struct Structure {
  std::u16string quote, lineSeparator, columnSeparator;

  bool contains(std::u16string_view text) const {
    return rangeOfString(quote, text, 0) || rangeOfString(lineSeparator, text, 0) ||
           rangeOfString(columnSeparator, text, 0);
  }
};

bool classApplies(std::int64_t number, char16_t unit) {
  return (number == 1 && isControl(unit)) || (number == 2 && isSurrogate(unit));
}

// The rule: pair after pair, each on what the one before has left.
std::u16string replacedByRule(const std::vector<ReplacementTable::Pair>& pairs, const Structure& structure,
                              std::u16string_view character) {
  std::u16string current(character);
  for (const auto& [key, replacement] : pairs) {
    const auto* number = std::get_if<std::int64_t>(&key);
    const bool applies = number ? classApplies(*number, character[0]) && !structure.contains(current)
                                : std::get<std::u16string>(key) == current;
    if (applies) current = replacement;
  }
  return current;
}

void requireThatPairsSpareTheStructure(const std::vector<ReplacementTable::Pair>& pairs,
                                       const Structure& structure) {
  for (const auto& [key, replacement] : pairs)
    if (const auto* text = std::get_if<std::u16string>(&key))
      require(!text->empty() && *text != structure.quote && *text != structure.lineSeparator &&
                  *text != structure.columnSeparator,
              "what structures the file is not replaced");
}

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  using namespace quillet::fuzz;
  FuzzInput input(data, size);
  const std::size_t operations = input.below(5);
  Structure structure;
  structure.quote = input.text(8);
  structure.lineSeparator = input.text(8);
  structure.columnSeparator = input.text(8);
  std::vector<ReplacementTable::Pair> pairs;
  for (std::size_t i = 0; i < operations; ++i) {
    const auto characterClass = static_cast<std::int64_t>(input.below(4));
    const std::u16string characters = input.text(64);
    appendReplacementPairs(characterClass, characters, input.text(16), structure.quote,
                           structure.lineSeparator, structure.columnSeparator, pairs);
  }
  requireThatPairsSpareTheStructure(pairs, structure);
  // A number that is no class matches nothing.
  if (operations == 4) pairs.emplace_back(std::int64_t{3}, u"never");

  const ReplacementTable table(pairs, structure.quote, structure.lineSeparator, structure.columnSeparator);
  require(table.isEmpty() == pairs.empty(), "a table without pairs is empty");
  const std::u16string text = input.restText();
  for (std::size_t at = 0; at < text.size();) {
    const char32_t codePoint = codePointAt(text, at);
    const std::u16string_view character = std::u16string_view(text).substr(at, unitsOfCodePoint(codePoint));
    const std::u16string_view replaced = table.replaced(character);
    require(replaced == replacedByRule(pairs, structure, character), "the table follows the rule");
    require(table.affects(codePoint) || replaced == character, "what the table changes it affects");
    at += character.size();
  }
  return 0;
}
