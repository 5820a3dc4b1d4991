#include "text/field_splitter.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "platform/composed_sequences.h"
#include "platform/simd_blocks.h"

namespace quillet {

namespace {

// The text if it is exactly one composed sequence, which alone can be equal to one.
std::u16string_view matchable(std::u16string_view text) {
  return !text.empty() && composedSequenceEnd(text, 0) == text.size() ? text : std::u16string_view();
}

// No letter, as a letter can belong to a sequence that began before it.
bool isPlainAscii(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) {
    return unit < 0x80 && !(unit >= u'a' && unit <= u'z') && !(unit >= u'A' && unit <= u'Z');
  });
}

// A plain ASCII character always starts a sequence; it is one by itself unless something joins it from
// behind.
bool standsAlone(std::u16string_view line, std::size_t at) {
  return at + 1 == line.size() || line[at + 1] < 0x300 || composedSequenceEnd(line, at) == at + 1;
}

// Calls visit(start, block, size) for each block of 64 units; the last, shorter one is a copy, so that
// nothing beyond the line is read.
template <typename Visit>
void forEachBlock(std::u16string_view line, Visit visit) {
  std::size_t start = 0;
  for (; start + simd::kBlock <= line.size(); start += simd::kBlock)
    visit(start, simd::UnitBlock(line.data() + start), ~std::uint64_t{0});
  if (start == line.size()) return;
  char16_t rest[simd::kBlock];
  std::memcpy(rest, line.data() + start, (line.size() - start) * sizeof(char16_t));
  visit(start, simd::UnitBlock(rest), simd::lowBits(line.size() - start));
}

}  // namespace

// The fields, of which the last is in the making: one piece of the line, or, from the second piece on, a text
// in the arena.
class FieldSplitter::CollectedFields {
 public:
  CollectedFields(std::u16string_view line, Cells& into, TextArena& arena)
      : line_(line), into_(into), arena_(arena) {}

  void addWhole(std::size_t start, std::size_t end) { into_.push_back(line_.substr(start, end - start)); }

  void addPiece(std::size_t start, std::size_t end) {
    if (start == end) return;
    const std::u16string_view piece = line_.substr(start, end - start);
    if (first_.empty()) {
      first_ = piece;
      return;
    }
    if (!building_) {
      // All later pieces of this field together are no longer than the rest of the line.
      building_ = arena_.room(first_.size() + line_.size() - start);
      append(first_);
    }
    append(piece);
  }

  void finish() {
    into_.push_back(building_ ? arena_.commit(size_) : first_);
    first_ = {};
    building_ = nullptr;
    size_ = 0;
  }

 private:
  void append(std::u16string_view piece) {
    std::memcpy(building_ + size_, piece.data(), piece.size() * sizeof(char16_t));
    size_ += piece.size();
  }

  std::u16string_view line_;
  Cells& into_;
  TextArena& arena_;
  std::u16string_view first_;
  char16_t* building_ = nullptr;
  std::size_t size_ = 0;
};

class FieldSplitter::CountedFields {
 public:
  void addWhole(std::size_t, std::size_t) { ++count_; }
  void addPiece(std::size_t, std::size_t) {}
  void finish() { ++count_; }

  std::size_t count() const { return count_; }

 private:
  std::size_t count_ = 0;
};

FieldSplitter::FieldSplitter(std::u16string_view separatorString, std::u16string_view quoteString)
    : separator_(matchable(separatorString)),
      quote_(matchable(quoteString)),
      plainAscii_(isPlainAscii(separator_) && isPlainAscii(quote_)) {
  // What is the quote is never taken for the separator.
  if (!quote_.empty() && separator_ == quote_) separator_.clear();
}

void FieldSplitter::split(std::u16string_view line, Cells& into, TextArena& arena) const {
  CollectedFields fields(line, into, arena);
  cut(line, fields);
}

std::size_t FieldSplitter::fieldCount(std::u16string_view line) const {
  CountedFields fields;
  cut(line, fields);
  return fields.count();
}

