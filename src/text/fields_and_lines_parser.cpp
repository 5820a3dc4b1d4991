#include "text/fields_and_lines_parser.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <unistd.h>

#include "platform/code_pages.h"
#include "platform/localization.h"
#include "platform/simd_blocks.h"
#include "platform/unicode_text.h"
#include "platform/utf8_runs.h"

namespace quillet {

namespace {

constexpr std::uint8_t kStop = 1;     // only the step by step rule may handle the character
constexpr std::uint8_t kSpecial = 2;  // the quote, or the last unit of the separator

// The three characters with a canonical equivalent in ASCII.
char32_t asciiEquivalent(char32_t character) {
  switch (character) {
    case 0x037E:
      return U';';
    case 0x1FEF:
      return U'`';
    case 0x212A:
      return U'K';
    default:
      return character;
  }
}

bool isPlainAscii(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) {
    return unit < 0x80 && unit != u';' && unit != u'`' && unit != u'K';
  });
}

bool isOneCharacter(std::u16string_view text) {
  return !text.empty() && unitsOfCodePoint(codePointAt(text, 0)) == text.size();
}

char32_t lastCodePoint(std::u16string_view text) {
  const std::size_t last = text.size() - 1;
  return last > 0 && isLowSurrogate(text[last]) ? codePointAt(text, last - 1) : text[last];
}

// How many bytes a UTF-8 sequence takes by its first byte alone.
int expectedLength(unsigned char first) {
  if (first < 0xC0) return 1;
  if (first < 0xE0) return 2;
  return first < 0xF0 ? 3 : 4;
}

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

// Whether the bytes are one complete character.
bool isValidUtf8(const unsigned char* b, int count) {
  switch (count) {
    case 1:
      return b[0] < 0x80;
    case 2:
      return b[0] >= 0xC2 && b[0] <= 0xDF && isContinuation(b[1]);
    case 3:
      if (!isContinuation(b[1]) || !isContinuation(b[2])) return false;
      if (b[0] == 0xE0) return b[1] >= 0xA0;
      if (b[0] == 0xED) return b[1] <= 0x9F;
      return b[0] >= 0xE1 && b[0] <= 0xEF;
    case 4:
      if (!isContinuation(b[1]) || !isContinuation(b[2]) || !isContinuation(b[3])) return false;
      if (b[0] == 0xF0) return b[1] >= 0x90;
      if (b[0] == 0xF4) return b[1] <= 0x8F;
      return b[0] >= 0xF1 && b[0] <= 0xF3;
    default:
      return false;
  }
}

// The code point of a valid sequence.
char32_t decodedUtf8(const unsigned char* b, int count) {
  switch (count) {
    case 1:
      return b[0];
    case 2:
      return (b[0] & 0x1Fu) << 6 | (b[1] & 0x3Fu);
    case 3:
      return (b[0] & 0x0Fu) << 12 | (b[1] & 0x3Fu) << 6 | (b[2] & 0x3Fu);
    default:
      return (b[0] & 0x07u) << 18 | (b[1] & 0x3Fu) << 12 | (b[2] & 0x3Fu) << 6 | (b[3] & 0x3Fu);
  }
}

std::uint64_t stopBits(const unsigned char* bytes, const std::uint8_t* classes) {
  std::uint64_t mask = 0;
  for (std::size_t i = 0; i < simd::kBlock; ++i) mask |= std::uint64_t(classes[bytes[i] & 0x7F] & kStop) << i;
  return mask;
}

// Puts the units of the bytes at the set bits in their places; returns the bit of the first that must be
// stopped at.
std::uint64_t decodeHighBytes(const unsigned char* bytes, std::uint64_t high, const LineRules& rules,
                              char16_t* units) {
  for (; high; high &= high - 1) {
    const int i = std::countr_zero(high);
    if (rules.highByteStops[bytes[i] & 0x7F]) return high & (~high + 1);
    units[i] = rules.singleByteTable[bytes[i]];
  }
  return 0;
}

}  // namespace

ReadLineStats& ReadLineStats::operator+=(const ReadLineStats& other) {
  bytesRead += other.bytesRead;
  charactersDecoded += other.charactersDecoded;
  linesRead += other.linesRead;
  maximumLengthLinesRead += other.maximumLengthLinesRead;
  return *this;
}

