// Cuts a line into fields at a separator; the one place where quote characters disappear.
//
//   A n n \t O s l o      without quotes fields are [start, end) in units of the line:
//   0     3  4       8    fields[0] = [0, 3), fields[1] = [4, 8)
//
// Separator and quote are compared with whole composed sequences, so a separator of two or more characters
// never matches, and a comma with a combining mark is no comma. Both are meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/text_buffer.h"

namespace quillet {

using Cells = std::vector<std::u16string_view>;

class FieldSplitter {
 public:
  // Empty texts are none.
  FieldSplitter(std::u16string_view separatorString, std::u16string_view quoteString);

  // Adds the fields to into, at least one. They are views into the line, or into the arena where quotes were
  // taken out of the middle of a field.
  void split(std::u16string_view line, Cells& into, TextArena& arena) const;
  // How many split would add; takes no memory, for a line that may have very many.
  std::size_t fieldCount(std::u16string_view line) const;

 private:
  class CollectedFields;
  class CountedFields;
  template <typename Fields>
  void cut(std::u16string_view line, Fields& fields) const;
  template <typename Fields>
  void cutPlain(std::u16string_view line, Fields& fields) const;
  template <typename Fields>
  void cutQuoted(std::u16string_view line, Fields& fields) const;
  template <typename Fields>
  void cutBySequences(std::u16string_view line, Fields& fields) const;

  std::u16string separator_;  // empty when it can never match
  std::u16string quote_;      // the same
  bool plainAscii_;           // both are, and no letters
};

// The fields of one line as texts of their own. An absent separator or quote is an empty text.
void findFieldsInLine(std::u16string_view line, std::vector<std::u16string>& into,
                      std::u16string_view separatorString, std::u16string_view quoteString);

}  // namespace quillet
