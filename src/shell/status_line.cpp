#include "shell/status_line.h"

#include <utility>

namespace quillet {

StatusLine::StatusLine(Window& window, std::string labelName, std::string buttonName,
                       std::string clearHandler)
    : label_(window, std::move(labelName)),
      clearButton_(window, std::move(buttonName), {}, std::move(clearHandler)) {
  clearButton_.setHidden(true);
}

void StatusLine::addCommandsTo(Commands& commands) {
  commands.add(clearButton_.handler(), [this] { clear(); });
}

void StatusLine::show(std::u16string text, int type) {
  label_.setText(std::move(text));
  type_ = type;
  clearButton_.setHidden(false);
  label_.setColour(type == 1 || type == 2 ? TextColour::Red : TextColour::SecondaryLabel);
}

void StatusLine::clear() {
  label_.setText({});
  type_ = 0;
  clearButton_.setHidden(true);
}

}  // namespace quillet