LineRules::LineRules(std::int64_t encodingCode, std::u16string_view quote, std::u16string_view separator,
                     ReplacementTable table, std::u16string_view replacement)
    : encoding(encodingCode),
      quoteString(quote),
      lineSeparator(separator),
      replaceCharacters(std::move(table)),
      decodeErrorReplacement(replacement),
      separatorAtEnd(separator, BackwardsSearch | AnchoredSearch),
      singleByteTable(static_cast<Encoding>(encodingCode) == Encoding::Utf8
                          ? nullptr
                          : quillet::singleByteTable(static_cast<Encoding>(encodingCode))),
      plainSeparator(!separator.empty() && isPlainAscii(separator)),
      plainNotAscii((separator.empty() || plainSeparator) && (!isOneCharacter(quote) || quote[0] < 0x80)) {
  for (char16_t unit = 0; unit < 0x80; ++unit) {
    const bool undefined = singleByteTable && singleByteTable[unit] == kUndefinedByte;  // an unknown encoding
    if (undefined || replaceCharacters.affects(unit)) stops[unit] = kStop;
  }
  if (quoteString.size() == 1 && quoteString[0] < 0x80) {
    quoteUnit = quoteString[0];
    stops[quoteUnit] |= quoteUnit ? kSpecial : kStop;  // a NUL is left to the rule: 0 stands for no quote
  }
  if (!lineSeparator.empty()) {
    const char32_t last = asciiEquivalent(lastCodePoint(lineSeparator));
    if (plainSeparator) separatorLastUnit = static_cast<char16_t>(last);
    if (last < 0x80) stops[last] |= kSpecial;
    // Only a plain separator can be found by comparing units, and only where a quote cannot be meant as well.
    if (last < 0x80 && (!plainSeparator || last == quoteUnit)) stops[last] |= kStop;
  }
  decodesRuns = !singleByteTable && plainNotAscii && replaceCharacters.isEmpty();
  hasPlainHighBytes = singleByteTable && plainNotAscii;
  for (int i = 0; hasPlainHighBytes && i < 0x80; ++i) {
    const char16_t unit = singleByteTable[0x80 + i];
    highByteStops[i] = unit == kUndefinedByte || replaceCharacters.affects(unit);
  }
  hasStops = std::any_of(std::begin(stops), std::end(stops), [](std::uint8_t bits) { return bits & kStop; });
}

// One call of readLineFrom. The line buffer is the part of into from lineStart on.
struct FieldsAndLinesParser::Call {
  int descriptor;
  const LineRules& rules;
  TextBuffer& into;
  ReadLineStats& stats;
  std::u16string* errorString;
  std::size_t lineStart;
  bool inQuotes = false;

  std::size_t lineLength() const { return into.size() - lineStart; }
  std::u16string_view line() const { return into.view().substr(lineStart); }
  void report(std::u16string_view format, std::int64_t value) const {
    if (errorString) *errorString += localizedFormat(format, {value});
  }
  void count(std::size_t bytes, std::size_t characters) const {
    stats.bytesRead += static_cast<std::int64_t>(bytes);
    stats.charactersDecoded += static_cast<std::int64_t>(characters);
  }
};

FieldsAndLinesParser::FieldsAndLinesParser(std::size_t readSize)
    : inputBuffer_(new unsigned char[readSize + kRunSlack]()), readSize_(readSize) {}

bool FieldsAndLinesParser::refill(int descriptor, int& result) {
  ssize_t count;
  do {
    count = read(descriptor, inputBuffer_.get(), readSize_);
  } while (count < 0 && errno == EINTR);
  if (count <= 0) {
    result = count == 0 ? 0 : -1;
    return false;
  }
  inputBufferIndex_ = 0;
  bytesReadIntoInputBuffer_ = static_cast<std::size_t>(count);
  return true;
}

int FieldsAndLinesParser::readCharFrom(int descriptor, unsigned char& into) {
  int result = 1;
  if (inputBufferIndex_ >= bytesReadIntoInputBuffer_ && !refill(descriptor, result)) return result;
  into = inputBuffer_[inputBufferIndex_++];
  return 1;
}

