// Growing buffers for the hot loops: they never set memory that is about to be written, and keep what they
// have between lines, so that nothing is allocated in the steady state.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace quillet {

// One growing text. Views into it end with the next append.
class TextBuffer {
 public:
  explicit TextBuffer(std::size_t capacity = 16'384) { grow(capacity); }

  std::size_t size() const { return size_; }
  bool isEmpty() const { return size_ == 0; }
  std::u16string_view view() const { return {data_.get(), size_}; }
  char16_t* data() { return data_.get(); }

  void clear() { size_ = 0; }
  void truncate(std::size_t size) { size_ = size; }

  // Room for this many units behind the text, to be written by the caller and taken in by extend().
  char16_t* room(std::size_t units) {
    if (capacity_ - size_ < units) grow(std::max(size_ + units, capacity_ * 2));
    return data_.get() + size_;
  }
  void extend(std::size_t units) { size_ += units; }

  void append(std::u16string_view text) {
    if (text.empty()) return;
    std::memcpy(room(text.size()), text.data(), text.size() * sizeof(char16_t));
    size_ += text.size();
  }
  void append(char16_t unit) {
    *room(1) = unit;
    ++size_;
  }

 private:
  void grow(std::size_t capacity) {
    std::unique_ptr<char16_t[]> larger(new char16_t[capacity]);
    if (size_) std::memcpy(larger.get(), data_.get(), size_ * sizeof(char16_t));
    data_ = std::move(larger);
    capacity_ = capacity;
  }

  std::unique_ptr<char16_t[]> data_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

// Memory for the changed texts of one line. Views hold until reset().
class TextArena {
 public:
  // Room for this many units, which stay unused unless taken in by commit(); ends the room given before.
  char16_t* room(std::size_t units) {
    while (current_ < chunks_.size() && chunks_[current_].capacity - used_ < units) {
      ++current_;
      used_ = 0;
    }
    if (current_ == chunks_.size()) addChunk(units);
    return chunks_[current_].data.get() + used_;
  }
  // The first units of the last room, as a text that stays.
  std::u16string_view commit(std::size_t units) {
    const char16_t* start = chunks_[current_].data.get() + used_;
    used_ += units;
    return {start, units};
  }
  std::u16string_view copy(std::u16string_view text) {
    if (text.empty()) return {};
    std::memcpy(room(text.size()), text.data(), text.size() * sizeof(char16_t));
    return commit(text.size());
  }

  // Ends all views. Keeps the chunks, unless a line of rare size made them many.
  void reset() {
    if (total_ > kKeptUnits) {
      chunks_.clear();
      total_ = 0;
    }
    current_ = 0;
    used_ = 0;
  }

 private:
  static constexpr std::size_t kFirstChunk = 65'536;  // units
  static constexpr std::size_t kKeptUnits = 1'048'576;

  struct Chunk {
    std::unique_ptr<char16_t[]> data;
    std::size_t capacity;
  };

  void addChunk(std::size_t units) {
    const std::size_t capacity = std::max(units, kFirstChunk);
    chunks_.push_back({std::unique_ptr<char16_t[]>(new char16_t[capacity]), capacity});
    total_ += capacity;
    used_ = 0;
  }

  std::vector<Chunk> chunks_;
  std::size_t current_ = 0;  // index of the chunk in use
  std::size_t used_ = 0;     // units of it
  std::size_t total_ = 0;
};

}  // namespace quillet
