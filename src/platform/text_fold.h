// What texts are compared by when canonical equivalence counts: the folds of their chunks. A chunk is one
// code point and all extending marks behind it. Its fold is its canonical decomposition, the marks at its end
// in canonical order; without case the first code point of it is case folded in full, without a locale.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

enum class Folding {
  Canonical,
  CanonicalCaseless,
  LiteralCaseless,  // each code point is a chunk of its own and only case folded
};

// True for the code points of Grapheme_Cluster_Break=Extend. None is below U+0300.
bool isExtending(char32_t codePoint);

// End of the chunk that starts at start (below text.size()); nothing if it has more code points than allowed,
// so that the cost does not grow with a run of marks that is too long anyway.
std::optional<std::size_t> chunkEnd(std::u16string_view text, std::size_t start, Folding folding,
                                    std::size_t mostCodePoints);

// Appends the fold of one chunk to out.
void appendChunkFold(std::u16string_view chunk, Folding folding, std::u32string& out);

// The folds of all chunks of the text, one after the other.
std::u32string foldedText(std::u16string_view text, Folding folding);

// For each unit other than a surrogate the first code point of its fold, before marks are put in order;
// 65,536 entries, built at first use and kept.
const char16_t* firstFoldTable(Folding folding);

}  // namespace quillet