ReadResult FieldsAndLinesParser::readLineFrom(int descriptor, const LineRules& rules, TextBuffer& into,
                                              ReadLineStats& stats, std::u16string* errorString) {
  Call call{descriptor, rules, into, stats, errorString, into.size()};
  for (;;) {
    Step step = readStretch(call);
    if (step == Step::GoOn) {
      if (rules.plainNotAscii && !rules.singleByteTable && !rules.decodesRuns && readPlainCharacters(call))
        continue;
      step = readCharacter(call);
    }
    switch (step) {
      case Step::GoOn:
        break;
      case Step::LineEnded:
        return ReadResult::Line;
      case Step::Failed:
        return ReadResult::Failure;
      case Step::EndOfFile:
        return ReadResult::EndOfFile;
    }
  }
}

// What can be taken at once of the bytes at hand.
struct FieldsAndLinesParser::Stretch {
  std::size_t bytes = 0;  // up to a stop, or up to and with the last unit of what may be a separator
  bool atSeparator = false;
  bool atStop = false;       // what follows is for the step by step rule
  std::uint64_t quotes = 0;  // where the bytes are the quote
};

// The quotes before a byte tell by their parity whether it is enclosed. In a single-byte encoding units
// become those of the first 64 bytes, in UTF-8 as far as they are ASCII.
FieldsAndLinesParser::Stretch FieldsAndLinesParser::lookAt(const Call& call, const unsigned char* from,
                                                           std::size_t wanted, std::uint64_t& high,
                                                           char16_t* units) {
  const LineRules& rules = call.rules;
  const std::uint64_t inReach = simd::lowBits(wanted);
  const simd::ByteBlock block(from);
  block.widen(units);
  high = block.notAscii() & inReach;
  std::uint64_t stops = rules.hasStops ? stopBits(from, rules.stops) & inReach & ~high : 0;
  if (rules.hasPlainHighBytes)
    stops |= decodeHighBytes(from, high, rules, units);
  else if (!rules.decodesRuns)
    stops |= high;

  Stretch stretch;
  stretch.bytes = stops ? static_cast<std::size_t>(std::countr_zero(stops)) : wanted;
  stretch.atStop = stops != 0;
  std::uint64_t inside = call.inQuotes ? ~std::uint64_t{0} : 0;
  if (rules.quoteUnit) {
    stretch.quotes = block.equalTo(static_cast<unsigned char>(rules.quoteUnit));
    inside ^= simd::prefixParity(stretch.quotes);
  }
  if (rules.plainSeparator) {
    const std::uint64_t ends = block.equalTo(static_cast<unsigned char>(rules.separatorLastUnit)) & ~inside &
                               simd::lowBits(stretch.bytes);
    if (ends) {
      stretch.bytes = static_cast<std::size_t>(std::countr_zero(ends)) + 1;
      stretch.atSeparator = true;
      stretch.atStop = false;
    }
  }
  return stretch;
}

// Takes blocks of text up to the line's end or the first character that needs the step by step rule. Stops
// short of the limit.
FieldsAndLinesParser::Step FieldsAndLinesParser::readStretch(Call& call) {
  const LineRules& rules = call.rules;
  for (;;) {
    // No character has more units than bytes.
    const std::size_t wanted = std::min(
        {bytesReadIntoInputBuffer_ - inputBufferIndex_, kLineLimit - 1 - call.lineLength(), simd::kBlock});
    const unsigned char* from = inputBuffer_.get() + inputBufferIndex_;
    if (wanted == 0 || (*from >= 0x80 && !rules.hasPlainHighBytes && !rules.decodesRuns)) return Step::GoOn;
    char16_t* const units = call.into.room(simd::kBlock + kRunSlack);
    std::uint64_t high = 0;
    const Stretch stretch = lookAt(call, from, wanted, high, units);
    DecodedRun run{stretch.bytes, stretch.bytes, stretch.bytes};
    if (rules.decodesRuns && (high & simd::lowBits(stretch.bytes)))
      run = decodeUtf8Run(from, stretch.bytes, units);
    if (run.bytes == 0) return Step::GoOn;
    call.into.extend(run.units);
    call.count(run.bytes, run.characters);
    inputBufferIndex_ += run.bytes;
    if (simd::isOdd(stretch.quotes & simd::lowBits(run.bytes))) call.inQuotes = !call.inQuotes;
    if (run.bytes < stretch.bytes)
      continue;  // the next character is cut by the block's end, or it is invalid
    if (stretch.atSeparator && endsInSeparator(call)) return Step::LineEnded;
    if (stretch.atStop) return Step::GoOn;
  }
}

