// Sheets that a command opens, and what the tool then does with them.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "drive/arguments.h"
#include "drive/drive.h"

namespace quillet::drive {

// Tells which sheet was opened since it was made.
class SheetWatch {
 public:
  explicit SheetWatch(Drive& drive) : desktop_(drive.desktop()), before_(desktop_.sheetsBegun()) {}

  Window* openedSheet() const {  // null when none was, or it was closed again
    return desktop_.sheetsBegun() == before_ ? nullptr : desktop_.openSheet();
  }

 private:
  const ScriptedDesktop& desktop_;
  std::uint64_t before_;
};

enum class WithoutValues { StayOpen, Cancel };

// The controls of the sheet as they stood on its opening, null if none was opened. With "values" they are set
// and Done is pressed, with "cancel" Cancel; without both it is as told.
json finishOpenedSheet(Drive& drive, const SheetWatch& watch, const Arguments& arguments,
                       WithoutValues withoutValues = WithoutValues::StayOpen);

// Another key window as long as it lives; a name that no window has stands for none.
class KeyWindowForNow {
 public:
  KeyWindowForNow(Drive& drive, const std::string& name);
  ~KeyWindowForNow();
  KeyWindowForNow(const KeyWindowForNow&) = delete;
  KeyWindowForNow& operator=(const KeyWindowForNow&) = delete;

 private:
  ScriptedDesktop& desktop_;
};

}  // namespace quillet::drive
