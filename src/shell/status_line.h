// A line of text under a window, with a small button that clears it. It stays until it is replaced or
// cleared.
#pragma once

#include <string>

#include "shell/controls.h"

namespace quillet {

// Main thread only.
class StatusLine {
 public:
  // clearHandler: the command of the button. The window outlives the line.
  StatusLine(Window& window, std::string labelName, std::string buttonName, std::string clearHandler);

  void addCommandsTo(Commands& commands);

  // The types 1 and 2 warn and are red; 0 is a plain message.
  void show(std::u16string text, int type);
  void clear();  // the colour stays with the label

  const std::u16string& text() const { return label_.text(); }
  int type() const { return type_; }
  bool clearButtonShown() const { return !clearButton_.isHidden(); }
  TextColour colour() const { return label_.colour(); }

 private:
  Label label_;
  Button clearButton_;
  int type_ = 0;
};

}  // namespace quillet
