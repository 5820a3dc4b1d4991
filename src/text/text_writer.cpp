#include "text/text_writer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

#include "platform/localization.h"
#include "platform/simd_blocks.h"
#include "platform/system_log.h"
#include "platform/text_buffer.h"
#include "platform/text_fold.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr std::size_t kPieceUnits = 4'096;     // of a text that are encoded between two looks at the buffer
constexpr std::size_t kShortReplacement = 16;  // bytes; a longer one takes the slow way

// What a run of units was found to hold while it was narrowed.
struct Narrowed {
  bool ascii = true;  // neither NUL nor anything above 7F; else what was written is of no use
  bool hasQuote = false;
};

#if defined(__SSE2__)

class Narrowing {
 public:
  // Writes 8 bytes.
  void take8(const char16_t* from, char* to) {
    const __m128i units = simd::load(from);
    const __m128i bytes = note(units, units);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), bytes);
  }
  void take16(const char16_t* from, char* to) {
    simd::store(to, note(simd::load(from), simd::load(from + 8)));
  }
  void take1(char16_t unit, char* to) {
    plainAscii_ &= unit != 0 && unit < 0x80;
    plainQuote_ |= unit == u'"';
    *to = static_cast<char>(unit);
  }
  Narrowed result() const {
    // A unit and the unit less 1 are both below 80 exactly for 1 to 7F.
    const __m128i high = _mm_and_si128(seen_, _mm_set1_epi16(static_cast<short>(0xFF80)));
    const bool ascii = _mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())) == 0xFFFF;
    return {ascii && plainAscii_, plainQuote_ || _mm_movemask_epi8(quotes_) != 0};
  }

 private:
  __m128i note(__m128i low, __m128i high) {
    const __m128i one = _mm_set1_epi16(1);
    seen_ = _mm_or_si128(seen_, _mm_or_si128(low, high));
    seen_ = _mm_or_si128(seen_, _mm_or_si128(_mm_sub_epi16(low, one), _mm_sub_epi16(high, one)));
    const __m128i bytes = _mm_packus_epi16(low, high);
    quotes_ = _mm_or_si128(quotes_, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')));
    return bytes;
  }

  __m128i seen_ = _mm_setzero_si128();
  __m128i quotes_ = _mm_setzero_si128();
  bool plainAscii_ = true;
  bool plainQuote_ = false;
};

#else

class Narrowing {
 public:
  void take8(const char16_t* from, char* to) {
    for (int i = 0; i < 8; ++i) take1(from[i], to + i);
  }
  void take16(const char16_t* from, char* to) {
    take8(from, to);
    take8(from + 8, to + 8);
  }
  void take1(char16_t unit, char* to) {
    result_.ascii &= unit != 0 && unit < 0x80;
    result_.hasQuote |= unit == u'"';
    *to = static_cast<char>(unit);
  }
  Narrowed result() const { return result_; }

 private:
  Narrowed result_;
};

#endif

// Writes text.size() bytes.
inline void narrow(std::u16string_view text, char* to, Narrowing& narrowing) {
  const char16_t* from = text.data();
  std::size_t left = text.size();
  for (; left >= 16; left -= 16, from += 16, to += 16) narrowing.take16(from, to);
  if (left >= 8) {
    narrowing.take8(from, to);
    if (left > 8) narrowing.take8(from + left - 8, to + left - 8);
    return;
  }
  for (std::size_t i = 0; i < left; ++i) narrowing.take1(from[i], to + i);
}

char* writeDoublingQuotes(std::u16string_view text, char* to) {
  for (const char16_t unit : text) {
    if (unit == u'"') *to++ = '"';
    *to++ = static_cast<char>(unit);
  }
  return to;
}

bool isAsciiLetter(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// A quote that something joins from behind is another character and is not doubled; this is the comparison of
// all searches.
void appendDoublingQuotes(std::u16string_view cell, TextBuffer& out) {
  std::size_t done = 0;
  for (std::size_t at = simd::findUnit(cell, u'"', 0); at < cell.size();
       at = simd::findUnit(cell, u'"', at + 1)) {
    const std::size_t next = at + 1;
    if (next < cell.size() && cell[next] >= 0x300 && isExtending(codePointAt(cell, next))) continue;
    out.append(cell.substr(done, next - done));
    out.append(u'"');
    done = next;
  }
  out.append(cell.substr(done));
}

void appendQuoted(std::u16string_view cell, TextBuffer& out) {
  out.append(u'"');
  appendDoublingQuotes(cell, out);
  out.append(u'"');
}

// Only the head of a block is told; a full disk must not fill the system log too.
void logFailedWrite(const char* bytes, std::size_t count, int reason) {
  constexpr std::size_t kToldBytes = 64;
  const std::u16string head = toUtf16(std::string_view(bytes, std::min(count, kToldBytes)));
  logToSystem(
      localizedFormat(u"Could not write string [%@] to file, errno: %d", {head, std::int64_t{reason}}));
}

}  // namespace

