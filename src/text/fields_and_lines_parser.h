// Turns the bytes of an open file into text, one line a call: the only way that file bytes become text.
//
// A parser holds one block of the file and nothing else, so files can be of any size. Bytes are decoded, go
// through a replacement table, and are cut at the line separator where it stands outside quotes. A line of
// more than 16,384 UTF-16 units comes in pieces; this is meant. The caller opens and closes the descriptor;
// who rewinds it needs a new parser.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/text_buffer.h"
#include "platform/text_search.h"
#include "text/replacement_table.h"

namespace quillet {

// Counters that the reader adds to and never clears.
struct ReadLineStats {
  std::int64_t bytesRead = 0;  // taken from the file, valid or not
  std::int64_t charactersDecoded = 0;
  std::int64_t linesRead = 0;               // ended at a separator or at the end of the file
  std::int64_t maximumLengthLinesRead = 0;  // pieces given out at the limit
  bool operator==(const ReadLineStats&) const = default;
  ReadLineStats& operator+=(const ReadLineStats& other);
};

// How lines are read, made once a file. An empty quote string or line separator is none.
struct LineRules {
  LineRules(std::int64_t encoding, std::u16string_view quoteString, std::u16string_view lineSeparator,
            ReplacementTable replaceCharacters, std::u16string_view decodeErrorReplacement);

  std::int64_t encoding;
  std::u16string quoteString;
  std::u16string lineSeparator;
  ReplacementTable replaceCharacters;
  std::u16string decodeErrorReplacement;

  // What follows from these.
  TextSearcher separatorAtEnd;
  const char16_t* singleByteTable;  // null for UTF-8
  char16_t quoteUnit = 0;           // the quote when it is one ASCII character other than NUL, else 0
  char16_t separatorLastUnit = 0;   // with plainSeparator; else 0
  bool plainSeparator = false;      // ASCII that only itself is equivalent to: a comparison of units finds it
  bool plainNotAscii = false;       // a character that is not ASCII can neither be the quote nor end a line
  std::uint8_t stops[128] = {};     // 1: an ASCII character that only the step by step rule may handle
  bool hasStops = false;
  bool decodesRuns = false;  // UTF-8 of which no character but the quote needs a look
  bool hasPlainHighBytes =
      false;  // a single-byte encoding whose bytes above 7F need not be looked at one by one
  bool highByteStops[128] = {};  // but for these, by the byte less 80
};

enum class ReadResult { Line = 0, Failure = 1, EndOfFile = 2 };

class FieldsAndLinesParser {
 public:
  static constexpr std::size_t kLineLimit = 16'384;  // UTF-16 units
  static constexpr std::size_t kReadSize = 16'384;   // bytes
  static constexpr std::size_t kLargeReadSize = 131'072;

  // readSize: how many bytes are asked of the file at a time.
  explicit FieldsAndLinesParser(std::size_t readSize = kReadSize);

  // 1: a byte was stored; 0: end of file; -1: errno has the reason.
  int readCharFrom(int descriptor, unsigned char& into);

  // Appends the next line, without its separator, to into. Line: a line or a piece is there and more may
  // follow; EndOfFile: into may hold a last line; Failure: errno has the reason, into is as it was. Decode
  // and read errors are appended to errorString, if not null.
  ReadResult readLineFrom(int descriptor, const LineRules& rules, TextBuffer& into, ReadLineStats& stats,
                          std::u16string* errorString);

 private:
  struct Call;
  struct Stretch;
  enum class Step { GoOn, LineEnded, Failed, EndOfFile };

  bool refill(int descriptor, int& result);
  Step readStretch(Call& call);
  static Stretch lookAt(const Call& call, const unsigned char* from, std::size_t wanted, std::uint64_t& high,
                        char16_t* units);
  static bool endsInSeparator(Call& call);
  bool readPlainCharacters(Call& call);
  Step readCharacter(Call& call);
  Step readSingleByteCharacter(Call& call);
  Step readUtf8Character(Call& call);
  Step appendCharacter(Call& call, std::u16string_view character);
  void appendDecodeError(Call& call, int copies);
  static Step finishAtEnd(Call& call, int result);

  std::unique_ptr<unsigned char[]> inputBuffer_;
  std::size_t readSize_;
  std::size_t inputBufferIndex_ = 0;  // of the next unread byte
  std::size_t bytesReadIntoInputBuffer_ = 0;
};

}  // namespace quillet
