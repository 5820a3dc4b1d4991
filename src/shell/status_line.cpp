#include "shell/status_line.h"

#include <utility>

namespace quillet {

void StatusLine::show(std::u16string text, int type) {
  text_ = std::move(text);
  type_ = type;
  clearButtonShown_ = true;
  colour_ = type == 1 || type == 2 ? TextColour::Red : TextColour::SecondaryLabel;
}

void StatusLine::clear() {
  text_.clear();
  type_ = 0;
  clearButtonShown_ = false;
}

}  // namespace quillet
