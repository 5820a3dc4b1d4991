#include "platform/text_fold.h"

#include <algorithm>
#include <iterator>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <vector>

#include "platform/unicode_text.h"

namespace quillet {
namespace {

// Longer than any decomposition or case folding of one code point.
constexpr std::size_t kMostUnits = 32;

std::u16string_view decomposition(char32_t codePoint, char16_t (&buffer)[kMostUnits]) {
  static const UNormalizer2* const kDecomposer = [] {
    UErrorCode error = U_ZERO_ERROR;
    return unorm2_getNFDInstance(&error);
  }();
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length = unorm2_getDecomposition(kDecomposer, static_cast<UChar32>(codePoint), buffer,
                                                      static_cast<std::int32_t>(kMostUnits), &error);
  if (length >= 0) return {buffer, static_cast<std::size_t>(length)};
  std::size_t units = 0;
  U16_APPEND_UNSAFE(buffer, units, codePoint);
  return {buffer, units};
}

std::u16string_view caseFolding(char32_t codePoint, char16_t (&buffer)[kMostUnits]) {
  char16_t source[2];
  std::int32_t units = 0;
  U16_APPEND_UNSAFE(source, units, codePoint);
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length = u_strFoldCase(buffer, static_cast<std::int32_t>(kMostUnits), source, units,
                                            U_FOLD_CASE_DEFAULT, &error);
  return {buffer, static_cast<std::size_t>(length)};
}

void appendCodePoints(std::u16string_view text, std::u32string& out) {
  for (std::size_t index = 0; index < text.size();) {
    const char32_t codePoint = codePointAt(text, index);
    out.push_back(codePoint);
    index += unitsOfCodePoint(codePoint);
  }
}

void appendFirstFold(char32_t codePoint, Folding folding, std::u32string& out) {
  char16_t folded[kMostUnits];
  if (folding == Folding::LiteralCaseless) {
    appendCodePoints(caseFolding(codePoint, folded), out);
    return;
  }
  char16_t buffer[kMostUnits];
  std::u16string_view decomposed = decomposition(codePoint, buffer);
  if (folding == Folding::CanonicalCaseless) {
    const char32_t first = codePointAt(decomposed, 0);
    appendCodePoints(caseFolding(first, folded), out);
    decomposed.remove_prefix(unitsOfCodePoint(first));
  }
  appendCodePoints(decomposed, out);
}

std::uint8_t combiningClass(char32_t codePoint) {
  return u_getCombiningClass(static_cast<UChar32>(codePoint));
}

// Canonical order of the extending marks at the end of the fold that starts at begin.
void orderMarks(std::u32string& fold, std::size_t begin) {
  const auto isBefore = [](char32_t left, char32_t right) {
    return combiningClass(left) < combiningClass(right);
  };
  auto end = fold.end();
  const auto first = fold.begin() + static_cast<std::ptrdiff_t>(begin);
  while (end != first && isExtending(end[-1])) {
    // Code points of class 0 stay where they are, and nothing passes them.
    auto start = end;
    while (start != first && isExtending(start[-1]) && combiningClass(start[-1]) != 0) --start;
    if (!std::is_sorted(start, end, isBefore)) std::stable_sort(start, end, isBefore);
    if (start == first || !isExtending(start[-1])) break;
    end = start - 1;
  }
}

std::vector<char16_t> makeFirstFolds(Folding folding) {
  std::vector<char16_t> table(0x10000);
  std::u32string fold;
  for (std::size_t unit = 0; unit < table.size(); ++unit) {
    fold.clear();
    appendFirstFold(static_cast<char32_t>(unit), folding, fold);
    table[unit] = static_cast<char16_t>(fold[0]);
  }
  return table;
}

}  // namespace

bool isExtending(char32_t codePoint) {
  return codePoint >= 0x0300 &&
         u_getIntPropertyValue(static_cast<UChar32>(codePoint), UCHAR_GRAPHEME_CLUSTER_BREAK) == U_GCB_EXTEND;
}

std::optional<std::size_t> chunkEnd(std::u16string_view text, std::size_t start, Folding folding,
                                    std::size_t mostCodePoints) {
  std::size_t end = start + unitsOfCodePoint(codePointAt(text, start));
  if (folding == Folding::LiteralCaseless) return end;
  for (std::size_t codePoints = 1; end < text.size(); ++codePoints) {
    const char32_t codePoint = codePointAt(text, end);
    if (!isExtending(codePoint)) break;
    if (codePoints == mostCodePoints) return std::nullopt;
    end += unitsOfCodePoint(codePoint);
  }
  return end;
}

void appendChunkFold(std::u16string_view chunk, Folding folding, std::u32string& out) {
  const std::size_t begin = out.size();
  const char32_t first = codePointAt(chunk, 0);
  appendFirstFold(first, folding, out);
  if (folding == Folding::LiteralCaseless) return;
  char16_t buffer[kMostUnits];
  for (std::size_t index = unitsOfCodePoint(first); index < chunk.size();) {
    const char32_t mark = codePointAt(chunk, index);
    appendCodePoints(decomposition(mark, buffer), out);
    index += unitsOfCodePoint(mark);
  }
  orderMarks(out, begin);
}

std::u32string foldedText(std::u16string_view text, Folding folding) {
  std::u32string fold;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = *chunkEnd(text, start, folding, text.size());
    appendChunkFold(text.substr(start, end - start), folding, fold);
    start = end;
  }
  return fold;
}

const char16_t* firstFoldTable(Folding folding) {
  switch (folding) {
    case Folding::Canonical: {
      static const std::vector<char16_t> table = makeFirstFolds(Folding::Canonical);
      return table.data();
    }
    case Folding::CanonicalCaseless: {
      static const std::vector<char16_t> table = makeFirstFolds(Folding::CanonicalCaseless);
      return table.data();
    }
    case Folding::LiteralCaseless: {
      static const std::vector<char16_t> table = makeFirstFolds(Folding::LiteralCaseless);
      return table.data();
    }
  }
  return nullptr;
}

}  // namespace quillet
