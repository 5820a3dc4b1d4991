// Texts that wait to be joined into one. What is too long for memory waits in a file without a name, so that
// joining any number of lines takes a bounded amount of memory.
#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

#include "platform/text_buffer.h"

namespace quillet {

class PendingText {
 public:
  // The folder in which the file is made, asked for when it is needed; "" is none, and memory has to do.
  explicit PendingText(std::function<std::string()> folder) : folder_(std::move(folder)) {}
  ~PendingText() { clear(); }
  PendingText(const PendingText&) = delete;
  PendingText& operator=(const PendingText&) = delete;

  bool hasParts() const { return partCount_ > 0; }
  bool isEmptyText() const { return units_ == 0; }

  // Adds a part, behind the separator if it is not the first.
  void addPart(std::u16string_view part, std::u16string_view separator);

  // Calls visit with the text in pieces, cut where no composed sequence is cut.
  void forEachPiece(const std::function<void(std::u16string_view piece)>& visit);
  void clear();

 private:
  static constexpr std::size_t kMostUnitsInMemory = 1'048'576;
  static constexpr std::size_t kPieceUnits = 65'536;

  void append(std::u16string_view text);
  void moveToFile();

  std::function<std::string()> folder_;
  TextBuffer memory_;          // what follows behind the file's content
  std::FILE* file_ = nullptr;  // already unlinked
  bool noFile_ = false;        // none could be made or written to: memory has to do
  std::size_t units_ = 0;      // of the whole text
  std::size_t partCount_ = 0;
};

}  // namespace quillet