void OutputBuffer::flush() {
  for (std::size_t done = 0; done < size_;) {
    const ssize_t count = ::write(descriptor_, data_.get() + done, size_ - done);
    if (count <= 0) {
      if (count < 0 && errno == EINTR) continue;
      logFailedWrite(data_.get() + done, size_ - done, errno);
      break;
    }
    bytesWritten_ += count;
    done += static_cast<std::size_t>(count);
  }
  size_ = 0;
}

void OutputBuffer::makeRoom(std::size_t bytes) {
  flush();
  if (bytes <= capacity_) return;
  capacity_ = std::max(bytes, kBlockSize);
  data_.reset(new char[capacity_]);
}

TextWriter::TextWriter(int descriptor, std::int64_t encoding, std::u16string_view replacement)
    : out_(descriptor),
      encoding_(static_cast<Encoding>(encoding)),
      replacement_(replacement),
      replacementBytes_(encodedText(replacement, encoding_)),
      encodeTable_(singleByteEncodeTable(encoding_)),
      asciiIsItself_(encodeTable_ || encoding_ == Encoding::Utf8) {
  // The bytes of a converted text end at its first NUL.
  if (replacementBytes_)
    replacementBytes_->resize(std::min(replacementBytes_->find('\0'), replacementBytes_->size()));
  if (!encodeTable_) return;
  byteOrReplacement_.assign(encodeTable_, encodeTable_ + 0x10000);
  if (!replacementBytes_ || replacementBytes_->size() != 1) return;
  // One byte for another; U+0000 stays without one.
  std::replace(byteOrReplacement_.begin() + 1, byteOrReplacement_.end(), std::uint8_t{0},
               static_cast<std::uint8_t>((*replacementBytes_)[0]));
}

enum class TextWriter::Units { Utf8, Table, Unknown };

bool TextWriter::write(std::u16string_view text) {
  if (text.empty()) return false;
  if (encoding_ == Encoding::Utf8)
    writeUnits<Units::Utf8>(text);
  else if (encodeTable_ && replacementBytes_ && replacementBytes_->size() <= kShortReplacement)
    writeUnits<Units::Table>(text);
  else
    writeUnits<Units::Unknown>(text);
  return true;
}

template <TextWriter::Units units>
char* TextWriter::putUnit(char16_t unit, char* to) const {
  if constexpr (units == Units::Utf8) {
    return putUtf8(unit, to);
  } else {
    const std::uint8_t byte = encodeTable_[unit];
    *to = static_cast<char>(byte);
    if (byte != 0) return to + 1;
    if (unit == 0) return to;
    return std::copy(replacementBytes_->begin(), replacementBytes_->end(), to);
  }
}

// Writes units from the start of the text that are sequences by themselves, eight at a time.
template <TextWriter::Units units>
EncodedRun TextWriter::putRun(std::u16string_view text, char* to) const {
  if constexpr (units == Units::Utf8) return encodeUtf8Run(text, to);
  constexpr std::size_t kBlock = 8;
  EncodedRun run;
  for (; text.size() - run.units >= kBlock && standAlone8(text.data() + run.units); run.units += kBlock) {
    std::size_t known = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
      const std::uint8_t byte = byteOrReplacement_[text[run.units + i]];
      to[run.units + i] = static_cast<char>(byte);
      known += byte != 0;
    }
    if (known != kBlock) break;
  }
  run.bytes = run.units;
  return run;
}

// The same for less than eight units, filled up with ones of one byte.
template <TextWriter::Units units>
EncodedRun TextWriter::putFew(std::u16string_view text, char* to) const {
  char16_t eight[8] = {u'a', u'a', u'a', u'a', u'a', u'a', u'a', u'a'};
  for (std::size_t i = 0; i < text.size(); ++i) eight[i] = text[i];
  EncodedRun run = putRun<units>({eight, 8}, to);
  if (run.units == 0) return run;
  run.bytes -= 8 - text.size();
  run.units = text.size();
  return run;
}

