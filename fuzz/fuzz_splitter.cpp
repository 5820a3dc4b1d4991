// A line cut into fields: the quick ways agree with the rule, and without quotes the fields give the line
// again.
//
// Input: separator, quote; the rest is the line.
#include <vector>

#include "fuzz_input.h"
#include "platform/composed_sequences.h"
#include "text/csv_components.h"
#include "text/field_splitter.h"

namespace quillet::fuzz {
namespace {

using Fields = std::vector<std::u16string>;

// The rule: sequence by sequence.
Fields fieldsByRule(std::u16string_view line, std::u16string_view separator, std::u16string_view quote) {
  std::vector<std::u16string_view> sequences;
  forEachComposedSequence(line, [&](std::u16string_view sequence) { sequences.push_back(sequence); });
  Fields fields(1);
  bool inQuotes = false;
  for (std::size_t i = 0; i < sequences.size(); ++i) {
    if (sequences[i] == quote) {
      if (inQuotes && i + 1 < sequences.size() && sequences[i + 1] == quote)
        fields.back() += sequences[i++];
      else
        inQuotes = !inQuotes;
    } else if (sequences[i] == separator && !inQuotes) {
      fields.emplace_back();
    } else {
      fields.back() += sequences[i];
    }
  }
  return fields;
}

std::u16string joined(const Fields& fields, std::u16string_view separator) {
  std::u16string text;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) text += separator;
    text += fields[i];
  }
  return text;
}

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  using namespace quillet::fuzz;
  FuzzInput input(data, size);
  const std::u16string separator = input.text(16);
  const std::u16string quote = input.text(16);
  const std::u16string text = input.restText();
  // A buffer of the exact size, so that a read beyond the line is seen.
  const std::vector<char16_t> exact(text.begin(), text.end());
  const std::u16string_view line(exact.data(), exact.size());

  Fields fields;
  findFieldsInLine(line, fields, separator, quote);
  require(fields == fieldsByRule(line, separator, quote), "the splitter follows the rule");
  if (quote.empty()) require(joined(fields, separator) == text, "fields without quotes give the line");

  Fields components;
  findComponentsOfCSVString(line, components);
  require(!components.empty(), "there is at least one component");
  return 0;
}
