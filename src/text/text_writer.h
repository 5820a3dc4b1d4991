// Encodes text and writes it to a file: the way that all output goes.
//
// Text is converted by composed character sequences. One that the encoding lacks is replaced as a whole by
// the replacement text; where that cannot be converted either, nothing is written and the system log is told.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/code_pages.h"
#include "platform/composed_sequences.h"
#include "platform/text_buffer.h"
#include "platform/utf8_runs.h"

namespace quillet {

// Bytes on their way to a file, written in large blocks. A block that cannot be written is told to the system
// log, once, and is lost; the writing goes on.
class OutputBuffer {
 public:
  static constexpr std::size_t kBlockSize = 262'144;  // bytes

  explicit OutputBuffer(int descriptor) : descriptor_(descriptor) {}

  // Room for this many bytes, to be taken in by extend().
  char* room(std::size_t bytes) {
    if (capacity_ - size_ < bytes) makeRoom(bytes);
    return data_.get() + size_;
  }
  void extend(std::size_t bytes) { size_ += bytes; }

  void flush();
  std::int64_t bytesWritten() const { return bytesWritten_; }  // those that reached the file

 private:
  void makeRoom(std::size_t bytes);

  int descriptor_;
  std::unique_ptr<char[]> data_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
  std::int64_t bytesWritten_ = 0;
};

class TextWriter {
 public:
  TextWriter(int descriptor, std::int64_t encoding, std::u16string_view replacement);

  // False for an empty text, which callers take for a failed write: this is meant. Writing itself never
  // fails.
  bool write(std::u16string_view text);

  // Writes the cells with the separator between them, each in double quotes with the quotes in it doubled
  // when quoted. False when all that together is empty. The first quotedCount cells are quoted.
  bool writeJoined(std::span<const std::u16string_view> cells, std::u16string_view separator,
                   std::size_t quotedCount);

  void flush() { out_.flush(); }
  std::int64_t bytesWritten() const { return out_.bytesWritten(); }      // after flush()
  std::int64_t charactersEncoded() const { return charactersEncoded_; }  // composed sequences

 private:
  enum class Units;  // how single units become bytes
  bool writeJoinedAscii(std::span<const std::u16string_view> cells, std::u16string_view separator,
                        std::size_t quotedCount);
  bool standApart(std::span<const std::u16string_view> cells, std::u16string_view separator) const;
  bool writeCellByCell(std::span<const std::u16string_view> cells, std::u16string_view separator,
                       std::size_t quotedCount);
  bool writeAsciiCell(std::u16string_view cell, bool doublesQuotes);
  void putAscii(char character);
  template <TextWriter::Units units>
  void writeUnits(std::u16string_view text);
  template <TextWriter::Units units>
  char* putUnit(char16_t unit, char* to) const;
  template <TextWriter::Units units>
  EncodedRun putRun(std::u16string_view text, char* to) const;
  template <TextWriter::Units units>
  EncodedRun putFew(std::u16string_view text, char* to) const;
  void writeSequence(std::u16string_view sequence);
  bool writeUtf8Sequence(std::u16string_view sequence);
  void writeReplacement();

  OutputBuffer out_;
  const InertUnits& inert_ = InertUnits::table();
  Encoding encoding_;
  std::u16string replacement_;
  std::optional<std::string> replacementBytes_;
  const std::uint8_t* encodeTable_;              // null unless single units are looked up
  std::vector<std::uint8_t> byteOrReplacement_;  // the same with a replacement of one byte filled in
  bool asciiIsItself_;                           // the encoding is one of the four
  std::string sequenceBytes_;
  TextBuffer joined_;
  std::int64_t charactersEncoded_ = 0;
};

// Appends the cells with the separator between them, the first quotedCount of them quoted, to a growing text.
void appendJoined(std::span<const std::u16string_view> cells, std::u16string_view separator,
                  std::size_t quotedCount, TextBuffer& out);

// What writing the text would put into a file, as text: each sequence that the encoding lacks replaced. Stops
// once the result has this many units.
std::u16string textAsEncoded(std::u16string_view text, std::int64_t encoding, std::u16string_view replacement,
                             std::size_t enoughUnits);

}  // namespace quillet