// In one walk: runs of units that stand alone, single units that are inert, and sequences, which begin with
// the inert unit before the first one that is not.
template <TextWriter::Units units>
void TextWriter::writeUnits(std::u16string_view text) {
  constexpr std::size_t kFewUnits = 8;
  constexpr std::size_t kMostBytes = units == Units::Utf8 ? 3 : kShortReplacement;  // of a unit
  std::size_t at = 0;
  while (at < text.size()) {
    std::size_t limit = std::min(text.size(), at + kPieceUnits);
    while (limit < text.size() && !inert_.contains(text[limit]))
      ++limit;  // nothing behind it joins what is before it
    char* const start = out_.room((limit - at) * kMostBytes + kRunSlack);
    char* to = start;
    bool hasLast = false;       // the unit before is a sequence so far
    std::size_t lastBytes = 0;  // and took so many bytes
    std::int64_t count = 0;
    bool atSequence = false;
    while (at < limit && !atSequence) {
      if (units != Units::Unknown) {
        const std::u16string_view rest = text.substr(at, limit - at);
        const EncodedRun run = rest.size() < kFewUnits ? putFew<units>(rest, to) : putRun<units>(rest, to);
        if (run.units > 0) {
          to += run.bytes;
          at += run.units;
          count += static_cast<std::int64_t>(run.units);
          lastBytes = units == Units::Utf8 ? utf8Length(text[at - 1]) : 1;
          hasLast = true;
        }
      }
      for (const std::size_t end = std::min(limit, at + kFewUnits); at < end; ++at, ++count) {
        if (units == Units::Unknown || !inert_.contains(text[at])) {
          atSequence = true;
          break;
        }
        char* const next = putUnit<units>(text[at], to);
        lastBytes = static_cast<std::size_t>(next - to);
        hasLast = true;
        to = next;
      }
    }
    if (atSequence && hasLast) {
      to -= lastBytes;
      --count;
      --at;
    }
    out_.extend(static_cast<std::size_t>(to - start));
    charactersEncoded_ += count;
    if (atSequence) {
      const std::size_t end = composedSequenceEnd(text, at);
      writeSequence(text.substr(at, end - at));
      at = end;
    }
  }
}

void TextWriter::writeSequence(std::u16string_view sequence) {
  if (encoding_ == Encoding::Utf8 && writeUtf8Sequence(sequence)) return;
  sequenceBytes_.clear();
  if (!appendEncoded(sequence, encoding_, sequenceBytes_)) return writeReplacement();
  const std::size_t size = std::min(sequenceBytes_.find('\0'), sequenceBytes_.size());
  std::memcpy(out_.room(size), sequenceBytes_.data(), size);
  out_.extend(size);
  ++charactersEncoded_;
}

// False, and nothing written, for what is not plain: a NUL, or a lone surrogate.
bool TextWriter::writeUtf8Sequence(std::u16string_view sequence) {
  char* const start = out_.room(sequence.size() * 3);
  char* to = start;
  for (std::size_t i = 0; i < sequence.size(); ++i) {
    const char16_t unit = sequence[i];
    if (unit == 0) return false;
    if (!isSurrogate(unit)) {
      to = putUtf8(unit, to);
      continue;
    }
    const char32_t character = codePointAt(sequence, i++);
    if (character <= 0xFFFF) return false;
    *to++ = static_cast<char>(0xF0 | character >> 18);
    *to++ = static_cast<char>(0x80 | (character >> 12 & 0x3F));
    *to++ = static_cast<char>(0x80 | (character >> 6 & 0x3F));
    *to++ = static_cast<char>(0x80 | (character & 0x3F));
  }
  out_.extend(static_cast<std::size_t>(to - start));
  ++charactersEncoded_;
  return true;
}

void TextWriter::writeReplacement() {
  if (!replacementBytes_) {
    logToSystem(localizedFormat(u"Could not encode replacement string [%@]", {replacement_}));
    return;
  }
  if (const std::size_t size = replacementBytes_->size()) {
    std::memcpy(out_.room(size), replacementBytes_->data(), size);
    out_.extend(size);
  }
  ++charactersEncoded_;
}

bool TextWriter::writeJoined(std::span<const std::u16string_view> cells, std::u16string_view separator,
                             std::size_t quotedCount) {
  if (cells.empty()) return false;
  if (asciiIsItself_) {
    if (writeJoinedAscii(cells, separator, quotedCount)) return true;
    if (cells.size() == 1 && quotedCount == 0) return write(cells[0]);
    if (standApart(cells, separator)) return writeCellByCell(cells, separator, quotedCount);
  }
  joined_.clear();
  appendJoined(cells, separator, quotedCount, joined_);
  return write(joined_.view());
}