template <typename Fields>
void FieldSplitter::cut(std::u16string_view line, Fields& fields) const {
  if (!plainAscii_) return cutBySequences(line, fields);
  if (!quote_.empty()) return cutQuoted(line, fields);
  cutPlain(line, fields);
}

template <typename Fields>
void FieldSplitter::cutPlain(std::u16string_view line, Fields& fields) const {
  std::size_t fieldStart = 0;
  if (!separator_.empty()) {
    const char16_t separator = separator_[0];
    forEachBlock(line, [&](std::size_t start, const simd::UnitBlock& block, std::uint64_t inReach) {
      for (std::uint64_t hits = block.equalTo(separator) & inReach; hits; hits &= hits - 1) {
        const std::size_t at = start + static_cast<std::size_t>(std::countr_zero(hits));
        if (!standsAlone(line, at)) continue;
        fields.addWhole(fieldStart, at);
        fieldStart = at + 1;
      }
    });
  }
  fields.addWhole(fieldStart, line.size());
}

template <typename Fields>
void FieldSplitter::cutQuoted(std::u16string_view line, Fields& fields) const {
  const char16_t quote = quote_[0];
  const bool hasSeparator = !separator_.empty();
  const char16_t separator = hasSeparator ? separator_[0] : quote;
  bool inQuotes = false;
  std::size_t pieceStart = 0;         // of the text that is not yet added to the field
  std::size_t skipped = line.size();  // the second quote of a doubled one
  forEachBlock(line, [&](std::size_t start, const simd::UnitBlock& block, std::uint64_t inReach) {
    std::uint64_t hits = block.equalTo(quote);
    if (hasSeparator) hits |= block.equalTo(separator);
    for (hits &= inReach; hits; hits &= hits - 1) {
      const std::size_t at = start + static_cast<std::size_t>(std::countr_zero(hits));
      if (at == skipped || !standsAlone(line, at)) continue;
      if (line[at] != quote) {
        if (inQuotes) continue;
        fields.addPiece(pieceStart, at);
        fields.finish();
        pieceStart = at + 1;
      } else if (inQuotes && at + 1 < line.size() && line[at + 1] == quote && standsAlone(line, at + 1)) {
        fields.addPiece(pieceStart, at + 1);
        skipped = at + 1;
        pieceStart = at + 2;
      } else {
        fields.addPiece(pieceStart, at);
        pieceStart = at + 1;
        inQuotes = !inQuotes;
      }
    }
  });
  fields.addPiece(pieceStart, line.size());
  fields.finish();
}

// The rule step by step, for any separator and quote.
template <typename Fields>
void FieldSplitter::cutBySequences(std::u16string_view line, Fields& fields) const {
  bool inQuotes = false;
  const auto isAt = [&](std::size_t at, const std::u16string& wanted) {
    return !wanted.empty() && at < line.size() &&
           line.substr(at, composedSequenceEnd(line, at) - at) == wanted;
  };
  std::size_t pieceStart = 0;
  for (std::size_t at = 0; at < line.size();) {
    const std::size_t end = composedSequenceEnd(line, at);
    std::size_t next = end;
    if (isAt(at, quote_)) {
      const bool doubled = inQuotes && isAt(end, quote_);
      fields.addPiece(pieceStart, doubled ? end : at);
      if (doubled)
        next = end + quote_.size();
      else
        inQuotes = !inQuotes;
      pieceStart = next;
    } else if (!inQuotes && isAt(at, separator_)) {
      fields.addPiece(pieceStart, at);
      fields.finish();
      pieceStart = end;
    }
    at = next;
  }
  fields.addPiece(pieceStart, line.size());
  fields.finish();
}

void findFieldsInLine(std::u16string_view line, std::vector<std::u16string>& into,
                      std::u16string_view separatorString, std::u16string_view quoteString) {
  Cells cells;
  TextArena arena;
  FieldSplitter(separatorString, quoteString).split(line, cells, arena);
  into.insert(into.end(), cells.begin(), cells.end());
}

}  // namespace quillet