// Takes a plain separator off the line's end.
bool FieldsAndLinesParser::endsInSeparator(Call& call) {
  const std::u16string& separator = call.rules.lineSeparator;
  if (call.lineLength() < separator.size()) return false;
  const std::size_t kept = call.into.size() - separator.size();
  if (separator.size() > 1 &&
      std::memcmp(call.into.data() + kept, separator.data(), separator.size() * sizeof(char16_t)) != 0)
    return false;
  call.into.truncate(kept);
  ++call.stats.linesRead;
  return true;
}

// Takes characters of UTF-8 one by one, as long as the table changes none and they are not ASCII for long.
// True if it took some and what follows is for readStretch again.
bool FieldsAndLinesParser::readPlainCharacters(Call& call) {
  constexpr int kManyAscii = 16;
  constexpr std::size_t kLongest = 4;  // bytes of a character
  const LineRules& rules = call.rules;
  const unsigned char* const start = inputBuffer_.get() + inputBufferIndex_;
  const std::size_t inBuffer = bytesReadIntoInputBuffer_ - inputBufferIndex_;
  const std::size_t mostUnits = kLineLimit - 2 - call.lineLength();  // beyond it the limit is near
  if (inBuffer < kLongest || mostUnits > kLineLimit) return false;
  // No character has more units than bytes, so one end serves for both.
  const unsigned char* const end = start + std::min(inBuffer - (kLongest - 1), mostUnits);
  const unsigned char* at = start;
  const std::uint8_t* const kinds = rules.stops;
  const unsigned quote = rules.quoteUnit;
  char16_t* const firstUnit = call.into.room(kLineLimit);
  char16_t* unit = firstUnit;
  std::size_t characters = 0;
  int asciiRun = 0;
  bool inQuotes = call.inQuotes;
  bool forStretch = false;
  for (; at < end; ++characters) {
    const unsigned first = *at;
    if (first < 0x80) {
      const unsigned kind = kinds[first];
      if (kind == 0) {
        if (++asciiRun == kManyAscii) {
          forStretch = true;
          break;
        }
      } else if (kind == kSpecial && first == quote) {
        inQuotes = !inQuotes;
      } else {
        forStretch = kind != kStop;
        break;
      }
      *unit++ = static_cast<char16_t>(first);
      ++at;
      continue;
    }
    asciiRun = 0;
    char32_t character;
    if (first < 0xE0) {
      if (first < 0xC2 || !isContinuation(at[1])) break;
      character = (first & 0x1F) << 6 | (at[1] & 0x3Fu);
      if (rules.replaceCharacters.affects(character)) break;
      at += 2;
    } else if (first < 0xF0) {
      character = (first & 0x0F) << 12 | (at[1] & 0x3Fu) << 6 | (at[2] & 0x3Fu);
      // Valid are two continuations, and neither what fits in fewer bytes nor a surrogate.
      if (!isContinuation(at[1]) || !isContinuation(at[2]) || character < 0x800 ||
          (character & 0xF800) == 0xD800)
        break;
      if (rules.replaceCharacters.affects(character)) break;
      at += 3;
    } else {
      if (!isValidUtf8(at, 4)) break;
      character = decodedUtf8(at, 4);
      if (rules.replaceCharacters.affects(character)) break;
      at += 4;
      *unit++ = static_cast<char16_t>(0xD7C0 + (character >> 10));
      character = 0xDC00 + (character & 0x3FF);
    }
    *unit++ = static_cast<char16_t>(character);
  }
  call.inQuotes = inQuotes;
  call.into.extend(static_cast<std::size_t>(unit - firstUnit));
  call.count(static_cast<std::size_t>(at - start), characters);
  inputBufferIndex_ += static_cast<std::size_t>(at - start);
  return forStretch && at > start;
}

FieldsAndLinesParser::Step FieldsAndLinesParser::readCharacter(Call& call) {
  return call.rules.singleByteTable ? readSingleByteCharacter(call) : readUtf8Character(call);
}