// Whether nothing can join over the border of a cell, with or without quotes: a separator like a comma or a
// tab ends every sequence, as a quote does, and no cell begins with what joins them.
bool TextWriter::standApart(std::span<const std::u16string_view> cells, std::u16string_view separator) const {
  if (separator.size() != 1 || separator[0] >= 0x80 || isAsciiLetter(separator[0]) || separator[0] == 0)
    return false;
  return std::all_of(cells.begin(), cells.end(),
                     [&](std::u16string_view cell) { return cell.empty() || inert_.contains(cell[0]); });
}

bool TextWriter::writeCellByCell(std::span<const std::u16string_view> cells, std::u16string_view separator,
                                 std::size_t quotedCount) {
  const std::int64_t before = charactersEncoded_;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) putAscii(static_cast<char>(separator[0]));
    const bool quoted = i < quotedCount;
    if (quoted) putAscii('"');
    if (!writeAsciiCell(cells[i], quoted)) {
      if (quoted && simd::findUnit(cells[i], u'"', 0) < cells[i].size()) {
        joined_.clear();
        appendDoublingQuotes(cells[i], joined_);
        write(joined_.view());
      } else {
        write(cells[i]);
      }
    }
    if (quoted) putAscii('"');
  }
  return charactersEncoded_ > before || cells.size() > 1 || !cells[0].empty();
}

// False, and nothing written, if the cell has anything but ASCII.
bool TextWriter::writeAsciiCell(std::u16string_view cell, bool doublesQuotes) {
  if (cell.size() > OutputBuffer::kBlockSize / 2) return false;
  char* const start = out_.room(cell.size() * 2);
  Narrowing narrowing;
  narrow(cell, start, narrowing);
  const Narrowed found = narrowing.result();
  if (!found.ascii) return false;
  std::size_t bytes = cell.size();
  if (doublesQuotes && found.hasQuote)
    bytes = static_cast<std::size_t>(writeDoublingQuotes(cell, start) - start);
  out_.extend(bytes);
  charactersEncoded_ += static_cast<std::int64_t>(bytes);
  return true;
}

void TextWriter::putAscii(char character) {
  *out_.room(1) = character;
  out_.extend(1);
  ++charactersEncoded_;
}

// Narrows cell by cell straight into the buffer. False, and nothing written, if there is anything but ASCII,
// or nothing at all.
bool TextWriter::writeJoinedAscii(std::span<const std::u16string_view> cells, std::u16string_view separator,
                                  std::size_t quotedCount) {
  std::size_t most = 0;
  for (const auto& cell : cells) most += cell.size();
  most += (cells.size() - 1) * separator.size();
  if (quotedCount > 0) most = most * 2 + cells.size() * 2;
  if (most == 0 || most > OutputBuffer::kBlockSize) return false;

  char* const start = out_.room(most);
  char* to = start;
  Narrowing all;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) {
      narrow(separator, to, all);
      to += separator.size();
    }
    if (i >= quotedCount) {
      narrow(cells[i], to, all);
      to += cells[i].size();
      continue;
    }
    Narrowing cell;
    *to++ = '"';
    narrow(cells[i], to, cell);
    const Narrowed found = cell.result();
    if (!found.ascii) return false;
    to = found.hasQuote ? writeDoublingQuotes(cells[i], to) : to + cells[i].size();
    *to++ = '"';
  }
  if (!all.result().ascii) return false;
  out_.extend(static_cast<std::size_t>(to - start));
  charactersEncoded_ += to - start;
  return true;
}

void appendJoined(std::span<const std::u16string_view> cells, std::u16string_view separator,
                  std::size_t quotedCount, TextBuffer& out) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) out.append(separator);
    if (i < quotedCount)
      appendQuoted(cells[i], out);
    else
      out.append(cells[i]);
  }
}

std::u16string textAsEncoded(std::u16string_view text, std::int64_t encoding, std::u16string_view replacement,
                             std::size_t enoughUnits) {
  std::u16string result;
  for (std::size_t at = 0; at < text.size() && result.size() < enoughUnits;) {
    const std::size_t end = composedSequenceEnd(text, at);
    const std::u16string_view sequence = text.substr(at, end - at);
    result += canBeConverted(sequence, static_cast<Encoding>(encoding)) ? sequence : replacement;
    at = end;
  }
  return result;
}

}  // namespace quillet
