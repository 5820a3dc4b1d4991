// A line of text under a window, with a small button that clears it. It stays until it is replaced or
// cleared.
#pragma once

#include <string>

namespace quillet {

enum class TextColour { SecondaryLabel, Red };

class StatusLine {
 public:
  // The types 1 and 2 warn and are red; 0 is a plain message.
  void show(std::u16string text, int type);
  void clear();  // the colour stays with the label

  const std::u16string& text() const { return text_; }
  int type() const { return type_; }
  bool clearButtonShown() const { return clearButtonShown_; }
  TextColour colour() const { return colour_; }

 private:
  std::u16string text_;
  int type_ = 0;
  bool clearButtonShown_ = false;
  TextColour colour_ = TextColour::SecondaryLabel;
};

}  // namespace quillet
