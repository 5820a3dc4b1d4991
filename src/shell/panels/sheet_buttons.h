// The last row of a sheet: a help button, Cancel and Done, named after the sheet.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "shell/controls.h"

namespace quillet {

class SheetButtons {
 public:
  struct Handlers {
    std::string cancel;
    std::string done;
  };

  // help is the key of what the help button tells; without any there is no such button. The sheet outlives
  // its buttons.
  SheetButtons(Window& sheet, const std::string& prefix, const Handlers& handlers, std::u16string_view help);

  Button& done() { return done_; }

 private:
  std::optional<Button> help_;
  Button cancel_;
  Button done_;
};

}  // namespace quillet
