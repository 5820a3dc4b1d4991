#include "drive/sheets.h"

#include "drive/control_values.h"

namespace quillet::drive {

namespace {

void press(Button* button) {
  if (!button) throw CommandError("the sheet has no such button");
  button->press();
}

void finishAsAsked(Drive& drive, const Window& sheet, const Arguments& arguments,
                   WithoutValues withoutValues) {
  const bool cancels = !arguments.has("values") && withoutValues == WithoutValues::Cancel;
  if (cancels || arguments.boolean("cancel", false)) {
    press(sheet.cancelButton());
  } else if (arguments.has("values")) {
    setAsUser(drive.launchedApplication().interface(), arguments.value("values"));
    press(sheet.doneButton());
  }
}

}  // namespace

json finishOpenedSheet(Drive& drive, const SheetWatch& watch, const Arguments& arguments,
                       WithoutValues withoutValues) {
  Window* sheet = watch.openedSheet();
  if (!sheet) return json();
  json opened = settableValuesOf(*sheet);
  try {
    finishAsAsked(drive, *sheet, arguments, withoutValues);
  } catch (const CommandError&) {  // a command that is refused leaves no sheet behind, and nothing in it
    setAsUser(drive.launchedApplication().interface(), opened);
    press(sheet->cancelButton());
    throw;
  }
  return opened;
}

KeyWindowForNow::KeyWindowForNow(Drive& drive, const std::string& name) : desktop_(drive.desktop()) {
  desktop_.pretendKeyWindow(drive.launchedApplication().interface().window(name));
}

KeyWindowForNow::~KeyWindowForNow() {
  desktop_.forgetPretendedKeyWindow();
}

}  // namespace quillet::drive