FieldsAndLinesParser::Step FieldsAndLinesParser::finishAtEnd(Call& call, int result) {
  if (result == 0) {
    if (call.lineLength() > 0) ++call.stats.linesRead;
    return Step::EndOfFile;
  }
  call.into.truncate(call.lineStart);  // what the line buffer held is lost: this is meant
  const int reason = errno;
  call.report(u"Error reading file: %d", reason);
  errno = reason;
  return Step::Failed;
}

FieldsAndLinesParser::Step FieldsAndLinesParser::readSingleByteCharacter(Call& call) {
  unsigned char byte = 0;
  if (const int result = readCharFrom(call.descriptor, byte); result != 1) return finishAtEnd(call, result);
  ++call.stats.bytesRead;
  const LineRules& rules = call.rules;
  const char16_t unit = rules.singleByteTable[byte];
  if (unit != kUndefinedByte) {
    ++call.stats.charactersDecoded;
    return appendCharacter(call, rules.replaceCharacters.replaced({&unit, 1}));
  }
  // A byte above 127 in ASCII is no error to tell; this is meant.
  if (static_cast<Encoding>(rules.encoding) != Encoding::Ascii)
    call.report(u"Could not init single-byte character [%d].", static_cast<signed char>(byte));
  return appendCharacter(call, rules.decodeErrorReplacement);
}

// An invalid sequence takes as many bytes as its first one promises, whatever they are: this is meant.
FieldsAndLinesParser::Step FieldsAndLinesParser::readUtf8Character(Call& call) {
  unsigned char bytes[4];
  int count = 0, expected = 1;
  do {
    if (const int result = readCharFrom(call.descriptor, bytes[count]); result != 1)
      return finishAtEnd(call, result);
    ++call.stats.bytesRead;
    if (count == 0) expected = expectedLength(bytes[0]);
    ++count;
  } while (count < expected);
  if (!isValidUtf8(bytes, count)) {
    call.report(u"Invalid %d-byte UTF-8 character.", count);
    appendDecodeError(call, count);
    return Step::GoOn;
  }
  ++call.stats.charactersDecoded;
  const char32_t character = decodedUtf8(bytes, count);
  const char16_t pair[2] = {static_cast<char16_t>(0xD7C0 + (character >> 10)),
                            static_cast<char16_t>(0xDC00 + (character & 0x3FF))};
  const char16_t unit = static_cast<char16_t>(character);
  const std::u16string_view text =
      character > 0xFFFF ? std::u16string_view(pair, 2) : std::u16string_view(&unit, 1);
  return appendCharacter(call, call.rules.replaceCharacters.replaced(text));
}

// The step by step rule for a character's text, which is already what the table made of it.
FieldsAndLinesParser::Step FieldsAndLinesParser::appendCharacter(Call& call, std::u16string_view text) {
  const LineRules& rules = call.rules;
  call.into.append(text);
  const bool limitHit = !text.empty() && call.lineLength() >= kLineLimit;
  if (!rules.quoteString.empty() && text == rules.quoteString) call.inQuotes = !call.inQuotes;
  if (limitHit) {
    // A line beyond the limit is given out in pieces, each a line to the caller; a separator that this very
    // character completed stays in the piece. Both are meant.
    ++call.stats.maximumLengthLinesRead;
    return Step::LineEnded;
  }
  if (call.inQuotes || rules.lineSeparator.empty()) return Step::GoOn;
  // A match is at most as long as the separator in its longest decomposed form.
  const std::size_t tailLength = std::min(call.lineLength(), rules.lineSeparator.size() * 4 + 4);
  const auto found = rules.separatorAtEnd.find(call.line().substr(call.lineLength() - tailLength));
  if (!found) return Step::GoOn;
  call.into.truncate(call.into.size() - tailLength + found->location);
  ++call.stats.linesRead;
  return Step::LineEnded;
}

// Neither the quote nor the separator is looked for in the replacement, and the limit does not end the call:
// the next text goes into the same line. This is meant.
void FieldsAndLinesParser::appendDecodeError(Call& call, int copies) {
  for (int i = 0; i < copies; ++i) call.into.append(call.rules.decodeErrorReplacement);
  if (call.lineLength() < kLineLimit) return;
  ++call.stats.maximumLengthLinesRead;
  call.lineStart = call.into.size();
}

}  // namespace quillet
