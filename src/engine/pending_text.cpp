#include "engine/pending_text.h"

#include <cstdlib>
#include <unistd.h>

#include "platform/composed_sequences.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

// Where a text can be cut so that what follows, whatever it is, can join only what stays behind the cut. 0 if
// there is no such place.
std::size_t safeCut(std::u16string_view text) {
  for (std::size_t at = text.size(); at > 1; --at)
    if (isInertUnit(text[at - 1]) && isInertUnit(text[at - 2])) return at - 1;
  return 0;
}

// Whether any number of units may stand between the character and what joins it, an emoji: then the end of
// its sequence is not known before these have been seen.
bool joinsFromAfar(std::u16string_view text, std::size_t at) {
  std::u16string joined;
  appendCodePoint(codePointAt(text, at), joined);
  const std::size_t units = joined.size();
  joined += u"\U0001F600";
  return composedSequenceEnd(joined, 0) > units;
}

// The same for a text, from the start of a sequence, that has no plain units: the last end of a sequence that
// nothing behind the text can move.
std::size_t lastSureSequenceEnd(std::u16string_view text) {
  constexpr std::size_t kLookAhead = 4;     // units behind a sequence that can decide where it ends
  constexpr std::size_t kLastPart = 1'024;  // in which a place to cut is looked for
  std::size_t cut = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = composedSequenceEnd(text, at);
    if (end + kLookAhead > text.size()) break;
    if (end + kLastPart > text.size() && !joinsFromAfar(text, at)) cut = end;
    at = end;
  }
  return cut;
}

}  // namespace

void PendingText::addPart(std::u16string_view part, std::u16string_view separator) {
  if (partCount_++ > 0) append(separator);
  append(part);
}

void PendingText::append(std::u16string_view text) {
  memory_.append(text);
  units_ += text.size();
  if (memory_.size() > kMostUnitsInMemory && !noFile_) moveToFile();
}

void PendingText::moveToFile() {
  if (const std::string folder = file_ ? "" : folder_(); !folder.empty()) {
    std::string name = folder + "/pending-XXXXXX";
    const int descriptor = mkstemp(name.data());
    if (descriptor >= 0) {
      unlink(name.c_str());
      file_ = fdopen(descriptor, "w+b");
      if (!file_) close(descriptor);
    }
  }
  const std::size_t bytes = memory_.size() * sizeof(char16_t);
  const long before = file_ ? std::ftell(file_) : -1;
  if (!file_ || std::fwrite(memory_.data(), 1, bytes, file_) != bytes || std::fflush(file_) != 0) {
    // Nothing is lost: the memory still has it, and takes what comes.
    noFile_ = true;
    if (file_ && (ftruncate(fileno(file_), before) != 0 || std::fseek(file_, before, SEEK_SET) != 0))
      std::clearerr(file_);
    return;
  }
  memory_.clear();
}

void PendingText::forEachPiece(const std::function<void(std::u16string_view piece)>& visit) {
  std::u16string piece;
  const auto take = [&](std::u16string_view text) {
    piece += text;
    if (piece.size() < kPieceUnits) return;
    std::size_t cut = safeCut(piece);
    if (cut == 0) cut = lastSureSequenceEnd(piece);
    if (cut == 0) return;
    visit(std::u16string_view(piece).substr(0, cut));
    piece.erase(0, cut);
  };
  if (file_) {
    std::rewind(file_);
    std::u16string block(kPieceUnits, u'\0');
    while (const std::size_t bytes = std::fread(block.data(), 1, block.size() * sizeof(char16_t), file_))
      take(std::u16string_view(block).substr(0, bytes / sizeof(char16_t)));
  }
  const std::u16string_view rest = memory_.view();
  if (!file_ && !rest.empty()) return visit(rest);
  for (std::size_t at = 0; at < rest.size(); at += kPieceUnits) take(rest.substr(at, kPieceUnits));
  if (!piece.empty()) visit(piece);
}

void PendingText::clear() {
  if (file_) std::fclose(file_);
  file_ = nullptr;
  noFile_ = false;
  if (memory_.size() > kMostUnitsInMemory)
    memory_ = TextBuffer();
  else
    memory_.clear();
  units_ = 0;
  partCount_ = 0;
}

}  // namespace quillet
