#include "text/file_scan.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

#include "platform/code_pages.h"
#include "platform/localization.h"
#include "platform/text_search.h"
#include "platform/unicode_text.h"
#include "text/encodings.h"

namespace quillet {

namespace {

constexpr std::size_t kScanBlockSize = 16384;  // bytes

constexpr int kInformation = 0;
constexpr int kError = 2;

constexpr std::int64_t kTabDelimited = 1;
constexpr std::int64_t kCsv = 2;
constexpr std::int64_t kPipeDelimited = 3;

// The first block of a file, up to its first NUL.
struct Block {
  enum class State { Read, NotOpened, NotRead, NoContent } state;
  int error = 0;  // errno of a failure
  std::string bytes = {};
};

Block readFirstBlock(const std::string& path) {
  // Without blocking, so that a pipe that nobody writes to does not stop the program.
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return {Block::State::NotOpened, errno};
  std::string bytes(kScanBlockSize, '\0');
  ssize_t count = 0;
  do {
    count = ::read(descriptor, bytes.data(), bytes.size());
  } while (count < 0 && errno == EINTR);
  const int error = errno;
  ::close(descriptor);
  if (count < 0) return {Block::State::NotRead, error};
  if (count == 0) return {Block::State::NoContent};
  bytes.resize(static_cast<std::size_t>(count));
  bytes.resize(std::min(bytes.find('\0'), bytes.size()));
  return {Block::State::Read, 0, std::move(bytes)};
}

std::optional<std::u16string> decodedUtf8(const std::string& bytes) {
  std::u16string text = toUtf16(bytes);
  if (toUtf8(text) != bytes) return {};  // what was ill-formed has become U+FFFD
  return text;
}

std::optional<std::u16string> decodedByTable(const std::string& bytes, const char16_t* table) {
  std::u16string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const char16_t unit = table[static_cast<unsigned char>(byte)];
    if (unit == kUndefinedByte) return {};
    text += unit;
  }
  return text;
}

// Nothing if any byte does not decode, also when the block's end cuts a sequence in two, which is meant.
std::optional<std::u16string> decoded(const std::string& bytes, Encoding encoding) {
  switch (encoding) {
    case Encoding::Utf8:
      return decodedUtf8(bytes);
    case Encoding::Ascii:
    case Encoding::WindowsCP1252:
    case Encoding::MacOSRoman:
      return decodedByTable(bytes, singleByteTable(encoding));
  }
  return {};
}

bool endsInCsv(const std::string& path) {
  constexpr std::string_view kExtension = ".csv";
  if (path.size() < kExtension.size()) return false;
  return std::equal(kExtension.begin(), kExtension.end(), path.end() - kExtension.size(),
                    [](char wanted, char found) {
                      return wanted == (found >= 'A' && found <= 'Z' ? found - 'A' + 'a' : found);
                    });
}

// By the whole block, not by its first line. A comma counts for nothing, which is meant: only the name tells
// CSV.
std::int64_t fileTypeOf(std::u16string_view text, const std::string& path) {
  if (text.find(u'\t') != std::u16string_view::npos) return kTabDelimited;
  if (text.find(u'|') != std::u16string_view::npos) return kPipeDelimited;
  return endsInCsv(path) ? kCsv : kTabDelimited;
}

bool hasBareCarriageReturn(std::u16string_view text) {
  const std::u16string unixEnds = stringByReplacingOccurrences(text, u"\r\n", u"\n");
  return stringByReplacingOccurrences(unixEnds, u"\n\r", u"\n").find(u'\r') != std::u16string::npos;
}

}  // namespace

void scanFile(const std::string& path, std::int64_t encoding, bool* lineEndsInCR,
              std::int64_t* detectedFileType,
              const std::function<void(int level, std::u16string_view text)>& log) {
  const std::u16string shownPath = toUtf16(path);
  const Block block = readFirstBlock(path);
  switch (block.state) {
    case Block::State::NotOpened:
      return log(kError, localizedFormat(u"Error %d: Could not open \"%@\" for scan",
                                         {std::int64_t{block.error}, shownPath}));
    case Block::State::NotRead:
      return log(kError, localizedFormat(u"Error %d: Could not read file \"%@\"",
                                         {std::int64_t{block.error}, shownPath}));
    case Block::State::NoContent:
      return;
    case Block::State::Read:
      break;
  }
  const std::optional<std::u16string> text = decoded(block.bytes, static_cast<Encoding>(encoding));
  if (!text) {
    return log(kError, localizedFormat(u"Could not encode first line using encoding %@ in \"%@\"",
                                       {stringForEncoding(encoding), shownPath}));
  }
  if (lineEndsInCR) *lineEndsInCR = hasBareCarriageReturn(*text);
  if (detectedFileType) *detectedFileType = fileTypeOf(*text, path);
  if (text->empty()) log(kInformation, localizedFormat(u"First line was empty in \"%@\"", {shownPath}));
}

}  // namespace quillet
